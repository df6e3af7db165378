#include "sup/LineSurvey.h"

#include <gtest/gtest.h>

#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;

/// Of a picture of so many lines of 4 pixels whose top field is at unit byte 4 and whose bottom field is
/// at 6.
LineSurvey Surveyed(const Bytes& fields, int lines, std::int64_t maxBits) {
  SpuControl control;
  control.X1 = control.Y1 = 0;
  control.X2 = 3;
  control.Y2 = static_cast<std::int16_t>(lines - 1);
  control.TopFieldOffset = 4;
  control.BottomFieldOffset = 6;
  const Bytes unit = test::Join({Bytes(4), fields, Bytes(4)});
  return SurveyLines(UnitView(unit), control, static_cast<std::int64_t>(4 + fields.size()), maxBits);
}

// Four pixels are 0x10 and a code, eight are 0x20 and a code.

TEST(SurveyLines, RunThatPassesTheLinesEndIsFoundInItsField) {
  const LineSurvey top = Surveyed({0x11, 0x21, 0x12, 0x12}, 4, 100);
  ASSERT_TRUE(top.FirstOverrun);
  EXPECT_EQ(top.FirstOverrun->Line, 2);
  EXPECT_EQ(top.FirstOverrun->Bits, 8);
  const LineSurvey bottom = Surveyed({0x11, 0x11, 0x21, 0x12}, 4, 100);
  ASSERT_TRUE(bottom.FirstOverrun);
  EXPECT_EQ(bottom.FirstOverrun->Line, 1);
}

TEST(SurveyLines, RunsOfTheSmallestValuesOfTheirLength) {
  // 0x10 are four pixels of code 0 in two nibbles, 0x040 sixteen in three.
  const LineSurvey two = Surveyed({0x10, 0x21, 0x12, 0x12}, 4, 100);
  ASSERT_TRUE(two.FirstOverrun);
  EXPECT_EQ(two.FirstOverrun->Line, 2);
  const LineSurvey three = Surveyed({0x04, 0x00, 0x12, 0x12}, 4, 100);
  ASSERT_TRUE(three.FirstOverrun);
  EXPECT_EQ(three.FirstOverrun->Line, 0);
  EXPECT_EQ(three.FirstOverrun->Bits, 12);
}

TEST(SurveyLines, SinglePixelsOfCode0TakeANibbleEach) {
  EXPECT_FALSE(Surveyed({0x44, 0x44, 0x44, 0x44}, 2, 100).FirstOverrun);
}

TEST(SurveyLines, LinesStartOnBytes) {
  // Pixels 1, 1 and 2 of code 1 are the nibbles 5, 5, 9; the nibble behind them belongs to no line.
  const LineSurvey found = Surveyed({0x55, 0x90, 0x11, 0x21}, 4, 100);
  ASSERT_TRUE(found.FirstOverrun);
  EXPECT_EQ(found.FirstOverrun->Line, 3);
}

TEST(SurveyLines, WhatFollowsTheLastLineIsNone) {
  EXPECT_FALSE(Surveyed({0x11, 0x21, 0x12, 0x21}, 2, 100).FirstOverrun);
}

TEST(SurveyLines, LineOfAsManyBitsAsMayBeIsNotLong) {
  // A pixel of code 1 is the nibble 5.
  EXPECT_FALSE(Surveyed({0x55, 0x55, 0x12, 0x12}, 2, 16).FirstLong);
  const auto found = Surveyed({0x55, 0x55, 0x12, 0x12}, 2, 15).FirstLong;
  ASSERT_TRUE(found);
  EXPECT_EQ(found->Line, 0);
  EXPECT_EQ(found->Bits, 16);
}

}  // namespace
}  // namespace quillmark
