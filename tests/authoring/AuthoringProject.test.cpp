// The real tools run the projects that are written: spumux encodes every subtitle at its time and place, and
// dvdauthor makes a disc with the project's palette.

#include "render/AuthoringProject.h"

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include <QDir>
#include <QImage>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "palette/PaletteFile.h"
#include "render/Composition.h"
#include "render/SubtitleDescription.h"
#include "sup/StreamLoader.h"
#include "tests/authoring/AuthoringTool.h"
#include "tests/authoring/DiscColour.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::AreaOf;
using test::AuthoredAt;
using test::AuthoredSubtitle;
using test::Bytes;
using test::DecodedAt;
using test::Join;
using test::PacketBuilder;
using test::Sound;

constexpr std::int64_t TicksPerTenThousandth = 9;

class AuthoringProjectTool : public testing::Test {
 protected:
  void SetUp() override {
    spumux_ = test::FindSpumux();
    if (spumux_.isEmpty()) {
      GTEST_SKIP() << "spumux (Debian package dvdauthor) is not installed";
    }
    ASSERT_TRUE(folder_.isValid());
  }

  /// Writes the project and has it encoded.
  void Author(const SupStream& stream, int frameHeight) {
    const auto written =
        WriteAuthoringProject(stream, List(), {.Palette = StartUpPalette, .FrameHeight = frameHeight});
    ASSERT_TRUE(written) << written.Reason();
    Notes = written->Notes;
    Run = test::AuthorList(spumux_, List());
    ASSERT_EQ(Run.ExitCode, 0) << Run.Log.toStdString();
  }

  [[nodiscard]] QString List() const { return folder_.filePath("film.xml"); }
  [[nodiscard]] QString Folder() const { return folder_.path(); }
  [[nodiscard]] QString Spumux() const { return spumux_; }

  std::vector<std::string> Notes;
  test::AuthoringRun Run;

 private:
  QString spumux_;
  QTemporaryDir folder_;
};

/// Time, delay, and every pixel of the frame that either covers.
void ExpectSame(const SupStream& stream, std::size_t index, const AuthoredSubtitle& authored) {
  SCOPED_TRACE("subtitle " + std::to_string(index + 1));
  std::vector<std::uint8_t> buffer;
  const SubtitleUnit unit = UnitOf(stream, index, buffer);
  const SubtitleDescription description = DescribeSubtitle(unit).value();
  const SpuControl& control = description.Control;
  EXPECT_NEAR(static_cast<double>(authored.Description.StartTicks),
              static_cast<double>(description.StartTicks), TicksPerTenThousandth / 2);
  EXPECT_EQ(authored.Description.Control.Delay, control.Delay);
  cBitmap picture;
  DecodePicture(unit.Bytes, control, MakeCodeColours(StartUpPalette, control), picture);
  EXPECT_EQ(test::CountDifferences(authored, picture.Image(), control), 0);
}

struct ProjectCase {
  const char* Sample;
  int FrameHeight;
};

void PrintTo(const ProjectCase& film, std::ostream* out) {
  *out << film.Sample;
}

class AuthoringProjectFilm : public AuthoringProjectTool, public testing::WithParamInterface<ProjectCase> {};

TEST_P(AuthoringProjectFilm, SpumuxEncodesEverySubtitleAsItIs) {
  const SupStream stream =
      test::StreamOf(LoadPrimaryStream(std::filesystem::path(QUILLMARK_SAMPLES) / GetParam().Sample));
  ASSERT_NO_FATAL_FAILURE(Author(stream, GetParam().FrameHeight));
  ASSERT_EQ(Run.Subtitles.size(), stream.PacketOffset.size()) << Run.Log.toStdString();
  EXPECT_THAT(Notes, testing::ElementsAre());
  for (std::size_t i = 0; i < Run.Subtitles.size(); ++i) {
    ExpectSame(stream, i, Run.Subtitles[i]);
  }
}

INSTANTIATE_TEST_SUITE_P(Films, AuthoringProjectFilm,
                         testing::Values(ProjectCase{"demo.sup", 576}, ProjectCase{"ntsc.sup", 480}),
                         [](const auto& film) { return std::to_string(film.param.FrameHeight); });

/// Five pixels wide, two lines, all four codes visible.
Bytes FourVisibleCodes(unsigned x) {
  return Join(
      {{0x45, 0x67, 0x50, 0x45, 0x67, 0x50},
       test::Sequence(0, 34,
                      {test::StartDisplay, test::SetColour(3, 2, 1, 4), test::SetContrast(15, 15, 15, 8),
                       test::SetArea(x, x + 4, 400, 401), test::SetFields(4, 7), test::EndOfSequence}),
       test::Sequence(90, 34, {test::StopDisplay, test::EndOfSequence})});
}

TEST_F(AuthoringProjectTool, FourVisibleColoursOfAnOddWidthAreTaken) {
  ASSERT_NO_FATAL_FAILURE(
      Author(test::Index(Join({Sound(90000).Unit(FourVisibleCodes(100)).ControlOffset(10).Build(),
                               Sound(270000).Unit(FourVisibleCodes(715)).ControlOffset(10).Build()})),
             576));
  ASSERT_EQ(Run.Subtitles.size(), 2U) << Run.Log.toStdString();
  EXPECT_THAT(Notes, testing::SizeIs(2));
  EXPECT_EQ(AreaOf(Run.Subtitles[0].Description.Control), QRect(100, 400, 6, 2));
  EXPECT_EQ(AreaOf(Run.Subtitles[1].Description.Control), QRect(714, 400, 6, 2));
  // Codes 0, 1, 2, 3, 1: the last pixel of the first one is the one that stands twice, the first of the
  // second.
  const auto at = [this](std::size_t subtitle, int x) {
    return AuthoredAt(Run.Subtitles[subtitle], {x, 400});
  };
  EXPECT_EQ(at(0, 105), at(0, 104));
  EXPECT_EQ(at(0, 104), at(0, 101));
  EXPECT_EQ(at(1, 714), at(1, 715));
  EXPECT_EQ(at(1, 715).Contrast, 8);
}

TEST_F(AuthoringProjectTool, AnOddPictureAtTheFramesEdgeStaysInside) {
  ASSERT_NO_FATAL_FAILURE(Author(test::Index(Sound(90000).Area(717, 719, 400, 401).Build()), 576));
  ASSERT_EQ(Run.Subtitles.size(), 1U) << Run.Log.toStdString();
  EXPECT_EQ(AreaOf(Run.Subtitles[0].Description.Control), QRect(716, 400, 4, 2));
  EXPECT_EQ(AuthoredAt(Run.Subtitles[0], {716, 400}).Contrast, 0);
  EXPECT_EQ(AuthoredAt(Run.Subtitles[0], {717, 400}).Contrast, 15);
}

TEST_F(AuthoringProjectTool, TheDiscHasTheProjectsPalette) {
  const QString dvdauthor = QStandardPaths::findExecutable("dvdauthor");
  const QString ffmpeg = QStandardPaths::findExecutable("ffmpeg");
  if (dvdauthor.isEmpty() || ffmpeg.isEmpty()) {
    GTEST_SKIP() << "dvdauthor and ffmpeg are not installed";
  }
  // All entries of it are in use, so that dvdauthor could add none of its own.
  DvdPalette palette = {};
  for (unsigned i = 0; i < palette.size(); ++i) {
    palette[i] = MakeRgb(255 - i * 16, (i * 83 + 11) & 0xFFU, (i * 151 + 7) & 0xFFU);
  }
  Bytes file;
  for (unsigned i = 0; i < 12; ++i) {
    const Bytes packet =
        Sound(90000 + 45000 * i).Delay(30).Colour(i + 3, i + 2, i + 1, i).Contrast(15, 15, 15, 15).Build();
    file.insert(file.end(), packet.begin(), packet.end());
  }
  const auto written =
      WriteAuthoringProject(test::Index(file), List(), {.Palette = palette, .Language = "en"});
  ASSERT_TRUE(written) << written.Reason();

  const test::ToolRun film =
      test::RunIn(Folder(), ffmpeg,
                  {"-v", "error", "-f", "lavfi", "-i", "color=black:s=720x576:r=25:d=8", "-target", "pal-dvd",
                   "-aspect", "4:3", "-an", "own.mpg"});
  ASSERT_TRUE(film.IsDone) << film.Log.toStdString();
  const test::ToolRun mux =
      test::RunIn(Folder(), Spumux(), {"film.xml"}, Folder() + "/own.mpg", Folder() + "/film.mpg");
  ASSERT_TRUE(mux.IsDone) << mux.Log.toStdString();
  const test::ToolRun disc = test::RunIn(Folder(), dvdauthor, {"-x", "film_dvdauthor.xml"});
  ASSERT_TRUE(disc.IsDone) << disc.Log.toStdString();

  EXPECT_TRUE(QFile::exists(Folder() + "/film_dvd/VIDEO_TS/VIDEO_TS.IFO"));
  const auto read = LoadPaletteFile((Folder() + "/film_dvd/VIDEO_TS/VTS_01_0.IFO").toStdString());
  ASSERT_TRUE(read) << read.Reason();
  for (std::size_t i = 0; i < palette.size(); ++i) {
    EXPECT_EQ((*read)[i], RgbToYCrCb(palette[i])) << "entry " << i;
  }
}

}  // namespace
}  // namespace quillmark
