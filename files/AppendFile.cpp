#include "files/AppendFile.h"

#include <cerrno>
#include <new>
#include <sys/file.h>
#include <sys/stat.h>
#include <utility>

#include <QFile>
#include <QFileInfo>

namespace quillmark {
namespace {

constexpr QIODevice::OpenMode Mode = QIODevice::ReadWrite | QIODevice::Append | QIODevice::Unbuffered;

Failure WhyOf(const QFile& file) {
  return {file.errorString().toStdString()};
}

/// False once the file was removed; an owner before may have done that between opening and locking it.
bool HasName(const QFile& file) {
  struct stat status {};
  return ::fstat(file.handle(), &status) == 0 && status.st_nlink > 0;
}

}  // namespace

AppendFile::AppendFile(std::unique_ptr<QFile> file) : file_(std::move(file)) {}
AppendFile::AppendFile(AppendFile&&) noexcept = default;
AppendFile& AppendFile::operator=(AppendFile&&) noexcept = default;
AppendFile::~AppendFile() = default;

Result<std::optional<AppendFile>> AppendFile::Owned(std::unique_ptr<QFile> file) {
  // The system lets go of this lock with the last handle, so that a program that was killed leaves none
  // behind.
  while (::flock(file->handle(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) {
      return std::optional<AppendFile>();
    }
    if (errno != EINTR) {
      return Failure{qt_error_string(errno).toStdString()};
    }
  }
  return HasName(*file) ? std::optional(AppendFile(std::move(file))) : std::nullopt;
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
    return Failure{"It is larger than 2 GiB"};
  }
  std::vector<std::uint8_t> bytes;
  try {
    bytes.resize(static_cast<std::size_t>(length));
  } catch (const std::bad_alloc&) {
    return Failure{"It does not fit into memory"};
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
    return Failure{"It would become larger than 2 GiB"};
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
  // Not QFile::remove(), which closes the file first, and so gives it free while it still has its name.
  return QFile::remove(Path()) ? Result<void>() : CutTo(0);
}

Result<QString> AppendFile::PutAside(const QString& suffix) {
  const QString path = Path();
  QString aside = path + suffix;
  for (int number = 2; QFileInfo::exists(aside); ++number) {
    aside = path + suffix + QString::number(number);
  }
  QFile other(path);
  return other.rename(aside) ? Result<QString>(aside) : WhyOf(other);
}

}  // namespace quillmark
