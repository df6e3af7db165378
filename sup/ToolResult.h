#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "sup/Salvage.h"
#include "sup/StreamEdit.h"
#include "sup/SubtitleSet.h"

namespace quillmark {

/// Why a tool leaves a subtitle as it is.
enum class LeftReason : std::uint8_t {
  Damaged,     ///< no good packet: the tool cannot tell what its bytes mean
  NoColour,    ///< no colour command to write into
  NoContrast,  ///< no contrast command
  NoColourNoContrast,
  NoStart,           ///< no start command
  NoArea,            ///< no display area
  LeavesFrame,       ///< its area, or a change of colours, would leave the frame
  BadColourChange,   ///< a change of colours within the picture that is damaged itself
  NoNext,            ///< the last one: no next start says when it ends
  NoRoom,            ///< the next one starts too early for it to end before
  NotAsLong,         ///< the next one starts too early for it to be shown as long as asked for
  EndElsewhere,      ///< its end is not read from its stop command
  UnitFull,          ///< no room for a stop command in the longest unit that programs read
  NotMended,         ///< it has a problem that nothing mends
  DataAfterControl,  ///< picture data after the control sequences, which would move
};

/// "no_start", ...: for scripts, never changed.
[[nodiscard]] std::string_view LeftName(LeftReason reason);

/// A subtitle that a tool leaves as it is, or does not make quite what was asked for.
struct LeftSubtitle {
  std::int64_t Number = 0;  ///< from 1
  LeftReason Why = LeftReason::Damaged;
  PacketFault Fault = PacketFault::None;  ///< of a damaged one

  bool operator==(const LeftSubtitle&) const = default;
};

/// What is to say of it after its number, "has no start command; it is left as it is".
[[nodiscard]] std::string LeftText(const LeftSubtitle& left);

/// What a tool does to a stream, before it is done.
struct ToolResult {
  StreamEdit Edit;
  std::int64_t Chosen = 0;  ///< subtitles that the tool was asked to look at
  SubtitleSet Changed;      ///< those of them that the edit changes, moves or takes out
  std::vector<LeftSubtitle> Left;
};

}  // namespace quillmark
