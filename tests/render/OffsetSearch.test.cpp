#include "render/OffsetSearch.h"

#include <gmock/gmock.h>

#include "tests/render/TwoStreams.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::Second;
using test::Sound;
using test::TwoStreams;

MergeSettings SettingsAt(int yOffset, int frameHeight = 576) {
  MergeSettings settings = test::StartUpSettings();
  settings.YOffset = yOffset;
  settings.FrameHeight = frameHeight;
  return settings;
}

/// One after which every packet was taken.
OffsetSearch Searched(const TwoStreams& streams, const MergeSettings& settings) {
  OffsetSearch search(streams.Primary, streams.Secondary, settings);
  while (search.Step()) {
  }
  return search;
}

// Each picture has two lines of four visible pixels. The primary stands in rows 400 and 401.

TEST(OffsetSearch, CostIsWhatIsCoveredAndClipped) {
  const TwoStreams streams(Sound(Second).Build(), Sound(Second).Build());
  const OffsetSearch search = Searched(streams, SettingsAt(0));
  EXPECT_EQ(search.CostOf(0), (OffsetCost{.Covered = 8, .Clipped = 0}));
  EXPECT_EQ(search.CostOf(1), (OffsetCost{.Covered = 4, .Clipped = 0}));
  EXPECT_EQ(search.CostOf(-2), OffsetCost());
  EXPECT_EQ(search.CostOf(173), OffsetCost());  // rows 573 and 574
  EXPECT_EQ(search.CostOf(174), (OffsetCost{.Covered = 0, .Clipped = 4}));
  EXPECT_EQ(search.CostOf(-398), OffsetCost());  // rows 2 and 3
  EXPECT_EQ(search.CostOf(-399), (OffsetCost{.Covered = 0, .Clipped = 4}));
  EXPECT_EQ(search.CostOf(MinYOffset), (OffsetCost{.Covered = 0, .Clipped = 8}));
  EXPECT_EQ(search.CostOf(MaxYOffset), (OffsetCost{.Covered = 0, .Clipped = 8}));
}

TEST(OffsetSearch, OfEqualCostsTheNearestOffsetIsTheBest) {
  const TwoStreams streams(Sound(Second).Build(), Sound(Second).Build());
  EXPECT_EQ(Searched(streams, SettingsAt(5)).Best(), 5);
  EXPECT_EQ(Searched(streams, SettingsAt(1)).Best(), 2);
  EXPECT_EQ(Searched(streams, SettingsAt(-1)).Best(), -2);
  EXPECT_EQ(Searched(streams, SettingsAt(-400)).Best(), -398);
  EXPECT_EQ(Searched(streams, SettingsAt(1000)).Best(), 173);
}

TEST(OffsetSearch, OfTwoAsNearTheOneFurtherUpIsTheBest) {
  const TwoStreams streams(Sound(Second).Build(), Sound(Second).Build());
  EXPECT_EQ(Searched(streams, SettingsAt(0)).Best(), -2);
}

TEST(OffsetSearch, FrameOf480LinesEndsEarlier) {
  const TwoStreams streams(Sound(Second).Build(), Sound(Second).Build());
  EXPECT_EQ(Searched(streams, SettingsAt(1000, 480)).Best(), 77);  // rows 477 and 478
}

TEST(OffsetSearch, CostsOfAllPacketsCount) {
  // The second one's picture lies lower: at -2 it would cover the primary, which stands there too.
  const TwoStreams streams(Join({Sound(Second).Build(), Sound(5 * Second).Build()}),
                           Join({Sound(Second).Build(), Sound(5 * Second).Area(100, 103, 402, 403).Build()}));
  const OffsetSearch search = Searched(streams, SettingsAt(-1));
  EXPECT_EQ(search.CostOf(-2), (OffsetCost{.Covered = 8, .Clipped = 0}));
  EXPECT_EQ(search.CostOf(-1), (OffsetCost{.Covered = 8, .Clipped = 0}));  // four of each
  EXPECT_EQ(search.CostOf(-4), OffsetCost());
  EXPECT_EQ(search.CostOf(2), OffsetCost());
  EXPECT_EQ(search.Best(), -4);
}

TEST(OffsetSearch, ColumnsApartCoverNothing) {
  const TwoStreams streams(Sound(Second).Build(), Sound(Second).Area(104, 107, 400, 401).Build());
  EXPECT_EQ(Searched(streams, SettingsAt(0)).Best(), 0);
}

TEST(OffsetSearch, WhatEveryOffsetClipsIsInTheCost) {
  // Two columns of the secondary picture lie beside the frame, and one row of the primary in its last row.
  const TwoStreams streams(Sound(Second).Area(100, 103, 574, 575).Build(),
                           Sound(Second).Area(718, 721, 300, 301).Build());
  EXPECT_EQ(Searched(streams, SettingsAt(0)).CostOf(0), (OffsetCost{.Covered = 0, .Clipped = 8}));
}

TEST(OffsetSearch, PictureBesideTheFrameIsClippedWholly) {
  const TwoStreams streams(Sound(Second).Build(), Sound(Second).Area(720, 723, 300, 301).Build());
  EXPECT_EQ(Searched(streams, SettingsAt(0)).CostOf(0), (OffsetCost{.Covered = 0, .Clipped = 8}));
}

TEST(OffsetSearch, PictureAtTheFramesLeftEdgeCounts) {
  const TwoStreams streams(Sound(Second).Area(0, 3, 400, 401).Build(),
                           Sound(Second).Area(0, 3, 400, 401).Build());
  EXPECT_EQ(Searched(streams, SettingsAt(0)).CostOf(0), (OffsetCost{.Covered = 8, .Clipped = 0}));
}

TEST(OffsetSearch, OneColumnInTheFrameIsCoveredByItsNeighbour) {
  const TwoStreams streams(Sound(Second).Area(716, 719, 400, 401).Build(),
                           Sound(Second).Area(719, 722, 400, 401).Build());
  EXPECT_EQ(Searched(streams, SettingsAt(0)).CostOf(0), (OffsetCost{.Covered = 2, .Clipped = 6}));
}

TEST(OffsetSearch, ReversedAreaCostsNothing) {
  for (const Bytes& reversed :
       {Sound(Second).Area(103, 100, 400, 401).Build(), Sound(Second).Area(100, 103, 401, 400).Build()}) {
    EXPECT_EQ(Searched({Sound(Second).Build(), reversed}, SettingsAt(0)).CostOf(0), OffsetCost());
  }
}

TEST(OffsetSearch, InvisiblePixelsCostNothing) {
  MergeSettings settings = SettingsAt(0);
  const TwoStreams streams(Sound(Second).Contrast(15, 0, 15, 0).Build(), Sound(Second).Build());
  EXPECT_EQ(Searched(streams, settings).CostOf(0), (OffsetCost{.Covered = 4, .Clipped = 0}));
  // The secondary's lower line becomes code 1 and its upper one the invisible code 2.
  settings.SecondaryCodes = {0, 2, 1, 3};
  EXPECT_EQ(Searched(streams, settings).CostOf(0), OffsetCost());
  EXPECT_EQ(Searched(streams, settings).CostOf(-1), (OffsetCost{.Covered = 4, .Clipped = 0}));
}

TEST(OffsetSearch, DamagedPacketsCostNothing) {
  const TwoStreams streams(Join({Sound(Second).Build(), Sound(5 * Second).WithoutArea().Build()}),
                           Join({Sound(Second).Build(), Sound(5 * Second).Build()}));
  EXPECT_EQ(Searched(streams, SettingsAt(0)).CostOf(0), (OffsetCost{.Covered = 8, .Clipped = 0}));
}

/// The whole frame in code 1.
Bytes FullFrame(std::int64_t time) {
  Bytes lines;
  for (int line = 0; line < 576; ++line) {
    lines.insert(lines.end(), {0x00, 0x01});
  }
  const unsigned control = 4 + 576 * 2;
  return test::PacketBuilder()
      .Time(time)
      .ControlOffset(control)
      .Unit(Join(
          {lines,
           test::Sequence(0, control + 24,
                          {test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 0),
                           test::SetArea(0, 719, 0, 575), test::SetFields(4, 4 + 576), test::EndOfSequence}),
           test::Sequence(90, control + 24, {test::StopDisplay, test::EndOfSequence})}))
      .Build();
}

TEST(OffsetSearch, LargePicturesTakeSeveralSteps) {
  const TwoStreams streams(FullFrame(Second), FullFrame(Second));
  OffsetSearch search(streams.Primary, streams.Secondary, SettingsAt(0));
  int steps = 0;
  while (search.Step()) {
    ++steps;
  }
  EXPECT_GT(steps, 1);
  EXPECT_EQ(search.Looked(), 1U);
  // Each picture has all 573 rows of a unit and three more.
  EXPECT_EQ(search.CostOf(0), (OffsetCost{.Covered = 720U * 573, .Clipped = 720U * 6}));
  EXPECT_EQ(search.CostOf(573), (OffsetCost{.Covered = 720U * 2, .Clipped = 720U * (3 + 574)}));
}

}  // namespace
}  // namespace quillmark
