#pragma once

#include <cstddef>
#include <cstdint>

#include "sup/SupStream.h"
#include "sup/ToolResult.h"

namespace quillmark {

/// Which of the two start commands subtitles have.
enum class DisplayStart : std::uint8_t {
  Forced,  ///< shown also while subtitles are switched off
  Ordinary,
};

/// Whether one of its start commands is the forced one.
[[nodiscard]] bool IsForced(const SupStream& stream, std::size_t index);

/// Makes all start commands of the subtitles of `only` the one that is asked for; a subtitle without any is
/// left.
[[nodiscard]] ToolResult ForceDisplay(const SupStream& stream, const SubtitleSet& only, DisplayStart start);

}  // namespace quillmark
