// Merged units, read by libavcodec's DVD subtitle decoder.

#include <gtest/gtest.h>

#ifdef QUILLMARK_HAS_LIBAVCODEC

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "palette/Colour.h"
#include "render/MergedPicture.h"
#include "sup/ChooseSecondary.h"
#include "sup/MergedPacket.h"
#include "sup/StreamLoader.h"
#include "tests/render/LibavcodecDecoder.h"
#include "tests/support/LoadedStream.h"

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;

using test::CodePicture;
using Decoder = test::LibavcodecDecoder;

struct StreamPair {
  SupStream Primary;
  SupStream Secondary;
};

StreamPair LoadPair(const std::filesystem::path& first, const std::filesystem::path& second) {
  StreamPair pair;
  pair.Primary = test::StreamOf(LoadPrimaryStream(first));
  pair.Secondary = test::StreamOf(LoadSecondaryStream(second, pair.Primary));
  return pair;
}

std::span<const std::uint8_t> WholeUnit(const SupStream& stream, std::size_t index) {
  return std::span(stream.RawBytes)
      .subspan(static_cast<std::size_t>(stream.PacketOffset[index]) + 10,
               static_cast<std::size_t>(stream.SpuSize[index]));
}

CodeColours ColoursOf(const SpuControl& control) {
  CodeColours colours = {};
  for (std::size_t code = 0; code < 4; ++code) {
    colours[code] = GetARGBColor(StartUpPalette[static_cast<std::size_t>(control.Colour[code])],
                                 static_cast<unsigned>(control.Contrast[code]));
  }
  return colours;
}

constexpr std::array<unsigned, 4> Shifts = {24, 16, 8, 0};

double Component(Argb colour, unsigned shift) {
  return static_cast<double>(colour >> shift & 0xFFU);
}

/// A pixel over another one, in straight alpha: what covers weighs its alpha, what is below its own alpha
/// times what the other lets through.
Argb LaidOver(Argb source, Argb below) {
  if (source >> 24U == 0) {
    return below;
  }
  const double sourceWeight = Component(source, 24) * 255;
  const double belowWeight = Component(below, 24) * (255 - Component(source, 24));
  Argb result = 0;
  for (const unsigned shift : Shifts) {
    const double value =
        shift == 24 ? (sourceWeight + belowWeight) / 255
                    : (Component(source, shift) * sourceWeight + Component(below, shift) * belowWeight) /
                          (sourceWeight + belowWeight);
    result |= static_cast<Argb>(std::lround(value)) << shift;
  }
  return result;
}

/// The first code of just this colour, else the first one whose components are all within one step, else 0.
std::uint8_t CodeOf(Argb colour, const CodeColours& colours) {
  for (const double distance : {0.0, 1.0}) {
    for (std::uint8_t code = 0; code < 4; ++code) {
      if (std::ranges::all_of(Shifts, [&](unsigned shift) {
            return std::abs(Component(colour, shift) - Component(colours[code], shift)) <= distance;
          })) {
        return code;
      }
    }
  }
  return 0;
}

/// Both pictures as libavcodec reads them, laid over each other pixel by pixel.
class ExpectedFrame {
 public:
  ExpectedFrame(int height, const CodeColours& colours)
      : height_(height), colours_(colours), pixels_(720 * static_cast<std::size_t>(height), 0) {}

  void LayOver(const CodePicture& picture, int yOffset) {
    // The last line of an odd height is not shown.
    for (int y = 0; y < picture.Height / 2 * 2; ++y) {
      for (int x = 0; x < picture.Width; ++x) {
        const int frameX = picture.X + x;
        const int frameY = picture.Y + yOffset + y;
        if (frameX < 720 && frameY >= 0 && frameY < height_) {
          auto& pixel = pixels_[static_cast<std::size_t>(frameY) * 720 + static_cast<std::size_t>(frameX)];
          const std::uint8_t code =
              picture.Codes[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.Width) +
                            static_cast<std::size_t>(x)];
          pixel = LaidOver(colours_[code], pixel);
        }
      }
    }
  }

  /// The codes of rows 2 to height - 2.
  [[nodiscard]] Bytes ShownCodes() const {
    Bytes codes;
    Argb colour = 0;
    std::uint8_t code = CodeOf(colour, colours_);
    for (std::size_t i = 1440; i < pixels_.size() - 720; ++i) {
      if (pixels_[i] != colour) {
        colour = pixels_[i];
        code = CodeOf(colour, colours_);
      }
      codes.push_back(code);
    }
    return codes;
  }

 private:
  int height_;
  CodeColours colours_;
  std::vector<Argb> pixels_;
};

struct PairCase {
  const char* Name;
  std::filesystem::path First;
  std::filesystem::path Second;
  int FrameHeight;
  int YOffset;
};

class MergedLibavcodec : public testing::TestWithParam<PairCase> {};

TEST_P(MergedLibavcodec, ReadsEveryPixelAndTheArea) {
  Decoder decoder;
  if (!decoder.IsOpen()) {
    GTEST_SKIP() << "libavcodec was built without its DVD subtitle decoder";
  }
  const StreamPair pair = LoadPair(GetParam().First, GetParam().Second);
  ASSERT_GT(pair.Primary.Count, 0);
  MergedPicture merged;
  MergedPacketEncoder encoder;
  Bytes primaryUnit;
  Bytes secondaryUnit;
  for (std::size_t i = 0; i < pair.Primary.StartTime.size(); ++i) {
    const auto chosen = ChooseSecondary(pair.Primary, i, pair.Secondary);
    ASSERT_TRUE(chosen);
    const std::size_t k = *chosen;
    CopyUnit(pair.Primary, i, primaryUnit);
    CopyUnit(pair.Secondary, k, secondaryUnit);
    MergedInput input;
    input.PrimaryUnit = primaryUnit;
    input.Primary = DecodeControl(primaryUnit, pair.Primary.ControlOffset[i]);
    input.SecondaryUnit = secondaryUnit;
    input.Secondary = DecodeControl(secondaryUnit, pair.Secondary.ControlOffset[k]);
    input.YOffset = GetParam().YOffset;
    input.Colours = ColoursOf(input.Primary);
    input.FrameHeight = GetParam().FrameHeight;
    merged.Compose(input);
    const auto packet = encoder.Encode(merged.Cells(), MakeMergedControl(input.Primary, pair.Primary, i),
                                       StoredTime(pair.Primary, i));
    ASSERT_TRUE(packet) << i;

    const auto contrastIn = [](const SpuControl& control) {
      return static_cast<std::size_t>(control.ContrastPos);
    };
    const auto primary = decoder.Decode(WholeUnit(pair.Primary, i), contrastIn(input.Primary));
    const auto secondary = decoder.Decode(WholeUnit(pair.Secondary, k), contrastIn(input.Secondary));
    ASSERT_TRUE(primary && secondary) << i;
    ExpectedFrame expected(GetParam().FrameHeight, input.Colours);
    expected.LayOver(*primary, 0);
    expected.LayOver(*secondary, GetParam().YOffset);

    // The contrasts of a merged unit stand 9 bytes into its control data.
    const std::size_t controlOffset = (*packet)[12] * std::size_t{256} + (*packet)[13];
    const auto read = decoder.Decode(packet->subspan(10), controlOffset + 9);
    ASSERT_TRUE(read) << i;
    EXPECT_EQ(read->X, 0);
    EXPECT_EQ(read->Y, 2);
    EXPECT_EQ(read->Width, 720);
    ASSERT_EQ(read->Height, GetParam().FrameHeight - 3);
    ASSERT_TRUE(read->Codes == expected.ShownCodes()) << "subtitle " << i;
  }
}

std::filesystem::path Sample(const char* name) {
  return std::filesystem::path(QUILLMARK_SAMPLES) / name;
}

std::filesystem::path Stream(const char* name) {
  return std::filesystem::path(QUILLMARK_TEST_DATA) / "streams" / name;
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, MergedLibavcodec,
    testing::Values(
        PairCase{"Samples", Sample("first.sup"), Sample("second.sup"), 576, -400},
        PairCase{"SamplesOnTopOfEachOther", Sample("first.sup"), Sample("second.sup"), 576, 0},
        PairCase{"SamplesCutByTheLowerFrame", Sample("first.sup"), Sample("second.sup"), 480, -450},
        PairCase{"AnotherMake", Stream("merge-primary.sup"), Stream("merge-secondary.sup"), 576, -400},
        PairCase{"AnotherMakeOverlapping", Stream("merge-primary.sup"), Stream("merge-secondary.sup"), 576,
                 -11}),
    [](const auto& test) { return test.param.Name; });

}  // namespace
}  // namespace quillmark

#else

TEST(MergedLibavcodec, ReadsEveryPixelAndTheArea) {
  GTEST_SKIP() << "libavcodec (libavcodec-dev) was not found when the tests were configured";
}

#endif
