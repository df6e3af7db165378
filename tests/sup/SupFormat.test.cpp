#include "sup/SupFormat.h"

#include <array>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

/// "SP", 90000 ticks, a unit of 0x1234 bytes whose first control sequence stands at 0x0ABC.
constexpr std::array<std::uint8_t, 14> Header = {'S', 'P', 0x90, 0x5F, 0x01, 0,    0,
                                                 0,   0,   0,    0x12, 0x34, 0x0A, 0xBC};

TEST(ReadPacketHeader, TimeIsLittleEndianAndTheUnitsFieldsAreBigEndian) {
  const auto header = ReadPacketHeader(Header);

  ASSERT_TRUE(header);
  EXPECT_EQ(header->Time, 90000);
  EXPECT_EQ(header->UnitSize, 0x1234);
  EXPECT_EQ(header->ControlOffset, 0x0ABC);
}

TEST(ReadPacketHeader, CutHeaderIsNone) {
  for (std::size_t length = 0; length < Header.size(); ++length) {
    EXPECT_FALSE(ReadPacketHeader(std::span(Header).first(length))) << length;
  }
}

TEST(ReadPacketHeader, BothLettersAreNeeded) {
  for (const std::size_t letter : {0U, 1U}) {
    auto bytes = Header;
    bytes[letter] = 'X';
    EXPECT_FALSE(ReadPacketHeader(bytes)) << letter;
  }
}

TEST(WritePacketHeader, HasEveryFieldInItsPlace) {
  std::vector<std::uint8_t> packet;
  PacketWriter writer(packet);

  WritePacketHeader(writer, {0x90, 0x5F, 0x01, 0, 0, 0, 0, 0}, 0x1234, 0x0ABC);

  EXPECT_EQ(packet, std::vector<std::uint8_t>(Header.begin(), Header.end()));
}

TEST(PackTime, LowByteComesFirst) {
  EXPECT_EQ(PackTime(0x0102030405060708), (TimeField{8, 7, 6, 5, 4, 3, 2, 1}));
  EXPECT_EQ(PackTime(-2), (TimeField{0xFE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}));
}

}  // namespace
}  // namespace quillmark
