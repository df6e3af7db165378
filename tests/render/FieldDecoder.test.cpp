#include "render/FieldDecoder.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <gmock/gmock.h>
#include <limits>
#include <random>
#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr CodeTable<std::uint8_t> bareCodes = {0, 1, 2, 3};
/// What a cell holds before decoding; no code.
constexpr std::uint8_t untouched = 9;

std::uint8_t NibbleBehind(const Bytes& buffer, std::int32_t position) {
  NibbleCursor cursor{.Position = position};
  return ReadNibble(buffer, cursor);
}

TEST(ReadNibble, HighNibbleComesBeforeLowOne) {
  const Bytes buffer = {0xA5, 0x00, 0x00};
  NibbleCursor cursor{.Position = -1};
  EXPECT_EQ(ReadNibble(buffer, cursor), 0xA);
  EXPECT_EQ(cursor.Position, 0);
  EXPECT_EQ(cursor.Pending, 0xA5);
  EXPECT_EQ(ReadNibble(buffer, cursor), 0x5);
  EXPECT_EQ(cursor.Position, 0);
  EXPECT_LT(cursor.Pending, 0);
}

TEST(ReadNibble, NextByteFollowsTheLowNibble) {
  const Bytes buffer = {0x12, 0x34, 0x00};
  NibbleCursor cursor{.Position = -1};
  std::array<int, 4> nibbles{};
  for (int& nibble : nibbles) {
    nibble = ReadNibble(buffer, cursor);
  }
  EXPECT_THAT(nibbles, ElementsAre(1, 2, 3, 4));
}

TEST(ReadNibble, LastIndexGivesTheByteBeforeIt) {
  const Bytes buffer = {0x12, 0x34, 0x56};
  NibbleCursor cursor{.Position = 1};
  EXPECT_EQ(ReadNibble(buffer, cursor), 0x3);
  EXPECT_EQ(ReadNibble(buffer, cursor), 0x4);
  EXPECT_EQ(cursor.Position, 2);
}

TEST(ReadNibble, OnePastTheLastIndexGivesTheLastByte) {
  const Bytes buffer = {0x12, 0x34, 0x56};
  NibbleCursor cursor{.Position = 2};
  EXPECT_EQ(ReadNibble(buffer, cursor), 0x5);
  EXPECT_EQ(ReadNibble(buffer, cursor), 0x6);
}

TEST(ReadNibble, FurtherPastTheEndIsZero) {
  const Bytes buffer = {0xFF, 0xFF, 0xFF};
  EXPECT_EQ(NibbleBehind(buffer, 3), 0);
  EXPECT_EQ(NibbleBehind(buffer, 65535), 0);
}

TEST(ReadNibble, BeforeTheStartIsZero) {
  const Bytes buffer = {0xFF, 0xFF, 0xFF};
  EXPECT_EQ(NibbleBehind(buffer, -5), 0);
  EXPECT_EQ(NibbleBehind(buffer, -2), 0);
  EXPECT_EQ(NibbleBehind(buffer, -1), 0xF);
}

TEST(ReadNibble, OnlyByteIsReadOnePastItAlone) {
  const Bytes buffer = {0x70};
  EXPECT_EQ(NibbleBehind(buffer, -2), 0);
  EXPECT_EQ(NibbleBehind(buffer, -1), 0);
  EXPECT_EQ(NibbleBehind(buffer, 0), 7);
  EXPECT_EQ(NibbleBehind(buffer, 1), 0);
}

TEST(ReadNibble, EmptyBufferIsZeroEverywhere) {
  for (const std::int32_t position : {-5, -2, -1, 0, 1}) {
    EXPECT_EQ(NibbleBehind({}, position), 0);
  }
}

struct Line {
  Bytes Cells;
  std::int32_t Position = -1;
};

Line DecodeFirstLine(const Bytes& buffer, int width, std::int32_t position = -1) {
  Line line{.Cells = Bytes(static_cast<std::size_t>(width), untouched), .Position = position};
  DecodeLine<std::uint8_t>(buffer, line.Cells, line.Position, 0, width, bareCodes);
  return line;
}

struct RunCase {
  const char* Name;
  Bytes Buffer;  ///< one code, then nibbles 0x7: one cell of code 3
  int Length;
  int Code;
};

class DecodeLineCode : public testing::TestWithParam<RunCase> {};

TEST_P(DecodeLineCode, HasLengthAndCode) {
  const RunCase& run = GetParam();
  const Line line = DecodeFirstLine(run.Buffer, run.Length + 1);
  const auto behind = line.Cells.begin() + run.Length;
  EXPECT_THAT(Bytes(line.Cells.begin(), behind), Each(run.Code));
  EXPECT_EQ(*behind, 3);
}

INSTANTIATE_TEST_SUITE_P(Lengths, DecodeLineCode,
                         testing::Values(RunCase{"OneNibbleShortest", {0x47, 0x77, 0x77}, 1, 0},
                                         RunCase{"OneNibbleLongest", {0xE7, 0x77, 0x77}, 3, 2},
                                         RunCase{"TwoNibblesShortest", {0x11, 0x77, 0x77}, 4, 1},
                                         RunCase{"TwoNibblesLongest", {0x3E, 0x77, 0x77}, 15, 2},
                                         RunCase{"ThreeNibblesShortest", {0x04, 0x07, 0x77, 0x77}, 16, 0},
                                         RunCase{"ThreeNibblesLongest", {0x0F, 0xD7, 0x77, 0x77}, 63, 1},
                                         RunCase{"FourNibblesShortest", {0x00, 0x05, 0x77, 0x77}, 1, 1},
                                         RunCase{"FourNibblesOf64", {0x01, 0x02, 0x77, 0x77}, 64, 2},
                                         RunCase{"FourNibblesLongest", {0x03, 0xFC, 0x77, 0x77}, 255, 0}),
                         [](const auto& caseInfo) { return std::string(caseInfo.param.Name); });

TEST(DecodeLine, CodesFollowOneAnother) {
  // 2 x 1, 5 x 2, 1 x 0, 1 x 3
  const Line line = DecodeFirstLine({0x91, 0x64, 0x70, 0x00}, 9);
  EXPECT_THAT(line.Cells, ElementsAre(1, 1, 2, 2, 2, 2, 2, 0, 3));
  EXPECT_EQ(line.Position, 2);
}

TEST(DecodeLine, LengthZeroFillsToTheLineEnd) {
  // 1 x 2, then code 1 to the end
  const Line line = DecodeFirstLine({0x60, 0x00, 0x1F, 0xFF, 0xFF}, 5);
  EXPECT_THAT(line.Cells, ElementsAre(2, 1, 1, 1, 1));
  EXPECT_EQ(line.Position, 2);
}

TEST(DecodeLine, LengthZeroAtTheLineStartFillsAllOfIt) {
  const Line line = DecodeFirstLine({0x00, 0x03, 0x55, 0x55}, 400);
  EXPECT_THAT(line.Cells, Each(3));
  EXPECT_EQ(line.Position, 1);
}

TEST(DecodeLine, NextLineStartsOnAByte) {
  // The low nibble F of the first byte belongs to no line.
  const Bytes buffer = {0xDF, 0xE0, 0x00, 0x00};
  Bytes cells(6, untouched);
  std::int32_t position = -1;
  DecodeLine<std::uint8_t>(buffer, cells, position, 0, 3, bareCodes);
  EXPECT_EQ(position, 0);
  DecodeLine<std::uint8_t>(buffer, cells, position, 1, 3, bareCodes);
  EXPECT_EQ(position, 1);
  EXPECT_THAT(cells, ElementsAre(1, 1, 1, 2, 2, 2));
}

TEST(DecodeLine, RunPastLineEndIsClipped) {
  // 15 x 1 in a line of 4; the next line has its own codes.
  const Bytes buffer = {0x3D, 0xEB, 0x00, 0x00};
  Bytes cells(12, untouched);
  std::int32_t position = -1;
  DecodeLine<std::uint8_t>(buffer, cells, position, 0, 4, bareCodes);
  EXPECT_THAT(cells, ElementsAre(1, 1, 1, 1, 9, 9, 9, 9, 9, 9, 9, 9));
  DecodeLine<std::uint8_t>(buffer, cells, position, 1, 4, bareCodes);
  EXPECT_THAT(cells, ElementsAre(1, 1, 1, 1, 2, 2, 2, 3, 9, 9, 9, 9));
  EXPECT_EQ(position, 1);
}

TEST(DecodeLine, OwnLineAloneIsPainted) {
  Bytes cells(9, untouched);
  std::int32_t position = -1;
  DecodeLine<std::uint8_t>(Bytes{0x3D, 0x00, 0x00}, cells, position, 1, 3, bareCodes);
  EXPECT_THAT(cells, ElementsAre(9, 9, 9, 1, 1, 1, 9, 9, 9));
}

TEST(DecodeLine, BufferEndRepeatsAByteThenReadsTheLast) {
  // Index 1 is the last one and gives byte 0 again, index 2 gives byte 1, index 3 and 4 give 0.
  const Line line = DecodeFirstLine({0x55, 0xAA}, 10);
  EXPECT_THAT(line.Cells, ElementsAre(1, 1, 1, 1, 2, 2, 2, 2, 0, 0));
  EXPECT_EQ(line.Position, 4);
}

TEST(DecodeLine, ZerosBeforeTheBufferAreCodes) {
  // Nibbles 0 0 from index -1, then 0 D: the four-nibble code of 3 x 1.
  const Line line = DecodeFirstLine({0x0D, 0xE0, 0x00, 0x00}, 5, -2);
  EXPECT_THAT(line.Cells, ElementsAre(1, 1, 1, 2, 2));
  EXPECT_EQ(line.Position, 1);
}

TEST(DecodeLine, NoWidthLeavesEverything) {
  for (const int width : {0, -1, std::numeric_limits<int>::min()}) {
    Bytes cells(4, untouched);
    std::int32_t position = -1;
    DecodeLine<std::uint8_t>(Bytes{0xFF, 0xFF, 0xFF}, cells, position, 0, width, bareCodes);
    EXPECT_EQ(position, -1);
    EXPECT_THAT(cells, Each(untouched));
  }
}

TEST(DecodeLine, RowOutsideTheCellsIsNotDecoded) {
  for (const int line : {-1, 2, std::numeric_limits<int>::max()}) {
    Bytes cells(7, untouched);
    std::int32_t position = -1;
    DecodeLine<std::uint8_t>(Bytes{0xFF, 0xFF, 0xFF}, cells, position, line, 3, bareCodes);
    EXPECT_EQ(position, -1);
    EXPECT_THAT(cells, Each(untouched));
  }
}

Bytes Decode(const Bytes& buffer, int width, int height, std::int32_t topOffset, std::int32_t bottomOffset) {
  Bytes cells(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), untouched);
  DecodeFields<std::uint8_t>(buffer, cells, width, height, topOffset, bottomOffset, bareCodes);
  return cells;
}

// Lines of three cells, one byte each: D is code 1, E is code 2, F is code 3, C is code 0.

TEST(DecodeFields, FieldsAlternate) {
  EXPECT_THAT(Decode({0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00}, 3, 4, 4, 6),
              ElementsAre(1, 1, 1, 3, 3, 3, 2, 2, 2, 0, 0, 0));
}

TEST(DecodeFields, CellsAreWhatTheTableSays) {
  const Bytes buffer = {0x5A, 0x7C, 0x00, 0x00};
  std::vector<std::uint32_t> cells(6, 0x12345678);
  DecodeFields<std::uint32_t>(buffer, cells, 3, 2, 4, 5, {0x00112233, 0xFF445566, 0x80778899, 0x01020304});
  EXPECT_THAT(cells, ElementsAre(0xFF445566, 0x80778899, 0x80778899, 0x01020304, 0x00112233, 0x00112233));
}

TEST(DecodeFields, LastLineOfAnOddHeightIsNotDecoded) {
  EXPECT_THAT(Decode({0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00}, 3, 5, 4, 6),
              ElementsAre(1, 1, 1, 3, 3, 3, 2, 2, 2, 0, 0, 0, 9, 9, 9));
}

TEST(DecodeFields, HeightOneDecodesNothing) {
  EXPECT_THAT(Decode({0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00}, 3, 1, 4, 6), Each(untouched));
}

TEST(DecodeFields, StopsBehindThePairInWhichTheTopFieldRanPastTheBottomStart) {
  // The bottom field starts one byte behind the top field: pair 2 reads its second byte as a top line.
  EXPECT_THAT(Decode({0xD0, 0xE0, 0xF0, 0xC0, 0xD0, 0xD0}, 3, 6, 4, 5),
              ElementsAre(1, 1, 1, 2, 2, 2, 2, 2, 2, 3, 3, 3, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, BottomFieldBeforeTheTopOneGetsOnePair) {
  EXPECT_THAT(Decode({0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00}, 3, 4, 6, 4),
              ElementsAre(3, 3, 3, 1, 1, 1, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, StopsBehindThePairInWhichTheBottomFieldRanPastTheBuffer) {
  // Index 6 is one past the last one and gives the last byte.
  EXPECT_THAT(Decode({0xD0, 0xD0, 0xD0, 0x00, 0x00, 0xE0}, 3, 4, 4, 10),
              ElementsAre(1, 1, 1, 2, 2, 2, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, BottomFieldAtTheLastIndexIsStillInside) {
  // Bottom lines read indices 5 (the byte before the last), then 6 (the last byte).
  EXPECT_THAT(Decode({0xD0, 0xD0, 0xC0, 0xC0, 0xF0, 0xE0}, 3, 6, 4, 9),
              ElementsAre(1, 1, 1, 3, 3, 3, 1, 1, 1, 2, 2, 2, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, BottomFieldFarPastTheBufferIsOneLineOfCodeZero) {
  EXPECT_THAT(Decode({0xD0, 0xD0, 0xD0, 0x00, 0x00, 0xE0}, 3, 4, 4, 65535),
              ElementsAre(1, 1, 1, 0, 0, 0, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, OffsetsBeforeTheBufferReadZeros) {
  // Top: nibbles 0 0 0 0 from indices -4 and -3, then 0 0 0 0 again. Bottom: 0 0 0 D, 3 x 1.
  EXPECT_THAT(Decode({0x0D, 0xE0, 0xF0, 0xC0, 0x00, 0x00}, 3, 2, 0, 3), ElementsAre(0, 0, 0, 1, 1, 1));
}

TEST(DecodeFields, EmptyBufferIsOnePairOfCodeZero) {
  EXPECT_THAT(Decode({}, 3, 4, 4, 4), ElementsAre(0, 0, 0, 0, 0, 0, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, ReversedAreaIsNotDecoded) {
  const Bytes buffer = {0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00};
  struct Size {
    int Width;
    int Height;
  };
  for (const auto& [width, height] : {Size{0, 2}, Size{2, 0}, Size{-2, -2}, Size{-1, 4}, Size{4, -32768}}) {
    Bytes cells(16, untouched);
    DecodeFields<std::uint8_t>(buffer, cells, width, height, 4, 6, bareCodes);
    EXPECT_THAT(cells, Each(untouched)) << width << " x " << height;
  }
}

TEST(DecodeFields, TooFewCellsAreNotTouched) {
  const Bytes buffer = {0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00};
  Bytes cells(11, untouched);
  DecodeFields<std::uint8_t>(buffer, cells, 3, 4, 4, 6, bareCodes);
  EXPECT_THAT(cells, Each(untouched));
  DecodeFields<std::uint8_t>(buffer, cells, 32767, 32767, 4, 6, bareCodes);
  EXPECT_THAT(cells, Each(untouched));
}

TEST(DecodeFields, LongLinesOfManyRunsAreDecodedToTheirEnd) {
  // A line of 60 cells in each field, well inside the buffer: 2 x 1, 20 x 0, 7 x 3, 17 x 2, 3 x 1, code 0 to
  // the end; 1 x 3, 15 x 2, 16 x 1, 5 x 0, 22 x 3, 1 x 1.
  const Bytes buffer = {0x90, 0x50, 0x1F, 0x04, 0x6D, 0x00, 0x00,  // top
                        0x73, 0xE0, 0x41, 0x14, 0x05, 0xB5,        // bottom
                        0x77, 0x77, 0x77, 0x77, 0x77, 0x77, 0x77, 0x77, 0x77, 0x77, 0x77, 0x77};
  Bytes expected;
  const auto append = [&expected](std::size_t length, std::uint8_t code) {
    expected.insert(expected.end(), length, code);
  };
  append(2, 1);
  append(20, 0);
  append(7, 3);
  append(17, 2);
  append(3, 1);
  append(11, 0);
  append(1, 3);
  append(15, 2);
  append(16, 1);
  append(5, 0);
  append(22, 3);
  append(1, 1);
  EXPECT_THAT(Decode(buffer, 60, 2, 4, 11), ElementsAreArray(expected));
}

/// The rules of the format, one nibble and one cell at a time, as a second opinion on everything that the
/// decoder does faster.
class LiteralDecoder {
 public:
  LiteralDecoder(const Bytes& buffer, int width, int height)
      : Cells(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), untouched),
        buffer_(buffer),
        last_(static_cast<int>(buffer.size()) - 1),
        width_(width),
        height_(height) {}

  void Decode(int topOffset, int bottomOffset) {
    int top = topOffset - 5;
    int bottom = bottomOffset - 5;
    for (int line = 0; line <= height_ - 2; line += 2) {
      DecodeOne(top, line);
      DecodeOne(bottom, line + 1);
      if (top > bottomOffset - 5 || bottom > last_) {
        return;
      }
    }
  }

  Bytes Cells;

 private:
  int Nibble(int& position) {
    if (pending_ >= 0) {
      const int low = pending_ % 16;
      pending_ = -1;
      return low;
    }
    ++position;
    const int index = position < last_ ? position : position - 1;
    pending_ = index < 0 || index > last_ ? 0 : buffer_[static_cast<std::size_t>(index)];
    return pending_ / 16;
  }

  void DecodeOne(int& position, int line) {
    pending_ = -1;
    int x = 0;
    int run = 0;
    do {
      int value = Nibble(position);
      if (value < 0x4) {
        value = value * 16 + Nibble(position);
        if (value < 0x10) {
          value = value * 16 + Nibble(position);
          if (value < 0x40) {
            value = value * 16 + Nibble(position);
          }
        }
      }
      run = value / 4 == 0 ? width_ : value / 4;
      for (int i = 0; i < run && x + i < width_; ++i) {
        const std::int64_t cell = std::int64_t{line} * width_ + x + i;
        Cells[static_cast<std::size_t>(cell)] = static_cast<std::uint8_t>(value % 4);
      }
      x += run;
    } while (x < width_ && run != width_);
  }

  const Bytes& buffer_;
  int last_;
  int width_;
  int height_;
  int pending_ = -1;
};

struct Fields {
  int Width;
  int Height;
  int TopOffset;
  int BottomOffset;
};

/// Whether a picture of these cells is as expected, and the cells on both sides of it are left alone.
template <typename Cell>
bool DecodesTo(const Bytes& expected, const Bytes& buffer, const Fields& fields) {
  constexpr std::size_t margin = 64;
  std::vector<Cell> memory(expected.size() + 2 * margin, untouched);
  const std::span<Cell> cells = std::span(memory).subspan(margin, expected.size());
  DecodeFields<Cell>(buffer, cells, fields.Width, fields.Height, fields.TopOffset, fields.BottomOffset,
                     {0, 1, 2, 3});
  const auto isUntouched = [](Cell cell) { return cell == untouched; };
  return std::ranges::equal(cells, expected) &&
         std::ranges::all_of(std::span(memory).first(margin), isUntouched) &&
         std::ranges::all_of(std::span(memory).last(margin), isUntouched);
}

void ExpectSameAsLiteral(const Bytes& buffer, const Fields& fields) {
  LiteralDecoder literal(buffer, fields.Width, fields.Height);
  literal.Decode(fields.TopOffset, fields.BottomOffset);
  ASSERT_TRUE(DecodesTo<std::uint8_t>(literal.Cells, buffer, fields) &&
              DecodesTo<std::uint32_t>(literal.Cells, buffer, fields))
      << buffer.size() << " bytes, " << fields.Width << " x " << fields.Height << ", fields at "
      << fields.TopOffset << " and " << fields.BottomOffset;
}

/// Bytes as text has them (mostly codes of one nibble), as damage has them, and mostly long codes.
Bytes RandomBytes(std::mt19937& random, std::size_t size) {
  const auto kind = random() % 3;
  const auto nibble = [&] {
    if (kind == 0) {
      return random() % 8 == 0 ? random() % 4 : 4 + random() % 12;
    }
    return kind == 1 || random() % 3 == 0 ? random() % 16 : 0;
  };
  Bytes bytes(size);
  for (auto& byte : bytes) {
    byte = static_cast<std::uint8_t>(nibble() << 4U | nibble());
  }
  return bytes;
}

TEST(DecodeFields, EverySmallBufferDecodesAsTheRulesSay) {
  std::mt19937 random(20);
  for (std::size_t size = 0; size <= 24; ++size) {
    for (int round = 0; round < 40; ++round) {
      const Bytes buffer = RandomBytes(random, size);
      for (const int width : {1, 2, 15, 16, 17, 33, 80}) {
        for (int offset = 0; offset <= static_cast<int>(size) + 6; ++offset) {
          ExpectSameAsLiteral(buffer, {width, 6, offset / 2, offset});
        }
      }
    }
  }
}

TEST(DecodeFields, RandomBuffersDecodeAsTheRulesSay) {
  std::mt19937 random(21);
  const auto below = [&random](std::size_t limit) { return static_cast<int>(random() % limit); };
  for (int round = 0; round < 6000; ++round) {
    const Bytes buffer = RandomBytes(random, random() % 1200);
    const int bottom = below(buffer.size() + 10);
    const int top =
        round % 4 == 0 ? below(buffer.size() + 10) : below(static_cast<std::size_t>(bottom) / 8 + 1);
    const int width = 1 + below(round % 3 == 0 ? 720 : 120);
    ExpectSameAsLiteral(buffer, {width, 1 + below(40), top, bottom});
  }
}

TEST(DecodeFields, FieldsAnywhereDecodeAsTheRulesSay) {
  std::mt19937 random(22);
  const Bytes buffer = RandomBytes(random, 300);
  for (const int top : {0, 1, 2, 3, 4, 5, 150, 290, 302, 303, 304, 305, 306, 32768, 65535}) {
    for (const int bottom : {0, 1, 2, 3, 4, 5, 160, 295, 302, 303, 304, 305, 306, 32768, 65535}) {
      ExpectSameAsLiteral(buffer, {50, 20, top, bottom});
    }
  }
}

TEST(DecodeFields, LargestPictureDecodesAsTheRulesSay) {
  std::mt19937 random(23);
  const Bytes buffer = RandomBytes(random, 32763);
  ExpectSameAsLiteral(buffer, {4096, 4096, 4, 16000});
}

}  // namespace
}  // namespace quillmark
