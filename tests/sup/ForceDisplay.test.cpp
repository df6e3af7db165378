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
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(ForceDisplay, StartCommandBecomesTheForcedOneAndBack) {
  const Bytes file = Join({test::Sound(0).Build(), test::Sound(1).Build()});
  const SupStream stream = Index(file);
  const Bytes forced = Applied(stream, ForceDisplay(stream, SubtitleSet::All(), DisplayStart::Forced).Edit);
  EXPECT_THAT(Changes(file, forced), ElementsAre(testing::Pair(22, 0), testing::Pair(70, 0)));
  const SupStream forcedStream = Index(forced);
  EXPECT_EQ(
      Applied(forcedStream, ForceDisplay(forcedStream, SubtitleSet::All(), DisplayStart::Ordinary).Edit),
      file);
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
