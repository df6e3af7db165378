#pragma once

#include "sup/SupStream.h"
#include "sup/ToolResult.h"

namespace quillmark {

/// Which of the two start commands subtitles have.
enum class DisplayStart : std::uint8_t {
  Forced,  ///< shown also while subtitles are switched off
  Ordinary,
};

/// Makes all start commands of the subtitles of `only` the one that is asked for; a subtitle without any is
/// left.
[[nodiscard]] ToolResult ForceDisplay(const SupStream& stream, const SubtitleSet& only, DisplayStart start);

}  // namespace quillmark
