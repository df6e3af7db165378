#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "app/FramedSubtitle.h"
#include "base/Result.h"
#include "palette/Colour.h"
#include "recipe/Step.h"

namespace quillmark {

/// What a tool would do to a stream, and to one subtitle of it.
struct ToolTrial {
  std::int64_t Chosen = 0;   ///< subtitles that it was asked to look at
  std::int64_t Changed = 0;  ///< those that it changes, moves or takes out
  std::vector<LeftSubtitle> Left;
  std::int64_t SubtitlesAfter = 0;      ///< in the stream
  std::optional<FramedSubtitle> After;  ///< the subtitle looked at; none where it is taken out
};

/// Tries the step on a copy of `stream`, with an eye on subtitle `index`, from 0, which the stream holds. A
/// Failure says why nothing may be changed.
[[nodiscard]] Result<ToolTrial> TryStep(const StepText& step, const SupStream& stream, std::size_t index,
                                        const DvdPalette& palette);

}  // namespace quillmark
