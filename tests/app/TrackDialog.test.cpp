#include "app/TrackDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <gtest/gtest.h>

#include "app/ImportJob.h"
#include "app/NotesText.h"
#include "tests/app/Streams.h"

namespace quillmark::test {
namespace {

constexpr int Language = 1;
constexpr int Name = 2;
constexpr int Count = 3;
constexpr int First = 4;
constexpr int Last = 5;
constexpr int Colours = 6;
constexpr int Picture = 7;

DvdPalette AllOf(Rgb colour) {
  DvdPalette palette;
  palette.fill(colour);
  return palette;
}

constexpr Rgb Red = 0x0000FF;
constexpr Rgb Green = 0x00FF00;

ImportedTrack TrackOf(const Bytes& stream, Track track) {
  auto loaded = IndexPrimaryStream(stream);
  return {.What = std::move(track), .Loaded = std::move(*loaded)};
}

ImportedFile TwoTracks() {
  ImportedFile file{.Tracks = {}, .Notes = {"an audio stream is left out"}};
  file.Tracks.push_back(TrackOf(ThreeSubtitles(), {.Id = "0x20",
                                                   .Language = "de",
                                                   .Name = {},
                                                   .Palette = AllOf(Red),
                                                   .Packets = {},
                                                   .Notes = {"unit 4 is cut short"}}));
  file.Tracks.push_back(
      TrackOf(FourCodes(PacketBuilder().Time(3600 * Second)),
              {.Id = "0x21", .Language = {}, .Name = "Songs", .Palette = {}, .Packets = {}, .Notes = {}}));
  return file;
}

class TrackDialogTest : public testing::Test {
 protected:
  TrackDialogTest() : Dialog("movie.vob", File, Present, nullptr) {
    Dialog.show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&Dialog));
  }
  [[nodiscard]] QTableWidget& List() const { return *Dialog.findChild<QTableWidget*>("List_Tracks"); }
  [[nodiscard]] QString Cell(int row, int column) const { return List().item(row, column)->text(); }
  [[nodiscard]] QString Said(int row, int column) const {
    return List().item(row, column)->data(Qt::AccessibleTextRole).toString();
  }
  [[nodiscard]] bool Shows(int row, int column, const QColor& colour) const {
    const QRect cell = List().visualItemRect(List().item(row, column));
    const QImage image = List().viewport()->grab(cell).toImage();
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y) == colour) {
          return true;
        }
      }
    }
    return false;
  }
  [[nodiscard]] QComboBox& Second() const { return *Dialog.findChild<QComboBox*>("Combo_Second"); }
  [[nodiscard]] QString Notes() const {
    return Dialog.findChild<QPlainTextEdit*>("Text_Notes")->toPlainText();
  }

  const ImportedFile File = TwoTracks();
  const DvdPalette Present = AllOf(Green);
  TrackDialog Dialog;
};

TEST_F(TrackDialogTest, RowsTellWhatTheTracksHold) {
  ASSERT_EQ(List().rowCount(), 2);
  EXPECT_EQ(Cell(0, 0), "1");
  EXPECT_EQ(Cell(0, Language), "German (de)");
  EXPECT_EQ(Cell(0, Count), "3");
  EXPECT_EQ(Cell(0, First), "00:00:01.00");
  EXPECT_EQ(Cell(0, Last), "00:00:09.00");
  EXPECT_EQ(Cell(1, Language), "unknown");
  EXPECT_EQ(Cell(1, Name), "Songs");
  EXPECT_EQ(Cell(1, Count), "1");
  EXPECT_EQ(Cell(1, First), "01:00:00.00");
  EXPECT_EQ(Cell(1, Last), "01:00:00.00");
}

TEST_F(TrackDialogTest, PaletteOfATrackIsShownAndSaid) {
  EXPECT_TRUE(Shows(0, Colours, Qt::red));
  EXPECT_TRUE(Said(0, Colours).startsWith("red, red, ")) << Said(0, Colours).toStdString();
  EXPECT_EQ(Cell(1, Colours), "none");
}

TEST_F(TrackDialogTest, PicturesAreInTheTracksPaletteOrThePresentOne) {
  EXPECT_TRUE(Shows(0, Picture, Qt::red));
  EXPECT_FALSE(Shows(0, Picture, Qt::green));
  EXPECT_TRUE(Shows(1, Picture, Qt::green));
}

TEST_F(TrackDialogTest, NotesAreThoseOfTheTrackAndTheFile) {
  EXPECT_EQ(Notes(), "Unit 4 is cut short\nAn audio stream is left out");
  QTest::keyClick(&List(), Qt::Key_Down);
  EXPECT_EQ(Notes(), "An audio stream is left out");
}

TEST_F(TrackDialogTest, RoomIsTheTracks) {
  const auto& notes = *Dialog.findChild<QPlainTextEdit*>("Text_Notes");
  EXPECT_EQ(List().viewport()->height(), 2 * List().rowHeight(0)) << "as much as its rows need";
  const int before = notes.height();
  EXPECT_LE(before, 5 * notes.fontMetrics().lineSpacing());
  Dialog.resize(Dialog.size() + QSize(0, 300));
  QCoreApplication::processEvents();
  EXPECT_EQ(List().viewport()->height(), 2 * List().rowHeight(0) + 300);
  EXPECT_EQ(notes.height(), before);
}

TEST_F(TrackDialogTest, FirstTrackAloneIsProposed) {
  EXPECT_EQ(Dialog.Choice().Track, 0U);
  EXPECT_FALSE(Dialog.Choice().Second);
}

TEST_F(TrackDialogTest, SecondIsAnyOtherTrack) {
  ASSERT_EQ(Second().count(), 2);
  EXPECT_EQ(Second().itemText(1), "2: unknown, 1 subtitle");
  Second().setCurrentIndex(1);
  EXPECT_EQ(Dialog.Choice().Second, 1U);
  // The track that is opened is not laid over itself.
  QTest::keyClick(&List(), Qt::Key_Down);
  EXPECT_EQ(Dialog.Choice().Track, 1U);
  EXPECT_FALSE(Dialog.Choice().Second);
  EXPECT_EQ(Second().itemText(1), "1: German (de), 3 subtitles");
  Second().setCurrentIndex(1);
  EXPECT_EQ(Dialog.Choice().Second, 0U);
}

TEST_F(TrackDialogTest, ReturnOpensAndEscapeCancels) {
  QTest::keyClick(&List(), Qt::Key_Return);
  EXPECT_EQ(Dialog.result(), QDialog::Accepted);
  Dialog.show();
  QTest::keyClick(&List(), Qt::Key_Escape);
  EXPECT_EQ(Dialog.result(), QDialog::Rejected);
}

TEST_F(TrackDialogTest, DoubleClickOpensAndTheButtonCancels) {
  const QPoint row = List().visualItemRect(List().item(1, Count)).center();
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, row);
  EXPECT_TRUE(Dialog.isVisible());
  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, row);
  EXPECT_FALSE(Dialog.isVisible());
  EXPECT_EQ(Dialog.result(), QDialog::Accepted);
  Dialog.show();
  Dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->click();
  EXPECT_FALSE(Dialog.isVisible());
  EXPECT_EQ(Dialog.result(), QDialog::Rejected);
}

TEST_F(TrackDialogTest, TabGoesOnFromTheList) {
  Dialog.activateWindow();
  QTest::keyClick(&List(), Qt::Key_Tab);
  EXPECT_EQ(Dialog.focusWidget()->objectName(), "Text_Notes");
  QTest::keyClick(Dialog.focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(Dialog.focusWidget()->objectName(), "Combo_Second");
}

TEST(TrackDialog, PictureIsOfTheFirstSubtitleThatHasOne) {
  ImportedFile file;
  file.Tracks.push_back(TrackOf(
      Join({FourCodes(PacketBuilder().Contrast(0, 0, 0, 0)),
            PacketBuilder().Time(1 * Second).WithoutColour().Build(),
            FourCodes(PacketBuilder().Time(2 * Second)), FourCodes(PacketBuilder().Time(3 * Second))}),
      {}));
  const DvdPalette present = AllOf(Green);
  const TrackDialog dialog("movie.vob", file, present, nullptr);
  const QTableWidgetItem& picture = *dialog.findChild<QTableWidget*>("List_Tracks")->item(0, Picture);
  EXPECT_FALSE(picture.icon().isNull());
  EXPECT_EQ(picture.text(), "");
}

TEST(TrackDialog, WhatATrackLacksIsSaid) {
  ImportedFile file;
  file.Tracks.push_back(TrackOf(FourCodes(PacketBuilder().Contrast(0, 0, 0, 0)), {}));
  const DvdPalette present = AllOf(Green);
  const TrackDialog dialog("movie.vob", file, present, nullptr);
  const auto& list = *dialog.findChild<QTableWidget*>("List_Tracks");
  EXPECT_EQ(list.item(0, Picture)->text(), "none");
  EXPECT_EQ(list.item(0, Colours)->text(), "none");
  EXPECT_EQ(list.item(0, Colours)->toolTip(), "The present palette would stay");
}

TEST(TrackDialog, SecondTrackStaysChosenWhileAnotherFirstOneIs) {
  ImportedFile file = TwoTracks();
  file.Tracks.push_back(TrackOf(FourCodes(PacketBuilder()), {}));
  const DvdPalette present = AllOf(Green);
  const TrackDialog dialog("movie.vob", file, present, nullptr);
  auto& list = *dialog.findChild<QTableWidget*>("List_Tracks");
  dialog.findChild<QComboBox*>("Combo_Second")->setCurrentIndex(2);
  ASSERT_EQ(dialog.Choice().Second, 2U);
  list.setCurrentCell(1, 0);
  EXPECT_EQ(dialog.Choice().Track, 1U);
  EXPECT_EQ(dialog.Choice().Second, 2U);
}

TEST(LanguageText, CodesOfTwoAndThreeLettersAndTags) {
  EXPECT_EQ(LanguageText("de"), "German (de)");
  EXPECT_EQ(LanguageText("ger"), "German (ger)");
  EXPECT_EQ(LanguageText("pt-BR"), "Portuguese (pt-BR)");
  EXPECT_EQ(LanguageText("--"), "--");
  EXPECT_EQ(LanguageText(""), "unknown");
}

TEST(ReadForImport, MoreNotesThanARoomIsForAreCounted) {
  ImportedFile file;
  file.Tracks.push_back(TrackOf(ThreeSubtitles(), {}));
  for (int i = 0; i < 15; ++i) {
    file.Notes.push_back("note " + std::to_string(i));
  }
  const QStringList lines = NotesOf(file, file.Tracks[0]).split(u'\n');
  ASSERT_EQ(lines.size(), 13);
  EXPECT_EQ(lines[11], "Note 11");
  EXPECT_EQ(lines[12], "And 3 more");
}

}  // namespace
}  // namespace quillmark::test
