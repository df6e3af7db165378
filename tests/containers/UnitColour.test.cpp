#include "containers/UnitColour.h"

#include <gmock/gmock.h>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(UnitColour, AsManyAsAreChosenAllStandForThemselves) {
  std::vector<CountedColour> colours;
  std::vector<std::size_t> own;
  for (unsigned red = 0; red < 100; ++red) {
    colours.push_back({.Colour = {.Colour = MakeRgb(red, 0, 0), .Contrast = 15}, .Count = 1});
    own.push_back(red);
  }
  EXPECT_EQ(TakeTogether(colours, 100), own);
}

// Of 65 colours, 63 may stay. The rarest is far from all others; those of 60 and of 61 lie the nearest.
TEST(UnitColour, OnlyTheSixtyFourMostFrequentAreChosenFrom) {
  std::vector<CountedColour> colours;
  for (unsigned i = 0; i < 64; ++i) {
    const unsigned green = i < 61 ? 4 * i : 4 * i - 3;
    colours.push_back({.Colour = {.Colour = MakeRgb(0, green, 0), .Contrast = 15}, .Count = 2});
  }
  colours.push_back({.Colour = {.Colour = MakeRgb(0, 253, 255), .Contrast = 15}, .Count = 1});
  const auto becomes = TakeTogether(colours, 63);
  EXPECT_EQ(becomes[64], 63U);
}

TEST(UnitColour, ColourThatStandsForAnotherCountsForBoth) {
  // The two of 20 and 21 together are more than that of 70, which is then taken together with that of 110.
  std::vector<CountedColour> colours;
  for (const auto& [red, count] : {std::pair(110U, 10U), {70U, 9U}, {20U, 4U}, {21U, 4U}}) {
    colours.push_back({.Colour = {.Colour = MakeRgb(red, 0, 0), .Contrast = 15}, .Count = count});
  }
  EXPECT_EQ(TakeTogether(colours, 2), (std::vector<std::size_t>{0, 0, 2, 2}));
}

TEST(UnitColour, OfPairsThatAreAsNearTheFirstIsTakenTogether) {
  std::vector<CountedColour> colours;
  for (const unsigned red : {0U, 10U, 20U}) {
    colours.push_back({.Colour = {.Colour = MakeRgb(red, 0, 0), .Contrast = 15}, .Count = 1});
  }
  EXPECT_EQ(TakeTogether(colours, 2), (std::vector<std::size_t>{0, 0, 2}));
}

TEST(UnitColour, TwoSmallStepsAreNearerThanALargeOne) {
  std::vector<CountedColour> colours;
  for (const auto& [red, green, count] : {std::tuple(103U, 100U, 10U), {102U, 102U, 10U}, {100U, 100U, 1U}}) {
    colours.push_back({.Colour = {.Colour = MakeRgb(red, green, 0), .Contrast = 15}, .Count = count});
  }
  EXPECT_EQ(TakeTogether(colours, 2), (std::vector<std::size_t>{0, 1, 1}));
}

}  // namespace
}  // namespace quillmark
