#include "containers/UnitGatherer.h"

#include <algorithm>
#include <utility>

#include "base/Words.h"
#include "sup/ControlSequences.h"
#include "sup/SupFormat.h"

namespace quillmark {
namespace {

constexpr std::size_t MaxUnit = 0xFFFF;
constexpr std::size_t Header = UnitHeaderSize;

struct NoVisitor {
  void Begin(const ControlSequence& /*sequence*/) const {}
  void Take(const ControlCommand& /*command*/) const {}
};

/// Control sequences stand at a unit's end, so a unit that has them all is whole.
bool HasAllControlSequences(std::span<const std::uint8_t> unit) {
  const std::uint16_t offset = NumberAt(unit, 2);
  NoVisitor visitor;
  return offset >= Header && WalkControl(unit, offset, visitor).End == ControlEnding::PointsToItself;
}

/// Whether its header can be that of a unit.
bool StartsLikeUnit(std::span<const std::uint8_t> bytes) {
  return bytes.size() >= Header && NumberAt(bytes, 2) >= Header && NumberAt(bytes, 2) < NumberAt(bytes, 0);
}

}  // namespace

std::vector<std::string> GatheredSubstream::Notes() const {
  std::vector<std::string> notes;
  if (Encrypted.Count > 0) {
    notes.push_back(Words::Tr("%n packet is encrypted (at byte %1); its subtitle is left out",
                              "%n packets are encrypted (the first at byte %1); their subtitles are left out",
                              static_cast<std::int64_t>(Encrypted.Count), {std::to_string(Encrypted.First)}));
  }
  if (Cut.Count > 0) {
    notes.push_back(Words::Tr("%n subtitle is cut short and left out (at byte %1)",
                              "%n subtitles are cut short and left out (the first at byte %1)",
                              static_cast<std::int64_t>(Cut.Count), {std::to_string(Cut.First)}));
  }
  if (Resized.Count > 0) {
    notes.push_back(Words::Tr("%n subtitle had a wrong size (at byte %1), which was mended",
                              "%n subtitles had a wrong size (the first at byte %1), which was mended",
                              static_cast<std::int64_t>(Resized.Count), {std::to_string(Resized.First)}));
  }
  if (Untimed.Count > 0) {
    notes.push_back(Words::Tr(
        "%n subtitle has no time of its own (at byte %1); the clock of the stream tells about when it starts",
        "%n subtitles have no time of their own (the first at byte %1); the clock of the stream tells about "
        "when it starts",
        static_cast<std::int64_t>(Untimed.Count), {std::to_string(Untimed.First)}));
  }
  return notes;
}

void GatheredSubstream::SetTime(const GatheredUnit& unit, std::int64_t ticks) {
  const auto head = std::span(Bytes).subspan(unit.Start - UnitStart);
  std::ranges::copy(PacketSignature, head.begin());
  std::ranges::copy(PackTime(ticks), head.subspan(TimeStart).begin());
}

bool UnitGatherer::IsStart(const ProgramPacket& packet) const {
  return std::ranges::binary_search(starts_, packet.Pack) ||
         std::ranges::binary_search(starts_, packet.Position);
}

void UnitGatherer::Add(const ProgramPacket& packet, std::int64_t time) {
  const auto index = SubtitleSubstreamOf(packet);
  if (!index) {
    return;
  }
  Pending& pending = pending_[*index];
  if (packet.IsEncrypted) {
    substreams_[*index].Encrypted.Add(packet.Position);
    if (std::exchange(pending.IsOpen, false)) {
      Drop(*index);
    }
    return;
  }
  auto payload = packet.Payload.subspan(1);
  if (pending.IsOpen && packet.Time && packet.Time != pending.Unit.TimeStamp) {
    payload = payload.subspan(EndIn(*index, payload));
  }
  const bool hasOtherTime = packet.Time && packet.Time != pending.Unit.TimeStamp;
  const bool starts = !pending.IsOpen       ? packet.Time.has_value() || IsStart(packet)
                      : pending.SizeIsWrong ? hasOtherTime || IsStart(packet)
                                            : hasOtherTime && (!hasStarts_ || IsStart(packet));
  if (starts && !payload.empty()) {
    End(*index);
    Begin(*index, packet, time);
  }
  if (pending.IsOpen && !pending.Unit.TimeStamp && !packet.Time) {
    pending.Unit.Time = time;
  }
  while (pending.IsOpen && !payload.empty()) {
    payload = payload.subspan(Append(*index, payload));
    if (!pending.IsOpen && !payload.empty() && !hasStarts_) {
      Begin(*index, packet, time);
      pending.Unit.TimeStamp.reset();
      pending.IsUncertain = true;
    }
  }
}

void UnitGatherer::Begin(std::size_t index, const ProgramPacket& packet, std::int64_t time) {
  std::vector<std::uint8_t>& bytes = substreams_[index].Bytes;
  if (bytes.empty()) {
    bytes.reserve(expected_);
  }
  bytes.resize(bytes.size() + UnitStart);
  pending_[index] = {.Unit = {.Pack = packet.Pack,
                              .Packet = packet.Position,
                              .TimeStamp = packet.Time,
                              .Time = time,
                              .Start = bytes.size()},
                     .IsOpen = true};
}

void UnitGatherer::Drop(std::size_t index) {
  substreams_[index].Bytes.resize(pending_[index].Unit.Start - UnitStart);
}

std::size_t UnitGatherer::EndIn(std::size_t index, std::span<const std::uint8_t> payload) {
  Pending& pending = pending_[index];
  std::vector<std::uint8_t>& bytes = substreams_[index].Bytes;
  const std::size_t gathered = bytes.size() - pending.Unit.Start;
  if (gathered < Header || pending.SizeIsWrong) {
    return 0;
  }
  const std::size_t size = NumberAt(std::span(bytes).subspan(pending.Unit.Start), 0);
  const std::size_t missing = size - gathered;
  if (missing > payload.size()) {
    return 0;
  }
  // What is whole without them has a size field that is too large, unless they are bytes that fill it up.
  if (HasAllControlSequences(std::span(bytes).subspan(pending.Unit.Start)) && StartsLikeUnit(payload) &&
      !StartsLikeUnit(payload.subspan(missing))) {
    return 0;
  }
  const auto rest = payload.first(missing);
  bytes.insert(bytes.end(), rest.begin(), rest.end());
  if (!HasAllControlSequences(std::span(bytes).subspan(pending.Unit.Start))) {
    bytes.resize(bytes.size() - missing);
    return 0;
  }
  End(index);
  return missing;
}

std::size_t UnitGatherer::Append(std::size_t index, std::span<const std::uint8_t> payload) {
  Pending& pending = pending_[index];
  std::vector<std::uint8_t>& bytes = substreams_[index].Bytes;
  bytes.insert(bytes.end(), payload.begin(), payload.end());
  const auto unit = std::span(bytes).subspan(pending.Unit.Start);
  if (unit.size() < Header) {
    return payload.size();
  }
  const std::size_t size = NumberAt(unit, 0);
  pending.SizeIsWrong = size < NumberAt(unit, 2) || size < Header;
  if (pending.SizeIsWrong ? unit.size() <= MaxUnit : unit.size() < size) {
    return payload.size();
  }
  const std::size_t after = pending.SizeIsWrong ? 0 : unit.size() - size;
  End(index);
  return payload.size() - after;
}

void UnitGatherer::End(std::size_t index) {
  Pending& pending = pending_[index];
  if (!std::exchange(pending.IsOpen, false)) {
    return;
  }
  GatheredSubstream& substream = substreams_[index];
  GatheredUnit& unit = pending.Unit;
  auto bytes = std::span(substream.Bytes).subspan(unit.Start);
  bytes = bytes.first(std::min(bytes.size(), MaxUnit));
  const std::size_t said = bytes.size() < Header ? 0 : NumberAt(bytes, 0);
  unit.Size = said;
  if (bytes.size() >= Header && said != bytes.size() && (pending.SizeIsWrong || said > bytes.size()) &&
      !pending.IsUncertain && HasAllControlSequences(bytes)) {
    unit.Size = bytes.size();
    std::ranges::copy(NumberBytes(unit.Size), bytes.begin());
    substream.Resized.Add(unit.Packet);
  }
  bool isWhole = unit.Size >= Header && unit.Size <= bytes.size();
  if (pending.IsUncertain) {
    isWhole = isWhole && HasAllControlSequences(bytes.first(unit.Size));
  } else if (!isWhole) {
    substream.Cut.Add(unit.Packet);
  }
  if (!isWhole) {
    Drop(index);
    return;
  }
  substream.Bytes.resize(unit.Start + unit.Size);
  substream.Units.push_back(unit);
  size_ += UnitStart + unit.Size;
  if (pending.IsUncertain) {
    substream.Untimed.Add(unit.Packet);
  }
}

std::array<GatheredSubstream, SubtitleSubstreams> UnitGatherer::Finish() {
  for (std::size_t i = 0; i < SubtitleSubstreams; ++i) {
    End(i);
  }
  return std::move(substreams_);
}

}  // namespace quillmark
