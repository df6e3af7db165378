#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sup/SubtitleSet.h"

namespace quillmark {

/// The subtitles with these indexes, from 0, which ascend.
[[nodiscard]] inline SubtitleSet SetOf(const std::vector<std::size_t>& indexes) {
  SubtitleSet set;
  for (const std::size_t index : indexes) {
    set.Append(static_cast<std::int64_t>(index) + 1);
  }
  return set;
}

}  // namespace quillmark
