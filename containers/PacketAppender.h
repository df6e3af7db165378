#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "sup/SupFormat.h"

namespace quillmark {

/// Appends one packet: "SP", the time and the unit as it is, whose first four bytes are its own header. Of a
/// unit shorter than these nothing is appended.
inline void AppendPacket(std::vector<std::uint8_t>& packets, std::int64_t ticks,
                         std::span<const std::uint8_t> unit) {
  if (unit.size() < static_cast<std::size_t>(UnitHeaderSize)) {
    return;
  }
  PacketWriter writer(packets);
  writer.Bytes(PacketSignature);
  writer.Bytes(PackTime(ticks));
  writer.Bytes(unit);
}

}  // namespace quillmark
