#include "app/TimeColumns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace quillmark {
namespace {

constexpr std::int64_t ClockTicks = std::int64_t{1} << 33U;

/// A bar of fewer columns would be lost in the line that parts it from the one before.
constexpr std::int64_t ColumnsToPart = 4;

std::uint32_t Milliseconds(std::int64_t ticks) {
  return static_cast<std::uint32_t>(std::clamp<std::int64_t>(ticks, 0, ClockTicks) / TicksPerMillisecond);
}

void Mark(std::uint8_t& flags, std::uint8_t flag) {
  flags = static_cast<std::uint8_t>(flags | flag);
}

/// Where ranges of columns begin and end: their depth at a column is the sum up to it.
class Depths {
 public:
  explicit Depths(std::size_t columns) : changes_(columns + 1) {}

  void Add(std::size_t first, std::size_t last) {
    ++changes_[first];
    --changes_[last + 1];
  }
  /// Adds `flag` to the columns that have a range.
  void MarkIn(std::vector<std::uint8_t>& columns, std::uint8_t flag) const {
    std::int32_t depth = 0;
    for (std::size_t x = 0; x < columns.size(); ++x) {
      depth += changes_[x];
      if (depth > 0) {
        Mark(columns[x], flag);
      }
    }
  }

 private:
  std::vector<std::int32_t> changes_;
};

}  // namespace

void TimeBar::SetMarks(PacketMarks marks) {
  const std::uint64_t overlap = PacketMarks::BitOf(StreamProblemCode::Overlap);
  Overlaps = (marks.Bits & overlap) != 0;
  HasProblem = (marks.Bits & PacketMarks::AllProblems & ~overlap) != 0;
}

TimeBar BarOf(std::int64_t startTicks, std::int64_t endTicks, PacketMarks marks) {
  TimeBar bar;
  bar.Start = Milliseconds(startTicks);
  bar.End = std::max(bar.Start, Milliseconds(endTicks));
  bar.SetMarks(marks);
  return bar;
}

ColumnRange ColumnsOf(const TimeBar& bar, const TimeView& view, int columns) {
  const double scale = columns / view.Span;
  const auto first = static_cast<std::int64_t>(std::floor((bar.Start - view.Start) * scale));
  const auto end = static_cast<std::int64_t>(std::ceil((bar.End - view.Start) * scale));
  return {.First = first, .Last = std::max(first, end - 1)};
}

std::vector<std::uint8_t> TimeColumns(std::span<const TimeBar> bars, const TimeView& view, int columns) {
  std::vector<std::uint8_t> flags(static_cast<std::size_t>(std::max(columns, 0)));
  Depths bar(flags.size());
  Depths overlap(flags.size());
  Depths problem(flags.size());
  for (const TimeBar& subtitle : bars) {
    const ColumnRange range = ColumnsOf(subtitle, view, columns);
    if (range.First >= columns || range.Last < 0) {
      continue;
    }
    const auto first = static_cast<std::size_t>(std::max<std::int64_t>(range.First, 0));
    const auto last = static_cast<std::size_t>(std::min<std::int64_t>(range.Last, columns - 1));
    bar.Add(first, last);
    if (subtitle.Overlaps) {
      overlap.Add(first, last);
    }
    if (subtitle.HasProblem) {
      problem.Add(first, last);
      Mark(flags[first], TimeColumn::ProblemStart);
    }
    if (range.First >= 0 && range.Last - range.First + 1 >= ColumnsToPart) {
      Mark(flags[first], TimeColumn::BarStart);
    }
  }
  bar.MarkIn(flags, TimeColumn::Bar);
  overlap.MarkIn(flags, TimeColumn::Overlap);
  problem.MarkIn(flags, TimeColumn::Problem);
  return flags;
}

std::uint32_t ScaleStep(double millisecondsPerPixel, double pixels) {
  constexpr std::uint32_t Second = 1000;
  constexpr std::uint32_t Minute = 60 * Second;
  constexpr std::uint32_t Hour = 60 * Minute;
  for (const std::uint32_t step :
       {Second / 10, Second / 2, Second, 2 * Second, 5 * Second, 10 * Second, 15 * Second, 30 * Second,
        Minute, 2 * Minute, 5 * Minute, 10 * Minute, 15 * Minute, 30 * Minute, Hour, 2 * Hour, 5 * Hour}) {
    if (step >= pixels * millisecondsPerPixel) {
      return step;
    }
  }
  return 10 * Hour;
}

}  // namespace quillmark
