#pragma once

#include <cstddef>
#include <cstdint>

namespace quillmark {

/// The system's calls that every written file goes through, in one place so that tests can have any of them
/// fail. Each takes and answers what the POSIX function of that name does; paths are in UTF-8 where the
/// system does not have them as bytes.
struct SystemCalls {
  int (*Open)(const char* path, int flags, unsigned mode);
  std::ptrdiff_t (*Write)(int file, const void* bytes, std::size_t length);
  /// The error number when the disk has no room for it; 0 too where that cannot be found out beforehand.
  int (*Reserve)(int file, std::int64_t length);
  int (*Truncate)(int file, std::int64_t length);
  int (*Sync)(int file);
  int (*Close)(int file);
  int (*Rename)(const char* from, const char* to);
  int (*MakeFolder)(const char* path, unsigned mode);
  int (*Link)(const char* path, const char* name);  ///< `name` becomes one more name of the file
  int (*Remove)(const char* path);                  ///< a name of a file, or an empty folder
};

/// The calls in use; nothing outside this folder writes but through what it offers. They may be exchanged
/// while no file is being written.
[[nodiscard]] SystemCalls& System();

// What else no other library has. Each system has its own source: SystemCalls.cpp for POSIX,
// SystemCallsWindows.cpp.

/// As pread(); where the file is read from otherwise is not kept.
[[nodiscard]] std::ptrdiff_t ReadAt(int file, void* bytes, std::size_t length, std::uint64_t start);

/// What stands at a path, behind its symbolic links.
struct FileStatus {
  enum class Kind { File, Folder, Pipe, Socket, Device };
  Kind What = Kind::File;
  std::uint64_t Size = 0;
  std::uint64_t Names = 1;  ///< hard links
  // 0 where the system has no such thing:
  unsigned Mode = 0;  ///< permission bits
  unsigned Owner = 0;
  unsigned Group = 0;
};
/// In bytes; -1, and errno, where it cannot be told.
[[nodiscard]] std::int64_t LengthOf(int file);

/// 0 or the error number.
[[nodiscard]] int ReadStatus(const char* path, FileStatus& status);

/// 0, or the error number that tells why the user may not write to it.
[[nodiscard]] int WhyNotWritable(const char* path);

/// Gives the file an owner and a group, as far as the user may give it away; then permissions, of which those
/// that act in the owner's name go only with the owner. On Windows, where a new file has the rights of its
/// folder, it does nothing.
void TakeOver(int file, unsigned owner, unsigned group, unsigned mode);

}  // namespace quillmark
