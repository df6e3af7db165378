#pragma once

#include <cstdint>
#include <vector>

#include <QImage>
#include <QString>

#include "palette/Colour.h"
#include "render/PictureExport.h"
#include "render/SubtitleDescription.h"
#include "sup/SupStream.h"
#include "tests/authoring/ProgramStream.h"

namespace quillmark::test {

/// A subtitle that was exported.
struct ExportedSubtitle {
  SubtitleDescription Description;
  QImage Picture;  ///< what its PNG file should hold
};

/// A subtitle as the authoring tool encoded it, read by our own reader.
struct AuthoredSubtitle {
  SubtitleDescription Description;
  QImage Codes;                ///< code + 1 in place of a colour; 0 where no run reached
  std::vector<YCrCb> Palette;  ///< what the colour nibbles index
};

/// Empty where the tool is not installed.
[[nodiscard]] QString FindSpumux();

/// Writes the pictures of all subtitles and their list.
[[nodiscard]] std::vector<ExportedSubtitle> ExportAll(const SupStream& stream, const DvdPalette& palette,
                                                      const ExportPaths& paths);

/// What came out of the tool.
struct AuthoringRun {
  int ExitCode = -1;
  QString Log;
  std::vector<AuthoredUnit> Units;
  std::vector<AuthoredSubtitle> Subtitles;  ///< what they say
};
/// Encodes the list for video of `format`, "PAL" or "NTSC".
[[nodiscard]] AuthoringRun Author(const QString& spumux, const ExportPaths& paths, const QString& format);
/// Encodes a complete list, in its own folder.
[[nodiscard]] AuthoringRun AuthorList(const QString& spumux, const QString& list);

/// A program's run in a folder, its standard input and output being files (none: empty). What it wrote to its
/// error output, and whether it ended with 0.
struct ToolRun {
  bool IsDone = false;
  QString Log;
};
[[nodiscard]] ToolRun RunIn(const QString& folder, const QString& program, const QStringList& arguments,
                            const QString& input = {}, const QString& output = {});

/// Empty where the tool is not installed.
[[nodiscard]] QString FindSpuunmux();

/// A subtitle as the authoring tool reads it, in the words of its own list.
struct UnmuxedSubtitle {
  QString Start;
  QString End;  ///< empty where there is none
  QString Place;
  bool IsForced = false;
  QImage Picture;
};
/// Has the subtitles of `stream` laid into a program stream and read out of it again; `folder` holds what
/// that takes.
[[nodiscard]] std::vector<UnmuxedSubtitle> Unmux(const QString& spuunmux, const SupStream& stream,
                                                 const QString& folder);

}  // namespace quillmark::test
