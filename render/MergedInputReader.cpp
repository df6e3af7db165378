#include "render/MergedInputReader.h"

#include <algorithm>
#include <utility>

#include "sup/ChooseSecondary.h"
#include "sup/Timecode.h"

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

MergedInput MakeMergedInput(const UnitWithControl& primary, const UnitWithControl& secondary,
                            const SpuControl& codes, const MergeSettings& settings) {
  return {.PrimaryUnit = primary.Bytes,
          .Primary = primary.Control,
          .SecondaryUnit = secondary.Bytes,
          .Secondary = secondary.Control,
          .YOffset = settings.YOffset,
          .Colours = MakeCodeColours(settings.Palette, codes),
          .SecondaryCodes = settings.SecondaryCodes,
          .FrameHeight = settings.FrameHeight};
}

MergedInputReader::MergedInputReader(const SupStream& primary, const SupStream& secondary,
                                     const MergeSettings& settings, std::shared_ptr<SplitPlan> plan)
    : primary_(primary), secondary_(secondary), settings_(settings) {
  if (settings.Mode == MergeMode::Split) {
    plan_ = plan ? std::move(plan) : std::make_shared<SplitPlan>(primary, secondary, settings.JoinTicks);
  }
}

std::size_t MergedInputReader::Count() const {
  return plan_ ? plan_->Count() : static_cast<std::size_t>(std::max(primary_.Count, 0));
}

/// False where there is no packet.
bool MergedInputReader::Find(std::size_t index) {
  if (!plan_) {
    shown_.First = index;
    shown_.Second = ChooseSecondary(primary_, index, secondary_);
    return shown_.Second.has_value();
  }
  while (plan_->Step()) {
  }
  const bool isThere = index < plan_->Count();
  shown_ = isThere ? plan_->Unit(index) : DisplayInterval();
  aloneControl_ = plan_->PrimaryControl();
  return isThere;
}

MergeOutcome MergedInputReader::Read(std::size_t index) {
  isDescribed_ = false;
  return Find(index) ? ReadFound() : MergeOutcome::Skipped;
}

MergeOutcome MergedInputReader::ReadUnit(const DisplayInterval& unit) {
  isDescribed_ = false;
  shown_ = unit;
  if (!HasPrimary() && !aloneControl_) {
    aloneControl_ = FirstCompleteControl(primary_);
  }
  return ReadFound();
}

MergeOutcome MergedInputReader::ReadFound() {
  const SubtitleUnit primary =
      HasPrimary() ? UnitForMerging(primary_, Primary(), primaryUnit_) : SubtitleUnit();
  const SubtitleUnit secondary =
      HasSecondary() ? UnitForMerging(secondary_, Secondary(), secondaryUnit_) : SubtitleUnit();
  primaryBytes_ = primary.Bytes;
  secondaryBytes_ = secondary.Bytes;
  secondaryControl_ = HasSecondary() ? DecodeControl(secondary.Bytes, secondary.ControlOffset) : SpuControl();
  const auto description = DescribeSubtitle(HasPrimary() ? primary : secondary);
  if (!description) {
    primaryControl_ = HasPrimary() ? DecodeControl(primary.Bytes, primary.ControlOffset) : SpuControl();
    return HasPrimary() ? MergeOutcome::InvalidPrimary : MergeOutcome::InvalidSecondary;
  }
  primaryControl_ = HasPrimary() ? description->Control : SpuControl();
  Describe(*description);
  if (HasSecondary() && !secondaryControl_.IsValid()) {
    return MergeOutcome::InvalidSecondary;
  }
  input_ = MakeMergedInput({.Bytes = primary.Bytes, .Control = primaryControl_},
                           {.Bytes = secondary.Bytes, .Control = secondaryControl_}, codes_, settings_);
  return MergeOutcome::Encoded;
}

void MergedInputReader::Describe(const SubtitleDescription& subtitle) {
  isDescribed_ = true;
  description_ = subtitle;
  const SpuControl& codes = HasPrimary() || !aloneControl_ ? subtitle.Control : *aloneControl_;
  codes_ = WithMergedCodes(codes, settings_);
  if (plan_) {
    const auto delay = static_cast<std::int16_t>(shown_.Delay);
    description_.StartTicks = shown_.Start;
    description_.EndTicks = EndOfDisplay(shown_.Start, delay);
    description_.DurationMs = DurationMs(delay);
  }
}

std::int64_t MergedInputReader::StartTicks() const {
  return plan_ ? shown_.Start : primary_.StartTime[Primary()];
}

std::int64_t MergedInputReader::OverlapTicks() const {
  if (!plan_) {
    return TicksTogether(primary_, Primary(), secondary_, Secondary());
  }
  return HasPrimary() && HasSecondary() ? shown_.End - shown_.Start : 0;
}

MergedControl MergedInputReader::Control() const {
  return plan_ ? MakeMergedControl(codes_, shown_.Delay) : MakeMergedControl(codes_, primary_, Primary());
}

TimeField MergedInputReader::Time() const {
  return plan_ ? PackTime(shown_.Start) : StoredTime(primary_, Primary());
}

}  // namespace quillmark
