#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "sup/Mend.h"
#include "sup/StreamEdit.h"

namespace quillmark {

/// What MendPackets found to do.
struct PacketMends {
  StreamEdit Edit;
  std::vector<Mend> Mends;  ///< in the order of the file
};

/// Puts right what keeps a file from being read packet by packet, and what keeps a unit's control sequences
/// from coming to an end: bytes that are no packet are left out; the size of a unit that leads nowhere
/// becomes what lies between it and the next packet, where its control sequences then come to an end, and
/// else the packet is left out; a control sequence that runs into the next one, or to the unit's end, gets
/// its end mark; a last one that does not point to itself does; a unit of an odd size gets a 0xFF. Packets
/// where nothing of that helps stay as they are. Takes time in proportion to the file's size.
/// The mended bytes can be indexed as a stream. Numbers are those of its packets.
[[nodiscard]] PacketMends MendPackets(std::span<const std::uint8_t> file);

}  // namespace quillmark
