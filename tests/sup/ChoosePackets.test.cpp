#include "sup/ChoosePackets.h"

#include <gmock/gmock.h>

#include "tests/support/AppliedEdit.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Applied;
using test::Bytes;
using test::Index;
using test::Join;
using test::PacketBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

Bytes StartingAt(std::int64_t time) {
  return test::Sound(time).Build();
}

SubtitleSet Only(const char* text) {
  return *SubtitleSet::Parse(text);
}

TEST(CutPackets, TakesOutTheChosenOnesAlone) {
  const SupStream stream = Index(Join({StartingAt(1), StartingAt(2), StartingAt(3), StartingAt(4)}));
  const ToolResult result = CutPackets(stream, Only("1,3-4"));
  EXPECT_EQ(Applied(stream, result.Edit), StartingAt(2));
  EXPECT_THAT(result.Edit.Places, ElementsAre(StreamEdit::Place{.Offset = 0, .Removed = 48},
                                              StreamEdit::Place{.Offset = 96, .Removed = 96}));
  EXPECT_TRUE(result.Edit.Reindexes);
  EXPECT_EQ(result.Changed.Text(), "1,3-4");
}

TEST(CutPackets, ScrapAtTheEndStays) {
  const Bytes scrap = {'S', 'P', 1, 2, 3};
  const SupStream stream = Index(Join({StartingAt(1), StartingAt(2), scrap}));
  EXPECT_EQ(Applied(stream, CutPackets(stream, Only("2")).Edit), Join({StartingAt(1), scrap}));
  EXPECT_EQ(Applied(stream, CutPackets(stream, SubtitleSet::All()).Edit), scrap);
}

TEST(CutPackets, DamagedPacketsGoWhereTheyAreChosen) {
  const Bytes tiny = PacketBuilder().Time(2).Unit({}).Size(0).ControlOffset(0).Build();
  ASSERT_EQ(tiny.size(), 14U);
  const Bytes cut = {'S', 'P', 0, 0, 0, 0, 0, 0, 0, 0, 0x90, 0, 0, 8, 1};
  const SupStream stream = Index(Join({StartingAt(1), tiny, StartingAt(3), cut}));
  ASSERT_EQ(stream.Count, 4);
  EXPECT_EQ(Applied(stream, CutPackets(stream, Only("2")).Edit), Join({StartingAt(1), StartingAt(3), cut}));
  EXPECT_EQ(Applied(stream, CutPackets(stream, Only("4")).Edit), Join({StartingAt(1), tiny, StartingAt(3)}));
}

TEST(CutPackets, IndexThatEndsAtAnInvalidFirstUnitHasNothingToTakeOut) {
  const SupStream stream = Index(PacketBuilder().WithoutArea().Build(), InvalidFirst::EndsTheWalk);
  const ToolResult result = CutPackets(stream, SubtitleSet::All());
  EXPECT_TRUE(result.Edit.IsEmpty());
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 1, .Fault = PacketFault::TooShort}));
}

TEST(KeepPackets, TakesOutAllOthers) {
  const SupStream stream = Index(Join({StartingAt(1), StartingAt(2), StartingAt(3), StartingAt(4), {9}}));
  const ToolResult result = KeepPackets(stream, Only("2-3"));
  EXPECT_EQ(Applied(stream, result.Edit), Join({StartingAt(2), StartingAt(3), {9}}));
  EXPECT_EQ(result.Changed.Text(), "1,4");
}

TEST(SortPackets, PutsThemInTheOrderOfTheirTimes) {
  const SupStream stream = Index(Join({StartingAt(30), StartingAt(10), StartingAt(20), StartingAt(-5)}));
  EXPECT_EQ(Applied(stream, SortPackets(stream, SubtitleSet::All()).Edit),
            Join({StartingAt(-5), StartingAt(10), StartingAt(20), StartingAt(30)}));
}

TEST(SortPackets, EqualTimesKeepTheirOrder) {
  const Bytes first = PacketBuilder().Time(7).Delay(1).Build();
  const Bytes second = PacketBuilder().Time(7).Delay(2).Build();
  const SupStream stream = Index(Join({first, StartingAt(9), second, StartingAt(1)}));
  EXPECT_EQ(Applied(stream, SortPackets(stream, SubtitleSet::All()).Edit),
            Join({StartingAt(1), first, second, StartingAt(9)}));
}

TEST(SortPackets, SortedStreamIsNotChanged) {
  const ToolResult result = SortPackets(
      Index(Join({StartingAt(1), StartingAt(2), StartingAt(2), StartingAt(3)})), SubtitleSet::All());
  EXPECT_TRUE(result.Edit.IsEmpty());
  EXPECT_TRUE(result.Changed.IsEmpty());
}

TEST(SortPackets, MovesAsFewAsItCan) {
  const SupStream stream =
      Index(Join({StartingAt(50), StartingAt(10), StartingAt(20), StartingAt(30), StartingAt(40)}));
  const ToolResult result = SortPackets(stream, SubtitleSet::All());
  EXPECT_THAT(result.Edit.Places,
              ElementsAre(StreamEdit::Place{.Offset = 0, .Removed = 48},
                          StreamEdit::Place{.Offset = 240, .Removed = 0, .Inserted = 48}));
  EXPECT_EQ(result.Changed.Text(), "1");
}

TEST(SortPackets, DamagedOneKeepsItsPlace) {
  const Bytes damaged = PacketBuilder().Time(0).ControlOffset(0).Build();
  const Bytes cut = {'S', 'P', 0, 0, 0, 0, 0, 0, 0, 0, 0, 38, 0, 8, 1};
  const SupStream stream = Index(Join({StartingAt(30), damaged, StartingAt(10), StartingAt(20), cut}));
  const ToolResult result = SortPackets(stream, SubtitleSet::All());
  EXPECT_EQ(Applied(stream, result.Edit),
            Join({StartingAt(10), damaged, StartingAt(20), StartingAt(30), cut}));
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 2, .Fault = PacketFault::ControlOffsetOutside},
                                       LeftSubtitle{.Number = 5, .Fault = PacketFault::PastEnd}));
}

TEST(SortPackets, OnlyTheChosenOnesChangePlaces) {
  const SupStream stream = Index(Join({StartingAt(50), StartingAt(40), StartingAt(30), StartingAt(20)}));
  EXPECT_EQ(Applied(stream, SortPackets(stream, Only("1,3")).Edit),
            Join({StartingAt(30), StartingAt(40), StartingAt(50), StartingAt(20)}));
}

TEST(SortPackets, SwapOfNeighboursAsksForANewIndex) {
  SupStream stream = Index(Join({StartingAt(20), StartingAt(10)}));
  ToolResult result = SortPackets(stream, SubtitleSet::All());
  ASSERT_TRUE(ApplyEdit(stream, result.Edit));
  EXPECT_THAT(stream.StartTime, ElementsAre(10, 20));
}

TEST(DropDamage, KeepsTheGoodPackets) {
  const Bytes damaged = PacketBuilder().Time(0).ControlOffset(0).Build();
  const SupStream stream = Index(Join({StartingAt(1), damaged, StartingAt(2), {'S', 'P'}}));
  const ToolResult result = DropDamage(stream);
  EXPECT_EQ(Applied(stream, result.Edit), Join({StartingAt(1), StartingAt(2)}));
  EXPECT_EQ(result.Changed.Text(), "2");
  EXPECT_THAT(result.Left, IsEmpty());
}

}  // namespace
}  // namespace quillmark
