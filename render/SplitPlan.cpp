#include "render/SplitPlan.h"

#include <algorithm>

#include "sup/IndexedPacket.h"
#include "sup/SupFormat.h"

namespace quillmark {
namespace {

/// Subtitles whose ends one step reads, and about as many bytes of units: all of a unit may be control data.
constexpr std::size_t EndsAtOnce = 2048;
constexpr std::size_t BytesAtOnce = 1U << 20U;

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
  if (ReadSome(primary_, intervals_.First) || ReadSome(secondary_, intervals_.Second)) {
    return true;
  }
  isMade_ = !intervals_.Step();
  return true;
}

bool SplitPlan::ReadSome(const SupStream& stream, DisplayQueue& displays) {
  const auto count = static_cast<std::size_t>(std::max(stream.Count, 0));
  if (intervals_.HasBegun() || displays.Size() == count) {
    return false;
  }
  displays.Reserve(count);
  std::size_t bytes = 0;
  for (std::size_t read = 0; read < EndsAtOnce && bytes < BytesAtOnce && displays.Size() < count; ++read) {
    const std::size_t index = displays.Size();
    const SpuControl control = ControlOf(stream, index, unit_);
    bytes += static_cast<std::size_t>(UnitLength(stream.SpuSize[index]));
    displays.Add({.Start = stream.StartTime[index], .Delay = static_cast<std::uint16_t>(control.Delay)});
    if (&stream == &primary_ && !primaryControl_ && control.IsValid()) {
      primaryControl_ = control;
    }
  }
  return true;
}

std::optional<SpuControl> FirstCompleteControl(const SupStream& stream) {
  std::vector<std::uint8_t> unit;
  for (std::size_t index = 0; stream.Holds(index); ++index) {
    if (const SpuControl control = ControlOf(stream, index, unit); control.IsValid()) {
      return control;
    }
  }
  return std::nullopt;
}

}  // namespace quillmark
