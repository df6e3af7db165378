#include "sup/Retime.h"

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

constexpr std::int64_t Max = 9223372036854775807;

/// Starts of 1, 2 and 3 seconds; delay 90 in each second sequence, at 42 of each packet of 48 bytes.
Bytes ThreeSubtitles() {
  return Join(
      {test::Sound(Second).Build(), test::Sound(2 * Second).Build(), test::Sound(3 * Second).Build()});
}

ToolResult Retimed(const SupStream& stream, const RetimeOptions& options,
                   const SubtitleSet& only = SubtitleSet::All()) {
  const Result<ToolResult> result = Retime(stream, only, options);
  EXPECT_TRUE(result) << result.Reason();
  return result ? *result : ToolResult();
}

std::vector<std::int64_t> StartsOf(const Bytes& file) {
  return Index(file).StartTime;
}

/// What the delay of the second sequence of packet `index` becomes.
int DelayOf(const Bytes& file, std::size_t index) {
  return file[index * 48 + 42] << 8 | file[index * 48 + 43];
}

TEST(Retime, ShiftNamesTheBytesOfTheTimeThatDiffer) {
  const Bytes file = ThreeSubtitles();
  const ToolResult result = Retimed(Index(file), {.Shift = 3600}, SubtitleSet::Of(1));
  // 90000 is 0x15F90, 93600 is 0x16DA0.
  EXPECT_THAT(result.Edit.Places, ElementsAre(StreamEdit::Place{.Offset = 2, .Removed = 2, .Inserted = 2}));
  EXPECT_THAT(Changes(file, Applied(Index(file), result.Edit)), ElementsAre(Pair(2, 0xA0), Pair(3, 0x6D)));
  EXPECT_TRUE(result.Edit.Reindexes);
  EXPECT_EQ(result.Chosen, 1);
  EXPECT_EQ(result.Changed.Text(), "1");
  EXPECT_THAT(result.Left, IsEmpty());
}

TEST(Retime, ShiftMovesStartAndEndOfAll) {
  const SupStream stream = Index(ThreeSubtitles());
  ToolResult result = Retimed(stream, {.Shift = -Second});
  SupStream edited = stream;
  ASSERT_TRUE(ApplyEdit(edited, result.Edit));
  EXPECT_THAT(edited.StartTime, ElementsAre(0, Second, 2 * Second));
  EXPECT_THAT(edited.EndTime, ElementsAre(Second, 2 * Second, 3 * Second));
}

TEST(Retime, ScaleRoundsTimesAndDelays) {
  const SupStream stream = Index(ThreeSubtitles());
  const Bytes after = Applied(stream, Retimed(stream, {.Scale = {960, 1001}}).Edit);
  // 90000 x 960 / 1001 = 86313.69, 172627.37, 258941.06; 90 x 960 / 1001 = 86.31
  EXPECT_THAT(StartsOf(after), ElementsAre(86314, 172627, 258941));
  EXPECT_EQ(DelayOf(after, 0), 86);
  EXPECT_EQ(DelayOf(after, 2), 86);
}

TEST(Retime, HalvesGoAwayFromZeroAndTheShiftComesAfter) {
  const SupStream stream = Index(test::Sound(5).Build());
  // 5 / 2 = 2.5 -> 3, then 10 more; 90 / 2 = 45
  const Bytes after = Applied(stream, Retimed(stream, {.Scale = {1, 2}, .Shift = 10}).Edit);
  EXPECT_THAT(StartsOf(after), ElementsAre(13));
  EXPECT_EQ(DelayOf(after, 0), 45);
}

struct ScaledDelay {
  unsigned Old;
  Ratio Scale;
  int New;
};

TEST(Retime, DelayNeverBecomesZeroNorMoreThanItsField) {
  for (const ScaledDelay& each :
       {ScaledDelay{1, {1, 1000}, 1}, ScaledDelay{40000, {2, 1}, 65535}, ScaledDelay{32768, {2, 1}, 65535},
        ScaledDelay{32767, {2, 1}, 65534}, ScaledDelay{0, {2, 1}, 0}, ScaledDelay{0xFFFF, {Max, 1}, 65535}}) {
    const SupStream stream = Index(PacketBuilder().Time(0).Delay(each.Old).Build());
    EXPECT_EQ(DelayOf(Applied(stream, Retimed(stream, {.Scale = each.Scale}).Edit), 0), each.New) << each.Old;
  }
}

TEST(Retime, DelaysOfAllSequencesAreScaled) {
  const Bytes unit = Join({Bytes{0x11, 0x00, 0x12, 0x00}, test::Sequence(10, 13, {test::EndOfSequence}),
                           test::Sequence(20, 18, {test::EndOfSequence}),
                           test::Sequence(30, 18, {test::StopDisplay, test::EndOfSequence})});
  const Bytes file = PacketBuilder().Unit(unit).Build();
  const SupStream stream = Index(file);
  EXPECT_THAT(Changes(file, Applied(stream, Retimed(stream, {.Scale = {2, 1}}).Edit)),
              ElementsAre(Pair(19, 20), Pair(24, 40), Pair(29, 60)));
}

TEST(Retime, StartThatWouldBeNegativeIsNamedAndNothingChanges) {
  const SupStream stream = Index(ThreeSubtitles());
  EXPECT_EQ(Retime(stream, SubtitleSet::All(), {.Shift = -Second - 1}).Reason(),
            "subtitle 1 would start before 0; nothing is written");
  EXPECT_EQ(Retime(stream, *SubtitleSet::Parse("2-"), {.Shift = -2 * Second - 1}).Reason(),
            "subtitle 2 would start before 0; nothing is written");
  EXPECT_TRUE(Retime(stream, *SubtitleSet::Parse("2-"), {.Shift = -2 * Second}));
}

TEST(Retime, StartThatLeavesTheFieldIsNamedAndNothingChanges) {
  const SupStream stream = Index(Join({test::Sound(0).Build(), test::Sound(Max).Build()}));
  EXPECT_EQ(Retime(stream, SubtitleSet::All(), {.Shift = 1}).Reason(),
            "subtitle 2 would start after the last time that there is; nothing is written");
  EXPECT_EQ(Retime(stream, SubtitleSet::All(), {.Scale = {3, 2}}).Reason(),
            "subtitle 2 would start after the last time that there is; nothing is written");
  EXPECT_TRUE(Retime(stream, SubtitleSet::All(), {.Scale = {1, 3}}));
}

TEST(Retime, NegativeStartThatStaysAsItIsIsNoneOfIts) {
  const SupStream stream = Index(test::Sound(-5).Build());
  EXPECT_TRUE(Retimed(stream, {.Shift = 0}).Changed.IsEmpty());
  EXPECT_FALSE(Retime(stream, SubtitleSet::All(), {.Shift = 1}));
  EXPECT_TRUE(Retime(stream, SubtitleSet::All(), {.Shift = 5}));
}

RetimeOptions Through(const TimePoint& a, const TimePoint& b) {
  return {.Points = RetimeOptions::Line{.A = a, .B = b}};
}

TEST(Retime, PointsGiveTheStraightLineThroughBoth) {
  const SupStream stream = Index(ThreeSubtitles());
  const Bytes after = Applied(
      stream,
      Retimed(stream, Through({.Number = 1, .Time = Second}, {.Number = 3, .Time = 5 * Second})).Edit);
  EXPECT_THAT(StartsOf(after), ElementsAre(Second, 3 * Second, 5 * Second));
  EXPECT_EQ(DelayOf(after, 1), 180);
}

TEST(Retime, PointsMayComeInAnyOrderAndReachBeyondThemselves) {
  const SupStream stream = Index(ThreeSubtitles());
  const Bytes after =
      Applied(stream, Retimed(stream, Through({.Number = 3, .Time = 100}, {.Number = 2, .Time = 90})).Edit);
  // From 90000 ticks to 10: subtitle 1 lies 90000 before subtitle 2.
  EXPECT_THAT(StartsOf(after), ElementsAre(80, 90, 100));
  EXPECT_EQ(DelayOf(after, 0), 1);
}

TEST(Retime, PointsRoundWhatIsBeforeTheFirstToNearestToo) {
  // Subtitle 1 lies 3 ticks before subtitle 2, which becomes 1.5: 10 - 1.5 = 8.5 -> 9
  const SupStream stream =
      Index(Join({test::Sound(0).Build(), test::Sound(3).Build(), test::Sound(7).Build()}));
  const Bytes after =
      Applied(stream, Retimed(stream, Through({.Number = 2, .Time = 10}, {.Number = 3, .Time = 12})).Edit);
  EXPECT_THAT(StartsOf(after), ElementsAre(9, 10, 12));
}

TEST(Retime, PointsThatNoLineLeadsThroughAreRefused) {
  const SupStream stream =
      Index(Join({test::Sound(0).Build(), test::Sound(3).Build(), test::Sound(3).Build()}));
  const auto reason = [&](const TimePoint& a, const TimePoint& b) {
    return HasTimeLine(stream, Through(a, b)).Reason();
  };
  EXPECT_EQ(reason({.Number = 1}, {.Number = 4}), "there is no subtitle 4: it has 3");
  EXPECT_EQ(reason({.Number = 2}, {.Number = 3}),
            "subtitle 2 and subtitle 3 start at the same time, so that no line leads through both");
  EXPECT_EQ(reason({.Number = 1, .Time = 5}, {.Number = 2, .Time = 5}),
            "subtitle 2 starts after subtitle 1, and has to do so afterwards");
  EXPECT_TRUE(HasTimeLine(stream, Through({.Number = 1, .Time = 5}, {.Number = 2, .Time = 6})));
}

TEST(Retime, DamagedPacketStaysAndIsNamed) {
  const Bytes damaged = PacketBuilder().Time(2 * Second).Delay(90).ControlOffset(38).Build();
  Bytes endless = test::Sound(3 * Second).Build();
  endless[45] = 0;  // the last sequence points to 0
  const Bytes cut = {'S', 'P', 0, 0, 0, 0, 0, 0, 0, 0, 0, 38, 0, 8, 1};
  const Bytes file = Join({test::Sound(Second).Build(), damaged, endless, cut});
  const SupStream stream = Index(file);
  ASSERT_EQ(stream.Count, 4);
  const ToolResult result = Retimed(stream, {.Shift = 1});
  EXPECT_THAT(Changes(file, Applied(stream, result.Edit)), ElementsAre(Pair(2, 0x91)));
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 2, .Fault = PacketFault::ControlOffsetOutside},
                                       LeftSubtitle{.Number = 3, .Fault = PacketFault::ControlUnfinished},
                                       LeftSubtitle{.Number = 4, .Fault = PacketFault::PastEnd}));
  EXPECT_EQ(LeftText(result.Left[0]),
            "is damaged (the control offset leads out of the unit); it is left as it is");
}

TEST(Retime, IndexThatEndsAtAnInvalidFirstUnitHasNothingToChange) {
  const SupStream stream = Index(PacketBuilder().WithoutArea().Build(), InvalidFirst::EndsTheWalk);
  const ToolResult result = Retimed(stream, {.Shift = 1});
  EXPECT_TRUE(result.Edit.IsEmpty());
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 1, .Fault = PacketFault::TooShort}));
}

TEST(Retime, EmptyStreamStaysEmpty) {
  EXPECT_TRUE(Retimed(Index({}), {.Shift = 1}).Edit.IsEmpty());
  EXPECT_TRUE(Retimed(SupStream(), {.Shift = 1}).Edit.IsEmpty());
}

/// Starts that no two times of 64 bits are as far from each other as.
TEST(Retime, PointsTooFarFromEachOtherAreRefused) {
  const SupStream far = Index(Join({test::Sound(-Max).Build(), test::Sound(Max).Build()}));
  constexpr const char* Reason = "subtitle 1 and subtitle 2 start too far from each other";
  EXPECT_EQ(HasTimeLine(far, Through({.Number = 1, .Time = 1}, {.Number = 2, .Time = 2})).Reason(), Reason);
  const SupStream near = Index(Join({test::Sound(0).Build(), test::Sound(1).Build()}));
  EXPECT_EQ(HasTimeLine(near, Through({.Number = 1, .Time = -Max}, {.Number = 2, .Time = Max})).Reason(),
            Reason);
}

TEST(Retime, NumbersThatTheStreamDoesNotHaveAreRefused) {
  const SupStream stream = Index(ThreeSubtitles());
  for (const std::int64_t number : {std::int64_t{0}, std::int64_t{4}, std::int64_t{-1}}) {
    const auto result =
        Retime(stream, SubtitleSet::All(), Through({.Number = 1, .Time = 0}, {.Number = number, .Time = 9}));
    EXPECT_EQ(result.Reason(), "there is no subtitle " + std::to_string(number) + ": it has 3");
  }
}

TEST(Retime, LineThatMovesAllByTheSameKeepsDelays) {
  const SupStream stream = Index(ThreeSubtitles());
  const Bytes after =
      Applied(stream, Retimed(stream, Through({.Number = 1, .Time = 0}, {.Number = 2, .Time = Second})).Edit);
  EXPECT_THAT(StartsOf(after), ElementsAre(0, Second, 2 * Second));
  EXPECT_EQ(DelayOf(after, 0), 90);
}

TEST(Retime, StartFarBeforeTheFirstPointIsBefore0) {
  const SupStream stream =
      Index(Join({test::Sound(-Max).Build(), test::Sound(10).Build(), test::Sound(20).Build()}));
  const auto result =
      Retime(stream, SubtitleSet::All(), Through({.Number = 2, .Time = 10}, {.Number = 3, .Time = 30}));
  EXPECT_EQ(result.Reason(), "subtitle 1 would start before 0; nothing is written");
}

}  // namespace
}  // namespace quillmark
