#include "sup/Timecode.h"

#include <cstdlib>

#include "base/FloorDivision.h"

namespace quillmark {
namespace {

std::string AtLeastTwoDigits(std::int64_t value) {
  std::string digits = std::to_string(value < 0 ? -value : value);
  if (digits.size() < 2) {
    digits.insert(0, 1, '0');
  }
  return value < 0 ? "-" + digits : digits;
}

}  // namespace

TimeParts SplitTime(std::int64_t ticks) {
  // 100 hundredths are a whole second, so the rounded hundredths depend on the ticks within the second alone;
  // taking those first keeps the addition clear of the 64-bit limit.
  const std::int64_t withinSecond = FloorModulo(ticks, TicksPerSecond);
  return {.Hours = FloorDivide(ticks, 3600 * TicksPerSecond),
          .Minutes = static_cast<int>(FloorModulo(FloorDivide(ticks, 60 * TicksPerSecond), 60)),
          .Seconds = static_cast<int>(FloorModulo(FloorDivide(ticks, TicksPerSecond), 60)),
          .Hundredths = static_cast<int>((withinSecond + 450) / 900 % 100)};
}

std::string FormatTimecode(std::int64_t ticks) {
  const TimeParts parts = SplitTime(ticks);
  return AtLeastTwoDigits(parts.Hours) + ":" + AtLeastTwoDigits(parts.Minutes) + ":" +
         AtLeastTwoDigits(parts.Seconds) + "." + AtLeastTwoDigits(parts.Hundredths);
}

std::int64_t EndOfDisplay(std::int64_t startTicks, std::int16_t delay) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(startTicks) +
                                   static_cast<std::uint64_t>(delay * TicksPerDelayUnit));
}

std::int32_t DurationMs(std::int16_t delay) {
  return static_cast<std::int32_t>(FloorDivide(delay * TicksPerDelayUnit + 450, 90));
}

std::string FormatSeconds(std::int32_t milliseconds) {
  const std::int64_t hundredths = (std::abs(std::int64_t{milliseconds}) + 5) / 10;
  const std::string fraction = AtLeastTwoDigits(hundredths % 100);
  const std::string whole = hundredths >= 100 ? std::to_string(hundredths / 100) : "";
  return (milliseconds < 0 ? "-" : "") + whole + "." + fraction;
}

}  // namespace quillmark
