#pragma once

#include <csignal>
#include <sys/resource.h>

namespace quillmark::test {

/// While it lives, no file of this process grows beyond `bytes`: a disk that is full half-way.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) : previousHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &previous_);
    const rlimit limit = {bytes, previous_.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &previous_);
    std::signal(SIGXFSZ, previousHandler_);
  }

 private:
  rlimit previous_{};
  void (*previousHandler_)(int);
};

}  // namespace quillmark::test
