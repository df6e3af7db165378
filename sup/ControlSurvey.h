#pragma once

#include <cstdint>
#include <span>

namespace quillmark {

/// Where a unit keeps its control sequences, looked at as a player does: from one to the next by their
/// pointers, forwards. Positions count from the unit's start, its size field.
struct ControlSurvey {
  enum class Ending {
    PointsToItself,   ///< the last sequence was found: the walk ended in the unit
    NoEndMark,        ///< a sequence runs up to the unit's end without its 0xFF
    PointsNowhere,    ///< a pointer is 0
    PointsBackwards,  ///< a pointer leads into or before its own sequence
    PointsOutside,    ///< a pointer, or the control offset, leads out of the unit
    TooLong,          ///< given up after MaxSurveyedCommands
  };
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

/// More commands than any real unit has; the bound keeps a search that tries every byte of a file linear.
inline constexpr std::int32_t MaxSurveyedCommands = 256;

/// `unit` is a whole unit, from its size field on; `controlOffset` is that of its first sequence.
[[nodiscard]] ControlSurvey SurveyControl(std::span<const std::uint8_t> unit, std::uint16_t controlOffset);

}  // namespace quillmark
