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

  [[nodiscard]] std::int64_t Size() const { return static_cast<std::int64_t>(size_); }

  /// The first subtitle that ends behind `time`, 0 when none does. The first end that is larger is where the
  /// largest end so far becomes larger.
  [[nodiscard]] std::int64_t FirstEndingAfter(std::int64_t time) const {
    const auto ends = std::span(stream_.LatestEnd).first(size_);
    const auto found = std::ranges::upper_bound(ends, time);
    return found == ends.end() ? 0 : found - ends.begin();
  }

  [[nodiscard]] std::int64_t OverlapWith(const Interval& primary, std::int64_t index) const {
    return index >= 0 && index < Size() ? Overlap(At(index), primary) : 0;
  }

  [[nodiscard]] Interval At(std::int64_t index) const {
    const auto i = static_cast<std::size_t>(index);
    return {.Start = stream_.StartTime[i], .End = stream_.EndTime[i]};
  }

 private:
  const SupStream& stream_;
  std::size_t size_;
};

/// The last test that holds decides, so equal overlaps go to the next one, then to the previous one.
std::int64_t LongestOverlap(std::int64_t candidate, std::int64_t previous, std::int64_t current,
                            std::int64_t next) {
  if (next >= current && next >= previous) {
    return candidate + 1;
  }
  if (previous >= current && previous >= next) {
    return candidate - 1;
  }
  return candidate;
}

}  // namespace

std::int64_t ChooseSecondary(const SupStream& primary, std::int64_t index, const SupStream& secondary) {
  const auto i = static_cast<std::size_t>(index);
  if (index < 0 || i >= primary.StartTime.size() || i >= primary.EndTime.size()) {
    return -1;
  }
  const TimeTable others(secondary);
  if (others.Size() == 0) {
    return -1;
  }
  const Interval shown = {.Start = primary.StartTime[i], .End = primary.EndTime[i]};
  const std::int64_t candidate = others.FirstEndingAfter(shown.Start);
  if (others.At(candidate).Start >= shown.End) {
    return 0;
  }
  const std::int64_t chosen =
      LongestOverlap(candidate, others.OverlapWith(shown, candidate - 1),
                     others.OverlapWith(shown, candidate), others.OverlapWith(shown, candidate + 1));
  return std::min(chosen, others.Size() - 1);
}

}  // namespace quillmark
