#include "sup/ForceDisplay.h"

#include <array>
#include <vector>

#include "sup/ToolRun.h"

namespace quillmark {
namespace {

/// Where a unit's start commands stand.
class StartPlan {
 public:
  struct Start {
    std::size_t Place = 0;  ///< from the control offset
    std::uint8_t Command = 0;
  };

  void Clear(std::size_t controlOffset) {
    controlOffset_ = controlOffset;
    starts_.clear();
  }
  void Begin(const ControlSequence& /*sequence*/) {}
  void Take(const ControlCommand& command) {
    if (command.Code == ForcedStart || command.Code == StartDisplay) {
      starts_.push_back(
          {.Place = static_cast<std::size_t>(command.Position) - controlOffset_, .Command = command.Code});
    }
  }
  [[nodiscard]] const std::vector<Start>& Starts() const { return starts_; }

 private:
  std::size_t controlOffset_ = 0;
  std::vector<Start> starts_;
};

/// Finds out whether a unit starts even where subtitles are off.
struct ForcedFinder {
  bool Found = false;

  void Begin(const ControlSequence& /*sequence*/) {}
  void Take(const ControlCommand& command) { Found = Found || command.Code == ForcedStart; }
};

}  // namespace

bool IsForced(const SupStream& stream, std::size_t index) {
  ForcedFinder finder;
  ControlWalk walk;
  static_cast<void>(WalkPacket(PacketOf(stream, index), finder, walk));
  return finder.Found;
}

ToolResult ForceDisplay(const SupStream& stream, const SubtitleSet& only, DisplayStart start) {
  const std::array<std::uint8_t, 1> command = {start == DisplayStart::Forced ? ForcedStart : StartDisplay};
  ToolRun run(stream, only);
  PlannedWalk<StartPlan> plan;
  run.ForEachPlanned(plan, [&](std::size_t /*index*/, const IndexEntry& unit) {
    if (plan.What().Starts().empty()) {
      run.Leave(LeftReason::NoStart);
    }
    for (const StartPlan::Start& found : plan.What().Starts()) {
      run.Write(unit.FileOffset(unit.ControlOffset + found.Place), std::array{found.Command}, command);
    }
  });
  return run.Finish(false);
}

}  // namespace quillmark
