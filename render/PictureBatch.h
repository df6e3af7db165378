#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QString>

#include "base/Result.h"
#include "imaging/cBitmap.h"

namespace quillmark {

/// What of an export could not be written.
struct ExportFailures {
  std::int64_t Count = 0;
  QString FirstPath;
  std::string FirstReason;

  void Add(const QString& path, const std::string& reason);
  /// The first one with its reason, and how many there are where it is not alone; empty without a failure.
  [[nodiscard]] QString Text() const;
};

/// Pictures that are written as PNG files, several at once on all of the processor's cores. Whatever fails,
/// the others are tried.
class PictureBatch {
 public:
  /// One more picture; it is written with those that come next. Of pictures with one path the last one stays.
  void Add(const QString& path, cBitmap picture);
  /// Writes those that are still held.
  void Flush();
  /// Counts one that cannot be written as a failure.
  void Refuse(const QString& path, const std::string& reason) { failures_.Add(path, reason); }

  /// Those that were added.
  [[nodiscard]] std::int64_t Count() const { return count_; }
  /// Without those that are still held.
  [[nodiscard]] const ExportFailures& Failures() const { return failures_; }

 private:
  struct HeldPicture {
    QString Path;
    cBitmap Picture;
    Result<void> Saved = {};
  };

  std::vector<HeldPicture> held_;
  std::int64_t heldPixels_ = 0;
  std::int64_t count_ = 0;
  ExportFailures failures_;
};

}  // namespace quillmark
