#include "files/KeptFile.h"

#include <string>
#include <system_error>
#include <utility>

#include "base/FilePath.h"
#include "base/Words.h"
#include "files/SystemCalls.h"

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
    if (System().Link(Utf8FromPath(file).c_str(), Utf8FromPath(name).c_str()) == 0) {
      return KeptFile(file, name);
    }
  }
  return std::nullopt;
}

Result<void> KeptFile::PutBack() const {
  if (System().Rename(Utf8FromPath(name_).c_str(), Utf8FromPath(file_).c_str()) == 0) {
    return {};
  }
  return Failure{Words::Tr("The file from before now has the name %1", {Utf8FromPath(name_.filename())})};
}

void KeptFile::Forget() const {
  static_cast<void>(System().Remove(Utf8FromPath(name_).c_str()));
}

}  // namespace quillmark
