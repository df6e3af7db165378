#include "app/ColourSwatch.h"

#include <cmath>

#include <QKeyEvent>
#include <QPainter>

#include "app/ColourName.h"
#include "app/QtColour.h"

namespace quillmark {
namespace {

constexpr Rgb Black = 0x000000;
constexpr Rgb White = 0xFFFFFF;
constexpr double EvenLuminance = 0.179;  ///< from which black and white differ equally, 4.6 to 1

}  // namespace

ColourSwatch::ColourSwatch(Rgb colour, QWidget* parent) : QAbstractButton(parent), colour_(colour) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setAttribute(Qt::WA_Hover);
}

void ColourSwatch::SetColour(Rgb colour, const QString& name) {
  if (colour == colour_ && !accessibleName().isEmpty()) {
    return;
  }
  colour_ = colour;
  setAccessibleName(name + QStringLiteral(", ") + ColourName(colour));
  setAccessibleDescription(ToQColor(colour).name().toUpper());
  update();
}

QSize ColourSwatch::sizeHint() const {
  const int side = fontMetrics().height() + 2;
  return {side, side};
}

void ColourSwatch::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    click();
  } else {
    QAbstractButton::keyPressEvent(event);
  }
}

void ColourSwatch::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setOpacity(isEnabled() ? 1.0 : 0.45);
  painter.fillRect(rect(), ToQColor(colour_));
  painter.setPen(ToQColor(DigitColourOn(colour_)));
  painter.drawText(rect(), Qt::AlignCenter, Digit());
  // The edge has the colour of the theme's text, which is seen on the window whatever the colour is.
  const QColor edge =
      palette().color(hasFocus() || underMouse() ? QPalette::Highlight : QPalette::WindowText);
  const int width = hasFocus() ? 2 : 1;
  for (const QRect& side :
       {QRect(0, 0, this->width(), width), QRect(0, height() - width, this->width(), width),
        QRect(0, 0, width, height()), QRect(this->width() - width, 0, width, height())}) {
    painter.fillRect(side, edge);
  }
}

Rgb DigitColourOn(Rgb colour) {
  const auto light = [](Rgb channel) { return std::pow((channel & 0xFFU) / 255.0, 2.2); };
  const double luminance =
      0.2126 * light(colour) + 0.7152 * light(colour >> 8U) + 0.0722 * light(colour >> 16U);
  return luminance > EvenLuminance ? Black : White;
}

}  // namespace quillmark
