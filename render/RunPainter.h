#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quillmark {

/// Fills cells with what the pixel codes stand for, in blocks that compilers turn into a few wide stores.
template <typename Cell>
class RunPainter {
 public:
  /// Cells that PaintFreely writes, however short the run is.
  static constexpr std::ptrdiff_t BlockCells = 16;
  /// The same of PaintFewFreely.
  static constexpr std::ptrdiff_t FewCells = 4;

  explicit RunPainter(const std::array<Cell, 4>& table) {
    for (std::size_t code = 0; code < 4; ++code) {
      blocks_[code].fill(table[code]);
    }
  }

  [[nodiscard]] Cell Colour(unsigned code) const { return blocks_[code][0]; }

  /// Paints at most 16 cells by writing 16: the caller knows that what stands after the run is his to
  /// overwrite.
  void PaintFreely(Cell* first, unsigned code) const {
    std::memcpy(first, blocks_[code].data(), BlockCells * sizeof(Cell));
  }

  /// The same for at most 4 cells.
  void PaintFewFreely(Cell* first, unsigned code) const {
    std::memcpy(first, blocks_[code].data(), FewCells * sizeof(Cell));
  }

  /// Paints `length` cells and no other.
  void PaintExactly(Cell* first, std::ptrdiff_t length, unsigned code) const {
    if (length < BlockCells) {
      std::fill_n(first, length, blocks_[code][0]);
      return;
    }
    // The last block reaches back over the one before it instead of past the run; the same is done to whole
    // blocks in runs of up to four, whose number of blocks a processor could not guess.
    const std::ptrdiff_t last = length - BlockCells;
    if (last <= 3 * BlockCells) {
      PaintFreely(first, code);
      PaintFreely(first + std::min(BlockCells, last), code);
      PaintFreely(first + std::min(2 * BlockCells, last), code);
    } else {
      for (std::ptrdiff_t x = 0; x < last; x += BlockCells) {
        PaintFreely(first + x, code);
      }
    }
    PaintFreely(first + last, code);
  }

 private:
  std::array<std::array<Cell, BlockCells>, 4> blocks_;
};

}  // namespace quillmark
