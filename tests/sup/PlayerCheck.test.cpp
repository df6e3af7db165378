#include "sup/PlayerCheck.h"

#include <gmock/gmock.h>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "sup/StreamCheck.h"
#include "tests/support/PacketBuilder.h"
#include "tests/support/PrintProblem.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::EndOfSequence;
using test::ForcedStart;
using test::Join;
using test::PacketBuilder;
using test::Sequence;
using test::SetArea;
using test::SetColour;
using test::SetContrast;
using test::SetFields;
using test::Sound;
using test::StartDisplay;
using test::StopDisplay;
using testing::AllOf;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;

using Code = StreamProblemCode;

std::vector<StreamProblem> Problems(const Bytes& file, CheckProfile profile, int frameLines) {
  std::vector<StreamProblem> problems;
  CheckStream(file, [&](const StreamProblem& problem) { problems.push_back(problem); },
              {.Profile = profile, .FrameLines = frameLines});
  return problems;
}

std::vector<StreamProblem> ForPlayers(const Bytes& file, int frameLines = 576) {
  return Problems(file, CheckProfile::Player, frameLines);
}
std::vector<StreamProblem> ForEverybody(const Bytes& file) {
  return Problems(file, CheckProfile::Spec, 576);
}

auto Problem(std::int64_t offset, Code code, const std::string& words) {
  return AllOf(Field("Offset", &StreamProblem::Offset, offset), Field("Code", &StreamProblem::Code, code),
               testing::ResultOf("message", ProblemMessage, HasSubstr(words)));
}

/// A unit of two lines of 4 pixels whose control sequences stand from unit byte 8 on.
Bytes PlayerPacket(const Bytes& sequences) {
  return PacketBuilder().Unit(Join({{0x11, 0x00, 0x12, 0x00}, sequences})).Build();
}

/// What describes the picture, 19 bytes: 100 to 103, 400 to 401.
const Bytes PlayerPicture =
    Join({SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0), SetArea(100, 103, 400, 401), SetFields(4, 6)});

TEST(CheckForPlayers, ASoundStreamHasNoProblem) {
  EXPECT_THAT(ForPlayers(Join({Sound(0).Build(), Sound(180000).Build()})), IsEmpty());
}

TEST(CheckForPlayers, WhatIsWrongForEverybodyIsToldToo) {
  EXPECT_THAT(ForPlayers(Sound().WithoutArea().Build()),
              ElementsAre(Problem(10 + 8, Code::MissingArea, "display area")));
}

TEST(CheckForPlayers, NothingOfItIsToldWithoutTheProfile) {
  // Odd lines, an odd size, and no start command.
  Bytes unit = PacketBuilder().Delay(90).Area(100, 103, 401, 402).UnitBytes();
  unit[8] = 0x02;
  unit.push_back(0xFF);

  EXPECT_THAT(ForEverybody(Sound().Unit(unit).Build()), IsEmpty());
  EXPECT_EQ(ForPlayers(Sound().Unit(unit).Build()).size(), 3U);
}

TEST(CheckForPlayers, UnitLongerThanPlayersTake) {
  const auto sized = [](std::size_t size) {
    Bytes unit = PacketBuilder().Delay(90).UnitBytes();
    unit.resize(size - 4, 0xFF);
    return PacketBuilder().Unit(unit).ControlOffset(8).Build();
  };
  // The control area's length is another matter; and this program reads neither.
  EXPECT_THAT(ForPlayers(sized(53220)), ElementsAre(Problem(10, Code::UnitTooLarge, "53220"),
                                                    Problem(12, Code::PlayerControlSize, "53212")));
  EXPECT_THAT(ForPlayers(sized(53222)), ElementsAre(Problem(10, Code::UnitTooLarge, "53222"),
                                                    Problem(10, Code::PlayerUnitSize, "53222"),
                                                    Problem(12, Code::PlayerControlSize, "53214")));
}

TEST(CheckForPlayers, ControlAreaLongerThanPlayersTake) {
  const auto sized = [](std::size_t control) {
    Bytes unit = PacketBuilder().Delay(90).UnitBytes();
    unit.resize(4 + control, 0xFF);
    return PacketBuilder().Unit(unit).Build();
  };
  EXPECT_THAT(ForPlayers(sized(32000)), IsEmpty());
  EXPECT_THAT(ForPlayers(sized(32002)), ElementsAre(Problem(12, Code::PlayerControlSize,
                                                            "take 32002 bytes; players take up to 32000")));
}

TEST(CheckForPlayers, OddUnitSize) {
  const Bytes unit = Join({PacketBuilder().Delay(90).UnitBytes(), {0xFF}});

  EXPECT_THAT(ForPlayers(PacketBuilder().Unit(unit).Build()),
              ElementsAre(Problem(10, Code::OddUnitSize, "size 39 is odd")));
}

TEST(CheckForPlayers, NoCommandStartsTheDisplay) {
  EXPECT_THAT(ForPlayers(PlayerPacket(Join({Sequence(0, 32, {StopDisplay, PlayerPicture, EndOfSequence}),
                                            Sequence(90, 32, {StopDisplay, EndOfSequence})}))),
              ElementsAre(Problem(18, Code::MissingStart, "show nothing")));
}

TEST(CheckForPlayers, AForcedStartIsAStart) {
  EXPECT_THAT(ForPlayers(PlayerPacket(Join({Sequence(0, 32, {ForcedStart, PlayerPicture, EndOfSequence}),
                                            Sequence(90, 32, {StopDisplay, EndOfSequence})}))),
              IsEmpty());
}

TEST(CheckForPlayers, NoCommandStopsTheDisplay) {
  EXPECT_THAT(ForPlayers(PlayerPacket(Join({Sequence(0, 32, {StartDisplay, PlayerPicture, EndOfSequence}),
                                            Sequence(90, 32, {StartDisplay, EndOfSequence})}))),
              ElementsAre(Problem(18, Code::MissingStop, "until the next subtitle")));
}

TEST(CheckForPlayers, OneWithoutAnEndIsToldOnce) {
  EXPECT_THAT(ForPlayers(PlayerPacket(
                  Join({Sequence(0, 8, {StartDisplay, PlayerPicture, EndOfSequence}), {0xFF, 0xFF}}))),
              ElementsAre(Problem(18, Code::NoEnd, "no end")));
}

TEST(CheckForPlayers, ACommandThatOnlyALaterSequenceHas) {
  // The area is in the second sequence, unit byte 25.
  const Bytes first = Join({SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0), SetFields(4, 6)});
  EXPECT_THAT(ForPlayers(PlayerPacket(
                  Join({Sequence(0, 25, {StartDisplay, first, EndOfSequence}),
                        Sequence(90, 25, {SetArea(100, 103, 400, 401), StopDisplay, EndOfSequence})}))),
              ElementsAre(Problem(10 + 29, Code::LateCommand, "command 0x05")));
}

TEST(CheckForPlayers, ColoursThatOnlyALaterSequenceHas) {
  // The colours are in the second sequence, unit byte 29.
  const Bytes first = Join({SetContrast(15, 15, 15, 0), SetArea(100, 103, 400, 401), SetFields(4, 6)});
  EXPECT_THAT(
      ForPlayers(PlayerPacket(Join({Sequence(0, 29, {StartDisplay, first, EndOfSequence}),
                                    Sequence(90, 29, {SetColour(3, 2, 1, 0), StopDisplay, EndOfSequence})}))),
      ElementsAre(Problem(10 + 33, Code::LateCommand, "command 0x03")));
}

TEST(CheckForPlayers, ACommandThatIsRepeatedLaterIsNoProblem) {
  EXPECT_THAT(
      ForPlayers(PlayerPacket(Join({Sequence(0, 32, {StartDisplay, PlayerPicture, EndOfSequence}),
                                    Sequence(90, 32, {SetColour(0, 0, 0, 0), StopDisplay, EndOfSequence}),
                                    {0xFF}}))),
      IsEmpty());
}

TEST(CheckForPlayers, DelaysThatStepBack) {
  const Bytes file = PlayerPacket(Join({Sequence(0, 32, {StartDisplay, PlayerPicture, EndOfSequence}),
                                        Sequence(90, 38, {SetColour(0, 0, 0, 0)}),
                                        {0xFF},
                                        Sequence(60, 40, {StopDisplay, EndOfSequence})}));
  // The second sequence has 8 bytes, so the third one stands at 40.
  Bytes moved = file;
  moved[10 + 35] = 40;

  EXPECT_THAT(ForPlayers(moved), ElementsAre(Problem(18, Code::ManySequences, "3 control sequences"),
                                             Problem(10 + 40, Code::EarlierDelay, "60 is less than")));
}

TEST(CheckForPlayers, LinesOutsideTheSafeOnes) {
  EXPECT_THAT(ForPlayers(Sound().Area(0, 3, 2, 3).Build()), IsEmpty());
  EXPECT_THAT(ForPlayers(Sound().Area(0, 3, 0, 1).Build()),
              ElementsAre(Problem(18, Code::OutsideSafeFrame,
                                  "lines 0 to 1 of the frame; players show lines 2 to 574")));
  EXPECT_THAT(ForPlayers(Sound().Area(0, 3, 574, 575).Build()),
              ElementsAre(Problem(18, Code::OutsideSafeFrame, "lines 574 to 575")));
  EXPECT_THAT(ForPlayers(Sound().Area(0, 3, 478, 479).Build(), 480), IsEmpty());
  EXPECT_THAT(ForPlayers(Sound().Area(0, 3, 0, 1).Build(), 480),
              ElementsAre(Problem(18, Code::OutsideSafeFrame, "lines 2 to 479")));
}

TEST(CheckForPlayers, AnAreaOutsideTheFrameIsToldOnce) {
  EXPECT_THAT(ForPlayers(Sound().Area(0, 3, 576, 577).Build()),
              ElementsAre(Problem(18, Code::AreaOutsideFrame, "leaves the frame")));
}

TEST(CheckForPlayers, AnAreaMayBeOneColumnWideOrOneLineHigh) {
  // Its fields have more pixels than that.
  EXPECT_THAT(ForPlayers(Sound().Area(0, 0, 0, 1).Build()),
              testing::Contains(Problem(18, Code::OutsideSafeFrame, "lines 0 to 1 of the frame")));
  EXPECT_THAT(ForPlayers(Sound().Area(0, 3, 0, 0).Build()),
              testing::Contains(Problem(18, Code::OutsideSafeFrame, "lines 0 to 0 of the frame")));
}

TEST(CheckForPlayers, AnAreaThatStartsOnAnOddLine) {
  EXPECT_THAT(ForPlayers(Sound().Area(0, 3, 401, 402).Build()),
              ElementsAre(Problem(18, Code::OddFirstLine, "odd line 401")));
}

/// A picture of 720 x 2 pixels: the top line of `top`, the bottom one empty.
Bytes WithTopLine(const Bytes& top) {
  const auto bottom = static_cast<unsigned>(4 + top.size());
  const unsigned control = bottom + 2;
  const unsigned last = control + 24;
  return PacketBuilder()
      .Unit(Join({top,
                  {0x00, 0x00},
                  Sequence(0, last,
                           {StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0),
                            SetArea(0, 719, 400, 401), SetFields(4, bottom), EndOfSequence}),
                  Sequence(90, last, {StopDisplay, EndOfSequence})}))
      .ControlOffset(control)
      .Build();
}

TEST(CheckForPlayers, ALineOfMoreBitsThanPlayersTake) {
  // Runs of one pixel, a nibble each, two a byte; the rest of the line is one code of four nibbles.
  EXPECT_THAT(ForPlayers(WithTopLine(Join({Bytes(178, 0x56), {0x00, 0x01}}))), IsEmpty());
  EXPECT_THAT(ForPlayers(WithTopLine(Join({Bytes(180, 0x56), {0x00, 0x01}}))),
              ElementsAre(Problem(14, Code::LongLine, "line 1 of the picture takes 1456 bits")));
}

TEST(CheckForPlayers, ARunThatPassesTheLinesEnd) {
  // 255 + 255 pixels, then 210 or 211.
  EXPECT_THAT(ForPlayers(WithTopLine({0x03, 0xFD, 0x03, 0xFD, 0x03, 0x49})), IsEmpty());
  EXPECT_THAT(ForPlayers(WithTopLine({0x03, 0xFD, 0x03, 0xFD, 0x03, 0x4D})),
              ElementsAre(Problem(14, Code::RunPastLine, "the end of line 1")));
}

TEST(CheckForPlayers, OtherEntriesThanTheSubtitleBefore) {
  EXPECT_THAT(
      ForPlayers(Join({Sound(0).Build(), Sound(180000).Colour(3, 2, 1, 9).Build(),
                       Sound(360000).Colour(3, 2, 1, 9).Build()})),
      ElementsAre(Problem(48 + 24, Code::OtherEntries,
                          "the palette entries 9, 1, 2, 3, those of the subtitle before it 0, 1, 2, 3")));
}

TEST(CheckForPlayers, AnEndOnThePlayersClockAfterTheNextStart) {
  // 90 x 1000 ticks and 90 x 1024, with a gap of a millisecond.
  const auto next = [](std::int64_t start) {
    return ForPlayers(Join({Sound(0).Build(), Sound(start).Build()}));
  };
  EXPECT_THAT(next(92160 + 90), IsEmpty());
  EXPECT_THAT(next(92160 + 89), ElementsAre(Problem(2, Code::ShortGap, "end it 89 ticks of 90 kHz before")));
  EXPECT_THAT(next(92160), ElementsAre(Problem(2, Code::ShortGap, "end it 0 ticks")));
  EXPECT_THAT(next(92159), ElementsAre(Problem(2, Code::ShortGap, "show it 1 ticks of 90 kHz into")));
  EXPECT_THAT(next(90000), ElementsAre(Problem(2, Code::ShortGap, "show it 2160 ticks of 90 kHz into")));
  EXPECT_THAT(next(89999), ElementsAre(Problem(2, Code::Overlap, "")));
  EXPECT_THAT(ForPlayers(Join({Sound(test::Second).Build(), Sound(test::Second + 92160 + 89).Build()})),
              ElementsAre(Problem(2, Code::ShortGap, "end it 89 ticks of 90 kHz before")));
}

TEST(CheckForPlayers, PlayersTakeTheDelayAsUnsigned) {
  // 0x8000 x 1024 ticks, 372.8 s.
  const auto problems = [](std::int64_t next) {
    return ForPlayers(Join({PacketBuilder().Delay(0x8000).Build(), Sound(next).Build()}));
  };
  EXPECT_THAT(problems(33554432 + 90), ElementsAre(Problem(18, Code::NegativeDelay, "")));
  EXPECT_THAT(problems(33554432), ElementsAre(Problem(18, Code::NegativeDelay, ""),
                                              Problem(2, Code::ShortGap, "end it 0 ticks")));
  EXPECT_THAT(problems(0), ElementsAre(Problem(18, Code::NegativeDelay, ""),
                                       Problem(2, Code::ShortGap, "show it 33554432 ticks")));
}

TEST(CheckForPlayers, NoEndAndANextStartFartherThanADelaySays) {
  // 65535 x 1024 ticks.
  const auto problems = [](std::int64_t next) {
    return ForPlayers(Join({PacketBuilder().Build(), Sound(next).Build()}));
  };
  EXPECT_THAT(problems(67107840), ElementsAre(Problem(18, Code::NoEnd, "")));
  EXPECT_THAT(problems(67107841),
              ElementsAre(Problem(18, Code::NoEnd, ""), Problem(2, Code::TooLongForDelay, "745 s later")));
}

TEST(CheckForPlayers, AnEarlierNextStartIsNoGapAndNotTooFar) {
  const auto codes = [](const PacketBuilder& first) {
    std::vector<Code> codes;
    for (const StreamProblem& problem : ForPlayers(Join({first.Build(), Sound(0).Build()}))) {
      codes.push_back(problem.Code);
    }
    return codes;
  };
  EXPECT_THAT(codes(PacketBuilder().Time(90000)), ElementsAre(Code::NoEnd, Code::TimeBackwards));
  EXPECT_THAT(codes(Sound(90000)), ElementsAre(Code::TimeBackwards));
}

TEST(CheckForPlayers, WithoutASequenceThereIsNoDelayAndNoGap) {
  const Bytes nothing = PacketBuilder().Unit({0x11, 0x00, 0x12, 0x00}).ControlOffset(8).Build();
  EXPECT_THAT(ForPlayers(nothing),
              testing::Not(testing::Contains(Field("Code", &StreamProblem::Code, Code::MissingStart))));
  EXPECT_THAT(ForPlayers(Join({nothing, Sound(500).Build()})),
              testing::Not(testing::Contains(Field("Code", &StreamProblem::Code, Code::ShortGap))));
}

TEST(CheckForPlayers, TimesAtBothEndsOfTheirRangeAreTaken) {
  constexpr std::int64_t Earliest = std::numeric_limits<std::int64_t>::min();
  constexpr std::int64_t Latest = std::numeric_limits<std::int64_t>::max();

  EXPECT_THAT(ForPlayers(Join({PacketBuilder().Time(Earliest).Build(), Sound(Latest).Build()})),
              ElementsAre(Problem(2, Code::NegativeTime, ""), Problem(18, Code::NoEnd, ""),
                          Problem(2, Code::TooLongForDelay, "")));
  EXPECT_THAT(ForPlayers(Join({Sound(Latest).Build(), Sound(Latest).Build()})),
              ElementsAre(Problem(2, Code::Overlap, "")));
}

TEST(CheckForPlayers, PacketsCutAtEveryLengthAreTaken) {
  const Bytes whole = Join({Sound(0).Build(), Sound(180000).Build()});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    // Whatever is told to everybody is told for players too.
    EXPECT_GE(ForPlayers(cut).size(), ForEverybody(cut).size()) << length;
  }
}

}  // namespace
}  // namespace quillmark
