#include "app/TimeStrip.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include <QApplication>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include "app/SubtitleSentence.h"
#include "app/TimeStripPainter.h"
#include "app/Ui.h"

namespace quillmark {
namespace {

constexpr double LeastSpan = 2000;  ///< milliseconds across the strip
/// A subtitle that is said to be shown for longer makes the film no longer.
constexpr std::uint32_t LongestShown = 600'000;
constexpr double FilmMargin = 0.01;  ///< of the film's span, at both its ends
constexpr double WheelZoom = 1.25;   ///< for one notch
constexpr double WheelScroll = 0.1;  ///< of the width, for one notch
constexpr double NotchAngle = 120;
constexpr int TipReach = 4;  ///< logical pixels beside a subtitle where its tip is shown

QString Time(double milliseconds) {
  return TimeInWords(std::llround(milliseconds) * TicksPerMillisecond);
}

QFont LabelFont(const QFont& font) {
  QFont label = font;
  if (font.pointSizeF() > 0) {
    label.setPointSizeF(font.pointSizeF() * 0.85);
  }
  return label;
}

int LabelHeight(const QFont& font) {
  return QFontMetrics(LabelFont(font)).height();
}

double DistanceTo(const TimeBar& bar, double time) {
  return std::max({bar.Start - time, time - bar.End, 0.0});
}

void Recount(std::size_t& count, bool before, bool after) {
  if (before != after) {
    count = after ? count + 1 : count - 1;
  }
}

}  // namespace

TimeStrip::TimeStrip(QWidget* parent) : QWidget(parent) {
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(Ui::Tr("Time of the film"));
  Describe();
}

void TimeStrip::SetLane(std::size_t lane, std::vector<TimeBar> bars) {
  const int lanes = Lanes();
  lanes_[lane] = {.Bars = std::move(bars), .Columns = {}, .Current = {}};
  overlaps_ = static_cast<std::size_t>(std::ranges::count_if(lanes_[0].Bars, &TimeBar::Overlaps));
  problems_ = static_cast<std::size_t>(std::ranges::count_if(lanes_[0].Bars, &TimeBar::HasProblem));
  FitFilm();
  Describe();
  if (lanes != Lanes()) {
    updateGeometry();
  }
}

void TimeStrip::SetMarks(std::size_t index, PacketMarks marks) {
  Lane& lane = lanes_[0];
  if (index >= lane.Bars.size()) {
    return;
  }
  TimeBar& bar = lane.Bars[index];
  const TimeBar before = bar;
  bar.SetMarks(marks);
  if (bar == before) {
    return;
  }
  Recount(overlaps_, before.Overlaps, bar.Overlaps);
  Recount(problems_, before.HasProblem, bar.HasProblem);
  lane.Columns.clear();
  update();
  DescribeLater();
}

void TimeStrip::SetCurrent(std::optional<std::size_t> index, std::optional<std::size_t> over) {
  if (index == lanes_[0].Current && over == lanes_[1].Current) {
    return;
  }
  update(MarkArea());
  lanes_[0].Current = index;
  lanes_[1].Current = over;
  if (const TimeBar* bar = CurrentBar(lanes_[0]);
      bar != nullptr && (bar->Start < view_.Start || bar->Start >= view_.Start + view_.Span)) {
    SetView({.Start = bar->Start - view_.Span / 2, .Span = view_.Span});
  }
  update(MarkArea());
  Describe();
}

/// From the first start to the last end, as far as both can be those of a film.
void TimeStrip::FitFilm() {
  const std::uint32_t clockEnd = BarOf(std::numeric_limits<std::int64_t>::max(), 0).Start;
  first_ = clockEnd;
  last_ = 0;
  for (const Lane& lane : lanes_) {
    for (const TimeBar& bar : lane.Bars) {
      if (bar.Start < clockEnd) {
        first_ = std::min(first_, bar.Start);
        last_ = std::max(last_, std::min(bar.End, bar.Start + LongestShown));
      }
    }
  }
  first_ = std::min(first_, last_);
  const double span = std::max<double>(last_ - first_, LeastSpan);
  film_ = {.Start = std::max(0.0, first_ - span * FilmMargin), .Span = span * (1 + 2 * FilmMargin)};
  for (Lane& lane : lanes_) {
    for (TimeBar& bar : lane.Bars) {
      if (bar.Start == clockEnd) {
        bar.Start = bar.End = static_cast<std::uint32_t>(film_.Start + film_.Span * (1 - FilmMargin / 2));
      }
    }
  }
  view_ = film_;
  ForgetColumns();
}

void TimeStrip::SetView(TimeView view) {
  view.Span = std::clamp(view.Span, std::min(LeastSpan, film_.Span), film_.Span);
  view.Start = std::clamp(view.Start, film_.Start, film_.Start + film_.Span - view.Span);
  if (view != view_) {
    view_ = view;
    ForgetColumns();
  }
}

void TimeStrip::ForgetColumns() {
  for (Lane& lane : lanes_) {
    lane.Columns.clear();
  }
  update();
}

double TimeStrip::TimeAt(double x) const {
  return view_.Start + x / std::max(width(), 1) * view_.Span;
}

void TimeStrip::ZoomAt(double x, double factor) {
  const double time = TimeAt(x);
  const double span = std::clamp(view_.Span / factor, std::min(LeastSpan, film_.Span), film_.Span);
  SetView({.Start = time - x / std::max(width(), 1) * span, .Span = span});
}

void TimeStrip::Scroll(double pixels) {
  SetView({.Start = view_.Start + pixels / std::max(width(), 1) * view_.Span, .Span = view_.Span});
}

std::optional<std::size_t> TimeStrip::Nearest(const Lane& lane, double time) const {
  std::optional<std::size_t> nearest;
  double least = std::numeric_limits<double>::infinity();
  for (std::size_t i = 0; i < lane.Bars.size(); ++i) {
    const TimeBar& bar = lane.Bars[i];
    const double distance = DistanceTo(bar, time);
    // Of several that are shown, the one that began last is meant: the others began where there was one
    // alone.
    if (distance < least || (distance == 0 && bar.Start > lane.Bars[*nearest].Start)) {
      least = distance;
      nearest = i;
    }
  }
  return nearest;
}

std::optional<std::size_t> TimeStrip::SubtitleAt(double x) const {
  return Nearest(lanes_[0], TimeAt(x));
}

const TimeBar* TimeStrip::CurrentBar(const Lane& lane) const {
  return lane.Current && *lane.Current < lane.Bars.size() ? &lane.Bars[*lane.Current] : nullptr;
}

QRect TimeStrip::MarkArea() const {
  QRect area;
  for (const Lane& lane : lanes_) {
    if (const TimeBar* bar = CurrentBar(lane)) {
      // One column to a logical pixel: what screen pixels add is within the margin.
      const ColumnRange columns = ColumnsOf(*bar, view_, width());
      const int first = static_cast<int>(std::clamp<std::int64_t>(columns.First, -1, width()));
      const int last = static_cast<int>(std::clamp<std::int64_t>(columns.Last, -1, width()));
      area |= QRect(first, 0, last - first + 1, height())
                  .adjusted(-TimeStripPainter::MarkMargin, 0, TimeStripPainter::MarkMargin, 0);
    }
  }
  return area;
}

QSize TimeStrip::sizeHint() const {
  return {400, TimeStripRows::HeightFor(Lanes(), LabelHeight(font()))};
}

QSize TimeStrip::minimumSizeHint() const {
  return {100, TimeStripRows::HeightFor(Lanes(), 0)};
}

void TimeStrip::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  // In screen pixels, from a whole one on wherever the widget begins.
  const QTransform toDevice = painter.deviceTransform();
  const double ratio = toDevice.m11();
  const QPointF corner = toDevice.map(QPointF());
  painter.translate(toDevice.inverted().map(QPointF(std::round(corner.x()), std::round(corner.y()))));
  painter.scale(1 / ratio, 1 / ratio);
  const QSize size(static_cast<int>(std::ceil(width() * ratio)),
                   static_cast<int>(std::ceil(height() * ratio)));

  constexpr int Margin = TimeStripPainter::MarkMargin;
  const QRect shown = event->rect().adjusted(-Margin, 0, Margin, 0);
  const ColumnRange seen = {.First = static_cast<std::int64_t>(shown.left() * ratio),
                            .Last = static_cast<std::int64_t>((shown.right() + 1) * ratio)};
  TimeStripPainter strip(painter, palette(), LabelFont(font()), ratio, size, Lanes());
  strip.DrawScale(view_);
  for (int i = 0; i < Lanes(); ++i) {
    Lane& lane = lanes_[static_cast<std::size_t>(i)];
    if (lane.Columns.size() != static_cast<std::size_t>(size.width())) {
      lane.Columns = TimeColumns(lane.Bars, view_, size.width());
    }
    strip.DrawLane(i, lane.Columns, seen);
    if (const TimeBar* bar = CurrentBar(lane)) {
      strip.DrawCurrent(i, ColumnsOf(*bar, view_, size.width()));
    }
  }
  strip.DrawFrame();
}

bool TimeStrip::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto& help = static_cast<const QHelpEvent&>(*event);
    QToolTip::showText(help.globalPos(), TipAt(help.pos()), this);
    return true;
  }
  if (event->type() == QEvent::NativeGesture) {
    const auto& gesture = static_cast<const QNativeGestureEvent&>(*event);
    if (gesture.gestureType() == Qt::ZoomNativeGesture) {
      ZoomAt(gesture.position().x(), std::max(0.1, 1 + gesture.value()));
      return true;
    }
  }
  return QWidget::event(event);
}

void TimeStrip::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) {
    QWidget::mousePressEvent(event);
    return;
  }
  pressed_ = event->position().toPoint();
  pressedView_ = view_;
  isDragging_ = false;
}

void TimeStrip::mouseMoveEvent(QMouseEvent* event) {
  if (!pressed_) {
    return;
  }
  const int moved = event->position().toPoint().x() - pressed_->x();
  if (!isDragging_ && std::abs(moved) >= QApplication::startDragDistance()) {
    isDragging_ = true;
    setCursor(Qt::ClosedHandCursor);
  }
  if (isDragging_) {
    SetView(
        {.Start = pressedView_.Start - static_cast<double>(moved) / std::max(width(), 1) * pressedView_.Span,
         .Span = pressedView_.Span});
  }
}

void TimeStrip::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !std::exchange(pressed_, std::nullopt)) {
    return;
  }
  if (isDragging_) {
    unsetCursor();
  } else if (const auto index = SubtitleAt(event->position().x());
             index && rect().contains(event->position().toPoint())) {
    emit Chosen(*index);
  }
}

void TimeStrip::wheelEvent(QWheelEvent* event) {
  const QPointF notches = QPointF(event->angleDelta()) / NotchAngle;
  const bool moves = event->modifiers().testFlag(Qt::ShiftModifier) || notches.y() == 0;
  if (moves) {
    Scroll(-(notches.x() + notches.y()) * WheelScroll * width());
  } else {
    ZoomAt(event->position().x(), std::pow(WheelZoom, notches.y()));
  }
}

QString TimeStrip::TipAt(const QPoint& place) const {
  const double time = TimeAt(place.x() + 0.5);
  const auto lane =
      static_cast<std::size_t>(TimeStripRows(height(), Lanes(), LabelHeight(font())).LaneAt(place.y()));
  const auto index = Nearest(lanes_[lane], time);
  if (!index || DistanceTo(lanes_[lane].Bars[*index], time) > TipReach * view_.Span / std::max(width(), 1)) {
    return Time(time);
  }
  const TimeBar& bar = lanes_[lane].Bars[*index];
  const QString number = QString::number(*index + 1);
  QStringList tip = {lane == 0 ? Ui::Tr("Subtitle %1", {number})
                               : Ui::Tr("Second stream, subtitle %1", {number})};
  tip += bar.End > bar.Start ? Ui::Tr("%1 to %2", {Time(bar.Start), Time(bar.End)}) : Time(bar.Start);
  if (bar.Overlaps) {
    tip += Ui::Tr("overlaps the next one");
  }
  if (bar.HasProblem) {
    tip += Ui::Tr("has a problem");
  }
  return tip.join(QStringLiteral(", "));
}

void TimeStrip::DescribeLater() {
  if (!std::exchange(isDescribing_, true)) {
    QMetaObject::invokeMethod(this, &TimeStrip::Describe, Qt::QueuedConnection);
  }
}

void TimeStrip::Describe() {
  isDescribing_ = false;
  if (lanes_[0].Bars.empty()) {
    setAccessibleDescription(Ui::Tr("No subtitles"));
    return;
  }
  const auto first = static_cast<std::int64_t>(lanes_[0].Bars.size());
  QStringList parts = {Ui::Tr("%1 subtitle from %2 to %3", "%1 subtitles from %2 to %3", first,
                              {QString::number(first), Time(first_), Time(last_)})};
  if (overlaps_ > 0) {
    parts += Ui::Tr("%1 overlapping", {QString::number(overlaps_)});
  }
  if (problems_ > 0) {
    parts += Ui::Tr("%1 with problems", {QString::number(problems_)});
  }
  if (Lanes() > 1) {
    const auto second = static_cast<std::int64_t>(lanes_[1].Bars.size());
    parts += Ui::Tr("%1 subtitle in the second stream", "%1 subtitles in the second stream", second,
                    {QString::number(second)});
  }
  QString text = parts.join(QStringLiteral(", "));
  if (const TimeBar* bar = CurrentBar(lanes_[0])) {
    text += QStringLiteral("; ") +
            Ui::Tr("subtitle %1 at %2", {QString::number(*lanes_[0].Current + 1), Time(bar->Start)});
  }
  setAccessibleDescription(text);
}

}  // namespace quillmark
