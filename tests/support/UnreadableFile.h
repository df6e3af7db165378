#pragma once

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>

namespace quillmark::test {

inline constexpr const char* NeedsUnreadableFile = "needs the system's own files under /sys";

/// Makes a link of that name to a file that can be opened, says that it has 4,096 bytes and fails every read,
/// as one on a damaged disk does: the speed of the network device that has none. False where there is no such
/// file.
inline bool LinkUnreadableFile(const std::filesystem::path& name) {
  constexpr const char* Speed = "/sys/class/net/lo/speed";
  const int file = ::open(Speed, O_RDONLY);
  char byte = 0;
  const bool fails = file >= 0 && ::read(file, &byte, 1) < 0;
  if (file >= 0) {
    ::close(file);
  }
  std::error_code error;
  std::filesystem::create_symlink(Speed, name, error);
  return fails && !error;
}

}  // namespace quillmark::test
