#include <optional>
#include <string>
#include <vector>

#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Json.h"
#include "sup/Timecode.h"

namespace quillmark::cli {
namespace {

/// What there is to tell of one track.
struct TrackRow {
  std::int64_t Number = 0;
  std::string Id;
  std::string Language;
  std::string Name;
  std::int64_t Subtitles = 0;
  std::optional<std::int64_t> First;  ///< start in ticks; none where there is no subtitle
  std::optional<std::int64_t> Last;
  std::optional<DvdPalette> Palette;
  std::vector<std::string> Notes;
  std::string Problem;  ///< why it is no stream; empty where it is one
};

TrackRow ReadRow(std::int64_t number, Track& track, const std::string& file) {
  TrackRow row;
  row.Number = number;
  row.Id = std::move(track.Id);
  row.Language = std::move(track.Language);
  row.Name = std::move(track.Name);
  row.Palette = track.Palette;
  row.Notes = std::move(track.Notes);
  const auto loaded = IndexPrimaryStream(std::move(track.Packets), InvalidFirst::IsPassed);
  row.Problem = ResultOf(loaded, file).Reason;
  if (row.Problem.empty() && loaded->Stream.Count == 0) {
    row.Problem = Words::Tr("it holds no subtitle");
  }
  if (row.Problem.empty()) {
    row.Subtitles = loaded->Stream.Count;
    row.First = loaded->Stream.StartTime.front();
    row.Last = loaded->Stream.StartTime.back();
  }
  return row;
}

/// As palette files of red, green and blue have them, RRGGBB.
std::vector<std::string> EntryTexts(const DvdPalette& palette) {
  std::vector<std::string> texts;
  for (const Rgb colour : palette) {
    texts.push_back(PackedToHexText(colour));
  }
  return texts;
}

Json OrNull(const std::string& text) {
  return text.empty() ? Json() : Json(text);
}

Json TimeOrNull(const std::optional<std::int64_t>& ticks) {
  return ticks ? Json(*ticks) : Json();
}

Json RowObject(const TrackRow& row) {
  return {{"number", row.Number},
          {"id", row.Id},
          {"language", OrNull(row.Language)},
          {"name", OrNull(row.Name)},
          {"subtitles", row.Subtitles},
          {"first_ticks", TimeOrNull(row.First)},
          {"last_ticks", TimeOrNull(row.Last)},
          {"palette", row.Palette ? Json(EntryTexts(*row.Palette)) : Json()},
          {"notes", row.Notes},
          {"problem", OrNull(row.Problem)}};
}

std::string RowText(const TrackRow& row) {
  std::string text = std::to_string(row.Number) + "  " + (row.Language.empty() ? "--" : row.Language) + "  " +
                     Words::Tr("%n subtitle", "%n subtitles", row.Subtitles);
  if (row.First && row.Last) {
    text += "  " + FormatTimecode(*row.First) + " - " + FormatTimecode(*row.Last);
  }
  text += "  " + (row.Palette ? Words::Tr("with a palette") : Words::Tr("without a palette"));
  text += row.Name.empty() ? "" : "  " + row.Name;
  return text;
}

CommandResult ResultOf(const std::vector<TrackRow>& rows, const std::string& file) {
  for (const TrackRow& row : rows) {
    if (!row.Problem.empty()) {
      CommandResult result = Failed(file, row.Problem);
      result.JsonWritten = true;
      return result;
    }
  }
  return {};
}

}  // namespace

CommandResult Tracks(const TracksOptions& options, const Console& console) {
  std::vector<Track> tracks;
  if (CommandResult read = ReadTracks({options.File, ""}, tracks, console); !read.IsDone()) {
    return read;
  }
  std::vector<TrackRow> rows;
  rows.reserve(tracks.size());
  for (Track& track : tracks) {
    rows.push_back(ReadRow(static_cast<std::int64_t>(rows.size()) + 1, track, options.File));
  }
  if (options.Json) {
    JsonArrayWriter array(console.Out);
    for (const TrackRow& row : rows) {
      array.Add(RowObject(row));
    }
    return ResultOf(rows, options.File);
  }
  for (const TrackRow& row : rows) {
    console.Out << RowText(row) << '\n';
    for (const std::string& note : row.Notes) {
      console.Out << "   " << note << '\n';
    }
  }
  return ResultOf(rows, options.File);
}

}  // namespace quillmark::cli
