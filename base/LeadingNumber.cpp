#include "base/LeadingNumber.h"

#include <charconv>
#include <limits>

namespace quillmark {
namespace {

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

bool StartsNumber(std::string_view text) {
  return !text.empty() && (IsDigit(text[0]) || (text[0] == '.' && text.size() > 1 && IsDigit(text[1])));
}

/// from_chars says "out of range" for both ends; a negative exponent tells them apart.
bool Underflowed(std::string_view digits) {
  const auto exponent = digits.find_first_of("eE");
  return exponent == std::string_view::npos ? digits[0] == '0' || digits[0] == '.'
                                            : exponent + 1 < digits.size() && digits[exponent + 1] == '-';
}

}  // namespace

double LeadingNumber(std::string_view text) {
  while (!text.empty() && (text[0] == ' ' || text[0] == '\t')) {
    text.remove_prefix(1);
  }
  const bool negative = !text.empty() && text[0] == '-';
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
    text.remove_prefix(1);
  }
  // from_chars also knows "inf" and "nan", which are no numbers to a user.
  if (!StartsNumber(text)) {
    return 0.0;
  }
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc::result_out_of_range) {
    const std::string_view digits(text.data(), static_cast<std::size_t>(end - text.data()));
    value = Underflowed(digits) ? 0.0 : std::numeric_limits<double>::infinity();
  }
  return negative ? -value : value;
}

}  // namespace quillmark
