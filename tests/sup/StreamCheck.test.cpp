#include "sup/StreamCheck.h"

#include <gmock/gmock.h>
#include <limits>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "sup/StreamLoader.h"
#include "tests/support/PacketBuilder.h"
#include "tests/support/PrintProblem.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::EndOfSequence;
using test::Join;
using test::PacketBuilder;
using test::Second;
using test::Sequence;
using test::SetArea;
using test::SetColour;
using test::SetContrast;
using test::SetFields;
using test::Sound;
using test::StartDisplay;
using test::StopDisplay;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Code = StreamProblemCode;

std::vector<StreamProblem> Check(const Bytes& file) {
  std::vector<StreamProblem> problems;
  CheckStream(file, [&](const StreamProblem& problem) { problems.push_back(problem); });
  return problems;
}

auto Problem(std::int64_t offset, std::optional<std::int64_t> packet, Code code,
             const std::string& words = "") {
  return AllOf(Field("Offset", &StreamProblem::Offset, offset),
               Field("Packet", &StreamProblem::Packet, packet), Field("Code", &StreamProblem::Code, code),
               testing::ResultOf("message", ProblemMessage, HasSubstr(words)));
}

/// Two lines of data at unit bytes 4 and 6, then these control sequences from unit byte 8 on.
PacketBuilder WithSequences(const Bytes& sequences) {
  return PacketBuilder().Unit(Join({{0x11, 0x00, 0x12, 0x00}, sequences}));
}

/// All four display commands, 19 bytes.
Bytes DisplayCommands() {
  return Join({StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0), SetArea(100, 103, 400, 401),
               SetFields(4, 6)});
}

TEST(CheckStream, SoundPacketsHaveNoProblem) {
  EXPECT_THAT(Check(Join({Sound(0).Build(), Sound(Second).Build(), Sound(5 * Second).Build()})), IsEmpty());
}

TEST(CheckStream, EmptyFileHasNoProblem) {
  EXPECT_THAT(Check({}), IsEmpty());
}

TEST(CheckStream, FewerThan14BytesAtTheEndAreTrailing) {
  EXPECT_THAT(Check(Join({Sound().Build(), Bytes(13, 0)})),
              ElementsAre(Problem(48, std::nullopt, Code::TrailingBytes, "13 bytes")));
}

TEST(CheckStream, AHeaderAloneAtTheEndIsAPacket) {
  EXPECT_THAT(Check(Join({Sound().Build(), PacketBuilder().Time(Second).Unit({}).ControlOffset(0).Build()})),
              ElementsAre(Problem(60, 2, Code::ControlOffsetZero)));
}

TEST(CheckStream, LostSignatureTellsWhereTheNextPacketIs) {
  EXPECT_THAT(Check(Join({Sound().Build(), Bytes(20, 0xAB), Sound(Second).Build()})),
              ElementsAre(Problem(48, std::nullopt, Code::LostSignature, "found at offset 68")));
}

TEST(CheckStream, LostSignatureAtTheStartIsFoundAgain) {
  EXPECT_THAT(Check(Join({Bytes(100, 'S'), Sound().Build()})),
              ElementsAre(Problem(0, std::nullopt, Code::LostSignature, "found at offset 100")));
}

TEST(CheckStream, LostSignatureWithNoFurtherPacketEndsTheWalk) {
  EXPECT_THAT(Check(Join({Sound().Build(), Bytes(20, 0xAB)})),
              ElementsAre(Problem(48, std::nullopt, Code::LostSignature, "no further packet")));
}

TEST(CheckStream, ALyingSizeIsLookedInto) {
  // The first packet's size reaches 20 bytes into the second one.
  const Bytes file = Join({Sound(0).Size(58).Build(), Sound(Second).Build(), Sound(2 * Second).Build()});
  EXPECT_THAT(Check(file), ElementsAre(Problem(68, std::nullopt, Code::LostSignature, "found at offset 48")));
}

TEST(CheckStream, PacketPastTheEndOfTheFile) {
  Bytes file = Sound().Build();
  file.resize(file.size() - 1);
  const auto problems = Check(file);
  ASSERT_THAT(problems, testing::SizeIs(2));
  EXPECT_THAT(problems[0], Problem(0, 1, Code::PastEnd, "1 bytes past"));
  EXPECT_THAT(problems[1], Problem(42, 1, Code::ControlUnfinished));
}

TEST(CheckStream, ControlSequencesBehindTheEndOfTheFileAreNotMissedOneByOne) {
  Bytes file = Sound().Build();
  file.resize(16);
  EXPECT_THAT(Check(file), ElementsAre(Problem(0, 1, Code::PastEnd, "32 bytes past")));
}

TEST(CheckStream, APacketIsFoundInsideOneThatRunsPastTheEnd) {
  EXPECT_THAT(Check(Join({Sound(0).Size(1000).Build(), Sound(Second).Build()})),
              ElementsAre(Problem(0, 1, Code::PastEnd),
                          Problem(96, std::nullopt, Code::LostSignature, "found at offset 48")));
}

TEST(CheckStream, APacketIsFoundRightBehindAByteThatIsNone) {
  EXPECT_THAT(Check(Join({Sound(0).Build(), {0x00}, Sound(Second).Build()})),
              ElementsAre(Problem(48, std::nullopt, Code::LostSignature, "found at offset 49")));
}

TEST(CheckStream, SizeOf8000HexOrMore) {
  Bytes file = Join({Sound().Size(0x8000).Build(), Bytes(0x8000, 0)});
  file.resize(0x8000 + 10);
  EXPECT_THAT(Check(file), ElementsAre(Problem(10, 1, Code::UnitTooLarge, "32768")));
  EXPECT_THAT(Check(Join({Sound().Size(0x7FFF).Build(), Bytes(0x7FFF, 0)})),
              Not(Contains(Field("Code", &StreamProblem::Code, Code::UnitTooLarge))));
}

TEST(CheckStream, SizeBelowTheUnitsHeader) {
  const Bytes file = Join({PacketBuilder().Unit({}).Size(3).Build(), Sound().Build()});
  EXPECT_THAT(Check(file), ElementsAre(Problem(10, 1, Code::UnitTooSmall, "size is 3")));
}

TEST(CheckStream, ControlOffsetZero) {
  EXPECT_THAT(Check(Sound().ControlOffset(0).Build()), ElementsAre(Problem(12, 1, Code::ControlOffsetZero)));
}

TEST(CheckStream, ControlOffsetInsideTheUnitsHeader) {
  EXPECT_THAT(Check(Sound().ControlOffset(3).Build()),
              ElementsAre(Problem(12, 1, Code::ControlOffsetOutside)));
}

TEST(CheckStream, ControlOffsetBehindTheUnit) {
  EXPECT_THAT(Check(Sound().ControlOffset(38).Build()),
              ElementsAre(Problem(12, 1, Code::ControlOffsetOutside, "unit of 38 bytes")));
}

struct MissingCase {
  const char* Name;
  Bytes File;
  Code Expected;
};

void PrintTo(const MissingCase& missing, std::ostream* out) {
  *out << missing.Name;
}

class MissingCommand : public testing::TestWithParam<MissingCase> {};

TEST_P(MissingCommand, IsReportedAtTheControlSequences) {
  EXPECT_THAT(Check(GetParam().File), ElementsAre(Problem(18, 1, GetParam().Expected)));
}

INSTANTIATE_TEST_SUITE_P(
    CheckStream, MissingCommand,
    testing::Values(MissingCase{"Colour", Sound().WithoutColour().Build(), Code::MissingColour},
                    MissingCase{"Contrast", Sound().WithoutContrast().Build(), Code::MissingContrast},
                    MissingCase{"Area", Sound().WithoutArea().Build(), Code::MissingArea},
                    MissingCase{"Fields", Sound().WithoutFields().Build(), Code::MissingFields}),
    [](const auto& test) { return test.param.Name; });

TEST(CheckStream, MoreThanTwoControlSequences) {
  const Bytes sequences = Join({Sequence(0, 32, {DisplayCommands(), EndOfSequence}),
                                Sequence(40, 40, {SetContrast(7, 7, 7, 0), EndOfSequence}),
                                Sequence(90, 40, {StopDisplay, EndOfSequence})});
  EXPECT_THAT(Check(WithSequences(sequences).Build()),
              ElementsAre(Problem(18, 1, Code::ManySequences, "3 control sequences")));
}

TEST(CheckStream, UnknownCommandIsNamedWhereItStands) {
  const Bytes sequences = Join({Sequence(0, 34, {DisplayCommands(), {0x1C, 0x1D}, EndOfSequence}),
                                Sequence(90, 34, {StopDisplay, EndOfSequence})});
  EXPECT_THAT(Check(WithSequences(sequences).Build()),
              ElementsAre(Problem(41, 1, Code::UnknownCommand, "0x1C, and 1 more")));
}

TEST(CheckStream, ChangeOfColoursCountsAsOneUnknownCommand) {
  // 0x07 with six bytes of arguments, the first two their length; one of them would end the sequence.
  const Bytes sequences =
      Join({Sequence(0, 39, {DisplayCommands(), {0x07, 0, 6, 0xFF, 1, 2, 3}, EndOfSequence}),
            Sequence(90, 39, {StopDisplay, EndOfSequence})});
  const auto problems = Check(WithSequences(sequences).Build());
  ASSERT_FALSE(problems.empty());
  EXPECT_THAT(problems[0], Problem(41, 1, Code::UnknownCommand, "unknown command 0x07;"));
}

TEST(CheckStream, SequenceWithoutEndMark) {
  const Bytes sequences =
      Join({Sequence(0, 32, {DisplayCommands(), EndOfSequence}), Sequence(90, 32, {StopDisplay})});
  EXPECT_THAT(Check(WithSequences(sequences).Build()),
              testing::Contains(Problem(42, 1, Code::ControlUnfinished, "end mark")));
}

struct PointerCase {
  const char* Name;
  unsigned Pointer;
  const char* Words;
};

void PrintTo(const PointerCase& pointer, std::ostream* out) {
  *out << pointer.Name;
}

class LastPointer : public testing::TestWithParam<PointerCase> {};

TEST_P(LastPointer, MustPointToItsOwnSequence) {
  const Bytes sequences = Join({Sequence(0, 32, {DisplayCommands(), EndOfSequence}),
                                Sequence(90, GetParam().Pointer, {StopDisplay, EndOfSequence})});
  EXPECT_THAT(Check(WithSequences(sequences).Build()),
              ElementsAre(Problem(42, 1, Code::ControlUnfinished, GetParam().Words)));
}

INSTANTIATE_TEST_SUITE_P(CheckStream, LastPointer,
                         testing::Values(PointerCase{"Zero", 0, "points to 0"},
                                         PointerCase{"Backwards", 8, "points backwards"},
                                         PointerCase{"BehindTheUnit", 1000, "outside the unit"}),
                         [](const auto& test) { return test.param.Name; });

TEST(CheckStream, BytesBetweenSequencesAreAGap) {
  const Bytes sequences = Join({Sequence(0, 33, {DisplayCommands(), EndOfSequence}),
                                {0xFF},
                                Sequence(90, 33, {StopDisplay, EndOfSequence})});
  EXPECT_THAT(Check(WithSequences(sequences).Build()), testing::Contains(Problem(43, 1, Code::ControlGap)));
}

TEST(CheckStream, EndlessCommandsAreGivenUp) {
  const Bytes sequences = Sequence(0, 8, {DisplayCommands(), Bytes(300, 0x01), EndOfSequence});
  EXPECT_THAT(Check(WithSequences(sequences).Build()),
              testing::Contains(Problem(18, 1, Code::ControlUnfinished, "256 commands")));
}

PacketBuilder WithFields(unsigned top, unsigned bottom) {
  const Bytes commands = Join({StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0),
                               SetArea(100, 103, 400, 401), SetFields(top, bottom)});
  return WithSequences(
      Join({Sequence(0, 32, {commands, EndOfSequence}), Sequence(90, 32, {StopDisplay, EndOfSequence})}));
}

TEST(CheckStream, FieldInsideTheUnitsHeader) {
  EXPECT_THAT(Check(WithFields(3, 6).Build()),
              ElementsAre(Problem(18, 1, Code::FieldOutside, "top field's offset 3")));
}

TEST(CheckStream, FieldAtTheUnitsStartIsNoMissingOne) {
  EXPECT_THAT(Check(WithFields(0, 6).Build()),
              ElementsAre(Problem(18, 1, Code::FieldOutside, "top field's offset 0")));
}

TEST(CheckStream, FieldBehindTheUnit) {
  EXPECT_THAT(Check(WithFields(4, 38).Build()),
              ElementsAre(Problem(18, 1, Code::FieldOutside, "bottom field's offset 38")));
}

TEST(CheckStream, OddHeight) {
  EXPECT_THAT(Check(Sound().Area(0, 9, 0, 2).Build()),
              ElementsAre(Problem(18, 1, Code::OddHeight, "height 3")));
}

TEST(CheckStream, WholeFrameIsInsideTheFrame) {
  EXPECT_THAT(Check(Sound().Area(0, 719, 0, 575).Build()), IsEmpty());
}

TEST(CheckStream, AreaOutsideTheFrame) {
  EXPECT_THAT(Check(Sound().Area(0, 720, 0, 575).Build()),
              ElementsAre(Problem(18, 1, Code::AreaOutsideFrame, "0 to 720")));
  EXPECT_THAT(Check(Sound().Area(0, 719, 1, 576).Build()),
              ElementsAre(Problem(18, 1, Code::AreaOutsideFrame, "1 to 576")));
}

TEST(CheckStream, ReversedArea) {
  EXPECT_THAT(Check(Sound().Area(10, 9, 0, 2).Build()), ElementsAre(Problem(18, 1, Code::ReversedArea)));
  EXPECT_THAT(Check(Sound().Area(0, 9, 2, 0).Build()), ElementsAre(Problem(18, 1, Code::ReversedArea)));
}

TEST(CheckStream, AreaOfOneColumnOrOneLineIsNotReversed) {
  EXPECT_THAT(Check(Sound().Area(10, 10, 0, 1).Build()), IsEmpty());
  EXPECT_THAT(Check(Sound().Area(0, 9, 2, 2).Build()),
              ElementsAre(Problem(18, 1, Code::OddHeight, "height 1")));
}

TEST(CheckStream, NoDelayIsNoEnd) {
  EXPECT_THAT(Check(PacketBuilder().Build()), ElementsAre(Problem(18, 1, Code::NoEnd)));
}

TEST(CheckStream, DelayOf8000HexOrMoreIsNegative) {
  EXPECT_THAT(Check(PacketBuilder().Delay(0x8000).Build()), ElementsAre(Problem(18, 1, Code::NegativeDelay)));
}

TEST(CheckStream, SubtitlesThatTouchDoNotOverlap) {
  EXPECT_THAT(Check(Join({Sound(0).Build(), Sound(90 * 1000).Build()})), IsEmpty());
}

TEST(CheckStream, OverlapIsReportedOfTheEarlierSubtitle) {
  EXPECT_THAT(Check(Join({Sound(0).Build(), Sound(89999).Build()})),
              ElementsAre(Problem(2, 1, Code::Overlap, "until 00:00:01.00")));
  EXPECT_THAT(Check(Join({Sound(0).Delay(1).Build(), Sound(999).Build()})),
              ElementsAre(Problem(2, 1, Code::Overlap, "until 00:00:00.01")));
}

TEST(CheckStream, TimesRunningBackwards) {
  EXPECT_THAT(Check(Join({Sound(9 * Second).Build(), Sound(8 * Second).Build()})),
              ElementsAre(Problem(50, 2, Code::TimeBackwards,
                                  "00:00:08.00, before the subtitle before it at 00:00:09.00")));
}

TEST(CheckStream, NegativeTime) {
  EXPECT_THAT(Check(Sound(-1).Build()), ElementsAre(Problem(2, 1, Code::NegativeTime)));
}

TEST(CheckStream, TimesAtBothEndsOfTheirRangeDoNotOverflow) {
  using Limits = std::numeric_limits<std::int64_t>;
  EXPECT_THAT(Check(Join({Sound(Limits::min()).Build(), Sound(Limits::max()).Build()})),
              ElementsAre(Problem(2, 1, Code::NegativeTime)));
}

TEST(CheckStream, AreasAreHeldAgainstTheChosenFrame) {
  std::vector<StreamProblem> problems;
  CheckStream(Join({Sound(0).Area(0, 719, 0, 479).Build(), Sound(Second).Area(0, 719, 1, 480).Build()}),
              [&](const StreamProblem& problem) { problems.push_back(problem); }, {.FrameLines = 480});
  EXPECT_THAT(problems, ElementsAre(Problem(66, 2, Code::AreaOutsideFrame, "leaves the frame of 720x480")));
}

TEST(StreamChecker, LooksAtOnePacketAStep) {
  const Bytes file = Join({Sound(0).Build(), PacketBuilder().Time(Second).Build()});
  StreamChecker checker(file);
  std::vector<StreamProblem> problems;
  const auto step = [&] { return checker.Step([&](const auto& problem) { problems.push_back(problem); }); };
  EXPECT_TRUE(step());
  EXPECT_EQ(checker.Packets(), 1U);
  EXPECT_EQ(checker.LastPacket().Offset, 0U);
  EXPECT_THAT(problems, IsEmpty());
  EXPECT_TRUE(step());
  EXPECT_EQ(checker.LastPacket().Offset, 48U);
  EXPECT_THAT(problems, ElementsAre(Problem(66, 2, Code::NoEnd)));
  EXPECT_FALSE(step());
  EXPECT_FALSE(step());
  EXPECT_EQ(checker.Packets(), 2U);
}

TEST(StreamChecker, SearchesInPieces) {
  // 200,000 zeros are more than three pieces of 64 KB.
  const Bytes file = Join({Sound(0).Build(), Bytes(200'000, 0), Sound(Second).Build()});
  StreamChecker checker(file);
  std::vector<StreamProblem> problems;
  int steps = 0;
  while (checker.Step([&](const StreamProblem& problem) { problems.push_back(problem); })) {
    ++steps;
  }
  EXPECT_EQ(steps, 2 + 4);
  EXPECT_THAT(problems,
              ElementsAre(Problem(48, std::nullopt, Code::LostSignature, "found at offset 200048")));
}

TEST(CheckStream, EachPacketHasItsOwnProblems) {
  EXPECT_THAT(Check(Join({Sound(0).Build(), Sound(Second).Area(0, 9, 0, 2).Build(),
                          Sound(2 * Second).ControlOffset(0).Build()})),
              ElementsAre(Problem(66, 2, Code::OddHeight), Problem(108, 3, Code::ControlOffsetZero)));
}

TEST(CheckStream, EveryInvalidUnitOfATruncatedStreamHasAProblem) {
  const Bytes whole = Join({Sound(0).Build(), Sound(Second).Build()});
  for (std::size_t length = 14; length < whole.size(); ++length) {
    const Bytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(Check(file).empty(), length == 48) << length;
  }
}

TEST(CheckStream, NamesAreSnakeCaseAndDistinct) {
  std::vector<std::string> names;
  for (int code = 0; code <= static_cast<int>(Code::Overlap); ++code) {
    names.emplace_back(ProblemName(static_cast<Code>(code)));
    EXPECT_THAT(names.back(), testing::MatchesRegex("[a-z_]+"));
  }
  std::sort(names.begin(), names.end());
  EXPECT_EQ(std::unique(names.begin(), names.end()), names.end());
}

}  // namespace
}  // namespace quillmark
