#pragma once

#include <cstdint>
#include <optional>

#include "base/Ratio.h"
#include "base/Result.h"
#include "sup/SupStream.h"
#include "sup/ToolResult.h"

namespace quillmark {

/// A subtitle and when it is to start.
struct TimePoint {
  std::int64_t Number = 1;  ///< from 1
  std::int64_t Time = 0;    ///< 90 kHz ticks
};

struct RetimeOptions {
  /// New times are old ones times this, rounded to nearest, halves away from zero ...
  Ratio Scale = {};
  /// ... plus this, in 90 kHz ticks.
  std::int64_t Shift = 0;
  /// In place of both: the straight line on which both subtitles start as they say. What it does to the
  /// distance of two times it does to delays.
  struct Line {
    TimePoint A;
    TimePoint B;
  };
  std::optional<Line> Points = {};
};

/// A Failure where the stream has no straight line through the two points that goes forwards, with the
/// reason.
Result<void> HasTimeLine(const SupStream& stream, const RetimeOptions& options);

/// Other start times for the subtitles of `only`, and delays of all their control sequences that are scaled
/// alike: one that is not 0 never becomes 0, and none more than 65535. Names the bytes of both alone. A
/// Failure, which names the first such subtitle, where a start would become negative or does not fit its
/// 64-bit field; then nothing is to be changed.
[[nodiscard]] Result<ToolResult> Retime(const SupStream& stream, const SubtitleSet& only,
                                        const RetimeOptions& options);

}  // namespace quillmark
