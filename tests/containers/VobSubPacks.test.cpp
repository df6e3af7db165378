#include "containers/VobSubPacks.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

#include "tests/containers/PackBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using testing::Each;
using testing::ElementsAreArray;
using testing::EndsWith;
using testing::HasSubstr;

Bytes Packs(std::size_t unitSize, std::int64_t ticks = 90000, unsigned substream = 0) {
  Bytes packs;
  AppendVobSubPacks(packs, substream, ticks, Bytes(unitSize, 0x5A));
  return packs;
}

Bytes Stretch(const Bytes& bytes, std::size_t from, std::size_t count) {
  return {bytes.begin() + static_cast<std::ptrdiff_t>(from),
          bytes.begin() + static_cast<std::ptrdiff_t>(from + count)};
}

const Bytes HeadAtOneSecond = {0x00, 0x00, 0x01, 0xBA, 0x44, 0x00, 0x16,
                               0xFC, 0x84, 0x01, 0x01, 0x89, 0xC3, 0xF8};

TEST(VobSubPacks, OnePack) {
  const Bytes packs = Packs(90);
  ASSERT_EQ(packs.size(), 2048U);
  EXPECT_EQ(Stretch(packs, 0, 14), HeadAtOneSecond);
  EXPECT_EQ(Stretch(packs, 14, 15), (Bytes{0x00, 0x00, 0x01, 0xBD, 0x00, 0x63, 0x81, 0x80, 0x05, 0x21, 0x00,
                                           0x05, 0xBF, 0x21, 0x20}));
  EXPECT_THAT(Stretch(packs, 29, 90), Each(0x5A));
  EXPECT_EQ(Stretch(packs, 119, 6), (Bytes{0x00, 0x00, 0x01, 0xBE, 0x07, 0x83}));
  EXPECT_THAT(Stretch(packs, 125, 1923), Each(0xFF));
}

TEST(VobSubPacks, FullFirstPack) {
  const Bytes packs = Packs(2019);
  ASSERT_EQ(packs.size(), 2048U);
  EXPECT_EQ(Stretch(packs, 18, 5), (Bytes{0x07, 0xEC, 0x81, 0x80, 0x05}));
  EXPECT_THAT(Stretch(packs, 29, 2019), Each(0x5A));
}

TEST(VobSubPacks, FurtherPackHasNoTimeStamp) {
  const Bytes packs = Packs(2019 + 100, 90000, 5);
  ASSERT_EQ(packs.size(), 4096U);
  EXPECT_EQ(Stretch(packs, 2048, 14), HeadAtOneSecond);
  EXPECT_EQ(Stretch(packs, 2062, 10), (Bytes{0x00, 0x00, 0x01, 0xBD, 0x00, 0x68, 0x81, 0x00, 0x00, 0x25}));
  EXPECT_THAT(Stretch(packs, 2072, 100), Each(0x5A));
  EXPECT_EQ(Stretch(packs, 2172, 6), (Bytes{0x00, 0x00, 0x01, 0xBE, 0x07, 0x7E}));
}

TEST(VobSubPacks, FullFurtherPack) {
  const Bytes packs = Packs(2019 + 2024);
  ASSERT_EQ(packs.size(), 4096U);
  EXPECT_EQ(Stretch(packs, 2066, 6), (Bytes{0x07, 0xEC, 0x81, 0x00, 0x00, 0x20}));
  EXPECT_EQ(packs.back(), 0x5A);
}

TEST(VobSubPacks, OneByteMoreTakesAPackMore) {
  EXPECT_EQ(Packs(2019 + 2024 + 1).size(), 3 * 2048U);
}

TEST(VobSubPacks, FewMissingBytesAreStuffedIntoTheHeader) {
  const Bytes packs = Packs(2014);
  ASSERT_EQ(packs.size(), 2048U);
  EXPECT_EQ(Stretch(packs, 18, 16), (Bytes{0x07, 0xEC, 0x81, 0x80, 0x0A, 0x21, 0x00, 0x05, 0xBF, 0x21, 0xFF,
                                           0xFF, 0xFF, 0xFF, 0xFF, 0x20}));
  EXPECT_THAT(Stretch(packs, 34, 2014), Each(0x5A));
}

TEST(VobSubPacks, OneMissingByteOfAFurtherPack) {
  const Bytes packs = Packs(2019 + 2023);
  ASSERT_EQ(packs.size(), 4096U);
  EXPECT_EQ(Stretch(packs, 2066, 7), (Bytes{0x07, 0xEC, 0x81, 0x00, 0x01, 0xFF, 0x20}));
}

TEST(VobSubPacks, SixMissingBytesAreAnEmptyPaddingPacket) {
  const Bytes packs = Packs(2013);
  ASSERT_EQ(packs.size(), 2048U);
  EXPECT_EQ(Stretch(packs, 18, 5), (Bytes{0x07, 0xE6, 0x81, 0x80, 0x05}));
  EXPECT_EQ(Stretch(packs, 2042, 6), (Bytes{0x00, 0x00, 0x01, 0xBE, 0x00, 0x00}));
}

TEST(VobSubPacks, LastTimeOfAll) {
  // 2^33 - 1 ticks: all bits are set.
  const Bytes packs = Packs(10, 8589934591);
  EXPECT_EQ(Stretch(packs, 4, 6), (Bytes{0x7F, 0xFF, 0xFF, 0xFF, 0xFC, 0x01}));
  EXPECT_EQ(Stretch(packs, 23, 5), (Bytes{0x2F, 0xFF, 0xFF, 0xFF, 0xFF}));
}

TEST(VobSubPacks, TimeBehindItStartsAgain) {
  EXPECT_EQ(Packs(10, 8589934592 + 90000), Packs(10, 90000));
}

TEST(VobSubPacks, LineHasMillisecondsCutOff) {
  EXPECT_EQ(VobSubLine(90089, 0xA800), "timestamp: 00:00:01:000, filepos: 00000a800\n");
  EXPECT_EQ(VobSubLine(324000000, 0), "timestamp: 01:00:00:000, filepos: 000000000\n");
  EXPECT_EQ(VobSubLine(5400000, 0), "timestamp: 00:01:00:000, filepos: 000000000\n");
  EXPECT_EQ(VobSubLine(8589934591, 0x123456789), "timestamp: 26:30:43:717, filepos: 123456789\n");
}

TEST(VobSubPacks, Settings) {
  DvdPalette palette = {};
  palette[0] = 0x302010;
  palette[15] = 0x0000FF;
  EXPECT_EQ(
      VobSubSettings({.Palette = palette, .FrameWidth = 720, .FrameHeight = 480}),
      "# VobSub index file, v7 (do not modify this line!)\n"
      "size: 720x480\n"
      "org: 0, 0\n"
      "scale: 100%, 100%\n"
      "alpha: 100%\n"
      "smooth: OFF\n"
      "fadein/out: 50, 50\n"
      "align: OFF at LEFT TOP\n"
      "time offset: 0\n"
      "forced subs: OFF\n"
      "palette: 102030, 000000, 000000, 000000, 000000, 000000, 000000, 000000, 000000, 000000, 000000, "
      "000000, 000000, 000000, 000000, ff0000\n"
      "custom colors: OFF, tridx: 0000, colors: 000000, 000000, 000000, 000000\n"
      "langidx: 0\n");
}

std::string LanguageText(const std::string& language, const std::string& name = {}) {
  return VobSubLanguageText({.Packets = {}, .Language = language, .Name = name}, 3);
}

TEST(VobSubPacks, LanguageOfTwoLettersStays) {
  EXPECT_EQ(LanguageText("en"), "\nid: en, index: 3\n");
}

TEST(VobSubPacks, ThreeLettersBecomeTwo) {
  EXPECT_EQ(LanguageText("ger"), "\nid: de, index: 3\n");
  EXPECT_EQ(LanguageText("deu"), "\nid: de, index: 3\n");
}

TEST(VobSubPacks, TagIsItsLanguage) {
  EXPECT_EQ(LanguageText("pt-BR"), "\nid: pt, index: 3\n");
}

TEST(VobSubPacks, UnknownLanguage) {
  for (const char* language : {"", "und", "--", "a, index: 7\nx"}) {
    EXPECT_EQ(LanguageText(language), "\nid: --, index: 3\n") << language;
  }
}

TEST(VobSubPacks, NameStaysOnItsLine) {
  EXPECT_EQ(LanguageText("en", "Full\nid: xx"), "\nid: en, index: 3\nalt: Full id: xx\n");
}

}  // namespace
}  // namespace quillmark
