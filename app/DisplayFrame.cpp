#include "app/DisplayFrame.h"

#include <algorithm>
#include <cmath>

#include <QCursor>
#include <QEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

namespace quillmark {
namespace {

/// Qt goes through a scaled picture by steps that it rounds down; over a wide one they would add up to a
/// frame pixel's side.
constexpr int ColumnsDrawnAtOnce = 64;

QPointF Rounded(QPointF place) {
  return {std::round(place.x()), std::round(place.y())};
}

QPoint Floor(QPointF place) {
  return {static_cast<int>(std::floor(place.x())), static_cast<int>(std::floor(place.y()))};
}

}  // namespace

DisplayFrame::DisplayFrame(QWidget* parent) : QWidget(parent) {
  setMouseTracking(true);
  FitScreen();
}

void DisplayFrame::Refresh() {
  const QRect changed = Covering(picture_.TakeChanged());
  // What is painted over the frame may tell of what was drawn, at another place.
  repaint(guides_.IsAny() && !changed.isEmpty() ? rect() : changed);
  emit Refreshed();
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

void DisplayFrame::SetGuides(const FrameGuides& guides) {
  if (guides != guides_) {
    const bool wasAny = guides_.IsAny();
    guides_ = guides;
    if (wasAny || guides.IsAny()) {
      update();
    }
  }
}

void DisplayFrame::SetZoom(const ViewZoom& zoom) {
  if (zoom != zoom_) {
    zoom_ = zoom;
    FitScreen();
  }
}

void DisplayFrame::FitInto(QSize room) {
  if (room != room_) {
    room_ = room;
    if (zoom_.Fits) {
      FitScreen();
    }
  }
}

double DisplayFrame::LinePixels() const {
  return zoom_.Fits && !room_.isEmpty() ? LinePixelsInto(QSizeF(room_) * ratio_, lines_, zoom_.Aspect)
                                        : devicePixels_ * zoom_.Percent / 100.0;
}

double DisplayFrame::Percent() const {
  return LinePixels() / devicePixels_ * 100;
}

QSize DisplayFrame::WholeSize() const {
  const qreal side = devicePixels_ / ratio_;
  return {static_cast<int>(std::ceil(FrameWidth * side)), static_cast<int>(std::ceil(lines_ * side))};
}

void DisplayFrame::FitScreen() {
  ratio_ = devicePixelRatioF();
  devicePixels_ = std::max(1, static_cast<int>(ratio_));
  onScreen_ = SizeOnScreen(lines_, LinePixels(), zoom_.Aspect);
  const QSizeF exact = QSizeF(onScreen_) / ratio_;
  const QSize size(static_cast<int>(std::ceil(exact.width())), static_cast<int>(std::ceil(exact.height())));
  // Where the scale is no whole number, widgets meet inside screen pixels: the background is painted below
  // the frame, so that no such pixel is left to nobody.
  setAttribute(Qt::WA_OpaquePaintEvent, ratio_ == devicePixels_ && exact == QSizeF(size));
  setFixedSize(size);
  update();
}

QSizeF DisplayFrame::Sides() const {
  return {onScreen_.width() / static_cast<double>(FrameWidth),
          onScreen_.height() / static_cast<double>(lines_)};
}

QRect DisplayFrame::Covering(const QRect& framePixels) const {
  if (framePixels.isEmpty()) {
    return {};
  }
  // A smoothed pixel reaches into those beside it.
  const int reach = WholeSide(onScreen_, lines_) > 0 ? 0 : 1;
  const QRectF reached = framePixels.adjusted(-reach, -reach, reach, reach);
  const QSizeF sides = Sides() / ratio_;
  // Qt rounds the edges of what it repaints to screen pixels, but not always to the side to which the frame's
  // corner is rounded below.
  const int rounding = ratio_ == devicePixels_ ? 0 : 1;
  return QRectF(reached.x() * sides.width(), reached.y() * sides.height(), reached.width() * sides.width(),
                reached.height() * sides.height())
      .toAlignedRect()
      .adjusted(-rounding, -rounding, rounding, rounding);
}

QPoint DisplayFrame::PixelAt(QPoint place) const {
  return PixelAt(place, mapTo(window(), QPoint()));
}

QPoint DisplayFrame::PixelAt(QPoint place, QPoint corner) const {
  const QPointF exact = QPointF(corner) * ratio_;
  const QPointF onScreen = (QPointF(place) + QPointF(0.5, 0.5)) * ratio_ - (Rounded(exact) - exact);
  return Floor({onScreen.x() / Sides().width(), onScreen.y() / Sides().height()});
}

QPointF DisplayFrame::FramePlace(QPoint place) const {
  const QPointF onScreen = (QPointF(place) + QPointF(0.5, 0.5)) * ratio_;
  return {onScreen.x() / Sides().width(), onScreen.y() / Sides().height()};
}

QPoint DisplayFrame::PlaceOf(QPointF inFrame) const {
  return Floor(QPointF(inFrame.x() * Sides().width(), inFrame.y() * Sides().height()) / ratio_);
}

bool DisplayFrame::event(QEvent* event) {
  // Qt tells of a new scale by the change of the screen; a window that was not shown before has none to tell.
  const bool mayScale = event->type() == QEvent::ScreenChangeInternal || event->type() == QEvent::Show;
  if (mayScale && ratio_ != devicePixelRatioF()) {
    FitScreen();
  }
  return QWidget::event(event);
}

void DisplayFrame::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.save();
  // The frame begins at a whole screen pixel, wherever the widget does.
  const QTransform toDevice = painter.deviceTransform();
  painter.translate(toDevice.inverted().map(Rounded(toDevice.map(QPointF()))));
  const ShownFrame frame{.Lines = lines_,
                         .OnScreen = onScreen_,
                         .Ratio = ratio_,
                         .InSight = parentWidget()->rect().translated(-pos()) & rect()};
  if (guides_.Mode == DisplayMode::Letterbox || guides_.Mode == DisplayMode::PanAndScan) {
    PaintScreen(painter, picture_, guides_.Mode, frame);
  } else {
    PaintPicture(painter,
                 QRectF(QPointF(event->rect().topLeft()) * ratio_, QSizeF(event->rect().size()) * ratio_));
  }
  PaintGuides(painter, guides_, frame);
  painter.restore();
  if (!hint_.isEmpty()) {
    PaintHint(painter);
  }
}

/// `part` is in screen pixels; the painter stands at the frame's corner.
void DisplayFrame::PaintPicture(QPainter& painter, const QRectF& part) const {
  const QRect whole(0, 0, FrameWidth, lines_);
  const int side = WholeSide(onScreen_, lines_);
  painter.save();
  painter.scale(1 / ratio_, 1 / ratio_);
  if (side == 0) {
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(QPointF(), QSizeF(onScreen_)), picture_.Image(), QRectF(whole));
  } else {
    painter.scale(side, side);
    // Where the frame's corner was rounded the part begins a little beside its own; what is too much the
    // painter clips.
    const QRect pixels =
        QRectF(part.topLeft() / side, part.size() / side).toAlignedRect().adjusted(-1, -1, 1, 1) & whole;
    const int columns = side == 1 ? FrameWidth : ColumnsDrawnAtOnce;
    for (int x = pixels.left(); x <= pixels.right(); x += columns) {
      const QRect drawn = pixels & QRect(x, 0, columns, lines_);
      painter.drawImage(drawn.topLeft(), picture_.Image(), drawn);
    }
  }
  painter.restore();
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

void DisplayFrame::moveEvent(QMoveEvent* /*event*/) {
  if (guides_.IsAny()) {
    update();  // some of them keep their place in what is in sight
  }
  if (underMouse()) {
    Point(mapFromGlobal(QCursor::pos()));
  }
}

void DisplayFrame::mouseMoveEvent(QMouseEvent* event) {
  Point(event->position().toPoint());
  QWidget::mouseMoveEvent(event);
}

void DisplayFrame::leaveEvent(QEvent* /*event*/) {
  emit PointedAt(std::nullopt);
}

void DisplayFrame::Point(QPoint place) {
  const QPoint pixel = PixelAt(place);
  const bool isInside = QRect(0, 0, FrameWidth, lines_).contains(pixel);
  emit PointedAt(isInside ? std::optional(pixel) : std::nullopt);
}

}  // namespace quillmark
