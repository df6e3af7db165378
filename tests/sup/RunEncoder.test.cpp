#include "sup/RunEncoder.h"

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Written(const FieldBuffer& field) {
  return {field.Bytes().begin(), field.Bytes().end()};
}

void AppendRun(FieldBuffer& field, std::uint32_t code, std::size_t run) {
  field.Append(4, [&](NibbleWriter& writer) { EncodeRun(writer, code, run); });
}

void AppendEndOfLine(FieldBuffer& field, std::uint32_t code) {
  field.Append(4, [&](NibbleWriter& writer) { EncodeEndOfLine(writer, code); });
}

/// A cell's code is its value's low two bits, so that values 4 apart are two colours with one code.
std::uint32_t LowBits(std::uint32_t cell) {
  return cell & 3U;
}

template <typename Cell>
std::vector<Cell> Line(std::initializer_list<std::pair<std::size_t, Cell>> runs) {
  std::vector<Cell> line;
  for (const auto& [length, cell] : runs) {
    line.insert(line.end(), length, cell);
  }
  return line;
}

template <typename Cell>
Bytes Encoded(const std::vector<Cell>& line) {
  FieldBuffer field;
  EncodeLine(field, std::span<const Cell>(line), LowBits);
  EXPECT_FALSE(field.Half());
  return Written(field);
}

struct RunCase {
  const char* Name;
  std::size_t Run;
  std::uint32_t Code;
  Bytes FromHighNibble;
  bool HalfAfterHigh;
  Bytes FromLowNibble;  ///< after a written high nibble 0xF
  bool HalfAfterLow;
};

class EncodeRunTest : public testing::TestWithParam<RunCase> {};

TEST_P(EncodeRunTest, StartsOnHighNibble) {
  FieldBuffer field;
  AppendRun(field, GetParam().Code, GetParam().Run);
  EXPECT_EQ(Written(field), GetParam().FromHighNibble);
  EXPECT_EQ(field.Half(), GetParam().HalfAfterHigh);
}

TEST_P(EncodeRunTest, StartsOnLowNibble) {
  FieldBuffer field;
  AppendRun(field, 3, 3);
  ASSERT_TRUE(field.Half());
  AppendRun(field, GetParam().Code, GetParam().Run);
  EXPECT_EQ(Written(field), GetParam().FromLowNibble);
  EXPECT_EQ(field.Half(), GetParam().HalfAfterLow);
}

INSTANTIATE_TEST_SUITE_P(
    Widths, EncodeRunTest,
    testing::Values(RunCase{"Run0", 0, 2, {0x20}, true, {0xF2}, false},
                    RunCase{"Run1", 1, 1, {0x50}, true, {0xF5}, false},
                    RunCase{"Run3", 3, 2, {0xE0}, true, {0xFE}, false},
                    RunCase{"Run4", 4, 0, {0x10}, false, {0xF1, 0x00}, true},
                    RunCase{"Run15", 15, 3, {0x3F}, false, {0xF3, 0xF0}, true},
                    RunCase{"Run16", 16, 1, {0x04, 0x10}, true, {0xF0, 0x41}, false},
                    RunCase{"Run63", 63, 2, {0x0F, 0xE0}, true, {0xF0, 0xFE}, false},
                    RunCase{"Run64", 64, 3, {0x01, 0x03}, false, {0xF0, 0x10, 0x30}, true},
                    RunCase{"Run255", 255, 1, {0x03, 0xFD}, false, {0xF0, 0x3F, 0xD0}, true}),
    [](const auto& test) { return test.param.Name; });

TEST(EncodeEndOfLine, OnHighNibbleIsTwoBytes) {
  FieldBuffer field;
  AppendEndOfLine(field, 3);
  EXPECT_EQ(Written(field), (Bytes{0x00, 0x03}));
  EXPECT_FALSE(field.Half());
}

TEST(EncodeEndOfLine, OnLowNibbleLeavesItZeroAndPadsTheLastByte) {
  FieldBuffer field;
  AppendRun(field, 1, 2);
  AppendEndOfLine(field, 3);
  EXPECT_EQ(Written(field), (Bytes{0x90, 0x00, 0x30}));
  EXPECT_FALSE(field.Half());
}

TEST(EncodeBlankLine, IsTwoBytes) {
  FieldBuffer field;
  EncodeBlankLine(field, 2);
  EXPECT_EQ(Written(field), (Bytes{0x00, 0x02}));
}

TEST(EncodeLine, OneColourIsTwoBytes) {
  EXPECT_EQ(Encoded(Line<std::uint8_t>({{720, 2}})), (Bytes{0x00, 0x02}));
  EXPECT_EQ(Encoded(Line<std::uint32_t>({{720, 2}})), (Bytes{0x00, 0x02}));
}

TEST(EncodeLine, SingleCellIsTwoBytes) {
  EXPECT_EQ(Encoded(Line<std::uint8_t>({{1, 1}})), (Bytes{0, 1}));
}

TEST(EncodeLine, EmptyLineAppendsNothing) {
  EXPECT_EQ(Encoded(std::vector<std::uint8_t>{}), Bytes{});
}

TEST(EncodeLine, ThreeCellsThenBackground) {
  EXPECT_EQ(Encoded(Line<std::uint8_t>({{3, 1}, {717, 0}})), (Bytes{0xD0, 0x00, 0x00}));
}

TEST(EncodeLine, LastCellAloneIsEndOfLineCode) {
  // 719 = 255 + 255 + 209; 209 x 4 = 0x344.
  EXPECT_EQ(Encoded(Line<std::uint8_t>({{719, 0}, {1, 3}})),
            (Bytes{0x03, 0xFC, 0x03, 0xFC, 0x03, 0x44, 0x00, 0x03}));
}

TEST(EncodeLine, Run255IsOneCode) {
  EXPECT_EQ(Encoded(Line<std::uint8_t>({{255, 1}, {465, 0}})), (Bytes{0x03, 0xFD, 0x00, 0x00}));
}

TEST(EncodeLine, Run256Is255And1) {
  EXPECT_EQ(Encoded(Line<std::uint8_t>({{256, 1}, {464, 0}})), (Bytes{0x03, 0xFD, 0x50, 0x00, 0x00}));
}

TEST(EncodeLine, Run300Is255And45) {
  // 45 x 4 + 1 = 0xB5 in three nibbles, then the end of line after a high nibble.
  EXPECT_EQ(Encoded(Line<std::uint8_t>({{300, 1}, {420, 0}})), (Bytes{0x03, 0xFD, 0x0B, 0x50, 0x00, 0x00}));
}

TEST(EncodeLine, Run510IsTwice255) {
  EXPECT_EQ(Encoded(Line<std::uint8_t>({{510, 1}, {210, 0}})), (Bytes{0x03, 0xFD, 0x03, 0xFD, 0x00, 0x00}));
}

TEST(EncodeLine, Run511IsTwice255And1) {
  EXPECT_EQ(Encoded(Line<std::uint8_t>({{511, 1}, {209, 0}})),
            (Bytes{0x03, 0xFD, 0x03, 0xFD, 0x50, 0x00, 0x00}));
}

TEST(EncodeLine, EqualCodesOfTwoColoursStayTwoRuns) {
  // Cells 1 and 5 both have code 1: runs of 2 and 3 of code 1, the rest code 0.
  EXPECT_EQ(Encoded(Line<std::uint8_t>({{2, 1}, {3, 5}, {715, 0}})), (Bytes{0x9D, 0x00, 0x00}));
}

TEST(EncodeLine, TrailingColourOfSameCodeIsNotJoined) {
  EXPECT_EQ(Encoded(Line<std::uint32_t>({{4, 0xFF000001}, {716, 0xFF000005}})), (Bytes{0x11, 0x00, 0x01}));
}

TEST(EncodeLine, LinesStartOnWholeBytes) {
  FieldBuffer field;
  const auto line = Line<std::uint8_t>({{3, 1}, {5, 0}});
  EncodeLine(field, std::span<const std::uint8_t>(line), LowBits);
  EncodeLine(field, std::span<const std::uint8_t>(line), LowBits);
  EXPECT_EQ(Written(field), (Bytes{0xD0, 0x00, 0x00, 0xD0, 0x00, 0x00}));
}

TEST(EncodeLine, ClearedBufferShowsNothingOfItsPast) {
  FieldBuffer field;
  const auto busy = Line<std::uint8_t>({{3, 3}, {3, 2}, {3, 3}, {3, 2}, {15, 3}, {1, 0}});
  EncodeLine(field, std::span<const std::uint8_t>(busy), LowBits);
  field.Clear();
  EXPECT_EQ(field.Position(), 0U);
  const auto line = Line<std::uint8_t>({{3, 1}, {5, 0}});
  EncodeLine(field, std::span<const std::uint8_t>(line), LowBits);
  EXPECT_EQ(Written(field), (Bytes{0xD0, 0x00, 0x00}));
}

TEST(EncodeLine, BufferGrowsPastAnyLength) {
  FieldBuffer field;
  const auto line = Line<std::uint8_t>({{1, 1}, {1, 0}});
  for (int i = 0; i < 50000; ++i) {
    EncodeLine(field, std::span<const std::uint8_t>(line), LowBits);
  }
  EXPECT_EQ(field.Position(), 150000U);
  EXPECT_EQ(field.Bytes()[149997], 0x50);
  EXPECT_EQ(field.Bytes()[149999], 0x00);
}

template <typename Cell>
std::vector<std::size_t> RunStarts(const std::vector<Cell>& line) {
  std::vector<std::size_t> starts;
  ForEachRunStart(std::span<const Cell>(line), [&](std::size_t start) { starts.push_back(start); });
  return starts;
}

TEST(ForEachRunStart, FindsARunWhereverItStartsAndEnds) {
  for (std::size_t length = 1; length <= 140; ++length) {
    for (std::size_t start = 1; start < length; ++start) {
      std::vector<std::uint8_t> bytes(length, 7);
      std::vector<std::uint32_t> words(length, 0x80000001U);
      bytes[start] = 6;
      words[start] = 0x00000001U;
      std::vector<std::size_t> expected = {start};
      if (start + 1 < length) {
        expected.push_back(start + 1);
      }
      ASSERT_EQ(RunStarts(bytes), expected) << length;
      ASSERT_EQ(RunStarts(words), expected) << length;
    }
  }
}

TEST(ForEachRunStart, TellsEachCellOnceWhereAllDiffer) {
  for (std::size_t length = 1; length <= 140; ++length) {
    std::vector<std::uint8_t> line(length);
    std::vector<std::size_t> expected;
    for (std::size_t i = 0; i < length; ++i) {
      line[i] = static_cast<std::uint8_t>(i % 2);
      if (i > 0) {
        expected.push_back(i);
      }
    }
    ASSERT_EQ(RunStarts(line), expected) << length;
  }
}

TEST(RunStartsInBlock, HasABitForEachCellThatDiffersFromTheOneBefore) {
  std::vector<std::uint8_t> cells(65, 2);
  cells[1] = 0;   // differs from cell 0, as the next one does from it
  cells[40] = 3;  // the 39th of the block, from 0
  cells[64] = 1;
  constexpr std::uint64_t Expected = 1U << 0U | 1U << 1U | std::uint64_t{3} << 39U | std::uint64_t{1} << 63U;
  EXPECT_EQ(RunStartsInBlock(cells.data() + 1), Expected);
  EXPECT_EQ(RunStartsInBlock<std::uint8_t>(cells.data() + 1), Expected) << "as without vector instructions";
  const std::vector<std::uint32_t> words(cells.begin(), cells.end());
  EXPECT_EQ(RunStartsInBlock(words.data() + 1), Expected);
}

TEST(RunStartsInBlock, IsTheSameWithAndWithoutVectorInstructions) {
  std::mt19937 random(1);
  std::vector<std::uint8_t> cells(BlockSize + 1);
  for (int block = 0; block < 1000; ++block) {
    std::ranges::generate(cells, [&] { return static_cast<std::uint8_t>(random() % 4); });
    ASSERT_EQ(RunStartsInBlock(cells.data() + 1), RunStartsInBlock<std::uint8_t>(cells.data() + 1)) << block;
  }
}

TEST(ForEachRunStart, OneColourHasNone) {
  EXPECT_TRUE(RunStarts(Line<std::uint8_t>({{720, 3}})).empty());
}

TEST(ForEachRunStart, CellsThatDifferInOneBitOfAnyByteStartRuns) {
  for (std::uint32_t bit = 0; bit < 32; ++bit) {
    std::vector<std::uint32_t> line(100, 0);
    line[5] = std::uint32_t{1} << bit;
    EXPECT_EQ(RunStarts(line), (std::vector<std::size_t>{5, 6})) << bit;
  }
}

TEST(IsOneColour, TellsEachSingleDifference) {
  EXPECT_TRUE(IsOneColour(std::span<const std::uint8_t>(Line<std::uint8_t>({{1, 9}}))));
  EXPECT_TRUE(IsOneColour(std::span<const std::uint32_t>(Line<std::uint32_t>({{720, 9}}))));
  for (std::size_t i = 0; i < 720; ++i) {
    std::vector<std::uint32_t> line(720, 9);
    line[i] = 10;
    EXPECT_FALSE(IsOneColour(std::span<const std::uint32_t>(line))) << i;
  }
}

}  // namespace
}  // namespace quillmark
