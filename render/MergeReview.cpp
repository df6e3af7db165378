#include "render/MergeReview.h"

#include <algorithm>
#include <limits>
#include <span>
#include <utility>

#include "base/Ratio.h"
#include "sup/PacketCheck.h"
#include "sup/SupFormat.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// Packets that room is made for at once: copying a hundred thousand pairs takes as long as tens of merges.
constexpr std::size_t MaxReserved = 1'000'000;

std::size_t CountOf(const SupStream& stream) {
  return static_cast<std::size_t>(std::max(stream.Count, 0));
}

bool IsCutByFile(const SupStream& stream, std::size_t index) {
  return std::int64_t{stream.PacketOffset[index]} + UnitStart + UnitLength(stream.SpuSize[index]) >
         stream.FileLength;
}

/// The first thing for which the packet's subtitle cannot be shown.
StreamProblemCode WhyUnshowable(const SupStream& stream, std::size_t index) {
  const std::span<const std::uint8_t> bytes = stream.RawBytes;
  const auto file = bytes.first(std::min(bytes.size(), static_cast<std::size_t>(stream.FileLength)));
  const auto packet = ReadPacket(file, static_cast<std::size_t>(stream.PacketOffset[index]), 0);
  std::optional<StreamProblemCode> why;
  if (packet) {
    CheckPacket(*packet, {}, [&](const StreamProblem& problem) {
      if (!why && SeverityOf(problem.Code) == ProblemSeverity::CannotBeShown) {
        why = problem.Code;
      }
    });
  }
  return why.value_or(StreamProblemCode::ControlUnfinished);
}

std::optional<StreamProblemCode> DamageOf(const SupStream& stream, std::size_t index,
                                          const SpuControl& control) {
  const bool isSound =
      control.IsValid() && control.Width() >= 1 && control.Height() >= 1 && !IsCutByFile(stream, index);
  return isSound ? std::nullopt : std::optional(WhyUnshowable(stream, index));
}

}  // namespace

std::int64_t MergedPair::OverlapMs() const {
  constexpr std::int64_t TicksPerMs = TicksPerSecond / 1000;
  const std::int64_t ticks = std::max<std::int64_t>(OverlapTicks, 0);
  return ticks / TicksPerMs + (ticks % TicksPerMs >= TicksPerMs / 2 ? 1 : 0);
}

DisplayInterval MergedPair::Planned() const {
  constexpr std::int64_t LastTime = std::numeric_limits<std::int64_t>::max();
  return {.Start = StartTicks,
          .End = Sum(StartTicks, Delay * TicksPerDelayUnit).value_or(LastTime),
          .Delay = Delay,
          .First = HasPrimary ? std::optional(Primary) : std::nullopt,
          .Second = HasSecondary ? std::optional(Secondary) : std::nullopt};
}

MergeReviewer::MergeReviewer(const SupStream& primary, const SupStream& secondary,
                             const MergeSettings& settings, std::shared_ptr<SplitPlan> plan)
    : primary_(primary),
      secondary_(secondary),
      mode_(settings.Mode),
      encoder_(primary, secondary, settings, std::move(plan)),
      isShown_(CountOf(secondary)) {}

bool MergeReviewer::Step() {
  if (Prepare()) {
    return true;
  }
  if (next_ >= Count()) {
    return false;
  }
  if (next_ == 0) {
    pairs_.reserve(std::min(Count(), MaxReserved));
  }
  auto pair = LookAt(next_);
  ++next_;
  if (pair) {
    if (pair->Outcome == MergeOutcome::Encoded && pair->HasSecondary && pair->Secondary < isShown_.size()) {
      pair->IsUsedBefore = mode_ == MergeMode::Pairs && isShown_[pair->Secondary];
      isShown_[pair->Secondary] = true;
    }
    pairs_.push_back(*pair);
  }
  return true;
}

SubtitleSet MergeReviewer::LeftOut() const {
  SubtitleSet numbers;
  for (std::size_t index = 0; index < isShown_.size(); ++index) {
    if (!isShown_[index]) {
      numbers.Append(static_cast<std::int64_t>(index) + 1);
    }
  }
  return numbers;
}

std::optional<MergedPair> MergeReviewer::LookAt(std::size_t index) {
  MergedPair pair;
  pair.Outcome = encoder_.EncodeAndCount(index, pair.Counts);
  if (pair.Outcome == MergeOutcome::Skipped) {
    return std::nullopt;
  }
  const MergedInputReader& reader = encoder_.Reader();
  pair.HasPrimary = reader.HasPrimary();
  pair.HasSecondary = reader.HasSecondary();
  pair.Primary = reader.Primary();
  pair.Secondary = reader.Secondary();
  pair.StartTicks = reader.StartTicks();
  pair.OverlapTicks = reader.OverlapTicks();
  if (pair.HasPrimary) {
    pair.PrimaryDamage = DamageOf(primary_, pair.Primary, reader.PrimaryControl());
  }
  if (pair.HasSecondary) {
    pair.SecondaryDamage = DamageOf(secondary_, pair.Secondary, reader.SecondaryControl());
  }
  if (mode_ == MergeMode::Split) {
    pair.Delay = reader.Planned().Delay;
  }
  if (pair.HasUnit()) {
    pair.Delay = reader.Control().Delay;
    pair.Unit = encoder_.Facts();
  }
  return pair;
}

}  // namespace quillmark
