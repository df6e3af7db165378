#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/FilePath.h"
#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/ProgressBar.h"
#include "containers/Language.h"
#include "render/AuthoringProject.h"
#include "sup/ChoosePackets.h"
#include "sup/IndexedPacket.h"
#ifdef QUILLMARK_HAS_VOBSUB
#include "containers/VobSubWriter.h"
#endif

namespace quillmark::cli {
namespace {

constexpr int NtscLines = 480;
constexpr int PalLines = 576;

/// A track that goes into the new file.
struct ConvertedTrack {
  std::string File;  ///< that it comes from
  std::string Language;
  std::string Name;
  std::optional<DvdPalette> Palette;
  FrameSize Frame;
  SupStream Stream;  ///< of the chosen subtitles
};

/// Takes the subtitles out that were not chosen.
CommandResult KeepChosen(const ConvertOptions& options, const std::string& file, SupStream& stream) {
  if (options.Only == SubtitleSet::All()) {
    return {};
  }
  if (CommandResult range = CheckOnly(options.Only, file, stream); !range.IsDone()) {
    return range;
  }
  ToolResult kept = KeepPackets(stream, options.Only);
  const auto applied = ApplyEdit(stream, kept.Edit);
  return applied ? CommandResult() : Failed(file, applied.Reason());
}

CommandResult AddTracks(const ConvertOptions& options, const std::string& file, const Console& console,
                        std::vector<ConvertedTrack>& converted) {
  std::vector<Track> tracks;
  if (CommandResult read = ReadTracks({file, options.Track}, tracks, console,
                                      options.Reduces ? Colours::Reduced : Colours::Kept);
      !read.IsDone()) {
    return read;
  }
  for (Track& track : tracks) {
    for (const std::string& note : track.Notes) {
      console.Warn(file, note);
    }
    Result<LoadedStream> loaded = IndexPrimaryStream(std::move(track.Packets), InvalidFirst::IsPassed);
    if (CommandResult result = ResultOf(loaded, file); !result.IsDone()) {
      return result;
    }
    if (CommandResult kept = KeepChosen(options, file, loaded->Stream); !kept.IsDone()) {
      return kept;
    }
    converted.push_back(
        {.File = file,
         .Language = std::move(track.Language),
         .Name = std::move(track.Name),
         .Palette = track.Palette,
         .Frame = options.Frame ? FrameSize{.Height = *options.Frame} : track.Frame.value_or(FrameSize()),
         .Stream = std::move(loaded->Stream)});
  }
  return {};
}

CommandResult TakeLanguages(const ConvertOptions& options, std::vector<ConvertedTrack>& tracks) {
  if (options.Languages.size() > tracks.size()) {
    return WrongUsage(
        "", Words::Tr("there are %1 languages for %n track", "there are %1 languages for %n tracks",
                      static_cast<std::int64_t>(tracks.size()), {std::to_string(options.Languages.size())}));
  }
  for (std::size_t i = 0; i < options.Languages.size(); ++i) {
    tracks[i].Language = options.Languages[i];
  }
  return {};
}

std::optional<DvdPalette> FirstPalette(const std::vector<ConvertedTrack>& tracks) {
  for (const ConvertedTrack& track : tracks) {
    if (track.Palette) {
      return track.Palette;
    }
  }
  return std::nullopt;
}

constexpr std::int64_t WholeBar = 100;

/// `bar` is one of WholeBar. How much there is to do is what the writer says, in its own units.
Progress ShowIn(ProgressBar& bar, const Console& console) {
  return [&](std::uint64_t done, std::uint64_t of) {
    bar.Show(static_cast<std::int64_t>(of == 0 ? 0 : done * WholeBar / of));
    return !console.Interrupted();
  };
}

std::int64_t SubtitlesOf(const std::vector<ConvertedTrack>& tracks) {
  std::int64_t count = 0;
  for (const ConvertedTrack& track : tracks) {
    count += track.Stream.Count;
  }
  return count;
}

void TellWritten(std::int64_t subtitles, const std::string& files, const Console& console) {
  console.Out << Words::Tr("wrote %n subtitle to %1", "wrote %n subtitles to %1", subtitles, {files}) << '\n';
}

CommandResult WriteSup(const ConvertOptions& options, const ConvertedTrack& track, const Console& console) {
  if (console.Interrupted()) {
    return Interrupted();
  }
  CommandResult written = WriteFile(options.Out, FileOf(track.Stream));
  if (written.IsDone()) {
    TellWritten(track.Stream.Count, options.Out, console);
  }
  return written;
}

#ifdef QUILLMARK_HAS_VOBSUB
CommandResult WritePair(const ConvertOptions& options, const std::vector<ConvertedTrack>& tracks,
                        const DvdPalette& palette, const Console& console) {
  std::vector<VobSubTrack> parts;
  for (const ConvertedTrack& track : tracks) {
    parts.push_back({.Packets = FileOf(track.Stream), .Language = track.Language, .Name = track.Name});
    for (const std::string& change : ChangesInVobSub(parts.back())) {
      console.Warn(track.File, change);
    }
  }
  const auto path = PathFromUtf8(options.Out);
  ProgressBar bar(console, WholeBar);
  const auto written = WriteVobSub(path, parts,
                                   {.Palette = palette,
                                    .FrameWidth = tracks.front().Frame.Width,
                                    .FrameHeight = tracks.front().Frame.Height,
                                    .Existing = Overwriting::Allowed},
                                   ShowIn(bar, console));
  if (!written) {
    return Failed(options.Out, written.Reason());
  }
  if (*written == Completion::Cancelled) {
    return Interrupted();
  }
  bar.Clear();
  const VobSubPaths pair = VobSubPathsOf(path);
  TellWritten(SubtitlesOf(tracks),
              Words::Tr("%1 and %2", {Utf8FromPath(pair.Index), Utf8FromPath(pair.Packs)}), console);
  return {};
}
#endif

CommandResult WriteProject(const ConvertOptions& options, const ConvertedTrack& track,
                           const DvdPalette& palette, const Console& console) {
  QString list;
  if (CommandResult named = ToText(options.Out, list); !named.IsDone()) {
    return named;
  }
  ProgressBar bar(console, WholeBar);
  const auto written =
      WriteAuthoringProject(track.Stream, list,
                            {.Palette = palette,
                             .FrameHeight = track.Frame.Height <= NtscLines ? NtscLines : PalLines,
                             .Language = LanguageCode(track.Language),
                             .Existing = Overwriting::Allowed},
                            ShowIn(bar, console));
  if (!written) {
    return Failed(options.Out, written.Reason());
  }
  if (written->How == Completion::Cancelled) {
    return Interrupted();
  }
  bar.Clear();
  for (const std::string& note : written->Notes) {
    console.Warn(track.File, note);
  }
  TellWritten(written->Subtitles, options.Out, console);
  const std::int64_t leftOut = track.Stream.Count - written->Subtitles;
  return leftOut == 0
             ? CommandResult()
             : Failed(track.File, Words::Tr("%1 of %2 subtitles are left out",
                                            {std::to_string(leftOut), std::to_string(track.Stream.Count)}));
}

}  // namespace

CommandResult Convert(const ConvertOptions& options, const Console& console) {
  QString out;
  if (CommandResult named = ToText(options.Out, out); !named.IsDone()) {
    return named;
  }
  if (NameEndsIn(options.Out, ".sup") && !(options.Palette.empty() && options.Languages.empty())) {
    return WrongUsage(options.Out, options.Palette.empty() ? Words::Tr("a SUP file names no language")
                                                           : Words::Tr("a SUP file holds no palette"));
  }
  std::vector<ConvertedTrack> tracks;
  for (const std::string& file : options.Files) {
    if (CommandResult added = AddTracks(options, file, console, tracks); !added.IsDone()) {
      return added;
    }
  }
  if (CommandResult named = TakeLanguages(options, tracks); !named.IsDone()) {
    return named;
  }
  if (SubtitlesOf(tracks) == 0) {
    return Failed(options.Files.front(), Words::Tr("it holds no subtitle"));
  }
  DvdPalette palette;
  if (CommandResult loaded = LoadPalette(options.Palette, FirstPalette(tracks), palette); !loaded.IsDone()) {
    return loaded;
  }
#ifdef QUILLMARK_HAS_VOBSUB
  if (NameEndsIn(options.Out, ".idx")) {
    return WritePair(options, tracks, palette, console);
  }
#endif
  if (tracks.size() != 1) {
    return WrongUsage(options.Out,
                      Words::Tr("it takes one track, and there are %1; --track names one of a file",
                                {std::to_string(tracks.size())}));
  }
  return NameEndsIn(options.Out, ".xml") ? WriteProject(options, tracks.front(), palette, console)
                                         : WriteSup(options, tracks.front(), console);
}

}  // namespace quillmark::cli
