#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <io.h>
#include <sys/stat.h>
#include <system_error>

#include <climits>

#include "base/FilePath.h"
#include "files/SystemCalls.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

unsigned OneCall(std::size_t length) {
  return static_cast<unsigned>(std::min<std::size_t>(length, INT_MAX));
}

int OpenFile(const char* path, int flags, unsigned mode) {
  return ::_wopen(PathFromUtf8(path).c_str(), flags | _O_BINARY | _O_NOINHERIT,
                  (mode & 0200U) != 0 ? _S_IREAD | _S_IWRITE : _S_IREAD);
}

std::ptrdiff_t WriteBytes(int file, const void* bytes, std::size_t length) {
  return ::_write(file, bytes, OneCall(length));
}

/// The C runtime cannot ask for room without writing to it.
int ReserveSpace(int /*file*/, std::int64_t /*length*/) {
  return 0;
}

int TruncateFile(int file, std::int64_t length) {
  const int error = ::_chsize_s(file, length);
  return error == 0 ? 0 : (errno = error, -1);
}

int Answer(const std::error_code& error) {
  return error ? (errno = error.default_error_condition().value(), -1) : 0;
}

/// The C runtime's own refuses a name that is taken.
int RenameFile(const char* from, const char* to) {
  std::error_code error;
  fs::rename(PathFromUtf8(from), PathFromUtf8(to), error);
  return Answer(error);
}

int CreateFolder(const char* path, unsigned /*mode*/) {
  std::error_code error;
  if (!fs::create_directory(PathFromUtf8(path), error) && !error) {
    errno = EEXIST;
    return -1;
  }
  return Answer(error);
}

int LinkFile(const char* path, const char* name) {
  std::error_code error;
  fs::create_hard_link(PathFromUtf8(path), PathFromUtf8(name), error);
  return Answer(error);
}

int RemoveName(const char* path) {
  std::error_code error;
  if (!fs::remove(PathFromUtf8(path), error) && !error) {
    errno = ENOENT;
    return -1;
  }
  return Answer(error);
}

}  // namespace

SystemCalls& System() {
  static SystemCalls calls{.Open = OpenFile,
                           .Write = WriteBytes,
                           .Reserve = ReserveSpace,
                           .Truncate = TruncateFile,
                           .Sync = ::_commit,
                           .Close = ::_close,
                           .Rename = RenameFile,
                           .MakeFolder = CreateFolder,
                           .Link = LinkFile,
                           .Remove = RemoveName};
  return calls;
}

std::ptrdiff_t ReadAt(int file, void* bytes, std::size_t length, std::uint64_t start) {
  return ::_lseeki64(file, static_cast<std::int64_t>(start), SEEK_SET) < 0
             ? -1
             : ::_read(file, bytes, OneCall(length));
}

std::int64_t LengthOf(int file) {
  return ::_filelengthi64(file);
}

int ReadStatus(const char* path, FileStatus& status) {
  const fs::path place = PathFromUtf8(path);
  std::error_code error;
  const fs::file_type type = fs::status(place, error).type();
  if (type == fs::file_type::not_found) {
    return ENOENT;
  }
  if (type == fs::file_type::none) {
    return error.default_error_condition().value();
  }
  status = {};
  if (type == fs::file_type::directory) {
    status.What = FileStatus::Kind::Folder;
  } else if (type != fs::file_type::regular) {
    status.What = FileStatus::Kind::Device;
  } else {
    const std::uintmax_t size = fs::file_size(place, error);
    if (error) {
      return error.default_error_condition().value();
    }
    status.Size = size;
    const std::uintmax_t names = fs::hard_link_count(place, error);
    status.Names = error ? 1 : names;
  }
  return 0;
}

int WhyNotWritable(const char* path) {
  constexpr int Writing = 2;
  return ::_waccess(PathFromUtf8(path).c_str(), Writing) == 0 ? 0 : errno;
}

void TakeOver(int /*file*/, unsigned /*owner*/, unsigned /*group*/, unsigned /*mode*/) {}

}  // namespace quillmark
