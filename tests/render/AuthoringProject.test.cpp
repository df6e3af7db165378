#include "render/AuthoringProject.h"

#include <gmock/gmock.h>
#include <set>

#include <QDir>
#include <QImage>
#include <gtest/gtest.h>

#include "tests/support/FolderTest.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::PacketBuilder;
using test::Sound;
using testing::ElementsAre;
using testing::HasSubstr;

class AuthoringProject : public test::FolderTest {
 protected:
  Result<AuthoringResult> Write(const SupStream& stream, const AuthoringOptions& options = {},
                                const Progress& progress = {}) {
    return WriteAuthoringProject(stream, Path("film.xml"), options, progress);
  }
  /// The lines of the list that name pictures.
  [[nodiscard]] std::vector<std::string> Lines() const {
    std::vector<std::string> lines;
    for (const QString& line : QString::fromStdString(Read("film.xml")).split("\r\n")) {
      if (line.contains("<spu ")) {
        lines.push_back(line.trimmed().toStdString());
      }
    }
    return lines;
  }
};

SupStream TwoSubtitles() {
  return test::Index(Join({Sound(90000).Build(), PacketBuilder().Time(270000).Build()}));
}

TEST_F(AuthoringProject, WritesAllThatTheToolsRead) {
  const auto written = Write(TwoSubtitles());
  ASSERT_TRUE(written) << written.Reason();
  EXPECT_EQ(written->How, Completion::Done);
  EXPECT_EQ(written->Subtitles, 2);
  EXPECT_THAT(written->Notes, ElementsAre());
  EXPECT_THAT(Names(), ElementsAre("film.pal", "film.xml", "film_dvdauthor.xml", "film_pictures"));
  // 90 units of 1024 ticks: 92160 ticks, 1.024 s.
  EXPECT_EQ(Read("film.xml"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
            "<subpictures format=\"PAL\">\r\n"
            "  <stream>\r\n"
            "    <spu start=\"00:00:01.0000\" end=\"00:00:02.0240\" image=\"film_pictures/00001.png\" "
            "xoffset=\"100\" yoffset=\"400\" />\r\n"
            "    <spu start=\"00:00:03.0000\" image=\"film_pictures/00002.png\" "
            "xoffset=\"100\" yoffset=\"400\" />\r\n"
            "  </stream>\r\n"
            "</subpictures>\r\n");
}

TEST_F(AuthoringProject, PicturesHaveTheCodesColours) {
  ASSERT_TRUE(Write(TwoSubtitles()));
  const QImage picture(Path("film_pictures/00001.png"));
  ASSERT_EQ(picture.size(), QSize(4, 2));
  EXPECT_EQ(picture.format(), QImage::Format_Indexed8);
  EXPECT_EQ(picture.pixelIndex(0, 0), 1);
  EXPECT_EQ(picture.pixelIndex(3, 1), 2);
  // Entries 0 to 3 of the palette; code 0 is transparent.
  EXPECT_THAT(picture.colorTable(), ElementsAre(0x00000000U, 0xFF03FDFBU, 0xFFFFFFFFU, 0xFF02FC02U));
}

TEST_F(AuthoringProject, TheControlFileNamesPaletteAndFilm) {
  ASSERT_TRUE(Write(TwoSubtitles(), {.FrameHeight = 480, .Language = "DE"}));
  EXPECT_THAT(Read("film.xml"), HasSubstr("<subpictures format=\"NTSC\">"));
  const std::string disc = Read("film_dvdauthor.xml");
  EXPECT_THAT(disc, HasSubstr("<dvdauthor dest=\"film_dvd\" format=\"ntsc\" >"));
  EXPECT_THAT(disc, HasSubstr("<subpicture lang=\"de\" />"));
  EXPECT_THAT(disc, HasSubstr("<pgc palette=\"film.pal\" >"));
  EXPECT_THAT(disc, HasSubstr("<vob file=\"film.mpg\" />"));
  EXPECT_EQ(Read("film.pal").substr(0, 16), "108080\r\nA912A4\r\n");
}

TEST_F(AuthoringProject, ALanguageOfThreeLettersIsLeftOut) {
  ASSERT_TRUE(Write(TwoSubtitles(), {.Language = "deu"}));
  EXPECT_THAT(Read("film_dvdauthor.xml"), HasSubstr("<subpicture />"));
}

TEST_F(AuthoringProject, StartsOfOneTimeHaveAPictureEach) {
  const auto written =
      Write(test::Index(Join({Sound(90000).Build(), Sound(90000).Contrast(1, 1, 1, 1).Build()})));
  ASSERT_TRUE(written);
  EXPECT_EQ(QImage(Path("film_pictures/00001.png")).color(1) >> 24U, 0xFFU);
  EXPECT_EQ(QImage(Path("film_pictures/00002.png")).color(1) >> 24U, 0x11U);
  EXPECT_THAT(written->Notes,
              ElementsAre("subtitle 2 starts where subtitle 1 does, which spumux will leave out"));
}

TEST_F(AuthoringProject, StartsUpToAMillisecondApartAreTold) {
  const auto written =
      Write(test::Index(Join({Sound(90000).Build(), Sound(90090).Build(), Sound(90181).Build()})));
  ASSERT_TRUE(written);
  EXPECT_THAT(written->Notes,
              ElementsAre("subtitle 2 starts where subtitle 1 does, which spumux will leave out"));
}

TEST_F(AuthoringProject, LinesStandInTheOrderOfTheirStarts) {
  ASSERT_TRUE(Write(test::Index(Join({Sound(270000).Build(), Sound(90000).Build()}))));
  EXPECT_THAT(Lines(), ElementsAre(HasSubstr("00002.png"), HasSubstr("00001.png")));
}

TEST_F(AuthoringProject, TimesAreRoundedToTheToolsDigits) {
  // 90448 ticks are 1.004977... s; 65535 units of 1024 ticks are 745.642666... s more.
  ASSERT_TRUE(Write(test::Index(Sound(90448).Delay(65535).Build())));
  EXPECT_THAT(Lines(), ElementsAre(HasSubstr("start=\"00:00:01.0050\" end=\"00:12:26.6476\"")));
}

TEST_F(AuthoringProject, AForcedSubtitleSaysSo) {
  const auto forced =
      Join({{0x11, 0x00, 0x12, 0x00},
            test::Sequence(0, 32,
                           {test::ForcedStart, test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 0),
                            test::SetArea(0, 3, 0, 1), test::SetFields(4, 6), test::EndOfSequence}),
            test::Sequence(90, 32, {test::StopDisplay, test::EndOfSequence})});
  ASSERT_TRUE(Write(test::Index(Join({PacketBuilder().Unit(forced).Build(), Sound(900000).Build()}))));
  EXPECT_THAT(Lines(), ElementsAre(HasSubstr("force=\"yes\""), testing::Not(HasSubstr("force"))));
}

TEST_F(AuthoringProject, OnlyTheChosenOnes) {
  const auto written = Write(TwoSubtitles(), {.Only = SubtitleSet::Of(2)});
  ASSERT_TRUE(written);
  EXPECT_EQ(written->Subtitles, 1);
  EXPECT_EQ(QDir(Path("film_pictures")).entryList(QDir::Files), QStringList{"00002.png"});
}

TEST_F(AuthoringProject, WhatCannotBeInItIsNamed) {
  const auto written = Write(
      test::Index(Join({Sound(-1).Build(), Sound(90000).WithoutArea().Build(),
                        Sound(180000).Area(5, 4, 0, 1).Build(), Sound(270000).Area(0, 720, 0, 1).Build(),
                        Sound(std::int64_t{1} << 32).Build(), Sound(9000000).Build()})));
  ASSERT_TRUE(written) << written.Reason();
  EXPECT_EQ(written->Subtitles, 1);
  EXPECT_THAT(written->Notes,
              ElementsAre("subtitle 1 starts outside of the 13 hours that spumux can tell and is left out",
                          "subtitle 2 cannot be converted and is left out",
                          "subtitle 3 has an area without pixels and is left out",
                          "subtitle 4 is larger than 720x576, which spumux does not take, and is left out",
                          "subtitle 5 starts outside of the 13 hours that spumux can tell and is left out"));
}

TEST_F(AuthoringProject, NoneIsWrittenThatWouldHoldNoSubtitle) {
  Put("film.xml", "mine");
  const auto written = Write(test::Index(Join({Sound(-1).Build(), Sound(std::int64_t{1} << 32).Build()})),
                             {.Existing = Overwriting::Allowed});
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Reason(),
            "no subtitle would be in it: subtitle 1 starts outside of the 13 hours that spumux can tell and "
            "is left out");
  EXPECT_THAT(Names(), ElementsAre("film.xml"));
  EXPECT_EQ(Read("film.xml"), "mine");
}

TEST_F(AuthoringProject, WhatIsThereIsRefusedByName) {
  Put("film.pal", "mine");
  const auto written = Write(TwoSubtitles());
  ASSERT_FALSE(written);
  EXPECT_EQ(written.Reason(), "already there: " + Path("film.pal").toStdString());
  EXPECT_THAT(Names(), ElementsAre("film.pal"));
  EXPECT_EQ(Read("film.pal"), "mine");
}

TEST_F(AuthoringProject, AllowedItIsReplaced) {
  Put("film.pal", "mine");
  ASSERT_TRUE(Write(TwoSubtitles(), {.Existing = Overwriting::Allowed}));
  ASSERT_TRUE(Write(TwoSubtitles(), {.Existing = Overwriting::Allowed}));
  EXPECT_THAT(Names(), ElementsAre("film.pal", "film.xml", "film_dvdauthor.xml", "film_pictures"));
  EXPECT_NE(Read("film.pal"), "mine");
}

TEST_F(AuthoringProject, CancelledNothingIsThere) {
  std::vector<std::uint64_t> told;
  const auto cancelled = Write(TwoSubtitles(), {}, [&](std::uint64_t done, std::uint64_t of) {
    EXPECT_EQ(of, 2U);
    told.push_back(done);
    return done < 2;
  });
  ASSERT_TRUE(cancelled);
  EXPECT_EQ(cancelled->How, Completion::Cancelled);
  EXPECT_THAT(told, ElementsAre(0U, 1U, 2U));
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(AuthoringProject, AFolderThatIsMissingIsNamed) {
  const auto written = WriteAuthoringProject(TwoSubtitles(), Path("none/film.xml"));
  EXPECT_THAT(written.Reason(), HasSubstr("none: No such file or directory"));
}

TEST(AuthoringNames, AnEndingInCapitalsGoesToo) {
  const AuthoringNames names = AuthoringNamesFor("/a/Film.XML");
  EXPECT_EQ(names.Folder, "/a");
  EXPECT_EQ(names.List, "Film.XML");
  EXPECT_EQ(names.Palette, "Film.pal");
}

TEST(AuthoringNames, AnotherEndingStays) {
  EXPECT_EQ(AuthoringNamesFor("film.pal").Palette, "film.pal.pal");
  EXPECT_EQ(AuthoringNamesFor(".xml").Pictures, ".xml_pictures");
}

/// 720 pixels of codes 1 and 2 by turns, one nibble each: 2,880 bits a line.
TEST_F(AuthoringProject, ALineLongerThanTheToolTakesIsNoted) {
  const Bytes lines(std::size_t{2} * 360, 0x56);
  const auto stream = test::Index(
      PacketBuilder()
          .ControlOffset(724)
          .Unit(Join({lines, test::Sequence(0, 724,
                                            {test::StartDisplay, test::SetColour(3, 2, 1, 0),
                                             test::SetContrast(15, 15, 15, 0), test::SetArea(0, 719, 0, 1),
                                             test::SetFields(4, 364), test::EndOfSequence})}))
          .Build());
  const auto written = Write(stream);
  ASSERT_TRUE(written) << written.Reason();
  EXPECT_THAT(written->Notes,
              testing::Contains("subtitle 1 has a line of 2880 bits, at which spumux may end its run"));
}

/// 359 and 360 pixels, one nibble each: 1,436 and 1,440 bits.
TEST_F(AuthoringProject, ALineOf1440BitsIsOneThatTheToolMayNotTake) {
  const auto notes = [&](unsigned width, const Bytes& end) {
    Bytes line(179, 0x56);
    line.insert(line.end(), end.begin(), end.end());
    const auto stream = test::Index(
        PacketBuilder()
            .ControlOffset(364)
            .Unit(Join({line, line,
                        test::Sequence(0, 364,
                                       {test::StartDisplay, test::SetColour(3, 2, 1, 0),
                                        test::SetContrast(15, 15, 15, 0), test::SetArea(0, width - 1, 0, 1),
                                        test::SetFields(4, 184), test::EndOfSequence})}))
            .Build());
    const auto written = Write(stream, {.Existing = Overwriting::Allowed});
    EXPECT_TRUE(written) << written.Reason();
    return written ? written->Notes : std::vector<std::string>();
  };
  EXPECT_THAT(notes(359, {0x50}), ElementsAre());
  EXPECT_THAT(notes(360, {0x55}),
              ElementsAre("subtitle 1 has a line of 1440 bits, at which spumux may end its run"));
}

TEST_F(AuthoringProject, CancelledAtAnyStepNothingIsThere) {
  for (const std::uint64_t last : {0U, 1U, 2U}) {
    const auto cancelled =
        Write(TwoSubtitles(), {}, [&](std::uint64_t done, std::uint64_t) { return done < last; });
    ASSERT_TRUE(cancelled);
    EXPECT_EQ(cancelled->How, Completion::Cancelled);
    EXPECT_THAT(Names(), ElementsAre());
  }
}

TEST_F(AuthoringProject, APictureTallerThanAFrameIsLeftOut) {
  const auto written =
      Write(test::Index(Join({Sound(90000).Area(0, 3, 0, 576).Build(), Sound(900000).Build()})));
  ASSERT_TRUE(written);
  EXPECT_EQ(written->Subtitles, 1);
}

TEST_F(AuthoringProject, ALanguageHasTwoLetters) {
  for (const char* none : {"deu", "1e", "{e", "[e"}) {
    ASSERT_TRUE(Write(TwoSubtitles(), {.Language = none, .Existing = Overwriting::Allowed}));
    EXPECT_THAT(Read("film_dvdauthor.xml"), testing::Not(HasSubstr("lang=\"" + std::string(none)))) << none;
  }
}

}  // namespace
}  // namespace quillmark
