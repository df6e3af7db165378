#include "sup/Salvage.h"

#include <algorithm>
#include <array>

#include "base/ByteReader.h"
#include "sup/ControlSurvey.h"
#include "sup/SupStream.h"

namespace quillmark {
namespace {

constexpr std::array<std::uint8_t, 2> Signature = {'S', 'P'};
/// A unit's own header: its size and control offset.
constexpr std::size_t UnitHeaderSize = 4;
/// The smallest sequence: delay, pointer, end mark.
constexpr std::size_t SmallestSequence = 5;
constexpr std::size_t LargestUnit = 0x7FFF;

bool HasSignature(std::span<const std::uint8_t> file, std::size_t offset) {
  return offset <= file.size() && std::ranges::equal(file.subspan(offset).first(std::min<std::size_t>(
                                                         file.size() - offset, Signature.size())),
                                                     Signature);
}

PacketFault InspectUnit(std::span<const std::uint8_t> unit, std::uint16_t controlOffset) {
  if (controlOffset < UnitHeaderSize || controlOffset + SmallestSequence > unit.size()) {
    return PacketFault::ControlOffsetOutside;
  }
  return SurveyControl(unit, controlOffset).End == ControlSurvey::Ending::PointsToItself
             ? PacketFault::None
             : PacketFault::ControlUnfinished;
}

/// What stands behind a whole packet: the next one, or no more than a scrap.
bool StreamGoesOnAt(std::span<const std::uint8_t> file, std::size_t offset) {
  return file.size() - offset < PacketHeaderSize || HasSignature(file, offset);
}

class Salvager {
 public:
  explicit Salvager(std::span<const std::uint8_t> file) : file_(file) {}

  SalvagedStream Run() {
    std::size_t offset = 0;
    while (offset < file_.size()) {
      const PacketFault fault = InspectPacket(file_, offset);
      offset = fault == PacketFault::None ? Take(offset) : Skip(offset, FindPacket(file_, offset + 1), fault);
    }
    return std::move(result_);
  }

 private:
  /// Takes the plausible packet at `offset` unless its size is a lie; where to go on.
  std::size_t Take(std::size_t offset) {
    const std::size_t end = PacketEnd(file_, offset);
    if (!StreamGoesOnAt(file_, end)) {
      const std::size_t inside = FindPacket(file_, offset + 1);
      if (inside < end) {
        return Skip(offset, inside, PacketFault::HoldsAnotherPacket);
      }
    }
    Keep(offset, end);
    return end;
  }

  void Keep(std::size_t offset, std::size_t end) {
    ++result_.Packets;
    if (!result_.Kept.empty() && keptEnd_ == offset) {
      offset -= result_.Kept.back().size();
      result_.Kept.pop_back();
    }
    result_.Kept.push_back(file_.subspan(offset, end - offset));
    keptEnd_ = end;
  }

  std::size_t Skip(std::size_t offset, std::size_t next, PacketFault fault) {
    if (!result_.LeftOut.empty() && leftOutEnd_ == offset) {
      result_.LeftOut.back().Length += next - offset;
    } else {
      result_.LeftOut.push_back({.Offset = offset, .Length = next - offset, .Fault = fault});
    }
    leftOutEnd_ = next;
    return next;
  }

  std::span<const std::uint8_t> file_;
  SalvagedStream result_;
  std::size_t keptEnd_ = 0;
  std::size_t leftOutEnd_ = 0;
};

}  // namespace

std::string_view FaultText(PacketFault fault) {
  switch (fault) {
    case PacketFault::None:
      return "a whole packet";
    case PacketFault::TooShort:
      return "too short for a packet";
    case PacketFault::NoSignature:
      return "no \"SP\" where a packet should start";
    case PacketFault::UnitTooSmall:
      return "the unit's size leaves no room for control sequences";
    case PacketFault::UnitTooLarge:
      return "the unit's size is 0x8000 or more";
    case PacketFault::PastEnd:
      return "the packet runs past the end of the file";
    case PacketFault::ControlOffsetOutside:
      return "the control offset leads out of the unit";
    case PacketFault::ControlUnfinished:
      return "the control sequences do not come to an end in the unit";
    case PacketFault::HoldsAnotherPacket:
      return "another packet starts inside the packet, and none behind it";
  }
  return "";
}

PacketFault InspectPacket(std::span<const std::uint8_t> file, std::size_t offset) {
  ByteReader reader(file);
  if (!reader.Seek(offset) || reader.Remaining() < PacketHeaderSize) {
    return PacketFault::TooShort;
  }
  if (!HasSignature(file, offset)) {
    return PacketFault::NoSignature;
  }
  const bool atUnit = reader.Seek(offset + UnitStart);
  const auto size = reader.U16be();
  const auto controlOffset = reader.U16be();
  if (!atUnit || !size || !controlOffset) {
    return PacketFault::TooShort;
  }
  if (*size > LargestUnit) {
    return PacketFault::UnitTooLarge;
  }
  if (*size < UnitHeaderSize + SmallestSequence) {
    return PacketFault::UnitTooSmall;
  }
  if (*size > file.size() - offset - UnitStart) {
    return PacketFault::PastEnd;
  }
  return InspectUnit(file.subspan(offset + UnitStart, *size), *controlOffset);
}

std::size_t FindPacket(std::span<const std::uint8_t> file, std::size_t from) {
  std::size_t offset = std::min(from, file.size());
  while (true) {
    const auto rest = file.subspan(offset);
    const auto found = std::search(rest.begin(), rest.end(), Signature.begin(), Signature.end());
    offset += static_cast<std::size_t>(found - rest.begin());
    if (offset == file.size() || InspectPacket(file, offset) == PacketFault::None) {
      return offset;
    }
    ++offset;
  }
}

std::size_t PacketEnd(std::span<const std::uint8_t> file, std::size_t offset) {
  const std::size_t unit = offset + UnitStart;
  return unit + std::size_t{file[unit]} * 256 + file[unit + 1];
}

SalvagedStream SalvageStream(std::span<const std::uint8_t> file) {
  return Salvager(file).Run();
}

}  // namespace quillmark
