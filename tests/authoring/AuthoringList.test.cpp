// The authoring tool and we encode one list, and both come out as the same pixels at the same places and
// times; and a project that was exported reads back as the units that it was made of.

#include "containers/AuthoringList.h"

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "base/FilePath.h"
#include "render/AuthoringProject.h"
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
using test::AuthoredSubtitle;
using test::DecodedAt;
using test::Join;
using test::Sound;
using testing::ElementsAre;

/// What we make of a list.
struct ReadList {
  SupStream Stream;
  DvdPalette Palette = {};
  std::vector<std::string> Notes;
};

ReadList Read(const QString& path) {
  ReadList list;
  auto read = ReadAuthoringList(PathFromUtf8(path.toStdString()));
  EXPECT_TRUE(read && *read && (*read)->Tracks.size() == 1) << read.Reason();
  if (read && *read && (*read)->Tracks.size() == 1) {
    Track& track = (*read)->Tracks[0];
    list = {.Stream = test::Index(track.Packets),
            .Palette = track.Palette.value_or(DvdPalette()),
            .Notes = track.Notes};
  }
  return list;
}

class AuthoringListTool : public testing::Test {
 protected:
  void SetUp() override {
    spumux_ = test::FindSpumux();
    if (spumux_.isEmpty()) {
      GTEST_SKIP() << "spumux (Debian package dvdauthor) is not installed";
    }
    ASSERT_TRUE(folder_.isValid());
  }

  [[nodiscard]] QString Path(const QString& name) const { return folder_.filePath(name); }

  void PutList(const QByteArray& lines) {
    QFile file(Path("film.xml"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<subpictures format=\"PAL\"><stream>\n" + lines + "</stream></subpictures>\n");
  }
  /// A picture whose pixels are what the function says.
  void PutPicture(const QString& name, int width, int height, const std::function<QRgb(int, int)>& pixel) {
    QImage image(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        image.setPixel(x, y, pixel(x, y));
      }
    }
    ASSERT_TRUE(image.save(Path(name)));
  }

  /// Has both encode film.xml and compares all that a disc would show.
  void ExpectSameFromBoth() {
    const test::AuthoringRun run = test::AuthorList(spumux_, Path("film.xml"));
    ASSERT_EQ(run.ExitCode, 0) << run.Log.toStdString();
    const ReadList list = Read(Path("film.xml"));
    ASSERT_EQ(list.Stream.PacketOffset.size(), run.Subtitles.size()) << run.Log.toStdString();
    for (std::size_t i = 0; i < run.Subtitles.size(); ++i) {
      SCOPED_TRACE("subtitle " + std::to_string(i + 1));
      ExpectSame(list, i, run.Subtitles[i]);
    }
    Read_ = list;
  }

  ReadList Read_;

 private:
  static void ExpectSame(const ReadList& list, std::size_t index, const AuthoredSubtitle& authored) {
    std::vector<std::uint8_t> buffer;
    const SubtitleUnit unit = UnitOf(list.Stream, index, buffer);
    const SubtitleDescription description = DescribeSubtitle(unit).value();
    const SpuControl& control = description.Control;
    EXPECT_EQ(description.StartTicks, authored.Description.StartTicks);
    EXPECT_EQ(control.Delay, authored.Description.Control.Delay);
    EXPECT_EQ(AreaOf(control), AreaOf(authored.Description.Control));
    cBitmap picture;
    DecodePicture(unit.Bytes, control, MakeCodeColours(list.Palette, control), picture);
    EXPECT_EQ(test::CountDifferences(authored, picture.Image(), control), 0);
  }

  QString spumux_;
  QTemporaryDir folder_;
};

constexpr QRgb Red = 0xFFFF0000;
constexpr QRgb Green = 0xFF00C000;
constexpr QRgb White = 0xFFFFFFFF;
constexpr QRgb Grey = 0x88808080;
constexpr QRgb Nothing = 0x00000000;

TEST_F(AuthoringListTool, ProjectsOfWholeStreams) {
  for (const char* sample : {"demo.sup", "ntsc.sup"}) {
    SCOPED_TRACE(sample);
    const SupStream stream =
        test::StreamOf(LoadPrimaryStream(std::filesystem::path(QUILLMARK_SAMPLES) / sample));
    ASSERT_TRUE(WriteAuthoringProject(stream, Path("film.xml"), {.Existing = Overwriting::Allowed}));
    ASSERT_NO_FATAL_FAILURE(ExpectSameFromBoth());
    EXPECT_THAT(Read_.Notes, ElementsAre());
  }
}

TEST_F(AuthoringListTool, TimesOfEveryForm) {
  PutPicture("a.png", 6, 4, [](int x, int y) { return (x + y) % 2 == 0 ? Red : Nothing; });
  const QByteArray picture = "image=\"a.png\" xoffset=\"101\" yoffset=\"51\"/>\n";
  QByteArray lines;
  for (const char* times :
       {"start=\"1\" end=\"2\"", "start=\"2.5\"", "start=\"3,25\" end=\"9\"", "start=\"0:04.0001\" end=\"4\"",
        "start=\"5.1234\" end=\"5.1291\"", "start=\"7\" end=\"7.5\"", "start=\"6\" end=\"0\"",
        "start=\"8.00019\" end=\"8.5s\"", "start=\"0:0:9\" end=\"10\"", "start=\"9.5\" end=\"10.99\"",
        "start=\"9.501\" end=\"12\"", "start=\"9.502\" end=\"11.996\"", "start=\"11.9965\" end=\"13\"",
        "start=\"1:00:00.004\""}) {
    lines += QByteArray("<spu ") + times + " " + picture;
  }
  PutList(lines);
  ASSERT_NO_FATAL_FAILURE(ExpectSameFromBoth());
  EXPECT_GT(Read_.Stream.PacketOffset.size(), 9U);
}

TEST_F(AuthoringListTool, BordersAndOddSizes) {
  PutPicture("inside.png", 21, 11, [](int x, int y) { return x > 4 && x < 8 && y == 3 ? Red : Nothing; });
  PutPicture("corner.png", 19, 9, [](int x, int y) { return x == 18 && y == 8 ? Red : Nothing; });
  PutPicture("odd.png", 5, 3, [](int x, int y) { return (x + y) % 2 == 0 ? Red : White; });
  PutPicture("blank.png", 7, 5, [](int, int) { return Nothing; });
  PutPicture("full.png", 4, 4, [](int x, int y) {
    constexpr QRgb Four[] = {Red, Green, White, Grey};
    return Four[(x + y) % 4];
  });
  PutPicture("even.png", 12, 8,
             [](int x, int y) { return x > 1 && y > 1 && x < 10 && y < 6 ? Green : Nothing; });
  QByteArray lines;
  int second = 0;
  for (const char* name : {"inside", "corner", "odd", "blank", "full", "even"}) {
    second += 2;
    lines += "<spu start=\"" + QByteArray::number(second) + "\" end=\"" + QByteArray::number(second + 1) +
             "\" image=\"" + name + ".png\" xoffset=\"101\" yoffset=\"50\"/>\n";
  }
  PutList(lines);
  ASSERT_NO_FATAL_FAILURE(ExpectSameFromBoth());
  EXPECT_EQ(Read_.Stream.PacketOffset.size(), 6U);
}

TEST_F(AuthoringListTool, AlphaAndTransparentColours) {
  PutPicture("alpha.png", 16, 2, [](int x, int) {
    return qRgba(255, 255, 255, x < 8 ? 15 : x < 12 ? 127 : 254);
  });
  PutPicture("transparent.png", 8, 4, [](int x, int y) { return x == 0 || y == 3 ? Red : White; });
  PutPicture("both.png", 8, 4, [](int x, int y) { return x == 0 ? Nothing : y == 3 ? Red : White; });
  PutPicture("hidden.png", 8, 4, [](int x, int) {
    return x < 4 ? qRgba(9, 9, 9, 0) : x < 6 ? Nothing : Green;
  });
  PutList(
      "<spu start=\"1\" end=\"2\" image=\"alpha.png\" force=\"yes\"/>\n"
      "<spu start=\"3\" end=\"4\" image=\"transparent.png\" transparent=\"#ff0000\"/>\n"
      "<spu start=\"5\" end=\"6\" image=\"both.png\" transparent=\"ff0000\"/>\n"
      "<spu start=\"7\" end=\"8\" image=\"hidden.png\"/>\n");
  ASSERT_NO_FATAL_FAILURE(ExpectSameFromBoth());
}

/// All that a unit says.
SpuControl ControlOf(const SupStream& stream, std::size_t index) {
  std::vector<std::uint8_t> buffer;
  return DescribeSubtitle(UnitOf(stream, index, buffer)).value().Control;
}

TEST(AuthoringRoundTrip, ColoursContrastsDelaysAndThePaletteComeBack) {
  QTemporaryDir folder;
  const QString path = folder.filePath("film.xml");
  const SupStream stream = test::StreamOf(LoadPrimaryStream(QUILLMARK_SAMPLES "/demo.sup"));
  DvdPalette palette = {};
  for (unsigned i = 0; i < palette.size(); ++i) {
    palette[i] = MakeRgb(16 * i, (i * 83 + 11) & 0xFFU, (i * 151 + 7) & 0xFFU);
  }
  ASSERT_TRUE(WriteAuthoringProject(stream, path, {.Palette = palette}));
  const ReadList list = Read(path);
  ASSERT_EQ(list.Stream.PacketOffset.size(), stream.PacketOffset.size());
  EXPECT_THAT(list.Notes, ElementsAre());
  for (std::size_t i = 0; i < stream.PacketOffset.size(); ++i) {
    const SpuControl before = ControlOf(stream, i);
    const SpuControl after = ControlOf(list.Stream, i);
    EXPECT_EQ(after.Colour, before.Colour) << i;
    EXPECT_EQ(after.Contrast, before.Contrast) << i;
    EXPECT_EQ(after.Delay, before.Delay) << i;
    for (const int entry : before.Colour) {
      EXPECT_EQ(list.Palette.at(static_cast<std::size_t>(entry)),
                palette.at(static_cast<std::size_t>(entry)));
    }
  }
}

TEST(AuthoringRoundTrip, CodesOfOneColourStayTwo) {
  QTemporaryDir folder;
  const QString path = folder.filePath("film.xml");
  const SupStream stream = test::Index(Sound(90000).Colour(5, 5, 5, 5).Contrast(9, 9, 9, 0).Build());
  ASSERT_TRUE(WriteAuthoringProject(stream, path));
  const SpuControl after = ControlOf(Read(path).Stream, 0);
  EXPECT_EQ(after.Colour, (std::array<int, 4>{5, 5, 5, 5}));
  EXPECT_EQ(after.Contrast, (std::array<int, 4>{0, 9, 9, 9}));
}

TEST(AuthoringRoundTrip, TheListOfSavedPicturesIsRead) {
  QTemporaryDir folder;
  const SupStream stream = test::StreamOf(LoadPrimaryStream(QUILLMARK_SAMPLES "/demo.sup"));
  const ExportPaths paths = ExportPathsFor(folder.filePath("film.sup"));
  const auto exported = test::ExportAll(stream, StartUpPalette, paths);
  const ReadList list = Read(paths.List);
  ASSERT_EQ(list.Stream.PacketOffset.size(), exported.size());
  for (std::size_t i = 0; i < exported.size(); ++i) {
    std::vector<std::uint8_t> buffer;
    const SubtitleUnit unit = UnitOf(list.Stream, i, buffer);
    const SpuControl control = DescribeSubtitle(unit).value().Control;
    cBitmap picture;
    DecodePicture(unit.Bytes, control, MakeCodeColours(list.Palette, control), picture);
    const SpuControl& before = exported[i].Description.Control;
    int differences = 0;
    for (int y = 0; y < exported[i].Picture.height(); ++y) {
      for (int x = 0; x < exported[i].Picture.width(); ++x) {
        const QPoint at(before.X1 + x, before.Y1 + y);
        differences +=
            DecodedAt(picture.Image(), control, at) == DecodedAt(exported[i].Picture, before, at) ? 0 : 1;
      }
    }
    EXPECT_EQ(differences, 0) << i;
  }
}

}  // namespace
}  // namespace quillmark
