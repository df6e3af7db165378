#include <algorithm>

#include "base/FilePath.h"
#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Json.h"
#include "render/SubtitleDescription.h"
#include "sup/StreamReport.h"

namespace quillmark::cli {
namespace {

/// The palette entries, or contrasts, that each pixel code uses: columns `first` to `first` + 3 of the table.
Json UsedValues(const SupStreamStats& stats, std::size_t first) {
  Json codes = Json::array();
  for (std::size_t column = first; column < first + 4; ++column) {
    Json used = Json::array();
    for (std::size_t row = 0; row < stats.Usage.size(); ++row) {
      if (stats.Usage[row][column] == SupStreamStats::UsedCell) {
        used.push_back(row);
      }
    }
    codes.push_back(std::move(used));
  }
  return codes;
}

Json ReportObject(const SupStream& stream) {
  const SupStreamStats& stats = stream.Stats;
  return {{"found", stream.Count},
          {"parse_errors", stats.ParseErrors},
          {"max_width", stats.MaxWidth},
          {"min_x", stats.MinX},
          {"max_height", stats.MaxHeight},
          {"min_y", stats.MinY},
          {"max_spu_size", stats.MaxSpuSize},
          {"first_timecode", stats.FirstTimecode()},
          {"last_timecode", stats.LastTimecode()},
          {"max_duration_ms", stats.MaxDurationMs},
          {"untimed", stats.HasUntimed},
          {"colours", UsedValues(stats, 0)},
          {"opacities", UsedValues(stats, 4)},
          {"multiple_colours", stats.MultipleColours},
          {"multiple_opacities", stats.MultipleOpacities}};
}

/// A SUP file is read piece by piece.
CommandResult IndexForReport(const StreamSource& source, Result<LoadedStream>& loaded,
                             const Console& console) {
  const auto path = PathFromUtf8(source.File);
  if (IsSupFile(path) && source.Track.empty()) {
    loaded = IndexStreamFile(path);
    return {};
  }
  Track track;
  CommandResult read = ReadStream(source, track, console);
  loaded = IndexPrimaryStream(std::move(track.Packets));
  return read;
}

}  // namespace

CommandResult Report(const ReportOptions& options, const Console& console) {
  Result<LoadedStream> loaded = Failure{};
  if (CommandResult read = IndexForReport({options.File, options.Track}, loaded, console); !read.IsDone()) {
    return read;
  }
  if (CommandResult result = ResultOf(loaded, options.File); !result.IsDone()) {
    return result;
  }
  const SupStream& stream = loaded->Stream;
  // The window shows its report all the same, of the one packet up to which it indexed.
  CommandResult result = loaded->FirstIsInvalid
                             ? Failed(options.File, Words::Tr("Error converting subtitle!"))
                             : CommandResult();
  if (options.Json) {
    Json report = ReportObject(stream);
    if (!result.IsDone()) {
      report["error"] = result.Text();
    }
    WriteJson(console.Out, report);
    console.Out << '\n';
    result.JsonWritten = true;
  } else {
    std::string text = PrimaryReport(stream);
    std::erase(text, '\r');
    console.Out << text;
  }
  return result;
}

}  // namespace quillmark::cli
