#include "sup/SpuCommand.h"

#include <array>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;

TEST(CommandSize, CountsTheCommandAndItsArguments) {
  EXPECT_EQ(CommandSize(0x00), 1);
  EXPECT_EQ(CommandSize(0x01), 1);
  EXPECT_EQ(CommandSize(0x02), 1);
  EXPECT_EQ(CommandSize(0x03), 3);
  EXPECT_EQ(CommandSize(0x04), 3);
  EXPECT_EQ(CommandSize(0x05), 7);
  EXPECT_EQ(CommandSize(0x06), 5);
  EXPECT_EQ(CommandSize(0xFF), 1);
}

TEST(Codes, CodeThreeIsTheFirstHighNibble) {
  EXPECT_EQ(PackCodes({0x1, 0x2, 0x3, 0x4}), (CodeArguments{0x43, 0x21}));
  EXPECT_EQ(UnpackCodes({0x43, 0x21}), (CodeNibbles{0x1, 0x2, 0x3, 0x4}));
}

TEST(PackNibbles, TakesFourBitsOfEach) {
  EXPECT_EQ(PackNibbles(0x1A, 0x2B), 0xAB);
}

TEST(AreaRange, TwoNumbersOfTwelveBits) {
  EXPECT_EQ(PackRange(0x123, 0x456), (AreaArguments{0x12, 0x34, 0x56}));
  const AreaRange range = UnpackRange({0x12, 0x34, 0x56});
  EXPECT_EQ(range.First, 0x123);
  EXPECT_EQ(range.Last, 0x456);
}

TEST(SequenceHeader, IsDelayAndPointerBigEndian) {
  Bytes bytes;
  PacketWriter writer(bytes);
  WriteSequenceHeader(writer, 0x0102, 0xFEDC);
  EXPECT_EQ(bytes, (Bytes{0x01, 0x02, 0xFE, 0xDC}));

  constexpr std::array<std::uint8_t, 4> Stored = {0x01, 0x02, 0xFE, 0xDC};
  ByteReader reader(Stored);
  const auto header = ReadSequenceHeader(reader);
  ASSERT_TRUE(header);
  EXPECT_EQ(header->Delay, 0x0102);
  EXPECT_EQ(header->Next, 0xFEDC);
}

TEST(SequenceHeader, CutOneIsNoneToAReaderAndHasZerosInAView) {
  constexpr std::array<std::uint8_t, 3> Cut = {0x01, 0x02, 0xFE};
  ByteReader reader(Cut);
  EXPECT_FALSE(ReadSequenceHeader(reader));
  constexpr std::array<std::uint8_t, 7> Unit = {0x00, 0x07, 0x00, 0x04, 0x01, 0x02, 0xFE};
  EXPECT_EQ(ReadSequenceHeader(UnitView(Unit), 4).Next, 0xFE00);
}

TEST(Commands, AreWrittenWithTheirArguments) {
  Bytes bytes;
  PacketWriter writer(bytes);
  WriteCodes(writer, quillmark::SetContrast, {0xFF, 0xF0});
  WriteArea(writer, PackRange(0, 719), PackRange(2, 574));
  WriteFieldOffsets(writer, 4, 0x1234);

  EXPECT_EQ(bytes, (Bytes{0x04, 0xFF, 0xF0, 0x05, 0x00, 0x02, 0xCF, 0x00, 0x22, 0x3E, 0x06, 0x00, 0x04, 0x12,
                          0x34}));
}

}  // namespace
}  // namespace quillmark
