#include "files/SystemCalls.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace quillmark {
namespace {

int OpenFile(const char* path, int flags, mode_t mode) {
  return ::open(path, flags | O_CLOEXEC | O_NOCTTY, mode);
}

/// Not posix_fallocate where there is a choice: it writes to every block of a file system that cannot
/// reserve.
int ReserveSpace([[maybe_unused]] int file, [[maybe_unused]] off_t length) {
#ifdef __linux__
  return ::fallocate(file, 0, 0, length) == 0 ? 0 : errno;
#else
  return EOPNOTSUPP;
#endif
}

}  // namespace

SystemCalls& System() {
  static SystemCalls calls{.Open = OpenFile,
                           .Write = ::write,
                           .Reserve = ReserveSpace,
                           .Truncate = ::ftruncate,
                           .Sync = ::fsync,
                           .Close = ::close,
                           .Rename = std::rename};
  return calls;
}

}  // namespace quillmark
