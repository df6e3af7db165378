#include "render/SplitPlan.h"

#include <algorithm>

#include "sup/IndexedPacket.h"

namespace quillmark {
namespace {

/// Subtitles whose ends are read in one step.
constexpr std::size_t EndsPerStep = 2048;

/// `buffer` is for units that the file does not have whole.
SpuControl ControlOf(const SupStream& stream, std::size_t index, std::vector<std::uint8_t>& buffer) {
  const IndexedPacket packet = PacketOf(stream, index);
  if (packet.Fault == PacketFault::None) {
    return DecodeControl(packet.Unit, stream.ControlOffset[index]);
  }
  const SubtitleUnit unit = UnitOf(stream, index, buffer);
  return DecodeControl(unit.Bytes, unit.ControlOffset);
}

}  // namespace

bool SplitPlan::Step() {
  if (isMade_) {
    return false;
  }
  if (ReadSome(primary_, primaryDisplays_, true) || ReadSome(secondary_, secondaryDisplays_, false)) {
    return true;
  }
  units_ = DisplayIntervals(primaryDisplays_, secondaryDisplays_, joinTicks_);
  primaryDisplays_ = {};
  secondaryDisplays_ = {};
  isMade_ = true;
  return true;
}

bool SplitPlan::ReadSome(const SupStream& stream, std::vector<OwnDisplay>& displays, bool isPrimary) {
  const auto count = static_cast<std::size_t>(std::max(stream.Count, 0));
  const std::size_t end = std::min(count, displays.size() + EndsPerStep);
  if (displays.size() == end) {
    return false;
  }
  displays.reserve(count);
  for (std::size_t index = displays.size(); index < end; ++index) {
    const SpuControl control = ControlOf(stream, index, unit_);
    displays.push_back(
        {.Start = stream.StartTime[index], .Delay = static_cast<std::uint16_t>(control.Delay)});
    if (isPrimary && !primaryControl_ && control.IsValid()) {
      primaryControl_ = control;
    }
  }
  return true;
}

}  // namespace quillmark
