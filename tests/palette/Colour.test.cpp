#include "palette/Colour.h"

#include <array>
#include <gmock/gmock.h>

namespace quillmark {
namespace {

constexpr YCrCb Packed(unsigned y, unsigned cr, unsigned cb) {
  return y + cr * 256 + cb * 65536;
}

// Blue, green, red, as 24-bit numbers have them.
TEST(StartUpPalette, HasTheColoursOfTheEmptyWindow) {
  EXPECT_THAT(StartUpPalette,
              testing::ElementsAre(0x000000U, 0xFBFD03U, 0xFFFFFFU, 0x02FC02U, 0x04FFFDU, 0xFC5EFCU,
                                   0xF09694U, 0xFB63FBU, 0x9696FCU, 0x96FD96U, 0xFB9694U, 0xFD96FBU,
                                   0x828282U, 0x000000U, 0x000000U, 0x000000U));
}

TEST(YCrCbToRgb, ZeroIsBlackWithoutTheFormulas) {
  EXPECT_EQ(YCrCbToRgb(0), 0U);
  EXPECT_EQ(YCrCbToRgb(0x77000000U), 0U);  // the fourth byte is none of the three
}

TEST(YCrCbToRgb, OneStepFromZeroIsTheSaturatedGreenOfTheFormulas) {
  // R < 0; G = (1164 + 135988) / 1000 = 137; B < 0
  EXPECT_EQ(YCrCbToRgb(Packed(1, 0, 0)), MakeRgb(0, 137, 0));
}

TEST(YCrCbToRgb, GreysWithoutChroma) {
  EXPECT_EQ(YCrCbToRgb(Packed(16, 128, 128)), MakeRgb(0, 0, 0));
  EXPECT_EQ(YCrCbToRgb(Packed(17, 128, 128)), MakeRgb(1, 1, 1));
  EXPECT_EQ(YCrCbToRgb(Packed(126, 128, 128)), MakeRgb(128, 128, 128));
  EXPECT_EQ(YCrCbToRgb(Packed(235, 128, 128)), MakeRgb(255, 255, 255));
}

TEST(YCrCbToRgb, RoundsTowardsMinusInfinityBeforeItClamps) {
  // R = floor((95448 + 383040 - 222412) / 1000) = 256, clamped; G = floor((95448 - 195120 - 35190 + 135988) /
  // 1000) = 1; B = floor((95448 + 181620 - 276428) / 1000) = 0.
  EXPECT_EQ(YCrCbToRgb(Packed(82, 240, 90)), MakeRgb(255, 1, 0));
}

TEST(YCrCbToRgb, ClampsBothEnds) {
  EXPECT_EQ(YCrCbToRgb(Packed(255, 255, 255)), MakeRgb(255, 125, 255));
  EXPECT_EQ(YCrCbToRgb(Packed(0, 255, 255)), MakeRgb(184, 0, 238));
  EXPECT_EQ(YCrCbToRgb(Packed(0, 0, 255)), MakeRgb(0, 36, 238));
}

/// One more or less of any factor or of what is added would make another number of at least one of these.
TEST(YCrCbToRgb, EachThousandthCounts) {
  EXPECT_EQ(YCrCbToRgb(Packed(60, 157, 100)), MakeRgb(98, 39, 0));    // R = 98000 / 1000
  EXPECT_EQ(YCrCbToRgb(Packed(63, 131, 100)), MakeRgb(59, 63, 0));    // R = floor(59996 / 1000)
  EXPECT_EQ(YCrCbToRgb(Packed(60, 106, 150)), MakeRgb(16, 61, 96));   // G = 61000 / 1000
  EXPECT_EQ(YCrCbToRgb(Packed(60, 100, 119)), MakeRgb(7, 77, 33));    // G = floor(77999 / 1000)
  EXPECT_EQ(YCrCbToRgb(Packed(77, 100, 100)), MakeRgb(26, 105, 15));  // B = 15000 / 1000
  EXPECT_EQ(YCrCbToRgb(Packed(76, 100, 109)), MakeRgb(25, 100, 31));  // B = floor(31998 / 1000)
}

TEST(YCrCbToRgb, TheFourthByteDoesNotCount) {
  EXPECT_EQ(YCrCbToRgb(0xFF000000U | Packed(235, 128, 128)), MakeRgb(255, 255, 255));
}

TEST(RgbToYCrCb, KnownColours) {
  EXPECT_EQ(RgbToYCrCb(MakeRgb(255, 255, 255)), Packed(235, 128, 128));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(0, 0, 0)), Packed(16, 128, 128));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(255, 0, 0)), Packed(82, 240, 90));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(0, 255, 0)), Packed(145, 34, 54));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(0, 0, 255)), Packed(41, 110, 240));
}

/// One thousandth more or less of a primary colour would make another number of at least one of these.
/// 257 + 504 + 98 x 181 + 16500 = 34999
TEST(RgbToYCrCb, SharesAreCutNotRounded) {
  EXPECT_EQ(RgbToYCrCb(MakeRgb(1, 1, 181)), Packed(34, 115, 207));
  // Cr: 439 - 71 x 140 + 128500 = 118999
  EXPECT_EQ(RgbToYCrCb(MakeRgb(1, 0, 140)), Packed(30, 118, 189));
  // Cb: -148 x 2 - 291 x 10 + 439 x 95 + 128500 = 166999
  EXPECT_EQ(RgbToYCrCb(MakeRgb(2, 10, 95)), Packed(31, 118, 166));
}

TEST(RgbToYCrCb, EachShareOfAPrimaryColourCounts) {
  EXPECT_EQ(RgbToYCrCb(MakeRgb(247, 0, 0)), Packed(79, 236, 91));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(220, 0, 0)), Packed(73, 225, 95));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(165, 0, 0)), Packed(58, 200, 104));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(0, 249, 0)), Packed(141, 36, 56));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(0, 243, 0)), Packed(138, 39, 57));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(0, 255, 0)), Packed(145, 34, 54));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(0, 0, 249)), Packed(40, 110, 237));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(0, 0, 231)), Packed(39, 112, 229));
  EXPECT_EQ(RgbToYCrCb(MakeRgb(0, 0, 220)), Packed(38, 112, 225));
}

TEST(RgbToYCrCb, TheFourthByteDoesNotCount) {
  EXPECT_EQ(RgbToYCrCb(0xFF000000U), Packed(16, 128, 128));
}

TEST(RgbFileToYCrCb, MasksEachComponentWithHexadecimal255) {
  EXPECT_EQ(RgbFileToYCrCb(255, 255, 255), 65U);
  EXPECT_EQ(RgbFileToYCrCb(0, 0, 0), 16U);
  // Y 82 = 0x52, Cr 240 = 0xF0, Cb 90 = 0x5A; each keeps its bits of 0x55.
  EXPECT_EQ(RgbFileToYCrCb(255, 0, 0), Packed(0x50, 0x50, 0x50));
}

TEST(GetARGBColor, RedMovesUpAndAlphaIsSeventeenTimesTheContrast) {
  EXPECT_EQ(GetARGBColor(MakeRgb(0x12, 0x34, 0x56), 8), 0x88123456U);
}

TEST(GetARGBColor, ContrastZeroIsTransparentAndFifteenOpaque) {
  EXPECT_EQ(GetARGBColor(MakeRgb(255, 255, 255), 0), 0x00FFFFFFU);
  EXPECT_EQ(GetARGBColor(MakeRgb(0, 0, 0), 15), 0xFF000000U);
}

TEST(SplitArgb, GivesTheFourBytes) {
  const ArgbComponents parts = SplitArgb(0xFE807F01U);
  EXPECT_EQ(parts.Alpha, 254);
  EXPECT_EQ(parts.Red, 128);
  EXPECT_EQ(parts.Green, 127);
  EXPECT_EQ(parts.Blue, 1);
}

constexpr std::array<ArgbComponents, 4> Codes = {{{.Alpha = 0, .Red = 10, .Green = 20, .Blue = 30},
                                                  {.Alpha = 255, .Red = 10, .Green = 20, .Blue = 30},
                                                  {.Alpha = 255, .Red = 11, .Green = 21, .Blue = 31},
                                                  {.Alpha = 255, .Red = 100, .Green = 100, .Blue = 100}}};

TEST(GetNearARGBColor, FindsTheExactRecord) {
  EXPECT_EQ(GetNearARGBColor(0x000A141EU, Codes), 0);
  EXPECT_EQ(GetNearARGBColor(0xFF646464U, Codes), 3);
}

TEST(GetNearARGBColor, LowerCodeWinsWhereTwoAreNear) {
  EXPECT_EQ(GetNearARGBColor(0xFF0B151FU, Codes), 1);  // exactly record 2, one step from record 1
}

TEST(GetNearARGBColor, OneStepInEveryComponentIsNear) {
  EXPECT_EQ(GetNearARGBColor(0xFE656365U, Codes), 3);
  EXPECT_EQ(GetNearARGBColor(0x0109131DU, Codes), 0);
}

TEST(GetNearARGBColor, TwoStepsInAnyComponentAreNot) {
  for (const Argb colour : {0xFD646464U, 0xFF666464U, 0xFF646264U, 0xFF646466U}) {
    EXPECT_EQ(GetNearARGBColor(colour, Codes), -1) << std::hex << colour;
  }
}

TEST(RgbToDecimalText, NoLeadingZeros) {
  EXPECT_EQ(RgbToDecimalText(MakeRgb(255, 0, 128)), "255, 0, 128");
  EXPECT_EQ(RgbToDecimalText(0xFF000000U | MakeRgb(7, 42, 1)), "7, 42, 1");
}

TEST(PackedToHexText, TwoUpperCaseDigitsEachLowByteFirst) {
  EXPECT_EQ(PackedToHexText(Packed(16, 128, 240)), "1080F0");
  EXPECT_EQ(PackedToHexText(0xFF000000U | Packed(0, 10, 171)), "000AAB");
}

}  // namespace
}  // namespace quillmark
