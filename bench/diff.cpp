// Comparing two streams of 100,000 subtitles, the second one with changes, beside one look at all of their
// bytes. The items of a rate are subtitles of the first stream.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/Film.h"
#include "render/StreamDiff.h"
#include "sup/CodeAssignment.h"
#include "sup/StreamLoader.h"
#include "sup/SupFormat.h"

namespace quillmark {
namespace {

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

SupStream Load(std::vector<std::uint8_t> bytes) {
  Result<LoadedStream> loaded = IndexPrimaryStream(std::move(bytes), InvalidFirst::IsPassed);
  if (!loaded || loaded->LostSignature) {
    Fail("the film is not a stream");
  }
  return std::move(loaded->Stream);
}

/// As the film, with every start 40 ms later.
std::vector<std::uint8_t> Later(const SupStream& stream) {
  std::vector<std::uint8_t> bytes(stream.RawBytes.begin(), stream.RawBytes.end() - 1);
  for (std::size_t i = 0; i < stream.PacketOffset.size(); ++i) {
    const TimeField time = PackTime(stream.StartTime[i] + 3600);
    std::copy(time.begin(), time.end(), bytes.begin() + stream.PacketOffset[i] + TimeStart);
  }
  return bytes;
}

/// As the film, without its every tenth subtitle.
std::vector<std::uint8_t> Thinner(const SupStream& stream) {
  std::vector<std::uint8_t> bytes;
  for (std::size_t i = 0; i < stream.PacketOffset.size(); ++i) {
    const auto start = stream.RawBytes.begin() + stream.PacketOffset[i];
    if (i % 10 != 0) {
      bytes.insert(bytes.end(), start, start + UnitStart + stream.SpuSize[i]);
    }
  }
  return bytes;
}

struct Streams {
  explicit Streams(int subtitles)
      : Film(Load(MakeFilm({.Subtitles = subtitles}))),
        OtherFilm(Load(MakeFilm({.Subtitles = subtitles, .Seed = 9}))),
        LaterFilm(Load(Later(Film))),
        ThinnerFilm(Load(Thinner(Film))) {}

  SupStream Film;
  SupStream OtherFilm;
  SupStream LaterFilm;
  SupStream ThinnerFilm;
};

const Streams& StreamsOf(int subtitles) {
  static const Streams small(25000);
  static const Streams large(100000);
  return subtitles == 25000 ? small : large;
}

void LookAtAllBytes(benchmark::State& state) {
  const Streams& streams = StreamsOf(static_cast<int>(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    for (const SupStream* stream : {&streams.Film, &streams.OtherFilm}) {
      std::uint64_t sum = std::accumulate(stream->RawBytes.begin(), stream->RawBytes.end(), std::uint64_t{0});
      benchmark::DoNotOptimize(sum);
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(LookAtAllBytes)->Arg(25000)->Arg(100000)->Unit(benchmark::kMillisecond);

void Compare(benchmark::State& state, SupStream Streams::*other) {
  const Streams& streams = StreamsOf(static_cast<int>(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    std::int64_t different = 0;
    CompareStreams(streams.Film, streams.*other,
                   [&](const ComparedPair& pair) { different += pair.Differences.empty() ? 0 : 1; });
    benchmark::DoNotOptimize(different);
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK_CAPTURE(Compare, same, &Streams::Film)->Arg(25000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Compare, later, &Streams::LaterFilm)
    ->Arg(25000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Compare, thinner, &Streams::ThinnerFilm)
    ->Arg(25000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Compare, other, &Streams::OtherFilm)
    ->Arg(25000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillmark

BENCHMARK_MAIN();
