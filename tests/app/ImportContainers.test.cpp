#include <memory>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QMenu>
#include <QMimeData>
#include <QStatusBar>
#include <QTableWidget>
#include <QUrl>

#include "tests/app/MergeTest.h"
#include "tests/containers/PackBuilder.h"

#ifdef QUILLMARK_HAS_VOBSUB

namespace quillmark::test {
namespace {

/// The unit of a packet of a SUP file.
Bytes UnitOf(const Bytes& packet) {
  return {packet.begin() + 10, packet.end()};
}

const QByteArray HeadOfIndex = "# VobSub index file, v7 (do not modify this line!)\n";
/// Sixteen times red.
const QByteArray RedPalette =
    "palette: ff0000, ff0000, ff0000, ff0000, ff0000, ff0000, ff0000, ff0000, ff0000, ff0000, ff0000, "
    "ff0000, ff0000, ff0000, ff0000, ff0000\n";
const QByteArray EnglishLines =
    "id: en, index: 0\n"
    "timestamp: 00:00:01:000, filepos: 000000000\n"
    "timestamp: 00:00:05:000, filepos: 000000800\n";
const QByteArray GermanLines =
    "id: de, index: 1\n"
    "timestamp: 00:00:02:000, filepos: 000001000\n";

/// English at 1 and 5 seconds and at y = 100 and 120, German at 2 seconds and y = 200, a pack each.
Bytes EnglishPacket(int index) {
  return index == 0 ? FourCodes(PacketBuilder().Time(1 * Second).Delay(100), 100, 100)
                    : FourCodes(PacketBuilder().Time(5 * Second).Delay(100), 100, 120);
}
Bytes GermanPacket() {
  return FourCodes(PacketBuilder().Time(2 * Second).Delay(100), 200, 200);
}
Bytes Packs(const Bytes& firstEnglish) {
  return Join({Pack(SubtitlePacket(UnitOf(firstEnglish), 1 * Second)),
               Pack(SubtitlePacket(UnitOf(EnglishPacket(1)), 5 * Second)),
               Pack(SubtitlePacket(UnitOf(GermanPacket()), 2 * Second, 0x21))});
}

class ImportContainers : public MergeTest {
 protected:
  [[nodiscard]] QAction& Action(const QString& name) const {
    return *Window.findChild<QAction*>("Action_" + name);
  }
  /// A pair; the path of its index.
  [[nodiscard]] QString WritePair(const QByteArray& index, const Bytes& packs = Packs(EnglishPacket(0)),
                                  const QString& name = "movie") const {
    Write(name + ".sub", packs);
    return Write(name + ".idx", HeadOfIndex + index);
  }
  [[nodiscard]] QString WriteTwoLanguages() const {
    return WritePair(RedPalette + EnglishLines + GermanLines);
  }
  /// Import subtitles: chooses the file. What comes after that is to be expected by `then`.
  void Choose(const QString& path, const std::function<void()>& then) {
    Dialogs.ExpectOpen(path);
    then();
    Action("Import").trigger();
    QCoreApplication::processEvents();
    Dialogs.Verify();
  }
  void ImportFile(const QString& path) {
    Choose(path, [this] { Dialogs.ExpectReport(); });
  }
  /// In the dialog that shows a file's tracks: opens one and, where it is not 0, merges another, both counted
  /// from 1.
  void ExpectTracks(int track, int second = 0) {
    Dialogs.Expect(DialogKind::Other, [=](QDialog& dialog) {
      dialog.findChild<QTableWidget*>("List_Tracks")->setCurrentCell(track - 1, 0);
      auto* merged = dialog.findChild<QComboBox*>("Combo_Second");
      merged->setCurrentIndex(merged->findData(second - 1));
      dialog.findChild<QAbstractButton*>("Command_Open")->click();
    });
  }
  [[nodiscard]] QString Told() const { return Window.statusBar()->currentMessage(); }

  /// Drags files over the window and lets them go; whether they are taken.
  bool Drop(const QStringList& paths) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& path : paths) {
      urls.append(QUrl::fromLocalFile(path));
    }
    data.setUrls(urls);
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
};

TEST_F(ImportContainers, OnlyTrackOpensAtOnce) {
  const QString path = WritePair(EnglishLines);
  ImportFile(path);
  EXPECT_EQ(TextOf("Text1"), path);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(FrameColour(102, 100), TextColour);
  EXPECT_EQ(SavedBytes(), Join({EnglishPacket(0), EnglishPacket(1)}));
}

TEST_F(ImportContainers, SaveSupProposesANewSup) {
  ImportFile(WritePair(EnglishLines));
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SaveSup");
  EXPECT_EQ(Dialogs.Last().Name, "movie_new.sup");
}

TEST_F(ImportContainers, PaletteComesAlongAndIsNoStep) {
  ImportFile(WritePair(RedPalette + EnglishLines));
  EXPECT_EQ(SwatchColour(1), QColor(Qt::red));
  EXPECT_EQ(FrameColour(102, 100), QColor(Qt::red));
  EXPECT_FALSE(Action("Undo").isEnabled());
  EXPECT_EQ(Told(), "Imported movie.idx, English (en), with its palette");
}

TEST_F(ImportContainers, WithoutAPaletteThePresentOneStaysAndThatIsTold) {
  const QColor before = SwatchColour(1);
  ImportFile(WritePair(EnglishLines));
  EXPECT_EQ(SwatchColour(1), before);
  EXPECT_EQ(Told(), "Imported movie.idx, English (en); it has no palette of its own: the present one stays");
}

TEST_F(ImportContainers, DialogOffersWhatIsRead) {
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Action("Import").trigger();
  for (const char* name : {"movie.sup", "movie.idx", "movie.sub", "MOVIE.IDX"}) {
    EXPECT_TRUE(Dialogs.Last().Offers(name)) << name;
  }
}

TEST_F(ImportContainers, OneOfSeveralTracksIsChosen) {
  const QString path = WriteTwoLanguages();
  Choose(path, [this] {
    ExpectTracks(2);
    Dialogs.ExpectReport();
  });
  EXPECT_EQ(TextOf("Text1"), path);
  EXPECT_EQ(FrameColour(202, 200), QColor(Qt::red));
  EXPECT_EQ(Told(), "Imported movie.idx, track 2 of 2, German (de), with its palette");
  EXPECT_EQ(SavedBytes(), GermanPacket());
}

TEST_F(ImportContainers, CancelledChoiceOfATrackChangesNothing) {
  LoadStream(ThreeSubtitles());
  const QColor before = SwatchColour(1);
  WindowTest::Choose("ImageCombo2", "4");
  Click("Command_SetAll");
  const Bytes edited = SavedBytes();
  const QString path = WriteTwoLanguages();
  Choose(path, [this] { Dialogs.ExpectCancelled(DialogKind::Other); });
  EXPECT_EQ(TextOf("Text1"), Path("movie.sup"));
  EXPECT_EQ(SwatchColour(1), before);
  EXPECT_TRUE(Action("Undo").isEnabled());
  EXPECT_EQ(SavedBytes(), edited);
}

TEST_F(ImportContainers, SecondTrackIsLaidOverTheFirst) {
  const QString path = WriteTwoLanguages();
  Choose(path, [this] {
    ExpectTracks(1, 2);
    Dialogs.ExpectReport();
    ExpectSecondaryReport();
    Dialogs.ExpectInput("-10");
  });
  EXPECT_EQ(FrameColour(102, 100), QColor(Qt::red));
  EXPECT_EQ(FrameColour(202, 190), QColor(Qt::red));
  EXPECT_TRUE(Action("LeaveMerge").isEnabled());
  EXPECT_FALSE(IsEnabled("Command_SaveSup"));
}

TEST_F(ImportContainers, SecondTrackIsRefusedAsLoadSecondRefusesAFile) {
  Bytes otherColours = EnglishPacket(0);
  otherColours[ColourArguments + 1] = 0x50;
  const QString path = WritePair(RedPalette + EnglishLines + GermanLines, Packs(otherColours));
  Choose(path, [this] {
    ExpectTracks(1, 2);
    Dialogs.ExpectReport();
    Dialogs.ExpectMessageWith({"Error: Primary sup file uses multiple colors or multiple transparancies"});
  });
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_FALSE(Action("LeaveMerge").isEnabled());
  EXPECT_EQ(SavedBytes(), Join({otherColours, EnglishPacket(1)}));
}

TEST_F(ImportContainers, IndexWithoutItsPacksIsToldAndChangesNothing) {
  LoadStream(ThreeSubtitles());
  const QString path = Write("lonely.idx", HeadOfIndex + EnglishLines);
  Choose(path, [&] { Dialogs.ExpectMessageWith({"Cannot read " + path + ": ", "lonely.sub"}); });
  EXPECT_EQ(TextOf("Text1"), Path("movie.sup"));
  EXPECT_EQ(SavedBytes(), ThreeSubtitles());
}

TEST_F(ImportContainers, WhatWasLeftOutStandsBelowTheReport) {
  const QString path = WritePair(EnglishLines + QByteArray("timestamp: 00:00:09:000, filepos: 000009000\n"));
  QString remark;
  Choose(path, [&] {
    Dialogs.Expect(DialogKind::Message, [&remark](QDialog& dialog) {
      remark = static_cast<QMessageBox&>(dialog).informativeText();
      dialog.accept();
    });
  });
  EXPECT_TRUE(Dialogs.Last().Text.startsWith("Found Subtitles: 2"));
  EXPECT_TRUE(remark.contains("position 0x9000 is outside the .sub")) << remark.toStdString();
}

TEST_F(ImportContainers, RecentFileIsImportedAgain) {
  const QString path = WritePair(RedPalette + EnglishLines);
  ImportFile(path);
  LoadStream(ThreeSubtitles());
  auto& recent = *Window.findChild<QMenu*>("Menu_Recent");
  emit recent.aboutToShow();
  Dialogs.ExpectReport();
  recent.actions().at(1)->trigger();
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text1"), path);
  EXPECT_EQ(FrameColour(102, 100), QColor(Qt::red));
}

TEST_F(ImportContainers, CommandLineImports) {
  const QString path = WritePair(RedPalette + EnglishLines);
  Dialogs.ExpectReport();
  Window.OpenCommandLine(path);
  EXPECT_EQ(TextOf("Text1"), path);
  EXPECT_EQ(FrameColour(102, 100), QColor(Qt::red));
}

TEST_F(ImportContainers, LoadSupTakesNoOtherFiles) {
  Dialogs.ExpectOpen(WritePair(EnglishLines));
  Dialogs.ExpectMessage("Error: No SUP signature found");
  Click("Command_LoadSup");
}

TEST_F(ImportContainers, UnsavedEditsAreOfferedWhenTheFileIsImportedAgain) {
  const QString path = WritePair(EnglishLines);
  {
    frmTest other;
    other.show();
    Dialogs.ExpectReport();
    other.OpenCommandLine(path);
    other.findChild<QComboBox*>("ImageCombo2")->setCurrentIndex(4);
    other.findChild<QAbstractButton*>("Command_SetAll")->click();
  }
  ImportFile(path);
  ASSERT_TRUE(Control<QWidget>("Strip_Recover").isVisible());
  Click("Command_Recover");
  Bytes first = EnglishPacket(0);
  Bytes second = EnglishPacket(1);
  first[ColourArguments + 1] = second[ColourArguments + 1] = 0x40;
  EXPECT_EQ(SavedBytes(), Join({first, second}));
}

TEST_F(ImportContainers, DroppedIndexIsImported) {
  const QString path = WritePair(EnglishLines);
  Dialogs.ExpectReport();
  EXPECT_TRUE(Drop({path}));
  EXPECT_EQ(TextOf("Text1"), path);
  EXPECT_EQ(FrameColour(102, 100), TextColour);
}

TEST_F(ImportContainers, DroppedPacksAreImported) {
  const QString path = WritePair(EnglishLines);
  Dialogs.ExpectReport();
  EXPECT_TRUE(Drop({Path("movie.sub")}));
  EXPECT_EQ(TextOf("Text1"), Path("movie.sub"));
  EXPECT_EQ(SavedBytes(), Join({EnglishPacket(0), EnglishPacket(1)}));
}

TEST_F(ImportContainers, DroppedPairIsOneFile) {
  const QString path = WritePair(EnglishLines);
  for (const QStringList& pair :
       {QStringList{path, Path("movie.sub")}, QStringList{Path("movie.sub"), path}}) {
    Dialogs.ExpectReport();
    EXPECT_TRUE(Drop(pair));
    Dialogs.Verify();
    EXPECT_EQ(TextOf("Text1"), path);
  }
}

TEST_F(ImportContainers, FilesOfTwoPairsAreNotTaken) {
  const QString path = WritePair(EnglishLines);
  const QString other = WritePair(EnglishLines, Packs(EnglishPacket(0)), "other");
  EXPECT_FALSE(Drop({path, Path("other.sub")}));
  EXPECT_FALSE(Drop({path, other}));
}

}  // namespace
}  // namespace quillmark::test

#endif
