#include "sup/SubtitleFilter.h"

#include <algorithm>
#include <limits>

#include "sup/StreamProblem.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

using Code = StreamProblemCode;

constexpr int MaxTimeParts = 3;  // hours, minutes, seconds
/// More than a stream can have subtitles, and far from the limit of the numbers.
constexpr std::int64_t MaxNumber = std::numeric_limits<std::uint32_t>::max();

constexpr std::uint64_t MarksOf(FilterKind kind) {
  switch (kind) {
    case FilterKind::All:
    case FilterKind::Selected:
      break;
    case FilterKind::WithProblems:
      return PacketMarks::AllProblems;
    case FilterKind::Invalid:
      return PacketMarks::BitOf(PacketTrait::Invalid);
    case FilterKind::Forced:
      return PacketMarks::BitOf(PacketTrait::Forced);
    case FilterKind::Animated:
      return PacketMarks::BitOf(PacketTrait::Animated);
    case FilterKind::WithoutEnd:
      return PacketMarks::BitOf(Code::NoEnd);
    case FilterKind::Overlapping:
      return PacketMarks::BitOf(Code::Overlap);
    case FilterKind::OtherCodes:
      return PacketMarks::BitOf(PacketTrait::OtherCodes);
  }
  return 0;
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view Spaces = " \t";
  const std::size_t first = text.find_first_not_of(Spaces);
  return first == std::string_view::npos ? std::string_view()
                                         : text.substr(first, text.find_last_not_of(Spaces) + 1 - first);
}

/// What stands before the first `separator`, trimmed; `rest` keeps what stands after it, or nothing.
std::string_view TakeUpTo(std::string_view& rest, char separator) {
  const std::size_t end = std::min(rest.find(separator), rest.size());
  const std::string_view part = Trimmed(rest.substr(0, end));
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return part;
}

/// nullopt for what is no row of digits; one that is too large gives MaxNumber.
std::optional<std::int64_t> Number(std::string_view digits) {
  std::int64_t value = 0;
  for (const char digit : digits) {
    if (digit < '0' || digit > '9') {
      return std::nullopt;
    }
    value = std::min(value * 10 + (digit - '0'), MaxNumber);
  }
  return digits.empty() ? std::nullopt : std::optional(value);
}

}  // namespace

SubtitleFilter::SubtitleFilter(std::string_view text, FilterKind kind)
    : kind_(kind), kindMarks_(MarksOf(kind)) {
  text = Trimmed(text);
  if (!text.empty() && !ReadNumbers(text) && !ReadTime(text)) {
    wordMarks_ = CodesWithWords(text);
  }
}

bool SubtitleFilter::WantsAll() const {
  return kind_ == FilterKind::All && !AsksForMarks() && !time_ && !lines_;
}

bool SubtitleFilter::WantsDamage(StreamProblemCode code) const {
  PacketMarks marks;
  marks.Add(code);
  return kind_ != FilterKind::Selected && !time_ && !lines_ && FitsMarks(marks);
}

bool SubtitleFilter::ReadNumbers(std::string_view text) {
  std::vector<Range> ranges;
  bool hasNumber = false;
  while (!text.empty()) {
    std::string_view part = TakeUpTo(text, ',');
    if (part.empty()) {
      continue;
    }
    const bool isRange = part.find('-') != std::string_view::npos;
    const auto first = Number(TakeUpTo(part, '-'));
    auto last = isRange ? Number(Trimmed(part)) : first;
    if (isRange && Trimmed(part).empty()) {
      last = MaxNumber;
    }
    if (!first || !last) {
      return false;
    }
    hasNumber = true;
    // The subtitle with number n has index n - 1; none has number 0.
    ranges.push_back({.First = std::max<std::int64_t>(*first, 1) - 1, .End = *last});
  }
  if (!hasNumber) {
    return false;
  }
  std::ranges::sort(ranges, {}, &Range::First);
  lines_.emplace();
  for (const Range& range : ranges) {
    if (range.First >= range.End) {
      continue;
    }
    if (!lines_->empty() && range.First <= lines_->back().End) {
      lines_->back().End = std::max(lines_->back().End, range.End);
    } else {
      lines_->push_back(range);
    }
  }
  return true;
}

bool SubtitleFilter::ReadTime(std::string_view text) {
  if (text.find(':') == std::string_view::npos) {
    return false;
  }
  std::string_view fraction = text;
  text = TakeUpTo(fraction, text.find('.') != std::string_view::npos ? '.' : ',');
  std::int64_t exactness = TicksPerSecond;
  std::int64_t seconds = 0;
  const auto parts = 1 + std::ranges::count(text, ':');
  for (auto i = parts; i-- > 0;) {
    const std::string_view part = TakeUpTo(text, ':');
    const bool isLacking = i == 0 && part.empty();
    const auto value = isLacking ? 0 : Number(part);
    if (!value || parts > MaxTimeParts) {
      return false;
    }
    exactness = isLacking ? 60 * TicksPerSecond : exactness;
    seconds = seconds * 60 + *value;
  }
  std::int64_t ticks = seconds * TicksPerSecond;
  for (const char digit : fraction) {
    if (digit < '0' || digit > '9') {
      return false;
    }
    if (exactness % 10 == 0) {
      exactness /= 10;
      ticks += (digit - '0') * exactness;
    }
  }
  time_ = Range{.First = ticks, .End = ticks + exactness};
  return true;
}

bool SubtitleFilter::FitsMarks(PacketMarks marks) const {
  return (kindMarks_ == 0 || (marks.Bits & kindMarks_) != 0) &&
         (!wordMarks_ || (marks.Bits & *wordMarks_) != 0);
}

void SubtitleFilter::Find(const SupStream& stream, std::span<const PacketMarks> marks,
                          const std::vector<bool>& selected, std::vector<std::uint32_t>& found) const {
  found.clear();
  constexpr std::int64_t NoEnd = std::numeric_limits<std::int64_t>::max();
  const bool asksForMarks = AsksForMarks();
  const bool asksForSelected = kind_ == FilterKind::Selected;
  const auto fits = [&](std::size_t i) {
    return (!asksForMarks || FitsMarks(marks[i])) &&
           WantsTime(stream.StartTime[i], stream.EndTime[i] != 0 ? stream.EndTime[i] : NoEnd) &&
           (!asksForSelected || selected[i]);
  };
  std::size_t count = stream.PacketOffset.size();
  count = asksForMarks ? std::min(count, marks.size()) : count;
  count = asksForSelected ? std::min(count, selected.size()) : count;
  const std::vector<Range> all = {{.First = 0, .End = MaxNumber}};
  for (const Range& range : lines_ ? *lines_ : all) {
    const std::size_t end = std::min(count, static_cast<std::size_t>(range.End));
    for (auto i = static_cast<std::size_t>(range.First); i < end; ++i) {
      if (fits(i)) {
        found.push_back(static_cast<std::uint32_t>(i));
      }
    }
  }
}

}  // namespace quillmark
