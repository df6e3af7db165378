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

constexpr CodeTable<std::uint8_t> BareCodes = {0, 1, 2, 3};
/// What a cell holds before decoding; no code.
constexpr std::uint8_t untouched = 9;

/// A unit of this data, which starts at its byte 4. Its header is never read, so it need not be a real one.
Bytes UnitOf(const Bytes& data) {
  Bytes unit(4, 0xEE);
  unit.insert(unit.end(), data.begin(), data.end());
  return unit;
}

std::uint8_t NibbleAfter(const Bytes& unit, std::int32_t position) {
  NibbleCursor cursor{.Position = position};
  return ReadNibble(unit, cursor);
}

TEST(ReadNibble, HighNibbleComesBeforeLowOne) {
  const Bytes unit = UnitOf({0xA5, 0x00, 0x00});
  NibbleCursor cursor{.Position = 3};
  EXPECT_EQ(ReadNibble(unit, cursor), 0xA);
  EXPECT_EQ(cursor.Position, 4);
  EXPECT_EQ(cursor.Pending, 0xA5);
  EXPECT_EQ(ReadNibble(unit, cursor), 0x5);
  EXPECT_EQ(cursor.Position, 4);
  EXPECT_LT(cursor.Pending, 0);
}

TEST(ReadNibble, NextByteFollowsTheLowNibble) {
  const Bytes unit = UnitOf({0x12, 0x34, 0x00});
  NibbleCursor cursor{.Position = 3};
  std::array<int, 4> nibbles{};
  for (int& nibble : nibbles) {
    nibble = ReadNibble(unit, cursor);
  }
  EXPECT_THAT(nibbles, ElementsAre(1, 2, 3, 4));
}

TEST(ReadNibble, LastByteGivesTheByteBeforeIt) {
  const Bytes unit = UnitOf({0x12, 0x34, 0x56});
  NibbleCursor cursor{.Position = 5};
  EXPECT_EQ(ReadNibble(unit, cursor), 0x3);
  EXPECT_EQ(ReadNibble(unit, cursor), 0x4);
  EXPECT_EQ(cursor.Position, 6);
}

TEST(ReadNibble, OnePastTheLastByteGivesTheLastByte) {
  const Bytes unit = UnitOf({0x12, 0x34, 0x56});
  NibbleCursor cursor{.Position = 6};
  EXPECT_EQ(ReadNibble(unit, cursor), 0x5);
  EXPECT_EQ(ReadNibble(unit, cursor), 0x6);
}

TEST(ReadNibble, FurtherPastTheEndIsZero) {
  const Bytes unit = UnitOf({0xFF, 0xFF, 0xFF});
  EXPECT_EQ(NibbleAfter(unit, 7), 0);
  EXPECT_EQ(NibbleAfter(unit, 65535), 0);
}

TEST(ReadNibble, HeaderAndBeforeItIsZero) {
  const Bytes unit = UnitOf({0xFF, 0xFF, 0xFF});
  EXPECT_EQ(NibbleAfter(unit, -1), 0);
  EXPECT_EQ(NibbleAfter(unit, 0), 0);
  EXPECT_EQ(NibbleAfter(unit, 2), 0);
  EXPECT_EQ(NibbleAfter(unit, 3), 0xF);
}

TEST(ReadNibble, OnlyByteIsReadOnePastItAlone) {
  const Bytes unit = UnitOf({0x70});
  EXPECT_EQ(NibbleAfter(unit, 2), 0);
  EXPECT_EQ(NibbleAfter(unit, 3), 0);
  EXPECT_EQ(NibbleAfter(unit, 4), 7);
  EXPECT_EQ(NibbleAfter(unit, 5), 0);
}

TEST(ReadNibble, EmptyUnitIsZeroEverywhere) {
  for (const std::int32_t position : {-1, 2, 3, 4, 5}) {
    EXPECT_EQ(NibbleAfter(UnitOf({}), position), 0);
    EXPECT_EQ(NibbleAfter({}, position), 0);
  }
}

struct Line {
  Bytes Cells;
  std::int32_t Position = 3;
};

Line DecodeFirstLine(const Bytes& data, int width, std::int32_t position = 3) {
  Line line{.Cells = Bytes(static_cast<std::size_t>(width), untouched), .Position = position};
  DecodeLine<std::uint8_t>(UnitOf(data), line.Cells, line.Position, 0, width, BareCodes);
  return line;
}

struct RunCase {
  const char* Name;
  Bytes Data;  ///< one code, then nibbles 0x7: one cell of code 3
  int Length;
  int Code;
};

class DecodeLineCode : public testing::TestWithParam<RunCase> {};

TEST_P(DecodeLineCode, HasLengthAndCode) {
  const RunCase& run = GetParam();
  const Line line = DecodeFirstLine(run.Data, run.Length + 1);
  const auto after = line.Cells.begin() + run.Length;
  EXPECT_THAT(Bytes(line.Cells.begin(), after), Each(run.Code));
  EXPECT_EQ(*after, 3);
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
  EXPECT_EQ(line.Position, 6);
}

TEST(DecodeLine, LengthZeroFillsToTheLineEnd) {
  // 1 x 2, then code 1 to the end
  const Line line = DecodeFirstLine({0x60, 0x00, 0x1F, 0xFF, 0xFF}, 5);
  EXPECT_THAT(line.Cells, ElementsAre(2, 1, 1, 1, 1));
  EXPECT_EQ(line.Position, 6);
}

TEST(DecodeLine, LengthZeroAtTheLineStartFillsAllOfIt) {
  const Line line = DecodeFirstLine({0x00, 0x03, 0x55, 0x55}, 400);
  EXPECT_THAT(line.Cells, Each(3));
  EXPECT_EQ(line.Position, 5);
}

TEST(DecodeLine, NextLineStartsOnAByte) {
  // The low nibble F of the first byte belongs to no line.
  const Bytes unit = UnitOf({0xDF, 0xE0, 0x00, 0x00});
  Bytes cells(6, untouched);
  std::int32_t position = 3;
  DecodeLine<std::uint8_t>(unit, cells, position, 0, 3, BareCodes);
  EXPECT_EQ(position, 4);
  DecodeLine<std::uint8_t>(unit, cells, position, 1, 3, BareCodes);
  EXPECT_EQ(position, 5);
  EXPECT_THAT(cells, ElementsAre(1, 1, 1, 2, 2, 2));
}

TEST(DecodeLine, RunPastLineEndIsClipped) {
  // 15 x 1 in a line of 4; the next line has its own codes.
  const Bytes unit = UnitOf({0x3D, 0xEB, 0x00, 0x00});
  Bytes cells(12, untouched);
  std::int32_t position = 3;
  DecodeLine<std::uint8_t>(unit, cells, position, 0, 4, BareCodes);
  EXPECT_THAT(cells, ElementsAre(1, 1, 1, 1, 9, 9, 9, 9, 9, 9, 9, 9));
  DecodeLine<std::uint8_t>(unit, cells, position, 1, 4, BareCodes);
  EXPECT_THAT(cells, ElementsAre(1, 1, 1, 1, 2, 2, 2, 3, 9, 9, 9, 9));
  EXPECT_EQ(position, 5);
}

TEST(DecodeLine, OwnLineAloneIsPainted) {
  Bytes cells(9, untouched);
  std::int32_t position = 3;
  DecodeLine<std::uint8_t>(UnitOf({0x3D, 0x00, 0x00}), cells, position, 1, 3, BareCodes);
  EXPECT_THAT(cells, ElementsAre(9, 9, 9, 1, 1, 1, 9, 9, 9));
}

TEST(DecodeLine, UnitEndRepeatsAByteThenReadsTheLast) {
  // Byte 5 is the last one and gives byte 4 again, position 6 gives byte 5, positions 7 and 8 give 0.
  const Line line = DecodeFirstLine({0x55, 0xAA}, 10);
  EXPECT_THAT(line.Cells, ElementsAre(1, 1, 1, 1, 2, 2, 2, 2, 0, 0));
  EXPECT_EQ(line.Position, 8);
}

TEST(DecodeLine, ZerosBeforeTheDataAreCodes) {
  // Nibbles 0 0 from byte 3, then 0 D: the four-nibble code of 3 x 1.
  const Line line = DecodeFirstLine({0x0D, 0xE0, 0x00, 0x00}, 5, 2);
  EXPECT_THAT(line.Cells, ElementsAre(1, 1, 1, 2, 2));
  EXPECT_EQ(line.Position, 5);
}

TEST(DecodeLine, NoWidthLeavesEverything) {
  for (const int width : {0, -1, std::numeric_limits<int>::min()}) {
    Bytes cells(4, untouched);
    std::int32_t position = 3;
    DecodeLine<std::uint8_t>(UnitOf({0xFF, 0xFF, 0xFF}), cells, position, 0, width, BareCodes);
    EXPECT_EQ(position, 3);
    EXPECT_THAT(cells, Each(untouched));
  }
}

TEST(DecodeLine, RowOutsideTheCellsIsNotDecoded) {
  for (const int line : {-1, 2, std::numeric_limits<int>::max()}) {
    Bytes cells(7, untouched);
    std::int32_t position = 3;
    DecodeLine<std::uint8_t>(UnitOf({0xFF, 0xFF, 0xFF}), cells, position, line, 3, BareCodes);
    EXPECT_EQ(position, 3);
    EXPECT_THAT(cells, Each(untouched));
  }
}

Bytes Decode(const Bytes& data, int width, int height, std::int32_t topOffset, std::int32_t bottomOffset) {
  Bytes cells(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), untouched);
  DecodeFields<std::uint8_t>(UnitOf(data), cells, width, height, topOffset, bottomOffset, BareCodes);
  return cells;
}

// Lines of three cells, one byte each: D is code 1, E is code 2, F is code 3, C is code 0.

TEST(DecodeFields, FieldsAlternate) {
  EXPECT_THAT(Decode({0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00}, 3, 4, 4, 6),
              ElementsAre(1, 1, 1, 3, 3, 3, 2, 2, 2, 0, 0, 0));
}

TEST(DecodeFields, CellsAreWhatTheTableSays) {
  const Bytes unit = UnitOf({0x5A, 0x7C, 0x00, 0x00});
  std::vector<std::uint32_t> cells(6, 0x12345678);
  DecodeFields<std::uint32_t>(unit, cells, 3, 2, 4, 5, {0x00112233, 0xFF445566, 0x80778899, 0x01020304});
  EXPECT_THAT(cells, ElementsAre(0xFF445566, 0x80778899, 0x80778899, 0x01020304, 0x00112233, 0x00112233));
}

TEST(DecodeFields, LastLineOfAnOddHeightIsNotDecoded) {
  EXPECT_THAT(Decode({0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00}, 3, 5, 4, 6),
              ElementsAre(1, 1, 1, 3, 3, 3, 2, 2, 2, 0, 0, 0, 9, 9, 9));
}

TEST(DecodeFields, HeightOneDecodesNothing) {
  EXPECT_THAT(Decode({0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00}, 3, 1, 4, 6), Each(untouched));
}

TEST(DecodeFields, StopsAfterThePairInWhichTheTopFieldRanPastTheBottomStart) {
  // The bottom field starts one byte after the top field: pair 2 reads its second byte as a top line.
  EXPECT_THAT(Decode({0xD0, 0xE0, 0xF0, 0xC0, 0xD0, 0xD0}, 3, 6, 4, 5),
              ElementsAre(1, 1, 1, 2, 2, 2, 2, 2, 2, 3, 3, 3, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, BottomFieldBeforeTheTopOneGetsOnePair) {
  EXPECT_THAT(Decode({0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00}, 3, 4, 6, 4),
              ElementsAre(3, 3, 3, 1, 1, 1, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, StopsAfterThePairInWhichTheBottomFieldRanPastTheUnit) {
  // Position 10 is one past the last byte and gives that byte.
  EXPECT_THAT(Decode({0xD0, 0xD0, 0xD0, 0x00, 0x00, 0xE0}, 3, 4, 4, 10),
              ElementsAre(1, 1, 1, 2, 2, 2, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, BottomFieldAtTheLastByteIsStillInside) {
  // Bottom lines read positions 9 (the byte before the last), then 10 (the last byte).
  EXPECT_THAT(Decode({0xD0, 0xD0, 0xC0, 0xC0, 0xF0, 0xE0}, 3, 6, 4, 9),
              ElementsAre(1, 1, 1, 3, 3, 3, 1, 1, 1, 2, 2, 2, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, BottomFieldFarPastTheUnitIsOneLineOfCodeZero) {
  EXPECT_THAT(Decode({0xD0, 0xD0, 0xD0, 0x00, 0x00, 0xE0}, 3, 4, 4, 65535),
              ElementsAre(1, 1, 1, 0, 0, 0, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, OffsetsInTheHeaderReadZeros) {
  // Top: nibbles 0 0 0 0 from bytes 0 and 1, then 0 0 0 0 again. Bottom: 0 0 0 D, 3 x 1.
  EXPECT_THAT(Decode({0x0D, 0xE0, 0xF0, 0xC0, 0x00, 0x00}, 3, 2, 0, 3), ElementsAre(0, 0, 0, 1, 1, 1));
}

TEST(DecodeFields, EmptyUnitIsOnePairOfCodeZero) {
  EXPECT_THAT(Decode({}, 3, 4, 4, 4), ElementsAre(0, 0, 0, 0, 0, 0, 9, 9, 9, 9, 9, 9));
}

TEST(DecodeFields, ReversedAreaIsNotDecoded) {
  const Bytes unit = UnitOf({0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00});
  struct Size {
    int Width;
    int Height;
  };
  for (const auto& [width, height] : {Size{0, 2}, Size{2, 0}, Size{-2, -2}, Size{-1, 4}, Size{4, -32768}}) {
    Bytes cells(16, untouched);
    DecodeFields<std::uint8_t>(unit, cells, width, height, 4, 6, BareCodes);
    EXPECT_THAT(cells, Each(untouched)) << width << " x " << height;
  }
}

TEST(DecodeFields, TooFewCellsAreNotTouched) {
  const Bytes unit = UnitOf({0xD0, 0xE0, 0xF0, 0xC0, 0x00, 0x00});
  Bytes cells(11, untouched);
  DecodeFields<std::uint8_t>(unit, cells, 3, 4, 4, 6, BareCodes);
  EXPECT_THAT(cells, Each(untouched));
  DecodeFields<std::uint8_t>(unit, cells, 32767, 32767, 4, 6, BareCodes);
  EXPECT_THAT(cells, Each(untouched));
}

TEST(DecodeFields, LongLinesOfManyRunsAreDecodedToTheirEnd) {
  // A line of 60 cells in each field, well inside the unit: 2 x 1, 20 x 0, 7 x 3, 17 x 2, 3 x 1, code 0 to
  // the end; 1 x 3, 15 x 2, 16 x 1, 5 x 0, 22 x 3, 1 x 1.
  const Bytes data = {0x90, 0x50, 0x1F, 0x04, 0x6D, 0x00, 0x00,  // top
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
  EXPECT_THAT(Decode(data, 60, 2, 4, 11), ElementsAreArray(expected));
}

/// The rules of the format, one nibble and one cell at a time, as a second opinion on everything that the
/// decoder does faster.
class LiteralDecoder {
 public:
  LiteralDecoder(const Bytes& unit, int width, int height)
      : Cells(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), untouched),
        unit_(unit),
        last_(static_cast<int>(unit.size()) - 1),
        width_(width),
        height_(height) {}

  void Decode(int topOffset, int bottomOffset) {
    int top = topOffset - 1;
    int bottom = bottomOffset - 1;
    for (int line = 0; line <= height_ - 2; line += 2) {
      DecodeOne(top, line);
      DecodeOne(bottom, line + 1);
      if (top > bottomOffset - 1 || bottom > last_) {
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
    pending_ = index < 4 || index > last_ ? 0 : unit_[static_cast<std::size_t>(index)];
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

  const Bytes& unit_;
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
bool DecodesTo(const Bytes& expected, const Bytes& unit, const Fields& fields,
               Instructions use = Instructions::Best) {
  constexpr std::size_t margin = 64;
  std::vector<Cell> memory(expected.size() + 2 * margin, untouched);
  const std::span<Cell> cells = std::span(memory).subspan(margin, expected.size());
  DecodeFields<Cell>(unit, cells, fields.Width, fields.Height, fields.TopOffset, fields.BottomOffset,
                     {0, 1, 2, 3}, use);
  const auto isUntouched = [](Cell cell) { return cell == untouched; };
  return std::ranges::equal(cells, expected) &&
         std::ranges::all_of(std::span(memory).first(margin), isUntouched) &&
         std::ranges::all_of(std::span(memory).last(margin), isUntouched);
}

void ExpectSameAsLiteral(const Bytes& unit, const Fields& fields) {
  LiteralDecoder literal(unit, fields.Width, fields.Height);
  literal.Decode(fields.TopOffset, fields.BottomOffset);
  ASSERT_TRUE(DecodesTo<std::uint8_t>(literal.Cells, unit, fields) &&
              DecodesTo<std::uint32_t>(literal.Cells, unit, fields))
      << unit.size() << " bytes, " << fields.Width << " x " << fields.Height << ", fields at "
      << fields.TopOffset << " and " << fields.BottomOffset;
}

/// The same without what not every processor has.
void ExpectPlainSameAsLiteral(const Bytes& unit, const Fields& fields) {
  LiteralDecoder literal(unit, fields.Width, fields.Height);
  literal.Decode(fields.TopOffset, fields.BottomOffset);
  ASSERT_TRUE(DecodesTo<std::uint32_t>(literal.Cells, unit, fields, Instructions::Plain));
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

TEST(DecodeFields, EverySmallUnitDecodesAsTheRulesSay) {
  std::mt19937 random(20);
  for (std::size_t size = 0; size <= 24; ++size) {
    for (int round = 0; round < 40; ++round) {
      const Bytes unit = UnitOf(RandomBytes(random, size));
      for (const int width : {1, 2, 15, 16, 17, 33, 80}) {
        for (int offset = 0; offset <= static_cast<int>(size) + 6; ++offset) {
          ExpectSameAsLiteral(unit, {width, 6, offset / 2, offset});
        }
      }
    }
  }
}

/// Whatever three nibbles follow one another, first in a line and behind other runs, in a line that goes on
/// and in one that ends soon.
TEST(DecodeFields, AllShortCodesDecodeAsTheRulesSay) {
  for (unsigned bits = 0; bits < 4096; ++bits) {
    Bytes data(30, 0x55);  // runs of one cell
    for (const std::size_t line : {std::size_t{0}, std::size_t{8}}) {
      data[line] = static_cast<std::uint8_t>(bits >> 4U);
      data[line + 1] = static_cast<std::uint8_t>(bits << 4U | 0x5U);
      data[line + 3] = static_cast<std::uint8_t>(0x50U | bits >> 8U);
      data[line + 4] = static_cast<std::uint8_t>(bits);
    }
    ExpectSameAsLiteral(UnitOf(data), {90, 2, 4, 12});
    ExpectPlainSameAsLiteral(UnitOf(data), {90, 2, 4, 12});
    ExpectSameAsLiteral(UnitOf(data), {17, 2, 4, 12});
  }
}

TEST(DecodeFields, PlainInstructionsDecodeAsTheRulesSay) {
  std::mt19937 random(24);
  for (int round = 0; round < 500; ++round) {
    ExpectPlainSameAsLiteral(UnitOf(RandomBytes(random, 600)), {1 + round, 20, 4, 300});
  }
}

TEST(DecodeFields, RandomUnitsDecodeAsTheRulesSay) {
  std::mt19937 random(21);
  const auto below = [&random](std::size_t limit) { return static_cast<int>(random() % limit); };
  for (int round = 0; round < 6000; ++round) {
    const Bytes unit = UnitOf(RandomBytes(random, random() % 1200));
    const int bottom = below(unit.size() + 6);
    const int top = round % 4 == 0 ? below(unit.size() + 6) : below(static_cast<std::size_t>(bottom) / 8 + 1);
    const int width = 1 + below(round % 3 == 0 ? 720 : 120);
    ExpectSameAsLiteral(unit, {width, 1 + below(40), top, bottom});
  }
}

TEST(DecodeFields, FieldsAnywhereDecodeAsTheRulesSay) {
  std::mt19937 random(22);
  const Bytes unit = UnitOf(RandomBytes(random, 300));
  for (const int top : {0, 1, 2, 3, 4, 5, 150, 290, 302, 303, 304, 305, 306, 32768, 65535}) {
    for (const int bottom : {0, 1, 2, 3, 4, 5, 160, 295, 302, 303, 304, 305, 306, 32768, 65535}) {
      ExpectSameAsLiteral(unit, {50, 20, top, bottom});
    }
  }
}

TEST(DecodeFields, LargestPictureDecodesAsTheRulesSay) {
  std::mt19937 random(23);
  const Bytes unit = UnitOf(RandomBytes(random, 32763));
  ExpectSameAsLiteral(unit, {4096, 4096, 4, 16000});
}

}  // namespace
}  // namespace quillmark
