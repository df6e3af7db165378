#include "base/LeadingNumber.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <limits>
#include <system_error>

#include "base/Digit.h"

namespace quillmark {
namespace {

bool StartsNumber(std::string_view text) {
  return !text.empty() && (IsDigit(text[0]) || (text[0] == '.' && text.size() > 1 && IsDigit(text[1])));
}

/// The exponent of a number's text; the largest or smallest integer where it is beyond those, 0 where there
/// is none.
std::int64_t ExponentOf(std::string_view text) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
  }
  std::int64_t exponent = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), exponent);
  if (error == std::errc::result_out_of_range) {
    using Limits = std::numeric_limits<std::int64_t>;
    return text.starts_with('-') ? Limits::min() : Limits::max();
  }
  return exponent;
}

/// from_chars says "out of range" for both ends; the place of the first digit that counts tells them apart.
bool IsTooLarge(std::string_view number) {
  const std::size_t e = number.find_first_of("eE");
  const std::string_view digits = number.substr(0, e);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::size_t first = digits.find_first_of("123456789");
  const auto places = static_cast<std::int64_t>(point) - static_cast<std::int64_t>(first);
  return e == std::string_view::npos ? places > 0 : ExponentOf(number.substr(e + 1)) > -places;
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
    const std::string_view number(text.data(), static_cast<std::size_t>(end - text.data()));
    value = IsTooLarge(number) ? std::numeric_limits<double>::infinity() : 0.0;
  }
  return negative ? -value : value;
}

}  // namespace quillmark
