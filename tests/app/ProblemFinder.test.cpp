#include "app/ProblemFinder.h"

#include <gmock/gmock.h>
#include <utility>
#include <vector>

#include <QCoreApplication>
#include <QTest>

#include "tests/support/PacketBuilder.h"

namespace quillmark::test {
namespace {

using Code = StreamProblemCode;
using testing::ElementsAre;
using testing::IsEmpty;

class ProblemFinderTest : public testing::Test {
 protected:
  ProblemFinderTest() {
    QObject::connect(&Finder, &ProblemFinder::Found, &Finder,
                     [this](std::size_t first, std::size_t end) { Found.emplace_back(first, end); });
    QObject::connect(&Finder, &ProblemFinder::Finished, &Finder, [this] { ++Finished; });
  }

  /// Slices until nothing is left to look at.
  void LookThrough() {
    while (!Finder.IsFinished()) {
      QCoreApplication::processEvents();
    }
  }

  ProblemFinder Finder;
  std::vector<std::pair<std::size_t, std::size_t>> Found;
  int Finished = 0;
};

TEST_F(ProblemFinderTest, LooksBetweenEvents) {
  const Bytes file = Join({Sound().Build(), PacketBuilder().Time(Second).Build()});
  Finder.Start(file, 2);
  EXPECT_FALSE(Finder.IsFinished());
  EXPECT_TRUE(Finder.Survey().Marks().empty());
  LookThrough();
  EXPECT_THAT(Finder.Survey().MarksOf(1).Problems(), ElementsAre(Code::NoEnd));
  EXPECT_TRUE(Finder.Survey().IsComplete());
  EXPECT_THAT(Found, ElementsAre(std::pair(0U, 2U)));
  EXPECT_EQ(Finished, 1);
}

TEST_F(ProblemFinderTest, TellsOfEachSliceWithTheLastPacketOfTheOneBefore) {
  Bytes file;
  const Bytes packet = Sound().Build();
  for (int i = 0; i < 100'000; ++i) {
    file.insert(file.end(), packet.begin(), packet.end());
  }
  Finder.Start(file, 100'000);
  LookThrough();
  ASSERT_FALSE(Found.empty());
  EXPECT_EQ(Found.front().first, 0U);
  for (std::size_t i = 1; i < Found.size(); ++i) {
    EXPECT_EQ(Found[i].first, Found[i - 1].second - 1);
  }
  EXPECT_EQ(Found.back().second, 100'000U);
  EXPECT_EQ(Finder.Survey().PacketsWithProblems(), 99'999U);
  EXPECT_EQ(Finished, 1);
}

TEST_F(ProblemFinderTest, TellsOfDamageWithoutPackets) {
  const Bytes file(100, 0);
  Finder.Start(file, 0);
  LookThrough();
  EXPECT_EQ(Finder.Survey().DamageCount(), 1U);
  EXPECT_THAT(Found, ElementsAre(std::pair(0U, 0U)));
}

TEST_F(ProblemFinderTest, AnotherStreamTakesThePlaceOfTheOneBefore) {
  const Bytes one = PacketBuilder().Build();
  const Bytes other = Join({Sound().Build(), Sound(Second).Build()});
  Finder.Start(one, 1);
  Finder.Start(other, 2);
  LookThrough();
  EXPECT_EQ(Finder.Survey().Marks().size(), 2U);
  EXPECT_EQ(Finder.Survey().PacketsWithProblems(), 0U);
  EXPECT_EQ(Finished, 1);
}

TEST_F(ProblemFinderTest, ARefreshKeepsWhatWasFoundUntilItIsDone) {
  Bytes file = Join({Sound().Build(), PacketBuilder().Time(Second).Build()});
  Finder.Start(file, 2);
  LookThrough();
  file[48 + 10 + 33] = 90;  // the second one's delay
  Finder.Refresh();
  EXPECT_FALSE(Finder.IsFinished());
  EXPECT_TRUE(Finder.Survey().MarksOf(1).Has(Code::NoEnd));
  LookThrough();
  EXPECT_FALSE(Finder.Survey().MarksOf(1).HasProblems());
  EXPECT_THAT(Found, ElementsAre(std::pair(0U, 2U), std::pair(0U, 2U)));
  EXPECT_EQ(Finished, 2);
}

TEST_F(ProblemFinderTest, ARefreshOfNoStreamIsNothing) {
  Finder.Refresh();
  EXPECT_TRUE(Finder.IsFinished());
}

TEST_F(ProblemFinderTest, StopForgetsWhatWasFound) {
  const Bytes file = PacketBuilder().Build();
  Finder.Start(file, 1);
  LookThrough();
  Finder.Start(file, 1);
  Finder.Stop();
  EXPECT_TRUE(Finder.IsFinished());
  EXPECT_TRUE(Finder.Survey().Marks().empty());
  Finder.Refresh();
  EXPECT_TRUE(Finder.IsFinished());
  EXPECT_EQ(Finished, 1);
}

TEST_F(ProblemFinderTest, MayBeStoppedByWhoeverIsTold) {
  const Bytes file = PacketBuilder().Build();
  QObject::connect(&Finder, &ProblemFinder::Found, &Finder, [this] { Finder.Stop(); });
  Finder.Start(file, 1);
  LookThrough();
  EXPECT_EQ(Finished, 0);
}

TEST_F(ProblemFinderTest, HoldsAreasAgainstTheChosenFrame) {
  const Bytes file = Sound().Area(0, 719, 2, 481).Build();
  Finder.Start(file, 1, {.FrameLines = 480});
  LookThrough();
  EXPECT_THAT(Finder.Survey().MarksOf(0).Problems(), ElementsAre(Code::AreaOutsideFrame));
  Finder.Start(file, 1);
  LookThrough();
  EXPECT_THAT(Finder.Survey().MarksOf(0).Problems(), IsEmpty());
}

}  // namespace
}  // namespace quillmark::test
