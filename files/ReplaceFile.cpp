#include "files/ReplaceFile.h"

#include <algorithm>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QTemporaryFile>

namespace quillmark {
namespace {

/// The reason as the system words it.
QString ReasonOf(const QFileDevice& file) {
  return file.errorString();
}

bool WriteAll(QFileDevice& file, std::span<const std::uint8_t> bytes) {
  const auto length = static_cast<qint64>(bytes.size());
  return file.write(reinterpret_cast<const char*>(bytes.data()), length) == length;
}

/// Copies what `from` holds behind its first `start` bytes.
bool CopyTail(const QString& from, qint64 start, QFileDevice& to) {
  QFile old(from);
  if (!old.open(QIODevice::ReadOnly) || !old.seek(start)) {
    return false;
  }
  constexpr qint64 ChunkSize = 1 << 20;
  while (!old.atEnd()) {
    const QByteArray chunk = old.read(ChunkSize);
    if (chunk.isEmpty() || to.write(chunk) != chunk.size()) {
      return false;
    }
  }
  return true;
}

/// Whether a file can be created beside `path`.
bool FolderTakesSecondFile(const QString& path) {
  QTemporaryFile probe(path + QStringLiteral(".XXXXXX"));
  return probe.open();
}

std::optional<QString> WriteBeside(const QString& path, std::span<const std::uint8_t> bytes, OldTail tail) {
  const qint64 oldLength = QFileInfo(path).size();
  const auto newLength = static_cast<qint64>(bytes.size());
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) {
    return ReasonOf(file);
  }
  bool complete = WriteAll(file, bytes);
  if (complete && tail == OldTail::Kept && oldLength > newLength) {
    complete = CopyTail(path, newLength, file);
  }
  if (!complete) {
    const QString reason = ReasonOf(file);
    file.cancelWriting();
    return reason;
  }
  return file.commit() ? std::nullopt : std::optional(ReasonOf(file));
}

/// Nothing is cut before everything was written, so that a failure costs no more than what was overwritten.
std::optional<QString> WriteInPlace(const QString& path, std::span<const std::uint8_t> bytes, OldTail tail) {
  QFile file(path);
  if (!file.open(QFileInfo(path).isFile() ? QIODevice::ReadWrite : QIODevice::WriteOnly)) {
    return ReasonOf(file);
  }
  if (!WriteAll(file, bytes) || !file.flush()) {
    return QStringLiteral("%1 (the file could only be written in place, and is incomplete)")
        .arg(ReasonOf(file));
  }
  const auto length = static_cast<qint64>(bytes.size());
  if (tail == OldTail::Dropped && QFileInfo(path).isFile() && !file.resize(length)) {
    return ReasonOf(file);
  }
  return std::nullopt;
}

}  // namespace

std::optional<QString> ReplaceFile(const QString& path, std::span<const std::uint8_t> bytes, OldTail tail) {
  const QFileInfo target(path);
  const bool inPlace =
      target.exists() && (!target.isFile() || !FolderTakesSecondFile(target.canonicalFilePath()));
  return inPlace ? WriteInPlace(path, bytes, tail) : WriteBeside(path, bytes, tail);
}

}  // namespace quillmark
