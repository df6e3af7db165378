#include "cli/Decimal.h"

#include <charconv>
#include <limits>

namespace quillmark::cli {

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

}  // namespace quillmark::cli
