#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace quillmark {

/// Where one field's next nibble comes from.
struct NibbleCursor {
  std::int32_t Position = 0;  ///< unit position of the last byte consumed; the next one is Position + 1
  std::int16_t Pending = -1;  ///< the byte whose low nibble is still unread; negative when there is none
};

/// Four bits, high nibble of a byte before its low one. `unit` is a whole unit, from its size field on.
/// Kept oddity: the unit's last byte is not read; a read there, or one past it, gives the byte before the one
/// asked for. The unit's header, and anywhere else outside its data, reads as 0.
[[nodiscard]] std::uint8_t ReadNibble(std::span<const std::uint8_t> unit, NibbleCursor& cursor);

/// What a decoded cell holds: an ARGB value for pictures, the bare code or another small number for merging.
template <typename Cell>
using CodeTable = std::array<Cell, 4>;

/// Decodes one line of one field into row `line` of `cells` (row-major, `width` cells a row) and moves
/// `position` (as NibbleCursor::Position) after the line's last byte: lines start on byte boundaries. Runs
/// are clipped at the line's end. The table says what each pixel code becomes.
template <typename Cell>
void DecodeLine(std::span<const std::uint8_t> unit, std::span<Cell> cells, std::int32_t& position, int line,
                int width, const CodeTable<Cell>& table);

/// What decoding may use. All of it gives the same cells.
enum class Instructions : std::uint8_t {
  Best,   ///< what this processor has
  Plain,  ///< what every one has
};

/// Decodes both fields of a unit: the top field holds lines 0, 2, 4, ..., the bottom field lines 1, 3, 5, ...
/// `unit` is a whole unit, from its size field on, where `topOffset` and `bottomOffset` count from. `cells`
/// has width x height cells, row-major; cells that no run reaches keep their value. Does nothing when width
/// or height is below 1. Kept oddities: the last line of an odd height is not decoded; decoding ends after
/// the pair of lines in which the top field ran past the bottom field's start, or the bottom field past the
/// unit's last byte.
/// The answer is how many lines were decoded, each of them whole: height less its last line where it is odd,
/// unless decoding ended early.
template <typename Cell>
int DecodeFields(std::span<const std::uint8_t> unit, std::span<Cell> cells, int width, int height,
                 std::int32_t topOffset, std::int32_t bottomOffset, const CodeTable<Cell>& table,
                 Instructions use = Instructions::Best);

/// Where a unit's two fields are decoded from next, for pictures that are decoded a few lines at a time.
struct FieldPositions {
  /// Offsets as DecodeFields has them; positions name the byte before.
  FieldPositions(std::int32_t topOffset, std::int32_t bottomOffset)
      : Top(topOffset - 1), Bottom(bottomOffset - 1), BottomStart(bottomOffset - 1) {}

  std::int32_t Top;
  std::int32_t Bottom;
  std::int32_t BottomStart;
  bool HasEnded = false;  ///< no further line is decoded
};

/// Goes on with DecodeFields: the next `lines` lines of the picture, all but the last ones an even number.
template <typename Cell>
int DecodeNextLines(std::span<const std::uint8_t> unit, std::span<Cell> cells, int width, int lines,
                    FieldPositions& positions, const CodeTable<Cell>& table,
                    Instructions use = Instructions::Best);

// Instantiated for std::uint32_t and std::uint8_t.

}  // namespace quillmark
