#include "app/SubtitleModel.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include "app/Comparison.h"
#include "app/Document.h"
#include "app/ProblemFinder.h"
#include "tests/app/Streams.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PlayedUnit.h"

namespace quillmark::test {
namespace {

/// A model of a document, without a window. Whatever a test does to the model, Qt's own checks watch it.
class SubtitleModelTest : public testing::Test {
 protected:
  void Open(const Bytes& bytes) {
    SupStream stream = Index(bytes);
    Opened.BeginLoading();
    Opened.SetNumber(1);
    Opened.Open(std::move(stream));
    FindProblems();
    std::vector<RowSubject> rows;
    for (std::size_t i = 0; i < Opened.Primary().PacketOffset.size(); ++i) {
      rows.push_back(RowSubject::Subtitle(i));
    }
    Model.Show(std::move(rows));
  }
  void FindProblems() {
    const SupStream& stream = Opened.Primary();
    Finder.Start(std::span(stream.RawBytes).first(static_cast<std::size_t>(stream.FileLength)),
                 stream.PacketOffset.size());
    while (!Finder.IsFinished()) {
      QCoreApplication::processEvents();
    }
  }
  [[nodiscard]] QStringList Texts(int row) const {
    QStringList texts;
    for (int column = SubtitleModel::Number; column <= SubtitleModel::Problems; ++column) {
      texts.append(Model.index(row, column).data().toString());
    }
    return texts;
  }

  Document Opened;
  ProblemFinder Finder;
  SubtitleModel Model{Opened, Finder, nullptr};
  QAbstractItemModelTester Tester{&Model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(SubtitleModelTest, RowSaysWhatTheFieldsOfTheWindowDo) {
  Open(FourCodes(PacketBuilder().Time(65 * Second + 43200).Delay(100).Colour(3, 10, 1, 0), 100, 420));
  EXPECT_EQ(Texts(0), (QStringList{"1", "", "00:01:05.48", "00:01:06.59", "1.12", "100, 420", "8x2",
                                   "01A3 0FFF", "", "", ""}));
}

TEST_F(SubtitleModelTest, SubtitleWithoutADelayHasNeitherEndNorDuration) {
  Open(FourCodes(PacketBuilder().Time(Second)));
  EXPECT_EQ(Texts(0).mid(3, 2), (QStringList{"???", "???"}));
  EXPECT_EQ(Texts(0).last(), "no end of its own");
}

TEST_F(SubtitleModelTest, InvalidSubtitleSaysSoAndWhy) {
  Open(InvalidSecond());
  EXPECT_EQ(Texts(1).mid(0, 9), (QStringList{"2", "cannot be shown", "00:00:05.00", "", "", "", "", "", ""}));
  EXPECT_EQ(Model.SeverityAt(1), ProblemSeverity::CannotBeShown);
  EXPECT_TRUE(Model.ProblemLinesAt(1).contains("colour")) << Model.ProblemLinesAt(1).toStdString();
}

TEST_F(SubtitleModelTest, ForcedSubtitleSaysSo) {
  Bytes packet = FourCodes(PacketBuilder().Delay(10));
  packet[10 + 8 + 4] = 0x00;  // in place of "start display"
  Open(packet);
  EXPECT_EQ(Texts(0)[SubtitleModel::Forced], "forced");
}

TEST_F(SubtitleModelTest, AnimatedSubtitleSaysSo) {
  Bytes packet = FourCodes(PacketBuilder().Delay(10));
  packet[10 + 32 + 4] = 0x01;  // in place of "stop display"
  Open(Join({packet, Played({0x11, 0x00, 0x12, 0x00},
                            {{.Delay = 0, .Commands = Join({StartDisplay, SetContrast(15, 15, 15, 15)})},
                             {.Delay = 9, .Commands = SetContrast(7, 7, 7, 7)}})
                         .Build()}));
  EXPECT_EQ(Texts(0)[SubtitleModel::Animated], "");
  EXPECT_EQ(Texts(1)[SubtitleModel::Animated], "animated");
}

TEST_F(SubtitleModelTest, WholeRowIsToldInASentence) {
  Bytes packet = FourCodes(PacketBuilder().Time(62 * Second + 30600).Delay(225));
  packet[10 + 8 + 4] = 0x00;
  Open(Join({packet, PacketBuilder().Time(70 * Second).WithoutColour().Delay(10).Build()}));
  const auto spoken = [this](int row, int column) {
    return Model.index(row, column).data(Qt::AccessibleTextRole).toString();
  };
  EXPECT_EQ(spoken(0, SubtitleModel::Number), "Subtitle 1, 0:01:02.34, 2.5 seconds, forced");
  EXPECT_TRUE(spoken(1, SubtitleModel::Number).startsWith("Subtitle 2, 0:01:10.00, cannot be shown"));
  EXPECT_EQ(spoken(0, SubtitleModel::Size), "8x2");
  Model.SetSpokenColumn(SubtitleModel::Size);
  EXPECT_EQ(spoken(0, SubtitleModel::Size), "Subtitle 1, 0:01:02.34, 2.5 seconds, forced");
}

TEST_F(SubtitleModelTest, ToolTipTellsEachProblemWithoutMarkup) {
  Open(InvalidSecond());
  const QString tip = Model.index(1, SubtitleModel::Number).data(Qt::ToolTipRole).toString();
  EXPECT_TRUE(tip.startsWith("<qt>Offset ")) << tip.toStdString();
  EXPECT_EQ(tip.count("<br>") + 1, Model.ProblemLinesAt(1).count('\n') + 1);
  Open(ThreeSubtitles());
  EXPECT_EQ(Model.index(1, SubtitleModel::Number).data(Qt::ToolTipRole).toString(), "");
}

TEST_F(SubtitleModelTest, ToolTipOfTheColoursNamesThem) {
  Open(FourCodes(PacketBuilder().Delay(10).Colour(0, 4, 2, 10).Contrast(15, 15, 10, 0)));
  const QString tip = Model.index(0, SubtitleModel::Colours).data(Qt::ToolTipRole).toString();
  EXPECT_TRUE(tip.contains("background: A, ")) << tip.toStdString();
  EXPECT_TRUE(tip.contains("pattern: 2, white, opacity A")) << tip.toStdString();
  EXPECT_TRUE(tip.contains("emphasis 1: 4, yellow, opacity F")) << tip.toStdString();
  EXPECT_EQ(tip.count("<br>"), 3) << "four lines";
}

TEST_F(SubtitleModelTest, EditsAreSeen) {
  Open(ThreeSubtitles());
  EXPECT_EQ(Texts(1)[SubtitleModel::Colours], "0123 0FFF");
  QSignalSpy changed(&Model, &QAbstractItemModel::dataChanged);
  Opened.Choose({.Colours = {0, 7, 2, 3}, .Contrasts = {0, 15, 15, 15}});
  ASSERT_TRUE(Opened.SetSelected(std::vector<std::size_t>{1}));
  Model.TellChanged();
  ASSERT_EQ(changed.count(), 1);
  EXPECT_EQ(changed[0][0].toModelIndex(), Model.index(0, SubtitleModel::Number));
  EXPECT_EQ(changed[0][1].toModelIndex(), Model.index(2, SubtitleModel::Compared));
  EXPECT_EQ(Texts(1)[SubtitleModel::Colours], "0723 0FFF");
  EXPECT_EQ(Texts(0)[SubtitleModel::Colours], "0123 0FFF");
}

TEST_F(SubtitleModelTest, EditOfTheRowThatWasLookedAtLastIsSeen) {
  Open(FourCodes(PacketBuilder().Delay(10)));
  EXPECT_EQ(Texts(0)[SubtitleModel::Colours], "0123 0FFF");
  Opened.Choose({.Colours = {0, 7, 2, 3}, .Contrasts = {0, 15, 15, 15}});
  ASSERT_TRUE(Opened.SetSelected(std::vector<std::size_t>{0}));
  Model.TellChanged();
  EXPECT_EQ(Texts(0)[SubtitleModel::Colours], "0723 0FFF");
}

TEST_F(SubtitleModelTest, ComparisonChangesEveryRow) {
  Open(ThreeSubtitles());
  const Comparison comparison(Opened, nullptr);
  const QSignalSpy changed(&Model, &QAbstractItemModel::dataChanged);
  Model.SetComparison(comparison);
  ASSERT_EQ(changed.count(), 1);
  EXPECT_EQ(changed[0][0].toModelIndex(), Model.index(0, SubtitleModel::Number));
  EXPECT_EQ(changed[0][1].toModelIndex(), Model.index(2, SubtitleModel::Compared));
}

TEST_F(SubtitleModelTest, RowsAreThoseShown) {
  Open(ThreeSubtitles());
  Model.Show({RowSubject::Subtitle(0), RowSubject::Subtitle(2)});
  EXPECT_EQ(Model.rowCount(), 2);
  EXPECT_EQ(Texts(1)[SubtitleModel::Number], "3");
  EXPECT_EQ(Model.RowOf(RowSubject::Subtitle(2)), 1);
  EXPECT_EQ(Model.RowOf(RowSubject::Subtitle(1)), std::nullopt);
  EXPECT_EQ(Model.FirstRowFrom(RowSubject::Subtitle(1)), 1);
}

TEST_F(SubtitleModelTest, DamageStandsBetweenTheTwoThatItParts) {
  Open(Join({ThreeSubtitles(), Bytes(5, 0x33)}));
  Model.Show({RowSubject::Subtitle(0), RowSubject::Subtitle(1), RowSubject::Subtitle(2),
              RowSubject::DamageBefore(3)});
  EXPECT_EQ(Texts(3)[SubtitleModel::Picture], "damage");
  EXPECT_EQ(Texts(3)[SubtitleModel::Start], "");
  EXPECT_NE(Texts(3)[SubtitleModel::Problems], "");
  EXPECT_TRUE(Model.SeverityAt(3).has_value());
  EXPECT_TRUE(Model.SentenceAt(3).startsWith("After subtitle 3, one problem: "));
  EXPECT_LT(RowSubject::Subtitle(1), RowSubject::DamageBefore(2));
  EXPECT_LT(RowSubject::DamageBefore(2), RowSubject::Subtitle(2));
}

TEST_F(SubtitleModelTest, MarksThatWereFoundChangeTheirRowsAlone) {
  Open(ThreeSubtitles());
  Model.Show({RowSubject::Subtitle(0), RowSubject::Subtitle(2)});
  QSignalSpy changed(&Model, &QAbstractItemModel::dataChanged);
  Model.TellMarked(1, 2);
  EXPECT_TRUE(changed.isEmpty());
  Model.TellMarked(1, 3);
  ASSERT_EQ(changed.count(), 1);
  EXPECT_EQ(changed[0][0].toModelIndex(), Model.index(1, SubtitleModel::Number));
  EXPECT_EQ(changed[0][1].toModelIndex(), Model.index(1, SubtitleModel::Compared));
}

TEST_F(SubtitleModelTest, SubtitlesThatAreGoneAreEmptyRows) {
  Open(ThreeSubtitles());
  Opened.LoseIndex();
  EXPECT_EQ(Texts(1)[SubtitleModel::Picture], "cannot be shown");
  EXPECT_EQ(Texts(1)[SubtitleModel::Size], "");
}

TEST_F(SubtitleModelTest, CellsOfTextAreTabbed) {
  Open(ThreeSubtitles());
  const int rows[] = {0, 2};
  const int columns[] = {SubtitleModel::Number, SubtitleModel::Start, SubtitleModel::Place};
  EXPECT_EQ(Model.TabbedText(rows, columns), "1\t00:00:01.00\t100, 400\n3\t00:00:09.00\t100, 440\n");
}

}  // namespace
}  // namespace quillmark::test
