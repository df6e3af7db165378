#include "render/SubtitleDescription.h"

#include <gtest/gtest.h>

#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::PacketBuilder;

std::optional<SubtitleDescription> Describe(const PacketBuilder& packet) {
  const test::Bytes unit = packet.WholeUnit();
  return DescribeSubtitle({.Bytes = unit, .ControlOffset = 8, .StartTime = 90000});
}

TEST(DescribeSubtitle, EndAndDurationAreThoseOfTheDelay) {
  const auto description = Describe(PacketBuilder().Delay(100));

  ASSERT_TRUE(description);
  EXPECT_EQ(description->StartTicks, 90000);
  EXPECT_EQ(description->EndTicks, 190000);
  EXPECT_EQ(description->DurationMs, 1116);
}

TEST(DescribeSubtitle, WithoutADelayThereIsNeitherEndNorDuration) {
  const auto description = Describe(PacketBuilder().Delay(0));

  ASSERT_TRUE(description);
  EXPECT_EQ(description->EndTicks, std::nullopt);
  EXPECT_EQ(description->DurationMs, std::nullopt);
}

TEST(DescribeSubtitle, InvalidUnitHasNoDescription) {
  EXPECT_FALSE(Describe(PacketBuilder().Delay(100).WithoutArea()));
}

}  // namespace
}  // namespace quillmark
