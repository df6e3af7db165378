#include "app/TrialFrame.h"

#include <QPainter>
#include <QPen>

#include "render/Composition.h"

namespace quillmark {
namespace {

constexpr int Shrunk = 2;  // frame pixels to a pixel of the widget
const QColor Ground(0x40, 0x40, 0x40);

}  // namespace

TrialFrame::TrialFrame(int frameLines, QWidget* parent) : QWidget(parent), lines_(frameLines) {
  setFixedSize(sizeHint());
  setAccessibleName(QStringLiteral("The subtitle in the frame"));
}

QSize TrialFrame::sizeHint() const {
  return {FrameWidth / Shrunk, lines_ / Shrunk};
}

void TrialFrame::Show(const QRect& before, const QRect& after, const QImage& picture) {
  before_ = before;
  after_ = after;
  picture_ = picture;
  update();
}

void TrialFrame::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.fillRect(rect(), Ground);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.scale(1.0 / Shrunk, 1.0 / Shrunk);
  if (!picture_.isNull()) {
    painter.drawImage(after_, picture_);
  }
  const auto outline = [&painter](const QRect& area, Qt::PenStyle style) {
    QPen pen(QColor(Qt::white), 1, style);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawRect(QRectF(area).adjusted(-1, -1, 1, 1));
  };
  if (!before_.isEmpty() && before_ != after_) {
    outline(before_, Qt::DotLine);
  }
  if (!after_.isEmpty()) {
    outline(after_, Qt::SolidLine);
  }
}

}  // namespace quillmark
