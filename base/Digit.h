#pragma once

namespace quillmark {

/// Whether it is one of 0 to 9, in any locale.
constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace quillmark
