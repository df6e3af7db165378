#include "render/MergedStreamEncoder.h"

#include "sup/ChooseSecondary.h"

namespace quillmark {

MergedStreamEncoder::Outcome MergedStreamEncoder::Encode(std::size_t index) {
  packet_ = {};
  const auto over = ChooseSecondary(primary_, index, secondary_);
  if (!over) {
    return Outcome::Skipped;
  }
  const SubtitleUnit primary = UnitForMerging(primary_, index, primaryUnit_);
  const auto description = DescribeSubtitle(primary);
  if (!description) {
    return Outcome::InvalidPrimary;
  }
  description_ = *description;
  const SubtitleUnit secondary = UnitForMerging(secondary_, *over, secondaryUnit_);
  const SpuControl secondaryControl = DecodeControl(secondary.Bytes, secondary.ControlOffset);
  if (!secondaryControl.IsValid()) {
    return Outcome::InvalidSecondary;
  }
  picture_.Compose({.PrimaryUnit = primary.Bytes,
                    .Primary = description_.Control,
                    .SecondaryUnit = secondary.Bytes,
                    .Secondary = secondaryControl,
                    .YOffset = settings_.YOffset,
                    .Colours = MakeCodeColours(settings_.Palette, description_.Control),
                    .FrameHeight = settings_.FrameHeight});
  const auto packet =
      encoder_.Encode(picture_.Cells(), MakeMergedControl(description_.Control, primary_, index),
                      StoredTime(primary_, index));
  if (!packet) {
    return Outcome::TooLarge;
  }
  packet_ = *packet;
  return Outcome::Encoded;
}

const char* ReasonOf(MergedStreamEncoder::Outcome outcome) {
  switch (outcome) {
    case MergedStreamEncoder::Outcome::InvalidPrimary:
      return "its control data is not complete";
    case MergedStreamEncoder::Outcome::InvalidSecondary:
      return "the control data of the second stream's subtitle is not complete";
    case MergedStreamEncoder::Outcome::TooLarge:
      return "the merged picture does not fit a unit of 65535 bytes";
    case MergedStreamEncoder::Outcome::Encoded:
    case MergedStreamEncoder::Outcome::Skipped:
      break;
  }
  return "";
}

}  // namespace quillmark
