// Pairs and program streams between this program and others: what one writes the other reads. Tests are
// skipped where a program is not installed.

#include <gmock/gmock.h>

#include <QProcess>
#include <QStandardPaths>
#include <gtest/gtest.h>

#include "base/FilePath.h"
#include "containers/VobSub.h"
#include "containers/VobSubWriter.h"
#include "tests/containers/PackBuilder.h"
#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::SoundUnit;
using test::SupPacket;
using testing::ElementsAre;
using testing::HasSubstr;

struct Subtitle {
  std::int64_t Time = 0;
  Bytes Unit;
  bool operator==(const Subtitle&) const = default;
};

std::vector<Subtitle> SubtitlesIn(const Bytes& sup) {
  std::vector<Subtitle> subtitles;
  for (std::size_t at = 0; at + 14 <= sup.size();) {
    std::uint64_t time = 0;
    for (std::size_t byte = 8; byte-- > 0;) {
      time = time << 8U | sup[at + 2 + byte];
    }
    const std::size_t size = std::size_t{sup[at + 10]} << 8U | sup[at + 11];
    const auto unit = sup.begin() + static_cast<std::ptrdiff_t>(at + 10);
    subtitles.push_back(
        {.Time = static_cast<std::int64_t>(time), .Unit = {unit, unit + static_cast<std::ptrdiff_t>(size)}});
    at += 10 + size;
  }
  return subtitles;
}

class Referees : public test::FolderTest {
 protected:
  /// What it wrote to its standard output; nullopt where it failed.
  [[nodiscard]] std::optional<std::string> Run(const char* program, const QStringList& arguments) const {
    QProcess process;
    process.setWorkingDirectory(Folder());
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(QLatin1String(program), arguments);
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() > 1) {
      ADD_FAILURE() << program << ": " << process.readAllStandardError().toStdString();
      return std::nullopt;
    }
    return process.readAllStandardOutput().toStdString();
  }
  static bool Has(const char* program) {
    return !QStandardPaths::findExecutable(QLatin1String(program)).isEmpty();
  }
  [[nodiscard]] std::filesystem::path File(const char* name) const {
    return PathFromUtf8(Path(QLatin1String(name)).toStdString());
  }
  [[nodiscard]] Container Read(const char* name) const {
    auto read = ReadContainer(File(name));
    EXPECT_TRUE(read) << read.Reason();
    return read && *read ? std::move(**read) : Container();
  }
  [[nodiscard]] std::vector<Subtitle> Only(const char* name) const {
    const Container container = Read(name);
    EXPECT_EQ(container.Tracks.size(), 1U);
    return container.Tracks.size() == 1 ? SubtitlesIn(container.Tracks[0].Packets) : std::vector<Subtitle>();
  }
  void Write(const char* name, const std::vector<VobSubTrack>& tracks) const {
    const auto written = WriteVobSub(File(name), tracks);
    ASSERT_TRUE(written) << written.Reason();
  }
};

/// Units of all the sizes about which packs change their form, a second and some ticks apart.
Bytes Film(std::size_t firstSize) {
  Bytes film;
  std::int64_t time = 90 * 1000;
  for (const std::size_t size :
       {firstSize, std::size_t{2012}, std::size_t{2013}, std::size_t{2014}, std::size_t{2018},
        std::size_t{2019}, std::size_t{2020}, std::size_t{4037}, std::size_t{4038}, std::size_t{4042},
        std::size_t{4043}, std::size_t{4044}, std::size_t{52000}}) {
    film = Join({std::move(film), SupPacket(time, SoundUnit(size))});
    time += 90 * 2345;
  }
  return film;
}

/// Of units that are shown for a second, players' time, whose delay other programs leave as it is.
constexpr std::size_t SmallSize = 90;

TEST_F(Referees, MkvmergeReadsThePairAndMkvextractWritesTheSameBytes) {
  if (!Has("mkvmerge") || !Has("mkvextract")) {
    GTEST_SKIP();
  }
  const Bytes film = Film(SmallSize);
  Write("film.idx", {{.Packets = film, .Language = "en", .Name = {}}});
  ASSERT_TRUE(Run("mkvmerge", {"-q", "-o", "film.mks", "film.idx"}));
  ASSERT_TRUE(Run("mkvextract", {"-q", "film.mks", "tracks", "0:again.idx"}));
  EXPECT_EQ(test::FolderTest::Read("again.sub"), test::FolderTest::Read("film.sub"));
  EXPECT_EQ(Only("again.idx"), SubtitlesIn(film));
  EXPECT_EQ(Read("again.idx").Tracks.at(0).Palette, StartUpPalette);
  EXPECT_EQ(Read("again.idx").Tracks.at(0).Language, "en");
}

TEST_F(Referees, MkvmergeReadsAllLanguages) {
  if (!Has("mkvmerge") || !Has("mkvextract")) {
    GTEST_SKIP();
  }
  const Bytes english = Film(SmallSize);
  const Bytes german = Film(SmallSize + 2);
  Write("film.idx", {{.Packets = english, .Language = "en", .Name = {}},
                     {.Packets = german, .Language = "de", .Name = {}}});
  ASSERT_TRUE(Run("mkvmerge", {"-q", "-o", "film.mks", "film.idx"}));
  ASSERT_TRUE(Run("mkvextract", {"-q", "film.mks", "tracks", "0:en.idx", "1:de.idx"}));
  EXPECT_EQ(Only("en.idx"), SubtitlesIn(english));
  EXPECT_EQ(Only("de.idx"), SubtitlesIn(german));
}

TEST_F(Referees, FfprobeReadsThePair) {
  if (!Has("ffprobe")) {
    GTEST_SKIP();
  }
  const Bytes film = Join({SupPacket(90000, SoundUnit(90)), SupPacket(900000, SoundUnit(5000))});
  Write("film.idx", {{.Packets = film, .Language = "en", .Name = {}}});
  const auto output = Run("ffprobe", {"-v", "error", "-show_entries", "packet=pts,size:stream_tags=language",
                                      "-of", "csv=p=0", "film.idx"});
  EXPECT_EQ(output, "1000,90\n10000,5000\nen\n");
}

TEST_F(Referees, ProgramStreamOfFfmpeg) {
  if (!Has("ffmpeg")) {
    GTEST_SKIP();
  }
  const Bytes film = Film(SmallSize);
  Write("film.idx", {{.Packets = film, .Language = "en", .Name = {}}});
  ASSERT_TRUE(Run("ffmpeg", {"-v", "error", "-f", "lavfi", "-i", "color=size=64x64:rate=25:duration=40", "-i",
                             "film.idx", "-map", "0:v", "-map", "1:s", "-c:v", "mpeg2video", "-c:s", "copy",
                             "-f", "vob", "film.vob"}));
  // It lays units one behind another, so that some start in a packet whose time stamp is another's.
  const auto expected = SubtitlesIn(film);
  const auto subtitles = Only("film.vob");
  ASSERT_EQ(subtitles.size(), expected.size());
  std::size_t exact = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(subtitles[i].Unit, expected[i].Unit);
    EXPECT_NEAR(static_cast<double>(subtitles[i].Time), static_cast<double>(expected[i].Time), 3600);
    exact += subtitles[i].Time == expected[i].Time ? 1 : 0;
  }
  EXPECT_EQ(exact, 10U);
}

TEST_F(Referees, SpuunmuxReadsTheSub) {
  if (!Has("spuunmux")) {
    GTEST_SKIP();
  }
  const Bytes film = Join({SupPacket(90000, SoundUnit(90)), SupPacket(900000, SoundUnit(5000))});
  Write("film.idx", {{.Packets = film, .Language = "en", .Name = {}}});
  ASSERT_TRUE(Run("spuunmux", {"-F", "PAL", "-o", "out", "film.sub"}));
  const std::string list = test::FolderTest::Read("out.xml");
  EXPECT_THAT(list, HasSubstr("start=\"00:00:01.00\""));
  EXPECT_THAT(list, HasSubstr("start=\"00:00:10.00\""));
}

/// A title of two films, each with its own clock: what dvdauthor makes of them goes on.
TEST_F(Referees, TitleOfDvdauthor) {
  if (!Has("ffmpeg") || !Has("spumux") || !Has("dvdauthor")) {
    GTEST_SKIP();
  }
  for (const char* film : {"a", "b"}) {
    const QString name = QLatin1String(film);
    ASSERT_TRUE(Run("ffmpeg", {"-v", "error", "-f", "lavfi", "-i", "color=size=720x576:rate=25:duration=6",
                               "-target", "pal-dvd", "-an", name + ".video.mpg"}));
    ASSERT_TRUE(
        Run("ffmpeg", {"-v", "error", "-f", "lavfi", "-i",
                       name == QLatin1String("a") ? "color=white:size=100x20" : "color=yellow:size=100x20",
                       "-frames:v", "1", name + ".png"}));
    Put(name + ".xml",
        "<subpictures format=\"PAL\"><stream>"
        "<spu start=\"00:00:01.00\" end=\"00:00:02.00\" image=\"" +
            std::string(film) +
            ".png\"/>"
            "<spu start=\"00:00:04.00\" end=\"00:00:05.00\" image=\"" +
            std::string(film) +
            ".png\"/>"
            "</stream></subpictures>");
    QProcess spumux;
    spumux.setWorkingDirectory(Folder());
    spumux.setStandardInputFile(Path(name + ".video.mpg"));
    spumux.setStandardOutputFile(Path(name + ".mpg"));
    spumux.start("spumux", {"-m", "dvd", name + ".xml"});
    ASSERT_TRUE(spumux.waitForFinished());
  }
  Put("disc.xml",
      "<dvdauthor><vmgm/><titleset><titles><video format=\"pal\"/><subpicture lang=\"de\"/><pgc>"
      "<vob file=\"a.mpg\"/><vob file=\"b.mpg\"/></pgc></titles></titleset></dvdauthor>");
  ASSERT_TRUE(Run("dvdauthor", {"-o", "disc", "-x", "disc.xml"}));
  const Container container = Read("disc/VIDEO_TS/VTS_01_1.VOB");
  ASSERT_EQ(container.Tracks.size(), 1U);
  EXPECT_EQ(container.Tracks[0].Language, "de");
  EXPECT_TRUE(container.Tracks[0].Palette);
  std::vector<std::int64_t> times;
  for (const Subtitle& subtitle : SubtitlesIn(container.Tracks[0].Packets)) {
    times.push_back(subtitle.Time);
  }
  EXPECT_THAT(times, ElementsAre(90000, 360000, 630000, 900000));
  EXPECT_THAT(container.Notes, ElementsAre("the clock restarts at 00:00:06.00; times go on"));
}

}  // namespace
}  // namespace quillmark
