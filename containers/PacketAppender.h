#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "sup/SupFormat.h"

namespace quillmark {

/// Appends one packet: "SP", the time and the unit as it is, whose first four bytes are its own header.
inline void AppendPacket(std::vector<std::uint8_t>& packets, std::int64_t ticks,
                         std::span<const std::uint8_t> unit) {
  PacketWriter writer(packets);
  writer.Bytes(PacketSignature);
  writer.Bytes(PackTime(ticks));
  writer.Bytes(unit);
}

}  // namespace quillmark
