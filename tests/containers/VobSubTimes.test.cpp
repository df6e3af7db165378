#include "containers/VobSubTimes.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

using testing::ElementsAre;

std::vector<std::int64_t> Ticks(const std::vector<VobSubTime>& times) {
  return TicksOf(times);
}

TEST(VobSubTimes, WithoutATimeStampTheLineCounts) {
  EXPECT_THAT(Ticks({{.Line = 1000}}), ElementsAre(90000));
}

TEST(VobSubTimes, TimeStampHasTheTicksOfALineThatWasCutOff) {
  EXPECT_THAT(Ticks({{.Line = 1000, .TimeStamp = 90089}}), ElementsAre(90089));
  EXPECT_THAT(Ticks({{.Line = 1000, .TimeStamp = 90090}}), ElementsAre(90090));
}

TEST(VobSubTimes, TimeStampHasTheTicksOfALineThatWasRounded) {
  EXPECT_THAT(Ticks({{.Line = 1000, .TimeStamp = 89955}}), ElementsAre(89955));
}

TEST(VobSubTimes, LineCountsBeforeATimeStampFurtherAway) {
  EXPECT_THAT(Ticks({{.Line = 1000, .TimeStamp = 90091}}), ElementsAre(90000));
}

TEST(VobSubTimes, DelayShiftsBoth) {
  EXPECT_THAT(Ticks({{.Line = 1000, .Delay = 1500, .TimeStamp = 90001}, {.Line = 2000, .Delay = 1500}}),
              ElementsAre(225001, 315000));
  EXPECT_THAT(Ticks({{.Line = 1000, .Delay = 1500, .TimeStamp = 90091}}), ElementsAre(225000));
}

TEST(VobSubTimes, ShiftOfAllLinesKeepsTheTicks) {
  // 2 s later than their time stamps of 90001, 180002, 270089 ticks.
  EXPECT_THAT(Ticks({{.Line = 3000, .TimeStamp = 90001},
                     {.Line = 4000, .TimeStamp = 180002},
                     {.Line = 5000, .TimeStamp = 270089}}),
              ElementsAre(270001, 360002, 450089));
}

TEST(VobSubTimes, ShiftsAMillisecondEitherWayAreTheSameOne) {
  // 2000, 2001 and 1999 ms later than their time stamps.
  EXPECT_THAT(Ticks({{.Line = 3000, .TimeStamp = 90001},
                     {.Line = 4001, .TimeStamp = 180002},
                     {.Line = 4999, .TimeStamp = 270000}}),
              ElementsAre(270001, 360002, 450000));
}

TEST(VobSubTimes, TimeStampsBeforeALongShiftHaveNotPassedTheirBits) {
  // Ten hours later than their time stamps, which start again after 26.5 hours.
  EXPECT_THAT(Ticks({{.Line = 36001000, .TimeStamp = 90001},
                     {.Line = 36002000, .TimeStamp = 180002},
                     {.Line = 36003000, .TimeStamp = 270089}}),
              ElementsAre(3240090001, 3240180002, 3240270089));
}

TEST(VobSubTimes, LineAtZeroFollowsTheShift) {
  EXPECT_THAT(Ticks({{.Line = 0, .TimeStamp = 90001}, {.Line = 1000, .TimeStamp = 180002}}),
              ElementsAre(1, 90002));
}

TEST(VobSubTimes, LineThatDoesNotFollowTheShiftCounts) {
  EXPECT_THAT(Ticks({{.Line = 3000, .TimeStamp = 90001},
                     {.Line = 4500, .TimeStamp = 180002},
                     {.Line = 5000, .TimeStamp = 270089}}),
              ElementsAre(270001, 405000, 450089));
}

TEST(VobSubTimes, LastLineMayHaveTheSmallestShift) {
  EXPECT_THAT(Ticks({{.Line = 3000, .TimeStamp = 90001},
                     {.Line = 4000, .TimeStamp = 180002},
                     {.Line = 4000, .TimeStamp = 270089}}),
              ElementsAre(270001, 360002, 360000));
}

TEST(VobSubTimes, LineAtZeroCountsBeforeATimeStampFarAway) {
  EXPECT_THAT(Ticks({{.Line = 0, .TimeStamp = 900000}}), ElementsAre(0));
}

TEST(VobSubTimes, ShiftThatHalfTheLinesHaveIsNotCommon) {
  EXPECT_THAT(Ticks({{.Line = 3000, .TimeStamp = 90001}, {.Line = 7000, .TimeStamp = 180002}}),
              ElementsAre(270000, 630000));
}

TEST(VobSubTimes, WithoutACommonShiftLinesCountThatAreAMillisecondAndAHalfLate) {
  EXPECT_THAT(Ticks({{.Line = 3000, .TimeStamp = 90001},
                     {.Line = 7000, .TimeStamp = 180002},
                     {.Line = 1000, .TimeStamp = 89850}}),
              ElementsAre(270000, 630000, 90000));
}

TEST(VobSubTimes, LineBeforeZeroGivesWay) {
  EXPECT_THAT(Ticks({{.Line = -5000, .TimeStamp = 90001}, {.Line = -4000, .TimeStamp = 180002}}),
              ElementsAre(90001, 180002));
}

TEST(VobSubTimes, LineBeforeZeroStaysWithoutATimeStamp) {
  EXPECT_THAT(Ticks({{.Line = -1000}}), ElementsAre(-90000));
}

TEST(VobSubTimes, TimeStampThatPassedItsBitsIsTheNearest) {
  // 2^33 + 45 ticks are 95443718.2 ms.
  EXPECT_THAT(Ticks({{.Line = 95443718, .TimeStamp = 45}}), ElementsAre(8589934637));
}

TEST(VobSubTimes, TimeStampsThatDiffer) {
  const std::vector<VobSubTime> times = {
      {.Line = 1000, .TimeStamp = 90000},   {.Line = 2000, .TimeStamp = 270000},  // 1000 ms
      {.Line = 2000, .TimeStamp = 270090},                                        // 1001 ms
      {.Line = 4000, .TimeStamp = 360000},  {.Line = 5000, .TimeStamp = std::nullopt},
      {.Line = -5000, .TimeStamp = 540000}, {.Line = 7000, .TimeStamp = 630000}};
  EXPECT_EQ(DifferingTimes(times), (std::vector<bool>{false, false, true, false, false, false, false}));
}

TEST(VobSubTimes, ShiftsOfASecondEitherWayAreNoDifference) {
  const std::vector<VobSubTime> times = {{.Line = 2000, .TimeStamp = 90000},
                                         {.Line = 3000, .TimeStamp = 180000},
                                         {.Line = 4000, .TimeStamp = 270000},
                                         {.Line = 3000, .TimeStamp = 360000}};
  EXPECT_EQ(DifferingTimes(times), (std::vector<bool>{false, false, false, false}));
}

TEST(VobSubTimes, ShiftOfASecondIsNoDifferenceBesideALongerOne) {
  const std::vector<VobSubTime> times = {{.Line = 2000, .TimeStamp = 90000},
                                         {.Line = 8000, .TimeStamp = 180000}};
  EXPECT_EQ(DifferingTimes(times), (std::vector<bool>{false, true}));
}

TEST(VobSubTimes, FirstLineAloneMayDiffer) {
  const std::vector<VobSubTime> times = {{.Line = 6000, .TimeStamp = 90000},
                                         {.Line = 2000, .TimeStamp = 180000}};
  EXPECT_EQ(DifferingTimes(times), (std::vector<bool>{true, false}));
}

TEST(VobSubTimes, CommonShiftIsNoDifference) {
  const std::vector<VobSubTime> times = {{.Line = 11000, .TimeStamp = 90000},
                                         {.Line = 12000, .TimeStamp = 180000},
                                         {.Line = 4000, .TimeStamp = 360000},
                                         {.Line = 19000, .TimeStamp = 450000},
                                         {.Line = 16000, .TimeStamp = 540000}};
  EXPECT_EQ(DifferingTimes(times), (std::vector<bool>{false, false, false, true, false}));
}

TEST(VobSubTimes, LineAtZeroMayDiffer) {
  const std::vector<VobSubTime> times = {{.Line = 0, .TimeStamp = 900000},
                                         {.Line = 2000, .TimeStamp = 180000}};
  EXPECT_EQ(DifferingTimes(times), (std::vector<bool>{true, false}));
}

TEST(VobSubTimes, CommonShiftMayBeThatOfBarelyMoreThanHalf) {
  const std::vector<VobSubTime> times = {{.Line = 1000, .TimeStamp = 90000},
                                         {.Line = 2000, .TimeStamp = 180000},
                                         {.Line = 8000, .TimeStamp = 270000},
                                         {.Line = 9000, .TimeStamp = 360000},
                                         {.Line = 10000, .TimeStamp = 450000}};
  EXPECT_EQ(DifferingTimes(times), (std::vector<bool>(5, false)));
}

TEST(VobSubTimes, LineOfItsOwnTimeStampIsNoDifferenceWhateverTheCommonShift) {
  const std::vector<VobSubTime> times = {{.Line = 11000, .TimeStamp = 90000},
                                         {.Line = 12000, .TimeStamp = 180000},
                                         {.Line = 13000, .TimeStamp = 270000},
                                         {.Line = 5000, .TimeStamp = 360000}};  // a second
  EXPECT_EQ(DifferingTimes(times), (std::vector<bool>{false, false, false, false}));
}

TEST(VobSubTimes, TimeStampsThatAreAllTheSameSayNothing) {
  const std::vector<VobSubTime> times = {{.Line = 11000, .TimeStamp = 0},
                                         {.Line = 17000, .TimeStamp = 0},
                                         {.Line = 12000, .TimeStamp = std::nullopt}};
  EXPECT_EQ(DifferingTimes(times), (std::vector<bool>{false, false, false}));
}

}  // namespace
}  // namespace quillmark
