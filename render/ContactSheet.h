#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QString>

#include "base/Progress.h"
#include "base/Result.h"
#include "files/StagedFiles.h"
#include "palette/Colour.h"
#include "sup/SubtitleSet.h"
#include "sup/SupStream.h"

namespace quillmark {

/// How many subtitles a page shows, four in a row.
inline constexpr int SubtitlesAPage = 24;

struct ContactSheetOptions {
  SubtitleSet Only = SubtitleSet::All();
  DvdPalette Palette = StartUpPalette;
  int FrameHeight = 576;  ///< or 480
  Overwriting Existing = Overwriting::Refused;
};

struct ContactSheetResult {
  Completion How = Completion::Done;
  std::int64_t Subtitles = 0;
  std::int64_t Pages = 0;
};

/// "film_001.png" and so on for a base "film" or "film.png": with as many pages as those subtitles take.
[[nodiscard]] std::vector<QString> ContactSheetPaths(const QString& basePath, const SupStream& stream,
                                                     const SubtitleSet& only);

/// Draws subtitles side by side, each in its frame at half its size over the checker, with its number and
/// times above it, as PNG files of a page each. One that cannot be converted is a frame that says so.
/// All pages are written, or none; the reason names the file. Progress counts subtitles. Text is drawn, which
/// takes a QGuiApplication; without one it fails.
[[nodiscard]] Result<ContactSheetResult> WriteContactSheet(const SupStream& stream, const QString& basePath,
                                                           const ContactSheetOptions& options = {},
                                                           const Progress& progress = {});

}  // namespace quillmark
