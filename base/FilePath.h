#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace quillmark {

/// Paths travel through the program as UTF-8 text; these two lines are the way to the file system and back,
/// on systems whose narrow strings are something else too.
[[nodiscard]] inline std::filesystem::path PathFromUtf8(std::string_view text) {
  return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

[[nodiscard]] inline std::string Utf8FromPath(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace quillmark
