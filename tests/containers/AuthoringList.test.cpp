#include "containers/AuthoringList.h"

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <gtest/gtest.h>

#include "base/FilePath.h"
#include "sup/SpuControl.h"
#include "tests/support/FolderTest.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/UnreadableFile.h"

namespace quillmark {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;

constexpr QRgb Red = 0xFFFF0000;
constexpr QRgb White = 0xFFFFFFFF;

QRgb Shade(int level) {
  return qRgb(level, level, level);
}

class AuthoringList : public test::FolderTest {
 protected:
  using Pixels = std::function<QRgb(int, int)>;
  void PutPicture(const QString& name, int width, int height, const Pixels& pixel) const {
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        image.setPixel(x, y, pixel(x, y));
      }
    }
    ASSERT_TRUE(image.save(Path(name), "png"));
  }
  /// One of 4 x 2 pixels: red with white below it.
  void PutSmall(const QString& name) const {
    PutPicture(name, 4, 2, [](int, int y) { return y == 0 ? Red : White; });
  }

  [[nodiscard]] ReadContainerResult Read(const AuthoringListOptions& options = {},
                                         const Progress& progress = {}) const {
    return ReadAuthoringList(PathFromUtf8(Path("film.xml").toStdString()), options, progress);
  }
  ReadContainerResult ReadLines(const std::string& lines, const AuthoringListOptions& options = {}) const {
    Put("film.xml", lines);
    return Read(options);
  }
  Track ReadTrack(const std::string& lines, const AuthoringListOptions& options = {}) const {
    auto read = ReadLines(lines, options);
    EXPECT_TRUE(read && *read) << read.Reason();
    EXPECT_THAT((*read)->Tracks, SizeIs(1));
    return read && *read && !(*read)->Tracks.empty() ? (*read)->Tracks[0] : Track();
  }
};

std::vector<SpuControl> ControlsOf(const Track& track) {
  const SupStream stream = test::Index(track.Packets);
  std::vector<SpuControl> controls;
  std::vector<std::uint8_t> unit;
  for (std::size_t i = 0; i < stream.PacketOffset.size(); ++i) {
    CopyUnit(stream, i, unit);
    controls.push_back(DecodeControl(unit, stream.ControlOffset[i]));
  }
  return controls;
}

constexpr const char* OneLine =
    "<spu start=\"1\" end=\"2\" image=\"a.png\" xoffset=\"100\" yoffset=\"50\"/>\n";

TEST_F(AuthoringList, BecomesUnitsOfOneTrack) {
  PutSmall("a.png");
  const Track track = ReadTrack(OneLine);
  EXPECT_EQ(track.Id, "1");
  EXPECT_THAT(track.Notes, ElementsAre());
  // 90000 ticks are 87.9 units of 1024. Red is code 1 with palette entry 0, white code 2 with entry 1.
  const test::Bytes expected = {
      'S',  'P',  0x90, 0x5F, 0x01, 0,    0,    0,    0,    0,    0x00, 0x26, 0x00, 0x08,  // 90000 ticks
      0x00, 0x01, 0x00, 0x02,                                                              // the two lines
      0x00, 0x00, 0x00, 0x20, 0x01, 0x03, 0x01, 0x00, 0x04, 0x0F, 0xF0, 0x05, 0x06, 0x40, 0x67,
      0x03, 0x20, 0x33, 0x06, 0x00, 0x04, 0x00, 0x06, 0xFF, 0x00, 0x58, 0x00, 0x20, 0x02, 0xFF};
  EXPECT_EQ(track.Packets, expected);
  ASSERT_TRUE(track.Palette);
  EXPECT_EQ((*track.Palette)[0], MakeRgb(255, 0, 0));
  EXPECT_EQ((*track.Palette)[1], MakeRgb(255, 255, 255));
}

TEST_F(AuthoringList, UnitsShareTheirCodes) {
  PutSmall("a.png");
  PutPicture("b.png", 4, 2, [](int x, int) { return x < 2 ? White : 0; });
  PutPicture("c.png", 4, 2, [](int x, int) { return x < 2 ? qRgb(0, 0, 255) : Red; });
  const auto controls =
      ControlsOf(ReadTrack("<spu start=\"1\" image=\"a.png\"/>\n"
                           "<spu start=\"2\" image=\"b.png\"/>\n"
                           "<spu start=\"3\" image=\"c.png\"/>\n"));
  ASSERT_THAT(controls, SizeIs(3));
  for (const SpuControl& control : controls) {
    EXPECT_EQ(control.Colour, (std::array<int, 4>{control.Colour[0], 0, 1, 2}));
    EXPECT_EQ(control.Contrast, (std::array<int, 4>{0, 15, 15, 15}));
  }
}

TEST_F(AuthoringList, APaletteFileGivesTheEntries) {
  PutSmall("a.png");
  std::string palette;
  for (int i = 0; i < 16; ++i) {
    palette += i == 5 ? "FF0000\n" : i == 9 ? "ffffff\n" : "0000" + std::to_string(10 + i) + "\n";
  }
  Put("film.rgb", palette);
  const Track track = ReadTrack(OneLine);
  EXPECT_THAT(track.Notes, ElementsAre());
  const auto controls = ControlsOf(track);
  ASSERT_THAT(controls, SizeIs(1));
  EXPECT_EQ(controls[0].Colour[1], 5);
  EXPECT_EQ(controls[0].Colour[2], 9);
  EXPECT_EQ((*track.Palette)[3], MakeRgb(0, 0, 0x13));
}

TEST_F(AuthoringList, AListOfSubtitlesHasThePaletteOfTheFilm) {
  PutSmall("a.png");
  Put("film_spu.xml", OneLine);
  Put("film.rgb",
      "FF0000 FFFFFF 000010 000011 000012 000013 000014 000015 000016 000017 000018 000019 000020 "
      "000021 000022 000023");
  const auto read = ReadAuthoringList(PathFromUtf8(Path("film_spu.xml").toStdString()), {}, {});
  ASSERT_TRUE(read && *read) << read.Reason();
  EXPECT_EQ((*(*read)->Tracks.at(0).Palette)[15], MakeRgb(0, 0, 0x23));
}

TEST_F(AuthoringList, APaletteOfYCrCbIsMetByWhatADiscShows) {
  // Y, Cr, Cb of (3, 253, 251) are A9 12 A4, which read back as another colour.
  PutPicture("a.png", 4, 2, [](int, int) { return qRgb(3, 253, 251); });
  std::string palette = "108080\r\nA912A4\r\n";
  for (int i = 2; i < 16; ++i) {
    palette += "108080\r\n";
  }
  Put("film.pal", palette);
  const Track track = ReadTrack(OneLine);
  EXPECT_THAT(track.Notes, ElementsAre());
  EXPECT_EQ((*track.Palette)[1], MakeRgb(3, 253, 251));
  EXPECT_EQ(ControlsOf(track)[0].Colour[1], 1);
}

TEST_F(AuthoringList, AnotherPaletteGivesWay) {
  PutSmall("a.png");
  std::string palette;
  for (int i = 0; i < 16; ++i) {
    palette += "0000" + std::to_string(10 + i) + " ";
  }
  Put("film.rgb", palette);
  EXPECT_THAT(ReadTrack(OneLine).Notes,
              ElementsAre("film.rgb does not have all colours of the pictures; some of its others gave way"));
}

TEST_F(AuthoringList, EntryOfAColourThatThePaletteHasGivesWayToNone) {
  PutSmall("a.png");
  std::string palette = "FF0000";
  for (int i = 1; i < 16; ++i) {
    palette += " 0000" + std::to_string(10 + i);
  }
  Put("film.rgb", palette);
  const Track track = ReadTrack(OneLine);
  EXPECT_EQ((*track.Palette)[0], MakeRgb(255, 0, 0));
  EXPECT_EQ((*track.Palette)[1], MakeRgb(255, 255, 255));
  EXPECT_EQ(ControlsOf(track)[0].Colour[1], 0);
}

TEST_F(AuthoringList, WhatIsNoPaletteIsNotUsed) {
  PutSmall("a.png");
  Put("film.pal", "hello");
  EXPECT_THAT(ReadTrack(OneLine).Notes, ElementsAre("film.pal is no palette of 16 colours and was not used"));
}

TEST_F(AuthoringList, MissingPicturesAreNamedWithTheirLine) {
  PutSmall("a.png");
  EXPECT_EQ(ReadLines(std::string(OneLine) + "<spu start=\"2\" image=\"nope.png\"/>").Reason(),
            "line 2: nope.png: No such file or directory");
}

TEST_F(AuthoringList, WhatIsNoPngIsRefused) {
  Put("a.png", "hello, this is some text and no picture");
  EXPECT_EQ(ReadLines(OneLine).Reason(), "line 1: a.png: it is no PNG file");
  Put("a.png", "");
  EXPECT_EQ(ReadLines(OneLine).Reason(), "line 1: a.png: it is no PNG file");
}

TEST_F(AuthoringList, ACutPictureIsRefusedOrReadAtEveryLength) {
  PutSmall("a.png");
  const std::string whole = FolderTest::Read("a.png");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    Put("a.png", whole.substr(0, length));
    const auto read = ReadLines(OneLine);
    if (!read) {
      EXPECT_THAT(read.Reason(), HasSubstr("line 1: a.png: ")) << length;
    }
  }
}

TEST_F(AuthoringList, APictureHigherThanAnyFrameIsRefused) {
  PutPicture("a.png", 2, 576, [](int, int) { return Red; });
  EXPECT_TRUE(ReadLines(OneLine));
  PutPicture("a.png", 2, 577, [](int, int) { return Red; });
  EXPECT_EQ(ReadLines(OneLine).Reason(), "line 1: a.png: it has 2x577 pixels, more than 720x576");
}

TEST_F(AuthoringList, APictureLargerThanAnyFrameIsRefused) {
  PutPicture("a.png", 721, 2, [](int, int) { return Red; });
  EXPECT_EQ(ReadLines(OneLine).Reason(), "line 1: a.png: it has 721x2 pixels, more than 720x576");
}

TEST_F(AuthoringList, AllBytesOfThePicturesSizeCount) {
  // A head that says 0x01020304 x 0x05060708, and no more than it.
  Put("a.png", std::string("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\1\2\3\4\5\6\7\x08\x08\x06\0\0\0", 29) +
                   std::string(100, '\0'));
  EXPECT_EQ(ReadLines(OneLine).Reason(), "line 1: a.png: it has 16909060x84281096 pixels, more than 720x576");
}

TEST_F(AuthoringList, APlacePastAllAreasIsRefused) {
  PutSmall("a.png");
  EXPECT_EQ(ReadLines("<spu start=\"1\" image=\"a.png\" xoffset=\"4093\"/>").Reason(),
            "line 1: a.png: it ends past 4095 pixels");
  EXPECT_TRUE(ReadLines("<spu start=\"1\" image=\"a.png\" xoffset=\"4092\"/>"));
}

TEST_F(AuthoringList, FiveColoursAreRefusedByName) {
  PutPicture("a.png", 10, 2, [](int x, int) { return Shade(x / 2 * 50); });
  EXPECT_EQ(ReadLines(OneLine).Reason(),
            "line 1: a.png: it has 5 colours, of which a subtitle has at most four");
}

TEST_F(AuthoringList, ReducedThoseNearestAreTakenTogether) {
  // 100, 103 and 106 are nearest; 106 is on the most pixels.
  constexpr int Levels[] = {0, 100, 103, 106, 106, 106, 200, 255};
  PutPicture("a.png", 8, 2, [&](int x, int) { return Shade(Levels[x]); });
  const Track track = ReadTrack(OneLine, {.Reduce = true});
  EXPECT_THAT(track.Notes,
              ElementsAre("line 1: its colours were taken together to four; the largest error is 6 of 255"));
  EXPECT_THAT(*track.Palette, testing::Contains(MakeRgb(106, 106, 106)));
  EXPECT_THAT(*track.Palette, testing::Not(testing::Contains(MakeRgb(100, 100, 100))));
}

std::string LinesOf(int count) {
  std::string lines;
  for (int i = 0; i < count; ++i) {
    lines += "<spu start=\"" + std::to_string(i + 1) + "\" image=\"" + std::to_string(i) + ".png\"/>\n";
  }
  return lines;
}

TEST_F(AuthoringList, ReducedColoursOfFewPixelsGiveWayToThoseOfMany) {
  // Thirteen reds that are far from each other, and two pairs that are as near: one large, one small.
  for (int i = 0; i < 4; ++i) {
    PutPicture(QString::number(i) + ".png", 4, 2,
               [i](int x, int) { return qRgb(20 * (i == 3 ? 12 : 4 * i + x), 0, 0); });
  }
  PutPicture("4.png", 40, 20, [](int x, int) { return qRgb(255, x < 20 ? 100 : 110, 0); });
  PutPicture("5.png", 4, 2, [](int x, int) { return qRgb(0, 255, x < 2 ? 100 : 110); });
  const Track track = ReadTrack(LinesOf(6), {.Reduce = true});
  EXPECT_THAT(*track.Palette, testing::IsSupersetOf({MakeRgb(255, 100, 0), MakeRgb(255, 110, 0)}));
  for (unsigned red = 20; red <= 240; red += 20) {
    EXPECT_THAT(*track.Palette, testing::Contains(MakeRgb(red, 0, 0)));
  }
  EXPECT_THAT(*track.Palette,
              testing::Not(testing::IsSupersetOf({MakeRgb(0, 255, 100), MakeRgb(0, 255, 110)})));
}

TEST_F(AuthoringList, TheSeventeenthColourIsRefusedWithItsPicture) {
  for (int i = 0; i < 17; ++i) {
    PutPicture(QString::number(i) + ".png", 2, 2, [&](int, int) { return Shade(i * 15); });
  }
  EXPECT_EQ(ReadLines(LinesOf(17)).Reason(),
            "line 17: 16.png: with it the list has 17 colours, of which a palette has 16");
  EXPECT_TRUE(ReadLines(LinesOf(16)));
  const Track track = ReadTrack(LinesOf(17), {.Reduce = true});
  EXPECT_THAT(
      track.Notes,
      ElementsAre(
          "the list has more than 16 colours, which were taken together; the largest error is 15 of 255"));
}

TEST_F(AuthoringList, LinesWithoutAPictureAndButtonsAreNoted) {
  PutSmall("a.png");
  const Track track =
      ReadTrack("<spu start=\"1\"/>\n<spu start=\"2\" image=\"a.png\" highlight=\"h.png\"/>\n");
  EXPECT_THAT(track.Notes,
              ElementsAre("line 1: it names no picture and is left out", "line 2: its buttons are left out"));
}

TEST_F(AuthoringList, LongerThanADelayCanSay) {
  PutSmall("a.png");
  const Track track = ReadTrack("<spu start=\"1\" end=\"800\" image=\"a.png\"/>");
  EXPECT_THAT(track.Notes, ElementsAre("line 1: it is shown for 745 seconds, the longest that there is"));
  EXPECT_EQ(static_cast<std::uint16_t>(ControlsOf(track)[0].Delay), 65535);
}

TEST_F(AuthoringList, ShorterThanHalfADelayUnitHasOne) {
  PutSmall("a.png");
  EXPECT_EQ(ControlsOf(ReadTrack("<spu start=\"1\" end=\"1.001\" image=\"a.png\"/>"))[0].Delay, 1);
}

TEST_F(AuthoringList, APictureOfWhichTheFirstColumnIsSeenAloneHasTwo) {
  PutPicture("a.png", 40, 2, [](int x, int) { return x == 0 ? Red : qRgba(0, 0, 0, 0); });
  const SpuControl control = ControlsOf(ReadTrack(OneLine))[0];
  EXPECT_EQ(control.Width(), 2);
  EXPECT_EQ(control.Height(), 2);
}

TEST_F(AuthoringList, APictureOfOneColumnHasTwo) {
  PutPicture("a.png", 1, 2, [](int, int) { return Red; });
  const SpuControl control = ControlsOf(ReadTrack(OneLine))[0];
  EXPECT_EQ(control.Width(), 2);
  EXPECT_EQ(control.Height(), 2);
}

TEST_F(AuthoringList, BlackIsAColourAsAnyOther) {
  PutPicture("a.png", 4, 2, [](int, int y) { return y == 0 ? Red : Shade(0); });
  const Track track = ReadTrack(OneLine);
  EXPECT_EQ((*track.Palette)[0], MakeRgb(255, 0, 0));
  EXPECT_EQ((*track.Palette)[1], MakeRgb(0, 0, 0));
  EXPECT_EQ(ControlsOf(track)[0].Colour[1], 0);
  EXPECT_EQ(ControlsOf(track)[0].Colour[2], 1);
}

TEST_F(AuthoringList, FourVisibleColoursKeepAnOddWidth) {
  PutPicture("a.png", 5, 2, [](int x, int) { return Shade(x % 4 * 60); });
  const auto controls = ControlsOf(ReadTrack(OneLine));
  EXPECT_EQ(controls[0].X1, 100);
  EXPECT_EQ(controls[0].X2, 104);
}

TEST_F(AuthoringList, PicturesAreFoundWhereTheListWasMoved) {
  ASSERT_TRUE(QDir(Folder()).mkdir("film_SubPng"));
  PutSmall("film_SubPng/a.png");
  EXPECT_TRUE(ReadLines("<spu start=\"1\" image=\"film_SubPng/a.png\"/>"));
  EXPECT_TRUE(ReadLines("<spu start=\"1\" image=\"/somewhere/else/film_SubPng/a.png\"/>"));
  EXPECT_TRUE(ReadLines("<spu start=\"1\" image=\"C:\\films\\film_SubPng\\a.png\"/>"));
}

TEST_F(AuthoringList, ALineThatIsTooComplexIsLeftOut) {
  PutPicture("a.png", 720, 576, [](int x, int y) { return (x + y) % 2 == 0 ? Red : White; });
  PutSmall("b.png");
  const Track track = ReadTrack("<spu start=\"1\" image=\"a.png\"/>\n<spu start=\"2\" image=\"b.png\"/>");
  EXPECT_THAT(track.Notes,
              ElementsAre("line 1: a.png is left out: its unit would have more than 32,767 bytes"));
  EXPECT_THAT(ControlsOf(track), SizeIs(1));
}

TEST_F(AuthoringList, WithoutSubtitlesThereIsNoTrack) {
  const auto read = ReadLines("<subpictures><stream></stream></subpictures>");
  ASSERT_TRUE(read && *read);
  EXPECT_THAT((*read)->Tracks, SizeIs(0));
}

TEST_F(AuthoringList, ProgressStaysWithinTheList) {
  PutSmall("0.png");
  PutSmall("1.png");
  Put("film.xml", LinesOf(2).c_str());
  std::vector<std::uint64_t> told;
  const auto read = Read({}, [&told](std::uint64_t done, std::uint64_t of) {
    told.push_back(done);
    EXPECT_EQ(of, LinesOf(2).size());
    return true;
  });
  EXPECT_TRUE(read);
  EXPECT_THAT(told, testing::IsSupersetOf({std::uint64_t{0}, LinesOf(2).size() / 2}));
  EXPECT_THAT(told, testing::Each(testing::Le(LinesOf(2).size())));
}

TEST_F(AuthoringList, ProgressCanEndIt) {
  PutSmall("a.png");
  Put("film.xml", OneLine);
  const auto read = Read({}, [](std::uint64_t, std::uint64_t) { return false; });
  ASSERT_TRUE(read);
  EXPECT_FALSE(*read);
}

TEST_F(AuthoringList, IsAContainer) {
  PutSmall("a.png");
  Put("film.txt", OneLine);
  Put("film.xml", OneLine);
  EXPECT_EQ(FormatOf(PathFromUtf8(Path("film.txt").toStdString())).Id, "authoring-list");
  const auto read = ReadContainer(PathFromUtf8(Path("film.xml").toStdString()));
  ASSERT_TRUE(read && *read);
  EXPECT_THAT((*read)->Tracks, SizeIs(1));
}

TEST_F(AuthoringList, AMissingListHasAReason) {
  EXPECT_EQ(Read().Reason(), "No such file or directory");
}

TEST_F(AuthoringList, WhatIsNoListHasItsLine) {
  EXPECT_EQ(ReadLines("<picture/>").Reason(), "line 1: unknown element \"picture\"");
}

TEST_F(AuthoringList, AFileLongerThanAnyListIsRefused) {
  Put("film.xml", "");
  std::filesystem::resize_file(Path("film.xml").toStdString(), (std::uintmax_t{64} << 20U) + 1);
  EXPECT_EQ(Read().Reason(), "it is too long for a list of pictures");
}

TEST_F(AuthoringList, FilesThatCannotBeReadHaveAReason) {
  if (!test::LinkUnreadableFile(Path("film.xml").toStdString()) ||
      !test::LinkUnreadableFile(Path("a.png").toStdString())) {
    GTEST_SKIP() << test::NeedsUnreadableFile;
  }
  EXPECT_EQ(Read().Reason(), "it cannot be read");
  ASSERT_TRUE(QFile::remove(Path("film.xml")));
  EXPECT_EQ(ReadLines(OneLine).Reason(), "line 1: a.png: it cannot be read");
}

TEST_F(AuthoringList, APaletteThatCannotBeReadIsNotUsed) {
  if (!test::LinkUnreadableFile(Path("film.pal").toStdString())) {
    GTEST_SKIP() << test::NeedsUnreadableFile;
  }
  PutSmall("a.png");
  EXPECT_TRUE(ReadLines(OneLine));
}

TEST_F(AuthoringList, FourVisibleColoursKeepAnOddHeightAndItIsNoted) {
  PutPicture("a.png", 4, 3, [](int x, int) { return Shade(x * 60); });
  const Track track = ReadTrack(OneLine);
  EXPECT_THAT(track.Notes,
              ElementsAre("line 1: a.png has four visible colours and an odd height; its last line is not "
                          "shown here"));
  EXPECT_EQ(ControlsOf(track)[0].Y2, 52);
}

TEST_F(AuthoringList, ALinePastAllAreasIsRefused) {
  PutSmall("a.png");
  EXPECT_EQ(ReadLines("<spu start=\"1\" image=\"a.png\" yoffset=\"4095\"/>").Reason(),
            "line 1: a.png: it ends past 4095 pixels");
}

TEST_F(AuthoringList, APaletteOfOtherSignsOrTooFewColoursIsNotUsed) {
  PutSmall("a.png");
  std::string fifteen;
  for (int i = 0; i < 15; ++i) {
    fifteen += "102030\r\n";
  }
  for (const std::string& palette : {fifteen, fifteen + "10203g\r\n"}) {
    Put("film.rgb", palette);
    EXPECT_EQ(ReadTrack(OneLine).Palette, ReadTrack(OneLine, {}).Palette);
    EXPECT_THAT(*ReadTrack(OneLine).Palette, testing::Not(testing::Contains(MakeRgb(0x10, 0x20, 0x30))));
  }
}

TEST_F(AuthoringList, AskedToGoOnItDoes) {
  PutSmall("a.png");
  Put("film.xml", OneLine);
  EXPECT_TRUE(Read({}, [](std::uint64_t, std::uint64_t) { return true; }).IsOk());
}

/// Of a picture that has no alpha.
TEST_F(AuthoringList, TheTransparentColourOfALineIsNotSeen) {
  constexpr const char* line = "<spu start=\"1\" image=\"a.png\" transparent=\"#FFFFFF\"/>\n";
  // Each line is one run to its end, of code 1 and of code 0.
  const test::Bytes redAboveNothing = {0x00, 0x01, 0x00, 0x00};
  const auto fieldsOf = [](const Track& track) {
    return test::Bytes(track.Packets.begin() + 14, track.Packets.begin() + 18);
  };
  PutSmall("a.png");
  EXPECT_EQ(fieldsOf(ReadTrack(line)), redAboveNothing);
  QImage indexed(4, 2, QImage::Format_Indexed8);
  indexed.setColorTable({White, Red});
  for (int x = 0; x < 4; ++x) {
    indexed.setPixel(x, 0, 1);
    indexed.setPixel(x, 1, 0);
  }
  ASSERT_TRUE(indexed.save(Path("a.png"), "png"));
  EXPECT_EQ(fieldsOf(ReadTrack(line)), redAboveNothing);
}

/// Lines of four pixels of the first `used` colours of a table.
void PutTable(const QString& path, const QList<QRgb>& table, int used, int lines = 2) {
  QImage image(4, lines, QImage::Format_Indexed8);
  image.setColorTable(table);
  for (int x = 0; x < 4; ++x) {
    for (int y = 0; y < lines; ++y) {
      image.setPixel(x, y, static_cast<unsigned>(x % used));
    }
  }
  ASSERT_TRUE(image.save(path, "png"));
}

TEST_F(AuthoringList, LineThatIsAddedToATableWithoutAClearColourIsNotSeen) {
  PutTable(Path("0.png"), {Shade(0), Shade(60), Shade(120), Shade(180)}, 3, 3);
  const SpuControl control = ControlsOf(ReadTrack(LinesOf(1)))[0];
  EXPECT_EQ(control.Height(), 4);
  EXPECT_THAT(control.Contrast, testing::Contains(0)) << "of the fourth line";
}

TEST_F(AuthoringList, LineThatIsAddedToATableGetsItsClearColour) {
  PutTable(Path("0.png"), {Shade(0), Shade(60), qRgba(0, 0, 0, 0), Shade(120)}, 4, 3);
  const SpuControl control = ControlsOf(ReadTrack(LinesOf(1)))[0];
  EXPECT_EQ(control.Height(), 4);
  EXPECT_THAT(control.Contrast, ElementsAre(15, 15, 0, 15)) << "the codes are those of the table";
}

TEST_F(AuthoringList, AnUnseenColourTakesAnEntryThatIsFree) {
  PutTable(Path("0.png"), {Shade(0), Shade(60), Shade(120), qRgb(1, 2, 3)}, 3);
  EXPECT_THAT(*ReadTrack(LinesOf(1)).Palette, testing::Contains(MakeRgb(1, 2, 3)));
}

TEST_F(AuthoringList, ColoursOfAllCodesOfTablesAreCounted) {
  for (int i = 0; i < 5; ++i) {
    PutTable(Path(QString::number(i) + ".png"),
             {Shade(48 * i), Shade(48 * i + 12), Shade(48 * i + 24), Shade(48 * i + 36)}, 4);
  }
  EXPECT_THAT(ReadLines(LinesOf(5)).Reason(), testing::HasSubstr("with it the list has 20 colours"));
}

/// The sixteen colours that are seen take all entries; one of a table that no pixel has gets the nearest.
TEST_F(AuthoringList, AnUnseenColourTakesNoEntryOfASeenOne) {
  for (int i = 0; i < 4; ++i) {
    PutTable(Path(QString::number(i) + ".png"),
             {Shade(60 * i), Shade(60 * i + 15), Shade(60 * i + 30), Shade(60 * i + 45)}, 4);
  }
  PutTable(Path("4.png"), {Shade(0), Shade(15), Shade(30), qRgb(1, 2, 3)}, 3);
  const Track track = ReadTrack(LinesOf(5));
  EXPECT_THAT(*track.Palette, testing::Not(testing::Contains(MakeRgb(1, 2, 3))));
}

TEST_F(AuthoringList, AnUnseenColourTakesNoEntryOfAPaletteThatWasGiven) {
  PutTable(Path("0.png"), {Shade(0), Shade(60), Shade(120), qRgb(1, 2, 3)}, 3);
  std::string palette = "000000 3C3C3C 787878";
  for (int i = 3; i < 16; ++i) {
    palette += " 0000" + std::to_string(10 + i);
  }
  Put("film.rgb", palette);
  const Track track = ReadTrack(LinesOf(1));
  EXPECT_THAT(track.Notes, ElementsAre());
  EXPECT_THAT(*track.Palette, testing::Not(testing::Contains(MakeRgb(1, 2, 3))));
}

}  // namespace
}  // namespace quillmark
