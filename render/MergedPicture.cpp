#include "render/MergedPicture.h"

#include <algorithm>

#include "imaging/Blend.h"
#include "render/Composition.h"
#include "render/FieldDecoder.h"

namespace quillmark {
namespace {

static_assert(MergedWidth == FrameWidth);

/// What the frame holds where nothing was drawn, and what a picture holds where no run reached.
constexpr Argb Clear = 0;
/// For colours that no code is near.
constexpr std::uint8_t DefaultCode = 0;

/// The states 1 to 4 of a decoded cell; 0 is left for cells that no run reached.
constexpr std::array<std::uint8_t, 4> CodeStates = {1, 2, 3, 4};

std::size_t Index(int value) {
  return static_cast<std::size_t>(value);
}

}  // namespace

std::uint8_t CodeOfColour(Argb colour, const CodeColours& colours) {
  const auto equal = std::ranges::find(colours, colour);
  if (equal != colours.end()) {
    return static_cast<std::uint8_t>(equal - colours.begin());
  }
  const std::array<ArgbComponents, 4> components = {SplitArgb(colours[0]), SplitArgb(colours[1]),
                                                    SplitArgb(colours[2]), SplitArgb(colours[3])};
  const int near = GetNearARGBColor(colour, components);
  return near < 0 ? DefaultCode : static_cast<std::uint8_t>(near);
}

void MergedPicture::Compose(const MergedInput& input) {
  ClearFrame(std::max(input.FrameHeight, 0));
  PrepareColours(input.Colours);
  const Placement primary = Place(input.Primary, 0);
  if (!primary.IsEmpty()) {
    Decode(input.PrimaryUnit, input.Primary, primary, ClearCell, primaryCells_);
    Copy(primary);
  }
  const Placement secondary = Place(input.Secondary, input.YOffset);
  if (secondary.IsEmpty()) {
    return;
  }
  if (secondary.SharesRowsWith(primary)) {
    Decode(input.SecondaryUnit, input.Secondary, secondary, NotReached, CodeStates);
    LayOver(secondary);
  } else {
    Decode(input.SecondaryUnit, input.Secondary, secondary, ClearCell, aloneCells_);
    Copy(secondary);
  }
}

FrameCells MergedPicture::Cells() const {
  return {.Height = height_,
          .Cells = cells_,
          .Codes = std::span(codes_).first(colourCount_),
          .RowInUse = rowInUse_};
}

void MergedPicture::CopyTo(cBitmap& bitmap) const {
  bitmap.Create(MergedWidth, height_);
  const auto pixels = bitmap.LockPixels();
  for (std::size_t y = 0; y < rowInUse_.size() && (y + 1) * MergedWidth <= pixels.size(); ++y) {
    if (rowInUse_[y] != 0) {
      const auto row = std::span(cells_).subspan(y * MergedWidth, MergedWidth);
      std::ranges::transform(row, pixels.begin() + static_cast<std::ptrdiff_t>(y * MergedWidth),
                             [&](std::uint8_t cell) { return composed_[cell]; });
    }
  }
}

MergedPicture::Placement MergedPicture::Place(const SpuControl& control, int yOffset) const {
  Placement place;
  if (control.Width() < 1 || control.Height() < 1 || control.X1 < 0) {
    return place;
  }
  place.Left = control.X1;
  place.Top = control.Y1 + yOffset;
  place.Width = control.Width();
  place.EndColumn = std::min(place.Left + place.Width, MergedWidth);
  place.FirstRow = std::max(place.Top, 0);
  place.EndRow = std::min(place.Top + control.Height(), height_);
  return place;
}

/// Only rows that the last subtitle used are wiped.
void MergedPicture::ClearFrame(int height) {
  if (height != height_) {
    height_ = height;
    cells_.assign(Index(height) * MergedWidth, 0);
    rowInUse_.assign(Index(height), 0);
    return;
  }
  for (std::size_t y = 0; y < rowInUse_.size(); ++y) {
    if (rowInUse_[y] != 0) {
      std::ranges::fill(std::span(cells_).subspan(y * MergedWidth, MergedWidth), ClearCell);
      rowInUse_[y] = 0;
    }
  }
}

/// All colours that can come up, each one as one cell value, whatever it was composed of.
void MergedPicture::PrepareColours(const CodeColours& colours) {
  if (prepared_ && colours == colours_) {
    return;
  }
  prepared_ = true;
  colours_ = colours;
  colourCount_ = 0;
  CellOf(Clear);  // becomes ClearCell
  for (std::size_t code = 0; code < colours.size(); ++code) {
    primaryCells_[code] = CellOf(BlendOver(colours[code], Clear));
  }
  const std::size_t belowCount = colourCount_;
  for (std::size_t below = 0; below < belowCount; ++below) {
    over_[below][NotReached] = CellOf(BlendOver(Clear, composed_[below]));
    for (std::size_t code = 0; code < colours.size(); ++code) {
      over_[below][CodeStates[code]] = CellOf(BlendOver(colours[code], composed_[below]));
    }
  }
  for (std::size_t code = 0; code < colours.size(); ++code) {
    aloneCells_[code] = over_[ClearCell][CodeStates[code]];
  }
}

std::uint8_t MergedPicture::CellOf(Argb colour) {
  const auto known = std::span(composed_).first(colourCount_);
  const auto found = std::ranges::find(known, colour);
  const auto cell = static_cast<std::size_t>(found - known.begin());
  if (cell == colourCount_) {
    composed_[cell] = colour;
    codes_[cell] = CodeOfColour(colour, colours_);
    ++colourCount_;
  }
  return static_cast<std::uint8_t>(cell);
}

/// Lines below the frame are not decoded; those above it are, as they stand before the others in the fields.
void MergedPicture::Decode(std::span<const std::uint8_t> unit, const SpuControl& control,
                           const Placement& place, std::uint8_t notReached, const CellTable& table) {
  const int visible = place.EndRow - place.Top;
  const int lines =
      std::min(visible + visible % 2, control.Height());  // whole pairs, as the fields have them
  picture_.assign(Index(place.Width) * Index(lines), notReached);
  DecodeFields<std::uint8_t>(unit, picture_, place.Width, lines, control.TopFieldOffset,
                             control.BottomFieldOffset, table);
}

void MergedPicture::Copy(const Placement& place) {
  for (int y = place.FirstRow; y < place.EndRow; ++y) {
    std::ranges::copy(PictureRow(place, y), FrameRow(place, y).begin());
  }
}

void MergedPicture::LayOver(const Placement& place) {
  for (int y = place.FirstRow; y < place.EndRow; ++y) {
    const auto below = FrameRow(place, y);
    std::ranges::transform(below, PictureRow(place, y), below.begin(),
                           [&](std::uint8_t cell, std::uint8_t state) { return over_[cell][state]; });
  }
}

std::span<const std::uint8_t> MergedPicture::PictureRow(const Placement& place, int frameRow) const {
  return std::span(picture_).subspan(Index(frameRow - place.Top) * Index(place.Width),
                                     Index(place.EndColumn - place.Left));
}

std::span<std::uint8_t> MergedPicture::FrameRow(const Placement& place, int frameRow) {
  rowInUse_[Index(frameRow)] = 1;
  return std::span(cells_).subspan(Index(frameRow) * MergedWidth + Index(place.Left),
                                   Index(place.EndColumn - place.Left));
}

}  // namespace quillmark
