// Opening a film (index, statistics, end times, bytes in memory) beside one read of the whole file, both from
// the page cache. The bytes of a rate are those of the file.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/Film.h"
#include "sup/StreamLoader.h"

namespace quillmark {
namespace {

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

/// A film in a file of its own, for as long as the program runs.
class FilmFile {
 public:
  FilmFile() : path_(std::filesystem::temp_directory_path() / "quillmark-bench-open.sup") {
    const std::vector<std::uint8_t> film = MakeFilm({});
    std::ofstream file(path_, std::ios::binary);
    file.write(reinterpret_cast<const char*>(film.data()), static_cast<std::streamsize>(film.size()));
    if (!file.flush()) {
      Fail("the film cannot be written");
    }
    length_ = film.size();
  }
  ~FilmFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  FilmFile(const FilmFile&) = delete;
  FilmFile& operator=(const FilmFile&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
  [[nodiscard]] std::size_t Length() const { return length_; }

 private:
  std::filesystem::path path_;
  std::size_t length_ = 0;
};

const FilmFile& Film() {
  static const FilmFile film;
  return film;
}

void CountBytes(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(Film().Length()));
}

void ReadWholeFile(benchmark::State& state) {
  const std::string path = Film().Path().string();
  for ([[maybe_unused]] auto _ : state) {
    std::ifstream file(path, std::ios::binary);
    std::vector<char> bytes(Film().Length());
    if (!file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()))) {
      Fail("the film cannot be read");
    }
    benchmark::DoNotOptimize(bytes.data());
    benchmark::ClobberMemory();
  }
  CountBytes(state);
}
BENCHMARK(ReadWholeFile)->Unit(benchmark::kMillisecond);

void OpenFilm(benchmark::State& state) {
  for ([[maybe_unused]] auto _ : state) {
    const Result<LoadedStream> loaded = LoadPrimaryStream(Film().Path());
    if (!loaded || loaded->LostSignature || loaded->Stream.Count != 1500 ||
        loaded->Stream.Stats.ParseErrors != 0) {
      Fail("the film cannot be opened");
    }
    benchmark::DoNotOptimize(loaded->Stream.RawBytes.data());
    benchmark::ClobberMemory();
  }
  CountBytes(state);
}
BENCHMARK(OpenFilm)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillmark

BENCHMARK_MAIN();
