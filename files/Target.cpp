#include "files/Target.h"

#include <cerrno>
#include <optional>
#include <system_error>

#include "base/FilePath.h"
#include "base/Words.h"
#include "files/Descriptor.h"
#include "files/SystemCalls.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

/// Follows a symbolic link to what it names, whether that exists or not; nullopt for a link to itself and for
/// more of them one behind another than the system follows.
std::optional<fs::path> BehindLinks(fs::path path) {
  constexpr int MaxLinks = 40;  // what Linux follows
  std::error_code error;
  for (int followed = 0; followed <= MaxLinks; ++followed) {
    if (!fs::is_symlink(fs::symlink_status(path, error))) {
      return path;
    }
    const fs::path named = fs::read_symlink(path, error);
    path = named.is_absolute() ? named : path.parent_path() / named;
  }
  return std::nullopt;
}

/// A pipe holds whoever writes to it until the other end reads, and nothing of it stays.
const char* WhyNoFile(FileStatus::Kind kind) {
  switch (kind) {
    case FileStatus::Kind::Folder:
      return Words::Mark("It is a folder");
    case FileStatus::Kind::Pipe:
      return Words::Mark("It is a pipe, not a file");
    case FileStatus::Kind::Socket:
      return Words::Mark("It is a socket, not a file");
    case FileStatus::Kind::File:
    case FileStatus::Kind::Device:
      break;
  }
  return nullptr;
}

}  // namespace

Result<Target> InspectTarget(const QString& path) {
  if (path.isEmpty()) {
    return Failure{Words::Tr("The name is empty")};
  }
  const auto place = BehindLinks(PathFromUtf8(path.toStdString()));
  if (!place) {
    return SystemFailure(ELOOP);
  }
  Target target{.Path = Utf8FromPath(*place),
                .Folder = Utf8FromPath(place->has_parent_path() ? place->parent_path() : fs::path("."))};
  FileStatus status;
  if (const int error = ReadStatus(target.Path.c_str(), status); error != 0) {
    if (error == ENOENT && place->has_filename()) {
      return target;
    }
    return SystemFailure(error);
  }
  if (const char* reason = WhyNoFile(status.What)) {
    return Failure{Words::Tr(reason)};
  }
  if (const int error = WhyNotWritable(target.Path.c_str()); error != 0) {
    return error == EACCES ? Failure{Words::Tr("The file is not writable")} : SystemFailure(error);
  }
  target.What = status.What == FileStatus::Kind::File ? Target::Kind::File : Target::Kind::Device;
  target.Size = status.Size;
  target.Names = status.Names;
  target.Mode = status.Mode;
  target.Owner = status.Owner;
  target.Group = status.Group;
  return target;
}

}  // namespace quillmark
