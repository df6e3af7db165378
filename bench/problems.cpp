// What a list of the subtitles asks of a long stream: how long the window's events wait while it is checked,
// what a character typed into the filter costs, and painting the strip of the film's time.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <span>
#include <utility>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>
#include <benchmark/benchmark.h>

#include "app/ProblemFinder.h"
#include "app/TimeStrip.h"
#include "bench/Film.h"
#include "sup/StreamLoader.h"
#include "sup/SubtitleFilter.h"

namespace {

using namespace quillmark;

constexpr int ManySubtitles = 100'000;

const SupStream& Film() {
  static const SupStream stream = [] {
    Result<LoadedStream> loaded = IndexPrimaryStream(MakeFilm({.Subtitles = ManySubtitles}));
    if (!loaded || loaded->LostSignature) {
      std::abort();
    }
    return std::move(loaded->Stream);
  }();
  return stream;
}

std::span<const std::uint8_t> FilmBytes() {
  return std::span(Film().RawBytes).first(static_cast<std::size_t>(Film().FileLength));
}

/// The film with a byte in each thousand bytes that is another one.
std::vector<std::uint8_t> DamagedFilm() {
  std::vector<std::uint8_t> bytes(FilmBytes().begin(), FilmBytes().end());
  for (std::size_t i = 500; i < bytes.size(); i += 1000) {
    bytes[i] = static_cast<std::uint8_t>(bytes[i] * 7 + i / 1000);
  }
  return bytes;
}

/// A lost signature and nothing but signatures without a packet after it.
std::vector<std::uint8_t> Signatures() {
  std::vector<std::uint8_t> bytes(std::size_t{64} << 20U);
  for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
    bytes[i] = 'S';
    bytes[i + 1] = 'P';
  }
  return bytes;
}

/// The processor's time of this thread: what other programs take of the machine is left out.
double ProcessorMilliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Looks a file through as the window does, and tells how long its longest slice was, by the clock on the
/// wall and by the processor's.
void LookThrough(benchmark::State& state, std::span<const std::uint8_t> file) {
  double longest = 0;
  double longestOnWall = 0;
  double slices = 0;
  ProblemFinder finder;
  for (auto _ : state) {
    finder.Start(file, ManySubtitles);
    while (!finder.IsFinished()) {
      QElapsedTimer clock;
      clock.start();
      const double before = ProcessorMilliseconds();
      QCoreApplication::processEvents();
      longest = std::max(longest, ProcessorMilliseconds() - before);
      longestOnWall = std::max(longestOnWall, static_cast<double>(clock.nsecsElapsed()) / 1e6);
      ++slices;
    }
  }
  state.counters["longest_ms"] = longest;
  state.counters["wall_ms"] = longestOnWall;
  state.counters["slices"] = slices / static_cast<double>(state.iterations());
}

void Slices(benchmark::State& state) {
  LookThrough(state, FilmBytes());
}

void SlicesOfADamagedFilm(benchmark::State& state) {
  LookThrough(state, DamagedFilm());
}

void SlicesOfZeros(benchmark::State& state) {
  LookThrough(state, std::vector<std::uint8_t>(MaxStreamLength));
}

void SlicesOfSignatures(benchmark::State& state) {
  LookThrough(state, Signatures());
}

std::vector<PacketMarks> MarksOfFilm() {
  StreamSurvey survey(FilmBytes());
  while (survey.Step()) {
  }
  return {survey.Marks().begin(), survey.Marks().end()};
}

/// The least that looking at every subtitle of the index takes.
void PlainPassOverIndex(benchmark::State& state) {
  const SupStream& stream = Film();
  for (auto _ : state) {
    std::int64_t latest = 0;
    for (std::size_t i = 0; i < stream.StartTime.size(); ++i) {
      latest = std::max(latest, std::max(stream.StartTime[i], stream.EndTime[i]));
    }
    benchmark::DoNotOptimize(latest);
  }
  state.SetItemsProcessed(state.iterations() * ManySubtitles);
}

/// A filter's text is read and its subtitles are found.
void TypeCharacter(benchmark::State& state, const char* text, FilterKind kind) {
  const SupStream& stream = Film();
  const std::vector<PacketMarks> marks = MarksOfFilm();
  const std::vector<bool> selected(ManySubtitles, true);
  std::vector<std::uint32_t> found;
  for (auto _ : state) {
    SubtitleFilter(text, kind).Find(stream, marks, selected, found);
    benchmark::DoNotOptimize(found.data());
  }
  state.SetItemsProcessed(state.iterations() * ManySubtitles);
  state.counters["found"] = static_cast<double>(found.size());
}

void PaintStrip(benchmark::State& state, std::size_t subtitles, bool isNew) {
  const SupStream& stream = Film();
  std::vector<TimeBar> bars;
  for (std::size_t i = 0; i < subtitles; ++i) {
    bars.push_back(BarOf(stream.StartTime[i], stream.EndTime[i]));
  }
  TimeStrip strip;
  strip.SetLane(0, bars);
  strip.resize(1000, strip.sizeHint().height());
  QImage picture(strip.size(), QImage::Format_RGB32);
  double factor = 1.25;
  for (auto _ : state) {
    if (isNew) {
      strip.ZoomAt(500, factor);
      factor = 1 / factor;
    }
    strip.render(&picture);
  }
}

BENCHMARK(Slices)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SlicesOfADamagedFilm)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SlicesOfZeros)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(SlicesOfSignatures)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(PlainPassOverIndex)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(TypeCharacter, Number, "100-", FilterKind::All)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(TypeCharacter, Time, "1:02:03", FilterKind::All)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(TypeCharacter, Words, "overlap", FilterKind::All)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(TypeCharacter, Selected, "", FilterKind::Selected)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(TypeCharacter, TimeWithProblems, "1:02:03", FilterKind::WithProblems)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PaintStrip, Of1500, 1500, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PaintStrip, Of100000, 100'000, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PaintStrip, ZoomOf1500, 1500, true)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(PaintStrip, ZoomOf100000, 100'000, true)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
}
