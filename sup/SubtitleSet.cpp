#include "sup/SubtitleSet.h"

#include <charconv>
#include <limits>

namespace quillmark {
namespace {

constexpr std::int64_t NoEnd = std::numeric_limits<std::int64_t>::max();

std::int64_t EndOf(const SubtitleRange& range) {
  return range.Last.value_or(NoEnd);
}

std::optional<std::int64_t> ParseNumber(std::string_view text) {
  std::int64_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end && number > 0 ? std::optional(number) : std::nullopt;
}

std::optional<SubtitleRange> ParseRange(std::string_view text) {
  const auto dash = text.find('-');
  const auto first = ParseNumber(text.substr(0, dash));
  if (!first) {
    return std::nullopt;
  }
  if (dash == std::string_view::npos) {
    return SubtitleRange{.First = *first, .Last = first};
  }
  if (dash + 1 == text.size()) {
    return SubtitleRange{.First = *first};
  }
  const auto last = ParseNumber(text.substr(dash + 1));
  return last && *last >= *first ? std::optional(SubtitleRange{.First = *first, .Last = last}) : std::nullopt;
}

}  // namespace

SubtitleSet SubtitleSet::All() {
  SubtitleSet all;
  all.ranges_.emplace_back();
  return all;
}

SubtitleSet SubtitleSet::Of(std::int64_t number) {
  SubtitleSet one;
  one.Append(number);
  return one;
}

std::optional<SubtitleSet> SubtitleSet::Parse(std::string_view text) {
  SubtitleSet set;
  while (true) {
    const auto comma = text.find(',');
    const auto range = ParseRange(text.substr(0, comma));
    if (!range) {
      return std::nullopt;
    }
    set.Add(*range);
    if (comma == std::string_view::npos) {
      return set;
    }
    text.remove_prefix(comma + 1);
  }
}

void SubtitleSet::Add(const SubtitleRange& range) {
  if (!ranges_.empty() && ranges_.back().Last && *ranges_.back().Last < range.First - 1) {
    ranges_.push_back(range);
    return;
  }
  // The ranges that overlap or touch the new one become one with it.
  const auto from = std::ranges::find_if(
      ranges_, [&](const SubtitleRange& other) { return !other.Last || *other.Last >= range.First - 1; });
  const auto to = std::find_if(from, ranges_.end(), [&](const SubtitleRange& other) {
    return range.Last && other.First - 1 > *range.Last;
  });
  SubtitleRange joined = range;
  if (from != to) {
    joined.First = std::min(joined.First, from->First);
    const std::int64_t end = std::max(EndOf(joined), EndOf(*(to - 1)));
    joined.Last = end == NoEnd ? std::nullopt : std::optional(end);
  }
  ranges_.insert(ranges_.erase(from, to), joined);
}

bool SubtitleSet::Contains(std::int64_t number) const {
  const auto after = std::ranges::upper_bound(ranges_, number, {}, &SubtitleRange::First);
  return after != ranges_.begin() && number <= EndOf(*(after - 1));
}

std::int64_t SubtitleSet::SizeWithin(std::int64_t count) const {
  std::int64_t size = 0;
  for (const SubtitleRange& range : ranges_) {
    size += std::max<std::int64_t>(std::min(EndOf(range), count) - range.First + 1, 0);
  }
  return size;
}

std::optional<std::int64_t> SubtitleSet::Outside(std::int64_t count) const {
  for (const SubtitleRange& range : ranges_) {
    const std::int64_t named = range.Last.value_or(range.First);
    if (range != SubtitleRange() && named > count) {
      return named;
    }
  }
  return std::nullopt;
}

SubtitleSet SubtitleSet::Others() const {
  SubtitleSet others;
  std::int64_t next = 1;
  for (const SubtitleRange& range : ranges_) {
    if (range.First > next) {
      others.ranges_.push_back({.First = next, .Last = range.First - 1});
    }
    if (EndOf(range) == NoEnd) {
      return others;
    }
    next = *range.Last + 1;
  }
  others.ranges_.push_back({.First = next});
  return others;
}

std::string SubtitleSet::Text() const {
  std::string text;
  for (const SubtitleRange& range : ranges_) {
    if (!text.empty()) {
      text += ',';
    }
    text += std::to_string(range.First);
    if (range.Last != range.First) {
      text += '-';
    }
    if (range.Last && range.Last != range.First) {
      text += std::to_string(*range.Last);
    }
  }
  return text;
}

}  // namespace quillmark
