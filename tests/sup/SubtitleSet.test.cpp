#include "sup/SubtitleSet.h"

#include <gmock/gmock.h>

namespace quillmark {
namespace {

using testing::ElementsAre;
using Ranges = std::vector<SubtitleRange>;

Ranges Parsed(const char* text) {
  const auto set = SubtitleSet::Parse(text);
  EXPECT_TRUE(set) << text;
  return set ? set->Ranges() : Ranges();
}

TEST(SubtitleSet, TakesThreeForms) {
  EXPECT_THAT(Parsed("3-7"), ElementsAre(SubtitleRange{.First = 3, .Last = 7}));
  EXPECT_THAT(Parsed("3"), ElementsAre(SubtitleRange{.First = 3, .Last = 3}));
  EXPECT_THAT(Parsed("3-"), ElementsAre(SubtitleRange{.First = 3}));
}

TEST(SubtitleSet, TakesListsInAnyOrder) {
  EXPECT_THAT(Parsed("3-7,9,20-"),
              ElementsAre(SubtitleRange{.First = 3, .Last = 7}, SubtitleRange{.First = 9, .Last = 9},
                          SubtitleRange{.First = 20}));
  EXPECT_THAT(Parsed("9,3"),
              ElementsAre(SubtitleRange{.First = 3, .Last = 3}, SubtitleRange{.First = 9, .Last = 9}));
}

TEST(SubtitleSet, RangesThatOverlapOrTouchAreOne) {
  EXPECT_THAT(Parsed("3-7,5-9"), ElementsAre(SubtitleRange{.First = 3, .Last = 9}));
  EXPECT_THAT(Parsed("3-7,8-9"), ElementsAre(SubtitleRange{.First = 3, .Last = 9}));
  EXPECT_THAT(Parsed("8-9,1,3-7"),
              ElementsAre(SubtitleRange{.First = 1, .Last = 1}, SubtitleRange{.First = 3, .Last = 9}));
  EXPECT_THAT(Parsed("2,5-,3-8,20"), ElementsAre(SubtitleRange{.First = 2}));
  EXPECT_THAT(Parsed("5-9,7-"), ElementsAre(SubtitleRange{.First = 5}));
  EXPECT_THAT(Parsed("9,20,5-"), ElementsAre(SubtitleRange{.First = 5}));
  EXPECT_THAT(Parsed("4-5,1-2"),
              ElementsAre(SubtitleRange{.First = 1, .Last = 2}, SubtitleRange{.First = 4, .Last = 5}));
  EXPECT_THAT(Parsed("4,4"), ElementsAre(SubtitleRange{.First = 4, .Last = 4}));
  EXPECT_THAT(Parsed("1-3,9223372036854775807"),
              ElementsAre(SubtitleRange{.First = 1, .Last = 3},
                          SubtitleRange{.First = 9223372036854775807, .Last = 9223372036854775807}));
}

TEST(SubtitleSet, RefusesEverythingElse) {
  for (const char* text : {"", "-", "-3", "0", "0-2", "5-3", "a", "1-b", "1-2-3", " 1", "1 ", "+1", "1.5",
                           ",", "1,", ",1", "1,,2", "1;2", "99999999999999999999"}) {
    EXPECT_EQ(SubtitleSet::Parse(text), std::nullopt) << text;
  }
}

TEST(SubtitleSet, TextIsWhatWasParsed) {
  for (const char* text : {"3-7,9,20-", "1-", "5"}) {
    EXPECT_EQ(SubtitleSet::Parse(text)->Text(), text);
  }
  EXPECT_EQ(SubtitleSet().Text(), "");
}

TEST(SubtitleSet, AppendedNumbersBecomeRanges) {
  SubtitleSet set;
  for (const std::int64_t number : {2, 3, 4, 7}) {
    set.Append(number);
  }
  EXPECT_EQ(set.Text(), "2-4,7");
  EXPECT_EQ(SubtitleSet::Of(6).Text(), "6");
}

TEST(SubtitleSet, ContainsWhatLiesInARange) {
  const SubtitleSet set = *SubtitleSet::Parse("3-5,9-");
  for (const std::int64_t number : {3, 4, 5, 9, 1000}) {
    EXPECT_TRUE(set.Contains(number)) << number;
  }
  for (const std::int64_t number : {1, 2, 6, 8}) {
    EXPECT_FALSE(set.Contains(number)) << number;
  }
  EXPECT_FALSE(SubtitleSet().Contains(1));
}

TEST(SubtitleSet, OutsideIsWhatAStreamDoesNotHave) {
  const auto outside = [](const char* text, std::int64_t count) {
    return SubtitleSet::Parse(text)->Outside(count);
  };
  EXPECT_EQ(outside("1-3", 3), std::nullopt);
  EXPECT_EQ(outside("1-4", 3), 4);
  EXPECT_EQ(outside("3-", 3), std::nullopt);
  EXPECT_EQ(outside("4-", 3), 4);
  EXPECT_EQ(outside("1,3,7", 3), 7);
}

TEST(SubtitleSet, EmptyStreamHasAllOfNothing) {
  EXPECT_EQ(SubtitleSet::All().Outside(0), std::nullopt);
  EXPECT_EQ(SubtitleSet::Of(1).Outside(0), 1);
}

TEST(SubtitleSet, SizeAndIndexesAreThoseThatTheStreamHas) {
  const SubtitleSet set = *SubtitleSet::Parse("2-3,5-");
  EXPECT_EQ(set.SizeWithin(7), 5);
  EXPECT_EQ(set.SizeWithin(2), 1);
  EXPECT_EQ(set.SizeWithin(0), 0);
  std::vector<std::size_t> indexes;
  set.ForEachIndex(6, [&](std::size_t index) { indexes.push_back(index); });
  EXPECT_THAT(indexes, ElementsAre(1, 2, 4, 5));
}

TEST(SubtitleSet, OthersAreAllThatAreNotThere) {
  EXPECT_EQ(SubtitleSet::Parse("2-3,5")->Others().Text(), "1,4,6-");
  EXPECT_EQ(SubtitleSet::Parse("1,4-")->Others().Text(), "2-3");
  EXPECT_TRUE(SubtitleSet::All().Others().IsEmpty());
  EXPECT_EQ(SubtitleSet().Others(), SubtitleSet::All());
}

}  // namespace
}  // namespace quillmark
