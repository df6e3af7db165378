#include "base/ZeroExtended.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

const std::vector<std::uint8_t> ThreeBytes = {0x81, 0x92, 0xA3};

TEST(ZeroExtended, InsideIsTheBuffer) {
  const ZeroExtended bytes(ThreeBytes);
  EXPECT_EQ(bytes[0], 0x81);
  EXPECT_EQ(bytes[2], 0xA3);
  EXPECT_EQ(bytes.LastIndex(), 2);
}

TEST(ZeroExtended, OutsideIsZeroOnBothSides) {
  const ZeroExtended bytes(ThreeBytes);
  for (const std::int64_t index :
       {std::numeric_limits<std::int64_t>::min(), std::int64_t{-1}, std::int64_t{3}, std::int64_t{4},
        std::numeric_limits<std::int64_t>::max()}) {
    EXPECT_EQ(bytes[index], 0) << index;
  }
}

TEST(ZeroExtended, NumbersMayHangOverEitherEnd) {
  const ZeroExtended bytes(ThreeBytes);
  EXPECT_EQ(bytes.U16be(-2), 0x0000);
  EXPECT_EQ(bytes.U16be(-1), 0x0081);
  EXPECT_EQ(bytes.U16be(0), 0x8192);
  EXPECT_EQ(bytes.U16be(1), 0x92A3);
  EXPECT_EQ(bytes.U16be(2), 0xA300);
  EXPECT_EQ(bytes.U16be(3), 0x0000);
}

TEST(ZeroExtended, EmptyBufferIsZeroThroughout) {
  const ZeroExtended bytes({});
  EXPECT_EQ(bytes.LastIndex(), -1);
  EXPECT_EQ(bytes[-1], 0);
  EXPECT_EQ(bytes[0], 0);
  EXPECT_EQ(bytes.U16be(0), 0);
}

}  // namespace
}  // namespace quillmark
