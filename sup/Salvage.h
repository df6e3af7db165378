#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "sup/SpuCommand.h"
#include "sup/SupFormat.h"

namespace quillmark {

/// Why no whole packet stands at a place of a file.
enum class PacketFault {
  None,
  TooShort,              ///< fewer than 14 bytes are left
  NoSignature,           ///< no "SP"
  UnitTooSmall,          ///< a size that leaves no room for the header and one control sequence
  UnitTooLarge,          ///< a size of 0x8000 or more
  PastEnd,               ///< the packet is longer than the rest of the file
  ControlOffsetOutside,  ///< 0, inside the unit's header, or after its end
  ControlUnfinished,     ///< the walk through its control sequences does not end in the unit
  HoldsAnotherPacket,    ///< whole by itself, but a packet starts inside it and none after it: its size lies
};

/// In words for the user.
[[nodiscard]] std::string FaultText(PacketFault fault);

/// The smallest unit: its header, a control sequence's, and an end mark.
inline constexpr std::size_t SmallestSequence = SequenceHeaderSize + CommandSize(EndOfSequence);
inline constexpr std::size_t SmallestUnit = UnitHeaderSize + SmallestSequence;

/// Whether a unit of `unitSize` bytes, of which the file has `bytesThere`, can hold control sequences from
/// `controlOffset` on; what the unit holds is not looked at. One of the faults from UnitTooSmall to
/// ControlOffsetOutside, or None.
[[nodiscard]] constexpr PacketFault InspectSizes(std::size_t unitSize, std::size_t controlOffset,
                                                 std::size_t bytesThere) {
  if (unitSize > MaxReadUnit) {
    return PacketFault::UnitTooLarge;
  }
  if (unitSize < SmallestUnit) {
    return PacketFault::UnitTooSmall;
  }
  if (unitSize > bytesThere) {
    return PacketFault::PastEnd;
  }
  return controlOffset < UnitHeaderSize || controlOffset + SmallestSequence > unitSize
             ? PacketFault::ControlOffsetOutside
             : PacketFault::None;
}

/// Whether a plausible packet starts at `offset`: signature, a unit within the file, a control offset within
/// the unit, and control sequences whose pointers lead to the last one within the unit. What they say is not
/// looked at. Never HoldsAnotherPacket.
[[nodiscard]] PacketFault InspectPacket(std::span<const std::uint8_t> file, std::size_t offset);

/// The search for the first plausible packet at or after `from`, in pieces.
class PacketSearch {
 public:
  PacketSearch(std::span<const std::uint8_t> file, std::size_t from);

  /// Looks through one more piece: 64 KB, or fewer when many signatures without a packet stand there. False
  /// once the search is over.
  bool Step();
  /// Where the packet stands, or the file's size when there is none; how far the search is, before its end.
  [[nodiscard]] std::size_t Offset() const { return offset_; }

 private:
  std::span<const std::uint8_t> file_;
  std::size_t offset_;  // invariant: offset_ <= file_.size()
};

/// Offset of the first plausible packet at or after `from`; the file's size when there is none.
[[nodiscard]] std::size_t FindPacket(std::span<const std::uint8_t> file, std::size_t from);

/// Where the packet that starts at `offset` ends and the next one should start, which may lie past the file's
/// end; the file's size when no header of a packet stands at `offset`.
[[nodiscard]] std::size_t PacketEnd(std::span<const std::uint8_t> file, std::size_t offset);

struct LeftOutRange {
  std::size_t Offset = 0;
  std::size_t Length = 0;
  PacketFault Fault = PacketFault::None;  ///< of the packet that should have started there

  bool operator==(const LeftOutRange&) const = default;
};

/// What is good of a damaged stream. Kept and LeftOut together are the whole file, each in file order.
struct SalvagedStream {
  /// Good packets byte for byte; packets that follow one another share a span into the file.
  std::vector<std::span<const std::uint8_t>> Kept;
  std::size_t Packets = 0;  ///< in all of Kept
  std::vector<LeftOutRange> LeftOut;
};

/// Goes through the file packet by packet; where none stands, or one that is not plausible, goes on at the
/// next plausible one. Takes time in proportion to the file's size. The spans point into `file`.
[[nodiscard]] SalvagedStream SalvageStream(std::span<const std::uint8_t> file);

}  // namespace quillmark
