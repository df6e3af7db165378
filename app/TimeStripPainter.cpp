#include "app/TimeStripPainter.h"

#include <algorithm>
#include <cmath>

#include <QFontMetrics>
#include <QPainter>
#include <QPalette>
#include <QPolygonF>

#include "app/SubtitleSentence.h"

namespace quillmark {
namespace {

// Logical pixels.
constexpr int EdgeWidth = 1;
constexpr int WedgeHeight = 5;
constexpr int WedgeWidth = 8;
constexpr int WedgeDistance = 5;  ///< of two wedges that are told apart
constexpr int BarHeight = 9;
constexpr int LaneGap = 2;
constexpr int LeastLaneHeight = WedgeHeight + 4;
constexpr int OverlapGap = 2;
constexpr int LeastOverlap = 3;
constexpr int LabelDistance = 24;

QColor Blend(const QColor& one, const QColor& other, double part) {
  const auto mix = [part](double a, double b) { return static_cast<float>(a * part + b * (1 - part)); };
  return QColor::fromRgbF(mix(one.redF(), other.redF()), mix(one.greenF(), other.greenF()),
                          mix(one.blueF(), other.blueF()));
}

bool IsDark(const QColor& ground) {
  return qGray(ground.rgb()) < 128;
}

/// Hours, minutes and seconds, with tenths where marks stand closer than a second.
QString LabelOf(double milliseconds, std::uint32_t step) {
  const QString time = TimeInWords(std::llround(milliseconds) * TicksPerMillisecond);
  const qsizetype point = time.indexOf('.');
  return time.left(step < 1000 ? point + 2 : point);
}

}  // namespace

TimeStripRows::TimeStripRows(int height, int lanes, int labels, double ratio)
    : height_(height), lanes_(lanes), lanesEnd_(height), ratio_(ratio) {
  if (height - labels >= lanes * LeastLaneHeight * ratio) {
    lanesEnd_ = height - labels;
  }
}

TimeStripRows::Lane TimeStripRows::Of(int lane) const {
  const auto pixels = [this](int logical) { return static_cast<int>(std::round(logical * ratio_)); };
  const int room = lanesEnd_ - pixels(2 * EdgeWidth);
  const int top = pixels(EdgeWidth) + room * lane / lanes_;
  const int end = pixels(EdgeWidth) + room * (lane + 1) / lanes_ - (lane + 1 < lanes_ ? pixels(LaneGap) : 0);
  return {.Top = top, .BarTop = std::min(top + pixels(WedgeHeight), end), .End = end};
}

int TimeStripRows::LaneAt(int y) const {
  return lanes_ > 1 && y >= Of(1).Top ? 1 : 0;
}

int TimeStripRows::HeightFor(int lanes, int labels) {
  return 2 * EdgeWidth + lanes * (WedgeHeight + BarHeight) + (lanes - 1) * LaneGap + labels;
}

TimeStripPainter::TimeStripPainter(QPainter& painter, const QPalette& palette, const QFont& labelFont,
                                   double ratio, const QSize& size, int lanes)
    : painter_(painter),
      labelFont_(labelFont),
      ratio_(ratio),
      size_(size),
      rows_(size.height(), lanes, static_cast<int>(std::ceil(QFontMetrics(labelFont).height() * ratio)),
            ratio),
      ground_(palette.color(QPalette::Base)),
      text_(palette.color(QPalette::Text)),
      bar_(Blend(text_, ground_, 0.6)),
      faint_(Blend(text_, ground_, 0.15)),
      overlap_(IsDark(ground_) ? QColor(0xFF, 0xB4, 0x4A) : QColor(0xA8, 0x56, 0x00)),
      problem_(IsDark(ground_) ? QColor(0xFF, 0x7A, 0x7A) : QColor(0xC4, 0x0A, 0x2A)),
      current_(palette.color(QPalette::Highlight)) {}

int TimeStripPainter::Pixels(double logical) const {
  return std::max(1, static_cast<int>(std::round(logical * ratio_)));
}

void TimeStripPainter::DrawScale(const TimeView& view) {
  painter_.fillRect(QRect(QPoint(), size_), ground_);
  const double perPixel = view.Span / size_.width();
  const QFontMetrics metrics(labelFont_);
  const double labelWidth = metrics.horizontalAdvance(QStringLiteral("00:00:00.0"));
  const std::uint32_t step = ScaleStep(perPixel, (labelWidth + LabelDistance) * ratio_);
  painter_.setPen(Blend(text_, ground_, 0.8));
  painter_.setFont(labelFont_);
  for (double time = std::ceil(view.Start / step) * step; time < view.Start + view.Span; time += step) {
    const int x = static_cast<int>((time - view.Start) / perPixel);
    painter_.fillRect(x, 0, Pixels(1), size_.height(), faint_);
    if (rows_.HasLabels()) {
      painter_.save();
      painter_.scale(ratio_, ratio_);
      // Whole logical pixels would move the labels against their marks.
      painter_.drawText(QPointF((x + Pixels(1)) / ratio_ + 2, (size_.height() / ratio_) - metrics.descent()),
                        LabelOf(time, step));
      painter_.restore();
    }
  }
}

void TimeStripPainter::DrawLane(int lane, std::span<const std::uint8_t> columns, const ColumnRange& seen) {
  const TimeStripRows::Lane rows = rows_.Of(lane);
  const auto end = std::min(columns.size(), static_cast<std::size_t>(seen.Last + 1));
  columns = columns.first(end);
  DrawRuns(columns, TimeColumn::Bar,
           [&](int x, int width) { painter_.fillRect(x, rows.BarTop, width, rows.End - rows.BarTop, bar_); });
  DrawRuns(columns, TimeColumn::Problem, [&](int x, int width) {
    painter_.fillRect(x, rows.BarTop, width, rows.End - rows.BarTop, problem_);
  });
  // Raised above the others, and parted lengthwise.
  const int top = (rows.Top + rows.BarTop) / 2;
  const int half = std::max(1, (rows.End - top - Pixels(OverlapGap)) / 2);
  DrawRuns(columns, TimeColumn::Overlap, [&](int x, int width) {
    width = std::max(width, Pixels(LeastOverlap));
    painter_.fillRect(x, top, width, rows.End - top, ground_);
    painter_.fillRect(x, top, width, half, overlap_);
    painter_.fillRect(x, rows.End - half, width, half, overlap_);
  });
  std::size_t next = 0;
  for (std::size_t x = 0; x < columns.size(); ++x) {
    if (x >= next && (columns[x] & TimeColumn::ProblemStart) != 0) {
      next = x + static_cast<std::size_t>(Pixels(WedgeDistance));
      DrawWedge(static_cast<double>(x) + 0.5, rows.BarTop, rows.BarTop - rows.Top, Pixels(WedgeWidth),
                problem_);
    }
  }
}

template <typename Draw>
void TimeStripPainter::DrawRuns(std::span<const std::uint8_t> columns, std::uint8_t flag, const Draw& draw) {
  const auto begins = [&](std::size_t x) { return (columns[x] & TimeColumn::BarStart) != 0; };
  for (std::size_t x = 0; x < columns.size();) {
    const std::size_t first = x++;
    if ((columns[first] & flag) == 0) {
      continue;
    }
    while (x < columns.size() && (columns[x] & flag) != 0 && !begins(x)) {
      ++x;
    }
    const int parted = begins(first) ? Pixels(1) : 0;
    draw(static_cast<int>(first) + parted, static_cast<int>(x - first) - parted);
  }
}

void TimeStripPainter::DrawCurrent(int lane, const ColumnRange& columns) {
  const TimeStripRows::Lane rows = rows_.Of(lane);
  const auto first = static_cast<int>(std::max<std::int64_t>(columns.First, -Pixels(MarkMargin)));
  const auto last =
      static_cast<int>(std::min<std::int64_t>(columns.Last, size_.width() + Pixels(MarkMargin)));
  painter_.fillRect(first, rows.BarTop, std::max(last - first + 1, Pixels(3)), rows.End - rows.BarTop,
                    current_);
  const int width = Pixels(2);
  const int left = first - width / 2;
  painter_.fillRect(left, rows.Top, width, rows.End - rows.Top, text_);
  const double middle = left + width * 0.5;
  DrawWedge(middle, rows.Top + Pixels(4), Pixels(4), Pixels(8), text_);
  DrawWedge(middle, rows.End - Pixels(4), -Pixels(4), Pixels(8), text_);
}

void TimeStripPainter::DrawFrame() {
  const int edge = Pixels(EdgeWidth);
  const QColor colour = Blend(text_, ground_, 0.4);
  const int width = size_.width();
  const int height = size_.height();
  painter_.fillRect(0, 0, width, edge, colour);
  painter_.fillRect(0, height - edge, width, edge, colour);
  painter_.fillRect(0, 0, edge, height, colour);
  painter_.fillRect(width - edge, 0, edge, height, colour);
}

void TimeStripPainter::DrawWedge(double x, double tip, double height, double width, const QColor& colour) {
  painter_.setRenderHint(QPainter::Antialiasing);
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(colour);
  painter_.drawPolygon(QPolygonF(
      {QPointF(x - width / 2, tip - height), QPointF(x + width / 2, tip - height), QPointF(x, tip)}));
  painter_.setRenderHint(QPainter::Antialiasing, false);
}

}  // namespace quillmark
