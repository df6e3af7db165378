#pragma once

#include <cstdint>
#include <string>

#include <QString>

#include "base/Result.h"

namespace quillmark {

/// What stands where a file is to be written.
struct Target {
  enum class Kind {
    New,     ///< nothing
    File,    ///< a file that the user may write to
    Device,  ///< written to as it is
  };

  std::string Path;    ///< in UTF-8 where the file system has no bytes, with all symbolic links followed
  std::string Folder;  ///< that it stands in; "." where the path names none
  Kind What = Kind::New;
  // Of an existing file only:
  std::uint64_t Size = 0;
  std::uint64_t Names = 1;  ///< hard links
  // Of systems that have them:
  unsigned Mode = 0;  ///< permission bits
  unsigned Owner = 0;
  unsigned Group = 0;

  /// A device keeps its place; a file of several names would become two files if another one took the place
  /// of one of them.
  [[nodiscard]] bool MustStay() const { return What == Kind::Device || (What == Kind::File && Names > 1); }
};

/// Refuses, with the reason, what is no file and cannot be written to as one: a folder, a pipe, a socket, a
/// link to itself, a file that the user may not write to.
[[nodiscard]] Result<Target> InspectTarget(const QString& path);

}  // namespace quillmark
