#include "sup/StreamFix.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "sup/StreamCheck.h"
#include "sup/StreamLoader.h"
#include "tests/support/PacketBuilder.h"
#include "tests/support/PrintProblem.h"

namespace quillmark {

void PrintTo(const Mend& mend, std::ostream* out) {
  *out << MendName(mend.Kind) << " of " << mend.Packet << ": " << MendText(mend);
}

namespace {

using test::Bytes;
using test::EndOfSequence;
using test::Join;
using test::PacketBuilder;
using test::Sequence;
using test::SetArea;
using test::SetColour;
using test::SetContrast;
using test::SetFields;
using test::StartDisplay;
using test::StopDisplay;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

using Code = StreamProblemCode;

struct Fixed {
  Bytes File;
  std::vector<Mend> Mends;
  std::vector<StreamProblem> Left;
  StreamEdit Edit;
};

Fixed Fix(const Bytes& file, const CheckOptions& options = {}) {
  Result<StreamFix> fix = FixStream(file, options);
  EXPECT_TRUE(fix) << fix.Reason();
  Fixed fixed{.File = file, .Mends = fix->Mends, .Left = fix->Left, .Edit = fix->Edit};
  EXPECT_TRUE(ApplyEdit(fixed.File, fix->Edit));
  return fixed;
}

Mend Mended(MendKind kind, std::int64_t packet, std::int64_t first = 0, std::int64_t second = 0) {
  return {.Kind = kind, .Packet = packet, .Numbers = {first, second}};
}

auto Left(Code code) {
  return Field(&StreamProblem::Code, code);
}

PacketBuilder SoundAt(std::int64_t start) {
  return PacketBuilder().Time(start).Delay(90);
}

/// What describes the picture, 19 bytes.
const Bytes Picture =
    Join({SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0), SetArea(100, 103, 400, 401), SetFields(4, 6)});

/// A unit of two lines whose control sequences stand from unit byte 8 on.
Bytes PacketOfSequences(const Bytes& sequences) {
  return PacketBuilder().Unit(Join({{0x11, 0x00, 0x12, 0x00}, sequences})).Build();
}

TEST(FixStream, ASoundStreamStaysAsItIs) {
  const Fixed fixed = Fix(Join({SoundAt(0).Build(), SoundAt(180000).Build()}));

  EXPECT_TRUE(fixed.Edit.IsEmpty());
  EXPECT_THAT(fixed.Mends, IsEmpty());
  EXPECT_THAT(fixed.Left, IsEmpty());
}

TEST(FixStream, NothingIsASoundStream) {
  EXPECT_THAT(Fix({}).Mends, IsEmpty());
}

// What stands between packets, and their sizes.

TEST(FixStream, SignatureOfWhichTheFileHasTheStartAloneIsLeftOut) {
  for (const Bytes& start :
       {Bytes{'S'}, Bytes{'S', 'P'}, Bytes{'S', 'P', 0, 0, 0, 0, 0, 0, 0, 0, 0, 38, 0}}) {
    EXPECT_EQ(Fix(Join({SoundAt(0).Build(), start})).File, SoundAt(0).Build());
  }
}

TEST(FixStream, AByteThatIsNoPacketIsLeftOut) {
  const Fixed fixed = Fix(Join({{'x'}, SoundAt(0).Build(), {'y'}, SoundAt(180000).Build()}));
  EXPECT_EQ(fixed.File, Join({SoundAt(0).Build(), SoundAt(180000).Build()}));
}

TEST(FixStream, BytesThatAreNoPacketAreLeftOut) {
  const Fixed fixed =
      Fix(Join({Bytes(20, 'x'), SoundAt(0).Build(), Bytes(30, 'y'), SoundAt(180000).Build(), {1, 2}}));

  EXPECT_EQ(fixed.File, Join({SoundAt(0).Build(), SoundAt(180000).Build()}));
  EXPECT_THAT(fixed.Mends,
              ElementsAre(Mended(MendKind::DroppedBytes, 0, 0, 20), Mended(MendKind::DroppedBytes, 0, 68, 30),
                          Mended(MendKind::DroppedBytes, 0, 146, 2)));
  EXPECT_THAT(fixed.Left, IsEmpty());
}

TEST(FixStream, ASizeThatLeadsNowhereBecomesWhatLiesBeforeTheNextPacket) {
  for (const unsigned size : {20U, 45U, 0x7000U, 0x9000U}) {
    SCOPED_TRACE(size);
    const Fixed fixed =
        Fix(Join({SoundAt(0).Build(), SoundAt(180000).Size(size).Build(), SoundAt(360000).Build()}));

    EXPECT_EQ(fixed.File, Join({SoundAt(0).Build(), SoundAt(180000).Build(), SoundAt(360000).Build()}));
    EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::CorrectedSize, 2, size, 38)));
    EXPECT_THAT(fixed.Left, IsEmpty());
  }
}

TEST(FixStream, APacketThatNoSizeHelpsIsLeftOut) {
  const Fixed fixed =
      Fix(Join({SoundAt(0).Build(), PacketBuilder().Unit(Bytes(40, 0x03)).Size(20).ControlOffset(8).Build(),
                SoundAt(360000).Build()}));

  EXPECT_EQ(fixed.File, Join({SoundAt(0).Build(), SoundAt(360000).Build()}));
  EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::DroppedBytes, 0, 48, 54)));
}

TEST(FixStream, ALastPacketThatTheFileCutsOffStaysAndIsNamed) {
  Bytes file = Join({SoundAt(0).Build(), SoundAt(180000).Build()});
  file.resize(file.size() - 20);

  const Fixed fixed = Fix(file);

  EXPECT_EQ(fixed.File, file);
  EXPECT_THAT(fixed.Mends, IsEmpty());
  EXPECT_THAT(fixed.Left, testing::Contains(Left(Code::PastEnd)));
}

// Control sequences.

TEST(FixStream, AUnitOfAnOddSizeGetsAByte) {
  const Bytes odd =
      PacketBuilder().Delay(90).Unit(Join({PacketBuilder().Delay(90).UnitBytes(), {0xFF}})).Build();

  const Fixed fixed = Fix(odd);

  EXPECT_EQ(fixed.File,
            PacketBuilder().Unit(Join({PacketBuilder().Delay(90).UnitBytes(), {0xFF, 0xFF}})).Build());
  EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::MadeEven, 1, 39)));
}

// One byte more is more than a unit may have.
TEST(FixStream, ALargestUnitOfAnOddSizeGetsNoByte) {
  Bytes unit = SoundAt(180000).UnitBytes();
  unit.resize(32763, 0xFF);  // after four bytes of sizes
  const auto packet = [&](unsigned size) {
    return PacketBuilder().Time(180000).Unit(unit).Size(size).Build();
  };

  const Fixed fixed = Fix(Join({SoundAt(0).Build(), packet(20), SoundAt(360000).Build()}));

  EXPECT_EQ(fixed.File, Join({SoundAt(0).Build(), packet(32767), SoundAt(360000).Build()}));
  EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::CorrectedSize, 2, 20, 32767)));
}

TEST(FixStream, ALastSequenceGetsItsEndMark) {
  const Fixed fixed = Fix(PacketOfSequences(
      Join({Sequence(0, 32, {StartDisplay, Picture, EndOfSequence}), Sequence(90, 32, {StopDisplay})})));

  EXPECT_EQ(fixed.File, PacketOfSequences(Join({Sequence(0, 32, {StartDisplay, Picture, EndOfSequence}),
                                                Sequence(90, 32, {StopDisplay, EndOfSequence})})));
  EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::AddedEndMark, 1)));
  EXPECT_THAT(fixed.Left, IsEmpty());
  EXPECT_TRUE(fixed.Edit.Reindexes) << "packets may have moved";
}

TEST(FixStream, AFirstSequenceGetsItsEndMarkAndThePointersFollow) {
  // The second sequence, at 31, moves to 32. Its delay is read as a command until then.
  const Fixed fixed = Fix(PacketOfSequences(
      Join({Sequence(0, 31, {StartDisplay, Picture}), Sequence(90, 31, {StopDisplay, EndOfSequence})})));

  EXPECT_EQ(fixed.File, PacketOfSequences(Join({Sequence(0, 32, {StartDisplay, Picture, EndOfSequence}),
                                                Sequence(90, 32, {StopDisplay, EndOfSequence})})));
  EXPECT_THAT(fixed.Left, IsEmpty());
  // The size and all from the first pointer's low byte to the second pointer, no other byte changes.
  ASSERT_EQ(fixed.Edit.Places.size(), 2U);
  EXPECT_EQ((*fixed.Edit.Places.begin()).Offset, 10U);
  const StreamEdit::Place rest = *std::next(fixed.Edit.Places.begin());
  EXPECT_EQ(rest.Offset, 10U + 8 + 3);
  EXPECT_EQ(rest.Offset + rest.Removed, 10U + 31 + 4);
}

TEST(FixStream, ASequenceBeforePictureDataGetsNoEndMark) {
  // The second sequence is at 31, the bottom field after it, at 37: it would move.
  const Bytes picture = Join(
      {SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0), SetArea(100, 103, 400, 401), SetFields(4, 37)});
  const Bytes file = PacketOfSequences(Join(
      {Sequence(0, 31, {StartDisplay, picture}), Sequence(90, 31, {StopDisplay, EndOfSequence}), {0x12}}));
  EXPECT_EQ(Fix(file).File, file);
}

TEST(FixStream, AControlOffsetInTheUnitsHeaderIsNotMended) {
  // From 3 on the nine bytes could be read as a sequence that points to itself.
  const Bytes file = PacketBuilder().ControlOffset(3).Unit({0x00, 0x00, 0x03, 0xFF, 0xFF}).Build();
  EXPECT_EQ(Fix(file).File, file);
}

/// So many sequences that start the display and lack their end marks, and a last one.
Bytes PacketWithoutEndMarks(unsigned count) {
  Bytes sequences;
  unsigned at = 8;
  for (unsigned i = 0; i < count; ++i) {
    at += 5;
    sequences = Join({sequences, Sequence(0, at, {StartDisplay})});
  }
  return PacketOfSequences(Join({sequences, Sequence(90, at, {Picture, EndOfSequence})}));
}

TEST(FixStream, EndMarksAreAddedInUnitsOfUpToSixteenSequences) {
  // 116 bytes, with 15 more and one that makes their number even.
  EXPECT_EQ(Fix(PacketWithoutEndMarks(15)).File.size(), 132U);
  EXPECT_EQ(Fix(PacketWithoutEndMarks(16)).File, PacketWithoutEndMarks(16));
}

TEST(FixStream, ALastSequenceThatPointsToNothingPointsToItself) {
  const Fixed fixed = Fix(PacketOfSequences(Join({Sequence(0, 32, {StartDisplay, Picture, EndOfSequence}),
                                                  Sequence(90, 0, {StopDisplay, EndOfSequence})})));

  EXPECT_EQ(fixed.File, PacketOfSequences(Join({Sequence(0, 32, {StartDisplay, Picture, EndOfSequence}),
                                                Sequence(90, 32, {StopDisplay, EndOfSequence})})));
  EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::ClosedSequences, 1, 0)));
}

TEST(FixStream, ALastSequenceThatPointsIntoFillingPointsToItself) {
  const auto packet = [](unsigned next, const Bytes& rest) {
    return PacketOfSequences(Join({Sequence(0, 32, {StartDisplay, Picture, EndOfSequence}),
                                   Sequence(90, next, {StopDisplay, EndOfSequence}), rest}));
  };
  EXPECT_EQ(Fix(packet(0, {0x00, 0xFF})).File, packet(32, {0x00, 0xFF}));
  EXPECT_EQ(Fix(packet(0, {0x00, 0x01})).File, packet(0, {0x00, 0x01}));
}

TEST(FixStream, ACommandThatIsCutShortIsNotMended) {
  const Bytes file = PacketOfSequences(Sequence(0, 8, {StartDisplay, {0x05, 0x12, 0x34}}));

  const Fixed fixed = Fix(file);

  EXPECT_EQ(fixed.File, file);
  EXPECT_THAT(fixed.Mends, IsEmpty());
  EXPECT_THAT(fixed.Left, testing::Contains(Left(Code::ControlUnfinished)));
}

// Order and ends.

TEST(FixStream, PacketsComeInTheOrderOfTheirStarts) {
  const Fixed fixed = Fix(Join({SoundAt(180000).Build(), SoundAt(360000).Build(), SoundAt(0).Build()}));

  EXPECT_EQ(fixed.File, Join({SoundAt(0).Build(), SoundAt(180000).Build(), SoundAt(360000).Build()}));
  EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::PutInOrder, 1, 3)));
  EXPECT_THAT(fixed.Left, IsEmpty());
}

TEST(FixStream, PacketsPutInOrderAreToldInTheirNewOrder) {
  const Fixed fixed = Fix(
      Join({SoundAt(540000).Build(), SoundAt(360000).Build(), SoundAt(180000).Build(), SoundAt(0).Build()}));

  std::vector<std::int64_t> numbers;
  for (const Mend& mend : fixed.Mends) {
    EXPECT_EQ(mend.Kind, MendKind::PutInOrder);
    numbers.push_back(mend.Packet);
  }
  EXPECT_EQ(numbers.size(), 3U);
  EXPECT_TRUE(std::ranges::is_sorted(numbers));
}

TEST(FixStream, MendsBeforeTheSortingHaveTheNumbersAfterIt) {
  const PacketBuilder odd =
      PacketBuilder().Time(360000).Unit(Join({PacketBuilder().Delay(90).UnitBytes(), {0xFF}}));
  const Fixed fixed = Fix(Join({odd.Build(), SoundAt(0).Build(), SoundAt(180000).Build()}));

  EXPECT_THAT(fixed.Mends,
              ElementsAre(Mended(MendKind::MadeEven, 3, 39), Mended(MendKind::PutInOrder, 3, 1)));
}

TEST(FixStream, AnEndAfterTheNextStartIsCutToIt) {
  const Fixed fixed = Fix(Join({SoundAt(0).Build(), SoundAt(60500).Build()}));

  EXPECT_EQ(fixed.File, Join({SoundAt(0).Delay(60).Build(), SoundAt(60500).Build()}));
  EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::CutEnd, 1, 90, 60)));
}

TEST(FixStream, ADelayAfterAStopIsNoEndThatCouldBeCut) {
  // The second sequence, at 33, takes effect after the next start, and the first one has the stop command.
  const Bytes late =
      PacketOfSequences(Join({Sequence(0, 33, {StartDisplay, Picture, StopDisplay, EndOfSequence}),
                              Sequence(90, 33, {StartDisplay, SetColour(3, 2, 1, 0), EndOfSequence})}));
  const Bytes file = Join({late, SoundAt(90000).Build()});
  EXPECT_EQ(Fix(file, {.Profile = CheckProfile::Player}).File, file);
}

TEST(FixStream, AnEndBehindAChangeOfColoursIsNotCut) {
  // Line 400 in other colours from column 100 on; the second sequence is at 49.
  const Bytes change = {0x07, 0x00, 0x10, 0x01, 0x90, 0x11, 0x90, 0x00, 0x64,
                        0x32, 0x10, 0xFF, 0xF0, 0x0F, 0xFF, 0xFF, 0xFF};
  const Bytes animated =
      PacketOfSequences(Join({Sequence(0, 49, {StartDisplay, Picture, change, EndOfSequence}),
                              Sequence(90, 49, {StopDisplay, EndOfSequence}),
                              {0xFF}}));
  const Bytes file = Join({animated, SoundAt(90000).Build()});
  EXPECT_EQ(Fix(file, {.Profile = CheckProfile::Player}).File, file);
}

TEST(FixStream, AMissingEndIsTheNextStart) {
  const Fixed fixed = Fix(Join({SoundAt(0).Delay(0).Build(), SoundAt(60500).Delay(0).Build()}));

  EXPECT_EQ(fixed.File, Join({SoundAt(0).Delay(60).Build(), SoundAt(60500).Delay(0).Build()}));
  EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::AddedEnd, 1, 0, 60)));
  // Nothing tells when the last one ends.
  EXPECT_THAT(fixed.Left, ElementsAre(Left(Code::NoEnd)));
}

TEST(FixStream, AUnitWithoutAStopSequenceGetsOne) {
  const Bytes alone =
      PacketOfSequences(Join({Sequence(0, 8, {StartDisplay, Picture, EndOfSequence}), {0xFF, 0xFF}}));
  const Fixed fixed = Fix(Join({alone, SoundAt(60500).Build()}));

  const Bytes whole = PacketOfSequences(Join({Sequence(0, 32, {StartDisplay, Picture, EndOfSequence}),
                                              Sequence(60, 32, {StopDisplay, EndOfSequence}),
                                              {0xFF, 0xFF}}));
  EXPECT_EQ(fixed.File, Join({whole, SoundAt(60500).Build()}));
  EXPECT_THAT(fixed.Left, IsEmpty());
}

TEST(FixStream, PlayersNeedAMillisecondBeforeTheNextStart) {
  const Bytes file = Join({SoundAt(0).Build(), SoundAt(90000).Build()});

  EXPECT_TRUE(Fix(file).Edit.IsEmpty());
  // 87 x 1024 ticks are 89,088.
  const Fixed fixed = Fix(file, {.Profile = CheckProfile::Player});
  EXPECT_EQ(fixed.File, Join({SoundAt(0).Delay(87).Build(), SoundAt(90000).Build()}));
  EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::CutEnd, 1, 90, 87)));
  EXPECT_THAT(fixed.Left, IsEmpty());
}

TEST(FixStream, BothBytesOfADelayAreNotedAndWritten) {
  // 300 x 1000 ticks end at the next start; 292 x 1024 are 299,008.
  const Fixed fixed =
      Fix(Join({SoundAt(0).Delay(300).Build(), SoundAt(300000).Build()}), {.Profile = CheckProfile::Player});
  EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::CutEnd, 1, 300, 292)));
  EXPECT_EQ(fixed.File, Join({SoundAt(0).Delay(292).Build(), SoundAt(300000).Build()}));
}

TEST(FixStream, PlayersNeedAStopCommand) {
  const Bytes without = PacketOfSequences(Join({Sequence(0, 32, {StartDisplay, Picture, EndOfSequence}),
                                                Sequence(90, 32, {StartDisplay, EndOfSequence})}));
  EXPECT_TRUE(Fix(Join({without, SoundAt(900000).Build()})).Edit.IsEmpty());

  const Fixed fixed = Fix(Join({without, SoundAt(900000).Build()}), {.Profile = CheckProfile::Player});

  EXPECT_EQ(fixed.File, Join({PacketOfSequences(Join({Sequence(0, 32, {StartDisplay, Picture, EndOfSequence}),
                                                      Sequence(90, 38, {StartDisplay, EndOfSequence}),
                                                      Sequence(90, 38, {StopDisplay, EndOfSequence})})),
                              SoundAt(900000).Build()}));
  EXPECT_THAT(fixed.Left, ElementsAre(Left(Code::ManySequences)));
}

// Areas.

TEST(FixStream, AnAreaOutsideTheFrameIsMovedIn) {
  const Fixed fixed = Fix(SoundAt(0).Area(718, 721, 576, 577).Build());

  EXPECT_EQ(fixed.File, SoundAt(0).Area(716, 719, 574, 575).Build());
  EXPECT_THAT(fixed.Mends, ElementsAre(Mended(MendKind::MovedArea, 1, -2, -2)));
  EXPECT_THAT(fixed.Left, IsEmpty());
}

TEST(FixStream, AnAreaMovesByAnEvenNumberOfLines) {
  EXPECT_EQ(Fix(SoundAt(0).Area(0, 3, 575, 576).Build()).File, SoundAt(0).Area(0, 3, 573, 574).Build());
  EXPECT_EQ(Fix(SoundAt(0).Area(0, 3, 1, 576).Build()).File, SoundAt(0).Area(0, 3, 0, 575).Build());
}

TEST(FixStream, AnAreaLargerThanTheFrameStaysAndIsNamed) {
  const Fixed fixed = Fix(SoundAt(0).Area(0, 720, 400, 401).Build());

  EXPECT_TRUE(fixed.Edit.IsEmpty());
  EXPECT_THAT(fixed.Left, ElementsAre(Left(Code::AreaOutsideFrame)));
}

TEST(FixStream, PlayersDoNotShowTheFirstAndTheLastLines) {
  EXPECT_TRUE(Fix(SoundAt(0).Area(0, 3, 0, 1).Build()).Edit.IsEmpty());
  EXPECT_EQ(Fix(SoundAt(0).Area(0, 3, 0, 1).Build(), {.Profile = CheckProfile::Player}).File,
            SoundAt(0).Area(0, 3, 2, 3).Build());
  // A line down would do, and two are an even number.
  EXPECT_EQ(Fix(SoundAt(0).Area(0, 3, 1, 2).Build(), {.Profile = CheckProfile::Player}).File,
            SoundAt(0).Area(0, 3, 3, 4).Build());
  EXPECT_EQ(Fix(SoundAt(0).Area(0, 3, 478, 481).Build(), {.FrameLines = 480}).File,
            SoundAt(0).Area(0, 3, 476, 479).Build());
}

// All of it at once.

/// A few packets of all kinds, damaged here and there.
Bytes RandomFile(std::mt19937& random) {
  const auto below = [&](unsigned limit) { return static_cast<unsigned>(random() % limit); };
  Bytes file;
  for (unsigned i = below(7); i > 0; --i) {
    PacketBuilder packet;
    packet.Time(static_cast<std::int64_t>(below(20)) * 30000)
        .Delay(below(3) == 0   ? 0
               : below(4) == 0 ? below(0x10000)
                               : below(200))
        .Colour(3, 2, 1, below(2));
    if (below(3) == 0) {
      const unsigned x = below(800);
      const unsigned y = below(700);
      packet.Area(x, x + below(100), y, y + below(100));
    }
    Bytes unit = packet.UnitBytes();
    unit.resize(unit.size() + below(3), 0xFF);
    for (unsigned damage = below(4) == 0 ? 1 + below(3) : 0; damage > 0; --damage) {
      const auto at = unit.begin() + below(static_cast<unsigned>(unit.size()));
      switch (below(3)) {
        case 0:
          *at = static_cast<std::uint8_t>(random());
          break;
        case 1:
          unit.erase(at);
          break;
        default:
          unit.insert(at, static_cast<std::uint8_t>(below(8)));
          break;
      }
    }
    packet.Unit(unit);
    if (below(8) == 0) {
      packet.Size(below(4) == 0 ? below(0x10000) : below(100));
    }
    if (below(12) == 0) {
      packet.ControlOffset(below(60));
    }
    const Bytes built = packet.Build();
    file.insert(file.end(), built.begin(), built.end());
    if (below(8) == 0) {
      file.resize(file.size() + below(30), static_cast<std::uint8_t>(random()));
    }
  }
  if (below(5) == 0 && !file.empty()) {
    file.resize(below(static_cast<unsigned>(file.size())));
  }
  return file;
}

std::vector<StreamProblem> Problems(const Bytes& file, const CheckOptions& options) {
  std::vector<StreamProblem> problems;
  CheckStream(
      file, [&](const StreamProblem& problem) { problems.push_back(problem); }, options);
  return problems;
}

class FixAnything : public testing::TestWithParam<CheckProfile> {};

TEST_P(FixAnything, OnceIsEnoughAndWhatIsLeftIsNamed) {
  std::mt19937 random(71);
  const CheckOptions options{.Profile = GetParam()};
  for (int round = 0; round < 1500; ++round) {
    SCOPED_TRACE(round);
    const Bytes file = RandomFile(random);

    const Fixed fixed = Fix(file, options);

    ASSERT_EQ(fixed.Left, Problems(fixed.File, options));
    const Fixed again = Fix(fixed.File, options);
    ASSERT_TRUE(again.Edit.IsEmpty() && again.File == fixed.File && again.Mends.empty())
        << testing::PrintToString(again.Mends);
    const auto loaded = IndexPrimaryStream(fixed.File, InvalidFirst::IsPassed);
    ASSERT_TRUE(loaded && !loaded->LostSignature);
    ASSERT_EQ(fixed.Mends.empty(), fixed.Edit.IsEmpty());
    StreamEdit edit = fixed.Edit;
    Bytes undone = file;
    ASSERT_TRUE(ApplyEdit(undone, edit) && ApplyEdit(undone, edit));
    ASSERT_EQ(undone, file);
  }
}

INSTANTIATE_TEST_SUITE_P(Profiles, FixAnything, testing::Values(CheckProfile::Spec, CheckProfile::Player),
                         [](const auto& test) {
                           return test.param == CheckProfile::Spec ? std::string("Spec")
                                                                   : std::string("Player");
                         });

/// Damage that a fuzzer made: the unit's size takes in what was another packet (byte 82), whose area command,
/// lines 0 to 10, is read as well and counts as the last one.
TEST(FixStream, AreaThatAnotherCommandNamesIsLeftAndNotMovedForNothing) {
  const Bytes file = {
      0x53, 0x50, 0x00, 0x37, 0x82, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x00, 0xBB, 0x00, 0x12, 0x00, 0x14, 0x00,
      0x00, 0x59, 0x00, 0xF2, 0x79, 0x00, 0x78, 0x00, 0x00, 0x00, 0xAD, 0x00, 0x00, 0x00, 0x2A, 0x03, 0x9F,
      0xA0, 0x04, 0x29, 0x3B, 0x05, 0x01, 0x90, 0x2A, 0x00, 0x00, 0x09, 0x0D, 0x3D, 0x82, 0x7D, 0x4F, 0x01,
      0xFF, 0x02, 0x25, 0x00, 0x40, 0x07, 0x00, 0x10, 0x00, 0x06, 0x10, 0x07, 0x00, 0x38, 0xB9, 0x6A, 0x86,
      0xCE, 0x0F, 0xFF, 0xFF, 0xFF, 0xFF, 0x02, 0xB3, 0x00, 0x40, 0x04, 0xCD, 0xC5, 0xFF, 0x53, 0x50, 0x00,
      0xB1, 0x6D, 0xFF, 0x00, 0x00, 0x00, 0x00, 0x00, 0x2A, 0x00, 0x0C, 0xCC, 0x00, 0x74, 0xCE, 0x33, 0x00,
      0x3D, 0x00, 0x00, 0x00, 0x00, 0x24, 0x03, 0xD9, 0x4C, 0x04, 0x98, 0xD9, 0x05, 0x00, 0xB0, 0x44, 0x00,
      0x00, 0x0A, 0x06, 0x00, 0x11, 0x00, 0x0F, 0x01, 0xFF, 0x02, 0xE2, 0x00, 0x24, 0x01, 0xFF, 0x53, 0x50,
      0x00, 0x37, 0xFE, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x35, 0x00, 0x0D, 0x00, 0x00, 0x00, 0x57, 0x00,
      0x00, 0x68, 0xA4, 0x88, 0x00, 0x00, 0x00, 0x25, 0x03, 0xAB, 0x0A, 0x04, 0x07, 0x00, 0x10, 0x00, 0x04,
      0x10, 0x08, 0x00, 0x15, 0x18, 0x3F, 0x1F, 0xF3, 0x0F, 0xFF, 0xFF, 0xFF, 0xDC, 0x00, 0x2D, 0x04, 0x57,
      0xE4, 0xFF, 0x03, 0xD4, 0x00, 0x2D, 0x03, 0x68, 0xFE, 0xFF};
  const auto fix = FixStream(file, {.Profile = CheckProfile::Player, .FrameLines = 480});
  ASSERT_TRUE(fix.IsOk());
  for (const Mend& mend : fix->Mends) {
    EXPECT_NE(mend.Kind, MendKind::MovedArea);
  }
  EXPECT_TRUE(std::ranges::any_of(fix->Left, [](const StreamProblem& problem) {
    return problem.Code == StreamProblemCode::OutsideSafeFrame;
  }));
}

}  // namespace
}  // namespace quillmark
