// Matroska files: whatever their elements say, tracks of whole packets, or a reason.

#include "containers/Matroska.h"

#include <cstdint>
#include <cstdlib>
#include <span>

#include "fuzz/EbmlMutation.h"
#include "sup/SupFormat.h"

namespace {

bool AreWholePackets(std::span<const std::uint8_t> packets) {
  while (!packets.empty()) {
    const auto header = quillmark::ReadPacketHeader(packets);
    const std::size_t length = header ? header->UnitSize + std::size_t{quillmark::UnitStart} : 0;
    if (!header || length < quillmark::PacketHeaderSize || length > packets.size()) {
      return false;
    }
    packets = packets.subspan(length);
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillmark::MemorySource source(std::span(data, size));
  const auto read = quillmark::ReadMatroskaFrom(source);
  if (!read) {
    if (read.Reason().empty()) {
      std::abort();
    }
    return 0;
  }
  for (const quillmark::Track& track : (*read)->Tracks) {
    if (track.Packets.empty() || !AreWholePackets(track.Packets)) {
      std::abort();
    }
  }
  return 0;
}

QUILLMARK_MUTATOR(600, quillmark::MutateEbml)
