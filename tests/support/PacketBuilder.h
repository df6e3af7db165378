#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <utility>
#include <vector>

/// Composes packets byte by byte as the format has them, with nothing of the code under test. Whatever a
/// test does not set is that of a small sound unit; every field can be given a wrong value.
namespace quillmark::test {

using Bytes = std::vector<std::uint8_t>;

/// In ticks of a packet's time.
inline constexpr std::int64_t Second = 90000;

[[nodiscard]] Bytes Join(std::initializer_list<Bytes> parts);

inline Bytes U16be(unsigned value) {
  return {static_cast<std::uint8_t>(value >> 8U & 0xFFU), static_cast<std::uint8_t>(value & 0xFFU)};
}

// The commands of a control sequence. Nibbles are given for codes 3, 2, 1, 0, the order of their storage.

inline const Bytes ForcedStart = {0x00};
inline const Bytes StartDisplay = {0x01};
inline const Bytes StopDisplay = {0x02};
inline const Bytes EndOfSequence = {0xFF};

inline Bytes Nibbles(std::uint8_t command, unsigned code3, unsigned code2, unsigned code1, unsigned code0) {
  return {command, static_cast<std::uint8_t>(code3 * 16 + code2),
          static_cast<std::uint8_t>(code1 * 16 + code0)};
}

inline Bytes SetColour(unsigned code3, unsigned code2, unsigned code1, unsigned code0) {
  return Nibbles(0x03, code3, code2, code1, code0);
}

inline Bytes SetContrast(unsigned code3, unsigned code2, unsigned code1, unsigned code0) {
  return Nibbles(0x04, code3, code2, code1, code0);
}

/// Two 12-bit numbers in three bytes, twice.
inline Bytes SetArea(unsigned x1, unsigned x2, unsigned y1, unsigned y2) {
  const auto pair = [](unsigned a, unsigned b) {
    return Bytes{static_cast<std::uint8_t>(a >> 4U), static_cast<std::uint8_t>((a & 0xFU) << 4U | b >> 8U),
                 static_cast<std::uint8_t>(b & 0xFFU)};
  };
  return Join({{0x05}, pair(x1, x2), pair(y1, y2)});
}

inline Bytes SetFields(unsigned top, unsigned bottom) {
  return Join({{0x06}, U16be(top), U16be(bottom)});
}

/// One control sequence: when it takes effect, where the next one stands, its commands.
[[nodiscard]] Bytes Sequence(unsigned delay, unsigned next, std::initializer_list<Bytes> commands);

/// A packet with a unit of 38 bytes, unless told otherwise:
///   unit byte 4   the two fields, one line of 4 pixels each, at 4 and 6
///   unit byte 8   a sequence with all four display commands; its colour arguments are unit bytes 14 and 15,
///                 its contrast arguments 17 and 18, that is packet bytes 24, 25, 27 and 28
///   unit byte 32  a sequence that stops the display and points to itself
class PacketBuilder {
 public:
  static constexpr unsigned FirstSequence = 8;
  static constexpr unsigned LastSequence = 32;
  static constexpr std::size_t Length = 48;

  PacketBuilder& Time(std::int64_t ticks) {
    time_ = ticks;
    return *this;
  }
  PacketBuilder& Delay(unsigned delay) {
    delay_ = delay;
    return *this;
  }
  PacketBuilder& Colour(unsigned code3, unsigned code2, unsigned code1, unsigned code0) {
    colour_ = SetColour(code3, code2, code1, code0);
    return *this;
  }
  PacketBuilder& Contrast(unsigned code3, unsigned code2, unsigned code1, unsigned code0) {
    contrast_ = SetContrast(code3, code2, code1, code0);
    return *this;
  }
  PacketBuilder& Area(unsigned x1, unsigned x2, unsigned y1, unsigned y2) {
    area_ = SetArea(x1, x2, y1, y2);
    return *this;
  }
  /// Commands that players ignore stand where a command is left out, so that nothing else moves.
  PacketBuilder& WithoutColour() {
    colour_ = Bytes(3, StartDisplay[0]);
    return *this;
  }
  PacketBuilder& WithoutContrast() {
    contrast_ = Bytes(3, StartDisplay[0]);
    return *this;
  }
  PacketBuilder& WithoutArea() {
    area_ = Bytes(7, StartDisplay[0]);
    return *this;
  }
  PacketBuilder& WithoutFields() {
    fields_ = Bytes(5, StartDisplay[0]);
    return *this;
  }
  /// The unit after its header, instead of the small sound one.
  PacketBuilder& Unit(Bytes afterHeader) {
    unit_ = std::move(afterHeader);
    return *this;
  }
  /// Header fields that need not fit the unit.
  PacketBuilder& Size(unsigned size) {
    size_ = size;
    return *this;
  }
  PacketBuilder& ControlOffset(unsigned offset) {
    controlOffset_ = offset;
    return *this;
  }

  /// The unit after its header.
  [[nodiscard]] Bytes UnitBytes() const;

  [[nodiscard]] Bytes Build() const;

  /// The unit from its size field on: the packet's bytes from 10.
  [[nodiscard]] Bytes WholeUnit() const;

 private:
  std::int64_t time_ = 0;
  unsigned delay_ = 0;
  Bytes colour_ = SetColour(3, 2, 1, 0);
  Bytes contrast_ = SetContrast(15, 15, 15, 0);
  Bytes area_ = SetArea(100, 103, 400, 401);
  Bytes fields_ = SetFields(4, 6);
  std::optional<Bytes> unit_;
  std::optional<unsigned> size_;
  unsigned controlOffset_ = FirstSequence;
};

/// A sound packet of 48 bytes, shown for one second: 4 x 2 pixels at (100, 400), the upper line of code 1,
/// the lower one of code 2; codes 0-3 have palette entries 0-3 and opacities 0, F, F, F.
inline PacketBuilder Sound(std::int64_t start = 0) {
  return PacketBuilder().Time(start).Delay(90);
}

}  // namespace quillmark::test
