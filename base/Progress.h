#pragma once

#include <cstdint>
#include <functional>

namespace quillmark {

/// Told now and then how much of so much is done (bytes, subtitles); false ends the work. Whoever passes an
/// empty one wants neither.
using Progress = std::function<bool(std::uint64_t done, std::uint64_t of)>;

/// How work ended that did not fail. Of cancelled work nothing is kept.
enum class Completion : std::uint8_t { Done, Cancelled };

}  // namespace quillmark
