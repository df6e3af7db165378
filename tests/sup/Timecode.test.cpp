#include "sup/Timecode.h"

#include <cstdint>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

constexpr std::int64_t Earliest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t Latest = std::numeric_limits<std::int64_t>::max();

struct NamedTime {
  const char* Name;
  std::int64_t Ticks;
  const char* Text;
};

class FormatTimecodeOf : public testing::TestWithParam<NamedTime> {};

TEST_P(FormatTimecodeOf, IsAsListed) {
  EXPECT_EQ(FormatTimecode(GetParam().Ticks), GetParam().Text);
}

INSTANTIATE_TEST_SUITE_P(Times, FormatTimecodeOf,
                         testing::Values(NamedTime{"Zero", 0, "00:00:00.00"},
                                         NamedTime{"LastTickBelowHalfAHundredth", 449, "00:00:00.00"},
                                         NamedTime{"HalfAHundredthRoundsUp", 450, "00:00:00.01"},
                                         NamedTime{"LastTickOfHundredth99", 89549, "00:00:00.99"},
                                         NamedTime{"CarryOfTheHundredthsIsDropped", 89550, "00:00:00.00"},
                                         NamedTime{"LastTickOfASecond", 89999, "00:00:00.00"},
                                         NamedTime{"OneSecond", 90000, "00:00:01.00"},
                                         NamedTime{"TenOfEach", 36610 * 90000LL + 9000, "10:10:10.10"},
                                         NamedTime{"LastTickOfAMinute", 5399999, "00:00:59.00"},
                                         NamedTime{"OneMinute", 5400000, "00:01:00.00"},
                                         NamedTime{"AllParts", 5893200, "00:01:05.48"},
                                         NamedTime{"LastTickOfAnHour", 323999999, "00:59:59.00"},
                                         NamedTime{"OneHour", 324000000, "01:00:00.00"},
                                         NamedTime{"ThreeDigitsOfHours", 32400000000, "100:00:00.00"},
                                         NamedTime{"OneTickBeforeZero", -1, "-01:59:59.00"},
                                         NamedTime{"OneHourBeforeZero", -324000000, "-01:00:00.00"},
                                         NamedTime{"Latest", Latest, "28467197644:36:48.62"},
                                         NamedTime{"Earliest", Earliest, "-28467197645:23:11.38"}),
                         [](const auto& instance) { return std::string(instance.param.Name); });

TEST(SplitTime, GivesTheFourParts) {
  const TimeParts parts = SplitTime(2 * 324000000LL + 3 * 5400000LL + 4 * 90000LL + 5 * 900LL);

  EXPECT_EQ(parts.Hours, 2);
  EXPECT_EQ(parts.Minutes, 3);
  EXPECT_EQ(parts.Seconds, 4);
  EXPECT_EQ(parts.Hundredths, 5);
}

TEST(EndOfDisplay, OneDelayUnitIsAThousandTicks) {
  EXPECT_EQ(EndOfDisplay(500, 100), 100500);
}

TEST(EndOfDisplay, NegativeDelayGoesBack) {
  EXPECT_EQ(EndOfDisplay(500, -1), -500);
  EXPECT_EQ(EndOfDisplay(0, -32768), -32768000);
}

TEST(EndOfDisplay, WrapsAtTheEndsOfTime) {
  EXPECT_EQ(EndOfDisplay(Latest, 1), Earliest + 999);
  EXPECT_EQ(EndOfDisplay(Earliest, -1), Latest - 999);
}

TEST(DurationMs, HasABiasOfFiveMilliseconds) {
  EXPECT_EQ(DurationMs(100), 1116);  // 100450 / 90
  EXPECT_EQ(DurationMs(1), 16);      // 1450 / 90
}

TEST(PlayerDurationMs, CountsTheDelayIn1024TicksToTheNearest) {
  EXPECT_EQ(PlayerDurationMs(0), 0);
  EXPECT_EQ(PlayerDurationMs(1), 11);      // 1024 / 90 is 11.4
  EXPECT_EQ(PlayerDurationMs(100), 1138);  // 102400 / 90 is 1137.8
  EXPECT_EQ(PlayerDurationMs(41), 466);    // 41984 / 90 is 466.49
}

TEST(PlayerDurationMs, TakesTheDelayAsUnsigned) {
  EXPECT_EQ(PlayerDurationMs(-32768), 372827);  // 0x8000 x 1024 / 90 is 372827.0
  EXPECT_EQ(PlayerDurationMs(-1), 745643);      // 0xFFFF x 1024 / 90 is 745642.7
}

TEST(DurationMs, IsFloored) {
  EXPECT_EQ(DurationMs(-1), -7);  // -550 / 90
}

TEST(DurationMs, HoldsEveryDelay) {
  EXPECT_EQ(DurationMs(32767), 364082);
  EXPECT_EQ(DurationMs(-32768), -364084);
}

struct NamedDuration {
  const char* Name;
  std::int32_t Milliseconds;
  const char* Text;
};

class FormatSecondsOf : public testing::TestWithParam<NamedDuration> {};

TEST_P(FormatSecondsOf, IsAsListed) {
  EXPECT_EQ(FormatSeconds(GetParam().Milliseconds), GetParam().Text);
}

INSTANTIATE_TEST_SUITE_P(
    Durations, FormatSecondsOf,
    testing::Values(NamedDuration{"Zero", 0, ".00"},
                    NamedDuration{"NoDigitBeforeThePointBelowASecond", 500, ".50"},
                    NamedDuration{"TwoDecimals", 560, ".56"}, NamedDuration{"RoundedDown", 1114, "1.11"},
                    NamedDuration{"RoundedUp", 1116, "1.12"}, NamedDuration{"HalfRoundsUp", 1115, "1.12"},
                    NamedDuration{"RoundedToAWholeSecond", 995, "1.00"},
                    NamedDuration{"Long", 364082, "364.08"}, NamedDuration{"MinusOneMillisecond", -1, "-.00"},
                    NamedDuration{"Negative", -364084, "-364.08"},
                    NamedDuration{"Lowest", std::numeric_limits<std::int32_t>::min(), "-2147483.65"}),
    [](const auto& instance) { return std::string(instance.param.Name); });

}  // namespace
}  // namespace quillmark
