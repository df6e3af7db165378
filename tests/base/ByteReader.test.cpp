#include "base/ByteReader.h"

#include <gmock/gmock.h>
#include <limits>
#include <vector>

namespace quillmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Optional;

using Bytes = std::vector<std::uint8_t>;

TEST(ByteReader, BigEndianReadsGoFrontToBack) {
  const Bytes bytes = {0xF1, 0x82, 0x03, 0xF4, 0x05, 0x06, 0xFF, 0xFE, 0xFD, 0xFC};
  ByteReader reader(bytes);
  EXPECT_THAT(reader.U8(), Optional(0xF1));
  EXPECT_THAT(reader.U16be(), Optional(0x8203));
  EXPECT_THAT(reader.U24be(), Optional(0xF40506U));
  EXPECT_THAT(reader.U32be(), Optional(0xFFFEFDFCU));
  EXPECT_EQ(reader.Position(), 10U);
  EXPECT_EQ(reader.Remaining(), 0U);
}

TEST(ByteReader, LittleEndian64IsSigned) {
  const Bytes bytes = {0xEF, 0xCD, 0xAB, 0x89, 0x67, 0x45, 0x23, 0x01,  //
                       0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF,  //
                       0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x80};
  ByteReader reader(bytes);
  EXPECT_THAT(reader.I64le(), Optional(std::int64_t{0x0123456789ABCDEF}));
  EXPECT_THAT(reader.I64le(), Optional(std::int64_t{-2}));
  EXPECT_THAT(reader.I64le(), Optional(std::numeric_limits<std::int64_t>::min()));
}

TEST(ByteReader, ReadPastTheEndAnswersNothingAndDoesNotMove) {
  const Bytes bytes(9, 0x11);
  ByteReader reader(bytes);
  ASSERT_TRUE(reader.Seek(2));
  EXPECT_EQ(reader.I64le(), std::nullopt);
  ASSERT_TRUE(reader.Seek(6));
  EXPECT_EQ(reader.U32be(), std::nullopt);
  ASSERT_TRUE(reader.Seek(7));
  EXPECT_EQ(reader.U24be(), std::nullopt);
  EXPECT_EQ(reader.Position(), 7U);
  ASSERT_TRUE(reader.Seek(8));
  EXPECT_EQ(reader.U16be(), std::nullopt);
  EXPECT_THAT(reader.U8(), Optional(0x11));
  EXPECT_EQ(reader.U8(), std::nullopt);
  EXPECT_EQ(reader.Position(), 9U);
}

TEST(ByteReader, TakeGivesBytesOfTheBufferItself) {
  const Bytes bytes = {1, 2, 3, 4};
  ByteReader reader(bytes);
  ASSERT_THAT(reader.Take(1), Optional(ElementsAre(1)));
  const auto taken = reader.Take(2);
  ASSERT_THAT(taken, Optional(ElementsAre(2, 3)));
  EXPECT_EQ(taken->data(), bytes.data() + 1);
  EXPECT_EQ(reader.Remaining(), 1U);
}

TEST(ByteReader, TakeNothingAtTheEndIsFine) {
  const Bytes bytes = {1};
  ByteReader reader(bytes);
  ASSERT_TRUE(reader.Seek(1));
  EXPECT_THAT(reader.Take(0), Optional(IsEmpty()));
}

TEST(ByteReader, LargestCountDoesNotWrapAround) {
  const Bytes bytes = {1, 2, 3};
  ByteReader reader(bytes);
  ASSERT_TRUE(reader.Seek(2));
  EXPECT_EQ(reader.Take(std::numeric_limits<std::size_t>::max()), std::nullopt);
  EXPECT_EQ(reader.Take(std::numeric_limits<std::size_t>::max() - 1), std::nullopt);
  EXPECT_EQ(reader.Position(), 2U);
}

TEST(ByteReader, SeekReachesTheEndAndNoFurther) {
  const Bytes bytes = {1, 2, 3};
  ByteReader reader(bytes);
  EXPECT_TRUE(reader.Seek(3));
  EXPECT_TRUE(reader.Seek(1));
  EXPECT_FALSE(reader.Seek(4));
  EXPECT_FALSE(reader.Seek(std::numeric_limits<std::size_t>::max()));
  EXPECT_EQ(reader.Position(), 1U);
  EXPECT_TRUE(reader.Seek(0));
  EXPECT_THAT(reader.U8(), Optional(1));
}

TEST(ByteReader, EmptyBufferHoldsNothing) {
  ByteReader reader({});
  EXPECT_EQ(reader.Remaining(), 0U);
  EXPECT_EQ(reader.U8(), std::nullopt);
  EXPECT_TRUE(reader.Seek(0));
  EXPECT_FALSE(reader.Seek(1));
}

}  // namespace
}  // namespace quillmark
