#include "containers/AuthoringXml.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string ListOf(const std::string& lines) {
  return "<subpictures format=\"PAL\">\n<stream>\n" + lines + "</stream>\n</subpictures>\n";
}

std::string WhyNot(const std::string& lines) {
  return ParseAuthoringXml(ListOf(lines)).Reason();
}

struct TimeCase {
  const char* Text;
  std::int64_t Ticks;
};

// What spumux 0.7.2 makes of them.
TEST(AuthoringTime, IsReadAsTheToolReadsIt) {
  constexpr TimeCase Cases[] = {{"1", 90000},
                                {"1.5", 135000},
                                {"1,5", 135000},
                                {"1.0001", 90009},
                                {"1.00019", 90009},
                                {"1.1234", 101106},
                                {"01:02:03.04", 335073600},
                                {"0:1.5", 135000},
                                {"1:90.5", 13545000},
                                {"00:00:05:12", 28080000},
                                {" 1.5s", 135000},
                                {"-1.5", 135000},
                                {"", 0},
                                {".", 0},
                                {"1.", 90000},
                                {".5", 45000},
                                {"26:30:43", 8589870000}};
  for (const TimeCase& test : Cases) {
    EXPECT_EQ(ParseAuthoringTime(test.Text), test.Ticks) << test.Text;
  }
}

TEST(AuthoringTime, ASecondPointIsNone) {
  EXPECT_EQ(ParseAuthoringTime("1.5.5"), std::nullopt);
  EXPECT_EQ(ParseAuthoringTime("1.5:5"), std::nullopt);
}

TEST(AuthoringTime, EndsWithTheClock) {
  EXPECT_EQ(ParseAuthoringTime("95444"), std::nullopt);
  EXPECT_EQ(ParseAuthoringTime("99999999999999999999999999"), std::nullopt);
  EXPECT_EQ(ParseAuthoringTime("99:99:99:99:99:99:99:99:99"), std::nullopt);
}

TEST(AuthoringXml, ReadsEveryAttribute) {
  const auto spus = ParseAuthoringXml(
      ListOf("<spu start=\"1\" end=\"2.5\" image=\"a&amp;b.png\" xoffset=\" 7\" yoffset=\"9\" force=\"YES\" "
             "transparent=\"#102030\"/>\n<spu start=\"3\" highlight=\"h.png\"><button name=\"1\"/></spu>"));
  ASSERT_TRUE(spus) << spus.Reason();
  ASSERT_EQ(spus->size(), 2U);
  const AuthoringSpu& first = (*spus)[0];
  EXPECT_EQ(first.Line, 3);
  EXPECT_EQ(first.Start, 90000);
  EXPECT_EQ(first.End, 225000);
  EXPECT_EQ(first.Image, "a&b.png");
  EXPECT_EQ(first.X, 7);
  EXPECT_EQ(first.Y, 9);
  EXPECT_TRUE(first.IsForced);
  EXPECT_EQ(first.Transparent, MakeRgb(0x10, 0x20, 0x30));
  EXPECT_FALSE(first.HasButtons);
  const AuthoringSpu& second = (*spus)[1];
  EXPECT_EQ(second.Line, 4);
  EXPECT_EQ(second.End, 0);
  EXPECT_EQ(second.Image, "");
  EXPECT_FALSE(second.IsForced);
  EXPECT_EQ(second.Transparent, std::nullopt);
  EXPECT_TRUE(second.HasButtons);
}

TEST(AuthoringXml, LinesAloneAreAList) {
  const auto spus = ParseAuthoringXml(
      "\xEF\xBB\xBF<?xml version=\"1.0\"?>\n<!-- <spu/> -->\n"
      "    <spu start=\"00:00:01.00\" image=\"a.png\" xoffset=\"1\" yoffset=\"2\" />\r\n"
      "    <spu start=\"00:00:03.00\" image=\"b.png\" xoffset=\"1\" yoffset=\"2\" />\r\n");
  ASSERT_TRUE(spus) << spus.Reason();
  ASSERT_EQ(spus->size(), 2U);
  EXPECT_EQ((*spus)[0].Line, 3);
  EXPECT_EQ((*spus)[1].Line, 4);
  EXPECT_EQ((*spus)[1].Image, "b.png");
}

TEST(AuthoringXml, AListWithoutSubtitlesHasNone) {
  const auto spus = ParseAuthoringXml(ListOf(""));
  ASSERT_TRUE(spus);
  EXPECT_THAT(*spus, ElementsAre());
}

TEST(AuthoringXml, WhatTheToolRefusesIsRefusedWithItsLine) {
  EXPECT_EQ(WhyNot("<spu start=\"1\"\n begin=\"2\"/>"), "line 4: unknown attribute \"begin\"");
  EXPECT_EQ(WhyNot("<spu start=\"1.2.3\"/>"), "line 3: start \"1.2.3\" is no time of up to 26 hours");
  EXPECT_EQ(WhyNot("<spu xoffset=\"-5\"/>"), "line 3: xoffset \"-5\" is no number from 0 to 4095");
  EXPECT_EQ(WhyNot("<spu xoffset=\"7px\"/>"), "line 3: xoffset \"7px\" is no number from 0 to 4095");
  EXPECT_EQ(WhyNot("<spu yoffset=\"\"/>"), "line 3: yoffset \"\" is no number from 0 to 4095");
  EXPECT_EQ(WhyNot("<spu force=\"maybe\"/>"), "line 3: force \"maybe\" is no yes or no");
  EXPECT_EQ(WhyNot("<spu transparent=\"bogus\"/>"), "line 3: transparent \"bogus\" is no colour");
  EXPECT_EQ(WhyNot("<picture/>"), "line 3: unknown element \"picture\"");
  EXPECT_EQ(WhyNot("<spu><spu/></spu>"), "line 3: an spu in another");
  EXPECT_EQ(WhyNot("</stream><stream>"), "line 3: a second stream, of which a list has one");
  EXPECT_EQ(WhyNot("<textsub filename=\"a.srt\"/>"), "line 3: its subtitles are text, not pictures");
  EXPECT_EQ(ParseAuthoringXml("<dvdauthor/>").Reason(),
            "line 1: it describes a disc; its subtitles stand in another list");
  EXPECT_EQ(ParseAuthoringXml("<subpictures lang=\"en\"/>").Reason(), "line 1: unknown attribute \"lang\"");
}

TEST(AuthoringXml, EverythingElseIsNoXml) {
  EXPECT_THAT(ParseAuthoringXml("").Reason(), HasSubstr("line 1: "));
  EXPECT_THAT(ParseAuthoringXml("hello").Reason(), HasSubstr("line 1: "));
  EXPECT_THAT(ParseAuthoringXml("<spu image=\"\xFF\xFE\"/>").Reason(), HasSubstr("line 1: "));
}

TEST(AuthoringXml, CutAnywhereItIsRefusedOrShorter) {
  const std::string whole =
      ListOf("<spu start=\"1\" image=\"a.png\"/>\n<spu start=\"2\" image=\"b.png\"/>\n");
  for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
    EXPECT_FALSE(ParseAuthoringXml(whole.substr(0, length))) << length;
  }
  const std::string lines = "<spu start=\"1\" image=\"a.png\"/>\n<spu start=\"2\" image=\"b.png\"/>\n";
  for (std::size_t length = 0; length < lines.size(); ++length) {
    const auto spus = ParseAuthoringXml(lines.substr(0, length));
    EXPECT_TRUE(!spus || spus->size() <= 2) << length;
  }
}

TEST(AuthoringXml, StartsLikeOne) {
  EXPECT_TRUE(StartsLikeAuthoringList("<subpictures>"));
  EXPECT_TRUE(StartsLikeAuthoringList("<?xml version=\"1.0\"?>\n<!-- x -->\n<subpictures format=\"PAL\">"));
  EXPECT_TRUE(StartsLikeAuthoringList("    <spu start=\"00:00:01.00\""));
  EXPECT_FALSE(StartsLikeAuthoringList("<dvdauthor>"));
  EXPECT_FALSE(StartsLikeAuthoringList("<spus>"));
  EXPECT_FALSE(StartsLikeAuthoringList("<!-- <spu/>"));
  EXPECT_FALSE(StartsLikeAuthoringList("# VobSub index file"));
  EXPECT_FALSE(StartsLikeAuthoringList(""));
}

std::vector<AuthoringSpu> Spus(const std::vector<std::pair<std::int64_t, std::int64_t>>& times) {
  std::vector<AuthoringSpu> spus;
  for (const auto& [start, end] : times) {
    AuthoringSpu spu;
    spu.Line = static_cast<std::int64_t>(spus.size()) + 1;
    spu.Start = start;
    spu.End = end;
    spus.push_back(spu);
  }
  return spus;
}

std::vector<AuthoringTime> Resolved(const std::vector<std::pair<std::int64_t, std::int64_t>>& times,
                                    std::vector<std::string>* notes = nullptr) {
  std::vector<std::string> own;
  return ResolveTimes(Spus(times), notes != nullptr ? *notes : own);
}

TEST(ResolveTimes, WithoutAnEndTheNextStartEndsIt) {
  EXPECT_THAT(Resolved({{90000, 0}, {180000, 0}}),
              ElementsAre(AuthoringTime{0, 90000, 179910}, AuthoringTime{1, 180000, std::nullopt}));
}

TEST(ResolveTimes, AnOverlapCutsTheFirst) {
  EXPECT_THAT(Resolved({{90000, 270000}, {180000, 360000}}),
              ElementsAre(AuthoringTime{0, 90000, 179910}, AuthoringTime{1, 180000, 360000}));
  EXPECT_THAT(Resolved({{90000, 179911}, {180000, 360000}}),
              ElementsAre(AuthoringTime{0, 90000, 179910}, AuthoringTime{1, 180000, 360000}));
}

TEST(ResolveTimes, AnEndBeforeTheStartIsSkipped) {
  std::vector<std::string> notes;
  EXPECT_THAT(Resolved({{90000, 90000}, {180000, 0}}, &notes),
              ElementsAre(AuthoringTime{1, 180000, std::nullopt}));
  EXPECT_THAT(notes, ElementsAre("line 1 is left out: it ends before it starts"));
}

TEST(ResolveTimes, AStartBeforeTheLastDropsThatOne) {
  std::vector<std::string> notes;
  EXPECT_THAT(Resolved({{180000, 270000}, {90000, 135000}, {108000, 126000}}, &notes),
              ElementsAre(AuthoringTime{1, 90000, 107910}, AuthoringTime{2, 108000, 126000}));
  EXPECT_THAT(notes, ElementsAre("line 1 is left out: the next one starts before it, or with it"));
}

TEST(ResolveTimes, NinetyTicksAreTooShort) {
  EXPECT_THAT(Resolved({{90000, 180000}, {90090, 270000}}), ElementsAre(AuthoringTime{1, 90090, 270000}));
  EXPECT_THAT(Resolved({{90000, 180000}, {90099, 270000}}),
              ElementsAre(AuthoringTime{0, 90000, 90009}, AuthoringTime{1, 90099, 270000}));
}

TEST(AuthoringXml, ADocumentTypeIsNoElement) {
  const auto spus =
      ParseAuthoringXml("<!DOCTYPE subpictures>\n" + ListOf("<spu start=\"1\" image=\"a\"/>\n"));
  ASSERT_TRUE(spus) << spus.Reason();
  EXPECT_EQ(spus->size(), 1U);
}

TEST(AuthoringXml, ButtonsStandInSubtitlesAlone) {
  const auto spus = ParseAuthoringXml(ListOf(
      "<spu start=\"1\" image=\"a\"><action name=\"1\"/></spu>\n<spu start=\"2\" select=\"s.png\"/>\n"));
  ASSERT_TRUE(spus) << spus.Reason();
  ASSERT_EQ(spus->size(), 2U);
  EXPECT_TRUE((*spus)[0].HasButtons);
  EXPECT_TRUE((*spus)[1].HasButtons);
  EXPECT_EQ(WhyNot("<button name=\"1\"/>"), "line 3: unknown element \"button\"");
  EXPECT_EQ(WhyNot("<spu><picture/></spu>"), "line 3: unknown element \"picture\"");
}

TEST(AuthoringXml, TheFirstFaultIsTold) {
  EXPECT_EQ(WhyNot("<spu xoffset=\"4096\" force=\"maybe\"/>"),
            "line 3: xoffset \"4096\" is no number from 0 to 4095");
}

// The parser compares each attribute with all others: a megabyte of them would take half a minute.
TEST(AuthoringXml, AnElementHas65536BytesAtMost) {
  const std::string longest = "<spu image=\"" + std::string(65522, 'x') + "\"/>";
  ASSERT_EQ(longest.size(), 65537U);
  EXPECT_EQ(WhyNot(longest), "line 3: an element has more than 65536 bytes");
  const auto spus = ParseAuthoringXml(ListOf("<spu image=\"" + std::string(65521, 'x') + "\"/>"));
  ASSERT_TRUE(spus) << spus.Reason();
  EXPECT_EQ((*spus)[0].Image.size(), 65521U);
}

TEST(AuthoringXml, EmptyLinesBeforeALongElementCount) {
  const std::string longest = "<spu image=\"" + std::string(65522, 'x') + "\"/>";
  EXPECT_EQ(ParseAuthoringXml("\n\n" + longest).Reason(), "line 3: an element has more than 65536 bytes");
}

TEST(AuthoringXml, LongElementBehindACommentIsRefused) {
  EXPECT_EQ(WhyNot("<!-- <spu> --><spu image=\"" + std::string(65522, 'x') + "\"/>"),
            "line 3: an element has more than 65536 bytes");
}

TEST(AuthoringXml, WhatStandsInQuotesEndsNoElement) {
  const std::string filler(40000, 'x');
  EXPECT_EQ(WhyNot("<spu start=\">\" image=\"" + filler + "\" end='\">' highlight=\"" + filler + "\"/>"),
            "line 3: an element has more than 65536 bytes");
}

TEST(AuthoringXml, CommentsAndInstructionsAreAsLongAsTheyLike) {
  const std::string text = "don't " + std::string(70000, 'x');
  const auto spus = ParseAuthoringXml("<?note " + text + "?><!DOCTYPE subpictures [<!-- " + text + " -->]>" +
                                      ListOf("<!-- <spu " + text + " --><spu image=\"a\"/>"));
  ASSERT_TRUE(spus) << spus.Reason();
  EXPECT_EQ(spus->size(), 1U);
}

TEST(AuthoringXml, CommentMayEndInWhatElsewhereStartsAnElement) {
  std::string lines;
  while (lines.size() < 70000) {
    lines += "<spu image=\"a\"/>";
  }
  const auto spus = ParseAuthoringXml(ListOf("<!--<'-->" + lines));
  ASSERT_TRUE(spus) << spus.Reason();
  EXPECT_EQ(spus->size(), lines.size() / 16);
}

TEST(AuthoringXml, NoIsNotForced) {
  for (const char* no : {"no", "off", "0"}) {
    const auto spus = ParseAuthoringXml(ListOf(std::string("<spu force=\"") + no + "\"/>"));
    ASSERT_TRUE(spus) << spus.Reason();
    EXPECT_FALSE((*spus)[0].IsForced);
  }
}

}  // namespace
}  // namespace quillmark
