#include "sup/SupStream.h"

#include <algorithm>

namespace quillmark {

void CopyUnit(const SupStream& stream, std::int64_t index, std::vector<std::uint8_t>& unit) {
  unit.clear();
  if (!stream.Holds(index)) {
    return;
  }
  const auto i = static_cast<std::size_t>(index);
  const std::int64_t size = UnitBufferSize(stream.SpuSize[i]);
  const std::int64_t start = std::int64_t{stream.PacketOffset[i]} + PacketHeaderSize;
  const std::int64_t held =
      std::clamp<std::int64_t>(stream.FileLength - start, 0, std::max<std::int64_t>(size - 1, 0));
  if (held > 0) {
    const auto first = stream.RawBytes.begin() + start;
    unit.assign(first, first + held);
  }
  unit.resize(static_cast<std::size_t>(size), 0);
}

SubtitleUnit UnitOf(const SupStream& stream, std::int64_t index, std::vector<std::uint8_t>& buffer) {
  CopyUnit(stream, index, buffer);
  if (!stream.Holds(index)) {
    return {};
  }
  const auto i = static_cast<std::size_t>(index);
  return {.Bytes = buffer, .ControlOffset = stream.ControlOffset[i], .StartTime = stream.StartTime[i]};
}

}  // namespace quillmark
