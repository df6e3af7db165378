#include "containers/FileInAnyCase.h"

#include <string>
#include <system_error>
#include <tuple>

#include "base/AsciiCase.h"
#include "base/FilePath.h"

namespace quillmark {

std::optional<std::filesystem::path> FileInAnyCase(const std::filesystem::path& path) {
  std::error_code error;
  if (std::filesystem::is_regular_file(path, error)) {
    return path;
  }
  const std::filesystem::path folder = path.has_parent_path() ? path.parent_path() : ".";
  const std::string lower = LowerAscii(Utf8FromPath(path.filename()));
  const auto rank = [&path](const std::filesystem::path& name) {
    return std::tuple(name.stem() != path.stem(), name);
  };
  std::optional<std::filesystem::path> best;
  for (std::filesystem::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    const std::filesystem::path name = at->path().filename();
    std::error_code ignored;
    if (IsSameWord(Utf8FromPath(name), lower) && (!best || rank(name) < rank(*best)) &&
        at->is_regular_file(ignored)) {
      best = name;
    }
  }
  return best ? std::optional(path.parent_path() / *best) : std::nullopt;
}

}  // namespace quillmark
