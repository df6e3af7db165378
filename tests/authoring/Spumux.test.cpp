// A DVD authoring tool makes a subtitle stream again from the exported pictures and their list, and we read
// it back. What the tool changes on the way, each change allowed for at the function that expects it:
//
// - It takes a time from the list as it stands there, in hundredths of a second.
// - It counts delays in the DVD's own units of 1024 ticks and rounds them down. We read 1000 ticks into a
// unit,
//   so it is the number of units that is compared, not the end time.
// - It makes width and height even, and cuts off transparent borders.
// - It gives out codes and palette entries in an order of its own, and one code to all that is transparent.

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <gmock/gmock.h>
#include <initializer_list>
#include <iterator>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <QColor>
#include <QDir>
#include <QRect>
#include <QSize>
#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "sup/StreamLoader.h"
#include "tests/authoring/AuthoringTool.h"
#include "tests/authoring/DiscColour.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::AreaOf;
using test::AuthoredSubtitle;
using test::AuthoringRun;
using test::Bytes;
using test::ExportedSubtitle;
using test::Join;
using test::PacketBuilder;

constexpr std::int64_t TicksPerHundredth = 900;
constexpr std::int64_t TicksPerDvdDelayUnit = 1024;

std::string AreaText(const QRect& area) {
  return std::to_string(area.width()) + "x" + std::to_string(area.height()) + " at " +
         std::to_string(area.x()) + ", " + std::to_string(area.y());
}

std::string AreaText(const AuthoredSubtitle& subtitle) {
  return AreaText(AreaOf(subtitle.Description.Control));
}

bool IsVisible(Argb colour) {
  return colour >> 24U != 0;
}

std::set<Argb> VisibleColours(const QImage& picture) {
  std::set<Argb> colours;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (const Argb colour = picture.pixel(x, y); IsVisible(colour)) {
        colours.insert(colour);
      }
    }
  }
  return colours;
}

/// Transparent lines and columns make an odd height or width even; with four visible colours they need a
/// fifth code, and the tool leaves the subtitle out.
bool IsTaken(const ExportedSubtitle& subtitle) {
  const QSize size = subtitle.Picture.size();
  return VisibleColours(subtitle.Picture).size() < 4 || (size.width() % 2 == 0 && size.height() % 2 == 0);
}

std::vector<ExportedSubtitle> Taken(const std::vector<ExportedSubtitle>& exported) {
  std::vector<ExportedSubtitle> taken;
  std::copy_if(exported.begin(), exported.end(), std::back_inserter(taken), IsTaken);
  return taken;
}

QRect VisiblePart(const QImage& picture) {
  QRect visible;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      if (IsVisible(picture.pixel(x, y))) {
        visible |= QRect(x, y, 1, 1);
      }
    }
  }
  return visible;
}

/// Borders are cut off two lines or columns at a time, counted from the picture's corners, so that both
/// fields lose the same; where the picture stands in the frame does not matter. A picture without a visible
/// pixel is left whole.
QRect AuthoredArea(const ExportedSubtitle& subtitle) {
  const QRect visible = VisiblePart(subtitle.Picture);
  const auto down = [](int n) { return n / 2 * 2; };
  const auto up = [](int n) { return (n + 1) / 2 * 2; };
  const QRect kept = visible.isEmpty()
                         ? QRect(0, 0, up(subtitle.Picture.width()), up(subtitle.Picture.height()))
                         : QRect(QPoint(down(visible.left()), down(visible.top())),
                                 QPoint(up(visible.right() + 1) - 1, up(visible.bottom() + 1) - 1));
  return kept.translated(subtitle.Description.Control.X1, subtitle.Description.Control.Y1);
}

/// The time that the list gives, in ticks.
std::int64_t Listed(std::int64_t ticks) {
  return (ticks + TicksPerHundredth / 2) / TicksPerHundredth * TicksPerHundredth;
}

void ExpectSameTimes(const SubtitleDescription& exported, const SubtitleDescription& authored) {
  EXPECT_EQ(authored.StartTicks, Listed(exported.StartTicks));
  ASSERT_EQ(authored.EndTicks.has_value(), exported.EndTicks.has_value());
  if (exported.EndTicks) {
    const std::int64_t duration = Listed(*exported.EndTicks) - Listed(exported.StartTicks);
    EXPECT_EQ(authored.Control.Delay, (duration + TicksPerDvdDelayUnit / 2) / TicksPerDvdDelayUnit);
  }
}

/// Y, Cr, Cb of a colour in studio range (ITU-R BT.601), not rounded.
std::array<double, 3> StudioRange(Argb colour) {
  const double red = qRed(colour) / 255.0;
  const double green = qGreen(colour) / 255.0;
  const double blue = qBlue(colour) / 255.0;
  const double luma = 0.299 * red + 0.587 * green + 0.114 * blue;
  return {16 + 219 * luma, 128 + 224 * (red - luma) / 1.402, 128 + 224 * (blue - luma) / 1.772};
}

/// One step off at most: the tool's own conversion is not ours.
void ExpectSameColour(Argb exported, YCrCb authored) {
  const std::array<double, 3> expected = StudioRange(exported);
  for (unsigned i = 0; i < 3; ++i) {
    EXPECT_NEAR(authored >> (8U * i) & 0xFFU, expected[i], 1.0) << "component " << i;
  }
}

constexpr int NoCode = -1;

/// The code that stands for pixel (x, y) of the frame, NoCode where that is transparent.
int VisibleCode(const AuthoredSubtitle& subtitle, int x, int y) {
  const SpuControl& control = subtitle.Description.Control;
  if (!AreaOf(control).contains(x, y)) {
    return NoCode;
  }
  const int code = static_cast<int>(subtitle.Codes.pixel(x - control.X1, y - control.Y1)) - 1;
  EXPECT_GE(code, 0) << "no run reached " << x << ", " << y;
  return code >= 0 && control.Contrast.at(static_cast<std::size_t>(code)) != 0 ? code : NoCode;
}

/// What pixel (x, y) of the frame is covered with; 0 where that is transparent.
Argb VisibleColour(const ExportedSubtitle& subtitle, int x, int y) {
  const SpuControl& control = subtitle.Description.Control;
  if (!AreaOf(control).contains(x, y)) {
    return 0;
  }
  const Argb colour = subtitle.Picture.pixel(x - control.X1, y - control.Y1);
  return IsVisible(colour) ? colour : 0;
}

using ColourAndCode = std::pair<Argb, int>;

/// What stands for what in the two pictures, pixel by pixel of the frame.
std::set<ColourAndCode> Correspondence(const ExportedSubtitle& exported, const AuthoredSubtitle& authored) {
  std::set<ColourAndCode> pairs;
  const QRect both = AreaOf(exported.Description.Control) | AreaOf(authored.Description.Control);
  for (int y = both.top(); y <= both.bottom(); ++y) {
    for (int x = both.left(); x <= both.right(); ++x) {
      pairs.emplace(VisibleColour(exported, x, y), VisibleCode(authored, x, y));
    }
  }
  return pairs;
}

void ExpectOneToOne(const std::set<ColourAndCode>& pairs) {
  std::set<Argb> colours;
  std::set<int> codes;
  for (const auto& [colour, code] : pairs) {
    EXPECT_TRUE(colours.insert(colour).second) << std::hex << colour << " became several codes";
    EXPECT_TRUE(codes.insert(code).second) << "code " << code << " stands for several colours";
    EXPECT_EQ(code == NoCode, colour == 0) << std::hex << colour << " became code " << code;
  }
}

void ExpectSamePixels(const ExportedSubtitle& exported, const AuthoredSubtitle& authored) {
  const std::set<ColourAndCode> pairs = Correspondence(exported, authored);
  ExpectOneToOne(pairs);
  for (const auto& [colour, code] : pairs) {
    if (code == NoCode) {
      continue;
    }
    const SpuControl& control = authored.Description.Control;
    EXPECT_EQ(control.Contrast.at(static_cast<std::size_t>(code)) * 17, qAlpha(colour));
    const auto entry = static_cast<std::size_t>(control.Colour.at(static_cast<std::size_t>(code)));
    ASSERT_LT(entry, authored.Palette.size());
    ExpectSameColour(colour, authored.Palette[entry]);
  }
}

/// A temporary folder with the exported pictures of one stream in it.
class Spumux : public testing::Test {
 protected:
  void SetUp() override {
    tool_ = test::FindSpumux();
    if (tool_.isEmpty()) {
      GTEST_SKIP() << "spumux (Debian package dvdauthor) is not installed";
    }
    ASSERT_TRUE(folder_.isValid());
  }

  /// Exports `stream` as if it were film.sup in the folder `name`, and has the pictures encoded.
  void ExportAndAuthor(const SupStream& stream, const QString& name, const QString& format) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(name));
    const ExportPaths paths = ExportPathsFor(folder_.filePath(name + QStringLiteral("/film.sup")));
    Exported = test::ExportAll(stream, StartUpPalette, paths);
    Run = test::Author(tool_, paths, format);
    ASSERT_EQ(Run.ExitCode, 0) << Run.Log.toStdString();
  }

  void AuthorPackets(std::initializer_list<Bytes> packets) {
    const SupStream stream = test::StreamOf(IndexPrimaryStream(Join(packets)));
    ExportAndAuthor(stream, QStringLiteral("film"), QStringLiteral("PAL"));
  }

  std::vector<ExportedSubtitle> Exported;
  AuthoringRun Run;

 private:
  QString tool_;
  QTemporaryDir folder_;
};

struct FilmCase {
  const char* Name;
  const char* Sample;
  const char* Format;
  const char* Folder;
};

void PrintTo(const FilmCase& film, std::ostream* out) {
  *out << film.Sample;
}

constexpr FilmCase Films[] = {
    {"Pal", "demo.sup", "PAL", "film"},
    {"Ntsc", "ntsc.sup", "NTSC", "film"},
    {"FolderNeedsEntities", "ntsc.sup", "NTSC", "Salt & \"Pepper\" <'1'>"},
    {"FolderIsNotAscii", "ntsc.sup", "NTSC", "Crème brûlée"},
};

class SpumuxFilm : public Spumux, public testing::WithParamInterface<FilmCase> {
 protected:
  void SetUp() override {
    Spumux::SetUp();
    if (IsSkipped() || HasFatalFailure()) {
      return;
    }
    const SupStream stream =
        test::StreamOf(LoadPrimaryStream(std::filesystem::path(QUILLMARK_SAMPLES) / GetParam().Sample));
    ASSERT_NO_FATAL_FAILURE(
        ExportAndAuthor(stream, QString::fromUtf8(GetParam().Folder), QString::fromUtf8(GetParam().Format)));
  }
};

TEST_P(SpumuxFilm, ComesBackAsItWasExported) {
  const std::vector<ExportedSubtitle> expected = Taken(Exported);
  ASSERT_EQ(Run.Subtitles.size(), expected.size()) << Run.Log.toStdString();
  for (std::size_t i = 0; i < expected.size(); ++i) {
    SCOPED_TRACE("subtitle at tick " + std::to_string(expected[i].Description.StartTicks));
    ExpectSameTimes(expected[i].Description, Run.Subtitles[i].Description);
    EXPECT_EQ(AreaText(Run.Subtitles[i]), AreaText(AuthoredArea(expected[i])));
    ExpectSamePixels(expected[i], Run.Subtitles[i]);
  }
}

INSTANTIATE_TEST_SUITE_P(Films, SpumuxFilm, testing::ValuesIn(Films),
                         [](const auto& film) { return std::string(film.param.Name); });

/// Two lines of four pixels with all four codes: 0, 1, 2, 3. Code 0 is yellow and transparent.
Bytes FourCodes() {
  return Join(
      {{0x45, 0x67, 0x45, 0x67},
       test::Sequence(0, PacketBuilder::LastSequence,
                      {test::StartDisplay, test::SetColour(3, 2, 1, 4), test::SetContrast(12, 7, 1, 0),
                       test::SetArea(101, 104, 401, 402), test::SetFields(4, 6), test::EndOfSequence}),
       test::Sequence(90, PacketBuilder::LastSequence, {test::StopDisplay, test::EndOfSequence})});
}

TEST_F(Spumux, TimesAreThoseOfTheList) {
  // 1.00498 s and 100 units of 1000 ticks: 1.00 to 2.12 in the list, 98.4 units of 1024 ticks.
  AuthorPackets({PacketBuilder().Time(90448).Delay(100).Build()});
  ASSERT_EQ(Run.Subtitles.size(), 1U);
  EXPECT_EQ(Run.Subtitles[0].Description.StartTicks, 90000);
  EXPECT_EQ(Run.Subtitles[0].Description.Control.Delay, 98);
}

TEST_F(Spumux, TheLastSubtitleMayBeUntimed) {
  AuthorPackets({PacketBuilder().Time(90000).Delay(90).Build(), PacketBuilder().Time(270000).Build()});
  ASSERT_EQ(Run.Subtitles.size(), 2U);
  EXPECT_EQ(Run.Subtitles[1].Description.StartTicks, 270000);
  EXPECT_EQ(Run.Subtitles[1].Description.DurationMs, std::nullopt);
  ExpectSamePixels(Exported[1], Run.Subtitles[1]);
}

TEST_F(Spumux, AnUntimedSubtitleEndsWhereTheNextOneStarts) {
  AuthorPackets({PacketBuilder().Time(90000).Build(), PacketBuilder().Time(270000).Delay(90).Build()});
  ASSERT_EQ(Run.Subtitles.size(), 2U);
  EXPECT_EQ(Run.Subtitles[0].Description.Control.Delay, 176);  // 180000 / 1024 = 175.8
}

TEST_F(Spumux, ABackgroundOfAnyColourIsTransparent) {
  AuthorPackets({PacketBuilder().Time(90000).Unit(FourCodes()).Build()});
  ASSERT_EQ(Run.Subtitles.size(), 1U) << Run.Log.toStdString();
  ExpectSamePixels(Exported[0], Run.Subtitles[0]);
}

TEST_F(Spumux, OddSizesAreMadeEven) {
  // Five pixels wide, three lines high, of which the last is left transparent.
  const Bytes unit =
      Join({{0x15, 0x16, 0x17, 0x00},
            test::Sequence(0, PacketBuilder::LastSequence,
                           {test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 0),
                            test::SetArea(101, 105, 401, 403), test::SetFields(4, 6), test::EndOfSequence}),
            test::Sequence(90, PacketBuilder::LastSequence, {test::StopDisplay, test::EndOfSequence})});
  AuthorPackets({PacketBuilder().Time(90000).Unit(unit).Build()});
  ASSERT_EQ(Run.Subtitles.size(), 1U) << Run.Log.toStdString();
  EXPECT_EQ(AreaText(Run.Subtitles[0]), "6x2 at 101, 401");
  ExpectSamePixels(Exported[0], Run.Subtitles[0]);
}

TEST_F(Spumux, ATransparentPictureIsLeftWhole) {
  AuthorPackets({PacketBuilder().Time(90000).Delay(90).Contrast(0, 0, 0, 0).Build()});
  ASSERT_EQ(Run.Subtitles.size(), 1U) << Run.Log.toStdString();
  EXPECT_EQ(AreaText(Run.Subtitles[0]), "4x2 at 100, 400");
  ExpectSamePixels(Exported[0], Run.Subtitles[0]);
}

TEST_F(Spumux, FourVisibleColoursNeedEvenSizes) {
  // Codes 0, 1, 2, 3, 1 and nothing transparent.
  const Bytes unit =
      Join({{0x45, 0x67, 0x50, 0x45, 0x67, 0x50},
            test::Sequence(0, 34,
                           {test::StartDisplay, test::SetColour(3, 2, 1, 4), test::SetContrast(15, 15, 15, 8),
                            test::SetArea(100, 104, 400, 401), test::SetFields(4, 7), test::EndOfSequence}),
            test::Sequence(90, 34, {test::StopDisplay, test::EndOfSequence})});
  AuthorPackets({PacketBuilder().Time(90000).Unit(unit).ControlOffset(10).Build(),
                 PacketBuilder().Time(270000).Delay(90).Build()});
  ASSERT_EQ(Run.Subtitles.size(), 1U);
  EXPECT_EQ(Run.Subtitles[0].Description.StartTicks, 270000);
  EXPECT_FALSE(IsTaken(Exported[0]));
  EXPECT_THAT(Run.Log.toStdString(), testing::HasSubstr("Too many colors"));
}

}  // namespace
}  // namespace quillmark
