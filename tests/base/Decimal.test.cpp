#include "base/Decimal.h"

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(ParseDecimal, TakesASign) {
  EXPECT_EQ(ParseDecimal("0"), 0);
  EXPECT_EQ(ParseDecimal("12"), 12);
  EXPECT_EQ(ParseDecimal("+12"), 12);
  EXPECT_EQ(ParseDecimal("-400"), -400);
}

TEST(ParseDecimal, LeadingZerosAreNotOctal) {
  EXPECT_EQ(ParseDecimal("010"), 10);
  EXPECT_EQ(ParseDecimal("-08"), -8);
}

TEST(ParseDecimal, StaysAtTheEndsOf64Bits) {
  EXPECT_EQ(ParseDecimal("99999999999999999999"), 9223372036854775807);
  EXPECT_EQ(ParseDecimal("-99999999999999999999"), -9223372036854775807 - 1);
}

TEST(ParseDecimal, RefusesEverythingElse) {
  for (const char* text : {"", "+", "-", "+-1", "--1", "0x2", "2x", "1.5", " 1", "1 ", "1e3"}) {
    EXPECT_EQ(ParseDecimal(text), std::nullopt) << text;
  }
}

TEST(ScaleDecimal, TakesDecimals) {
  EXPECT_EQ(ScaleDecimal("0", 90), 0);
  EXPECT_EQ(ScaleDecimal("12", 90), 1080);
  EXPECT_EQ(ScaleDecimal("12.5", 90), 1125);
  EXPECT_EQ(ScaleDecimal(".5", 90), 45);
  EXPECT_EQ(ScaleDecimal("010", 1), 10);
}

TEST(ScaleDecimal, RoundsToNearestAndHalvesUp) {
  // 0.005 x 90 = 0.45, 0.0055 x 90 = 0.495, 0.0055...56 x 90 = 0.500...04
  EXPECT_EQ(ScaleDecimal("0.005", 90), 0);
  EXPECT_EQ(ScaleDecimal("0.0055", 90), 0);
  EXPECT_EQ(ScaleDecimal("0.00555555555555555555556", 90), 1);
  EXPECT_EQ(ScaleDecimal("0.00555555555555555555555", 90), 0);
  // 0.05 x 90 = 4.5
  EXPECT_EQ(ScaleDecimal("0.05", 90), 5);
  EXPECT_EQ(ScaleDecimal("0.04999999999999999999999999", 90), 4);
  EXPECT_EQ(ScaleDecimal("1.999999999999999999999999", 90000), 180000);
}

TEST(ScaleDecimal, EndsWhere64BitsEnd) {
  EXPECT_EQ(ScaleDecimal("9223372036854775807", 1), 9223372036854775807);
  EXPECT_EQ(ScaleDecimal("9223372036854775807.5", 1), std::nullopt);
  EXPECT_EQ(ScaleDecimal("102481911520608620", 90), 9223372036854775800);
  EXPECT_EQ(ScaleDecimal("102481911520608621", 90), std::nullopt);
  EXPECT_EQ(ScaleDecimal("99999999999999999999", 90), std::nullopt);
}

TEST(ScaleDecimal, RefusesEverythingElse) {
  for (const char* text : {"", ".", "1.", "-1", "+1", "1,5", "1e3", " 1", "1 ", "1.2.3", "0x1"}) {
    EXPECT_EQ(ScaleDecimal(text, 90), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace quillmark
