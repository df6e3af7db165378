#include "recipe/OptionText.h"

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(ParseMilliseconds, RoundsTicksHalvesAwayFromZero) {
  EXPECT_EQ(ParseMilliseconds("40"), 3600);
  EXPECT_EQ(ParseMilliseconds("+40"), 3600);
  EXPECT_EQ(ParseMilliseconds("-40"), -3600);
  EXPECT_EQ(ParseMilliseconds("0.05"), 5);  // 4.5
  EXPECT_EQ(ParseMilliseconds("-0.05"), -5);
  EXPECT_EQ(ParseMilliseconds("-.04"), -4);  // 3.6
  EXPECT_EQ(ParseMilliseconds("1000.005"), 90000);
}

TEST(ParseMilliseconds, RefusesEverythingElse) {
  for (const char* text : {"", "-", "+", "--1", "-+1", "1s", "0x1", "1,5", "1e3", "99999999999999999999"}) {
    EXPECT_EQ(ParseMilliseconds(text), std::nullopt) << text;
  }
}

TEST(ParseTime, TakesHoursMinutesAndSeconds) {
  EXPECT_EQ(ParseTime("0"), 0);
  EXPECT_EQ(ParseTime("75.5"), 6795000);
  EXPECT_EQ(ParseTime("1:15.5"), 6795000);
  EXPECT_EQ(ParseTime("90:00"), 486000000);
  EXPECT_EQ(ParseTime("1:30:00"), 486000000);
  EXPECT_EQ(ParseTime("00:00:01.00"), 90000);
  EXPECT_EQ(ParseTime("0.000005"), 0);   // 0.45 ticks
  EXPECT_EQ(ParseTime("0.0000056"), 1);  // 0.504
}

TEST(ParseTime, RefusesEverythingElse) {
  for (const char* text : {"", ":", "1:", ":1", "-1", "1:60", "1:60:00", "1:2:3:4", "1:-2", "1.5:00", "a",
                           "1:2.", "1:.5", "x:01:02", "9999999999999999:00:00", "9999999999999999:00"}) {
    EXPECT_EQ(ParseTime(text), std::nullopt) << text;
  }
}

// The largest number of ticks is 28467197644 hours, 36 minutes and 48.6 seconds.
TEST(ParseTime, EndsWhere64BitsDo) {
  EXPECT_EQ(ParseTime("28467197644:36:48"), 9223372036854720000);
  for (const char* text : {"28467197644:36:49", "28467197644:37:00", "28467197645:00:00"}) {
    EXPECT_EQ(ParseTime(text), std::nullopt) << text;
  }
}

TEST(ParseRatio, TakesPositiveNumbers) {
  EXPECT_EQ(ParseRatio("25/24"), (Ratio{.Numerator = 25, .Denominator = 24}));
  EXPECT_EQ(ParseRatio("2"), (Ratio{.Numerator = 2, .Denominator = 1}));
  for (const char* text : {"", "/", "1/", "/1", "0/1", "1/0", "-1/2", "1/2/3", "1.5", "1.0/2"}) {
    EXPECT_EQ(ParseRatio(text), std::nullopt) << text;
  }
}

TEST(ParseSpeed, KnowsThoseOfFilmAndVideo) {
  EXPECT_EQ(ParseSpeed("23.976"), (Ratio{.Numerator = 24000, .Denominator = 1001}));
  EXPECT_EQ(ParseSpeed("24000/1001"), ParseSpeed("23.976"));
  EXPECT_EQ(ParseSpeed("24"), (Ratio{.Numerator = 24, .Denominator = 1}));
  EXPECT_EQ(ParseSpeed("25"), (Ratio{.Numerator = 25, .Denominator = 1}));
  EXPECT_EQ(ParseSpeed("29.97"), (Ratio{.Numerator = 30000, .Denominator = 1001}));
  EXPECT_EQ(ParseSpeed("30000/1001"), ParseSpeed("29.97"));
  EXPECT_EQ(ParseSpeed("30"), std::nullopt);
  EXPECT_EQ(ParseSpeed(""), std::nullopt);
}

TEST(ParsePoints, TakesTwoSubtitlesWithTheirTimes) {
  const auto line = ParsePoints("3=0:01,12=1:02:03.5");
  ASSERT_TRUE(line);
  EXPECT_EQ(line->A.Number, 3);
  EXPECT_EQ(line->A.Time, 90000);
  EXPECT_EQ(line->B.Number, 12);
  EXPECT_EQ(line->B.Time, 335115000);
  for (const char* text :
       {"", "1=1", "1=1,", "1=1,1=2", "0=1,2=3", "1=1,2", "1=1,2=3,4=5", "a=1,2=3", "1=a,2=3"}) {
    EXPECT_FALSE(ParsePoints(text)) << text;
  }
}

TEST(ParseNibbles, DotLeavesACode) {
  const ChosenNibbles expected = {std::nullopt, std::uint8_t{10}, std::uint8_t{15}, std::uint8_t{0}};
  EXPECT_EQ(ParseNibbles(".aF0"), expected);
  for (const char* text : {"", "123", "12345", "12g4"}) {
    EXPECT_EQ(ParseNibbles(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace quillmark
