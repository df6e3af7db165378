#include "files/AppendFile.h"

#include <cerrno>
#include <fcntl.h>
#include <new>
#include <utility>

#include <QFileInfo>

#include "base/Words.h"
#include "files/SystemCalls.h"

namespace quillmark {
namespace {

constexpr int Flags = O_RDWR | O_APPEND;
constexpr unsigned Mode = 0600;

/// What removes or renames a file must close it first where the system does not let an open one go. Elsewhere
/// it must not: the file would be free while it still has its name.
void LetGo(Descriptor& file) {
  static_cast<void>(FileOwner::OutlivesHandle ? file.Close() : Result<void>());
}

}  // namespace

AppendFile::AppendFile(FileOwner owner, QString path, Descriptor file)
    : owner_(std::move(owner)), path_(std::move(path)), file_(std::move(file)) {}
AppendFile::AppendFile(AppendFile&&) noexcept = default;
AppendFile& AppendFile::operator=(AppendFile&&) noexcept = default;
AppendFile::~AppendFile() = default;

Result<std::optional<AppendFile>> AppendFile::Owned(const QString& path, Descriptor file) {
  auto owner = FileOwner::Of(file.Number(), path);
  if (!owner) {
    return owner.Why();
  }
  return *owner ? std::optional(AppendFile(std::move(**owner), path, std::move(file))) : std::nullopt;
}

Result<std::optional<AppendFile>> AppendFile::Create(const QString& path) {
  auto file = Descriptor::Open(path.toStdString(), Flags | O_CREAT | O_EXCL, Mode);
  if (!file) {
    return errno == EEXIST ? Result<std::optional<AppendFile>>(std::nullopt) : file.Why();
  }
  return Owned(path, std::move(*file));
}

Result<std::optional<AppendFile>> AppendFile::Open(const QString& path) {
  auto file = Descriptor::Open(path.toStdString(), Flags);
  if (!file) {
    return errno == ENOENT ? Result<std::optional<AppendFile>>(std::nullopt) : file.Why();
  }
  return Owned(path, std::move(*file));
}

QString AppendFile::Path() const {
  return path_;
}

Result<std::vector<std::uint8_t>> AppendFile::ReadAll() {
  const std::int64_t length = LengthOf(file_.Number());
  if (length < 0) {
    return SystemFailure(errno);
  }
  if (length > MaxLength) {
    return Failure{Words::Tr("It is larger than 2 GiB")};
  }
  std::vector<std::uint8_t> bytes;
  try {
    bytes.resize(static_cast<std::size_t>(length));
  } catch (const std::bad_alloc&) {
    return Failure{Words::Tr("It does not fit into memory")};
  }
  std::size_t done = 0;
  // Nothing is taken where the file has become shorter since it was asked for its length.
  for (std::size_t taken = 1; taken > 0 && done < bytes.size(); done += taken) {
    const auto got = file_.ReadAt(done, std::span(bytes).subspan(done));
    if (!got) {
      return got.Why();
    }
    taken = *got;
  }
  bytes.resize(done);
  return bytes;
}

Result<void> AppendFile::Append(std::span<const std::uint8_t> bytes) {
  const std::int64_t before = LengthOf(file_.Number());
  if (before < 0) {
    return SystemFailure(errno);
  }
  if (static_cast<std::int64_t>(bytes.size()) > MaxLength - before) {
    return Failure{Words::Tr("It would become larger than 2 GiB")};
  }
  auto written = file_.Write(bytes);
  if (!written) {
    (void)CutTo(before);
  }
  return written;
}

Result<void> AppendFile::CutTo(std::int64_t length) {
  return System().Truncate(file_.Number(), length) == 0 ? Result<void>() : SystemFailure(errno);
}

Result<void> AppendFile::Remove() {
  // It is emptied before, so that nothing of it comes back where it cannot be removed.
  const auto emptied = CutTo(0);
  LetGo(file_);
  return System().Remove(path_.toStdString().c_str()) == 0 ? Result<void>() : emptied;
}

Result<QString> AppendFile::PutAside(const QString& suffix) {
  QString aside = path_ + suffix;
  for (int number = 2; QFileInfo::exists(aside); ++number) {
    aside = path_ + suffix + QString::number(number);
  }
  LetGo(file_);
  return System().Rename(path_.toStdString().c_str(), aside.toStdString().c_str()) == 0
             ? Result<QString>(aside)
             : SystemFailure(errno);
}

}  // namespace quillmark
