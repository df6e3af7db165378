#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <QString>

#include "palette/Colour.h"

namespace quillmark {

/// The 16 entries as two rows of small squares, for a row of a list. `scale` is how many screen pixels a
/// pixel has.
[[nodiscard]] QPixmap DrawSwatches(const DvdPalette& palette, const QColor& edge, double scale);
/// The names of the 16 colours, for assistive tools.
[[nodiscard]] QString PaletteText(const DvdPalette& palette);

/// An icon that looks the same where its row is selected.
[[nodiscard]] QIcon Untinted(const QPixmap& pixmap);

}  // namespace quillmark
