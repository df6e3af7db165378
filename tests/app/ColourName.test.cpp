#include "app/ColourName.h"

#include <gtest/gtest.h>

namespace quillmark::test {
namespace {

struct Named {
  Rgb Colour;
  const char* Name;
};

TEST(ColourName, GreysGoFromBlackToWhite) {
  static constexpr Named Greys[] = {{MakeRgb(0, 0, 0), "black"},
                                    {MakeRgb(2, 0, 0), "black"},
                                    {MakeRgb(31, 31, 31), "black"},
                                    {MakeRgb(32, 32, 32), "dark grey"},
                                    {MakeRgb(95, 95, 95), "dark grey"},
                                    {MakeRgb(96, 96, 96), "grey"},
                                    {MakeRgb(130, 130, 130), "grey"},
                                    {MakeRgb(160, 160, 160), "light grey"},
                                    {MakeRgb(231, 231, 231), "light grey"},
                                    {MakeRgb(232, 232, 232), "white"},
                                    {MakeRgb(255, 255, 255), "white"}};
  for (const Named& grey : Greys) {
    EXPECT_EQ(ColourName(grey.Colour).toStdString(), grey.Name);
  }
}

TEST(ColourName, HuesGoRound) {
  static constexpr Named Hues[] = {
      {MakeRgb(255, 0, 0), "red"},      {MakeRgb(255, 127, 0), "orange"},   {MakeRgb(253, 255, 4), "yellow"},
      {MakeRgb(2, 252, 2), "green"},    {MakeRgb(3, 253, 251), "cyan"},     {MakeRgb(0, 0, 255), "blue"},
      {MakeRgb(140, 0, 255), "purple"}, {MakeRgb(252, 94, 252), "magenta"}, {MakeRgb(255, 0, 20), "red"},
      {MakeRgb(0, 128, 255), "blue"},   {MakeRgb(255, 0, 128), "magenta"}};
  for (const Named& hue : Hues) {
    EXPECT_EQ(ColourName(hue.Colour).toStdString(), hue.Name);
  }
}

TEST(ColourName, EachHueBeginsAtItsDegree) {
  // 14 and 15 degrees, 44 and 45, 69 and 70, and so on, with 256 steps between two of 60 degrees.
  static constexpr Named Hues[] = {
      {MakeRgb(255, 63, 0), "red"},     {MakeRgb(255, 64, 0), "orange"},   {MakeRgb(255, 191, 0), "orange"},
      {MakeRgb(255, 192, 0), "yellow"}, {MakeRgb(217, 255, 0), "yellow"},  {MakeRgb(213, 255, 0), "green"},
      {MakeRgb(0, 255, 191), "green"},  {MakeRgb(0, 255, 192), "cyan"},    {MakeRgb(0, 196, 255), "cyan"},
      {MakeRgb(0, 192, 255), "blue"},   {MakeRgb(84, 0, 255), "blue"},     {MakeRgb(85, 0, 255), "purple"},
      {MakeRgb(191, 0, 255), "purple"}, {MakeRgb(192, 0, 255), "magenta"}, {MakeRgb(255, 0, 90), "magenta"},
      {MakeRgb(255, 0, 85), "red"}};
  for (const Named& hue : Hues) {
    EXPECT_EQ(ColourName(hue.Colour).toStdString(), hue.Name);
  }
}

TEST(ColourName, NamesChangeAtTheirChromaAndLightness) {
  static constexpr Named Colours[] = {
      {MakeRgb(100, 100, 123), "grey"},        {MakeRgb(100, 100, 124), "dark blue"},
      {MakeRgb(143, 0, 0), "dark red"},        {MakeRgb(144, 0, 0), "red"},
      {MakeRgb(255, 127, 127), "red"},         {MakeRgb(255, 128, 128), "light red"},
      {MakeRgb(255, 192, 128), "light orange"}};
  for (const Named& colour : Colours) {
    EXPECT_EQ(ColourName(colour.Colour).toStdString(), colour.Name);
  }
}

TEST(ColourName, LightAndDarkAreTold) {
  static constexpr Named Colours[] = {
      {MakeRgb(252, 150, 150), "light red"},  {MakeRgb(150, 253, 150), "light green"},
      {MakeRgb(148, 150, 251), "light blue"}, {MakeRgb(128, 0, 0), "dark red"},
      {MakeRgb(0, 0, 120), "dark blue"},      {MakeRgb(120, 60, 10), "brown"}};
  for (const Named& colour : Colours) {
    EXPECT_EQ(ColourName(colour.Colour).toStdString(), colour.Name);
  }
}

}  // namespace
}  // namespace quillmark::test
