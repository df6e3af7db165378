// VobSub pairs and program streams: opening a pair beside libavformat, which reads its packets; a long
// program stream beside reading its bytes; writing a pair beside writing its bytes. Items are files.
//
// The program stream has QUILLMARK_BENCH_MIB MiB, 1024 unless told otherwise, in the folder for temporary
// files.

#include "containers/VobSub.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include "base/FilePath.h"
#include "bench/Film.h"
#include "containers/ProgramStream.h"
#include "containers/VobSubWriter.h"
#include "files/FileWriter.h"
#ifdef QUILLMARK_HAS_LIBAVFORMAT
#include "bench/Lavf.h"
#endif

namespace quillmark {
namespace {

constexpr int FilmSubtitles = 1500;
constexpr std::size_t PackSize = 2048;

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

std::vector<std::uint8_t> FileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// A pack of a film's video: one packet that fills it.
std::array<std::uint8_t, PackSize> VideoPack() {
  constexpr std::array<std::uint8_t, 23> Head = {0x00, 0x00, 0x01, 0xBA, 0x44, 0x00, 0x04, 0x00,
                                                 0x04, 0x01, 0x01, 0x89, 0xC3, 0xF8, 0x00, 0x00,
                                                 0x01, 0xE0, 0x07, 0xEC, 0x81, 0x00, 0x00};
  std::array<std::uint8_t, PackSize> pack = {};
  pack.fill(0x5A);
  std::ranges::copy(Head, pack.begin());
  return pack;
}

/// The files that are read, for as long as the program runs.
class Inputs {
 public:
  Inputs() : film_(MakeFilm({.Subtitles = FilmSubtitles})) {
    const auto written = WriteVobSub(PathFromUtf8(Path("film.idx")), {Track()});
    if (!written) {
      Fail(written.Reason().c_str());
    }
  }

  [[nodiscard]] std::string Path(const char* name) const {
    return folder_.filePath(QString::fromLatin1(name)).toStdString();
  }
  [[nodiscard]] VobSubTrack Track() const { return {.Packets = film_, .Language = "en", .Name = {}}; }

  /// The film's packs, each between as many of video as make it so long. Made when it is first asked for.
  [[nodiscard]] const std::string& LongStream() {
    if (stream_.empty()) {
      stream_ = Path("film.vob");
      const auto packs = FileBytes(Path("film.sub"));
      const char* size = std::getenv("QUILLMARK_BENCH_MIB");
      const std::uint64_t length = (size != nullptr ? std::strtoull(size, nullptr, 10) : 1024) << 20U;
      const std::uint64_t between = std::max<std::uint64_t>(length / packs.size(), 1);
      const auto video = VideoPack();
      std::ofstream file(stream_, std::ios::binary);
      for (std::size_t at = 0; at < packs.size(); at += PackSize) {
        file.write(reinterpret_cast<const char*>(packs.data() + at), PackSize);
        for (std::uint64_t i = 1; i < between; ++i) {
          file.write(reinterpret_cast<const char*>(video.data()), PackSize);
        }
      }
      if (!file.flush()) {
        Fail("the program stream cannot be written");
      }
    }
    return stream_;
  }

 private:
  QTemporaryDir folder_;
  std::vector<std::uint8_t> film_;
  std::string stream_;
};

Inputs& TheInputs() {
  static Inputs inputs;
  return inputs;
}

void CheckFilm(const ReadContainerResult& read) {
  if (!read || !*read || (*read)->Tracks.size() != 1 || (*read)->Tracks[0].Packets.size() < 1000000) {
    Fail("the film is not read");
  }
}

void OpenPair(benchmark::State& state) {
  const auto path = PathFromUtf8(TheInputs().Path("film.idx"));
  for ([[maybe_unused]] auto _ : state) {
    CheckFilm(ReadVobSub(path));
  }
}
BENCHMARK(OpenPair)->Unit(benchmark::kMillisecond);

#ifdef QUILLMARK_HAS_LIBAVFORMAT
void LavfReadsPair(benchmark::State& state) {
  const std::string path = TheInputs().Path("film.idx");
  for ([[maybe_unused]] auto _ : state) {
    const auto read = ReadWithLavf(path);
    if (!read || read->Count != FilmSubtitles) {
      Fail("libavformat does not read the film");
    }
  }
}
BENCHMARK(LavfReadsPair)->Unit(benchmark::kMillisecond);
#endif

void OpenProgramStream(benchmark::State& state) {
  const auto path = PathFromUtf8(TheInputs().LongStream());
  for ([[maybe_unused]] auto _ : state) {
    CheckFilm(ReadProgramStream(path));
  }
}
BENCHMARK(OpenProgramStream)->Unit(benchmark::kMillisecond);

/// As cat does it.
void ReadBytes(benchmark::State& state) {
  const std::string path = TheInputs().LongStream();
  std::vector<char> block(std::size_t{128} << 10U);
  for ([[maybe_unused]] auto _ : state) {
    const int file = ::open(path.c_str(), O_RDONLY);
    while (::read(file, block.data(), block.size()) > 0) {
      benchmark::DoNotOptimize(block.data());
    }
    ::close(file);
  }
}
BENCHMARK(ReadBytes)->Unit(benchmark::kMillisecond);

void WritePair(benchmark::State& state) {
  VobSubOptions options;
  options.Existing = Overwriting::Allowed;
  for ([[maybe_unused]] auto _ : state) {
    if (!WriteVobSub(PathFromUtf8(TheInputs().Path("written.idx")), {TheInputs().Track()}, options)) {
      Fail("the pair is not written");
    }
  }
}
BENCHMARK(WritePair)->Unit(benchmark::kMillisecond);

void WriteBytes(benchmark::State& state) {
  const std::array<std::pair<QString, std::vector<std::uint8_t>>, 2> files = {
      {{QString::fromStdString(TheInputs().Path("bytes.sub")), FileBytes(TheInputs().Path("film.sub"))},
       {QString::fromStdString(TheInputs().Path("bytes.idx")), FileBytes(TheInputs().Path("film.idx"))}}};
  for ([[maybe_unused]] auto _ : state) {
    for (const auto& [path, bytes] : files) {
      auto writer = FileWriter::Replacing(path);
      if (!writer || !writer->Write(bytes) || !writer->Commit()) {
        Fail("the bytes are not written");
      }
    }
  }
}
BENCHMARK(WriteBytes)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillmark

BENCHMARK_MAIN();
