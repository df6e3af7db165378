// The list of the subtitles in the real window: opening a film with it and without it, turning its pages, and
// a character typed into its filter. Each figure stands beside the least that the same task needs, taken in
// the same run.

#include <cstdlib>
#include <cstring>

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QImage>
#include <QLineEdit>
#include <QProcess>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QWindow>
#include <benchmark/benchmark.h>

#include "app/Document.h"
#include "app/frmTest.h"
#include "bench/Film.h"
#include "bench/WindowWatchers.h"
#include "render/Composition.h"
#include "render/SubtitleDescription.h"

namespace {

using namespace quillmark;
using bench::DialogCloser;
using bench::EndAfterFirstPaint;

/// What a screen of 1366x768 leaves to the window.
constexpr QSize SmallScreen(1358, 728);
constexpr int ManySubtitles = 100'000;
/// Packets of 14 bytes, units without anything.
constexpr int TinyPackets = 2'000'000;

int Start(const char* path, bool withList) {
  frmTest window;
  window.resize(SmallScreen);
  window.findChild<QAction*>(QStringLiteral("Action_List"))->setChecked(withList);
  const EndAfterFirstPaint end(&window);
  window.show();
  window.OpenCommandLine(QFile::decodeName(path));
  return QApplication::exec();
}

/// A stream in a file of its own, as long as the program runs.
class StreamFile {
 public:
  explicit StreamFile(const std::vector<std::uint8_t>& bytes)
      : path_(folder_.filePath(QStringLiteral("film.sup"))) {
    QFile file(path_);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size())) < 0) {
      std::abort();
    }
  }

  [[nodiscard]] const QString& Path() const { return path_; }

 private:
  QTemporaryDir folder_;
  QString path_;
};

const StreamFile& Film(int subtitles) {
  static const StreamFile usual(MakeFilm({}));
  static const StreamFile many(MakeFilm({.Subtitles = ManySubtitles}));
  return subtitles == ManySubtitles ? many : usual;
}

const StreamFile& Tiny() {
  static const StreamFile file = [] {
    // An invalid first packet would end the walk.
    std::vector<std::uint8_t> bytes = MakeFilm({.Subtitles = 1});
    bytes.reserve(bytes.size() + std::size_t{TinyPackets} * 14);
    for (int i = 0; i < TinyPackets; ++i) {
      const std::uint8_t packet[14] = {'S',
                                       'P',
                                       0,
                                       static_cast<std::uint8_t>(i),
                                       static_cast<std::uint8_t>(i >> 8),
                                       static_cast<std::uint8_t>(i >> 16),
                                       0,
                                       0,
                                       0,
                                       0,
                                       0,
                                       4,
                                       0,
                                       0};
      bytes.insert(bytes.end(), std::begin(packet), std::end(packet));
    }
    return StreamFile(bytes);
  }();
  return file;
}

void StartToFirstPaint(benchmark::State& state, const char* mode) {
  const QString path = Film(static_cast<int>(state.range(0))).Path();
  for (auto _ : state) {
    if (QProcess::execute(QApplication::applicationFilePath(), {QString::fromLatin1(mode), path}) != 0) {
      state.SkipWithError("the window did not start");
    }
  }
}

/// A shown window with the stream open and its list, in which nothing is left to be done.
class OpenWindow {
 public:
  explicit OpenWindow(const QString& path) {
    window_.resize(SmallScreen);
    window_.show();
    window_.OpenCommandLine(path);
    Settle();
  }

  [[nodiscard]] Document& Content() { return window_.Content(); }
  [[nodiscard]] QTableView& List() { return Child<QTableView>("List_Subtitles"); }
  [[nodiscard]] QLineEdit& Filter() { return Child<QLineEdit>("Text_Filter"); }
  [[nodiscard]] int RowsOfAPage() { return List().viewport()->height() / List().rowHeight(0); }
  static void Settle() {
    for (int i = 0; i < 2000; ++i) {
      QApplication::processEvents();
    }
  }

 private:
  template <class Widget>
  [[nodiscard]] Widget& Child(const char* name) {
    return *window_.findChild<Widget*>(QLatin1String(name));
  }

  frmTest window_;
};

/// Up to the painted rows, none of whose pictures was decoded before.
void TurnAPage(benchmark::State& state) {
  OpenWindow window(Film(1500).Path());
  QScrollBar* bar = window.List().verticalScrollBar();
  for (auto _ : state) {
    if (bar->value() == bar->maximum()) {
      state.PauseTiming();
      bar->setValue(0);
      window.Content().SetFrameLines(window.Content().FrameLines());  // forgets the pictures
      state.ResumeTiming();
    }
    bar->setValue(bar->value() + window.RowsOfAPage());
    window.List().viewport()->repaint();
  }
  state.counters["rows"] = window.RowsOfAPage();
}

/// The pictures of as many rows: decoded to ARGB and shrunk by Qt to what stands in a row.
void DecodeAndScaleAPage(benchmark::State& state) {
  OpenWindow window(Film(1500).Path());
  const SupStream& stream = window.Content().Primary();
  std::vector<std::uint8_t> buffer;
  std::size_t index = 0;
  for (auto _ : state) {
    for (int row = 0; row < window.RowsOfAPage(); ++row) {
      const SubtitleUnit unit = UnitOf(stream, index, buffer);
      const auto described = DescribeSubtitle(unit);
      cBitmap picture;
      DecodePicture(unit.Bytes, described->Control,
                    MakeCodeColours(window.Content().Palette(), described->Control), picture);
      benchmark::DoNotOptimize(
          picture.Image().scaled(114, 22, Qt::KeepAspectRatio, Qt::SmoothTransformation).constBits());
      index = (index + 1) % 1500;
    }
  }
}

/// A text that every row fits, up to the painted rows.
void TypeIntoTheFilter(benchmark::State& state, const StreamFile& (*stream)(), int rows) {
  OpenWindow window(stream().Path());
  for (auto _ : state) {
    window.Filter().setText(QStringLiteral("1-"));
    window.List().viewport()->repaint();
    state.PauseTiming();
    window.Filter().clear();
    window.List().viewport()->repaint();
    state.ResumeTiming();
  }
  state.counters["ns_a_row"] =
      benchmark::Counter(static_cast<double>(rows) / 1e9,
                         benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

const StreamFile& ManyFilm() {
  return Film(ManySubtitles);
}

void PassOverTheIndex(benchmark::State& state) {
  OpenWindow window(ManyFilm().Path());
  const SupStream& stream = window.Content().Primary();
  for (auto _ : state) {
    std::int64_t later = 0;
    for (std::size_t i = 0; i < stream.StartTime.size(); ++i) {
      later += stream.StartTime[i] < stream.EndTime[i] ? 1 : 0;
    }
    benchmark::DoNotOptimize(later);
  }
  state.counters["ns_a_row"] = benchmark::Counter(
      ManySubtitles / 1e9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void OpenTinyPackets(benchmark::State& state) {
  frmTest window;
  window.resize(SmallScreen);
  window.show();
  for (auto _ : state) {
    window.OpenCommandLine(Tiny().Path());
  }
}

void ScrollTinyPackets(benchmark::State& state) {
  OpenWindow window(Tiny().Path());
  QScrollBar* bar = window.List().verticalScrollBar();
  int step = 0;
  for (auto _ : state) {
    bar->setValue(static_cast<int>(++step * 7919LL * window.RowsOfAPage() % bar->maximum()));
    window.List().viewport()->repaint();
  }
}

BENCHMARK_CAPTURE(StartToFirstPaint, WithoutTheList, "--start-without")
    ->Arg(1500)
    ->Arg(ManySubtitles)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(20);
BENCHMARK_CAPTURE(StartToFirstPaint, WithTheList, "--start-with")
    ->Arg(1500)
    ->Arg(ManySubtitles)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(20);
BENCHMARK(DecodeAndScaleAPage)->Unit(benchmark::kMillisecond);
BENCHMARK(TurnAPage)->Unit(benchmark::kMillisecond);
BENCHMARK(PassOverTheIndex)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(TypeIntoTheFilter, Film, &ManyFilm, ManySubtitles)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(TypeIntoTheFilter, TinyPackets, &Tiny, TinyPackets)->Unit(benchmark::kMillisecond);
BENCHMARK(OpenTinyPackets)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(ScrollTinyPackets)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QTemporaryDir state;
  if (!qEnvironmentVariableIsSet("XDG_STATE_HOME")) {
    qputenv("XDG_STATE_HOME", state.path().toUtf8());
  }
  QApplication application(argc, argv);
  if (argc == 3 && std::strncmp(argv[1], "--start-", 8) == 0) {
    return Start(argv[2], std::strcmp(argv[1], "--start-with") == 0);
  }
  DialogCloser closer;
  application.installEventFilter(&closer);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
