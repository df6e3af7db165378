#include "render/StreamDiff.h"

#include <gmock/gmock.h>

#include "sup/StreamLoader.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::PacketBuilder;
using testing::ElementsAre;
using testing::IsEmpty;
using Difference = SubtitleDifference;

SupStream StreamOf(const Bytes& file) {
  return test::StreamOf(IndexPrimaryStream(file, InvalidFirst::IsPassed));
}

std::vector<ComparedPair> Compared(const Bytes& first, const Bytes& second) {
  std::vector<ComparedPair> pairs;
  CompareStreams(StreamOf(first), StreamOf(second), [&](const ComparedPair& pair) { pairs.push_back(pair); });
  return pairs;
}

/// Of two streams of one subtitle each, which are a pair.
ComparedPair One(const Bytes& first, const Bytes& second) {
  const auto pairs = Compared(first, second);
  EXPECT_EQ(pairs.size(), 1U);
  return pairs.empty() ? ComparedPair() : pairs.front();
}

PacketBuilder SoundPacket() {
  return PacketBuilder().Time(90000).Delay(100);
}

/// The sound packet, with other bytes in its unit after the header.
Bytes Changed(std::initializer_list<std::pair<std::size_t, std::uint8_t>> changes) {
  Bytes unit = SoundPacket().UnitBytes();
  for (const auto& [index, byte] : changes) {
    unit[index] = byte;
  }
  return SoundPacket().Unit(unit).Build();
}

TEST(CompareStreams, SameBytesHaveNoDifference) {
  EXPECT_THAT(One(SoundPacket().Build(), SoundPacket().Build()).Differences, IsEmpty());
}

TEST(CompareStreams, AnotherStartIsAMoveInTime) {
  EXPECT_THAT(One(SoundPacket().Build(), SoundPacket().Time(93600).Build()).Differences,
              ElementsAre(Difference::Start));
}

TEST(CompareStreams, AnotherDelayIsAnotherDuration) {
  EXPECT_THAT(One(SoundPacket().Build(), SoundPacket().Delay(90).Build()).Differences,
              ElementsAre(Difference::Duration));
}

TEST(CompareStreams, AnAreaOfTheSameSizeElsewhereIsAMoveInPlace) {
  const ComparedPair pair = One(SoundPacket().Build(), SoundPacket().Area(110, 113, 402, 403).Build());

  EXPECT_THAT(pair.Differences, ElementsAre(Difference::Place));
  EXPECT_EQ(pair.OtherPixels, 0);
}

TEST(CompareStreams, ColoursAndOpacitiesAreTold) {
  EXPECT_THAT(One(SoundPacket().Build(), SoundPacket().Colour(3, 2, 1, 9).Build()).Differences,
              ElementsAre(Difference::Colours));
  EXPECT_THAT(One(SoundPacket().Build(), SoundPacket().Contrast(15, 15, 15, 1).Build()).Differences,
              ElementsAre(Difference::Opacities));
}

TEST(CompareStreams, AForcedStartIsTold) {
  // The start command is unit byte 12.
  EXPECT_THAT(One(SoundPacket().Build(), Changed({{8, 0x00}})).Differences, ElementsAre(Difference::Forced));
}

TEST(CompareStreams, OtherPixelsAreCounted) {
  // The upper line is 4 of code 3 in place of 4 of code 1; then 3 of code 1 and the last one of code 2.
  const ComparedPair line = One(SoundPacket().Build(), Changed({{0, 0x13}}));
  EXPECT_THAT(line.Differences, ElementsAre(Difference::Pixels));
  EXPECT_EQ(line.OtherPixels, 4);

  const ComparedPair one = One(SoundPacket().Build(), Changed({{0, 0xD6}}));
  EXPECT_THAT(one.Differences, ElementsAre(Difference::Pixels));
  EXPECT_EQ(one.OtherPixels, 1);
}

TEST(CompareStreams, EachCodeIsAnother) {
  // The upper line is 4 of this code, in place of 4 of code 2.
  for (const int line : {0x10, 0x11, 0x13}) {
    EXPECT_EQ(One(Changed({{0, 0x12}}), Changed({{0, static_cast<std::uint8_t>(line)}})).OtherPixels, 4)
        << line;
  }
}

TEST(CompareStreams, PicturesOfOneSizeAreComparedWhereverTheyStand) {
  Bytes unit = PacketBuilder().Delay(100).Area(110, 113, 402, 403).UnitBytes();
  unit[0] = 0xD6;
  const ComparedPair pair = One(SoundPacket().Build(), SoundPacket().Unit(unit).Build());

  EXPECT_THAT(pair.Differences, ElementsAre(Difference::Place, Difference::Pixels));
  EXPECT_EQ(pair.OtherPixels, 1);
}

TEST(DifferencePhrase, SaysWhatIsOther) {
  const auto phrase = [](SubtitleDifference difference) { return DifferencePhrase(difference, 2); };
  EXPECT_EQ(phrase(SubtitleDifference::Missing), "missing");
  EXPECT_EQ(phrase(SubtitleDifference::Added), "added");
  EXPECT_EQ(phrase(SubtitleDifference::Validity), "only one of the two can be shown");
  EXPECT_EQ(phrase(SubtitleDifference::Start), "moved in time");
  EXPECT_EQ(phrase(SubtitleDifference::Duration), "other duration");
  EXPECT_EQ(phrase(SubtitleDifference::Place), "moved in place");
  EXPECT_EQ(phrase(SubtitleDifference::Size), "other size");
  EXPECT_EQ(phrase(SubtitleDifference::Colours), "other colours");
  EXPECT_EQ(phrase(SubtitleDifference::Opacities), "other opacities");
  EXPECT_EQ(phrase(SubtitleDifference::Forced), "other forced flag");
  EXPECT_EQ(phrase(SubtitleDifference::Pixels), "2 other pixels");
  EXPECT_EQ(DifferencePhrase(SubtitleDifference::Pixels, 1), "1 other pixel");
  EXPECT_EQ(DifferenceWords(SubtitleDifference::Pixels), "other pixels");
  EXPECT_EQ(phrase(SubtitleDifference::Bytes), "the same, otherwise written");
}

TEST(CompareStreams, PicturesOfOtherSizesAreComparedAtTheirPlaces) {
  // The frame's columns 98 to 103: 001111 and 002222 in the one. In the other, 6 pixels wide, the runs of 4
  // are followed by 0012, 4 of code 2, and by 0000, code 0 to the line's end: 111122 and 222200.
  const ComparedPair pair = One(SoundPacket().Build(), SoundPacket().Area(98, 103, 400, 401).Build());

  EXPECT_THAT(pair.Differences, ElementsAre(Difference::Place, Difference::Size, Difference::Pixels));
  EXPECT_EQ(pair.OtherPixels, 8);
}

TEST(CompareStreams, PixelsOnBothSidesOfANarrowerPictureAreCounted) {
  // 2 of code 1 and 2 of code 2, in the middle of 4 of each.
  Bytes narrow = SoundPacket().Area(101, 102, 400, 401).UnitBytes();
  narrow[0] = 0x90;
  narrow[2] = 0xA0;

  EXPECT_EQ(One(SoundPacket().Build(), SoundPacket().Unit(narrow).Build()).OtherPixels, 4);
}

TEST(CompareStreams, TheSamePictureOtherwiseCodedHasOtherBytesAlone) {
  // 4 x 1 as a run to the line's end, 00 01.
  EXPECT_THAT(One(SoundPacket().Build(), Changed({{0, 0x00}, {1, 0x01}})).Differences,
              ElementsAre(Difference::Bytes));
}

TEST(CompareStreams, WhatOneStreamAloneHasIsMissingOrAdded) {
  const Bytes both = Join({SoundPacket().Build(), PacketBuilder().Time(900000).Build()});

  const auto missing = Compared(both, SoundPacket().Build());
  ASSERT_EQ(missing.size(), 2U);
  EXPECT_THAT(missing[1].Differences, ElementsAre(Difference::Missing));
  const auto added = Compared(SoundPacket().Build(), both);
  ASSERT_EQ(added.size(), 2U);
  EXPECT_THAT(added[1].Differences, ElementsAre(Difference::Added));
}

TEST(CompareStreams, OneThatCannotBeShownIsToldAsSuch) {
  EXPECT_THAT(One(SoundPacket().Build(), SoundPacket().WithoutArea().Build()).Differences,
              ElementsAre(Difference::Validity));
  EXPECT_THAT(One(SoundPacket().WithoutArea().Build(), SoundPacket().WithoutArea().Build()).Differences,
              IsEmpty());
  EXPECT_THAT(One(SoundPacket().WithoutArea().Build(), SoundPacket().WithoutArea().Colour(1, 1, 1, 1).Build())
                  .Differences,
              ElementsAre(Difference::Bytes));
}

TEST(CompareStreams, AUnitThatTheFileCutsShortIsComparedWithZeros) {
  Bytes cut = SoundPacket().Build();
  cut.pop_back();
  Bytes withZero = SoundPacket().Build();
  withZero.back() = 0;

  EXPECT_THAT(One(cut, withZero).Differences, IsEmpty());
  EXPECT_THAT(One(SoundPacket().Build(), cut).Differences, ElementsAre(Difference::Bytes));
}

TEST(CompareStreams, AHugeAreaInATinyUnitIsComparedAsFarAsItIsCoded) {
  PacketBuilder builder = SoundPacket().Area(0, 4095, 0, 4095);
  Bytes unit = builder.UnitBytes();
  unit[0] = 0x12;
  const ComparedPair pair =
      One(SoundPacket().Area(0, 4095, 0, 4095).Build(), SoundPacket().Unit(unit).Build());

  // A pair of lines reads bytes of control sequences after the picture; there are no more than 38 bytes.
  EXPECT_GT(pair.OtherPixels, 0);
  EXPECT_LE(pair.OtherPixels, 4096 * 78);
}

TEST(HaveSameTrailingBytes, LooksAtWhatFollowsTheLastPacket) {
  const Bytes packet = SoundPacket().Build();

  EXPECT_TRUE(HaveSameTrailingBytes(StreamOf(packet), StreamOf(SoundPacket().Time(5).Build())));
  EXPECT_FALSE(HaveSameTrailingBytes(StreamOf(packet), StreamOf(Join({packet, {1}}))));
  EXPECT_FALSE(HaveSameTrailingBytes(StreamOf(Join({packet, {2}})), StreamOf(Join({packet, {1}}))));
  EXPECT_TRUE(HaveSameTrailingBytes(StreamOf(Join({packet, {1}})), StreamOf(Join({packet, {1}}))));
  EXPECT_TRUE(HaveSameTrailingBytes(StreamOf({}), SupStream()));
}

// The other one, 6 pixels wide, is 111122 and 222200, of which 10 are no background; the first one has 8.

TEST(CompareStreams, PicturesBesideEachOtherDifferInAllThatTheyShow) {
  const ComparedPair pair = One(SoundPacket().Build(), SoundPacket().Area(300, 305, 400, 401).Build());
  EXPECT_EQ(pair.OtherPixels, 18);
}

TEST(CompareStreams, PicturesBelowEachOtherDifferInAllThatTheyShow) {
  EXPECT_EQ(One(SoundPacket().Build(), SoundPacket().Area(100, 105, 410, 411).Build()).OtherPixels, 18);
  EXPECT_EQ(One(SoundPacket().Build(), SoundPacket().Area(100, 105, 390, 391).Build()).OtherPixels, 18);
}

TEST(CompareStreams, LinesOfOtherFieldsAreOtherPixels) {
  // The fields' offsets are unit bytes 27 to 30.
  const ComparedPair swapped = One(SoundPacket().Build(), Changed({{24, 6}, {26, 4}}));
  EXPECT_THAT(swapped.Differences, ElementsAre(Difference::Pixels));
  EXPECT_EQ(swapped.OtherPixels, 8);
  EXPECT_EQ(One(SoundPacket().Build(), Changed({{24, 6}})).OtherPixels, 4);
  EXPECT_EQ(One(SoundPacket().Build(), Changed({{26, 4}})).OtherPixels, 4);
}

TEST(CompareStreams, LinesMoreAreAnotherSize) {
  EXPECT_THAT(One(SoundPacket().Build(), SoundPacket().Area(100, 103, 400, 403).Build()).Differences,
              testing::Contains(Difference::Size));
}

TEST(CompareStreams, LinesFurtherDownAreAnotherPlace) {
  EXPECT_THAT(One(SoundPacket().Build(), SoundPacket().Area(100, 103, 402, 403).Build()).Differences,
              ElementsAre(Difference::Place));
}

}  // namespace
}  // namespace quillmark
