#include "render/MergeReview.h"

#include <algorithm>
#include <span>

#include "sup/ChooseSecondary.h"
#include "sup/PacketCheck.h"
#include "sup/SupFormat.h"

namespace quillmark {
namespace {

/// Pairs that room is made for at once: copying a hundred thousand of them takes as long as tens of merges.
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

MergeReviewer::MergeReviewer(const SupStream& primary, const SupStream& secondary,
                             const MergeSettings& settings)
    : primary_(primary),
      secondary_(secondary),
      encoder_(primary, secondary, settings),
      count_(CountOf(primary)),
      isShown_(CountOf(secondary)) {
  pairs_.reserve(std::min(count_, MaxReserved));
}

bool MergeReviewer::Step() {
  if (next_ >= count_) {
    return false;
  }
  auto pair = LookAt(next_);
  ++next_;
  if (pair) {
    if (pair->Outcome == MergeOutcome::Encoded && pair->Secondary < isShown_.size()) {
      pair->IsUsedBefore = isShown_[pair->Secondary];
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
  pair.Primary = index;
  pair.Secondary = encoder_.Secondary();
  pair.OverlapTicks = TicksTogether(primary_, index, secondary_, pair.Secondary);
  pair.PrimaryDamage = DamageOf(primary_, index, encoder_.PrimaryControl());
  pair.SecondaryDamage = DamageOf(secondary_, pair.Secondary, encoder_.SecondaryControl());
  if (pair.HasUnit()) {
    pair.Unit = encoder_.Facts();
  }
  return pair;
}

}  // namespace quillmark
