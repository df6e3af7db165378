#include "files/SystemCalls.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace quillmark {
namespace {

int OpenFile(const char* path, int flags, unsigned mode) {
  return ::open(path, flags | O_CLOEXEC | O_NOCTTY, static_cast<mode_t>(mode));
}

std::ptrdiff_t WriteBytes(int file, const void* bytes, std::size_t length) {
  return ::write(file, bytes, length);
}

/// Not posix_fallocate where there is a choice: it writes to every block of a file system that cannot
/// reserve.
int ReserveSpace([[maybe_unused]] int file, [[maybe_unused]] std::int64_t length) {
#ifdef __linux__
  if (::fallocate(file, 0, 0, static_cast<off_t>(length)) != 0 &&
      (errno == ENOSPC || errno == EFBIG || errno == EDQUOT)) {
    return errno;
  }
#endif
  return 0;
}

int TruncateFile(int file, std::int64_t length) {
  return ::ftruncate(file, static_cast<off_t>(length));
}

int CreateFolder(const char* path, unsigned mode) {
  return ::mkdir(path, static_cast<mode_t>(mode));
}

FileStatus::Kind KindOf(mode_t mode) {
  using Kind = FileStatus::Kind;
  if (S_ISREG(mode)) {
    return Kind::File;
  }
  if (S_ISDIR(mode)) {
    return Kind::Folder;
  }
  if (S_ISFIFO(mode)) {
    return Kind::Pipe;
  }
  return S_ISSOCK(mode) ? Kind::Socket : Kind::Device;
}

}  // namespace

SystemCalls& System() {
  static SystemCalls calls{.Open = OpenFile,
                           .Write = WriteBytes,
                           .Reserve = ReserveSpace,
                           .Truncate = TruncateFile,
                           .Sync = ::fsync,
                           .Close = ::close,
                           .Rename = std::rename,
                           .MakeFolder = CreateFolder,
                           .Link = ::link,
                           .Remove = std::remove};
  return calls;
}

std::ptrdiff_t ReadAt(int file, void* bytes, std::size_t length, std::uint64_t start) {
  return ::pread(file, bytes, length, static_cast<off_t>(start));
}

std::int64_t LengthOf(int file) {
  struct stat read {};
  return ::fstat(file, &read) == 0 ? std::int64_t{read.st_size} : -1;
}

int ReadStatus(const char* path, FileStatus& status) {
  struct stat read {};
  if (::stat(path, &read) != 0) {
    return errno;
  }
  status = {.What = KindOf(read.st_mode),
            .Size = static_cast<std::uint64_t>(read.st_size),
            .Names = static_cast<std::uint64_t>(read.st_nlink),
            .Mode = read.st_mode & 07777U,
            .Owner = read.st_uid,
            .Group = read.st_gid};
  return 0;
}

int WhyNotWritable(const char* path) {
  return ::faccessat(AT_FDCWD, path, W_OK, AT_EACCESS) == 0 ? 0 : errno;
}

void TakeOver(int file, unsigned owner, unsigned group, unsigned mode) {
  const bool same = ::fchown(file, owner, group) == 0;
  if (!same && ::fchown(file, static_cast<uid_t>(-1), group) != 0) {
    // It stays the user's own file, in the user's group.
  }
  static_cast<void>(::fchmod(file, static_cast<mode_t>(same ? mode : mode & 0777U)));
}

}  // namespace quillmark
