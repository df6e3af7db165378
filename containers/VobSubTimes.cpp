#include "containers/VobSubTimes.h"

#include <algorithm>
#include <cstdlib>

#include "base/FloorDivision.h"
#include "containers/PacketWalk.h"

namespace quillmark {
namespace {

/// The time stamp without the turns of its 33 bits, nearest to `ticks`.
std::int64_t Unwrapped(std::int64_t stamp, std::int64_t ticks) {
  constexpr std::int64_t Turn = std::int64_t{1} << TimeStampBits;
  const std::int64_t ahead = (stamp - ticks) & (Turn - 1);
  return ticks + (ahead < Turn / 2 ? ahead : ahead - Turn);
}

/// By how many whole milliseconds the line is later than its time stamp cut off to milliseconds.
std::int64_t ShiftOf(std::int64_t line, std::int64_t stamp) {
  return line - FloorDivide(Unwrapped(stamp, line * TicksPerMs), TicksPerMs);
}

/// Calls `function` with the shift of each subtitle that has one.
template <typename Function>
void ForEachShift(std::span<const VobSubTime> times, const Function& function) {
  for (const VobSubTime& time : times) {
    if (time.TimeStamp && time.Line >= 0) {
      function(ShiftOf(time.Line, *time.TimeStamp));
    }
  }
}

/// The shifts of several subtitles, at a glance.
struct ShiftRange {
  std::size_t Count = 0;
  std::int64_t Least = 0;
  std::int64_t Most = 0;
};

ShiftRange RangeOf(std::span<const VobSubTime> times) {
  ShiftRange range;
  ForEachShift(times, [&range](std::int64_t shift) {
    range.Least = range.Count == 0 ? shift : std::min(range.Least, shift);
    range.Most = range.Count == 0 ? shift : std::max(range.Most, shift);
    ++range.Count;
  });
  return range;
}

/// The shift that more than half of several subtitles have; 0 where there is none. `range` is that of
/// `times`.
std::int64_t CommonShift(std::span<const VobSubTime> times, const ShiftRange& range) {
  if (range.Count < 2) {
    return 0;
  }
  if (range.Least == range.Most) {
    return range.Least;
  }
  std::vector<std::int64_t> shifts;
  shifts.reserve(range.Count);
  ForEachShift(times, [&](std::int64_t shift) { shifts.push_back(shift); });
  const auto middle = shifts.begin() + static_cast<std::ptrdiff_t>(shifts.size() / 2);
  std::ranges::nth_element(shifts, middle);
  const auto near = std::ranges::count_if(
      shifts, [shift = *middle](std::int64_t other) { return std::abs(other - shift) <= 1; });
  return near * 2 > static_cast<std::ptrdiff_t>(shifts.size()) ? *middle : 0;
}

std::int64_t TicksOf(const VobSubTime& time, std::int64_t shift) {
  const std::int64_t line = time.Line * TicksPerMs;
  const std::int64_t delay = time.Delay * TicksPerMs;
  if (!time.TimeStamp) {
    return line + delay;
  }
  for (const std::int64_t tried : {std::int64_t{0}, shift * TicksPerMs}) {
    const std::int64_t stamp = Unwrapped(*time.TimeStamp, line - tried) + tried;
    if (std::abs(stamp - line) <= TicksPerMs) {
      return stamp + delay;
    }
  }
  return (time.Line < 0 ? *time.TimeStamp : line) + delay;
}

}  // namespace

std::vector<std::int64_t> TicksOf(std::span<const VobSubTime> times) {
  const std::int64_t shift = CommonShift(times, RangeOf(times));
  std::vector<std::int64_t> ticks;
  ticks.reserve(times.size());
  for (const VobSubTime& time : times) {
    ticks.push_back(TicksOf(time, shift));
  }
  return ticks;
}

std::vector<bool> DifferingTimes(std::span<const VobSubTime> times) {
  constexpr std::int64_t Second = 1000;
  std::vector<bool> differ(times.size());
  const auto first =
      std::ranges::find_if(times, [](const VobSubTime& time) { return time.TimeStamp.has_value(); });
  if (first == times.end() || std::ranges::all_of(times, [stamp = first->TimeStamp](const VobSubTime& time) {
        return !time.TimeStamp || time.TimeStamp == stamp;
      })) {
    return differ;
  }
  const ShiftRange range = RangeOf(times);
  if (range.Least >= -Second && range.Most <= Second) {
    return differ;
  }
  const std::int64_t common = CommonShift(times, range);
  for (std::size_t i = 0; i < times.size(); ++i) {
    if (times[i].TimeStamp && times[i].Line >= 0) {
      const std::int64_t shift = ShiftOf(times[i].Line, *times[i].TimeStamp);
      differ[i] = std::abs(shift) > Second && std::abs(shift - common) > Second;
    }
  }
  return differ;
}

}  // namespace quillmark
