#include <cstdint>
#include <string>
#include <utility>

#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/ProgressBar.h"
#include "files/ReplaceFile.h"
#include "render/Composition.h"
#include "render/Exporter.h"

namespace quillmark::cli {
namespace {

CommandResult FindPaths(const ExportOptions& options, ExportPaths& paths) {
  QString name;
  CommandResult named = ToText(options.Base.empty() ? options.File : options.Base, name);
  paths = options.Base.empty() ? ExportPathsFor(name) : ExportPathsForBase(name);
  return named;
}

/// What became of the subtitles.
struct Tally {
  std::int64_t Unconverted = 0;
  std::int64_t WithoutPicture = 0;
  bool Interrupted = false;
};

/// Hands the exporter every subtitle that has a picture, and names the others.
Tally ExportAll(const ExportOptions& options, const SupStream& stream, const DvdPalette& palette,
                Exporter& exporter, const Console& console) {
  Tally tally;
  SubtitleReader reader(stream);
  std::int64_t done = 0;
  ProgressBar progress(console, options.Only.SizeWithin(stream.Count));
  const auto leaveOut = [&](const std::string& text, std::int64_t& count) {
    progress.Clear();
    console.Warn(options.File, text);
    ++count;
  };
  options.Only.ForEachIndex(stream.PacketOffset.size(), [&](std::size_t index) {
    tally.Interrupted = tally.Interrupted || console.Interrupted();
    if (tally.Interrupted) {
      return;
    }
    progress.Show(done++);
    const std::string number = std::to_string(index + 1);
    const auto description = reader.Read(index);
    if (!description) {
      leaveOut(Words::Tr("subtitle %1 cannot be converted", {number}), tally.Unconverted);
    } else if (!HasPixels(description->Control)) {
      leaveOut(Words::Tr("subtitle %1 has an area without pixels", {number}), tally.WithoutPicture);
    } else {
      cBitmap picture;
      DecodePicture(reader.Unit(), description->Control, MakeCodeColours(palette, description->Control),
                    picture);
      exporter.Add(*description, std::move(picture));
    }
  });
  exporter.Flush();
  return tally;
}

CommandResult FailedPictures(const ExportFailures& failures) {
  return Failed(failures.FirstPath.toStdString(),
                failures.Count == 1
                    ? failures.FirstReason
                    : Words::Tr("%1 (%2 pictures could not be written; this is the first one)",
                                {failures.FirstReason, std::to_string(failures.Count)}));
}

CommandResult ExportResult(const Tally& tally, std::int64_t count, const std::string& file) {
  const std::string all = std::to_string(count);
  std::string reason;
  if (tally.Unconverted > 0) {
    reason = Words::Tr("%1 of %2 subtitles cannot be converted", {std::to_string(tally.Unconverted), all});
  }
  if (tally.WithoutPicture > 0) {
    reason += (reason.empty() ? "" : ", ") + Words::Tr("%1 of %2 subtitles have an area without pixels",
                                                       {std::to_string(tally.WithoutPicture), all});
  }
  return reason.empty() ? CommandResult() : Failed(file, reason);
}

CommandResult WritePictures(const ExportOptions& options, const SupStream& stream, const DvdPalette& palette,
                            const ExportPaths& paths, const Console& console) {
  Exporter exporter(paths, Exporter::List::Replaced);
  const Tally tally = ExportAll(options, stream, palette, exporter, console);
  if (exporter.PictureFailures().Count > 0) {
    return FailedPictures(exporter.PictureFailures());
  }
  if (tally.Interrupted) {
    return Interrupted();
  }
  const std::string list = paths.List.toStdString();
  if (const auto written = exporter.WriteList(); !written) {
    return Failed(list, written.Reason());
  }
  console.Out << Words::Tr("wrote %1 pictures to %2, their list to %3",
                           {std::to_string(exporter.Pictures()), paths.Folder.toStdString(), list})
              << '\n';
  return ExportResult(tally, options.Only.SizeWithin(stream.Count), options.File);
}

}  // namespace

CommandResult Export(const ExportOptions& options, const Console& console) {
  SupStream stream;
  std::optional<DvdPalette> ofTrack;
  DvdPalette palette;
  ExportPaths paths;
  if (CommandResult loaded = LoadStream({options.File, options.Track}, stream, console, &ofTrack);
      !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult range = CheckOnly(options.Only, options.File, stream); !range.IsDone()) {
    return range;
  }
  if (CommandResult loaded = LoadPalette(options.Palette, ofTrack, palette); !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult named = FindPaths(options, paths); !named.IsDone()) {
    return named;
  }
  if (console.Interrupted()) {
    return Interrupted();
  }
  if (const auto made = MakeFolder(paths.Folder); !made) {
    return Failed(paths.Folder.toStdString(), Words::Tr("the folder cannot be created: %1", {made.Reason()}));
  }
  return WritePictures(options, stream, palette, paths, console);
}

}  // namespace quillmark::cli
