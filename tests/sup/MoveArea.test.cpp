#include "sup/MoveArea.h"

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

Bytes Moved(const Bytes& file, const MoveOptions& options) {
  const SupStream stream = Index(file);
  const ToolResult result = MoveArea(stream, SubtitleSet::All(), options);
  EXPECT_THAT(result.Left, IsEmpty());
  return Applied(stream, result.Edit);
}

/// The area of a stream's first subtitle.
std::array<int, 4> AreaOf(const Bytes& file) {
  const SpuControl control = DecodeControl(std::span(file).subspan(10), 8);
  return {control.X1, control.X2, control.Y1, control.Y2};
}

TEST(MoveArea, NamesTheBytesOfTheAreaThatDiffer) {
  const Bytes file = PacketBuilder().Area(100, 103, 400, 401).Build();
  // 06 40 67 19 01 91 becomes 06 50 68 18 E1 8F; it starts at 30.
  EXPECT_THAT(Changes(file, Moved(file, {.X = 1, .Y = -2})),
              ElementsAre(Pair(31, 0x50), Pair(32, 0x68), Pair(33, 0x18), Pair(34, 0xE1), Pair(35, 0x8F)));
  EXPECT_THAT(Changes(file, Moved(file, {.X = 1})), ElementsAre(Pair(31, 0x50), Pair(32, 0x68)));
}

TEST(MoveArea, BottomEdgeComesToTheLine) {
  const Bytes file = PacketBuilder().Area(100, 103, 400, 401).Build();
  EXPECT_THAT(AreaOf(Moved(file, {.ToLine = 575})), ElementsAre(100, 103, 574, 575));
  EXPECT_THAT(AreaOf(Moved(file, {.X = 5, .ToLine = 1})), ElementsAre(105, 108, 0, 1));
}

TEST(MoveArea, FrameIsReachedButNotLeft) {
  const Bytes file = PacketBuilder().Area(100, 103, 400, 401).Build();
  EXPECT_THAT(AreaOf(Moved(file, {.X = 616, .Y = 174})), ElementsAre(716, 719, 574, 575));
  EXPECT_THAT(AreaOf(Moved(file, {.X = -100, .Y = -400})), ElementsAre(0, 3, 0, 1));
  const SupStream stream = Index(file);
  for (const MoveOptions& options :
       {MoveOptions{.X = 617}, MoveOptions{.X = -101}, MoveOptions{.Y = 175}, MoveOptions{.Y = -401},
        MoveOptions{.Y = 79, .FrameLines = 480}, MoveOptions{.ToLine = 0}}) {
    const ToolResult result = MoveArea(stream, SubtitleSet::All(), options);
    EXPECT_TRUE(result.Edit.IsEmpty());
    EXPECT_TRUE(result.Changed.IsEmpty());
    EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::LeavesFrame}));
  }
  EXPECT_THAT(AreaOf(Moved(file, {.Y = 78, .FrameLines = 480})), ElementsAre(100, 103, 478, 479));
}

TEST(MoveArea, ClampMovesAsFarAsItGoes) {
  const Bytes file = PacketBuilder().Area(100, 103, 400, 401).Build();
  EXPECT_THAT(AreaOf(Moved(file, {.X = 1000, .Y = 1000, .Clamp = true})), ElementsAre(716, 719, 574, 575));
  EXPECT_THAT(AreaOf(Moved(file, {.X = -1000, .Y = -1000, .Clamp = true})), ElementsAre(0, 3, 0, 1));
  EXPECT_THAT(AreaOf(Moved(file, {.X = 5, .ToLine = 0, .Clamp = true})), ElementsAre(105, 108, 0, 1));
}

TEST(MoveArea, ClampLeavesWhatStandsAtTheFramesEdgesThere) {
  const Bytes corner = PacketBuilder().Area(716, 719, 574, 575).Build();
  EXPECT_THAT(AreaOf(Moved(corner, {.X = 5, .Y = 5, .Clamp = true})), ElementsAre(716, 719, 574, 575));
  const Bytes origin = PacketBuilder().Area(0, 3, 0, 1).Build();
  EXPECT_THAT(AreaOf(Moved(origin, {.X = -5, .Y = -5, .Clamp = true})), ElementsAre(0, 3, 0, 1));
}

TEST(MoveArea, ClampNeverMovesTheOtherWay) {
  const SupStream stream = Index(PacketBuilder().Area(700, 729, 400, 401).Build());
  EXPECT_THAT(MoveArea(stream, SubtitleSet::All(), {.X = 10, .Clamp = true}).Left,
              ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::LeavesFrame}));
  EXPECT_THAT(AreaOf(Applied(stream, MoveArea(stream, SubtitleSet::All(), {.X = -10, .Clamp = true}).Edit)),
              ElementsAre(690, 719, 400, 401));
}

/// A unit of two control sequences, the second of which has another area and a change of colours.
Bytes TwoAreas(const Bytes& colourChange) {
  const auto second = static_cast<unsigned>(8 + 4 + 1 + 7 + 1);
  const Bytes last = Join({test::U16be(50), test::U16be(second), test::SetArea(200, 299, 100, 199),
                           colourChange, test::EndOfSequence});
  return PacketBuilder()
      .Unit(Join({Bytes(4, 0),
                  test::Sequence(0, second,
                                 {test::StartDisplay, test::SetArea(10, 19, 20, 29), test::EndOfSequence}),
                  last}))
      .Build();
}

const Bytes colourChange = {0x07, 0x00, 0x18,                    // 24 bytes
                            0x00, 0x64, 0x20, 0x6D,              // lines 100 to 109, two changes
                            0x00, 0xC8, 0x12, 0x34, 0xFF, 0xFF,  // from column 200
                            0x01, 0x00, 0x12, 0x34, 0xFF, 0x00,  // from column 256
                            0x0F, 0xFF, 0xFF, 0xFF, 0x00, 0x00};

TEST(MoveArea, AreasOfAllSequencesAndColourChangesMove) {
  const Bytes file = TwoAreas(colourChange);
  const Bytes after = Moved(file, {.X = 3, .Y = 5});
  const Bytes moved = {0x07, 0x00, 0x18, 0x00, 0x69, 0x20, 0x72, 0x00, 0xCB, 0x12, 0x34, 0xFF, 0xFF,
                       0x01, 0x03, 0x12, 0x34, 0xFF, 0x00, 0x0F, 0xFF, 0xFF, 0xFF, 0x00, 0x00};
  Bytes expected = TwoAreas(moved);
  const Bytes first = test::SetArea(13, 22, 25, 34);
  const Bytes second = test::SetArea(203, 302, 105, 204);
  std::ranges::copy(first, expected.begin() + 10 + 8 + 4 + 1);
  std::ranges::copy(second, expected.begin() + 10 + 21 + 4);
  EXPECT_EQ(after, expected);
}

TEST(MoveArea, ColourChangeBeforeTheAreaMovesWithIt) {
  const auto file = [](const Bytes& change, const Bytes& area) {
    const Bytes sequence = test::Sequence(0, 8, {test::StartDisplay, change, area, test::EndOfSequence});
    return PacketBuilder().Unit(Join({Bytes(4, 0), sequence})).Build();
  };
  const Bytes moved = {0x07, 0x00, 0x18, 0x00, 0x69, 0x20, 0x72, 0x00, 0xCB, 0x12, 0x34, 0xFF, 0xFF,
                       0x01, 0x03, 0x12, 0x34, 0xFF, 0x00, 0x0F, 0xFF, 0xFF, 0xFF, 0x00, 0x00};
  EXPECT_EQ(Moved(file(colourChange, test::SetArea(10, 19, 20, 29)), {.X = 3, .Y = 5}),
            file(moved, test::SetArea(13, 22, 25, 34)));
}

TEST(MoveArea, UnitsThatAreLaidOutTheSameAtTheirStartAloneMoveEachByItsOwn) {
  // The commands of the first 34 bytes are the same, those after them stand in another order.
  const auto packet = [](const Bytes& late) {
    const Bytes early = Join({test::SetColour(3, 2, 1, 0), Bytes(26, 0x01), {0x01}});
    return PacketBuilder()
        .Unit(Join({Bytes(4, 0), test::Sequence(0, 8, {early, late, test::EndOfSequence})}))
        .Build();
  };
  const Bytes fields = test::SetFields(4, 6);
  const Bytes area = test::SetArea(10, 19, 20, 29);
  const Bytes moved = test::SetArea(13, 22, 25, 34);
  const Bytes first = packet(Join({area, fields}));
  const Bytes second = packet(Join({fields, area}));
  EXPECT_EQ(Moved(Join({first, first, second, first}), {.X = 3, .Y = 5}),
            Join({packet(Join({moved, fields})), packet(Join({moved, fields})), packet(Join({fields, moved})),
                  packet(Join({moved, fields}))}));
}

TEST(MoveArea, SequenceThatOneUnitHasMoreThanTheOthersMovesToo) {
  // Sequences at 8, 20 and 26; that of the last unit at 26 points to a fourth one, at 32.
  const auto packet = [](unsigned next, const Bytes& area, const Bytes& fourth) {
    return PacketBuilder()
        .Unit(Join({Bytes(4, 0), test::Sequence(0, 20, {area, test::EndOfSequence}),
                    test::Sequence(10, 26, {test::StartDisplay, test::EndOfSequence}),
                    test::Sequence(20, next, {test::StopDisplay, test::EndOfSequence}),
                    test::Sequence(30, 32, {fourth, test::EndOfSequence})}))
        .Build();
  };
  const Bytes area = test::SetArea(10, 19, 20, 29);
  const Bytes moved = test::SetArea(13, 22, 25, 34);
  EXPECT_EQ(
      Moved(Join({packet(26, area, area), packet(26, area, area), packet(32, area, area)}), {.X = 3, .Y = 5}),
      Join({packet(26, moved, area), packet(26, moved, area), packet(32, moved, moved)}));
}

TEST(MoveArea, LowestAreaComesToTheLine) {
  const Bytes after = Moved(TwoAreas({}), {.ToLine = 201});
  const Bytes first = test::SetArea(10, 19, 22, 31);
  EXPECT_TRUE(std::equal(first.begin(), first.end(), after.begin() + 23));
}

TEST(MoveArea, NothingLeavesTheFrame) {
  const SupStream stream = Index(TwoAreas(colourChange));
  const auto left = [&](const MoveOptions& options) {
    return MoveArea(stream, SubtitleSet::All(), options).Left.size();
  };
  EXPECT_EQ(left({.X = -10}), 0U);
  EXPECT_EQ(left({.X = -11}), 1U);
  EXPECT_EQ(left({.X = 420}), 0U);
  EXPECT_EQ(left({.X = 421}), 1U);
}

TEST(MoveArea, ColourChangeLeavesTheFrameToo) {
  Bytes wide = colourChange;
  wide[13] = 0x02;  // from column 704
  wide[14] = 0xC0;
  const SupStream stream = Index(TwoAreas(wide));
  EXPECT_THAT(MoveArea(stream, SubtitleSet::All(), {.X = 16}).Left,
              ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::LeavesFrame}));
  EXPECT_THAT(MoveArea(stream, SubtitleSet::All(), {.X = 15}).Left, IsEmpty());
  // The lines of the change have other bits above them.
  EXPECT_THAT(MoveArea(stream, SubtitleSet::All(), {.Y = -20}).Left, IsEmpty());
}

TEST(MoveArea, DamagedColourChangeIsLeft) {
  for (const std::size_t at : {std::size_t{5}, std::size_t{3}}) {
    Bytes damaged = colourChange;
    damaged[at] = at == 5 ? 0x90 : 0x10;  // nine changes, or no line number
    const SupStream stream = Index(TwoAreas(damaged));
    const ToolResult result = MoveArea(stream, SubtitleSet::All(), {.X = 1});
    EXPECT_TRUE(result.Edit.IsEmpty());
    EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::BadColourChange}));
  }
}

TEST(MoveArea, SubtitleWithoutAnAreaIsLeft) {
  const SupStream stream = Index(Join({test::Sound(0).WithoutArea().Build(), test::Sound(1).Build()}));
  const ToolResult result = MoveArea(stream, SubtitleSet::All(), {.X = 1});
  EXPECT_THAT(result.Left, ElementsAre(LeftSubtitle{.Number = 1, .Why = LeftReason::NoArea}));
  EXPECT_EQ(result.Changed.Text(), "2");
  EXPECT_EQ(result.Edit.Places.front().Offset, 48U + 31U);
}

}  // namespace
}  // namespace quillmark
