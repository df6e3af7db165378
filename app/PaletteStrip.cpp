#include "app/PaletteStrip.h"

#include <QPainter>
#include <QStringList>

#include "app/ColourName.h"
#include "app/QtColour.h"

namespace quillmark {
namespace {

constexpr int SwatchSide = 14;  ///< logical pixels
constexpr int SwatchesInARow = 8;

}  // namespace

QPixmap DrawSwatches(const DvdPalette& palette, const QColor& edge, double scale) {
  const QSize size(SwatchesInARow * SwatchSide + 1,
                   static_cast<int>(palette.size()) / SwatchesInARow * SwatchSide + 1);
  QPixmap pixmap((QSizeF(size) * scale).toSize());
  pixmap.setDevicePixelRatio(scale);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setPen(edge);
  for (int entry = 0; entry < static_cast<int>(palette.size()); ++entry) {
    painter.setBrush(ToQColor(palette[static_cast<std::size_t>(entry)]));
    painter.drawRect(entry % SwatchesInARow * SwatchSide, entry / SwatchesInARow * SwatchSide, SwatchSide,
                     SwatchSide);
  }
  return pixmap;
}

QString PaletteText(const DvdPalette& palette) {
  QStringList names;
  for (const Rgb colour : palette) {
    names.append(ColourName(colour));
  }
  return names.join(QStringLiteral(", "));
}

QIcon Untinted(const QPixmap& pixmap) {
  QIcon icon;
  icon.addPixmap(pixmap, QIcon::Normal);
  icon.addPixmap(pixmap, QIcon::Selected);
  return icon;
}

}  // namespace quillmark
