#pragma once

#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace quillmark::test {

/// Why a test is skipped that the user at hand cannot run. ./test knows these words, and runs such tests once
/// more as the other user where it can.
inline constexpr const char* NeedsOrdinaryUser = "needs an ordinary user: permissions do not bind this one";
inline constexpr const char* NeedsRoot = "needs root: it makes files of another user";

/// Whether this user may read what nobody may, as root may unless that right was taken from it.
inline bool PermissionsBind() {
  std::FILE* file = std::tmpfile();
  if (file == nullptr) {
    return true;
  }
  ::fchmod(::fileno(file), 0);
  const int opened = ::open(("/proc/self/fd/" + std::to_string(::fileno(file))).c_str(), O_RDONLY);
  if (opened >= 0) {
    ::close(opened);
  }
  std::fclose(file);
  return opened < 0;
}

}  // namespace quillmark::test
