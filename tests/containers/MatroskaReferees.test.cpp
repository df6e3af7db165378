// Matroska files that other programs write of the same subtitles. Tests are skipped where a program is not
// installed.

#include <gmock/gmock.h>

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <gtest/gtest.h>

#include "base/FilePath.h"
#include "containers/Matroska.h"
#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

using test::Bytes;

/// What the film's index says of its first subtitles, in milliseconds.
constexpr std::int64_t FirstTimes[] = {0, 5340, 11230, 15280};

struct Subtitles {
  std::vector<std::int64_t> Times;
  std::vector<Bytes> Units;
};

Subtitles SubtitlesIn(const Bytes& sup) {
  Subtitles subtitles;
  for (std::size_t at = 0; at + 14 <= sup.size();) {
    std::uint64_t time = 0;
    for (std::size_t byte = 8; byte-- > 0;) {
      time = time << 8U | sup[at + 2 + byte];
    }
    const std::size_t size = std::size_t{sup[at + 10]} << 8U | sup[at + 11];
    const auto unit = sup.begin() + static_cast<std::ptrdiff_t>(at + 10);
    subtitles.Times.push_back(static_cast<std::int64_t>(time));
    subtitles.Units.emplace_back(unit, unit + static_cast<std::ptrdiff_t>(size));
    at += 10 + size;
  }
  return subtitles;
}

class MatroskaReferees : public test::FolderTest {
 protected:
  static Bytes Data(const char* name) {
    QFile file(QStringLiteral(QUILLMARK_TEST_DATA "/containers/") + QLatin1String(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return test::BytesOf(file.readAll().toStdString());
  }
  void SetUp() override {
    test::FolderTest::SetUp();
    for (const char* const name : {"film.idx", "film.sub", "settings.idx"}) {
      const Bytes bytes = Data(name);
      Put(QLatin1String(name), std::string(bytes.begin(), bytes.end()));
    }
    QFile::copy(Path(QStringLiteral("film.sub")), Path(QStringLiteral("settings.sub")));
  }
  static bool Has(const char* program) {
    return !QStandardPaths::findExecutable(QLatin1String(program)).isEmpty();
  }
  /// The only track of the file a.mkv that the program writes.
  [[nodiscard]] Track Made(const char* program, const QStringList& arguments) const {
    QProcess process;
    process.setWorkingDirectory(Folder());
    process.setStandardInputFile(QProcess::nullDevice());
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"),
                       QStringLiteral("C.UTF-8"));  // for arguments that are not ASCII
    process.setProcessEnvironment(environment);
    process.start(QLatin1String(program), arguments);
    EXPECT_TRUE(process.waitForFinished()) << program;
    EXPECT_LE(process.exitCode(), 1) << process.readAllStandardError().toStdString();
    auto read = ReadMatroska(PathFromUtf8(Path(QStringLiteral("a.mkv")).toStdString()));
    EXPECT_TRUE(read) << read.Reason();
    if (!read || !*read || (*read)->Tracks.size() != 1) {
      ADD_FAILURE() << "not one track";
      return {};
    }
    return std::move((*read)->Tracks[0]);
  }
  /// The film's units and times, these put off by `later` milliseconds.
  static void ExpectFilm(const Track& track, std::int64_t later) {
    const Subtitles found = SubtitlesIn(track.Packets);
    EXPECT_EQ(found.Units, SubtitlesIn(Data("film.sup")).Units);
    ASSERT_EQ(found.Times.size(), 20U);
    for (std::size_t i = 0; i < std::size(FirstTimes); ++i) {
      EXPECT_EQ(found.Times[i], (FirstTimes[i] + later) * 90) << i;
    }
  }
};

TEST_F(MatroskaReferees, MkvmergePacksWithZlib) {
  if (!Has("mkvmerge")) {
    GTEST_SKIP();
  }
  ExpectFilm(Made("mkvmerge", {"-q", "-o", "a.mkv", "film.idx"}), 0);
}

TEST_F(MatroskaReferees, MkvmergePacksNot) {
  if (!Has("mkvmerge")) {
    GTEST_SKIP();
  }
  ExpectFilm(Made("mkvmerge", {"-q", "-o", "a.mkv", "--compression", "0:none", "film.idx"}), 0);
}

TEST_F(MatroskaReferees, MkvmergeCountsFinerTimes) {
  if (!Has("mkvmerge")) {
    GTEST_SKIP();
  }
  ExpectFilm(Made("mkvmerge", {"-q", "-o", "a.mkv", "--timestamp-scale", "100000", "film.idx"}), 0);
}

TEST_F(MatroskaReferees, MkvmergeKeepsPaletteLanguageAndName) {
  if (!Has("mkvmerge")) {
    GTEST_SKIP();
  }
  const Track track = Made("mkvmerge", {"-q", "-o", "a.mkv", "--track-name", "0:für alle", "settings.idx"});
  ExpectFilm(track, 1500);  // its delay line
  EXPECT_EQ(track.Language, "en");
  EXPECT_EQ(track.Name, "für alle");
  ASSERT_TRUE(track.Palette);
  EXPECT_EQ((*track.Palette)[0], MakeRgb(0x10, 0x10, 0x10));
  EXPECT_EQ((*track.Palette)[3], MakeRgb(0xE6, 0xD2, 0x1E));
  EXPECT_EQ((*track.Palette)[15], MakeRgb(0, 0, 0));
}

TEST_F(MatroskaReferees, FfmpegWritesSimpleBlocksAndUnknownDurations) {
  if (!Has("ffmpeg")) {
    GTEST_SKIP();
  }
  ExpectFilm(Made("ffmpeg", {"-v", "error", "-i", "film.idx", "-map", "0:s", "-c", "copy", "a.mkv"}), 0);
}

TEST_F(MatroskaReferees, FfmpegWritesLiveStreamsWithoutSizes) {
  if (!Has("ffmpeg")) {
    GTEST_SKIP();
  }
  ExpectFilm(Made("ffmpeg", {"-v", "error", "-i", "film.idx", "-map", "0:s", "-c", "copy", "-live", "1", "-f",
                             "matroska", "a.mkv"}),
             0);
}

}  // namespace
}  // namespace quillmark
