#include <gmock/gmock.h>
#include <optional>
#include <random>
#include <string>

#include <QTemporaryDir>

#include "imaging/Blend.h"
#include "render/FieldDecoder.h"
#include "render/MergeJob.h"
#include "render/MergeProblem.h"
#include "render/MergeReview.h"
#include "render/OffsetSearch.h"
#include "tests/render/TwoStreams.h"
#include "tests/support/PacketBuilder.h"

// Merges that show just what both streams show.

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::PacketBuilder;
using test::Second;
using test::Sound;
using test::TwoStreams;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

MergeSettings SplitSettings() {
  MergeSettings settings = test::StartUpSettings();
  settings.Mode = MergeMode::Split;
  return settings;
}

std::vector<MergedPair> ReviewSplit(const TwoStreams& streams,
                                    const MergeSettings& settings = SplitSettings()) {
  MergeReviewer review(streams.Primary, streams.Secondary, settings);
  while (review.Step()) {
  }
  EXPECT_EQ(review.Pairs().size(), review.Count());
  return review.Pairs();
}

/// "1+2 at 90000 for 45", "-" for none.
std::vector<std::string> TextsOf(const std::vector<MergedPair>& pairs) {
  std::vector<std::string> texts;
  for (const MergedPair& pair : pairs) {
    texts.push_back((pair.HasPrimary ? std::to_string(pair.Primary + 1) : "-") + "+" +
                    (pair.HasSecondary ? std::to_string(pair.Secondary + 1) : "-") + " at " +
                    std::to_string(pair.StartTicks) + " for " + std::to_string(pair.Delay));
  }
  return texts;
}

/// A packet of the frame's rows 2 to 574 in which 4 pixels of codes 1 and 2 stand in two rows at each place.
Bytes FramePacket(std::int64_t time, unsigned delay, const std::vector<std::pair<int, int>>& places) {
  Bytes fields[2];
  for (int row = 2; row <= 574; ++row) {
    Bytes line = {0x00, 0x00};
    for (const auto& [x, y] : places) {
      if (row == y || row == y + 1) {
        // A run of x clear pixels in 16 bits, one of 4 pixels in 8, clear ones to the end.
        line = {static_cast<std::uint8_t>(x >> 6), static_cast<std::uint8_t>(x << 2),
                static_cast<std::uint8_t>(0x11 + row - y), 0x00, 0x00};
      }
    }
    Bytes& field = fields[row % 2];
    field.insert(field.end(), line.begin(), line.end());
  }
  const auto bottom = static_cast<unsigned>(4 + fields[0].size());
  const auto control = static_cast<unsigned>(bottom + fields[1].size() + 2);
  return PacketBuilder()
      .Time(time)
      .ControlOffset(control)
      .Unit(Join(
          {fields[0],
           fields[1],
           {0x00, 0x00},
           test::Sequence(0, control + 24,
                          {test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 0),
                           test::SetFields(4, bottom), test::SetArea(0, 719, 2, 574), test::EndOfSequence}),
           test::Sequence(delay, control + 24, {test::StopDisplay, test::EndOfSequence}),
           {0xFF}}))
      .Build();
}

class SplitStream : public testing::Test {
 protected:
  MergeReport Merge(const TwoStreams& streams, const MergeSteps& steps = {}) {
    const QString path = folder_.filePath("split.sup");
    auto out = FileWriter::DeletingFirst(path);
    MergeReport report = MergeStreams(streams.Primary, streams.Secondary, SplitSettings(), *out, steps);
    EXPECT_TRUE(out->Commit());
    const auto read = ReadStreamFile(path.toStdString());
    EXPECT_TRUE(read);
    written_ = read ? *read : Bytes();
    return report;
  }

  QTemporaryDir folder_;
  Bytes written_;
};

TEST_F(SplitStream, FirstAloneThenBothThenSecondAlone) {
  // The primary has the codes' colours, whatever the secondary's are.
  const TwoStreams streams(
      Sound(Second).Build(),
      Sound(Second + 40000).Area(200, 203, 300, 301).Colour(9, 8, 7, 6).Contrast(1, 2, 3, 4).Build());
  EXPECT_EQ(Merge(streams).How, MergeReport::Ending::Complete);
  EXPECT_EQ(written_,
            Join({FramePacket(90000, 40, {{100, 400}}), FramePacket(130000, 50, {{100, 400}, {200, 300}}),
                  FramePacket(180000, 40, {{200, 300}})}));
}

TEST_F(SplitStream, TellsHowManyPacketsThereAreAndDescribesThem) {
  const TwoStreams streams(Sound(Second).Build(), Sound(Second + 40000).Area(200, 203, 300, 301).Build());
  std::size_t count = 0;
  std::vector<std::int64_t> starts;
  std::vector<std::int64_t> ends;
  Merge(streams, {.Next = {},
                  .Done =
                      [&](std::size_t, MergeOutcome, const MergedStreamEncoder& encoder) {
                        starts.push_back(encoder.Description().StartTicks);
                        ends.push_back(encoder.Description().EndTicks.value_or(0));
                        EXPECT_EQ(encoder.Description().Control.X1,
                                  encoder.Reader().HasPrimary() ? 100 : 200);
                      },
                  .Begin = [&](std::size_t packets) { count = packets; }});
  EXPECT_EQ(count, 3U);
  EXPECT_THAT(starts, ElementsAre(90000, 130000, 180000));
  EXPECT_THAT(ends, ElementsAre(130000, 180000, 220000));
}

TEST_F(SplitStream, DamagedSubtitleEndsItAndIsNamed) {
  const Bytes sound = Sound(Second).Build();
  const MergeReport second = Merge({sound, Join({sound, Sound(Second + 200000).WithoutArea().Build()})});
  EXPECT_EQ(second.How, MergeReport::Ending::SubtitleFailed);
  EXPECT_EQ(second.Number, 2);
  EXPECT_TRUE(second.IsOfSecondary);
  EXPECT_THAT(written_, testing::Not(IsEmpty()));
  const MergeReport first = Merge({Join({sound, Sound(Second + 200000).WithoutArea().Build()}), sound});
  EXPECT_EQ(first.Number, 2);
  EXPECT_FALSE(first.IsOfSecondary);
}

TEST_F(SplitStream, LongUnitsAreNamedByTheirPackets) {
  const Bytes clear = Sound(Second - 10000).Contrast(0, 0, 0, 0).Build();
  const MergeReport report = Merge({test::NoisePacket(Second, 280), clear});
  // The second alone, both for the 10 units of the noise, the second alone.
  EXPECT_THAT(report.TooLong, ElementsAre(2));
}

TEST(SplitReview, PacketsOfOneSubtitleHaveNoOther) {
  const auto pairs = ReviewSplit({Sound(Second).Build(), Sound(Second + 40000).Build()});
  EXPECT_THAT(TextsOf(pairs),
              ElementsAre("1+- at 90000 for 40", "1+1 at 130000 for 50", "-+1 at 180000 for 40"));
  EXPECT_EQ(pairs[0].OverlapTicks, 0);
  EXPECT_EQ(pairs[1].OverlapTicks, 50000);
  EXPECT_THAT(ProblemsOf(pairs[0]), IsEmpty());
  ASSERT_THAT(ProblemsOf(pairs[1]), SizeIs(1));
  EXPECT_EQ(ProblemsOf(pairs[1])[0].Kind, MergeProblemKind::Covered);
  EXPECT_THAT(ProblemsOf(pairs[2]), IsEmpty());
}

TEST(SplitReview, EndsAreTheUnitsOwn) {
  // Loaded as the one to lay over, the first of these ends where the second one starts.
  const auto pairs = ReviewSplit(
      {Sound(Second).Delay(0).Build(), Join({Sound(Second).Delay(20).Build(), Sound(2 * Second).Build()})});
  EXPECT_THAT(TextsOf(pairs), ElementsAre("1+1 at 90000 for 20", "1+- at 110000 for 70",
                                          "1+2 at 180000 for 90", "1+- at 270000 for 820"));
}

TEST(SplitReview, EndOfAUnitThatTheFileCutsShortIsRead) {
  Bytes cut = Sound(Second).Delay(20).Build();
  cut.pop_back();
  EXPECT_THAT(TextsOf(ReviewSplit({Sound(Second).Build(), cut})),
              ElementsAre("1+1 at 90000 for 20", "1+- at 110000 for 70"));
}

TEST(SplitReview, StreamWithoutSubtitlesLeavesTheOtherAlone) {
  EXPECT_THAT(TextsOf(ReviewSplit({Sound(Second).Build(), Bytes()})), ElementsAre("1+- at 90000 for 90"));
}

TEST(SplitReview, GapsAreJoined) {
  const TwoStreams streams(Sound(Second).Build(), Sound(Second + 95000).Build());
  MergeSettings settings = SplitSettings();
  settings.JoinTicks = 5001;
  EXPECT_THAT(TextsOf(ReviewSplit(streams, settings)),
              ElementsAre("1+- at 90000 for 95", "-+1 at 185000 for 90"));
}

TEST(SplitReview, LeavesNothingOutAndPreparesItself) {
  const TwoStreams streams(Sound(Second).Build(),
                           Join({Sound(0).Build(), Sound(2 * Second).Build(), Sound(9 * Second).Build()}));
  MergeReviewer review(streams.Primary, streams.Secondary, SplitSettings());
  EXPECT_EQ(review.Count(), 0U);
  while (review.Prepare()) {
  }
  EXPECT_EQ(review.Count(), 4U);
  EXPECT_EQ(review.Looked(), 0U);
  while (review.Step()) {
  }
  EXPECT_TRUE(review.LeftOut().IsEmpty());
  const auto third = review.LookAt(3);
  ASSERT_TRUE(third);
  EXPECT_EQ(*third, review.Pairs()[3]);
  EXPECT_EQ(review.LookAt(4), std::nullopt);
}

TEST(SplitReview, WhatIsNeverShownIsLeftOut) {
  const TwoStreams streams(Sound(Second).Build(), Join({Sound(Second).Build(), Sound(Second).Build()}));
  MergeReviewer review(streams.Primary, streams.Secondary, SplitSettings());
  while (review.Step()) {
  }
  EXPECT_EQ(review.LeftOut().Text(), "1");
}

TEST(SplitReview, DamageIsThatOfTheSubtitleThatIsThere) {
  const auto pairs = ReviewSplit(
      {Sound(5 * Second).Build(), Join({Sound(Second).Build(), Sound(3 * Second).WithoutArea().Build()})});
  ASSERT_THAT(pairs, SizeIs(3));
  EXPECT_EQ(pairs[0].SecondaryDamage, std::nullopt);
  EXPECT_EQ(pairs[1].Outcome, MergeOutcome::InvalidSecondary);
  EXPECT_EQ(pairs[1].PrimaryDamage, std::nullopt);
  EXPECT_EQ(pairs[1].SecondaryDamage, StreamProblemCode::MissingArea);
  EXPECT_EQ(pairs[1].Delay, 90);
  EXPECT_EQ(pairs[2].SecondaryDamage, std::nullopt);
}

class RandomSplit : public testing::TestWithParam<unsigned> {
 protected:
  unsigned Below(unsigned end) { return static_cast<unsigned>(random_() % end); }

  /// Subtitles whose pictures differ in their places.
  Bytes RandomStream(unsigned firstRow) {
    Bytes stream;
    std::int64_t time = 1000 * Below(10);
    for (unsigned i = 0; i < 8; ++i) {
      const unsigned x = 100 + 2 * i;
      stream = Join({stream, Sound(time)
                                 .Delay(Below(4) == 0 ? 0 : 1 + Below(15))
                                 .Contrast(15, 15, 8, 0)
                                 .Area(x, x + 3, firstRow, firstRow + 1)
                                 .Build()});
      time += 1000 * (1 + Below(12));
    }
    return stream;
  }

  std::mt19937 random_{GetParam()};
};

/// Where the streams' pictures are.
constexpr int Left = 98;
constexpr int Width = 24;
constexpr int Top = 398;
constexpr int Height = 6;

using Picture = std::vector<Argb>;

/// The picture of subtitle `index` in this part of the frame, in the colours of the merged units.
Picture PictureOf(const SupStream& stream, const std::optional<std::size_t>& index,
                  const CodeColours& colours) {
  Picture picture(static_cast<std::size_t>(Width) * Height);
  if (!index) {
    return picture;
  }
  Bytes buffer;
  const SubtitleUnit unit = UnitOf(stream, *index, buffer);
  const SpuControl control = DecodeControl(unit.Bytes, unit.ControlOffset);
  Bytes codes(static_cast<std::size_t>(control.Width()) * static_cast<std::size_t>(control.Height()));
  DecodeFields<std::uint8_t>(unit.Bytes, codes, control.Width(), control.Height(), control.TopFieldOffset,
                             control.BottomFieldOffset, {0, 1, 2, 3});
  for (int y = std::max<int>(Top, control.Y1); y < std::min<int>(Top + Height, control.Y2 + 1); ++y) {
    for (int x = std::max<int>(Left, control.X1); x < std::min<int>(Left + Width, control.X2 + 1); ++x) {
      const auto at = static_cast<std::size_t>((y - control.Y1) * control.Width() + x - control.X1);
      picture[static_cast<std::size_t>((y - Top) * Width + x - Left)] = colours[codes[at]];
    }
  }
  return picture;
}

/// What the stream shows at `time`: the subtitle that starts last of those that did, until it ends.
std::optional<std::size_t> ShownAt(const SupStream& stream, std::int64_t time) {
  std::optional<std::size_t> shown;
  for (std::size_t i = 0; i < stream.StartTime.size() && stream.StartTime[i] <= time; ++i) {
    shown = i;
  }
  if (!shown) {
    return shown;
  }
  Bytes buffer;
  const SubtitleUnit unit = UnitOf(stream, *shown, buffer);
  const std::int64_t delay = unit.Bytes[PacketBuilder::LastSequence + 1];
  const bool isLast = *shown + 1 == stream.StartTime.size();
  return delay == 0 && !isLast                                                  ? shown
         : time < stream.StartTime[*shown] + (delay != 0 ? delay : 1000) * 1000 ? shown
                                                                                : std::nullopt;
}

TEST_P(RandomSplit, EveryDelayUnitShowsTheCompositionOfWhatBothShow) {
  const TwoStreams streams(RandomStream(400), RandomStream(401));
  MergeSettings settings = SplitSettings();
  settings.SecondaryCodes = {0, 3, 1, 2};
  MergedStreamEncoder encoder(streams.Primary, streams.Secondary, settings);
  while (encoder.Prepare()) {
  }
  Bytes merged;
  for (std::size_t i = 0; i < encoder.Count(); ++i) {
    ASSERT_EQ(encoder.Encode(i), MergeOutcome::Encoded);
    merged.insert(merged.end(), encoder.Packet().begin(), encoder.Packet().end());
  }
  const SupStream result = test::Index(merged);

  const CodeColours colours =
      MakeCodeColours(StartUpPalette, {.Colour = {0, 1, 2, 3}, .Contrast = {0, 8, 15, 15}});
  const CodeColours secondColours = {colours[0], colours[3], colours[1], colours[2]};
  std::size_t changes = 0;
  std::pair<std::optional<std::size_t>, std::optional<std::size_t>> before;
  std::optional<std::size_t> unitBefore;
  for (std::int64_t time = 0; time < 1'200'000; time += 1000) {
    const std::pair shown(ShownAt(streams.Primary, time), ShownAt(streams.Secondary, time));
    std::optional<std::size_t> unit;
    for (std::size_t i = 0; i < result.StartTime.size(); ++i) {
      unit = result.StartTime[i] <= time && time < result.EndTime[i] ? i : unit;
    }
    if (shown == before && unit == unitBefore) {
      continue;
    }
    changes += shown != before && (shown.first || shown.second) ? 1U : 0U;
    before = shown;
    unitBefore = unit;
    const Picture first = PictureOf(streams.Primary, shown.first, colours);
    const Picture second = PictureOf(streams.Secondary, shown.second, secondColours);
    const Picture found = PictureOf(result, unit, colours);
    for (std::size_t at = 0; at < found.size(); ++at) {
      const Argb composed = BlendOver(second[at], first[at]);
      const Argb expected = colours[CodeOfColour(composed, colours)];
      ASSERT_EQ(found[at] >> 24U == 0 ? 0 : found[at], expected >> 24U == 0 ? 0 : expected)
          << "at " << time << ", pixel " << at;
    }
  }
  EXPECT_EQ(encoder.Count(), changes);
}

TEST_P(RandomSplit, OffsetsCostWhatTheReviewCounts) {
  const TwoStreams streams(RandomStream(400), RandomStream(401));
  OffsetSearch search(streams.Primary, streams.Secondary, SplitSettings());
  while (search.Step()) {
  }
  OffsetCost cost;
  for (const MergedPair& pair : ReviewSplit(streams)) {
    cost.Covered += static_cast<std::uint64_t>(pair.Counts.Covered);
    cost.Clipped += static_cast<std::uint64_t>(pair.ClippedPixels());
  }
  EXPECT_EQ(search.CostOf(0), cost);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomSplit, testing::Range(1U, 5U));

}  // namespace
}  // namespace quillmark
