#include <QCheckBox>
#include <QGuiApplication>
#include <QScreen>

#include "app/SubtitleFrame.h"
#include "tests/app/ListTest.h"

namespace quillmark::test {
namespace {

constexpr int ComparedColumn = 11;

/// ThreeSubtitles() as another file has them: the second half a second later, two pixels of the third in code
/// 0 instead of 1, and a fourth.
Bytes OtherSubtitles() {
  return Join(
      {FourCodes(PacketBuilder().Time(1 * Second).Delay(100), 100, 400),
       FourCodes(PacketBuilder().Time(5 * Second + Second / 2).Delay(100), 100, 420),
       WithFields(FourCodes(PacketBuilder().Time(9 * Second).Delay(100), 100, 440), {0x89, 0xAB, 0x88, 0xAB}),
       FourCodes(PacketBuilder().Time(13 * Second).Delay(100), 100, 460)});
}

class CompareFile : public ListTest {
 protected:
  void CompareWith(const Bytes& other) {
    Dialogs.ExpectOpen(Write("other.sup", other));
    Action("Compare").trigger();
    Dialogs.Verify();
    QCoreApplication::processEvents();
  }
  void LoadAndCompare() {
    LoadStream(ThreeSubtitles());
    CompareWith(OtherSubtitles());
  }
  [[nodiscard]] bool IsOpen() const {
    const auto* window = Window.findChild<QWidget*>("CompareWindow");
    return window != nullptr && window->isVisible();
  }
  [[nodiscard]] QString Counts() const { return TextOfLabel("Label_Differences"); }
  [[nodiscard]] QString TextOfLabel(const QString& name) const { return Control<QLabel>(name).text(); }
  [[nodiscard]] QTableView& Differences() const { return Control<QTableView>("List_Differences"); }
  [[nodiscard]] QStringList Difference(int row) const {
    QStringList cells;
    for (int column = 0; column < 4; ++column) {
      cells.append(Differences().model()->index(row, column).data().toString());
    }
    return cells;
  }
  void PressInDifferences(Qt::Key key) {
    QTest::keyClick(&Differences(), key);
    // The window goes there after the key's event, and the list follows after the window's.
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
  }
  /// What assistive tools tell of a row of the list.
  [[nodiscard]] QString Sentence(int row) const {
    return List().model()->index(row, column::Number).data(Qt::AccessibleTextRole).toString();
  }
};

TEST_F(CompareFile, TellsWhatDiffers) {
  LoadAndCompare();
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(Counts(), "1 subtitle the same, 2 different (1 moved in time, 1 with other pixels), 1 added");
  ASSERT_EQ(Differences().model()->rowCount(), 3);
  EXPECT_EQ(Difference(0), (QStringList{"2", "2", "00:00:05.00", "moved in time"}));
  EXPECT_EQ(Difference(1), (QStringList{"3", "3", "00:00:09.00", "2 other pixels"}));
  EXPECT_EQ(Difference(2), (QStringList{"-", "4", "00:00:13.00", "added"}));
  EXPECT_EQ(Differences().model()->index(2, 0).data(Qt::AccessibleTextRole).toString(),
            "None here, subtitle 4 in the other file, 00:00:13.00, added");
}

TEST_F(CompareFile, IsThereForAStreamThatIsNotMerged) {
  const auto& compare = *Window.findChild<QAction*>("Action_Compare");
  EXPECT_FALSE(compare.isEnabled());
  LoadStream(ThreeSubtitles());
  EXPECT_TRUE(compare.isEnabled());
  Merge(SecondaryStream({0}));
  EXPECT_FALSE(compare.isEnabled());
}

TEST_F(CompareFile, WindowThatIsOpenComesToTheFront) {
  class Raised : public QObject {
   public:
    int Times = 0;

   protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
      Times += event->type() == QEvent::ZOrderChange ? 1 : 0;
      return false;
    }
  };
  LoadAndCompare();
  auto& window = Control<QWidget>("CompareWindow");
  Window.activateWindow();
  QCoreApplication::processEvents();
  ASSERT_EQ(QApplication::activeWindow(), &Window);
  Raised raised;
  window.installEventFilter(&raised);
  CompareWith(OtherSubtitles());
  EXPECT_EQ(raised.Times, 1);
  EXPECT_EQ(QApplication::activeWindow(), &window);
}

TEST_F(CompareFile, NumbersStandAtTheRightAndTextsAtTheLeft) {
  LoadAndCompare();
  QList<int> alignments;
  for (int column = 0; column < 4; ++column) {
    alignments.append(Differences().model()->index(0, column).data(Qt::TextAlignmentRole).toInt());
  }
  constexpr int Right = Qt::AlignRight | Qt::AlignVCenter;
  constexpr int Left = Qt::AlignLeft | Qt::AlignVCenter;
  EXPECT_EQ(alignments, (QList<int>{Right, Right, Left, Left}));
}

TEST_F(CompareFile, TellsOfOtherBytesAfterTheLastSubtitle) {
  LoadStream(ThreeSubtitles());
  CompareWith(Join({ThreeSubtitles(), {0x01, 0x02}}));
  EXPECT_EQ(Counts(), "3 subtitles the same, other bytes after the last subtitle");
}

TEST_F(CompareFile, ShowsAlsoTheSameWhereAskedTo) {
  LoadAndCompare();
  QTest::mouseClick(&Control<QCheckBox>("Check_OnlyDifferences"), Qt::LeftButton, {}, QPoint(5, 8));
  ASSERT_EQ(Differences().model()->rowCount(), 4);
  EXPECT_EQ(Difference(0), (QStringList{"1", "1", "00:00:01.00", "the same"}));
  EXPECT_EQ(Differences().currentIndex().row(), 0);
}

TEST_F(CompareFile, ListMarksItsRowsUntilTheWindowIsClosed) {
  LoadStream(ThreeSubtitles());
  EXPECT_TRUE(List().isColumnHidden(ComparedColumn));
  CompareWith(OtherSubtitles());
  EXPECT_FALSE(List().isColumnHidden(ComparedColumn));
  EXPECT_EQ(List().horizontalHeader()->visualIndex(ComparedColumn), 3) << "in sight, behind the start";
  EXPECT_EQ(Cell(0, ComparedColumn), "");
  EXPECT_EQ(Cell(1, ComparedColumn), "moved in time");
  EXPECT_EQ(Cell(2, ComparedColumn), "2 other pixels");
  const QModelIndex moved = List().model()->index(1, ComparedColumn);
  EXPECT_EQ(moved.data(Qt::ToolTipRole).toString(), "<qt>moved in time");
  EXPECT_TRUE(Sentence(2).endsWith(", compared: 2 other pixels")) << Sentence(2).toStdString();
  PressInDifferences(Qt::Key_Escape);
  EXPECT_FALSE(IsOpen());
  EXPECT_TRUE(List().isColumnHidden(ComparedColumn));
  EXPECT_EQ(Cell(2, ComparedColumn), "");
  EXPECT_FALSE(Sentence(2).contains("compared"));
}

TEST_F(CompareFile, WindowGoesToTheChosenDifference) {
  LoadAndCompare();
  PressInDifferences(Qt::Key_Down);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(CurrentRow(), 2);
  PressInDifferences(Qt::Key_Down);
  EXPECT_EQ(TextOf("Text_SubNum"), "3");
}

TEST_F(CompareFile, AddedSubtitleIsShownWhereverOneIs) {
  LoadAndCompare();
  PressInDifferences(Qt::Key_End);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(TextOfLabel("Label_TitleHere"), "Here: none");
  EXPECT_EQ(TextOfLabel("Label_TitleThere"), "other.sup: subtitle 4");
}

TEST_F(CompareFile, FollowsTheWindow) {
  LoadAndCompare();
  EXPECT_FALSE(Differences().currentIndex().isValid());
  EXPECT_EQ(TextOfLabel("Label_TitleThere"), "other.sup: subtitle 1");
  Click("Command_Next");
  EXPECT_EQ(Differences().currentIndex().row(), 0);
  EXPECT_EQ(TextOfLabel("Label_TitleThere"), "other.sup: subtitle 2");
  Click("Command_Prev");
  EXPECT_FALSE(Differences().currentIndex().isValid());
}

TEST_F(CompareFile, WhatDiffersIsBold) {
  LoadAndCompare();
  GoTo("2");
  for (const auto& [label, start] : {std::pair("Label_FactsHere", "<b>Start&nbsp;00:00:05.00</b>"),
                                     std::pair("Label_FactsThere", "<b>Start&nbsp;00:00:05.50</b>")}) {
    const QString facts = TextOfLabel(label);
    EXPECT_TRUE(facts.contains(start)) << facts.toStdString();
    EXPECT_TRUE(facts.contains("Place&nbsp;100,&nbsp;420")) << facts.toStdString();
    EXPECT_FALSE(facts.contains("<b>Place")) << facts.toStdString();
  }
}

TEST_F(CompareFile, BothPicturesAreInThePalettesColours) {
  LoadAndCompare();
  GoTo("3");
  const QImage here = static_cast<SubtitleFrame&>(Control<QWidget>("Frame_Here")).Picture();
  const QImage there = static_cast<SubtitleFrame&>(Control<QWidget>("Frame_There")).Picture();
  EXPECT_EQ(here.pixelColor(2, 1), TextColour);
  EXPECT_EQ(there.pixelColor(2, 0), TextColour);
  EXPECT_EQ(there.pixelColor(2, 1).alpha(), 0);
}

TEST_F(CompareFile, IsMadeAnewAfterAnEditAndItsUndo) {
  LoadAndCompare();
  Choose("ImageCombo2", "7");
  Click("Command_SetActual");
  QCoreApplication::processEvents();
  EXPECT_EQ(Difference(0), (QStringList{"1", "1", "00:00:01.00", "other colours"}));
  EXPECT_EQ(Cell(0, ComparedColumn), "other colours");
  Action("Undo").trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(Cell(0, ComparedColumn), "");
  EXPECT_EQ(Difference(0).front(), "2");
}

TEST_F(CompareFile, IsClosedByAnotherStreamAndByMerging) {
  LoadAndCompare();
  LoadStream(ThreeSubtitles());
  EXPECT_FALSE(IsOpen());
  EXPECT_TRUE(List().isColumnHidden(ComparedColumn));
  CompareWith(OtherSubtitles());
  EXPECT_TRUE(IsOpen());
  Merge(ThreeSubtitles());
  EXPECT_FALSE(IsOpen());
  EXPECT_TRUE(List().isColumnHidden(ComparedColumn));
  EXPECT_FALSE(Action("Compare").isEnabled());
}

TEST_F(CompareFile, UnreadableFileIsNamedAndChangesNothing) {
  EXPECT_FALSE(Action("Compare").isEnabled());
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  const QString text = Write("text.sup", QByteArray("This is no subtitle stream."));
  Dialogs.ExpectOpen(text);
  Dialogs.ExpectMessage("Cannot read " + text + ": No SUP signature found");
  Action("Compare").trigger();
  Dialogs.Verify();
  EXPECT_FALSE(IsOpen());
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(TextOf("Text1"), Path("movie.sup"));
}

TEST_F(CompareFile, OneColumnStaysBesidesTheMarks) {
  LoadAndCompare();
  for (int column = 0; column < ComparedColumn; ++column) {
    Action(QStringLiteral("Column_") + QString::number(column)).setChecked(false);
  }
  EXPECT_TRUE(Action("Column_10").isChecked());
  PressInDifferences(Qt::Key_Escape);
  EXPECT_FALSE(List().isColumnHidden(column::Problems));
}

TEST_F(CompareFile, SubtitleThatCannotBeShownDiffersInAllThatIsToldOfTheOther) {
  LoadStream(ThreeSubtitles());
  CompareWith(InvalidSecond());
  GoTo("2");
  EXPECT_EQ(TextOfLabel("Label_FactsThere"),
            "Start&nbsp;00:00:05.00 &nbsp; <b>cannot&nbsp;be&nbsp;shown</b>");
  const QString here = TextOfLabel("Label_FactsHere");
  EXPECT_TRUE(here.startsWith("Start&nbsp;00:00:05.00 &nbsp; <b>End")) << here.toStdString();
  EXPECT_TRUE(here.endsWith("<b>Forced&nbsp;no</b>")) << here.toStdString();
}

TEST_F(CompareFile, BothListAndPicturesGrowWithTheWindowThePicturesMore) {
  LoadAndCompare();
  auto& window = Control<QWidget>("CompareWindow");
  const int list = Differences().height();
  const int picture = Control<QWidget>("Frame_Here").height();
  window.resize(window.width(), window.height() + 350);
  QCoreApplication::processEvents();
  const int grown = Differences().height() - list;
  EXPECT_GT(grown, 50);
  EXPECT_GT(Control<QWidget>("Frame_Here").height() - picture, grown);
}

TEST(SubtitleFrame, DrawsThePictureAtItsPlaceAsLargeAsThereIsRoom) {
  SubtitleFrame frame(576, nullptr);
  frame.resize(1500, 1152);  // two pixels to one, and 30 too many at each side
  QImage picture(2, 1, QImage::Format_ARGB32);
  picture.setPixelColor(0, 0, Qt::red);
  picture.setPixelColor(1, 0, Qt::green);
  frame.Show(QRect(100, 200, 2, 1), picture);
  const QImage shown = frame.grab().toImage();
  const double scale = shown.width() / 1500.0;
  const auto at = [&](int x, int y) {
    return shown.pixelColor(static_cast<int>((x + 0.5) * scale), static_cast<int>((y + 0.5) * scale));
  };
  EXPECT_EQ(at(30 + 199, 400), QColor(0x40, 0x40, 0x40));
  EXPECT_EQ(at(30 + 200, 400), QColor(Qt::red));
  EXPECT_EQ(at(30 + 201, 401), QColor(Qt::red));
  EXPECT_EQ(at(30 + 202, 400), QColor(Qt::green));
  EXPECT_EQ(at(30 + 204, 400), QColor(0x40, 0x40, 0x40));
}

TEST(SubtitleFrame, DrawsInTheScreensOwnPixels) {
  SubtitleFrame frame(576, nullptr);
  frame.setScreen(QGuiApplication::screens().at(4));
  frame.setGeometry(QRect(frame.screen()->geometry().topLeft(), QSize(720, 576)));
  frame.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&frame));
  ASSERT_EQ(frame.devicePixelRatioF(), 2);
  QImage picture(2, 1, QImage::Format_ARGB32);
  picture.setPixelColor(0, 0, Qt::red);
  picture.setPixelColor(1, 0, Qt::green);
  frame.Show(QRect(100, 200, 2, 1), picture);
  const QImage shown = frame.grab().toImage();
  ASSERT_EQ(shown.size(), QSize(1440, 1152));
  const QColor ground(0x40, 0x40, 0x40);
  EXPECT_EQ(shown.pixelColor(199, 400), ground);
  EXPECT_EQ(shown.pixelColor(200, 400), QColor(Qt::red));
  EXPECT_EQ(shown.pixelColor(201, 401), QColor(Qt::red));
  EXPECT_EQ(shown.pixelColor(202, 400), QColor(Qt::green));
  EXPECT_EQ(shown.pixelColor(204, 400), ground);
  EXPECT_EQ(shown.pixelColor(1439, 1151), ground);
}

}  // namespace
}  // namespace quillmark::test
