#pragma once

#include <cstdint>
#include <span>

#include "sup/ControlSequences.h"

namespace quillmark {

/// What there is to say of a unit's control sequences, looked at as WalkControl does. Positions count from
/// the unit's start, its size field.
struct ControlSurvey {
  using Ending = ControlEnding;
  Ending End = Ending::PointsOutside;
  std::int32_t EndPosition = 0;  ///< of the sequence where the walk ended
  std::int32_t Sequences = 0;    ///< sequences begun
  /// Commands that are none of 0x00-0x06 and 0xFF, and where the first of them stands. 0x07, the change of
  /// colours within the picture, is one of them; it is stepped over with its arguments.
  std::int32_t UnknownCommands = 0;
  std::int32_t FirstUnknown = 0;
  /// The first sequence that does not stand right after the one before it; 0 when there is none.
  std::int32_t FirstGap = 0;
  bool IsForced = false;  ///< a command starts the display even where subtitles are off
};

/// `unit` is a whole unit, from its size field on; `controlOffset` is that of its first sequence.
[[nodiscard]] ControlSurvey SurveyControl(std::span<const std::uint8_t> unit, std::uint16_t controlOffset);

}  // namespace quillmark
