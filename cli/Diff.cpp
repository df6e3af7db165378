#include <cstdint>
#include <optional>
#include <string>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Json.h"
#include "render/StreamDiff.h"
#include "sup/Timecode.h"

namespace quillmark::cli {
namespace {

/// The exit code 1 is left to streams that differ.
CommandResult LoadToCompare(const std::string& file, SupStream& stream) {
  CommandResult loaded = LoadStream(file, stream);
  if (!loaded.IsDone()) {
    loaded.Code = ExitCode::WrongUsage;
  }
  return loaded;
}

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
  switch (difference) {
    case SubtitleDifference::Missing:
      return "missing";
    case SubtitleDifference::Added:
      return "added";
    case SubtitleDifference::Validity:
      return "only one of the two can be shown";
    case SubtitleDifference::Start:
      return "moved in time, from " + FormatTimecode(first.StartTime[*pair.Pair.First]) + " to " +
             FormatTimecode(second.StartTime[*pair.Pair.Second]);
    case SubtitleDifference::Duration:
      return "other duration";
    case SubtitleDifference::Place:
      return "moved in place";
    case SubtitleDifference::Size:
      return "other size";
    case SubtitleDifference::Colours:
      return "other colours";
    case SubtitleDifference::Opacities:
      return "other opacities";
    case SubtitleDifference::Forced:
      return "other forced flag";
    case SubtitleDifference::Pixels:
      return std::to_string(pair.OtherPixels) + (pair.OtherPixels == 1 ? " other pixel" : " other pixels");
    case SubtitleDifference::Bytes:
      return "the same, otherwise written";
  }
  return "";
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

struct Counts {
  std::int64_t Same = 0;
  std::int64_t Different = 0;
  std::int64_t Missing = 0;
  std::int64_t Added = 0;

  void Add(const ComparedPair& pair) {
    ++(!pair.Pair.Second ? Missing : !pair.Pair.First ? Added : pair.Differences.empty() ? Same : Different);
  }
  [[nodiscard]] std::string Text() const {
    return std::to_string(Same) + " the same, " + std::to_string(Different) + " different, " +
           std::to_string(Missing) + " missing, " + std::to_string(Added) + " added";
  }
};

}  // namespace

CommandResult Diff(const DiffOptions& options, const Console& console) {
  SupStream first;
  SupStream second;
  if (CommandResult loaded = LoadToCompare(options.First, first); !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult loaded = LoadToCompare(options.Second, second); !loaded.IsDone()) {
    return loaded;
  }
  Counts counts;
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
    console.Out << (sameTrailing ? "" : "other bytes after the last subtitle\n") << counts.Text() << '\n';
  }
  const bool isSame = sameTrailing && counts.Different + counts.Missing + counts.Added == 0;
  return {.Code = isSame ? ExitCode::Done : ExitCode::Failed};
}

}  // namespace quillmark::cli
