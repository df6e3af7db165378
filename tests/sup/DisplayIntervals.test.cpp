#include "sup/DisplayIntervals.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <limits>
#include <ostream>
#include <random>
#include <utility>
#include <vector>

namespace quillmark {

void PrintTo(const DisplayInterval& interval, std::ostream* out) {
  const auto index = [](const std::optional<std::size_t>& shown) {
    return shown ? std::to_string(*shown) : std::string("-");
  };
  *out << interval.Start << ".." << interval.End << " delay " << interval.Delay << ": "
       << index(interval.First) << " + " << index(interval.Second);
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Displays = std::vector<OwnDisplay>;
using Intervals = std::vector<DisplayInterval>;
using ShownIndex = std::optional<std::size_t>;

constexpr ShownIndex NoneShown = std::nullopt;
constexpr std::int64_t EarliestTime = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t LatestTime = std::numeric_limits<std::int64_t>::max();

Intervals Split(const Displays& first, const Displays& second, std::int64_t join = 0) {
  DisplayIntervals intervals(join);
  for (const OwnDisplay& display : first) {
    intervals.First.Add(display);
  }
  for (const OwnDisplay& display : second) {
    intervals.Second.Add(display);
  }
  while (intervals.Step()) {
  }
  return {intervals.Made().begin(), intervals.Made().end()};
}

DisplayInterval Interval(std::int64_t start, std::int64_t end, std::uint16_t delay, ShownIndex first,
                         ShownIndex second) {
  return {.Start = start, .End = end, .Delay = delay, .First = first, .Second = second};
}

TEST(DisplayIntervals, NothingIsShownByNothing) {
  EXPECT_THAT(Split({}, {}), IsEmpty());
}

TEST(DisplayIntervals, OneStreamStaysAsItIs) {
  const Displays shown = {{5000, 3}, {10000, 2}};
  EXPECT_THAT(Split(shown, {}),
              ElementsAre(Interval(5000, 8000, 3, 0, NoneShown), Interval(10000, 12000, 2, 1, NoneShown)));
  EXPECT_THAT(Split({}, shown),
              ElementsAre(Interval(5000, 8000, 3, NoneShown, 0), Interval(10000, 12000, 2, NoneShown, 1)));
}

TEST(DisplayIntervals, SecondThatStartsLaterAndEndsLater) {
  EXPECT_THAT(Split({{0, 10}}, {{4000, 10}}),
              ElementsAre(Interval(0, 4000, 4, 0, NoneShown), Interval(4000, 10000, 6, 0, 0),
                          Interval(10000, 14000, 4, NoneShown, 0)));
}

TEST(DisplayIntervals, SecondThatStartsEarlierAndEndsEarlier) {
  EXPECT_THAT(Split({{4000, 10}}, {{0, 10}}),
              ElementsAre(Interval(0, 4000, 4, NoneShown, 0), Interval(4000, 10000, 6, 0, 0),
                          Interval(10000, 14000, 4, 0, NoneShown)));
}

TEST(DisplayIntervals, OneInsideTheOther) {
  EXPECT_THAT(Split({{0, 10}}, {{3000, 2}}),
              ElementsAre(Interval(0, 3000, 3, 0, NoneShown), Interval(3000, 5000, 2, 0, 0),
                          Interval(5000, 10000, 5, 0, NoneShown)));
  EXPECT_THAT(Split({{3000, 2}}, {{0, 10}}),
              ElementsAre(Interval(0, 3000, 3, NoneShown, 0), Interval(3000, 5000, 2, 0, 0),
                          Interval(5000, 10000, 5, NoneShown, 0)));
}

TEST(DisplayIntervals, EqualTimesAreOne) {
  EXPECT_THAT(Split({{0, 10}}, {{0, 10}}), ElementsAre(Interval(0, 10000, 10, 0, 0)));
}

TEST(DisplayIntervals, EqualStartsAndEqualEnds) {
  EXPECT_THAT(Split({{0, 10}}, {{0, 4}}),
              ElementsAre(Interval(0, 4000, 4, 0, 0), Interval(4000, 10000, 6, 0, NoneShown)));
  EXPECT_THAT(Split({{6000, 4}}, {{0, 10}}),
              ElementsAre(Interval(0, 6000, 6, NoneShown, 0), Interval(6000, 10000, 4, 0, 0)));
}

TEST(DisplayIntervals, EndThatIsTheOthersStart) {
  EXPECT_THAT(Split({{0, 4}}, {{4000, 4}}),
              ElementsAre(Interval(0, 4000, 4, 0, NoneShown), Interval(4000, 8000, 4, NoneShown, 0)));
}

TEST(DisplayIntervals, LaterStartReplacesWhatIsStillShown) {
  EXPECT_THAT(Split({{0, 100}, {4000, 3}}, {}),
              ElementsAre(Interval(0, 4000, 4, 0, NoneShown), Interval(4000, 7000, 3, 1, NoneShown)));
}

TEST(DisplayIntervals, WithoutAnEndUntilTheNextStart) {
  EXPECT_THAT(Split({{0, 0}, {4000, 3}}, {{1000, 1}}),
              ElementsAre(Interval(0, 1000, 1, 0, NoneShown), Interval(1000, 2000, 1, 0, 0),
                          Interval(2000, 4000, 2, 0, NoneShown), Interval(4000, 7000, 3, 1, NoneShown)));
}

TEST(DisplayIntervals, LastWithoutAnEndHasAThousandDelayUnits) {
  EXPECT_THAT(Split({{500, 0}}, {}), ElementsAre(Interval(500, 1000500, 1000, 0, NoneShown)));
}

TEST(DisplayIntervals, DelaysAreUnsigned) {
  EXPECT_THAT(Split({{0, 0x8000}}, {}), ElementsAre(Interval(0, 32766000, 32766, 0, NoneShown),
                                                    Interval(32766000, 32768000, 2, 0, NoneShown)));
}

TEST(DisplayIntervals, OrderIsThatOfTheTimes) {
  EXPECT_THAT(Split({{9000, 2}, {0, 0}, {4000, 1}}, {}),
              ElementsAre(Interval(0, 4000, 4, 1, NoneShown), Interval(4000, 5000, 1, 2, NoneShown),
                          Interval(9000, 11000, 2, 0, NoneShown)));
}

TEST(DisplayIntervals, OfEqualStartsTheLastOneIsShown) {
  EXPECT_THAT(Split({{9000, 2}, {0, 5}, {0, 3}}, {}),
              ElementsAre(Interval(0, 3000, 3, 2, NoneShown), Interval(9000, 11000, 2, 0, NoneShown)));
}

TEST(DisplayIntervals, ShorterGapsAreClosedByWhatIsBefore) {
  const Displays first = {{0, 4}};
  const Displays second = {{6000, 4}};
  EXPECT_THAT(Split(first, second, 2001),
              ElementsAre(Interval(0, 6000, 6, 0, NoneShown), Interval(6000, 10000, 4, NoneShown, 0)));
  EXPECT_THAT(Split(first, second, 2000),
              ElementsAre(Interval(0, 4000, 4, 0, NoneShown), Interval(6000, 10000, 4, NoneShown, 0)));
}

TEST(DisplayIntervals, JoinIsWithinAnHour) {
  const Displays apart = {{0, 4}, {MaxJoin + 4000, 4}};
  EXPECT_EQ(Split(apart, {}, LatestTime), Split(apart, {}, 0));
  EXPECT_EQ(Split(apart, {}, -1), Split(apart, {}, 0));
}

TEST(DisplayIntervals, ShortOneIsGivenToTheOneBefore) {
  // For 300 ticks both are shown.
  EXPECT_THAT(Split({{0, 10}}, {{9700, 10}}),
              ElementsAre(Interval(0, 10000, 10, 0, NoneShown), Interval(10000, 19700, 10, NoneShown, 0)));
  EXPECT_THAT(Split({{0, 10}, {9700, 10}}, {{300, 10}}),
              ElementsAre(Interval(0, 10300, 11, 0, 0), Interval(10300, 19700, 9, 1, NoneShown)));
}

TEST(DisplayIntervals, ShortOneWithNothingBeforeIsGivenToTheOneAfter) {
  EXPECT_THAT(Split({{300, 10}}, {{0, 20}}),
              ElementsAre(Interval(0, 10300, 11, 0, 0), Interval(10300, 20000, 10, NoneShown, 0)));
}

TEST(DisplayIntervals, SeveralShortOnesInARow) {
  // 500 ticks of the first, of both, and of the second.
  EXPECT_THAT(Split({{0, 1}}, {{500, 1}}), ElementsAre(Interval(0, 1500, 2, 0, 0)));
  // The first three together are long enough, and the last of them is shown.
  EXPECT_THAT(Split({{0, 0}, {400, 0}, {800, 0}, {1200, 3}}, {}),
              ElementsAre(Interval(0, 1200, 2, 2, NoneShown), Interval(1200, 4200, 3, 3, NoneShown)));
}

TEST(DisplayIntervals, NeighboursOfAShortOneThatShowTheSameAreOne) {
  EXPECT_THAT(Split({{0, 10}}, {{4000, 0}, {4200, 2}, {4800, 3}}),
              ElementsAre(Interval(0, 4800, 5, 0, NoneShown), Interval(4800, 7800, 3, 0, 2),
                          Interval(7800, 10000, 2, 0, NoneShown)));
  // The second stream's only one is there for 900 ticks, as two that start after it are not.
  EXPECT_THAT(Split({{0, 10}}, {{4000, 0}, {4900, 0}, {4900, 1}, {EarliestTime, 1}}),
              ElementsAre(Interval(EarliestTime, EarliestTime + 1000, 1, NoneShown, 3),
                          Interval(0, 4900, 5, 0, NoneShown), Interval(4900, 5900, 1, 0, 2),
                          Interval(5900, 10000, 4, 0, NoneShown)));
}

TEST(DisplayIntervals, DelayIsRoundedUpWhereOneFollowsAtOnce) {
  EXPECT_THAT(Split({{0, 10}}, {{4001, 10}}),
              ElementsAre(Interval(0, 4001, 5, 0, NoneShown), Interval(4001, 10000, 6, 0, 0),
                          Interval(10000, 14001, 4, NoneShown, 0)));
}

TEST(DisplayIntervals, DelayIsRoundedToNearestBeforeAGap) {
  EXPECT_EQ(Split({{0, 10}}, {{4499, 1}}).back().Delay, 5);  // 4501 ticks are left
  EXPECT_EQ(Split({{0, 10}}, {{4500, 1}}).back().Delay, 5);
  EXPECT_EQ(Split({{0, 10}}, {{4501, 1}}).back().Delay, 4);
}

TEST(DisplayIntervals, WhatIsTooLongForADelayIsSeveral) {
  EXPECT_THAT(Split({{0, 0}, {32767000, 1}}, {}), ElementsAre(Interval(0, 32767000, 32767, 0, NoneShown),
                                                              Interval(32767000, 32768000, 1, 1, NoneShown)));
  EXPECT_THAT(Split({{0, 0}, {70000000, 1}}, {}),
              ElementsAre(Interval(0, 32767000, 32767, 0, NoneShown),
                          Interval(32767000, 65534000, 32767, 0, NoneShown),
                          Interval(65534000, 70000000, 4466, 0, NoneShown),
                          Interval(70000000, 70001000, 1, 1, NoneShown)));
}

TEST(DisplayIntervals, RestOfALongOneIsNotShort) {
  // 300 ticks more than the longest delay says.
  EXPECT_THAT(Split({{0, 0}, {32767300, 1}}, {}), ElementsAre(Interval(0, 32766000, 32766, 0, NoneShown),
                                                              Interval(32766000, 32767300, 2, 0, NoneShown),
                                                              Interval(32767300, 32768300, 1, 1, NoneShown)));
}

TEST(DisplayIntervals, WithoutAnEndForAnHourAtMost) {
  const Intervals intervals = Split({{0, 0}, {LatestTime - 5000, 3}}, {});
  ASSERT_THAT(intervals, SizeIs(11));
  EXPECT_EQ(intervals[9].End, 324000000);
  EXPECT_EQ(intervals[10], Interval(LatestTime - 5000, LatestTime - 2000, 3, 1, NoneShown));
}

TEST(DisplayIntervals, WhatWouldPassTheLastTimeEndsWithIt) {
  EXPECT_THAT(Split({{LatestTime - 2500, 10}}, {{LatestTime, 10}, {EarliestTime, 1}}),
              ElementsAre(Interval(EarliestTime, EarliestTime + 1000, 1, NoneShown, 1),
                          Interval(LatestTime - 2500, LatestTime, 3, 0, NoneShown)));
  EXPECT_THAT(Split({{LatestTime - 200, 10}}, {}),
              ElementsAre(Interval(LatestTime - 200, LatestTime, 1, 0, NoneShown)));
}

TEST(DisplayIntervals, ManyAreMadeInBoundedSteps) {
  // From the last one to the first; two of each time, of which the one that comes later in the list counts.
  constexpr std::int64_t Count = 40'000;
  DisplayIntervals intervals(0);
  for (std::int64_t i = 0; i < Count; ++i) {
    intervals.First.Add({.Start = (Count - i) / 2 * 2000, .Delay = 1});
  }
  int steps = 0;
  while (intervals.Step()) {
    ++steps;
  }
  EXPECT_GT(steps, 20);
  ASSERT_EQ(intervals.Made().size(), Count / 2 + 1);
  for (std::int64_t i = 0; i <= Count / 2; ++i) {
    // The last of the list starts at 0 alone with the one before it.
    const DisplayInterval& made = intervals.Made()[static_cast<std::size_t>(i)];
    ASSERT_EQ(made.Start, i * 2000);
    ASSERT_EQ(made.First, std::optional(static_cast<std::size_t>(std::min(Count - 2 * i, Count - 1)))) << i;
  }
}

/// What one stream shows at `time`, looked for among all of its displays.
ShownIndex ShownAt(const Displays& displays, std::int64_t time) {
  ShownIndex shown;
  for (std::size_t i = 0; i < displays.size(); ++i) {
    if (displays[i].Start <= time && (!shown || displays[i].Start >= displays[*shown].Start)) {
      shown = i;
    }
  }
  if (!shown) {
    return NoneShown;
  }
  const OwnDisplay& display = displays[*shown];
  const bool isLast =
      std::ranges::none_of(displays, [&](const OwnDisplay& other) { return other.Start > display.Start; });
  const std::int64_t delay = display.Delay != 0 ? display.Delay : isLast ? 1000 : 324000;
  return time < display.Start + delay * 1000 ? shown : NoneShown;
}

/// What units of these intervals show at `time`, the last one that started.
std::pair<ShownIndex, ShownIndex> ShownBy(const Intervals& intervals, std::int64_t time) {
  std::pair<ShownIndex, ShownIndex> shown;
  for (const DisplayInterval& interval : intervals) {
    if (interval.Start <= time && time < interval.Start + interval.Delay * 1000) {
      shown = {interval.First, interval.Second};
    }
  }
  return shown;
}

class RandomDisplays : public testing::TestWithParam<unsigned> {
 protected:
  unsigned Below(unsigned end) { return static_cast<unsigned>(random_() % end); }

  Displays Random() {
    Displays displays;
    for (unsigned i = 0; i < 12; ++i) {
      displays.push_back({.Start = std::int64_t{Below(60)} * 1000,
                          .Delay = static_cast<std::uint16_t>(Below(3) == 0 ? 0 : 1 + Below(12))});
    }
    return displays;
  }
  /// Starts that are no whole delay units.
  Displays RandomOffGrid() {
    Displays displays;
    for (unsigned i = 0; i < 12; ++i) {
      displays.push_back(
          {.Start = Below(40000), .Delay = static_cast<std::uint16_t>(Below(3) == 0 ? 0 : 1 + Below(8))});
    }
    return displays;
  }

  std::mt19937 random_{GetParam()};
};

TEST_P(RandomDisplays, EveryDelayUnitShowsWhatBothShowInTheFewestIntervals) {
  const Displays first = Random();
  const Displays second = Random();
  const Intervals intervals = Split(first, second);
  std::size_t changes = 0;
  std::pair<ShownIndex, ShownIndex> before;
  for (std::int64_t time = 0; time < 1100000; time += 1000) {
    const std::pair shown(ShownAt(first, time), ShownAt(second, time));
    changes += shown != before && (shown.first || shown.second) ? 1U : 0U;
    before = shown;
    EXPECT_EQ(ShownBy(intervals, time), shown) << time;
  }
  EXPECT_THAT(intervals, SizeIs(changes));
}

TEST_P(RandomDisplays, OffTheGridNothingIsShortAndNoGapOpens) {
  const Displays first = RandomOffGrid();
  const Displays second = RandomOffGrid();
  const Intervals intervals = Split(first, second);
  for (std::size_t i = 0; i < intervals.size(); ++i) {
    const DisplayInterval& interval = intervals[i];
    EXPECT_GE(interval.End - interval.Start, 1000);
    const std::int64_t shownUntil = interval.Start + interval.Delay * 1000;
    const bool isFollowed = i + 1 < intervals.size() && intervals[i + 1].Start == interval.End;
    if (isFollowed) {
      EXPECT_GE(shownUntil, interval.End);
      EXPECT_LT(shownUntil, interval.End + 1000);
      EXPECT_NE(std::pair(interval.First, interval.Second),
                std::pair(intervals[i + 1].First, intervals[i + 1].Second));
    } else {
      EXPECT_LE(std::abs(shownUntil - interval.End), 500);
    }
  }
  // What stays for a delay unit before and after is shown.
  for (std::int64_t time = 0; time < 60000; time += 500) {
    const std::pair shown(ShownAt(first, time), ShownAt(second, time));
    bool isSteady = true;
    for (std::int64_t around = time - 1000; around <= time + 1000; around += 100) {
      isSteady = isSteady && std::pair(ShownAt(first, around), ShownAt(second, around)) == shown;
    }
    EXPECT_TRUE(!isSteady || ShownBy(intervals, time) == shown) << time;
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomDisplays, testing::Range(1U, 9U));

}  // namespace
}  // namespace quillmark
