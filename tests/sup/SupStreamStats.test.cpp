#include "sup/SupStreamStats.h"

#include <limits>

#include <gtest/gtest.h>

#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::PacketBuilder;

constexpr std::int16_t ControlAt = PacketBuilder::FirstSequence;

void AddUnit(SupStreamStats& stats, const PacketBuilder& packet, std::size_t index = 1) {
  stats.Add(DecodeControl(packet.WholeUnit(), ControlAt), 38, 0, index);
}

TEST(SupStreamStats, StartValues) {
  const SupStreamStats stats;

  EXPECT_EQ(stats.MaxSpuSize, -1);
  EXPECT_EQ(stats.MaxWidth, -1);
  EXPECT_EQ(stats.MaxHeight, -1);
  EXPECT_EQ(stats.MinX, 10000);
  EXPECT_EQ(stats.MinY, 10000);
  EXPECT_EQ(stats.MaxDurationMs, -1);
  EXPECT_EQ(stats.FirstTimecode(), "");
  EXPECT_EQ(stats.LastTimecode(), "");
  EXPECT_FALSE(stats.HasUntimed);
  EXPECT_FALSE(stats.MultipleColours);
  EXPECT_FALSE(stats.MultipleOpacities);
  EXPECT_EQ(stats.ParseErrors, 0);
  for (const auto& row : stats.Usage) {
    for (const std::uint8_t cell : row) {
      EXPECT_EQ(cell, 100);
    }
  }
}

TEST(SupStreamStats, ValidUnitCountsInEveryField) {
  SupStreamStats stats;

  stats.Add(DecodeControl(PacketBuilder().Delay(100).WholeUnit(), ControlAt), 38, 5893200, 0);

  EXPECT_EQ(stats.MaxSpuSize, 38);
  EXPECT_EQ(stats.MaxWidth, 4);
  EXPECT_EQ(stats.MaxHeight, 2);
  EXPECT_EQ(stats.MinX, 100);
  EXPECT_EQ(stats.MinY, 400);
  EXPECT_EQ(stats.MaxDurationMs, 1116);
  EXPECT_EQ(stats.FirstTimecode(), "00:01:05.48");
  EXPECT_EQ(stats.LastTimecode(), "00:01:05.48");
  EXPECT_FALSE(stats.HasUntimed);
  EXPECT_EQ(stats.ParseErrors, 0);
}

TEST(SupStreamStats, InvalidUnitCountsOnlyItsSizeItsTimeAndAnError) {
  SupStreamStats stats;

  stats.Add(DecodeControl(PacketBuilder().Delay(100).WithoutColour().WholeUnit(), ControlAt), 38, 90000, 0);

  EXPECT_EQ(stats.ParseErrors, 1);
  EXPECT_EQ(stats.MaxSpuSize, 38);
  EXPECT_EQ(stats.FirstTimecode(), "00:00:01.00");
  EXPECT_EQ(stats.LastTimecode(), "00:00:01.00");
  EXPECT_EQ(stats.MaxWidth, -1);
  EXPECT_EQ(stats.MinX, 10000);
  EXPECT_EQ(stats.MaxDurationMs, -1);
  EXPECT_FALSE(stats.HasUntimed);
  EXPECT_EQ(stats.Usage, SupStreamStats().Usage);
}

TEST(SupStreamStats, FirstTimecodeIsThatOfPacketZero) {
  SupStreamStats stats;

  stats.Add({}, 38, 90000, 0);
  stats.Add({}, 38, 180000, 1);
  stats.Add({}, 38, 0, 2);

  EXPECT_EQ(stats.FirstTimecode(), "00:00:01.00");
  EXPECT_EQ(stats.LastTimecode(), "00:00:00.00");
}

TEST(SupStreamStats, LargestAndSmallestMayComeFromDifferentUnits) {
  SupStreamStats stats;
  AddUnit(stats, PacketBuilder().Area(10, 20, 300, 340).Delay(5));
  AddUnit(stats, PacketBuilder().Area(50, 90, 100, 105).Delay(3));

  EXPECT_EQ(stats.MinX, 10);
  EXPECT_EQ(stats.MaxWidth, 41);
  EXPECT_EQ(stats.MinY, 100);
  EXPECT_EQ(stats.MaxHeight, 41);
  EXPECT_EQ(stats.MaxDurationMs, 60);  // 5450 / 90
}

TEST(SupStreamStats, ReversedAreaDoesNotLowerTheLargest) {
  SupStreamStats stats;
  AddUnit(stats, PacketBuilder().Area(200, 100, 50, 40));

  EXPECT_EQ(stats.MaxWidth, -1);
  EXPECT_EQ(stats.MaxHeight, -1);
  EXPECT_EQ(stats.MinX, 200);
  EXPECT_EQ(stats.MinY, 50);
}

TEST(SupStreamStats, NegativeSizeDoesNotLowerTheLargest) {
  SupStreamStats stats;
  stats.Add({}, -32768, 0, 0);

  EXPECT_EQ(stats.MaxSpuSize, -1);
}

TEST(SupStreamStats, DelayOfZeroIsAUnitWithoutDuration) {
  SupStreamStats stats;
  AddUnit(stats, PacketBuilder().Delay(0));

  EXPECT_TRUE(stats.HasUntimed);
  EXPECT_EQ(stats.MaxDurationMs, -1);
}

TEST(SupStreamStats, NegativeDelayIsADurationThatIsNotTheLargest) {
  SupStreamStats stats;
  AddUnit(stats, PacketBuilder().Delay(0xFFFF));

  EXPECT_FALSE(stats.HasUntimed);
  EXPECT_EQ(stats.MaxDurationMs, -1);
}

TEST(SupStreamStats, UsageHasColoursInColumns0To3AndContrastsIn4To7) {
  SupStreamStats stats;
  AddUnit(stats, PacketBuilder().Colour(10, 2, 1, 0).Contrast(15, 14, 8, 3));

  SupStreamStats expected;
  expected.Usage[0][0] = 1;
  expected.Usage[1][1] = 1;
  expected.Usage[2][2] = 1;
  expected.Usage[10][3] = 1;
  expected.Usage[3][4] = 1;
  expected.Usage[8][5] = 1;
  expected.Usage[14][6] = 1;
  expected.Usage[15][7] = 1;
  EXPECT_EQ(stats.Usage, expected.Usage);
}

TEST(SupStreamStats, OneAssignmentThroughoutSetsNoFlag) {
  SupStreamStats stats;
  AddUnit(stats, PacketBuilder().Colour(5, 5, 1, 0));
  AddUnit(stats, PacketBuilder().Colour(5, 5, 1, 0));

  stats.UpdateMultipleFlags();

  EXPECT_FALSE(stats.MultipleColours);
  EXPECT_FALSE(stats.MultipleOpacities);
}

TEST(SupStreamStats, TwoColoursOfAnyCodeSetTheColourFlag) {
  for (unsigned code = 0; code < 4; ++code) {
    SCOPED_TRACE(code);
    SupStreamStats stats;
    AddUnit(stats, PacketBuilder().Colour(1, 1, 1, 1));
    AddUnit(stats, PacketBuilder().Colour(code == 3 ? 10 : 1, code == 2 ? 10 : 1, code == 1 ? 10 : 1,
                                          code == 0 ? 10 : 1));

    stats.UpdateMultipleFlags();

    EXPECT_TRUE(stats.MultipleColours);
    EXPECT_FALSE(stats.MultipleOpacities);
  }
}

TEST(SupStreamStats, TwoContrastsOfAnyCodeSetTheOpacityFlag) {
  for (unsigned code = 0; code < 4; ++code) {
    SCOPED_TRACE(code);
    SupStreamStats stats;
    AddUnit(stats, PacketBuilder().Contrast(15, 15, 15, 15));
    AddUnit(stats, PacketBuilder().Contrast(code == 3 ? 0 : 15, code == 2 ? 0 : 15, code == 1 ? 0 : 15,
                                            code == 0 ? 0 : 15));

    stats.UpdateMultipleFlags();

    EXPECT_FALSE(stats.MultipleColours);
    EXPECT_TRUE(stats.MultipleOpacities);
  }
}

TEST(SupStreamStats, TimesAtTheEndsOfTimeAreTaken) {
  SupStreamStats stats;
  stats.Add({}, 38, std::numeric_limits<std::int64_t>::min(), 0);
  stats.Add({}, 38, std::numeric_limits<std::int64_t>::max(), 1);

  EXPECT_EQ(stats.FirstTimecode(), "-28467197645:23:11.38");
  EXPECT_EQ(stats.LastTimecode(), "28467197644:36:48.62");
}

}  // namespace
}  // namespace quillmark
