#include "sup/SupStream.h"

#include <algorithm>
#include <utility>

namespace quillmark {
namespace {

void CopyUnitAt(const SupStream& stream, std::int64_t packet, std::int16_t spuSize,
                std::vector<std::uint8_t>& unit) {
  const std::int64_t size = UnitLength(spuSize);
  const std::int64_t start = packet + UnitStart;
  const std::int64_t held = std::clamp<std::int64_t>(stream.FileLength - start, 0, size);
  unit.clear();
  if (held > 0) {
    const auto first = stream.RawBytes.begin() + start;
    unit.assign(first, first + held);
  }
  unit.resize(static_cast<std::size_t>(size), 0);
}

SubtitleUnit UnitIn(const std::vector<std::uint8_t>& buffer, const SupStream& stream, std::size_t index) {
  return {
      .Bytes = buffer, .ControlOffset = stream.ControlOffset[index], .StartTime = stream.StartTime[index]};
}

}  // namespace

void DropIndex(SupStream& stream) {
  SupStream bytesAlone;
  bytesAlone.Path = std::move(stream.Path);
  bytesAlone.FileLength = stream.FileLength;
  bytesAlone.RawBytes = std::move(stream.RawBytes);
  stream = std::move(bytesAlone);
}

void CopyUnit(const SupStream& stream, std::size_t index, std::vector<std::uint8_t>& unit) {
  if (!stream.Holds(index)) {
    unit.clear();
    return;
  }
  CopyUnitAt(stream, stream.PacketOffset[index], stream.SpuSize[index], unit);
}

SubtitleUnit UnitOf(const SupStream& stream, std::size_t index, std::vector<std::uint8_t>& buffer) {
  CopyUnit(stream, index, buffer);
  return stream.Holds(index) ? UnitIn(buffer, stream, index) : SubtitleUnit();
}

SubtitleUnit UnitForMerging(const SupStream& stream, std::size_t index, std::vector<std::uint8_t>& buffer) {
  const SubtitleUnit unit = UnitOf(stream, index, buffer);
  if (buffer.size() > static_cast<std::size_t>(UnitHeaderSize)) {
    buffer.back() = 0;
  }
  return unit;
}

SubtitleUnit FirstUnit(const SupStream& stream, std::vector<std::uint8_t>& buffer) {
  if (!stream.Holds(0)) {
    buffer.clear();
    return {};
  }
  CopyUnitAt(stream, 0, stream.SpuSize[0], buffer);
  return UnitIn(buffer, stream, 0);
}

}  // namespace quillmark
