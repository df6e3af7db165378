#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QSpinBox>
#include <QTest>
#include <QUrl>

#include "tests/app/MergeTest.h"
#include "tests/app/PaletteFiles.h"

namespace quillmark::test {
namespace {

class MergeMode : public MergeTest {
 protected:
  void SetUp() override {
    LoadStream(ThreeSubtitles());
    Merge(SecondaryStream({0}));
  }
  /// Drags a file onto the window and lets it go there; whether anybody took it.
  bool Drop(const QString& path) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    const QPoint where = Window.rect().center();
    QDragEnterEvent enter(where, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window, &enter);
    if (!enter.isAccepted()) {
      return false;
    }
    QDropEvent drop(QPointF(where), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&Window, &drop);
    QCoreApplication::processEvents();
    return true;
  }
  void ExpectEditingEnabled(bool enabled) const {
    for (const QString& name : EditingControls()) {
      EXPECT_EQ(IsEnabled(name), enabled) << name.toStdString();
    }
  }
};

TEST_F(MergeMode, EditingIsDisabled) {
  ExpectEditingEnabled(false);
}

TEST_F(MergeMode, LoadingMergingAndSteppingStayEnabled) {
  for (const char* name : {"Command_LoadSup", "Command_LoadSecond", "Command_SaveSecond", "Command_Next",
                           "Command_GoTo", "Check_SavePics"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
}

TEST_F(MergeMode, SteppingKeepsEditingDisabled) {
  Click("Command_Next");
  Click("Command_Prev");
  GoTo("3");
  ExpectEditingEnabled(false);
}

TEST_F(MergeMode, SecondLoadKeepsEditingDisabled) {
  Merge(SecondaryStream({0}));
  ExpectEditingEnabled(false);
}

TEST_F(MergeMode, LoadSupEnablesEditing) {
  Load(Path("movie.sup"));
  ExpectEditingEnabled(true);
}

TEST_F(MergeMode, CancelledLoadSupEnablesEditing) {
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  for (const char* name : {"Command_LoadPalette", "Command_SavePalette", "Command_SaveSup", "Combo1_0",
                           "ImageCombo1", "Frame1", "Frame2", "Label1_0"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
}

TEST_F(MergeMode, LoadSupShowsTheNewStreamAlone) {
  EXPECT_TRUE(TextIsAt(200, 200));
  Load(Path("movie.sup"));
  EXPECT_TRUE(TextIsAt(100, 400));
  EXPECT_FALSE(TextIsAt(200, 200));
  Click("Command_Next");
  EXPECT_TRUE(TextIsAt(100, 420));
  EXPECT_FALSE(TextIsAt(200, 200));
}

TEST_F(MergeMode, RecolouringAfterLoadSupShowsNoSecondary) {
  Load(Path("movie.sup"));
  Choose("ImageCombo2", "3");
  EXPECT_EQ(FrameColour(102, 400), QColor(2, 252, 2));
  EXPECT_FALSE(TextIsAt(200, 200));
}

TEST_F(MergeMode, DroppedStreamLeavesMergeMode) {
  Dialogs.ExpectReport();
  EXPECT_TRUE(Drop(Write("other.sup", ThreeSubtitles())));
  Dialogs.Verify();
  ExpectEditingEnabled(true);
  EXPECT_FALSE(TextIsAt(200, 200));
  Click("Command_Next");
  EXPECT_FALSE(TextIsAt(200, 200));
}

TEST_F(MergeMode, DroppedStreamThatCannotBeReadChangesNothing) {
  const QString path = TextOf("Text1");
  ASSERT_TRUE(QDir().mkdir(Path("folder.sup")));
  Dialogs.ExpectMessageWith({"folder.sup"});
  EXPECT_TRUE(Drop(Path("folder.sup")));
  Dialogs.Verify();
  Dialogs.ExpectMessage("Error: No SUP signature found");
  EXPECT_TRUE(Drop(Write("none.sup", Bytes(20, 'x'))));
  Dialogs.Verify();
  ExpectEditingEnabled(false);
  EXPECT_EQ(TextOf("Text1"), path);
  Click("Command_Next");
  EXPECT_TRUE(TextIsAt(200, 200));
}

TEST_F(MergeMode, LoadSupOfAFileThatIsNoneLeavesThePrimaryAloneToEdit) {
  Dialogs.ExpectOpen(Write("none.sup", Bytes(20, 'x')));
  Dialogs.ExpectMessage("Error: No SUP signature found");
  Click("Command_LoadSup");
  Dialogs.Verify();
  ExpectEditingEnabled(true);
  Dialogs.ExpectCancelled(DialogKind::Input);
  Click("Command_GoTo");
  EXPECT_EQ(Dialogs.Last().Text, "Jump to subtitle Nr. (1..3):");
  Click("Command_Next");
  EXPECT_TRUE(TextIsAt(100, 420));
  EXPECT_FALSE(TextIsAt(200, 200));
}

TEST_F(MergeMode, DroppedPaletteIsRefused) {
  const QColor before = SwatchColour(1);
  EXPECT_FALSE(Drop(Write("red.pal", PalWithRed())));
  EXPECT_EQ(SwatchColour(1), before);
  EXPECT_TRUE(TextIsAt(200, 200));
}

TEST_F(MergeMode, SwatchesDoNotReact) {
  QTest::mouseClick(&Control<QWidget>("Label1_1"), Qt::LeftButton);
  EXPECT_EQ(Dialogs.Last().Kind, DialogKind::Input);
}

// Which secondary subtitle is shown.

class MergeNavigation : public MergeTest {
 protected:
  /// The primary subtitles last from 0 to 10, from 100 to 200 and from 300 to 400.
  void LoadPrimary() { LoadStream(PrimaryStream({{0, 10}, {100, 100}, {300, 100}})); }
  /// What is shown with the primary subtitle from 100 to 200.
  std::vector<int> ShownWith(std::initializer_list<int> secondaryStarts) {
    LoadPrimary();
    Merge(SecondaryStream(secondaryStarts));
    Click("Command_Next");
    EXPECT_EQ(TextOf("Text_SubNum"), "2");
    EXPECT_TRUE(TextIsAt(100, 100));
    return ShownSecondaries();
  }
};

TEST_F(MergeNavigation, OnlyOverlappingSecondaryIsShown) {
  EXPECT_EQ(ShownWith({0, 90, 250}), std::vector{1});
}

TEST_F(MergeNavigation, LongerOverlapWins) {
  EXPECT_EQ(ShownWith({0, 90, 170, 250}), std::vector{1});
  EXPECT_EQ(ShownWith({0, 90, 120, 250}), std::vector{2});
}

TEST_F(MergeNavigation, LaterOfTwoEqualOverlapsIsShown) {
  EXPECT_EQ(ShownWith({0, 90, 150, 250}), std::vector{2});
}

TEST_F(MergeNavigation, OnlyTheNextOfTheFirstOverlappingIsCompared) {
  // From 100 to 110, to 130 and to 200: the third is the longest, but two after the first.
  EXPECT_EQ(ShownWith({0, 90, 110, 130, 250}), std::vector{2});
}

TEST_F(MergeNavigation, FirstSecondaryIsShownWhenNoneOverlaps) {
  EXPECT_EQ(ShownWith({200, 250}), std::vector{0});
}

TEST_F(MergeNavigation, EndAtThePrimarysStartIsNoOverlap) {
  EXPECT_EQ(ShownWith({0, 100, 250}), std::vector{1});
}

TEST_F(MergeNavigation, SecondaryDelaysDoNotCount) {
  // By its delay the second would end at 91 already; it lasts until the third starts.
  LoadPrimary();
  Merge(Join({FourCodes(PacketBuilder().Time(0), 200, 200),
              FourCodes(PacketBuilder().Time(90 * 1000).Delay(1), 200, 220),
              FourCodes(PacketBuilder().Time(250 * 1000), 200, 240)}));
  Click("Command_Next");
  EXPECT_EQ(ShownSecondaries(), std::vector{1});
}

TEST_F(MergeNavigation, LastSecondaryLastsBeyondTheLastPrimary) {
  LoadPrimary();
  Merge(SecondaryStream({0, 20}));
  Click("Command_Next");
  EXPECT_EQ(ShownSecondaries(), std::vector{1});
  Click("Command_Next");
  EXPECT_EQ(ShownSecondaries(), std::vector{1});
}

TEST_F(MergeNavigation, OneSecondaryIsShownWithAll) {
  LoadPrimary();
  Merge(SecondaryStream({0}));
  for (int step = 0; step < 2; ++step) {
    Click("Command_Next");
    EXPECT_EQ(ShownSecondaries(), std::vector{0});
  }
}

TEST_F(MergeNavigation, PrimaryWithoutAnEndIsShownWithTheFirst) {
  LoadStream(PrimaryStream({{0, 10}, {100, 0}}));
  Merge(SecondaryStream({0, 90}));
  Click("Command_Next");
  EXPECT_EQ(ShownSecondaries(), std::vector{0});
}

TEST_F(MergeNavigation, PrimaryWithoutAnEndLastsUntilTheNext) {
  LoadStream(PrimaryStream({{0, 10}, {100, 0}, {300, 10}}));
  Merge(SecondaryStream({0, 90, 150, 280}));
  Click("Command_Next");
  EXPECT_EQ(ShownSecondaries(), std::vector{2});
}

TEST_F(MergeNavigation, PrimaryOfNoLengthIsShownWithAnOnlySecondary) {
  LoadStream(PrimaryStream({{0, 10}, {100, 0}, {100, 10}}));
  Merge(SecondaryStream({0}));
  Click("Command_Next");
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_TRUE(TextIsAt(100, 100));
  EXPECT_EQ(ShownSecondaries(), std::vector{0});
}

TEST_F(MergeNavigation, PrevShowsTheMergedPicture) {
  LoadPrimary();
  Merge(SecondaryStream({0, 90, 280}));
  Click("Command_Next");
  Click("Command_Next");
  EXPECT_EQ(ShownSecondaries(), std::vector{2});
  Click("Command_Prev");
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(ShownSecondaries(), std::vector{1});
  Click("Command_Prev");
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(ShownSecondaries(), std::vector{0});
}

TEST_F(MergeNavigation, PicturesOfOneColumnOrNoneAreMerged) {
  const auto columns = [](unsigned last, unsigned y) {
    return WithFields(PacketBuilder().Area(200, last, y, y + 1).Build(), {0x50, 0x00, 0x50, 0x00});
  };
  LoadPrimary();
  Merge(columns(200, 300));
  EXPECT_EQ(FrameColour(200, 300), TextColour);
  EXPECT_EQ(FrameColour(200, 301), TextColour);
  Merge(columns(199, 300));
  EXPECT_TRUE(TextIsAt(100, 100));
  EXPECT_NE(FrameColour(200, 300), TextColour);
}

TEST_F(MergeNavigation, GoToShowsTheMergedPicture) {
  LoadPrimary();
  Merge(SecondaryStream({0, 90, 280}));
  GoTo("3");
  EXPECT_EQ(TextOf("Text_SubNum"), "3");
  EXPECT_EQ(ShownSecondaries(), std::vector{2});
  EXPECT_FALSE(IsEnabled("Command_Next"));
  GoTo("1");
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(ShownSecondaries(), std::vector{0});
  EXPECT_FALSE(IsEnabled("Command_Prev"));
}

TEST_F(MergeNavigation, OffsetHoldsForEverySubtitle) {
  LoadPrimary();
  Merge(SecondaryStream({0, 90, 280}), "-60");
  Click("Command_Next");
  EXPECT_TRUE(TextIsAt(200, 160));
  EXPECT_EQ(ShownSecondaries(), std::vector<int>{});
}

TEST_F(MergeNavigation, DetailsAreThePrimarys) {
  LoadPrimary();
  Merge(SecondaryStream({0, 90, 280}));
  Click("Command_Next");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:01.11");
  EXPECT_EQ(TextOf("Text_Dur"), "1.12");
  EXPECT_EQ(TextOf("Text_XPos"), "100");
  EXPECT_EQ(TextOf("Text_YPos"), "100");
}

TEST_F(MergeNavigation, InvalidPrimaryFails) {
  LoadStream(Join({PrimaryStream({{0, 10}}), PacketBuilder().Time(100000).WithoutColour().Build()}));
  Merge(SecondaryStream({0}));
  const QImage before = Frame();
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_Next");
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text_SubNum"), "?");
  EXPECT_EQ(Frame(), before);
}

TEST_F(MergeNavigation, InvalidSecondaryFailsAndLeavesThePrimaryAlone) {
  LoadPrimary();
  Merge(Join({SecondaryStream({0}), PacketBuilder().Time(90000).WithoutColour().Build()}));
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_Next");
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text_SubNum"), "?");
  EXPECT_TRUE(TextIsAt(100, 100));
  EXPECT_EQ(ShownSecondaries(), std::vector<int>{});
}

// What is exported while pictures are merged.

class MergeExport : public MergeTest {
 protected:
  [[nodiscard]] QImage Picture(const QString& name) const { return QImage(Path("movie_SubPng/" + name)); }
  [[nodiscard]] QByteArray Line(const QByteArray& start, const QByteArray& end,
                                const QString& picture) const {
    return "    <spu start=\"" + start + "\" end=\"" + end + "\" image=\"" +
           Path("movie_SubPng/" + picture).toUtf8() + "\" xoffset=\"100\" yoffset=\"100\" />\r\n";
  }
  [[nodiscard]] QByteArray List() const { return ReadText(Path("movie_spu.xml")); }
};

const QString FirstPicture = "00+00+01+00.png";

TEST_F(MergeExport, PictureIsTheWholeComposedFrame) {
  LoadStream(PrimaryStream({{90, 100}}));
  Click("Check_SavePics");
  Merge(SecondaryStream({0}), "-30");
  const QImage picture = Picture(FirstPicture);
  ASSERT_EQ(picture.size(), QSize(720, 576));
  EXPECT_EQ(picture.pixel(0, 0), 0U);
  EXPECT_EQ(picture.pixel(719, 575), 0U);
  for (const int y : {100, 101}) {
    EXPECT_EQ(picture.pixel(99, y), 0U);
    EXPECT_EQ(picture.pixel(101, y), 0U);
    EXPECT_EQ(picture.pixel(102, y), 0xFF03FDFBU);
    EXPECT_EQ(picture.pixel(105, y), 0xFFFFFFFFU);
    EXPECT_EQ(picture.pixel(107, y), 0xFF02FC02U);
    EXPECT_EQ(picture.pixel(108, y), 0U);
  }
  for (const int y : {170, 171}) {
    EXPECT_EQ(picture.pixel(201, y), 0U);
    EXPECT_EQ(picture.pixel(202, y), 0xFF03FDFBU);
    EXPECT_EQ(picture.pixel(207, y), 0xFF02FC02U);
  }
  EXPECT_EQ(picture.pixel(202, 172), 0U);
  EXPECT_EQ(picture.pixel(202, 200), 0U);
}

TEST_F(MergeExport, PictureOfASmallerFrameIsAsHighAsIt) {
  LoadStream(PrimaryStream({{90, 100}}));
  Click("Option_720x480");
  Click("Check_SavePics");
  Merge(SecondaryStream({0}));
  EXPECT_EQ(Picture(FirstPicture).size(), QSize(720, 480));
}

TEST_F(MergeExport, PictureOfTheSubtitleShownStaysWhereTheOffsetIsMoved) {
  LoadStream(PrimaryStream({{90, 100}}));
  Click("Check_SavePics");
  Merge(SecondaryStream({0}));
  Control<QSpinBox>("Spin_YOffset").setValue(50);
  QCoreApplication::processEvents();
  EXPECT_TRUE(TextIsAt(200, 250));
  EXPECT_EQ(Picture(FirstPicture).pixel(202, 200), 0xFF03FDFBU);
  EXPECT_EQ(Picture(FirstPicture).pixel(202, 250), 0U);
}

TEST_F(MergeExport, TranslucentPixelsKeepTheirValueOverNothing) {
  LoadStream(FourCodes(PacketBuilder().Time(Second).Delay(100).Contrast(1, 8, 7, 0), 100, 100));
  Click("Check_SavePics");
  Merge(FourCodes(PacketBuilder().Contrast(1, 8, 7, 0), 200, 200));
  const QImage picture = Picture(FirstPicture);
  for (const QPoint corner : {QPoint(100, 100), QPoint(200, 200)}) {
    EXPECT_EQ(picture.pixel(corner + QPoint(2, 0)), 0x7703FDFBU);
    EXPECT_EQ(picture.pixel(corner + QPoint(4, 0)), 0x88FFFFFFU);
    EXPECT_EQ(picture.pixel(corner + QPoint(6, 1)), 0x1102FC02U);
  }
}

TEST_F(MergeExport, TranslucentSecondaryIsBlendedWithThePrimary) {
  LoadStream(FourCodes(PacketBuilder().Time(Second).Delay(100).Contrast(15, 15, 8, 0), 100, 100));
  Click("Check_SavePics");
  Merge(FourCodes(PacketBuilder(), 104, 100));
  // (3, 253, 251) with alpha 136 over (2, 252, 2).
  EXPECT_EQ(Picture(FirstPicture).pixel(106, 100), 0xFF03FD87U);
  // Transparent over white.
  EXPECT_EQ(Picture(FirstPicture).pixel(104, 100), 0xFFFFFFFFU);
}

TEST_F(MergeExport, LineHasThePrimarysValues) {
  LoadStream(PrimaryStream({{90, 100}}));
  Click("Check_SavePics");
  Merge(SecondaryStream({0}));
  const QByteArray line = Line("00:00:01.00", "00:00:02.11", FirstPicture);
  // Shown alone before the file is asked for, and then merged.
  EXPECT_EQ(List(), line + line);
}

TEST_F(MergeExport, SteppingExportsTheMergedPicture) {
  LoadStream(PrimaryStream({{90, 100}, {450, 100}}));
  Merge(SecondaryStream({0, 400}));
  Click("Check_SavePics");
  Click("Command_Next");
  EXPECT_EQ(List(), Line("00:00:05.00", "00:00:06.11", "00+00+05+00.png"));
  EXPECT_EQ(Picture("00+00+05+00.png").size(), QSize(720, 576));
  EXPECT_EQ(Picture("00+00+05+00.png").pixel(202, 220), 0xFF03FDFBU);
}

TEST_F(MergeExport, SaveMergedExportsEverySubtitle) {
  LoadStream(PrimaryStream({{90, 100}, {450, 100}}));
  Merge(SecondaryStream({0, 400}));
  Click("Check_SavePics");
  MergedBytes();
  EXPECT_EQ(List(), Line("00:00:01.00", "00:00:02.11", "00+00+01+00.png") +
                        Line("00:00:05.00", "00:00:06.11", "00+00+05+00.png"));
  EXPECT_EQ(Picture("00+00+01+00.png").pixel(202, 200), 0xFF03FDFBU);
  EXPECT_EQ(Picture("00+00+05+00.png").pixel(202, 220), 0xFF03FDFBU);
}

TEST_F(MergeExport, UntickedBoxExportsNothing) {
  LoadStream(PrimaryStream({{90, 100}}));
  Merge(SecondaryStream({0}));
  MergedBytes();
  EXPECT_FALSE(QFileInfo::exists(Path("movie_SubPng")));
  EXPECT_FALSE(QFileInfo::exists(Path("movie_spu.xml")));
}

TEST_F(MergeExport, FolderThatTakesNoPictureIsToldOnceInASave) {
  LoadStream(PrimaryStream({{90, 100}, {450, 100}, {900, 100}}));
  Merge(SecondaryStream({0}));
  const Bytes silent = MergedBytes();
  Click("Check_SavePics");
  Write("movie_SubPng", QByteArray("a file stands where the folder should be"));
  Dialogs.ExpectSave(Path("told.sup"));
  Dialogs.ExpectMessage("GDIP Error in: cBitmap\r\nError Number: 7\r\nError Description: " +
                        Path("movie_SubPng/00+00+01+00.png") +
                        ": Not a directory\r\n3 pictures could not be written; this is the first one");
  Click("Command_SaveSecond");
  Dialogs.Verify();
  EXPECT_EQ(Read(Path("told.sup")), silent);
}

TEST_F(MergeExport, PictureThatCannotBeWrittenStopsNoOther) {
  LoadStream(PrimaryStream({{90, 100}, {450, 100}, {900, 100}}));
  Merge(SecondaryStream({0}));
  Click("Check_SavePics");
  ASSERT_TRUE(QDir().mkpath(Path("movie_SubPng/00+00+05+00.png")));
  Dialogs.ExpectSave(Path("merged.sup"));
  Dialogs.ExpectMessage("GDIP Error in: cBitmap\r\nError Number: 7\r\nError Description: " +
                        Path("movie_SubPng/00+00+05+00.png") + ": It is a folder");
  Click("Command_SaveSecond");
  Dialogs.Verify();
  EXPECT_EQ(Picture("00+00+01+00.png").size(), QSize(720, 576));
  EXPECT_EQ(Picture("00+00+10+00.png").size(), QSize(720, 576));
}

}  // namespace
}  // namespace quillmark::test
