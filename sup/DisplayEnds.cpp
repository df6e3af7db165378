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

/// What decides on a unit's end.
class EndSurvey {
 public:
  void Clear() { *this = EndSurvey(); }

  void Begin(const ControlSequence& sequence) {
    last_ = sequence;
    readInOrder_ = readInOrder_ && sequence.Gap == 0;
  }
  void Take(const ControlCommand& command) {
    if (command.Code == StopDisplay) {
      stop_ = last_;
    } else if (command.Code == ChangeColours) {
      readInOrder_ = false;
    } else if (command.Code == SetFieldOffsets && command.Arguments.size() == 4) {
      for (const std::size_t at : {std::size_t{0}, std::size_t{2}}) {
        dataEnd_ = std::max(dataEnd_, command.Arguments[at] << 8 | command.Arguments[at + 1]);
      }
    }
  }

  [[nodiscard]] const ControlSequence& Last() const { return last_; }
  /// The sequence with the last stop command.
  [[nodiscard]] const std::optional<ControlSequence>& Stop() const { return stop_; }
  /// Whether the stop's delay is sure to be what DecodeControl gives.
  [[nodiscard]] bool StopIsRead() const { return readInOrder_ && stop_ && stop_->Position == last_.Position; }
  /// A field's data starts there, or before.
  [[nodiscard]] std::int32_t LastData() const { return dataEnd_; }

 private:
  ControlSequence last_;
  std::optional<ControlSequence> stop_;
  std::int32_t dataEnd_ = 0;
  bool readInOrder_ = true;
};

SpuControl Decoded(std::span<const std::uint8_t> unit, const IndexedPacket& packet) {
  return DecodeControl(unit, std::bit_cast<std::int16_t>(packet.ControlOffset));
}

/// How long this program shows a subtitle.
struct Display {
  std::optional<std::int64_t> Ticks;  ///< none: until the next one
  bool HasStop = false;
};

Display DisplayOf(const IndexedPacket& packet, const EndSurvey& survey) {
  const std::int16_t delay = survey.StopIsRead() ? std::bit_cast<std::int16_t>(survey.Stop()->Header.Delay)
                                                 : Decoded(packet.Unit, packet).Delay;
  return {.Ticks = delay == 0 ? std::nullopt : std::optional(delay * TicksPerDelayUnit),
          .HasStop = survey.Stop().has_value()};
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

std::array<std::uint8_t, 2> NumberBytes(std::size_t value) {
  return {static_cast<std::uint8_t>(value >> 8U), static_cast<std::uint8_t>(value)};
}

/// Writes ends; each answer is why one was not written.
class EndWriter {
 public:
  explicit EndWriter(ToolRun& run) : run_(run) {}

  std::optional<LeftReason> Write(const IndexedPacket& packet, const EndSurvey& survey,
                                  const ControlWalk& walk, std::uint16_t delay) {
    return survey.Stop() ? WriteDelay(packet, survey, delay) : AddStop(packet, survey, walk, delay);
  }

 private:
  std::optional<LeftReason> WriteDelay(const IndexedPacket& packet, const EndSurvey& survey,
                                       std::uint16_t delay) {
    const auto position = static_cast<std::size_t>(survey.Stop()->Position);
    if (!survey.StopIsRead()) {
      unit_.assign(packet.Unit.begin(), packet.Unit.end());
      WriteNumber(position, delay);
      if (!Reads(packet, delay)) {
        return LeftReason::EndElsewhere;
      }
    }
    run_.Write(packet.FileOffset(position), NumberBytes(survey.Stop()->Header.Delay), NumberBytes(delay));
    return std::nullopt;
  }

  std::optional<LeftReason> AddStop(const IndexedPacket& packet, const EndSurvey& survey,
                                    const ControlWalk& walk, std::uint16_t delay) {
    const auto place = static_cast<std::size_t>(walk.After);
    const auto delayBytes = NumberBytes(delay);
    const auto placeBytes = NumberBytes(place);
    const std::array<std::uint8_t, StopSequenceSize> stop = {delayBytes[0], delayBytes[1], placeBytes[0],
                                                             placeBytes[1], StopDisplay,   EndOfSequence};
    const std::size_t whole = packet.Unit.size() + stop.size();
    const std::size_t size = whole + whole % 2;
    if (size > MaxReadUnit) {
      return LeftReason::UnitFull;
    }
    if (survey.LastData() >= walk.After) {
      return LeftReason::DataAfterControl;
    }
    const std::size_t pointer = static_cast<std::size_t>(survey.Last().Position) + 2;
    unit_.assign(packet.Unit.begin(), packet.Unit.end());
    WriteNumber(0, size);
    WriteNumber(pointer, place);
    unit_.insert(unit_.begin() + walk.After, stop.begin(), stop.end());
    unit_.resize(size, EndOfSequence);
    if (!Reads(packet, delay)) {
      return LeftReason::EndElsewhere;
    }
    run_.Replace(packet.FileOffset(0), 2, NumberBytes(size));
    run_.Replace(packet.FileOffset(pointer), 2, placeBytes);
    run_.Replace(packet.FileOffset(place), 0, stop);
    if (size > whole) {
      run_.Replace(packet.End, 0, std::array{std::uint8_t{EndOfSequence}});
    }
    return std::nullopt;
  }

  void WriteNumber(std::size_t at, std::size_t value) {
    std::ranges::copy(NumberBytes(value), unit_.begin() + static_cast<std::ptrdiff_t>(at));
  }

  /// Whether this program reads that end in `unit_`.
  [[nodiscard]] bool Reads(const IndexedPacket& packet, std::uint16_t delay) const {
    return std::bit_cast<std::uint16_t>(Decoded(unit_, packet).Delay) == delay;
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
  EndSurvey survey;
  const Decider decider(options);
  run.ForEach([&](std::size_t index, const IndexedPacket& packet) {
    survey.Clear();
    ControlWalk walk;
    if (const PacketFault fault = WalkPacket(packet, survey, walk); fault != PacketFault::None) {
      run.LeaveDamaged(fault);
      return;
    }
    Decision decision = decider.Of(DisplayOf(packet, survey), TicksToNext(stream, index));
    if (decision.Ticks) {
      const auto units = static_cast<std::uint16_t>(*decision.Ticks / TicksPerDelayUnit);
      const auto unwritten = writer.Write(packet, survey, walk, units);
      decision.Left = unwritten ? unwritten : decision.Left;
    }
    if (decision.Left) {
      run.Leave(*decision.Left);
    }
  });
  return run.Finish(true);
}

}  // namespace quillmark
