#include "app/DrawnSubtitle.h"

#include "app/Document.h"
#include "app/SubtitleFacts.h"
#include "render/Composition.h"

namespace quillmark {

std::optional<DrawnSubtitle> DrawnSubtitleReader::Read(const Document& document, std::size_t index) {
  const auto over = SecondaryOver(document, index);
  const SubtitleUnit unit =
      over ? UnitForMerging(document.Primary(), index, unit_) : UnitOf(document.Primary(), index, unit_);
  const SpuControl control = DecodeControl(unit.Bytes, unit.ControlOffset);
  if (!control.IsValid()) {
    return std::nullopt;
  }
  DrawnSubtitle drawn{.Unit = unit.Bytes,
                      .Control = control,
                      .Colours = MakeCodeColours(document.Palette(), control),
                      .Merged = std::nullopt};
  if (over) {
    const SubtitleUnit secondary = UnitForMerging(document.Secondary(), *over, secondaryUnit_);
    const SpuControl secondaryControl = DecodeControl(secondary.Bytes, secondary.ControlOffset);
    if (secondaryControl.IsValid()) {
      const MergeSettings settings = document.SettingsOfMerge();
      drawn.Merged = MakeMergedInput({.Bytes = unit.Bytes, .Control = control},
                                     {.Bytes = secondary.Bytes, .Control = secondaryControl},
                                     WithMergedCodes(control, settings), settings);
    }
  }
  return drawn;
}

std::optional<DrawnSubtitle> DrawnSubtitleReader::ReadUnit(const Document& document,
                                                           const DisplayInterval& unit) {
  merged_.emplace(document.Primary(), document.Secondary(), document.SettingsOfMerge());
  const MergeOutcome outcome = merged_->ReadUnit(unit);
  if (!merged_->IsDescribed()) {
    return std::nullopt;
  }
  DrawnSubtitle drawn{.Unit = merged_->PrimaryUnit(),
                      .Control = merged_->PrimaryControl(),
                      .Colours = MakeCodeColours(document.Palette(), merged_->MergedCodes()),
                      .Merged = std::nullopt};
  if (outcome == MergeOutcome::Encoded) {
    drawn.Merged = merged_->Input();
  }
  return drawn;
}

QImage PictureOf(const Document& document, std::size_t index) {
  DrawnSubtitleReader reader;
  const auto drawn = reader.Read(document, index);
  cBitmap picture;
  if (drawn && drawn->Merged) {
    MergedPicture merged;
    merged.Compose(*drawn->Merged);
    merged.CopyTo(picture);
  } else if (drawn) {
    DecodePicture(drawn->Unit, drawn->Control, drawn->Colours, picture);
  }
  return picture.Image();
}

}  // namespace quillmark
