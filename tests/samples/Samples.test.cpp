#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sup/SpuControl.h"
#include "sup/StreamLoader.h"
#include "sup/SupStream.h"
#include "tests/support/LoadedStream.h"

namespace quillmark {
namespace {

SupStream Load(const std::string& name) {
  const auto path = std::filesystem::path(QUILLMARK_SAMPLES) / (name + ".sup");
  return test::StreamOf(LoadPrimaryStream(path));
}

std::vector<SpuControl> Controls(const SupStream& stream) {
  std::vector<SpuControl> controls;
  std::vector<std::uint8_t> unit;
  for (std::size_t i = 0; i < stream.ControlOffset.size(); ++i) {
    CopyUnit(stream, i, unit);
    controls.push_back(DecodeControl(unit, stream.ControlOffset[i]));
  }
  return controls;
}

struct SampleCase {
  const char* Name;
  std::int32_t Count;
  int FrameHeight;
  bool OneAssignment;
};

class SampleTest : public testing::TestWithParam<SampleCase> {};

TEST_P(SampleTest, LoadsWithoutParseErrors) {
  const SupStream stream = Load(GetParam().Name);
  EXPECT_EQ(stream.Count, GetParam().Count);
  EXPECT_EQ(stream.Stats.ParseErrors, 0);
  EXPECT_FALSE(stream.Stats.HasUntimed);
}

TEST_P(SampleTest, UsesThePromisedAssignments) {
  const SupStream stream = Load(GetParam().Name);
  EXPECT_EQ(stream.Stats.MultipleColours, !GetParam().OneAssignment);
  EXPECT_EQ(stream.Stats.MultipleOpacities, !GetParam().OneAssignment);
}

TEST_P(SampleTest, PicturesLieInsideTheFrame) {
  for (const SpuControl& control : Controls(Load(GetParam().Name))) {
    EXPECT_GE(control.X1, 0);
    EXPECT_LT(control.X2, 720);
    EXPECT_GE(control.Y1, 0);
    EXPECT_LT(control.Y2, GetParam().FrameHeight);
    EXPECT_GT(control.Width(), 100);
    EXPECT_GT(control.Height(), 40);
    EXPECT_EQ(control.Height() % 2, 0);
  }
}

TEST_P(SampleTest, TimesFollowOneAnother) {
  const SupStream stream = Load(GetParam().Name);
  std::int64_t previousEnd = 0;
  for (std::size_t i = 0; i < stream.StartTime.size(); ++i) {
    EXPECT_GT(stream.StartTime[i], previousEnd);
    EXPECT_GT(stream.EndTime[i], stream.StartTime[i]);
    previousEnd = stream.EndTime[i];
  }
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleTest,
                         testing::Values(SampleCase{"demo", 20, 576, false},
                                         SampleCase{"ntsc", 10, 480, false},
                                         SampleCase{"first", 16, 576, true},
                                         SampleCase{"second", 14, 576, true}),
                         [](const auto& test) { return std::string(test.param.Name); });

TEST(MergeSamples, ShareOneAssignment) {
  const SpuControl first = Controls(Load("first")).front();
  const SpuControl second = Controls(Load("second")).front();
  EXPECT_EQ(first.Colour, second.Colour);
  EXPECT_EQ(first.Contrast, second.Contrast);
}

TEST(MergeSamples, DefaultOffsetTakesTheSecondToTheTop) {
  for (const SpuControl& control : Controls(Load("second"))) {
    EXPECT_GE(control.Y1 - 400, 20);
    EXPECT_LT(control.Y2 - 400, 200);
  }
}

}  // namespace
}  // namespace quillmark
