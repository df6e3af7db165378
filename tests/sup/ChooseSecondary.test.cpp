#include "sup/ChooseSecondary.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

constexpr std::int64_t Lowest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t Highest = std::numeric_limits<std::int64_t>::max();

struct Times {
  std::int64_t Start;
  std::int64_t End;
};

SupStream Stream(const std::vector<Times>& subtitles) {
  SupStream stream;
  std::int64_t latest = Lowest;
  for (const Times& times : subtitles) {
    latest = std::max(latest, times.End);
    stream.StartTime.push_back(times.Start);
    stream.EndTime.push_back(times.End);
    stream.LatestEnd.push_back(latest);
  }
  stream.Count = static_cast<std::int32_t>(subtitles.size());
  return stream;
}

std::optional<std::size_t> Choose(const Times& primary, const std::vector<Times>& secondary) {
  return ChooseSecondary(Stream({primary}), 0, Stream(secondary));
}

/// Three that follow one another without a gap.
const std::vector<Times> ThreeInARow = {{0, 100}, {100, 200}, {200, 300}};

TEST(ChooseSecondary, TakesTheOneThatCoversThePrimary) {
  EXPECT_EQ(Choose({110, 190}, ThreeInARow), 1U);
}

TEST(ChooseSecondary, TakesTheNextWhenItOverlapsLonger) {
  EXPECT_EQ(Choose({190, 260}, ThreeInARow), 2U);
}

TEST(ChooseSecondary, KeepsTheFirstWhenTheNextOverlapsShorter) {
  EXPECT_EQ(Choose({140, 210}, ThreeInARow), 1U);
}

TEST(ChooseSecondary, EqualOverlapsTakeTheLaterOne) {
  EXPECT_EQ(Choose({50, 150}, ThreeInARow), 1U);
}

TEST(ChooseSecondary, OnlyDirectNeighboursAreCompared) {
  EXPECT_EQ(Choose({90, 1000}, {{0, 100}, {100, 200}, {200, 990}}), 1U);
}

TEST(ChooseSecondary, PreviousWinsOverCurrentOnEqualOverlaps) {
  // The previous one ended before the start and overlaps by -5, the current one by -5 too, as it ends before
  // it starts, the next one by less.
  EXPECT_EQ(Choose({105, 200}, {{0, 100}, {111, 106}, {300, 400}}), 0U);
}

TEST(ChooseSecondary, NothingOverlapsTakesTheFirst) {
  EXPECT_EQ(Choose({10, 20}, {{20, 30}, {30, 40}}), 0U);
  EXPECT_EQ(Choose({150, 160}, {{0, 100}, {160, 200}, {200, 300}}), 0U);
}

TEST(ChooseSecondary, EndAtPrimaryStartIsNoOverlap) {
  EXPECT_EQ(Choose({100, 150}, ThreeInARow), 1U);
}

TEST(ChooseSecondary, SingleOneIsTakenForEveryTime) {
  for (const Times& primary : {Times{0, 10}, Times{50, 60}, Times{95, 300}, Times{500, 600}, Times{20, 0}}) {
    EXPECT_EQ(Choose(primary, {{30, 100}}), 0U) << primary.Start;
  }
}

TEST(ChooseSecondary, EarlierLongSubtitleIsFoundBehindShorterOnes) {
  // The first end after 400 is that of subtitle 1, though 2 and 3 end before it.
  EXPECT_EQ(Choose({400, 450}, {{0, 10}, {10, 500}, {20, 30}, {30, 40}}), 1U);
}

TEST(ChooseSecondary, PrimaryThatEndsBeforeItStartsMayHaveNone) {
  // Current and next overlap by less than nothing, the missing previous one by 0.
  EXPECT_EQ(Choose({50, 40}, {{0, 100}, {100, 200}}), std::nullopt);
}

TEST(ChooseSecondary, WinnerBehindTheLastIsTheLast) {
  EXPECT_EQ(Choose({150, 140}, {{0, 100}, {100, 200}}), 1U);
}

TEST(ChooseSecondary, EmptySecondaryHasNone) {
  EXPECT_EQ(Choose({0, 10}, {}), std::nullopt);
}

TEST(ChooseSecondary, UnknownPrimaryHasNone) {
  const SupStream primary = Stream({{0, 10}});
  const SupStream secondary = Stream(ThreeInARow);
  EXPECT_EQ(ChooseSecondary(primary, static_cast<std::size_t>(-1), secondary), std::nullopt);
  EXPECT_EQ(ChooseSecondary(primary, 1, secondary), std::nullopt);
}

TEST(ChooseSecondary, TimesAtTheEndsOfTheirRangeDoNotWrap) {
  // The overlaps are as long as numbers go; the chain keeps its order.
  EXPECT_EQ(Choose({Lowest, Highest}, {{Lowest, -1}, {-1, Highest}}), 1U);
  EXPECT_EQ(Choose({Lowest, Highest}, {{Lowest, Highest}, {Highest, Lowest}}), 0U);
  EXPECT_EQ(Choose({0, Highest}, {{Lowest, 10}, {10, Highest}}), 1U);
  EXPECT_EQ(Choose({Highest, Lowest}, {{0, 10}}), 0U);
}

/// The rule word by word, by a walk from the start.
std::optional<std::size_t> ByTheWalk(const Times& primary, const std::vector<Times>& secondary) {
  const auto count = static_cast<std::int64_t>(secondary.size());
  const auto at = [&](std::int64_t i) { return secondary[static_cast<std::size_t>(i)]; };
  const auto overlap = [&](std::int64_t i) {
    return std::min(at(i).End, primary.End) - std::max(at(i).Start, primary.Start);
  };
  std::int64_t k = 0;
  while (k < count && at(k).End <= primary.Start) {
    ++k;
  }
  if (k == count) {
    k = 0;
  }
  std::int64_t candidate = -1;
  std::int64_t current = 0;
  std::int64_t previous = 0;
  std::int64_t next = 0;
  if (at(k).Start < primary.End) {
    candidate = k;
    current = overlap(k);
    previous = k > 0 ? overlap(k - 1) : 0;
    next = k < count - 1 ? overlap(k + 1) : 0;
  }
  std::int64_t result = 0;
  if (current >= previous && current >= next) {
    result = candidate;
  }
  if (previous >= current && previous >= next) {
    result = candidate - 1;
  }
  if (next >= current && next >= previous) {
    result = candidate + 1;
  }
  return result < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(std::min(result, count - 1)));
}

TEST(ChooseSecondary, SearchAgreesWithAWalkFromTheStart) {
  std::mt19937 random(20240607);
  std::uniform_int_distribution<std::int64_t> time(-3, 24);
  std::uniform_int_distribution<int> length(1, 6);
  for (int round = 0; round < 20000; ++round) {
    std::vector<Times> secondary;
    for (int i = length(random); i > 0; --i) {
      secondary.push_back({time(random), time(random)});
    }
    const Times primary = {time(random), time(random)};
    ASSERT_EQ(Choose(primary, secondary), ByTheWalk(primary, secondary)) << "round " << round;
  }
}

TEST(TicksTogether, OfASubtitleThatThereIsNotAreNone) {
  EXPECT_EQ(TicksTogether(Stream({{110, 190}}), 0, Stream(ThreeInARow), 1), 80);
  EXPECT_EQ(TicksTogether(Stream({{110, 190}}), 1, Stream(ThreeInARow), 1), 0);
}

}  // namespace
}  // namespace quillmark
