#include <algorithm>
#include <array>
#include <cstdint>

#include <QByteArray>
#include <QFileInfo>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QImageWriter>
#include <QPainter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include "imaging/cBitmap.h"
#include "render/PictureFile.h"

// Writing one subtitle's picture as a PNG file: the program's own way, Qt's default, and Qt's writer at each
// compression level. The counter "bytes" is the size of the file.

namespace {

using quillmark::cBitmap;

// Background, body, edge and smoothing of a usual subtitle; the smoothing is half transparent.
constexpr std::array<std::uint32_t, 4> CodeColours = {0x00101010, 0xFFEBEBEB, 0xFF101010, 0x88707070};

std::uint32_t ColourOfShade(std::uint32_t shade, bool edge) {
  if (shade > 170) {
    return CodeColours[1];
  }
  if (shade > 60) {
    return CodeColours[3];
  }
  return edge ? CodeColours[2] : CodeColours[0];
}

/// Two lines of text, 600 x 80 pixels, reduced to four colours with an edge of two pixels around the letters.
QImage SubtitlePicture() {
  QImage shades(600, 80, QImage::Format_Grayscale8);
  shades.fill(0);
  QPainter painter(&shades);
  QFont font(QStringLiteral("sans-serif"));
  font.setPixelSize(32);
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.drawText(shades.rect(), Qt::AlignCenter,
                   QStringLiteral("- Where did you leave the keys?\n- Under the third stone, as always."));
  painter.end();

  constexpr int Edge = 2;
  QImage picture(shades.size(), QImage::Format_ARGB32);
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      bool edge = false;
      for (int dy = -Edge; dy <= Edge; ++dy) {
        for (int dx = -Edge; dx <= Edge; ++dx) {
          edge = edge || (shades.valid(x + dx, y + dy) && qGray(shades.pixel(x + dx, y + dy)) > 60);
        }
      }
      const auto shade = static_cast<std::uint32_t>(qGray(shades.pixel(x, y)));
      picture.setPixel(x, y, ColourOfShade(shade, edge));
    }
  }
  return picture;
}

/// The picture in the full frame that the merge of two streams composes and exports.
QImage FramePicture() {
  QImage frame(720, 576, QImage::Format_ARGB32);
  frame.fill(0U);
  const QImage subtitle = SubtitlePicture();
  for (int y = 0; y < subtitle.height(); ++y) {
    for (int x = 0; x < subtitle.width(); ++x) {
      frame.setPixel(60 + x, 470 + y, subtitle.pixel(x, y));
    }
  }
  return frame;
}

/// Whether each picture gets a name of its own, as in exporting a stream, or goes over the one before, as
/// when a subtitle is drawn again.
enum class Name { New, Same };

/// A place to write to, and the size of what was written there last.
class Target {
 public:
  explicit Target(Name name) : name_(name) {}

  QString NextPath() {
    count_ += name_ == Name::New ? 1 : 0;
    return Path();
  }

  void Report(benchmark::State& state) const {
    state.counters["bytes"] = static_cast<double>(QFileInfo(Path()).size());
  }

 private:
  [[nodiscard]] QString Path() const { return folder_.filePath(QString::number(count_) + ".png"); }

  Name name_;
  QTemporaryDir folder_;
  int count_ = 0;
};

using MakePicture = QImage();

void QtDefault(benchmark::State& state, MakePicture* makePicture, Name name) {
  const QImage picture = makePicture();
  Target target(name);
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(picture.save(target.NextPath()));
  }
  target.Report(state);
}

void WritePicture(benchmark::State& state, MakePicture* makePicture, Name name) {
  const QImage picture = makePicture();
  cBitmap bitmap;
  bitmap.Create(picture.width(), picture.height());
  const auto pixels = bitmap.LockPixels();
  std::copy_n(reinterpret_cast<const std::uint32_t*>(picture.constBits()), pixels.size(), pixels.begin());
  Target target(name);
  for ([[maybe_unused]] auto _ : state) {
    if (!quillmark::WritePicture(target.NextPath(), bitmap, quillmark::Durability::Unsynced)) {
      state.SkipWithError("not written");
    }
  }
  target.Report(state);
}

void QtLevel(benchmark::State& state, MakePicture* makePicture) {
  const QImage picture = makePicture();
  // The writer takes 0-100 and makes zlib's 0-9 of it.
  const int compression = static_cast<int>(state.range(0) * 91 + 8) / 9;
  Target target(Name::New);
  for ([[maybe_unused]] auto _ : state) {
    QImageWriter writer(target.NextPath(), "png");
    writer.setCompression(compression);
    benchmark::DoNotOptimize(writer.write(picture));
  }
  target.Report(state);
}

BENCHMARK_CAPTURE(QtDefault, subtitle, SubtitlePicture, Name::New);
BENCHMARK_CAPTURE(WritePicture, subtitle, SubtitlePicture, Name::New);
BENCHMARK_CAPTURE(QtDefault, subtitle_again, SubtitlePicture, Name::Same);
BENCHMARK_CAPTURE(WritePicture, subtitle_again, SubtitlePicture, Name::Same);
BENCHMARK_CAPTURE(QtDefault, frame, FramePicture, Name::New);
BENCHMARK_CAPTURE(WritePicture, frame, FramePicture, Name::New);
BENCHMARK_CAPTURE(QtLevel, subtitle, SubtitlePicture)->DenseRange(0, 9);
BENCHMARK_CAPTURE(QtLevel, frame, FramePicture)->DenseRange(0, 9);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::SetDefaultTimeUnit(benchmark::kMicrosecond);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
