#include "cli/SubtitleRange.h"

#include <charconv>

namespace quillmark::cli {
namespace {

std::optional<std::int64_t> ParseNumber(std::string_view text) {
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end && number > 0 ? std::optional(number) : std::nullopt;
}

}  // namespace

std::optional<SubtitleRange> ParseSubtitleRange(std::string_view text) {
  const auto dash = text.find('-');
  const auto first = ParseNumber(text.substr(0, dash));
  if (!first) {
    return std::nullopt;
  }
  if (dash == std::string_view::npos) {
    return SubtitleRange{.First = *first, .Last = first};
  }
  if (dash + 1 == text.size()) {
    return SubtitleRange{.First = *first, .Last = std::nullopt};
  }
  const auto last = ParseNumber(text.substr(dash + 1));
  if (!last || *last < *first) {
    return std::nullopt;
  }
  return SubtitleRange{.First = *first, .Last = last};
}

bool IsWithin(const SubtitleRange& range, std::int64_t count) {
  return range == SubtitleRange{} || (range.First <= count && range.Last.value_or(range.First) <= count);
}

}  // namespace quillmark::cli
