#include <QComboBox>
#include <QScrollBar>
#include <QStatusBar>

#include "app/Document.h"
#include "app/TimeStrip.h"
#include "tests/app/ListTest.h"

namespace quillmark::test {
namespace {

using Rows = std::vector<int>;

/// Gives the place that it clicks.
QPoint ClickBarOfTheSecond(TimeStrip& strip) {
  int x = 0;
  while (x < strip.width() && strip.SubtitleAt(x) != 1U) {
    ++x;
  }
  const QPoint place(x + 2, strip.height() / 2);
  QTest::mouseClick(&strip, Qt::LeftButton, {}, place);
  QCoreApplication::processEvents();
  return place;
}

TEST_F(ListTest, ShowsEverySubtitle) {
  LoadStream(ThreeSubtitles());
  ASSERT_EQ(List().model()->rowCount(), 3);
  EXPECT_EQ(Count(), "3 of 3");
  EXPECT_EQ(Cell(1, column::Number), "2");
  EXPECT_EQ(Cell(1, column::Start), "00:00:05.00");
}

TEST_F(ListTest, IsEmptyBeforeAStreamAndAfterACancelledLoad) {
  EXPECT_EQ(List().model()->rowCount(), 0);
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  EXPECT_EQ(List().model()->rowCount(), 0);
  EXPECT_EQ(Count(), "0 of 0");
  EXPECT_EQ(ProblemCount(), "");
  Click("Command_Reopen");
  EXPECT_EQ(List().model()->rowCount(), 3);
  EXPECT_EQ(CurrentRow(), 1);
}

TEST_F(ListTest, FollowsTheWindow) {
  LoadStream(ManySubtitles(60));
  EXPECT_EQ(CurrentRow(), 1);
  Click("Command_Next");
  EXPECT_EQ(CurrentRow(), 2);
  EXPECT_EQ(SelectedRows(), Rows{2});
  GoTo("50");
  EXPECT_EQ(CurrentRow(), 50);
  EXPECT_EQ(SelectedRows(), Rows{50});
  EXPECT_TRUE(List().viewport()->rect().contains(List().visualRect(List().currentIndex()).center()));
  Click("Command_Prev");
  EXPECT_EQ(CurrentRow(), 49);
  GoTo("60");
  EXPECT_EQ(CurrentRow(), 60);
}

TEST_F(ListTest, WindowFollowsTheKeys) {
  LoadStream(ManySubtitles(60));
  const std::pair<int, const char*> steps[] = {{Qt::Key_Down, "2"}, {Qt::Key_Down, "3"},
                                               {Qt::Key_Up, "2"},   {Qt::Key_End, "60"},
                                               {Qt::Key_Home, "1"}, {Qt::Key_Right, "1"}};
  for (const auto& [key, number] : steps) {
    Press(key);
    EXPECT_EQ(TextOf("Text_SubNum"), number);
  }
  EXPECT_TRUE(List().hasFocus());
}

TEST_F(ListTest, WindowFollowsAClick) {
  LoadStream(ThreeSubtitles());
  ClickRow(3);
  EXPECT_EQ(TextOf("Text_SubNum"), "3");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:09.00");
  EXPECT_FALSE(IsEnabled("Command_Next"));
  EXPECT_TRUE(IsEnabled("Command_Prev"));
}

TEST_F(ListTest, OneSubtitleIsARow) {
  LoadStream(ManySubtitles(1));
  EXPECT_EQ(List().model()->rowCount(), 1);
  EXPECT_EQ(Count(), "1 of 1");
}

TEST_F(ListTest, TypedNumberIsASubtitleToGoTo) {
  LoadStream(ManySubtitles(60));
  Press(Qt::Key_4);
  EXPECT_EQ(TextOf("Text_SubNum"), "4");
  Press(Qt::Key_2);
  EXPECT_EQ(TextOf("Text_SubNum"), "42");
  EXPECT_EQ(CurrentRow(), 42);
}

TEST_F(ListTest, LetterEndsTheNumberThatIsTyped) {
  LoadStream(ManySubtitles(60));
  Press(Qt::Key_1);
  Press(Qt::Key_X);
  Press(Qt::Key_2);
  EXPECT_EQ(CurrentRow(), 2);
}

TEST_F(ListTest, TypedNumberThatIsNoneStaysWhereOneIs) {
  LoadStream(ThreeSubtitles());
  Press(Qt::Key_9);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(ListTest, PageKeysTurnItsPages) {
  LoadStream(ManySubtitles(60));
  Press(Qt::Key_PageDown);
  EXPECT_GT(CurrentRow(), 5);
  EXPECT_LT(CurrentRow(), 60);
  Press(Qt::Key_PageUp);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  Press(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
}

TEST_F(ListTest, InvalidSubtitleIsToldAsByGoTo) {
  LoadStream(InvalidSecond());
  EXPECT_EQ(Cell(1, column::Picture), "cannot be shown");
  Dialogs.ExpectMessage("Error converting subtitle!");
  Press(Qt::Key_Down);
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text_SubNum"), "?");
  EXPECT_EQ(CurrentRow(), 2);
  FindProblems();
  EXPECT_TRUE(Problems().contains("colour")) << Problems().toStdString();
  Press(Qt::Key_Down);
  EXPECT_EQ(TextOf("Text_SubNum"), "3");
}

TEST_F(ListTest, SubtitleIsTriedAgainByReturnAndByAClick) {
  LoadStream(InvalidSecond());
  Dialogs.ExpectMessage("Error converting subtitle!");
  Press(Qt::Key_Down);
  Dialogs.ExpectMessage("Error converting subtitle!");
  Press(Qt::Key_Return);
  Dialogs.ExpectMessage("Error converting subtitle!");
  ClickRow(2);
  Dialogs.ExpectMessage("Error converting subtitle!");
  ClickBarOfTheSecond(Control<TimeStrip>("Strip_Time"));
  Dialogs.Verify();
}

TEST_F(ListTest, SelectionOfSeveralRowsStaysWhileTheWindowFollows) {
  LoadStream(ManySubtitles(9));
  ClickRow(2);
  ClickRow(4, Qt::ShiftModifier);
  ClickRow(7, Qt::ControlModifier);
  EXPECT_EQ(TextOf("Text_SubNum"), "7");
  EXPECT_EQ(SelectedRows(), (Rows{2, 3, 4, 7}));
}

TEST_F(ListTest, SetForSelectedWritesIntoThemAlone) {
  const QString path = LoadStream(ManySubtitles(4));
  ClickRow(2);
  ClickRow(4, Qt::ControlModifier);
  Choose("ImageCombo2", "7");
  Choose("Combo1_3", "A");
  Click("Command_SetSelected");
  Bytes expected = ManySubtitles(4);
  for (const std::size_t subtitle : {1U, 3U}) {
    const std::size_t packet = subtitle * PacketBuilder::Length;
    expected[packet + ColourArguments + 1] = 0x70;
    expected[packet + ContrastArguments] = 0xAF;
  }
  EXPECT_EQ(SavedBytes(), expected);
  EXPECT_EQ(Action("Undo").text().remove(u'&'), "Undo Set for selected");
  EXPECT_EQ(SelectedRows(), (Rows{2, 4}));
  Action("Undo").trigger();
  EXPECT_EQ(SavedBytes(), ManySubtitles(4));
  Action("Redo").trigger();
  EXPECT_EQ(SavedBytes(), expected);
}

TEST_F(ListTest, SetForSelectedLeavesWhatLacksTheCommands) {
  LoadStream(InvalidSecond());
  List().selectAll();
  Choose("ImageCombo2", "7");
  Click("Command_SetSelected");
  const Bytes saved = SavedBytes();
  EXPECT_EQ(saved[ColourArguments + 1], 0x70);
  EXPECT_EQ(saved[2 * PacketBuilder::Length + ColourArguments + 1], 0x70);
  const Bytes before = InvalidSecond();
  EXPECT_TRUE(std::equal(saved.begin() + PacketBuilder::Length, saved.begin() + 2 * PacketBuilder::Length,
                         before.begin() + PacketBuilder::Length));
}

TEST_F(ListTest, SetForSelectedEndsThePreviewOfWhatItWrites) {
  LoadStream(ThreeSubtitles());
  Choose("ImageCombo2", "7");
  ClickRow(2);  // what is shown now is another one
  Choose("ImageCombo2", "7");
  ASSERT_TRUE(Window.Content().IsPreview());
  Click("Command_SetSelected");
  EXPECT_FALSE(Window.Content().IsPreview());
}

TEST_F(ListTest, CommandsOfASelectionNeedOne) {
  EXPECT_FALSE(IsEnabled("Command_SetSelected"));
  EXPECT_FALSE(Action("Copy").isEnabled());
  EXPECT_FALSE(Action("NextProblem").isEnabled());
  LoadStream(ThreeSubtitles());
  EXPECT_TRUE(IsEnabled("Command_SetSelected"));
  EXPECT_TRUE(Action("Copy").isEnabled());
  EXPECT_TRUE(Action("NextProblem").isEnabled());
  List().clearSelection();
  QCoreApplication::processEvents();
  EXPECT_FALSE(IsEnabled("Command_SetSelected"));
  EXPECT_FALSE(Action("Copy").isEnabled());
}

TEST_F(ListTest, FilterNarrowsWhileOneTypes) {
  LoadStream(ManySubtitles(1500));
  Type("100-136");
  EXPECT_EQ(Count(), "37 of 1,500");
  EXPECT_EQ(List().model()->rowCount(), 37);
  EXPECT_EQ(Cell(0, column::Number), "100");
  Type("0:07");
  EXPECT_EQ(Count(), "1 of 1,500");
  EXPECT_EQ(Cell(0, column::Number), "8");
  ClickRow(1);
  EXPECT_EQ(TextOf("Text_SubNum"), "8");
  Type("");
  EXPECT_EQ(Count(), "1,500 of 1,500");
  EXPECT_EQ(CurrentRow(), 8);
}

TEST_F(ListTest, FilterHidesSelectedRowsWithoutForgettingThem) {
  LoadStream(ManySubtitles(9));
  ClickRow(2);
  ClickRow(5, Qt::ControlModifier);
  ClickRow(6, Qt::ControlModifier);
  Type("1-5");
  EXPECT_EQ(SelectedRows(), (Rows{2, 5}));
  Choose("Combo_Filter", "Selected");
  EXPECT_EQ(Count(), "2 of 9");
  EXPECT_EQ(Cell(1, column::Number), "5");
  Choose("Combo_Filter", "All");
  Type("");
  EXPECT_EQ(SelectedRows(), (Rows{2, 5, 6}));
}

TEST_F(ListTest, SelectionIsPickedAnewWhereItIsChosenAgain) {
  LoadStream(ManySubtitles(9));
  ClickRow(2);
  Choose("Combo_Filter", "Selected");
  Choose("Combo_Filter", "All");
  ClickRow(5);
  Choose("Combo_Filter", "Selected");
  EXPECT_EQ(Count(), "1 of 9");
  EXPECT_EQ(Cell(0, column::Number), "5");
}

TEST_F(ListTest, SelectionIsNotThatOfAnotherStream) {
  LoadStream(ManySubtitles(9));
  ClickRow(3);
  ClickRow(5, Qt::ControlModifier);
  Type("1-9");
  LoadStream(ManySubtitles(8));
  EXPECT_EQ(SelectedRows(), Rows{1});
}

TEST_F(ListTest, NothingIsKnownOfAStreamThatIsGone) {
  LoadStream(ManySubtitles(1500));
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  QCoreApplication::processEvents();
  EXPECT_TRUE(Window.findChild<ProblemFinder*>()->Survey().Marks().empty());
}

TEST_F(ListTest, SelectionMadeAmongFewRowsIsTheOneThatStays) {
  LoadStream(ManySubtitles(9));
  ClickRow(2);
  ClickRow(9, Qt::ControlModifier);
  Type("1-5");
  ClickRow(4);
  Type("");
  EXPECT_EQ(SelectedRows(), Rows{4});
}

TEST_F(ListTest, FilterChangesNothingOfSetForAllAndSave) {
  LoadStream(ThreeSubtitles());
  Type("2");
  Choose("ImageCombo2", "7");
  Click("Command_SetAll");
  const Bytes saved = SavedBytes();
  for (std::size_t subtitle = 0; subtitle < 3; ++subtitle) {
    EXPECT_EQ(saved[subtitle * PacketBuilder::Length + ColourArguments + 1], 0x70) << subtitle;
  }
}

TEST_F(ListTest, KindsOfSubtitlesAreFoundByTheirMarks) {
  LoadStream(InvalidSecond());
  FindProblems();
  Choose("Combo_Filter", "Invalid");
  EXPECT_EQ(Count(), "1 of 3");
  EXPECT_EQ(Cell(0, column::Number), "2");
  Choose("Combo_Filter", "Without end");
  EXPECT_EQ(Count(), "3 of 3");
}

TEST_F(ListTest, AnotherStreamIsShownWhole) {
  LoadStream(ThreeSubtitles());
  Choose("Combo_Filter", "Invalid");
  Type("3");
  LoadStream(InvalidSecond());
  EXPECT_EQ(Count(), "3 of 3");
  EXPECT_EQ(TextOf("Text_Filter"), "");
  EXPECT_EQ(Chosen("Combo_Filter"), "All");
}

TEST_F(ListTest, StatusBarCountsTheProblems) {
  LoadStream(InvalidSecond());
  FindProblems();
  EXPECT_EQ(ProblemCount(), "3 subtitles, 3 with problems");
  LoadStream(ThreeSubtitles());
  FindProblems();
  EXPECT_EQ(ProblemCount(), "3 subtitles, 0 with problems");
}

TEST_F(ListTest, WhatIsSoundIsSaidInThePlaceOfItsProblems) {
  const auto& problems = Control<QPlainTextEdit>("Text_Problems");
  EXPECT_EQ(problems.placeholderText(), "");
  LoadStream(ThreeSubtitles());
  FindProblems();
  EXPECT_EQ(Problems(), "");
  EXPECT_EQ(problems.placeholderText(), "No problems");
  Type("7");
  EXPECT_EQ(problems.placeholderText(), "") << "no row";
}

TEST_F(ListTest, SubtitlesThatAreSelectedAndDamageAreNotConfused) {
  LoadStream(Join({ThreeSubtitles(), Bytes(5, 0x33)}));
  FindProblems();
  List().selectAll();
  Choose("ImageCombo2", "7");
  Click("Command_SetSelected");
  const Bytes saved = SavedBytes();
  for (std::size_t subtitle = 0; subtitle < 3; ++subtitle) {
    EXPECT_EQ(saved[subtitle * PacketBuilder::Length + ColourArguments + 1], 0x70) << subtitle;
  }
  EXPECT_EQ(saved.size(), 3 * PacketBuilder::Length + 5);
}

TEST_F(ListTest, ShownColumnsAreThoseTickedInTheMenu) {
  LoadStream(ThreeSubtitles());
  Action("Column_3").trigger();
  EXPECT_TRUE(List().isColumnHidden(3));
  Action("Column_3").trigger();
  EXPECT_FALSE(List().isColumnHidden(3));
  Action("Column_0").trigger();
  EXPECT_EQ(List().currentIndex().column(), column::Picture);
  Action("Column_0").trigger();
  EXPECT_EQ(List().currentIndex().column(), column::Number);
}

TEST_F(ListTest, KeysGoFromProblemToProblem) {
  const auto at = [](int second) { return PacketBuilder().Time(second * Second); };
  LoadStream(Join({FourCodes(at(0).Delay(80)), FourCodes(at(1)), FourCodes(at(2).Delay(80)), FourCodes(at(3)),
                   FourCodes(at(4).Delay(80))}));
  FindProblems();
  Press(Qt::Key_F8);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_TRUE(Problems().contains("Offset ")) << Problems().toStdString();
  Press(Qt::Key_F8);
  EXPECT_EQ(TextOf("Text_SubNum"), "4");
  EXPECT_TRUE(Window.statusBar()->currentMessage().startsWith("Subtitle 4, 0:00:03.00"));
  Press(Qt::Key_F8);
  EXPECT_EQ(TextOf("Text_SubNum"), "4");
  EXPECT_EQ(Window.statusBar()->currentMessage(), "There is no further problem in the list");
  Press(Qt::Key_F8, Qt::ShiftModifier);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
}

TEST_F(ListTest, DamageHasARowOfItsOwn) {
  LoadStream(Join({ThreeSubtitles(), Bytes(5, 0x33)}));
  FindProblems();
  ASSERT_EQ(List().model()->rowCount(), 4);
  EXPECT_EQ(Count(), "3 of 3");
  EXPECT_EQ(Cell(3, column::Picture), "damage");
  ClickRow(4);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_TRUE(Problems().startsWith("Offset 144: ")) << Problems().toStdString();
  EXPECT_EQ(CurrentRow(), 4);
}

TEST_F(ListTest, DamageStaysTheCurrentRowWhereTheListNarrows) {
  LoadStream(Join({FourCodes(PacketBuilder().Time(1 * Second)),
                   FourCodes(PacketBuilder().Time(3 * Second).Delay(80)), Bytes(5, 0x33)}));
  FindProblems();
  ClickRow(3);
  Choose("Combo_Filter", "With problems");
  QCoreApplication::processEvents();
  EXPECT_EQ(List().model()->rowCount(), 2);
  EXPECT_EQ(CurrentRow(), 2);
}

TEST_F(ListTest, ClickInTheStripOfTimeIsAJump) {
  LoadStream(ThreeSubtitles());
  auto& strip = Control<TimeStrip>("Strip_Time");
  const QPoint place = ClickBarOfTheSecond(strip);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(CurrentRow(), 2);
  Type("1");
  QTest::mouseClick(&strip, Qt::LeftButton, {}, place);
  QCoreApplication::processEvents();
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
}

TEST_F(ListTest, ManyPacketsOfNothingAreListed) {
  Bytes stream = FourCodes(PacketBuilder().Delay(10));
  const Bytes nothing = PacketBuilder().Unit({}).Build();
  for (int i = 0; i < 50'000; ++i) {
    stream.insert(stream.end(), nothing.begin(), nothing.end());
  }
  LoadStream(stream);
  Dialogs.ExpectMessage("Error converting subtitle!");
  Press(Qt::Key_End);
  EXPECT_EQ(CurrentRow(), 50'001);
  EXPECT_EQ(Cell(50'000, column::Picture), "cannot be shown");
  Type("50000-");
  EXPECT_EQ(Count(), "2 of 50,001");
}

}  // namespace
}  // namespace quillmark::test
