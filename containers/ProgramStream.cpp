#include "containers/ProgramStream.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/AsciiCase.h"
#include "base/Digit.h"
#include "base/FilePath.h"
#include "base/Words.h"
#include "containers/ByteSource.h"
#include "containers/FileInAnyCase.h"
#include "containers/Ifo.h"
#include "containers/ProgramTracks.h"

namespace quillmark {
namespace {

/// Several sources, one after another.
class JoinedSource : public ByteSource {
 public:
  explicit JoinedSource(std::vector<std::unique_ptr<ByteSource>> parts) : parts_(std::move(parts)) {
    for (const auto& part : parts_) {
      length_ += part->Length();
    }
  }

  [[nodiscard]] std::uint64_t Length() const override { return length_; }
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) override {
    std::size_t found = 0;
    for (const auto& part : parts_) {
      if (start >= part->Length()) {
        start -= part->Length();
        continue;
      }
      const auto room = bytes.subspan(found);
      const auto read = part->ReadAt(
          start,
          room.first(static_cast<std::size_t>(std::min<std::uint64_t>(room.size(), part->Length() - start))));
      if (!read) {
        return read.Why();
      }
      found += *read;
      start = 0;
      if (found == bytes.size()) {
        break;
      }
    }
    return found;
  }

 private:
  std::vector<std::unique_ptr<ByteSource>> parts_;
  std::uint64_t length_ = 0;
};

constexpr char FirstPart = '1';
constexpr char LastPart = '9';

/// The number of a title's part, as in VTS_01_1.VOB; nullopt of a file with a name of another form. Part 0
/// has the menus.
std::optional<char> PartNumber(const std::filesystem::path& path) {
  const std::string name = Utf8FromPath(path.stem());
  constexpr std::string_view Form = "vts_00_0";
  const bool isPart = std::ranges::equal(
      name, Form, [](char c, char form) { return form == '0' ? IsDigit(c) : LowerAscii(c) == form; });
  return isPart ? std::optional(name.back()) : std::nullopt;
}

/// The file of the same title set with another part's number.
std::filesystem::path WithPart(const std::filesystem::path& path, char number,
                               const std::filesystem::path& ending) {
  std::string stem = Utf8FromPath(path.stem());
  stem.back() = number;
  return path.parent_path() / (PathFromUtf8(stem) += ending);
}

/// The parts that follow the first one, as far as they stand in its folder.
std::vector<std::filesystem::path> PartsAfter(const std::filesystem::path& first) {
  std::vector<std::filesystem::path> parts;
  for (char number = FirstPart + 1; number <= LastPart; ++number) {
    auto part = FileInAnyCase(WithPart(first, number, first.extension()));
    if (!part) {
      break;
    }
    parts.push_back(std::move(*part));
  }
  return parts;
}

std::string PartsNote(const std::vector<std::filesystem::path>& parts) {
  const std::string first = Utf8FromPath(parts.front().filename());
  return parts.size() == 1 ? Words::Tr("%1 was read as well, the next part of the title", {first})
                           : Words::Tr("%1 to %2 were read as well, the further parts of the title",
                                       {first, Utf8FromPath(parts.back().filename())});
}

/// The information file of the title set, or its copy.
std::optional<std::filesystem::path> InformationOf(const std::filesystem::path& part) {
  auto path = FileInAnyCase(WithPart(part, '0', ".IFO"));
  return path ? path : FileInAnyCase(WithPart(part, '0', ".BUP"));
}

std::optional<FrameSize> FrameOf(VideoStandard standard) {
  constexpr int NtscHeight = 480;
  return standard == VideoStandard::Unknown ? std::nullopt
         : standard == VideoStandard::Ntsc  ? std::optional(FrameSize{.Height = NtscHeight})
                                            : std::optional(FrameSize());
}

/// Palette, languages and names out of the title set's information file.
void AddFacts(const std::filesystem::path& path, Container& container) {
  const auto info = ReadIfoFile(path);
  const std::string name = Utf8FromPath(path.filename());
  if (!info) {
    container.Notes.push_back(Words::Tr("%1 has no palette for it: %2", {name, info.Reason()}));
    return;
  }
  const auto facts = FactsOfSubstreams(*info);
  if (!facts) {
    container.Notes.push_back(Words::Tr("%1 has no palette for it", {name}));
    return;
  }
  for (Track& track : container.Tracks) {
    track.Palette = facts->Palette;
    track.Frame = FrameOf(info->TitleVideo.Standard);
    for (std::size_t i = 0; i < SubtitleSubstreams; ++i) {
      if (track.Id == SubstreamName(i)) {
        track.Language = facts->Languages[i];
        track.Name = facts->Names[i];
      }
    }
  }
}

}  // namespace

bool StartsLikeProgramStream(std::string_view head) {
  constexpr std::string_view PackStart("\0\0\1\xBA", 4);
  return head.starts_with(PackStart);
}

ReadContainerResult ReadProgramStream(const std::filesystem::path& path, const Progress& progress) {
  std::vector<std::unique_ptr<ByteSource>> sources;
  auto source = OpenFileSource(path);
  if (!source) {
    return source.Why();
  }
  sources.push_back(std::move(*source));
  const auto number = PartNumber(path);
  const auto parts = number == FirstPart ? PartsAfter(path) : std::vector<std::filesystem::path>();
  for (const std::filesystem::path& part : parts) {
    auto opened = OpenFileSource(part);
    if (!opened) {
      return Failure{Utf8FromPath(part.filename()) + ": " + opened.Reason()};
    }
    sources.push_back(std::move(*opened));
  }
  JoinedSource joined(std::move(sources));
  auto read = ReadProgramTracks(joined, progress);
  if (!read || !*read) {
    return read;
  }
  if (!parts.empty()) {
    (*read)->Notes.insert((*read)->Notes.begin(), PartsNote(parts));
  }
  if (number && *number >= FirstPart) {
    if (const auto information = InformationOf(path)) {
      AddFacts(*information, **read);
    }
  }
  return read;
}

}  // namespace quillmark
