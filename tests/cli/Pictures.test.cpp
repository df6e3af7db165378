#include <algorithm>

#include <QImage>

#include "cli/Commands.h"
#include "tests/cli/Program.h"
#include "tests/support/PlayedUnit.h"

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::Code1;
using test::Code2;
using test::Join;
using test::Second;
using test::Sound;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr QRgb DarkSquare = 0xFF3C3C3C;
constexpr QRgb LightSquare = 0xFF787878;

class PictureCommand : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).WithoutArea().Build()}));
  }

  QImage Picture(const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"picture", "a.sup", "1", "-o", "out.png"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const auto run = Run(arguments);
    EXPECT_EQ(run.ExitCode, 0) << run.Err;
    EXPECT_THAT(run.Out, IsEmpty());
    return QImage(QString::fromStdString(Path("out.png")));
  }

  void WritePicture(const char* name, const char* format, QRgb colour) {
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(colour);
    ASSERT_TRUE(picture.save(QString::fromStdString(Path(name)), format));
  }
};

TEST_F(PictureCommand, SavesTheSubtitlesOwnPicture) {
  const QImage picture = Picture({});
  ASSERT_EQ(picture.size(), QSize(4, 2));
  EXPECT_EQ(picture.pixel(0, 0), Code1);
  EXPECT_EQ(picture.pixel(3, 0), Code1);
  EXPECT_EQ(picture.pixel(0, 1), Code2);
  EXPECT_EQ(picture.pixel(3, 1), Code2);
}

TEST_F(PictureCommand, BackgroundNoneIsTheSame) {
  EXPECT_EQ(Picture({"--background", "none"}).size(), QSize(4, 2));
}

TEST_F(PictureCommand, FrameWithoutBackgroundIsClearAroundTheSubtitle) {
  const QImage picture = Picture({"--frame", "480"});
  ASSERT_EQ(picture.size(), QSize(720, 480));
  EXPECT_EQ(picture.pixel(0, 0), 0U);
  EXPECT_EQ(picture.pixel(99, 400), 0U);
  EXPECT_EQ(picture.pixel(100, 400), Code1);
  EXPECT_EQ(picture.pixel(103, 401), Code2);
  EXPECT_EQ(picture.pixel(100, 402), 0U);
}

TEST_F(PictureCommand, CheckerFillsAFrameOf576Lines) {
  const QImage picture = Picture({"--background", "checker"});
  ASSERT_EQ(picture.size(), QSize(720, 576));
  EXPECT_EQ(picture.pixel(0, 0), DarkSquare);
  EXPECT_EQ(picture.pixel(16, 0), LightSquare);
  EXPECT_EQ(picture.pixel(719, 575), LightSquare);
  EXPECT_EQ(picture.pixel(100, 400), Code1);
}

TEST_F(PictureCommand, CheckerFillsAFrameOf480Lines) {
  EXPECT_EQ(Picture({"--background", "checker", "--frame", "480"}).size(), QSize(720, 480));
}

TEST_F(PictureCommand, PictureFileFillsTheFrame) {
  WritePicture("back.png", "PNG", 0xFF102030);
  const QImage picture = Picture({"--background", "back.png", "--frame", "480"});
  ASSERT_EQ(picture.size(), QSize(720, 480));
  EXPECT_EQ(picture.pixel(0, 0), 0xFF102030);
  EXPECT_EQ(picture.pixel(719, 479), 0xFF102030);
  EXPECT_EQ(picture.pixel(100, 400), Code1);
}

TEST_F(PictureCommand, BackgroundMayBeAnyPictureThatTheWindowReads) {
  WritePicture("back.bmp", "BMP", 0xFF102030);
  WritePicture("back.jpg", "JPG", 0xFF808080);
  // One pixel of colour 1, which is white.
  Write("back.gif", {'G',  'I', 'F', '8', '7', 'a', 1, 0, 1, 0, 0x80, 0, 0, 0,    0, 0, 0xFF, 0xFF,
                     0xFF, ',', 0,   0,   0,   0,   1, 0, 1, 0, 0,    2, 2, 0x4C, 1, 0, ';'});
  EXPECT_EQ(Picture({"--background", "back.bmp"}).pixel(0, 0), 0xFF102030);
  EXPECT_EQ(Picture({"--background", "back.jpg"}).pixel(0, 0), 0xFF808080);
  EXPECT_EQ(Picture({"--background", "back.gif"}).pixel(0, 0), 0xFFFFFFFF);
}

TEST_F(PictureCommand, ColourFillsTheFrame) {
  const QImage picture = Picture({"--background", "#10a0Ff"});
  ASSERT_EQ(picture.size(), QSize(720, 576));
  EXPECT_EQ(picture.pixel(0, 0), 0xFF10A0FF);
  EXPECT_EQ(picture.pixel(719, 575), 0xFF10A0FF);
  EXPECT_EQ(picture.pixel(100, 400), Code1);
}

TEST_F(PictureCommand, OneColumnIsSeenOnTheFrame) {
  Write("a.sup", Sound().Area(100, 100, 400, 401).Build());
  EXPECT_EQ(Picture({"--background", "#10a0Ff"}).pixel(100, 400), Code1);
}

TEST_F(PictureCommand, WhatIsNoColourIsAFile) {
  WritePicture("#10a0fg", "PNG", 0xFF102030);
  EXPECT_EQ(Picture({"--background", "#10a0fg"}).pixel(0, 0), 0xFF102030);
  WritePicture("#10a0f", "PNG", 0xFF102030);
  EXPECT_EQ(Picture({"--background", "#10a0f"}).pixel(0, 0), 0xFF102030);
  WritePicture("x10a0f0", "PNG", 0xFF102030);
  EXPECT_EQ(Picture({"--background", "x10a0f0"}).pixel(0, 0), 0xFF102030);
}

TEST_F(PictureCommand, TakesThePaletteGiven) {
  std::string lines;
  for (int entry = 0; entry < 16; ++entry) {
    lines += entry == 1 ? "EB8080\r\n" : "108080\r\n";
  }
  WriteText("p.pal", lines);
  const QImage picture = Picture({"--palette", "p.pal"});
  EXPECT_EQ(picture.pixel(0, 0), 0xFFFFFFFF);
  EXPECT_EQ(picture.pixel(0, 1), 0xFF000000);
}

TEST_F(PictureCommand, NumberThatTheStreamDoesNotHave) {
  const auto run = Run({"picture", "a.sup", "3", "-o", "out.png"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_EQ(run.Err, "quillmark-cli: a.sup: there is no subtitle 3: it has 2\n");
  EXPECT_FALSE(Exists("out.png"));
}

TEST_F(PictureCommand, SubtitleThatCannotBeShown) {
  const auto run = Run({"picture", "a.sup", "2", "-o", "out.png"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: a.sup: subtitle 2 cannot be converted\n");
  EXPECT_FALSE(Exists("out.png"));
}

TEST_F(PictureCommand, AreaWithoutPixels) {
  Write("a.sup", Sound().Area(9, 5, 0, 1).Build());
  const auto run = Run({"picture", "a.sup", "1", "-o", "out.png"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: a.sup: subtitle 1 has an area without pixels\n");
}

TEST_F(PictureCommand, UnreadableBackgroundIsTheFileToName) {
  const auto run = Run({"picture", "a.sup", "1", "-o", "out.png", "--background", "missing.png"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, testing::StartsWith("quillmark-cli: missing.png: "));
  EXPECT_FALSE(Exists("out.png"));
}

TEST_F(PictureCommand, FolderThatDoesNotExist) {
  const auto run = Run({"picture", "a.sup", "1", "-o", "no/out.png"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, testing::StartsWith("quillmark-cli: no/out.png: "));
}

/// A subtitle of entries 1 and 2 that changes to entry 2 after 10 delay units (113.8 ms), moves after 20
/// (227.6 ms) and stops after 30 (341.3 ms).
class PlayerPictureCommand : public PictureCommand {
 protected:
  void SetUp() override { Write("a.sup", Animated(0).Build()); }

  static test::PacketBuilder Animated(std::int64_t start) {
    const Bytes picture =
        Join({test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 0),
              test::SetArea(100, 103, 400, 401), test::SetFields(4, 6)});
    return test::Played({0x11, 0x00, 0x12, 0x00}, {{.Delay = 0, .Commands = picture},
                                                   {.Delay = 10, .Commands = test::SetColour(3, 2, 2, 0)},
                                                   {.Delay = 20, .Commands = test::SetArea(0, 3, 2, 3)},
                                                   {.Delay = 30, .Commands = test::StopDisplay}})
        .Time(start);
  }

  QImage At(const std::string& ms, std::vector<std::string> options = {}) {
    options.insert(options.end(), {"--player", "--at", ms});
    return Picture(options);
  }
};

TEST_F(PlayerPictureCommand, StartsLikeTheStillPicture) {
  EXPECT_EQ(At("0").pixel(0, 0), Code1);
  Write("a.sup", Sound().Build());
  EXPECT_EQ(Picture({"--player"}), Picture({}));
}

/// 10 units of 1024 ticks are 113.777... ms.
TEST_F(PlayerPictureCommand, SequencesAreCarriedOutOnAPlayersClock) {
  EXPECT_EQ(At("113.77").pixel(0, 0), Code1);
  EXPECT_EQ(At("113.78").pixel(0, 0), Code2);
}

TEST_F(PlayerPictureCommand, AreaIsThatOfTheMoment) {
  const QImage frame = At("230", {"--frame", "480"});
  EXPECT_EQ(frame.pixel(0, 2), Code2);
  EXPECT_EQ(frame.pixel(100, 400), 0U);
}

TEST_F(PlayerPictureCommand, AfterTheStopThereIsTheBackgroundAlone) {
  const QImage frame = At("342", {"--background", "checker"});
  EXPECT_EQ(frame.pixel(0, 2), DarkSquare);
  EXPECT_EQ(frame.pixel(100, 400), LightSquare);
}

TEST_F(PlayerPictureCommand, AfterTheStopThePictureIsClear) {
  const QImage picture = At("5000");
  ASSERT_EQ(picture.size(), QSize(4, 2));
  EXPECT_EQ(picture.pixel(0, 0), 0U);
}

TEST_F(PlayerPictureCommand, BeforeTheFirstSequenceThePictureIsClear) {
  Write("a.sup", test::Played({0x11, 0x00, 0x12, 0x00},
                              {{.Delay = 9,
                                .Commands = Join({test::StartDisplay, test::SetColour(3, 2, 1, 0),
                                                  test::SetContrast(15, 15, 15, 0), test::SetArea(0, 3, 0, 1),
                                                  test::SetFields(4, 6)})}})
                     .Build());
  const QImage picture = At("102.3");
  ASSERT_EQ(picture.size(), QSize(4, 2));
  EXPECT_EQ(picture.pixel(0, 0), 0U);
  EXPECT_EQ(At("102.4").pixel(0, 0), Code1);
}

TEST_F(PlayerPictureCommand, NextSubtitleTakesItsPlace) {
  Write("a.sup", Join({Animated(0).Build(), Sound(9000).Build()}));
  EXPECT_EQ(At("99.9").pixel(0, 0), Code1);
  EXPECT_EQ(At("100").pixel(0, 0), 0U);
}

TEST_F(PlayerPictureCommand, DamageIsToldAndWhatStandsBeforeItIsShown) {
  Bytes file = Animated(0).Build();
  file.resize(file.size() - 1);  // without the last end mark
  file[11] = static_cast<std::uint8_t>(file[11] - 1);
  Write("a.sup", file);
  const auto run = Run({"picture", "a.sup", "1", "-o", "out.png", "--player", "--at", "120"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(
      run.Err,
      "quillmark-cli: a.sup: subtitle 1: the control sequence at byte 52 of the unit runs to the end of the "
      "unit without its end mark 0xFF\n");
  EXPECT_EQ(QImage(QString::fromStdString(Path("out.png"))).pixel(0, 0), Code2);
}

TEST_F(PlayerPictureCommand, UnitWithoutSequencesCannotBePlayed) {
  Write("a.sup", Join({Sound().Build(), Sound(test::Second).ControlOffset(2).Build()}));
  const auto run = Run({"picture", "a.sup", "2", "-o", "out.png", "--player", "--background", "checker"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(
      run.Err,
      "quillmark-cli: a.sup: subtitle 2 cannot be played: the control sequence at byte 2 of the unit lies "
      "outside the unit, or points there for the next one\n");
  EXPECT_FALSE(Exists("out.png"));
}

TEST_F(PlayerPictureCommand, WithoutAnAreaThereIsTheFrameAlone) {
  Write("a.sup", Join({Sound().Build(), Sound(test::Second).WithoutArea().Build()}));
  const auto alone = Run({"picture", "a.sup", "2", "-o", "out.png", "--player"});
  EXPECT_EQ(alone.ExitCode, 1);
  EXPECT_EQ(alone.Err, "quillmark-cli: a.sup: subtitle 2 has an area without pixels\n");
  EXPECT_EQ(Run({"picture", "a.sup", "2", "-o", "out.png", "--player", "--frame", "576"}).ExitCode, 0);
}

TEST_F(PlayerPictureCommand, MomentIsANumberFromZeroOnAndNeedsThePlayer) {
  for (const char* moment : {"-1", "abc", "1e3"}) {
    const auto run =
        Run({"picture", "a.sup", "1", "-o", "out.png", "--player", "--at=" + std::string(moment)});
    EXPECT_EQ(run.ExitCode, 2) << moment;
    EXPECT_THAT(run.Err, HasSubstr("is no number of milliseconds from 0 on"));
  }
  const auto run = Run({"picture", "a.sup", "1", "-o", "out.png", "--at", "5"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_THAT(run.Err, HasSubstr("--at requires --player"));
}

class ExportCommand : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup",
          Join({Sound(Second).Build(), Sound(5 * Second).Delay(0).Build(), Sound(65 * Second).Build()}));
  }
};

TEST_F(ExportCommand, WritesPicturesAndTheirList) {
  const auto run = Run({"export", "a.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out, "wrote 3 pictures to a_SubPng, their list to a_spu.xml\n");
  EXPECT_THAT(run.Err, IsEmpty());
  EXPECT_EQ(
      ReadText("a_spu.xml"),
      "    <spu start=\"00:00:01.00\" end=\"00:00:02.00\" image=\"a_SubPng/00+00+01+00.png\" xoffset=\"100\" "
      "yoffset=\"400\" />\r\n"
      "    <spu start=\"00:00:05.00\" image=\"a_SubPng/00+00+05+00.png\" xoffset=\"100\" yoffset=\"400\" "
      "/>\r\n"
      "    <spu start=\"00:01:05.00\" end=\"00:01:06.00\" image=\"a_SubPng/00+01+05+00.png\" xoffset=\"100\" "
      "yoffset=\"400\" />\r\n");
  EXPECT_THAT(Names(), ElementsAre("a.sup", "a_SubPng", "a_spu.xml"));
  const QImage picture(QString::fromStdString(Path("a_SubPng/00+01+05+00.png")));
  ASSERT_EQ(picture.size(), QSize(4, 2));
  EXPECT_EQ(picture.pixel(0, 0), Code1);
  EXPECT_EQ(picture.pixel(3, 1), Code2);
}

TEST_F(ExportCommand, StartsTheListAfresh) {
  WriteText("a_spu.xml", "an older list\r\n");
  ASSERT_EQ(Run({"export", "a.sup", "--only", "2"}).ExitCode, 0);
  EXPECT_EQ(ReadText("a_spu.xml"),
            "    <spu start=\"00:00:05.00\" image=\"a_SubPng/00+00+05+00.png\" xoffset=\"100\" "
            "yoffset=\"400\" />\r\n");
}

TEST_F(ExportCommand, BaseSaysWhereTo) {
  ASSERT_EQ(Run({"export", "a.sup", "--out", "b.c", "--only", "3-3"}).ExitCode, 0);
  EXPECT_THAT(Names(), ElementsAre("a.sup", "b.c_SubPng", "b.c_spu.xml"));
  EXPECT_THAT(ReadText("b.c_spu.xml"), HasSubstr("image=\"b.c_SubPng/00+01+05+00.png\""));
}

TEST_F(ExportCommand, RangeFromOneSubtitleOn) {
  EXPECT_THAT(Run({"export", "a.sup", "--only", "2-"}).Out, HasSubstr("wrote 2 pictures"));
}

TEST_F(ExportCommand, RangeThatTheStreamDoesNotHaveWritesNothing) {
  for (const char* range : {"4", "2-4", "4-"}) {
    const auto run = Run({"export", "a.sup", "--only", range});
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_EQ(run.Err, "quillmark-cli: a.sup: there is no subtitle 4: it has 3\n");
  }
  EXPECT_THAT(Names(), ElementsAre("a.sup"));
}

TEST_F(ExportCommand, SubtitlesThatCannotBeConvertedAreLeftOutAndTold) {
  Write("a.sup", Join({Sound(Second).WithoutArea().Build(), Sound(5 * Second).Build()}));
  const auto run = Run({"export", "a.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err,
            "quillmark-cli: a.sup: subtitle 1 cannot be converted\n"
            "quillmark-cli: a.sup: 1 of 2 subtitles cannot be converted\n");
  EXPECT_TRUE(Exists("a_SubPng/00+00+05+00.png"));
  EXPECT_TRUE(Exists("a_spu.xml"));
}

TEST_F(ExportCommand, PictureThatCannotBeWrittenKeepsTheOldList) {
  WriteText("a_spu.xml", "an older list\r\n");
  ASSERT_EQ(RunScript("mkdir -p a_SubPng/00+00+05+00.png").ExitCode, 0);
  const auto run = Run({"export", "a.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, testing::StartsWith("quillmark-cli: a_SubPng/00+00+05+00.png: "));
  EXPECT_EQ(ReadText("a_spu.xml"), "an older list\r\n");
}

TEST_F(ExportCommand, FolderThatCannotBeMade) {
  WriteText("a_SubPng", "a file");
  const auto run = Run({"export", "a.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: a_SubPng: the folder cannot be created: File exists\n");
  EXPECT_THAT(Names(), ElementsAre("a.sup", "a_SubPng"));
}

TEST_F(ExportCommand, PaletteThatCannotBeTaken) {
  WriteText("p.pal", "EB8080\r\n");
  const auto run = Run({"export", "a.sup", "--palette", "p.pal"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: p.pal: Illegal file: not exactly 16 lines with a colour\n");
  EXPECT_FALSE(Exists("a_SubPng"));
}

TEST_F(ExportCommand, TakesThePaletteGiven) {
  std::string lines;
  for (int entry = 0; entry < 16; ++entry) {
    lines += entry == 1 ? "EB8080\r\n" : "108080\r\n";
  }
  WriteText("p.pal", lines);
  ASSERT_EQ(Run({"export", "a.sup", "--palette", "p.pal"}).ExitCode, 0);
  const QImage picture(QString::fromStdString(Path("a_SubPng/00+01+05+00.png")));
  EXPECT_EQ(picture.pixel(0, 0), 0xFFFFFFFF);
  EXPECT_EQ(picture.pixel(0, 1), 0xFF000000);
}

TEST_F(ExportCommand, NameIsTheFilesWithoutItsLastFourCharacters) {
  Write("film.s", Sound(Second).Build());
  ASSERT_EQ(Run({"export", "film.s"}).ExitCode, 0);
  EXPECT_THAT(Names(), ElementsAre("a.sup", "fi_SubPng", "fi_spu.xml", "film.s"));
}

TEST_F(ExportCommand, OfPicturesWithOneNameTheLastStays) {
  // The start-up palette's entry 4 is yellow.
  Write("a.sup", Join({Sound(Second).Build(), Sound(Second + 1).Colour(3, 2, 4, 0).Build()}));
  ASSERT_EQ(Run({"export", "a.sup"}).ExitCode, 0);
  EXPECT_EQ(QImage(QString::fromStdString(Path("a_SubPng/00+00+01+00.png"))).pixel(0, 0), 0xFFFDFF04);
  const std::string list = ReadText("a_spu.xml");
  EXPECT_EQ(std::ranges::count(list, '\n'), 2);
}

TEST_F(ExportCommand, ManyPicturesAreAllWritten) {
  Bytes stream;
  for (int i = 0; i < 200; ++i) {
    const Bytes packet = Sound(i * 2 * Second).Area(0, 3 + static_cast<unsigned>(i), 0, 1).Build();
    stream.insert(stream.end(), packet.begin(), packet.end());
  }
  Write("a.sup", stream);
  EXPECT_THAT(Run({"export", "a.sup"}).Out, HasSubstr("wrote 200 pictures"));
  EXPECT_EQ(QImage(QString::fromStdString(Path("a_SubPng/00+00+00+00.png"))).size(), QSize(4, 2));
  EXPECT_EQ(QImage(QString::fromStdString(Path("a_SubPng/00+02+08+00.png"))).size(), QSize(68, 2));
  EXPECT_EQ(QImage(QString::fromStdString(Path("a_SubPng/00+06+38+00.png"))).size(), QSize(203, 2));
}

TEST_F(ExportCommand, EmptyStreamHasAnEmptyList) {
  Write("a.sup", {});
  EXPECT_EQ(Run({"export", "a.sup"}).ExitCode, 0);
  EXPECT_EQ(ReadText("a_spu.xml"), "");
}

}  // namespace
}  // namespace quillmark::cli
