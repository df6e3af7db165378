#include "sup/SubtitlePairs.h"

#include <gmock/gmock.h>
#include <random>

#include "sup/StreamLoader.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {

void PrintTo(const SubtitlePair& pair, std::ostream* out) {
  const auto print = [&](const std::optional<std::size_t>& index) {
    *out << (index ? std::to_string(*index) : "-");
  };
  print(pair.First);
  *out << '|';
  print(pair.Second);
}

namespace {

using test::Bytes;
using test::PacketBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::nullopt_t None = std::nullopt;

/// A subtitle that is shown for `delay` units of 1000 ticks, with a picture that has a number of its own.
struct Subtitle {
  std::int64_t Start = 0;
  unsigned Picture = 0;
  unsigned Delay = 10;
};

SupStream StreamOf(const std::vector<Subtitle>& subtitles) {
  Bytes file;
  for (const Subtitle& subtitle : subtitles) {
    PacketBuilder packet;
    packet.Time(subtitle.Start).Delay(subtitle.Delay);
    Bytes unit = packet.UnitBytes();
    unit[0] = static_cast<std::uint8_t>(subtitle.Picture >> 8U);
    unit[1] = static_cast<std::uint8_t>(subtitle.Picture);
    const Bytes built = packet.Unit(unit).Build();
    file.insert(file.end(), built.begin(), built.end());
  }
  return test::StreamOf(IndexPrimaryStream(std::move(file), InvalidFirst::IsPassed));
}

std::vector<SubtitlePair> Pairs(const std::vector<Subtitle>& first, const std::vector<Subtitle>& second) {
  return PairSubtitles(StreamOf(first), StreamOf(second));
}

SubtitlePair Pair(std::optional<std::size_t> first, std::optional<std::size_t> second) {
  return {.First = first, .Second = second};
}

TEST(PairSubtitles, AStreamAndItselfGoTogetherOneByOne) {
  const std::vector<Subtitle> stream = {{0, 1}, {20000, 2}, {40000, 2}, {60000, 3}};

  EXPECT_THAT(Pairs(stream, stream), ElementsAre(Pair(0, 0), Pair(1, 1), Pair(2, 2), Pair(3, 3)));
}

TEST(PairSubtitles, WithoutSubtitlesThereAreNoPairs) {
  EXPECT_THAT(Pairs({}, {}), IsEmpty());
  EXPECT_THAT(PairSubtitles(SupStream(), SupStream()), IsEmpty());
}

TEST(PairSubtitles, WhatOnlyOneStreamHasIsMissingOrAdded) {
  EXPECT_THAT(Pairs({{0, 1}, {20000, 2}}, {}), ElementsAre(Pair(0, None), Pair(1, None)));
  EXPECT_THAT(Pairs({}, {{0, 1}}), ElementsAre(Pair(None, 0)));
}

TEST(PairSubtitles, OneThatWasTakenOutIsMissing) {
  EXPECT_THAT(Pairs({{0, 1}, {20000, 2}, {40000, 3}}, {{0, 1}, {40000, 3}}),
              ElementsAre(Pair(0, 0), Pair(1, None), Pair(2, 1)));
}

TEST(PairSubtitles, OneThatWasPutInIsAdded) {
  EXPECT_THAT(Pairs({{0, 1}, {40000, 3}}, {{0, 1}, {20000, 2}, {40000, 3}}),
              ElementsAre(Pair(0, 0), Pair(None, 1), Pair(1, 2)));
}

TEST(PairSubtitles, TheSameStartPairsDifferentPictures) {
  EXPECT_THAT(Pairs({{0, 1}, {20000, 2}}, {{0, 1}, {20000, 9}}), ElementsAre(Pair(0, 0), Pair(1, 1)));
}

TEST(PairSubtitles, TheSamePicturePairsDifferentStarts) {
  // All are shown later than they were shown at all, and the second one is gone.
  EXPECT_THAT(Pairs({{0, 1}, {20000, 2}, {40000, 3}}, {{900001, 1}, {940001, 3}}),
              ElementsAre(Pair(0, 0), Pair(1, None), Pair(2, 1)));
}

TEST(PairSubtitles, TheSameBytesOfAnotherSizeAreAnotherPicture) {
  const auto stream = [](std::int64_t start, unsigned lastColumn) {
    return test::StreamOf(IndexPrimaryStream(
        PacketBuilder().Time(start).Delay(10).Area(0, lastColumn, 2, 5).Build(), InvalidFirst::IsPassed));
  };
  EXPECT_THAT(PairSubtitles(stream(0, 7), stream(900001, 7)), ElementsAre(Pair(0, 0)));
  EXPECT_THAT(PairSubtitles(stream(0, 7), stream(900001, 15)), ElementsAre(Pair(0, None), Pair(None, 0)));
}

TEST(PairSubtitles, TheSamePictureAmongOthersIsPaired) {
  EXPECT_THAT(Pairs({{0, 1}, {20000, 5}, {40000, 2}}, {{900001, 8}, {920001, 5}, {940001, 9}}),
              testing::Contains(Pair(1, 1)));
}

TEST(PairSubtitles, StartGoesBeforePicture) {
  // Each picture has moved to the next one's start.
  EXPECT_THAT(Pairs({{0, 1}, {20000, 2}}, {{0, 9}, {20000, 1}}), ElementsAre(Pair(0, 0), Pair(1, 1)));
}

TEST(PairSubtitles, StartAndPictureTogetherGoBeforeAll) {
  // The start of subtitle 1 has two subtitles now; the second of them is the old one.
  EXPECT_THAT(Pairs({{0, 1}, {20000, 2}}, {{0, 9}, {0, 1}, {20000, 2}}),
              ElementsAre(Pair(None, 0), Pair(0, 1), Pair(1, 2)));
}

TEST(PairSubtitles, PicturesThatRepeatArePairedInTheirOrder) {
  EXPECT_THAT(Pairs({{0, 7}, {20000, 7}, {40000, 1}, {60000, 7}},
                    {{500000, 7}, {520000, 7}, {540000, 1}, {560000, 7}}),
              ElementsAre(Pair(0, 0), Pair(1, 1), Pair(2, 2), Pair(3, 3)));
}

TEST(PairSubtitles, PicturesThatRepeatArePairedOnEitherSideOfOneThatDoesNot) {
  EXPECT_THAT(Pairs({{0, 8}, {20000, 7}, {40000, 7}, {60000, 1}, {80000, 9}},
                    {{500000, 6}, {520000, 7}, {540000, 7}, {560000, 1}, {580000, 5}}),
              testing::IsSupersetOf({Pair(1, 1), Pair(2, 2), Pair(3, 3)}));
  EXPECT_THAT(Pairs({{0, 8}, {20000, 1}, {40000, 7}, {60000, 7}, {80000, 9}},
                    {{500000, 6}, {520000, 1}, {540000, 7}, {560000, 7}, {580000, 5}}),
              testing::IsSupersetOf({Pair(1, 1), Pair(2, 2), Pair(3, 3)}));
}

TEST(PairSubtitles, OthersArePairedWhereTheyAreShownTogether) {
  // Other pictures, 45 ticks later; one of them is gone.
  EXPECT_THAT(Pairs({{0, 1}, {20000, 2}, {40000, 3}}, {{45, 11}, {40045, 13}}),
              ElementsAre(Pair(0, 0), Pair(1, None), Pair(2, 1)));
}

TEST(PairSubtitles, HalfOfTheShorterOnesTimeIsEnough) {
  EXPECT_THAT(Pairs({{0, 1, 10}}, {{5000, 2, 10}}), ElementsAre(Pair(0, 0)));
  EXPECT_THAT(Pairs({{0, 1, 10}}, {{5001, 2, 10}}), ElementsAre(Pair(0, None), Pair(None, 0)));
}

TEST(PairSubtitles, OnesThatAreShownForNoTimeShareNone) {
  EXPECT_THAT(Pairs({{0, 1, 0}}, {{500000, 2, 0}}), ElementsAre(Pair(0, None), Pair(None, 0)));
}

TEST(PairSubtitles, OrdersAreKept) {
  // Two subtitles changed places: one pair holds, the other would cross it.
  const auto pairs = Pairs({{0, 1}, {20000, 2}}, {{500000, 2}, {520000, 1}});

  EXPECT_EQ(pairs.size(), 3U);
}

TEST(PairSubtitles, AsManyAsCanKeepTheirOrderArePaired) {
  const auto pairs = Pairs({{0, 1}, {20000, 2}, {40000, 3}}, {{500000, 2}, {520000, 3}, {540000, 1}});
  EXPECT_THAT(pairs, testing::IsSupersetOf({Pair(1, 0), Pair(2, 1)}));
}

TEST(PairSubtitles, TimesAtBothEndsOfTheirRangeAreTaken) {
  constexpr std::int64_t EarliestStart = std::numeric_limits<std::int64_t>::min();
  constexpr std::int64_t LatestStart = std::numeric_limits<std::int64_t>::max();

  EXPECT_THAT(Pairs({{EarliestStart, 1}, {LatestStart, 2}}, {{LatestStart, 3}}),
              ElementsAre(Pair(0, None), Pair(1, 0)));
}

/// Whether each stream's subtitles all occur, once and in order.
bool CoversBoth(const std::vector<SubtitlePair>& pairs, std::size_t first, std::size_t second) {
  std::size_t nextFirst = 0;
  std::size_t nextSecond = 0;
  for (const SubtitlePair& pair : pairs) {
    if ((!pair.First && !pair.Second) || (pair.First && *pair.First != nextFirst++) ||
        (pair.Second && *pair.Second != nextSecond++)) {
      return false;
    }
  }
  return nextFirst == first && nextSecond == second;
}

TEST(PairSubtitles, EverySubtitleIsInOnePairAndTheOrdersHold) {
  std::mt19937 random(17);
  for (int round = 0; round < 400; ++round) {
    std::vector<Subtitle> first(random() % 30);
    std::vector<Subtitle> second(random() % 30);
    for (std::vector<Subtitle>* stream : {&first, &second}) {
      for (Subtitle& subtitle : *stream) {
        subtitle = {.Start = static_cast<std::int64_t>(random() % 12) * 7000,
                    .Picture = static_cast<unsigned>(random() % 6),
                    .Delay = static_cast<unsigned>(random() % 20)};
      }
    }
    ASSERT_TRUE(CoversBoth(Pairs(first, second), first.size(), second.size())) << round;
  }
}

TEST(PairSubtitles, OfAStreamWithChangesOnlyTheChangedAreAlone) {
  std::mt19937 random(18);
  for (int round = 0; round < 24; ++round) {
    std::vector<Subtitle> first(200);
    for (std::size_t i = 0; i < first.size(); ++i) {
      first[i] = {.Start = static_cast<std::int64_t>(i) * 50000, .Picture = static_cast<unsigned>(i % 90)};
    }
    std::vector<Subtitle> second = first;
    const std::size_t out = random() % second.size();
    second.erase(second.begin() + static_cast<std::ptrdiff_t>(out));
    const std::int64_t later = round % 2 == 0 ? 0 : 12345678;
    for (Subtitle& subtitle : second) {
      subtitle.Start += later;
    }

    const auto pairs = Pairs(first, second);

    ASSERT_EQ(pairs.size(), 200U) << round;
    ASSERT_EQ(pairs[out], Pair(out, None)) << round;
  }
}

}  // namespace
}  // namespace quillmark
