#include <gtest/gtest.h>

#include "cli/Decimal.h"
#include "cli/NearestMatch.h"
#include "cli/SubtitleRange.h"

namespace quillmark::cli {
namespace {

TEST(EditDistance, CountsInsertionsDeletionsReplacementsAndSwaps) {
  EXPECT_EQ(EditDistance("", ""), 0U);
  EXPECT_EQ(EditDistance("", "abc"), 3U);
  EXPECT_EQ(EditDistance("list", "list"), 0U);
  EXPECT_EQ(EditDistance("lst", "list"), 1U);
  EXPECT_EQ(EditDistance("liist", "list"), 1U);
  EXPECT_EQ(EditDistance("lost", "list"), 1U);
  EXPECT_EQ(EditDistance("lsit", "list"), 1U);
  EXPECT_EQ(EditDistance("kitten", "sitting"), 3U);
}

TEST(NearestMatch, IsTheFirstOfTheNearest) {
  EXPECT_EQ(NearestMatch("reprot", {"list", "report", "export"}), "report");
  EXPECT_EQ(NearestMatch("xa", {"aa", "ba"}), "aa");
}

TEST(NearestMatch, IsEmptyWhereNothingIsInCommon) {
  EXPECT_EQ(NearestMatch("####", {"list", "report"}), "");
  EXPECT_EQ(NearestMatch("word", {}), "");
}

TEST(ParseSubtitleRange, TakesThreeForms) {
  EXPECT_EQ(ParseSubtitleRange("3-7"), (SubtitleRange{.First = 3, .Last = 7}));
  EXPECT_EQ(ParseSubtitleRange("3"), (SubtitleRange{.First = 3, .Last = 3}));
  EXPECT_EQ(ParseSubtitleRange("3-"), (SubtitleRange{.First = 3, .Last = std::nullopt}));
}

TEST(ParseSubtitleRange, RefusesEverythingElse) {
  for (const char* text : {"", "-", "-3", "0", "0-2", "5-3", "a", "1-b", "1-2-3", " 1", "1 ", "+1", "1.5",
                           "99999999999999999999"}) {
    EXPECT_EQ(ParseSubtitleRange(text), std::nullopt) << text;
  }
}

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

TEST(IsWithin, NeedsBothEnds) {
  EXPECT_TRUE(IsWithin({.First = 1, .Last = 3}, 3));
  EXPECT_FALSE(IsWithin({.First = 1, .Last = 4}, 3));
  EXPECT_TRUE(IsWithin({.First = 3, .Last = std::nullopt}, 3));
  EXPECT_FALSE(IsWithin({.First = 4, .Last = std::nullopt}, 3));
}

TEST(IsWithin, EmptyStreamHasAllOfNothing) {
  EXPECT_TRUE(IsWithin({}, 0));
  EXPECT_FALSE(IsWithin({.First = 1, .Last = 1}, 0));
}

}  // namespace
}  // namespace quillmark::cli
