#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "palette/Colour.h"
#include "sup/SpuControl.h"
#include "sup/SupStream.h"

namespace quillmark {

/// One subtitle as its details are shown.
struct SubtitleDescription {
  SpuControl Control;
  std::int64_t StartTicks = 0;
  std::optional<std::int64_t> EndTicks;  ///< start + last delay; none when that delay is 0

  std::string XPos;  ///< decimal pixels, as are the next three
  std::string YPos;
  std::string Width;
  std::string Height;
  std::string StartTime;  ///< hh:mm:ss.cc
  std::string Duration;   ///< seconds with two decimals; "???" without a delay
};

/// Reads and checks a unit's control data; nullopt when the unit is invalid and cannot be shown.
[[nodiscard]] std::optional<SubtitleDescription> DescribeSubtitle(const SubtitleUnit& unit);

/// The ARGB value of each pixel code: its palette entry with alpha = contrast x 17. `control` is valid.
[[nodiscard]] CodeColours MakeCodeColours(const DvdPalette& palette, const SpuControl& control);

}  // namespace quillmark
