#pragma once

#include <cstdint>
#include <optional>

#include "sup/SupStream.h"
#include "sup/ToolResult.h"

namespace quillmark {

struct MoveOptions {
  std::int32_t X = 0;  ///< pixels to the right
  std::int32_t Y = 0;  ///< lines down
  /// In place of Y: the line of the frame, from 0, on which the lowest display area ends.
  std::optional<std::int32_t> ToLine = {};
  std::int32_t FrameLines = 576;  ///< 480 or 576
  /// What would leave the frame is moved as far as it goes, without ever moving the other way.
  bool Clamp = false;
};

/// Moves the display areas of the subtitles of `only`, in all of their control sequences, and with them the
/// lines and columns of changes of colours (0x07). Names those bytes alone. A subtitle that has no area, or
/// would not be within the frame of 720 pixels by `FrameLines` lines with all of that, is left.
[[nodiscard]] ToolResult MoveArea(const SupStream& stream, const SubtitleSet& only,
                                  const MoveOptions& options);

}  // namespace quillmark
