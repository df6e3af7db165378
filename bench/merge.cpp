// Merging whole streams of growing length: choosing the secondary subtitle, composing and encoding, for
// every primary subtitle. Items are subtitles; their rate stays the same when the work grows linearly.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/Film.h"
#include "palette/Colour.h"
#include "render/MergedStreamEncoder.h"
#include "sup/ChooseSecondary.h"
#include "sup/StreamLoader.h"

namespace quillmark {
namespace {

constexpr int DistinctPictures = 200;

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

std::vector<std::uint8_t> Film(int subtitles, std::uint32_t seed, std::int64_t firstStart) {
  return MakeFilm(
      {.Subtitles = subtitles, .Seed = seed, .DistinctPictures = DistinctPictures, .FirstStart = firstStart});
}

struct Streams {
  SupStream Primary;
  SupStream Secondary;
};

Streams MakeStreams(int subtitles) {
  Streams streams;
  Result<LoadedStream> primary = IndexPrimaryStream(Film(subtitles, 1, 90000));
  if (!primary || primary->LostSignature) {
    Fail("the first film is not a stream");
  }
  streams.Primary = std::move(primary->Stream);
  const auto path = std::filesystem::temp_directory_path() / "quillmark-bench-merge.sup";
  {
    const auto film = Film(subtitles, 2, 150000);
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(film.data()), static_cast<std::streamsize>(film.size()));
  }
  Result<LoadedStream> secondary = LoadSecondaryStream(path, streams.Primary);
  std::filesystem::remove(path);
  if (!secondary || secondary->LostSignature) {
    Fail("the second film is not a stream");
  }
  streams.Secondary = std::move(secondary->Stream);
  return streams;
}

void MergeStreams(benchmark::State& state) {
  const Streams streams = MakeStreams(static_cast<int>(state.range(0)));
  MergedStreamEncoder encoder(streams.Primary, streams.Secondary,
                              {.Palette = StartUpPalette, .YOffset = -400, .FrameHeight = 576});
  for ([[maybe_unused]] auto _ : state) {
    for (std::size_t i = 0; i < streams.Primary.PacketOffset.size(); ++i) {
      if (encoder.Encode(i) != MergedStreamEncoder::Outcome::Encoded) {
        Fail("a subtitle is not encoded");
      }
      benchmark::DoNotOptimize(encoder.Packet().data());
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(MergeStreams)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// The same streams as just what both show: the plan, and about twice as many packets of one picture or two.
void SplitStreams(benchmark::State& state) {
  const Streams streams = MakeStreams(static_cast<int>(state.range(0)));
  std::size_t packets = 0;
  for ([[maybe_unused]] auto _ : state) {
    MergedStreamEncoder encoder(
        streams.Primary, streams.Secondary,
        {.Palette = StartUpPalette, .YOffset = -400, .FrameHeight = 576, .Mode = MergeMode::Split});
    while (encoder.Prepare()) {
    }
    packets = encoder.Count();
    for (std::size_t i = 0; i < packets; ++i) {
      if (encoder.Encode(i) != MergedStreamEncoder::Outcome::Encoded) {
        Fail("a packet is not encoded");
      }
      benchmark::DoNotOptimize(encoder.Packet().data());
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.counters["packets"] = static_cast<double>(packets);
}
BENCHMARK(SplitStreams)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// The plan of a split merge alone.
void PlanSplit(benchmark::State& state) {
  const Streams streams = MakeStreams(static_cast<int>(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    SplitPlan plan(streams.Primary, streams.Secondary, 0);
    while (plan.Step()) {
    }
    benchmark::DoNotOptimize(plan.Count());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(PlanSplit)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// The search alone.
void ChooseForAll(benchmark::State& state) {
  const Streams streams = MakeStreams(static_cast<int>(state.range(0)));
  for ([[maybe_unused]] auto _ : state) {
    for (std::size_t i = 0; i < streams.Primary.PacketOffset.size(); ++i) {
      benchmark::DoNotOptimize(ChooseSecondary(streams.Primary, i, streams.Secondary));
    }
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ChooseForAll)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillmark

BENCHMARK_MAIN();
