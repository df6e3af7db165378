#include "render/MergeReview.h"

#include <gmock/gmock.h>

#include "render/MergeProblem.h"
#include "tests/render/TwoStreams.h"
#include "tests/support/PacketBuilder.h"

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
using Kind = MergeProblemKind;

std::vector<MergedPair> PairsOf(const TwoStreams& streams, const MergeSettings& settings) {
  MergeReviewer review(streams.Primary, streams.Secondary, settings);
  while (review.Step()) {
  }
  return review.Pairs();
}

/// The review of two streams of one subtitle each.
MergedPair PairOf(const Bytes& primary, const Bytes& secondary,
                  const MergeSettings& settings = test::StartUpSettings()) {
  const auto pairs = PairsOf({primary, secondary}, settings);
  EXPECT_THAT(pairs, SizeIs(1));
  return pairs.empty() ? MergedPair() : pairs.front();
}

std::vector<Kind> KindsOf(const MergedPair& pair) {
  std::vector<Kind> kinds;
  for (const MergeProblem& problem : ProblemsOf(pair)) {
    kinds.push_back(problem.Kind);
  }
  return kinds;
}

// Each picture has two lines of four pixels, the upper one of code 1, the lower one of code 2; code 0 is
// invisible. The primary stands at (100, 400).

TEST(MergeReview, PicturesApartLoseNothing) {
  const MergedPair pair = PairOf(Sound(Second).Build(), Sound(Second).Area(200, 203, 300, 301).Build());
  EXPECT_EQ(pair.Primary, 0U);
  EXPECT_EQ(pair.Secondary, 0U);
  EXPECT_EQ(pair.Outcome, MergeOutcome::Encoded);
  EXPECT_EQ(pair.Counts, MergedCounts());
  EXPECT_THAT(KindsOf(pair), IsEmpty());
  // 573 lines of 2 bytes, of which four have 3 more, and 37 bytes of header, filling and control.
  EXPECT_EQ(pair.Unit.Size, 573U * 2 + 4 * 3 + 37);
  EXPECT_EQ(pair.Unit.LongestLine, 5U);
  EXPECT_FALSE(pair.Unit.IsFieldCut);
}

TEST(MergeReview, DelayIsThatOfTheUnit) {
  EXPECT_EQ(PairOf(Sound(Second).Delay(70).Build(), Sound(Second).Delay(80).Build()).Delay, 70);
}

TEST(MergeReview, VisiblePixelsOverVisibleOnesAreCovered) {
  // Columns 102 and 103 of row 401.
  const MergedPair pair = PairOf(Sound(Second).Build(), Sound(Second).Area(102, 105, 401, 402).Build());
  EXPECT_EQ(pair.Counts.Covered, 2);
  EXPECT_EQ(pair.Counts.Recoloured, 0);
  EXPECT_THAT(KindsOf(pair), ElementsAre(Kind::Covered));
}

TEST(MergeReview, InvisiblePixelsCoverNothingAndAreNotCovered) {
  // Code 2, the lower line, is invisible: the upper line over it, or it over the upper line, covers nothing.
  const Bytes primary = Sound(Second).Contrast(15, 0, 15, 0).Build();
  EXPECT_EQ(PairOf(primary, Sound(Second).Area(100, 103, 401, 402).Build()).Counts.Covered, 0);
  EXPECT_EQ(PairOf(primary, Sound(Second).Area(100, 103, 399, 400).Build()).Counts.Covered, 0);
  EXPECT_EQ(PairOf(primary, Sound(Second).Build()).Counts.Covered, 4);
}

TEST(MergeReview, SecondaryIsAsVisibleAsThePrimarysCodesAre) {
  const Bytes clear = Sound(Second).Contrast(0, 0, 0, 0).Build();
  EXPECT_EQ(PairOf(Sound(Second).Build(), clear).Counts.Covered, 8);
  EXPECT_EQ(PairOf(clear, Sound(Second).Build()).Counts.Covered, 0);
}

TEST(MergeReview, RowsThatNoUnitHasAreClippedAndNotCovered) {
  // Rows 1 and 2, both pictures.
  const Bytes packet = Sound(Second).Area(100, 103, 1, 2).Build();
  const MergedPair pair = PairOf(packet, packet);
  EXPECT_EQ(pair.Counts.Primary, (ClippedPixels{.Rows = 1, .OutsideFrame = 0, .InEdgeRows = 4}));
  EXPECT_EQ(pair.Counts.Secondary, pair.Counts.Primary);
  EXPECT_EQ(pair.Counts.Covered, 4);
  EXPECT_EQ(pair.ClippedPixels(), 8);
  EXPECT_THAT(KindsOf(pair), ElementsAre(Kind::PrimaryClipped, Kind::SecondaryClipped, Kind::Covered));
}

TEST(MergeReview, LastRowIsAnEdgeAndWhatFollowsIsOutside) {
  MergeSettings settings = test::StartUpSettings();
  settings.YOffset = 175;
  EXPECT_EQ(PairOf(Sound(Second).Build(), Sound(Second).Build(), settings).Counts.Secondary,
            (ClippedPixels{.Rows = 2, .OutsideFrame = 4, .InEdgeRows = 4}));
  settings.FrameHeight = 480;
  settings.YOffset = 78;  // rows 478 and 479
  EXPECT_EQ(PairOf(Sound(Second).Build(), Sound(Second).Build(), settings).Counts.Secondary,
            (ClippedPixels{.Rows = 1, .OutsideFrame = 0, .InEdgeRows = 4}));
}

TEST(MergeReview, RowsAboveTheFrameAreOutside) {
  MergeSettings settings = test::StartUpSettings();
  settings.YOffset = -401;  // rows -1 and 0
  EXPECT_EQ(PairOf(Sound(Second).Build(), Sound(Second).Build(), settings).Counts.Secondary,
            (ClippedPixels{.Rows = 2, .OutsideFrame = 4, .InEdgeRows = 4}));
  settings.YOffset = -32768;
  EXPECT_EQ(PairOf(Sound(Second).Build(), Sound(Second).Build(), settings).Counts.Secondary,
            (ClippedPixels{.Rows = 2, .OutsideFrame = 8, .InEdgeRows = 0}));
}

TEST(MergeReview, ColumnsBesideTheFrameAreOutsideInEveryRow) {
  const auto clipped = [](unsigned x, unsigned y) {
    return PairOf(Sound(Second).Build(), Sound(Second).Area(x, x + 3, y, y + 1).Build()).Counts.Secondary;
  };
  EXPECT_EQ(clipped(717, 300), (ClippedPixels{.Rows = 2, .OutsideFrame = 2, .InEdgeRows = 0}));
  EXPECT_EQ(clipped(718, 1), (ClippedPixels{.Rows = 2, .OutsideFrame = 4, .InEdgeRows = 2}));
  EXPECT_EQ(clipped(720, 300), (ClippedPixels{.Rows = 2, .OutsideFrame = 8, .InEdgeRows = 0}));
}

TEST(MergeReview, InvisiblePixelsAreNotClipped) {
  MergeSettings settings = test::StartUpSettings();
  settings.YOffset = -400;  // rows 0 and 1, the upper one of them visible
  const Bytes packet = Sound(Second).Contrast(15, 0, 15, 0).Build();
  EXPECT_EQ(PairOf(packet, packet, settings).Counts.Secondary,
            (ClippedPixels{.Rows = 1, .OutsideFrame = 0, .InEdgeRows = 4}));
}

TEST(MergeReview, BlendThatNoCodeIsNearIsRecolouredAsFarAsItIsOff) {
  // Cyan of opacity 8 over white: 136 parts of (3, 253, 251) and 119 of white, which becomes code 0.
  const MergedPair pair =
      PairOf(Sound(Second).Contrast(15, 15, 8, 0).Build(), Sound(Second).Area(102, 105, 401, 402).Build());
  EXPECT_EQ(pair.Counts.Covered, 2);
  EXPECT_EQ(pair.Counts.Recoloured, 2);
  EXPECT_EQ(pair.Counts.FurthestOff, 255);  // from opaque to invisible
  EXPECT_EQ(pair.Counts.FurthestCode, 0);
  EXPECT_THAT(KindsOf(pair), ElementsAre(Kind::Covered, Kind::Recoloured));
  const MergedPair one =
      PairOf(Sound(Second).Contrast(15, 15, 8, 0).Build(), Sound(Second).Area(103, 106, 401, 402).Build());
  EXPECT_EQ(one.Counts.Covered, 1);
  EXPECT_EQ(one.Counts.Recoloured, 1);
}

TEST(MergeReview, BlendOfAColourWithItselfIsRecoloured) {
  // Cyan of opacity 8 over the same; the lower lines are white.
  const Bytes picture = Sound(Second).Contrast(15, 15, 8, 0).Build();
  const MergedPair pair = PairOf(picture, picture);
  EXPECT_EQ(pair.Counts.Covered, 8);
  EXPECT_EQ(pair.Counts.Recoloured, 4);
}

TEST(MergeReview, BlendInARowThatNoUnitHasIsNotRecoloured) {
  // Rows 1 and 2, both pictures: their lines in row 1 are of opacity 8.
  const Bytes top = Sound(Second).Contrast(15, 15, 8, 0).Area(100, 103, 1, 2).Build();
  const MergedPair above = PairOf(top, top);
  EXPECT_EQ(above.Counts.Covered, 4);
  EXPECT_EQ(above.Counts.Recoloured, 0);
  // Rows 574 and 575: their lines in row 575 are.
  const Bytes bottom = Sound(Second).Contrast(15, 8, 15, 0).Area(100, 103, 574, 575).Build();
  const MergedPair below = PairOf(bottom, bottom);
  EXPECT_EQ(below.Counts.Covered, 4);
  EXPECT_EQ(below.Counts.Recoloured, 0);
}

TEST(MergeReview, BlendNearACodeIsOffByOne) {
  // 238 parts of (254, 254, 254) and 17 of white are (254, 254, 254): one step from white, code 2.
  MergeSettings settings = test::StartUpSettings();
  settings.Palette[1] = MakeRgb(254, 254, 254);
  const MergedPair pair = PairOf(Sound(Second).Contrast(15, 15, 14, 0).Build(),
                                 Sound(Second).Area(102, 105, 401, 402).Build(), settings);
  EXPECT_EQ(pair.Counts.Recoloured, 2);
  EXPECT_EQ(pair.Counts.FurthestOff, 1);
  EXPECT_EQ(pair.Counts.FurthestCode, 2);
}

TEST(MergeReview, ClearFrameIsRecolouredWhereNoCodeIsInvisible) {
  const MergedPair pair =
      PairOf(Sound(Second).Contrast(15, 15, 15, 15).Build(), Sound(Second).Area(200, 203, 300, 301).Build());
  EXPECT_EQ(pair.Counts.Recoloured, 720 * 573 - 16);
  EXPECT_EQ(pair.Counts.FurthestOff, 255);
  EXPECT_EQ(pair.Counts.FurthestCode, 0);
}

TEST(MergeReview, ClearFrameIsRecolouredWhereTheInvisibleCodeIsNotTheOneWritten) {
  // Code 3 is invisible, but green: the clear frame is not near it and becomes code 0, opaque black.
  const MergedPair pair =
      PairOf(Sound(Second).Contrast(0, 15, 15, 15).Build(), Sound(Second).Area(200, 203, 300, 301).Build());
  EXPECT_EQ(pair.Counts.Recoloured, 720 * 573 - 16);
}

/// Lines of code 1, as wide as the area is, all opaque.
Bytes OneCode(unsigned x1, unsigned x2, unsigned y1, unsigned y2) {
  Bytes fields;
  for (unsigned line = y1; line <= y2; ++line) {
    fields.insert(fields.end(), {0x00, 0x01});  // up to the end of the line
  }
  const auto control = static_cast<unsigned>(4 + fields.size());
  return PacketBuilder()
      .Time(Second)
      .ControlOffset(control)
      .Unit(Join({fields, test::Sequence(0, control,
                                         {test::StartDisplay, test::SetColour(3, 2, 1, 0),
                                          test::SetContrast(15, 15, 15, 15), test::SetArea(x1, x2, y1, y2),
                                          test::SetFields(4, 4 + (y2 - y1 + 1)), test::EndOfSequence})}))
      .Build();
}

TEST(MergeReview, ClearFrameOfWhichNothingIsLeftIsNotRecoloured) {
  const MergedPair pair = PairOf(OneCode(0, 719, 2, 573), OneCode(0, 719, 574, 575));
  EXPECT_EQ(pair.Counts.Recoloured, 0);
  EXPECT_EQ(pair.Counts.FurthestOff, 0);
}

TEST(MergeReview, LastPixelOfTheClearFrameIsRecoloured) {
  const MergedPair pair = PairOf(OneCode(0, 719, 2, 573), OneCode(0, 718, 574, 575));
  EXPECT_EQ(pair.Counts.Recoloured, 1);
  EXPECT_EQ(pair.Counts.FurthestOff, 255);
}

TEST(MergeReview, InvisibleColoursAreOneWhateverTheyAre) {
  MergeSettings settings = test::StartUpSettings();
  settings.Palette[0] = MakeRgb(10, 20, 30);
  EXPECT_EQ(PairOf(Sound(Second).Build(), Sound(Second).Build(), settings).Counts.Recoloured, 0);
}

TEST(MergeReview, FieldsThatEndBeforeThePictureAreTold) {
  // After the second pair of lines the top field has run into the bottom one.
  const Bytes cut = Sound(Second).Area(300, 303, 300, 305).Build();
  EXPECT_TRUE(PairOf(cut, Sound(Second).Build()).Counts.PrimaryIsCut);
  const MergedPair pair = PairOf(Sound(Second).Build(), cut);
  EXPECT_TRUE(pair.Counts.SecondaryIsCut);
  EXPECT_FALSE(pair.Counts.PrimaryIsCut);
  EXPECT_THAT(KindsOf(pair), ElementsAre(Kind::SecondaryCut));
  EXPECT_FALSE(
      PairOf(Sound(Second).Build(), Sound(Second).Area(300, 303, 300, 303).Build()).Counts.SecondaryIsCut);
}

TEST(MergeReview, OverlapIsTheTimeThatBothAreShown) {
  // The second stream's subtitles are shown from 1.2, 3, 5.9 and 8 s to the next one, the last one for 10000
  // ticks after 9 s.
  const TwoStreams streams(
      Join({Sound(Second).Build(), Sound(5 * Second).Build(), Sound(9 * Second).Build()}),
      Join({Sound(108000).Build(), Sound(270000).Build(), Sound(531000).Build(), Sound(720000).Build()}));
  MergeReviewer review(streams.Primary, streams.Secondary, test::StartUpSettings());
  while (review.Step()) {
  }
  ASSERT_THAT(review.Pairs(), SizeIs(3));
  EXPECT_EQ(review.Pairs()[0].Secondary, 0U);
  EXPECT_EQ(review.Pairs()[0].OverlapTicks, 72000);
  EXPECT_EQ(review.Pairs()[1].Secondary, 1U);
  EXPECT_EQ(review.Pairs()[1].OverlapTicks, 81000);
  EXPECT_EQ(review.Pairs()[2].Secondary, 3U);
  EXPECT_EQ(review.Pairs()[2].OverlapTicks, 10000);
  EXPECT_EQ(review.LeftOut().Text(), "3");
}

TEST(MergeReview, FirstOneIsTakenWhereNoneOverlaps) {
  const auto pairs = PairsOf(
      {Join({Sound(Second).Build(), Sound(5 * Second).Build()}), Sound(20 * Second).Area(0, 3, 2, 3).Build()},
      test::StartUpSettings());
  ASSERT_THAT(pairs, SizeIs(2));
  EXPECT_LE(pairs[0].OverlapTicks, 0);
  EXPECT_FALSE(pairs[0].IsUsedBefore);
  EXPECT_TRUE(pairs[1].IsUsedBefore);
  EXPECT_THAT(KindsOf(pairs[1]), ElementsAre(Kind::NoOverlap, Kind::UsedBefore));
}

TEST(MergeReview, DamageIsToldAndTheReviewGoesOn) {
  const auto pairs =
      PairsOf({Join({Sound(Second).Build(), Sound(5 * Second).WithoutArea().Build(),
                     Sound(9 * Second).Build(), Sound(13 * Second).Build()}),
               Join({Sound(Second).Build(), Sound(5 * Second).WithoutColour().Build(),
                     Sound(9 * Second).WithoutContrast().Build(), Sound(13 * Second).Build()})},
              test::StartUpSettings());
  ASSERT_THAT(pairs, SizeIs(4));
  EXPECT_EQ(pairs[0].Outcome, MergeOutcome::Encoded);
  EXPECT_EQ(pairs[1].Outcome, MergeOutcome::InvalidPrimary);
  EXPECT_EQ(pairs[1].PrimaryDamage, StreamProblemCode::MissingArea);
  EXPECT_EQ(pairs[1].SecondaryDamage, StreamProblemCode::MissingColour);
  EXPECT_THAT(KindsOf(pairs[1]), ElementsAre(Kind::PrimaryDamaged, Kind::SecondaryDamaged));
  EXPECT_EQ(pairs[2].Outcome, MergeOutcome::InvalidSecondary);
  EXPECT_EQ(pairs[2].PrimaryDamage, std::nullopt);
  EXPECT_EQ(pairs[2].SecondaryDamage, StreamProblemCode::MissingContrast);
  EXPECT_EQ(pairs[3].Outcome, MergeOutcome::Encoded);
}

TEST(MergeReview, SecondaryOfADamagedPacketIsLeftOut) {
  const TwoStreams streams(Join({Sound(Second).Build(), Sound(5 * Second).WithoutArea().Build()}),
                           Join({Sound(Second).Build(), Sound(5 * Second).Build()}));
  MergeReviewer review(streams.Primary, streams.Secondary, test::StartUpSettings());
  EXPECT_EQ(review.LeftOut().Text(), "1-2");
  while (review.Step()) {
  }
  EXPECT_EQ(review.Looked(), 2U);
  EXPECT_EQ(review.LeftOut().Text(), "2");
}

TEST(MergeReview, ReversedAreaAndCutFileAreDamage) {
  const MergedPair reversed = PairOf(Sound(Second).Build(), Sound(Second).Area(9, 5, 0, 1).Build());
  EXPECT_EQ(reversed.Outcome, MergeOutcome::Encoded);
  EXPECT_EQ(reversed.SecondaryDamage, StreamProblemCode::ReversedArea);
  Bytes cut = Sound(Second).Build();
  cut.resize(cut.size() - 8);
  EXPECT_EQ(PairOf(cut, Sound(Second).Build()).PrimaryDamage, StreamProblemCode::PastEnd);
}

TEST(MergeReview, UnitThatDoesNotFitHasTheSizeThatItWouldHave) {
  // 560 lines of 117 bytes, 13 of 2 bytes and 37 bytes more.
  MergeSettings settings = test::StartUpSettings();
  settings.YOffset = 280;
  const Bytes noise = test::NoisePacket(Second, 280);
  const MergedPair pair = PairOf(noise, noise, settings);
  EXPECT_EQ(pair.Outcome, MergeOutcome::TooLarge);
  EXPECT_EQ(pair.Unit.Size, 65583U);
  EXPECT_EQ(pair.Unit.LongestLine, 117U);
  EXPECT_THAT(KindsOf(pair), ElementsAre(Kind::UnitTooLarge));
}

TEST(MergeReview, OneSubtitleIsLookedAtAlone) {
  const TwoStreams streams(Join({Sound(Second).Build(), Sound(5 * Second).Build()}), Sound(0).Build());
  MergeReviewer review(streams.Primary, streams.Secondary, test::StartUpSettings());
  const auto pair = review.LookAt(1);
  ASSERT_TRUE(pair);
  EXPECT_EQ(pair->Primary, 1U);
  EXPECT_FALSE(pair->IsUsedBefore);
  EXPECT_EQ(review.Looked(), 0U);
  EXPECT_EQ(review.LookAt(2), std::nullopt);
}

TEST(MergeReview, SubtitleWithoutAPacketHasNoPair) {
  // The last subtitle starts before the others, so that the second stream ends before the second one starts.
  const auto pairs =
      PairsOf({Join({Sound(Second).Build(), Sound(90 * Second).Build(), Sound(5 * Second).Build()}),
               Join({Sound(0).Build(), Sound(Second).Build()})},
              test::StartUpSettings());
  ASSERT_THAT(pairs, SizeIs(2));
  EXPECT_EQ(pairs[1].Primary, 2U);
}

TEST(MergeReview, PictureOfOneColumnOrOneLineIsNoDamage) {
  EXPECT_EQ(PairOf(Sound(Second).Build(), Sound(Second).Area(100, 100, 400, 401).Build()).SecondaryDamage,
            std::nullopt);
  EXPECT_EQ(PairOf(Sound(Second).Build(), Sound(Second).Area(100, 103, 400, 400).Build()).SecondaryDamage,
            std::nullopt);
}

TEST(MergedPair, OverlapIsRoundedToMilliseconds) {
  const auto ms = [](std::int64_t ticks) {
    MergedPair pair;
    pair.OverlapTicks = ticks;
    return pair.OverlapMs();
  };
  EXPECT_EQ(ms(44), 0);
  EXPECT_EQ(ms(45), 1);
  EXPECT_EQ(ms(134), 1);
  EXPECT_EQ(ms(135), 2);
  EXPECT_EQ(ms(-900), 0);
}

TEST(MergedPair, PlannedIsWhatItsSubtitlesAndItsTimeSay) {
  MergedPair pair;
  pair.Primary = 2;
  pair.Secondary = 6;
  pair.StartTicks = 900;
  pair.Delay = 10;
  const DisplayInterval both = pair.Planned();
  EXPECT_EQ(both.Start, 900);
  EXPECT_EQ(both.End, 10900);
  EXPECT_EQ(both.Delay, 10);
  EXPECT_EQ(both.First, 2U);
  EXPECT_EQ(both.Second, 6U);
  pair.HasPrimary = false;
  EXPECT_EQ(pair.Planned().First, std::nullopt);
  EXPECT_EQ(pair.Planned().Second, 6U);
  pair.HasSecondary = false;
  EXPECT_EQ(pair.Planned().Second, std::nullopt);
  pair.StartTicks = 9223372036854775807;
  EXPECT_EQ(pair.Planned().End, 9223372036854775807);
}

}  // namespace
}  // namespace quillmark
