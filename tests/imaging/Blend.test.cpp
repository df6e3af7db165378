#include "imaging/Blend.h"

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(BlendOver, OpaqueSourceSurvivesToTheBit) {
  EXPECT_EQ(BlendOver(0xFF123456, 0x80FEDCBA), 0xFF123456U);
}

TEST(BlendOver, SourceOverFullTransparencySurvivesToTheBit) {
  EXPECT_EQ(BlendOver(0x11010203, 0x00000000), 0x11010203U);
  EXPECT_EQ(BlendOver(0x11010203, 0x00FFFFFF), 0x11010203U);
}

TEST(BlendOver, TransparentSourceLeavesWhatIsBelow) {
  EXPECT_EQ(BlendOver(0x00FFFFFF, 0x80123456), 0x80123456U);
  EXPECT_EQ(BlendOver(0x00FFFFFF, 0x00123456), 0x00123456U);
}

TEST(BlendOver, ComponentsOverAnOpaquePixelAreRoundedToNearest) {
  // (255 x 136 + 60 x 119) / 255 = 41820 / 255 = 164
  EXPECT_EQ(BlendOver(0x88FFFFFF, 0xFF3C3C3C), 0xFFA4A4A4U);
  // (255 x 136 + 120 x 119) / 255 = 48960 / 255 = 192
  EXPECT_EQ(BlendOver(0x88FFFFFF, 0xFF787878), 0xFFC0C0C0U);
  // red (200 x 17 + 60 x 238) / 255 = 69.33, green (100 x 17 + 60 x 238) / 255 = 62.67,
  // blue (0 x 17 + 60 x 238) / 255 = 56
  EXPECT_EQ(BlendOver(0x11C86400, 0xFF3C3C3C), 0xFF453F38U);
}

TEST(BlendOver, ColourOverATranslucentPixelIsWeightedByBothAlphas) {
  // Weights 128 x 255 = 32640 and 64 x 127 = 8128, together 40768: alpha 40768 / 255 = 159.87 -> 160.
  // red 255 x 32640 / 40768 = 204.16, blue 255 x 8128 / 40768 = 50.84
  EXPECT_EQ(BlendOver(0x80FF0000, 0x400000FF), 0xA0CC0033U);
}

TEST(BlendOver, OpacityIsRoundedToNearest) {
  // (10 * 255 + 10 * 245) / 255 = 19.6
  EXPECT_EQ(BlendOver(0x0A000000, 0x0A000000), 0x14000000U);
}

TEST(BlendOver, EqualColoursStayExact) {
  for (std::uint32_t alpha = 1; alpha < 256; ++alpha) {
    EXPECT_EQ(BlendOver(alpha << 24 | 0x00EB8001, 0x33EB8001) & 0x00FFFFFF, 0x00EB8001U) << alpha;
  }
}

TEST(BlendOver, FaintestPixelsStillCount) {
  // Weights 255 and 254, together 509: alpha 509 / 255 = 1.996 -> 2, red 255 x 255 / 509 = 127.75.
  EXPECT_EQ(BlendOver(0x01FF0000, 0x01000000), 0x02800000U);
}

}  // namespace
}  // namespace quillmark
