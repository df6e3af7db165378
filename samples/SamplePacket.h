#pragma once

#include <cstdint>
#include <vector>

#include "samples/Captions.h"
#include "samples/TextPicture.h"

namespace quillmark {

/// Appends one packet to `stream`: the caption's picture, shown from its start to its end.
void AppendSamplePacket(const Caption& caption, const TextPicture& picture,
                        std::vector<std::uint8_t>& stream);

}  // namespace quillmark
