#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <libdeflate.h>
#include <vector>

#include <QByteArray>
#include <QFileInfo>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include "bench/Film.h"
#include "imaging/PngWriter.h"
#include "imaging/cBitmap.h"
#include "render/Composition.h"
#include "render/PictureFile.h"
#include "render/SubtitleDescription.h"
#include "sup/StreamLoader.h"

// Writing subtitles' pictures as PNG files: the program's own way, Qt's default, and packing alone at each
// level of libdeflate. The counter "bytes" is the size of the files.

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

std::vector<QImage> Subtitle() {
  return {SubtitlePicture()};
}

/// The picture in the full frame that the merge of two streams composes and exports.
std::vector<QImage> Frame() {
  QImage frame(720, 576, QImage::Format_ARGB32);
  frame.fill(0U);
  const QImage subtitle = SubtitlePicture();
  for (int y = 0; y < subtitle.height(); ++y) {
    for (int x = 0; x < subtitle.width(); ++x) {
      frame.setPixel(60 + x, 470 + y, subtitle.pixel(x, y));
    }
  }
  return {frame};
}

/// The first pictures of a film.
std::vector<QImage> Film() {
  constexpr int Count = 40;
  const auto film = quillmark::IndexPrimaryStream(quillmark::MakeFilm({.Subtitles = Count}));
  std::vector<QImage> pictures;
  std::vector<std::uint8_t> buffer;
  for (std::size_t i = 0; film && i < film->Stream.PacketOffset.size(); ++i) {
    const quillmark::SubtitleUnit unit = quillmark::UnitOf(film->Stream, i, buffer);
    const auto description = quillmark::DescribeSubtitle(unit);
    if (!description) {
      std::abort();
    }
    cBitmap picture;
    quillmark::DecodePicture(unit.Bytes, description->Control,
                             quillmark::MakeCodeColours(quillmark::StartUpPalette, description->Control),
                             picture);
    pictures.push_back(picture.Image());
  }
  return pictures;
}

/// Whether each picture gets a name of its own, as in exporting a stream, or goes over the one before, as
/// when a subtitle is drawn again.
enum class Name { New, Same };

/// A place to write to, and the size of what was written there last.
class Target {
 public:
  explicit Target(Name name) : name_(name) {}

  /// Of picture `index` of the iteration at hand.
  [[nodiscard]] QString Path(std::size_t index) const {
    return folder_.filePath(QString::number(count_) + "_" + QString::number(index) + ".png");
  }
  void Next() { count_ += name_ == Name::New ? 1 : 0; }

  void Report(benchmark::State& state, std::size_t pictures) {
    count_ -= name_ == Name::New ? 1 : 0;
    qint64 bytes = 0;
    for (std::size_t i = 0; i < pictures; ++i) {
      bytes += QFileInfo(Path(i)).size();
    }
    state.counters["bytes"] = static_cast<double>(bytes);
  }

 private:
  Name name_;
  QTemporaryDir folder_;
  int count_ = 0;
};

using MakePictures = std::vector<QImage>();

void QtDefault(benchmark::State& state, MakePictures* makePictures, Name name) {
  const std::vector<QImage> pictures = makePictures();
  Target target(name);
  for ([[maybe_unused]] auto _ : state) {
    for (std::size_t i = 0; i < pictures.size(); ++i) {
      benchmark::DoNotOptimize(pictures[i].save(target.Path(i)));
    }
    target.Next();
  }
  target.Report(state, pictures.size());
}

void WritePicture(benchmark::State& state, MakePictures* makePictures, Name name) {
  std::vector<cBitmap> pictures;
  for (const QImage& picture : makePictures()) {
    pictures.emplace_back(picture);
  }
  Target target(name);
  for ([[maybe_unused]] auto _ : state) {
    for (std::size_t i = 0; i < pictures.size(); ++i) {
      if (!quillmark::WritePicture(target.Path(i), pictures[i], quillmark::Durability::Unsynced)) {
        state.SkipWithError("not written");
      }
    }
    target.Next();
  }
  target.Report(state, pictures.size());
}

/// The bytes that are packed in a PNG file without a palette.
std::vector<char> RowsOf(const QImage& picture) {
  constexpr qsizetype Start = 41;  // of the data of the second chunk, whose length stands 8 bytes before
  constexpr qsizetype End = 16;    // its checksum and the chunk that ends the file
  const QByteArray png = quillmark::EncodePng(picture);
  const QByteArray rows = qUncompress(QByteArray(4, '\0') + png.mid(Start, png.size() - Start - End));
  return {rows.begin(), rows.end()};
}

void PackRows(benchmark::State& state, MakePictures* makePictures) {
  std::vector<std::vector<char>> pictures;
  for (const QImage& picture : makePictures()) {
    pictures.push_back(RowsOf(picture));
  }
  libdeflate_compressor* const compressor = libdeflate_alloc_compressor(static_cast<int>(state.range(0)));
  std::vector<char> packed(std::size_t{4} << 20U);
  std::size_t bytes = 0;
  for ([[maybe_unused]] auto _ : state) {
    bytes = 0;
    for (const std::vector<char>& rows : pictures) {
      bytes += libdeflate_zlib_compress(compressor, rows.data(), rows.size(), packed.data(), packed.size());
    }
    benchmark::DoNotOptimize(packed.data());
  }
  libdeflate_free_compressor(compressor);
  state.counters["bytes"] = static_cast<double>(bytes);
}

BENCHMARK_CAPTURE(QtDefault, film, Film, Name::New);
BENCHMARK_CAPTURE(WritePicture, film, Film, Name::New);
BENCHMARK_CAPTURE(QtDefault, subtitle, Subtitle, Name::New);
BENCHMARK_CAPTURE(WritePicture, subtitle, Subtitle, Name::New);
BENCHMARK_CAPTURE(QtDefault, subtitle_again, Subtitle, Name::Same);
BENCHMARK_CAPTURE(WritePicture, subtitle_again, Subtitle, Name::Same);
BENCHMARK_CAPTURE(QtDefault, frame, Frame, Name::New);
BENCHMARK_CAPTURE(WritePicture, frame, Frame, Name::New);
BENCHMARK_CAPTURE(PackRows, film, Film)->DenseRange(1, 8);
BENCHMARK_CAPTURE(PackRows, subtitle, Subtitle)->DenseRange(1, 8);
BENCHMARK_CAPTURE(PackRows, frame, Frame)->DenseRange(1, 8);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  benchmark::SetDefaultTimeUnit(benchmark::kMicrosecond);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
