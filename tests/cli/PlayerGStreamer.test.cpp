// What a player shows, beside GStreamer's overlay of DVD subtitles (its element dvdspu). Skipped where
// gst-launch-1.0 or ffmpeg is not installed.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <QImage>
#include <QStandardPaths>

#include "tests/cli/Program.h"
#include "tests/support/PlayedUnit.h"

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::ColourChange;
using test::ColourGroup;
using test::Join;
using test::NoMoreGroups;

constexpr int FilmWidth = 64;
constexpr int FilmHeight = 32;
constexpr int FilmPictures = 80;
constexpr int PictureMs = 40;

/// Of the first subtitle, between two pictures of the film.
constexpr std::int64_t StartMs = 980;
/// The second one starts 150 delay units later, on a player's clock.
constexpr std::int64_t SecondStart = StartMs * 90 + 150 * 1024;

/// Eight lines of 8 pixels from unit byte 4, two of each code from 0 to 3, and from byte 20 from 3 to 0.
Bytes Fields() {
  Bytes fields;
  for (int line = 0; line < 8; ++line) {
    fields.insert(fields.end(), {0x89, 0xAB});
  }
  for (int line = 0; line < 8; ++line) {
    fields.insert(fields.end(), {0xBA, 0x98});
  }
  return fields;
}

Bytes Shown() {
  return Join({test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 0),
               test::SetArea(16, 23, 8, 15), test::SetFields(4, 12)});
}

/// All that can happen to a subtitle, every 20 delay units.
Bytes Film() {
  const Bytes changes = test::ChangeColours(
      {ColourGroup(0, 11, 2, {ColourChange(18, 0x4567, 0xFFFF), ColourChange(20, 0x89AB, 0xF8F8)}),
       ColourGroup(12, 13, 2, {ColourChange(4, 0x1111, 0xFFFF), ColourChange(20, 0x2222, 0xFFFF)}),
       NoMoreGroups});
  const Bytes first =
      test::Played(
          Fields(),
          {{.Delay = 0, .Commands = Shown()},
           {.Delay = 20, .Commands = test::SetContrast(8, 8, 8, 4)},
           {.Delay = 40, .Commands = changes},
           {.Delay = 60, .Commands = Join({test::SetArea(32, 39, 18, 25), test::SetColour(7, 6, 5, 4)})},
           {.Delay = 80, .Commands = Join({test::ChangeColours({NoMoreGroups}), test::SetFields(20, 28)})},
           {.Delay = 100, .Commands = test::StopDisplay},
           {.Delay = 120, .Commands = test::ForcedStart},
           {.Delay = 140, .Commands = test::SetArea(2, 9, 2, 5)}})
          .Time(StartMs * 90)
          .Build();
  const Bytes second = test::Played(Fields(), {{.Delay = 0, .Commands = Shown()},
                                               {.Delay = 20, .Commands = test::StopDisplay}})
                           .Time(SecondStart)
                           .Build();
  return Join({first, second});
}

class PlayerGStreamer : public test::ProgramTest {
 protected:
  void SetUp() override {
    for (const char* program : {"gst-launch-1.0", "ffmpeg"}) {
      if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty()) {
        GTEST_SKIP() << program << " is not installed";
      }
    }
    const std::string version = RunScript("gst-launch-1.0 --version").Out;
    takesLaterCommands_ = version.find("GStreamer 1.22.") != std::string::npos;
    Write("film.sup", Film());
    ASSERT_EQ(Run({"convert", "film.sup", "-o", "film.idx"}).ExitCode, 0);
    // One file with both streams, so that the overlay gets them in one order.
    const auto made = RunScript(
        "ffmpeg -v error -f lavfi -i color=black:s=64x32:r=25:d=3.2 -i film.idx -map 0:v -map 1:s "
        "-c:v rawvideo -pix_fmt yuv420p -c:s copy film.mkv && "
        "gst-launch-1.0 -q filesrc location=film.mkv ! matroskademux name=file "
        "dvdspu name=overlay ! filesink location=film.yuv "
        "file.video_0 ! overlay.video file.subtitle_0 ! overlay.subpicture");
    ASSERT_EQ(made.ExitCode, 0) << made.Err;
    film_ = Read("film.yuv");
    ASSERT_EQ(film_.size(), std::size_t{PictureSize} * FilmPictures);
  }

  [[nodiscard]] bool TakesLaterCommands() const { return takesLaterCommands_; }
  /// Whether the overlay shows what it should. From some version on, 1.26 for one, it draws a unit once and
  /// shows that again until the unit stops, whatever later commands say of it.
  [[nodiscard]] bool IsUpToDate(int picture) const {
    return takesLaterCommands_ || picture < 30 || picture >= 68;
  }

  /// What the overlay makes of a black film.
  [[nodiscard]] std::uint8_t Luma(int picture, int x, int y) const {
    return film_[static_cast<std::size_t>(picture * PictureSize + y * FilmWidth + x)];
  }

  /// What this program says that a player shows then; the corner of a clear frame.
  QImage Shows(int picture) {
    const std::int64_t ticks = (picture * PictureMs - StartMs) * 90;
    const bool isSecond = ticks >= SecondStart - StartMs * 90;
    const std::int64_t since = isSecond ? ticks - (SecondStart - StartMs * 90) : ticks;
    const auto run = Run({"picture", "film.sup", isSecond ? "2" : "1", "-o", "at.png", "--frame", "480",
                          "--player", "--at", std::to_string(static_cast<double>(since) / 90)});
    EXPECT_EQ(run.ExitCode, 0) << run.Err;
    return QImage(QString::fromStdString(Path("at.png"))).copy(0, 0, FilmWidth, FilmHeight);
  }

 private:
  static constexpr int PictureSize = FilmWidth * FilmHeight * 3 / 2;

  Bytes film_;
  bool takesLaterCommands_ = false;
};

/// Times, colours, contrasts, areas and fields agree. Where they do not: the overlay leaves out the last
/// column of an area, whose ends the format counts in.
TEST_F(PlayerGStreamer, ShowsTheSameAtEveryMoment) {
  // Each colour of ours has to have one brightness of theirs, and the other way round.
  std::map<QRgb, std::uint8_t> lumaOf = {{0U, Luma(0, 0, 0)}};
  for (int picture = 25; picture < FilmPictures; ++picture) {
    const QImage ours = Shows(picture);
    int shown = 0;
    int lit = 0;
    for (int y = 0; y < FilmHeight; ++y) {
      for (int x = 0; x < FilmWidth; ++x) {
        const QRgb pixel = ours.pixel(x, y);
        const bool isLastColumn = qAlpha(pixel) > 0 && (x == 23 || x == 39 || x == 9);
        const QRgb seen = isLastColumn || qAlpha(pixel) == 0 ? 0U : pixel;
        shown += seen != 0 ? 1 : 0;
        const std::uint8_t luma = Luma(picture, x, y);
        lit += luma != lumaOf[0U] ? 1 : 0;
        if (IsUpToDate(picture)) {
          ASSERT_EQ(lumaOf.try_emplace(seen, luma).first->second, luma)
              << "at " << x << ", " << y << " of picture " << picture;
        }
      }
    }
    // 100 delay units after the start it stops, up to 120; the second one stops 20 units after its start.
    const bool isGap = (picture >= 53 && picture < 59) || picture >= 73;
    EXPECT_EQ(shown > 0, !isGap) << picture;
    EXPECT_EQ(lit > 0, !isGap) << picture;
  }
  std::map<std::uint8_t, int> colours;
  for (const auto& [colour, luma] : lumaOf) {
    ++colours[luma];
  }
  const std::size_t least = TakesLaterCommands() ? 11 : 4;
  EXPECT_GE(lumaOf.size(), least);
  EXPECT_GE(colours.size(), least);
}

}  // namespace
}  // namespace quillmark::cli
