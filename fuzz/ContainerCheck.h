#pragma once

#include <cstdlib>
#include <span>

#include "containers/Container.h"
#include "sup/SupFormat.h"

namespace quillmark {

/// Ends the program where what was read is no container as others rely on it: tracks are whole packets, at
/// least one each.
inline void CheckContainer(const ReadContainerResult& read) {
  if (!read || !*read) {
    return;
  }
  for (const Track& track : (*read)->Tracks) {
    std::span<const std::uint8_t> packets = track.Packets;
    if (packets.empty()) {
      std::abort();
    }
    while (!packets.empty()) {
      const auto header = ReadPacketHeader(packets);
      if (!header || header->UnitSize < UnitHeaderSize ||
          packets.size() < UnitStart + std::size_t{header->UnitSize}) {
        std::abort();
      }
      packets = packets.subspan(UnitStart + std::size_t{header->UnitSize});
    }
  }
}

}  // namespace quillmark
