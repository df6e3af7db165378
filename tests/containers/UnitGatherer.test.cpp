// Units out of packets, as reading a whole program stream gives them.

#include "containers/UnitGatherer.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

#include "containers/ProgramTracks.h"
#include "tests/containers/PackBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::Pack;
using test::PackHead;
using test::Part;
using test::Pes;
using test::PesPacket;
using test::SoundUnit;
using test::SubtitlePacket;
using test::SupPacket;
using testing::ElementsAre;
using testing::IsEmpty;

Container Read(const Bytes& stream) {
  MemorySource source(stream);
  auto read = ReadProgramTracks(source);
  return read && *read ? std::move(**read) : Container();
}

/// Of the only track.
Bytes PacketsIn(const Bytes& stream) {
  const Container container = Read(stream);
  return container.Tracks.size() == 1 ? container.Tracks[0].Packets : Bytes();
}

const Bytes Unit = SoundUnit();
const Bytes Other = SoundUnit(40, 0x22);

Bytes From(const Bytes& unit, std::size_t from) {
  return Part(unit, from, unit.size());
}

TEST(UnitGatherer, OnePacket) {
  EXPECT_EQ(PacketsIn(Pack(SubtitlePacket(Unit, 90000))), SupPacket(90000, Unit));
}

TEST(UnitGatherer, SeveralPackets) {
  const Bytes unit = SoundUnit(5000);
  EXPECT_EQ(
      PacketsIn(Join({Pack(SubtitlePacket(Part(unit, 0, 2000), 90000)),
                      Pack(SubtitlePacket(Part(unit, 2000, 4000))), Pack(SubtitlePacket(From(unit, 4000)))})),
      SupPacket(90000, unit));
}

TEST(UnitGatherer, UnitThatStartsWithOneByte) {
  EXPECT_EQ(
      PacketsIn(Join({Pack(SubtitlePacket(Part(Unit, 0, 1), 90000)), Pack(SubtitlePacket(From(Unit, 1)))})),
      SupPacket(90000, Unit));
}

TEST(UnitGatherer, OtherSubstreamsBetweenThePacketsOfAUnit) {
  const Container container =
      Read(Join({Pack(SubtitlePacket(Part(Unit, 0, 20), 90000)), Pack(SubtitlePacket(Other, 91000, 0x3F)),
                 Pack(SubtitlePacket(From(Unit, 20)))}));
  ASSERT_EQ(container.Tracks.size(), 2U);
  EXPECT_EQ(container.Tracks[0].Id, "0x20");
  EXPECT_EQ(container.Tracks[0].Packets, SupPacket(90000, Unit));
  EXPECT_EQ(container.Tracks[1].Id, "0x3F");
  EXPECT_EQ(container.Tracks[1].Packets, SupPacket(91000, Other));
}

TEST(UnitGatherer, SubstreamsOfSoundArePassed) {
  EXPECT_EQ(
      PacketsIn(Join({Pack(SubtitlePacket(Other, 90000, 0x80)), Pack(SubtitlePacket(Other, 90000, 0x1F)),
                      Pack(SubtitlePacket(Other, 90000, 0x40)), Pack(SubtitlePacket(Unit, 90000))})),
      SupPacket(90000, Unit));
}

TEST(UnitGatherer, ItsOwnTimeStampInLaterPackets) {
  EXPECT_EQ(PacketsIn(Join({Pack(SubtitlePacket(Part(Unit, 0, 20), 90000)),
                            Pack(SubtitlePacket(From(Unit, 20), 90000))})),
            SupPacket(90000, Unit));
}

TEST(UnitGatherer, TimeStampOfTheUnitBehindTheRestOfAnother) {
  for (const std::size_t first : {4U, 37U}) {
    EXPECT_EQ(PacketsIn(Join({Pack(SubtitlePacket(Part(Unit, 0, first), 90000)),
                              Pack(SubtitlePacket(Join({From(Unit, first), Part(Other, 0, 20)}), 180000)),
                              Pack(SubtitlePacket(From(Other, 20)))})),
              Join({SupPacket(90000, Unit), SupPacket(180000, Other)}));
  }
}

TEST(UnitGatherer, UnitWithoutATimeStampBehindAnother) {
  // Of video and subtitles whose stamps are a second ahead of the packs' clock.
  const Bytes video = Pack(Pes{.Time = 90000, .Stream = 0xE0, .Further = {}}.With(Bytes(9, 0x33)), 0);
  const Container container =
      Read(Join({video, Pack(SubtitlePacket(Join({Unit, Part(Other, 0, 1)}), 180000), 90000),
                 Pack(SubtitlePacket(From(Other, 1)), 270000)}));
  ASSERT_EQ(container.Tracks.size(), 1U);
  EXPECT_EQ(container.Tracks[0].Packets, Join({SupPacket(90000, Unit), SupPacket(270000, Other)}));
  EXPECT_THAT(
      container.Tracks[0].Notes,
      ElementsAre("1 subtitle has no time of its own (at byte 2062); the clock of the stream tells about "
                  "when it starts"));
}

TEST(UnitGatherer, BytesBehindTheUnitAreDropped) {
  EXPECT_EQ(PacketsIn(Join({Pack(SubtitlePacket(Join({Unit, {0xFF, 0xFF}}), 90000)),
                            Pack(SubtitlePacket(Other, 180000))})),
            Join({SupPacket(90000, Unit), SupPacket(180000, Other)}));
}

TEST(UnitGatherer, BytesBehindTheUnitThatOnlyStartLikeAnotherAreDropped) {
  // A size of 8, and a control sequence at 4 that never ends.
  const Bytes rest = {0x00, 0x08, 0x00, 0x04, 0x12, 0x34, 0x56, 0x78};
  const Container container =
      Read(Join({Pack(SubtitlePacket(Join({Unit, rest}), 90000)), Pack(SubtitlePacket(Other, 180000))}));
  ASSERT_EQ(container.Tracks.size(), 1U);
  EXPECT_EQ(container.Tracks[0].Packets, Join({SupPacket(90000, Unit), SupPacket(180000, Other)}));
}

TEST(UnitGatherer, PacketWithoutATimeStampStartsNone) {
  EXPECT_EQ(PacketsIn(Join({Pack(SubtitlePacket(Other)), Pack(SubtitlePacket(Unit, 90000))})),
            SupPacket(90000, Unit));
}

TEST(UnitGatherer, UnitCutShortIsLeftOutAndTold) {
  const Bytes unit = SoundUnit(3000);
  const Container container =
      Read(Join({Pack(SubtitlePacket(Part(unit, 0, 2000), 90000)), Pack(SubtitlePacket(Other, 180000))}));
  ASSERT_EQ(container.Tracks.size(), 1U);
  EXPECT_EQ(container.Tracks[0].Packets, SupPacket(180000, Other));
  EXPECT_THAT(container.Tracks[0].Notes, ElementsAre("1 subtitle is cut short and left out (at byte 14)"));
}

TEST(UnitGatherer, UnitThatTheEndOfTheStreamCutsIsToldOfAnySubstream) {
  const Container container =
      Read(Join({Pack(SubtitlePacket(Unit, 90000)), Pack(SubtitlePacket(Other, 90000, 0x3F)),
                 Pack(SubtitlePacket(Part(Unit, 0, 20), 180000, 0x3F))}));
  ASSERT_EQ(container.Tracks.size(), 2U);
  EXPECT_THAT(container.Tracks[0].Notes, IsEmpty());
  EXPECT_THAT(container.Tracks[1].Notes,
              ElementsAre(testing::StartsWith("1 subtitle is cut short and left out")));
}

TEST(UnitGatherer, UnitOfItsHeaderAloneIsWhole) {
  const Bytes header = {0, 4, 0, 4};
  EXPECT_EQ(PacketsIn(Join({Pack(SubtitlePacket(header, 90000)), Pack(SubtitlePacket(Other, 180000))})),
            Join({SupPacket(90000, header), SupPacket(180000, Other)}));
}

TEST(UnitGatherer, RestOfAUnitWithoutItsStartIsDropped) {
  const Bytes unit = SoundUnit(3000);
  EXPECT_EQ(PacketsIn(Join({Pack(SubtitlePacket(From(unit, 2000))), Pack(SubtitlePacket(Other, 180000))})),
            SupPacket(180000, Other));
}

TEST(UnitGatherer, SizeThatIsTooLargeIsMended) {
  Bytes unit = Unit;
  unit[1] = 99;
  const Container container =
      Read(Join({Pack(SubtitlePacket(unit, 90000)), Pack(SubtitlePacket(Other, 180000))}));
  ASSERT_EQ(container.Tracks.size(), 1U);
  EXPECT_EQ(container.Tracks[0].Packets, Join({SupPacket(90000, Unit), SupPacket(180000, Other)}));
  EXPECT_THAT(container.Tracks[0].Notes,
              ElementsAre("1 subtitle had a wrong size (at byte 14), which was mended"));
}

TEST(UnitGatherer, SizeThatReachesIntoTheNextUnitTakesNothingOfIt) {
  Bytes unit = Unit;
  unit[1] = static_cast<std::uint8_t>(Unit.size() + 9);
  EXPECT_EQ(PacketsIn(Join({Pack(SubtitlePacket(unit, 90000)), Pack(SubtitlePacket(Other, 180000))})),
            Join({SupPacket(90000, Unit), SupPacket(180000, Other)}));
}

TEST(UnitGatherer, FillingOfAUnitInTheNextPacketIsItsOwn) {
  Bytes unit = SoundUnit(40);
  unit[1] = 41;
  unit.push_back(0xFF);
  EXPECT_EQ(PacketsIn(Join({Pack(SubtitlePacket(Part(unit, 0, 40), 90000)),
                            Pack(SubtitlePacket(Join({From(unit, 40), Other}), 180000))})),
            Join({SupPacket(90000, unit), SupPacket(180000, Other)}));
}

TEST(UnitGatherer, SizeThatEndsBeforeTheControlSequencesIsMended) {
  for (const unsigned size : {0U, 3U, 7U}) {
    Bytes unit = Unit;
    unit[1] = static_cast<std::uint8_t>(size);
    EXPECT_EQ(PacketsIn(Join({Pack(SubtitlePacket(unit, 90000)), Pack(SubtitlePacket(Other, 180000))})),
              Join({SupPacket(90000, Unit), SupPacket(180000, Other)}))
        << size;
  }
}

TEST(UnitGatherer, UnitWithBrokenControlSequencesStaysAsItIs) {
  // It says that they start behind its end.
  const Bytes unit = {0x00, 0x06, 0x00, 0x50, 0xAA, 0xBB};
  EXPECT_EQ(PacketsIn(Join({Pack(SubtitlePacket(unit, 90000)), Pack(SubtitlePacket(Other, 180000))})),
            Join({SupPacket(90000, unit), SupPacket(180000, Other)}));
}

TEST(UnitGatherer, LongestUnit) {
  Bytes unit = SoundUnit(65535);
  Bytes stream = Pack(SubtitlePacket(Part(unit, 0, 1535), 90000));
  for (std::size_t at = 1535; at < unit.size(); at += 2000) {
    const Bytes pack = Pack(SubtitlePacket(Part(unit, at, at + 2000)));
    stream.insert(stream.end(), pack.begin(), pack.end());
  }
  EXPECT_EQ(PacketsIn(stream), SupPacket(90000, unit));
}

TEST(UnitGatherer, UnitWithoutAnEndIsGivenUpAtTheLongest) {
  Bytes unit(70000, 0x11);
  unit[0] = 0;
  unit[1] = 0;
  Bytes stream = Pack(SubtitlePacket(Part(unit, 0, 2000), 90000));
  for (std::size_t at = 2000; at < unit.size(); at += 2000) {
    const Bytes pack = Pack(SubtitlePacket(Part(unit, at, at + 2000)));
    stream.insert(stream.end(), pack.begin(), pack.end());
  }
  EXPECT_EQ(PacketsIn(Join({stream, Pack(SubtitlePacket(Unit, 90000))})), SupPacket(90000, Unit));
}

TEST(UnitGatherer, EncryptedPacketsAreSaid) {
  const Bytes encrypted = Pes{.Time = 180000, .First = 0xB1, .Further = {}}.With(Join({{0x20}, Other}));
  const Container container = Read(Join({Pack(SubtitlePacket(Unit, 90000)), Pack(encrypted)}));
  ASSERT_EQ(container.Tracks.size(), 1U);
  EXPECT_EQ(container.Tracks[0].Packets, SupPacket(90000, Unit));
  EXPECT_THAT(container.Tracks[0].Notes,
              ElementsAre("1 packet is encrypted (at byte 2062); its subtitle is left out"));
}

TEST(UnitGatherer, UnitWithAnEncryptedPacketIsLeftOut) {
  const Bytes encrypted = Pes{.First = 0x91, .Further = {}}.With(Join({{0x20}, Part(Unit, 20, 30)}));
  EXPECT_EQ(PacketsIn(Join({Pack(SubtitlePacket(Part(Unit, 0, 20), 90000)), Pack(encrypted),
                            Pack(SubtitlePacket(From(Unit, 30))), Pack(SubtitlePacket(Other, 180000))})),
            SupPacket(180000, Other));
}

TEST(UnitGatherer, StreamThatIsEncryptedThroughoutIsSaid) {
  const Bytes encrypted = Pes{.Time = 180000, .First = 0xB1, .Further = {}}.With(Join({{0x20}, Other}));
  const Container container = Read(Pack(encrypted));
  EXPECT_THAT(container.Tracks, IsEmpty());
  EXPECT_THAT(container.Notes,
              ElementsAre("the file is encrypted",
                          "0x20: 1 packet is encrypted (at byte 14); its subtitle is left out"));
}

TEST(UnitGatherer, EveryStartOfAStreamGivesWhatItHasWhole) {
  const Bytes first = Join({PackHead(), SubtitlePacket(Unit, 90000)});
  const Bytes stream = Join({first, PackHead(), SubtitlePacket(Part(Other, 0, 20), 180000), PackHead(),
                             SubtitlePacket(From(Other, 20))});
  for (std::size_t length = 0; length < stream.size(); ++length) {
    const Bytes expected = length < first.size() ? Bytes() : SupPacket(90000, Unit);
    EXPECT_EQ(PacketsIn(Part(stream, 0, length)), expected) << length;
  }
  EXPECT_EQ(PacketsIn(stream), Join({SupPacket(90000, Unit), SupPacket(180000, Other)}));
}

}  // namespace
}  // namespace quillmark
