#include "sup/CodeAssignment.h"

#include <gtest/gtest.h>

#include "sup/StreamLoader.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::PacketBuilder;

/// By code 0, 1, 2, 3.
constexpr CodeNibbles Colours = {0, 1, 2, 10};
constexpr CodeNibbles Contrasts = {0, 8, 15, 15};

SupStream Index(Bytes file, bool firstIsShown = true) {
  SupStream stream;
  const auto first = [=](const SubtitleUnit&) { return firstIsShown; };
  EXPECT_EQ(IndexPrimaryStream(std::move(file), first, stream).Result, LoadResult::Outcome::Loaded);
  return stream;
}

/// The file's bytes and the zero behind them, with some bytes changed.
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

void AssignColours(SupStream& stream, std::int64_t index, const CodeNibbles& colours) {
  AssignCodes(stream, index, index + 1, {.Colours = colours, .Contrasts = std::nullopt});
}

void AssignContrasts(SupStream& stream, std::int64_t index, const CodeNibbles& contrasts) {
  AssignCodes(stream, index, index + 1, {.Colours = std::nullopt, .Contrasts = contrasts});
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

  AssignCodes(stream, 0, 3, {.Colours = Colours, .Contrasts = Contrasts});

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

  AssignCodes(stream, 1, 2, {.Colours = Colours, .Contrasts = Contrasts});

  EXPECT_EQ(stream.RawBytes, Changed(file, {{72, 0xA2}, {73, 0x10}, {75, 0xFF}, {76, 0x80}}));
}

TEST(AssignCodes, NothingToAssignChangesNothing) {
  const Bytes file = PacketBuilder().Build();
  SupStream stream = Index(file);

  AssignCodes(stream, 0, 1, {});

  EXPECT_EQ(stream.RawBytes, Changed(file, {}));
}

TEST(AssignCodes, RangeThatTheStreamDoesNotHoldWhollyChangesNothing) {
  const Bytes packet = PacketBuilder().Build();
  const Bytes file = Join({packet, packet});
  SupStream stream = Index(file);

  AssignCodes(stream, 0, 3, {.Colours = Colours, .Contrasts = Contrasts});
  AssignCodes(stream, -1, 2, {.Colours = Colours, .Contrasts = Contrasts});
  AssignCodes(stream, 1, 1, {.Colours = Colours, .Contrasts = Contrasts});
  AssignCodes(stream, 0, 0, {.Colours = Colours, .Contrasts = Contrasts});

  EXPECT_EQ(stream.RawBytes, Changed(file, {}));
}

TEST(AssignCodes, UnitWithoutBothCommandsKeepsTheContrastsWhichAreWrittenLast) {
  const Bytes file = PacketBuilder().WithoutColour().WithoutContrast().Build();
  SupStream stream = Index(file);

  AssignCodes(stream, 0, 1, {.Colours = Colours, .Contrasts = Contrasts});

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
  // Cut behind the colour command's first argument byte.
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

  for (const std::int64_t index : {std::int64_t{-1}, std::int64_t{1}, std::int64_t{1} << 40}) {
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
  const Bytes file = PacketBuilder().Build();
  SupStream stream = Index(file, false);

  AssignColours(stream, 0, Colours);
  AssignContrasts(stream, 0, Contrasts);

  EXPECT_EQ(stream.RawBytes, Changed(file, {}));
}

TEST(AssignColours, IndexOfALoadThatBrokeOffWritesNothingIntoTheBytesOfTheFileBefore) {
  const Bytes before = PacketBuilder().Build();
  SupStream stream = Index(before);
  const auto first = [](const SubtitleUnit&) { return true; };
  ASSERT_EQ(IndexPrimaryStream(Join({PacketBuilder().Build(), Bytes(14, 'x')}), first, stream).Result,
            LoadResult::Outcome::NoSignature);

  AssignColours(stream, 0, Colours);
  AssignContrasts(stream, 0, Contrasts);

  EXPECT_EQ(stream.RawBytes, Changed(before, {}));
}

}  // namespace
}  // namespace quillmark
