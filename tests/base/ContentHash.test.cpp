#include "base/ContentHash.h"

#include <numeric>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;

/// 0, 1, 2, ...
Bytes Counting(std::size_t length) {
  Bytes bytes(length);
  std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
  return bytes;
}

// Worked out apart from this program; journals on users' disks hold such numbers.
TEST(ContentHash, IsTheSameForEver) {
  EXPECT_EQ(ContentHash({}), 0x32D21A98CB1917B0U);
  EXPECT_EQ(ContentHash(Bytes{'S', 'P'}), 0x7D779A53F666CC3BU);
  EXPECT_EQ(ContentHash(Counting(32)), 0xC057DAD8E7D4D1F3U);
  EXPECT_EQ(ContentHash(Counting(100)), 0xCCDF8205DE25CCDCU);
}

TEST(ContentHash, EveryBitCounts) {
  for (const std::size_t length : {1U, 31U, 32U, 100U}) {
    const Bytes bytes = Counting(length);
    for (std::size_t bit = 0; bit < 8 * length; ++bit) {
      Bytes other = bytes;
      other[bit / 8] = static_cast<std::uint8_t>(other[bit / 8] ^ 1U << bit % 8);
      ASSERT_NE(ContentHash(other), ContentHash(bytes)) << "bit " << bit << " of " << length << " bytes";
    }
  }
}

TEST(ContentHash, ZerosAtTheEndCount) {
  EXPECT_NE(ContentHash(Bytes(31)), ContentHash(Bytes(32)));
  EXPECT_NE(ContentHash(Bytes(32)), ContentHash(Bytes(33)));
  EXPECT_NE(ContentHash({}), ContentHash(Bytes(1)));
}

TEST(ContentHash, OrderOfBlocksAndWordsCounts) {
  Bytes bytes(64);
  bytes[0] = 1;
  for (const std::size_t place : {8U, 16U, 24U, 32U, 40U}) {
    Bytes other(64);
    other[place] = 1;
    EXPECT_NE(ContentHash(other), ContentHash(bytes)) << place;
  }
}

// The highest bit of a word stays the highest when multiplied; two of them must not take each other out.
TEST(ContentHash, HighestBitsOfTwoBlocksDoNotCancel) {
  Bytes bytes(64);
  bytes[7] = 0x80;
  bytes[39] = 0x80;
  EXPECT_NE(ContentHash(bytes), ContentHash(Bytes(64)));
}

TEST(ContentHasher, PartsGiveTheHashOfTheWhole) {
  const Bytes bytes = Counting(200);
  for (const std::size_t first : {0U, 32U, 64U, 192U}) {
    ContentHasher hasher;
    hasher.Add(std::span(bytes).first(first));
    hasher.Add(std::span(bytes).subspan(first));
    EXPECT_EQ(hasher.Hash(), ContentHash(bytes)) << first;
  }
}

}  // namespace
}  // namespace quillmark
