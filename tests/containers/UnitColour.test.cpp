#include "containers/UnitColour.h"

#include <gmock/gmock.h>

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

}  // namespace
}  // namespace quillmark
