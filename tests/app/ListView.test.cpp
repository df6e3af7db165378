#include <algorithm>
#include <set>

#include <QAccessible>
#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QSplitter>
#include <QTemporaryDir>

#include "app/Document.h"
#include "app/TimeStrip.h"
#include "tests/app/ListTest.h"

namespace quillmark::test {
namespace {

// Pictures

TEST_F(ListTest, PicturesHaveTheColoursOfThePalette) {
  LoadStream(ThreeSubtitles());
  EXPECT_TRUE(Shows(1, column::Picture, TextColour));
  Dialogs.ExpectColour(QColor(10, 120, 30));
  Click("Label1_1");
  EXPECT_TRUE(Shows(1, column::Picture, QColor(10, 120, 30)));
  EXPECT_FALSE(Shows(1, column::Picture, TextColour));
  EXPECT_TRUE(Shows(1, column::Codes, QColor(10, 120, 30)));
  Action("Undo").trigger();
  EXPECT_TRUE(Shows(1, column::Picture, TextColour));
}

TEST_F(ListTest, PicturesChangeWithEdits) {
  LoadStream(ThreeSubtitles());
  const QColor entry7(251, 99, 251);
  EXPECT_FALSE(Shows(1, column::Picture, entry7));
  Choose("ImageCombo2", "7");
  EXPECT_FALSE(Shows(1, column::Picture, entry7));
  Click("Command_SetAll");
  EXPECT_TRUE(Shows(1, column::Picture, entry7));
  Action("Undo").trigger();
  EXPECT_FALSE(Shows(1, column::Picture, entry7));
}

// Merging

TEST_F(ListTest, MergedRowShowsBothPicturesAndTheSecondNumber) {
  LoadStream(PrimaryStream({{0, 100}, {200, 100}, {400, 100}}));
  MergeInTheList(SecondaryStream({0, 190, 400, 600}));
  EXPECT_EQ(Cell(1, column::Number), "2 + 2");
  EXPECT_EQ(Cell(2, column::Number), "3 + 3");
  const QString said = List().model()->index(1, column::Number).data(Qt::AccessibleTextRole).toString();
  EXPECT_TRUE(said.contains(", under subtitle 2 of the second stream")) << said.toStdString();
  // The primary's two lines, four of the empty ones, the secondary's two.
  const QImage cell = Drawn(1, column::Picture);
  std::vector<int> lines;
  for (int y = 0; y < cell.height(); ++y) {
    for (int x = 0; x < cell.width(); ++x) {
      if (cell.pixelColor(x, y) == TextColour) {
        lines.push_back(y);
        break;
      }
    }
  }
  ASSERT_EQ(lines.size(), 4U);
  EXPECT_EQ(lines[3] - lines[0], 7);
  Action("LeaveMerge").trigger();
  EXPECT_EQ(Cell(1, column::Number), "2");
}

TEST_F(ListTest, PaletteGivesItsPlaceToTheListWhileMerging) {
  LoadStream(PrimaryStream({{0, 100}}));
  Window.resize(1300, 720);
  QCoreApplication::processEvents();
  const int before = List().height();
  ASSERT_TRUE(Control<QWidget>("Label1_0").isVisible());
  MergeInTheList(SecondaryStream({0}));
  EXPECT_FALSE(Control<QWidget>("Label1_0").isVisible());
  QCoreApplication::processEvents();
  EXPECT_GT(List().height(), before + 60);
  EXPECT_FALSE(Action("SetSelected").isEnabled());
  Window.resize(1700, 720);
  QCoreApplication::processEvents();
  EXPECT_TRUE(Control<QWidget>("Label1_0").isVisible());
  Action("LeaveMerge").trigger();
  Window.resize(1300, 720);
  QCoreApplication::processEvents();
  EXPECT_TRUE(Control<QWidget>("Label1_0").isVisible());
}

TEST_F(ListTest, RowIsAJumpWhileMerging) {
  LoadStream(PrimaryStream({{0, 100}, {200, 100}, {400, 100}}));
  MergeInTheList(SecondaryStream({0, 200, 400}));
  ClickRow(3);
  EXPECT_EQ(TextOf("Text_SubNum"), "3");
  EXPECT_EQ(ShownSecondaries(), std::vector<int>({2}));
}

TEST_F(ListTest, RowWithAnInvalidSecondaryFailsAsGoToDoes) {
  LoadStream(PrimaryStream({{0, 100}, {200, 100}}));
  MergeInTheList(
      Join({FourCodes(PacketBuilder().Time(0)), PacketBuilder().Time(200'000).WithoutColour().Build()}));
  EXPECT_TRUE(Shows(1, column::Picture, TextColour));  // the primary alone
  Dialogs.ExpectMessage("Error converting subtitle!");
  ClickRow(2);
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text_SubNum"), "?");
}

TEST_F(ListTest, NumbersOfBothStreamsHaveRoomWhileMerging) {
  LoadStream(PrimaryStream({{0, 100}, {200, 100}}));
  const int alone = List().columnWidth(column::Number);
  MergeInTheList(SecondaryStream({0}));
  EXPECT_GE(List().columnWidth(column::Number), alone + List().fontMetrics().horizontalAdvance(" + 0000"));
  Action("LeaveMerge").trigger();
  EXPECT_EQ(List().columnWidth(column::Number), alone);
  List().setColumnWidth(column::Number, 133);  // as the user likes it
  MergeInTheList(SecondaryStream({0}));
  EXPECT_EQ(List().columnWidth(column::Number), 133);
  Action("LeaveMerge").trigger();
  EXPECT_EQ(List().columnWidth(column::Number), 133);
}

TEST_F(ListTest, StripHasALaneForTheSecondStreamWhileMerging) {
  LoadStream(PrimaryStream({{0, 100}, {200, 100}}));
  auto& strip = Control<TimeStrip>("Strip_Time");
  const int alone = strip.sizeHint().height();
  MergeInTheList(SecondaryStream({0}));
  EXPECT_GT(strip.sizeHint().height(), alone);
  strip.ZoomAt(10, 4);
  const double span = strip.View().Span;
  Window.Content().SetYOffset(10);
  QCoreApplication::processEvents();
  EXPECT_EQ(strip.View().Span, span) << "what is seen of the film stays";
  Action("LeaveMerge").trigger();
  EXPECT_EQ(strip.sizeHint().height(), alone);
}

// The strip of time

TEST_F(ListTest, StripMarksTheSubtitlesWithProblems) {
  // Below the frame, or not.
  const auto shown = [this](unsigned y) {
    LoadStream(Join({FourCodes(PacketBuilder().Time(1 * Second).Delay(100)),
                     FourCodes(PacketBuilder().Time(5 * Second).Delay(100)),
                     FourCodes(PacketBuilder().Time(9 * Second).Delay(100), 100, y)}));
    FindProblems();
    return Control<TimeStrip>("Strip_Time").grab().toImage();
  };
  const QImage sound = shown(400);
  const QImage marked = shown(580);
  const int middle = sound.width() * 3 / 4;
  EXPECT_EQ(marked.copy(0, 0, middle, sound.height()), sound.copy(0, 0, middle, sound.height()));
  EXPECT_NE(marked, sound);
}

TEST_F(ListTest, FilmOfOneSubtitleIsShownAndLookedThrough) {
  LoadStream(FourCodes(PacketBuilder().Time(Second).Delay(80), 100, 580));
  auto& strip = Control<TimeStrip>("Strip_Time");
  EXPECT_EQ(strip.SubtitleAt(strip.width() / 2), 0U);
  FindProblems();
  EXPECT_EQ(ProblemCount(), "1 subtitle, 1 with problems");
}

// Room

TEST_F(ListTest, TwoRowsStayHoweverMuchRoomTheProblemsTake) {
  LoadStream(ThreeSubtitles());
  Control<QSplitter>("Splitter_Problems").setSizes({0, 2000});
  QCoreApplication::processEvents();
  EXPECT_GE(List().height(), List().horizontalHeader()->height() + 2 * 24);
}

// Copying

TEST_F(ListTest, CopyPutsTheRowsOnTheClipboard) {
  LoadStream(ThreeSubtitles());
  for (int column = 3; column < 11; ++column) {
    Action("Column_" + QString::number(column)).trigger();
  }
  Action("Column_1").trigger();
  ClickRow(3);
  ClickRow(1, Qt::ControlModifier);
  Press(Qt::Key_C, Qt::ControlModifier);
  const QMimeData* copied = QApplication::clipboard()->mimeData();
  EXPECT_EQ(copied->text(), "1\t00:00:01.00\n3\t00:00:09.00\n");
  EXPECT_FALSE(copied->hasImage());
  ClickRow(2);
  Action("Copy").trigger();
  copied = QApplication::clipboard()->mimeData();
  EXPECT_EQ(copied->text(), "2\t00:00:05.00\n");
  const auto picture = copied->imageData().value<QImage>();
  ASSERT_EQ(picture.size(), QSize(8, 2));
  EXPECT_EQ(picture.pixelColor(2, 0), TextColour);
  EXPECT_EQ(picture.pixelColor(0, 0).alpha(), 0);
}

TEST_F(ListTest, CopyInAFieldIsTheFields) {
  LoadStream(ThreeSubtitles());
  Type("abc");
  auto& field = Control<QLineEdit>("Text_Filter");
  Window.activateWindow();
  field.setFocus();
  QCoreApplication::processEvents();
  field.selectAll();
  QTest::keyClick(&field, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "abc");
}

// Columns

TEST_F(ListTest, ColumnsHideAndOneStays) {
  LoadStream(ThreeSubtitles());
  Action("Column_1").trigger();
  EXPECT_TRUE(List().isColumnHidden(1));
  EXPECT_EQ(List().horizontalHeader()->actions().size(), 11);
  for (int column = 0; column < 11; ++column) {
    if (Action("Column_" + QString::number(column)).isChecked()) {
      Action("Column_" + QString::number(column)).trigger();
    }
  }
  // The twelfth is that of comparisons, hidden while there is none.
  EXPECT_EQ(List().horizontalHeader()->hiddenSectionCount(), 11);
  EXPECT_TRUE(Action("Column_10").isChecked());
  EXPECT_FALSE(List().isColumnHidden(10));
}

TEST_F(ListTest, ColumnsInSightStayWhileOneGoesThroughTheRows) {
  LoadStream(ManySubtitles(60));
  List().setColumnWidth(column::Start, 3000);
  QCoreApplication::processEvents();
  const QScrollBar& sideways = *List().horizontalScrollBar();
  Press(Qt::Key_Right);
  const int one = sideways.value();
  EXPECT_GT(one, 0);
  Press(Qt::Key_Right);
  const int two = sideways.value();
  EXPECT_GT(two, one);
  Press(Qt::Key_Left);
  EXPECT_EQ(sideways.value(), one);
  for (const int key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Home, Qt::Key_PageDown}) {
    Press(key);
    EXPECT_EQ(sideways.value(), one) << key;
  }
  List().setLayoutDirection(Qt::RightToLeft);
  QCoreApplication::processEvents();
  const int before = sideways.value();
  Press(Qt::Key_Left);
  EXPECT_GT(sideways.value(), before) << "to what is written behind";
}

TEST_F(ListTest, KeysDoNothingWithoutASubtitle) {
  for (const int key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Home, Qt::Key_Left, Qt::Key_5}) {
    Press(key);
    EXPECT_EQ(CurrentRow(), 0) << key;
  }
}

class ListMemory : public testing::Test {
 protected:
  ListMemory() { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.path()); }
  ~ListMemory() override {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       qEnvironmentVariable("XDG_CONFIG_HOME"));
  }
  static void Show(frmTest& window) {
    window.RememberUser();
    window.show();
    QCoreApplication::processEvents();
  }

 private:
  QTemporaryDir folder_;
};

TEST_F(ListMemory, ColumnsSplittersAndHidingAreRemembered) {
  int problems = 0;
  {
    frmTest window;
    Show(window);
    auto* header = window.findChild<QTableView*>("List_Subtitles")->horizontalHeader();
    header->moveSection(0, 3);
    header->resizeSection(2, 133);
    window.findChild<QAction*>("Action_Column_5")->trigger();
    auto* splitter = window.findChild<QSplitter*>("Splitter_Problems");
    splitter->setSizes({150, 90});
    problems = splitter->sizes().last();
    window.findChild<QAction*>("Action_List")->trigger();
    window.close();
  }
  frmTest window;
  Show(window);
  EXPECT_FALSE(window.findChild<QAction*>("Action_List")->isChecked());
  EXPECT_FALSE(window.findChild<QTableView*>("List_Subtitles")->isVisible());
  window.findChild<QAction*>("Action_List")->trigger();
  QCoreApplication::processEvents();
  auto* header = window.findChild<QTableView*>("List_Subtitles")->horizontalHeader();
  EXPECT_EQ(header->visualIndex(0), 3);
  EXPECT_EQ(header->sectionSize(2), 133);
  EXPECT_TRUE(header->isSectionHidden(5));
  EXPECT_FALSE(window.findChild<QAction*>("Action_Column_5")->isChecked());
  EXPECT_EQ(window.findChild<QSplitter*>("Splitter_Problems")->sizes().last(), problems);
}

/// Also where the window is too narrow for it at first.
TEST_F(ListMemory, SplitterBesideTheListIsRemembered) {
  const auto widen = [](frmTest& window) {
    window.resize(1700, 720);
    QCoreApplication::processEvents();
  };
  QList<int> sizes;
  {
    frmTest window;
    Show(window);
    widen(window);
    auto* splitter = window.findChild<QSplitter*>("Splitter_List");
    splitter->setSizes({splitter->sizes()[0] + 60, splitter->sizes()[1] - 60});
    sizes = splitter->sizes();
    window.resize(1300, 720);
    QCoreApplication::processEvents();
    window.close();
  }
  {
    frmTest window;
    Show(window);
    widen(window);
    EXPECT_EQ(window.findChild<QSplitter*>("Splitter_List")->sizes(), sizes);
    window.close();
  }
  frmTest window;
  Show(window);
  EXPECT_EQ(window.findChild<QSplitter*>("Splitter_List")->sizes(), sizes);
}

TEST_F(ListTest, ColumnsThatWouldAllBeHiddenAreNotRestored) {
  LoadStream(ThreeSubtitles());
  auto& list = *Window.findChild<SubtitleList*>();
  QHeaderView& header = *List().horizontalHeader();
  header.hideSection(column::Number);
  const QByteArray withoutNumber = list.ColumnState();
  for (int column = 0; column <= column::Problems; ++column) {
    header.hideSection(column);
  }
  header.showSection(column::Problems + 1);  // that of a comparison, which is hidden without one
  const QByteArray none = list.ColumnState();
  for (int column = 0; column <= column::Problems; ++column) {
    header.showSection(column);
  }
  header.hideSection(column::Problems + 1);
  list.Restore(none, list.SplitterState());
  EXPECT_FALSE(List().isColumnHidden(column::Start));
  EXPECT_TRUE(List().isColumnHidden(column::Problems + 1));
  // The current cell is the one that assistive tools tell.
  EXPECT_EQ(List().currentIndex().column(), column::Number);
  list.Restore(withoutNumber, list.SplitterState());
  EXPECT_TRUE(List().isColumnHidden(column::Number));
  EXPECT_EQ(List().currentIndex().column(), column::Picture);
}

// Assistive tools

TEST_F(ListTest, EveryRowSaysInASentenceWhatItIs) {
  LoadStream(Join(
      {FourCodes(PacketBuilder().Time(Second).Delay(225)), FourCodes(PacketBuilder().Time(5 * Second))}));
  FindProblems();
  QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&List());
  EXPECT_EQ(list->text(QAccessible::Name), "Subtitles");
  QAccessibleTableInterface* table = list->tableInterface();
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->rowCount(), 2);
  EXPECT_EQ(table->cellAt(0, 0)->text(QAccessible::Name), "Subtitle 1, 0:00:01.00, 2.5 seconds");
  EXPECT_EQ(table->cellAt(1, 0)->text(QAccessible::Name),
            "Subtitle 2, 0:00:05.00, one problem: no end of its own");
  Action("Column_0").trigger();
  EXPECT_EQ(table->cellAt(0, 1)->text(QAccessible::Name), "Subtitle 1, 0:00:01.00, 2.5 seconds");
  ClickRow(2);
  EXPECT_EQ(List().currentIndex().column(), 1);
  for (const char* name : {"Text_Filter", "Combo_Filter", "Text_Problems", "Strip_Time"}) {
    QAccessibleInterface* control = QAccessible::queryAccessibleInterface(&Control<QWidget>(name));
    EXPECT_NE(control->text(QAccessible::Name), "") << name;
  }
}

TEST_F(ListTest, ColumnThatIsMovedToTheFrontSaysWhatTheRowIs) {
  LoadStream(ThreeSubtitles());
  List().horizontalHeader()->moveSection(column::Start, 0);
  QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(&List())->tableInterface();
  EXPECT_TRUE(table->cellAt(1, column::Start)->text(QAccessible::Name).startsWith("Subtitle 2, "));
  EXPECT_EQ(List().currentIndex().column(), column::Start);
}

/// Each row as soon as it is known.
TEST_F(ListTest, ProblemsThatAreFoundAreToldOfTheirRows) {
  const QSignalSpy told(List().model(), &QAbstractItemModel::dataChanged);
  LoadStream(InvalidSecond());
  FindProblems();
  std::set<int> rows;
  for (const QList<QVariant>& change : told) {
    for (int row = change[0].toModelIndex().row(); row <= change[1].toModelIndex().row(); ++row) {
      rows.insert(row);
    }
  }
  EXPECT_EQ(rows, (std::set{0, 1, 2}));
}

// Other screens

class ListScale : public ListTest, public testing::WithParamInterface<int> {};

TEST_P(ListScale, PictureHasThePixelsOfTheScreen) {
  constexpr double Scales[] = {1, 1.25, 2};
  constexpr int Screens[] = {0, 1, 4};
  const double scale = Scales[GetParam()];
  Window.setScreen(QGuiApplication::screens().at(Screens[GetParam()]));
  Window.resize(1300, 720);
  QCoreApplication::processEvents();
  ASSERT_DOUBLE_EQ(Window.devicePixelRatioF(), scale);
  LoadStream(ThreeSubtitles());
  const QImage cell = Drawn(1, column::Picture);
  EXPECT_EQ(cell.height(), qRound(24 * scale));
  int found = 0;
  for (int y = 0; y < cell.height(); ++y) {
    for (int x = 0; x < cell.width(); ++x) {
      found += cell.pixelColor(x, y) == TextColour ? 1 : 0;
    }
  }
  const int side = static_cast<int>(scale);
  EXPECT_EQ(found, 4 * side * side);
}

INSTANTIATE_TEST_SUITE_P(Scales, ListScale, testing::Range(0, 3));

}  // namespace
}  // namespace quillmark::test
