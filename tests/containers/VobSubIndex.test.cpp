#include "containers/VobSubIndex.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(IsVobSubIndex, ByItsFirstLine) {
  EXPECT_TRUE(IsVobSubIndex("# VobSub index file, v7 (do not modify this line!)\n"));
}

TEST(IsVobSubIndex, ByteOrderMarkIsPassed) {
  EXPECT_TRUE(IsVobSubIndex("\xEF\xBB\xBF# VobSub index file, v6\r\n"));
}

TEST(IsVobSubIndex, OtherTextIsNone) {
  EXPECT_FALSE(IsVobSubIndex("# VobSub"));
  EXPECT_FALSE(IsVobSubIndex(""));
}

constexpr const char* TwoLanguages =
    "# VobSub index file, v7 (do not modify this line!)\n"
    "id: en, index: 0\n"
    "alt: Full: all of it\n"
    "timestamp: 00:00:01:500, filepos: 000000000\n"
    "timestamp: 01:02:03:004, filepos: 00000a800\n"
    "\n"
    "id: de, index: 3\n"
    "timestamp: 00:00:02:000, filepos: 000001000\n";

TEST(VobSubIndex, LinesThatEndInACarriageReturn) {
  const VobSubIndex index = ParseVobSubIndex(
      "id: en, index: 0\rtimestamp: 00:00:01:000, filepos: 0\r\ntimestamp: 00:00:02:000, filepos: 800\r"
      "timestamp: 00:00:03:000, filepos: 1000");
  ASSERT_EQ(index.Languages.size(), 1U);
  const auto& entries = index.Languages[0].Entries;
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(entries[0].Line, 2U);
  EXPECT_EQ(entries[1].Line, 3U);
  EXPECT_EQ(entries[2].Line, 4U);
  EXPECT_EQ(entries[2].Position, 0x1000U);
}

TEST(VobSubIndex, UsualLineSaysWhatTheSameLineWithOtherBlanksSays) {
  const VobSubIndex index = ParseVobSubIndex(
      "timestamp: 12:34:56:789, filepos: 0000AbcF9\n"
      "timestamp:12:34:56:789 ,filepos:0000AbcF9\n"
      "timestamp: 00:00:01:000, filepos: 000010240\n"
      "timestamp:  00:00:01:000, filepos: 000010240\n");
  ASSERT_EQ(index.Languages.size(), 1U);
  const auto& entries = index.Languages[0].Entries;
  ASSERT_EQ(entries.size(), 4U);
  for (const std::size_t i : {0U, 1U}) {
    EXPECT_EQ(entries[i].Time, 45296789);
    EXPECT_EQ(entries[i].Position, 0xABCF9U);
    EXPECT_EQ(entries[i].DecimalPosition, std::nullopt);
  }
  for (const std::size_t i : {2U, 3U}) {
    EXPECT_EQ(entries[i].Time, 1000);
    EXPECT_EQ(entries[i].Position, 0x10240U);
    EXPECT_EQ(entries[i].DecimalPosition, 10240U);
  }
}

TEST(VobSubIndex, NearlyUsualLinesAreNoEntries) {
  const VobSubIndex index = ParseVobSubIndex(
      "timestamp: 00:00:01:0x0, filepos: 0\n"
      "timestamp: 00:00:01:000, filepos: \n"
      "timestamp: 00:00:01:000, filepos: 80g\n"
      "timestamp: 00;00:01:000, filepos: 800\n"
      "timestamp: 00:00;01:000, filepos: 800\n"
      "timestamp: 00:00:01:000; filepos: 800\n");
  EXPECT_THAT(index.Languages, IsEmpty());
  ASSERT_EQ(index.Notes.size(), 1U);
  EXPECT_EQ(index.Notes[0], "6 lines are no time and position (the first is line 1)");
}

TEST(VobSubIndex, LanguagesWithoutEnd) {
  std::string text;
  for (int i = 0; i < 258; ++i) {
    text += "id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\n";
  }
  const VobSubIndex index = ParseVobSubIndex(text);
  EXPECT_EQ(index.Languages.size(), 256U);
  EXPECT_EQ(index.Languages.back().Entries.size(), 1U);
  ASSERT_EQ(index.Notes.size(), 1U);
  EXPECT_EQ(index.Notes[0], "line 513: more than 256 languages are not read");
}

TEST(VobSubIndex, NotesWithoutEnd) {
  std::string text;
  for (int i = 0; i < 100; ++i) {
    text += "delay: soon\n";
  }
  const VobSubIndex index = ParseVobSubIndex(text + "timestamp: never\n");
  ASSERT_EQ(index.Notes.size(), 66U);
  EXPECT_EQ(index.Notes[63], "line 64 is no delay");
  EXPECT_EQ(index.Notes[64], "there is more in the index that cannot be read");
  EXPECT_EQ(index.Notes[65], "1 line is no time and position (the first is line 101)");
}

TEST(VobSubIndex, LanguagesWithTheirLines) {
  const VobSubIndex index = ParseVobSubIndex(TwoLanguages);
  ASSERT_EQ(index.Languages.size(), 2U);
  EXPECT_EQ(index.Languages[0].Language, "en");
  EXPECT_EQ(index.Languages[0].Name, "Full: all of it");
  EXPECT_EQ(index.Languages[0].Substream, 0U);
  ASSERT_EQ(index.Languages[0].Entries.size(), 2U);
  EXPECT_EQ(index.Languages[0].Entries[0].Time, 1500);
  EXPECT_EQ(index.Languages[0].Entries[1].Time, 3723004);
  EXPECT_EQ(index.Languages[0].Entries[1].Position, 0xA800U);
  EXPECT_EQ(index.Languages[0].Entries[1].Line, 5U);
  EXPECT_EQ(index.Languages[1].Substream, 3U);
  ASSERT_EQ(index.Languages[1].Entries.size(), 1U);
}

TEST(VobSubIndex, LinesEndInCrLfAsWell) {
  const VobSubIndex index = ParseVobSubIndex(
      "size: 720x480\r\nid: en, index: 0\r\ntimestamp: 00:00:01:000, filepos: 000000800\r\n");
  EXPECT_EQ(index.Width, 720);
  EXPECT_EQ(index.Height, 480);
  ASSERT_EQ(index.Languages.size(), 1U);
  ASSERT_EQ(index.Languages[0].Entries.size(), 1U);
  EXPECT_EQ(index.Languages[0].Entries[0].Position, 0x800U);
}

TEST(VobSubIndex, ByteOrderMarkDoesNotHideTheFirstKey) {
  EXPECT_EQ(ParseVobSubIndex("\xEF\xBB\xBFsize: 720x576\n").Height, 576);
}

TEST(VobSubIndex, KeysCountInAnyCase) {
  const VobSubIndex index =
      ParseVobSubIndex("ID: fr, INDEX: 2\nTimeStamp: 00:00:01:000, FilePos: 00000A800\n");
  ASSERT_EQ(index.Languages.size(), 1U);
  EXPECT_EQ(index.Languages[0].Substream, 2U);
  ASSERT_EQ(index.Languages[0].Entries.size(), 1U);
  EXPECT_EQ(index.Languages[0].Entries[0].Position, 0xA800U);
}

std::vector<VobSubEntry> EntriesOf(const std::string& lines) {
  const VobSubIndex index = ParseVobSubIndex("id: en, index: 0\n" + lines);
  return index.Languages.at(0).Entries;
}

TEST(VobSubIndex, TimeMayBeNegative) {
  ASSERT_EQ(EntriesOf("timestamp: -00:00:01:500, filepos: 0\n").size(), 1U);
  EXPECT_EQ(EntriesOf("timestamp: -00:00:01:500, filepos: 0\n")[0].Time, -1500);
  EXPECT_EQ(EntriesOf("timestamp: -10:00:00:000, filepos: 0\n").at(0).Time, -36000000);
}

TEST(VobSubIndex, NumbersOfATimeHaveSixDigitsAtMost) {
  const auto entries = EntriesOf("timestamp: 000100:000002:000003:000004, filepos: 0\n");
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].Time, 360123004);
  EXPECT_EQ(EntriesOf("timestamp: 0000100:02:03:004, filepos: 0\n").size(), 0U);
}

TEST(VobSubIndex, PositionMayBeShortAndIsKeptAsADecimalToo) {
  const auto entries = EntriesOf("timestamp: 00:00:01:000, filepos: 2048\n");
  ASSERT_EQ(entries.size(), 1U);
  EXPECT_EQ(entries[0].Position, 0x2048U);
  EXPECT_EQ(entries[0].DecimalPosition, 2048U);
}

TEST(VobSubIndex, PositionWithLettersIsNoDecimal) {
  EXPECT_EQ(EntriesOf("timestamp: 00:00:01:000, filepos: 0000a800\n").at(0).DecimalPosition, std::nullopt);
}

TEST(VobSubIndex, DelaysAddUp) {
  const auto entries = EntriesOf(
      "delay: 00:00:01:000\n"
      "timestamp: 00:00:01:000, filepos: 0\n"
      "delay: -00:00:00:250\n"
      "timestamp: 00:00:02:000, filepos: 0\n");
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0].Delay, 1000);
  EXPECT_EQ(entries[1].Delay, 750);
}

TEST(VobSubIndex, DelayEndsWithItsLanguage) {
  const VobSubIndex index = ParseVobSubIndex(
      "id: en, index: 0\ndelay: 00:00:01:000\nid: de, index: 1\ntimestamp: 00:00:01:000, filepos: 0\n");
  ASSERT_EQ(index.Languages.size(), 2U);
  ASSERT_EQ(index.Languages[1].Entries.size(), 1U);
  EXPECT_EQ(index.Languages[1].Entries[0].Delay, 0);
}

TEST(VobSubIndex, UnknownLinesArePassed) {
  const VobSubIndex index = ParseVobSubIndex(
      "00:00:01:500\nnonsense\n: \n# timestamp: 00:00:09:000, filepos: 0\nid: en, index: 0\n"
      "timestamp: 00:00:01:000, filepos: 0\n");
  ASSERT_EQ(index.Languages.size(), 1U);
  EXPECT_EQ(index.Languages[0].Entries.size(), 1U);
  EXPECT_THAT(index.Notes, IsEmpty());
}

TEST(VobSubIndex, LineWithoutTimeOrPositionIsTold) {
  const VobSubIndex index = ParseVobSubIndex(
      "id: en, index: 0\ntimestamp: 00:00:01, filepos: 0\ntimestamp: 00:00:01:000, filepos: xyz\n");
  EXPECT_THAT(index.Languages.at(0).Entries, IsEmpty());
  EXPECT_THAT(index.Notes, ElementsAre("2 lines are no time and position (the first is line 2)"));
}

TEST(VobSubIndex, LinesBeforeAnyLanguageBelongToAnUnknownOne) {
  const VobSubIndex index = ParseVobSubIndex("timestamp: 00:00:01:000, filepos: 0\n");
  ASSERT_EQ(index.Languages.size(), 1U);
  EXPECT_EQ(index.Languages[0].Language, "");
  EXPECT_EQ(index.Languages[0].Substream, 0U);
}

TEST(VobSubIndex, UnknownLanguageIsEmpty) {
  for (const std::string letters : {"--", "und", ""}) {
    EXPECT_EQ(ParseVobSubIndex("id: " + letters + ", index: 1\n").Languages.at(0).Language, "");
    EXPECT_EQ(ParseVobSubIndex("id: " + letters + ", index: 1\n").Languages.at(0).Substream, 1U);
  }
}

TEST(VobSubIndex, IndexPastTheSubstreamsIsTheFirst) {
  EXPECT_EQ(ParseVobSubIndex("id: en, index: 32\n").Languages.at(0).Substream, 0U);
}

TEST(VobSubIndex, PaletteIsRedGreenBlue) {
  const VobSubIndex index = ParseVobSubIndex(
      "palette: 102030, ffffff, 000000, 000000, 000000, 000000, 000000, 000000, 000000, 000000, 000000, "
      "000000, 000000, 000000, 000000, 0000FE\n");
  ASSERT_TRUE(index.Palette);
  EXPECT_EQ((*index.Palette)[0], 0x302010U);
  EXPECT_EQ((*index.Palette)[1], 0xFFFFFFU);
  EXPECT_EQ((*index.Palette)[15], 0xFE0000U);
}

TEST(VobSubIndex, ShortPaletteEndsInBlack) {
  const VobSubIndex index = ParseVobSubIndex("palette: 000001,000002\n");
  ASSERT_TRUE(index.Palette);
  EXPECT_EQ((*index.Palette)[1], 0x020000U);
  EXPECT_EQ((*index.Palette)[2], 0U);
  EXPECT_THAT(index.Notes, ElementsAre("line 1: the palette has 2 of 16 colours; the others are black"));
}

TEST(VobSubIndex, PaletteOfNoColourIsNone) {
  const VobSubIndex index = ParseVobSubIndex("palette: none\n");
  EXPECT_FALSE(index.Palette);
  EXPECT_THAT(index.Notes, ElementsAre("line 1 has no palette that can be read"));
}

TEST(VobSubIndex, CustomColours) {
  const CustomColours custom =
      ParseVobSubIndex("custom colors: ON, tridx: 1001, colors: 000001, 000002, 000003, 000004\n").Custom;
  EXPECT_TRUE(custom.IsOn);
  EXPECT_THAT(custom.IsTransparent, ElementsAre(true, false, false, true));
  EXPECT_THAT(custom.Colours, ElementsAre(0x010000U, 0x020000U, 0x030000U, 0x040000U));
}

TEST(VobSubIndex, OtherSettings) {
  EXPECT_EQ(ParseVobSubIndex("langidx: en\n").Preselected, 0U);
  const VobSubIndex index = ParseVobSubIndex("time offset: -250\nforced subs: ON\nlangidx: 2\n");
  EXPECT_EQ(index.TimeOffset, -250);
  EXPECT_TRUE(index.ShowsForcedAlone);
  EXPECT_EQ(index.Preselected, 2U);
}

TEST(VobSubIndex, TimeOffsetAsATime) {
  EXPECT_EQ(ParseVobSubIndex("time offset: 00:00:01:250\n").TimeOffset, 1250);
}

TEST(VobSubIndex, EveryStartOfATextCanBeRead) {
  const std::string text = TwoLanguages;
  std::size_t most = 0;
  for (std::size_t length = 0; length <= text.size(); ++length) {
    most = std::max(most, ParseVobSubIndex(text.substr(0, length)).Languages.size());
  }
  EXPECT_EQ(most, 2U);
}

TEST(VobSubIndex, LinesThatAreAlmostTimesAreNone) {
  const VobSubIndex index = ParseVobSubIndex(
      "timestamp: 00:00;01:000, filepos: 800\n"
      "timestamp: x0:00:01:000, filepos: 800\n"
      "timestamp: 00:0x:01:000, filepos: 800\n"
      "timestamp: 00:00:x1:000, filepos: 800\n"
      "timestamp: 00:00:01:000, filepos: -800\n"
      "timestamp: 00:00:01:000, position: 800\n"
      "timestamp: 0000000:00:01:000, filepos: 800\n");
  EXPECT_THAT(index.Languages, IsEmpty());
  ASSERT_EQ(index.Notes.size(), 1U);
  EXPECT_EQ(index.Notes[0], "7 lines are no time and position (the first is line 1)");
}

TEST(VobSubIndex, AnyMarkMayStandBeforeMilliseconds) {
  const VobSubIndex index = ParseVobSubIndex("timestamp: 00:00:01;000, filepos: 800\n");
  ASSERT_EQ(index.Languages.size(), 1U);
  EXPECT_EQ(index.Languages[0].Entries[0].Time, 1000);
}

TEST(VobSubIndex, DelayMayHaveASign) {
  const VobSubIndex index =
      ParseVobSubIndex("id: en, index: 0\ndelay: +00:00:01:000\ntimestamp: 00:00:01:000, filepos: 800\n");
  ASSERT_EQ(index.Languages.size(), 1U);
  EXPECT_EQ(index.Languages[0].Entries[0].Time, 1000);
  EXPECT_EQ(index.Languages[0].Entries[0].Delay, 1000);
}

TEST(VobSubIndex, SizeOfOtherSignsIsNone) {
  for (const char* size : {"size: ax576\n", "size: 720xb\n", "size: 720\n", "size: -720x576\n"}) {
    const VobSubIndex index = ParseVobSubIndex(size);
    EXPECT_EQ(index.Width, VobSubIndex().Width);
    EXPECT_EQ(index.Height, VobSubIndex().Height);
  }
}

TEST(VobSubIndex, CustomColoursMayLackTheirParts) {
  const VobSubIndex index = ParseVobSubIndex("custom colors: ON\n");
  EXPECT_TRUE(index.Custom.IsOn);
}

TEST(VobSubIndex, NameBeforeAnyLanguageIsPassed) {
  const VobSubIndex index = ParseVobSubIndex("alt: early\nid: en, index: 0\n");
  ASSERT_EQ(index.Languages.size(), 1U);
  EXPECT_EQ(index.Languages[0].Name, "");
}

TEST(VobSubIndex, TabsAreBlanksAndOtherControlSignsAreNot) {
  const VobSubIndex index = ParseVobSubIndex("id:\ten\t,\tindex: 0\nalt: \x01name\x0E\n");
  ASSERT_EQ(index.Languages.size(), 1U);
  EXPECT_EQ(index.Languages[0].Language, "en");
  EXPECT_EQ(index.Languages[0].Name, "\x01name\x0E");
}

}  // namespace
}  // namespace quillmark
