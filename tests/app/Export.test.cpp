#include <QDir>
#include <QFileInfo>
#include <QImage>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

class Export : public WindowTest {
 protected:
  /// The list's line for a picture of movie.sup.
  [[nodiscard]] QByteArray Line(const QByteArray& start, const QByteArray& end, const QString& picture,
                                const QByteArray& y) const {
    return "    <spu start=\"" + start + "\" " + (end.isEmpty() ? "" : "end=\"" + end + "\" ") + "image=\"" +
           PicturePath(picture).toUtf8() + "\" xoffset=\"100\" yoffset=\"" + y + "\" />\r\n";
  }
  [[nodiscard]] QString PicturePath(const QString& name) const { return Path("movie_SubPng/" + name); }
  [[nodiscard]] QImage Picture(const QString& name) const { return QImage(PicturePath(name)); }
  [[nodiscard]] QByteArray List() const { return ReadText(Path("movie_spu.xml")); }
  [[nodiscard]] bool NothingExported() const {
    return !QFileInfo::exists(Path("movie_SubPng")) && !QFileInfo::exists(Path("movie_spu.xml"));
  }
};

const QString FirstPicture = "00+00+01+00.png";

TEST_F(Export, UntickedBoxExportsNothing) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  EXPECT_TRUE(NothingExported());
}

TEST_F(Export, TickingTheBoxAloneExportsNothing) {
  LoadStream(ThreeSubtitles());
  Click("Check_SavePics");
  EXPECT_TRUE(NothingExported());
}

TEST_F(Export, FirstSubtitleIsExportedWhenLoaded) {
  Click("Check_SavePics");
  LoadStream(ThreeSubtitles());
  // 190000 ticks are 2.111 seconds.
  EXPECT_EQ(List(), Line("00:00:01.00", "00:00:02.11", FirstPicture, "400"));
  EXPECT_EQ(QDir(Path("movie_SubPng")).entryList(QDir::Files), QStringList(FirstPicture));
}

TEST_F(Export, SteppingThroughExportsAll) {
  Click("Check_SavePics");
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Click("Command_Next");
  EXPECT_EQ(List(), Line("00:00:01.00", "00:00:02.11", "00+00+01+00.png", "400") +
                        Line("00:00:05.00", "00:00:06.11", "00+00+05+00.png", "420") +
                        Line("00:00:09.00", "00:00:10.11", "00+00+09+00.png", "440"));
  EXPECT_EQ(QDir(Path("movie_SubPng")).entryList(QDir::Files).size(), 3);
}

TEST_F(Export, UnitWithoutDelayHasNoEnd) {
  Click("Check_SavePics");
  LoadStream(FourCodes(PacketBuilder().Time(1 * Second)));
  EXPECT_EQ(List(), Line("00:00:01.00", "", FirstPicture, "400"));
}

TEST_F(Export, PictureHoldsColoursAndAlphaExactly) {
  Click("Check_SavePics");
  LoadStream(FourCodes(PacketBuilder().Time(1 * Second).Colour(3, 6, 1, 2).Contrast(15, 8, 1, 0)));
  const QImage picture = Picture(FirstPicture);
  ASSERT_EQ(picture.size(), QSize(8, 2));
  EXPECT_EQ(picture.format(), QImage::Format_ARGB32);
  for (const int y : {0, 1}) {
    EXPECT_EQ(picture.pixel(0, y), 0x00FFFFFFU);
    EXPECT_EQ(picture.pixel(2, y), 0x1103FDFBU);
    EXPECT_EQ(picture.pixel(4, y), 0x889496F0U);
    EXPECT_EQ(picture.pixel(6, y), 0xFF02FC02U);
    EXPECT_EQ(picture.pixel(7, y), 0xFF02FC02U);
  }
}

TEST_F(Export, PictureIsAPngWithAlpha) {
  Click("Check_SavePics");
  LoadStream(FourCodes(PacketBuilder().Time(1 * Second).Contrast(15, 15, 15, 15)));
  const QByteArray file = ReadText(PicturePath(FirstPicture));
  EXPECT_TRUE(file.startsWith("\x89PNG\r\n\x1A\n"));
  // Of the header chunk: 8 bits a channel, RGB with alpha.
  EXPECT_EQ(file.at(24), 8);
  EXPECT_EQ(file.at(25), 6);
}

TEST_F(Export, PixelsThatNoRunReachedAreZero) {
  Click("Check_SavePics");
  const PacketBuilder packet =
      PacketBuilder().Time(1 * Second).Contrast(15, 15, 15, 15).Area(100, 107, 400, 402);
  LoadStream(WithFields(packet.Build(), {0x89, 0xAB, 0x89, 0xAB}));
  const QImage picture = Picture(FirstPicture);
  ASSERT_EQ(picture.size(), QSize(8, 3));
  EXPECT_EQ(picture.pixel(2, 1), 0xFF03FDFBU);
  EXPECT_EQ(picture.pixel(2, 2), 0U);
}

TEST_F(Export, PictureOfOneColumnIsWritten) {
  Click("Check_SavePics");
  LoadStream(WithFields(PacketBuilder().Time(1 * Second).Area(100, 100, 400, 401).Build(),
                        {0x50, 0x00, 0x50, 0x00}));
  const QImage picture = Picture(FirstPicture);
  ASSERT_EQ(picture.size(), QSize(1, 2));
  EXPECT_EQ(picture.pixel(0, 1), 0xFF03FDFBU);
}

TEST_F(Export, RecolouringWritesThePictureAgainButNoLine) {
  Click("Check_SavePics");
  LoadStream(ThreeSubtitles());
  const QByteArray before = List();
  Choose("ImageCombo2", "3");
  EXPECT_EQ(Picture(FirstPicture).pixel(2, 0), 0xFF02FC02U);
  EXPECT_EQ(List(), before);
}

TEST_F(Export, ResetAppendsTheLineAgain) {
  Click("Check_SavePics");
  LoadStream(ThreeSubtitles());
  const QByteArray line = Line("00:00:01.00", "00:00:02.11", FirstPicture, "400");
  Click("Command_Reload");
  EXPECT_EQ(List(), line + line);
}

TEST_F(Export, EditedSwatchReachesThePicture) {
  Click("Check_SavePics");
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectColour(QColor(10, 20, 30));
  Click("Label1_1");
  EXPECT_EQ(Picture(FirstPicture).pixel(2, 0), 0xFF0A141EU);
}

TEST_F(Export, RecolouringASubtitleShownBeforeTheTickWritesNothing) {
  LoadStream(ThreeSubtitles());
  Click("Check_SavePics");
  Choose("ImageCombo2", "3");
  EXPECT_TRUE(NothingExported());
}

TEST_F(Export, RecolouringASubtitleShownBeforeTheTickLeavesTheOneOfTheEarlierTick) {
  Click("Check_SavePics");
  LoadStream(ThreeSubtitles());
  Click("Check_SavePics");
  Click("Command_Next");
  Click("Check_SavePics");
  Choose("ImageCombo2", "3");
  EXPECT_EQ(Picture(FirstPicture).pixel(2, 0), 0xFF03FDFBU);
}

TEST_F(Export, UntickingStopsAtOnceAndKeepsWhatIsThere) {
  Click("Check_SavePics");
  LoadStream(ThreeSubtitles());
  const QByteArray before = List();
  Click("Check_SavePics");
  Choose("ImageCombo2", "3");
  Click("Command_Next");
  EXPECT_EQ(List(), before);
  EXPECT_EQ(Picture(FirstPicture).pixel(2, 0), 0xFF03FDFBU);
  EXPECT_FALSE(QFileInfo::exists(PicturePath("00+00+05+00.png")));
}

TEST_F(Export, LaterExportAppends) {
  Write("movie_spu.xml", QByteArray("kept\r\n"));
  Click("Check_SavePics");
  LoadStream(ThreeSubtitles());
  EXPECT_EQ(List(), "kept\r\n" + Line("00:00:01.00", "00:00:02.11", FirstPicture, "400"));
}

TEST_F(Export, SameStartSharesThePictureButNotTheLine) {
  Click("Check_SavePics");
  LoadStream(Join({FourCodes(PacketBuilder().Time(1 * Second)),
                   FourCodes(PacketBuilder().Time(1 * Second + 400).Colour(3, 2, 5, 0))}));
  Click("Command_Next");
  const QByteArray line = Line("00:00:01.00", "", FirstPicture, "400");
  EXPECT_EQ(List(), line + line);
  EXPECT_EQ(Picture(FirstPicture).pixel(2, 0), 0xFFFC5EFCU);
}

TEST_F(Export, InvalidUnitIsNotExported) {
  Click("Check_SavePics");
  LoadStream(InvalidSecond());
  const QByteArray before = List();
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_Next");
  EXPECT_EQ(List(), before);
}

TEST_F(Export, FourCharactersAreCutWhateverTheExtension) {
  Click("Check_SavePics");
  Load(Write("movie.s", FourCodes(PacketBuilder().Time(1 * Second))));
  EXPECT_TRUE(QFileInfo::exists(Path("mov_spu.xml")));
  EXPECT_TRUE(QFileInfo::exists(Path("mov_SubPng/" + FirstPicture)));
}

TEST_F(Export, PathsAreWrittenInUtf8) {
  Click("Check_SavePics");
  Load(Write(QString::fromUtf8("m\xC3\xBC.sup"), FourCodes(PacketBuilder().Time(1 * Second))));
  EXPECT_TRUE(
      ReadText(Path(QString::fromUtf8("m\xC3\xBC_spu.xml"))).contains("/m\xC3\xBC_SubPng/00+00+01+00.png"));
}

TEST_F(Export, HoursAboveNinetyNineTakeThreeDigits) {
  Click("Check_SavePics");
  LoadStream(FourCodes(PacketBuilder().Time(100 * 3600 * Second)));
  EXPECT_EQ(List(), Line("100:00:00.00", "", "100+00+00+00.png", "400"));
}

TEST_F(Export, ListThatCannotBeOpenedIsToldAndThePictureStillWritten) {
  QDir().mkdir(Path("movie_spu.xml"));
  Click("Check_SavePics");
  Dialogs.ExpectOpen(Write("movie.sup", ThreeSubtitles()));
  Dialogs.ExpectMessage("Error: Cannot open Spufile " + Path("movie_spu.xml") + " !");
  Dialogs.ExpectReport();
  Click("Command_LoadSup");
  EXPECT_TRUE(QFileInfo::exists(PicturePath(FirstPicture)));
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(FrameColour(102, 400), QColor(3, 253, 251));
}

TEST_F(Export, FolderThatCannotBeMadeIsReportedByTheImagingLayer) {
  Write("movie_SubPng", QByteArray("a file stands where the folder should be"));
  Click("Check_SavePics");
  Dialogs.ExpectOpen(Write("movie.sup", ThreeSubtitles()));
  Dialogs.ExpectMessageWith({"cBitmap"});
  Dialogs.ExpectReport();
  Click("Command_LoadSup");
  EXPECT_EQ(List(), Line("00:00:01.00", "00:00:02.11", FirstPicture, "400"));
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(FrameColour(102, 400), QColor(3, 253, 251));
}

TEST_F(Export, MessagesShowPathsAsTheyAre) {
  QDir().mkdir(Path("<b>x<"));
  QDir().mkdir(Path("<b>x</b>m_spu.xml"));
  Click("Check_SavePics");
  Dialogs.ExpectOpen(Write("<b>x</b>m.sup", ThreeSubtitles()));
  Dialogs.ExpectMessage("Error: Cannot open Spufile " + Path("<b>x<") + "/b>m_spu.xml !");
  Dialogs.ExpectReport();
  Click("Command_LoadSup");
  for (const ShownDialog& dialog : Dialogs.Shown()) {
    EXPECT_TRUE(dialog.TextIsPlain) << dialog.Text.toStdString();
  }
}

TEST_F(Export, PictureThatCannotBeWrittenIsToldWithItsPathAndReason) {
  ASSERT_TRUE(QDir().mkpath(PicturePath(FirstPicture)));
  Click("Check_SavePics");
  Dialogs.ExpectOpen(Write("movie.sup", ThreeSubtitles()));
  Dialogs.ExpectMessage("GDIP Error in: cBitmap\r\nError Number: 7\r\nError Description: " +
                        PicturePath(FirstPicture) + ": It is a folder");
  Dialogs.ExpectReport();
  Click("Command_LoadSup");
}

TEST_F(Export, PercentSignsInThePathArePartsOfTheName) {
  Click("Check_SavePics");
  Load(Write("Movie%2C The %1.sup", ThreeSubtitles()));
  EXPECT_EQ(QImage(Path("Movie%2C The %1_SubPng/" + FirstPicture)).size(), QSize(8, 2));
}

TEST_F(Export, PercentSignsInAPathAreShownAsTheyAre) {
  ASSERT_TRUE(QDir().mkpath(Path("%2 %3_SubPng/" + FirstPicture)));
  Click("Check_SavePics");
  Dialogs.ExpectOpen(Write("%2 %3.sup", ThreeSubtitles()));
  Dialogs.ExpectMessageWith({Path("%2 %3_SubPng/" + FirstPicture) + ": It is a folder"});
  Dialogs.ExpectReport();
  Click("Command_LoadSup");
}

TEST_F(Export, ReversedAreaHasALineAndThatItHasNoPictureIsSaid) {
  Click("Check_SavePics");
  Dialogs.ExpectOpen(Write("movie.sup", PacketBuilder().Time(1 * Second).Area(107, 100, 400, 401).Build()));
  Dialogs.ExpectMessageWith(
      {PicturePath(FirstPicture) + ": the subtitle's area is reversed, so that it has no picture"});
  Dialogs.ExpectReport();
  Click("Command_LoadSup");
  EXPECT_TRUE(List().contains("xoffset=\"107\""));
  EXPECT_FALSE(QFileInfo::exists(PicturePath(FirstPicture)));
}

TEST_F(Export, SupFileStaysAsItWas) {
  Click("Check_SavePics");
  const QString path = LoadStream(ThreeSubtitles());
  Choose("ImageCombo2", "3");
  EXPECT_EQ(Read(path), ThreeSubtitles());
}

}  // namespace
}  // namespace quillmark::test
