#pragma once

#include <cstdint>
#include <string>

namespace quillmark {

/// Times are signed 64-bit counts of 90 kHz ticks.
inline constexpr std::int64_t TicksPerSecond = 90000;
/// One unit of a control sequence's delay field counts as 1000 ticks here (not the 1024 of the DVD clock).
inline constexpr std::int64_t TicksPerDelayUnit = 1000;
/// What players count it as, who take the delay as unsigned, too.
inline constexpr std::uint32_t TicksPerPlayerDelayUnit = 1024;

/// A time as it is shown. Hours are floored and may be negative; the other parts are 0-59, 0-59 and 0-99.
struct TimeParts {
  std::int64_t Hours = 0;
  int Minutes = 0;
  int Seconds = 0;
  int Hundredths = 0;
};

/// Kept oddity: only the hundredths are rounded, and their carry is dropped, so 0.995 s and more within a
/// second show as .00 of the same second.
[[nodiscard]] TimeParts SplitTime(std::int64_t ticks);

/// "hh:mm:ss.cc", each part with at least two digits.
[[nodiscard]] std::string FormatTimecode(std::int64_t ticks);

/// start + delay x 1000 ticks; wraps like the 64-bit field that it is compared with, so no stored time can
/// overflow it.
[[nodiscard]] std::int64_t EndOfDisplay(std::int64_t startTicks, std::int16_t delay);

/// floor((delay x 1000 + 450) / 90) milliseconds. Kept oddity: the 450 is a bias of 5 ms.
[[nodiscard]] std::int32_t DurationMs(std::int16_t delay);

/// How long players show it: delay x 1024 ticks, to the nearest millisecond. The delay is as it is stored.
[[nodiscard]] std::int32_t PlayerDurationMs(std::int16_t delay);

/// Seconds with two decimals, rounded half away from zero, and no digit before the point below one second:
/// 1116 ms is "1.12", 560 ms ".56", -1 ms "-.00".
[[nodiscard]] std::string FormatSeconds(std::int32_t milliseconds);

}  // namespace quillmark
