#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quillmark {

inline constexpr std::int64_t TicksPerMs = 90;

/// What a VobSub pair says of when a subtitle is shown.
struct VobSubTime {
  std::int64_t Line = 0;                       ///< milliseconds; the index's line without its delay
  std::int64_t Delay = 0;                      ///< milliseconds
  std::optional<std::int64_t> TimeStamp = {};  ///< of the unit: 90 kHz ticks, 33 bits
};

/// The times of one language's subtitles in ticks, in the same order.
///
/// An index has milliseconds, which programs make of ticks by cutting off or by rounding; the unit's time
/// stamp has the ticks. Where both are within one millisecond of each other the time stamp counts. So they
/// may be after a shift in whole milliseconds that most of the language has, since programs shift an index
/// and leave the units as they are. A line before 0 is taken for a wrong one if there is a time stamp. Time
/// stamps that have passed their 33 bits are the nearest to the line.
[[nodiscard]] std::vector<std::int64_t> TicksOf(std::span<const VobSubTime> times);

/// Of each of one language's subtitles whether its time stamp is more than a second from the line, and from
/// the line after the shift that most of the language has. Time stamps that are all the same say nothing, and
/// neither do lines before 0.
[[nodiscard]] std::vector<bool> DifferingTimes(std::span<const VobSubTime> times);

}  // namespace quillmark
