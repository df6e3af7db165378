#include "sup/ControlSequences.h"

#include <gmock/gmock.h>

#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using testing::ElementsAre;
using testing::IsEmpty;

struct Seen {
  std::vector<std::int32_t> Sequences;
  std::vector<std::uint16_t> Delays;
  std::vector<std::int32_t> Gaps;
  std::vector<std::pair<int, std::int32_t>> Commands;  ///< code and position
  std::vector<std::size_t> ArgumentSizes;

  void Begin(const ControlSequence& sequence) {
    Sequences.push_back(sequence.Position);
    Delays.push_back(sequence.Header.Delay);
    Gaps.push_back(sequence.Gap);
  }
  void Take(const ControlCommand& command) {
    Commands.emplace_back(command.Code, command.Position);
    ArgumentSizes.push_back(command.Arguments.size());
  }
};

/// A whole unit whose control sequences start at byte 4.
Bytes Unit(const Bytes& sequences) {
  return Join({test::U16be(static_cast<unsigned>(sequences.size()) + 4), test::U16be(4), sequences});
}

TEST(WalkControl, TellsEverySequenceAndCommandWithItsPosition) {
  const Bytes unit =
      Unit(Join({test::Sequence(0, 25,
                                {test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetArea(1, 2, 3, 4),
                                 test::SetFields(4, 4), test::EndOfSequence}),
                 test::Sequence(0x8001, 25, {test::StopDisplay, test::EndOfSequence})}));
  Seen seen;

  const ControlWalk walk = WalkControl(unit, 4, seen);

  EXPECT_EQ(walk.End, ControlEnding::PointsToItself);
  EXPECT_EQ(walk.EndPosition, 25);
  EXPECT_EQ(walk.After, 31);
  EXPECT_THAT(seen.Sequences, ElementsAre(4, 25));
  EXPECT_THAT(seen.Delays, ElementsAre(0, 0x8001));
  EXPECT_THAT(seen.Gaps, ElementsAre(0, 0));
  EXPECT_THAT(seen.Commands, ElementsAre(std::pair(0x01, 8), std::pair(0x03, 9), std::pair(0x05, 12),
                                         std::pair(0x06, 19), std::pair(0x02, 29)));
  EXPECT_THAT(seen.ArgumentSizes, ElementsAre(0, 2, 6, 4, 0));
}

TEST(WalkControl, FollowsPointersOverGaps) {
  const Bytes unit = Unit(Join({test::Sequence(0, 12, {test::EndOfSequence}), Bytes{9, 9, 9},
                                test::Sequence(7, 12, {test::EndOfSequence})}));
  Seen seen;
  EXPECT_EQ(WalkControl(unit, 4, seen).End, ControlEnding::PointsToItself);
  EXPECT_THAT(seen.Sequences, ElementsAre(4, 12));
  EXPECT_THAT(seen.Gaps, ElementsAre(0, 3));
  EXPECT_THAT(seen.Commands, IsEmpty());
}

TEST(WalkControl, ChangeOfColoursHasArgumentsOfTheLengthThatTheyName) {
  const Bytes change = {0x07, 0x00, 0x06, 0x0F, 0xFF, 0xFF, 0xFF};
  const Bytes unit = Unit(test::Sequence(0, 4, {change, test::StopDisplay, test::EndOfSequence}));
  Seen seen;
  EXPECT_EQ(WalkControl(unit, 4, seen).End, ControlEnding::PointsToItself);
  EXPECT_THAT(seen.Commands, ElementsAre(std::pair(0x07, 8), std::pair(0x02, 15)));
  EXPECT_THAT(seen.ArgumentSizes, ElementsAre(6, 0));
}

TEST(WalkControl, HandsOverWhatThereIsOfACutCommand) {
  const Bytes area = test::SetArea(1, 2, 3, 4);
  const Bytes unit = Unit(test::Sequence(0, 4, {Bytes(area.begin(), area.begin() + 4)}));
  Seen seen;
  EXPECT_EQ(WalkControl(unit, 4, seen).End, ControlEnding::NoEndMark);
  EXPECT_THAT(seen.Commands, ElementsAre(std::pair(0x05, 8)));
  EXPECT_THAT(seen.ArgumentSizes, ElementsAre(3));
}

TEST(WalkControl, ColourChangeShorterThanItsLengthFieldIsCut) {
  const Bytes unit = Unit(test::Sequence(0, 4, {Bytes{0x07, 0x00, 0x01}, test::EndOfSequence}));
  Seen seen;
  EXPECT_EQ(WalkControl(unit, 4, seen).End, ControlEnding::NoEndMark);
}

struct EndingCase {
  const char* Name;
  Bytes Unit;
  std::uint16_t ControlOffset;
  ControlEnding End;
  std::int32_t EndPosition;
};

class WalkEnding : public testing::TestWithParam<EndingCase> {};

TEST_P(WalkEnding, IsTold) {
  Seen seen;
  const ControlWalk walk = WalkControl(GetParam().Unit, GetParam().ControlOffset, seen);
  EXPECT_EQ(walk.End, GetParam().End);
  EXPECT_EQ(walk.EndPosition, GetParam().EndPosition);
}

INSTANTIATE_TEST_SUITE_P(
    Units, WalkEnding,
    testing::Values(EndingCase{"OffsetPastTheEnd", Unit({}), 5, ControlEnding::PointsOutside, 0},
                    EndingCase{"NoRoomForAHeader", Unit({0, 0, 0}), 4, ControlEnding::PointsOutside, 4},
                    EndingCase{"NoEndMark", Unit(test::Sequence(0, 4, {test::StopDisplay})), 4,
                               ControlEnding::NoEndMark, 4},
                    EndingCase{"PointerIsZero", Unit(test::Sequence(0, 0, {test::EndOfSequence})), 4,
                               ControlEnding::PointsNowhere, 4},
                    EndingCase{"PointerIntoItself", Unit(test::Sequence(0, 8, {test::EndOfSequence})), 4,
                               ControlEnding::PointsBackwards, 4},
                    EndingCase{"PointerPastTheEnd", Unit(test::Sequence(0, 10, {test::EndOfSequence})), 4,
                               ControlEnding::PointsOutside, 4},
                    EndingCase{"PointerToTheEnd", Unit(test::Sequence(0, 9, {test::EndOfSequence})), 4,
                               ControlEnding::PointsOutside, 9},
                    EndingCase{"TooManyCommands",
                               Unit(test::Sequence(0, 4, {Bytes(300, 0x01), test::EndOfSequence})), 4,
                               ControlEnding::TooLong, 4}),
    [](const auto& test) { return test.param.Name; });

}  // namespace
}  // namespace quillmark
