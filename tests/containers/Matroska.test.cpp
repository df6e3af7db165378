#include "containers/Matroska.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <string>

#include <QByteArray>
#include <QFile>
#include <gtest/gtest.h>

#include "base/FilePath.h"
#include "containers/MatroskaBlocks.h"
#include "containers/MatroskaInput.h"
#include "containers/MatroskaTracks.h"
#include "tests/containers/FailingSource.h"
#include "tests/support/EbmlBuilder.h"

namespace quillmark {
namespace {

using test::BigEndian;
using test::BlockData;
using test::BlockGroup;
using test::Bytes;
using test::Cluster;
using test::Element;
using test::Info;
using test::Joined;
using test::MatroskaFile;
using test::NumberElement;
using test::PlainUnit;
using test::SimpleBlock;
using test::TrackEntry;
using test::TrackList;
using test::UnknownSizeElement;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

ReadContainerResult ReadBytes(const Bytes& file) {
  MemorySource source(file);
  return ReadMatroskaFrom(source);
}

/// What was read; empty, and a failed test, where nothing was.
Container Taken(const ReadContainerResult& read) {
  EXPECT_TRUE(read) << read.Reason();
  return read && *read ? **read : Container();
}

/// "SP", the time's eight bytes, low byte first, and the unit.
Bytes Packet(std::int64_t ticks, const Bytes& unit) {
  Bytes time = BigEndian(static_cast<std::uint64_t>(ticks), 8);
  std::ranges::reverse(time);
  return Joined({{'S', 'P'}, time, unit});
}

Bytes OneTrack() {
  return TrackList(TrackEntry(1, "S_VOBSUB"));
}

/// Zlib bytes of a stored block: no compression, so that they can be written by hand.
Bytes Stored(const Bytes& plain) {
  std::uint32_t low = 1;
  std::uint32_t high = 0;
  for (const std::uint8_t byte : plain) {
    low = (low + byte) % 65521;
    high = (high + low) % 65521;
  }
  const auto size = static_cast<std::uint16_t>(plain.size());
  Bytes length = BigEndian(size, 2);
  Bytes inverse = BigEndian(static_cast<std::uint16_t>(~size), 2);
  std::ranges::reverse(length);
  std::ranges::reverse(inverse);
  return Joined({{0x78, 0x01, 0x01}, length, inverse, plain, BigEndian(high << 16U | low, 4)});
}

/// One encoding of a track.
Bytes Encoding(const Bytes& settings) {
  return Element(0x6D80, Element(0x6240, settings));
}

TEST(StartsLikeMatroska, EbmlHeader) {
  EXPECT_TRUE(StartsLikeMatroska("\x1A\x45\xDF\xA3\x01"));
  EXPECT_FALSE(StartsLikeMatroska("\x1A\x45\xDF"));
  EXPECT_FALSE(StartsLikeMatroska("SP"));
}

TEST(ReadMatroska, BlocksBecomePacketsUnitsByteForByte) {
  const Bytes first = PlainUnit(9, 0x11);
  const Bytes second = PlainUnit(300, 0x22);
  const Container read = Taken(ReadBytes(MatroskaFile(
      Joined({OneTrack(), Cluster(1000, Joined({BlockGroup(1, 5, first), SimpleBlock(1, 10, second)}))}))));
  ASSERT_EQ(read.Tracks.size(), 1U);
  EXPECT_EQ(read.Tracks[0].Packets, Joined({Packet(1005 * 90, first), Packet(1010 * 90, second)}));
  EXPECT_EQ(read.Tracks[0].Id, "1");
  EXPECT_THAT(read.Tracks[0].Notes, IsEmpty());
  EXPECT_THAT(read.Notes, IsEmpty());
}

/// The times of the first track.
std::vector<std::int64_t> Times(const Container& container) {
  std::vector<std::int64_t> times;
  const Bytes& packets = container.Tracks.at(0).Packets;
  for (std::size_t at = 0; at < packets.size();) {
    std::uint64_t time = 0;
    for (std::size_t i = 8; i-- > 0;) {
      time = time << 8U | packets[at + 2 + i];
    }
    times.push_back(static_cast<std::int64_t>(time));
    at += 10U + packets[at + 10] * 256U + packets[at + 11];
  }
  return times;
}

TEST(ReadMatroska, BlockTimeIsSigned) {
  const Container read =
      Taken(ReadBytes(MatroskaFile(Joined({OneTrack(), Cluster(1000, SimpleBlock(1, -1, PlainUnit(8))),
                                           Cluster(0, SimpleBlock(1, -1, PlainUnit(8)))}))));
  EXPECT_THAT(Times(read), ElementsAre(999 * 90, -90));
}

TEST(ReadMatroska, TimesAreInUnitsOfTheScaleAndRoundedDown) {
  // 100000 ns are 9 ticks; 11111 ns 0.99999.
  const Bytes blocks = Joined({SimpleBlock(1, 3, PlainUnit(8)), SimpleBlock(1, -3, PlainUnit(8))});
  EXPECT_THAT(Times(Taken(ReadBytes(MatroskaFile(Joined({Info(100000), OneTrack(), Cluster(10, blocks)}))))),
              ElementsAre(117, 63));
  EXPECT_THAT(Times(Taken(ReadBytes(MatroskaFile(Joined({Info(11111), OneTrack(), Cluster(0, blocks)}))))),
              ElementsAre(2, -3));
}

TEST(ReadMatroska, LongTimesAreExact) {
  // 30 hours in ns.
  const std::uint64_t time = 108000000000001;
  EXPECT_THAT(Times(Taken(ReadBytes(MatroskaFile(
                  Joined({Info(1), OneTrack(), Cluster(time, SimpleBlock(1, 0, PlainUnit(8)))}))))),
              ElementsAre(9720000000));
}

TEST(ReadMatroska, TimeThatNoClockHasIsTheLast) {
  EXPECT_THAT(Times(Taken(ReadBytes(MatroskaFile(
                  Joined({OneTrack(), Cluster(0xFFFFFFFFFFFFFFFF, SimpleBlock(1, 0, PlainUnit(8)))}))))),
              ElementsAre(std::numeric_limits<std::int64_t>::max()));
}

TEST(ReadMatroska, ScaleOutOfReasonIsRefused) {
  EXPECT_EQ(ReadBytes(MatroskaFile(Joined({Info(0), OneTrack()}))).Reason(),
            "its unit of time, 0 ns, is none that a film has");
  EXPECT_FALSE(ReadBytes(MatroskaFile(Joined({Info(0xFFFFFFFFFFFFFFFF), OneTrack()}))));
  const auto withScale = [](std::uint64_t scale) {
    return ReadBytes(
        MatroskaFile(Joined({Info(scale), OneTrack(), Cluster(0, SimpleBlock(1, 0, PlainUnit(8)))})));
  };
  EXPECT_TRUE(withScale(1000000000000)) << "a thousand seconds";
  EXPECT_FALSE(withScale(1000000000001));
}

TEST(ReadMatroska, InfoMayStandBehindTheClusters) {
  EXPECT_THAT(Times(Taken(ReadBytes(MatroskaFile(
                  Joined({OneTrack(), Cluster(10, SimpleBlock(1, 0, PlainUnit(8))), Info(100000)}))))),
              ElementsAre(90));
}

TEST(ReadMatroska, TracksMayStandBehindTheClusters) {
  const Bytes unit = PlainUnit(8);
  const Container read = Taken(
      ReadBytes(MatroskaFile(Joined({Cluster(1, SimpleBlock(1, 0, unit)), Cluster(2, SimpleBlock(1, 0, unit)),
                                     OneTrack(), Cluster(3, SimpleBlock(1, 0, unit))}))));
  EXPECT_THAT(Times(read), ElementsAre(90, 180, 270));
}

TEST(ReadMatroska, SizesOfSegmentAndClustersMayBeUnknown) {
  const Bytes file =
      Joined({test::EbmlHead(),
              UnknownSizeElement(
                  0x18538067,
                  Joined({OneTrack(),
                          UnknownSizeElement(
                              0x1F43B675, Joined({NumberElement(0xE7, 1), SimpleBlock(1, 0, PlainUnit(8))})),
                          UnknownSizeElement(
                              0x1F43B675, Joined({NumberElement(0xE7, 2), BlockGroup(1, 0, PlainUnit(8))})),
                          Element(0x1C53BB6B, Bytes(20))}))});
  const Container read = Taken(ReadBytes(file));
  EXPECT_THAT(Times(read), ElementsAre(90, 180));
  EXPECT_THAT(read.Notes, IsEmpty());
}

TEST(ReadMatroska, TracksBehindAClusterOfUnknownSizeAreFound) {
  const Bytes file = Joined(
      {test::EbmlHead(),
       UnknownSizeElement(0x18538067,
                          Joined({UnknownSizeElement(0x1F43B675, Joined({NumberElement(0xE7, 1),
                                                                         SimpleBlock(1, 0, PlainUnit(8))})),
                                  OneTrack()}))});
  EXPECT_THAT(Times(Taken(ReadBytes(file))), ElementsAre(90));
}

TEST(ReadMatroska, VoidAndCrcStandAnywhere) {
  const Bytes empty = Element(0xEC, Bytes(3));
  const Bytes crc = Element(0xBF, Bytes(4));
  const Bytes unit = PlainUnit(8);
  const Bytes group = Element(0xA0, Joined({crc, empty, Element(0xA1, BlockData(1, 7, unit)), empty}));
  const Bytes cluster =
      Element(0x1F43B675, Joined({crc, empty, NumberElement(0xE7, 1), empty, group, empty}));
  const Bytes entry = Element(0xAE, Joined({crc, NumberElement(0xD7, 1), empty, NumberElement(0x83, 0x11),
                                            Element(0x86, "S_VOBSUB"), empty}));
  const Container read = Taken(ReadBytes(MatroskaFile(
      Joined({crc, empty, Element(0x1549A966, Joined({crc, empty, NumberElement(0x2AD7B1, 100000)})), empty,
              TrackList(Joined({crc, empty, entry, empty})), empty, cluster, empty}))));
  EXPECT_EQ(read.Tracks.at(0).Packets, Packet(72, unit));
  EXPECT_THAT(read.Notes, IsEmpty());
}

TEST(ReadMatroska, UnknownElementsArePassedOver) {
  const Bytes unit = PlainUnit(8);
  const Container read = Taken(ReadBytes(
      MatroskaFile(Joined({Element(0x1ABCDEF0, Bytes(40)), OneTrack(),
                           Cluster(1, Joined({Element(0xF9, Bytes(9, 0xA3)), SimpleBlock(1, 0, unit)}))}))));
  EXPECT_EQ(read.Tracks.at(0).Packets, Packet(90, unit));
}

TEST(ReadMatroska, BlocksOfOtherTracksAreLeft) {
  const Bytes file = MatroskaFile(
      Joined({TrackList(Joined({TrackEntry(1, "S_VOBSUB"),
                                Element(0xAE, Joined({NumberElement(0xD7, 2), NumberElement(0x83, 1),
                                                      Element(0x86, "V_MPEG2")}))})),
              Cluster(1, Joined({SimpleBlock(2, 0, Bytes(5000, 0xA3)), SimpleBlock(1, 0, PlainUnit(8)),
                                 SimpleBlock(3, 0, PlainUnit(8))}))}));
  const Container read = Taken(ReadBytes(file));
  EXPECT_THAT(Times(read), ElementsAre(90));
  EXPECT_THAT(read.Notes, IsEmpty());
}

TEST(ReadMatroska, TrackNumbersMayHaveSeveralBytes) {
  const Bytes unit = PlainUnit(8);
  const Bytes block = Element(0xA3, Joined({{0x41, 0x23, 0, 0, 0}, unit}));  // 0x123
  const Container read =
      Taken(ReadBytes(MatroskaFile(Joined({TrackList(TrackEntry(0x123, "S_VOBSUB")), Cluster(1, block)}))));
  EXPECT_EQ(read.Tracks.at(0).Packets, Packet(90, unit));
  EXPECT_EQ(read.Tracks.at(0).Id, "291");
}

/// A file of one subtitle whose track entry has these elements too.
Container ReadTrackWith(const Bytes& settings, const Bytes& block = PlainUnit(8)) {
  return Taken(ReadBytes(MatroskaFile(
      Joined({TrackList(TrackEntry(1, "S_VOBSUB", settings)), Cluster(1, SimpleBlock(1, 0, block))}))));
}

TEST(ReadMatroska, LanguageLeftOutIsEnglish) {
  EXPECT_EQ(ReadTrackWith({}).Tracks.at(0).Language, "eng");
}

TEST(ReadMatroska, LanguageTagOfTheNewerKindWins) {
  EXPECT_EQ(ReadTrackWith(Element(0x22B59C, "ger")).Tracks.at(0).Language, "ger");
  EXPECT_EQ(
      ReadTrackWith(Joined({Element(0x22B59D, "pt-BR"), Element(0x22B59C, "por")})).Tracks.at(0).Language,
      "pt-BR");
}

TEST(ReadMatroska, UndeterminedLanguageIsNone) {
  EXPECT_EQ(ReadTrackWith(Element(0x22B59C, "und")).Tracks.at(0).Language, "");
}

TEST(ReadMatroska, TextsEndAtAZero) {
  EXPECT_EQ(ReadTrackWith(Element(0x22B59C, std::string("fre\0\0", 5))).Tracks.at(0).Language, "fre");
}

TEST(ReadMatroska, NameIsUtf8) {
  EXPECT_EQ(ReadTrackWith(Element(0x536E, "für alle")).Tracks.at(0).Name, "für alle");
}

/// Settings as a track has them; the palette's first two colours are red and green.
const std::string Settings =
    "size: 720x576\npalette: ff0000, 00ff00, 000000, 000000, 000000, 000000, 000000, 000000, 000000, 000000, "
    "000000, 000000, 000000, 000000, 000000, 0000ff";

void ExpectPalette(const Container& read) {
  ASSERT_TRUE(read.Tracks.at(0).Palette);
  const DvdPalette& palette = *read.Tracks[0].Palette;
  EXPECT_EQ(palette[0], MakeRgb(255, 0, 0));
  EXPECT_EQ(palette[1], MakeRgb(0, 255, 0));
  EXPECT_EQ(palette[15], MakeRgb(0, 0, 255));
}

TEST(ReadMatroska, PaletteIsThatOfTheSettings) {
  ExpectPalette(ReadTrackWith(Element(0x63A2, Settings + "\n")));
  ExpectPalette(ReadTrackWith(Element(0x63A2, Settings)));
}

TEST(ReadMatroska, SettingsMayEndInAZero) {
  ExpectPalette(ReadTrackWith(Element(0x63A2, Settings + std::string(1, '\0'))));
}

TEST(ReadMatroska, SettingsMayBeCompressed) {
  const Bytes scope = Joined({NumberElement(0x5032, 3), Element(0x5034, Bytes())});
  ExpectPalette(ReadTrackWith(Joined({Element(0x63A2, Stored(test::BytesOf(Settings))), Encoding(scope)}),
                              Stored(PlainUnit(8))));
}

TEST(ReadMatroska, SettingsThatCannotBeUncompressedAreTold) {
  const Bytes scope = Joined({NumberElement(0x5032, 2), Element(0x5034, Bytes())});
  const Container read = ReadTrackWith(Joined({Element(0x63A2, Settings), Encoding(scope)}));
  EXPECT_FALSE(read.Tracks.at(0).Palette);
  EXPECT_THAT(read.Tracks[0].Notes,
              ElementsAre("its settings cannot be uncompressed, so that it has no palette"));
}

TEST(ReadMatroska, CustomColoursAreTold) {
  const std::string custom = "custom colors: ON, tridx: 1000, colors: 000000, ffffff, 808080, 000000\n";
  EXPECT_THAT(ReadTrackWith(Element(0x63A2, custom)).Tracks.at(0).Notes,
              ElementsAre("it has custom colours on; the subtitles keep their own"));
}

TEST(ReadMatroska, TrackWithoutSettingsHasNoPalette) {
  EXPECT_FALSE(ReadTrackWith({}).Tracks.at(0).Palette);
}

TEST(ReadMatroska, ZlibIsUndone) {
  const Bytes unit = PlainUnit(700, 0x33);
  const Bytes zlib = Element(0x5034, NumberElement(0x4254, 0));
  const Container read = ReadTrackWith(Encoding(zlib), Stored(unit));
  EXPECT_EQ(read.Tracks.at(0).Packets, Packet(90, unit));
  EXPECT_THAT(read.Tracks.at(0).Notes, IsEmpty()) << "nothing comes out but the unit";
}

TEST(ReadMatroska, EmptyCompressionIsZlib) {
  const Bytes unit = PlainUnit(700, 0x33);
  EXPECT_EQ(ReadTrackWith(Encoding(Element(0x5034, Bytes())), Stored(unit)).Tracks.at(0).Packets,
            Packet(90, unit));
}

TEST(ReadMatroska, StrippedHeaderIsPutBack) {
  const Bytes unit = PlainUnit(20, 0x44);
  const Bytes stripping = Element(
      0x5034, Joined({NumberElement(0x4254, 3), Element(0x4255, Bytes(unit.begin(), unit.begin() + 3))}));
  EXPECT_EQ(ReadTrackWith(Encoding(stripping), Bytes(unit.begin() + 3, unit.end())).Tracks.at(0).Packets,
            Packet(90, unit));
}

TEST(ReadMatroska, EncodingThatSaysNothingOfItselfIsZlib) {
  const Bytes unit = PlainUnit(20, 0x44);
  EXPECT_EQ(ReadTrackWith(Encoding(NumberElement(0x5031, 0)), Stored(unit)).Tracks.at(0).Packets,
            Packet(90, unit));
}

TEST(ReadMatroska, EncodingOfTheHighestOrderIsUndoneFirst) {
  const Bytes unit = PlainUnit(20, 0x44);
  const Bytes stripping = Element(
      0x6240, Joined({NumberElement(0x5031, 0),
                      Element(0x5034, Joined({NumberElement(0x4254, 3), Element(0x4255, Bytes{0})}))}));
  const Bytes zlib = Element(0x6240, Joined({NumberElement(0x5031, 1), Element(0x5034, Bytes())}));
  const Bytes stored = Stored(Bytes(unit.begin() + 1, unit.end()));
  EXPECT_EQ(ReadTrackWith(Element(0x6D80, Joined({stripping, zlib})), stored).Tracks.at(0).Packets,
            Packet(90, unit));
}

TEST(ReadMatroska, EncodingOfThePrivateDataAloneLeavesBlocks) {
  const Bytes unit = PlainUnit(20, 0x44);
  const Bytes scope = Joined({NumberElement(0x5032, 2), Element(0x5034, Bytes())});
  EXPECT_EQ(ReadTrackWith(Encoding(scope), unit).Tracks.at(0).Packets, Packet(90, unit));
}

TEST(ReadMatroska, BytesThatAreNotZlibAreCounted) {
  const Container read = ReadTrackWith(Encoding(Element(0x5034, Bytes())), PlainUnit(20));
  EXPECT_THAT(read.Tracks, IsEmpty());
  EXPECT_THAT(
      read.Notes,
      ElementsAre(
          "track 1 has no subtitles",
          HasSubstr("track 1: 1 block left out, compressed in a way that it cannot be undone, at byte ")));
}

TEST(ReadMatroska, MoreThanAUnitOutOfZlibIsNotTaken) {
  // 65535 bytes stored, three times: more than 131072.
  Bytes stored = {0x78, 0x01};
  for (int i = 0; i < 3; ++i) {
    stored = Joined({stored, {0x00, 0xFF, 0xFF, 0x00, 0x00}, Bytes(65535)});
  }
  const Bytes deflated = Joined({{0x78, 0x01}, stored});
  EXPECT_THAT(ReadTrackWith(Encoding(Element(0x5034, Bytes())), deflated).Tracks, IsEmpty());
}

TEST(ReadMatroska, OtherCompressionsAreNamed) {
  const Bytes bzlib = Element(0x5034, NumberElement(0x4254, 1));
  EXPECT_THAT(ReadTrackWith(Encoding(bzlib)).Notes,
              ElementsAre("track 1 is compressed with bzlib, which is not read"));
}

TEST(ReadMatroska, FirstCompressionThatIsNotReadIsNamed) {
  const Bytes bzlib = Element(0x6240, Element(0x5034, NumberElement(0x4254, 1)));
  const Bytes lzo1x = Element(0x6240, Element(0x5034, NumberElement(0x4254, 2)));
  EXPECT_THAT(ReadTrackWith(Element(0x6D80, Joined({bzlib, lzo1x}))).Notes,
              ElementsAre("track 1 is compressed with bzlib, which is not read"));
}

TEST(ReadMatroska, EncryptedTrackIsSaidToBe) {
  const Container read =
      ReadTrackWith(Encoding(Joined({NumberElement(0x5033, 1), Element(0x5035, Bytes())})));
  EXPECT_THAT(read.Tracks, IsEmpty());
  EXPECT_THAT(read.Notes, ElementsAre("track 1 is encrypted"));
}

TEST(ReadMatroska, TrackPackedManyTimesIsNotRead) {
  Bytes encodings;
  for (int i = 0; i < 9; ++i) {
    test::AppendBytes(encodings, Element(0x6240, Element(0x5034, Bytes())));
  }
  EXPECT_THAT(ReadTrackWith(Element(0x6D80, encodings)).Notes,
              ElementsAre("track 1 is packed more often than any program does"));
}

TEST(ReadMatroska, TracksOfOtherKindsAreNamed) {
  const Container read = Taken(ReadBytes(
      MatroskaFile(Joined({TrackList(Joined({TrackEntry(3, "S_HDMV/PGS"), TrackEntry(4, "S_TEXT/UTF8"),
                                             TrackEntry(1, "S_VOBSUB")})),
                           Cluster(1, SimpleBlock(1, 0, PlainUnit(8)))}))));
  EXPECT_EQ(read.Tracks.size(), 1U);
  EXPECT_THAT(read.Notes, ElementsAre("track 3 is of another kind (S_HDMV/PGS)",
                                      "track 4 is of another kind (S_TEXT/UTF8)"));
}

TEST(ReadMatroska, LacedBlocksAreRefusedByName) {
  for (const std::uint8_t lacing : Bytes{0x02, 0x04, 0x06}) {
    const Container read = Taken(
        ReadBytes(MatroskaFile(Joined({OneTrack(), Cluster(1, Joined({SimpleBlock(1, 0, PlainUnit(8), lacing),
                                                                      SimpleBlock(1, 1, PlainUnit(8))}))}))));
    EXPECT_THAT(Times(read), ElementsAre(180));
    EXPECT_THAT(read.Tracks[0].Notes,
                ElementsAre(HasSubstr("1 block left out, laced (several units in one), at byte ")));
  }
}

TEST(ReadMatroska, UnitCutShortIsLeftOutAndTold) {
  Bytes cut = PlainUnit(30);
  cut.resize(29);
  const Bytes file = MatroskaFile(
      Joined({OneTrack(), Cluster(1, Joined({SimpleBlock(1, 0, cut), SimpleBlock(1, 1, PlainUnit(8)),
                                             SimpleBlock(1, 2, cut)}))}));
  // A block begins with its track, its time and its flags.
  const auto first = std::search(file.begin(), file.end(), cut.begin(), cut.end()) - file.begin() - 4;
  const Container read = Taken(ReadBytes(file));
  EXPECT_THAT(Times(read), ElementsAre(180));
  EXPECT_THAT(read.Tracks[0].Notes, ElementsAre("2 blocks left out, the unit cut short, the first at byte " +
                                                std::to_string(first)));
}

TEST(ReadMatroska, BytesBehindTheUnitAreLeftOutAndTold) {
  const Bytes unit = PlainUnit(8);
  const Container read = ReadTrackWith({}, Joined({unit, {0, 0}}));
  EXPECT_EQ(read.Tracks.at(0).Packets, Packet(90, unit));
  EXPECT_THAT(read.Tracks[0].Notes, ElementsAre(HasSubstr("1 block with bytes behind the unit")));
}

TEST(ReadMatroska, BlockWithoutAUnitIsLeftOut) {
  EXPECT_THAT(ReadTrackWith({}, {0, 3, 0}).Tracks, IsEmpty());
  EXPECT_THAT(ReadTrackWith({}, {0, 3, 0, 0, 0}).Tracks, IsEmpty());
  EXPECT_THAT(ReadTrackWith({}, {}).Tracks, IsEmpty());
}

TEST(ReadMatroska, BlockLongerThanAUnitCanBeIsNotRead) {
  EXPECT_THAT(ReadTrackWith({}, Bytes(131073)).Notes,
              ElementsAre("track 1 has no subtitles", HasSubstr("left out, longer than a unit can be")));
}

/// A unit that stops after one delay unit.
Bytes EndingUnit() {
  return {0, 12, 0, 4, 0, 1, 0, 4, 0x02, 0xFF, 0xFF, 0xFF};
}

TEST(ReadMatroska, DurationOfAUnitThatDoesNotEndByItselfIsToldLost) {
  const Bytes duration = NumberElement(0x9B, 2000);
  const auto notes = [](const Bytes& groups) {
    return Taken(ReadBytes(MatroskaFile(Joined({OneTrack(), Cluster(1, groups)})))).Tracks.at(0).Notes;
  };
  EXPECT_THAT(notes(BlockGroup(1, 0, PlainUnit(8), duration)),
              ElementsAre("1 subtitle has no end but in the file's own durations, which are not kept"));
  EXPECT_THAT(notes(Element(0xA0, Joined({duration, Element(0xA1, BlockData(1, 0, PlainUnit(8)))}))),
              ElementsAre(HasSubstr("1 subtitle has no end")));
  EXPECT_THAT(notes(BlockGroup(1, 0, EndingUnit(), duration)), IsEmpty());
  EXPECT_THAT(notes(BlockGroup(1, 0, PlainUnit(8), NumberElement(0x9B, 0xFFFFFFFFFFFFFFFF))), IsEmpty());
  EXPECT_THAT(notes(Joined({BlockGroup(1, 0, PlainUnit(8)), BlockGroup(2, 0, PlainUnit(8), duration)})),
              IsEmpty());
}

TEST(ReadMatroska, BlockWithoutAUnitIsToldWithoutItsDuration) {
  const auto notes = [](const Bytes& payload) {
    const Bytes group = BlockGroup(1, 0, payload, NumberElement(0x9B, 2000));
    return Taken(ReadBytes(MatroskaFile(
                     Joined({OneTrack(), Cluster(1, Joined({BlockGroup(1, 0, PlainUnit(8)), group}))}))))
        .Tracks.at(0)
        .Notes;
  };
  EXPECT_THAT(notes(Bytes(3)), ElementsAre(HasSubstr("1 block left out, without a unit, at byte ")));
  EXPECT_THAT(notes({0, 8, 0, 4}), ElementsAre(HasSubstr("1 block left out, the unit cut short, at byte ")));
}

TEST(ReadMatroska, DurationIsOfItsOwnClustersBlock) {
  const Bytes first = Cluster(1, BlockGroup(1, 0, PlainUnit(8), NumberElement(0x9B, 2000)));
  // A block without a group, which is none of the first track's.
  const Bytes second = Cluster(3, Element(0xA1, BlockData(2, 0, PlainUnit(8))));
  const Container read = Taken(ReadBytes(MatroskaFile(
      Joined({TrackList(Joined({TrackEntry(1, "S_VOBSUB"), TrackEntry(2, "S_VOBSUB")})), first, second}))));
  EXPECT_THAT(read.Tracks.at(0).Notes, ElementsAre(HasSubstr("1 subtitle has no end")));
  EXPECT_THAT(read.Tracks.at(1).Notes, IsEmpty());
}

TEST(ReadMatroska, ReadingGoesOnAtTheNextClusterBehindDamage) {
  const Bytes damaged =
      Element(0x1F43B675, Joined({NumberElement(0xE7, 2), Bytes(40), SimpleBlock(1, 0, PlainUnit(8))}));
  const Container read =
      Taken(ReadBytes(MatroskaFile(Joined({OneTrack(), Cluster(1, SimpleBlock(1, 0, PlainUnit(8))), damaged,
                                           Cluster(3, SimpleBlock(1, 0, PlainUnit(8)))}))));
  EXPECT_THAT(Times(read), ElementsAre(90, 270));
  EXPECT_THAT(read.Notes, ElementsAre(HasSubstr("it is damaged at byte ")));
}

TEST(ReadMatroska, FirstOfSeveralDamagesIsNamed) {
  const Bytes file =
      MatroskaFile(Joined({OneTrack(), Bytes(1000), Cluster(1, SimpleBlock(1, 0, PlainUnit(8))), Bytes(1000),
                           Cluster(3, SimpleBlock(1, 0, PlainUnit(8)))}));
  const auto damage = std::search_n(file.begin(), file.end(), 1000, std::uint8_t{0}) - file.begin();
  const Container read = Taken(ReadBytes(file));
  EXPECT_THAT(Times(read), ElementsAre(90, 270));
  EXPECT_THAT(read.Notes, ElementsAre("it is damaged at byte " + std::to_string(damage) +
                                      " and 1 more; what stands there is left out"));
}

TEST(ReadMatroska, StartOfAnElementAtTheEndIsACut) {
  const Bytes whole = MatroskaFile(Joined({OneTrack(), Cluster(1, SimpleBlock(1, 0, PlainUnit(8)))}));
  const Bytes cut =
      MatroskaFile(Joined({OneTrack(), Cluster(1, SimpleBlock(1, 0, PlainUnit(8))), {0x1F, 0x43, 0xB6}}));
  const Container read = Taken(ReadBytes(cut));
  EXPECT_THAT(Times(read), ElementsAre(90));
  EXPECT_THAT(read.Notes, ElementsAre("it is cut short at byte " + std::to_string(whole.size())));
}

TEST(ReadMatroska, ElementThatTheFileDoesNotHaveWholeIsACut) {
  // Of the unknown sizes of a live film nothing tells it but the element's own.
  const Bytes whole = Joined(
      {test::EbmlHead(),
       UnknownSizeElement(
           0x18538067,
           Joined({OneTrack(), UnknownSizeElement(0x1F43B675, Joined({NumberElement(0xE7, 1),
                                                                      SimpleBlock(1, 0, PlainUnit(8))}))}))});
  Bytes cut = Joined({whole, SimpleBlock(1, 1, PlainUnit(8))});
  cut.pop_back();
  const Container read = Taken(ReadBytes(cut));
  EXPECT_THAT(Times(read), ElementsAre(90));
  EXPECT_THAT(read.Notes, ElementsAre("it is cut short at byte " + std::to_string(whole.size())));
}

TEST(ReadMatroska, WhatIsAsLongAsAnElementsHeadAtTheEndIsDamage) {
  const auto notes = [](std::size_t bytes) {
    return Taken(ReadBytes(MatroskaFile(
                     Joined({OneTrack(), Cluster(1, SimpleBlock(1, 0, PlainUnit(8))), Bytes(bytes)}))))
        .Notes;
  };
  EXPECT_THAT(notes(11), ElementsAre(testing::StartsWith("it is cut short at byte ")));
  EXPECT_THAT(notes(12), ElementsAre(testing::StartsWith("it is damaged at byte ")));
}

TEST(ReadMatroska, DamageUpToTheEndIsDamage) {
  const Container read = Taken(ReadBytes(
      MatroskaFile(Joined({OneTrack(), Cluster(1, SimpleBlock(1, 0, PlainUnit(8))), Bytes(1000)}))));
  EXPECT_THAT(Times(read), ElementsAre(90));
  EXPECT_THAT(read.Notes, ElementsAre(HasSubstr("it is damaged at byte ")));
}

TEST(ReadMatroska, DamageBetweenClustersIsPassed) {
  for (const std::size_t damage : {1U, 2U, 100000U}) {
    const Container read =
        Taken(ReadBytes(MatroskaFile(Joined({OneTrack(), Cluster(1, SimpleBlock(1, 0, PlainUnit(8))),
                                             Bytes(damage), Cluster(3, SimpleBlock(1, 0, PlainUnit(8)))}))));
    EXPECT_THAT(Times(read), ElementsAre(90, 270)) << damage;
  }
}

/// Wherever its ID stands among the blocks of bytes in which it is looked for.
TEST(ReadMatroska, ClusterBehindDamageIsFoundWhereverItStarts) {
  for (std::size_t damage = 1000; damage < 1100; ++damage) {
    const Container read = Taken(ReadBytes(
        MatroskaFile(Joined({OneTrack(), Bytes(damage), Cluster(3, SimpleBlock(1, 0, PlainUnit(8)))}))));
    EXPECT_THAT(Times(read), ElementsAre(270)) << damage;
  }
}

TEST(ReadMatroska, BlockThatPassesItsClusterIsDamage) {
  Bytes block = SimpleBlock(1, 0, PlainUnit(8));
  block[8] = 0xFF;  // the last byte of its size
  const Container read = Taken(ReadBytes(MatroskaFile(
      Joined({OneTrack(), Cluster(1, block),
              Cluster(3, Joined({SimpleBlock(1, 0, PlainUnit(8)), Element(0xEC, Bytes(300))}))}))));
  EXPECT_THAT(Times(read), ElementsAre(270));
  EXPECT_EQ(read.Notes.size(), 1U);
}

TEST(ReadMatroska, SecondFilmInTheFileIsNotRead) {
  const Bytes film = Joined({OneTrack(), Cluster(1, SimpleBlock(1, 0, PlainUnit(8)))});
  EXPECT_THAT(Times(Taken(ReadBytes(Joined({test::EbmlHead(), UnknownSizeElement(0x18538067, film),
                                            test::EbmlHead(), UnknownSizeElement(0x18538067, film)})))),
              ElementsAre(90));
}

TEST(ReadMatroska, EntryWithinAnEntryDoesNoHarm) {
  const Bytes inner = TrackEntry(1, "S_VOBSUB");
  const Bytes outer = Joined({{0xAE, 0x90}, inner});  // of 16 bytes, fewer than the inner one has
  EXPECT_TRUE(ReadBytes(MatroskaFile(Joined({TrackList(Joined({outer, TrackEntry(2, "S_VOBSUB")}))}))));
}

TEST(ReadMatroska, FileWithoutTracksIsRefused) {
  EXPECT_EQ(ReadBytes(MatroskaFile(Cluster(1, SimpleBlock(1, 0, PlainUnit(8))))).Reason(),
            "it has no list of tracks");
}

TEST(ReadMatroska, FileWithoutTracksThatIsDamagedIsToldSo) {
  Bytes cut = MatroskaFile(Cluster(1, SimpleBlock(1, 0, PlainUnit(8))));
  cut.pop_back();
  EXPECT_THAT(ReadBytes(cut).Reason(),
              testing::StartsWith("it has no list of tracks; it is cut short at byte "));
}

TEST(ReadMatroska, OtherFilesAreRefused) {
  EXPECT_EQ(ReadBytes({}).Reason(), "it is no Matroska file: it does not start with an EBML header");
  EXPECT_FALSE(ReadBytes(Bytes(5000, 0xFF)));
}

/// 16 MiB and one byte: ID and size of what is in the list take nine.
TEST(ReadMatroska, ListOfTracksThatIsTooLongIsRefused) {
  EXPECT_THAT(ReadBytes(MatroskaFile(TrackList(Element(0xEC, Bytes(16777217 - 9))))).Reason(),
              HasSubstr("is too long"));
}

TEST(ReadMatroska, TruncationAtEveryLengthGivesWhatIsWholeOrAReason) {
  const Bytes unit = PlainUnit(40, 0xA3);
  const Bytes head = Joined({Info(1000000), TrackList(TrackEntry(1, "S_VOBSUB", Element(0x536E, "name")))});
  const Bytes whole = MatroskaFile(Joined({head, Cluster(1, BlockGroup(1, 0, unit, NumberElement(0x9B, 5))),
                                           Cluster(2, SimpleBlock(1, 0, unit))}));
  std::size_t most = 0;
  for (std::size_t length = 0; length < whole.size(); ++length) {
    const auto read = ReadBytes(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)));
    if (!read) {
      EXPECT_FALSE(read.Reason().empty()) << length;
      continue;
    }
    ASSERT_TRUE(*read);
    EXPECT_THAT((*read)->Notes, testing::Contains(HasSubstr("it is cut short at byte "))) << length;
    const std::size_t bytes = (*read)->Tracks.empty() ? 0 : (*read)->Tracks[0].Packets.size();
    EXPECT_EQ(bytes % (10 + unit.size()), 0U) << length;
    EXPECT_GE(bytes, most) << length;
    most = bytes;
  }
  EXPECT_EQ(most, 10 + unit.size());
}

TEST(ReadMatroska, EveryByteMayBeDamaged) {
  const Bytes unit = PlainUnit(12);
  const Bytes zlib = Encoding(Element(0x5034, Bytes()));
  const Bytes whole = MatroskaFile(Joined({Info(1000000), TrackList(TrackEntry(1, "S_VOBSUB", zlib)),
                                           Cluster(1, BlockGroup(1, 0, Stored(unit), NumberElement(0x9B, 5))),
                                           Cluster(2, SimpleBlock(1, 0, Stored(unit)))}));
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const std::uint8_t value : Bytes{0x00, 0x01, 0x7F, 0x80, 0xFF}) {
      Bytes damaged = whole;
      damaged[at] = value;
      const auto read = ReadBytes(damaged);
      EXPECT_TRUE(read || !read.Reason().empty()) << at;
    }
  }
}

/// Tells how much is read of a source.
class CountingSource : public MemorySource {
 public:
  using MemorySource::MemorySource;
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) override {
    Bytes_ += bytes.size();
    return MemorySource::ReadAt(start, bytes);
  }
  [[nodiscard]] std::size_t BytesRead() const { return Bytes_; }

 private:
  std::size_t Bytes_ = 0;
};

Bytes FilmWithVideo() {
  Bytes film = TrackList(Joined({TrackEntry(1, "S_VOBSUB")}));
  for (std::uint64_t i = 0; i < 8; ++i) {
    test::AppendBytes(
        film, Cluster(i, Joined({SimpleBlock(2, 0, Bytes(1000000, 0xA3)), SimpleBlock(1, 0, PlainUnit(8))})));
  }
  return MatroskaFile(film);
}

TEST(ReadMatroska, PicturesOfTheFilmAreNotRead) {
  const Bytes film = FilmWithVideo();
  CountingSource source(film);
  ASSERT_EQ(Taken(ReadMatroskaFrom(source)).Tracks.size(), 1U);
  EXPECT_LT(source.BytesRead(), film.size() / 50);
}

TEST(ReadMatroska, ProgressCountsBytesAndEndsTheWork) {
  const Bytes film = FilmWithVideo();
  MemorySource source(film);
  std::vector<std::uint64_t> told;
  const auto read = ReadMatroskaFrom(source, [&](std::uint64_t done, std::uint64_t of) {
    EXPECT_EQ(of, film.size());
    told.push_back(done);
    return told.size() < 3;
  });
  ASSERT_TRUE(read);
  EXPECT_FALSE(*read);
  ASSERT_EQ(told.size(), 3U);
  EXPECT_LT(told[0], told[1]);
  EXPECT_LT(told[1], told[2]);
}

class FailingSource : public MemorySource {
 public:
  using MemorySource::MemorySource;
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) override {
    if (start > 100) {
      return Failure{"the disk is gone"};
    }
    return MemorySource::ReadAt(start, bytes);
  }
};

TEST(ReadMatroska, ReasonOfTheSystemIsKept) {
  const Bytes film = FilmWithVideo();
  FailingSource source(film);
  EXPECT_EQ(ReadMatroskaFrom(source).Reason(), "the disk is gone");
}

class MatroskaFiles : public test::FolderTest {
 protected:
  static std::filesystem::path Data(const std::string& name) {
    return PathFromUtf8(QUILLMARK_TEST_DATA "/containers/" + name);
  }
  static Bytes ReadData(const std::string& name) {
    QFile file(QString::fromStdString(Utf8FromPath(Data(name))));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return test::BytesOf(file.readAll().toStdString());
  }
};

/// The units of a SUP file, without signature and time.
std::vector<Bytes> Units(const Bytes& packets) {
  std::vector<Bytes> units;
  for (std::size_t at = 0; at + 12 <= packets.size();) {
    const std::size_t size = packets[at + 10] * 256U + packets[at + 11];
    const auto unit = packets.begin() + static_cast<std::ptrdiff_t>(at) + 10;
    units.emplace_back(unit, unit + static_cast<std::ptrdiff_t>(size));
    at += 10 + size;
  }
  return units;
}

TEST_F(MatroskaFiles, FilmOfTwoLanguagesHasTheUnitsThatWentIn) {
  const Container read = Taken(ReadMatroska(Data("both.mks")));
  ASSERT_EQ(read.Tracks.size(), 2U);
  EXPECT_EQ(read.Tracks[0].Language, "en");
  EXPECT_EQ(read.Tracks[1].Language, "de");
  EXPECT_EQ(Units(read.Tracks[0].Packets), Units(ReadData("film.sup")));
  EXPECT_EQ(Units(read.Tracks[1].Packets), Units(ReadData("film2.sup")));
}

TEST_F(MatroskaFiles, FilmOfTheOtherProgramHasTheUnitsThatWentIn) {
  const Container read = Taken(ReadMatroska(Data("film-ff.mkv")));
  ASSERT_EQ(read.Tracks.size(), 1U);
  EXPECT_EQ(Units(read.Tracks[0].Packets), Units(ReadData("film.sup")));
  EXPECT_FALSE(read.Tracks[0].Palette);
}

TEST_F(MatroskaFiles, TimesAreTheFilesMilliseconds) {
  // Those of film.idx, which was made of the same file.
  for (const char* const name : {"film-ff.mkv", "both.mks"}) {
    const std::vector<std::int64_t> times = Times(Taken(ReadMatroska(Data(name))));
    ASSERT_EQ(times.size(), 20U);
    EXPECT_EQ(times[0], 0);
    EXPECT_EQ(times[1], 5340 * 90);
    EXPECT_EQ(times[2], 11230 * 90);
    EXPECT_EQ(times[19], 97770 * 90);
  }
}

TEST_F(MatroskaFiles, FileOfAnotherKindUnderTheNameIsRefused) {
  const auto path = PathFromUtf8(Put("a.mkv", "# VobSub index file, v7").toStdString());
  EXPECT_EQ(ReadMatroska(path).Reason(), "it is no Matroska file: it does not start with an EBML header");
  EXPECT_EQ(ReadMatroska(PathFromUtf8(Path("b.mkv").toStdString())).Reason(), "No such file or directory");
}

TEST_F(MatroskaFiles, FileWithNoneOfOursNamesWhatItHas) {
  const Bytes file = MatroskaFile(TrackList(TrackEntry(2, "S_HDMV/PGS")));
  const auto path = PathFromUtf8(Put("a.mkv", std::string(file.begin(), file.end())).toStdString());
  EXPECT_EQ(ReadContainer(path).Reason(),
            "it holds no DVD subtitles; track 2 is of another kind (S_HDMV/PGS)");
}

TEST(ReadMatroska, OtherCompressionsThanTheUsualOnesAreNamed) {
  const auto notes = [](std::uint64_t algorithm) {
    return ReadTrackWith(Encoding(Element(0x5034, NumberElement(0x4254, algorithm)))).Notes;
  };
  EXPECT_THAT(notes(2), ElementsAre("track 1 is compressed with lzo1x, which is not read"));
  EXPECT_THAT(notes(4), ElementsAre("track 1 is compressed in a way that is not known"));
}

TEST(ReadMatroska, BlockThatEndsInItsHeadHasNoUnit) {
  for (const Bytes& head : {Bytes{0, 0, 0, 0}, Bytes{0x10, 0, 0, 1}, Bytes{0x40, 1, 0, 0}}) {
    const Container read = Taken(ReadBytes(MatroskaFile(
        Joined({OneTrack(), Cluster(0, Joined({Element(0xA3, head), SimpleBlock(1, 0, PlainUnit(8))}))}))));
    ASSERT_EQ(read.Tracks.size(), 1U);
    EXPECT_EQ(read.Tracks[0].Packets, Packet(0, PlainUnit(8)));
    EXPECT_THAT(read.Tracks[0].Notes, IsEmpty());
  }
}

TEST(ReadMatroska, SourceThatCannotBeReadGivesItsReason) {
  const Bytes file = MatroskaFile(Joined({OneTrack(), Cluster(0, SimpleBlock(1, 0, PlainUnit(8)))}));
  for (const std::uint64_t readable : {0U, 40U}) {
    test::FailingSource source(file, readable);
    EXPECT_EQ(ReadMatroskaFrom(source).Reason(), "the disk is damaged") << readable;
  }
}

TEST(UndoEncodings, MoreBytesThanAUnitHasAreRefused) {
  const std::vector<ContentEncoding> zlib = {{}};
  const QByteArray packed = qCompress(QByteArray(100000, 'a')).mid(4);
  Bytes bytes(packed.begin(), packed.end());
  EXPECT_EQ(UndoEncodings(zlib, EncodedPart::Blocks, 5000, bytes).Reason(),
            "more bytes come out than a unit has");
  const QByteArray whole = qCompress(QByteArray(5000, 'a')).mid(4);
  bytes = Bytes(whole.begin(), whole.end());
  EXPECT_TRUE(UndoEncodings(zlib, EncodedPart::Blocks, 5000, bytes));
  EXPECT_EQ(bytes, Bytes(5000, 'a'));
  const std::vector<ContentEncoding> stripping = {{.IsStripping = true, .Stripped = Bytes(10)}};
  bytes = Bytes(5);
  EXPECT_EQ(UndoEncodings(stripping, EncodedPart::Blocks, 14, bytes).Reason(), "they are too many");
  EXPECT_TRUE(UndoEncodings(stripping, EncodedPart::Blocks, 15, bytes));
}

TEST(TicksOfMatroskaTime, FarBeforeAllTimesIsTheFirst) {
  constexpr std::int64_t First = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(TicksOfMatroskaTime(First, MatroskaBlocks::MaxScale), First);
  EXPECT_EQ(TicksOfMatroskaTime(-102481911520500000, 1000000), -9223372036845000000);
}

TEST(TicksOfMatroskaTime, FarBehindAllTimesIsTheLast) {
  constexpr std::int64_t Last = std::numeric_limits<std::int64_t>::max();
  // 90 ticks a millisecond. Hundreds of seconds are counted that are whole, and one less than there is room
  // for.
  EXPECT_EQ(TicksOfMatroskaTime(102481911520500000, 1000000), 9223372036845000000);
  EXPECT_EQ(TicksOfMatroskaTime(102481911520600000, 1000000), Last);
}

const Progress noProgress;

TEST(MatroskaInput, GoesWhereItIsSent) {
  const Bytes bytes = {10, 11, 12, 13, 14};
  MemorySource source(bytes);
  MatroskaInput input(source, noProgress);
  const auto next = [&] {
    std::uint8_t byte = 0;
    return input.read(&byte, 1) == 1 ? byte : 0;
  };
  input.setFilePointer(3, libebml::seek_beginning);
  EXPECT_EQ(next(), 13);
  input.setFilePointer(-3, libebml::seek_current);
  EXPECT_EQ(next(), 11);
  input.setFilePointer(-1, libebml::seek_end);
  EXPECT_EQ(next(), 14);
  input.setFilePointer(9, libebml::seek_current);
  EXPECT_EQ(input.getFilePointer(), 5U);
  input.setFilePointer(-9, libebml::seek_beginning);
  EXPECT_EQ(next(), 10);
}

TEST(MatroskaInput, ReadsManyBytesAtOnce) {
  Bytes bytes(10000);
  bytes[4095] = 1;
  bytes[9999] = 2;
  MemorySource source(bytes);
  MatroskaInput input(source, noProgress);
  Bytes read(20000);
  EXPECT_EQ(input.read(read.data(), read.size()), 10000U);
  read.resize(10000);
  EXPECT_EQ(read, bytes);
}

/// A file that became shorter while it is read.
class ShrunkSource : public ByteSource {
 public:
  [[nodiscard]] std::uint64_t Length() const override { return 10000; }
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t, std::span<std::uint8_t>) override {
    return std::size_t{0};
  }
};

TEST(MatroskaInput, EndsWhereTheSourceDoes) {
  ShrunkSource source;
  MatroskaInput input(source, noProgress);
  Bytes read(10000);
  EXPECT_EQ(input.read(read.data(), 10000), 0U);
  EXPECT_EQ(input.read(read.data(), 1), 0U);
}

TEST(MatroskaInput, WritesNothing) {
  const Bytes bytes = {10, 11};
  MemorySource source(bytes);
  MatroskaInput input(source, noProgress);
  EXPECT_EQ(input.write("ab", 2), 0U);
  input.close();
  EXPECT_EQ(input.getFilePointer(), 0U);
}

/// Bytes with zeros after them.
class ZerosAtTheEnd : public ByteSource {
 public:
  ZerosAtTheEnd(Bytes bytes, std::uint64_t zeros)
      : bytes_(std::move(bytes)), length_(bytes_.size() + zeros) {}

  [[nodiscard]] std::uint64_t Length() const override { return length_; }
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) override {
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), length_ - start));
    for (std::size_t i = 0; i < count; ++i) {
      bytes[i] = start + i < bytes_.size() ? bytes_[static_cast<std::size_t>(start) + i] : std::uint8_t{0};
    }
    return count;
  }

 private:
  Bytes bytes_;
  std::uint64_t length_;
};

TEST(ReadMatroska, InformationLongerThanAnyIsPassed) {
  constexpr std::uint64_t TooLong = (std::uint64_t{16} << 20U) + 1;
  const Bytes head = Joined({BigEndian(0x1549A966, 4), BigEndian(0x0100000000000000U | TooLong, 8)});
  const Bytes segment = Joined({OneTrack(), Cluster(0, SimpleBlock(1, 2, PlainUnit(8))), head});
  ZerosAtTheEnd source(Joined({test::EbmlHead(), UnknownSizeElement(0x18538067, segment)}), TooLong);
  EXPECT_THAT(Times(Taken(ReadMatroskaFrom(source))), ElementsAre(180));
}

/// 0xE7, the time of a cluster, is another element there than in a cluster.
TEST(ReadMatroska, TimeOutsideAClusterIsNone) {
  const Container read = Taken(ReadBytes(MatroskaFile(
      Joined({OneTrack(), NumberElement(0xE7, 7), Cluster(0, SimpleBlock(1, 2, PlainUnit(8)))}))));
  EXPECT_THAT(Times(read), ElementsAre(180));
}

}  // namespace
}  // namespace quillmark
