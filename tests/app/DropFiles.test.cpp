#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QImage>
#include <QMimeData>
#include <QUrl>

#include "tests/app/PaletteFiles.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

class DropFiles : public WindowTest {
 protected:
  /// Drags files over a control; whether anybody takes them.
  static bool Drag(QWidget& target, const QList<QUrl>& files) {
    QMimeData data;
    data.setUrls(files);
    QDragEnterEvent enter(target.rect().center(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&target, &enter);
    return enter.isAccepted();
  }
  /// Lets them go where they were dragged to; whether they were taken. Nothing is loaded yet.
  static bool LetGo(QWidget& target, const QList<QUrl>& files) {
    QMimeData data;
    data.setUrls(files);
    QDropEvent drop(QPointF(target.rect().center()), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    drop.ignore();
    QApplication::sendEvent(&target, &drop);
    return drop.isAccepted();
  }
  /// Drags files over a control and lets them go there; whether anybody took them.
  static bool Drop(QWidget& target, const QList<QUrl>& files) {
    if (!Drag(target, files)) {
      return false;
    }
    LetGo(target, files);
    QCoreApplication::processEvents();
    return true;
  }
  bool Drop(const QString& path) { return Drop(Window, {QUrl::fromLocalFile(path)}); }
};

TEST_F(DropFiles, SupFileLoads) {
  const QString path = Write("movie.sup", ThreeSubtitles());
  Dialogs.ExpectReport();
  EXPECT_TRUE(Drop(path));
  EXPECT_EQ(TextOf("Text1"), path);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(FrameColour(102, 400), QColor(3, 253, 251));
}

TEST_F(DropFiles, StreamWithoutSubtitlesIsNamed) {
  const QString path = Write("empty.sup", Bytes());
  Dialogs.ExpectReport();
  EXPECT_TRUE(Drop(path));
  EXPECT_EQ(TextOf("Text1"), path);
}

TEST_F(DropFiles, DropIsAcceptedBeforeTheFileIsLoaded) {
  const QList<QUrl> files = {QUrl::fromLocalFile(Write("movie.sup", ThreeSubtitles()))};
  ASSERT_TRUE(Drag(Window, files));
  EXPECT_TRUE(LetGo(Window, files));
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
  Dialogs.ExpectReport();
  QCoreApplication::processEvents();
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(DropFiles, NothingIsTakenWhileAMessageStands) {
  LoadStream(ThreeSubtitles());
  const QList<QUrl> other = {QUrl::fromLocalFile(Write("other.sup", ThreeSubtitles()))};
  Click("Check_SavePics");
  Click("Command_Next");
  ASSERT_TRUE(QDir(Path("movie_SubPng")).removeRecursively());
  // The picture in the chosen colour cannot be written.
  Dialogs.Expect(DialogKind::Message, [&](QDialog& dialog) {
    EXPECT_FALSE(Drag(Window, other));
    dialog.accept();
  });
  Choose("ImageCombo2", "3");
  Dialogs.Verify();
  EXPECT_TRUE(Drag(Window, other));
}

TEST_F(DropFiles, SupFileEnablesWhatLoadSupEnables) {
  Dialogs.ExpectReport();
  EXPECT_TRUE(Drop(Write("movie.sup", ThreeSubtitles())));
  for (const char* name :
       {"Command_SaveSup", "Command_LoadPalette", "Command_SavePalette", "ImageCombo1", "Combo1_0",
        "Label1_0", "Frame1", "Frame2", "Command_Next", "Command_GoTo", "Command_Reload"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
}

TEST_F(DropFiles, UpperCaseNameAndNonAsciiPathLoad) {
  Dialogs.ExpectReport();
  EXPECT_TRUE(Drop(Write(QString::fromUtf8("F\xC3\xBCr DVD #1 100%.SUP"), ThreeSubtitles())));
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(DropFiles, EveryPartOfTheWindowTakesTheFile) {
  const QString path = Write("movie.sup", ThreeSubtitles());
  for (const char* name : {"Picture1", "Text1", "Text_GraphFile", "Text_SubNum", "Command_Next", "Label1_3",
                           "Frame1", "ImageCombo1"}) {
    Dialogs.ExpectReport();
    EXPECT_TRUE(Drop(Control<QWidget>(name), {QUrl::fromLocalFile(path)})) << name;
    Dialogs.Verify();
    EXPECT_EQ(TextOf("Text1"), path) << name;
    EXPECT_EQ(TextOf("Text_GraphFile"), "") << name;
  }
}

TEST_F(DropFiles, BrokenSupFileIsToldAsLoadSupDoes) {
  Dialogs.ExpectMessage("Error: No SUP signature found");
  EXPECT_TRUE(Drop(Write("movie.sup", Bytes(20, 'x'))));
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
}

TEST_F(DropFiles, FileThatCannotBeReadLeavesACancelledLoadAsItIs) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  Dialogs.ExpectMessage("Error: No SUP signature found");
  EXPECT_TRUE(Drop(Write("none.sup", Bytes(20, 'x'))));
  Dialogs.Verify();
  Dialogs.ExpectMessage("Error: No primary sup file loaded");
  Click("Command_LoadSecond");
}

TEST_F(DropFiles, PaletteFilesLoadAsPalettes) {
  LoadStream(FourCodes(PacketBuilder()));
  QByteArray rgb;
  for (int i = 0; i < 16; ++i) {
    rgb += "FFFFFF\r\n";
  }
  EXPECT_TRUE(Drop(Write("p.pal", PalWithRed())));
  EXPECT_EQ(SwatchColour(1), QColor(255, 1, 0));
  EXPECT_EQ(FrameColour(102, 400), QColor(255, 1, 0));
  EXPECT_TRUE(Drop(Write("p.rgb", rgb)));
  EXPECT_EQ(SwatchColour(1), QColor(0, 211, 0));
  EXPECT_TRUE(Drop(Write("VTS_01_0.IFO", IfoWithRed())));
  EXPECT_EQ(SwatchColour(1), QColor(255, 1, 0));
}

TEST_F(DropFiles, BrokenPaletteIsToldAsLoadPaletteDoes) {
  LoadStream(FourCodes(PacketBuilder()));
  Dialogs.ExpectMessage("Illegal file");
  EXPECT_TRUE(Drop(Write("p.pal", QByteArray("nothing"))));
  EXPECT_EQ(SwatchColour(1), QColor(1, 1, 1));
}

TEST_F(DropFiles, FilesOfOtherKindsAreNotTaken) {
  LoadStream(ThreeSubtitles());
  const auto dialogs = Dialogs.Shown().size();
  for (const char* name : {"movie.txt", "movie.html", "movie.sup.zip", "sup", "movie"}) {
    EXPECT_FALSE(Drop(Write(name, ThreeSubtitles()))) << name;
  }
  EXPECT_EQ(Dialogs.Shown().size(), dialogs);
  EXPECT_EQ(TextOf("Text1"), Path("movie.sup"));
}

TEST_F(DropFiles, TwoPalettesAreNotTaken) {
  const QString path = Write("p.pal", PalWithRed());
  EXPECT_FALSE(Drop(Window, {QUrl::fromLocalFile(path), QUrl::fromLocalFile(path)}));
  EXPECT_EQ(SwatchColour(1), QColor(3, 253, 251));
}

TEST_F(DropFiles, NothingIsTakenWhileADialogIsOpen) {
  LoadStream(ThreeSubtitles());
  const QString stream = Write("other.sup", PacketBuilder().Time(7 * Second).Build());
  for (const QString& path : {stream, Write("p.pal", PalWithRed())}) {
    Dialogs.Expect(DialogKind::Input, [&](QDialog& dialog) {
      EXPECT_FALSE(Drag(Window, {QUrl::fromLocalFile(path)})) << path.toStdString();
      dialog.reject();
    });
    Click("Command_GoTo");
    Dialogs.Verify();
    // And what was over the window already when the dialog came.
    ASSERT_TRUE(Drag(Window, {QUrl::fromLocalFile(path)})) << path.toStdString();
    Dialogs.Expect(DialogKind::Input, [&](QDialog& dialog) {
      EXPECT_FALSE(LetGo(Window, {QUrl::fromLocalFile(path)})) << path.toStdString();
      dialog.reject();
    });
    Click("Command_GoTo");
    Dialogs.Verify();
  }
  EXPECT_EQ(TextOf("Text1"), Path("movie.sup"));
  EXPECT_EQ(SwatchColour(1), QColor(3, 253, 251));
}

TEST_F(DropFiles, FileThatWaitsWhenADialogComesIsNotLoaded) {
  LoadStream(ThreeSubtitles());
  const QList<QUrl> files = {QUrl::fromLocalFile(Write("other.sup", PacketBuilder().Build()))};
  ASSERT_TRUE(Drag(Window, files));
  EXPECT_TRUE(LetGo(Window, files));
  Dialogs.ExpectCancelled(DialogKind::Input);
  // Not by the mouse, whose events would let the file be loaded first.
  Window.findChild<QAction*>("Action_GoTo")->trigger();
  QCoreApplication::processEvents();
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text1"), Path("movie.sup"));
}

TEST_F(DropFiles, TwoSupFilesBecomePrimaryAndSecond) {
  const QString first = Write("first.sup", FourCodes(PacketBuilder(), 100, 100));
  const QString second = Write("second.sup", FourCodes(PacketBuilder(), 200, 200));
  Dialogs.ExpectReport();
  Dialogs.ExpectMessageWith({"Found secondary Subtitles: 1"});
  Dialogs.ExpectInput("10");
  EXPECT_TRUE(Drop(Window, {QUrl::fromLocalFile(first), QUrl::fromLocalFile(second)}));
  EXPECT_EQ(TextOf("Text1"), first);
  EXPECT_EQ(FrameColour(102, 100), QColor(3, 253, 251));
  EXPECT_EQ(FrameColour(202, 210), QColor(3, 253, 251));
  EXPECT_FALSE(IsEnabled("Command_SaveSup"));
}

TEST_F(DropFiles, StreamWhoseSecondPacketIsMissingEndsTheMerge) {
  const QString first = Write("first.sup", FourCodes(PacketBuilder(), 100, 100));
  const QString second = Write("second.sup", FourCodes(PacketBuilder(), 200, 200));
  Dialogs.ExpectReport();
  Dialogs.ExpectMessageWith({"Found secondary Subtitles: 1"});
  Dialogs.ExpectInput("0");
  ASSERT_TRUE(Drop(Window, {QUrl::fromLocalFile(first), QUrl::fromLocalFile(second)}));
  ASSERT_EQ(FrameColour(202, 200), QColor(3, 253, 251));
  Dialogs.ExpectMessage("Error: No SUP signature found");
  const Bytes broken = Join({FourCodes(PacketBuilder(), 300, 100), Bytes(20, 'x')});
  EXPECT_TRUE(Drop(Write("broken.sup", broken)));
  EXPECT_EQ(FrameColour(302, 100), QColor(3, 253, 251));
  EXPECT_NE(FrameColour(202, 200), QColor(3, 253, 251));
  Dialogs.ExpectMessage("Error: No primary sup file loaded");
  Click("Command_LoadSecond");
}

TEST_F(DropFiles, SecondIsNotLoadedWhereTheFirstFails) {
  const QString first = Write("first.sup", Bytes(20, 'x'));
  const QString second = Write("second.sup", FourCodes(PacketBuilder()));
  Dialogs.ExpectMessage("Error: No SUP signature found");
  EXPECT_TRUE(Drop(Window, {QUrl::fromLocalFile(first), QUrl::fromLocalFile(second)}));
}

TEST_F(DropFiles, PictureBecomesTheBackground) {
  LoadStream(FourCodes(PacketBuilder()));
  QImage picture(8, 8, QImage::Format_RGB32);
  picture.fill(Qt::red);
  ASSERT_TRUE(picture.save(Path("Behind.PNG")));
  EXPECT_TRUE(Drop(Path("Behind.PNG")));
  EXPECT_EQ(TextOf("Text_GraphFile"), Path("Behind.PNG"));
  EXPECT_TRUE(IsChecked("Option_File"));
  EXPECT_EQ(FrameColour(10, 10), QColor(Qt::red));
}

TEST_F(DropFiles, OtherFilesAndOtherPairsAreNotTaken) {
  const QUrl sup = QUrl::fromLocalFile(Write("movie.sup", ThreeSubtitles()));
  const QUrl palette = QUrl::fromLocalFile(Write("p.pal", PalWithRed()));
  EXPECT_FALSE(Drop(Window, {QUrl::fromLocalFile(Write("movie.txt", ThreeSubtitles()))}));
  EXPECT_FALSE(Drop(Window, {sup, palette}));
  EXPECT_FALSE(Drop(Window, {palette, sup}));
  EXPECT_FALSE(Drop(Window, {sup, sup, sup}));
}

TEST_F(DropFiles, WhatIsNoLocalFileIsNotTaken) {
  EXPECT_FALSE(Drop(Window, {}));
  EXPECT_FALSE(Drop(Window, {QUrl("https://example.org/movie.sup")}));
}

}  // namespace
}  // namespace quillmark::test
