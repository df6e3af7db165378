#include <chrono>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QIcon>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSlider>
#include <QTabBar>
#include <QTest>
#include <QWheelEvent>

#include "tests/app/ReviewTest.h"

namespace quillmark::test {
namespace {

const QColor EmphasisColour(2, 252, 2);  ///< of code 3 in FourCodes(), whose first such pixel is x + 6

class MergeReviewWindow : public ReviewTest {};

/// Three at (100, 100), and one at (100, 100), one at (200, 100) and one at (100, 300) over them.
Bytes ThreeFirst() {
  return PrimaryStream({{0, 10}, {100, 100}, {300, 100}});
}
Bytes ThreeSecond() {
  return Join({FourCodes(PacketBuilder().Time(0), 100, 100),
               FourCodes(PacketBuilder().Time(90'000), 200, 100),
               FourCodes(PacketBuilder().Time(280'000), 100, 300)});
}

TEST_F(MergeReviewWindow, RowsTellWhatSaveMergedWouldWrite) {
  // Those of 0, 150 and 280 are shown longest with the three; that of 90 with none longest.
  ReviewMerge(ThreeFirst(), SecondaryStream({0, 90, 150, 280}), "-100");
  EXPECT_TRUE(Control<QWidget>("ReviewPanel").isVisible());
  EXPECT_TRUE(Pairs().isVisible());
  EXPECT_FALSE(List().isVisible());
  EXPECT_EQ(Rows(), (std::vector{1, 2, 3}));
  EXPECT_EQ(Told(0, pair::Secondary), "1");
  EXPECT_EQ(Told(0, pair::Together), "111");  // 10 delay units
  EXPECT_EQ(Told(1, pair::Secondary), "3");
  EXPECT_EQ(Told(1, pair::Together), "556");  // 50
  EXPECT_EQ(Told(2, pair::Secondary), "4");
  EXPECT_EQ(Told(0, pair::Problems), "");
  EXPECT_EQ(TextOf("Text_Review"), "second.sup, offset -100: 4 subtitles; 3 packets, none with problems");
  EXPECT_EQ(TextOf("Text_LeftOut"), "Left out: 2 (1 subtitle that no packet shows)");
  EXPECT_EQ(Label("Label_CountPairs"), "3 of 3");
  const auto saved = static_cast<int>(MergedBytes().size());
  int units = 0;
  for (int row = 0; row < 3; ++row) {
    units += 10 + Told(row, pair::Bytes).toInt();  // the header of a packet
  }
  EXPECT_EQ(units, saved);
}

TEST_F(MergeReviewWindow, RowIsSaidInASentenceWhereItBegins) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  const auto said = [this](int column) {
    return Pairs().model()->index(0, column).data(Qt::AccessibleTextRole).toString();
  };
  EXPECT_TRUE(said(pair::Primary).endsWith(" bytes: 12 pixels of the second picture cover the first one"))
      << said(pair::Primary).toStdString();
  EXPECT_EQ(said(pair::Covered), "12");
}

TEST_F(MergeReviewWindow, WhatIsTooLongForItsLineIsToldInFullWhereThePointerRests) {
  ReviewMerge(ThreeFirst(), SecondaryStream({0, 90, 150, 280}), "-100");
  EXPECT_EQ(Control<QLineEdit>("Text_LeftOut").toolTip(), "Left out: 2 (1 subtitle that no packet shows)");
  const QString whole = Control<QLineEdit>("Text_Review").toolTip();
  EXPECT_TRUE(whole.startsWith("3 packets, none with problems")) << whole.toStdString();
}

TEST_F(MergeReviewWindow, RowWithoutProblemsSaysSo) {
  ReviewMerge(ThreeFirst(), SecondaryStream({0, 90, 150, 280}), "-100");
  ASSERT_EQ(CurrentPair(), 1);
  const auto& problems = Control<QPlainTextEdit>("Text_PairProblems");
  EXPECT_EQ(problems.toPlainText(), "");
  EXPECT_EQ(problems.placeholderText(), "No problems");
}

TEST_F(MergeReviewWindow, FilterThatHidesTheRowTakesAwayItsProblems) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  const auto& problems = Control<QPlainTextEdit>("Text_PairProblems");
  ASSERT_EQ(problems.toPlainText(), "12 pixels of the second picture cover the first one");
  QTest::keyClicks(&Control<QLineEdit>("Text_FilterPairs"), "2-3");
  EXPECT_EQ(CurrentPair(), 0);
  EXPECT_EQ(problems.toPlainText(), "");
  EXPECT_EQ(problems.placeholderText(), "");
  Control<QLineEdit>("Text_FilterPairs").clear();
  EXPECT_EQ(problems.toPlainText(), "12 pixels of the second picture cover the first one");
}

TEST_F(MergeReviewWindow, OffsetMovesTheSecondaryAtOnceAndTheReviewFollows) {
  ReviewMerge(ThreeFirst(), ThreeSecond(), "50");
  EXPECT_EQ(Control<QSpinBox>("Spin_YOffset").value(), 50);
  EXPECT_TRUE(TextIsAt(100, 150));
  EXPECT_EQ(Told(0, pair::Covered), "");
  TypeOffset("0");
  QCoreApplication::processEvents();
  EXPECT_EQ(Offset(), 0);
  EXPECT_FALSE(TextIsAt(100, 150));
  EXPECT_EQ(Control<QSlider>("Slider_YOffset").value(), 0);
  EXPECT_EQ(Rows(), (std::vector{1, 2, 3})) << "what was found before stays until it is found again";
  Review();
  // Two pixels of each visible code in both lines.
  EXPECT_EQ(Told(0, pair::Covered), "12");
  EXPECT_EQ(Told(0, pair::Problems), "12 pixels of the second picture cover the first one");
  EXPECT_EQ(Control<QPlainTextEdit>("Text_PairProblems").toPlainText(), Told(0, pair::Problems));
  EXPECT_EQ(Told(1, pair::Covered), "");
}

TEST_F(MergeReviewWindow, MergeThatChangesIsToldBeforeItIsLookedThrough) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  std::vector<std::pair<int, int>> told;
  QObject::connect(Pairs().model(), &QAbstractItemModel::dataChanged, &Window,
                   [&told](const QModelIndex& first, const QModelIndex& last) {
                     told.emplace_back(first.row(), last.row());
                   });
  Window.Content().SetYOffset(50);
  EXPECT_EQ(told, (std::vector{std::pair(0, 2)})) << "their pictures have changed";
  EXPECT_EQ(TextOf("Text_Review"), "second.sup, offset 50: 3 subtitles; 3 packets, 1 with problems");
  EXPECT_EQ(Label("Label_CountPairs"), "Looked at 0 of 3");
}

TEST_F(MergeReviewWindow, PicturesOfTheRowsFollowTheOffset) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  const auto picture = [this] {
    const QRect cell = Pairs().visualRect(Pairs().model()->index(1, pair::Picture));
    return Pairs().viewport()->grab(cell).toImage();
  };
  const QImage before = picture();
  TypeOffset("100");
  Review();
  EXPECT_NE(picture(), before);
  TypeOffset("0");
  Review();
  EXPECT_EQ(picture(), before);
}

TEST_F(MergeReviewWindow, ReviewThatIsNotShownIsNotLookedThrough) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  Window.Content().SetYOffset(50);
  Action("MergeReview").trigger();
  for (int i = 0; i < 20; ++i) {
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(Label("Label_CountPairs"), "Looked at 0 of 3");
  Action("MergeReview").trigger();
  Review();
  EXPECT_EQ(Label("Label_CountPairs"), "3 of 3");
}

TEST_F(MergeReviewWindow, MovesThatComeFasterThanThePictureAreOne) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  int changes = 0;
  QObject::connect(&Window.Content(), &Document::MergeChanged, &Window, [&changes] { ++changes; });
  auto& slider = Control<QSlider>("Slider_YOffset");
  for (int lines = 1; lines <= 40; ++lines) {
    slider.setValue(lines);
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(Offset(), 40);
  EXPECT_TRUE(TextIsAt(100, 140));
}

TEST_F(MergeReviewWindow, SuggestionIsTakenAndTold) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  Click("Command_SuggestOffset");
  // Two lines up, or down, nothing is covered.
  EXPECT_EQ(Offset(), -2);
  EXPECT_EQ(Control<QSpinBox>("Spin_YOffset").value(), -2);
  EXPECT_TRUE(TextIsAt(100, 98));
  EXPECT_EQ(TextOfStatus(), "Offset -2: 0 pixels covered, 0 clipped; at 0 12 pixels covered, 0 clipped");
}

TEST_F(MergeReviewWindow, OffsetThatIsTheBestStaysAndIsToldSo) {
  ReviewMerge(ThreeFirst(), ThreeSecond(), "-2");
  Click("Command_SuggestOffset");
  EXPECT_EQ(Offset(), -2);
  EXPECT_EQ(TextOfStatus(), "No offset is better than -2: 0 pixels covered, 0 clipped");
}

TEST_F(MergeReviewWindow, OffsetStaysWhereItsSearchIsCancelled) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  Window.SetPatience(std::chrono::milliseconds(0));
  Dialogs.ExpectCancelled(DialogKind::Other);
  Click("Command_SuggestOffset");
  EXPECT_EQ(Offset(), 0);
  EXPECT_EQ(TextOfStatus(), "The offset stays 0");
}

TEST_F(MergeReviewWindow, CopyGoesByWhatIsSelectedInTheOneOfTheTwoThatIsShown) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  ClickPair(1);
  EXPECT_TRUE(Action("Copy").isEnabled());
  Pairs().clearSelection();
  EXPECT_FALSE(Action("Copy").isEnabled());
  ClickPair(1);
  List().clearSelection();
  Action("MergeReview").trigger();
  EXPECT_FALSE(Action("Copy").isEnabled());
  ClickRow(2);
  EXPECT_TRUE(Action("Copy").isEnabled());
}

TEST_F(MergeReviewWindow, GoesWithTheSecondStreamWhereNoOtherIsChosen) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSecond");
  EXPECT_FALSE(Pairs().isVisible());
  EXPECT_TRUE(List().isVisible());
  EXPECT_FALSE(Action("MergeReview").isEnabled());
}

TEST_F(MergeReviewWindow, RowAndSubtitleGoTogether) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  EXPECT_EQ(CurrentPair(), 1);
  ClickPair(3);
  EXPECT_EQ(TextOf("Text_SubNum"), "3");
  EXPECT_TRUE(TextIsAt(100, 300));
  Click("Command_Prev");
  QCoreApplication::processEvents();
  EXPECT_EQ(CurrentPair(), 2);
  EXPECT_TRUE(TextIsAt(200, 100));
}

TEST_F(MergeReviewWindow, NothingIsKeptOfAMergeThatEnded) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  Action("LeaveMerge").trigger();
  QCoreApplication::processEvents();
  EXPECT_TRUE(Window.findChild<MergeFinder*>()->Pairs().empty());
}

TEST_F(MergeReviewWindow, ProblemsAreThoseOfTheCurrentRow) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  const auto& problems = Control<QPlainTextEdit>("Text_PairProblems");
  ClickPair(2);
  EXPECT_EQ(problems.toPlainText(), "");
  ClickPair(1);
  EXPECT_EQ(problems.toPlainText(), "12 pixels of the second picture cover the first one");
}

TEST_F(MergeReviewWindow, HeadingsSortAndTheFilterNarrows) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  ClickHeading(pair::Covered);
  EXPECT_EQ(Rows(), (std::vector{2, 3, 1}));
  ClickHeading(pair::Covered);
  EXPECT_EQ(Rows(), (std::vector{1, 3, 2}));
  auto& filter = Control<QLineEdit>("Text_FilterPairs");
  QTest::keyClicks(&filter, "2-3");
  EXPECT_EQ(Rows(), (std::vector{3, 2}));
  EXPECT_EQ(Label("Label_CountPairs"), "2 of 3");
  filter.clear();
  QTest::keyClicks(&filter, "COVER THE FIRST");
  EXPECT_EQ(Rows(), std::vector{1});
  filter.clear();
  Choose("Combo_FilterPairs", "With problems");
  EXPECT_EQ(Rows(), std::vector{1});
  Choose("Combo_FilterPairs", "First picture clipped");
  EXPECT_EQ(Rows(), std::vector<int>{});
}

TEST_F(MergeReviewWindow, FirstKindOfTheListIsOneOfThem) {
  LoadStream(Join({PrimaryStream({{0, 10}, {100, 100}}),
                   PacketBuilder().Time(300'000).Delay(100).WithoutColour().Build()}));
  Merge(ThreeSecond());
  Review();
  Choose("Combo_FilterPairs", "With problems");
  EXPECT_EQ(Rows(), (std::vector{1, 3}));
  auto& kinds = Control<QComboBox>("Combo_FilterPairs");
  Choose("Combo_FilterPairs", kinds.itemText(2));
  EXPECT_EQ(Rows(), std::vector{3}) << kinds.itemText(2).toStdString();
}

TEST_F(MergeReviewWindow, MergeBehindTheListIsLookedThroughOnceTheReviewIsShown) {
  LoadStream(ThreeFirst());
  MergeInTheList(SecondaryStream({0, 90, 150, 280}));
  Merge(ThreeSecond());
  QCoreApplication::processEvents();
  ASSERT_TRUE(List().isVisible());
  Action("MergeReview").trigger();
  Review();
  EXPECT_EQ(Rows(), (std::vector{1, 2, 3}));
  EXPECT_EQ(Told(0, pair::Covered), "12");
}

TEST_F(MergeReviewWindow, NumbersStandAtTheRightAndTextsAtTheLeft) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  const auto alignment = [this](int column) {
    return Pairs().model()->index(0, column).data(Qt::TextAlignmentRole).toInt();
  };
  EXPECT_EQ(alignment(pair::Primary), Qt::AlignRight | Qt::AlignVCenter);
  EXPECT_EQ(alignment(pair::Together), Qt::AlignRight | Qt::AlignVCenter);
  EXPECT_EQ(alignment(pair::Problems), Qt::AlignLeft | Qt::AlignVCenter);
}

TEST_F(MergeReviewWindow, HeadingShowsWhichWayItSorts) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  const auto heading = [this] {
    const QHeaderView* header = Pairs().horizontalHeader();
    const QRect section(header->sectionViewportPosition(pair::Covered), 0, header->sectionSize(pair::Covered),
                        header->height());
    return header->viewport()->grab(section).toImage();
  };
  ClickHeading(pair::Covered);
  const QImage ascending = heading();
  ClickHeading(pair::Covered);
  EXPECT_NE(heading(), ascending);
  ClickHeading(pair::Covered);
  EXPECT_EQ(heading(), ascending);
}

TEST_F(MergeReviewWindow, NextProblemIsTheReviews) {
  // Clipped by 100 lines: the first and the second.
  ReviewMerge(ThreeFirst(), ThreeSecond(), "-150");
  EXPECT_EQ(Told(1, pair::Clipped), "12");
  EXPECT_EQ(Told(2, pair::Clipped), "");
  Action("NextProblem").trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_TRUE(TextOfStatus().startsWith("Subtitles 2 and 2, 1111 ms together"))
      << TextOfStatus().toStdString();
  EXPECT_TRUE(
      TextOfStatus().endsWith("the second picture loses 12 pixels outside the frame, in 2 rows of it"));
  Action("NextProblem").trigger();
  EXPECT_EQ(TextOfStatus(), "There is no further problem in the list");
  Action("PrevProblem").trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(MergeReviewWindow, DamageInEitherStreamIsARowWithItsReason) {
  LoadStream(
      Join({PrimaryStream({{0, 10}}), PacketBuilder().Time(100'000).Delay(100).WithoutColour().Build()}));
  Merge(Join({SecondaryStream({0}), PacketBuilder().Time(90'000).WithoutContrast().Build()}));
  Review();
  EXPECT_EQ(Rows(), (std::vector{1, 2}));
  EXPECT_TRUE(Told(1, pair::Problems).contains("subtitle 2 of the first stream is damaged: "));
  EXPECT_TRUE(Told(1, pair::Problems).contains("subtitle 2 of the second stream is damaged: "));
  QTest::keyClicks(&Control<QLineEdit>("Text_FilterPairs"), "contrast");
  EXPECT_EQ(Rows(), std::vector{2}) << "found by the words of its damage";
  Control<QLineEdit>("Text_FilterPairs").setText("display area");
  EXPECT_EQ(Rows(), std::vector<int>()) << "and by those of no other";
  Control<QLineEdit>("Text_FilterPairs").clear();
  Dialogs.ExpectMessage("Error converting subtitle!");
  ClickPair(2);
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text_SubNum"), "?");
  EXPECT_EQ(CurrentPair(), 2);
}

TEST_F(MergeReviewWindow, StandsInTheListsPlaceWhileTwoStreamsAreLoaded) {
  LoadStream(ThreeFirst());
  EXPECT_TRUE(List().isVisible());
  EXPECT_FALSE(Action("MergeReview").isEnabled());
  EXPECT_FALSE(Control<QTabBar>("Tabs_List").isVisible());
  Merge(ThreeSecond());
  EXPECT_TRUE(Pairs().isVisible());
  Action("MergeReview").trigger();
  EXPECT_TRUE(List().isVisible());
  EXPECT_FALSE(Pairs().isVisible());
  Control<QTabBar>("Tabs_List").setCurrentIndex(1);
  EXPECT_TRUE(Action("MergeReview").isChecked());
  EXPECT_TRUE(Pairs().isVisible());
  Review();
  Action("LeaveMerge").trigger();
  EXPECT_TRUE(List().isVisible());
  EXPECT_FALSE(Pairs().isVisible());
  EXPECT_EQ(Rows(), std::vector<int>{});
  EXPECT_EQ(TextOf("Text_Review"), "No second stream is loaded");
  EXPECT_EQ(TextOf("Text_LeftOut"), "");
}

TEST_F(MergeReviewWindow, ListShowsBothNumbersWhileMerging) {
  LoadStream(ThreeFirst());
  const int alone = List().columnWidth(0);
  Merge(ThreeSecond());
  const QString both = List().model()->index(0, 0).data().toString();
  EXPECT_EQ(both, "1 + 1");
  EXPECT_GE(List().columnWidth(0), alone + List().fontMetrics().horizontalAdvance(" + 0000"));
  Action("LeaveMerge").trigger();
  EXPECT_EQ(List().columnWidth(0), alone);

  List().setColumnWidth(0, 40);
  Merge(ThreeSecond());
  EXPECT_EQ(List().columnWidth(0), 40);
}

TEST_F(MergeReviewWindow, CodesOfTheResultAreShownAndSaved) {
  ReviewMerge(ThreeFirst(), ThreeSecond(), "50");
  const Bytes usual = MergedBytes();
  Click("Check_MergedCodes");
  Choose("Combo_SecondaryCode_1", "3");
  EXPECT_EQ(FrameColour(102, 150), EmphasisColour);
  EXPECT_TRUE(TextIsAt(100, 100));
  const Bytes changed = MergedBytes();
  EXPECT_NE(changed, usual);
  Click("Command_DefaultCodes");
  EXPECT_TRUE(TextIsAt(100, 150));
  EXPECT_EQ(Chosen("Combo_SecondaryCode_1"), "1");
  EXPECT_EQ(MergedBytes(), usual);
  Choose("Combo_SecondaryCode_1", "3");
  Choose("Combo_ResultColour_1", "3");
  EXPECT_FALSE(TextIsAt(100, 100));
  EXPECT_EQ(FrameColour(102, 100), EmphasisColour);
  Choose("Combo_ResultOpacity_1", "0");
  EXPECT_NE(FrameColour(102, 100), EmphasisColour);
  Action("LeaveMerge").trigger();
  EXPECT_TRUE(Window.Content().CodesOfMerge() == MergedCodes());
  EXPECT_TRUE(TextIsAt(100, 100));
}

TEST_F(MergeReviewWindow, CodesOfTheNextMergeAreShownFromTheirDefaults) {
  ReviewMerge(ThreeFirst(), ThreeSecond(), "50");
  Click("Check_MergedCodes");
  Choose("Combo_SecondaryCode_1", "3");
  Choose("Combo_ResultOpacity_1", "0");
  Action("LeaveMerge").trigger();
  Merge(ThreeSecond(), "50");
  Review();
  EXPECT_EQ(Chosen("Combo_SecondaryCode_1"), "1");
  EXPECT_EQ(Chosen("Combo_ResultOpacity_1"), "as 1st");
}

/// A column for each of the four, all as wide.
TEST_F(MergeReviewWindow, CodesStandBelowTheirNamesInRowsOfTheirKinds) {
  Window.resize(1700, 900);
  ReviewMerge(ThreeFirst(), ThreeSecond(), "50");
  Click("Check_MergedCodes");
  QCoreApplication::processEvents();
  const auto& form = Control<QWidget>("Form_MergedCodes");
  const auto labelAt = [&form](const QString& text) {
    for (const QLabel* label : form.findChildren<QLabel*>()) {
      if (label->text().startsWith(text)) {
        return label->geometry();
      }
    }
    return QRect();
  };
  const QRect first = Control<QWidget>("Combo_SecondaryCode_0").geometry();
  int right = -1;
  for (int code = 0; code < 4; ++code) {
    const QRect heading = labelAt(QString::number(code) + ' ');
    int above = heading.bottom();
    EXPECT_GT(heading.left(), right) << code;
    for (const char* kind : {"Combo_SecondaryCode", "Combo_ResultColour", "Combo_ResultOpacity"}) {
      const QRect list = Control<QWidget>(Element(kind, code)).geometry();
      EXPECT_EQ(list.left(), heading.left()) << kind << code;
      EXPECT_NEAR(list.width(), first.width(), 1) << kind << code;
      EXPECT_GT(list.top(), above) << kind << code;
      above = list.bottom();
      right = list.right();
    }
  }
  const std::pair<const char*, const char*> rows[] = {{"2nd becomes", "Combo_SecondaryCode_0"},
                                                      {"Colors", "Combo_ResultColour_0"},
                                                      {"Opacities", "Combo_ResultOpacity_0"}};
  for (const auto& [text, list] : rows) {
    EXPECT_LT(labelAt(text).right(), first.left()) << text;
    EXPECT_NEAR(labelAt(text).center().y(), Control<QWidget>(list).geometry().center().y(), 1) << text;
  }
  const QRect button = Control<QWidget>("Command_DefaultCodes").geometry();
  EXPECT_GT(button.left(), right);
  EXPECT_NEAR(button.center().y(), first.center().y(), 1);
  EXPECT_EQ(button.width(), Control<QWidget>("Command_DefaultCodes").sizeHint().width());
}

TEST_F(MergeReviewWindow, NibblesOfTheResultAreThoseOfTheFirstStreamOrOneOfSixteen) {
  ReviewMerge(ThreeFirst(), ThreeSecond(), "50");
  Click("Check_MergedCodes");
  for (const char* name : {"Combo_ResultColour_2", "Combo_ResultOpacity_2"}) {
    const auto& list = Control<QComboBox>(name);
    EXPECT_EQ(list.count(), 17) << name;
    EXPECT_EQ(list.itemText(0), "as 1st") << name;
    EXPECT_EQ(list.itemData(0, Qt::AccessibleTextRole).toString(), "As the first stream has it") << name;
    EXPECT_EQ(list.itemText(1), "0") << name;
    EXPECT_EQ(list.itemText(16), "F") << name;
  }
}

TEST_F(MergeReviewWindow, TabGoesFromTheButtonOfTheCodesThroughThem) {
  ReviewMerge(ThreeFirst(), ThreeSecond(), "50");
  Click("Check_MergedCodes");
  Control<QWidget>("Check_MergedCodes").setFocus();
  for (const char* next : {"Combo_SecondaryCode_0", "Combo_SecondaryCode_1", "Combo_SecondaryCode_2",
                           "Combo_SecondaryCode_3", "Command_DefaultCodes", "Combo_ResultColour_0"}) {
    QTest::keyClick(Window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(Window.focusWidget(), &Control<QWidget>(next)) << next;
  }
  Control<QWidget>("Combo_ResultOpacity_3").setFocus();
  QTest::keyClick(Window.focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(Window.focusWidget(), &Control<QWidget>("Option_Pairs"));
}

TEST_F(MergeReviewWindow, SavedCodesAreThoseOfTheReview) {
  ReviewMerge(ThreeFirst(), ThreeSecond(), "50");
  Click("Check_MergedCodes");
  Choose("Combo_SecondaryCode_1", "3");
  MergedBytes();
  LoadMerged();
  EXPECT_TRUE(Window.Content().CodesOfMerge() == MergedCodes());
  EXPECT_TRUE(TextIsAt(100, 100));
  EXPECT_EQ(FrameColour(102, 150), EmphasisColour);
}

TEST_F(MergeReviewWindow, RowOfTheSubtitleShownIsLookedAtFirst) {
  ReviewMerge(ThreeFirst(), ThreeSecond(), "50");
  bool isToldAlone = false;
  QObject::connect(Pairs().model(), &QAbstractItemModel::dataChanged, &Window,
                   [&](const QModelIndex& first, const QModelIndex& last) {
                     isToldAlone = isToldAlone ||
                                   (first.row() == 0 && last.row() == 0 && Told(0, pair::Covered) == "12");
                   });
  TypeOffset("0");
  Review();
  EXPECT_TRUE(isToldAlone);
}

TEST_F(MergeReviewWindow, RowsThatAreFoundAnewAreToldInAllColumns) {
  ReviewMerge(ThreeFirst(), ThreeSecond(), "50");
  int told = 0;
  QObject::connect(Pairs().model(), &QAbstractItemModel::dataChanged, &Window,
                   [&told](const QModelIndex& first, const QModelIndex& last) {
                     ++told;
                     EXPECT_EQ(first.column(), pair::Primary);
                     EXPECT_EQ(last.column(), pair::Duration);
                   });
  TypeOffset("0");
  Review();
  EXPECT_GT(told, 0);
}

TEST_F(MergeReviewWindow, IconIsThatOfTheWorstThereIsToKnow) {
  LoadStream(Join({PrimaryStream({{0, 10}, {100, 100}}),
                   PacketBuilder().Time(300'000).Delay(100).WithoutColour().Build()}));
  Merge(Join({FourCodes(PacketBuilder().Time(0), 100, 100), FourCodes(PacketBuilder().Time(90'000), 200, 100),
              FourCodes(PacketBuilder().Time(280'000), 100, 300)}));
  Review();
  const auto icon = [this](int row) {
    const QModelIndex cell = Pairs().model()->index(row, pair::Primary);
    return cell.data(Qt::DecorationRole).value<QIcon>().pixmap(14, 14).toImage();
  };
  EXPECT_EQ(Told(0, pair::Problems), "12 pixels of the second picture cover the first one");
  EXPECT_TRUE(Told(2, pair::Problems).contains("is damaged"));
  EXPECT_FALSE(icon(0).isNull());
  EXPECT_TRUE(icon(1).isNull());
  EXPECT_FALSE(icon(2).isNull());
  EXPECT_NE(icon(0), icon(2));
  // As large as it may be, and sharp where the screen's pixels are finer.
  const QImage fine = Pairs()
                          .model()
                          ->index(2, pair::Primary)
                          .data(Qt::DecorationRole)
                          .value<QIcon>()
                          .pixmap(QSize(14, 14), 3)
                          .toImage();
  ASSERT_EQ(fine.size(), QSize(42, 42));
  for (const int edge : {1, 40}) {
    EXPECT_GT(qAlpha(fine.pixel(edge, 21)), 0) << edge;
    EXPECT_GT(qAlpha(fine.pixel(21, edge)), 0) << edge;
  }
  for (const int edge : {0, 41}) {
    EXPECT_EQ(qAlpha(fine.pixel(edge, edge)), 0) << edge;
    EXPECT_EQ(qAlpha(fine.pixel(edge, 41 - edge)), 0) << edge;
  }
}

TEST_F(MergeReviewWindow, KindsTellHowManyPacketsTheyHave) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  auto& kinds = Control<QComboBox>("Combo_FilterPairs");
  QStringList told;
  for (int entry = 0; entry < kinds.count(); ++entry) {
    if (const QString text = kinds.itemData(entry, Qt::ToolTipRole).toString(); !text.isEmpty()) {
      told.append(kinds.itemText(entry) + ": " + text);
    }
  }
  EXPECT_EQ(told, QStringList("Pictures over each other: 1 packets"));
}

/// Of each 100 delay units the first 80 and the last 20 have a second subtitle each: the shorter one is left
/// out.
TEST_F(MergeReviewWindow, TwelvePartsOfWhatIsLeftOutAreNamed) {
  Bytes first;
  Bytes second;
  for (int i = 0; i < 13; ++i) {
    first = Join({first, FourCodes(PacketBuilder().Time(i * 100'000).Delay(90), 100, 100)});
    second = Join({second, FourCodes(PacketBuilder().Time(i * 100'000), 200, 200),
                   FourCodes(PacketBuilder().Time(i * 100'000 + 80'000), 200, 200)});
  }
  ReviewMerge(first, second);
  EXPECT_EQ(
      TextOf("Text_LeftOut"),
      "Left out: 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24 and more (13 subtitles that no packet shows)");
  EXPECT_EQ(Control<QLineEdit>("Text_LeftOut").cursorPosition(), 0) << "its start is in sight";
  EXPECT_EQ(Control<QLineEdit>("Text_Review").cursorPosition(), 0);
}

TEST_F(MergeReviewWindow, TypedNumberIsASubtitleToGoTo) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  ClickHeading(pair::Covered);
  ASSERT_EQ(Rows(), (std::vector{2, 3, 1}));
  QTest::keyClick(&Pairs(), '3');
  QCoreApplication::processEvents();
  EXPECT_EQ(CurrentPair(), 2);
  EXPECT_EQ(TextOf("Text_SubNum"), "3");
  QTest::keyClick(&Pairs(), Qt::Key_X);  // ends the number
  QTest::keyClick(&Pairs(), Qt::Key_1);
  QCoreApplication::processEvents();
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(MergeReviewWindow, CopiedRowsHaveAllColumnsButThePicture) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  ClickPair(2);
  Pairs().setFocus();
  Action("Copy").trigger();
  const QStringList lines = QApplication::clipboard()->text().split('\n', Qt::SkipEmptyParts);
  ASSERT_FALSE(lines.isEmpty());
  EXPECT_TRUE(lines.back().startsWith("2\t2\t1111\t")) << lines.back().toStdString();
}

TEST_F(MergeReviewWindow, WheelChangesNumbersOnlyWhereTheFocusIs) {
  ReviewMerge(ThreeFirst(), ThreeSecond());
  Click("Option_Split");
  Review();
  const auto turn = [](QWidget& control) {
    const QPointF at = control.rect().center();
    QWheelEvent event(at, control.mapToGlobal(at), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&control, &event);
    QCoreApplication::processEvents();
    return event.isAccepted();
  };
  Window.activateWindow();
  QCoreApplication::processEvents();
  auto& offset = Control<QSpinBox>("Spin_YOffset");
  auto& slider = Control<QSlider>("Slider_YOffset");
  auto& join = Control<QSpinBox>("Spin_Join");
  Pairs().setFocus();
  for (QWidget* control :
       {static_cast<QWidget*>(&offset), static_cast<QWidget*>(&slider), static_cast<QWidget*>(&join)}) {
    EXPECT_FALSE(turn(*control)) << "left to what scrolls it";
  }
  EXPECT_EQ(Offset(), 0);
  EXPECT_EQ(slider.value(), 0);
  EXPECT_EQ(join.value(), 0);
  offset.setFocus();
  turn(offset);
  EXPECT_EQ(Offset(), 1);
  join.setFocus();
  turn(join);
  EXPECT_EQ(join.value(), 1);
}

}  // namespace
}  // namespace quillmark::test
