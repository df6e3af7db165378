#include "app/PaletteSwatch.h"

#include <algorithm>
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

QString DigitOf(int entry) {
  return QString::number(entry, 16).toUpper();
}

}  // namespace

PaletteSwatch::PaletteSwatch(int entry, Rgb colour, QWidget* parent)
    : QAbstractButton(parent), entry_(entry), colour_(~colour) {
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setFocusPolicy(Row().constFirst() == this ? Qt::StrongFocus : Qt::ClickFocus);
  setCursor(Qt::PointingHandCursor);
  setAttribute(Qt::WA_Hover);
  SetColour(colour);
}

void PaletteSwatch::SetColour(Rgb colour) {
  if (colour == colour_) {
    return;
  }
  colour_ = colour;
  setAccessibleName(QStringLiteral("Palette entry %1, %2").arg(DigitOf(entry_), ColourName(colour)));
  setAccessibleDescription(ToQColor(colour).name().toUpper());
  update();
}

QSize PaletteSwatch::sizeHint() const {
  const int side = fontMetrics().height() + 2;
  return {side, side};
}

QList<PaletteSwatch*> PaletteSwatch::Row() const {
  QList<PaletteSwatch*> row;
  for (QObject* child : parentWidget()->children()) {
    if (auto* swatch = dynamic_cast<PaletteSwatch*>(child)) {
      row.append(swatch);
    }
  }
  return row;
}

void PaletteSwatch::keyPressEvent(QKeyEvent* event) {
  const QList<PaletteSwatch*> row = Row();
  const auto at = row.indexOf(this);
  const auto last = row.size() - 1;
  const auto move = [&](qsizetype to) { row[std::clamp<qsizetype>(to, 0, last)]->setFocus(); };
  const bool mirrored = isRightToLeft();
  switch (event->key()) {
    case Qt::Key_Left:
      return move(at + (mirrored ? 1 : -1));
    case Qt::Key_Right:
      return move(at + (mirrored ? -1 : 1));
    case Qt::Key_Up:
      return move(at - 1);
    case Qt::Key_Down:
      return move(at + 1);
    case Qt::Key_Home:
      return move(0);
    case Qt::Key_End:
      return move(last);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return click();
    default:
      QAbstractButton::keyPressEvent(event);
  }
}

void PaletteSwatch::focusInEvent(QFocusEvent* event) {
  for (PaletteSwatch* swatch : Row()) {
    swatch->setFocusPolicy(swatch == this ? Qt::StrongFocus : Qt::ClickFocus);
  }
  QAbstractButton::focusInEvent(event);
}

void PaletteSwatch::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setOpacity(isEnabled() ? 1.0 : 0.45);
  painter.fillRect(rect(), ToQColor(colour_));
  painter.setPen(ToQColor(DigitColourOn(colour_)));
  painter.drawText(rect(), Qt::AlignCenter, DigitOf(entry_));
  // The edge has the colour of the theme's text, which is seen on the window whatever the entry's colour is.
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
