#pragma once

#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace quillmark::test {

/// The system's devices that take everything and nothing, by their minor numbers.
enum class Device { Null = 3, Full = 7 };

inline constexpr const char* NeedsDevices = "needs a folder that may hold devices";

/// Path of such a device, to be written to. A user who could replace the system's own gets one in `folder`:
/// code at fault must not take /dev/null from the whole machine. Empty where none can be made there.
inline std::string OwnDevice(const std::string& folder, Device device) {
  const std::string name = device == Device::Full ? "full" : "null";
  if (::access("/dev", W_OK) != 0) {
    return "/dev/" + name;
  }
  std::string path = folder + "/" + name + " device";
  if (::mknod(path.c_str(), S_IFCHR | 0666U, makedev(1, static_cast<unsigned>(device))) != 0) {
    return {};
  }
  const int file = ::open(path.c_str(), O_WRONLY);
  if (file < 0) {
    return {};
  }
  ::close(file);
  return path;
}

inline bool IsDevice(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISCHR(status.st_mode);
}

}  // namespace quillmark::test
