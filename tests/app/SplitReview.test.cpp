#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QRadioButton>
#include <QStatusBar>

#include "tests/app/ReviewTest.h"

// Merges that show just what both streams show, in the review. Times are counted in delay units.

namespace quillmark::test {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

/// From 0 to 10 and from 100 to 200, at (100, 100).
Bytes TwoFirst() {
  return PrimaryStream({{0, 10}, {100, 100}});
}
/// From 5 to 15, from 150 to 170 and from 250 to 255, at (200, 200), (200, 220) and (200, 240).
Bytes ThreeOver() {
  return Join({FourCodes(PacketBuilder().Time(5'000).Delay(10), 200, 200),
               FourCodes(PacketBuilder().Time(150'000).Delay(20), 200, 220),
               FourCodes(PacketBuilder().Time(250'000).Delay(5), 200, 240)});
}

/// "0 for 5", of each packet of a merged stream.
std::vector<std::string> TimesOf(const Bytes& stream) {
  std::vector<std::string> times;
  for (std::size_t at = 0; at + 12 <= stream.size();) {
    const std::size_t size = stream[at + 10] * 256U + stream[at + 11];
    const std::size_t end = at + 10 + size;
    if (end > stream.size()) {
      times.emplace_back("cut");
      break;
    }
    // The last control sequence is its delay, its own offset, a stop and two ends.
    const unsigned delay = stream[end - 7] * 256U + stream[end - 6];
    const unsigned start = stream[at + 2] + stream[at + 3] * 256U + stream[at + 4] * 65536U;
    times.push_back(std::to_string(start / 1000) + " for " + std::to_string(delay));
    at = end;
  }
  return times;
}

class SplitReviewWindow : public ReviewTest {
 protected:
  void ReviewSplit(const Bytes& primary = TwoFirst(), const Bytes& secondary = ThreeOver()) {
    ReviewMerge(primary, secondary);
    Click("Option_Split");
    Review();
  }
  /// "1+2" of each row, "-" for none.
  [[nodiscard]] std::vector<std::string> Packets() const {
    std::vector<std::string> packets;
    for (int row = 0; row < Pairs().model()->rowCount(); ++row) {
      packets.push_back((Told(row, pair::Primary) + "+" + Told(row, pair::Secondary)).toStdString());
    }
    return packets;
  }
  [[nodiscard]] bool IsChosen(const QString& option) const {
    return Control<QRadioButton>(option).isChecked();
  }
  /// Of the first stream, and all of the second one.
  void ExpectShown(bool primary, const std::vector<int>& secondaries) {
    EXPECT_EQ(TextIsAt(100, 100), primary);
    EXPECT_EQ(ShownSecondaries(), secondaries);
  }
};

TEST_F(SplitReviewWindow, SplitIsReviewedAndSavedAndPairsAreAsBefore) {
  ReviewMerge(TwoFirst(), ThreeOver());
  EXPECT_TRUE(IsChosen("Option_Pairs"));
  EXPECT_FALSE(Control<QSpinBox>("Spin_Join").isEnabled());
  EXPECT_TRUE(Pairs().isColumnHidden(pair::Start));
  const Bytes inPairs = MergedBytes();
  EXPECT_THAT(TimesOf(inPairs), ElementsAre("0 for 10", "100 for 100"));
  Click("Option_Split");
  Review();
  EXPECT_THAT(Packets(), ElementsAre("1+-", "1+1", "-+1", "2+-", "2+2", "2+-", "-+3"));
  EXPECT_EQ(Told(1, pair::Together), "56");  // 5 delay units
  EXPECT_FALSE(Pairs().isColumnHidden(pair::Start));
  EXPECT_EQ(Told(3, pair::Start), "00:00:01.11");
  EXPECT_EQ(Told(3, pair::Duration), ".56");  // 50
  EXPECT_EQ(TextOf("Text_Review"), "second.sup, offset 0, split: 3 subtitles; 7 packets, none with problems");
  EXPECT_EQ(TextOf("Text_LeftOut"), "Left out: none");
  const Bytes split = MergedBytes();
  EXPECT_THAT(TimesOf(split), ElementsAre("0 for 5", "5 for 5", "10 for 5", "100 for 50", "150 for 20",
                                          "170 for 30", "250 for 5"));
  std::size_t units = 0;
  for (int row = 0; row < 7; ++row) {
    units += 10 + Told(row, pair::Bytes).toUInt();
  }
  EXPECT_EQ(units, split.size());
  Click("Option_Pairs");
  Review();
  EXPECT_THAT(Packets(), ElementsAre("1+1", "2+2"));
  EXPECT_EQ(MergedBytes(), inPairs);
}

TEST_F(SplitReviewWindow, RowIsShownAsItIsWritten) {
  ReviewSplit();
  ExpectShown(true, {});  // the first packet of subtitle 1
  ClickPair(3);
  ExpectShown(false, {0});
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:00.11");
  EXPECT_EQ(CurrentPair(), 3);
  // Its picture is the second stream's wherever it stands.
  TypeOffset("20");
  QCoreApplication::processEvents();
  ExpectShown(false, {1});
  TypeOffset("0");
  Review();
  Click("Command_Next");
  QCoreApplication::processEvents();
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(CurrentPair(), 4);
  ExpectShown(true, {});
  ClickPair(5);
  ExpectShown(true, {1});
  Window.Content().ShowAgain();
  ExpectShown(true, {1});
  ClickPair(6);
  Click("Option_Pairs");
  Review();
  ExpectShown(true, {1});  // the one that is there longest
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(CurrentPair(), 2);
}

TEST_F(SplitReviewWindow, PathTooLongForTheDialogLeavesTheSplitAsItIs) {
  ReviewSplit();
  const std::vector<std::string> packets = Packets();
  ASSERT_THAT(packets, SizeIs(7));
  const QString path = LongPath("movie.sup");
  ASSERT_TRUE(QFile::rename(Write("short.sup", TwoFirst()), path));
  Dialogs.ExpectOpen(path);
  Click("Command_LoadSup");
  EXPECT_TRUE(Window.statusBar()->currentMessage().contains("256"));
  Review();
  EXPECT_TRUE(IsChosen("Option_Split"));
  EXPECT_EQ(Packets(), packets);
}

TEST_F(SplitReviewWindow, RowsThatAreShownAreSavedAsPicturesToo) {
  ReviewSplit();
  Click("Check_SavePics");
  ClickPair(3);
  EXPECT_EQ(QDir(Path("movie_SubPng")).entryList(QDir::Files).size(), 1);
  ClickPair(5);
  EXPECT_EQ(QDir(Path("movie_SubPng")).entryList(QDir::Files).size(), 2);
  Window.Content().ShowAgain();
  EXPECT_EQ(QDir(Path("movie_SubPng")).entryList(QDir::Files).size(), 2);
}

TEST_F(SplitReviewWindow, PacketOfTheSubtitleShownIsShownOnceTheReviewIs) {
  ReviewSplit(PrimaryStream({{0, 10}, {100, 100}}),
              Join({FourCodes(PacketBuilder().Time(5'000).Delay(10), 200, 200),
                    FourCodes(PacketBuilder().Time(100'000).Delay(20), 200, 220),
                    FourCodes(PacketBuilder().Time(250'000).Delay(5), 200, 240)}));
  Action("MergeReview").trigger();
  Click("Command_Next");
  QCoreApplication::processEvents();
  EXPECT_EQ(TextOf("Text_Dur"), "1.12");
  Action("MergeReview").trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(TextOf("Text_Dur"), ".23");
}

TEST_F(SplitReviewWindow, StepsGoFromTheRowThatWasChosen) {
  ReviewSplit();
  ClickPair(4);
  ASSERT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_TRUE(IsEnabled("Command_Prev"));
  EXPECT_FALSE(IsEnabled("Command_Next"));
  ClickPair(2);
  ASSERT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_FALSE(IsEnabled("Command_Prev"));
  EXPECT_TRUE(IsEnabled("Command_Next"));
}

TEST_F(SplitReviewWindow, PacketBeforeAllOfTheFirstStreamGoesWithItsFirstSubtitle) {
  ReviewSplit(PrimaryStream({{100, 10}, {200, 10}}),
              FourCodes(PacketBuilder().Time(5'000).Delay(10), 200, 200));
  EXPECT_THAT(Packets(), ElementsAre("-+1", "1+-", "2+-"));
  ClickPair(3);
  ASSERT_EQ(TextOf("Text_SubNum"), "2");
  ClickPair(1);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  ExpectShown(false, {0});
}

TEST_F(SplitReviewWindow, SavingShowsThePacketAgainThatWasShown) {
  ReviewSplit();
  ClickPair(7);
  ExpectShown(false, {2});
  MergedBytes();
  Review();
  ExpectShown(false, {2});
  EXPECT_EQ(CurrentPair(), 7);
}

TEST_F(SplitReviewWindow, CodesOfTheResultAreThoseOfASecondAlone) {
  // The second stream has other colours of its own.
  ReviewSplit(TwoFirst(), FourCodes(PacketBuilder().Time(20'000).Delay(5).Colour(15, 14, 13, 12), 200, 200));
  ClickPair(2);
  EXPECT_EQ(FrameColour(202, 200), TextColour);
  Click("Check_MergedCodes");
  Choose("Combo_ResultColour_1", "3");
  EXPECT_EQ(FrameColour(202, 200), QColor(2, 252, 2));
}

TEST_F(SplitReviewWindow, GapsAreClosedAndTimesFilter) {
  ReviewSplit();
  // The first gap is of 85 delay units, 944.4 ms, and the other one of 50.
  Control<QSpinBox>("Spin_Join").setValue(945);
  Review();
  EXPECT_THAT(TimesOf(MergedBytes()), ElementsAre("0 for 5", "5 for 5", "10 for 90", "100 for 50",
                                                  "150 for 20", "170 for 80", "250 for 5"));
  auto& filter = Control<QLineEdit>("Text_FilterPairs");
  QTest::keyClicks(&filter, "2");
  EXPECT_THAT(Packets(), ElementsAre("2+-", "2+2", "2+-"));
  filter.clear();
  QTest::keyClicks(&filter, "0:02.8");  // 252 delay units
  EXPECT_THAT(Packets(), ElementsAre("-+3"));
}

TEST_F(SplitReviewWindow, TimesStandBehindTheNumbers) {
  ReviewSplit();
  const QHeaderView& header = *Pairs().horizontalHeader();
  QStringList headings;
  for (int place = 0; place < header.count(); ++place) {
    if (const int column = header.logicalIndex(place); !header.isSectionHidden(column)) {
      headings.append(header.model()->headerData(column, Qt::Horizontal).toString());
    }
  }
  EXPECT_EQ(headings, (QStringList{"#", "2nd #", "Start", "Duration", "Picture", "ms",
                                   "What there is to know", "Bytes", "Covered", "Clipped", "Recoloured"}));
  EXPECT_TRUE(header.isSortIndicatorShown());
  EXPECT_EQ(header.sortIndicatorSection(), pair::Primary);
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST_F(SplitReviewWindow, MenuSortsByEachColumnThatIsShown) {
  ReviewSplit();
  const QHeaderView& header = *Pairs().horizontalHeader();
  const auto* menu = Window.findChild<QMenu*>("Menu_SortPairs");
  ASSERT_NE(menu, nullptr);
  const auto shown = [menu] {
    int count = 0;
    for (const QAction* action : menu->actions()) {
      count += action->isVisible() ? 1 : 0;
    }
    return count;
  };
  EXPECT_EQ(shown(), 10) << "all but the picture";
  QAction* start = nullptr;
  for (QAction* action : menu->actions()) {
    start = action->objectName().endsWith(QString::number(pair::Start)) ? action : start;
  }
  ASSERT_NE(start, nullptr);
  start->trigger();
  EXPECT_EQ(header.sortIndicatorSection(), pair::Start);
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);
  EXPECT_THAT(Packets(), ElementsAre("1+-", "1+1", "-+1", "2+-", "2+2", "2+-", "-+3"));
  start->trigger();
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::DescendingOrder);
  EXPECT_THAT(Packets(), ElementsAre("-+3", "2+-", "2+2", "2+-", "-+1", "1+1", "1+-"));
  start->trigger();
  EXPECT_EQ(header.sortIndicatorOrder(), Qt::AscendingOrder);
  Click("Option_Pairs");
  Review();
  EXPECT_EQ(shown(), 8);
  EXPECT_EQ(header.sortIndicatorSection(), pair::Primary) << "packets of pairs have no times of their own";
}

TEST_F(SplitReviewWindow, AnotherSecondFileIsMergedInPairs) {
  ReviewSplit();
  ClickPair(3);
  auto& join = Control<QSpinBox>("Spin_Join");
  const int usual = join.value();
  join.setValue(usual + 100);
  Review();
  Merge(ThreeOver());
  EXPECT_TRUE(IsChosen("Option_Pairs"));
  EXPECT_EQ(join.value(), usual);
  ExpectShown(true, {0});
  Review();
  EXPECT_THAT(Packets(), ElementsAre("1+1", "2+2"));
  Click("Option_Split");
  Review();
  Action("LeaveMerge").trigger();
  EXPECT_TRUE(Window.Content().TimesOfMerge() == MergeTimes());
  ExpectShown(true, {});
}

TEST_F(SplitReviewWindow, DamagedSecondAloneEndsTheMergeAndIsNamed) {
  ReviewSplit(TwoFirst(), Join({ThreeOver(), PacketBuilder().Time(300'000).Delay(5).WithoutArea().Build()}));
  EXPECT_THAT(Packets(), SizeIs(8));
  Dialogs.ExpectMessage("Error converting subtitle!");
  ClickPair(8);
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text_SubNum"), "?");
  EXPECT_EQ(CurrentPair(), 8);
  const QString path = Path("merged.sup");
  Dialogs.ExpectSave(path);
  Dialogs.ExpectMessageWith({"is not complete: subtitle 4 of the second stream cannot be merged"});
  Click("Command_SaveSecond");
  Dialogs.Verify();
  EXPECT_THAT(TimesOf(Read(path)), SizeIs(7));
}

}  // namespace
}  // namespace quillmark::test
