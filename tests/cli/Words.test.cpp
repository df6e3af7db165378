#include <gtest/gtest.h>

#include "cli/NearestMatch.h"

namespace quillmark::cli {
namespace {

TEST(EditDistance, CountsInsertionsDeletionsReplacementsAndSwaps) {
  EXPECT_EQ(EditDistance("", ""), 0U);
  EXPECT_EQ(EditDistance("", "abc"), 3U);
  EXPECT_EQ(EditDistance("list", "list"), 0U);
  EXPECT_EQ(EditDistance("lst", "list"), 1U);
  EXPECT_EQ(EditDistance("ilst", "list"), 1U);
  EXPECT_EQ(EditDistance("liist", "list"), 1U);
  EXPECT_EQ(EditDistance("lost", "list"), 1U);
  EXPECT_EQ(EditDistance("lsit", "list"), 1U);
  EXPECT_EQ(EditDistance("kitten", "sitting"), 3U);
  EXPECT_EQ(EditDistance("ab", "ba"), 1U);
  EXPECT_EQ(EditDistance("pqab", "rsba"), 3U);
}

TEST(NearestMatch, IsTheFirstOfTheNearest) {
  EXPECT_EQ(NearestMatch("reprot", {"list", "report", "export"}), "report");
  EXPECT_EQ(NearestMatch("xa", {"aa", "ba"}), "aa");
}

TEST(NearestMatch, IsEmptyWhereNothingIsInCommon) {
  EXPECT_EQ(NearestMatch("####", {"list", "report"}), "");
  EXPECT_EQ(NearestMatch("word", {}), "");
}

}  // namespace
}  // namespace quillmark::cli
