#include "sup/CodeAssignment.h"

#include <gtest/gtest.h>

#include "sup/StreamLoader.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Index;
using test::Join;
using test::PacketBuilder;

/// By code 0, 1, 2, 3.
constexpr CodeNibbles Colours = {0, 1, 2, 10};
constexpr CodeNibbles Contrasts = {0, 8, 15, 15};

/// The file's bytes and the zero after them, with some bytes changed.
struct Change {
  std::size_t Position;
  std::uint8_t Value;
};
Bytes Changed(Bytes file, std::initializer_list<Change> changes) {
  file.push_back(0);
  for (const Change& change : changes) {
    file[change.Position] = change.Value;
  }
  return file;
}

constexpr CodeAssignment Both = {.Colours = AllFour(Colours), .Contrasts = AllFour(Contrasts)};

void Assign(SupStream& stream, std::size_t first, std::size_t end, const CodeAssignment& codes) {
  StreamEdit edit = AssignCodes(stream, first, end, codes);
  EXPECT_TRUE(ApplyEdit(stream, edit));
}

void AssignColours(SupStream& stream, std::size_t index, const CodeNibbles& colours) {
  Assign(stream, index, index + 1, {.Colours = AllFour(colours), .Contrasts = {}});
}

void AssignContrasts(SupStream& stream, std::size_t index, const CodeNibbles& contrasts) {
  Assign(stream, index, index + 1, {.Colours = {}, .Contrasts = AllFour(contrasts)});
}

TEST(AssignCodes, OfSomeSubtitlesWritesTheseAlone) {
  const Bytes file = Join(
      {PacketBuilder().Build(), PacketBuilder().Build(), PacketBuilder().Build(), PacketBuilder().Build()});
  SupStream stream = Index(file);

  const std::vector<std::size_t> indexes = {1, 3};
  StreamEdit edit = AssignCodes(stream, indexes, {.Colours = AllFour(Colours), .Contrasts = {}});
  ASSERT_TRUE(ApplyEdit(stream, edit));
  EXPECT_EQ(stream.RawBytes,
            Changed(file, {{48 + 24, 0xA2}, {48 + 25, 0x10}, {144 + 24, 0xA2}, {144 + 25, 0x10}}));

  ASSERT_TRUE(ApplyEdit(stream, edit));  // its own inverse
  EXPECT_EQ(stream.RawBytes, Changed(file, {}));
}

TEST(AssignCodes, OfAListIsThatOfTheRange) {
  // The second one lacks its colour command, so that some of its bytes are written where no command is.
  const SupStream stream = Index(
      Join({PacketBuilder().Build(), PacketBuilder().WithoutColour().Build(), PacketBuilder().Build()}));
  const std::vector<std::size_t> indexes = {0, 1, 2};
  EXPECT_EQ(AssignCodes(stream, indexes, Both), AssignCodes(stream, 0, 3, Both));
}

TEST(AssignCodes, OfAListThatDoesNotAscendOrFitIsEmpty) {
  const SupStream stream = Index(Join({PacketBuilder().Build(), PacketBuilder().Build()}));
  for (const std::vector<std::size_t>& indexes :
       std::vector<std::vector<std::size_t>>{{}, {1, 0}, {0, 0}, {0, 2}}) {
    EXPECT_TRUE(AssignCodes(stream, indexes, Both).IsEmpty()) << testing::PrintToString(indexes);
  }
}

TEST(AssignColours, WritesTheTwoArgumentBytesAndNoOther) {
  const Bytes file = PacketBuilder().Build();
  SupStream stream = Index(file);

  AssignColours(stream, 0, Colours);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{24, 0xA2}, {25, 0x10}}));
}

TEST(AssignContrasts, WritesTheTwoArgumentBytesAndNoOther) {
  const Bytes file = PacketBuilder().Build();
  SupStream stream = Index(file);

  AssignContrasts(stream, 0, Contrasts);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{27, 0xFF}, {28, 0x80}}));
}

TEST(AssignCodes, ReachesEverySubtitleOfTheRange) {
  const Bytes packet = PacketBuilder().Build();
  const Bytes file = Join({packet, packet, packet});
  SupStream stream = Index(file);

  Assign(stream, 0, 3, Both);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{24, 0xA2},
                                            {25, 0x10},
                                            {27, 0xFF},
                                            {28, 0x80},
                                            {72, 0xA2},
                                            {73, 0x10},
                                            {75, 0xFF},
                                            {76, 0x80},
                                            {120, 0xA2},
                                            {121, 0x10},
                                            {123, 0xFF},
                                            {124, 0x80}}));
}

TEST(AssignCodes, SubtitlesOutsideTheRangeAreLeftAlone) {
  const Bytes packet = PacketBuilder().Build();
  const Bytes file = Join({packet, packet, packet});
  SupStream stream = Index(file);

  Assign(stream, 1, 2, Both);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{72, 0xA2}, {73, 0x10}, {75, 0xFF}, {76, 0x80}}));
}

TEST(AssignCodes, NothingToAssignChangesNothing) {
  const Bytes file = PacketBuilder().Build();
  SupStream stream = Index(file);

  Assign(stream, 0, 1, {});

  EXPECT_EQ(stream.RawBytes, Changed(file, {}));
}

TEST(AssignCodes, RangeThatTheStreamDoesNotHoldWhollyChangesNothing) {
  const Bytes packet = PacketBuilder().Build();
  const Bytes file = Join({packet, packet});
  SupStream stream = Index(file);

  Assign(stream, 0, 3, Both);
  Assign(stream, static_cast<std::size_t>(-1), 2, Both);
  Assign(stream, 1, 1, Both);
  Assign(stream, 0, 0, Both);

  EXPECT_EQ(stream.RawBytes, Changed(file, {}));
}

TEST(AssignCodes, UnitWithoutBothCommandsKeepsTheContrastsWhichAreWrittenLast) {
  const Bytes file = PacketBuilder().WithoutColour().WithoutContrast().Build();
  SupStream stream = Index(file);

  Assign(stream, 0, 1, Both);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{13, 0xFF}, {14, 0x80}}));
}

TEST(AssignColours, LastCommandOfTheUnitIsTheOneWritten) {
  const Bytes unit = {0x00, 0x00, 0x00, 0x0C, 0x03, 0x11, 0x11, 0xFF,               // 4
                      0x00, 0x05, 0x00, 0x0C, 0x03, 0x22, 0x22, 0xFF, 0x00, 0x00};  // 12
  const Bytes file = PacketBuilder().Unit(unit).ControlOffset(4).Build();
  SupStream stream = Index(file);

  AssignColours(stream, 0, Colours);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{27, 0xA2}, {28, 0x10}}));
}

TEST(AssignColours, UnitWithoutTheCommandLosesItsControlOffsetAndFirstDataByte) {
  const Bytes file = Join({PacketBuilder().Build(), PacketBuilder().WithoutColour().Build()});
  SupStream stream = Index(file);

  AssignColours(stream, 1, Colours);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{48 + 13, 0xA2}, {48 + 14, 0x10}}));
}

TEST(AssignContrasts, UnitWithoutTheCommandLosesItsControlOffsetAndFirstDataByte) {
  const Bytes file = Join({PacketBuilder().Build(), PacketBuilder().WithoutContrast().Build()});
  SupStream stream = Index(file);

  AssignContrasts(stream, 1, Contrasts);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{48 + 13, 0xFF}, {48 + 14, 0x80}}));
}

TEST(AssignColours, EmptyUnitLosesItsControlOffsetOnly) {
  for (const unsigned size : {0U, 3U, 4U}) {
    SCOPED_TRACE(size);
    const Bytes file = Join({PacketBuilder().Unit({}).Size(size).Build(), PacketBuilder().Build()});
    SupStream stream = Index(file);

    AssignColours(stream, 0, Colours);

    EXPECT_EQ(stream.RawBytes, Changed(file, {{13, 0xA2}}));
  }
}

TEST(AssignColours, NextPacketIsNeverWritten) {
  const Bytes unit = {0x00, 0x00, 0x00, 0x04, 0x01, 0x03, 0x12};  // its second argument is the next "S"
  const Bytes file = Join({PacketBuilder().Unit(unit).ControlOffset(4).Build(), PacketBuilder().Build()});
  SupStream stream = Index(file);

  AssignColours(stream, 0, Colours);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{20, 0xA2}}));
}

TEST(AssignColours, NothingIsWrittenBehindTheFile) {
  // Cut after the colour command's first argument byte.
  const Bytes whole = PacketBuilder().Build();
  const Bytes file(whole.begin(), whole.begin() + 25);
  SupStream stream = Index(file);

  AssignColours(stream, 0, Colours);
  AssignContrasts(stream, 0, Contrasts);

  // The contrast command is gone, so its bytes go where those of a missing command go.
  EXPECT_EQ(stream.RawBytes, Changed(file, {{24, 0xA2}, {13, 0xFF}, {14, 0x80}}));
}

TEST(AssignColours, SubtitleThatTheStreamDoesNotHaveChangesNothing) {
  const Bytes file = PacketBuilder().Build();
  SupStream stream = Index(file);

  for (const std::size_t index : {static_cast<std::size_t>(-1), std::size_t{1}, std::size_t{1} << 40U}) {
    AssignColours(stream, index, Colours);
    AssignContrasts(stream, index, Contrasts);
  }

  EXPECT_EQ(stream.RawBytes, Changed(file, {}));
}

TEST(AssignColours, EmptyStreamIsLeftAlone) {
  SupStream stream;

  AssignColours(stream, 0, Colours);
  AssignContrasts(stream, 0, Contrasts);

  EXPECT_TRUE(stream.RawBytes.empty());
}

TEST(AssignColours, FirstSubtitleThatWasNotConvertedStandsBehindTheFile) {
  const Bytes file = PacketBuilder().WithoutArea().Build();
  SupStream stream = Index(file, InvalidFirst::EndsTheWalk);

  AssignColours(stream, 0, Colours);
  AssignContrasts(stream, 0, Contrasts);

  EXPECT_EQ(stream.RawBytes, Changed(file, {}));
}

TEST(AssignColours, StreamWithoutItsIndexIsLeftAlone) {
  const Bytes file = PacketBuilder().Build();
  SupStream stream = Index(file);
  DropIndex(stream);

  AssignColours(stream, 0, Colours);
  AssignContrasts(stream, 0, Contrasts);

  EXPECT_EQ(stream.RawBytes, Changed(file, {}));
}

TEST(AssignCodes, CodeWithoutANibbleKeepsItsOwn) {
  const Bytes file = PacketBuilder().Colour(3, 2, 1, 0).Contrast(15, 14, 13, 12).Build();
  SupStream stream = Index(file);

  Assign(stream, 0, 1,
         {.Colours = {std::nullopt, 9, std::nullopt, std::nullopt},
          .Contrasts = {std::nullopt, std::nullopt, 5, std::nullopt}});

  EXPECT_EQ(stream.RawBytes, Changed(file, {{24, 0x32}, {25, 0x90}, {27, 0xF5}, {28, 0xDC}}));
}

TEST(AssignChosen, EachSubtitleKeepsItsOwnOtherCodes) {
  const Bytes file =
      Join({PacketBuilder().Colour(3, 2, 1, 0).Build(), PacketBuilder().Colour(7, 6, 9, 4).Build(),
            PacketBuilder().Colour(15, 14, 13, 12).Build()});
  SupStream stream = Index(file);
  ToolResult result =
      AssignChosen(stream, SubtitleSet::All(),
                   {.Colours = {std::nullopt, 9, std::nullopt, std::nullopt}, .Contrasts = {}});
  ASSERT_TRUE(ApplyEdit(stream, result.Edit));
  EXPECT_EQ(stream.RawBytes, Changed(file, {{25, 0x90}, {96 + 25, 0x9C}}));
  EXPECT_EQ(result.Changed.Text(), "1,3") << "the second one had it";
}

TEST(AssignCodes, CommandOfWhichNoCodeChangesIsNotNamed) {
  const SupStream stream = Index(PacketBuilder().Build());

  const StreamEdit edit = AssignCodes(stream, 0, 1, {.Colours = AllFour(Colours), .Contrasts = {}});

  EXPECT_EQ(edit.Places, (std::vector<StreamEdit::Place>{{.Offset = 24, .Removed = 2, .Inserted = 2}}));
  EXPECT_EQ(edit.Bytes, (Bytes{0xA2, 0x10}));
  EXPECT_FALSE(edit.Reindexes);
}

TEST(AssignCodes, CommandsThatFollowOneAnotherAreOnePlaceWithTheCodeBetweenThem) {
  const SupStream stream = Index(Join({PacketBuilder().Build(), PacketBuilder().Build()}));

  const StreamEdit edit = AssignCodes(stream, 0, 2, Both);

  EXPECT_EQ(edit.Places, (std::vector<StreamEdit::Place>{{.Offset = 24, .Removed = 5, .Inserted = 5},
                                                         {.Offset = 72, .Removed = 5, .Inserted = 5}}));
  EXPECT_EQ(edit.Bytes, (Bytes{0xA2, 0x10, 0x04, 0xFF, 0x80, 0xA2, 0x10, 0x04, 0xFF, 0x80}));
}

TEST(AssignCodes, StreamIsNotTouchedBeforeTheEditIsApplied) {
  const Bytes file = PacketBuilder().Build();
  const SupStream stream = Index(file);

  EXPECT_FALSE(AssignCodes(stream, 0, 1, Both).IsEmpty());

  EXPECT_EQ(stream.RawBytes, Changed(file, {}));
}

TEST(AssignCodes, SecondApplicationTakesBack) {
  const Bytes file =
      Join({PacketBuilder().WithoutColour().WithoutContrast().Build(), PacketBuilder().Build()});
  SupStream stream = Index(Join({PacketBuilder().Build(), file}));
  const Bytes before = stream.RawBytes;
  StreamEdit edit = AssignCodes(stream, 0, 3, Both);

  ASSERT_TRUE(ApplyEdit(stream, edit));
  EXPECT_NE(stream.RawBytes, before);
  ASSERT_TRUE(ApplyEdit(stream, edit));

  EXPECT_EQ(stream.RawBytes, before);
}

TEST(AssignCodes, ContrastCommandBeforeTheColourCommandIsWrittenToo) {
  const Bytes unit = {0x00, 0x00, 0x00, 0x04, 0x04, 0x11, 0x11, 0x03, 0x22, 0x22, 0xFF, 0x00, 0x00};
  const Bytes file = PacketBuilder().Unit(unit).ControlOffset(4).Build();
  SupStream stream = Index(Join({PacketBuilder().Build(), file}));

  Assign(stream, 1, 2, Both);

  EXPECT_EQ(stream.RawBytes, Changed(Join({PacketBuilder().Build(), file}),
                                     {{48 + 19, 0xFF}, {48 + 20, 0x80}, {48 + 22, 0xA2}, {48 + 23, 0x10}}));
}

TEST(AssignCodes, UnitWithoutANeededCommandIsLeftAsItIsAndTheOthersAreWritten) {
  const Bytes file = Join({PacketBuilder().Build(), PacketBuilder().WithoutContrast().Build(),
                           PacketBuilder().WithoutColour().Build(), PacketBuilder().Build()});
  SupStream stream = Index(file);
  CodeAssignment codes = Both;
  codes.NeedsCommands = true;

  Assign(stream, 0, 4, codes);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{24, 0xA2},
                                            {25, 0x10},
                                            {27, 0xFF},
                                            {28, 0x80},
                                            {168, 0xA2},
                                            {169, 0x10},
                                            {171, 0xFF},
                                            {172, 0x80}}));
}

TEST(AssignCodes, CommandThatIsNotWrittenIsNotNeeded) {
  const Bytes file = Join({PacketBuilder().Build(), PacketBuilder().WithoutContrast().Build()});
  SupStream stream = Index(file);

  Assign(stream, 1, 2, {.Colours = AllFour(Colours), .Contrasts = {}, .NeedsCommands = true});

  EXPECT_EQ(stream.RawBytes, Changed(file, {{72, 0xA2}, {73, 0x10}}));
}

TEST(HasCommands, OfASubtitleAreThoseThatItsUnitHas) {
  const SupStream stream = Index(Join({PacketBuilder().Build(), PacketBuilder().WithoutColour().Build(),
                                       PacketBuilder().WithoutContrast().Build()}));

  EXPECT_TRUE(HasColourCommand(stream, 0));
  EXPECT_TRUE(HasContrastCommand(stream, 0));
  EXPECT_FALSE(HasColourCommand(stream, 1));
  EXPECT_TRUE(HasContrastCommand(stream, 1));
  EXPECT_TRUE(HasColourCommand(stream, 2));
  EXPECT_FALSE(HasContrastCommand(stream, 2));
  EXPECT_FALSE(HasColourCommand(stream, 3));
  EXPECT_FALSE(HasContrastCommand(stream, 3));
}

TEST(HasCommandsFor, AsksOnlyForTheCommandsThatAreWritten) {
  const SupStream stream = Index(Join({PacketBuilder().Build(), PacketBuilder().WithoutColour().Build()}));

  EXPECT_TRUE(HasCommandsFor(stream, 0, Both));
  EXPECT_FALSE(HasCommandsFor(stream, 1, Both));
  EXPECT_TRUE(HasCommandsFor(stream, 1, {.Colours = {}, .Contrasts = AllFour(Contrasts)}));
  EXPECT_TRUE(HasCommandsFor(stream, 1, {}));
}

TEST(AssignCodes, CommandsWithOthersBetweenThemAreWrittenInEitherOrder) {
  const Bytes contrastFirst = {0x00, 0x00, 0x00, 0x04, 0x04, 0x11, 0x11,
                               0x01, 0x03, 0x22, 0x22, 0xFF, 0x00, 0x00};
  const Bytes colourFirst = {0x00, 0x00, 0x00, 0x04, 0x03, 0x22, 0x22,
                             0x01, 0x04, 0x11, 0x11, 0xFF, 0x00, 0x00};
  const Bytes file = Join({PacketBuilder().Unit(contrastFirst).ControlOffset(4).Build(),
                           PacketBuilder().Unit(colourFirst).ControlOffset(4).Build()});
  SupStream stream = Index(file);

  Assign(stream, 0, 2, Both);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{19, 0xFF},
                                            {20, 0x80},
                                            {23, 0xA2},
                                            {24, 0x10},
                                            {28 + 19, 0xA2},
                                            {28 + 20, 0x10},
                                            {28 + 23, 0xFF},
                                            {28 + 24, 0x80}}));
}

TEST(AssignCodes, SomeColoursAndContrastsWhereTheContrastCommandComesFirst) {
  const Bytes unit = {0x00, 0x00, 0x00, 0x04, 0x04, 0xFE, 0xDC, 0x03, 0x32, 0x10, 0xFF, 0x00, 0x00};
  const Bytes file = PacketBuilder().Unit(unit).ControlOffset(4).Build();
  SupStream stream = Index(file);

  Assign(stream, 0, 1,
         {.Colours = {std::nullopt, 9, 8, std::nullopt}, .Contrasts = {std::nullopt, 7, 5, std::nullopt}});

  // Code 2 is the low nibble of the first byte, code 1 the high one of the second.
  EXPECT_EQ(stream.RawBytes, Changed(file, {{19, 0xF5}, {20, 0x7C}, {22, 0x38}, {23, 0x90}}));
}

TEST(AssignCodes, AllColoursAndSomeContrasts) {
  const Bytes file = PacketBuilder().Colour(3, 2, 1, 0).Contrast(15, 14, 13, 12).Build();
  SupStream stream = Index(file);

  Assign(stream, 0, 1,
         {.Colours = AllFour(Colours), .Contrasts = {std::nullopt, std::nullopt, 5, std::nullopt}});

  EXPECT_EQ(stream.RawBytes, Changed(file, {{24, 0xA2}, {25, 0x10}, {27, 0xF5}}));
}

TEST(AssignCodes, ArgumentsThatTheFileCutsOffAreWrittenAsFarAsTheyAreThere) {
  Bytes file = PacketBuilder().Build();
  file.resize(28);  // of the contrast's arguments the first one is there
  SupStream stream = Index(file);

  Assign(stream, 0, 1, Both);

  EXPECT_EQ(stream.RawBytes, Changed(file, {{24, 0xA2}, {25, 0x10}, {27, 0xFF}}));
}

}  // namespace
}  // namespace quillmark
