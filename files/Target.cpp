#include "files/Target.h"

#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "base/FilePath.h"
#include "files/Descriptor.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

/// Follows a symbolic link to what it names, whether that exists or not; nullopt for a link to itself.
std::optional<fs::path> BehindLinks(fs::path path) {
  constexpr int MaxLinks = 40;  // what the kernel follows
  std::error_code error;
  for (int i = 0; i < MaxLinks; ++i) {
    if (!fs::is_symlink(fs::symlink_status(path, error))) {
      return path;
    }
    const fs::path named = fs::read_symlink(path, error);
    path = named.is_absolute() ? named : path.parent_path() / named;
  }
  return std::nullopt;
}

/// A pipe holds whoever writes to it until the other end reads, and nothing of it stays.
const char* WhyNoFile(mode_t mode) {
  if (S_ISDIR(mode)) {
    return "It is a folder";
  }
  if (S_ISFIFO(mode)) {
    return "It is a pipe, not a file";
  }
  return S_ISSOCK(mode) ? "It is a socket, not a file" : nullptr;
}

}  // namespace

Result<Target> InspectTarget(const QString& path) {
  if (path.isEmpty()) {
    return Failure{"The name is empty"};
  }
  const auto place = BehindLinks(PathFromUtf8(path.toStdString()));
  if (!place) {
    return SystemFailure(ELOOP);
  }
  Target target{.Path = place->string(),
                .Folder = (place->has_parent_path() ? place->parent_path() : fs::path(".")).string()};
  struct stat status {};
  if (::stat(target.Path.c_str(), &status) != 0) {
    if (errno == ENOENT && place->has_filename()) {
      return target;
    }
    return SystemFailure(errno);
  }
  if (const char* reason = WhyNoFile(status.st_mode)) {
    return Failure{reason};
  }
  if (::faccessat(AT_FDCWD, target.Path.c_str(), W_OK, AT_EACCESS) != 0) {
    return errno == EACCES ? Failure{"The file is not writable"} : SystemFailure(errno);
  }
  target.What = S_ISREG(status.st_mode) ? Target::Kind::File : Target::Kind::Device;
  target.Size = static_cast<std::uint64_t>(status.st_size);
  target.Names = status.st_nlink;
  target.Mode = status.st_mode & 07777U;
  target.Owner = status.st_uid;
  target.Group = status.st_gid;
  return target;
}

}  // namespace quillmark
