#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "base/ByteReader.h"
#include "sup/PacketWriter.h"

namespace quillmark {

/// A packet's header: "SP", the time in 90 kHz ticks (64 bits, little-endian), and the unit's own header,
/// which is its size and the offset of its first control sequence (16 bits each, big-endian). The unit's
/// data follows.
inline constexpr std::array<std::uint8_t, 2> PacketSignature = {'S', 'P'};
inline constexpr std::int32_t PacketHeaderSize = 14;

/// Where the fields stand in a packet. Positions in a unit count from its size field, the unit's byte 0.
inline constexpr std::int32_t TimeStart = 2;
inline constexpr std::int32_t UnitStart = 10;
inline constexpr std::int32_t ControlOffsetStart = 12;

/// The unit's own header in bytes; its data starts here.
inline constexpr std::int32_t UnitHeaderSize = 4;
/// The longest unit, in bytes, that programs read: many, this one included, take the size field as signed.
inline constexpr std::size_t MaxReadUnit = 0x7FFF;

/// The eight bytes of a packet's time as they are stored.
using TimeField = std::array<std::uint8_t, 8>;

[[nodiscard]] constexpr TimeField PackTime(std::int64_t ticks) {
  const auto value = std::bit_cast<std::uint64_t>(ticks);
  TimeField bytes = {};
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<std::uint8_t>(value >> (8 * i));
  }
  return bytes;
}

struct PacketHeader {
  std::int64_t Time = 0;            ///< 90 kHz ticks
  std::uint16_t UnitSize = 0;       ///< the unit with its header, in bytes
  std::uint16_t ControlOffset = 0;  ///< from the unit's byte 0
};

/// Whether `bytes` start with "SP".
[[nodiscard]] inline bool StartsWithSignature(std::span<const std::uint8_t> bytes) {
  return bytes.size() >= PacketSignature.size() &&
         std::equal(PacketSignature.begin(), PacketSignature.end(), bytes.begin());
}

/// The header at the start of `packet`; nullopt when no "SP" stands there, or fewer than 14 bytes.
[[nodiscard]] inline std::optional<PacketHeader> ReadPacketHeader(std::span<const std::uint8_t> packet) {
  if (!StartsWithSignature(packet)) {
    return std::nullopt;
  }
  ByteReader reader(packet.subspan(PacketSignature.size()));
  const auto time = reader.I64le();
  const auto size = reader.U16be();
  const auto controlOffset = reader.U16be();
  if (!time || !size || !controlOffset) {
    return std::nullopt;
  }
  return PacketHeader{.Time = *time, .UnitSize = *size, .ControlOffset = *controlOffset};
}

/// The sizes are those of a unit that was checked to fit their 16 bits.
inline void WritePacketHeader(PacketWriter& writer, const TimeField& time, std::size_t unitSize,
                              std::size_t controlOffset) {
  // Appended as one, since GCC 12 takes the growth of a packet of two bytes for an overflow.
  std::array<std::uint8_t, PacketHeaderSize> header = {};
  auto at = std::copy(PacketSignature.begin(), PacketSignature.end(), header.begin());
  at = std::copy(time.begin(), time.end(), at);
  for (const std::size_t field : {unitSize, controlOffset}) {
    *at++ = static_cast<std::uint8_t>(field >> 8U);
    *at++ = static_cast<std::uint8_t>(field);
  }
  writer.Bytes(header);
}

/// Length in bytes of a unit with its header; a size field below 4 (0x8000 and more included, which reads as
/// negative) is that of an empty unit, which is its header alone.
[[nodiscard]] constexpr std::int32_t UnitLength(std::int16_t spuSize) {
  return std::max<std::int32_t>(spuSize, UnitHeaderSize);
}

}  // namespace quillmark
