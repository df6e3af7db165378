#include "sup/ForceDisplay.h"

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
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

/// Three sequences of 44 bytes: the picture at unit byte 8, `third` at 44, where it stands in for the stop.
Bytes LongUnit(unsigned delay, std::uint8_t third) {
  return Join(
      {Bytes{0x11, 0x00, 0x12, 0x00},
       test::Sequence(0, 32,
                      {test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 0),
                       test::SetArea(0, 3, 0, 1), test::SetFields(4, 6), test::EndOfSequence}),
       test::Sequence(10, 41, {test::SetColour(1, 2, 1, 0), test::EndOfSequence, {0}}),
       test::Sequence(delay, 41, {{third}, test::EndOfSequence})});
}

TEST(ForceDisplay, UnitsThatAreAlikeUpToTheirLastSequenceAreToldApart) {
  const auto packet = [](std::int64_t time, const Bytes& unit) {
    return PacketBuilder().Time(time).Unit(unit).Build();
  };
  // 4 + 4 bytes of header and fields, 24 and 9 of sequences, and 6: 47 bytes, in a packet 57.
  const Bytes file =
      Join({packet(1, LongUnit(20, 0x01)), packet(2, LongUnit(30, 0x01)), packet(3, LongUnit(20, 0x02))});
  const SupStream stream = Index(file);
  const ToolResult result = ForceDisplay(stream, SubtitleSet::All(), DisplayStart::Forced);
  EXPECT_THAT(Changes(file, Applied(stream, result.Edit)),
              ElementsAre(Pair(22, 0), Pair(55, 0), Pair(79, 0), Pair(112, 0), Pair(136, 0)));
  EXPECT_THAT(result.Left, IsEmpty());
}

TEST(ForceDisplay, UnitsThatAreAlikeUpToTheLastOfManySequencesAreToldApart) {
  // Sequences at 8 and, of 6 bytes each, from 32 on; the ninth of them, at 74, is the last.
  const auto packet = [](std::int64_t time, std::uint8_t ninth) {
    Bytes unit = Join(
        {Bytes{0x11, 0x00, 0x12, 0x00},
         test::Sequence(0, 32,
                        {test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 0),
                         test::SetArea(0, 3, 0, 1), test::SetFields(4, 6), test::EndOfSequence})});
    for (unsigned next = 38; next <= 74; next += 6) {
      unit = Join({unit, test::Sequence(10, next, {test::StopDisplay, test::EndOfSequence})});
    }
    unit = Join({unit, test::Sequence(10, 74, {{ninth}, test::EndOfSequence})});
    return PacketBuilder().Time(time).Unit(unit).Build();
  };
  const Bytes file = Join({packet(1, 0x02), packet(2, 0x02), packet(3, 0x01), packet(4, 0x02)});
  const SupStream stream = Index(file);
  const ToolResult result = ForceDisplay(stream, SubtitleSet::All(), DisplayStart::Forced);
  EXPECT_THAT(Changes(file, Applied(stream, result.Edit)),
              ElementsAre(Pair(22, 0), Pair(112, 0), Pair(202, 0), Pair(268, 0), Pair(292, 0)));
  EXPECT_THAT(result.Left, IsEmpty());
}

TEST(ForceDisplay, PacketLikeTheOthersWhoseEndIsMissingIsLeft) {
  // Bytes that nothing reads follow the control sequences; of the third packet some of them are cut off.
  const auto packet = [](unsigned size) {
    return PacketBuilder().Unit(Join({PacketBuilder().UnitBytes(), Bytes(64)})).Size(size).Build();
  };
  const ToolResult result = ForceDisplay(Index(Join({packet(102), packet(102), packet(110)})),
                                         SubtitleSet::All(), DisplayStart::Forced);
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 3, .Fault = PacketFault::PastEnd}));
}

TEST(ForceDisplay, PacketLikeTheOthersWhosePointersLeadElsewhereIsLeft) {
  Bytes unit = PacketBuilder().UnitBytes();
  unit[7] = 64;   // the first sequence's pointer to the one at 32
  unit[31] = 64;  // the last one's pointer to itself
  const Bytes sound = PacketBuilder().Build();
  const Bytes file = Join({sound, sound, PacketBuilder().Unit(unit).Build(), sound, sound});
  const ToolResult result = ForceDisplay(Index(file), SubtitleSet::All(), DisplayStart::Forced);
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 3, .Fault = PacketFault::ControlUnfinished}));
}

TEST(ForceDisplay, StartCommandBecomesTheForcedOneAndBack) {
  const Bytes file = Join({test::Sound(0).Build(), test::Sound(1).Build()});
  const SupStream stream = Index(file);
  const StreamEdit edit = ForceDisplay(stream, SubtitleSet::All(), DisplayStart::Forced).Edit;
  EXPECT_FALSE(edit.Reindexes) << "nothing moves";
  const Bytes forced = Applied(stream, edit);
  EXPECT_THAT(Changes(file, forced), ElementsAre(testing::Pair(22, 0), testing::Pair(70, 0)));
  const SupStream forcedStream = Index(forced);
  EXPECT_EQ(
      Applied(forcedStream, ForceDisplay(forcedStream, SubtitleSet::All(), DisplayStart::Ordinary).Edit),
      file);
}

TEST(IsForced, WhereAnyOfItsCommandsIsAForcedStart) {
  const auto packet = [](const Bytes& unit) { return PacketBuilder().Unit(unit).Build(); };
  const SupStream stream =
      Index(Join({test::Sound(0).Build(), packet(LongUnit(20, 0x00)), packet(LongUnit(20, 0x01))}));
  EXPECT_FALSE(IsForced(stream, 0));
  EXPECT_TRUE(IsForced(stream, 1));
  EXPECT_FALSE(IsForced(stream, 2));
}

TEST(ForceDisplay, WhatIsSoAlreadyIsNotNamed) {
  const SupStream stream = Index(test::Sound(0).Build());
  const ToolResult result = ForceDisplay(stream, SubtitleSet::All(), DisplayStart::Ordinary);
  EXPECT_TRUE(result.Edit.IsEmpty());
  EXPECT_TRUE(result.Changed.IsEmpty());
  EXPECT_THAT(result.Left, IsEmpty());
}

TEST(ForceDisplay, AllStartCommandsOfAUnitBecomeTheSame) {
  const Bytes file =
      test::PacketBuilder()
          .Unit(Join({Bytes(4, 0),
                      test::Sequence(0, 15, {test::ForcedStart, test::StartDisplay, test::EndOfSequence}),
                      test::Sequence(9, 15, {test::StartDisplay, test::EndOfSequence})}))
          .Build();
  const SupStream stream = Index(file);
  EXPECT_THAT(
      Changes(file, Applied(stream, ForceDisplay(stream, SubtitleSet::All(), DisplayStart::Forced).Edit)),
      ElementsAre(testing::Pair(23, 0), testing::Pair(29, 0)));
}

TEST(ForceDisplay, ArgumentsThatLookLikeAStartAreNone) {
  // Colours 0 and 1 in both bytes, and fields at 0x0100 and 1.
  const Bytes file =
      test::PacketBuilder()
          .Unit(Join({Bytes(4, 0), test::Sequence(0, 8,
                                                  {Bytes{0x03, 0x01, 0x01}, test::SetFields(0x100, 1),
                                                   test::StartDisplay, test::EndOfSequence})}))
          .Build();
  const SupStream stream = Index(file);
  EXPECT_THAT(
      Changes(file, Applied(stream, ForceDisplay(stream, SubtitleSet::All(), DisplayStart::Forced).Edit)),
      ElementsAre(testing::Pair(30, 0)));
}

TEST(ForceDisplay, UnitWithoutAStartCommandIsLeft) {
  const Bytes unit = Join({Bytes(4, 0), test::Sequence(0, 8, {test::StopDisplay, test::EndOfSequence})});
  const SupStream stream = Index(Join({test::PacketBuilder().Unit(unit).Build(), test::Sound(1).Build()}));
  const ToolResult result = ForceDisplay(stream, SubtitleSet::All(), DisplayStart::Forced);
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::NoStart}));
  EXPECT_EQ(LeftText(result.Left[0]), "has no start command; it is left as it is");
  EXPECT_EQ(result.Changed.Text(), "2");
}

}  // namespace
}  // namespace quillmark
