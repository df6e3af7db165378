#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include <QString>

#include "base/Result.h"
#include "base/Words.h"
#include "imaging/cBitmap.h"
#include "render/PictureBatch.h"
#include "render/PictureExport.h"
#include "render/SubtitleDescription.h"

namespace quillmark {

/// Whether there is a picture to export: a reversed area has no pixels.
[[nodiscard]] inline bool HasPixels(const SpuControl& control) {
  return control.Width() > 0 && control.Height() > 0;
}
/// Why there is none, in words for the user.
inline constexpr const char* NoPixelsText =
    Words::Mark("the subtitle's area is reversed, so that it has no picture");

/// Exports many subtitles: their pictures, several at once on all of the processor's cores, and the lines
/// that name them. Whatever fails, the others are tried.
class Exporter {
 public:
  enum class List {
    Appended,  ///< each line at once, after what the list holds
    Replaced,  ///< all lines at the end, by WriteList, in place of the old list
  };
  Exporter(ExportPaths paths, List list) : paths_(std::move(paths)), list_(list) {}

  /// One more subtitle. Its picture is written with those that come next; of pictures with one name the last
  /// one stays. One without an image is a failure.
  void Add(const SubtitleDescription& description, cBitmap picture);
  /// Writes the pictures that are still held.
  void Flush() { pictures_.Flush(); }
  /// Starts the list afresh with the lines of all that were added. Of no use with List::Appended.
  Result<void> WriteList() const;

  /// Those that were tried, their failures included.
  [[nodiscard]] std::int64_t Pictures() const { return pictures_.Count(); }
  /// Without those that are still held.
  [[nodiscard]] const ExportFailures& PictureFailures() const { return pictures_.Failures(); }
  /// Of appended lines.
  [[nodiscard]] const ExportFailures& ListFailures() const { return listFailures_; }

 private:
  void AddLine(const QString& line);

  ExportPaths paths_;
  List list_;
  std::string lines_;
  PictureBatch pictures_;
  ExportFailures listFailures_;
};

}  // namespace quillmark
