#include "app/Loupe.h"

#include <algorithm>

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>

#include "app/CodeName.h"
#include "app/DisplayFrame.h"
#include "app/Ui.h"

namespace quillmark {
namespace {

constexpr int Around = 7;  ///< pixels seen at each side of the one looked at
constexpr int CellsAcross = 2 * Around + 1;
constexpr int CellSide = 12;  ///< logical pixels
constexpr int LoupeEdge = 2;
constexpr int LoupeGap = 8;  ///< to the view's edges
constexpr int FactLines = 2;
constexpr int LongStep = 10;

}  // namespace

Loupe::Loupe(DisplayFrame* frame, QWidget* view) : QWidget(view), frame_(frame) {
  setObjectName(QStringLiteral("Loupe"));
  setAccessibleName(Ui::Tr("Loupe"));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  const int pixels = CellsAcross * CellSide;
  const int textWidth = fontMetrics().horizontalAdvance(
      Ui::Tr("code %1 (%2), entry %3, opacity %4",
             {QStringLiteral("0"), CodeName(0), QStringLiteral("0"), QStringLiteral("0")}));
  resize(std::max(pixels, textWidth + LoupeGap) + 2 * LoupeEdge,
         pixels + FactLines * fontMetrics().lineSpacing() + LoupeGap + 2 * LoupeEdge);
  hide();
}

void Loupe::LookAt(QPoint pixel, const QString& facts) {
  pixel_ = pixel;
  facts_ = facts;
  Place();
  update();
  if (facts != accessibleDescription()) {
    setAccessibleDescription(facts);
    QAccessibleEvent said(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
  }
}

void Loupe::Place() {
  const QRect view = parentWidget()->rect().adjusted(LoupeGap, LoupeGap, -LoupeGap, -LoupeGap);
  const QPoint looked = frame_->mapTo(parentWidget(), frame_->PlaceOf(pixel_ + QPointF(0.5, 0.5)));
  QRect place = rect();
  place.moveTopLeft(view.topLeft());
  if (place.adjusted(-LoupeGap, -LoupeGap, LoupeGap, LoupeGap).contains(looked)) {
    place.moveRight(view.right());
  }
  // As it stood, while it is not in the way: it does not follow the pointer about.
  if (!isVisible() || geometry().adjusted(-LoupeGap, -LoupeGap, LoupeGap, LoupeGap).contains(looked) ||
      !parentWidget()->rect().contains(geometry())) {
    move(place.topLeft());
  }
}

void Loupe::keyPressEvent(QKeyEvent* event) {
  const int step = event->modifiers().testFlag(Qt::ShiftModifier) ? LongStep : 1;
  QPoint to = pixel_;
  switch (event->key()) {
    case Qt::Key_Left:
      to.rx() -= step;
      break;
    case Qt::Key_Right:
      to.rx() += step;
      break;
    case Qt::Key_Up:
      to.ry() -= step;
      break;
    case Qt::Key_Down:
      to.ry() += step;
      break;
    case Qt::Key_Escape:
      emit Closed();
      return;
    default:
      QWidget::keyPressEvent(event);
      return;
  }
  emit Asked({std::clamp(to.x(), 0, FrameWidth - 1), std::clamp(to.y(), 0, frame_->Lines() - 1)});
}

void Loupe::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), palette().color(hasFocus() ? QPalette::Highlight : QPalette::WindowText));
  const QRect inside = rect().adjusted(LoupeEdge, LoupeEdge, -LoupeEdge, -LoupeEdge);
  painter.fillRect(inside, palette().window());
  const QPoint corner(inside.left() + (inside.width() - CellsAcross * CellSide) / 2, inside.top());
  const QImage& picture = frame_->Picture().Image();
  for (int row = 0; row < CellsAcross; ++row) {
    for (int column = 0; column < CellsAcross; ++column) {
      const QPoint pixel = pixel_ + QPoint(column - Around, row - Around);
      if (QRect(0, 0, FrameWidth, frame_->Lines()).contains(pixel)) {
        painter.fillRect(QRect(corner + QPoint(column, row) * CellSide, QSize(CellSide, CellSide)),
                         picture.pixelColor(pixel));
      }
    }
  }
  const QRect middle(corner + QPoint(Around, Around) * CellSide, QSize(CellSide, CellSide));
  painter.setPen(Qt::black);
  painter.drawRect(middle.adjusted(-2, -2, 1, 1));
  painter.setPen(Qt::white);
  painter.drawRect(middle.adjusted(-1, -1, 0, 0));
  painter.setPen(palette().color(QPalette::WindowText));
  QString facts = facts_;
  const QRect text = inside.adjusted(0, CellsAcross * CellSide, 0, 0);
  painter.drawText(text, Qt::AlignCenter, facts.replace(QStringLiteral(": "), QStringLiteral("\n")));
}

}  // namespace quillmark
