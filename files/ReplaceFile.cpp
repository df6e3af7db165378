#include "files/ReplaceFile.h"

#include <cerrno>
#include <system_error>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif

#include "base/FilePath.h"

namespace quillmark {
namespace {

using Bytes = std::span<const std::uint8_t>;
/// Why a step failed, as the system words it; nullopt when it did not.
using Failure = std::optional<QString>;

/// Writes until all is written or nothing more is taken; `written` is how far it came. A full disk takes part
/// of the bytes first and says why only when asked again, which is also why `file` must be unbuffered.
Failure WriteAll(QFileDevice& file, Bytes bytes, qint64& written) {
  const auto length = static_cast<qint64>(bytes.size());
  written = 0;
  while (written < length) {
    const qint64 taken = file.write(reinterpret_cast<const char*>(bytes.data()) + written, length - written);
    if (taken <= 0) {
      return file.errorString();
    }
    written += taken;
  }
  return std::nullopt;
}

Failure WriteAll(QFileDevice& file, Bytes bytes) {
  qint64 written = 0;
  return WriteAll(file, bytes, written);
}

/// Copies what the file at `path` holds behind its first `start` bytes to the end of `to`.
Failure CopyTail(const QString& path, qint64 start, QFileDevice& to) {
  constexpr qint64 ChunkSize = 1 << 20;
  QFile from(path);
  if (!from.open(QIODevice::ReadOnly | QIODevice::Unbuffered) || !from.seek(start)) {
    return from.errorString();
  }
  QByteArray chunk(ChunkSize, Qt::Uninitialized);
  for (;;) {
    const qint64 length = from.read(chunk.data(), ChunkSize);
    if (length < 0) {
      return from.errorString();
    }
    if (length == 0) {
      return std::nullopt;
    }
    if (auto failure = WriteAll(to, Bytes(reinterpret_cast<const std::uint8_t*>(chunk.constData()),
                                          static_cast<std::size_t>(length)))) {
      return failure;
    }
  }
}

/// Some file systems say only now that the disk is full, and QSaveFile does not listen. `file` is unbuffered.
Failure FlushToDisk([[maybe_unused]] QFileDevice& file) {
#ifdef Q_OS_UNIX
  // EINVAL, EROFS and ENOTSUP: there is nothing behind this file that could be flushed, a device for example.
  if (::fsync(file.handle()) != 0 && errno != EINVAL && errno != EROFS && errno != ENOTSUP) {
    return qt_error_string(errno);
  }
#endif
  return std::nullopt;
}

enum class Outcome { Done, Failed, NoSecondFile };

/// The outcome of writing beside the target, and why where it is not Done.
struct BesideResult {
  Outcome Result = Outcome::Done;
  QString Reason;
};

/// Writes a second file beside the target, which takes its place when it is complete. Whatever fails, the
/// target is as it was and no second file is left.
BesideResult WriteBeside(const QString& path, Bytes bytes, OldTail tail) {
  // Without its fallback for such folders, which cuts the target before it writes.
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
    return {Outcome::NoSecondFile, file.errorString()};
  }
  Failure failure = WriteAll(file, bytes);
  const auto newLength = static_cast<qint64>(bytes.size());
  if (!failure && tail == OldTail::Kept && QFileInfo(path).size() > newLength) {
    failure = CopyTail(path, newLength, file);
  }
  if (!failure) {
    failure = FlushToDisk(file);
  }
  if (failure) {
    file.cancelWriting();
    return {Outcome::Failed, *failure};
  }
  if (file.commit()) {
    return {};
  }
  // A folder may take a new file and yet not let the old one go: it belongs to someone else in a folder with
  // the sticky bit, or is a mount point.
  const bool notReplaced = file.error() == QFileDevice::RenameError;
  return {notReplaced ? Outcome::NoSecondFile : Outcome::Failed, file.errorString()};
}

/// What a failure half-way leaves behind.
QString HalfWay(const QString& reason, qint64 written, qint64 length) {
  return QStringLiteral(
             "%1. The file could only be written in place and is now damaged: it holds the first %2 of "
             "%3 new bytes, and behind them what was there before.")
      .arg(reason)
      .arg(written)
      .arg(length);
}

/// Writes over the target. Nothing is cut before everything was written, so that a failure costs no more than
/// what was overwritten.
Failure WriteInPlace(const QString& path, Bytes bytes, OldTail tail) {
  QFile file(path);
  // ReadWrite, as it is the one mode that does not cut the file.
  if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) {
    return file.errorString();
  }
  const auto length = static_cast<qint64>(bytes.size());
  qint64 written = 0;
  Failure failure = WriteAll(file, bytes, written);
  if (failure && written == 0) {
    return failure;
  }
  if (!failure) {
    failure = FlushToDisk(file);
  }
  if (failure) {
    return HalfWay(*failure, written, length);
  }
  if (tail == OldTail::Dropped && file.size() > length && !file.resize(length)) {
    return file.errorString();
  }
  return std::nullopt;
}

/// Why nothing can be saved at this path at all.
Failure RefusalOf(const QString& path) {
  std::error_code error;
  const auto status = std::filesystem::status(PathFromUtf8(path.toStdString()), error);
  if (std::filesystem::is_directory(status)) {
    return QStringLiteral("It is a folder");
  }
  // A pipe holds whoever writes to it until the other end reads, and nothing of it stays.
  if (std::filesystem::is_fifo(status)) {
    return QStringLiteral("It is a pipe, not a file");
  }
  // QSaveFile would replace the link.
  if (error == std::errc::too_many_symbolic_link_levels) {
    return QString::fromStdString(error.message());
  }
  return std::nullopt;
}

}  // namespace

std::optional<QString> ReplaceFile(const QString& path, std::span<const std::uint8_t> bytes, OldTail tail) {
  if (auto refusal = RefusalOf(path)) {
    return refusal;
  }
  const QFileInfo target(path);
  if (target.exists() && !target.isFile()) {
    return WriteInPlace(path, bytes, tail);
  }
  const BesideResult beside = WriteBeside(path, bytes, tail);
  if (beside.Result == Outcome::Done) {
    return std::nullopt;
  }
  const bool inPlace = beside.Result == Outcome::NoSecondFile && target.exists() && target.isWritable();
  return inPlace ? WriteInPlace(path, bytes, tail) : beside.Reason;
}

}  // namespace quillmark
