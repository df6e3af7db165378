#include "sup/SupStream.h"

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

Bytes CopyOf(const SupStream& stream, std::size_t index) {
  Bytes unit = {1, 2, 3};  // what an earlier subtitle left in the buffer
  CopyUnit(stream, index, unit);
  return unit;
}

TEST(UnitLength, IsTheSizeField) {
  EXPECT_EQ(UnitLength(4), 4);
  EXPECT_EQ(UnitLength(5), 5);
  EXPECT_EQ(UnitLength(32767), 32767);
}

TEST(UnitLength, SizeBelowFourIsThatOfAHeaderAlone) {
  EXPECT_EQ(UnitLength(3), 4);
  EXPECT_EQ(UnitLength(0), 4);
  EXPECT_EQ(UnitLength(-1), 4);
  EXPECT_EQ(UnitLength(-32768), 4);
}

TEST(CopyUnit, HasTheWholeUnitFromItsSizeFieldOn) {
  const SupStream stream = Index(
      Join({PacketBuilder().Unit({1, 2, 3, 4}).Build(), PacketBuilder().Unit({5, 6, 7, 8, 9}).Build()}));

  EXPECT_EQ(CopyOf(stream, 0), (Bytes{0, 8, 0, 8, 1, 2, 3, 4}));
  EXPECT_EQ(CopyOf(stream, 1), (Bytes{0, 9, 0, 8, 5, 6, 7, 8, 9}));
}

TEST(CopyUnit, UnitOfOneByteHasThatByteAfterItsHeader) {
  EXPECT_EQ(CopyOf(Index(PacketBuilder().Unit({9}).Build()), 0), (Bytes{0, 5, 0, 8, 9}));
}

TEST(CopyUnit, UnitWithoutBytesIsItsHeader) {
  const Bytes sound = PacketBuilder().Build();

  EXPECT_EQ(CopyOf(Index(Join({PacketBuilder().Unit({}).Build(), sound})), 0), (Bytes{0, 4, 0, 8}));
  EXPECT_EQ(CopyOf(Index(Join({PacketBuilder().Unit({}).Size(0).Build(), sound})), 0), (Bytes{0, 0, 0, 8}));
  EXPECT_EQ(CopyOf(Index(PacketBuilder().Unit({}).Size(0xFFFF).Build()), 0), (Bytes{0xFF, 0xFF, 0, 8}));
}

TEST(CopyUnit, BytesThatTheFileLacksAreZero) {
  EXPECT_EQ(CopyOf(Index(PacketBuilder().Unit({7, 8}).Size(4 + 6).Build()), 0),
            (Bytes{0, 10, 0, 8, 7, 8, 0, 0, 0, 0}));
}

TEST(CopyUnit, SubtitleThatTheStreamDoesNotHaveIsEmpty) {
  const SupStream stream = Index(PacketBuilder().Build());

  EXPECT_EQ(CopyOf(stream, static_cast<std::size_t>(-1)), Bytes{});
  EXPECT_EQ(CopyOf(stream, 1), Bytes{});
  EXPECT_EQ(CopyOf(SupStream(), 0), Bytes{});
}

TEST(CopyUnit, FirstSubtitleThatWasNotConvertedStandsAfterTheFileAndIsZeros) {
  const SupStream stream = Index(PacketBuilder().Unit({1, 2, 3, 4}).Build(), InvalidFirst::EndsTheWalk);

  EXPECT_EQ(CopyOf(stream, 0), (Bytes{0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(UnitOf, HasTheSubtitlesFieldsAndItsWholeUnit) {
  const SupStream stream = Index(Join(
      {PacketBuilder().Time(5).Build(), PacketBuilder().Time(7).Unit({1, 2, 3}).ControlOffset(6).Build()}));
  Bytes buffer;

  const SubtitleUnit unit = UnitOf(stream, 1, buffer);

  EXPECT_EQ(Bytes(unit.Bytes.begin(), unit.Bytes.end()), (Bytes{0, 7, 0, 6, 1, 2, 3}));
  EXPECT_EQ(unit.ControlOffset, 6);
  EXPECT_EQ(unit.StartTime, 7);
  EXPECT_TRUE(UnitOf(stream, 2, buffer).Bytes.empty());
}

TEST(UnitForMerging, LastByteIsZeroInsteadOfTheFiles) {
  const SupStream stream = Index(Join({PacketBuilder().Unit({1, 2, 3}).Build(), PacketBuilder().Build()}));
  Bytes buffer;

  const SubtitleUnit unit = UnitForMerging(stream, 0, buffer);

  EXPECT_EQ(Bytes(unit.Bytes.begin(), unit.Bytes.end()), (Bytes{0, 7, 0, 8, 1, 2, 0}));
}

TEST(UnitForMerging, HeaderAloneStaysAsItIs) {
  const SupStream stream = Index(PacketBuilder().Unit({}).Build());
  Bytes buffer;

  const SubtitleUnit unit = UnitForMerging(stream, 0, buffer);

  EXPECT_EQ(Bytes(unit.Bytes.begin(), unit.Bytes.end()), (Bytes{0, 4, 0, 8}));
}

TEST(FirstUnit, IsTheFilesFirstOneEvenWhereTheIndexLeadsPastTheEnd) {
  const SupStream stream =
      Index(PacketBuilder().Time(9).Unit({1, 2, 3}).ControlOffset(5).Build(), InvalidFirst::EndsTheWalk);
  Bytes buffer;

  const SubtitleUnit unit = FirstUnit(stream, buffer);

  EXPECT_EQ(Bytes(unit.Bytes.begin(), unit.Bytes.end()), (Bytes{0, 7, 0, 5, 1, 2, 3}));
  EXPECT_EQ(unit.ControlOffset, 5);
  EXPECT_EQ(unit.StartTime, 9);
}

TEST(FirstUnit, StreamWithoutSubtitlesHasNone) {
  Bytes buffer = {1};

  EXPECT_TRUE(FirstUnit(Index({}), buffer).Bytes.empty());
  EXPECT_TRUE(FirstUnit(SupStream(), buffer).Bytes.empty());
}

TEST(DropIndex, LeavesTheBytesAndNoSubtitle) {
  const Bytes file = Join({PacketBuilder().Build(), PacketBuilder().Colour(9, 9, 9, 9).Build()});
  SupStream stream = Index(file);
  stream.Path = "film.sup";

  DropIndex(stream);

  EXPECT_EQ(stream.RawBytes, Join({file, {0}}));
  EXPECT_EQ(stream.FileLength, 96);
  EXPECT_EQ(stream.Path, "film.sup");
  EXPECT_FALSE(stream.Holds(0));
  EXPECT_EQ(stream.Count, 0);
  EXPECT_FALSE(stream.Stats.MultipleColours);
}

}  // namespace
}  // namespace quillmark
