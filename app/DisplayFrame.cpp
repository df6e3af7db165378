#include "app/DisplayFrame.h"

#include <QPaintEvent>
#include <QPainter>

namespace quillmark {

DisplayFrame::DisplayFrame(QWidget* parent) : QWidget(parent) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  SetLines(FrameHeight576);
}

void DisplayFrame::Refresh() {
  repaint(picture_.TakeChanged());
}

void DisplayFrame::SetLines(int lines) {
  setFixedSize(FrameWidth, lines);
}

void DisplayFrame::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const qreal ratio = devicePixelRatioF();
  // Whole factors stay crisp squares; in between, interpolation avoids pixels of unequal size.
  painter.setRenderHint(QPainter::SmoothPixmapTransform, ratio != static_cast<int>(ratio));
  painter.drawImage(event->rect(), picture_.Image(), event->rect());
}

}  // namespace quillmark
