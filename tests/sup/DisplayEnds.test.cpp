#include "sup/DisplayEnds.h"

#include <gmock/gmock.h>

#include "tests/support/AppliedEdit.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Applied;
using test::Bytes;
using test::Changes;
using test::Index;
using test::Join;
using test::PacketBuilder;
using test::Second;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// Two sound packets, the second 2 seconds after the first, whose delay is given.
Bytes TwoSubtitles(unsigned delay) {
  return Join({PacketBuilder().Time(Second).Delay(delay).Build(), test::Sound(3 * Second).Build()});
}

ToolResult Ends(const Bytes& file, const EndOptions& options) {
  return SetDisplayEnds(Index(file), SubtitleSet::All(), options);
}

/// The delay units of the first subtitle afterwards.
int FirstDelay(const Bytes& file, const EndOptions& options) {
  const SupStream stream = Index(file);
  const Bytes after = Applied(stream, SetDisplayEnds(stream, SubtitleSet::All(), options).Edit);
  return after[42] << 8 | after[43];
}

TEST(DisplayEnds, FillGivesTheNextStart) {
  const Bytes file = TwoSubtitles(0);
  const SupStream stream = Index(file);
  // 180000 ticks are 180 units.
  const ToolResult result = SetDisplayEnds(stream, SubtitleSet::All(), {.Fill = true});
  EXPECT_THAT(Changes(file, Applied(stream, result.Edit)), ElementsAre(Pair(43, 180)));
  EXPECT_THAT(result.Edit.Places, ElementsAre(StreamEdit::Place{.Offset = 42, .Removed = 2, .Inserted = 2}));
  EXPECT_EQ(result.Changed.Text(), "1");
  EXPECT_THAT(result.Left, IsEmpty());
}

TEST(DisplayEnds, FillEndsBeforeTheGapAndRoundsDown) {
  EXPECT_EQ(FirstDelay(TwoSubtitles(0), {.Fill = true, .Gap = 3600}), 176);  // 176400 ticks
  EXPECT_EQ(FirstDelay(TwoSubtitles(0), {.Fill = true, .Gap = 1}), 179);
}

TEST(DisplayEnds, FillGivesNoMoreThanTheLongest) {
  EXPECT_EQ(FirstDelay(TwoSubtitles(0), {.Fill = true, .Longest = 90500}), 90);
  EXPECT_EQ(FirstDelay(TwoSubtitles(0), {.Fill = true, .Longest = 400000}), 180);
}

TEST(DisplayEnds, FillGivesNoMoreThanThisProgramReads) {
  const Bytes file = Join({PacketBuilder().Time(0).Build(), test::Sound(40'000'000).Build()});
  EXPECT_EQ(FirstDelay(file, {.Fill = true}), 0x7FFF);
  EXPECT_EQ(FirstDelay(Join({PacketBuilder().Time(-9223372036854775807).Build(), test::Sound(100).Build()}),
                       {.Fill = true}),
            0x7FFF);
}

TEST(DisplayEnds, FillLeavesEndsThatAreThere) {
  EXPECT_TRUE(Ends(TwoSubtitles(90), {.Fill = true}).Edit.IsEmpty());
}

TEST(DisplayEnds, LastSubtitleNeedsTheLongest) {
  const Bytes file = PacketBuilder().Time(Second).Build();
  EXPECT_THAT(Ends(file, {.Fill = true}).Left,
              ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::NoNext}));
  EXPECT_EQ(FirstDelay(file, {.Fill = true, .Longest = 90000}), 90);
}

TEST(DisplayEnds, FillWithoutRoomIsLeft) {
  for (const std::int64_t next : {std::int64_t{90000}, std::int64_t{90999}, std::int64_t{1}}) {
    const Bytes file = Join({PacketBuilder().Time(Second).Build(), test::Sound(next).Build()});
    const ToolResult result = Ends(file, {.Fill = true});
    EXPECT_TRUE(result.Edit.IsEmpty());
    EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::NoRoom}));
  }
  EXPECT_EQ(Ends(TwoSubtitles(0), {.Fill = true, .Gap = 180000}).Left.size(), 1U);
}

TEST(DisplayEnds, OverlapIsCutToTheNextStartLessTheGap) {
  EXPECT_EQ(FirstDelay(TwoSubtitles(181), {.NoOverlap = true}), 180);
  EXPECT_EQ(FirstDelay(TwoSubtitles(181), {.Gap = 900, .NoOverlap = true}), 179);
  EXPECT_EQ(FirstDelay(TwoSubtitles(0x7FFF), {.Gap = 1000, .NoOverlap = true}), 179);
}

TEST(DisplayEnds, EndAtTheNextStartIsNoOverlap) {
  EXPECT_TRUE(Ends(TwoSubtitles(180), {.Gap = 3600, .NoOverlap = true}).Edit.IsEmpty());
}

TEST(DisplayEnds, OverlapWithAnEarlierSubtitleIsLeft) {
  const Bytes file = Join({test::Sound(3 * Second).Build(), test::Sound(Second).Build()});
  EXPECT_THAT(Ends(file, {.NoOverlap = true}).Left,
              ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::NoRoom}));
}

TEST(DisplayEnds, ShortestIsReached) {
  EXPECT_EQ(FirstDelay(TwoSubtitles(90), {.Shortest = 100000}), 100);
  EXPECT_EQ(FirstDelay(TwoSubtitles(90), {.Shortest = 100001}), 101);
  EXPECT_EQ(FirstDelay(TwoSubtitles(100), {.Shortest = 100000}), 100);
  EXPECT_EQ(FirstDelay(TwoSubtitles(90), {.Shortest = 200000}), 200);
  EXPECT_EQ(FirstDelay(TwoSubtitles(0), {.Shortest = 200000}), 0);
}

TEST(DisplayEnds, FilledEndsReachTheShortestToo) {
  EXPECT_EQ(FirstDelay(TwoSubtitles(0), {.Fill = true, .Shortest = 200000}), 200);
}

TEST(DisplayEnds, CutToTheShortestIsAsLongAsWanted) {
  const EndOptions options{.Shortest = 180000, .NoOverlap = true};
  EXPECT_EQ(FirstDelay(TwoSubtitles(181), options), 180);
  EXPECT_TRUE(Ends(TwoSubtitles(181), options).Left.empty());
}

TEST(DisplayEnds, NegativeEndIsBeforeTheShortest) {
  EXPECT_EQ(FirstDelay(TwoSubtitles(0x8001), {.Shortest = 100000}), 100);
  EXPECT_EQ(FirstDelay(TwoSubtitles(0x8001), {.Fill = true, .NoOverlap = true}), 0x8001);
}

TEST(DisplayEnds, NoOverlapHasTheLastWord) {
  const Bytes file = TwoSubtitles(90);
  const EndOptions options{.Shortest = 3 * Second, .NoOverlap = true};
  EXPECT_EQ(FirstDelay(file, options), 180);
  const ToolResult result = Ends(file, options);
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::NotAsLong}));
  EXPECT_EQ(result.Changed.Text(), "1-2");
}

/// A unit of one control sequence without a stop command, and some bytes after it.
Bytes WithoutStop(unsigned delay, const Bytes& after) {
  const Bytes sequence =
      test::Sequence(delay, 8,
                     {test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 0),
                      test::SetArea(100, 103, 400, 401), test::SetFields(4, 6), test::EndOfSequence});
  return PacketBuilder().Time(Second).Unit(Join({Bytes{0x11, 0x00, 0x12, 0x00}, sequence, after})).Build();
}

TEST(DisplayEnds, UnitWithoutAStopGetsAControlSequence) {
  const Bytes first = WithoutStop(0, {});  // a unit of 32 bytes
  ASSERT_EQ(first.size(), 42U);
  const Bytes file = Join({first, test::Sound(3 * Second).Build()});
  const SupStream stream = Index(file);
  const ToolResult result = SetDisplayEnds(stream, SubtitleSet::All(), {.Fill = true});
  Bytes expected = first;
  expected[11] = 38;          // the unit's size
  expected[10 + 8 + 3] = 32;  // the pointer to the new sequence
  const Bytes stop = {0x00, 180, 0x00, 32, 0x02, 0xFF};
  expected.insert(expected.end(), stop.begin(), stop.end());
  EXPECT_EQ(Applied(stream, result.Edit), Join({expected, test::Sound(3 * Second).Build()}));
  EXPECT_THAT(result.Edit.Places, ElementsAre(StreamEdit::Place{.Offset = 10, .Removed = 2, .Inserted = 2},
                                              StreamEdit::Place{.Offset = 20, .Removed = 2, .Inserted = 2},
                                              StreamEdit::Place{.Offset = 42, .Removed = 0, .Inserted = 6}));
  EXPECT_TRUE(result.Edit.Reindexes);
}

TEST(DisplayEnds, OddUnitBecomesEven) {
  const Bytes first = WithoutStop(0, {0xFF});  // 33 bytes: one after the last sequence
  const Bytes file = Join({first, test::Sound(3 * Second).Build()});
  const SupStream stream = Index(file);
  const Bytes after = Applied(stream, SetDisplayEnds(stream, SubtitleSet::All(), {.Fill = true}).Edit);
  Bytes expected(first.begin(), first.end() - 1);
  expected[11] = 40;
  expected[21] = 32;
  const Bytes added = {0x00, 180, 0x00, 32, 0x02, 0xFF, 0xFF, 0xFF};
  expected.insert(expected.end(), added.begin(), added.end());
  EXPECT_EQ(after, Join({expected, test::Sound(3 * Second).Build()}));
}

TEST(DisplayEnds, EndThatIsReadWithoutAStopIsNone) {
  const Bytes file = Join({WithoutStop(50, {}), test::Sound(3 * Second).Build()});
  const SupStream stream = Index(file);
  EXPECT_EQ(stream.EndTime[0], Second + 50000);
  SupStream filled = stream;
  ToolResult result = SetDisplayEnds(stream, SubtitleSet::All(), {.Fill = true});
  ASSERT_TRUE(ApplyEdit(filled, result.Edit));
  EXPECT_EQ(filled.EndTime[0], 3 * Second);
}

TEST(DisplayEnds, OverlapWithoutAStopGetsOne) {
  const Bytes file = Join({WithoutStop(500, {}), test::Sound(3 * Second).Build()});
  SupStream stream = Index(file);
  ToolResult result = SetDisplayEnds(stream, SubtitleSet::All(), {.NoOverlap = true});
  ASSERT_TRUE(ApplyEdit(stream, result.Edit));
  EXPECT_EQ(stream.EndTime[0], 3 * Second);
  EXPECT_EQ(stream.SpuSize[0], 38);
}

/// A unit whose fields' data lies after the control sequences.
TEST(DisplayEnds, DataAfterTheControlSequencesDoesNotMove) {
  const Bytes unit =
      Join({test::Sequence(0, 4, {test::StartDisplay, test::SetFields(14, 16), test::EndOfSequence}),
            Bytes(8, 0x11)});
  const Bytes file =
      Join({PacketBuilder().Time(0).Unit(unit).ControlOffset(4).Build(), test::Sound(3 * Second).Build()});
  const ToolResult result = Ends(file, {.Fill = true});
  EXPECT_TRUE(result.Edit.IsEmpty());
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::DataAfterControl}));
}

TEST(DisplayEnds, FullUnitIsLeft) {
  Bytes data(0x7FFF - 4 - 5 - 3, 0);
  const auto place = static_cast<unsigned>(data.size()) + 4;
  const Bytes unit = Join({data, test::Sequence(0, place, {test::StartDisplay, test::EndOfSequence})});
  const Bytes file = Join(
      {PacketBuilder().Time(0).Unit(unit).ControlOffset(place).Build(), test::Sound(3 * Second).Build()});
  const ToolResult result = Ends(file, {.Fill = true});
  EXPECT_TRUE(result.Edit.IsEmpty());
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::UnitFull}));
}

TEST(DisplayEnds, LastStopCommandIsTheOneThatCounts) {
  const Bytes unit = Join({Bytes(4, 0), test::Sequence(0, 14, {test::StartDisplay, test::EndOfSequence}),
                           test::Sequence(20, 20, {test::StopDisplay, test::EndOfSequence}),
                           test::Sequence(400, 20, {test::StopDisplay, test::EndOfSequence})});
  const Bytes file = Join({PacketBuilder().Time(Second).Unit(unit).Build(), test::Sound(3 * Second).Build()});
  const SupStream stream = Index(file);
  const Bytes after = Applied(stream, SetDisplayEnds(stream, SubtitleSet::All(), {.NoOverlap = true}).Edit);
  EXPECT_THAT(Changes(file, after), ElementsAre(Pair(30, 0), Pair(31, 180)));
}

TEST(DisplayEnds, EndThatIsNotReadFromTheStopIsLeft) {
  // The sequence after the one with the stop is read last.
  const Bytes unit = Join({Bytes(4, 0), test::Sequence(300, 14, {test::StopDisplay, test::EndOfSequence}),
                           test::Sequence(400, 14, {test::StartDisplay, test::EndOfSequence})});
  const Bytes file = Join({PacketBuilder().Time(Second).Unit(unit).Build(), test::Sound(3 * Second).Build()});
  const ToolResult result = Ends(file, {.NoOverlap = true});
  EXPECT_TRUE(result.Edit.IsEmpty());
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::EndElsewhere}));
}

TEST(DisplayEnds, DamagedPacketStaysAndIsNamed) {
  const Bytes file =
      Join({PacketBuilder().Time(0).ControlOffset(0).Build(), test::Sound(3 * Second).Build()});
  const ToolResult result = Ends(file, {.Fill = true});
  EXPECT_TRUE(result.Edit.IsEmpty());
  EXPECT_THAT(result.Left,
              ElementsAre(LeftSubtitle{.Number = 1, .Fault = PacketFault::ControlOffsetOutside}));
}

}  // namespace
}  // namespace quillmark
