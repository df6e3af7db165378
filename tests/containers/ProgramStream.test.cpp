#include "containers/ProgramStream.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

#include "base/FilePath.h"
#include "containers/ProgramTracks.h"
#include "tests/containers/FailingSource.h"
#include "tests/containers/PackBuilder.h"
#include "tests/support/FolderTest.h"
#include "tests/support/IfoBuilder.h"
#include "tests/support/OrdinaryUser.h"
#include "tests/support/UnreadableFile.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::NumberBe;
using test::Pack;
using test::PackHead;
using test::Pes;
using test::PesPacket;
using test::SoundUnit;
using test::SubtitlePacket;
using test::SupPacket;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t Second = 90000;
constexpr std::int64_t Turn = 8589934592;  // 2^33

Container Read(const Bytes& stream) {
  MemorySource source(stream);
  auto read = ReadProgramTracks(source);
  return read && *read ? std::move(**read) : Container();
}

/// Of the only track.
std::vector<std::int64_t> TimesIn(const Container& container) {
  std::vector<std::int64_t> times;
  if (container.Tracks.size() != 1) {
    return times;
  }
  const Bytes& packets = container.Tracks[0].Packets;
  for (std::size_t at = 0; at + 14 <= packets.size();) {
    std::uint64_t time = 0;
    for (std::size_t byte = 8; byte-- > 0;) {
      time = time << 8U | packets[at + 2 + byte];
    }
    times.push_back(static_cast<std::int64_t>(time));
    at += 10 + (std::size_t{packets[at + 10]} << 8U | packets[at + 11]);
  }
  return times;
}

const Bytes Unit = SoundUnit();

Bytes Subtitle(std::int64_t time, std::int64_t clock) {
  return Pack(SubtitlePacket(Unit, time % Turn), clock % Turn);
}
Bytes Video(std::int64_t time, std::int64_t clock) {
  return Pack(Pes{.Time = time % Turn, .Stream = 0xE0, .Further = {}}.With(Bytes(20, 0x33)), clock % Turn);
}

/// A navigation pack as it stands on a disc: the times stand at 0x39 and 0x3D of the pack.
Bytes Navigation(std::uint32_t start, std::uint32_t end) {
  Bytes control(980, 0);
  const Bytes times = Join({NumberBe(start, 4), NumberBe(end, 4)});
  std::copy(times.begin(), times.end(), control.begin() + 13);
  Bytes search(1018, 0);
  search[0] = 1;
  return Join(
      {PackHead(), PesPacket(0xBB, Bytes(18, 0x80)), PesPacket(0xBF, control), PesPacket(0xBF, search)});
}

Bytes NavigationAt(std::uint32_t start, std::uint32_t end, std::int64_t clock) {
  Bytes pack = Navigation(start, end);
  const Bytes head = PackHead(clock);
  std::copy(head.begin(), head.end(), pack.begin());
  return pack;
}

TEST(ProgramStream, NavigationPackHasItsTimesWhereTheDiscHasThem) {
  const Bytes pack = Navigation(0x11223344, 0x55667788);
  EXPECT_EQ(pack.size(), 2048U);
  EXPECT_EQ(pack[0x39], 0x11);
  EXPECT_EQ(pack[0x3D], 0x55);
}

TEST(ProgramStream, WithoutVideoTimesStayAsTheyAre) {
  EXPECT_THAT(TimesIn(Read(Join({Subtitle(5 * Second, 4 * Second), Subtitle(9 * Second, 8 * Second)}))),
              ElementsAre(5 * Second, 9 * Second));
}

TEST(ProgramStream, TimesCountFromTheFirstPictureOfTheVideo) {
  // Pictures come in the order of decoding: the first that is shown is the third here.
  EXPECT_THAT(TimesIn(Read(Join({Video(55800, 0), Video(66600, 3600), Video(48600, 7200), Video(52200, 10800),
                                 Subtitle(5 * Second + 48600, 4 * Second)}))),
              ElementsAre(5 * Second));
}

TEST(ProgramStream, FilmWithoutSubtitlesHasNothingToTell) {
  const Container film = Read(Join({Video(Second, 0), Video(2 * Second, Second)}));
  EXPECT_THAT(film.Tracks, IsEmpty());
  EXPECT_THAT(film.Notes, IsEmpty());
}

TEST(ProgramStream, LaterVideoDoesNotMoveTheStart) {
  EXPECT_THAT(TimesIn(Read(Join({Video(20 * Second, 19 * Second), Video(2 * Second, 19 * Second),
                                 Subtitle(25 * Second, 24 * Second)}))),
              ElementsAre(5 * Second));
}

TEST(ProgramStream, PictureOfASecondBeforeDoesNotMoveTheStart) {
  EXPECT_THAT(TimesIn(Read(Join({Video(20 * Second, 19 * Second), Video(19 * Second, 19 * Second),
                                 Subtitle(25 * Second, 24 * Second)}))),
              ElementsAre(5 * Second));
}

TEST(ProgramStream, TimesCountFromTheFirstNavigationPack) {
  EXPECT_THAT(TimesIn(Read(Join({Navigation(48600, 102600), Video(55800, 0), Subtitle(48600 + 7, 0)}))),
              ElementsAre(7));
}

TEST(ProgramStream, VideoBeforeTheFirstNavigationPacksStartDoesNotMoveIt) {
  EXPECT_THAT(TimesIn(Read(Join({Navigation(48600, 102600), Video(45000, 0), Subtitle(48600 + 7, 0)}))),
              ElementsAre(7));
}

TEST(ProgramStream, ClockThatPassesItsBitsGoesOn) {
  for (const bool withVideo : {false, true}) {
    const Bytes first = withVideo ? Video(Turn - 10 * Second, Turn - 11 * Second) : Bytes();
    const std::int64_t origin = withVideo ? Turn - 10 * Second : 0;
    EXPECT_THAT(
        TimesIn(Read(Join({first, Subtitle(Turn - Second, Turn - 2 * Second),
                           Subtitle(Turn + Second, Turn - Second), Subtitle(Turn + 5 * Second, Turn)}))),
        ElementsAre(Turn - Second - origin, Turn + Second - origin, Turn + 5 * Second - origin))
        << withVideo;
  }
}

TEST(ProgramStream, NavigationThatPassesItsBitsGoesOn) {
  // Its times have 32 bits.
  constexpr std::int64_t NavigationTurn = 4294967296;
  const Container container = Read(
      Join({Navigation(NavigationTurn - 10 * Second, 5 * Second), Subtitle(NavigationTurn - 5 * Second, 0),
            Navigation(5 * Second, 15 * Second), Subtitle(6 * Second, 0)}));
  EXPECT_THAT(TimesIn(container), ElementsAre(5 * Second, 16 * Second));
  EXPECT_THAT(container.Notes, IsEmpty());
}

TEST(ProgramStream, AmongNavigationASubtitleWithoutATimeIsAsFarAheadAsTheOneBefore) {
  // The first one is a second ahead of its pack. The second one begins behind it, and ends five seconds
  // later.
  EXPECT_THAT(
      TimesIn(Read(Join({NavigationAt(0, 10 * Second, 0), Video(0, 0),
                         Pack(SubtitlePacket(Join({Unit, test::Part(Unit, 0, 1)}), 2 * Second), Second),
                         Pack(SubtitlePacket(Bytes(Unit.begin() + 1, Unit.end())), 6 * Second)}))),
      ElementsAre(2 * Second, 7 * Second));
}

TEST(ProgramStream, NavigationThatJumpsGoesOnFromTheLastEnd) {
  // The second video object starts at the first one's time again.
  const Container container =
      Read(Join({Navigation(0, 10 * Second), Subtitle(2 * Second, 0), Navigation(10 * Second, 20 * Second),
                 Subtitle(12 * Second, 0), Navigation(0, 10 * Second), Subtitle(2 * Second, 0)}));
  EXPECT_THAT(TimesIn(container), ElementsAre(2 * Second, 12 * Second, 22 * Second));
  EXPECT_THAT(container.Notes, ElementsAre("the clock restarts at 00:00:20.00; times go on"));
}

TEST(ProgramStream, ClockThatGoesBackBehindNavigationGoesOnFromTheLastEnd) {
  // A title of 20 s and behind it a stream without navigation, whose clock starts at 0 again.
  const Container container = Read(
      Join({NavigationAt(0, 10 * Second, 0), Video(Second, 0), Subtitle(2 * Second, 0),
            NavigationAt(10 * Second, 20 * Second, 9 * Second), Video(11 * Second, 10 * Second),
            Subtitle(12 * Second, 11 * Second), Subtitle(3 * Second, 0), Subtitle(7 * Second, 5 * Second)}));
  EXPECT_THAT(TimesIn(container), ElementsAre(2 * Second, 12 * Second, 23 * Second, 27 * Second));
  EXPECT_THAT(container.Notes, ElementsAre("the clock restarts at 00:00:20.00; times go on"));
}

TEST(ProgramStream, ClockThatIsFurtherBehindThanPacksAreSentAheadStartsAgain) {
  // 2.5 s before the start of what the navigation pack is about.
  EXPECT_THAT(TimesIn(Read(Join({NavigationAt(0, 10 * Second, 0), Video(Second, 0),
                                 NavigationAt(10 * Second, 20 * Second, 9 * Second),
                                 Subtitle(8 * Second, 15 * Second / 2)}))),
              ElementsAre(20 * Second + Second / 2));
  // 1.5 s before it.
  EXPECT_THAT(TimesIn(Read(Join({NavigationAt(0, 10 * Second, 0), Video(Second, 0),
                                 NavigationAt(10 * Second, 20 * Second, 10 * Second),
                                 Subtitle(12 * Second, 17 * Second / 2)}))),
              ElementsAre(12 * Second));
}

TEST(ProgramStream, NavigationBehindThatGoesOnByTheClock) {
  // A third stream, with navigation, starts 6 s after the second one.
  const Container container = Read(Join({NavigationAt(0, 10 * Second, 0), Video(Second, 0),
                                         NavigationAt(10 * Second, 20 * Second, 9 * Second),
                                         Subtitle(3 * Second, 0), Subtitle(7 * Second, 6 * Second),
                                         NavigationAt(Second, 9 * Second, 0), Subtitle(2 * Second, Second)}));
  EXPECT_THAT(TimesIn(container), ElementsAre(23 * Second, 27 * Second, 28 * Second));
  EXPECT_THAT(container.Notes, ElementsAre("the clock restarts 2 times, first at 00:00:20.00; times go on"));
}

TEST(ProgramStream, DamagedClockAmongNavigationIsNoRestart) {
  const Container container = Read(Join(
      {NavigationAt(0, 10 * Second, 0), Video(Second, 0), NavigationAt(10 * Second, 20 * Second, 9 * Second),
       Video(13 * Second, 90 * Second), Video(13 * Second, 11 * Second), Video(13 * Second, 2 * Second),
       NavigationAt(20 * Second, 30 * Second, 19 * Second), Subtitle(21 * Second, 20 * Second)}));
  EXPECT_THAT(TimesIn(container), ElementsAre(21 * Second));
  EXPECT_THAT(container.Notes, IsEmpty());
}

TEST(ProgramStream, NavigationOfAnAuthoringToolsDraftIsPassed) {
  // Before the disc is made its packs have no times.
  EXPECT_THAT(TimesIn(Read(Join({Navigation(0, 0), Video(48600, 0), Subtitle(48600 + Second, Second)}))),
              ElementsAre(Second));
}

TEST(ProgramStream, ClockThatRestartsGoesOn) {
  const Container container =
      Read(Join({Video(Second, 0), Subtitle(5 * Second, 4 * Second), Video(20 * Second, 19 * Second),
                 Video(Second, 0), Subtitle(5 * Second, 4 * Second)}));
  EXPECT_THAT(TimesIn(container), ElementsAre(4 * Second, 23 * Second));
  EXPECT_THAT(container.Notes, ElementsAre("the clock restarts at 00:00:18.00; times go on"));
}

TEST(ProgramStream, ClockThatRestartsGoesOnWhereThereIsSoundAlone) {
  const auto sound = [](std::int64_t clock) {
    return Pack(Pes{.Time = clock, .Stream = 0xC0, .Further = {}}.With(Bytes(20, 0x33)), clock);
  };
  const Container container = Read(Join({sound(0), Subtitle(5 * Second, 4 * Second), sound(19 * Second),
                                         sound(0), Subtitle(5 * Second, 4 * Second)}));
  EXPECT_THAT(TimesIn(container), ElementsAre(5 * Second, 24 * Second));
}

TEST(ProgramStream, SeveralRestartsAreOneNote) {
  const Bytes film = Join({Video(Second, 0), Subtitle(5 * Second, 4 * Second)});
  EXPECT_THAT(Read(Join({film, film, film})).Notes,
              ElementsAre("the clock restarts 2 times, first at 00:00:03.00; times go on"));
}

TEST(ProgramStream, SmallStepsBackAreNoRestart) {
  EXPECT_THAT(
      Read(Join({Video(Second, Second), Video(2 * Second, Second / 2), Subtitle(Second, Second)})).Notes,
      IsEmpty());
}

TEST(ProgramStream, AStepBackOfASecondIsNoRestart) {
  EXPECT_THAT(Read(Join({Video(Second, Second), Video(2 * Second, 0), Subtitle(Second, Second)})).Notes,
              IsEmpty());
}

TEST(ProgramStream, ClockThatRestartsGoesOnWhereTheLastOfAllVideoStreamsIs) {
  const auto video = [](std::int64_t clock) {
    return Pack(Pes{.Time = clock, .Stream = 0xEF, .Further = {}}.With(Bytes(20, 0x33)), clock);
  };
  EXPECT_THAT(Read(Join({video(0), Subtitle(5 * Second, 4 * Second), video(19 * Second), video(0)})).Notes,
              ElementsAre("the clock restarts at 00:00:19.00; times go on"));
}

TEST(ProgramStream, SubtitlesAloneWithOneClockForAll) {
  EXPECT_THAT(TimesIn(Read(Join({Subtitle(5 * Second, 0), Subtitle(6000 * Second, 0)}))),
              ElementsAre(5 * Second, 6000 * Second));
}

TEST(ProgramStream, SubtitlesAloneThatStartAgainGoOn) {
  const Container container = Read(Join(
      {Subtitle(5 * Second, 0), Subtitle(60 * Second, 0), Subtitle(5 * Second, 0), Subtitle(9 * Second, 0)}));
  EXPECT_THAT(TimesIn(container), ElementsAre(5 * Second, 60 * Second, 61 * Second, 65 * Second));
  EXPECT_THAT(container.Notes, ElementsAre("the clock restarts at 00:01:01.00; times go on"));
}

TEST(ProgramStream, SubtitlesAloneThatStepBackByASecondAtMostKeepTheirTimes) {
  const Container container = Read(Join({Subtitle(5 * Second, 0), Subtitle(4 * Second, 0)}));
  EXPECT_THAT(TimesIn(container), ElementsAre(5 * Second, 4 * Second));
  EXPECT_THAT(container.Notes, IsEmpty());
}

TEST(ProgramStream, LanguagesOneAfterAnotherAreNoRestart) {
  const Container container = Read(Join(
      {Subtitle(5 * Second, 0), Subtitle(60 * Second, 0), Pack(SubtitlePacket(Unit, 5 * Second, 0x21))}));
  EXPECT_EQ(container.Tracks.size(), 2U);
  EXPECT_THAT(container.Notes, IsEmpty());
}

TEST(ProgramStream, SubtitlesOfAnMpeg1SystemStream) {
  // As ffmpeg writes them to a .mpg: a clock and a time stamp of 1 s, the unit in two packets.
  const Bytes pack = {0x00, 0x00, 0x01, 0xBA, 0x21, 0x00, 0x05, 0xBF, 0x21, 0x80, 0x00, 0x01};
  const Bytes system = PesPacket(0xBB, {0x80, 0x00, 0x01, 0x00, 0x20, 0xFF, 0xBD, 0xC0, 0x80});
  const Bytes start = {Unit.begin(), Unit.begin() + 20};
  const Bytes rest = {Unit.begin() + 20, Unit.end()};
  const Container container =
      Read(Join({pack, system, PesPacket(0xBD, Join({{0x21, 0x00, 0x05, 0xBF, 0x21, 0x20}, start})), pack,
                 PesPacket(0xBD, Join({{0xFF, 0x0F, 0x20}, rest})),
                 PesPacket(0xBD, Join({{0x21, 0x00, 0x0B, 0x7E, 0x41, 0x23}, Unit}))}));
  ASSERT_EQ(container.Tracks.size(), 2U);
  EXPECT_EQ(container.Tracks[0].Id, "0x20");
  EXPECT_EQ(container.Tracks[0].Packets, SupPacket(Second, Unit));
  EXPECT_EQ(container.Tracks[1].Id, "0x23");
  EXPECT_EQ(container.Tracks[1].Packets, SupPacket(2 * Second, Unit));
  EXPECT_THAT(container.Notes, IsEmpty());
}

TEST(ProgramStream, BytesOfAnotherKindAreRefused) {
  const Bytes text = {'h', 'e', 'l', 'l', 'o'};
  MemorySource source(text);
  EXPECT_EQ(ReadProgramTracks(source).Reason(), "no pack header of a program stream is in it");
}

TEST(ProgramStream, IsKnownByItsPackHeader) {
  EXPECT_TRUE(StartsLikeProgramStream(std::string_view("\0\0\1\xBA\x44", 5)));
  EXPECT_FALSE(StartsLikeProgramStream(std::string_view("\0\0\1\xB3\x44", 5)));
  EXPECT_FALSE(StartsLikeProgramStream(""));
}

class ProgramStreamFiles : public test::FolderTest {
 protected:
  std::filesystem::path File(const QString& name, const Bytes& content) const {
    return PathFromUtf8(Put(name, std::string(content.begin(), content.end())).toStdString());
  }
};

TEST_F(ProgramStreamFiles, FirstPartOfATitleIsReadWithTheOthers) {
  const Bytes whole = Join({Subtitle(1 * Second, 0), Subtitle(2 * Second, 0), Subtitle(3 * Second, 0)});
  const auto cut = [&whole](std::size_t from, std::size_t to) {
    return Bytes(whole.begin() + static_cast<std::ptrdiff_t>(from),
                 whole.begin() + static_cast<std::ptrdiff_t>(to));
  };
  const auto first = File("VTS_01_1.VOB", cut(0, 2060));
  const auto second = File("VTS_01_2.VOB", cut(2060, 4100));
  File("VTS_01_3.VOB", cut(4100, whole.size()));
  File("VTS_01_5.VOB", whole);
  const auto read = ReadContainer(first);
  ASSERT_TRUE(read && *read);
  EXPECT_THAT(TimesIn(**read), ElementsAre(1 * Second, 2 * Second, 3 * Second));
  EXPECT_THAT((*read)->Notes,
              ElementsAre("VTS_01_2.VOB to VTS_01_3.VOB were read as well, the further parts of the title"));
  const auto alone = ReadContainer(second);
  ASSERT_TRUE(alone && *alone);
  EXPECT_THAT(TimesIn(**alone), ElementsAre(2 * Second));
}

TEST_F(ProgramStreamFiles, LongPartsOfATitleAreReadToTheirEnds) {
  // 3 MB in each, more than is read at once.
  const auto first = File("VTS_01_1.VOB", Subtitle(1 * Second, 0));
  const Bytes padding = Join({PackHead(), PesPacket(0xBE, Bytes(2028, 0xFF))});
  Bytes second;
  for (int i = 0; i < 1500; ++i) {
    second.insert(second.end(), padding.begin(), padding.end());
  }
  File("VTS_01_2.VOB", Join({second, Subtitle(2 * Second, 0)}));
  File("VTS_01_3.VOB", Join({second, Subtitle(3 * Second, 0)}));
  const auto read = ReadContainer(first);
  ASSERT_TRUE(read && *read);
  EXPECT_THAT(TimesIn(**read), ElementsAre(1 * Second, 2 * Second, 3 * Second));
}

TEST_F(ProgramStreamFiles, TitleWithItsPartsCanBeCancelled) {
  const auto path = File("VTS_01_1.VOB", Subtitle(Second, 0));
  File("VTS_01_2.VOB", Subtitle(2 * Second, 0));
  std::uint64_t all = 0;
  const auto read = ReadProgramStream(path, [&all](std::uint64_t /*done*/, std::uint64_t of) {
    all = of;
    return false;
  });
  ASSERT_TRUE(read) << read.Reason();
  EXPECT_FALSE(*read);
  EXPECT_EQ(all, Subtitle(Second, 0).size() + Subtitle(2 * Second, 0).size());
}

TEST_F(ProgramStreamFiles, OtherNamesAreReadAlone) {
  const auto path = File("film_1.vob", Subtitle(Second, 0));
  File("film_2.vob", Subtitle(Second, 0));
  const auto read = ReadContainer(path);
  ASSERT_TRUE(read && *read);
  EXPECT_THAT((*read)->Notes, IsEmpty());
  EXPECT_EQ(TimesIn(**read).size(), 1U);
}

TEST_F(ProgramStreamFiles, DamagedInformationFileIsTold) {
  const auto path = File("VTS_01_1.VOB", Subtitle(Second, 0));
  File("VTS_01_0.IFO", {'n', 'o'});
  const auto read = ReadContainer(path);
  ASSERT_TRUE(read && *read);
  ASSERT_EQ((*read)->Tracks.size(), 1U);
  EXPECT_FALSE((*read)->Tracks[0].Palette);
  ASSERT_EQ((*read)->Notes.size(), 1U);
  EXPECT_TRUE((*read)->Notes[0].starts_with("VTS_01_0.IFO has no palette for it: ")) << (*read)->Notes[0];
}

TEST_F(ProgramStreamFiles, PaletteAndLanguageOfTheTitleSet) {
  const auto path = File("VTS_01_1.VOB", Subtitle(Second, 0));
  ASSERT_TRUE(
      QFile::copy(QStringLiteral(QUILLMARK_TEST_DATA "/palette/VTS_01_0-ntsc.IFO"), Path("VTS_01_0.IFO")));
  const auto read = ReadContainer(path);
  ASSERT_TRUE(read && *read);
  ASSERT_EQ((*read)->Tracks.size(), 1U);
  EXPECT_TRUE((*read)->Tracks[0].Palette);
}

TEST_F(ProgramStreamFiles, NamesBesideItInAnyCase) {
  const auto path = File("VTS_01_1.VOB", Subtitle(Second, 0));
  File("vts_01_2.Vob", Subtitle(2 * Second, 0));
  File("Vts_01_0.Bup", {'n', 'o'});
  const auto read = ReadContainer(path);
  ASSERT_TRUE(read && *read);
  EXPECT_EQ(TimesIn(**read).size(), 2U);
  ASSERT_EQ((*read)->Notes.size(), 2U);
  EXPECT_TRUE((*read)->Notes[1].starts_with("Vts_01_0.Bup has no palette for it: ")) << (*read)->Notes[1];
}

TEST_F(ProgramStreamFiles, StreamOfSpumux) {
  const auto read = ReadContainer(QUILLMARK_TEST_DATA "/containers/film.mpg");
  ASSERT_TRUE(read && *read);
  ASSERT_EQ((*read)->Tracks.size(), 1U);
  EXPECT_EQ((*read)->Tracks[0].Id, "0x20");
  QFile sup(QStringLiteral(QUILLMARK_TEST_DATA "/containers/film.sup"));
  ASSERT_TRUE(sup.open(QIODevice::ReadOnly));
  const QByteArray bytes = sup.readAll();
  EXPECT_EQ((*read)->Tracks[0].Packets, Bytes(bytes.begin(), bytes.end()));
}

TEST(ProgramStream, SourceThatCannotBeReadGivesItsReason) {
  test::FailingSource source(Subtitle(Second, 0), 100);
  EXPECT_EQ(ReadProgramTracks(source).Reason(), "the disk is damaged");
}

TEST(ProgramStream, NavigationWithoutItsTimesIsPassed) {
  const auto with = [](const Bytes& control) {
    return TimesIn(Read(Join({PackHead(), PesPacket(0xBF, control), Subtitle(2 * Second, 0)})));
  };
  const std::vector<std::int64_t> plain = TimesIn(Read(Subtitle(2 * Second, 0)));
  for (const std::size_t size : {1U, 13U, 15U, 17U, 20U}) {
    EXPECT_EQ(with(Bytes(size, 0)), plain) << size;
  }
  EXPECT_EQ(with(Bytes(40, 1)), plain);
}

TEST(ProgramStream, StreamsWithoutAHeaderAreNone) {
  for (const unsigned stream : {0xBCU, 0xF0U, 0xFFU}) {
    const Bytes other =
        PesPacket(static_cast<std::uint8_t>(stream), Join({{0x81, 0x80, 5}, Bytes(20, 0x21)}));
    EXPECT_EQ(TimesIn(Read(Join({PackHead(), other, Subtitle(2 * Second, 0)}))),
              std::vector<std::int64_t>{2 * Second});
  }
}

TEST_F(ProgramStreamFiles, NineTitlePartsAreAll) {
  const auto first = File("VTS_01_1.VOB", Subtitle(1 * Second, 0));
  for (int part = 2; part <= 9; ++part) {
    File("VTS_01_" + QString::number(part) + ".VOB", Subtitle(part * Second, 0));
  }
  const auto read = ReadContainer(first);
  ASSERT_TRUE(read && *read);
  EXPECT_EQ(TimesIn(**read).size(), 9U);
}

TEST_F(ProgramStreamFiles, PartThatCannotBeReadIsTold) {
  const auto path = PathFromUtf8(Path("VTS_01_1.VOB").toStdString());
  if (!test::LinkUnreadableFile(path)) {
    GTEST_SKIP() << test::NeedsUnreadableFile;
  }
  EXPECT_EQ(ReadProgramStream(path).Reason(), "it cannot be read");
}

TEST_F(ProgramStreamFiles, PartThatMayNotBeReadIsNamed) {
  if (!test::PermissionsBind()) {
    GTEST_SKIP() << test::NeedsOrdinaryUser;
  }
  const auto path = File("VTS_01_1.VOB", Subtitle(Second, 0));
  std::filesystem::permissions(File("VTS_01_2.VOB", Subtitle(Second, 0)), std::filesystem::perms::none);
  EXPECT_EQ(ReadProgramStream(path).Reason(), "VTS_01_2.VOB: Permission denied");
}

TEST_F(ProgramStreamFiles, MissingFileHasAReason) {
  EXPECT_EQ(ReadProgramStream(PathFromUtf8(Path("missing.vob").toStdString())).Reason(),
            "No such file or directory");
}

TEST_F(ProgramStreamFiles, ProgressEndsTheReading) {
  const auto path = File("VTS_01_1.VOB", Subtitle(Second, 0));
  const auto read = ReadProgramStream(path, [](std::uint64_t, std::uint64_t) { return false; });
  ASSERT_TRUE(read);
  EXPECT_FALSE(*read);
}

TEST_F(ProgramStreamFiles, InformationFileWithoutAPaletteIsTold) {
  const auto path = File("VTS_01_1.VOB", Subtitle(Second, 0));
  File("VTS_01_0.IFO", test::TitleSetFile({{.Palette = {}}}));
  const auto read = ReadContainer(path);
  ASSERT_TRUE(read && *read);
  EXPECT_THAT((*read)->Notes, ElementsAre("VTS_01_0.IFO has no palette for it"));
}

TEST_F(ProgramStreamFiles, InformationFileOfAnUnknownStandardGivesNoFrame) {
  const auto path = File("VTS_01_1.VOB", Subtitle(Second, 0));
  Bytes information = test::TitleSetFile({{}});
  information[0x200] = 0x60;
  File("VTS_01_0.IFO", information);
  const auto read = ReadContainer(path);
  ASSERT_TRUE(read && *read);
  EXPECT_TRUE((*read)->Tracks[0].Palette);
  EXPECT_FALSE((*read)->Tracks[0].Frame);
}

}  // namespace
}  // namespace quillmark
