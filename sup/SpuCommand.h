#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "base/ByteReader.h"
#include "sup/PacketWriter.h"
#include "sup/UnitView.h"

namespace quillmark {

/// The commands of a control sequence, by their first byte.
enum SpuCommand : std::uint8_t {
  ForcedStart = 0x00,
  StartDisplay = 0x01,
  StopDisplay = 0x02,
  SetColour = 0x03,        ///< a palette entry's nibble per pixel code
  SetContrast = 0x04,      ///< a contrast nibble per pixel code
  SetDisplayArea = 0x05,   ///< x1, x2, y1, y2 in 12 bits each
  SetFieldOffsets = 0x06,  ///< unit offsets of the top and the bottom field, 16 bits each
  ChangeColours = 0x07,    ///< arguments of their own length: colours that change within the picture
  EndOfSequence = 0xFF,
};

/// Bytes of a command's arguments; 0 for ChangeColours, whose arguments name their own length, and for what
/// is no command.
[[nodiscard]] constexpr int ArgumentSize(std::uint8_t command) {
  switch (command) {
    case SetColour:
    case SetContrast:
      return 2;
    case SetDisplayArea:
      return 6;
    case SetFieldOffsets:
      return 4;
    default:
      return 0;
  }
}

/// Bytes of a command with its arguments.
[[nodiscard]] constexpr int CommandSize(std::uint8_t command) {
  return 1 + ArgumentSize(command);
}

/// What a sequence starts with: when it is carried out, in units of 1000 ticks after the packet's time, and
/// the unit offset of the next sequence; the last one points to itself.
struct SequenceHeader {
  std::uint16_t Delay = 0;
  std::uint16_t Next = 0;
};
inline constexpr int SequenceHeaderSize = 4;

/// nullopt when fewer than four bytes are left.
[[nodiscard]] inline std::optional<SequenceHeader> ReadSequenceHeader(ByteReader& reader) {
  const auto delay = reader.U16be();
  const auto next = reader.U16be();
  return delay && next ? std::optional(SequenceHeader{.Delay = *delay, .Next = *next}) : std::nullopt;
}

[[nodiscard]] inline SequenceHeader ReadSequenceHeader(const UnitView& unit, std::int64_t position) {
  return {.Delay = unit.U16be(position), .Next = unit.U16be(position + 2)};
}

inline void WriteSequenceHeader(PacketWriter& writer, std::size_t delay, std::size_t next) {
  writer.U16be(delay);
  writer.U16be(next);
}

/// Two nibbles in a byte, of which the high one comes first.
[[nodiscard]] constexpr std::uint8_t PackNibbles(unsigned high, unsigned low) {
  return static_cast<std::uint8_t>((high & 0x0FU) << 4U | (low & 0x0FU));
}
[[nodiscard]] constexpr std::uint8_t HighNibble(std::uint8_t byte) {
  return byte >> 4U;
}
[[nodiscard]] constexpr std::uint8_t LowNibble(std::uint8_t byte) {
  return byte & 0x0FU;
}

/// Four nibbles, one per pixel code: [0] background, [1] pattern, [2] and [3] emphasis.
using CodeNibbles = std::array<std::uint8_t, 4>;
/// The arguments of SetColour and of SetContrast: codes 3 and 2 in the first byte, 1 and 0 in the second.
using CodeArguments = std::array<std::uint8_t, 2>;

[[nodiscard]] constexpr CodeArguments PackCodes(const CodeNibbles& nibbles) {
  return {PackNibbles(nibbles[3], nibbles[2]), PackNibbles(nibbles[1], nibbles[0])};
}
[[nodiscard]] constexpr CodeNibbles UnpackCodes(const CodeArguments& bytes) {
  return {LowNibble(bytes[1]), HighNibble(bytes[1]), LowNibble(bytes[0]), HighNibble(bytes[0])};
}

/// First and last pixel of one direction. SetDisplayArea has two of them, x before y.
struct AreaRange {
  std::uint16_t First = 0;
  std::uint16_t Last = 0;
};
/// Two 12-bit numbers in three bytes.
using AreaArguments = std::array<std::uint8_t, 3>;

[[nodiscard]] constexpr AreaArguments PackRange(unsigned first, unsigned last) {
  return {static_cast<std::uint8_t>(first >> 4U), PackNibbles(first, last >> 8U),
          static_cast<std::uint8_t>(last)};
}
[[nodiscard]] constexpr AreaRange UnpackRange(const AreaArguments& bytes) {
  return {.First = static_cast<std::uint16_t>(bytes[0] << 4U | HighNibble(bytes[1])),
          .Last = static_cast<std::uint16_t>(LowNibble(bytes[1]) << 8U | bytes[2])};
}

/// Bytes of the control sequence that a picture begins with: each of the five display commands once, and the
/// end mark.
inline constexpr std::size_t DisplaySequenceLength =
    SequenceHeaderSize + CommandSize(StartDisplay) + CommandSize(SetColour) + CommandSize(SetContrast) +
    CommandSize(SetDisplayArea) + CommandSize(SetFieldOffsets) + CommandSize(EndOfSequence);
/// Bytes of the one that ends its display.
inline constexpr std::size_t StopSequenceLength =
    SequenceHeaderSize + CommandSize(StopDisplay) + CommandSize(EndOfSequence);

/// `command` is SetColour or SetContrast.
inline void WriteCodes(PacketWriter& writer, SpuCommand command, const CodeArguments& arguments) {
  writer.U8(command);
  writer.Bytes(arguments);
}

inline void WriteArea(PacketWriter& writer, const AreaArguments& x, const AreaArguments& y) {
  writer.U8(SetDisplayArea);
  writer.Bytes(x);
  writer.Bytes(y);
}

inline void WriteFieldOffsets(PacketWriter& writer, std::size_t top, std::size_t bottom) {
  writer.U8(SetFieldOffsets);
  writer.U16be(top);
  writer.U16be(bottom);
}

}  // namespace quillmark
