#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "render/RunPainter.h"

#if defined(__x86_64__) && defined(__GNUC__)
#include <immintrin.h>
/// Of functions that use AVX2 and BMI2; nothing but a look at the processor leads to them.
#define QUILLMARK_AVX2 __attribute__((target("avx2,bmi2")))
#endif

namespace quillmark {

/// The codes that stand in twelve bits, at most three, as far as one block and two small ones paint them: any
/// code of one or two nibbles, or three of code 0, and codes of one nibble after it. Places that are left
/// over repeat the last code, so that painting needs no decision.
struct alignas(8) ShortCodes {
  std::uint8_t Bits = 0;    ///< that the codes take; 0 where another code starts
  std::uint8_t Length = 0;  ///< cells of all runs
  std::array<std::uint8_t, 3> Start = {};
  std::array<std::uint8_t, 3> Code = {};

  static consteval ShortCodes Of(unsigned bits);
};

inline constexpr std::ptrdiff_t MaxShortCodes = 63;

/// Bits of the code that starts in the highest of `count` bits; 0 when it has not ended among them.
consteval unsigned CodeBits(unsigned bits, unsigned count) {
  for (unsigned size = 4; size <= std::min(count, 12U); size += 4) {
    if (bits >> (count - size) >= 1U << (size / 2)) {
      return size;
    }
  }
  return 0;
}

/// What twelve bits are, for each number of them.
template <typename Entry>
consteval std::array<Entry, 4096> ByTwelveBits() {
  std::array<Entry, 4096> table;
  for (unsigned bits = 0; bits < table.size(); ++bits) {
    table[bits] = Entry::Of(bits);
  }
  return table;
}

consteval ShortCodes ShortCodes::Of(unsigned bits) {
  ShortCodes codes;
  unsigned left = 12;
  for (std::size_t i = 0; i < 3; ++i) {
    const unsigned rest = bits & ((1U << left) - 1U);
    const unsigned size = CodeBits(rest, left);
    const unsigned value = rest >> (left - size);
    const bool isLongColoured = size == 12 && (value & 3U) != 0;
    if (i == 0 && (size == 0 || isLongColoured)) {
      return codes;
    }
    if (i > 0 && size != 4) {
      codes.Start[i] = codes.Start[i - 1];
      codes.Code[i] = codes.Code[i - 1];
      continue;
    }
    codes.Start[i] = codes.Length;
    codes.Code[i] = static_cast<std::uint8_t>(value & 3U);
    codes.Length = static_cast<std::uint8_t>(codes.Length + (value >> 2U));
    left -= size;
  }
  codes.Bits = static_cast<std::uint8_t>(12U - left);
  return codes;
}

inline constexpr auto shortCodes = ByTwelveBits<ShortCodes>();

/// Looks short codes up and paints them with instructions that every processor has.
template <typename Cell>
class PlainCodes {
 public:
  using Entry = ShortCodes;

  explicit PlainCodes(const RunPainter<Cell>& painter) : painter_(painter) {}

  [[nodiscard]] static const Entry& At(unsigned bits) { return shortCodes[bits]; }
  /// Cells that Paint may write.
  [[nodiscard]] static std::ptrdiff_t Room(const Entry& codes) {
    return RunPainter<Cell>::BlockCells + codes.Length;
  }
  void Paint(Cell* first, const Entry& codes) const {
    painter_.PaintFreely(first, codes.Code[0]);
    painter_.PaintFewFreely(first + codes.Start[1], codes.Code[1]);
    painter_.PaintFewFreely(first + codes.Start[2], codes.Code[2]);
  }
  /// Fills a row with code 0.
  void Clear(std::span<Cell> row) const { painter_.PaintExactly(row.data(), std::ssize(row), 0); }

 private:
  const RunPainter<Cell>& painter_;
};

#ifdef QUILLMARK_AVX2
/// The codes that stand in twelve bits, as many as fill up to 16 cells, or one longer run of code 0.
struct alignas(8) PackedCodes {
  std::uint32_t Cells = 0;   ///< the codes of 16 cells, two bits each, the first one's lowest
  std::uint8_t Bits = 0;     ///< that the codes take; 0 where another code starts
  std::uint8_t Length = 0;   ///< cells of all runs
  std::uint8_t Written = 0;  ///< cells that are painted, or left as they are behind the 16th

  static constexpr unsigned Block = 16;

  static consteval PackedCodes Of(unsigned bits);
};

consteval PackedCodes PackedCodes::Of(unsigned bits) {
  PackedCodes packed;
  unsigned length = 0;
  unsigned left = 12;
  while (left > 0 && length < Block) {
    const unsigned rest = bits & ((1U << left) - 1U);
    const unsigned size = CodeBits(rest, left);
    const unsigned value = rest >> (left - size);
    const unsigned run = value >> 2U;
    const bool isLongClear = length == 0 && (value & 3U) == 0;
    if (size == 0 || (length + run > Block && !isLongClear)) {
      break;
    }
    for (unsigned cell = length; cell < std::min(length + run, Block); ++cell) {
      packed.Cells |= (value & 3U) << (2 * cell);
    }
    length += run;
    left -= size;
  }
  packed.Bits = static_cast<std::uint8_t>(12U - left);
  packed.Length = static_cast<std::uint8_t>(length);
  packed.Written = static_cast<std::uint8_t>(std::max(length, Block));
  return packed;
}

inline constexpr auto packedCodes = ByTwelveBits<PackedCodes>();

/// Does as PlainCodes, 16 cells at once of whatever codes.
class Avx2Codes {
 public:
  using Entry = PackedCodes;

  explicit Avx2Codes(const RunPainter<std::uint32_t>& painter) {
    for (unsigned code = 0; code < colours_.size(); ++code) {
      colours_[code] = painter.Colour(code % 4);
    }
  }

  [[nodiscard]] static const Entry& At(unsigned bits) { return packedCodes[bits]; }
  [[nodiscard]] static std::ptrdiff_t Room(const Entry& codes) { return codes.Written; }
  QUILLMARK_AVX2 void Paint(std::uint32_t* first, const Entry& codes) const {
    const __m256i all = _mm256_set1_epi32(static_cast<int>(codes.Cells));
    // Of each index the lowest three bits count, one of the next cell's among them: the colours stand there
    // twice.
    const __m256i low = _mm256_srlv_epi32(all, _mm256_setr_epi32(0, 2, 4, 6, 8, 10, 12, 14));
    const __m256i high = _mm256_srlv_epi32(all, _mm256_setr_epi32(16, 18, 20, 22, 24, 26, 28, 30));
    Store(first, _mm256_permutevar8x32_epi32(Colours(), low));
    Store(first + 8, _mm256_permutevar8x32_epi32(Colours(), high));
  }
  QUILLMARK_AVX2 void Clear(std::span<std::uint32_t> row) const {
    std::size_t x = 0;
    for (; x + 8 <= row.size(); x += 8) {
      Store(row.data() + x, _mm256_set1_epi32(static_cast<int>(colours_[0])));
    }
    for (; x < row.size(); ++x) {
      row[x] = colours_[0];
    }
  }

 private:
  QUILLMARK_AVX2 static void Store(std::uint32_t* first, __m256i cells) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(first), cells);
  }
  [[nodiscard]] QUILLMARK_AVX2 __m256i Colours() const {
    return _mm256_load_si256(reinterpret_cast<const __m256i*>(colours_.data()));
  }

  alignas(32) std::array<std::uint32_t, 8> colours_{};
};
#endif

}  // namespace quillmark
