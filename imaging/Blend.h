#pragma once

#include <cstdint>

namespace quillmark {

/// One ARGB value laid over another, both in straight alpha, each component rounded to nearest. Alpha 255, or
/// anything over alpha 0, gives `source` to the bit; alpha 0 gives `below`.
[[nodiscard]] std::uint32_t BlendOver(std::uint32_t source, std::uint32_t below);

}  // namespace quillmark
