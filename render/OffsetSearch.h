#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "render/MergedInputReader.h"
#include "sup/MergedPacket.h"
#include "sup/SupStream.h"

namespace quillmark {

/// What a vertical offset costs over a whole merge, in pixels as MergedCounts has them.
struct OffsetCost {
  std::uint64_t Covered = 0;
  std::uint64_t Clipped = 0;  ///< of both pictures

  [[nodiscard]] std::uint64_t Total() const { return Covered + Clipped; }
  bool operator==(const OffsetCost&) const = default;
};

/// Finds the vertical offset at which a merge covers and clips the fewest pixels. What every offset costs is
/// summed up packet by packet: of each two rows, one of either picture, the common pixels are counted once,
/// for the one offset that brings the rows together; and for each row of the frame how many secondary pixels
/// it has, of which an offset shows one stretch of rows.
/// Packets that cannot be merged cost nothing. Both streams must outlive it and stay as they are.
class OffsetSearch {
 public:
  /// The settings' own offset is where a search starts from: see Best.
  OffsetSearch(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings);

  /// Takes one more packet, or a part of one with large pictures; false once none was left. No step takes
  /// longer than decoding two pictures. The first steps of a split merge prepare it.
  bool Step();
  /// Takes such a step; false once it is prepared, as pairs always are.
  bool Prepare() { return reader_.Prepare(); }
  /// How many primary subtitles, or packets of a split merge, were taken, and how many there are: 0 of a
  /// split merge that is not prepared.
  [[nodiscard]] std::size_t Looked() const { return next_; }
  [[nodiscard]] std::size_t Count() const { return reader_.Count(); }

  /// The cheapest offset for the packets taken so far. Of several it is the one nearest to the settings' own,
  /// and of two as near the one further up.
  [[nodiscard]] int Best() const;
  /// `yOffset` is within MinYOffset and MaxYOffset.
  [[nodiscard]] OffsetCost CostOf(int yOffset) const;

 private:
  /// The visible pixels of a row that lie inside the frame, a bit each.
  static constexpr std::size_t RowWords = (MergedWidth + 63) / 64;
  struct RowMask {
    int Row = 0;               ///< of the frame, before the secondary picture is moved
    std::uint32_t Pixels = 0;  ///< that the mask has
    std::array<std::uint64_t, RowWords> Words = {};
  };
  using Masks = std::vector<RowMask>;
  /// Per pixel code: 1 where it is visible.
  using Visible = std::array<std::uint8_t, 4>;

  std::uint64_t MaskRows(std::span<const std::uint8_t> unit, const SpuControl& control,
                         const Visible& isVisible, Masks& masks);
  void TakePrimary(const MergedInput& input);
  void TakeSecondary(const MergedInput& input);
  void CountCommon();
  [[nodiscard]] std::vector<std::uint64_t> SecondaryBeforeRow() const;
  [[nodiscard]] OffsetCost CostOf(int yOffset, const std::vector<std::uint64_t>& beforeRow) const;

  MergedInputReader reader_;
  int today_;
  int frameHeight_;
  std::size_t next_ = 0;

  std::vector<std::uint8_t> picture_;
  Masks primary_;
  Masks secondary_;
  std::size_t counted_ = 0;  // rows of primary_ that were compared with those of secondary_

  std::vector<std::uint64_t> covered_;  // per offset, from MinYOffset on
  std::vector<std::uint64_t>
      secondaryIn_;                   // per row, before it is moved: visible pixels in the frame's columns
  std::uint64_t secondaryTotal_ = 0;  // of all rows and columns
  std::uint64_t primaryClipped_ = 0;
};

}  // namespace quillmark
