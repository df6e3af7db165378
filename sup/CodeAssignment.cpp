#include "sup/CodeAssignment.h"

#include <algorithm>

namespace quillmark {
namespace {

/// A command's two argument bytes, code 3 in the first one's high nibble.
struct ArgumentBytes {
  explicit ArgumentBytes(const CodeNibbles& nibbles)
      : First(static_cast<std::uint8_t>(nibbles[3] << 4U | nibbles[2])),
        Second(static_cast<std::uint8_t>(nibbles[1] << 4U | nibbles[0])) {}

  std::uint8_t First;
  std::uint8_t Second;
};

/// Where a subtitle's own bytes lie in the file, and with them what may be written for it.
struct PacketBounds {
  PacketBounds(const SupStream& stream, std::size_t index)
      : Start(stream.PacketOffset[index]),
        End(std::min(Start + PacketHeaderSize + UnitBufferSize(stream.SpuSize[index]),
                     std::int64_t{stream.FileLength})) {}

  [[nodiscard]] bool Contains(std::int64_t position) const { return position >= Start && position < End; }

  std::int64_t Start;
  std::int64_t End;
};

void Write(std::vector<std::uint8_t>& file, const PacketBounds& packet, std::int64_t position,
           const ArgumentBytes& arguments) {
  if (packet.Contains(position)) {
    file[static_cast<std::size_t>(position)] = arguments.First;
  }
  if (packet.Contains(position + 1)) {
    file[static_cast<std::size_t>(position) + 1] = arguments.Second;
  }
}

}  // namespace

void AssignCodes(SupStream& stream, std::int64_t first, std::int64_t end, const CodeAssignment& codes) {
  if (!stream.Holds(first) || !stream.Holds(end - 1)) {
    return;
  }
  const ArgumentBytes colours(codes.Colours.value_or(CodeNibbles{}));
  const ArgumentBytes contrasts(codes.Contrasts.value_or(CodeNibbles{}));
  for (auto i = static_cast<std::size_t>(first); i < static_cast<std::size_t>(end); ++i) {
    const PacketBounds packet(stream, i);
    if (codes.Colours) {
      Write(stream.RawBytes, packet, stream.ColourBytesOffset[i], colours);
    }
    if (codes.Contrasts) {
      Write(stream.RawBytes, packet, stream.ContrastBytesOffset[i], contrasts);
    }
  }
}

}  // namespace quillmark
