#include "sup/DisplayTimeline.h"

#include <gmock/gmock.h>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "tests/support/LoadedStream.h"
#include "tests/support/PlayedUnit.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Chain;
using test::EndOfSequence;
using test::Join;
using test::NoMoreGroups;
using test::SetArea;
using test::SetColour;
using test::SetContrast;
using test::SetFields;
using test::StartDisplay;
using test::StopDisplay;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint16_t AfterHeader = 4;

/// A whole unit that has nothing but control sequences, from byte 4 on.
Bytes OnlyControl(const Bytes& sequences) {
  return Join(
      {test::U16be(static_cast<unsigned>(sequences.size()) + 4), test::U16be(AfterHeader), sequences});
}

DisplayTimeline Read(const std::vector<test::TimedCommands>& sequences) {
  return ReadDisplay(OnlyControl(Chain(AfterHeader, sequences)), AfterHeader);
}

std::vector<std::int64_t> EventTimes(const DisplayTimeline& timeline) {
  std::vector<std::int64_t> times;
  for (const DisplayState& state : timeline.States) {
    times.push_back(state.Time);
  }
  return times;
}

std::vector<DisplayedAs> Shown(const DisplayTimeline& timeline) {
  std::vector<DisplayedAs> shown;
  for (const DisplayState& state : timeline.States) {
    shown.push_back(state.Shown);
  }
  return shown;
}

/// What every picture needs, shown from the start.
Bytes Picture() {
  return Join({StartDisplay, SetColour(7, 6, 5, 4), SetContrast(15, 14, 13, 0), SetArea(100, 163, 400, 431),
               SetFields(0x0204, 0x0306)});
}

TEST(ReadDisplay, SequenceSetsWhatItNames) {
  const DisplayTimeline timeline = Read({{.Delay = 0, .Commands = Picture()}});
  ASSERT_THAT(timeline.States, SizeIs(1));
  const DisplayState& state = timeline.States[0];
  EXPECT_EQ(state.Time, 0);
  EXPECT_EQ(state.Shown, DisplayedAs::Subtitle);
  EXPECT_THAT(state.Colours, ElementsAre(4, 5, 6, 7));
  EXPECT_THAT(state.Contrasts, ElementsAre(0, 13, 14, 15));
  ASSERT_TRUE(state.Area && state.Fields);
  EXPECT_EQ(state.Area->X.First, 100);
  EXPECT_EQ(state.Area->X.Last, 163);
  EXPECT_EQ(state.Area->Y.First, 400);
  EXPECT_EQ(state.Area->Y.Last, 431);
  EXPECT_EQ(state.Fields->Top, 0x0204);
  EXPECT_EQ(state.Fields->Bottom, 0x0306);
  EXPECT_FALSE(state.Changes);
  EXPECT_THAT(timeline.Damage, IsEmpty());
}

TEST(ReadDisplay, NothingIsSetBeforeItIsNamed) {
  const DisplayTimeline timeline = Read({{.Delay = 0, .Commands = StartDisplay}});
  ASSERT_THAT(timeline.States, SizeIs(1));
  EXPECT_THAT(timeline.States[0].Contrasts, ElementsAre(0, 0, 0, 0));
  EXPECT_FALSE(timeline.States[0].Area);
  EXPECT_FALSE(timeline.States[0].Fields);
}

TEST(ReadDisplay, FadesByContrastsAndTheRestStays) {
  const DisplayTimeline timeline = Read({{.Delay = 0, .Commands = Picture()},
                                         {.Delay = 100, .Commands = SetContrast(10, 9, 8, 0)},
                                         {.Delay = 104, .Commands = SetContrast(5, 4, 3, 0)},
                                         {.Delay = 108, .Commands = StopDisplay}});
  EXPECT_THAT(EventTimes(timeline), ElementsAre(0, 102400, 106496, 110592));
  EXPECT_THAT(timeline.States[1].Contrasts, ElementsAre(0, 8, 9, 10));
  EXPECT_THAT(timeline.States[2].Contrasts, ElementsAre(0, 3, 4, 5));
  for (const DisplayState& state : timeline.States) {
    EXPECT_THAT(state.Colours, ElementsAre(4, 5, 6, 7));
    EXPECT_EQ(state.Area, timeline.States[0].Area);
    EXPECT_EQ(state.Fields, timeline.States[0].Fields);
  }
  EXPECT_EQ(timeline.End, 110592);
}

TEST(ReadDisplay, DelayIsUnsignedAndCountsFromThePacketsTime) {
  EXPECT_THAT(
      EventTimes(Read({{.Delay = 1, .Commands = StartDisplay}, {.Delay = 0xFFFF, .Commands = StopDisplay}})),
      ElementsAre(1024, 67107840));
}

TEST(ReadDisplay, SequencesOfOneTimeAreCarriedOutInOrder) {
  const DisplayTimeline timeline =
      Read({{.Delay = 5, .Commands = Join({StartDisplay, SetColour(1, 1, 1, 1)})},
            {.Delay = 5, .Commands = SetColour(2, 2, 2, 2)},
            {.Delay = 5, .Commands = StopDisplay},
            {.Delay = 6, .Commands = StartDisplay}});
  EXPECT_THAT(EventTimes(timeline), ElementsAre(5120, 6144));
  EXPECT_THAT(Shown(timeline), ElementsAre(DisplayedAs::Nothing, DisplayedAs::Subtitle));
  EXPECT_THAT(timeline.States[0].Colours, ElementsAre(2, 2, 2, 2));
}

TEST(ReadDisplay, EarlierTimeIsRightAfterTheSequenceBefore) {
  const DisplayTimeline timeline = Read({{.Delay = 9, .Commands = StartDisplay},
                                         {.Delay = 2, .Commands = SetColour(2, 2, 2, 2)},
                                         {.Delay = 10, .Commands = StopDisplay}});
  EXPECT_THAT(EventTimes(timeline), ElementsAre(9216, 10240));
  EXPECT_THAT(timeline.States[0].Colours, ElementsAre(2, 2, 2, 2));
}

TEST(ReadDisplay, ForcedStartIsTold) {
  EXPECT_THAT(
      Shown(Read({{.Delay = 0, .Commands = test::ForcedStart}, {.Delay = 1, .Commands = StopDisplay}})),
      ElementsAre(DisplayedAs::Forced, DisplayedAs::Nothing));
}

TEST(ReadDisplay, StopBeforeASecondStartIsNotTheEnd) {
  const DisplayTimeline timeline = Read({{.Delay = 0, .Commands = Picture()},
                                         {.Delay = 10, .Commands = StopDisplay},
                                         {.Delay = 20, .Commands = StartDisplay},
                                         {.Delay = 30, .Commands = StopDisplay},
                                         {.Delay = 40, .Commands = SetContrast(0, 0, 0, 0)}});
  EXPECT_THAT(Shown(timeline), ElementsAre(DisplayedAs::Subtitle, DisplayedAs::Nothing, DisplayedAs::Subtitle,
                                           DisplayedAs::Nothing, DisplayedAs::Nothing));
  EXPECT_EQ(timeline.End, 30 * 1024);
}

TEST(ReadDisplay, WithoutALastStopThereIsNoEnd) {
  EXPECT_EQ(Read({{.Delay = 0, .Commands = Picture()}}).End, std::nullopt);
  EXPECT_EQ(Read({{.Delay = 0, .Commands = StopDisplay}}).End, std::nullopt);
  EXPECT_EQ(Read({{.Delay = 0, .Commands = Picture()},
                  {.Delay = 10, .Commands = StopDisplay},
                  {.Delay = 20, .Commands = StartDisplay}})
                .End,
            std::nullopt);
}

TEST(ReadDisplay, AreaAndFieldsChange) {
  const DisplayTimeline timeline = Read({{.Delay = 0, .Commands = Picture()},
                                         {.Delay = 10, .Commands = SetArea(0, 719, 2, 3)},
                                         {.Delay = 20, .Commands = SetFields(0x8000, 0xFFFF)}});
  ASSERT_THAT(timeline.States, SizeIs(3));
  EXPECT_EQ(timeline.States[1].Area->Width(), 720);
  EXPECT_EQ(timeline.States[1].Area->Height(), 2);
  EXPECT_EQ(timeline.States[1].Fields->Top, 0x0204);
  EXPECT_EQ(timeline.States[2].Area, timeline.States[1].Area);
  EXPECT_EQ(timeline.States[2].Fields->Top, 0x8000);
  EXPECT_EQ(timeline.States[2].Fields->Bottom, 0xFFFF);
}

TEST(ReadDisplay, PointersAreFollowedOverWhatStandsBetween) {
  // The bytes between would stop the display if they were read.
  const Bytes unit = OnlyControl(Join({test::Sequence(0, 14, {StartDisplay, EndOfSequence}),
                                       {0x02, 0x02, 0xFF, 0x02},
                                       test::Sequence(3, 14, {test::ForcedStart, EndOfSequence})}));
  const DisplayTimeline timeline = ReadDisplay(unit, AfterHeader);
  EXPECT_THAT(EventTimes(timeline), ElementsAre(0, 3072));
  EXPECT_THAT(Shown(timeline), ElementsAre(DisplayedAs::Subtitle, DisplayedAs::Forced));
}

TEST(ReadDisplay, PointerThatLeadsBackIsNotFollowed) {
  // Unit byte 4: delay, pointer to 10, start; byte 10: delay, pointer to 4, stop.
  const Bytes unit = OnlyControl(Join({test::Sequence(0, 10, {StartDisplay, EndOfSequence}),
                                       test::Sequence(7, 4, {StopDisplay, EndOfSequence})}));
  const DisplayTimeline timeline = ReadDisplay(unit, AfterHeader);
  EXPECT_THAT(EventTimes(timeline), ElementsAre(0, 7168));
  EXPECT_EQ(timeline.End, 7168);
  ASSERT_THAT(timeline.Damage, SizeIs(1));
  EXPECT_EQ(timeline.Damage[0].Ending, ControlEnding::PointsBackwards);
  EXPECT_EQ(
      DamageText(timeline.Damage[0]),
      "the control sequence at byte 10 of the unit points backwards for the next one, which is not followed");
}

TEST(ReadDisplay, PointerOutsideOrToNothingEndsTheUnit) {
  for (const auto& [pointer, words] :
       {std::pair(0U, "points to 0 for the next one"), std::pair(0x7000U, "points there for the next one")}) {
    const DisplayTimeline timeline =
        ReadDisplay(OnlyControl(test::Sequence(2, pointer, {StartDisplay, EndOfSequence})), AfterHeader);
    EXPECT_THAT(EventTimes(timeline), ElementsAre(2048));
    ASSERT_THAT(timeline.Damage, SizeIs(1));
    EXPECT_THAT(DamageText(timeline.Damage[0]), HasSubstr(words));
  }
}

TEST(ReadDisplay, ControlOffsetOutsideTheDataShowsNothing) {
  const Bytes unit = OnlyControl(Chain(AfterHeader, {{.Delay = 0, .Commands = StartDisplay}}));
  for (const std::uint16_t offset : std::initializer_list<std::uint16_t>{0, 3, 10, 0xFFFF}) {
    const DisplayTimeline timeline = ReadDisplay(unit, offset);
    EXPECT_THAT(timeline.States, IsEmpty()) << offset;
    EXPECT_THAT(timeline.Damage, SizeIs(1)) << offset;
    EXPECT_EQ(timeline.At(0), nullptr);
  }
}

TEST(ReadDisplay, UnitMayHaveManyCommands) {
  std::vector<test::TimedCommands> fade;
  for (unsigned i = 0; i < 300; ++i) {
    fade.push_back({.Delay = i, .Commands = SetContrast(i % 16, 0, 0, 0)});
  }
  const DisplayTimeline timeline = Read(fade);
  EXPECT_THAT(timeline.States, SizeIs(300));
  EXPECT_THAT(timeline.Damage, IsEmpty());
}

TEST(ReadDisplay, CutUnitHasWhatItsWholeCommandsSay) {
  // From unit byte 4: the first sequence with the start at 8, colours at 9, contrasts at 12, area at 15,
  // fields at 22 and the end mark at 27; the second with its delay at 28 and its stop at 32.
  const Bytes whole = OnlyControl(
      Chain(AfterHeader, {{.Delay = 0, .Commands = Picture()}, {.Delay = 1, .Commands = StopDisplay}}));
  ASSERT_THAT(whole, SizeIs(34));
  for (std::size_t length = 0; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    // Of its own, so that a read past its end is noticed.
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    const DisplayTimeline timeline = ReadDisplay(cut, AfterHeader);
    EXPECT_THAT(timeline.Damage, SizeIs(1));
    ASSERT_EQ(timeline.States.size(), length < 8 ? 0U : length < 32 ? 1U : 2U);
    if (length < 8) {
      continue;
    }
    const DisplayState& first = timeline.States[0];
    EXPECT_EQ(first.IsShown(), length >= 9);
    EXPECT_EQ(first.Colours[3], length >= 12 ? 7 : 0);
    EXPECT_EQ(first.Contrasts[3], length >= 15 ? 15 : 0);
    EXPECT_EQ(first.Area.has_value(), length >= 22);
    EXPECT_EQ(first.Fields.has_value(), length >= 27);
    EXPECT_EQ(timeline.End.has_value(), length >= 33);
  }
}

TEST(ReadDisplay, StateHoldsUntilTheNextOne) {
  const DisplayTimeline timeline =
      Read({{.Delay = 1, .Commands = StartDisplay}, {.Delay = 2, .Commands = StopDisplay}});
  EXPECT_EQ(timeline.At(-1), nullptr);
  EXPECT_EQ(timeline.At(1023), nullptr);
  EXPECT_EQ(timeline.At(1024), &timeline.States[0]);
  EXPECT_EQ(timeline.At(2047), &timeline.States[0]);
  EXPECT_EQ(timeline.At(2048), &timeline.States[1]);
  EXPECT_EQ(timeline.At(std::numeric_limits<std::int64_t>::max()), &timeline.States[1]);
}

// Changes of colours within the picture.

TEST(ReadDisplayChanges, GroupsHaveLinesColumnsColoursAndContrasts) {
  const Bytes change = test::ChangeColours(
      {test::ColourGroup(400, 415, 2,
                         {test::ColourChange(100, 0x1234, 0xFEDC), test::ColourChange(300, 0x5678, 0x0123)}),
       test::ColourGroup(416, 431, 1, {test::ColourChange(0, 0x9ABC, 0xF0F0)}), NoMoreGroups});
  const DisplayTimeline timeline = Read({{.Delay = 0, .Commands = Join({Picture(), change})}});
  EXPECT_THAT(timeline.Damage, IsEmpty());
  const auto lines = timeline.ChangesOf(timeline.States[0]);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0].First, 400);
  EXPECT_EQ(lines[0].Last, 415);
  EXPECT_THAT(
      lines[0].All(),
      ElementsAre(ColourChange{.Column = 100, .Colours = {4, 3, 2, 1}, .Contrasts = {0xC, 0xD, 0xE, 0xF}},
                  ColourChange{.Column = 300, .Colours = {8, 7, 6, 5}, .Contrasts = {3, 2, 1, 0}}));
  EXPECT_EQ(lines[1].First, 416);
  EXPECT_EQ(lines[1].Last, 431);
  EXPECT_THAT(lines[1].All(), SizeIs(1));
}

TEST(ReadDisplayChanges, StayUntilOthersTakeTheirPlace) {
  const auto until = [](unsigned column) {
    return test::ChangeColours(
        {test::ColourGroup(400, 431, 1, {test::ColourChange(column, 0x1111, 0xFFFF)}), NoMoreGroups});
  };
  const DisplayTimeline timeline = Read({{.Delay = 0, .Commands = Join({Picture(), until(100)})},
                                         {.Delay = 10, .Commands = SetColour(0, 0, 0, 0)},
                                         {.Delay = 20, .Commands = until(140)},
                                         {.Delay = 30, .Commands = test::ChangeColours({NoMoreGroups})}});
  ASSERT_THAT(timeline.States, SizeIs(4));
  const auto column = [&](std::size_t state) {
    return timeline.ChangesOf(timeline.States[state])[0].Changes[0].Column;
  };
  EXPECT_EQ(column(0), 100);
  EXPECT_EQ(column(1), 100);
  EXPECT_EQ(column(2), 140);
  EXPECT_EQ(timeline.ChangesOf(timeline.States[3]).size(), 0U);
}

TEST(ReadDisplayChanges, CommandsBehindThemAreCarriedOut) {
  const Bytes change = test::ChangeColours({NoMoreGroups});
  EXPECT_THAT(Shown(Read({{.Delay = 0, .Commands = Join({change, StartDisplay})}})),
              ElementsAre(DisplayedAs::Subtitle));
}

TEST(ReadDisplayChanges, MayEndWithTheArguments) {
  const Bytes change =
      test::ChangeColours({test::ColourGroup(1, 2, 1, {test::ColourChange(0, 0x1111, 0xFFFF)})});
  const DisplayTimeline timeline = Read({{.Delay = 0, .Commands = change}});
  EXPECT_THAT(timeline.Damage, IsEmpty());
  EXPECT_EQ(timeline.ChangesOf(timeline.States[0]).size(), 1U);
}

struct BadGroup {
  const char* Name;
  Bytes Group;
};
class ReadDisplayBadGroup : public testing::TestWithParam<BadGroup> {};

/// The sound group before it stays, the one behind it goes too.
TEST_P(ReadDisplayBadGroup, IsCutOffAndTold) {
  const Bytes sound = test::ColourGroup(10, 20, 1, {test::ColourChange(8, 0x1111, 0xFFFF)});
  const Bytes behind = test::ColourGroup(500, 510, 1, {test::ColourChange(8, 0x1111, 0xFFFF)});
  const Bytes change = test::ChangeColours({sound, GetParam().Group, behind, NoMoreGroups});
  const DisplayTimeline timeline = Read({{.Delay = 0, .Commands = Join({change, StartDisplay})}});
  EXPECT_THAT(timeline.ChangesOf(timeline.States[0]), SizeIs(1));
  EXPECT_TRUE(timeline.States[0].IsShown());
  ASSERT_THAT(timeline.Damage, SizeIs(1));
  // Unit byte 8 has the command, 11 the first group, which has ten bytes.
  EXPECT_EQ(DamageText(timeline.Damage[0]),
            "changes of colours within the picture are damaged and cut off at byte 21 of the unit");
}

Bytes Changes(unsigned count) {
  Bytes changes;
  for (unsigned i = 0; i < count; ++i) {
    const Bytes change = test::ColourChange(8 * i, 0x1111, 0xFFFF);
    changes.insert(changes.end(), change.begin(), change.end());
  }
  return changes;
}

INSTANTIATE_TEST_SUITE_P(
    Groups, ReadDisplayBadGroup,
    testing::Values(
        BadGroup{"WithoutChanges", test::ColourGroup(30, 40, 0, {})},
        BadGroup{"NineChanges", test::ColourGroup(30, 40, 9, {Changes(9)})},
        BadGroup{"LastLineAboveFirst", test::ColourGroup(40, 30, 1, {Changes(1)})},
        BadGroup{"LinesOfTheGroupBefore", test::ColourGroup(20, 40, 1, {Changes(1)})},
        BadGroup{"NibbleBeforeTheFirstLine", test::ColourGroup(0x1030, 0x40, 1, {Changes(1)})},
        BadGroup{"ColumnsThatDescend",
                 test::ColourGroup(30, 40, 2, {test::ColourChange(16, 1, 1), test::ColourChange(8, 1, 1)})},
        BadGroup{"OneColumnTwice",
                 test::ColourGroup(30, 40, 2, {test::ColourChange(16, 1, 1), test::ColourChange(16, 1, 1)})}),
    [](const auto& group) { return group.param.Name; });

TEST(ReadDisplayChanges, EightChangesAreTaken) {
  const Bytes change = test::ChangeColours({test::ColourGroup(30, 40, 8, {Changes(8)}), NoMoreGroups});
  const DisplayTimeline timeline = Read({{.Delay = 0, .Commands = change}});
  EXPECT_THAT(timeline.Damage, IsEmpty());
  EXPECT_EQ(timeline.ChangesOf(timeline.States[0])[0].All().size(), 8U);
}

TEST(ReadDisplayChanges, CutArgumentsKeepTheirWholeGroups) {
  const Bytes change = test::ChangeColours(
      {test::ColourGroup(10, 20, 1, {Changes(1)}), test::ColourGroup(30, 40, 1, {Changes(1)}), NoMoreGroups});
  // Unit byte 8 has the command, 11 the first group, 21 the second, 31 the end mark, 35 that of the sequence.
  const Bytes whole = OnlyControl(Chain(AfterHeader, {{.Delay = 0, .Commands = change}}));
  ASSERT_THAT(whole, SizeIs(36));
  for (std::size_t length = 9; length < whole.size(); ++length) {
    SCOPED_TRACE(length);
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    const DisplayTimeline timeline = ReadDisplay(cut, AfterHeader);
    ASSERT_THAT(timeline.States, SizeIs(1));
    EXPECT_THAT(timeline.ChangesOf(timeline.States[0]), SizeIs(length < 21 ? 0 : length < 31 ? 1 : 2));
    EXPECT_FALSE(timeline.Damage.empty());
  }
}

TEST(ReadDisplayChanges, LengthThatEndsInsideAGroupCutsIt) {
  Bytes change = test::ChangeColours({test::ColourGroup(10, 20, 1, {Changes(1)}), NoMoreGroups});
  change[2] = 9;  // up to the middle of the change; what follows is read as commands
  const DisplayTimeline timeline = Read({{.Delay = 0, .Commands = change}});
  EXPECT_THAT(timeline.ChangesOf(timeline.States[0]), IsEmpty());
  ASSERT_FALSE(timeline.Damage.empty());
  EXPECT_THAT(DamageText(timeline.Damage[0]), HasSubstr("at byte 11"));
}

// What lists mark.

bool Animated(const std::vector<test::TimedCommands>& sequences) {
  return IsAnimated(OnlyControl(Chain(AfterHeader, sequences)), AfterHeader);
}

TEST(IsAnimated, NotWithOneStartAndOneStop) {
  EXPECT_FALSE(Animated({{.Delay = 0, .Commands = Picture()}, {.Delay = 9, .Commands = StopDisplay}}));
  EXPECT_FALSE(Animated({{.Delay = 0, .Commands = Picture()}}));
  EXPECT_FALSE(Animated({}));
}

TEST(IsAnimated, NotByWhatNobodySees) {
  EXPECT_FALSE(Animated({{.Delay = 0, .Commands = SetColour(1, 1, 1, 1)},
                         {.Delay = 0, .Commands = Picture()},
                         {.Delay = 5, .Commands = Join({SetColour(7, 6, 5, 4), StartDisplay})},
                         {.Delay = 9, .Commands = Join({StopDisplay, SetContrast(0, 0, 0, 0)})}}));
}

TEST(IsAnimated, NotByWhatASecondSequenceOfTheSameTimeTakesBack) {
  EXPECT_FALSE(Animated({{.Delay = 0, .Commands = Picture()},
                         {.Delay = 5, .Commands = SetColour(1, 1, 1, 1)},
                         {.Delay = 5, .Commands = SetColour(7, 6, 5, 4)}}));
}

TEST(IsAnimated, WhereAnythingOfThePictureChanges) {
  for (const Bytes& change : {SetColour(0, 6, 5, 4), SetContrast(0, 14, 13, 0), SetArea(100, 163, 402, 433),
                              SetFields(0x0204, 0x0308)}) {
    EXPECT_TRUE(Animated({{.Delay = 0, .Commands = Picture()}, {.Delay = 5, .Commands = change}}));
  }
}

TEST(IsAnimated, WhereItStartsAgain) {
  EXPECT_TRUE(Animated({{.Delay = 0, .Commands = Picture()},
                        {.Delay = 5, .Commands = StopDisplay},
                        {.Delay = 9, .Commands = StartDisplay}}));
}

TEST(IsAnimated, WhereColoursChangeWithinThePicture) {
  const Bytes change = test::ChangeColours({test::ColourGroup(400, 420, 1, {Changes(1)}), NoMoreGroups});
  EXPECT_TRUE(Animated({{.Delay = 0, .Commands = Join({Picture(), change})}}));
  EXPECT_FALSE(Animated({{.Delay = 0, .Commands = change}}));  // never shown
}

// Subtitles of a stream.

TEST(PlayedUnitOf, IsTheWholeUnitWithItsControlOffset) {
  const SupStream stream = test::Index(Join({test::Sound().Build(), test::Sound(test::Second).Build()}));
  const PlayedUnit unit = PlayedUnitOf(stream, 1);
  EXPECT_EQ(unit.Bytes.size(), 38U);
  EXPECT_EQ(unit.Bytes.data(), stream.RawBytes.data() + 58);
  EXPECT_EQ(unit.ControlOffset, 8);
}

TEST(PlayedUnitOf, NextSubtitleTakesItsPlace) {
  const SupStream stream = test::Index(Join({test::Sound(100).Build(), test::Sound(350).Build(),
                                             test::Sound(349).Build(), test::Sound(349).Build()}));
  EXPECT_EQ(PlayedUnitOf(stream, 0).ReplacedAt, 250);
  EXPECT_EQ(PlayedUnitOf(stream, 1).ReplacedAt, std::nullopt);
  EXPECT_EQ(PlayedUnitOf(stream, 2).ReplacedAt, 0);
  EXPECT_EQ(PlayedUnitOf(stream, 3).ReplacedAt, std::nullopt);
}

TEST(PlayedUnitOf, TimesAtBothEndsOfTheirRange) {
  const SupStream stream = test::Index(Join({test::Sound(std::numeric_limits<std::int64_t>::min()).Build(),
                                             test::Sound(std::numeric_limits<std::int64_t>::max()).Build()}));
  EXPECT_EQ(PlayedUnitOf(stream, 0).ReplacedAt, std::numeric_limits<std::int64_t>::max());
}

TEST(PlayedUnitOf, CutPacketHasWhatTheFileHas) {
  Bytes file = test::Sound().Build();
  file.resize(30);
  const SupStream stream = test::Index(file);
  EXPECT_EQ(PlayedUnitOf(stream, 0).Bytes.size(), 20U);
}

TEST(PlayedUnitOf, SubtitleThatIsNotThereHasNoBytes) {
  EXPECT_TRUE(PlayedUnitOf(SupStream(), 0).Bytes.empty());
}

TEST(IsAnimated, SequencesInTheHeaderAreNone) {
  EXPECT_FALSE(IsAnimated(OnlyControl(Chain(AfterHeader, {{.Delay = 0, .Commands = Picture()}})), 3));
}

}  // namespace
}  // namespace quillmark
