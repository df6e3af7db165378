#include "files/SecondFile.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>

#include "base/FilePath.h"
#include "base/Words.h"
#include "files/SystemCalls.h"

namespace quillmark {

std::string TemporaryName() {
  constexpr char Letters[] = "abcdefghijklmnopqrstuvwxyz012345";
  thread_local std::random_device random;
  std::string name = "quillmark-";
  for (int i = 0; i < 10; ++i) {
    name += Letters[random() % 32U];
  }
  return name + ".tmp";
}

Result<SecondFile> SecondFile::In(const std::string& folder, unsigned mode) {
  constexpr int Attempts = 100;
  int attempt = 0;
  for (;;) {
    std::string path = Utf8FromPath(PathFromUtf8(folder) / TemporaryName());
    auto file = Descriptor::Open(path, O_RDWR | O_CREAT | O_EXCL, mode);
    if (file) {
      return SecondFile(std::move(path), std::move(*file));
    }
    if (errno != EEXIST || ++attempt == Attempts) {
      return file.Why();
    }
  }
}

Result<SecondFile> SecondFile::Beside(const Target& target) {
  // What is kept from others must not be readable for a moment.
  return In(target.Folder, target.What == Target::Kind::New ? 0666U : 0600U);
}

Result<SecondFile> SecondFile::Elsewhere() {
  std::error_code error;
  const auto folder = std::filesystem::temp_directory_path(error);
  return In(error ? std::string("/tmp") : Utf8FromPath(folder), 0600U);
}

SecondFile::SecondFile(SecondFile&& other) noexcept
    : path_(std::exchange(other.path_, {})), file_(std::move(other.file_)) {}

SecondFile::~SecondFile() {
  if (!path_.empty()) {
    static_cast<void>(file_.Close());  // not every system removes a file that is open
    static_cast<void>(System().Remove(path_.c_str()));
  }
}

SecondFile::Place SecondFile::TakePlaceOf(const Target& target, Durability durability) {
  if (target.What == Target::Kind::File) {
    TakeOver(file_.Number(), target.Owner, target.Group, target.Mode);
  }
  if (durability == Durability::Synced) {
    if (const auto synced = file_.Sync(); !synced) {
      return {.Result = Outcome::Failed, .Why = synced.Why()};
    }
  }
  if (const auto closed = file_.Close(); !closed) {
    return {.Result = Outcome::Failed, .Why = closed.Why()};
  }
  if (System().Rename(path_.c_str(), target.Path.c_str()) != 0) {
    return {.Result = Outcome::NotReplaced, .Why = SystemFailure(errno)};
  }
  path_.clear();
  return {};
}

Result<FileInPlace> FileInPlace::Open(const Target& target, std::uint64_t length) {
  auto file = Descriptor::Open(target.Path, O_WRONLY);
  if (!file) {
    return file.Why();
  }
  if (target.What == Target::Kind::File && length > target.Size) {
    if (const int error = System().Reserve(file->Number(), static_cast<std::int64_t>(length)); error != 0) {
      static_cast<void>(System().Truncate(file->Number(), static_cast<std::int64_t>(target.Size)));
      return SystemFailure(error);
    }
  }
  return FileInPlace(target, std::move(*file), length);
}

Result<void> FileInPlace::Write(std::span<const std::uint8_t> bytes) {
  if (const auto written = file_.Write(bytes); !written) {
    return HalfWay(written.Why());
  }
  return {};
}

Result<void> FileInPlace::Finish(OldTail tail, Durability durability) {
  if (durability == Durability::Synced) {
    if (const auto synced = file_.Sync(); !synced) {
      return HalfWay(synced.Why());
    }
  }
  if (target_.What == Target::Kind::File && tail == OldTail::Dropped && target_.Size > length_ &&
      System().Truncate(file_.Number(), static_cast<std::int64_t>(length_)) != 0) {
    return SystemFailure(errno);
  }
  return file_.Close();
}

Failure FileInPlace::HalfWay(const Failure& failure) const {
  if (target_.What == Target::Kind::Device) {
    return failure;
  }
  // The room that was reserved is given back.
  const std::uint64_t used = std::max(target_.Size, file_.Written());
  static_cast<void>(System().Truncate(file_.Number(), static_cast<std::int64_t>(used)));
  if (file_.Written() == 0) {
    return failure;
  }
  return {
      Words::Tr("%1. The file could only be written in place and is now damaged: it holds the first %2 of %3 "
                "new bytes, and after them what was there before.",
                {failure.Reason, std::to_string(file_.Written()), std::to_string(length_)})};
}

}  // namespace quillmark
