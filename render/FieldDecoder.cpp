#include "render/FieldDecoder.h"

#include <algorithm>
#include <cstddef>

namespace quillmark {
namespace {

struct Run {
  int Length = 0;  ///< cells; 0 means up to the line's end
  std::uint8_t Code = 0;
};

std::int32_t LastIndex(std::span<const std::uint8_t> buffer) {
  return static_cast<std::int32_t>(buffer.size()) - 1;
}

/// The byte that a read at `position` gives, with the oddity of the buffer's end.
std::uint8_t ByteAt(std::span<const std::uint8_t> buffer, std::int32_t position) {
  const std::int32_t last = LastIndex(buffer);
  const std::int32_t index = position < last ? position : position - 1;
  return index >= 0 && index <= last ? buffer[static_cast<std::size_t>(index)] : std::uint8_t{0};
}

/// One to four nibbles: a code is as long as it takes until bits stand above its last six.
Run ReadRun(std::span<const std::uint8_t> buffer, NibbleCursor& cursor) {
  constexpr std::array<unsigned, 3> lengthMask = {0x0C, 0xF0, 0xFC0};
  unsigned value = ReadNibble(buffer, cursor);
  for (const unsigned mask : lengthMask) {
    if ((value & mask) != 0) {
      break;
    }
    value = value << 4U | ReadNibble(buffer, cursor);
  }
  return {.Length = static_cast<int>(value >> 2U), .Code = static_cast<std::uint8_t>(value & 3U)};
}

/// Whether row `line` lies inside the cells.
bool HasRow(std::size_t cellCount, int line, int width) {
  return line >= 0 && width > 0 && (std::int64_t{line} + 1) * width <= static_cast<std::int64_t>(cellCount);
}

}  // namespace

std::uint8_t ReadNibble(std::span<const std::uint8_t> buffer, NibbleCursor& cursor) {
  if (cursor.Pending >= 0) {
    const auto low = static_cast<std::uint8_t>(cursor.Pending & 0x0F);
    cursor.Pending = -1;
    return low;
  }
  ++cursor.Position;
  const std::uint8_t byte = ByteAt(buffer, cursor.Position);
  cursor.Pending = byte;
  return byte >> 4U;
}

template <typename Cell>
void DecodeLine(std::span<const std::uint8_t> buffer, std::span<Cell> cells, std::int32_t& position, int line,
                int width, const CodeTable<Cell>& table) {
  if (!HasRow(cells.size(), line, width)) {
    return;
  }
  const auto row = cells.subspan(static_cast<std::size_t>(line) * static_cast<std::size_t>(width),
                                 static_cast<std::size_t>(width));
  NibbleCursor cursor{.Position = position};
  for (int x = 0; x < width;) {
    const Run run = ReadRun(buffer, cursor);
    const int left = width - x;
    const int length = run.Length == 0 ? left : std::min(run.Length, left);
    std::ranges::fill(row.subspan(static_cast<std::size_t>(x), static_cast<std::size_t>(length)),
                      table[run.Code]);
    x += length;
  }
  position = cursor.Position;
}

template <typename Cell>
void DecodeFields(std::span<const std::uint8_t> buffer, std::span<Cell> cells, int width, int height,
                  std::int32_t topOffset, std::int32_t bottomOffset, const CodeTable<Cell>& table) {
  if (width < 1 || height < 1 || !HasRow(cells.size(), height - 1, width)) {
    return;
  }
  // 4 for the unit bytes that the buffer does not have, 1 because a position names the byte before.
  std::int32_t top = topOffset - 5;
  std::int32_t bottom = bottomOffset - 5;
  const std::int32_t bottomStart = bottom;
  const std::int32_t last = LastIndex(buffer);
  for (int line = 0; line <= height - 2; line += 2) {
    DecodeLine(buffer, cells, top, line, width, table);
    DecodeLine(buffer, cells, bottom, line + 1, width, table);
    if (top > bottomStart || bottom > last) {
      return;
    }
  }
}

template void DecodeLine(std::span<const std::uint8_t>, std::span<std::uint32_t>, std::int32_t&, int, int,
                         const CodeTable<std::uint32_t>&);
template void DecodeLine(std::span<const std::uint8_t>, std::span<std::uint8_t>, std::int32_t&, int, int,
                         const CodeTable<std::uint8_t>&);
template void DecodeFields(std::span<const std::uint8_t>, std::span<std::uint32_t>, int, int, std::int32_t,
                           std::int32_t, const CodeTable<std::uint32_t>&);
template void DecodeFields(std::span<const std::uint8_t>, std::span<std::uint8_t>, int, int, std::int32_t,
                           std::int32_t, const CodeTable<std::uint8_t>&);

}  // namespace quillmark
