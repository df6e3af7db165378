#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "tests/support/PacketBuilder.h"

/// Composes program streams byte by byte as the format has them, with nothing of the code under test.
namespace quillmark::test {

inline constexpr std::size_t PackSize = 2048;

inline Bytes NumberBe(std::uint64_t value, unsigned count) {
  Bytes bytes;
  while (count-- > 0) {
    bytes.push_back(static_cast<std::uint8_t>(value >> (8U * count) & 0xFFU));
  }
  return bytes;
}

/// 33 bits of a time in three groups, with a marker bit behind each, behind the four bits `lead`.
inline Bytes TimeStamp(unsigned lead, std::int64_t ticks) {
  const auto time = static_cast<std::uint64_t>(ticks);
  return {static_cast<std::uint8_t>(lead << 4U | (time >> 30U & 7U) << 1U | 1U),
          static_cast<std::uint8_t>(time >> 22U & 0xFFU),
          static_cast<std::uint8_t>((time >> 15U & 0x7FU) << 1U | 1U),
          static_cast<std::uint8_t>(time >> 7U & 0xFFU),
          static_cast<std::uint8_t>((time & 0x7FU) << 1U | 1U)};
}

/// Bytes `from` to before `to`.
inline Bytes Part(const Bytes& unit, std::size_t from, std::size_t to) {
  return {unit.begin() + static_cast<std::ptrdiff_t>(from), unit.begin() + static_cast<std::ptrdiff_t>(to)};
}

/// The header of a pack with that clock and no stuffing.
inline Bytes PackHead(std::int64_t clock = 0) {
  const auto time = static_cast<std::uint64_t>(clock);
  const std::uint64_t bits = std::uint64_t{1} << 46U | (time >> 30U & 7U) << 43U | std::uint64_t{1} << 42U |
                             (time >> 15U & 0x7FFFU) << 27U | std::uint64_t{1} << 26U |
                             (time & 0x7FFFU) << 11U | std::uint64_t{1} << 10U | 1U;
  return Join({{0x00, 0x00, 0x01, 0xBA}, NumberBe(bits, 6), {0x01, 0x89, 0xC3, 0xF8}});
}

/// A packet: start code, length, body.
inline Bytes PesPacket(std::uint8_t stream, const Bytes& body) {
  return Join({{0x00, 0x00, 0x01, stream}, U16be(static_cast<unsigned>(body.size())), body});
}

/// A packet with a header, of private stream 1 unless told otherwise.
struct Pes {
  std::optional<std::int64_t> Time = {};
  std::uint8_t First = 0x81;  ///< its first byte, with the scrambling bits
  std::uint8_t Stream = 0xBD;
  Bytes Further = {};  ///< what follows the time stamp in the header

  [[nodiscard]] Bytes With(const Bytes& payload) const {
    const Bytes fields = Join({Time ? TimeStamp(2, *Time) : Bytes(), Further});
    return PesPacket(Stream, Join({{First, static_cast<std::uint8_t>(Time ? 0x80 : 0x00),
                                    static_cast<std::uint8_t>(fields.size())},
                                   fields,
                                   payload}));
  }
};

/// A packet of a subtitle substream.
inline Bytes SubtitlePacket(const Bytes& part, std::optional<std::int64_t> time = std::nullopt,
                            std::uint8_t substream = 0x20) {
  return Pes{.Time = time, .Further = {}}.With(Join({{substream}, part}));
}

/// A pack of 2048 bytes, filled up by a padding packet.
inline Bytes Pack(const Bytes& packets, std::int64_t clock = 0) {
  Bytes pack = Join({PackHead(clock), packets});
  const std::size_t rest = PackSize - pack.size();
  return Join({pack, PesPacket(0xBE, Bytes(rest - 6, 0xFF))});
}

/// A sound unit of so many bytes, 38 at least, told from others by a byte of its picture.
inline Bytes SoundUnit(std::size_t size = 38, std::uint8_t mark = 0x11) {
  const std::size_t more = size - 38;
  const auto at = static_cast<unsigned>(8 + more);
  return Join({U16be(static_cast<unsigned>(size)),
               U16be(at),
               {mark, 0x00, 0x12, 0x00},
               Bytes(more, 0x11),
               Sequence(0, at + 24,
                        {StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0),
                         SetArea(100, 103, 400, 401), SetFields(4, 6), EndOfSequence}),
               Sequence(90, at + 24, {StopDisplay, EndOfSequence})});
}

/// A packet of a SUP file around a unit.
inline Bytes SupPacket(std::int64_t time, const Bytes& unit) {
  Bytes packet = {'S', 'P'};
  for (unsigned byte = 0; byte < 8; ++byte) {
    packet.push_back(static_cast<std::uint8_t>(static_cast<std::uint64_t>(time) >> (8U * byte) & 0xFFU));
  }
  return Join({packet, unit});
}

}  // namespace quillmark::test
