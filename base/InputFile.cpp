#include "base/InputFile.h"

#include <cerrno>
#include <system_error>

#include "base/Words.h"

namespace quillmark {

Result<std::uintmax_t> OpenInputFile(const std::filesystem::path& path, std::ifstream& file) {
  std::error_code error;
  const auto status = std::filesystem::status(path, error);
  if (std::filesystem::is_directory(status)) {
    return Failure{Words::Tr("it is a folder")};
  }
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    return Failure{Words::Tr("it is a device or a pipe, not a file")};
  }
  const std::uintmax_t length = std::filesystem::file_size(path, error);
  if (error) {
    return Failure{error.message()};
  }
  errno = 0;
  file.open(path, std::ios::binary);
  if (!file) {
    return Failure{errno != 0 ? std::generic_category().message(errno) : Words::Tr("it cannot be opened")};
  }
  return length;
}

}  // namespace quillmark
