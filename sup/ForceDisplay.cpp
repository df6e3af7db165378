#include "sup/ForceDisplay.h"

#include <array>
#include <vector>

#include "sup/ToolRun.h"

namespace quillmark {
namespace {

class StartCommands {
 public:
  void Clear() { positions_.clear(); }
  void Begin(const ControlSequence& /*sequence*/) {}
  void Take(const ControlCommand& command) {
    if (command.Code == ForcedStart || command.Code == StartDisplay) {
      positions_.push_back(static_cast<std::size_t>(command.Position));
    }
  }
  [[nodiscard]] const std::vector<std::size_t>& Positions() const { return positions_; }

 private:
  std::vector<std::size_t> positions_;  // memory reused
};

}  // namespace

ToolResult ForceDisplay(const SupStream& stream, const SubtitleSet& only, DisplayStart start) {
  const std::array<std::uint8_t, 1> command = {start == DisplayStart::Forced ? ForcedStart : StartDisplay};
  ToolRun run(stream, only);
  StartCommands starts;
  run.ForEach([&](std::size_t /*index*/, const IndexedPacket& packet) {
    starts.Clear();
    ControlWalk walk;
    if (const PacketFault fault = WalkPacket(packet, starts, walk); fault != PacketFault::None) {
      run.LeaveDamaged(fault);
    } else if (starts.Positions().empty()) {
      run.Leave(LeftReason::NoStart);
    } else {
      for (const std::size_t position : starts.Positions()) {
        run.Write(packet.FileOffset(position), command);
      }
    }
  });
  return run.Finish(false);
}

}  // namespace quillmark
