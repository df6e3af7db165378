#include "app/PaletteSwatch.h"

#include <QPainter>

#include "app/QtColour.h"

namespace quillmark {
namespace {

constexpr int SwatchSize = 17;

}  // namespace

PaletteSwatch::PaletteSwatch(int entry, Rgb colour, QWidget* parent)
    : QAbstractButton(parent), entry_(entry), colour_(~colour) {
  setFixedSize(SwatchSize, SwatchSize);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  SetColour(colour);
}

void PaletteSwatch::SetColour(Rgb colour) {
  if (colour == colour_) {
    return;
  }
  colour_ = colour;
  setAccessibleName(
      QStringLiteral("Palette entry %1, colour %2").arg(entry_).arg(ToQColor(colour).name().toUpper()));
  update();
}

QSize PaletteSwatch::sizeHint() const {
  return {SwatchSize, SwatchSize};
}

void PaletteSwatch::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  const QRect square = rect().adjusted(0, 0, -1, -1);
  painter.setOpacity(isEnabled() ? 1.0 : 0.45);
  painter.fillRect(rect(), ToQColor(colour_));
  // The border follows the theme, so that a black swatch is seen on a dark window and a white one on a light.
  painter.setPen(palette().color(hasFocus() || underMouse() ? QPalette::Highlight : QPalette::Mid));
  painter.drawRect(square);
  if (hasFocus()) {
    painter.drawRect(square.adjusted(1, 1, -1, -1));
  }
}

}  // namespace quillmark
