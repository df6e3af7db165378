#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace quillmark {

/// When a subtitle is shown, as its packet says.
struct OwnDisplay {
  std::int64_t Start = 0;   ///< 90 kHz ticks
  std::uint16_t Delay = 0;  ///< delay units until it ends; 0: it has no end of its own
};

/// The delay of a last subtitle that has no end of its own.
inline constexpr std::uint16_t LastSubtitleDelay = 1000;
/// The longest gap that can be closed, in 90 kHz ticks: an hour.
inline constexpr std::int64_t MaxJoin = 324'000'000;

/// What is shown from Start until End, in 90 kHz ticks: indexes into two lists of displays, one or both.
struct DisplayInterval {
  std::int64_t Start = 0;
  std::int64_t End = 0;     ///< after Start
  std::uint16_t Delay = 0;  ///< of a unit that starts then and shows it: 1 to 32767, the longest that is read
  std::optional<std::size_t> First = {};
  std::optional<std::size_t> Second = {};

  [[nodiscard]] std::uint64_t Ticks() const {
    return static_cast<std::uint64_t>(End) - static_cast<std::uint64_t>(Start);
  }
  bool operator==(const DisplayInterval&) const = default;
};

/// The fewest intervals, in the order of their times, that show what two streams show.
///
/// A stream shows one subtitle at a time: a start ends what was shown before, and of subtitles that start
/// together the last one in the list is shown. One without an end of its own is shown until the next start,
/// for an hour at most; the last one for LastSubtitleDelay. The lists need not be sorted, and what would pass
/// the 64 bits of times ends with them.
///
/// Gaps of less than `join` ticks, 0 to MaxJoin, are closed: what stands before them is shown longer. No
/// interval is shorter than a delay unit: what would be is given to the interval before it or, where nothing
/// is shown right before, to the one after it.
///
/// Starts are exact. Where an interval follows at once the delay is rounded up, as a gap would be seen and an
/// end after the next start is not; at other ends it is rounded to nearest, halves up. What is longer than a
/// unit's delay can say is several intervals.
[[nodiscard]] std::vector<DisplayInterval> DisplayIntervals(std::span<const OwnDisplay> first,
                                                            std::span<const OwnDisplay> second,
                                                            std::int64_t join);

}  // namespace quillmark
