#include "render/MergeJob.h"

#include "base/Words.h"

namespace quillmark {
namespace {

using Outcome = MergedStreamEncoder::Outcome;

}  // namespace

MergeObstacle ObstacleToSecondary(const SupStream& primary) {
  if (primary.Count < 1) {
    return MergeObstacle::NoPrimary;
  }
  const bool varied = primary.Stats.MultipleColours || primary.Stats.MultipleOpacities;
  return varied ? MergeObstacle::VariedPrimary : MergeObstacle::None;
}

MergeObstacle ObstacleToMerge(const SupStream& primary, const SupStream& secondary) {
  if (primary.Count < 1) {
    return MergeObstacle::NoPrimary;
  }
  return secondary.Count < 1 ? MergeObstacle::NoSecondary : MergeObstacle::None;
}

MergeReport MergeStreams(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings,
                         FileWriter& out, const MergeSteps& steps) {
  MergeReport report;
  MergedStreamEncoder encoder(primary, secondary, settings);
  while (encoder.Prepare()) {
  }
  const std::size_t count = encoder.Count();
  if (steps.Begin) {
    steps.Begin(count);
  }
  for (std::size_t index = 0; index < count; ++index) {
    const std::int64_t number = static_cast<std::int64_t>(index) + 1;
    if (steps.Next && !steps.Next(index)) {
      report.How = MergeReport::Ending::Interrupted;
      return report;
    }
    const Outcome outcome = encoder.Encode(index);
    if (outcome == Outcome::Skipped) {
      continue;
    }
    if (steps.Done) {
      steps.Done(index, outcome, encoder);
    }
    if (outcome != Outcome::Encoded) {
      report.How = MergeReport::Ending::SubtitleFailed;
      report.IsOfSecondary = !encoder.Reader().HasPrimary();
      report.Number = static_cast<std::int64_t>(report.IsOfSecondary ? encoder.Reader().Secondary()
                                                                     : encoder.Reader().Primary()) +
                      1;
      report.Reason = ReasonOf(outcome);
      return report;
    }
    if (const auto written = out.Write(encoder.Packet()); !written) {
      report.How = MergeReport::Ending::FileFailed;
      report.Number = number;
      report.Reason = written.Reason();
      return report;
    }
    if (encoder.Packet().size() - UnitStart > MaxReadUnit) {
      report.TooLong.push_back(number);
    }
  }
  return report;
}

std::string TooLongText(const std::vector<std::int64_t>& numbers) {
  constexpr std::size_t MaxNamed = 20;
  if (numbers.empty()) {
    return {};
  }
  std::string named;
  for (std::size_t i = 0; i < numbers.size() && i < MaxNamed; ++i) {
    named += (i == 0 ? "" : ", ") + std::to_string(numbers[i]);
  }
  if (numbers.size() > MaxNamed) {
    named = Words::Tr("%1 and %2 more", {named, std::to_string(numbers.size() - MaxNamed)});
  }
  return Words::Tr("subtitle %1 is longer than %2 bytes; programs, this one included, cannot read it",
                   "subtitles %1 are longer than %2 bytes; programs, this one included, cannot read them",
                   static_cast<std::int64_t>(numbers.size()), {named, std::to_string(MaxReadUnit)});
}

}  // namespace quillmark
