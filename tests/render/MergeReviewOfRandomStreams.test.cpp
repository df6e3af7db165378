#include <gmock/gmock.h>
#include <random>

#include "imaging/Blend.h"
#include "render/FieldDecoder.h"
#include "render/MergeReview.h"
#include "render/OffsetSearch.h"
#include "sup/RunEncoder.h"
#include "tests/render/TwoStreams.h"
#include "tests/support/PacketBuilder.h"

// A review beside what the merge writes, and beside a count pixel by pixel.

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::TwoStreams;

class RandomReview : public testing::TestWithParam<unsigned> {
 protected:
  unsigned Below(unsigned end) { return static_cast<unsigned>(random_() % end); }

  Bytes RandomPacket(std::int64_t time, const Bytes& contrasts) {
    const unsigned width = 1 + Below(90);
    const unsigned height = 1 + Below(60);
    const unsigned x = Below(740);
    const unsigned y = Below(590);
    FieldBuffer fields[2];
    for (unsigned line = 0; line < height; ++line) {
      Bytes codes;
      while (codes.size() < width) {
        codes.insert(codes.end(), std::size_t{1} + Below(20), static_cast<std::uint8_t>(Below(4)));
      }
      codes.resize(width);
      EncodeLine(fields[line % 2], std::span<const std::uint8_t>(codes),
                 [](std::uint8_t code) -> std::uint32_t { return code; });
    }
    const Bytes top(fields[0].Bytes().begin(), fields[0].Bytes().end());
    const Bytes bottom(fields[1].Bytes().begin(), fields[1].Bytes().end());
    const auto bottomStart = static_cast<unsigned>(4 + top.size());
    const auto control = static_cast<unsigned>(bottomStart + bottom.size());
    return test::PacketBuilder()
        .Time(time)
        .ControlOffset(control)
        .Unit(Join({top, bottom,
                    test::Sequence(0, control + 24,
                                   {test::StartDisplay, test::SetColour(3, 2, 1, 0), contrasts,
                                    test::SetArea(x, x + width - 1, y, y + height - 1),
                                    test::SetFields(4, bottomStart), test::EndOfSequence}),
                    test::Sequence(90, control + 24, {test::StopDisplay, test::EndOfSequence})}))
        .Build();
  }

  Bytes RandomStream(const Bytes& contrasts) {
    std::vector<Bytes> packets;
    std::int64_t time = 0;
    Bytes stream;
    for (int i = 0; i < 6; ++i) {
      time += 40000 + Below(120000);
      stream = Join({stream, Below(8) == 0 && i > 0 ? test::Sound(time).WithoutArea().Build()
                                                    : RandomPacket(time, contrasts)});
    }
    return stream;
  }

  std::mt19937 random_{GetParam()};
};

/// One picture's codes by their places in the frame; -1 where nothing is.
struct PlacedPicture {
  PlacedPicture(const SubtitleUnit& unit, const SpuControl& control, int yOffset)
      : Left(control.X1), Top(control.Y1 + yOffset), Width(control.Width()), Height(control.Height()) {
    constexpr std::uint8_t NotReached = 9;
    Codes.assign(static_cast<std::size_t>(Width) * static_cast<std::size_t>(Height), NotReached);
    DecodeFields<std::uint8_t>(unit.Bytes, Codes, Width, Height, control.TopFieldOffset,
                               control.BottomFieldOffset, {0, 1, 2, 3});
  }
  [[nodiscard]] int At(int x, int y) const {
    if (x < Left || y < Top || x >= Left + Width || y >= Top + Height) {
      return -1;
    }
    const int code = Codes[static_cast<std::size_t>(y - Top) * static_cast<std::size_t>(Width) +
                           static_cast<std::size_t>(x - Left)];
    return code > 3 ? -1 : code;
  }

  int Left;
  int Top;
  int Width;
  int Height;
  Bytes Codes;
};

struct PlainCounts {
  int Covered = 0;
  int Clipped = 0;
  int Recoloured = 0;
};

PlainCounts CountPlainly(const TwoStreams& streams, const MergedPair& pair, const MergeSettings& settings,
                         std::span<const std::uint8_t> packet) {
  Bytes buffer;
  Bytes secondBuffer;
  const SubtitleUnit first = UnitForMerging(streams.Primary, pair.Primary, buffer);
  const SubtitleUnit second = UnitForMerging(streams.Secondary, pair.Secondary, secondBuffer);
  const SpuControl control = DecodeControl(first.Bytes, first.ControlOffset);
  const PlacedPicture below(first, control, 0);
  const PlacedPicture over(second, DecodeControl(second.Bytes, second.ControlOffset), settings.YOffset);
  const CodeColours colours = MakeCodeColours(settings.Palette, control);
  const auto colourAt = [&](const PlacedPicture& picture, int x, int y) {
    const int code = picture.At(x, y);
    return code < 0 || colours[static_cast<std::size_t>(code)] >> 24U == 0
               ? 0U
               : colours[static_cast<std::size_t>(code)];
  };
  const int lastRow = settings.FrameHeight - 2;
  const auto isShown = [&](int x, int y) { return x < 720 && y >= 2 && y <= lastRow; };

  PlainCounts counts;
  for (const PlacedPicture* picture : {&below, &over}) {
    for (int y = picture->Top; y < picture->Top + picture->Height; ++y) {
      for (int x = picture->Left; x < picture->Left + picture->Width; ++x) {
        const bool isVisible = colourAt(*picture, x, y) != 0;
        counts.Clipped += isVisible && !isShown(x, y) ? 1 : 0;
        counts.Covered +=
            picture == &over && isVisible && isShown(x, y) && colourAt(below, x, y) != 0 ? 1 : 0;
      }
    }
  }
  const SupStream written = test::Index({packet.begin(), packet.end()});
  Bytes mergedBuffer;
  const SubtitleUnit merged = UnitOf(written, 0, mergedBuffer);
  const PlacedPicture result(merged, DecodeControl(merged.Bytes, merged.ControlOffset), 0);
  for (int y = 2; y <= lastRow; ++y) {
    for (int x = 0; x < 720; ++x) {
      const Argb composed = BlendOver(colourAt(over, x, y), colourAt(below, x, y));
      // The height is odd, so the decoder leaves the last row alone.
      const Argb code = y < lastRow ? colourAt(result, x, y) : colours[CodeOfColour(composed, colours)];
      counts.Recoloured += composed != (code >> 24U == 0 ? 0 : code) ? 1 : 0;
    }
  }
  return counts;
}

TEST_P(RandomReview, IsWhatTheMergeWrites) {
  const Bytes contrasts = Below(2) == 0 ? test::SetContrast(15, 8, 15, 0) : test::SetContrast(15, 8, 4, 15);
  const TwoStreams streams(RandomStream(contrasts), RandomStream(contrasts));
  MergeSettings settings = test::StartUpSettings();
  settings.YOffset = static_cast<int>(Below(300)) - 150;
  settings.FrameHeight = Below(2) == 0 ? 480 : 576;

  MergeReviewer review(streams.Primary, streams.Secondary, settings);
  OffsetSearch search(streams.Primary, streams.Secondary, settings);
  while (review.Step()) {
    ASSERT_TRUE(search.Step());
  }
  while (search.Step()) {
  }
  MergedStreamEncoder encoder(streams.Primary, streams.Secondary, settings);
  auto pair = review.Pairs().begin();
  OffsetCost cost;
  for (std::size_t index = 0; index < review.Count(); ++index) {
    const MergeOutcome outcome = encoder.Encode(index);
    if (outcome == MergeOutcome::Skipped) {
      continue;
    }
    ASSERT_NE(pair, review.Pairs().end());
    EXPECT_EQ(pair->Primary, index);
    EXPECT_EQ(pair->Outcome, outcome);
    if (outcome == MergeOutcome::Encoded) {
      EXPECT_EQ(pair->Unit.Size + 10, encoder.Packet().size());
      const PlainCounts plain = CountPlainly(streams, *pair, settings, encoder.Packet());
      EXPECT_EQ(pair->Counts.Covered, plain.Covered);
      EXPECT_EQ(pair->ClippedPixels(), plain.Clipped);
      EXPECT_EQ(pair->Counts.Recoloured, plain.Recoloured);
    }
    cost.Covered += static_cast<std::uint64_t>(pair->Counts.Covered);
    cost.Clipped += static_cast<std::uint64_t>(pair->ClippedPixels());
    ++pair;
  }
  EXPECT_EQ(pair, review.Pairs().end());
  EXPECT_EQ(search.CostOf(settings.YOffset), cost);
  EXPECT_LE(search.CostOf(search.Best()).Total(), cost.Total());
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomReview, testing::Range(1U, 4U));

}  // namespace
}  // namespace quillmark
