#include "app/FrameView.h"

#include <algorithm>
#include <cmath>

#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>

#include "app/DisplayFrame.h"
#include "app/Ui.h"

namespace quillmark {
namespace {

/// What stays in sight of a picture that is held, however small the view becomes.
constexpr int LeastInSight = 48;

QPoint Into(const QRect& range, QPoint corner) {
  return {std::clamp(corner.x(), range.left(), range.right()),
          std::clamp(corner.y(), range.top(), range.bottom())};
}

int InSight(int corner, int whole, int seen) {
  const int least = std::min({LeastInSight, whole, seen});
  return std::clamp(corner, least - whole, seen - least);
}

}  // namespace

FrameView::FrameView(DisplayFrame* picture, QWidget* parent) : QScrollArea(parent), picture_(picture) {
  setFrameShape(NoFrame);
  setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  setWidget(picture);
  // The scroll area has the picture filled, which counts as opaque: Qt would then move what stands on the
  // screen while scrolling, by a rounded number of screen pixels.
  picture->setAutoFillBackground(false);
  setAccessibleName(Ui::Tr("Subtitle frame"));
  setFocusPolicy(Qt::NoFocus);
  QScrollBar* vertical = verticalScrollBar();
  connect(vertical, &QScrollBar::rangeChanged, this, [this, vertical](int /*least*/, int most) {
    const QScopedValueRollback<bool> placing(placing_, true);
    vertical->setValue(most - below_);
    FollowRange();
  });
  QScrollBar* horizontal = horizontalScrollBar();
  connect(horizontal, &QScrollBar::rangeChanged, this, [this, horizontal](int /*least*/, int most) {
    const QScopedValueRollback<bool> placing(placing_, true);
    const int whole = widget()->width();
    horizontal->setValue(static_cast<int>(middle_ * whole - (whole - most) / 2.0));
    FollowRange();
  });
}

void FrameView::FollowRange() {
  const bool scrolls = verticalScrollBar()->maximum() > 0 || horizontalScrollBar()->maximum() > 0;
  setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);
  if (scrolls) {
    viewport()->setCursor(drags_ ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
  } else {
    viewport()->unsetCursor();
  }
}

QSize FrameView::WholeSize() const {
  return picture_->WholeSize();
}

QSize FrameView::sizeHint() const {
  return picture_->size();
}

QSize FrameView::minimumSizeHint() const {
  const int least = 10 * fontMetrics().height();
  return WholeSize().boundedTo({least, least});
}

// Placing the picture: Qt does it by the scroll bars; what they cannot say is put right afterwards.

bool FrameView::event(QEvent* event) {
  const QScopedValueRollback<bool> placing(
      placing_, placing_ || event->type() == QEvent::LayoutRequest || event->type() == QEvent::StyleChange);
  const bool handled = QScrollArea::event(event);
  if (placing_) {
    KeepHeld();
  }
  return handled;
}

bool FrameView::eventFilter(QObject* watched, QEvent* event) {
  if (watched == picture_ && event->type() == QEvent::Wheel) {
    auto* wheel = static_cast<QWheelEvent*>(event);
    return TurnWheel(*wheel, picture_->mapTo(viewport(), wheel->position().toPoint()));
  }
  if (watched != picture_ || event->type() != QEvent::Resize) {
    return QScrollArea::eventFilter(watched, event);
  }
  const QScopedValueRollback<bool> placing(placing_, true);
  const bool handled = QScrollArea::eventFilter(watched, event);
  KeepHeld();
  emit PictureResized();
  return handled;
}

void FrameView::resizeEvent(QResizeEvent* event) {
  const QScopedValueRollback<bool> placing(placing_, true);
  QScrollArea::resizeEvent(event);
  KeepHeld();
}

void FrameView::scrollContentsBy(int dx, int dy) {
  QScrollArea::scrollContentsBy(dx, dy);
  if (!placing_) {
    held_ = false;
    KeepMiddle();
  }
}

void FrameView::KeepHeld() {
  if (held_) {
    const QSize whole = picture_->size();
    const QSize seen = viewport()->size();
    MoveTo({InSight(corner_.x(), whole.width(), seen.width()),
            InSight(corner_.y(), whole.height(), seen.height())});
    held_ = true;
  }
}

void FrameView::KeepMiddle() {
  below_ = verticalScrollBar()->maximum() - verticalScrollBar()->value();
  const int whole = picture_->width();
  const int most = horizontalScrollBar()->maximum();
  middle_ = (horizontalScrollBar()->value() + (whole - most) / 2.0) / whole;
}

QRect FrameView::ScrollRange() const {
  const QRect seen = viewport()->rect();
  const QSize whole = picture_->size();
  const QPoint standing = QStyle::alignedRect(layoutDirection(), alignment(), whole, seen).topLeft();
  QRect range(standing, standing);
  if (whole.width() > seen.width()) {
    range.setLeft(seen.width() - whole.width());
    range.setRight(0);
  }
  if (whole.height() > seen.height()) {
    range.setTop(seen.height() - whole.height());  // down to where it stands, at the top
  }
  return range;
}

void FrameView::MoveTo(QPoint corner) {
  const QScopedValueRollback<bool> placing(placing_, true);
  const QPoint scrolled = Into(ScrollRange(), corner);
  horizontalScrollBar()->setValue(isRightToLeft() ? horizontalScrollBar()->maximum() + scrolled.x()
                                                  : -scrolled.x());
  verticalScrollBar()->setValue(-scrolled.y());
  KeepMiddle();
  corner_ = corner;
  held_ = corner != scrolled;
  picture_->move(corner);
}

// Zooming

ViewZoom FrameView::AtPercent(int percent) const {
  return {.Percent = percent, .Fits = false, .Aspect = picture_->Zoom().Aspect};
}

void FrameView::SetZoom(const ViewZoom& zoom) {
  if (zoom == picture_->Zoom()) {
    return;
  }
  const bool isWhole = viewport()->rect().contains(picture_->geometry());
  const auto anchor = [this, isWhole] {
    const QRect seen = viewport()->rect();
    return QPoint(seen.center().x(), isWhole ? seen.bottom() : seen.center().y());
  };
  const QPointF inFrame = picture_->FramePlace(anchor() - picture_->pos());
  ZoomPicture(zoom);
  MoveTo(Into(ScrollRange(), anchor() - picture_->PlaceOf(inFrame)));
  emit ZoomChanged();
}

void FrameView::ZoomIn() {
  SetZoom(AtPercent(ZoomStepAbove(picture_->Percent())));
}

void FrameView::ZoomOut() {
  SetZoom(AtPercent(ZoomStepBelow(picture_->Percent())));
}

void FrameView::ZoomPicture(const ViewZoom& zoom) {
  const QScopedValueRollback<bool> placing(placing_, true);
  picture_->SetZoom(zoom);
}

void FrameView::ZoomAt(const ViewZoom& zoom, QPoint at) {
  if (zoom == picture_->Zoom()) {
    return;
  }
  // Beside the picture it is the place of it next to the pointer that stays.
  const QRect shown = picture_->geometry();
  at = {std::clamp(at.x(), shown.left(), shown.right()), std::clamp(at.y(), shown.top(), shown.bottom())};
  const QPointF inFrame = picture_->FramePlace(at - shown.topLeft());
  const QPoint pixel = picture_->PixelAt(at - shown.topLeft());
  ZoomPicture(zoom);
  const QPoint corner = CornerFor(inFrame, at, pixel);
  // From 100 % down the picture stands where one looks for it.
  const bool holds = zoom.Percent > 100;
  MoveTo(holds ? corner : Into(ScrollRange(), corner));
  held_ = holds;  // also while the window, which gives the view its room, is not yet laid out
  emit ZoomChanged();
}

QPoint FrameView::CornerFor(QPointF inFrame, QPoint at, QPoint pixel) const {
  const QPoint viewCorner = viewport()->mapTo(window(), QPoint());
  const QPoint nearest = at - picture_->PlaceOf(inFrame);
  // A corner is a whole number of logical pixels: the one next to the exact place may be beyond the pixel.
  for (const int dy : {0, 1, -1}) {
    for (const int dx : {0, 1, -1}) {
      const QPoint corner = nearest + QPoint(dx, dy);
      if (picture_->PixelAt(at - corner, viewCorner + corner) == pixel) {
        return corner;
      }
    }
  }
  return nearest;
}

void FrameView::FitInto(QSize room) {
  const QScopedValueRollback<bool> placing(placing_, true);
  picture_->FitInto(room);
}

void FrameView::wheelEvent(QWheelEvent* event) {
  if (!TurnWheel(*event, event->position().toPoint())) {
    QScrollArea::wheelEvent(event);
  }
}

bool FrameView::TurnWheel(const QWheelEvent& event, QPoint at) {
  if (!event.modifiers().testFlag(Qt::ControlModifier)) {
    return false;
  }
  turned_ += event.angleDelta().y();
  for (; std::abs(turned_) >= QWheelEvent::DefaultDeltasPerStep;
       turned_ += turned_ > 0 ? -QWheelEvent::DefaultDeltasPerStep : QWheelEvent::DefaultDeltasPerStep) {
    const double before = picture_->Percent();
    ZoomAt(AtPercent(turned_ > 0 ? ZoomStepAbove(before) : ZoomStepBelow(before)), at);
  }
  return true;
}

// Dragging

void FrameView::mousePressEvent(QMouseEvent* event) {
  const bool isGrab = event->button() == Qt::LeftButton || event->button() == Qt::MiddleButton;
  const QRect range = ScrollRange();
  if (!isGrab || (range.topLeft() == range.bottomRight() && !held_)) {
    QScrollArea::mousePressEvent(event);
    return;
  }
  drags_ = true;
  grabbed_ = event->position().toPoint() - picture_->pos();
  FollowRange();
}

void FrameView::mouseMoveEvent(QMouseEvent* event) {
  if (!drags_) {
    QScrollArea::mouseMoveEvent(event);
    return;
  }
  // One that is held where scrolling does not bring it comes back with the pointer, and is not let go again.
  const QPoint at = picture_->pos();
  MoveTo(Into(ScrollRange().united(QRect(at, at)), event->position().toPoint() - grabbed_));
}

void FrameView::mouseReleaseEvent(QMouseEvent* event) {
  drags_ = false;
  FollowRange();
  QScrollArea::mouseReleaseEvent(event);
}

}  // namespace quillmark
