#include "render/MergedInputReader.h"

#include "sup/ChooseSecondary.h"

namespace quillmark {
namespace {

void Choose(const ChosenNibbles& chosen, std::array<int, 4>& nibbles) {
  for (std::size_t code = 0; code < nibbles.size(); ++code) {
    nibbles[code] = chosen[code] ? *chosen[code] & 0x0F : nibbles[code];
  }
}

}  // namespace

SpuControl WithMergedCodes(SpuControl primary, const MergeSettings& settings) {
  Choose(settings.Colours, primary.Colour);
  Choose(settings.Contrasts, primary.Contrast);
  return primary;
}

MergeOutcome MergedInputReader::Read(std::size_t index) {
  const auto over = ChooseSecondary(primary_, index, secondary_);
  if (!over) {
    return MergeOutcome::Skipped;
  }
  over_ = *over;
  const SubtitleUnit primary = UnitForMerging(primary_, index, primaryUnit_);
  const SubtitleUnit secondary = UnitForMerging(secondary_, over_, secondaryUnit_);
  secondaryControl_ = DecodeControl(secondary.Bytes, secondary.ControlOffset);
  const auto description = DescribeSubtitle(primary);
  if (!description) {
    primaryControl_ = DecodeControl(primary.Bytes, primary.ControlOffset);
    return MergeOutcome::InvalidPrimary;
  }
  description_ = *description;
  primaryControl_ = description_.Control;
  codes_ = WithMergedCodes(primaryControl_, settings_);
  if (!secondaryControl_.IsValid()) {
    return MergeOutcome::InvalidSecondary;
  }
  input_ = {.PrimaryUnit = primary.Bytes,
            .Primary = primaryControl_,
            .SecondaryUnit = secondary.Bytes,
            .Secondary = secondaryControl_,
            .YOffset = settings_.YOffset,
            .Colours = MakeCodeColours(settings_.Palette, codes_),
            .SecondaryCodes = settings_.SecondaryCodes,
            .FrameHeight = settings_.FrameHeight};
  return MergeOutcome::Encoded;
}

}  // namespace quillmark
