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

/// Two subtitles, one to be laid over the other. The units are whole, from their size fields on.
struct MergedInput {
  std::span<const std::uint8_t> PrimaryUnit;
  SpuControl Primary;
  std::span<const std::uint8_t> SecondaryUnit;
  SpuControl Secondary;
  int YOffset = 0;        ///< lines that the secondary picture is moved down
  CodeColours Colours{};  ///< of both pictures' pixel codes
  int FrameHeight = 576;
};

/// The pixel code that stands for an ARGB value: the first one of just this colour, else the first one near
/// it, else 0.
[[nodiscard]] std::uint8_t CodeOfColour(Argb colour, const CodeColours& colours);

/// A frame with the primary picture at its place and the secondary picture, moved, over it, blended in
/// straight alpha. It is kept as small numbers, one per composed colour: two pictures of four codes make few
/// colours, and what lies around them costs nothing. Memory is reused from one subtitle to the next.
/// Pictures are clipped to the frame, whatever their areas and the offset; a reversed area shows nothing.
class MergedPicture {
 public:
  void Compose(const MergedInput& input);

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
    int EndColumn = 0;  ///< frame columns Left .. EndColumn - 1 are covered
    int FirstRow = 0;   ///< frame rows FirstRow .. EndRow - 1 are covered
    int EndRow = 0;

    [[nodiscard]] bool IsEmpty() const { return Left >= EndColumn || FirstRow >= EndRow; }
    [[nodiscard]] bool SharesRowsWith(const Placement& other) const {
      return !IsEmpty() && !other.IsEmpty() && FirstRow < other.EndRow && other.FirstRow < EndRow;
    }
  };
  using CellTable = std::array<std::uint8_t, 4>;

  /// The cell value of the clear frame.
  static constexpr std::uint8_t ClearCell = 0;
  /// What a cell of the secondary picture is: not reached by any run, or a code.
  static constexpr std::size_t StateCount = 5;
  static constexpr std::uint8_t NotReached = 0;
  /// The clear frame, or one of four primary colours, below each state.
  static constexpr std::size_t MaxBelow = 5;
  static constexpr std::size_t MaxColours = MaxBelow + MaxBelow * StateCount;

  [[nodiscard]] Placement Place(const SpuControl& control, int yOffset) const;
  void ClearFrame(int height);
  void PrepareColours(const CodeColours& colours);
  std::uint8_t CellOf(Argb colour);
  void Decode(std::span<const std::uint8_t> unit, const SpuControl& control, const Placement& place,
              std::uint8_t notReached, const CellTable& table);
  void Copy(const Placement& place);
  void LayOver(const Placement& place);
  [[nodiscard]] std::span<const std::uint8_t> PictureRow(const Placement& place, int frameRow) const;
  [[nodiscard]] std::span<std::uint8_t> FrameRow(const Placement& place, int frameRow);

  int height_ = 0;
  std::vector<std::uint8_t> cells_;     // MergedWidth x height_
  std::vector<std::uint8_t> rowInUse_;  // per row: 1 where cells_ may hold anything but 0
  std::vector<std::uint8_t> picture_;   // the picture decoded last

  bool prepared_ = false;
  CodeColours colours_{};                         // what the tables below were made for
  std::size_t colourCount_ = 0;                   // invariant: at most MaxColours
  std::array<Argb, MaxColours> composed_{};       // per cell value
  std::array<std::uint8_t, MaxColours> codes_{};  // per cell value
  CellTable primaryCells_{};                      // per pixel code
  CellTable aloneCells_{};                        // the secondary's, over the clear frame
  std::array<std::array<std::uint8_t, StateCount>, MaxBelow> over_{};  // [cell below][state]
};

}  // namespace quillmark
