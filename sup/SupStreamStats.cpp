#include "sup/SupStreamStats.h"

#include <algorithm>

#include "sup/Timecode.h"

namespace quillmark {

SupStreamStats::SupStreamStats() {
  for (auto& row : Usage) {
    row.fill(UnusedCell);
  }
}

std::string SupStreamStats::FirstTimecode() const {
  return FirstStart ? FormatTimecode(*FirstStart) : std::string();
}

std::string SupStreamStats::LastTimecode() const {
  return FirstStart ? FormatTimecode(LastStart) : std::string();
}

void SupStreamStats::Add(const SpuControl& control, std::int32_t spuSize, std::int64_t startTicks,
                         std::size_t index) {
  MaxSpuSize = std::max(MaxSpuSize, spuSize);
  LastStart = startTicks;
  if (index == 0) {
    FirstStart = startTicks;
  }
  if (!control.IsValid()) {
    ++ParseErrors;
    return;
  }
  for (std::size_t code = 0; code < 4; ++code) {
    Usage[static_cast<std::size_t>(control.Colour[code])][code] = UsedCell;
    Usage[static_cast<std::size_t>(control.Contrast[code])][code + 4] = UsedCell;
  }
  MaxWidth = std::max(MaxWidth, control.Width());
  MaxHeight = std::max(MaxHeight, control.Height());
  MinX = std::min<std::int32_t>(MinX, control.X1);
  MinY = std::min<std::int32_t>(MinY, control.Y1);
  if (control.Delay == 0) {
    HasUntimed = true;
  } else {
    MaxDurationMs = std::max(MaxDurationMs, DurationMs(control.Delay));
  }
}

void SupStreamStats::UpdateMultipleFlags() {
  const auto usesSeveral = [this](std::size_t column) {
    return std::ranges::count_if(Usage, [column](const auto& row) { return row[column] == UsedCell; }) > 1;
  };
  MultipleColours = usesSeveral(0) || usesSeveral(1) || usesSeveral(2) || usesSeveral(3);
  MultipleOpacities = usesSeveral(4) || usesSeveral(5) || usesSeveral(6) || usesSeveral(7);
}

}  // namespace quillmark
