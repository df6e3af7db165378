#include "files/KeptFile.h"

#include <string>
#include <system_error>
#include <utility>

namespace quillmark {

KeptFile::KeptFile(std::filesystem::path file, std::filesystem::path name)
    : file_(std::move(file)), name_(std::move(name)) {}

std::optional<KeptFile> KeptFile::Of(const std::filesystem::path& path) {
  std::error_code failed;
  const auto file = std::filesystem::canonical(path, failed);
  if (failed || !std::filesystem::is_regular_file(file, failed) ||
      std::filesystem::hard_link_count(file, failed) != 1) {
    return std::nullopt;
  }
  constexpr int Tries = 10;
  for (int number = 1; number <= Tries; ++number) {
    auto name = file;
    name += '.';
    name += std::to_string(number);
    name += ".old";
    std::filesystem::create_hard_link(file, name, failed);
    if (!failed) {
      return KeptFile(file, name);
    }
  }
  return std::nullopt;
}

void KeptFile::PutBack() const {
  std::error_code ignored;
  std::filesystem::rename(name_, file_, ignored);
}

void KeptFile::Forget() const {
  std::error_code ignored;
  std::filesystem::remove(name_, ignored);
}

}  // namespace quillmark
