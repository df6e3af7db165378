#include "files/FileWriter.h"

#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "base/FilePath.h"
#include "files/SystemCalls.h"

namespace quillmark {

Result<FileWriter> FileWriter::Replacing(const QString& path) {
  auto target = InspectTarget(path);
  if (!target) {
    return target.Why();
  }
  FileWriter writer(std::move(*target));
  if (writer.target_.What == Target::Kind::Device) {
    auto device = Descriptor::Open(writer.target_.Path, O_WRONLY);
    if (!device) {
      return device.Why();
    }
    writer.direct_ = std::move(*device);
    return writer;
  }
  auto beside = SecondFile::Beside(writer.target_);
  const bool isElsewhere = !beside && writer.target_.What == Target::Kind::File;
  writer.mustStay_ = isElsewhere || writer.target_.MustStay();
  auto second = isElsewhere ? SecondFile::Elsewhere() : std::move(beside);
  if (!second) {
    return second.Why();
  }
  writer.second_.emplace(std::move(*second));
  return writer;
}

Result<FileWriter> FileWriter::DeletingFirst(const QString& path) {
  const std::filesystem::path place = PathFromUtf8(path.toStdString());
  std::error_code ignored;
  const auto type = std::filesystem::symlink_status(place, ignored).type();
  if (type == std::filesystem::file_type::regular || type == std::filesystem::file_type::symlink) {
    static_cast<void>(System().Remove(Utf8FromPath(place).c_str()));
  }
  auto target = InspectTarget(path);
  if (!target) {
    return target.Why();
  }
  auto file = Descriptor::Open(target->Path, O_WRONLY | O_CREAT | O_TRUNC, 0666);
  if (!file) {
    return file.Why();
  }
  FileWriter writer(std::move(*target));
  writer.direct_ = std::move(*file);
  return writer;
}

Result<void> FileWriter::Write(std::span<const std::uint8_t> bytes) {
  return second_ ? second_->File().Write(bytes) : direct_->Write(bytes);
}

Result<void> FileWriter::Commit() {
  if (direct_) {
    const auto synced = direct_->Sync();
    return synced ? direct_->Close() : synced;
  }
  if (mustStay_) {
    return CopyInPlace();
  }
  const auto place = second_->TakePlaceOf(target_, Durability::Synced);
  if (place.Result == SecondFile::Outcome::NotReplaced && target_.What == Target::Kind::File) {
    return CopyInPlace();
  }
  return place.Result == SecondFile::Outcome::Done ? Result<void>() : Result<void>(place.Why);
}

Result<void> FileWriter::CopyInPlace() {
  constexpr std::size_t ChunkSize = 1U << 20U;
  const auto from = Descriptor::Open(second_->Path(), O_RDONLY);
  if (!from) {
    return from.Why();
  }
  auto to = FileInPlace::Open(target_, second_->File().Written());
  if (!to) {
    return to.Why();
  }
  std::vector<std::uint8_t> chunk(ChunkSize);
  for (std::uint64_t start = 0;;) {
    const auto length = from->ReadAt(start, chunk);
    if (!length) {
      return length.Why();
    }
    if (*length == 0) {
      return to->Finish(OldTail::Dropped, Durability::Synced);
    }
    if (auto written = to->Write(std::span(chunk).first(*length)); !written) {
      return written;
    }
    start += *length;
  }
}

}  // namespace quillmark
