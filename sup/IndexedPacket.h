#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

#include "sup/ControlSequences.h"
#include "sup/Salvage.h"
#include "sup/SupStream.h"

namespace quillmark {

/// The file of a loaded stream, without the zero byte that follows it.
[[nodiscard]] inline std::span<const std::uint8_t> FileOf(const SupStream& stream) {
  return std::span(stream.RawBytes).first(stream.RawBytes.empty() ? 0 : stream.RawBytes.size() - 1);
}

/// What the index has of one subtitle.
struct IndexEntry {
  std::size_t Offset = 0;         ///< of "SP" in the file
  std::size_t Size = 0;           ///< of the unit
  std::size_t ControlOffset = 0;  ///< from the unit's byte 0

  /// The position of unit byte `position` in the file.
  [[nodiscard]] std::size_t FileOffset(std::size_t position) const { return Offset + UnitStart + position; }
};

/// The index of a stream whose arrays stay where they are.
class IndexView {
 public:
  explicit IndexView(const SupStream& stream)
      : offsets_(stream.PacketOffset.data()),
        sizes_(stream.SpuSize.data()),
        controlOffsets_(stream.ControlOffset.data()) {}

  [[nodiscard]] IndexEntry operator[](std::size_t index) const {
    return {.Offset = std::bit_cast<std::uint32_t>(offsets_[index]),
            .Size = std::bit_cast<std::uint16_t>(sizes_[index]),
            .ControlOffset = std::bit_cast<std::uint16_t>(controlOffsets_[index])};
  }

 private:
  const std::int32_t* offsets_;
  const std::int16_t* sizes_;
  const std::int16_t* controlOffsets_;
};

/// A packet as the index has it. The packets of a stream stand one right after another, up to a scrap that
/// is too short for one.
struct IndexedPacket {
  std::size_t Offset = 0;  ///< of "SP" in the file
  std::size_t End = 0;     ///< after its last byte that the file has
  bool IsCut = true;       ///< the file ends before the packet does
  /// From None to ControlOffsetOutside; TooShort where the index leads past the end of the file.
  PacketFault Fault = PacketFault::TooShort;
  std::span<const std::uint8_t> Unit;  ///< whole, from its size field on; empty where there is a fault
  std::uint16_t ControlOffset = 0;     ///< from the unit's byte 0

  /// The position of unit byte `position` in the file.
  [[nodiscard]] std::size_t FileOffset(std::size_t position) const { return Offset + UnitStart + position; }
};

/// The packet of subtitle `index`, which `stream` holds.
[[nodiscard]] inline IndexedPacket PacketOf(const SupStream& stream, std::size_t index) {
  const auto file = FileOf(stream);
  const auto size = std::size_t{std::bit_cast<std::uint16_t>(stream.SpuSize[index])};
  IndexedPacket packet;
  packet.Offset = std::min(static_cast<std::size_t>(stream.PacketOffset[index]), file.size());
  const std::size_t left = file.size() - packet.Offset;
  if (left < PacketHeaderSize) {
    packet.End = file.size();
    return packet;
  }
  const std::size_t length = UnitStart + std::max<std::size_t>(size, UnitHeaderSize);
  packet.End = packet.Offset + std::min(left, length);
  packet.IsCut = left < length;
  packet.ControlOffset = std::bit_cast<std::uint16_t>(stream.ControlOffset[index]);
  packet.Fault = InspectSizes(size, packet.ControlOffset, left - UnitStart);
  if (packet.Fault == PacketFault::None) {
    packet.Unit = file.subspan(packet.FileOffset(0), size);
  }
  return packet;
}

/// WalkControl through the packet's unit; what damage there is, in the packet or in its control sequences.
/// `walk` is the walk's answer where the unit could be walked at all.
template <typename Visitor>
PacketFault WalkPacket(const IndexedPacket& packet, Visitor& visitor, ControlWalk& walk) {
  if (packet.Fault != PacketFault::None) {
    return packet.Fault;
  }
  walk = WalkControl(packet.Unit, packet.ControlOffset, visitor);
  return walk.End == ControlEnding::PointsToItself ? PacketFault::None : PacketFault::ControlUnfinished;
}

/// What damage there is in the packet or in its control sequences, whatever these say.
[[nodiscard]] inline PacketFault FaultOf(const IndexedPacket& packet) {
  struct Nothing {
    void Begin(const ControlSequence& /*sequence*/) {}
    void Take(const ControlCommand& /*command*/) {}
  } nothing;
  ControlWalk walk;
  return WalkPacket(packet, nothing, walk);
}

}  // namespace quillmark
