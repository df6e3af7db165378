#include "app/TimeColumns.h"

#include <gmock/gmock.h>
#include <limits>
#include <vector>

namespace quillmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint8_t OfBar = TimeColumn::Bar;
constexpr std::uint8_t FirstOfBar = TimeColumn::BarStart;
constexpr TimeView OneSecond = {.Start = 0, .Span = 1000};

TimeBar Between(std::uint32_t start, std::uint32_t end) {
  return {.Start = start, .End = end, .Overlaps = false, .HasProblem = false};
}

TEST(BarOf, CountsMilliseconds) {
  EXPECT_EQ(BarOf(90'000, 180'000), Between(1000, 2000));
}

TEST(BarOf, AnEndThatIsNotKnownIsTheStart) {
  EXPECT_EQ(BarOf(90'000, 0), Between(1000, 1000));
}

TEST(BarOf, TimesOutsideTheClockStandAtItsEnds) {
  using Limits = std::numeric_limits<std::int64_t>;
  constexpr std::uint32_t ClockEnd = 95'443'717;  // 2^33 ticks
  EXPECT_EQ(BarOf(Limits::min(), Limits::max()), Between(0, ClockEnd));
  EXPECT_EQ(BarOf(Limits::max(), Limits::min()), Between(ClockEnd, ClockEnd));
}

TEST(BarOf, TheOverlapIsNoOtherProblem) {
  PacketMarks marks;
  marks.Add(StreamProblemCode::Overlap);
  EXPECT_TRUE(BarOf(0, 1, marks).Overlaps);
  EXPECT_FALSE(BarOf(0, 1, marks).HasProblem);
  marks.Add(StreamProblemCode::NoEnd);
  EXPECT_TRUE(BarOf(0, 1, marks).HasProblem);
  PacketMarks forced;
  forced.Add(PacketTrait::Forced);
  EXPECT_FALSE(BarOf(0, 1, forced).HasProblem);
}

TEST(TimeColumns, AColumnThatASubtitleTouchesHasItsBar) {
  EXPECT_THAT(TimeColumns(std::vector{Between(150, 350)}, OneSecond, 5), ElementsAre(OfBar, OfBar, 0, 0, 0));
  EXPECT_THAT(TimeColumns(std::vector{Between(200, 400)}, OneSecond, 5), ElementsAre(0, OfBar, 0, 0, 0));
}

TEST(TimeColumns, TheShortestSubtitleHasAColumn) {
  EXPECT_THAT(TimeColumns(std::vector{Between(400, 400)}, OneSecond, 5), ElementsAre(0, 0, OfBar, 0, 0));
}

TEST(TimeColumns, WhatLiesOutsideTheViewIsCutOff) {
  EXPECT_THAT(TimeColumns(std::vector{Between(0, 100), Between(900, 5000), Between(2000, 2100)},
                          {.Start = 500, .Span = 1000}, 5),
              ElementsAre(0, 0, OfBar | FirstOfBar, OfBar, OfBar));
  EXPECT_THAT(TimeColumns(std::vector{Between(0, 700)}, {.Start = 500, .Span = 1000}, 5),
              ElementsAre(OfBar, 0, 0, 0, 0));
}

TEST(TimeColumns, ABarOfFourColumnsIsPartedFromTheOneBefore) {
  EXPECT_THAT(TimeColumns(std::vector{Between(0, 400), Between(400, 1000)}, OneSecond, 10),
              ElementsAre(OfBar | FirstOfBar, OfBar, OfBar, OfBar, OfBar | FirstOfBar, OfBar, OfBar, OfBar,
                          OfBar, OfBar));
  EXPECT_THAT(TimeColumns(std::vector{Between(0, 300), Between(300, 600)}, OneSecond, 10),
              ElementsAre(OfBar, OfBar, OfBar, OfBar, OfBar, OfBar, 0, 0, 0, 0));
}

TEST(TimeColumns, OverlapsAndProblemsAreOfTheirOwnColumns) {
  TimeBar overlapping = Between(0, 200);
  overlapping.Overlaps = true;
  TimeBar faulty = Between(400, 600);
  faulty.HasProblem = true;
  constexpr std::uint8_t Overlap = OfBar | TimeColumn::Overlap;
  constexpr std::uint8_t Problem = OfBar | TimeColumn::Problem;
  EXPECT_THAT(
      TimeColumns(std::vector{overlapping, Between(200, 400), faulty, Between(600, 1000)}, OneSecond, 10),
      ElementsAre(Overlap, Overlap, OfBar, OfBar, Problem | TimeColumn::ProblemStart, Problem,
                  OfBar | FirstOfBar, OfBar, OfBar, OfBar));
}

TEST(TimeColumns, WithoutColumnsOrSubtitlesThereIsNothing) {
  EXPECT_THAT(TimeColumns(std::vector{Between(0, 1)}, OneSecond, 0), IsEmpty());
  EXPECT_THAT(TimeColumns({}, OneSecond, 3), ElementsAre(0, 0, 0));
}

TEST(ScaleStep, IsTheFirstThatHasRoom) {
  EXPECT_EQ(ScaleStep(1, 100), 100U);
  EXPECT_EQ(ScaleStep(1, 101), 500U);
  EXPECT_EQ(ScaleStep(100, 120), 15'000U);
  EXPECT_EQ(ScaleStep(10'000, 90), 900'000U);
  EXPECT_EQ(ScaleStep(1'000'000, 100), 36'000'000U);
}

TEST(ScaleStep, IsARoundTime) {
  for (const std::uint32_t step :
       {100U, 500U, 1'000U, 2'000U, 5'000U, 10'000U, 15'000U, 30'000U, 60'000U, 120'000U, 300'000U, 600'000U,
        900'000U, 1'800'000U, 3'600'000U, 7'200'000U, 18'000'000U, 36'000'000U}) {
    EXPECT_EQ(ScaleStep(step, 1), step);
    EXPECT_EQ(ScaleStep(step * 0.9, 1), step);
  }
}

}  // namespace
}  // namespace quillmark
