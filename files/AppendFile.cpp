#include "files/AppendFile.h"

#include <new>
#include <utility>

#include <QFile>
#include <QFileInfo>

#include "base/Words.h"

namespace quillmark {
namespace {

constexpr QIODevice::OpenMode Mode = QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered;

Failure WhyOf(const QFile& file) {
  return {file.errorString().toStdString()};
}

/// What removes or renames a file must close it first where the system does not let an open one go. Elsewhere
/// it must not: the file would be free while it still has its name.
void LetGo(QFile& file) {
  if constexpr (FileOwner::OutlivesHandle) {
    file.close();
  }
}

}  // namespace

AppendFile::AppendFile(FileOwner owner, std::unique_ptr<QFile> file)
    : owner_(std::move(owner)), file_(std::move(file)) {}
AppendFile::AppendFile(AppendFile&&) noexcept = default;
AppendFile& AppendFile::operator=(AppendFile&&) noexcept = default;
AppendFile::~AppendFile() = default;

Result<std::optional<AppendFile>> AppendFile::Owned(std::unique_ptr<QFile> file) {
  auto owner = FileOwner::Of(*file);
  if (!owner) {
    return owner.Why();
  }
  return *owner ? std::optional(AppendFile(std::move(**owner), std::move(file))) : std::nullopt;
}

Result<std::optional<AppendFile>> AppendFile::Create(const QString& path) {
  auto file = std::make_unique<QFile>(path);
  if (!file->open(Mode | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner)) {
    if (QFileInfo::exists(path)) {
      return std::optional<AppendFile>();
    }
    return WhyOf(*file);
  }
  return Owned(std::move(file));
}

Result<std::optional<AppendFile>> AppendFile::Open(const QString& path) {
  auto file = std::make_unique<QFile>(path);
  if (!file->open(Mode | QIODevice::ExistingOnly)) {
    if (!QFileInfo::exists(path)) {
      return std::optional<AppendFile>();
    }
    return WhyOf(*file);
  }
  return Owned(std::move(file));
}

QString AppendFile::Path() const {
  return file_->fileName();
}

Result<std::vector<std::uint8_t>> AppendFile::ReadAll() {
  const qint64 length = file_->size();
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
  if (!file_->seek(0)) {
    return WhyOf(*file_);
  }
  while (done < bytes.size()) {
    const qint64 got =
        file_->read(reinterpret_cast<char*>(bytes.data()) + done, static_cast<qint64>(bytes.size() - done));
    if (got < 0) {
      return WhyOf(*file_);
    }
    if (got == 0) {
      break;
    }
    done += static_cast<std::size_t>(got);
  }
  bytes.resize(done);
  return bytes;
}

Result<void> AppendFile::Append(std::span<const std::uint8_t> bytes) {
  const qint64 before = file_->size();
  const auto length = static_cast<qint64>(bytes.size());
  if (length > MaxLength - before) {
    return Failure{Words::Tr("It would become larger than 2 GiB")};
  }
  qint64 written = 0;
  while (written < length) {
    // A full disk takes part of the bytes first and says why only when asked again.
    const qint64 taken =
        file_->write(reinterpret_cast<const char*>(bytes.data()) + written, length - written);
    if (taken <= 0) {
      const Failure why = WhyOf(*file_);
      (void)CutTo(before);
      return why;
    }
    written += taken;
  }
  return {};
}

Result<void> AppendFile::CutTo(std::int64_t length) {
  return file_->resize(length) ? Result<void>() : WhyOf(*file_);
}

Result<void> AppendFile::Remove() {
  LetGo(*file_);
  return QFile::remove(Path()) ? Result<void>() : CutTo(0);
}

Result<QString> AppendFile::PutAside(const QString& suffix) {
  const QString path = Path();
  QString aside = path + suffix;
  for (int number = 2; QFileInfo::exists(aside); ++number) {
    aside = path + suffix + QString::number(number);
  }
  LetGo(*file_);
  QFile other(path);
  return other.rename(aside) ? Result<QString>(aside) : WhyOf(other);
}

}  // namespace quillmark
