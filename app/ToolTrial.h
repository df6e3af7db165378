#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <QImage>

#include "base/Result.h"
#include "palette/Colour.h"
#include "recipe/Step.h"
#include "render/SubtitleDescription.h"

namespace quillmark {

/// A subtitle before or after a tool was run.
struct TriedSubtitle {
  std::int64_t Number = 0;  ///< from 1
  std::int64_t Start = 0;   ///< 90 kHz ticks
  std::int64_t End = 0;     ///< 90 kHz ticks; 0 when no end is known
  bool IsForced = false;
  std::optional<SubtitleDescription> Described;  ///< none where it cannot be shown
  QImage Picture;                                ///< of its area; null where there is nothing to show
};

/// What a tool would do to a stream, and to one subtitle of it.
struct ToolTrial {
  std::int64_t Chosen = 0;   ///< subtitles that it was asked to look at
  std::int64_t Changed = 0;  ///< those that it changes, moves or takes out
  std::vector<LeftSubtitle> Left;
  std::int64_t SubtitlesAfter = 0;     ///< in the stream
  std::optional<TriedSubtitle> After;  ///< the subtitle looked at; none where it is taken out
};

/// Tries the step on a copy of `stream`, with an eye on subtitle `index`, from 0, which the stream holds. A
/// Failure says why nothing may be changed.
[[nodiscard]] Result<ToolTrial> TryStep(const StepText& step, const SupStream& stream, std::size_t index,
                                        const DvdPalette& palette);

/// Subtitle `index`, from 0, which the stream holds, drawn in the colours of the palette.
[[nodiscard]] TriedSubtitle LookAt(const SupStream& stream, std::size_t index, const DvdPalette& palette);

}  // namespace quillmark
