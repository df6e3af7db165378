#include "sup/Retime.h"

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <vector>

#include "base/Words.h"
#include "sup/SupFormat.h"
#include "sup/ToolRun.h"

namespace quillmark {
namespace {

/// New times by old ones.
struct TimeMap {
  std::int64_t From = 0;
  std::int64_t To = 0;
  Scaler Scale = Scaler({});
  bool KeepsDelays = true;
  std::int64_t Shift = 0;
  bool IsShift = false;  ///< and nothing else

  [[nodiscard]] std::optional<std::int64_t> Of(std::int64_t time) const {
    const auto distance = Difference(time, From);
    const auto scaled = distance ? Scale.RoundedSum(To, *distance) : std::nullopt;
    return scaled ? Sum(*scaled, Shift) : std::nullopt;
  }
};

std::optional<std::int64_t> StartOf(const SupStream& stream, std::int64_t number) {
  const auto index = static_cast<std::size_t>(number - 1);
  return number > 0 && stream.Holds(index) ? std::optional(stream.StartTime[index]) : std::nullopt;
}

Result<TimeMap> LineThrough(const SupStream& stream, const RetimeOptions::Line& line) {
  for (const TimePoint& point : {line.A, line.B}) {
    if (!StartOf(stream, point.Number)) {
      return Failure{Words::Tr("there is no subtitle %1: it has %2",
                               {std::to_string(point.Number), std::to_string(stream.Count)})};
    }
  }
  TimePoint a = line.A;
  TimePoint b = line.B;
  if (*StartOf(stream, a.Number) > *StartOf(stream, b.Number)) {
    std::swap(a, b);
  }
  const std::int64_t from = *StartOf(stream, a.Number);
  const auto oldDistance = Difference(*StartOf(stream, b.Number), from);
  const auto newDistance = Difference(b.Time, a.Time);
  const std::string first = std::to_string(a.Number);
  const std::string second = std::to_string(b.Number);
  if (oldDistance == 0) {
    return Failure{
        Words::Tr("subtitle %1 and subtitle %2 start at the same time, so that no line leads through both",
                  {first, second})};
  }
  if (!oldDistance || !newDistance) {
    return Failure{Words::Tr("subtitle %1 and subtitle %2 start too far from each other", {first, second})};
  }
  if (*newDistance <= 0) {
    return Failure{
        Words::Tr("subtitle %1 starts after subtitle %2, and has to do so afterwards", {second, first})};
  }
  const Ratio scale{.Numerator = *newDistance, .Denominator = *oldDistance};
  return TimeMap{.From = from, .To = a.Time, .Scale = Scaler(scale), .KeepsDelays = scale.IsOne()};
}

Result<TimeMap> MapOf(const SupStream& stream, const RetimeOptions& options) {
  if (options.Points) {
    return LineThrough(stream, *options.Points);
  }
  return TimeMap{.Scale = Scaler(options.Scale),
                 .KeepsDelays = options.Scale.IsOne(),
                 .Shift = options.Shift,
                 .IsShift = options.Scale.IsOne()};
}

/// Where a unit's delays stand.
class DelayPlan {
 public:
  void Clear(std::size_t controlOffset) {
    controlOffset_ = controlOffset;
    places_.clear();
  }
  void Begin(const ControlSequence& sequence) {
    places_.push_back(static_cast<std::size_t>(sequence.Position) - controlOffset_);
  }
  void Take(const ControlCommand& /*command*/) {}

  /// From the control offset.
  [[nodiscard]] const std::vector<std::size_t>& Places() const { return places_; }

 private:
  std::size_t controlOffset_ = 0;
  std::vector<std::size_t> places_;
};

std::uint16_t ScaledDelay(const Scaler& scale, std::uint16_t delay) {
  constexpr std::int64_t Max = std::numeric_limits<std::uint16_t>::max();
  return static_cast<std::uint16_t>(std::clamp<std::int64_t>(scale.Rounded(delay).value_or(Max), 1, Max));
}

void WriteDelays(const IndexEntry& unit, const DelayPlan& plan, const Scaler& scale, ToolRun& run) {
  const std::size_t control = unit.FileOffset(unit.ControlOffset);
  for (const std::size_t place : plan.Places()) {
    const auto delay = NumberAt(run.File(), control + place);
    if (delay != 0) {
      run.Write(control + place, NumberBytes(delay), NumberBytes(ScaledDelay(scale, delay)));
    }
  }
}

Failure Impossible(std::int64_t number, bool isBefore0) {
  const std::string subtitle = std::to_string(number);
  return {isBefore0
              ? Words::Tr("subtitle %1 would start before 0; nothing is written", {subtitle})
              : Words::Tr("subtitle %1 would start after the last time that there is; nothing is written",
                          {subtitle})};
}

}  // namespace

Result<void> HasTimeLine(const SupStream& stream, const RetimeOptions& options) {
  const Result<TimeMap> map = MapOf(stream, options);
  return map ? Result<void>() : map.Why();
}

Result<ToolResult> Retime(const SupStream& stream, const SubtitleSet& only, const RetimeOptions& options) {
  const Result<TimeMap> map = MapOf(stream, options);
  if (!map) {
    return map.Why();
  }
  ToolRun run(stream, only, map->KeepsDelays ? 1 : 2);
  PlannedWalk<DelayPlan> delays;
  std::optional<Failure> impossible;  // of the first one
  const auto moveTo = [&](std::int64_t old, const std::optional<std::int64_t>& fresh,
                          const IndexEntry& unit) {
    if (!fresh || (*fresh < 0 && *fresh != old)) [[unlikely]] {
      impossible = impossible.value_or(Impossible(run.Number(), fresh || old < map->From));
    } else {
      run.Write(unit.Offset + TimeStart, PackTime(old), PackTime(*fresh));
    }
  };
  if (map->IsShift) {
    run.ForEachPlanned(delays, [&, shift = map->Shift](std::size_t index, const IndexEntry& unit) {
      const std::int64_t old = stream.StartTime[index];
      moveTo(old, Sum(old, shift), unit);
    });
  } else {
    run.ForEachPlanned(delays, [&](std::size_t index, const IndexEntry& unit) {
      const std::int64_t old = stream.StartTime[index];
      moveTo(old, map->Of(old), unit);
      if (!map->KeepsDelays) {
        WriteDelays(unit, delays.What(), map->Scale, run);
      }
    });
  }
  if (impossible) {
    return *impossible;
  }
  return run.Finish(true);
}

}  // namespace quillmark
