#include "render/SubtitleDescription.h"

#include "sup/Timecode.h"

namespace quillmark {

std::optional<SubtitleDescription> DescribeSubtitle(const SubtitleUnit& unit) {
  const SpuControl control = DecodeControl(unit.Bytes, unit.ControlOffset);
  if (!control.IsValid()) {
    return std::nullopt;
  }
  SubtitleDescription description{
      .Control = control, .StartTicks = unit.StartTime, .EndTicks = std::nullopt, .DurationMs = std::nullopt};
  if (control.Delay != 0) {
    description.EndTicks = EndOfDisplay(unit.StartTime, control.Delay);
    description.DurationMs = DurationMs(control.Delay);
  }
  return description;
}

CodeColours MakeCodeColours(const DvdPalette& palette, const SpuControl& control) {
  CodeColours colours{};
  for (std::size_t code = 0; code < colours.size(); ++code) {
    colours[code] = GetARGBColor(palette[static_cast<std::size_t>(control.Colour[code])],
                                 static_cast<unsigned>(control.Contrast[code]));
  }
  return colours;
}

}  // namespace quillmark
