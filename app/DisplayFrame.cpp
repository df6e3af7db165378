#include "app/DisplayFrame.h"

#include <algorithm>
#include <cmath>

#include <QEvent>
#include <QPaintEvent>
#include <QPainter>

namespace quillmark {

DisplayFrame::DisplayFrame(QWidget* parent) : QWidget(parent) {
  FitScreen();
}

void DisplayFrame::Refresh() {
  repaint(Covering(picture_.TakeChanged()));
}

void DisplayFrame::SetLines(int lines) {
  if (lines != lines_) {
    lines_ = lines;
    FitScreen();
  }
}

void DisplayFrame::SetHint(const QString& hint) {
  if (hint != hint_) {
    hint_ = hint;
    update();
  }
}

void DisplayFrame::SetDescription(const QString& description) {
  if (description != accessibleDescription()) {
    setAccessibleDescription(description);
  }
}

void DisplayFrame::FitScreen() {
  const qreal ratio = devicePixelRatioF();
  devicePixels_ = std::max(1, static_cast<int>(ratio));
  pixelSide_ = devicePixels_ / ratio;
  // Where the scale is no whole number, widgets meet inside screen pixels: the background is painted below
  // the frame, so that no such pixel is left to nobody.
  setAttribute(Qt::WA_OpaquePaintEvent, ratio == devicePixels_);
  setFixedSize(static_cast<int>(std::ceil(FrameWidth * pixelSide_)),
               static_cast<int>(std::ceil(lines_ * pixelSide_)));
  update();
}

QRect DisplayFrame::Covering(const QRect& framePixels) const {
  if (framePixels.isEmpty()) {
    return {};
  }
  // Qt rounds the edges of what it repaints to screen pixels as the frame's corner is rounded below, so that
  // rounding outwards here covers the last pixel of each side.
  return QRectF(framePixels.x() * pixelSide_, framePixels.y() * pixelSide_, framePixels.width() * pixelSide_,
                framePixels.height() * pixelSide_)
      .toAlignedRect();
}

bool DisplayFrame::event(QEvent* event) {
  // Qt tells of a new scale by the change of the screen; a window that was not shown before has none to tell.
  const bool mayScale = event->type() == QEvent::ScreenChangeInternal || event->type() == QEvent::Show;
  if (mayScale && devicePixels_ != pixelSide_ * devicePixelRatioF()) {
    FitScreen();
  }
  return QWidget::event(event);
}

void DisplayFrame::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  // The frame begins at a whole screen pixel, wherever the widget does.
  const QTransform toDevice = painter.deviceTransform();
  const QPointF corner = toDevice.map(QPointF());
  const QPointF whole(std::round(corner.x()), std::round(corner.y()));
  painter.translate(toDevice.inverted().map(whole));
  painter.scale(pixelSide_, pixelSide_);

  const QRect shown = event->rect();
  const QRectF exact(shown.x() / pixelSide_, shown.y() / pixelSide_, shown.width() / pixelSide_,
                     shown.height() / pixelSide_);
  // What is rounded outwards the painter clips to the repainted part.
  const QRect part = exact.toAlignedRect() & QRect(0, 0, FrameWidth, lines_);
  painter.drawImage(part.topLeft(), picture_.Image(), part);
  if (!hint_.isEmpty()) {
    painter.resetTransform();
    PaintHint(painter);
  }
}

void DisplayFrame::PaintHint(QPainter& painter) const {
  const int margin = fontMetrics().height();
  QRect plate = fontMetrics().boundingRect(hint_).adjusted(-margin, -margin / 2, margin, margin / 2);
  plate.moveCenter(rect().center());
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0, 0, 0, 208));
  painter.drawRoundedRect(plate, margin / 3.0, margin / 3.0);
  painter.setPen(Qt::white);
  painter.drawText(plate, Qt::AlignCenter, hint_);
}

}  // namespace quillmark
