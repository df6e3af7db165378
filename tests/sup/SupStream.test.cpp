#include "sup/SupStream.h"

#include <gtest/gtest.h>

#include "sup/StreamLoader.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::PacketBuilder;

SupStream Index(Bytes file, bool firstIsShown = true) {
  SupStream stream;
  const auto first = [=](const SubtitleUnit&) { return firstIsShown; };
  EXPECT_EQ(IndexPrimaryStream(std::move(file), first, stream).Result, LoadResult::Outcome::Loaded);
  return stream;
}

Bytes UnitOf(const SupStream& stream, std::int64_t index) {
  Bytes unit = {1, 2, 3};  // what an earlier subtitle left in the buffer
  CopyUnit(stream, index, unit);
  return unit;
}

TEST(UnitBufferSize, IsTheUnitWithoutItsTwoHeaderFields) {
  EXPECT_EQ(UnitBufferSize(4), 0);
  EXPECT_EQ(UnitBufferSize(5), 1);
  EXPECT_EQ(UnitBufferSize(32767), 32763);
}

TEST(UnitBufferSize, SizeBelowFourIsThatOfAnEmptyUnit) {
  EXPECT_EQ(UnitBufferSize(3), 0);
  EXPECT_EQ(UnitBufferSize(0), 0);
  EXPECT_EQ(UnitBufferSize(-1), 0);
  EXPECT_EQ(UnitBufferSize(-32768), 0);
}

TEST(CopyUnit, LastByteIsZeroInsteadOfTheFiles) {
  const SupStream stream = Index(
      Join({PacketBuilder().Unit({1, 2, 3, 4}).Build(), PacketBuilder().Unit({5, 6, 7, 8, 9}).Build()}));

  EXPECT_EQ(UnitOf(stream, 0), (Bytes{1, 2, 3, 0}));
  EXPECT_EQ(UnitOf(stream, 1), (Bytes{5, 6, 7, 8, 0}));
}

TEST(CopyUnit, UnitOfOneByteIsZero) {
  EXPECT_EQ(UnitOf(Index(PacketBuilder().Unit({9}).Build()), 0), Bytes{0});
}

TEST(CopyUnit, UnitWithoutBytesIsEmpty) {
  EXPECT_EQ(UnitOf(Index(PacketBuilder().Unit({}).Build()), 0), Bytes{});
  EXPECT_EQ(UnitOf(Index(PacketBuilder().Unit({}).Size(0).Build()), 0), Bytes{});
  EXPECT_EQ(UnitOf(Index(PacketBuilder().Unit({}).Size(0xFFFF).Build()), 0), Bytes{});
}

TEST(CopyUnit, BytesThatTheFileLacksAreZero) {
  EXPECT_EQ(UnitOf(Index(PacketBuilder().Unit({7, 8}).Size(4 + 6).Build()), 0), (Bytes{7, 8, 0, 0, 0, 0}));
}

TEST(CopyUnit, SubtitleThatTheStreamDoesNotHaveIsEmpty) {
  const SupStream stream = Index(PacketBuilder().Build());

  EXPECT_EQ(UnitOf(stream, -1), Bytes{});
  EXPECT_EQ(UnitOf(stream, 1), Bytes{});
  EXPECT_EQ(UnitOf(SupStream(), 0), Bytes{});
}

TEST(CopyUnit, FirstSubtitleThatWasNotConvertedStandsBehindTheFileAndIsZeros) {
  const SupStream stream = Index(PacketBuilder().Unit({1, 2, 3, 4}).Build(), false);

  EXPECT_EQ(UnitOf(stream, 0), (Bytes{0, 0, 0, 0}));
}

TEST(CopyUnit, IndexOfALoadThatBrokeOffReadsNothingFromTheBytesOfTheFileBefore) {
  SupStream stream = Index(PacketBuilder().Build());
  const auto first = [](const SubtitleUnit&) { return true; };
  ASSERT_EQ(IndexPrimaryStream(Join({PacketBuilder().Build(), Bytes(14, 'x')}), first, stream).Result,
            LoadResult::Outcome::NoSignature);

  EXPECT_FALSE(stream.Holds(0));
  EXPECT_EQ(UnitOf(stream, 0), Bytes{});
}

}  // namespace
}  // namespace quillmark
