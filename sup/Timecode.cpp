#include "sup/Timecode.h"

#include <bit>
#include <cstdlib>

#include "base/FloorDivision.h"

namespace quillmark {
namespace {

/// Appends in place: every packet of a stream has its timecode made, and this way none needs the heap.
void AppendAtLeastTwoDigits(std::string& text, std::int64_t value) {
  if (value >= 0 && value < 100) {
    text += static_cast<char>('0' + value / 10);
    text += static_cast<char>('0' + value % 10);
    return;
  }
  if (value < 0) {
    text += '-';
    value = -value;  // hours at most, far from the 64-bit limit
  }
  if (value < 10) {
    text += '0';
  }
  text += std::to_string(value);
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
  std::string text;
  AppendAtLeastTwoDigits(text, parts.Hours);
  text += ':';
  AppendAtLeastTwoDigits(text, parts.Minutes);
  text += ':';
  AppendAtLeastTwoDigits(text, parts.Seconds);
  text += '.';
  AppendAtLeastTwoDigits(text, parts.Hundredths);
  return text;
}

std::int64_t EndOfDisplay(std::int64_t startTicks, std::int16_t delay) {
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(startTicks) +
                                   static_cast<std::uint64_t>(delay * TicksPerDelayUnit));
}

std::int32_t DurationMs(std::int16_t delay) {
  return static_cast<std::int32_t>(FloorDivide(delay * TicksPerDelayUnit + 450, 90));
}

std::int32_t PlayerDurationMs(std::int16_t delay) {
  const std::uint32_t ticks = std::bit_cast<std::uint16_t>(delay) * TicksPerPlayerDelayUnit;
  return static_cast<std::int32_t>((ticks + 45) / 90);
}

std::string FormatSeconds(std::int32_t milliseconds) {
  const std::int64_t hundredths = (std::abs(std::int64_t{milliseconds}) + 5) / 10;
  std::string text = milliseconds < 0 ? "-" : "";
  if (hundredths >= 100) {
    text += std::to_string(hundredths / 100);
  }
  text += '.';
  AppendAtLeastTwoDigits(text, hundredths % 100);
  return text;
}

}  // namespace quillmark
