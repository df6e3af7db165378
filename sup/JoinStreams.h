#pragma once

#include <cstdint>
#include <optional>

#include "base/Result.h"
#include "sup/SupStream.h"
#include "sup/ToolResult.h"

namespace quillmark {

/// When the second stream starts, in 90 kHz ticks.
struct JoinOptions {
  std::int64_t Gap = 0;                 ///< after the first one's last end
  std::optional<std::int64_t> At = {};  ///< or at this time
};

/// Puts the packets of `second` behind those of `first`. Their times are moved by what brings the earliest of
/// them to where the second stream is to start; damaged ones stay byte for byte. A first stream's last end is
/// the latest of the ends and starts of its good packets. Numbers in the answer are those of the joined
/// stream.
/// Bytes behind the last whole packet (a scrap, or a packet that the file cuts short) stay at the end of the
/// joined stream, as no packet can follow them; a Failure where both streams have some, where a start would
/// become negative or leave its field, or where they are too long together.
[[nodiscard]] Result<ToolResult> JoinStreams(const SupStream& first, const SupStream& second,
                                             const JoinOptions& options);

}  // namespace quillmark
