#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace quillmark {

/// One field's run-length data while it is written, nibble by nibble, the high nibble of a byte first. Grows
/// as needed; a low nibble that was not written is 0. Clear() keeps the memory for the next field.
class FieldBuffer {
 public:
  void Clear() { nibbles_ = 0; }
  /// Index of the byte that is written next.
  [[nodiscard]] std::size_t Position() const { return nibbles_ / 2; }
  /// That byte's high nibble is written and its low nibble free.
  [[nodiscard]] bool Half() const { return nibbles_ % 2 != 0; }
  /// Everything written; valid until the next write.
  [[nodiscard]] std::span<const std::uint8_t> Bytes() const {
    return std::span(bytes_).first((nibbles_ + 1) / 2);
  }

  /// Writes the low `count` (at most 4) nibbles of `value`, the highest first; `value` has no bits above
  /// them.
  void AppendNibbles(std::uint32_t value, std::size_t count) {
    const std::size_t position = Position();
    if (bytes_.size() - position < MostBytesTouched) {
      bytes_.resize(2 * bytes_.size() + MostBytesTouched);
    }
    const std::size_t used = nibbles_ % 2;
    const std::uint32_t window = value << (4 * (2 * MostBytesTouched - used - count));
    std::uint8_t* const at = bytes_.data() + position;
    at[0] = static_cast<std::uint8_t>((used != 0 ? at[0] : 0U) | window >> 16U);
    at[1] = static_cast<std::uint8_t>(window >> 8U);
    at[2] = static_cast<std::uint8_t>(window);
    nibbles_ += count;
  }

  /// Gives up the free low nibble, if there is one.
  void AlignToByte() { nibbles_ += nibbles_ % 2; }

 private:
  /// A used high nibble and four more fill less than three bytes.
  static constexpr std::size_t MostBytesTouched = 3;

  std::vector<std::uint8_t> bytes_;  // invariant: bytes_.size() >= (nibbles_ + 1) / 2
  std::size_t nibbles_ = 0;
};

/// Longest run that one code can hold.
inline constexpr std::size_t LongestRun = 255;

/// Appends the code of one run: `run` 0-255 cells of pixel code `code` 0-3. The value run x 4 + code is
/// written in 1 nibble for runs below 4, in 2 below 16, in 3 below 64, else in 4; leading zero nibbles tell
/// the decoder which.
inline void EncodeRun(FieldBuffer& field, std::uint32_t code, std::size_t run) {
  const auto length = static_cast<std::uint32_t>(run);
  const auto nibbles = static_cast<std::size_t>(std::bit_width(length | 1U) + 1) / 2;
  field.AppendNibbles(length * 4 + code, nibbles);
}

/// Appends "code `code` from here to the end of the line", a run of 0, and moves on to the next whole byte.
inline void EncodeEndOfLine(FieldBuffer& field, std::uint32_t code) {
  field.AppendNibbles(code, 4);
  field.AlignToByte();
}

/// Index of the first cell behind `start` that differs from it; the line's size when none does.
template <typename Cell>
[[nodiscard]] std::size_t RunEnd(std::span<const Cell> line, std::size_t start) {
  static_assert(sizeof(Cell) < sizeof(std::uint64_t));
  constexpr std::size_t CellBits = 8 * sizeof(Cell);
  constexpr std::size_t CellsAtOnce = sizeof(std::uint64_t) / sizeof(Cell);
  constexpr std::uint64_t OneInEachCell = ~std::uint64_t{0} / ((std::uint64_t{1} << CellBits) - 1);
  const Cell colour = line[start];
  const std::uint64_t pattern = OneInEachCell * colour;
  std::size_t x = start + 1;
  for (; x + CellsAtOnce <= line.size(); x += CellsAtOnce) {
    std::uint64_t cells = 0;
    std::memcpy(&cells, line.data() + x, sizeof(cells));
    const std::uint64_t different = cells ^ pattern;
    if (different != 0) {
      const int bit =
          std::endian::native == std::endian::big ? std::countl_zero(different) : std::countr_zero(different);
      return x + static_cast<std::size_t>(bit) / CellBits;
    }
  }
  while (x < line.size() && line[x] == colour) {
    ++x;
  }
  return x;
}

/// Appends one line of cells, which always ends on a whole byte. A run is a stretch of equal cells, not of
/// equal codes: neighbours that `codeOf` gives the same code stay two runs. The line's last run is written as
/// an end-of-line code; a longer one than a code can hold in pieces of 255 and the rest. An empty line
/// appends nothing.
/// Cells are unsigned numbers of at most 32 bits, ARGB values for instance; `codeOf(cell)` answers 0-3.
template <typename Cell, typename CodeOf>
void EncodeLine(FieldBuffer& field, std::span<const Cell> line, const CodeOf& codeOf) {
  for (std::size_t start = 0; start < line.size();) {
    const std::uint32_t code = codeOf(line[start]);
    const std::size_t end = RunEnd(line, start);
    if (end == line.size()) {
      EncodeEndOfLine(field, code);
      return;
    }
    std::size_t run = end - start;
    for (; run > LongestRun; run -= LongestRun) {
      EncodeRun(field, code, LongestRun);
    }
    EncodeRun(field, code, run);
    start = end;
  }
}

}  // namespace quillmark
