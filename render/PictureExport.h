#pragma once

#include <cstdint>
#include <optional>

#include <QString>

#include "base/Result.h"

namespace quillmark {

/// Where the pictures of a stream go and what their list is called.
struct ExportPaths {
  QString Folder;  ///< base + "_SubPng"
  QString List;    ///< base + "_spu.xml"
};

/// `supPath` without its last four characters, whatever they are, is the base.
[[nodiscard]] ExportPaths ExportPathsFor(const QString& supPath);
[[nodiscard]] ExportPaths ExportPathsForBase(const QString& base);

/// "00+01+05+48.png" for a start (90 kHz ticks) at 1 minute 5.48 seconds. Starts that are the same to the
/// hundredth share a name.
[[nodiscard]] QString PictureName(std::int64_t startTicks);

/// The picture's place in the folder, joined with the platform's separator.
[[nodiscard]] QString PicturePath(const QString& folder, const QString& name);

/// name="value" and a blank. Characters that mean something in an attribute are written as entities.
[[nodiscard]] QString XmlAttribute(const QString& name, const QString& value);

/// What the list says of one subtitle, times as texts.
struct SpuElement {
  QString Start;
  QString End;    ///< empty: none
  QString Image;  ///< path of the picture
  int X = 0;
  int Y = 0;
  bool IsForced = false;
};
/// Its line, ended by CR LF.
[[nodiscard]] QString SpuLine(const SpuElement& element);

/// The line of a subtitle whose times are told to the hundredth. `endTicks` is nullopt when the unit has no
/// delay.
[[nodiscard]] QString SpuLine(std::int64_t startTicks, std::optional<std::int64_t> endTicks,
                              const QString& picturePath, int x1, int y1);

/// "hh:mm:ss.ffff", rounded to ten-thousandths of a second: all digits that authoring tools read. `ticks` is
/// not negative.
[[nodiscard]] QString AuthoringTimeText(std::int64_t ticks);

/// Appends one line, in UTF-8, to the list at `listPath`, creating it if missing.
Result<void> AppendSpuLine(const QString& listPath, const QString& line);

}  // namespace quillmark
