#pragma once

#include <string_view>

namespace quillmark {

/// The number that the longest leading part of `text` reads as: blanks, a sign, digits with at most one
/// point, an exponent. "12.5 lines" is 12.5; text that starts with no number, the empty text included, is 0;
/// a number too large for a double is infinite.
[[nodiscard]] double LeadingNumber(std::string_view text);

}  // namespace quillmark
