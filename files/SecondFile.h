#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "base/Result.h"
#include "files/Descriptor.h"
#include "files/ReplaceFile.h"
#include "files/Target.h"

namespace quillmark {

/// A name for what stands in a folder for a while: short, and no other's.
[[nodiscard]] std::string TemporaryName();

/// A file that is written while the one it is meant for stays as it is. Gone, unless it took that one's
/// place.
class SecondFile {
 public:
  /// In the folder where the target stands, under a short name of its own: no name that the target may have
  /// is too long for it, and none that an earlier run left behind stands in its way.
  [[nodiscard]] static Result<SecondFile> Beside(const Target& target);
  /// In the folder for temporary files, for a target whose folder takes none.
  [[nodiscard]] static Result<SecondFile> Elsewhere();

  SecondFile(SecondFile&& other) noexcept;
  SecondFile(const SecondFile&) = delete;
  SecondFile& operator=(const SecondFile&) = delete;
  ~SecondFile();

  [[nodiscard]] Descriptor& File() { return file_; }
  [[nodiscard]] const std::string& Path() const { return path_; }

  enum class Outcome { Done, Failed, NotReplaced };
  struct Place {
    Outcome Result = Outcome::Done;
    Failure Why;  ///< where it is not Done
  };
  /// Takes the target's place, with the old file's permissions, owner and group as far as the user may give
  /// them. NotReplaced: a folder may take a new file and yet not let the old one go; it belongs to someone
  /// else in a folder with the sticky bit, or is a mount point.
  [[nodiscard]] Place TakePlaceOf(const Target& target, Durability durability);

 private:
  SecondFile(std::string path, Descriptor file) : path_(std::move(path)), file_(std::move(file)) {}
  [[nodiscard]] static Result<SecondFile> In(const std::string& folder, unsigned mode);

  std::string path_;  // empty when there is nothing to remove
  Descriptor file_;
};

/// A file that is written over where it stands. Nothing of it is cut before everything was written, so that a
/// failure costs no more than what was overwritten.
class FileInPlace {
 public:
  /// `length`: of all that will be written. Where the disk has no room for it, nothing is begun.
  [[nodiscard]] static Result<FileInPlace> Open(const Target& target, std::uint64_t length);

  Result<void> Write(std::span<const std::uint8_t> bytes);
  Result<void> Finish(OldTail tail, Durability durability);

 private:
  FileInPlace(const Target& target, Descriptor file, std::uint64_t length)
      : target_(target), file_(std::move(file)), length_(length) {}
  [[nodiscard]] Failure HalfWay(const Failure& failure) const;

  Target target_;
  Descriptor file_;
  std::uint64_t length_;
};

}  // namespace quillmark
