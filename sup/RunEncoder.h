#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace quillmark {

/// Writes nibbles, the high one of a byte first, to memory that its user has reserved. It writes up to
/// `Overhang` bytes after the last nibble, and the low nibble that is still free is 0.
class NibbleWriter {
 public:
  static constexpr std::size_t Overhang = 4;

  /// Goes on in the middle of the byte at `at` when `half` is set.
  NibbleWriter(std::uint8_t* at, bool half)
      : at_(at), pending_(half ? *at >> 4U : 0U), nibbles_(half ? 1 : 0) {}

  /// The low `count` (1 to 4) nibbles of `value`, the highest first; `value` has no bits above them.
  void AppendNibbles(std::uint32_t value, std::size_t count) {
    pending_ = pending_ << (4 * count) | value;
    nibbles_ += count;
    // Left-aligned, whatever stood above the pending nibbles is shifted out.
    const std::uint32_t window = pending_ << (32 - 4 * nibbles_);
    at_[0] = static_cast<std::uint8_t>(window >> 24U);
    at_[1] = static_cast<std::uint8_t>(window >> 16U);
    at_[2] = static_cast<std::uint8_t>(window >> 8U);
    at_[3] = static_cast<std::uint8_t>(window);
    at_ += nibbles_ / 2;
    nibbles_ %= 2;
  }

  /// Gives up the free low nibble, if there is one.
  void AlignToByte() {
    at_ += nibbles_;
    nibbles_ = 0;
  }

  /// The byte that is written next.
  [[nodiscard]] const std::uint8_t* At() const { return at_; }
  [[nodiscard]] bool Half() const { return nibbles_ != 0; }

 private:
  std::uint8_t* at_;
  std::uint32_t pending_;  // the nibbles of *at_ that are written, in the lowest bits
  std::size_t nibbles_;    // how many these are: 0 or 1
};

/// One field's run-length data. Grows as needed; Clear() keeps the memory for the next field.
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

  /// Has `write(NibbleWriter&)` append at most `maxNibbles`.
  template <typename Write>
  void Append(std::size_t maxNibbles, const Write& write) {
    const std::size_t needed = Position() + maxNibbles / 2 + 1 + NibbleWriter::Overhang;
    if (bytes_.size() < needed) {
      bytes_.resize(std::max(needed, 2 * bytes_.size()));
    }
    NibbleWriter writer(bytes_.data() + Position(), Half());
    write(writer);
    nibbles_ = 2 * static_cast<std::size_t>(writer.At() - bytes_.data()) + (writer.Half() ? 1 : 0);
  }

 private:
  std::vector<std::uint8_t> bytes_;  // invariant: bytes_.size() >= (nibbles_ + 1) / 2
  std::size_t nibbles_ = 0;
};

/// Longest run that one code can hold.
inline constexpr std::size_t MaxRun = 255;

/// Writes the code of one run: `run` 0-255 cells of pixel code `code` 0-3. The value run x 4 + code takes 1
/// nibble for runs below 4, 2 below 16, 3 below 64, else 4; leading zero nibbles tell the decoder which.
inline void EncodeRun(NibbleWriter& writer, std::uint32_t code, std::size_t run) {
  const auto length = static_cast<std::uint32_t>(run);
  const auto nibbles = static_cast<std::size_t>(std::bit_width(length | 1U) + 1) / 2;
  writer.AppendNibbles(length * 4 + code, nibbles);
}

/// Writes "code `code` from here to the end of the line", a run of 0, and moves on to the next whole byte.
inline void EncodeEndOfLine(NibbleWriter& writer, std::uint32_t code) {
  writer.AppendNibbles(code, 4);
  writer.AlignToByte();
}

/// Whether all cells are equal; true for a line of one.
template <typename Cell>
[[nodiscard]] bool IsOneColour(std::span<const Cell> line) {
  return std::memcmp(line.data(), line.data() + 1, line.size_bytes() - sizeof(Cell)) == 0;
}

/// How many cells are compared at once.
inline constexpr std::size_t BlockSize = 64;

/// Bit i is flag i, which is 0 or 1, of `BlockSize` flags.
[[nodiscard]] inline std::uint64_t GatherFlags(const std::uint8_t* flags) {
  std::uint64_t bits = 0;
  for (std::size_t i = 0; i < BlockSize; i += 8) {
    std::uint64_t eight = 0;
    if constexpr (std::endian::native == std::endian::little) {
      std::memcpy(&eight, flags + i, sizeof(eight));
      eight = eight * 0x0102040810204080U >> 56U;  // gathers the lowest bits of eight bytes
    } else {
      for (std::size_t bit = 0; bit < 8; ++bit) {
        eight |= std::uint64_t{flags[i + bit]} << bit;
      }
    }
    bits |= eight << i;
  }
  return bits;
}

/// Bit i tells that cell i differs from the one before it. Both loops are made for the compiler's vectors:
/// with short runs, jumping from one to the next by tests would mispredict at almost each of them.
template <typename Cell>
[[nodiscard]] std::uint64_t RunStartsInBlock(const Cell* cells) {
  std::array<std::uint8_t, BlockSize> differs;
  const Cell* const before = cells - 1;
  for (std::size_t i = 0; i < BlockSize; ++i) {
    differs[i] = cells[i] != before[i] ? 1 : 0;
  }
  return GatherFlags(differs.data());
}

#ifdef __SSE2__
/// The same for bytes, 16 at a time.
[[nodiscard]] inline std::uint64_t RunStartsInBlock(const std::uint8_t* cells) {
  std::uint64_t equal = 0;
  for (std::size_t i = 0; i < BlockSize; i += 16) {
    const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(cells + i));
    const __m128i before = _mm_loadu_si128(reinterpret_cast<const __m128i*>(cells + i - 1));
    const auto mask = static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(here, before)));
    equal |= std::uint64_t{mask} << i;
  }
  return ~equal;
}
#endif

/// Calls `found(index)` for every cell but the first that differs from the one before it.
template <typename Cell, typename Found>
void ForEachRunStart(std::span<const Cell> line, const Found& found) {
  const auto tell = [&](std::size_t block, std::uint64_t starts) {
    for (; starts != 0; starts &= starts - 1) {
      found(block + static_cast<std::size_t>(std::countr_zero(starts)));
    }
  };
  std::size_t x = 1;
  for (; x + BlockSize <= line.size(); x += BlockSize) {
    tell(x, RunStartsInBlock(line.data() + x));
  }
  if (x < line.size() && line.size() > BlockSize) {
    // The last cells once more as part of a whole block, less what was told of it.
    const std::size_t block = line.size() - BlockSize;
    tell(block, RunStartsInBlock(line.data() + block) >> (x - block) << (x - block));
    return;
  }
  for (; x < line.size(); ++x) {
    if (line[x] != line[x - 1]) {
      found(x);
    }
  }
}

/// Appends one line of cells, which starts and ends on a whole byte. A run is a stretch of equal cells, not
/// of equal codes: neighbours that `codeOf` gives the same code stay two runs. The line's last run is written
/// as an end-of-line code; a longer one than a code can hold in pieces of 255 and the rest. An empty line
/// appends nothing.
/// Cells are unsigned numbers, ARGB values for instance; `codeOf(cell)` answers 0-3.
template <typename Cell, typename CodeOf>
void EncodeLine(FieldBuffer& field, std::span<const Cell> line, const CodeOf& codeOf) {
  if (line.empty()) {
    return;
  }
  // No run takes more nibbles than it has cells; the end of the line takes 4 and one to align.
  field.Append(line.size() + 5, [&](NibbleWriter& destination) {
    NibbleWriter writer = destination;  // a copy that no write through its own pointer can reach
    std::size_t start = 0;
    if (!IsOneColour(line)) {
      ForEachRunStart(line, [&](std::size_t end) {
        const std::uint32_t code = codeOf(line[start]);
        std::size_t run = end - start;
        for (; run > MaxRun; run -= MaxRun) {
          EncodeRun(writer, code, MaxRun);
        }
        EncodeRun(writer, code, run);
        start = end;
      });
    }
    EncodeEndOfLine(writer, codeOf(line[start]));
    destination = writer;
  });
}

/// Appends a line of which only one colour's code is known.
inline void EncodeBlankLine(FieldBuffer& field, std::uint32_t code) {
  field.Append(4, [&](NibbleWriter& writer) { EncodeEndOfLine(writer, code); });
}

}  // namespace quillmark
