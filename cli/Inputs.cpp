#include "cli/Inputs.h"

#include <algorithm>
#include <utility>

#include "base/FilePath.h"
#include "base/Words.h"
#include "files/ReplaceFile.h"
#include "palette/PaletteFile.h"
#ifdef QUILLMARK_HAS_AUTHORING
#include "containers/AuthoringList.h"
#endif

namespace quillmark::cli {
CommandResult ResultOf(const Result<LoadedStream>& loaded, const std::string& file) {
  if (!loaded) {
    return Failed(file, loaded.Reason());
  }
  if (loaded->LostSignature) {
    return Failed(file, Words::Tr("No SUP signature found; 'quillmark-cli check' tells where"));
  }
  return {};
}

namespace {

ReadContainerResult ReadAny(const std::filesystem::path& path, const Progress& progress,
                            [[maybe_unused]] Colours colours) {
#ifdef QUILLMARK_HAS_AUTHORING
  if (colours == Colours::Reduced && FormatOf(path).Id == "authoring-list") {
    return ReadAuthoringList(path, {.Reduce = true}, progress);
  }
#endif
  return ReadStreams(path, progress);
}

CommandResult ReadFile(const std::string& file, Container& container, const Console& console,
                       Colours colours) {
  auto read = ReadAny(
      PathFromUtf8(file),
      [&console](std::uint64_t /*done*/, std::uint64_t /*length*/) { return !console.Interrupted(); },
      colours);
  if (!read) {
    return Failed(file, read.Reason());
  }
  if (!*read) {
    return Interrupted();
  }
  container = std::move(**read);
  for (const std::string& note : container.Notes) {
    console.Warn(file, note);
  }
  return {};
}

}  // namespace

CommandResult ReadTracks(const StreamSource& source, std::vector<Track>& tracks, const Console& console,
                         Colours colours) {
  Container container;
  if (CommandResult read = ReadFile(source.File, container, console, colours); !read.IsDone()) {
    return read;
  }
  if (source.Track.empty()) {
    tracks = std::move(container.Tracks);
    return {};
  }
  const auto found = FindTrack(container, source.Track);
  if (!found) {
    return Failed(source.File, found.Reason());
  }
  tracks.push_back(std::move(container.Tracks[*found]));
  return {};
}

CommandResult ReadStream(const StreamSource& source, Track& track, const Console& console) {
  Container container;
  if (CommandResult read = ReadTracks(source, container.Tracks, console); !read.IsDone()) {
    return read;
  }
  if (const auto only = FindTrack(container, ""); !only) {
    return WrongUsage(source.File, Words::Tr("%1; --track names one", {only.Reason()}));
  }
  track = std::move(container.Tracks.front());
  for (const std::string& note : track.Notes) {
    console.Warn(source.File, note);
  }
  return {};
}

CommandResult LoadStream(const StreamSource& source, SupStream& stream, const Console& console,
                         std::optional<DvdPalette>* palette) {
  Track track;
  if (CommandResult read = ReadStream(source, track, console); !read.IsDone()) {
    return read;
  }
  Result<LoadedStream> loaded = IndexPrimaryStream(std::move(track.Packets), InvalidFirst::IsPassed);
  CommandResult result = ResultOf(loaded, source.File);
  if (result.IsDone()) {
    stream = std::move(loaded->Stream);
    if (palette != nullptr) {
      *palette = track.Palette;
    }
  }
  return result;
}

std::optional<SubtitleDescription> SubtitleReader::Read(std::size_t index) {
  return DescribeSubtitle(UnitOf(stream_, index, unit_));
}

CommandResult CheckOnly(const SubtitleSet& only, const std::string& file, const SupStream& stream) {
  const auto outside = only.Outside(stream.Count);
  return outside ? WrongUsage(file, Words::Tr("there is no subtitle %1: it has %2",
                                              {std::to_string(*outside), std::to_string(stream.Count)}))
                 : CommandResult();
}

std::string SubtitleText(std::int64_t number) {
  return Words::Tr("subtitle %1", {std::to_string(number)});
}

CheckProfile ProfileOf(std::string_view name) {
  return name == "player" ? CheckProfile::Player : CheckProfile::Spec;
}

CommandResult LoadPalette(const std::string& file, const std::optional<DvdPalette>& ofStream,
                          DvdPalette& palette) {
  palette = ofStream.value_or(StartUpPalette);
  if (file.empty()) {
    return {};
  }
  const auto packed = LoadPaletteFile(file);
  if (!packed) {
    return Failed(file, packed.Reason());
  }
  palette = ToRgb(*packed);
  return {};
}

CommandResult ToText(const std::string& file, QString& text) {
  text = QString::fromStdString(file);
  return text.toStdString() == file ? CommandResult() : Failed(file, Words::Tr("the name is not in UTF-8"));
}

bool NameEndsIn(std::string_view name, std::string_view ending) {
  if (name.size() < ending.size()) {
    return false;
  }
  return std::ranges::equal(name.substr(name.size() - ending.size()), ending, [](char a, char b) {
    return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
  });
}

CommandResult WriteFile(const std::string& file, std::span<const std::uint8_t> bytes) {
  QString path;
  if (CommandResult named = ToText(file, path); !named.IsDone()) {
    return named;
  }
  const auto written = ReplaceFile(path, bytes);
  return written ? CommandResult() : Failed(file, written.Reason());
}

}  // namespace quillmark::cli
