#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "imaging/cBitmap.h"
#include "palette/Colour.h"
#include "sup/MergedPacket.h"
#include "sup/SpuControl.h"

namespace quillmark {

/// A pixel code, 0-3, for each of the four.
using CodeMap = std::array<std::uint8_t, 4>;
inline constexpr CodeMap SameCodes = {0, 1, 2, 3};

/// Two subtitles, one to be laid over the other. The units are whole, from their size fields on.
struct MergedInput {
  std::span<const std::uint8_t> PrimaryUnit;
  SpuControl Primary;
  std::span<const std::uint8_t> SecondaryUnit;
  SpuControl Secondary;
  int YOffset = 0;                     ///< lines that the secondary picture is moved down
  CodeColours Colours{};               ///< of the merged picture's pixel codes, which the primary's are too
  CodeMap SecondaryCodes = SameCodes;  ///< which of these each code of the secondary picture becomes
  int FrameHeight = 576;
};

/// Visible pixels of one picture, those of an opacity above 0, that its merged unit does not show.
struct ClippedPixels {
  std::int32_t Rows = 0;          ///< of the picture, that have such pixels
  std::int32_t OutsideFrame = 0;  ///< those outside the frame
  /// Those inside it, in its rows 0 and 1 and its last one: the frame has these, but no merged unit does.
  std::int32_t InEdgeRows = 0;

  [[nodiscard]] std::int32_t Total() const { return OutsideFrame + InEdgeRows; }
  bool operator==(const ClippedPixels&) const = default;
};

/// What becomes of the pixels of two pictures in their merged unit.
struct MergedCounts {
  ClippedPixels Primary = {};
  ClippedPixels Secondary = {};
  bool PrimaryIsCut = false;  ///< its fields ended before the picture did
  bool SecondaryIsCut = false;
  /// Of what the unit shows: visible secondary pixels over visible primary ones.
  std::int32_t Covered = 0;
  /// Of what the unit shows: pixels whose composed colour is not that of the code which is written for it.
  /// Two colours that are both invisible are one. Where no code is invisible, that is the clear frame too.
  std::int32_t Recoloured = 0;
  std::uint8_t FurthestOff = 0;   ///< how far the furthest of them is off: ColourDistance
  std::uint8_t FurthestCode = 0;  ///< and the code that it falls on

  bool operator==(const MergedCounts&) const = default;
};

/// How far two ARGB colours are apart: the largest difference of a component, 0-255. Of an invisible one the
/// alpha alone counts.
[[nodiscard]] std::uint8_t ColourDistance(Argb a, Argb b);

/// The pixel code that stands for an ARGB value: the first one of just this colour, else the first one near
/// it, else 0.
[[nodiscard]] std::uint8_t CodeOfColour(Argb colour, const CodeColours& colours);

/// A frame with the primary picture at its place and the secondary picture, moved, over it, blended in
/// straight alpha. It is kept as small numbers, one per composed colour: two pictures of four codes make few
/// colours, and what lies around them costs nothing. Memory is reused from one subtitle to the next.
/// Pictures are clipped to the frame, whatever their areas and the offset; a reversed area shows nothing.
class MergedPicture {
 public:
  void Compose(const MergedInput& input) { Compose(input, nullptr); }
  /// The same, and counts. What is outside the frame is decoded for it, too; nothing else takes longer.
  [[nodiscard]] MergedCounts ComposeAndCount(const MergedInput& input);

  /// The frame for the encoder; cell value 0 is the clear frame. Valid until the next Compose.
  [[nodiscard]] FrameCells Cells() const;
  /// What each cell value stands for, in straight ARGB. Valid until the next Compose.
  [[nodiscard]] std::span<const Argb> Colours() const { return std::span(composed_).first(colourCount_); }
  /// The frame as an image of straight ARGB: MergedWidth x FrameHeight pixels.
  void CopyTo(cBitmap& bitmap) const;

 private:
  /// A picture's place in the frame and what of it lies inside.
  struct Placement {
    int Left = 0;
    int Top = 0;
    int Width = 0;
    int Height = 0;
    int EndColumn = 0;  ///< frame columns Left .. EndColumn - 1 are covered
    int FirstRow = 0;   ///< frame rows FirstRow .. EndRow - 1 are covered
    int EndRow = 0;

    [[nodiscard]] bool HasPixels() const { return Width > 0; }
    /// Nothing of it lies inside the frame.
    [[nodiscard]] bool IsEmpty() const { return Left >= EndColumn || FirstRow >= EndRow; }
    [[nodiscard]] bool SharesRowsWith(const Placement& other) const {
      return !IsEmpty() && !other.IsEmpty() && FirstRow < other.EndRow && other.FirstRow < EndRow;
    }
  };
  using CellTable = std::array<std::uint8_t, 4>;

  /// The cell value of the clear frame, and of every invisible pixel.
  static constexpr std::uint8_t ClearCell = 0;
  /// What a cell of the secondary picture is: nothing to be seen, or a code.
  static constexpr std::size_t StateCount = 5;
  static constexpr std::uint8_t NothingState = 0;
  /// The clear frame, or one of four primary colours, below each state.
  static constexpr std::size_t MaxBelow = 5;
  static constexpr std::size_t MaxColours = MaxBelow + MaxBelow * StateCount;

  void Compose(const MergedInput& input, MergedCounts* counts);
  [[nodiscard]] Placement Place(const SpuControl& control, int yOffset) const;
  void ClearFrame(int height);
  void PrepareColours(const CodeColours& colours);
  std::uint8_t CellOf(Argb colour);
  bool Decode(std::span<const std::uint8_t> unit, const SpuControl& control, const Placement& place,
              const CellTable& table, ClippedPixels* clipped);
  [[nodiscard]] bool IsShownWhole(const Placement& place) const;
  void CountClipped(const Placement& place, int firstLine, std::span<const std::uint8_t> lines,
                    ClippedPixels& clipped) const;
  [[nodiscard]] std::int32_t CountCovered(const Placement& place) const;
  void CountRecoloured(const Placement& secondary, MergedCounts& counts) const;
  void Copy(const Placement& place);
  void LayOver(const Placement& place);
  [[nodiscard]] std::span<const std::uint8_t> PictureRow(const Placement& place, int frameRow) const;
  [[nodiscard]] std::span<std::uint8_t> FrameRow(const Placement& place, int frameRow);

  int height_ = 0;
  std::vector<std::uint8_t> cells_;     // MergedWidth x height_
  std::vector<std::uint8_t> rowInUse_;  // per row: 1 where cells_ may hold anything but 0
  std::vector<std::uint8_t> picture_;   // of the picture decoded last the lines that the frame needs
  int pictureTop_ = 0;                  // the frame's row of the first of them
  std::vector<std::uint8_t> band_;      // lines of it that are counted alone

  bool prepared_ = false;
  CodeColours colours_{};                         // what the tables below were made for
  std::size_t colourCount_ = 0;                   // invariant: at most MaxColours
  std::size_t plainCount_ = 0;                    // cell values below it are no blends
  std::array<Argb, MaxColours> composed_{};       // per cell value
  std::array<std::uint8_t, MaxColours> codes_{};  // per cell value
  std::array<std::uint8_t, MaxColours> off_{};    // per cell value: how far its code's colour is off
  CellTable plainCells_{};                        // per pixel code, over the clear frame
  std::array<std::array<std::uint8_t, StateCount>, MaxBelow> over_{};  // [cell below][state]
};

}  // namespace quillmark
