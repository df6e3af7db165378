#include "render/FieldDecoder.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include "render/RunPainter.h"
#include "render/ShortCodes.h"
#include "sup/SupFormat.h"
#include "sup/UnitView.h"

namespace quillmark {
namespace {

struct Run {
  std::ptrdiff_t Length = 0;  ///< cells, up to the line's end
  unsigned Code = 0;
};

/// The byte that a read at `position` gives, with the oddity of the unit's end.
std::uint8_t ByteAt(const UnitView& unit, std::int32_t position) {
  return unit[position < unit.Last() ? position : position - 1];
}

/// What a code's value says: two bits of pixel code below the length, of which 0 means up to the line's end.
Run ClippedRun(unsigned value, std::ptrdiff_t left) {
  const auto length = static_cast<std::ptrdiff_t>(value >> 2U);
  return {.Length = length == 0 ? left : std::min(length, left), .Code = value & 3U};
}

/// One to four nibbles: a code is as long as it takes until bits stand above its last six.
Run ReadRun(std::span<const std::uint8_t> unit, NibbleCursor& cursor, std::ptrdiff_t left) {
  constexpr std::array<unsigned, 3> lengthMask = {0x0C, 0xF0, 0xFC0};
  unsigned value = ReadNibble(unit, cursor);
  for (const unsigned mask : lengthMask) {
    if ((value & mask) != 0) {
      break;
    }
    value = value << 4U | ReadNibble(unit, cursor);
  }
  return ClippedRun(value, left);
}

/// Whether row `line` lies inside the cells.
bool HasRow(std::size_t cellCount, int line, int width) {
  return line >= 0 && width > 0 && (std::int64_t{line} + 1) * width <= static_cast<std::int64_t>(cellCount);
}

/// One line, code by code and nibble by nibble, wherever the position is.
template <typename Cell>
void DecodeRowAnywhere(std::span<const std::uint8_t> unit, std::span<Cell> row, std::int32_t& position,
                       const RunPainter<Cell>& painter) {
  NibbleCursor cursor{.Position = position};
  while (!row.empty()) {
    const Run run = ReadRun(unit, cursor, std::ssize(row));
    painter.PaintExactly(row.data(), run.Length, run.Code);
    row = row.subspan(static_cast<std::size_t>(run.Length));
  }
  position = cursor.Position;
}

/// The next bits of some bytes, at the top of a register.
class BitWindow {
 public:
  /// Reads from `first` on and never touches `end`.
  BitWindow(const std::uint8_t* first, const std::uint8_t* end) : first_(first), next_(first), end_(end) {}

  /// Makes at least 56 bits ready; false when fewer than eight bytes are left to take them from.
  bool Refill() {
    if (end_ - next_ < 8) {
      return false;
    }
    bits_ |= EightBytes() >> count_;
    next_ += (63U - count_) >> 3U;
    count_ |= 56U;
    return true;
  }

  [[nodiscard]] unsigned Peek(unsigned count) const { return static_cast<unsigned>(bits_ >> (64U - count)); }

  void Skip(unsigned count) {
    bits_ <<= count;
    count_ -= count;
  }

  /// Bytes of which at least one bit was skipped.
  [[nodiscard]] std::ptrdiff_t BytesUsed() const {
    return next_ - first_ - static_cast<std::ptrdiff_t>(count_ >> 3U);
  }

 private:
  [[nodiscard]] std::uint64_t EightBytes() const {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < 8; ++i) {
      value = value << 8U | next_[i];
    }
    return value;
  }

  const std::uint8_t* first_;
  const std::uint8_t* next_;
  const std::uint8_t* end_;
  std::uint64_t bits_ = 0;
  unsigned count_ = 0;
};

/// Takes one code of any length out of a window that holds at least 16 bits, and clips it to `left` cells.
Run TakeRun(BitWindow& window, std::ptrdiff_t left) {
  const unsigned bits = window.Peek(16);
  const unsigned nibbles = 4U - static_cast<unsigned>(bits >= 0x4000) -
                           static_cast<unsigned>(bits >= 0x1000) - static_cast<unsigned>(bits >= 0x0400);
  window.Skip(4 * nibbles);
  const unsigned value = bits >> (16 - 4 * nibbles);
  return ClippedRun(value, left);
}

/// Decodes one line, with the result of DecodeRowAnywhere, from bytes that are read as they stand. `Codes`
/// looks short codes up and paints them.
template <typename Cell, typename Codes>
class RowDecoder {
 public:
  RowDecoder(BitWindow window, std::span<Cell> row, const RunPainter<Cell>& painter, const Codes& codes)
      : window_(window), cell_(row.data()), end_(row.data() + row.size()), painter_(painter), codes_(codes) {
    // Most long runs are of code 0. With the row prepared, only what earlier blocks spilt needs painting.
    codes_.Clear(row);
  }

  /// Decodes the codes of a few look-ups, as many as there are bits for, or of fewer and one long code. False
  /// where only Finish gets further.
  bool Step() {
    if (!window_.Refill()) {
      return false;
    }
    for (int i = 0; i < LookUps; ++i) {
      const typename Codes::Entry& codes = Codes::At(window_.Peek(12));
      if (end_ - cell_ < Codes::Room(codes)) {
        return false;
      }
      if (codes.Bits == 0) {
        PaintLongRun();
        return true;
      }
      codes_.Paint(cell_, codes);
      cell_ += codes.Length;
      window_.Skip(codes.Bits);
    }
    return true;
  }

  /// Decodes the line to its end. The answer is the number of bytes that all of it takes, nullopt when it
  /// comes too near to the unit's end. Taken by value: a decoder that is only stepped stays in registers.
  static std::optional<std::ptrdiff_t> Finish(RowDecoder decoder) {
    while (decoder.Step()) {
    }
    return decoder.FinishTail() ? std::optional(decoder.window_.BytesUsed()) : std::nullopt;
  }

 private:
  /// That a window which was filled has bits for, and after any but the last of them for a long code.
  static constexpr int LookUps = 4;

  void PaintLongRun() {
    const Run run = TakeRun(window_, end_ - cell_);
    if (run.Code == 0) {
      painter_.PaintFreely(cell_, 0);
    } else {
      painter_.PaintExactly(cell_, run.Length, run.Code);
    }
    cell_ += run.Length;
  }

  /// Paints aside, so that no block reaches into the next line.
  bool FinishTail() {
    std::array<Cell, MaxShortCodes + 2 * RunPainter<Cell>::BlockCells> tail;
    const std::ptrdiff_t width = end_ - cell_;
    for (std::ptrdiff_t x = 0; x < width;) {
      if (!window_.Refill()) {
        return false;
      }
      const Run run = TakeRun(window_, width - x);
      if (run.Length <= RunPainter<Cell>::BlockCells) {
        painter_.PaintFreely(tail.data() + x, run.Code);
      } else {
        painter_.PaintExactly(tail.data() + x, run.Length, run.Code);
      }
      x += run.Length;
    }
    std::copy_n(tail.begin(), width, cell_);
    return true;
  }

  BitWindow window_;
  Cell* cell_;
  Cell* end_;
  const RunPainter<Cell>& painter_;
  const Codes& codes_;
};

/// Decodes two lines side by side: where a code starts is known only when the one before it has been looked
/// up, and the wait in one line is time for the other. False when a line comes too near to an end of the
/// unit's data; nothing but the rows has changed then.
template <typename Cell, typename Codes>
bool DecodeRowsInside(std::span<const std::uint8_t> unit, std::span<Cell> topRow, std::int32_t& top,
                      std::span<Cell> bottomRow, std::int32_t& bottom, const RunPainter<Cell>& painter,
                      const Codes& codes) {
  const std::int64_t last = UnitView(unit).Last();
  const auto readsInside = [last](std::int32_t position) {
    return position >= UnitHeaderSize - 1 && position < last;
  };
  if (!readsInside(top) || !readsInside(bottom)) {
    return false;
  }
  const std::uint8_t* const end = unit.data() + last;
  RowDecoder<Cell, Codes> topDecoder({unit.data() + top + 1, end}, topRow, painter, codes);
  RowDecoder<Cell, Codes> bottomDecoder({unit.data() + bottom + 1, end}, bottomRow, painter, codes);
  while (topDecoder.Step() && bottomDecoder.Step()) {
  }
  const auto topBytes = RowDecoder<Cell, Codes>::Finish(topDecoder);
  const auto bottomBytes = RowDecoder<Cell, Codes>::Finish(bottomDecoder);
  if (!topBytes || !bottomBytes) {
    return false;
  }
  top += static_cast<std::int32_t>(*topBytes);
  bottom += static_cast<std::int32_t>(*bottomBytes);
  return true;
}

/// DecodeRowsInside with what this processor has for it.
template <typename Cell>
bool DecodeRowsQuickly(std::span<const std::uint8_t> unit, std::span<Cell> topRow, std::int32_t& top,
                       std::span<Cell> bottomRow, std::int32_t& bottom, const RunPainter<Cell>& painter,
                       Instructions) {
  return DecodeRowsInside(unit, topRow, top, bottomRow, bottom, painter, PlainCodes(painter));
}

#ifdef QUILLMARK_AVX2
/// Compiled as one, so that all of it is with these instructions.
QUILLMARK_AVX2 __attribute__((flatten)) bool DecodeRowsWithAvx2(
    std::span<const std::uint8_t> unit, std::span<std::uint32_t> topRow, std::int32_t& top,
    std::span<std::uint32_t> bottomRow, std::int32_t& bottom, const RunPainter<std::uint32_t>& painter) {
  return DecodeRowsInside(unit, topRow, top, bottomRow, bottom, painter, Avx2Codes(painter));
}

template <>
bool DecodeRowsQuickly(std::span<const std::uint8_t> unit, std::span<std::uint32_t> topRow, std::int32_t& top,
                       std::span<std::uint32_t> bottomRow, std::int32_t& bottom,
                       const RunPainter<std::uint32_t>& painter, Instructions use) {
  static const bool hasAvx2 = __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("bmi2") != 0;
  return use == Instructions::Best && hasAvx2
             ? DecodeRowsWithAvx2(unit, topRow, top, bottomRow, bottom, painter)
             : DecodeRowsInside(unit, topRow, top, bottomRow, bottom, painter, PlainCodes(painter));
}
#endif

template <typename Cell>
std::span<Cell> RowOf(std::span<Cell> cells, int line, int width) {
  return cells.subspan(static_cast<std::size_t>(line) * static_cast<std::size_t>(width),
                       static_cast<std::size_t>(width));
}

}  // namespace

std::uint8_t ReadNibble(std::span<const std::uint8_t> unit, NibbleCursor& cursor) {
  if (cursor.Pending >= 0) {
    const auto low = static_cast<std::uint8_t>(cursor.Pending & 0x0F);
    cursor.Pending = -1;
    return low;
  }
  ++cursor.Position;
  const std::uint8_t byte = ByteAt(UnitView(unit), cursor.Position);
  cursor.Pending = byte;
  return byte >> 4U;
}

template <typename Cell>
void DecodeLine(std::span<const std::uint8_t> unit, std::span<Cell> cells, std::int32_t& position, int line,
                int width, const CodeTable<Cell>& table) {
  if (!HasRow(cells.size(), line, width)) {
    return;
  }
  DecodeRowAnywhere(unit, RowOf(cells, line, width), position, RunPainter<Cell>(table));
}

template <typename Cell>
int DecodeFields(std::span<const std::uint8_t> unit, std::span<Cell> cells, int width, int height,
                 std::int32_t topOffset, std::int32_t bottomOffset, const CodeTable<Cell>& table,
                 Instructions use) {
  FieldPositions positions(topOffset, bottomOffset);
  return DecodeNextLines(unit, cells, width, height, positions, table, use);
}

template <typename Cell>
int DecodeNextLines(std::span<const std::uint8_t> unit, std::span<Cell> cells, int width, int lines,
                    FieldPositions& positions, const CodeTable<Cell>& table, Instructions use) {
  if (positions.HasEnded || width < 1 || lines < 1 || !HasRow(cells.size(), lines - 1, width)) {
    return 0;
  }
  const std::int64_t last = UnitView(unit).Last();
  const RunPainter<Cell> painter(table);
  std::int32_t top = positions.Top;
  std::int32_t bottom = positions.Bottom;
  int line = 0;
  for (; line <= lines - 2 && !positions.HasEnded; line += 2) {
    const auto topRow = RowOf(cells, line, width);
    const auto bottomRow = RowOf(cells, line + 1, width);
    if (!DecodeRowsQuickly(unit, topRow, top, bottomRow, bottom, painter, use)) {
      DecodeRowAnywhere(unit, topRow, top, painter);
      DecodeRowAnywhere(unit, bottomRow, bottom, painter);
    }
    positions.HasEnded = top > positions.BottomStart || bottom > last;
  }
  positions.Top = top;
  positions.Bottom = bottom;
  return line;
}

template void DecodeLine(std::span<const std::uint8_t>, std::span<std::uint32_t>, std::int32_t&, int, int,
                         const CodeTable<std::uint32_t>&);
template void DecodeLine(std::span<const std::uint8_t>, std::span<std::uint8_t>, std::int32_t&, int, int,
                         const CodeTable<std::uint8_t>&);
template int DecodeFields(std::span<const std::uint8_t>, std::span<std::uint32_t>, int, int, std::int32_t,
                          std::int32_t, const CodeTable<std::uint32_t>&, Instructions);
template int DecodeFields(std::span<const std::uint8_t>, std::span<std::uint8_t>, int, int, std::int32_t,
                          std::int32_t, const CodeTable<std::uint8_t>&, Instructions);

template int DecodeNextLines(std::span<const std::uint8_t>, std::span<std::uint32_t>, int, int,
                             FieldPositions&, const CodeTable<std::uint32_t>&, Instructions);
template int DecodeNextLines(std::span<const std::uint8_t>, std::span<std::uint8_t>, int, int,
                             FieldPositions&, const CodeTable<std::uint8_t>&, Instructions);

}  // namespace quillmark
