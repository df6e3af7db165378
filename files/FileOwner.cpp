#include "files/FileOwner.h"

#include <utility>

#include <QLockFile>

#ifndef _WIN32
#include <cerrno>
#include <sys/file.h>
#include <sys/stat.h>

#include "base/Words.h"
#include "files/Descriptor.h"
#endif

namespace quillmark {

FileOwner::FileOwner(std::unique_ptr<QLockFile> lock) : lock_(std::move(lock)) {}
FileOwner::FileOwner(FileOwner&&) noexcept = default;
FileOwner& FileOwner::operator=(FileOwner&&) noexcept = default;
FileOwner::~FileOwner() = default;

#ifdef _WIN32

Result<std::optional<FileOwner>> FileOwner::Of(int /*file*/, const QString& path) {
  auto lock = std::make_unique<QLockFile>(path + QStringLiteral(".lock"));
  lock->setStaleLockTime(0);  // only one whose program has ended
  if (lock->tryLock(0)) {
    return std::optional(FileOwner(std::move(lock)));
  }
  if (lock->error() == QLockFile::LockFailedError) {
    return std::optional<FileOwner>();
  }
  return Failure{Words::Tr("It cannot be locked")};
}

#else

Result<std::optional<FileOwner>> FileOwner::Of(int file, const QString& /*path*/) {
  // The system lets go of this lock with the last handle, so that a program that was killed leaves none
  // behind.
  if (::flock(file, LOCK_EX | LOCK_NB) != 0) {
    return errno == EWOULDBLOCK ? Result<std::optional<FileOwner>>(std::nullopt) : SystemFailure(errno);
  }
  // An owner before may have removed the file between opening and locking it.
  struct stat status {};
  static_cast<void>(::fstat(file, &status));
  return status.st_nlink > 0 ? std::optional(FileOwner(nullptr)) : std::nullopt;
}

#endif

}  // namespace quillmark
