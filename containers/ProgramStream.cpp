#include "containers/ProgramStream.h"

#include <algorithm>
#include <memory>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "base/FilePath.h"
#include "containers/ByteSource.h"
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

/// Whether the name is that of the first part of a title: "VTS_01_1.VOB".
bool IsFirstPart(const std::filesystem::path& path) {
  const std::string name = Utf8FromPath(path.stem());
  constexpr std::string_view Form = "vts_??_1";
  return std::ranges::equal(name, Form, [](char c, char form) {
    return form == '?' ? c >= '0' && c <= '9' : (c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c) == form;
  });
}

/// The parts that follow the first one, as far as they stand in its folder.
std::vector<std::filesystem::path> PartsAfter(const std::filesystem::path& first) {
  std::vector<std::filesystem::path> parts;
  std::string stem = Utf8FromPath(first.stem());
  for (char number = FirstPart + 1; number <= LastPart; ++number) {
    stem.back() = number;
    std::filesystem::path part = first.parent_path() / PathFromUtf8(stem);
    part += first.extension();
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(part, ignored)) {
      break;
    }
    parts.push_back(std::move(part));
  }
  return parts;
}

std::string PartsNote(const std::vector<std::filesystem::path>& parts) {
  const std::string first = Utf8FromPath(parts.front().filename());
  return parts.size() == 1 ? first + " was read as well, the next part of the title"
                           : first + " to " + Utf8FromPath(parts.back().filename()) +
                                 " were read as well, the further parts of the title";
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
  const auto parts = IsFirstPart(path) ? PartsAfter(path) : std::vector<std::filesystem::path>();
  for (const std::filesystem::path& part : parts) {
    auto opened = OpenFileSource(part);
    if (!opened) {
      return Failure{Utf8FromPath(part.filename()) + ": " + opened.Reason()};
    }
    sources.push_back(std::move(*opened));
  }
  JoinedSource joined(std::move(sources));
  auto read = ReadProgramTracks(joined, progress);
  if (read && *read && !parts.empty()) {
    (*read)->Notes.insert((*read)->Notes.begin(), PartsNote(parts));
  }
  return read;
}

}  // namespace quillmark
