#include "sup/DisplayIntervals.h"

#include <algorithm>
#include <utility>

#include "sup/DisplayEnds.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

constexpr std::uint64_t UnitTicks = TicksPerDelayUnit;
constexpr std::uint64_t MaxUnitDelay = MaxDisplay / TicksPerDelayUnit;
/// How many changes of what is shown one piece of the work goes through.
constexpr int ChangesAtOnce = 8192;

bool IsShort(const DisplayInterval& interval) {
  return interval.Ticks() < UnitTicks;
}

std::uint64_t DelayOf(const DisplayInterval& interval, bool isFollowed) {
  const std::uint64_t added = isFollowed ? UnitTicks - 1 : UnitTicks / 2;
  const std::uint64_t ticks = interval.Ticks();
  return std::max<std::uint64_t>(ticks / UnitTicks + (ticks % UnitTicks + added) / UnitTicks, 1);
}

}  // namespace

DisplayIntervals::DisplayIntervals(std::int64_t join)
    : join_(static_cast<std::uint64_t>(std::clamp<std::int64_t>(join, 0, MaxJoin))) {}

bool DisplayIntervals::Step() {
  hasBegun_ = true;
  if (First.Sort() || Second.Sort()) {
    return true;
  }
  if (isFinished_) {
    return false;
  }
  if (!std::exchange(isTimed_, true)) {
    time_ = std::min(First.Start(), Second.Start());
  }
  for (int change = 0; change < ChangesAtOnce && !isFinished_; ++change) {
    if (First.IsDone() && Second.IsDone()) {
      Finish();
    } else {
      MakeNext();
    }
  }
  return true;
}

/// Up to the next change of either stream.
void DisplayIntervals::MakeNext() {
  const std::int64_t change = std::min(First.ChangeAfter(time_), Second.ChangeAfter(time_));
  const DisplayInterval interval = {
      .Start = time_, .End = change, .First = First.ShownAt(time_), .Second = Second.ShownAt(time_)};
  if (interval.First || interval.Second) {
    Take(interval);
  }
  time_ = change;
  First.MoveTo(time_);
  Second.MoveTo(time_);
}

/// Closes the gap before it.
void DisplayIntervals::Take(const DisplayInterval& interval) {
  if (open_) {
    const DisplayInterval gap = {.Start = open_->End, .End = interval.Start};
    if (gap.Ticks() < join_) {
      open_->End = gap.End;
    }
    Keep(*open_);
  }
  open_ = interval;
}

/// Gives away what is too short, and makes one of neighbours that show the same. An interval that is short
/// for now has nothing right before it, else it would have been given to that.
void DisplayIntervals::Keep(const DisplayInterval& interval) {
  if (!kept_ || kept_->End != interval.Start) {
    if (kept_) {
      Append(*kept_, false);
    }
    kept_ = interval;
    return;
  }
  const bool isSame = kept_->First == interval.First && kept_->Second == interval.Second;
  if (IsShort(*kept_)) {
    kept_->First = interval.First;
    kept_->Second = interval.Second;
  } else if (!IsShort(interval) && !isSame) {
    Append(*kept_, true);
    kept_ = interval;
  }
  kept_->End = interval.End;
}

void DisplayIntervals::Finish() {
  if (open_) {
    Keep(*open_);
    Append(*kept_, false);
  }
  First = {};
  Second = {};
  isFinished_ = true;
}

/// A rest of one delay unit may stand for less than that, so it gets another one.
void DisplayIntervals::Append(const DisplayInterval& interval, bool isFollowed) {
  DisplayInterval rest = interval;
  std::uint64_t delay = DelayOf(interval, isFollowed);
  while (delay > MaxUnitDelay) {
    const std::uint64_t part = delay == MaxUnitDelay + 1 ? MaxUnitDelay - 1 : MaxUnitDelay;
    DisplayInterval unit = rest;
    unit.Delay = static_cast<std::uint16_t>(part);
    unit.End = unit.Start + static_cast<std::int64_t>(part * UnitTicks);
    made_.push_back(unit);
    rest.Start = unit.End;
    delay -= part;
  }
  rest.Delay = static_cast<std::uint16_t>(delay);
  made_.push_back(rest);
}

}  // namespace quillmark
