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

enum class ExportKind : std::uint8_t { Sup, VobSub, AuthoringProject, ContactSheet };

/// What subtitles are exported as.
struct ExportFormat {
  ExportKind Kind = ExportKind::Sup;
  QString Name;
  QString FileTypes;  ///< for the file dialog: "VobSub Files (*.IDX)"
  QString Ending;     ///< of the file that the others are named after, in lower case with the dot
  bool TakesLanguage = false;
};
/// Those that this build writes; SUP comes first.
[[nodiscard]] std::vector<ExportFormat> ExportFormats();
[[nodiscard]] ExportFormat FormatOf(ExportKind kind);

struct ExportOrder {
  ExportKind What = ExportKind::Sup;
  QString Path;  ///< of the file that the others are named after, with its ending
  SubtitleSet Only = SubtitleSet::All();
  std::string Language;  ///< two letters; empty: unknown
  Overwriting Existing = Overwriting::Refused;
};

/// What is exported; it must stay as it is while that lasts.
struct ExportSource {
  const SupStream& Stream;
  DvdPalette Palette = StartUpPalette;
  int FrameLines = 576;
};

struct ExportOutcome {
  Completion How = Completion::Done;
  std::int64_t Subtitles = 0;
  std::vector<std::string> Notes = {};  ///< what was left out or changed, in words for the user
};

/// Every file and folder that would be written.
[[nodiscard]] std::vector<QString> PathsOf(const ExportOrder& order, const SupStream& stream);

/// Writes all of it or nothing. The reason names the file where it is not the one of the order.
[[nodiscard]] Result<ExportOutcome> Export(const ExportSource& source, const ExportOrder& order,
                                           const Progress& progress = {});

}  // namespace quillmark
