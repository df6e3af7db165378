#include "sup/DisplayEnds.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "base/Ratio.h"
#include "sup/SpuControl.h"
#include "sup/ToolRun.h"

namespace quillmark {
namespace {

/// What decides on a unit's end. Places count from the control offset.
class EndPlan {
 public:
  void Clear(std::size_t controlOffset) { *this = EndPlan(controlOffset); }
  void Begin(const ControlSequence& sequence) {
    last_ = static_cast<std::size_t>(sequence.Position) - controlOffset_;
    readInOrder_ = readInOrder_ && sequence.Gap == 0;
  }
  void Take(const ControlCommand& command) {
    if (command.Code == StopDisplay) {
      stop_ = last_;
    } else if (command.Code == ChangeColours) {
      readInOrder_ = false;
    } else if (command.Code == SetFieldOffsets) {
      fields_ = command.ArgumentAt(0) - controlOffset_;
    }
  }

  EndPlan() = default;

  /// Of the last sequence.
  [[nodiscard]] std::size_t Last() const { return last_; }
  /// Of the sequence with the last stop command.
  [[nodiscard]] const std::optional<std::size_t>& Stop() const { return stop_; }
  /// Whether the stop's delay is sure to be what DecodeControl gives.
  [[nodiscard]] bool StopIsRead() const { return readInOrder_ && stop_ == last_; }
  /// Of the last two offsets of fields.
  [[nodiscard]] const std::optional<std::size_t>& Fields() const { return fields_; }

 private:
  explicit EndPlan(std::size_t controlOffset) : controlOffset_(controlOffset) {}

  std::size_t controlOffset_ = 0;
  std::size_t last_ = 0;
  std::optional<std::size_t> stop_;
  std::optional<std::size_t> fields_;
  bool readInOrder_ = true;
};

SpuControl Decoded(std::span<const std::uint8_t> bytes, const IndexEntry& unit) {
  return DecodeControl(bytes, static_cast<std::int16_t>(unit.ControlOffset));
}

/// How long this program shows a subtitle.
struct Display {
  std::optional<std::int64_t> Ticks;  ///< none: until the next one
  bool HasStop = false;
};

Display DisplayOf(std::span<const std::uint8_t> file, const IndexEntry& unit, const EndPlan& plan) {
  const auto delay =
      plan.StopIsRead()
          ? std::bit_cast<std::int16_t>(NumberAt(file, unit.FileOffset(unit.ControlOffset + *plan.Stop())))
          : Decoded(file.subspan(unit.FileOffset(0), unit.Size), unit).Delay;
  return {.Ticks = delay == 0 ? std::nullopt : std::optional(delay * TicksPerDelayUnit),
          .HasStop = plan.Stop().has_value()};
}

/// What the options make of one subtitle's display.
struct Decision {
  std::optional<std::int64_t> Ticks;  ///< none: the end stays as it is
  std::optional<LeftReason> Left;     ///< where not all that was asked for can be done
};

/// How far the next start is away; nullopt for the last subtitle. One that is too far for 64 bits is as far
/// as they say.
std::optional<std::int64_t> TicksToNext(const SupStream& stream, std::size_t index) {
  if (index + 1 >= stream.StartTime.size()) {
    return std::nullopt;
  }
  const std::int64_t start = stream.StartTime[index];
  const std::int64_t next = stream.StartTime[index + 1];
  return Difference(next, start).value_or(next > start ? std::numeric_limits<std::int64_t>::max() : 0);
}

class Decider {
 public:
  explicit Decider(const EndOptions& options) : options_(options) {}

  [[nodiscard]] Decision Of(const Display& display, const std::optional<std::int64_t>& toNext) const {
    Decision decision;
    std::optional<std::int64_t> shown = display.Ticks;
    if (options_.Fill && (!shown || !display.HasStop)) {
      decision = Filled(toNext);
      if (decision.Left) {
        return decision;
      }
      shown = decision.Ticks;
    }
    if (options_.Shortest && shown && *shown < *options_.Shortest) {
      shown = RoundedUp(std::min(*options_.Shortest, MaxDisplay));
      decision.Ticks = shown;
    }
    if (options_.NoOverlap && shown && toNext && *shown > *toNext) {
      return CutTo(*toNext);
    }
    return decision;
  }

 private:
  [[nodiscard]] Decision Filled(const std::optional<std::int64_t>& toNext) const {
    if (!toNext && !options_.Longest) {
      return {.Ticks = {}, .Left = LeftReason::NoNext};
    }
    const std::int64_t longest = std::min(options_.Longest.value_or(MaxDisplay), MaxDisplay);
    const std::int64_t shown = RoundedDown(toNext ? std::min(*toNext - options_.Gap, longest) : longest);
    return shown > 0 ? Decision{.Ticks = shown, .Left = {}}
                     : Decision{.Ticks = {}, .Left = LeftReason::NoRoom};
  }

  [[nodiscard]] Decision CutTo(std::int64_t toNext) const {
    const std::int64_t shown = RoundedDown(toNext - options_.Gap);
    if (shown <= 0) {
      return {.Ticks = {}, .Left = LeftReason::NoRoom};
    }
    const bool isTooShort = options_.Shortest && shown < *options_.Shortest;
    return {.Ticks = shown, .Left = isTooShort ? std::optional(LeftReason::NotAsLong) : std::nullopt};
  }

  static std::int64_t RoundedDown(std::int64_t ticks) {
    return ticks <= 0 ? 0 : ticks / TicksPerDelayUnit * TicksPerDelayUnit;
  }
  static std::int64_t RoundedUp(std::int64_t ticks) { return RoundedDown(ticks + TicksPerDelayUnit - 1); }

  const EndOptions& options_;
};

/// Writes ends; each answer is why one was not written.
class EndWriter {
 public:
  explicit EndWriter(ToolRun& run) : run_(run) {}

  std::optional<LeftReason> Write(const IndexEntry& unit, const PlannedWalk<EndPlan>& plan,
                                  std::uint16_t delay) {
    return plan.What().Stop() ? WriteDelay(unit, plan.What(), delay) : AddStop(unit, plan, delay);
  }

 private:
  std::optional<LeftReason> WriteDelay(const IndexEntry& unit, const EndPlan& plan, std::uint16_t delay) {
    const std::size_t position = unit.ControlOffset + *plan.Stop();
    if (!plan.StopIsRead()) {
      const auto old = BytesOf(unit);
      unit_.assign(old.begin(), old.end());
      WriteNumber(position, delay);
      if (!Reads(unit, delay)) {
        return LeftReason::EndElsewhere;
      }
    }
    run_.WriteNumber(unit.FileOffset(position), delay);
    return std::nullopt;
  }

  std::optional<LeftReason> AddStop(const IndexEntry& unit, const PlannedWalk<EndPlan>& plan,
                                    std::uint16_t delay) {
    const std::size_t place = unit.ControlOffset + plan.After();
    const auto delayBytes = NumberBytes(delay);
    const auto placeBytes = NumberBytes(place);
    const std::array<std::uint8_t, StopSequenceSize> stop = {delayBytes[0], delayBytes[1], placeBytes[0],
                                                             placeBytes[1], StopDisplay,   EndOfSequence};
    const std::size_t whole = unit.Size + stop.size();
    const std::size_t size = whole + whole % 2;
    if (size > MaxReadUnit) {
      return LeftReason::UnitFull;
    }
    if (HasDataAfter(place, unit, plan.What())) {
      return LeftReason::DataAfterControl;
    }
    const std::size_t pointer = unit.ControlOffset + plan.What().Last() + 2;
    const auto old = BytesOf(unit);
    unit_.assign(old.begin(), old.end());
    WriteNumber(0, size);
    WriteNumber(pointer, place);
    unit_.insert(unit_.begin() + static_cast<std::ptrdiff_t>(place), stop.begin(), stop.end());
    unit_.resize(size, EndOfSequence);
    if (!Reads(unit, delay)) {
      return LeftReason::EndElsewhere;
    }
    run_.Replace(unit.FileOffset(0), 2, NumberBytes(size));
    run_.Replace(unit.FileOffset(pointer), 2, placeBytes);
    run_.Replace(unit.FileOffset(place), 0, stop);
    if (size > whole) {
      run_.Replace(unit.FileOffset(unit.Size), 0, std::array{std::uint8_t{EndOfSequence}});
    }
    return std::nullopt;
  }

  [[nodiscard]] bool HasDataAfter(std::size_t place, const IndexEntry& unit, const EndPlan& plan) const {
    const std::size_t fields = unit.ControlOffset + plan.Fields().value_or(0);
    return plan.Fields() &&
           (NumberAt(BytesOf(unit), fields) >= place || NumberAt(BytesOf(unit), fields + 2) >= place);
  }

  [[nodiscard]] std::span<const std::uint8_t> BytesOf(const IndexEntry& unit) const {
    return run_.File().subspan(unit.FileOffset(0), unit.Size);
  }

  void WriteNumber(std::size_t at, std::size_t value) {
    std::ranges::copy(NumberBytes(value), unit_.begin() + static_cast<std::ptrdiff_t>(at));
  }

  /// Whether this program reads that end in `unit_`.
  [[nodiscard]] bool Reads(const IndexEntry& unit, std::uint16_t delay) const {
    return std::bit_cast<std::uint16_t>(Decoded(unit_, unit).Delay) == delay;
  }

  /// A header, the stop command and the end mark.
  static constexpr std::size_t StopSequenceSize =
      SequenceHeaderSize + CommandSize(StopDisplay) + CommandSize(EndOfSequence);

  ToolRun& run_;
  std::vector<std::uint8_t> unit_;  // memory reused
};

}  // namespace

ToolResult SetDisplayEnds(const SupStream& stream, const SubtitleSet& only, const EndOptions& options) {
  ToolRun run(stream, only);
  EndWriter writer(run);
  PlannedWalk<EndPlan> plan;
  const Decider decider(options);
  run.ForEachPlanned(plan, [&](std::size_t index, const IndexEntry& unit) {
    Decision decision = decider.Of(DisplayOf(run.File(), unit, plan.What()), TicksToNext(stream, index));
    if (decision.Ticks) {
      const auto units = static_cast<std::uint16_t>(*decision.Ticks / TicksPerDelayUnit);
      const auto unwritten = writer.Write(unit, plan, units);
      decision.Left = unwritten ? unwritten : decision.Left;
    }
    if (decision.Left) {
      run.Leave(*decision.Left);
    }
  });
  return run.Finish(true);
}

}  // namespace quillmark
