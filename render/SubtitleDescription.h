#pragma once

#include <cstdint>
#include <optional>

#include "palette/Colour.h"
#include "sup/SpuControl.h"
#include "sup/SupStream.h"

namespace quillmark {

/// What a valid unit says of its subtitle: its area, colours and contrasts in `Control`, and its times.
struct SubtitleDescription {
  SpuControl Control;
  std::int64_t StartTicks = 0;             ///< 90 kHz ticks
  std::optional<std::int64_t> EndTicks;    ///< start + last delay; none when that delay is 0
  std::optional<std::int32_t> DurationMs;  ///< of the last delay, rounded; none when that delay is 0
};

/// Reads and checks a unit's control data; nullopt when the unit is invalid and cannot be shown.
[[nodiscard]] std::optional<SubtitleDescription> DescribeSubtitle(const SubtitleUnit& unit);

/// The ARGB value of each pixel code: its palette entry with alpha = contrast x 17. `control` is valid.
[[nodiscard]] CodeColours MakeCodeColours(const DvdPalette& palette, const SpuControl& control);

}  // namespace quillmark
