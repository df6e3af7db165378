#include <cstdint>
#include <optional>
#include <string>

#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Json.h"
#include "render/StreamDiff.h"
#include "sup/Timecode.h"

namespace quillmark::cli {
namespace {

Json Number(const std::optional<std::size_t>& index) {
  return index ? Json(*index + 1) : Json();
}

Json Start(const SupStream& stream, const std::optional<std::size_t>& index) {
  return index ? Json(stream.StartTime[*index]) : Json();
}

Json PairObject(const ComparedPair& pair, const SupStream& first, const SupStream& second) {
  Json differences = Json::array();
  for (const SubtitleDifference difference : pair.Differences) {
    differences.push_back(DifferenceName(difference));
  }
  return {{"first", Number(pair.Pair.First)},
          {"second", Number(pair.Pair.Second)},
          {"first_start_ticks", Start(first, pair.Pair.First)},
          {"second_start_ticks", Start(second, pair.Pair.Second)},
          {"differences", std::move(differences)},
          {"other_pixels", pair.OtherPixels}};
}

Json TrailingObject() {
  return {{"first", nullptr},
          {"second", nullptr},
          {"first_start_ticks", nullptr},
          {"second_start_ticks", nullptr},
          {"differences", Json::array({"other_trailing_bytes"})},
          {"other_pixels", 0}};
}

std::string DifferenceText(SubtitleDifference difference, const ComparedPair& pair, const SupStream& first,
                           const SupStream& second) {
  std::string text = DifferencePhrase(difference, pair.OtherPixels);
  if (difference == SubtitleDifference::Start) {
    text += ", " + Words::Tr("from %1 to %2", {FormatTimecode(first.StartTime[*pair.Pair.First]),
                                               FormatTimecode(second.StartTime[*pair.Pair.Second])});
  }
  return text;
}

std::string NumberText(const std::optional<std::size_t>& index) {
  return index ? std::to_string(*index + 1) : "-";
}

/// "3 | 4: moved in time, ...": the numbers in the first and in the second stream.
std::string PairText(const ComparedPair& pair, const SupStream& first, const SupStream& second) {
  std::string text = NumberText(pair.Pair.First) + " | " + NumberText(pair.Pair.Second) + ": ";
  for (std::size_t i = 0; i < pair.Differences.size(); ++i) {
    text += (i == 0 ? "" : "; ") + DifferenceText(pair.Differences[i], pair, first, second);
  }
  return text;
}

std::string CountsText(const PairCounts& counts) {
  return Words::Tr("%1 the same, %2 different, %3 missing, %4 added",
                   {std::to_string(counts.Same), std::to_string(counts.Different),
                    std::to_string(counts.Missing), std::to_string(counts.Added)});
}

}  // namespace

CommandResult Diff(const DiffOptions& options, const Console& console) {
  SupStream first;
  SupStream second;
  if (CommandResult loaded = LoadStream({options.First, options.Track}, first, console); !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult loaded = LoadStream({options.Second, options.SecondTrack}, second, console);
      !loaded.IsDone()) {
    return loaded;
  }
  PairCounts counts;
  const bool sameTrailing = HaveSameTrailingBytes(first, second);
  if (options.Json) {
    JsonArrayWriter array(console.Out);
    CompareStreams(first, second, [&](const ComparedPair& pair) {
      counts.Add(pair);
      array.Add(PairObject(pair, first, second));
    });
    if (!sameTrailing) {
      array.Add(TrailingObject());
    }
  } else {
    CompareStreams(first, second, [&](const ComparedPair& pair) {
      counts.Add(pair);
      if (!pair.Differences.empty()) {
        console.Out << PairText(pair, first, second) << '\n';
      }
    });
    console.Out << (sameTrailing ? std::string() : Words::Tr("other bytes after the last subtitle") + "\n")
                << CountsText(counts) << '\n';
  }
  const bool isSame = sameTrailing && counts.AreAllSame();
  return {.Code = isSame ? ExitCode::Done : ExitCode::Failed};
}

}  // namespace quillmark::cli
