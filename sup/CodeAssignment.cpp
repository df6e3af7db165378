#include "sup/CodeAssignment.h"

#include <algorithm>

namespace quillmark {
namespace {

void WriteCodeNibbles(SupStream& stream, std::int64_t index, const std::vector<std::int32_t>& positions,
                      const CodeNibbles& nibbles) {
  if (!stream.Holds(index)) {
    return;
  }
  const auto i = static_cast<std::size_t>(index);
  const std::int64_t packetStart = stream.PacketOffset[i];
  const std::int64_t packetEnd = std::min<std::int64_t>(
      packetStart + PacketHeaderSize + UnitBufferSize(stream.SpuSize[i]), stream.FileLength);
  const auto write = [&](std::int64_t position, unsigned high, unsigned low) {
    if (position >= packetStart && position < packetEnd) {
      stream.RawBytes[static_cast<std::size_t>(position)] = static_cast<std::uint8_t>(high << 4U | low);
    }
  };
  write(positions[i], nibbles[3], nibbles[2]);
  write(std::int64_t{positions[i]} + 1, nibbles[1], nibbles[0]);
}

}  // namespace

void AssignColours(SupStream& stream, std::int64_t index, const CodeNibbles& colours) {
  WriteCodeNibbles(stream, index, stream.ColourBytesOffset, colours);
}

void AssignContrasts(SupStream& stream, std::int64_t index, const CodeNibbles& contrasts) {
  WriteCodeNibbles(stream, index, stream.ContrastBytesOffset, contrasts);
}

}  // namespace quillmark
