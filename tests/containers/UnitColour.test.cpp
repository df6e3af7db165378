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

}  // namespace
}  // namespace quillmark
