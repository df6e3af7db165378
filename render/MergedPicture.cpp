#include "render/MergedPicture.h"

#include <algorithm>
#include <cstdlib>

#include "imaging/Blend.h"
#include "render/Composition.h"
#include "render/FieldDecoder.h"

namespace quillmark {
namespace {

static_assert(MergedWidth == FrameWidth);

/// What the frame holds where nothing was drawn.
constexpr Argb Clear = 0;
/// Of a picture outside of the frame: so many of the widest lines stay in a processor's cache.
constexpr int LinesAtOnce = 8;
/// For colours that no code is near.
constexpr std::uint8_t DefaultCode = 0;

/// The states 1 to 4 of a decoded cell; 0 is left for cells where nothing is to be seen.
constexpr std::array<std::uint8_t, 4> CodeStates = {1, 2, 3, 4};

std::size_t Index(int value) {
  return static_cast<std::size_t>(value);
}

/// How many of `count` places have a flag of 1 rather than 0. The sums of short stretches fit a byte, so that
/// compilers count many places at once.
template <typename Flag>
std::int32_t CountWhere(std::size_t count, const Flag& flag) {
  constexpr std::size_t Stretch = 128;
  std::int32_t sum = 0;
  for (std::size_t start = 0; start < count; start += Stretch) {
    const std::size_t end = std::min(start + Stretch, count);
    std::uint8_t part = 0;
    for (std::size_t i = start; i < end; ++i) {
      part = static_cast<std::uint8_t>(part + flag(i));
    }
    sum += part;
  }
  return sum;
}

/// Of cells in which 0 is what cannot be seen.
std::int32_t CountVisible(std::span<const std::uint8_t> cells) {
  return CountWhere(cells.size(), [cells = cells.data()](std::size_t i) {
    return static_cast<std::uint8_t>(cells[i] != 0);
  });
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

std::uint8_t ColourDistance(Argb a, Argb b) {
  const ArgbComponents first = SplitArgb(a);
  const ArgbComponents second = SplitArgb(b);
  int distance = std::abs(first.Alpha - second.Alpha);
  if (first.Alpha != 0 && second.Alpha != 0) {
    distance = std::max({distance, std::abs(first.Red - second.Red), std::abs(first.Green - second.Green),
                         std::abs(first.Blue - second.Blue)});
  }
  return static_cast<std::uint8_t>(distance);
}

MergedCounts MergedPicture::ComposeAndCount(const MergedInput& input) {
  MergedCounts counts;
  Compose(input, &counts);
  return counts;
}

void MergedPicture::Compose(const MergedInput& input, MergedCounts* counts) {
  ClearFrame(std::max(input.FrameHeight, 0));
  PrepareColours(input.Colours);
  CellTable alone{};
  CellTable states{};
  for (std::size_t code = 0; code < alone.size(); ++code) {
    const std::size_t becomes = input.SecondaryCodes[code] % plainCells_.size();
    alone[code] = plainCells_[becomes];
    states[code] = alone[code] == ClearCell ? NothingState : CodeStates[becomes];
  }
  const auto isWanted = [&](const Placement& place) {
    return !place.IsEmpty() || (counts != nullptr && place.HasPixels());
  };
  const Placement primary = Place(input.Primary, 0);
  if (isWanted(primary)) {
    const bool isCut = Decode(input.PrimaryUnit, input.Primary, primary, plainCells_,
                              counts != nullptr ? &counts->Primary : nullptr);
    Copy(primary);
    if (counts != nullptr) {
      counts->PrimaryIsCut = isCut;
    }
  }
  const Placement secondary = Place(input.Secondary, input.YOffset);
  if (isWanted(secondary)) {
    const bool isOver = secondary.SharesRowsWith(primary);
    const bool isCut = Decode(input.SecondaryUnit, input.Secondary, secondary, isOver ? states : alone,
                              counts != nullptr ? &counts->Secondary : nullptr);
    if (counts != nullptr) {
      counts->SecondaryIsCut = isCut;
      counts->Covered = isOver ? CountCovered(secondary) : 0;
    }
    if (isOver) {
      LayOver(secondary);
    } else {
      Copy(secondary);
    }
  }
  if (counts != nullptr) {
    CountRecoloured(secondary, *counts);
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
  place.Height = control.Height();
  place.EndColumn = std::min(place.Left + place.Width, MergedWidth);
  place.FirstRow = std::max(place.Top, 0);
  place.EndRow = std::min(place.Top + place.Height, height_);
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
    plainCells_[code] = CellOf(BlendOver(colours[code], Clear));
  }
  plainCount_ = colourCount_;
  for (std::size_t below = 0; below < plainCount_; ++below) {
    over_[below][NothingState] = static_cast<std::uint8_t>(below);
    for (std::size_t code = 0; code < colours.size(); ++code) {
      over_[below][CodeStates[code]] = CellOf(BlendOver(colours[code], composed_[below]));
    }
  }
}

std::uint8_t MergedPicture::CellOf(Argb colour) {
  const auto known = std::span(composed_).first(colourCount_);
  const auto found = std::ranges::find(known, colour);
  const auto cell = static_cast<std::size_t>(found - known.begin());
  if (cell == colourCount_) {
    composed_[cell] = colour;
    codes_[cell] = CodeOfColour(colour, colours_);
    off_[cell] = ColourDistance(colour, colours_[codes_[cell]]);
    ++colourCount_;
  }
  return static_cast<std::uint8_t>(cell);
}

/// Lines below the frame are decoded only where they are counted; those above it always are, as they stand
/// before the others in the fields. What is not in the frame is decoded a few lines at a time: a picture may
/// have 4096 lines of 4096 pixels. Whether the fields ended before these lines did.
bool MergedPicture::Decode(std::span<const std::uint8_t> unit, const SpuControl& control,
                           const Placement& place, const CellTable& table, ClippedPixels* clipped) {
  const bool isCounted = clipped != nullptr && !IsShownWhole(place);
  // In whole pairs, as the fields have them.
  const int kept = place.IsEmpty() ? 0 : (place.FirstRow - place.Top) / 2 * 2;
  const int visible = place.IsEmpty() ? 0 : place.EndRow - place.Top;
  const int keptEnd = std::min(visible + visible % 2, place.Height);
  const int lines = isCounted ? place.Height : keptEnd;
  const std::size_t width = Index(place.Width);
  picture_.assign(width * Index(keptEnd - kept), ClearCell);
  pictureTop_ = place.Top + kept;
  FieldPositions positions(control.TopFieldOffset, control.BottomFieldOffset);
  int decoded = 0;
  for (int line = 0; line < lines && !positions.HasEnded;) {
    const bool isKept = line >= kept && line < keptEnd;
    const int end = isKept ? keptEnd : std::min(line + LinesAtOnce, line < kept ? kept : lines);
    if (!isKept) {
      band_.resize(width * Index(end - line));
    }
    const std::span<std::uint8_t> cells = isKept ? picture_ : band_;
    const int found = DecodeNextLines<std::uint8_t>(unit, cells, place.Width, end - line, positions, table);
    if (isCounted) {
      CountClipped(place, line, cells.first(width * Index(found)), *clipped);
    }
    decoded += found;
    line = end;
  }
  return decoded < lines - lines % 2;
}

bool MergedPicture::IsShownWhole(const Placement& place) const {
  return place.Left + place.Width <= MergedWidth && place.Top >= FirstMergedRow &&
         place.Top + place.Height - 1 <= LastMergedRow(height_);
}

/// Adds what is clipped of these lines of the picture, whole ones.
void MergedPicture::CountClipped(const Placement& place, int firstLine, std::span<const std::uint8_t> lines,
                                 ClippedPixels& clipped) const {
  const std::size_t width = Index(place.Width);
  const std::size_t widthInFrame = Index(std::clamp(MergedWidth - place.Left, 0, place.Width));
  for (int row = place.Top + firstLine; !lines.empty(); ++row) {
    const auto cells = lines.first(width);
    lines = lines.subspan(width);
    const bool isInFrame = row >= 0 && row < height_;
    const bool isInUnit = row >= FirstMergedRow && row <= LastMergedRow(height_);
    const auto inside = cells.first(isInFrame ? widthInFrame : 0);
    const std::int32_t outsideFrame = CountVisible(cells.subspan(inside.size()));
    const std::int32_t inEdgeRow = isInUnit ? 0 : CountVisible(inside);
    clipped.OutsideFrame += outsideFrame;
    clipped.InEdgeRows += inEdgeRow;
    clipped.Rows += outsideFrame + inEdgeRow > 0 ? 1 : 0;
  }
}

/// The frame has the primary picture alone yet, and `picture_` the secondary one's states.
std::int32_t MergedPicture::CountCovered(const Placement& place) const {
  std::int32_t covered = 0;
  const int end = std::min(place.EndRow, LastMergedRow(height_) + 1);
  for (int y = std::max(place.FirstRow, FirstMergedRow); y < end; ++y) {
    if (rowInUse_[Index(y)] != 0) {
      const std::uint8_t* const below = &cells_[Index(y) * MergedWidth + Index(place.Left)];
      const auto over = PictureRow(place, y);
      covered += CountWhere(over.size(), [below, over = over.data()](std::size_t x) {
        return static_cast<std::uint8_t>(below[x] != ClearCell) &
               static_cast<std::uint8_t>(over[x] != NothingState);
      });
    }
  }
  return covered;
}

/// Of all cell values, only blends, and the clear frame's, may have another colour than their codes. Blends
/// stand where the secondary picture covers the primary one.
void MergedPicture::CountRecoloured(const Placement& secondary, MergedCounts& counts) const {
  std::array<std::uint8_t, MaxColours> isThere{};
  const int end = LastMergedRow(height_) + 1;
  if (off_[ClearCell] > 0) {
    for (int y = FirstMergedRow; y < end; ++y) {
      const auto row = std::span(cells_).subspan(Index(y) * MergedWidth, MergedWidth);
      counts.Recoloured += rowInUse_[Index(y)] != 0 ? MergedWidth - CountVisible(row) : MergedWidth;
    }
    isThere[ClearCell] = counts.Recoloured > 0 ? 1 : 0;
  }
  if (counts.Covered > 0) {
    for (int y = std::max(secondary.FirstRow, FirstMergedRow); y < std::min(secondary.EndRow, end); ++y) {
      const auto row = std::span(cells_).subspan(Index(y) * MergedWidth + Index(secondary.Left),
                                                 Index(secondary.EndColumn - secondary.Left));
      const std::int32_t blends =
          CountWhere(row.size(), [row = row.data(), plain = static_cast<std::uint8_t>(plainCount_)](
                                     std::size_t x) { return static_cast<std::uint8_t>(row[x] >= plain); });
      if (blends > 0) {
        counts.Recoloured += blends;
        std::ranges::for_each(row, [&](std::uint8_t cell) { isThere[cell] = 1; });
      }
    }
  }
  for (std::size_t cell = 0; cell < colourCount_; ++cell) {
    if (isThere[cell] != 0 && off_[cell] > counts.FurthestOff) {
      counts.FurthestOff = off_[cell];
      counts.FurthestCode = codes_[cell];
    }
  }
}

void MergedPicture::Copy(const Placement& place) {
  if (place.IsEmpty()) {
    return;
  }
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
  return std::span(picture_).subspan(Index(frameRow - pictureTop_) * Index(place.Width),
                                     Index(place.EndColumn - place.Left));
}

std::span<std::uint8_t> MergedPicture::FrameRow(const Placement& place, int frameRow) {
  rowInUse_[Index(frameRow)] = 1;
  return std::span(cells_).subspan(Index(frameRow) * MergedWidth + Index(place.Left),
                                   Index(place.EndColumn - place.Left));
}

}  // namespace quillmark
