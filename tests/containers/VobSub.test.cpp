#include "containers/VobSub.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

#include "base/FilePath.h"
#include "tests/containers/FailingSource.h"
#include "tests/containers/PackBuilder.h"
#include "tests/support/FolderTest.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/UnreadableFile.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::Pack;
using test::PackHead;
using test::Part;
using test::SoundUnit;
using test::SubtitlePacket;
using test::SupPacket;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

ReadContainerResult ReadPair(const std::string& index, const Bytes& packs) {
  MemorySource source(packs);
  return ReadVobSubPair(ParseVobSubIndex(index), source);
}

Container Read(const std::string& index, const Bytes& packs) {
  auto read = ReadPair(index, packs);
  return read && *read ? std::move(**read) : Container();
}

/// Of the only track.
Track TrackIn(const std::string& index, const Bytes& packs) {
  Container container = Read(index, packs);
  return container.Tracks.size() == 1 ? std::move(container.Tracks[0]) : Track();
}

const Bytes A = SoundUnit(38, 0x1A);
const Bytes B = SoundUnit(40, 0x1B);
const Bytes C = SoundUnit(42, 0x1C);

/// Three packs, at 0, 0x800 and 0x1000, with units at 1, 2 and 3 seconds.
Bytes ThreePacks() {
  return Join(
      {Pack(SubtitlePacket(A, 90000)), Pack(SubtitlePacket(B, 180000)), Pack(SubtitlePacket(C, 270000))});
}
const std::string ThreeLines =
    "id: en, index: 0\n"
    "timestamp: 00:00:01:000, filepos: 000000000\n"
    "timestamp: 00:00:02:000, filepos: 000000800\n"
    "timestamp: 00:00:03:000, filepos: 000001000\n";
Bytes ThreeSubtitles() {
  return Join({SupPacket(90000, A), SupPacket(180000, B), SupPacket(270000, C)});
}

TEST(VobSub, UnitsTimesAndSettings) {
  const Track track = TrackIn(
      "palette: 112233\nid: en, index: 0\nalt: Full\n"
      "timestamp: 00:00:01:000, filepos: 000000000\n"
      "timestamp: 00:00:02:000, filepos: 000000800\n"
      "timestamp: 00:00:03:000, filepos: 000001000\n",
      ThreePacks());
  EXPECT_EQ(track.Id, "0x20");
  EXPECT_EQ(track.Language, "en");
  EXPECT_EQ(track.Name, "Full");
  EXPECT_EQ(track.Packets, ThreeSubtitles());
  ASSERT_TRUE(track.Palette);
  EXPECT_EQ((*track.Palette)[0], 0x332211U);
  EXPECT_THAT(track.Notes, IsEmpty());
}

TEST(VobSub, WithoutAPaletteLineThereIsNone) {
  EXPECT_FALSE(TrackIn(ThreeLines, ThreePacks()).Palette);
}

TEST(VobSub, IndexTimeIsStrongerThanTheTimeStamp) {
  EXPECT_EQ(TrackIn("id: en, index: 0\ntimestamp: 00:00:09:000, filepos: 000000800\n", ThreePacks()).Packets,
            SupPacket(810000, B));
}

TEST(VobSub, TimeStampHasTheTicks) {
  EXPECT_EQ(TrackIn("id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\n", Pack(SubtitlePacket(A, 90077)))
                .Packets,
            SupPacket(90077, A));
}

TEST(VobSub, PacksThatNoLineNamesAreLeftOut) {
  EXPECT_EQ(TrackIn("id: en, index: 0\ntimestamp: 00:00:02:000, filepos: 000000800\n", ThreePacks()).Packets,
            SupPacket(180000, B));
}

TEST(VobSub, UnitSizeIsStrongerThanTheNextPosition) {
  // The second line leads into the first unit.
  const Bytes packs = Join({Pack(SubtitlePacket(Part(A, 0, 20), 90000)),
                            Pack(SubtitlePacket(Part(A, 20, 38))), Pack(SubtitlePacket(B, 180000))});
  const Track track = TrackIn(ThreeLines, packs);
  EXPECT_EQ(track.Packets, Join({SupPacket(90000, A), SupPacket(270000, B)}));
  EXPECT_THAT(track.Notes, ElementsAre("line 3: no whole subtitle stands at position 0x800"));
}

TEST(VobSub, UnitsWithoutTimeStampsStartWhereLinesSay) {
  const Bytes packs = Join({Pack(SubtitlePacket(A)), Pack(SubtitlePacket(B)), Pack(SubtitlePacket(C))});
  EXPECT_EQ(TrackIn(ThreeLines, packs).Packets, ThreeSubtitles());
}

TEST(VobSub, UnitsWithoutTimeStampsMayBeShownInAnotherOrder) {
  const std::string lines =
      "id: en, index: 0\n"
      "timestamp: 00:00:01:000, filepos: 000000800\n"
      "timestamp: 00:00:02:000, filepos: 000000000\n";
  EXPECT_EQ(TrackIn(lines, Join({Pack(SubtitlePacket(A)), Pack(SubtitlePacket(B))})).Packets,
            Join({SupPacket(90000, B), SupPacket(180000, A)}));
}

TEST(VobSub, OtherTimeStampsInsideAUnit) {
  const Bytes packs = Join({Pack(SubtitlePacket(Part(A, 0, 20), 90000)),
                            Pack(SubtitlePacket(Part(A, 20, 38), 90500)), Pack(SubtitlePacket(B, 180000))});
  const Track track = TrackIn(
      "id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\ntimestamp: 00:00:02:000, filepos: 1000\n",
      packs);
  EXPECT_EQ(track.Packets, Join({SupPacket(90000, A), SupPacket(180000, B)}));
}

TEST(VobSub, CutUnitEndsWhereTheNextLinesUnitStarts) {
  const Bytes packs = Join({Pack(SubtitlePacket(Part(A, 0, 20), 90000)), Pack(SubtitlePacket(B, 180000)),
                            Pack(SubtitlePacket(C, 270000))});
  const Track track = TrackIn(ThreeLines, packs);
  EXPECT_EQ(track.Packets, Join({SupPacket(180000, B), SupPacket(270000, C)}));
  EXPECT_THAT(track.Notes, ElementsAre("1 subtitle is cut short and left out (at byte 14)",
                                       "line 2: no whole subtitle stands at position 0x0"));
}

TEST(VobSub, PositionOutsideIsToldAndTheOthersAreRead) {
  const Track track = TrackIn(ThreeLines +
                                  "timestamp: 00:00:04:000, filepos: 000001800\n"
                                  "timestamp: 00:00:05:000, filepos: 000002000\n",
                              ThreePacks());
  EXPECT_EQ(track.Packets, ThreeSubtitles());
  EXPECT_THAT(
      track.Notes,
      ElementsAre("line 5: position 0x1800 is outside the .sub, which has 6144 bytes; the same of 1 more"));
}

TEST(VobSub, PositionOutsideIsToldWhereTheTimeFindsTheSubtitle) {
  const Track track = TrackIn(
      "id: en, index: 0\n"
      "timestamp: 00:00:01:000, filepos: 000001800\n"
      "timestamp: 00:00:02:000, filepos: 000001900\n"
      "timestamp: 00:00:03:000, filepos: 000001A00\n",
      ThreePacks());
  EXPECT_EQ(track.Packets, ThreeSubtitles());
  EXPECT_THAT(track.Notes,
              ElementsAre("line 2: position 0x1800 is outside the .sub, which has 6144 bytes; the "
                          "subtitle of its time was taken; the same of 2 more"));
}

TEST(VobSub, PositionInsideAPackIsTheNextUnit) {
  const Track track =
      TrackIn("id: en, index: 0\ntimestamp: 00:00:09:000, filepos: 000000123\n", ThreePacks());
  EXPECT_EQ(track.Packets, SupPacket(810000, B));
  EXPECT_THAT(track.Notes,
              ElementsAre("line 2: no subtitle starts at position 0x123; the next one was taken"));
}

TEST(VobSub, PositionOfThePacketItself) {
  EXPECT_EQ(TrackIn("id: en, index: 0\ntimestamp: 00:00:02:000, filepos: 00000080e\n", ThreePacks()).Packets,
            SupPacket(180000, B));
}

TEST(VobSub, DecimalPositions) {
  const Track track = TrackIn(
      "id: en, index: 0\n"
      "timestamp: 00:00:11:000, filepos: 000000000\n"
      "timestamp: 00:00:12:000, filepos: 000002048\n"
      "timestamp: 00:00:13:000, filepos: 000004096\n",
      ThreePacks());
  EXPECT_EQ(track.Packets, Join({SupPacket(990000, A), SupPacket(1080000, B), SupPacket(1170000, C)}));
  EXPECT_THAT(track.Notes,
              ElementsAre("line 3: no subtitle starts at position 0x2048, but at 2048 in decimal; "
                          "the same of 1 more"));
}

TEST(VobSub, PositionOfNoPackGivesWayToTheTime) {
  const Track track =
      TrackIn("id: en, index: 0\ntimestamp: 00:00:03:000, filepos: 000000123\n", ThreePacks());
  EXPECT_EQ(track.Packets, SupPacket(270000, C));
  EXPECT_THAT(track.Notes,
              ElementsAre("line 2: no subtitle starts at position 0x123; the one of its time was taken"));
  // A millisecond early, and as much late.
  EXPECT_EQ(TrackIn("id: en, index: 0\ntimestamp: 00:00:02:999, filepos: 000000123\n", ThreePacks()).Packets,
            SupPacket(270000, C));
  EXPECT_EQ(TrackIn("id: en, index: 0\ntimestamp: 00:00:03:001, filepos: 000000123\n", ThreePacks()).Packets,
            SupPacket(270000, C));
}

TEST(VobSub, UnitThatWasFoundByItsTimeIsNotFoundAgain) {
  // Units at 1, 2 and 3 seconds; the second line gets the one behind its position.
  const Track track = TrackIn(
      "id: en, index: 0\n"
      "timestamp: 00:00:01:000, filepos: 000000123\n"
      "timestamp: 00:00:01:000, filepos: 000000123\n"
      "timestamp: 00:00:03:000, filepos: 000001000\n",
      ThreePacks());
  EXPECT_EQ(track.Packets, Join({SupPacket(90000, A), SupPacket(90000, B), SupPacket(270000, C)}));
}

/// Packs at 0, 0x800, 0x1000 and 0x1800, with units at 1, 5, 12 and 30 seconds.
Bytes UnevenPacks() {
  return Join({Pack(SubtitlePacket(A, 90000)), Pack(SubtitlePacket(B, 450000)),
               Pack(SubtitlePacket(C, 1080000)), Pack(SubtitlePacket(A, 2700000))});
}

TEST(VobSub, PositionsOfOtherTimesGiveWayToTheTimes) {
  // Each line but the last has the position of the one after it.
  const Track track = TrackIn(
      "id: en, index: 0\n"
      "timestamp: 00:00:01:000, filepos: 000000800\n"
      "timestamp: 00:00:05:000, filepos: 000001000\n"
      "timestamp: 00:00:12:000, filepos: 000001800\n"
      "timestamp: 00:00:40:000, filepos: 000001800\n",
      UnevenPacks());
  EXPECT_EQ(track.Packets,
            Join({SupPacket(90000, A), SupPacket(450000, B), SupPacket(1080000, C), SupPacket(3600000, A)}));
  EXPECT_THAT(
      track.Notes,
      ElementsAre("line 2: the subtitle at position 0x800 is of another time; the one of its time was "
                  "taken; the same of 2 more",
                  "line 5: the subtitle has the time stamp 00:00:30.00, which is not the line's; the "
                  "line's time was taken"));
}

TEST(VobSub, PositionsOfOtherTimesStayWhereHalfOfTheTimesLeadNowhere) {
  const Track track = TrackIn(
      "id: en, index: 0\n"
      "timestamp: 00:00:01:000, filepos: 000000800\n"
      "timestamp: 00:00:05:000, filepos: 000001000\n"
      "timestamp: 00:00:20:000, filepos: 000001800\n"
      "timestamp: 00:00:50:000, filepos: 000000000\n",
      UnevenPacks());
  EXPECT_EQ(track.Packets,
            Join({SupPacket(90000, B), SupPacket(450000, C), SupPacket(1800000, A), SupPacket(4500000, A)}));
}

TEST(VobSub, PositionsOfOtherTimesStayWhereTheyAreHalfOfAll) {
  const Track track = TrackIn(
      "id: en, index: 0\n"
      "timestamp: 00:00:01:000, filepos: 000000000\n"
      "timestamp: 00:00:05:000, filepos: 000001000\n"
      "timestamp: 00:00:12:000, filepos: 000000800\n"
      "timestamp: 00:00:30:000, filepos: 000001800\n",
      UnevenPacks());
  EXPECT_EQ(track.Packets,
            Join({SupPacket(90000, A), SupPacket(450000, C), SupPacket(1080000, B), SupPacket(2700000, A)}));
}

TEST(VobSub, FewPositionsOfOtherTimesAreToldAlone) {
  const Track track = TrackIn(
      "id: en, index: 0\n"
      "timestamp: 00:00:01:000, filepos: 000000000\n"
      "timestamp: 00:00:05:000, filepos: 000001000\n"
      "timestamp: 00:00:12:000, filepos: 000001000\n"
      "timestamp: 00:00:30:000, filepos: 000001800\n",
      UnevenPacks());
  EXPECT_EQ(track.Packets,
            Join({SupPacket(90000, A), SupPacket(450000, C), SupPacket(1080000, C), SupPacket(2700000, A)}));
  EXPECT_THAT(track.Notes,
              ElementsAre("line 3: the subtitle has the time stamp 00:00:12.00, which is not the "
                          "line's; the line's time was taken"));
}

TEST(VobSub, LinesOfAnotherPaceKeepTheirPositions) {
  // Twice as slow as the time stamps; one line has the time of another unit by chance.
  const Track track = TrackIn(
      "id: en, index: 0\n"
      "timestamp: 00:00:05:000, filepos: 000000000\n"
      "timestamp: 00:00:10:000, filepos: 000000800\n"
      "timestamp: 00:00:24:000, filepos: 000001000\n"
      "timestamp: 00:01:00:000, filepos: 000001800\n",
      UnevenPacks());
  EXPECT_EQ(track.Packets,
            Join({SupPacket(450000, A), SupPacket(900000, B), SupPacket(2160000, C), SupPacket(5400000, A)}));
  EXPECT_THAT(track.Notes,
              ElementsAre("line 2: the subtitle has the time stamp 00:00:01.00, which is not the "
                          "line's; the line's time was taken; the same of 3 more"));
}

TEST(VobSub, UnitsWithoutTimesOfTheirOwnAreNotTold) {
  const Bytes packs =
      Join({Pack(SubtitlePacket(A, 0)), Pack(SubtitlePacket(B, 0)), Pack(SubtitlePacket(C, 0))});
  const Track track = TrackIn(
      "id: en, index: 0\n"
      "timestamp: 00:00:00:000, filepos: 000000000\n"
      "timestamp: 00:00:07:000, filepos: 000000800\n"
      "timestamp: 00:00:09:000, filepos: 000001000\n",
      packs);
  EXPECT_EQ(track.Packets, Join({SupPacket(0, A), SupPacket(630000, B), SupPacket(810000, C)}));
  EXPECT_THAT(track.Notes, IsEmpty());
}

TEST(VobSub, UnitsWithoutTimesStartWhereTheLinesSayInDecimalToo) {
  const Bytes packs =
      Join({Pack(SubtitlePacket(A, 90000)), Pack(SubtitlePacket(B)), Pack(SubtitlePacket(C))});
  const Track track = TrackIn(
      "id: en, index: 0\n"
      "timestamp: 00:00:01:000, filepos: 000000000\n"
      "timestamp: 00:00:07:000, filepos: 000002048\n"
      "timestamp: 00:00:09:000, filepos: 000004096\n",
      packs);
  EXPECT_EQ(track.Packets, Join({SupPacket(90000, A), SupPacket(630000, B), SupPacket(810000, C)}));
}

/// A unit of 65,000 bytes in two packets.
Bytes LargeUnitPacks() {
  const Bytes unit = SoundUnit(65000);
  return Join(
      {PackHead(), SubtitlePacket(Part(unit, 0, 40000), 90000), SubtitlePacket(Part(unit, 40000, 65000))});
}

/// So many lines of one language, all of which name the first unit.
std::string LinesOfOneUnit(int lines) {
  std::string language = "id: en, index: 0\n";
  for (int i = 0; i < lines; ++i) {
    language += "timestamp: 00:" + std::to_string(10 + i / 60) + ":" + std::to_string(10 + i % 50) + ":" +
                std::to_string(100 + i) + ", filepos: 0\n";
  }
  return language;
}

TEST(VobSub, LinesThatNameOneUnitOverAndOverAreRefused) {
  // Two languages of 135 lines each, in a .sub of 65,039 bytes: no more than the lines of one language fit
  // four times the .sub and 16 MiB.
  const Bytes packs = LargeUnitPacks();
  ASSERT_EQ(packs.size(), 65039U);
  const std::string language = LinesOfOneUnit(135);
  EXPECT_EQ(TrackIn(language, packs).Packets.size(), 135U * 65010U);
  EXPECT_EQ(ReadPair(language + language, packs).Reason(),
            "the index names the same subtitles over and over: 17552700 bytes of them out of a .sub of 65039 "
            "bytes");
}

TEST(VobSub, LinesMayNameFourTimesTheSubAnd16MibAndNoByteMore) {
  // 264 lines of 65,010 bytes are 17,162,640: four times 96,356, and 16,777,216.
  const std::string index = LinesOfOneUnit(132) + LinesOfOneUnit(132);
  const Bytes packs = Join({LargeUnitPacks(), Bytes(31317, 0xFF)});
  ASSERT_EQ(packs.size(), 96356U);
  EXPECT_TRUE(ReadPair(index, packs));
  EXPECT_FALSE(ReadPair(index, Join({LargeUnitPacks(), Bytes(31316, 0xFF)})));
}

TEST(VobSub, OneUnitAtTwoTimes) {
  EXPECT_EQ(
      TrackIn("id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\ntimestamp: 00:00:07:000, filepos: 0\n",
              ThreePacks())
          .Packets,
      Join({SupPacket(90000, A), SupPacket(630000, A)}));
}

TEST(VobSub, OneUnitAtTwoTimesByThePositionOfItsPacket) {
  EXPECT_EQ(
      TrackIn(
          "id: en, index: 0\ntimestamp: 00:00:02:000, filepos: 80e\ntimestamp: 00:00:07:000, filepos: 80e\n",
          ThreePacks())
          .Packets,
      Join({SupPacket(180000, B), SupPacket(630000, B)}));
}

TEST(VobSub, LineThatStandsTwiceCountsOnce) {
  EXPECT_EQ(
      TrackIn("id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\ntimestamp: 00:00:01:000, filepos: 0\n",
              ThreePacks())
          .Packets,
      SupPacket(90000, A));
}

TEST(VobSub, UnsortedLinesAreSorted) {
  const Track track = TrackIn(
      "id: en, index: 0\ntimestamp: 00:00:02:000, filepos: 800\ntimestamp: 00:00:01:000, filepos: 0\n",
      ThreePacks());
  EXPECT_EQ(track.Packets, Join({SupPacket(90000, A), SupPacket(180000, B)}));
  EXPECT_THAT(track.Notes, ElementsAre("the lines are not in the order of time; they were sorted"));
}

TEST(VobSub, NegativeTimesAreThoseOfTheTimeStamps) {
  EXPECT_EQ(TrackIn("id: en, index: 0\ntimestamp: -00:00:01:000, filepos: 0\n", ThreePacks()).Packets,
            SupPacket(90000, A));
}

TEST(VobSub, DelayMayLeadBeforeZero) {
  const Track track =
      TrackIn("id: en, index: 0\ndelay: -00:00:02:000\ntimestamp: 00:00:01:000, filepos: 0\n", ThreePacks());
  EXPECT_EQ(track.Packets, SupPacket(-90000, A));
  EXPECT_THAT(track.Notes, ElementsAre("1 subtitle starts before 0"));
}

TEST(VobSub, SubstreamUnlikeTheIndexIsTakenAndTold) {
  const Track track = TrackIn("id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\n",
                              Pack(SubtitlePacket(A, 90000, 0x23)));
  EXPECT_EQ(track.Packets, SupPacket(90000, A));
  EXPECT_THAT(track.Notes, ElementsAre("line 2: the subtitle belongs to substream 0x23, not 0x20"));
}

TEST(VobSub, UnitOfTheLanguageInALaterPackIsNotTheOneThatALineNames) {
  const Track track = TrackIn("id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\n",
                              Join({Pack(SubtitlePacket(A, 90000, 0x23)), Pack(SubtitlePacket(B, 180000))}));
  EXPECT_EQ(track.Packets, SupPacket(90000, A));
}

TEST(VobSub, OfTwoUnitsInAPackThatOfTheLanguage) {
  const Bytes packs = Pack(Join({SubtitlePacket(A, 90000, 0x20), SubtitlePacket(B, 90000, 0x21)}));
  EXPECT_EQ(TrackIn("id: de, index: 1\ntimestamp: 00:00:01:000, filepos: 0\n", packs).Packets,
            SupPacket(90000, B));
}

TEST(VobSub, LanguagesWithMixedPacks) {
  const Bytes packs = Join({Pack(SubtitlePacket(Part(A, 0, 20), 90000)), Pack(SubtitlePacket(B, 90000, 0x21)),
                            Pack(SubtitlePacket(Part(A, 20, 38))), Pack(SubtitlePacket(C, 180000, 0x21))});
  const Container container = Read(
      "id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\n"
      "id: de, index: 1\ntimestamp: 00:00:01:000, filepos: 800\ntimestamp: 00:00:02:000, filepos: 1800\n",
      packs);
  ASSERT_EQ(container.Tracks.size(), 2U);
  EXPECT_EQ(container.Tracks[0].Packets, SupPacket(90000, A));
  EXPECT_EQ(container.Tracks[1].Language, "de");
  EXPECT_EQ(container.Tracks[1].Packets, Join({SupPacket(90000, B), SupPacket(180000, C)}));
}

TEST(VobSub, LanguagesOfTheSameIndex) {
  const Container container = Read(
      "id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\n"
      "id: de, index: 0\ntimestamp: 00:00:02:000, filepos: 800\n",
      ThreePacks());
  ASSERT_EQ(container.Tracks.size(), 2U);
  EXPECT_EQ(container.Tracks[0].Packets, SupPacket(90000, A));
  EXPECT_EQ(container.Tracks[1].Packets, SupPacket(180000, B));
}

TEST(VobSub, LanguagesMayHaveTheSameUnitsAtTimesOfTheirOwn) {
  const Container container = Read(
      "id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\ntimestamp: 00:00:02:000, filepos: 800\n"
      "id: de, index: 0\ntimestamp: 00:00:03:000, filepos: 0\ntimestamp: 00:00:04:000, filepos: 800\n",
      Join({Pack(SubtitlePacket(A, 90000)), Pack(SubtitlePacket(B, 180000))}));
  ASSERT_EQ(container.Tracks.size(), 2U);
  EXPECT_EQ(container.Tracks[0].Packets, Join({SupPacket(90000, A), SupPacket(180000, B)}));
  EXPECT_EQ(container.Tracks[1].Packets, Join({SupPacket(270000, A), SupPacket(360000, B)}));
}

TEST(VobSub, LanguageWithoutSubtitlesIsNoTrack) {
  const Container container = Read("id: fr, index: 5\n" + ThreeLines, ThreePacks());
  ASSERT_EQ(container.Tracks.size(), 1U);
  EXPECT_EQ(container.Tracks[0].Language, "en");
}

TEST(VobSub, EncryptedUnitsAreSaid) {
  const Bytes encrypted = test::Pes{.Time = 90000, .First = 0xB1, .Further = {}}.With(Join({{0x20}, A}));
  const Container container =
      Read("id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\n", Pack(encrypted));
  EXPECT_THAT(container.Tracks, IsEmpty());
  EXPECT_THAT(container.Notes, ElementsAre("the file is encrypted",
                                           "en: 1 packet is encrypted (at byte 14); its subtitle is left out",
                                           "en: line 2: no whole subtitle stands at position 0x0"));
}

TEST(VobSub, WithoutAnyWholeUnitThereIsNothingEncrypted) {
  const Container container = Read("id: en, index: 0\ntimestamp: 00:00:01:000, filepos: 0\n",
                                   Pack(SubtitlePacket(Part(A, 0, 20), 90000)));
  EXPECT_THAT(container.Tracks, IsEmpty());
  EXPECT_THAT(container.Notes, ElementsAre("en: 1 subtitle is cut short and left out (at byte 14)",
                                           "en: line 2: no whole subtitle stands at position 0x0"));
}

TEST(VobSub, SettingsThatAreNotAppliedAreTold) {
  EXPECT_THAT(Read("custom colors: ON, tridx: 0000, colors: 1, 2, 3, 4\nforced subs: ON\ntime offset: 100\n" +
                       ThreeLines,
                   ThreePacks())
                  .Notes,
              ElementsAre("the index has custom colours on; the subtitles keep their own",
                          "the index shows forced subtitles alone; all are read",
                          "the index has a time offset of 100 ms, which is not applied"));
}

TEST(VobSub, OtherKindOfSubIsRefused) {
  const std::string text = "{0}{25}Hello";
  EXPECT_EQ(ReadPair(ThreeLines, test::BytesOf(text)).Reason(),
            "the .sub is none of a VobSub pair: no pack header of a program stream is in it");
}

TEST(VobSub, EveryStartOfASubGivesWhatItHasWhole) {
  const Bytes packs = ThreePacks();
  for (std::size_t length = 0; length < packs.size(); length += length % 2048 < 100 ? 1 : 97) {
    // A unit is whole at the end of its packet: 14 + 14 + 1 bytes and its own into the pack.
    Bytes expected;
    for (const auto& [end, packet] :
         {std::pair(29U + 38U, SupPacket(90000, A)), std::pair(0x800U + 29U + 40U, SupPacket(180000, B)),
          std::pair(0x1000U + 29U + 42U, SupPacket(270000, C))}) {
      if (length >= end) {
        expected = Join({expected, packet});
      }
    }
    EXPECT_EQ(TrackIn(ThreeLines, Part(packs, 0, length)).Packets, expected) << length;
  }
}

class VobSubFiles : public test::FolderTest {
 protected:
  std::filesystem::path File(const QString& name, const std::string& content) const {
    return PathFromUtf8(Put(name, content).toStdString());
  }
  std::filesystem::path File(const QString& name, const Bytes& content) const {
    return File(name, std::string(content.begin(), content.end()));
  }
};

TEST_F(VobSubFiles, EitherFileOfAPair) {
  const auto index = File("a.idx", ThreeLines);
  const auto packs = File("a.sub", ThreePacks());
  for (const auto& path : {index, packs}) {
    const auto read = ReadContainer(path);
    ASSERT_TRUE(read && *read) << read.Reason();
    ASSERT_EQ((*read)->Tracks.size(), 1U);
    EXPECT_EQ((*read)->Tracks[0].Packets, ThreeSubtitles());
    EXPECT_EQ((*read)->Tracks[0].Language, "en");
  }
}

TEST_F(VobSubFiles, EndingsInAnyCase) {
  const auto index = File("a.IDX", ThreeLines);
  File("a.SUB", ThreePacks());
  EXPECT_TRUE(ReadContainer(index));
  const auto mixed = File("b.idx", ThreeLines);
  File("b.SUB", ThreePacks());
  EXPECT_TRUE(ReadContainer(mixed));
}

TEST_F(VobSubFiles, EndingsInMixedCase) {
  const auto index = File("a.idx", ThreeLines);
  const auto packs = File("a.Sub", ThreePacks());
  for (const auto& path : {index, packs}) {
    const auto read = ReadContainer(path);
    ASSERT_TRUE(read && *read) << read.Reason();
    ASSERT_EQ((*read)->Tracks.size(), 1U);
    EXPECT_EQ((*read)->Tracks[0].Language, "en");
  }
}

TEST_F(VobSubFiles, OfSeveralNamesTheOneThatIsMostAlike) {
  const auto index = File("a.idx", ThreeLines);
  File("A.sub", "no");
  File("a.Sub", ThreePacks());
  File("a.suB", "no");
  EXPECT_TRUE(ReadContainer(index));
  File("a.sub", "no");
  EXPECT_FALSE(ReadContainer(index));
}

TEST_F(VobSubFiles, IndexWithoutItsSub) {
  EXPECT_EQ(ReadContainer(File("a.idx", ThreeLines)).Reason(), "there is no a.sub beside it");
}

TEST_F(VobSubFiles, SubWithoutItsIndexIsReadByItself) {
  const auto read = ReadContainer(File("a.sub", ThreePacks()));
  ASSERT_TRUE(read && *read);
  ASSERT_EQ((*read)->Tracks.size(), 1U);
  EXPECT_EQ((*read)->Tracks[0].Packets, ThreeSubtitles());
  EXPECT_THAT((*read)->Notes,
              ElementsAre("there is no .idx beside it: times are those of the .sub, languages are unknown"));
}

TEST_F(VobSubFiles, IndexWithoutLinesLeavesTheSubToItself) {
  File("a.sub", ThreePacks());
  const auto read = ReadContainer(File("a.idx", "# VobSub index file, v7\n"));
  ASSERT_TRUE(read && *read);
  EXPECT_EQ((*read)->Tracks.size(), 1U);
  EXPECT_THAT((*read)->Notes, ElementsAre("the .idx names no subtitle: the .sub is read by itself"));
}

TEST_F(VobSubFiles, FaultOfTheSubIsToldAsItsOwn) {
  const auto index = File("a.idx", "# VobSub index file, v7\n");
  const auto packs = File("a.sub", "hello");
  EXPECT_EQ(ReadContainer(index).Reason(), "its .sub: no pack header of a program stream is in it");
  EXPECT_EQ(ReadContainer(packs).Reason(), "no pack header of a program stream is in it");
}

TEST_F(VobSubFiles, OtherTextIsNoIndex) {
  File("a.sub", ThreePacks());
  EXPECT_EQ(ReadContainer(File("a.idx", "hello\n")).Reason(), "it is no VobSub index");
  EXPECT_EQ(ReadContainer(PathFromUtf8(Path("a.sub").toStdString())).Reason(),
            "the .idx beside it is no VobSub index");
}

TEST_F(VobSubFiles, SubOfAnotherKind) {
  EXPECT_EQ(ReadContainer(File("a.sub", "{0}{25}Hello")).Reason(),
            "no pack header of a program stream is in it");
}

TEST_F(VobSubFiles, IndexIsKnownByItsFirstLine) {
  EXPECT_EQ(FormatOf(File("a.txt", "# VobSub index file, v7\n")).Id, "vobsub");
}

TEST(VobSub, SubThatCannotBeReadGivesItsReason) {
  test::FailingSource source(ThreePacks(), 2048);
  EXPECT_EQ(ReadVobSubPair(ParseVobSubIndex(ThreeLines), source).Reason(), "the disk is damaged");
}

TEST_F(VobSubFiles, MissingSubHasItsReason) {
  const auto packs = PathFromUtf8(Path("a.sub").toStdString());
  EXPECT_EQ(ReadVobSub(packs).Reason(), "No such file or directory");
  File("a.idx", ThreeLines);
  EXPECT_EQ(ReadVobSub(packs).Reason(), "No such file or directory");
}

TEST_F(VobSubFiles, FileLongerThanAnyIndexIsRefused) {
  const auto index = File("a.idx", "");
  File("a.sub", ThreePacks());
  std::filesystem::resize_file(index, (std::uintmax_t{64} << 20U) + 1);
  EXPECT_EQ(ReadVobSub(index).Reason(), "it is too long for an index");
  std::filesystem::resize_file(index, std::uintmax_t{64} << 20U);
  EXPECT_NE(ReadVobSub(index).Reason(), "it is too long for an index");
}

TEST_F(VobSubFiles, IndexThatCannotBeReadIsTold) {
  const auto packs = File("a.sub", ThreePacks());
  const auto index = PathFromUtf8(Path("a.idx").toStdString());
  if (!test::LinkUnreadableFile(index)) {
    GTEST_SKIP() << test::NeedsUnreadableFile;
  }
  EXPECT_EQ(ReadVobSub(index).Reason(), "it cannot be read");
  EXPECT_EQ(ReadVobSub(packs).Reason(), "its .idx cannot be read: it cannot be read");
}

TEST_F(VobSubFiles, SubThatMayNotBeReadIsTold) {
  if (!test::PermissionsBind()) {
    GTEST_SKIP() << test::NeedsOrdinaryUser;
  }
  const auto index = File("a.idx", ThreeLines);
  std::filesystem::permissions(File("a.sub", ThreePacks()), std::filesystem::perms::none);
  EXPECT_EQ(ReadVobSub(index).Reason(), "its .sub cannot be read: Permission denied");
}

TEST_F(VobSubFiles, ProgressEndsTheReadingOfASubAlone) {
  const auto packs = File("a.sub", ThreePacks());
  const auto read = ReadContainer(packs, [](std::uint64_t, std::uint64_t) { return false; });
  ASSERT_TRUE(read);
  EXPECT_FALSE(*read);
}

TEST_F(VobSubFiles, ProgressEndsTheReading) {
  const auto index = File("a.idx", ThreeLines);
  File("a.sub", ThreePacks());
  const auto read = ReadVobSub(index, [](std::uint64_t, std::uint64_t) { return false; });
  ASSERT_TRUE(read);
  EXPECT_FALSE(*read);
}

/// A pair that mkvextract wrote of a film's units, whose times start at 0 in it.
class ForeignPair : public testing::TestWithParam<const char*> {};

std::vector<Bytes> UnitsIn(const Bytes& sup) {
  std::vector<Bytes> units;
  for (std::size_t at = 0; at + 14 <= sup.size();) {
    const std::size_t size = std::size_t{sup[at + 10]} * 256 + sup[at + 11];
    units.push_back(Part(sup, at + 10, at + 10 + size));
    at += 10 + size;
  }
  return units;
}

Bytes DataFile(const std::string& name) {
  QFile file(QString::fromStdString(QUILLMARK_TEST_DATA "/containers/" + name));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
  const QByteArray bytes = file.readAll();
  return {bytes.begin(), bytes.end()};
}

TEST_P(ForeignPair, UnitsByteForByte) {
  const std::string name = GetParam();
  const auto read = ReadContainer(PathFromUtf8(QUILLMARK_TEST_DATA "/containers/" + name + ".idx"));
  ASSERT_TRUE(read && *read) << read.Reason();
  ASSERT_EQ((*read)->Tracks.size(), 1U);
  EXPECT_THAT((*read)->Tracks[0].Notes, IsEmpty());
  EXPECT_EQ(UnitsIn((*read)->Tracks[0].Packets), UnitsIn(DataFile(name + ".sup")));
}

INSTANTIATE_TEST_SUITE_P(OfMkvextract, ForeignPair, testing::Values("film", "film2"));

TEST_F(VobSubFiles, AllTheUsualSettings) {
  const auto index = File("film.idx", DataFile("settings.idx"));
  File("film.sub", DataFile("film.sub"));
  const auto read = ReadContainer(index);
  ASSERT_TRUE(read && *read);
  ASSERT_EQ((*read)->Tracks.size(), 1U);
  const Track& track = (*read)->Tracks[0];
  EXPECT_EQ(track.Language, "en");
  ASSERT_TRUE(track.Palette);
  EXPECT_EQ((*track.Palette)[3], 0x1ED2E6U);
  // The first subtitle at 0 and 1.5 s of delay.
  EXPECT_THAT(Part(track.Packets, 2, 10), ElementsAre(0x58, 0x0F, 0x02, 0, 0, 0, 0, 0));
  EXPECT_EQ(UnitsIn(track.Packets), UnitsIn(DataFile("film.sup")));
}

}  // namespace
}  // namespace quillmark
