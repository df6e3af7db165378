#include "sup/MergedPacket.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr MergedControl Control = {
    .Delay = 0x0123, .ColourBytes = {0x3A, 0x21}, .ContrastBytes = {0xFE, 0x80}};
constexpr TimeField Time = {1, 2, 3, 4, 5, 6, 7, 8};

/// A frame whose cells are pixel codes.
struct Frame {
  explicit Frame(int height)
      : Height(height),
        Cells(static_cast<std::size_t>(height) * 720),
        InUse(static_cast<std::size_t>(height)) {}

  /// Row y becomes `alternations` cells of codes 1 and 2 in turn, the rest code 0.
  void Alternate(int y, std::size_t alternations) {
    InUse[static_cast<std::size_t>(y)] = 1;
    for (std::size_t x = 0; x < alternations; ++x) {
      Cells[static_cast<std::size_t>(y) * 720 + x] = x % 2 == 0 ? 1 : 2;
    }
  }

  /// Row y becomes all `code`.
  void Fill(int y, std::uint8_t code) {
    InUse[static_cast<std::size_t>(y)] = 1;
    std::fill_n(Cells.begin() + std::ptrdiff_t{y} * 720, 720, code);
  }

  [[nodiscard]] FrameCells View() const {
    return {.Height = Height, .Cells = Cells, .Codes = Codes, .RowInUse = InUse};
  }

  int Height;
  Bytes Cells;
  Bytes InUse;
  Bytes Codes = {0, 1, 2, 3};
};

Bytes Encoded(const Frame& frame) {
  MergedPacketEncoder encoder;
  const auto packet = encoder.Encode(frame.View(), Control, Time);
  return packet ? Bytes(packet->begin(), packet->end()) : Bytes();
}

TEST(MergedPacket, SmallFrameByteForByte) {
  Frame frame(8);
  frame.Fill(0, 3);  // rows 0, 1 and 7 are not shown
  frame.Fill(1, 3);
  frame.Fill(7, 3);
  frame.Fill(2, 1);
  frame.Alternate(3, 1);
  frame.Alternate(4, 2);
  frame.Fill(5, 2);
  const Bytes expected = {'S',  'P',                                    // signature
                          1,    2,    3,    4,    5,    6,    7,    8,  // time as stored
                          0x00, 0x31,                                   // unit of 49 bytes: 14 + 35
                          0x00, 0x12,                                   // control data at 18: 14 + 4
                          0x00, 0x01,                                   // row 2
                          0x56, 0x00, 0x00,                             // row 4
                          0x00, 0x00,                                   // row 6
                          0x50, 0x00, 0x00,                             // row 3
                          0x00, 0x02,                                   // row 5
                          0x00, 0x00,                                   // after the fields
                          0x00, 0x00, 0x00, 0x2A,                       // no delay; second sequence at 42
                          0x01,                                         // start display
                          0x03, 0x3A, 0x21,                             // colours
                          0x04, 0xFE, 0x80,                             // contrasts
                          0x06, 0x00, 0x04, 0x00, 0x0B,                 // fields at 4 and 11
                          0x05, 0x00, 0x02, 0xCF, 0x00, 0x22, 0x3E,     // x 0 to 719, y 2 to 574
                          0xFF,                                         // end
                          0x01, 0x23, 0x00, 0x2A,                       // the delay; points to itself
                          0x02,                                         // stop display
                          0xFF, 0xFF};                                  // end, padding
  EXPECT_EQ(Encoded(frame), expected);
}

TEST(MergedPacket, EmptyPalFrame) {
  const Bytes packet = Encoded(Frame(576));
  // 287 + 286 lines of two bytes, 37 more: 1183 = 0x49F; the control data at 1152 = 0x480.
  ASSERT_EQ(packet.size(), 1193U);
  EXPECT_EQ(Bytes(packet.begin() + 10, packet.begin() + 14), (Bytes{0x04, 0x9F, 0x04, 0x80}));
  EXPECT_TRUE(std::all_of(packet.begin() + 14, packet.begin() + 1162, [](int byte) { return byte == 0; }));
  // The bottom field at 4 + 574 = 0x242, then the area.
  EXPECT_EQ(Bytes(packet.begin() + 1173, packet.begin() + 1185),
            (Bytes{0x06, 0x00, 0x04, 0x02, 0x42, 0x05, 0x00, 0x02, 0xCF, 0x00, 0x22, 0x3E}));
}

TEST(MergedPacket, EmptyNtscFrameEndsAtRow478) {
  const Bytes packet = Encoded(Frame(480));
  // 239 + 238 lines of two bytes: 991 = 0x3DF; the control data at 960 = 0x3C0; the bottom field at 482.
  ASSERT_EQ(packet.size(), 1001U);
  EXPECT_EQ(Bytes(packet.begin() + 10, packet.begin() + 14), (Bytes{0x03, 0xDF, 0x03, 0xC0}));
  EXPECT_EQ(Bytes(packet.begin() + 981, packet.begin() + 993),
            (Bytes{0x06, 0x00, 0x04, 0x01, 0xE2, 0x05, 0x00, 0x02, 0xCF, 0x00, 0x21, 0xDE}));
}

TEST(MergedPacket, BlankRowsHaveTheCodeOfCell0) {
  Frame frame(480);
  frame.Codes = {2};
  const Bytes packet = Encoded(frame);
  EXPECT_EQ(Bytes(packet.begin() + 14, packet.begin() + 18), (Bytes{0x00, 0x02, 0x00, 0x02}));
}

TEST(MergedPacket, CellsAreWrittenWithTheirCodes) {
  Frame frame(480);
  frame.Codes = {0, 3, 3};  // two colours, one code: two runs of 1
  frame.Alternate(2, 2);
  const Bytes packet = Encoded(frame);
  EXPECT_EQ(Bytes(packet.begin() + 14, packet.begin() + 17), (Bytes{0x77, 0x00, 0x00}));
}

/// A row that alternates 720 times takes 719 nibbles and an end of line, 362 bytes; one that alternates n
/// times, n even, takes n / 2 + 2 bytes; a blank one 2. 178 full rows, one of 544 and 394 blank ones are
/// 65498 bytes, to which 37 are added.
Frame FrameOfExactly65535Bytes(std::size_t lastAlternations) {
  Frame frame(576);
  for (int y = 2; y < 180; ++y) {
    frame.Alternate(y, 720);
  }
  frame.Alternate(180, lastAlternations);
  return frame;
}

TEST(MergedPacket, LargestUnitFits) {
  const Bytes packet = Encoded(FrameOfExactly65535Bytes(544));
  ASSERT_EQ(packet.size(), 65545U);
  EXPECT_EQ(Bytes(packet.begin() + 10, packet.begin() + 14), (Bytes{0xFF, 0xFF, 0xFF, 0xE0}));
}

TEST(MergedPacket, OneByteMoreFails) {
  MergedPacketEncoder encoder;
  EXPECT_EQ(encoder.Encode(FrameOfExactly65535Bytes(546).View(), Control, Time), std::nullopt);
}

TEST(MergedPacket, FieldsThatAreCutShortFail) {
  Frame frame(576);
  for (int y = 0; y < 576; ++y) {
    frame.Alternate(y, 720);
  }
  MergedPacketEncoder encoder;
  EXPECT_EQ(encoder.Encode(frame.View(), Control, Time), std::nullopt);
}

TEST(MergedPacket, EncoderGoesOnAfterAFailure) {
  MergedPacketEncoder encoder;
  ASSERT_EQ(encoder.Encode(FrameOfExactly65535Bytes(546).View(), Control, Time), std::nullopt);
  const Frame empty(480);
  const auto packet = encoder.Encode(empty.View(), Control, Time);
  ASSERT_TRUE(packet);
  EXPECT_EQ(Bytes(packet->begin(), packet->end()), Encoded(empty));
}

TEST(MergedPacket, FrameWithoutShownRowsHasEmptyFields) {
  EXPECT_EQ(Encoded(Frame(0)).size(), 47U);
}

struct DelayCase {
  const char* Name;
  std::int16_t Delay;
  std::int64_t Start;
  std::int64_t End;
  bool IsLast;
  std::uint16_t Expected;
};

class MergedDelayTest : public testing::TestWithParam<DelayCase> {};

TEST_P(MergedDelayTest, Is) {
  SpuControl primary;
  primary.Delay = GetParam().Delay;
  EXPECT_EQ(MergedDelay(primary, GetParam().Start, GetParam().End, GetParam().IsLast), GetParam().Expected);
}

using AnyTime = std::numeric_limits<std::int64_t>;

INSTANTIATE_TEST_SUITE_P(
    Rules, MergedDelayTest,
    testing::Values(
        DelayCase{"StoredDelay", 225, 0, 1000, false, 225},
        DelayCase{"StoredDelayOfTheLast", 225, 0, 0, true, 225},
        DelayCase{"NegativeDelayKeepsItsBits", -1, 0, 1000, false, 65535},
        DelayCase{"LastWithoutDelay", 0, 90000, 0, true, 1000},
        DelayCase{"Duration", 0, 90000, 315000, false, 225}, DelayCase{"RoundedDown", 0, 0, 1499, false, 1},
        DelayCase{"HalvesAreRoundedUp", 0, 0, 1500, false, 2}, DelayCase{"RoundedUp", 0, 0, 1999, false, 2},
        DelayCase{"NegativeTimes", 0, -2000, -1000, false, 1}, DelayCase{"NoEnd", 0, 90000, 0, false, 0},
        DelayCase{"AtMost65535", 0, 0, 65536000, false, 65535},
        DelayCase{"WholeRange", 0, AnyTime::min(), AnyTime::max(), false, 65535},
        DelayCase{"WholeRangeBackwards", 0, AnyTime::max(), AnyTime::min(), false, 0}),
    [](const auto& test) { return test.param.Name; });

SpuControl SoundControl() {
  SpuControl control;
  control.Colour = {0, 2, 13, 12};
  control.Contrast = {1, 15, 14, 8};
  return control;
}

SupStream StreamOf(std::vector<std::int64_t> starts, std::vector<std::int64_t> ends) {
  SupStream stream;
  stream.Count = static_cast<std::int32_t>(starts.size());
  stream.StartTime = std::move(starts);
  stream.EndTime = std::move(ends);
  return stream;
}

TEST(MakeMergedControl, HasTheArgumentBytesOfBothCommands) {
  const MergedControl control = MakeMergedControl(SoundControl(), StreamOf({0}, {0}), 0);
  EXPECT_EQ(control.ColourBytes, (std::array<std::uint8_t, 2>{0xCD, 0x20}));
  EXPECT_EQ(control.ContrastBytes, (std::array<std::uint8_t, 2>{0x8E, 0xF1}));
}

TEST(MakeMergedControl, TakesTheDelayFromTheStreamsTimes) {
  const SupStream stream = StreamOf({0, 5000}, {5000, 0});
  EXPECT_EQ(MakeMergedControl(SoundControl(), stream, 0).Delay, 5);
  EXPECT_EQ(MakeMergedControl(SoundControl(), stream, 1).Delay, 1000);
}

TEST(StoredTime, IsAllEightBytesOfThePacket) {
  SupStream stream;
  stream.PacketOffset = {1};
  stream.RawBytes = {0, 'S', 'P', 9, 8, 7, 6, 5, 4, 3, 2, 0, 0};
  EXPECT_EQ(StoredTime(stream, 0), (TimeField{9, 8, 7, 6, 5, 4, 3, 2}));
}

TEST(StoredTime, MissingBytesAre0) {
  SupStream stream;
  stream.PacketOffset = {1, 100};
  stream.RawBytes = {0, 'S', 'P', 9, 8};
  EXPECT_EQ(StoredTime(stream, 0), (TimeField{9, 8, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(StoredTime(stream, 1), TimeField{});
  EXPECT_EQ(StoredTime(stream, 2), TimeField{});
  EXPECT_EQ(StoredTime(stream, static_cast<std::size_t>(-1)), TimeField{});
}

}  // namespace
}  // namespace quillmark
