#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "base/Result.h"
#include "sup/Mend.h"
#include "sup/PacketCheck.h"
#include "sup/StreamEdit.h"

namespace quillmark {

/// What puts a stream right, as far as that is possible without coding a picture again.
struct StreamFix {
  StreamEdit Edit;
  std::vector<Mend> Mends;  ///< step by step, each step in the order of the packets
  /// What CheckStream finds in the mended bytes with the same options: all that could not be mended.
  std::vector<StreamProblem> Left;
};

/// Mends a file, which need not be a stream that loads: what MendPackets does; packets in the wrong order; a
/// missing end, which becomes the next start, and an end after it; an area outside the frame that fits it
/// elsewhere. For players also areas outside the lines that they show, missing stop commands,
/// and ends that come after the next start, or less than a millisecond before it, on their clock.
/// The mended bytes are a stream. Fixed once more, they stay as they are. A Failure where memory does not
/// suffice.
[[nodiscard]] Result<StreamFix> FixStream(std::span<const std::uint8_t> file, const CheckOptions& options);

}  // namespace quillmark
