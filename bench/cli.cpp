// What the command line program costs from its start to its end: beside an empty program, beside reading the
// file, beside encoding the pictures that it exports, and beside other programs that write a film's pictures,
// where these are installed. Times are a child process's; the counter "cpu_ms"
// is its processor time, which other work on the machine disturbs less than the time on the clock.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

#include <QStandardPaths>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include "bench/Film.h"
#include "render/Composition.h"
#include "render/SubtitleDescription.h"
#include "sup/StreamLoader.h"

namespace quillmark {
namespace {

constexpr int FilmSubtitles = 1500;
/// 50 MB of film.
constexpr int LongFilmSubtitles = 18200;

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

/// A folder with both films, for as long as the program runs.
class Films {
 public:
  Films() {
    Write("film.sup", MakeFilm({.Subtitles = FilmSubtitles}));
    Write("long.sup", MakeFilm({.Subtitles = LongFilmSubtitles}));
  }

  [[nodiscard]] std::string Path(const char* name) const {
    return folder_.filePath(QString::fromLatin1(name)).toStdString();
  }

 private:
  void Write(const char* name, const std::vector<std::uint8_t>& film) const {
    std::ofstream file(Path(name), std::ios::binary);
    file.write(reinterpret_cast<const char*>(film.data()), static_cast<std::streamsize>(film.size()));
    if (!file.flush()) {
      Fail("a film cannot be written");
    }
  }

  QTemporaryDir folder_;
};

const Films& TheFilms() {
  static const Films films;
  return films;
}

double Milliseconds(const timeval& time) {
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
}

/// Runs a program with its output thrown away and waits for it; its processor time in milliseconds.
double RunProgram(const std::vector<std::string>& words) {
  std::vector<char*> argv;
  for (const std::string& word : words) {
    argv.push_back(const_cast<char*>(word.c_str()));
  }
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  const int failure = posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  int status = 0;
  rusage usage{};
  if (failure != 0 || wait4(child, &status, 0, &usage) != child || status != 0) {
    Fail("a program did not run to its end");
  }
  return Milliseconds(usage.ru_utime) + Milliseconds(usage.ru_stime);
}

void Program(benchmark::State& state, const std::vector<std::string>& words) {
  double processorTime = 0;
  for (auto _ : state) {
    processorTime += RunProgram(words);
  }
  state.counters["cpu_ms"] = benchmark::Counter(processorTime, benchmark::Counter::kAvgIterations);
}

void Empty(benchmark::State& state) {
  Program(state, {QUILLMARK_EMPTY});
}

void Version(benchmark::State& state) {
  Program(state, {QUILLMARK_CLI, "--version"});
}

void Cat(benchmark::State& state) {
  Program(state, {"cat", TheFilms().Path("long.sup")});
}

void Report(benchmark::State& state) {
  Program(state, {QUILLMARK_CLI, "report", TheFilms().Path("long.sup")});
}

void Check(benchmark::State& state) {
  Program(state, {QUILLMARK_CLI, "check", TheFilms().Path("long.sup")});
}

void Export(benchmark::State& state) {
  Program(state, {QUILLMARK_CLI, "export", TheFilms().Path("film.sup")});
}

/// The film as others read it: a VobSub pair.
std::string FilmPair(const char* name) {
  static const bool isThere = [] {
    RunProgram({QUILLMARK_CLI, "convert", TheFilms().Path("film.sup"), "-o", TheFilms().Path("film.idx")});
    return true;
  }();
  return isThere ? TheFilms().Path(name) : std::string();
}

/// Reads the units out of the packs and writes each as a PNG file, with a list.
void Spuunmux(benchmark::State& state) {
  Program(state, {"spuunmux", "-F", "PAL", "-o", TheFilms().Path("theirs"), FilmPair("film.sub")});
}

/// Writes a PNG file of the whole frame where a subtitle starts or ends.
void FfmpegFrames(benchmark::State& state) {
  Program(state, {"ffmpeg", "-v", "error", "-y", "-i", FilmPair("film.idx"), "-filter_complex",
                  "[0:s]null[v]", "-map", "[v]", "-fps_mode", "passthrough", TheFilms().Path("%05d.png")});
}

bool IsInstalled(const char* program) {
  return !QStandardPaths::findExecutable(QString::fromLatin1(program)).isEmpty();
}

/// The pictures that the export of the film writes.
std::vector<cBitmap> FilmPictures() {
  const Result<LoadedStream> loaded = LoadPrimaryStream(TheFilms().Path("film.sup"));
  if (!loaded || loaded->LostSignature) {
    Fail("the film cannot be read");
  }
  const SupStream& stream = loaded->Stream;
  std::vector<cBitmap> pictures(FilmSubtitles);
  std::vector<std::uint8_t> unit;
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    CopyUnit(stream, i, unit);
    const auto description = DescribeSubtitle(
        {.Bytes = unit, .ControlOffset = stream.ControlOffset[i], .StartTime = stream.StartTime[i]});
    if (!description) {
      Fail("the film cannot be shown");
    }
    DecodePicture(unit, description->Control, MakeCodeColours(StartUpPalette, description->Control),
                  pictures[i]);
  }
  return pictures;
}

void EncodeAlone(benchmark::State& state) {
  std::vector<cBitmap> pictures = FilmPictures();
  const int png = cBitmap::EncoderIndex(QStringLiteral("*.png"));
  rusage before{};
  rusage after{};
  getrusage(RUSAGE_SELF, &before);
  for (auto _ : state) {
    for (cBitmap& picture : pictures) {
      const QByteArray encoded = picture.Encode(png);
      if (encoded.isEmpty()) {
        Fail("a picture cannot be encoded");
      }
      benchmark::DoNotOptimize(encoded.constData());
    }
  }
  getrusage(RUSAGE_SELF, &after);
  const double processorTime = Milliseconds(after.ru_utime) + Milliseconds(after.ru_stime) -
                               Milliseconds(before.ru_utime) - Milliseconds(before.ru_stime);
  state.counters["cpu_ms"] = benchmark::Counter(processorTime, benchmark::Counter::kAvgIterations);
}

BENCHMARK(Empty)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Version)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Cat)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Report)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Check)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(EncodeAlone)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
BENCHMARK(Export)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

void RegisterPeers() {
  if (IsInstalled("spuunmux")) {
    benchmark::RegisterBenchmark("Spuunmux", Spuunmux)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Iterations(1);
  }
  if (IsInstalled("ffmpeg")) {
    benchmark::RegisterBenchmark("FfmpegFrames", FfmpegFrames)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime()
        ->Iterations(1);
  }
}

}  // namespace
}  // namespace quillmark

int main(int argc, char** argv) {
  quillmark::RegisterPeers();
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
