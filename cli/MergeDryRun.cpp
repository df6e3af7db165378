#include "cli/MergeDryRun.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "base/Ratio.h"
#include "base/Words.h"
#include "cli/Inputs.h"
#include "cli/Json.h"
#include "cli/ProgressBar.h"
#include "render/MergeJob.h"
#include "render/MergeProblem.h"
#include "render/MergeReview.h"
#include "sup/SupFormat.h"
#include "sup/Timecode.h"

namespace quillmark::cli {
namespace {

std::int64_t NumberOf(std::size_t index) {
  return static_cast<std::int64_t>(index) + 1;
}

/// Null for a subtitle that the packet does not show.
Json NumberOrNull(bool isShown, std::size_t index) {
  return isShown ? Json(NumberOf(index)) : Json();
}

constexpr std::int64_t TicksPerMs = TicksPerSecond / 1000;

std::int64_t EndTicks(const MergedPair& pair) {
  return Sum(pair.StartTicks, pair.Delay * TicksPerDelayUnit)
      .value_or(std::numeric_limits<std::int64_t>::max());
}

Json MergeProblemObjects(const MergedPair& pair) {
  Json objects = Json::array();
  for (const MergeProblem& problem : ProblemsOf(pair)) {
    objects.push_back({{"code", MergeProblemName(problem.Kind)},
                       {"message", MergeProblemMessage(problem)},
                       {"severity", SeverityName(SeverityOf(problem.Kind))}});
  }
  return objects;
}

Json MergedPairObject(const MergedPair& pair) {
  const MergedCounts& counts = pair.Counts;
  const bool isRecoloured = counts.Recoloured > 0;
  return {{"primary", NumberOrNull(pair.HasPrimary, pair.Primary)},
          {"secondary", NumberOrNull(pair.HasSecondary, pair.Secondary)},
          {"start_ticks", pair.StartTicks},
          {"end_ticks", pair.HasUnit() ? Json(EndTicks(pair)) : Json()},
          {"overlap_ms", pair.OverlapMs()},
          {"overlap_ticks", std::max<std::int64_t>(pair.OverlapTicks, 0)},
          {"covered_pixels", counts.Covered},
          {"clipped_pixels", pair.ClippedPixels()},
          {"primary_clipped_pixels", counts.Primary.Total()},
          {"primary_clipped_rows", counts.Primary.Rows},
          {"secondary_clipped_pixels", counts.Secondary.Total()},
          {"secondary_clipped_rows", counts.Secondary.Rows},
          {"recoloured_pixels", counts.Recoloured},
          {"recoloured_by", isRecoloured ? Json(counts.FurthestOff) : Json()},
          {"recoloured_code", isRecoloured ? Json(counts.FurthestCode) : Json()},
          {"unit_bytes", pair.HasUnit() ? Json(pair.Unit.Size) : Json()},
          {"problems", MergeProblemObjects(pair)}};
}

/// Null for a code that has what the primary gives it.
Json NibbleObjects(const ChosenNibbles& nibbles) {
  Json objects = Json::array();
  for (const auto& nibble : nibbles) {
    objects.push_back(nibble ? Json(*nibble) : Json());
  }
  return objects;
}

void WriteReviewJson(const MergeReviewer& review, const MergeSettings& settings, const MergeOptions& options,
                     const CommandResult& result, const Console& console) {
  std::string head = JsonText({{"file", options.Primary},
                               {"second_file", options.Secondary},
                               {"out", nullptr},
                               {"mode", settings.Mode == MergeMode::Split ? "split" : "pairs"},
                               {"join_ms", static_cast<double>(settings.JoinTicks) / TicksPerMs},
                               {"y_offset", settings.YOffset},
                               {"frame", settings.FrameHeight},
                               {"secondary_codes", settings.SecondaryCodes},
                               {"colours", NibbleObjects(settings.Colours)},
                               {"opacities", NibbleObjects(settings.Contrasts)},
                               {"error", result.IsDone() ? Json() : Json(result.Text())}});
  head.back() = ',';  // the object goes on
  console.Out << head << "\n\"pairs\": ";
  {
    JsonArrayWriter array(console.Out);
    for (const MergedPair& pair : review.Pairs()) {
      array.Add(MergedPairObject(pair));
    }
  }
  Json leftOut = Json::array();
  review.LeftOut().ForEachIndex(review.SecondaryCount(),
                                [&](std::size_t index) { leftOut.push_back(NumberOf(index)); });
  console.Out << ",\"left_out\": " << JsonText(leftOut) << "}\n";
}

/// "3 + 7: 1960 ms together", or "- + 7: alone".
std::string ShownText(const MergedPair& pair) {
  const std::string primary = pair.HasPrimary ? std::to_string(NumberOf(pair.Primary)) : "-";
  const std::string secondary = pair.HasSecondary ? std::to_string(NumberOf(pair.Secondary)) : "-";
  const bool isAlone = !pair.HasPrimary || !pair.HasSecondary;
  return primary + " + " + secondary + ": " +
         (isAlone ? Words::Tr("alone") : Words::Tr("%1 ms together", {std::to_string(pair.OverlapMs())}));
}

/// "3 + 7: 1960 ms together, 2345 bytes; ... [covered]".
std::string MergedPairText(const MergedPair& pair) {
  std::string text = ShownText(pair);
  if (pair.HasUnit()) {
    text += ", " + Words::Tr("%1 bytes", {std::to_string(pair.Unit.Size)});
  }
  for (const MergeProblem& problem : ProblemsOf(pair)) {
    text += "; " + MergeProblemMessage(problem) + " [" + std::string(MergeProblemName(problem.Kind)) + "]";
  }
  return text;
}

void WriteReviewText(const MergeReviewer& review, const MergeSettings& settings, const MergeOptions& options,
                     const Console& console) {
  MergeReviewSummary summary;
  for (const MergedPair& pair : review.Pairs()) {
    summary.Add(pair);
  }
  const SubtitleSet leftOut = review.LeftOut();
  console.Out << Words::Tr("y-offset %1, frame 720x%2",
                           {std::to_string(settings.YOffset), std::to_string(settings.FrameHeight)})
              << '\n'
              << SummaryText(summary) << '\n'
              << Words::Tr("pixels: %1 covered, %2 clipped, %3 recoloured",
                           {std::to_string(summary.Covered), std::to_string(summary.Clipped),
                            std::to_string(summary.Recoloured)})
              << '\n'
              << Words::Tr("left out of %1: %2",
                           {options.Secondary, leftOut.IsEmpty() ? Words::Tr("none") : leftOut.Text()})
              << '\n';
  for (const MergedPair& pair : review.Pairs()) {
    console.Out << MergedPairText(pair) << '\n';
  }
}

/// How the merge would end, which stops at the first subtitle that cannot be merged.
CommandResult MergeEnding(const std::vector<MergedPair>& pairs, const MergeOptions& options) {
  std::vector<std::int64_t> tooLong;
  for (std::size_t packet = 0; packet < pairs.size(); ++packet) {
    const MergedPair& pair = pairs[packet];
    if (pair.Outcome != MergeOutcome::Encoded) {
      const std::size_t failed = pair.HasPrimary ? pair.Primary : pair.Secondary;
      return Failed(pair.HasPrimary ? options.Primary : options.Secondary,
                    SubtitleText(NumberOf(failed)) + ": " + ReasonOf(pair.Outcome));
    }
    if (pair.Unit.Size > MaxReadUnit) {
      tooLong.push_back(NumberOf(options.Splits ? packet : pair.Primary));
    }
  }
  if (tooLong.empty()) {
    return {};
  }
  return Failed(options.Primary, options.Splits ? Words::Tr("of the new stream, %1", {TooLongText(tooLong)})
                                                : TooLongText(tooLong));
}

}  // namespace

CommandResult ReviewMerge(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings,
                          const MergeOptions& options, const Console& console) {
  MergeReviewer review(primary, secondary, settings);
  while (review.Prepare()) {
  }
  {
    ProgressBar progress(console, static_cast<std::int64_t>(review.Count()));
    while (review.Step()) {
      progress.Show(static_cast<std::int64_t>(review.Looked()));
      if (console.Interrupted()) {
        return Interrupted();
      }
    }
  }
  CommandResult result = MergeEnding(review.Pairs(), options);
  if (options.Json) {
    WriteReviewJson(review, settings, options, result, console);
    result.JsonWritten = true;
  } else {
    WriteReviewText(review, settings, options, console);
  }
  return result;
}

}  // namespace quillmark::cli
