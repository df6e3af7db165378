#include "containers/Container.h"

#include <algorithm>
#include <array>
#include <new>
#include <span>
#include <utility>

#include "base/AsciiCase.h"
#include "base/FilePath.h"
#include "base/Words.h"
#include "containers/ByteSource.h"
#include "containers/Language.h"
#include "sup/StreamLoader.h"
#include "sup/SupFormat.h"
#ifdef QUILLMARK_HAS_VOBSUB
#include "containers/VobSub.h"
#endif
#ifdef QUILLMARK_HAS_MATROSKA
#include "containers/Matroska.h"
#endif
#ifdef QUILLMARK_HAS_PROGRAM_STREAM
#include "containers/ProgramStream.h"
#endif
#ifdef QUILLMARK_HAS_AUTHORING
#include "containers/AuthoringList.h"
#endif

namespace quillmark {
namespace {

bool StartsLikeSup(std::string_view head) {
  return head.starts_with("SP");
}

ReadContainerResult ReadSupAsItIs(const std::filesystem::path& path) {
  auto file = ReadStreamFile(path);
  if (!file) {
    return file.Why();
  }
  Container container;
  container.Tracks.push_back({.Id = "1", .Packets = std::move(*file)});
  return std::optional(std::move(container));
}

ReadContainerResult ReadSup(const std::filesystem::path& path, const Progress& /*progress*/) {
  auto read = ReadSupAsItIs(path);
  if (read && !StartsWithSignature((*read)->Tracks.front().Packets)) {
    return Failure{Words::Tr("No SUP signature found")};
  }
  return read;
}

std::string HeadOf(const std::filesystem::path& path) {
  const auto source = OpenFileSource(path);
  if (!source) {
    return {};
  }
  std::array<std::uint8_t, 256> head = {};
  const auto found = (*source)->ReadAt(0, head);
  return found ? std::string(head.begin(), head.begin() + static_cast<std::ptrdiff_t>(*found))
               : std::string();
}

ReadContainerResult ReadWithinMemory(const ContainerFormat& format, const std::filesystem::path& path,
                                     const Progress& progress) {
  try {
    return format.Read(path, progress);
  } catch (const std::bad_alloc&) {
    return Failure{Words::Tr("there is not enough memory for it")};
  }
}

/// What a file that could not be read may be in truth.
std::string OtherKindText(const ContainerFormat& format, const std::filesystem::path& path) {
  const std::string head = HeadOf(path);
  for (const ContainerFormat& other : ContainerFormats()) {
    // The .sub of a pair is a program stream.
    if (&other != &format && format.Id != "vobsub" && other.StartsLike(head)) {
      return "; " + Words::Tr("it starts as %1 do", {Words::Tr(other.Name)});
    }
  }
  return {};
}

/// "1 (en), 2 (de), 3"
std::string TrackNames(const Container& container) {
  std::string names;
  for (std::size_t i = 0; i < container.Tracks.size(); ++i) {
    names += (i == 0 ? "" : ", ") + std::to_string(i + 1);
    if (!container.Tracks[i].Language.empty()) {
      names += " (" + container.Tracks[i].Language + ")";
    }
  }
  return names;
}

}  // namespace

const std::vector<ContainerFormat>& ContainerFormats() {
  static const std::vector<ContainerFormat> Formats = {
      {.Id = "sup",
       .Name = Words::Mark("SUP streams"),
       .Endings = {".sup"},
       .StartsLike = StartsLikeSup,
       .Read = ReadSup},
#ifdef QUILLMARK_HAS_VOBSUB
      {.Id = "vobsub",
       .Name = Words::Mark("VobSub pairs"),
       .Endings = {".idx", ".sub"},
       .StartsLike = StartsLikeVobSub,
       .Read = ReadVobSub},
#endif
#ifdef QUILLMARK_HAS_MATROSKA
      {.Id = "matroska",
       .Name = Words::Mark("Matroska files"),
       .Endings = {".mkv", ".mks"},
       .StartsLike = StartsLikeMatroska,
       .Read = ReadMatroska},
#endif
#ifdef QUILLMARK_HAS_PROGRAM_STREAM
      {.Id = "program-stream",
       .Name = Words::Mark("Program streams"),
       .Endings = {".vob", ".mpg", ".m2p"},
       .StartsLike = StartsLikeProgramStream,
       .Read = ReadProgramStream},
#endif
#ifdef QUILLMARK_HAS_AUTHORING
      {.Id = "authoring-list",
       .Name = Words::Mark("Authoring lists"),
       .Endings = {".xml"},
       .StartsLike = StartsLikeAuthoringList,
       .Read = ReadAuthoringList},
#endif
  };
  return Formats;
}

const ContainerFormat& FormatOf(const std::filesystem::path& path) {
  const auto& formats = ContainerFormats();
  const std::string head = HeadOf(path);
  if (StartsLikeSup(head)) {
    return formats.front();
  }
  const std::string ending = LowerAscii(Utf8FromPath(path.extension()));
  for (const ContainerFormat& format : formats) {
    if (std::ranges::find(format.Endings, ending) != format.Endings.end()) {
      return format;
    }
  }
  for (const ContainerFormat& format : formats) {
    if (format.StartsLike(head)) {
      return format;
    }
  }
  return formats.front();
}

bool IsSupFile(const std::filesystem::path& path) {
  return &FormatOf(path) == &ContainerFormats().front();
}

ReadContainerResult ReadStreams(const std::filesystem::path& path, const Progress& progress) {
  return IsSupFile(path) ? ReadSupAsItIs(path) : ReadContainer(path, progress);
}

ReadContainerResult ReadContainer(const std::filesystem::path& path, const Progress& progress) {
  const ContainerFormat& format = FormatOf(path);
  auto read = ReadWithinMemory(format, path, progress);
  if (!read) {
    return Failure{read.Reason() + OtherKindText(format, path)};
  }
  if (*read && (*read)->Tracks.empty()) {
    std::string reason = Words::Tr("it holds no DVD subtitles");
    for (const std::string& note : (*read)->Notes) {
      reason += "; " + note;
    }
    return Failure{reason};
  }
  return read;
}

Result<std::size_t> FindTrack(const Container& container, std::string_view named) {
  const auto& tracks = container.Tracks;
  if (named.empty()) {
    return tracks.size() == 1 ? Result<std::size_t>(0U)
                              : Failure{Words::Tr("it has several tracks: %1", {TrackNames(container)})};
  }
  const std::string lower = LowerAscii(named);
  const std::string code = LanguageCode(named);
  const auto isNamed = [&](const Track& track) {
    return LowerAscii(track.Language) == lower || (!code.empty() && LanguageCode(track.Language) == code);
  };
  if (tracks.size() == 1 && !code.empty() && LanguageCode(tracks.front().Language).empty()) {
    return std::size_t{0};
  }
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < tracks.size(); ++i) {
    if (std::to_string(i + 1) == named) {
      return i;
    }
    if (isNamed(tracks[i])) {
      if (found) {
        return Failure{Words::Tr("several tracks are in %1: %2", {named, TrackNames(container)})};
      }
      found = i;
    }
  }
  return found ? Result<std::size_t>(*found)
               : Failure{Words::Tr("there is no track %1; it has %2", {named, TrackNames(container)})};
}

}  // namespace quillmark
