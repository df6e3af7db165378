#include "render/AuthoringPicture.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sup/SpuControl.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using testing::ElementsAre;

constexpr Argb Red = 0xFFFF0000;
constexpr Argb Green = 0xFF00FF00;
constexpr Argb Blue = 0x880000FF;
constexpr Argb White = 0xFFFFFFFF;
constexpr Argb Nothing = 0x00102030;

using Fit = AuthoringPicture::Fit;

/// What is asked of the maker: fields of whole lines, a line a string of digits, and where they stand.
struct Case {
  std::vector<std::string> Top;
  std::vector<std::string> Bottom;
  int X = 100;
  int Y = 50;
  int Width = 4;
  int Height = 2;
  CodeColours Colours = {Nothing, Red, Green, White};
};

/// One nibble a pixel.
Bytes FieldOf(const std::vector<std::string>& lines) {
  Bytes field;
  for (const std::string& line : lines) {
    std::vector<unsigned> nibbles;
    for (const char digit : line) {
      nibbles.push_back(4U + static_cast<unsigned>(digit - '0'));
    }
    nibbles.resize((nibbles.size() + 1) / 2 * 2);
    for (std::size_t i = 0; i < nibbles.size(); i += 2) {
      field.push_back(static_cast<std::uint8_t>(nibbles[i] << 4U | nibbles[i + 1]));
    }
  }
  return field;
}

AuthoringPicture Make(const Case& picture, int frameHeight = 576) {
  const Bytes top = FieldOf(picture.Top);
  const Bytes unit = Join({Bytes(4), top, FieldOf(picture.Bottom), Bytes(4)});
  SpuControl control;
  control.X1 = static_cast<std::int16_t>(picture.X);
  control.X2 = static_cast<std::int16_t>(picture.X + picture.Width - 1);
  control.Y1 = static_cast<std::int16_t>(picture.Y);
  control.Y2 = static_cast<std::int16_t>(picture.Y + picture.Height - 1);
  control.TopFieldOffset = 4;
  control.BottomFieldOffset = 4 + static_cast<std::int32_t>(top.size());
  return AuthoringPictureMaker().Make(unit, control, picture.Colours, frameHeight);
}

/// The indexes of its pixels, a line a string.
std::vector<std::string> Indexes(const QImage& image) {
  std::vector<std::string> lines;
  for (int y = 0; y < image.height(); ++y) {
    std::string line;
    for (int x = 0; x < image.width(); ++x) {
      line += static_cast<char>('0' + image.pixelIndex(x, y));
    }
    lines.push_back(line);
  }
  return lines;
}

std::vector<Argb> Table(const QImage& image) {
  const QList<QRgb> table = image.colorTable();
  return {table.begin(), table.end()};
}

TEST(AuthoringPicture, IndexesAreThePixelCodes) {
  const auto picture = Make({.Top = {"0123"}, .Bottom = {"3210"}});
  EXPECT_THAT(Indexes(picture.Image), ElementsAre("0123", "3210"));
  EXPECT_THAT(Table(picture.Image), ElementsAre(Nothing, Red, Green, White));
  EXPECT_EQ(picture.X, 100);
  EXPECT_EQ(picture.Y, 50);
  EXPECT_EQ(picture.Fits, Fit::AsItIs);
}

TEST(AuthoringPicture, WhatNoRunReachedIsTheTransparentCode) {
  // The last line of an odd height is not decoded.
  const auto picture = Make({.Top = {"1111", "1111"}, .Bottom = {"2222"}, .Height = 3});
  EXPECT_THAT(Indexes(picture.Image), ElementsAre("1111", "2222", "0000"));
  EXPECT_EQ(picture.Image.colorCount(), 4);
}

TEST(AuthoringPicture, WithoutSuchACodeItHasAnEntryOfItsOwn) {
  const auto picture =
      Make({.Top = {"1111", "1111"}, .Bottom = {"2222"}, .Height = 3, .Colours = {Blue, Red, Green, White}});
  EXPECT_THAT(Indexes(picture.Image), ElementsAre("1111", "2222", "4444"));
  EXPECT_THAT(Table(picture.Image), ElementsAre(Blue, Red, Green, White, 0U));
}

TEST(AuthoringPicture, OddSizesStayWhereThreeColoursAreVisible) {
  const auto picture = Make({.Top = {"01231"}, .Bottom = {"32101"}, .Width = 5});
  EXPECT_THAT(Indexes(picture.Image), ElementsAre("01231", "32101"));
}

TEST(AuthoringPicture, AnOddPictureAtTheFramesRightGrowsToTheLeft) {
  const auto picture = Make({.Top = {"12321"}, .Bottom = {"32123"}, .X = 715, .Width = 5});
  EXPECT_THAT(Indexes(picture.Image), ElementsAre("012321", "032123"));
  EXPECT_EQ(picture.X, 714);
  EXPECT_EQ(picture.Y, 50);
  EXPECT_EQ(Make({.Top = {"1"}, .Bottom = {"2"}, .X = 1, .Width = 719}).X, 0);
}

TEST(AuthoringPicture, AnOddPictureAtTheFramesBottomGrowsUpwards) {
  const Case bottom{.Top = {"1232", "1232"}, .Bottom = {"1232"}, .Y = 477, .Height = 3};
  const auto picture = Make(bottom, 480);
  EXPECT_THAT(Indexes(picture.Image), ElementsAre("0000", "1232", "1232", "0000"));
  EXPECT_EQ(picture.X, 100);
  EXPECT_EQ(picture.Y, 476);
  EXPECT_EQ(Make(bottom, 576).Y, 477);
}

TEST(AuthoringPicture, AnOddPictureThatIsTallerThanTheFrameDoesNotBeginAboveIt) {
  Case tall{.Top = {}, .Bottom = {}, .Y = 0, .Height = 481};
  tall.Top.assign(241, "1232");
  tall.Bottom.assign(240, "1232");
  EXPECT_EQ(Make(tall, 480).Y, 0);
}

TEST(AuthoringPicture, FourVisibleColoursOfAnOddWidthDoubleTheLastColumn) {
  const auto picture =
      Make({.Top = {"01230"}, .Bottom = {"32101"}, .Width = 5, .Colours = {Blue, Red, Green, White}});
  EXPECT_THAT(Indexes(picture.Image), ElementsAre("012300", "321011"));
  EXPECT_THAT(Table(picture.Image), ElementsAre(Blue, Red, Green, White));
  EXPECT_EQ(picture.X, 100);
  EXPECT_EQ(picture.Fits, Fit::DoubledEdge);
}

TEST(AuthoringPicture, AtTheFramesRightTheFirstColumn) {
  const auto picture = Make(
      {.Top = {"01230"}, .Bottom = {"32101"}, .X = 715, .Width = 5, .Colours = {Blue, Red, Green, White}});
  EXPECT_THAT(Indexes(picture.Image), ElementsAre("001230", "332101"));
  EXPECT_EQ(picture.X, 714);
  EXPECT_EQ(picture.Fits, Fit::DoubledEdge);
}

TEST(AuthoringPicture, FourVisibleColoursLoseTheLineThatIsNotDecoded) {
  const auto picture =
      Make({.Top = {"0123", "1111"}, .Bottom = {"3210"}, .Height = 3, .Colours = {Blue, Red, Green, White}});
  EXPECT_THAT(Indexes(picture.Image), ElementsAre("0123", "3210"));
  EXPECT_EQ(picture.Y, 50);
  EXPECT_EQ(picture.Fits, Fit::AsItIs);
}

TEST(AuthoringPicture, TwoCodesOfOneColourAreOneColour) {
  const auto picture =
      Make({.Top = {"01230"}, .Bottom = {"32101"}, .Width = 5, .Colours = {Red, Red, Green, White}});
  EXPECT_THAT(Indexes(picture.Image), ElementsAre("01230", "32101"));
  EXPECT_EQ(picture.Fits, Fit::AsItIs);
}

TEST(AuthoringPicture, FourVisibleColoursLoseAllLinesThatAreNotDecoded) {
  // The second pair of lines is not decoded, as the top field has run into the bottom one.
  SpuControl control;
  control.X1 = 0;
  control.X2 = 3;
  control.Y1 = 0;
  control.Y2 = 3;
  control.TopFieldOffset = 4;
  control.BottomFieldOffset = 5;
  const Bytes unit = {0, 0, 0, 0, 0x45, 0x67, 0x45, 0x67, 0x45, 0x67, 0x45, 0x67, 0, 0};
  const auto whole = AuthoringPictureMaker().Make(unit, control, {Blue, Red, Green, White}, 576);
  EXPECT_THAT(Indexes(whole.Image), ElementsAre("0123", "2301"));
  EXPECT_EQ(whole.Fits, Fit::AsItIs);
}

TEST(AuthoringPicture, MayBeOfOneColumn) {
  EXPECT_THAT(Indexes(Make({.Top = {"1"}, .Bottom = {"2"}, .Width = 1}).Image), ElementsAre("1", "2"));
}

TEST(AuthoringPicture, OneLineIsOfTheTransparentCode) {
  // The last line of an odd height is not decoded.
  EXPECT_THAT(Indexes(Make({.Top = {"1111"}, .Bottom = {}, .Height = 1}).Image), ElementsAre("0000"));
}

TEST(AuthoringPicture, AReversedAreaHasNone) {
  EXPECT_TRUE(Make({.Top = {}, .Bottom = {}, .Width = 0}).Image.isNull());
  EXPECT_TRUE(Make({.Top = {}, .Bottom = {}, .Height = 0}).Image.isNull());
}

}  // namespace
}  // namespace quillmark
