#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace quillmark {

/// The small letter of one of A to Z, in any locale; any other character as it is.
constexpr char LowerAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

[[nodiscard]] inline std::string LowerAscii(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), [](char c) { return LowerAscii(c); });
  return lower;
}

/// Whether `text` is the word in whatever case; `lower` has small letters.
[[nodiscard]] constexpr bool IsSameWord(std::string_view text, std::string_view lower) {
  return std::ranges::equal(text, lower, {}, [](char c) { return LowerAscii(c); });
}

}  // namespace quillmark
