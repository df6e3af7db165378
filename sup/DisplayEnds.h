#pragma once

#include <cstdint>
#include <optional>

#include "sup/SupStream.h"
#include "sup/Timecode.h"
#include "sup/ToolResult.h"

namespace quillmark {

/// The longest display that this program reads, in 90 kHz ticks: it takes the delay as signed.
inline constexpr std::int64_t MaxDisplay = 0x7FFF * TicksPerDelayUnit;

/// All in 90 kHz ticks, none negative.
struct EndOptions {
  /// A subtitle without an end gets one: the next start less the gap.
  bool Fill = false;
  std::int64_t Gap = 0;
  std::optional<std::int64_t> Longest = {};  ///< what Fill gives is no longer
  /// An end before that long after the start is put there.
  std::optional<std::int64_t> Shortest = {};
  /// An end after the next start is put at it less the gap. Has the last word.
  bool NoOverlap = false;
};

/// Other ends for the subtitles of `only`. The next start is that of the packet that follows, whichever it
/// is. Where a unit has a stop command, the delay of the last one is written; where it has none, a control
/// sequence with one is put behind the others, with the pointer to it and the unit's size, and the unit is
/// made even with a 0xFF.
/// A delay counts units of 1000 ticks, as in everything that this program shows and checks: an end that must
/// not be passed is rounded down to them, one that must be reached up.
/// A subtitle is without an end when it has no stop command, or its delay is 0.
[[nodiscard]] ToolResult SetDisplayEnds(const SupStream& stream, const SubtitleSet& only,
                                        const EndOptions& options);

}  // namespace quillmark
