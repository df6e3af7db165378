#include "sup/DisplayTimeline.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "base/Words.h"
#include "sup/IndexedPacket.h"
#include "sup/PacketCheck.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// The pointers lead forwards, so the unit's own length bounds the walk.
constexpr std::int32_t AllCommands = std::numeric_limits<std::int32_t>::max();

CodeNibbles CodesOf(std::span<const std::uint8_t> bytes) {
  return UnpackCodes({bytes[0], bytes[1]});
}

AreaRange RangeOf(std::span<const std::uint8_t> bytes) {
  return UnpackRange({bytes[0], bytes[1], bytes[2]});
}

/// Sets what the command names; changes of colours within the picture are none of its business.
void CarryOut(const ControlCommand& command, DisplayState& state) {
  const auto bytes = command.Arguments;
  if (bytes.size() < static_cast<std::size_t>(ArgumentSize(command.Code))) {
    return;
  }
  switch (command.Code) {
    case ForcedStart:
      state.Shown = DisplayedAs::Forced;
      break;
    case StartDisplay:
      state.Shown = DisplayedAs::Subtitle;
      break;
    case StopDisplay:
      state.Shown = DisplayedAs::Nothing;
      break;
    case SetColour:
      state.Colours = CodesOf(bytes);
      break;
    case SetContrast:
      state.Contrasts = CodesOf(bytes);
      break;
    case SetDisplayArea:
      state.Area = DisplayArea{.X = RangeOf(bytes), .Y = RangeOf(bytes.subspan(AreaArguments().size()))};
      break;
    case SetFieldOffsets:
      state.Fields = FieldStarts{.Top = NumberAt(bytes, 0), .Bottom = NumberAt(bytes, 2)};
      break;
    default:
      break;
  }
}

/// When a player gets to a sequence that follows what was carried out at `before`.
std::int64_t TimeOf(const ControlSequence& sequence, std::int64_t before) {
  return std::max(before, std::int64_t{sequence.Header.Delay} * TicksPerPlayerDelayUnit);
}

/// False where the changes are none that a line can have.
bool ReadChanges(std::span<const std::uint8_t> arguments, const ColourGroup& group, ChangedLines& lines) {
  if (group.Changes > MaxColourChanges) {
    return false;
  }
  lines.Count = static_cast<std::uint8_t>(group.Changes);
  for (std::size_t i = 0; i < group.Changes; ++i) {
    const auto bytes = arguments.subspan(group.ChangeAt(i), ColourChangeSize);
    ColourChange& change = lines.Changes[i];
    change = {.Column = NumberAt(bytes, 0),
              .Colours = CodesOf(bytes.subspan(2)),
              .Contrasts = CodesOf(bytes.subspan(4))};
    if (i > 0 && change.Column <= lines.Changes[i - 1].Column) {
      return false;
    }
  }
  return true;
}

/// Makes a timeline out of what the walk tells.
class TimelineMaker {
 public:
  explicit TimelineMaker(DisplayTimeline& timeline) : timeline_(timeline) {}

  void Begin(const ControlSequence& sequence) {
    auto& states = timeline_.States;
    const std::int64_t time = TimeOf(sequence, states.empty() ? 0 : states.back().Time);
    if (states.empty()) {
      states.emplace_back();
    } else if (states.back().Time != time) {
      states.push_back(states.back());
    }
    states.back().Time = time;
  }

  void Take(const ControlCommand& command) {
    if (command.Code == ChangeColours) {
      timeline_.States.back().Changes = timeline_.Changes.size();
      timeline_.Changes.push_back(ReadGroups(command));
    } else {
      CarryOut(command, timeline_.States.back());
    }
  }

 private:
  ColourChanges ReadGroups(const ControlCommand& command) {
    ColourChanges changes;
    const auto damagedAt = ForEachColourGroup(command.Arguments, [&](const ColourGroup& group) {
      ChangedLines lines{.First = group.FirstLine, .Last = group.LastLine};
      const bool ascends =
          lines.First <= lines.Last && (changes.empty() || changes.back().Last < lines.First);
      if (!ascends || !ReadChanges(command.Arguments, group, lines)) {
        return false;
      }
      changes.push_back(lines);
      return true;
    });
    if (damagedAt) {
      timeline_.Damage.push_back({.Position = static_cast<std::int32_t>(command.ArgumentAt(*damagedAt))});
    }
    return changes;
  }

  DisplayTimeline& timeline_;
};

std::optional<std::int64_t> LastStop(const std::vector<DisplayState>& states) {
  const auto lastShown =
      std::find_if(states.rbegin(), states.rend(), [](const DisplayState& state) { return state.IsShown(); });
  // What follows the last shown state, if anything does, is the stop.
  return lastShown == states.rend() || lastShown == states.rbegin()
             ? std::nullopt
             : std::optional(std::prev(lastShown)->Time);
}

/// Looks for a second picture without keeping any.
class AnimationFinder {
 public:
  void Begin(const ControlSequence& sequence) {
    const std::int64_t time = TimeOf(sequence, state_.Time);
    if (time != state_.Time) {
      Look();
    }
    state_.Time = time;
  }

  void Take(const ControlCommand& command) {
    if (command.Code == ChangeColours) {
      hasChanges_ = true;
    } else {
      CarryOut(command, state_);
    }
  }

  /// What holds now is what is shown until the next moment.
  void Look() {
    if (!state_.IsShown()) {
      isInterrupted_ = first_.has_value();
    } else if (!first_) {
      first_ = state_;
    } else {
      hasOther_ = hasOther_ || isInterrupted_ || !IsSamePicture();
    }
    hasOther_ = hasOther_ || (hasChanges_ && state_.IsShown());
  }

  [[nodiscard]] bool Found() const { return hasOther_; }

 private:
  [[nodiscard]] bool IsSamePicture() const {
    return state_.Colours == first_->Colours && state_.Contrasts == first_->Contrasts &&
           state_.Area == first_->Area && state_.Fields == first_->Fields;
  }

  DisplayState state_;
  std::optional<DisplayState> first_;  // that was shown
  bool isInterrupted_ = false;         // it was stopped
  bool hasChanges_ = false;
  bool hasOther_ = false;
};

}  // namespace

std::string DamageText(const DisplayDamage& damage) {
  const std::string at = std::to_string(damage.Position);
  switch (damage.Ending) {
    case ControlEnding::PointsToItself:
      return Words::Tr("changes of colours within the picture are damaged and cut off at byte %1 of the unit",
                       {at});
    case ControlEnding::NoEndMark:
      return Words::Tr(
          "the control sequence at byte %1 of the unit runs to the end of the unit without its end mark 0xFF",
          {at});
    case ControlEnding::PointsNowhere:
      return Words::Tr("the control sequence at byte %1 of the unit points to 0 for the next one", {at});
    case ControlEnding::PointsBackwards:
      return Words::Tr(
          "the control sequence at byte %1 of the unit points backwards for the next one, which is not "
          "followed",
          {at});
    case ControlEnding::PointsOutside:
    case ControlEnding::TooLong:
      break;
  }
  return Words::Tr(
      "the control sequence at byte %1 of the unit lies outside the unit, or points there for the next one",
      {at});
}

const DisplayState* DisplayTimeline::At(std::int64_t ticks) const {
  const auto after = std::ranges::upper_bound(States, ticks, {}, &DisplayState::Time);
  return after == States.begin() ? nullptr : &*std::prev(after);
}

std::span<const ChangedLines> DisplayTimeline::ChangesOf(const DisplayState& state) const {
  return state.Changes ? std::span<const ChangedLines>(Changes[*state.Changes])
                       : std::span<const ChangedLines>();
}

DisplayTimeline ReadDisplay(std::span<const std::uint8_t> unit, std::uint16_t controlOffset) {
  DisplayTimeline timeline;
  if (controlOffset < UnitHeaderSize || controlOffset >= unit.size()) {
    timeline.Damage.push_back({.Ending = ControlEnding::PointsOutside, .Position = controlOffset});
    return timeline;
  }
  TimelineMaker maker(timeline);
  const ControlWalk walk = WalkControl(unit, controlOffset, maker, AllCommands);
  if (walk.End != ControlEnding::PointsToItself) {
    timeline.Damage.push_back({.Ending = walk.End, .Position = walk.EndPosition});
  }
  timeline.End = LastStop(timeline.States);
  return timeline;
}

bool IsAnimated(std::span<const std::uint8_t> unit, std::uint16_t controlOffset) {
  if (controlOffset < UnitHeaderSize) {
    return false;
  }
  AnimationFinder finder;
  static_cast<void>(WalkControl(unit, controlOffset, finder, AllCommands));
  finder.Look();
  return finder.Found();
}

PlayedUnit PlayedUnitOf(const SupStream& stream, std::size_t index) {
  PlayedUnit played;
  if (!stream.Holds(index)) {
    return played;
  }
  const auto offset = static_cast<std::size_t>(std::bit_cast<std::uint32_t>(stream.PacketOffset[index]));
  if (const auto packet = ReadPacket(FileOf(stream), offset, 0)) {
    played.Bytes = packet->Unit;
    played.ControlOffset = packet->ControlOffset;
  }
  if (index + 1 < stream.StartTime.size() && stream.StartTime[index + 1] >= stream.StartTime[index]) {
    // Stored times may lie at both ends of the 64-bit range.
    const auto between = static_cast<std::uint64_t>(stream.StartTime[index + 1]) -
                         static_cast<std::uint64_t>(stream.StartTime[index]);
    played.ReplacedAt =
        static_cast<std::int64_t>(std::min<std::uint64_t>(between, std::numeric_limits<std::int64_t>::max()));
  }
  return played;
}

}  // namespace quillmark
