#include "files/ReplaceFile.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "base/FilePath.h"
#include "files/SecondFile.h"
#include "files/SystemCalls.h"
#include "files/Target.h"

namespace quillmark {
namespace {

using Bytes = std::span<const std::uint8_t>;

Result<void> WriteInPlace(const Target& target, Bytes bytes, const WriteOptions& options) {
  auto file = FileInPlace::Open(target, bytes.size());
  if (!file) {
    return file.Why();
  }
  if (auto written = file->Write(bytes); !written) {
    return written;
  }
  return file->Finish(options.Tail, options.Wait);
}

/// Copies what the target holds after its first `start` bytes to the end of `to`.
Result<void> CopyTail(const Target& target, std::uint64_t start, Descriptor& to) {
  constexpr std::size_t ChunkSize = 1U << 20U;
  const auto from = Descriptor::Open(target.Path, O_RDONLY);
  if (!from) {
    return from.Why();
  }
  std::vector<std::uint8_t> chunk(ChunkSize);
  for (;;) {
    const auto length = from->ReadAt(start, chunk);
    if (!length) {
      return length.Why();
    }
    if (*length == 0) {
      return {};
    }
    if (auto written = to.Write(Bytes(chunk).first(*length)); !written) {
      return written;
    }
    start += *length;
  }
}

Result<void> MakeOneFolder(const std::string& path, unsigned mode) {
  if (System().MakeFolder(path.c_str(), mode) == 0) {
    return {};
  }
  const int error = errno;
  std::error_code ignored;
  const bool isThere = error == EEXIST && std::filesystem::is_directory(PathFromUtf8(path), ignored);
  return isThere ? Result<void>() : Result<void>(SystemFailure(error));
}

}  // namespace

Result<void> ReplaceFile(const QString& path, std::span<const std::uint8_t> bytes,
                         const WriteOptions& options) {
  const auto target = InspectTarget(path);
  if (!target) {
    return target.Why();
  }
  if (target->MustStay()) {
    return WriteInPlace(*target, bytes, options);
  }
  const bool exists = target->What == Target::Kind::File;
  auto second = SecondFile::Beside(*target);
  if (!second) {
    return exists ? WriteInPlace(*target, bytes, options) : second.Why();
  }
  Result<void> written = second->File().Write(bytes);
  if (written && options.Tail == OldTail::Kept && target->Size > bytes.size()) {
    written = CopyTail(*target, bytes.size(), second->File());
  }
  if (!written) {
    return written;
  }
  const auto place = second->TakePlaceOf(*target, options.Wait);
  if (place.Result == SecondFile::Outcome::NotReplaced && exists) {
    return WriteInPlace(*target, bytes, options);
  }
  return place.Result == SecondFile::Outcome::Done ? Result<void>() : Result<void>(place.Why);
}

Result<void> AppendToFile(const QString& path, std::span<const std::uint8_t> bytes) {
  const auto target = InspectTarget(path);
  if (!target) {
    return target.Why();
  }
  auto file = Descriptor::Open(target->Path, O_WRONLY | O_CREAT | O_APPEND, 0666);
  if (!file) {
    return file.Why();
  }
  Result<void> written = file->Write(bytes);
  if (written) {
    return file->Close();
  }
  // On a full disk part of it may be there; what comes next must not be glued to it.
  if (target->What == Target::Kind::New) {
    static_cast<void>(file->Close());
    static_cast<void>(System().Remove(target->Path.c_str()));
  } else if (file->Written() > 0 && target->What != Target::Kind::Device) {
    static_cast<void>(System().Truncate(file->Number(), static_cast<std::int64_t>(target->Size)));
  }
  return written;
}

Result<void> MakeFolder(const QString& path) {
  return MakeOneFolder(path.toStdString(), 0777);
}

Result<void> MakePrivateFolder(const QString& path) {
  const std::string name = path.toStdString();
  std::error_code ignored;
  // From the top down: whatever is missing. What is there already answers so.
  for (std::size_t end = name.find('/', 1); end != std::string::npos; end = name.find('/', end + 1)) {
    const std::string above = name.substr(0, end);
    if (!std::filesystem::is_directory(PathFromUtf8(above), ignored)) {
      if (auto made = MakeOneFolder(above, 0777); !made) {
        return made;
      }
    }
  }
  return MakeOneFolder(name, 0700);
}

Result<void> RemoveFile(const QString& path) {
  const bool isGone = System().Remove(path.toStdString().c_str()) == 0 || errno == ENOENT;
  return isGone ? Result<void>() : Result<void>(SystemFailure(errno));
}

}  // namespace quillmark
