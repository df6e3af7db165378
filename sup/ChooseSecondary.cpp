#include "sup/ChooseSecondary.h"

#include <algorithm>
#include <limits>
#include <span>

namespace quillmark {
namespace {

struct Interval {
  std::int64_t Start = 0;
  std::int64_t End = 0;
};

/// a - b, held at the ends of the 64-bit range: stored times may lie anywhere in it.
std::int64_t SaturatingDifference(std::int64_t a, std::int64_t b) {
  using Limits = std::numeric_limits<std::int64_t>;
  if (b < 0 && a > Limits::max() + b) {
    return Limits::max();
  }
  if (b > 0 && a < Limits::min() + b) {
    return Limits::min();
  }
  return a - b;
}

/// Ticks during which both are shown; negative when they are apart.
std::int64_t Overlap(const Interval& a, const Interval& b) {
  return SaturatingDifference(std::min(a.End, b.End), std::max(a.Start, b.Start));
}

class TimeTable {
 public:
  explicit TimeTable(const SupStream& stream)
      : stream_(stream),
        size_(std::min({stream.StartTime.size(), stream.EndTime.size(), stream.LatestEnd.size()})) {}

  [[nodiscard]] std::size_t Size() const { return size_; }

  /// The first subtitle that ends after `time`, 0 when none does. The first end that is larger is where the
  /// largest end so far becomes larger.
  [[nodiscard]] std::size_t FirstEndingAfter(std::int64_t time) const {
    const auto ends = std::span(stream_.LatestEnd).first(size_);
    const auto found = std::ranges::upper_bound(ends, time);
    return found == ends.end() ? 0 : static_cast<std::size_t>(found - ends.begin());
  }

  /// 0 where there is no such subtitle, which the one before the first is not either.
  [[nodiscard]] std::int64_t OverlapWith(const Interval& primary, std::optional<std::size_t> index) const {
    return index && *index < size_ ? Overlap(At(*index), primary) : 0;
  }

  [[nodiscard]] Interval At(std::size_t index) const {
    return {.Start = stream_.StartTime[index], .End = stream_.EndTime[index]};
  }

 private:
  const SupStream& stream_;
  std::size_t size_;
};

std::optional<std::size_t> Before(std::size_t index) {
  return index > 0 ? std::optional(index - 1) : std::nullopt;
}

/// Equal overlaps go to the next one, then to the previous one.
std::optional<std::size_t> LongestOverlap(std::size_t candidate, std::int64_t previous, std::int64_t current,
                                          std::int64_t next) {
  if (next >= current && next >= previous) {
    return candidate + 1;
  }
  return previous >= current ? Before(candidate) : candidate;
}

}  // namespace

std::optional<std::size_t> ChooseSecondary(const SupStream& primary, std::size_t index,
                                           const SupStream& secondary) {
  const TimeTable others(secondary);
  if (index >= primary.EndTime.size() || others.Size() == 0) {
    return std::nullopt;
  }
  const Interval shown = {.Start = primary.StartTime[index], .End = primary.EndTime[index]};
  const std::size_t candidate = others.FirstEndingAfter(shown.Start);
  if (others.At(candidate).Start >= shown.End) {
    return 0;
  }
  const auto chosen =
      LongestOverlap(candidate, others.OverlapWith(shown, Before(candidate)),
                     others.OverlapWith(shown, candidate), others.OverlapWith(shown, candidate + 1));
  return chosen ? std::optional(std::min(*chosen, others.Size() - 1)) : std::nullopt;
}

std::int64_t TicksTogether(const SupStream& primary, std::size_t index, const SupStream& secondary,
                           std::size_t over) {
  const TimeTable others(secondary);
  return index < primary.EndTime.size()
             ? others.OverlapWith({.Start = primary.StartTime[index], .End = primary.EndTime[index]}, over)
             : 0;
}

}  // namespace quillmark
