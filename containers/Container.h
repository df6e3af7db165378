#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Progress.h"
#include "base/Result.h"
#include "containers/FrameSize.h"
#include "palette/Colour.h"

namespace quillmark {

/// One stream of DVD subtitles out of a container, units byte for byte.
struct Track {
  /// What the container calls it: "0x20" of a program stream, "3" of a Matroska track.
  std::string Id = {};
  std::string Language =
      {};                 ///< two or three letters, or a BCP 47 tag, as the container has it; empty: unknown
  std::string Name = {};  ///< in UTF-8; empty: none
  std::optional<DvdPalette> Palette = {};
  std::optional<FrameSize> Frame = {};  ///< where the file says so
  std::vector<std::uint8_t> Packets =
      {};  ///< a SUP file's bytes: "SP", time (90 kHz ticks), unit; one after another
  std::vector<std::string> Notes = {};  ///< what was mended or left out in reading it, in words for the user
};

/// What a file that carries subtitles holds.
struct Container {
  std::vector<Track> Tracks;  ///< in the file's order; none that has no unit
  std::vector<std::string>
      Notes;  ///< what concerns no single track: streams of other kinds, a clock that restarts
};

/// What a reader gives: nullopt where the progress, which counts bytes of the file, ended it. The reason is
/// in words for the user, without the path.
using ReadContainerResult = Result<std::optional<Container>>;

/// A kind of file that this program reads subtitles from.
struct ContainerFormat {
  std::string_view Id;    ///< "sup", "vobsub", "matroska", "program-stream", "authoring-list"
  const char* Name = "";  ///< for people, in English, of the catalogue: "VobSub pairs"
  /// Endings of its files, in lower case with the dot.
  std::vector<std::string_view> Endings;
  /// Whether a file starts as these do, whatever its name is. Only where that is sure.
  bool (*StartsLike)(std::string_view head) = nullptr;
  ReadContainerResult (*Read)(const std::filesystem::path& path, const Progress& progress) = nullptr;
};

/// Those that this build reads; SUP files come first.
[[nodiscard]] const std::vector<ContainerFormat>& ContainerFormats();

/// The format of the file at `path`: that of its first bytes where they are a SUP packet's, else that of its
/// name's ending, else that of its first bytes. Where none fits, or nothing can be read, SUP, whose reader
/// then says why.
[[nodiscard]] const ContainerFormat& FormatOf(const std::filesystem::path& path);

/// Whether that is SUP.
[[nodiscard]] bool IsSupFile(const std::filesystem::path& path);

/// As ReadContainer, but a SUP file is one track as it is, whatever its bytes: for who mends it, or says
/// itself what is wrong with it.
[[nodiscard]] ReadContainerResult ReadStreams(const std::filesystem::path& path,
                                              const Progress& progress = {});

/// All subtitle streams of the file at `path`. A file without any is a Failure.
[[nodiscard]] ReadContainerResult ReadContainer(const std::filesystem::path& path,
                                                const Progress& progress = {});

/// The track that a user names: its number, counted from 1, or its language, in two letters or three; the
/// reason names the tracks that there are. Where nothing is named, the only one. A single track whose
/// language is unknown is the one in any language.
[[nodiscard]] Result<std::size_t> FindTrack(const Container& container, std::string_view named);

}  // namespace quillmark
