#include "sup/SubtitlePairs.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <unordered_map>
#include <utility>

#include "base/ContentHash.h"
#include "sup/HeldUnit.h"

namespace quillmark {
namespace {

using Keys = std::vector<std::uint64_t>;

/// Some of a stream's subtitles that follow one another.
struct Stretch {
  std::size_t Begin = 0;
  std::size_t End = 0;

  [[nodiscard]] bool IsEmpty() const { return Begin >= End; }
};

struct Match {
  std::size_t First = 0;
  std::size_t Second = 0;
};
/// Both members ascend.
using Matches = std::vector<Match>;

/// Spreads a number's bits over all 64.
std::uint64_t Mixed(std::uint64_t value) {
  value ^= value >> 33U;
  value *= 0xFF51AFD7ED558CCDU;
  value ^= value >> 33U;
  value *= 0xC4CEB9FE1A85EC53U;
  return value ^ value >> 33U;
}

std::uint64_t PictureKey(const ReadUnit& unit) {
  const SpuControl& control = unit.Control;
  std::uint64_t key = ContentHash(unit.PictureBytes());
  for (const std::int64_t number :
       {std::int64_t{control.Width()}, std::int64_t{control.Height()}, std::int64_t{control.TopFieldOffset},
        std::int64_t{control.BottomFieldOffset}}) {
    key = Mixed(key + static_cast<std::uint64_t>(number));
  }
  return key;
}

/// What the subtitles of a stream are paired by.
struct StreamKeys {
  explicit StreamKeys(const SupStream& stream) {
    const std::size_t count = SubtitleCount(stream);
    Start.reserve(count);
    Picture.reserve(count);
    StartAndPicture.reserve(count);
    UnitReader reader(stream);
    for (std::size_t i = 0; i < count; ++i) {
      Start.push_back(static_cast<std::uint64_t>(stream.StartTime[i]));
      Picture.push_back(PictureKey(reader.Read(i)));
      StartAndPicture.push_back(Mixed(Start.back()) ^ Picture.back());
    }
  }

  Keys Start;
  Keys Picture;
  Keys StartAndPicture;
};

/// The longest ascending run of Second through matches whose First ascends.
Matches LongestAscending(const Matches& matches) {
  constexpr std::size_t None = std::numeric_limits<std::size_t>::max();
  std::vector<std::size_t> ends;  // of the best run of each length, the match that ends it
  std::vector<std::size_t> before(matches.size(), None);
  for (std::size_t i = 0; i < matches.size(); ++i) {
    auto place = ends.end();
    if (!ends.empty() && matches[ends.back()].Second >= matches[i].Second) {
      place = std::ranges::lower_bound(ends, matches[i].Second, {},
                                       [&](std::size_t end) { return matches[end].Second; });
    }
    before[i] = place == ends.begin() ? None : *(place - 1);
    if (place == ends.end()) {
      ends.push_back(i);
    } else {
      *place = i;
    }
  }
  Matches run(ends.size());
  std::size_t at = ends.empty() ? None : ends.back();
  std::generate(run.rbegin(), run.rend(), [&] {
    const auto match = matches[at];
    at = before[at];
    return match;
  });
  return run;
}

/// Pairs equal keys of two ranges in their order. Keys that each range has once are what holds; the ranges
/// between them are gone through in the same way.
class KeyMatcher {
 public:
  KeyMatcher(const Keys& first, const Keys& second, Matches& matches)
      : first_(first), second_(second), matches_(matches) {}

  void Run(Stretch first, Stretch second, int depth = 0) {
    while (!first.IsEmpty() && !second.IsEmpty() && first_[first.Begin] == second_[second.Begin]) {
      matches_.push_back({.First = first.Begin++, .Second = second.Begin++});
    }
    std::size_t same = 0;
    while (first.Begin < first.End - same && second.Begin < second.End - same &&
           first_[first.End - same - 1] == second_[second.End - same - 1]) {
      ++same;
    }
    first.End -= same;
    second.End -= same;
    if (depth < MaxDepth && !first.IsEmpty() && !second.IsEmpty()) {
      RunBetweenUnique(first, second, depth);
    }
    for (; same > 0; --same) {
      matches_.push_back({.First = first.End++, .Second = second.End++});
    }
  }

 private:
  /// Each level takes time in proportion to the ranges' lengths.
  static constexpr int MaxDepth = 16;

  struct Occurrences {
    std::size_t InFirst = 0;
    std::size_t InSecond = 0;
    std::size_t Second = 0;  ///< where in the second range
  };

  void RunBetweenUnique(const Stretch& first, const Stretch& second, int depth) {
    Stretch gapFirst = first;
    Stretch gapSecond = second;
    for (const Match& anchor : LongestAscending(UniqueMatches(first, second))) {
      gapFirst.End = anchor.First;
      gapSecond.End = anchor.Second;
      // A range that another match, just before, reached into already begins after that.
      Run(gapFirst, gapSecond, depth + 1);
      matches_.push_back(anchor);
      gapFirst = {.Begin = anchor.First + 1, .End = first.End};
      gapSecond = {.Begin = anchor.Second + 1, .End = second.End};
    }
    if (gapFirst.Begin > first.Begin) {
      Run(gapFirst, gapSecond, depth + 1);
    }
  }

  [[nodiscard]] Matches UniqueMatches(const Stretch& first, const Stretch& second) const {
    std::unordered_map<std::uint64_t, Occurrences> occurrences(second.End - second.Begin);
    for (std::size_t i = second.Begin; i < second.End; ++i) {
      Occurrences& found = occurrences[second_[i]];
      ++found.InSecond;
      found.Second = i;
    }
    for (std::size_t i = first.Begin; i < first.End; ++i) {
      if (const auto found = occurrences.find(first_[i]); found != occurrences.end()) {
        ++found->second.InFirst;
      }
    }
    Matches unique;
    for (std::size_t i = first.Begin; i < first.End; ++i) {
      const auto found = occurrences.find(first_[i]);
      if (found != occurrences.end() && found->second.InFirst == 1 && found->second.InSecond == 1) {
        unique.push_back({.First = i, .Second = found->second.Second});
      }
    }
    return unique;
  }

  const Keys& first_;
  const Keys& second_;
  Matches& matches_;
};

/// When a subtitle is shown, in 90 kHz ticks; one without an end until the next one, and a last one for no
/// time.
struct Display {
  std::int64_t Start = 0;
  std::int64_t End = 0;

  [[nodiscard]] std::uint64_t Length() const { return Ticks(Start, End); }
  [[nodiscard]] bool SharesHalfWith(const Display& other) const {
    const std::uint64_t shared = Ticks(std::max(Start, other.Start), std::min(End, other.End));
    const std::uint64_t shorter = std::min(Length(), other.Length());
    return shared > 0 && shared >= shorter - shorter / 2;
  }

 private:
  /// Unsigned, since stored times may lie at both ends of the 64-bit range.
  static std::uint64_t Ticks(std::int64_t start, std::int64_t end) {
    return end <= start ? 0 : static_cast<std::uint64_t>(end) - static_cast<std::uint64_t>(start);
  }
};

Display DisplayOf(const SupStream& stream, std::size_t index) {
  const std::int64_t start = stream.StartTime[index];
  const std::int64_t end = stream.EndTime[index];
  return {.Start = start, .End = end != 0 ? end : start};
}

class Pairing {
 public:
  Pairing(const SupStream& first, const SupStream& second) : first_(first), second_(second) {}

  void MatchKeys(const Keys& first, const Keys& second) {
    Refine([&](const Stretch& inFirst, const Stretch& inSecond, Matches& matches) {
      KeyMatcher(first, second, matches).Run(inFirst, inSecond);
    });
  }

  void MatchDisplays() {
    Refine([&](Stretch inFirst, Stretch inSecond, Matches& matches) {
      while (!inFirst.IsEmpty() && !inSecond.IsEmpty()) {
        const Display first = DisplayOf(first_, inFirst.Begin);
        const Display second = DisplayOf(second_, inSecond.Begin);
        if (first.SharesHalfWith(second)) {
          matches.push_back({.First = inFirst.Begin++, .Second = inSecond.Begin++});
        } else if (first.Start <= second.Start) {
          ++inFirst.Begin;
        } else {
          ++inSecond.Begin;
        }
      }
    });
  }

  [[nodiscard]] std::vector<SubtitlePair> Pairs() const {
    std::vector<SubtitlePair> pairs;
    pairs.reserve(std::max(SubtitleCount(first_), SubtitleCount(second_)));
    ForEachGap([&](const Stretch& inFirst, const Stretch& inSecond, const Match* after) {
      for (std::size_t i = inFirst.Begin; i < inFirst.End; ++i) {
        pairs.push_back({.First = i, .Second = std::nullopt});
      }
      for (std::size_t i = inSecond.Begin; i < inSecond.End; ++i) {
        pairs.push_back({.First = std::nullopt, .Second = i});
      }
      if (after != nullptr) {
        pairs.push_back({.First = after->First, .Second = after->Second});
      }
    });
    return pairs;
  }

 private:
  /// Calls `look` with what lies before each match, and with that match; at last with what lies after all of
  /// them.
  template <typename Look>
  void ForEachGap(const Look& look) const {
    std::size_t first = 0;
    std::size_t second = 0;
    for (const Match& match : matches_) {
      look(Stretch{.Begin = first, .End = match.First}, Stretch{.Begin = second, .End = match.Second},
           &match);
      first = match.First + 1;
      second = match.Second + 1;
    }
    look(Stretch{.Begin = first, .End = SubtitleCount(first_)},
         Stretch{.Begin = second, .End = SubtitleCount(second_)}, nullptr);
  }

  /// Adds the matches that `find` gives for each gap.
  template <typename Find>
  void Refine(const Find& find) {
    Matches refined;
    refined.reserve(matches_.size());
    ForEachGap([&](const Stretch& inFirst, const Stretch& inSecond, const Match* after) {
      if (!inFirst.IsEmpty() && !inSecond.IsEmpty()) {
        find(inFirst, inSecond, refined);
      }
      if (after != nullptr) {
        refined.push_back(*after);
      }
    });
    matches_ = std::move(refined);
  }

  const SupStream& first_;
  const SupStream& second_;
  Matches matches_;
};

}  // namespace

std::vector<SubtitlePair> PairSubtitles(const SupStream& first, const SupStream& second) {
  const StreamKeys firstKeys(first);
  const StreamKeys secondKeys(second);
  Pairing pairing(first, second);
  pairing.MatchKeys(firstKeys.StartAndPicture, secondKeys.StartAndPicture);
  pairing.MatchKeys(firstKeys.Start, secondKeys.Start);
  pairing.MatchKeys(firstKeys.Picture, secondKeys.Picture);
  pairing.MatchDisplays();
  return pairing.Pairs();
}

}  // namespace quillmark
