#include "sup/Salvage.h"

#include <algorithm>
#include <cstring>

#include "base/Words.h"
#include "sup/ControlSurvey.h"

namespace quillmark {
namespace {

/// What one step of a search looks through: this many bytes, or so many places where a packet could start.
constexpr std::size_t SearchPiece = 65536;
constexpr int LooksPerPiece = 256;

/// Where `byte` stands in the file from `from` to before `end`; `end` when it does not.
std::size_t FindByte(std::span<const std::uint8_t> file, std::uint8_t byte, std::size_t from,
                     std::size_t end) {
  if (from == end) {
    return end;
  }
  const void* const found = std::memchr(file.data() + from, byte, end - from);
  return found == nullptr ? end
                          : static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - file.data());
}

/// What stands after a whole packet: the next one, or no more than a scrap.
bool StreamGoesOnAt(std::span<const std::uint8_t> file, std::size_t offset) {
  return file.size() - offset < PacketHeaderSize || StartsWithSignature(file.subspan(offset));
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

std::string FaultText(PacketFault fault) {
  switch (fault) {
    case PacketFault::None:
      return Words::Tr("a whole packet");
    case PacketFault::TooShort:
      return Words::Tr("too short for a packet");
    case PacketFault::NoSignature:
      return Words::Tr("no \"SP\" where a packet should start");
    case PacketFault::UnitTooSmall:
      return Words::Tr("the unit's size leaves no room for control sequences");
    case PacketFault::UnitTooLarge:
      return Words::Tr("the unit's size is 0x8000 or more");
    case PacketFault::PastEnd:
      return Words::Tr("the packet runs past the end of the file");
    case PacketFault::ControlOffsetOutside:
      return Words::Tr("the control offset leads out of the unit");
    case PacketFault::ControlUnfinished:
      return Words::Tr("the control sequences do not come to an end in the unit");
    case PacketFault::HoldsAnotherPacket:
      break;
  }
  return Words::Tr("another packet starts inside the packet, and none after it");
}

PacketFault InspectPacket(std::span<const std::uint8_t> file, std::size_t offset) {
  if (offset > file.size() || file.size() - offset < PacketHeaderSize) {
    return PacketFault::TooShort;
  }
  const auto header = ReadPacketHeader(file.subspan(offset));
  if (!header) {
    return PacketFault::NoSignature;
  }
  const auto rest = file.subspan(offset + UnitStart);
  const PacketFault fault = InspectSizes(header->UnitSize, header->ControlOffset, rest.size());
  if (fault != PacketFault::None) {
    return fault;
  }
  const ControlSurvey survey = SurveyControl(rest.first(header->UnitSize), header->ControlOffset);
  return survey.End == ControlEnding::PointsToItself ? PacketFault::None : PacketFault::ControlUnfinished;
}

PacketSearch::PacketSearch(std::span<const std::uint8_t> file, std::size_t from)
    : file_(file), offset_(std::min(from, file.size())) {}

bool PacketSearch::Step() {
  const std::size_t end = offset_ + std::min(SearchPiece, file_.size() - offset_);
  for (int looks = 0; looks < LooksPerPiece; ++looks) {
    offset_ = FindByte(file_, PacketSignature[0], offset_, end);
    if (offset_ == end) {
      return end < file_.size();
    }
    if (InspectPacket(file_, offset_) == PacketFault::None) {
      return false;
    }
    ++offset_;
  }
  return true;
}

std::size_t FindPacket(std::span<const std::uint8_t> file, std::size_t from) {
  PacketSearch search(file, from);
  while (search.Step()) {
  }
  return search.Offset();
}

std::size_t PacketEnd(std::span<const std::uint8_t> file, std::size_t offset) {
  const auto header = ReadPacketHeader(file.subspan(std::min(offset, file.size())));
  return header ? offset + UnitStart + header->UnitSize : file.size();
}

SalvagedStream SalvageStream(std::span<const std::uint8_t> file) {
  return Salvager(file).Run();
}

}  // namespace quillmark
