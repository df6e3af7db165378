#include "app/SubtitleFrame.h"

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QPen>

#include "render/Composition.h"

namespace quillmark {
namespace {

constexpr QColor Ground(0x40, 0x40, 0x40);

QRect Scaled(const QRect& area, double scale) {
  const QPoint corner(static_cast<int>(std::round(area.x() * scale)),
                      static_cast<int>(std::round(area.y() * scale)));
  const QPoint end(static_cast<int>(std::round((area.x() + area.width()) * scale)),
                   static_cast<int>(std::round((area.y() + area.height()) * scale)));
  return {corner, QSize(std::max(end.x() - corner.x(), 1), std::max(end.y() - corner.y(), 1))};
}

}  // namespace

SubtitleFrame::SubtitleFrame(int frameLines, QWidget* parent) : QWidget(parent), lines_(frameLines) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QSize SubtitleFrame::sizeHint() const {
  return {FrameWidth / 2, lines_ / 2};
}

QSize SubtitleFrame::minimumSizeHint() const {
  return {FrameWidth / 4, lines_ / 4};
}

void SubtitleFrame::SetLines(int frameLines) {
  lines_ = frameLines;
  updateGeometry();
  update();
}

void SubtitleFrame::Show(const QRect& area, const QImage& picture, const QRect& other) {
  area_ = area;
  picture_ = picture;
  other_ = other;
  update();
}

void SubtitleFrame::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  // In screen pixels: the picture is scaled once, to those that it has there.
  const double ratio = devicePixelRatioF();
  painter.scale(1 / ratio, 1 / ratio);
  const QSizeF room = QSizeF(size()) * ratio;
  const double scale = std::min(room.width() / FrameWidth, room.height() / lines_);
  const QRect frame = Scaled(QRect(0, 0, FrameWidth, lines_), scale);
  painter.translate(std::floor((room.width() - frame.width()) / 2), 0);
  painter.setClipRect(frame);
  painter.fillRect(frame, Ground);
  if (!picture_.isNull()) {
    const QRect where = Scaled(area_, scale);
    const bool isWhole = scale == std::floor(scale);
    painter.drawImage(where.topLeft(),
                      picture_.scaled(where.size(), Qt::IgnoreAspectRatio,
                                      isWhole ? Qt::FastTransformation : Qt::SmoothTransformation));
  }
  if (!other_.isEmpty() && other_ != area_) {
    const auto outline = [&](const QRect& area, Qt::PenStyle style) {
      painter.setPen(QPen(Qt::white, std::max(1.0, std::floor(ratio)), style));
      painter.drawRect(Scaled(area, scale).adjusted(-1, -1, 0, 0));
    };
    outline(other_, Qt::DotLine);
    if (!area_.isEmpty()) {
      outline(area_, Qt::SolidLine);
    }
  }
}

}  // namespace quillmark
