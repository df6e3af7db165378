#include "base/Decimal.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "base/Digit.h"
#include "base/Ratio.h"

namespace quillmark {
namespace {

/// 0.`digits` times `factor`, rounded: the digits are multiplied one by one, last one first, and what is
/// carried out of the first one stands before the point.
std::int64_t ScaledFraction(std::string_view digits, std::int32_t factor) {
  std::int64_t carry = 0;
  std::int64_t tenths = 0;
  for (std::size_t i = digits.size(); i-- > 0;) {
    carry += std::int64_t{digits[i] - '0'} * factor;
    tenths = carry % 10;
    carry /= 10;
  }
  return carry + (tenths >= 5 ? 1 : 0);
}

}  // namespace

std::optional<std::int64_t> ParseDecimal(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) {
    text.remove_prefix(1);
  }
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (stop != end || error == std::errc::invalid_argument) {
    return std::nullopt;
  }
  using Limits = std::numeric_limits<std::int64_t>;
  if (error == std::errc::result_out_of_range) {
    return text.starts_with('-') ? Limits::min() : Limits::max();
  }
  return number;
}

std::optional<std::int64_t> ScaleDecimal(std::string_view text, std::int32_t factor) {
  const auto point = std::min(text.find('.'), text.size());
  const std::string_view whole = text.substr(0, point);
  const std::string_view fraction = text.substr(std::min(point + 1, text.size()));
  if ((whole.empty() && fraction.empty()) || (point < text.size() && fraction.empty()) ||
      !std::ranges::all_of(whole, IsDigit) || !std::ranges::all_of(fraction, IsDigit)) {
    return std::nullopt;
  }
  const std::int64_t number = whole.empty() ? 0 : ParseDecimal(whole).value_or(0);
  const auto scaled = Scaler({.Numerator = factor, .Denominator = 1}).Rounded(number);
  return scaled ? Sum(*scaled, ScaledFraction(fraction, factor)) : std::nullopt;
}

}  // namespace quillmark
