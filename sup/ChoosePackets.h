#pragma once

#include "sup/SupStream.h"
#include "sup/ToolResult.h"

namespace quillmark {

/// The stream without the packets of the subtitles of `only`, damaged ones included. Bytes behind the last
/// packet stay.
[[nodiscard]] ToolResult CutPackets(const SupStream& stream, const SubtitleSet& only);

/// The stream with the packets of those subtitles alone.
[[nodiscard]] ToolResult KeepPackets(const SupStream& stream, const SubtitleSet& only);

/// Puts the packets of those subtitles in the order of their start times, each where one of them stands now;
/// those of equal times keep their order. Damaged ones keep their place in the order. The edit moves as few
/// packets as it can.
[[nodiscard]] ToolResult SortPackets(const SupStream& stream, const SubtitleSet& only);

/// The stream without what SalvageStream leaves out.
[[nodiscard]] ToolResult DropDamage(const SupStream& stream);

}  // namespace quillmark
