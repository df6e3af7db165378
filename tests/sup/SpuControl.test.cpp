#include "sup/SpuControl.h"

#include <array>
#include <cstdint>
#include <functional>
#include <gmock/gmock.h>
#include <string>

#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::PacketBuilder;
using testing::ElementsAre;

/// Control offset of a sequence that the unit's data starts with.
constexpr std::int16_t AtDataStart = 4;

const SpuControl Nothing;

/// A unit of this data, which starts at its byte 4. Its header is never read, so it need not be a real one.
Bytes UnitOf(const Bytes& data) {
  return Join({{0x03, 0x03, 0x03, 0x03}, data});
}

TEST(DecodeControl, ReadsAllThatASoundUnitSays) {
  const Bytes unit = UnitOf({
      0x00, 0x00, 0x00, 0x1C,                    // 4: at once, next sequence at 28
      0x01,                                      // 8: start
      0x03, 0xA2, 0x10,                          // 9: colours
      0x04, 0xF7, 0x80,                          // 12: contrasts
      0x05, 0x05, 0xD2, 0x6C, 0x18, 0xB2, 0x22,  // 15: area
      0x06, 0x00, 0x04, 0x0B, 0xD1,              // 22: fields
      0xFF,                                      // 27
      0x00, 0xD3, 0x00, 0x1C, 0x02, 0xFF         // 28: after 211 units, stop
  });

  const SpuControl control = DecodeControl(unit, AtDataStart);

  EXPECT_EQ(control.Delay, 211);
  EXPECT_EQ(control.ColourPos, 10);
  EXPECT_EQ(control.ContrastPos, 13);
  EXPECT_THAT(control.Colour, ElementsAre(0, 1, 2, 10));
  EXPECT_THAT(control.Contrast, ElementsAre(0, 8, 7, 15));
  EXPECT_EQ(control.X1, 93);
  EXPECT_EQ(control.X2, 620);
  EXPECT_EQ(control.Y1, 395);
  EXPECT_EQ(control.Y2, 546);
  EXPECT_EQ(control.Width(), 528);
  EXPECT_EQ(control.Height(), 152);
  EXPECT_EQ(control.TopFieldOffset, 4);
  EXPECT_EQ(control.BottomFieldOffset, 3025);
  EXPECT_EQ(control.NextSequence, 28);
  EXPECT_TRUE(control.IsValid());
}

TEST(DecodeControl, ControlOffsetCountsFromTheUnitsStart) {
  const SpuControl control = DecodeControl(PacketBuilder().Delay(7).WholeUnit(), 8);

  EXPECT_TRUE(control.IsValid());
  EXPECT_EQ(control.Delay, 7);
  EXPECT_EQ(control.ColourPos, 14);
  EXPECT_EQ(control.ContrastPos, 17);
}

TEST(DecodeControl, AreaHasTwelveBitsANumber) {
  const Bytes unit = UnitOf({0, 0, 0, 4, 0x05, 0xFF, 0xFF, 0xFF, 0x80, 0x08, 0x01, 0xFF});

  const SpuControl control = DecodeControl(unit, AtDataStart);

  EXPECT_EQ(control.X1, 4095);
  EXPECT_EQ(control.X2, 4095);
  EXPECT_EQ(control.Y1, 2048);
  EXPECT_EQ(control.Y2, 2049);
}

TEST(DecodeControl, ReversedAreaIsReadAsItStands) {
  const SpuControl control = DecodeControl(PacketBuilder().Area(200, 100, 50, 40).WholeUnit(), 8);

  EXPECT_TRUE(control.IsValid());
  EXPECT_EQ(control.Width(), -99);
  EXPECT_EQ(control.Height(), -9);
}

TEST(DecodeControl, FieldOffsetsAreUnsigned) {
  const Bytes unit = UnitOf({0, 0, 0, 4, 0x06, 0xFF, 0xFF, 0x80, 0x00, 0xFF});

  const SpuControl control = DecodeControl(unit, AtDataStart);

  EXPECT_EQ(control.TopFieldOffset, 65535);
  EXPECT_EQ(control.BottomFieldOffset, 32768);
}

TEST(DecodeControl, DelayAndPointerAreSigned) {
  const Bytes unit = UnitOf({0xFF, 0xFF, 0x80, 0x00, 0xFF, 0xFF});

  const SpuControl control = DecodeControl(unit, AtDataStart);

  EXPECT_EQ(control.Delay, -1);
  EXPECT_EQ(control.NextSequence, -32768);
}

TEST(DecodeControl, LastSequencesDelayCounts) {
  const Bytes unit = UnitOf({0x00, 0x63, 0x00, 0x0A, 0x01, 0xFF,    // 4: after 99 units
                             0x00, 0x00, 0x00, 0x0A, 0x02, 0xFF});  // 10: at once

  EXPECT_EQ(DecodeControl(unit, AtDataStart).Delay, 0);
}

TEST(DecodeControl, LaterCommandReplacesEarlierOne) {
  const Bytes unit = UnitOf({0x00, 0x00, 0x00, 0x0C, 0x03, 0x11, 0x11, 0xFF,                // 4
                             0x00, 0x05, 0x00, 0x0C, 0x03, 0x98, 0x76, 0xFF, 0x00, 0x00});  // 12

  const SpuControl control = DecodeControl(unit, AtDataStart);

  EXPECT_THAT(control.Colour, ElementsAre(6, 7, 8, 9));
  EXPECT_EQ(control.ColourPos, 17);
}

struct Incomplete {
  const char* Name;
  std::function<void(PacketBuilder&)> LeaveOut;
  std::function<void(SpuControl&)> Unset;
};

class DecodeControlWithout : public testing::TestWithParam<Incomplete> {};

TEST_P(DecodeControlWithout, IsInvalidAndReadsTheRest) {
  PacketBuilder packet;
  GetParam().LeaveOut(packet);
  SpuControl expected = {.Delay = 0,
                         .ColourPos = 14,
                         .ContrastPos = 17,
                         .Colour = {0, 1, 2, 3},
                         .Contrast = {0, 15, 15, 15},
                         .X1 = 100,
                         .X2 = 103,
                         .Y1 = 400,
                         .Y2 = 401,
                         .TopFieldOffset = 4,
                         .BottomFieldOffset = 6,
                         .NextSequence = 32};
  GetParam().Unset(expected);

  const SpuControl control = DecodeControl(packet.WholeUnit(), 8);

  EXPECT_FALSE(control.IsValid());
  EXPECT_EQ(control, expected);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, DecodeControlWithout,
    testing::Values(
        Incomplete{"Colour", [](PacketBuilder& packet) { packet.WithoutColour(); },
                   [](SpuControl& control) {
                     control.ColourPos = -1;
                     control.Colour = {100, 100, 100, 100};
                   }},
        Incomplete{"Contrast", [](PacketBuilder& packet) { packet.WithoutContrast(); },
                   [](SpuControl& control) {
                     control.ContrastPos = -1;
                     control.Contrast = {100, 100, 100, 100};
                   }},
        Incomplete{"Area", [](PacketBuilder& packet) { packet.WithoutArea(); },
                   [](SpuControl& control) { control.X1 = control.X2 = control.Y1 = control.Y2 = -1; }},
        Incomplete{"Fields", [](PacketBuilder& packet) { packet.WithoutFields(); },
                   [](SpuControl& control) { control.TopFieldOffset = control.BottomFieldOffset = -1; }}),
    [](const auto& instance) { return std::string(instance.param.Name); });

TEST(DecodeControl, LastPointerOfZeroMakesTheUnitInvalid) {
  Bytes unit = PacketBuilder().WholeUnit();
  unit[35] = 0;  // low byte of the last sequence's pointer

  const SpuControl control = DecodeControl(unit, 8);

  EXPECT_EQ(control.NextSequence, 0);
  EXPECT_FALSE(control.IsValid());
}

TEST(DecodeControl, SequenceThatPointsToItselfIsTheLast) {
  const Bytes unit = UnitOf({0x00, 0x05, 0x00, 0x04, 0x01, 0xFF,                            // 4
                             0x00, 0x09, 0x00, 0x04, 0x03, 0x12, 0x34, 0xFF, 0x00, 0x00});  // 10, not read

  const SpuControl control = DecodeControl(unit, AtDataStart);

  EXPECT_EQ(control.Delay, 5);
  EXPECT_EQ(control.ColourPos, -1);
}

TEST(DecodeControl, SequencesAreReadOneAfterAnotherWhereverTheyPoint) {
  const Bytes unit = UnitOf({0x00, 0x00, 0x00, 0x12, 0x01, 0xFF,    // 4: next at 18
                             0x00, 0x07, 0x00, 0x12, 0x01, 0xFF,    // 10: not pointed to, but read
                             0x00, 0x00,                            // 16
                             0x00, 0x09, 0x00, 0x12, 0x01, 0xFF});  // 18: points to itself; not read

  EXPECT_EQ(DecodeControl(unit, AtDataStart).Delay, 7);
}

TEST(DecodeControl, PaddingIsReadAsTheNextSequencesHeader) {
  const Bytes unit = UnitOf({0x00, 0x00, 0x00, 0x0D, 0x03, 0xA2, 0x10, 0xFF,    // 4
                             0x00,                                              // 12: padding
                             0x01, 0xD3, 0x00, 0x0D, 0x02, 0xFF, 0x00, 0x00});  // 13

  const SpuControl control = DecodeControl(unit, AtDataStart);

  EXPECT_EQ(control.Delay, 0x0001);
  EXPECT_EQ(control.NextSequence, static_cast<std::int16_t>(0xD300));
}

TEST(DecodeControl, ColourChangeCommandIsSteppedOverAsOneByte) {
  const Bytes unit = UnitOf({0x00, 0x00, 0x00, 0x04,              // 4
                             0x07, 0x00, 0x03, 0x5A, 0x6B, 0xFF,  // 8: its arguments hold a colour command
                             0x00, 0x00});

  const SpuControl control = DecodeControl(unit, AtDataStart);

  EXPECT_EQ(control.ColourPos, 11);
  EXPECT_THAT(control.Colour, ElementsAre(11, 6, 10, 5));
}

TEST(DecodeControl, CommandsWithoutMeaningAreSteppedOverAsOneByte) {
  for (int command = 0; command < 0xFF; ++command) {
    if (command >= 0x03 && command <= 0x06) {
      continue;
    }
    SCOPED_TRACE(command);
    const Bytes unit = UnitOf({0, 0, 0, 4, static_cast<std::uint8_t>(command), 0x04, 0x12, 0x34, 0xFF, 0});

    EXPECT_EQ(DecodeControl(unit, AtDataStart).ContrastPos, 10);
  }
}

TEST(DecodeControl, SequenceWithoutEndCommandRunsToTheUnitsEnd) {
  const Bytes unit = UnitOf({0x00, 0x00, 0x00, 0x0C, 0x01, 0x01, 0x01, 0x01,    // 4
                             0x00, 0x09, 0x00, 0x0C, 0x02, 0x03, 0x12, 0x34});  // 12, read as commands

  const SpuControl control = DecodeControl(unit, AtDataStart);

  EXPECT_EQ(control.Delay, 0);
  EXPECT_EQ(control.NextSequence, 12);
  EXPECT_EQ(control.ColourPos, 18);
}

TEST(DecodeControl, CommandInTheLastByteIsNotRead) {
  const Bytes unit = UnitOf({0x00, 0x00, 0x00, 0x04, 0x01, 0x01, 0x03});

  EXPECT_EQ(DecodeControl(unit, AtDataStart).ColourPos, -1);
}

TEST(DecodeControl, ArgumentsPastTheUnitsEndReadAsZero) {
  const Bytes sequence = UnitOf({0x00, 0x00, 0x00, 0x04, 0x01});

  const SpuControl colour = DecodeControl(Join({sequence, {0x03, 0xA2}}), AtDataStart);
  const SpuControl contrast = DecodeControl(Join({sequence, {0x04, 0xF8}}), AtDataStart);
  const SpuControl area = DecodeControl(Join({sequence, {0x05, 0x12, 0x34}}), AtDataStart);
  const SpuControl fields = DecodeControl(Join({sequence, {0x06, 0x12}}), AtDataStart);

  EXPECT_EQ(colour.ColourPos, 10);
  EXPECT_THAT(colour.Colour, ElementsAre(0, 0, 2, 10));
  EXPECT_EQ(contrast.ContrastPos, 10);
  EXPECT_THAT(contrast.Contrast, ElementsAre(0, 0, 8, 15));
  EXPECT_THAT((std::array{area.X1, area.X2, area.Y1, area.Y2}), ElementsAre(0x123, 0x400, 0, 0));
  EXPECT_EQ(fields.TopFieldOffset, 0x1200);
  EXPECT_EQ(fields.BottomFieldOffset, 0);
}

TEST(DecodeControl, SequenceNeedsTwoBytesAfterItsHeader) {
  const Bytes five = UnitOf({0x00, 0x09, 0x00, 0x04, 0xFF});
  const Bytes six = UnitOf({0x00, 0x09, 0x00, 0x04, 0xFF, 0x00});

  EXPECT_EQ(DecodeControl(five, AtDataStart), Nothing);
  EXPECT_EQ(DecodeControl(six, AtDataStart).Delay, 9);
}

TEST(DecodeControl, UnitTooShortForASequenceSaysNothing) {
  for (std::size_t length = 0; length <= 5; ++length) {
    SCOPED_TRACE(length);
    const Bytes unit = UnitOf(Bytes(length, 0x03));

    EXPECT_EQ(DecodeControl(unit, AtDataStart), Nothing);
  }
}

TEST(DecodeControl, ControlOffsetOfZeroSaysNothing) {
  EXPECT_EQ(DecodeControl(PacketBuilder().WholeUnit(), 0), Nothing);
  EXPECT_FALSE(Nothing.IsValid());
}

TEST(DecodeControl, ControlOffsetInTheHeaderReadsZerosThere) {
  const Bytes unit = UnitOf({0x12, 0x34, 0x56, 0x03, 0xA2, 0x10, 0xFF});

  const SpuControl from1 = DecodeControl(unit, 1);
  const SpuControl from2 = DecodeControl(unit, 2);
  const SpuControl from3 = DecodeControl(unit, 3);

  EXPECT_EQ(from1.Delay, 0);
  EXPECT_EQ(from1.NextSequence, 0x0012);
  EXPECT_EQ(from1.ColourPos, 8);
  EXPECT_EQ(from2.Delay, 0);
  EXPECT_EQ(from2.NextSequence, 0x1234);
  EXPECT_EQ(from2.ColourPos, 8);
  EXPECT_EQ(from3.Delay, 0x0012);
  EXPECT_EQ(from3.NextSequence, 0x3456);
  EXPECT_EQ(from3.ColourPos, 8);
}

TEST(DecodeControl, NegativeControlOffsetReadsZerosUpToTheUnit) {
  const Bytes unit = UnitOf({0x00, 0x09, 0x00, 0x01, 0x03, 0xA2, 0x10, 0xFF});

  for (const int offset : {-1, -2, -1000, -32768}) {
    SCOPED_TRACE(offset);
    const SpuControl control = DecodeControl(unit, static_cast<std::int16_t>(offset));

    EXPECT_EQ(control.Delay, 0);
    EXPECT_EQ(control.NextSequence, 0);
    EXPECT_EQ(control.ColourPos, 9);
    EXPECT_FALSE(control.IsValid());
  }
}

TEST(DecodeControl, NegativeControlOffsetInAnEmptyUnitSaysNothing) {
  EXPECT_EQ(DecodeControl(UnitOf({}), -32768), Nothing);
  EXPECT_EQ(DecodeControl(UnitOf({}), -1), Nothing);
  EXPECT_EQ(DecodeControl({}, -1), Nothing);
}

TEST(DecodeControl, ControlOffsetPastTheEndSaysNothing) {
  const Bytes unit = PacketBuilder().WholeUnit();

  EXPECT_EQ(DecodeControl(unit, 33), Nothing);  // one byte after the last place where a sequence is read
  EXPECT_EQ(DecodeControl(unit, 38), Nothing);
  EXPECT_EQ(DecodeControl(unit, 32767), Nothing);
}

TEST(DecodeControl, LongestUnitIsWalkedToItsEnd) {
  Bytes unit = UnitOf(Bytes(32763, 0x01));
  unit[7] = 0x04;
  unit[32764] = 0x03;

  EXPECT_EQ(DecodeControl(unit, AtDataStart).ColourPos, 32765);
}

TEST(SpuControl, NibbleOfSixteenCountsAsSeen) {
  SpuControl control = DecodeControl(PacketBuilder().WholeUnit(), 8);
  control.Colour[2] = 16;
  control.Contrast[0] = 16;
  EXPECT_TRUE(control.IsValid());

  control.Colour[2] = 17;
  EXPECT_FALSE(control.IsValid());
}

TEST(SpuControl, IsInvalidWithoutAnyOfItsParts) {
  const SpuControl whole = DecodeControl(PacketBuilder().WholeUnit(), 8);
  ASSERT_TRUE(whole.IsValid());
  const auto isValidWithout = [&](auto part) {
    SpuControl control = whole;
    control.*part = -1;
    return control.IsValid();
  };
  EXPECT_FALSE(isValidWithout(&SpuControl::X1));
  EXPECT_FALSE(isValidWithout(&SpuControl::X2));
  EXPECT_FALSE(isValidWithout(&SpuControl::Y1));
  EXPECT_FALSE(isValidWithout(&SpuControl::Y2));
  EXPECT_FALSE(isValidWithout(&SpuControl::TopFieldOffset));
  EXPECT_FALSE(isValidWithout(&SpuControl::BottomFieldOffset));
  SpuControl endless = whole;
  endless.NextSequence = 0;
  EXPECT_FALSE(endless.IsValid());
}

}  // namespace
}  // namespace quillmark
