#include "sup/DisplayIntervals.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/Ratio.h"
#include "sup/DisplayEnds.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

constexpr std::int64_t LongestWithoutEnd = 3600 * TicksPerSecond;
constexpr std::uint64_t UnitTicks = TicksPerDelayUnit;
constexpr std::uint64_t MaxUnitDelay = MaxDisplay / TicksPerDelayUnit;
constexpr std::int64_t Never = std::numeric_limits<std::int64_t>::max();

struct ShownTime {
  std::int64_t Start = 0;
  std::int64_t End = 0;
  std::size_t Index = 0;
};

/// In order and apart from each other; those that are never shown are left out.
std::vector<ShownTime> ShownTimes(std::span<const OwnDisplay> displays) {
  std::vector<ShownTime> times;
  times.reserve(displays.size());
  for (std::size_t i = 0; i < displays.size(); ++i) {
    times.push_back({.Start = displays[i].Start, .End = 0, .Index = i});
  }
  if (!std::ranges::is_sorted(times, {}, &ShownTime::Start)) {
    std::ranges::stable_sort(times, {}, &ShownTime::Start);
  }
  for (std::size_t i = 0; i < times.size(); ++i) {
    ShownTime& time = times[i];
    const bool isLast = i + 1 == times.size();
    const std::int64_t delay = displays[time.Index].Delay;
    const std::int64_t withoutEnd = isLast ? LastSubtitleDelay * TicksPerDelayUnit : LongestWithoutEnd;
    time.End = Sum(time.Start, delay != 0 ? delay * TicksPerDelayUnit : withoutEnd).value_or(Never);
    time.End = isLast ? time.End : std::min(time.End, times[i + 1].Start);
  }
  std::erase_if(times, [](const ShownTime& time) { return time.End <= time.Start; });
  return times;
}

/// One stream's displays, gone through in time.
class DisplayCursor {
 public:
  explicit DisplayCursor(std::vector<ShownTime> times) : times_(std::move(times)) {}

  [[nodiscard]] bool IsDone() const { return at_ == times_.size(); }
  [[nodiscard]] std::int64_t Start() const { return IsDone() ? Never : times_[at_].Start; }
  [[nodiscard]] std::optional<std::size_t> ShownAt(std::int64_t time) const {
    return !IsDone() && times_[at_].Start <= time ? std::optional(times_[at_].Index) : std::nullopt;
  }
  /// When another one is shown, or none.
  [[nodiscard]] std::int64_t ChangeAfter(std::int64_t time) const {
    return Start() > time || IsDone() ? Start() : times_[at_].End;
  }
  /// `time` is not after the next change.
  void MoveTo(std::int64_t time) {
    if (!IsDone() && times_[at_].End <= time) {
      ++at_;
    }
  }

 private:
  std::vector<ShownTime> times_;
  std::size_t at_ = 0;
};

/// An interval for each change of either stream, where anything is shown.
std::vector<DisplayInterval> Changes(DisplayCursor first, DisplayCursor second) {
  std::vector<DisplayInterval> intervals;
  std::int64_t time = std::min(first.Start(), second.Start());
  while (!first.IsDone() || !second.IsDone()) {
    const std::int64_t change = std::min(first.ChangeAfter(time), second.ChangeAfter(time));
    const DisplayInterval interval = {
        .Start = time, .End = change, .First = first.ShownAt(time), .Second = second.ShownAt(time)};
    if (interval.First || interval.Second) {
      intervals.push_back(interval);
    }
    time = change;
    first.MoveTo(time);
    second.MoveTo(time);
  }
  return intervals;
}

void CloseGaps(std::vector<DisplayInterval>& intervals, std::uint64_t join) {
  for (std::size_t i = 0; i + 1 < intervals.size(); ++i) {
    const DisplayInterval gap = {.Start = intervals[i].End, .End = intervals[i + 1].Start};
    if (gap.Ticks() < join) {
      intervals[i].End = gap.End;
    }
  }
}

bool IsShort(const DisplayInterval& interval) {
  return interval.Ticks() < UnitTicks;
}

/// Gives away what is too short, and makes one of neighbours that show the same. An interval that is short
/// for now has nothing right before it, else it would have been given to that.
std::vector<DisplayInterval> WithoutShort(const std::vector<DisplayInterval>& intervals) {
  std::vector<DisplayInterval> kept;
  kept.reserve(intervals.size());
  for (const DisplayInterval& interval : intervals) {
    if (kept.empty() || kept.back().End != interval.Start) {
      kept.push_back(interval);
      continue;
    }
    DisplayInterval& before = kept.back();
    const bool isSame = before.First == interval.First && before.Second == interval.Second;
    if (IsShort(before)) {
      before.First = interval.First;
      before.Second = interval.Second;
    } else if (!IsShort(interval) && !isSame) {
      kept.push_back(interval);
      continue;
    }
    before.End = interval.End;
  }
  return kept;
}

std::uint64_t DelayOf(const DisplayInterval& interval, bool isFollowed) {
  const std::uint64_t added = isFollowed ? UnitTicks - 1 : UnitTicks / 2;
  const std::uint64_t ticks = interval.Ticks();
  return std::max<std::uint64_t>(ticks / UnitTicks + (ticks % UnitTicks + added) / UnitTicks, 1);
}

/// A rest of one delay unit may stand for less than that, so it gets another one.
void AppendUnits(DisplayInterval interval, std::uint64_t delay, std::vector<DisplayInterval>& units) {
  while (delay > MaxUnitDelay) {
    const std::uint64_t part = delay == MaxUnitDelay + 1 ? MaxUnitDelay - 1 : MaxUnitDelay;
    DisplayInterval unit = interval;
    unit.Delay = static_cast<std::uint16_t>(part);
    unit.End = unit.Start + static_cast<std::int64_t>(part * UnitTicks);
    units.push_back(unit);
    interval.Start = unit.End;
    delay -= part;
  }
  interval.Delay = static_cast<std::uint16_t>(delay);
  units.push_back(interval);
}

}  // namespace

std::vector<DisplayInterval> DisplayIntervals(std::span<const OwnDisplay> first,
                                              std::span<const OwnDisplay> second, std::int64_t join) {
  std::vector<DisplayInterval> intervals =
      Changes(DisplayCursor(ShownTimes(first)), DisplayCursor(ShownTimes(second)));
  CloseGaps(intervals, static_cast<std::uint64_t>(std::clamp<std::int64_t>(join, 0, MaxJoin)));
  intervals = WithoutShort(intervals);
  std::vector<DisplayInterval> units;
  units.reserve(intervals.size());
  for (std::size_t i = 0; i < intervals.size(); ++i) {
    const bool isFollowed = i + 1 < intervals.size() && intervals[i + 1].Start == intervals[i].End;
    AppendUnits(intervals[i], DelayOf(intervals[i], isFollowed), units);
  }
  return units;
}

}  // namespace quillmark
