#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include <QString>

#include "base/Result.h"
#include "files/ReplaceFile.h"
#include "files/SecondFile.h"
#include "files/Target.h"

namespace quillmark {

/// Writes a long file piece by piece. Every function's reason is in words for the user, without the path.
class FileWriter {
 public:
  /// The new file takes the old one's place when it is committed, by ReplaceFile's rules; a writer that goes
  /// away uncommitted leaves the old file as it was. Only a device has what was written so far.
  [[nodiscard]] static Result<FileWriter> Replacing(const QString& path);
  /// Deletes what is there, a failure to do so ignored, and writes into the new file as the pieces come: what
  /// was written before a failure stays. A folder, a pipe or a socket is refused; a device is written to.
  [[nodiscard]] static Result<FileWriter> DeletingFirst(const QString& path);

  Result<void> Write(std::span<const std::uint8_t> bytes);
  /// Ends the file; it is on the disk then. Nothing is written after it.
  Result<void> Commit();

 private:
  explicit FileWriter(Target target) : target_(std::move(target)) {}
  Result<void> CopyInPlace();

  Target target_;
  std::optional<SecondFile> second_;  // what is written to, if there is one; else
  std::optional<Descriptor> direct_;  // the file itself
  bool mustStay_ = false;             // the second file cannot take the target's place
};

}  // namespace quillmark
