#pragma once

#include <cstddef>
#include <sys/types.h>

namespace quillmark {

/// The system's calls that every written file goes through, in one place so that tests can have any of them
/// fail. Each takes and answers what the POSIX function of that name does.
struct SystemCalls {
  int (*Open)(const char* path, int flags, mode_t mode);
  ssize_t (*Write)(int file, const void* bytes, std::size_t length);
  int (*Reserve)(int file, off_t length);  ///< 0 or an error number, as posix_fallocate
  int (*Truncate)(int file, off_t length);
  int (*Sync)(int file);
  int (*Close)(int file);
  int (*Rename)(const char* from, const char* to);
};

/// The calls in use. They may be exchanged while no file is being written.
[[nodiscard]] SystemCalls& System();

}  // namespace quillmark
