// A review of long merges beside the merges themselves, by the processor's time and in the same run: what the
// review costs more (ratio), and how long the longest step of the review and of the search for an offset
// take, which a window has to wait for. The films lie apart, as at the offset that is offered first, or over
// each other, where there is the most to count.

#include <algorithm>
#include <cstdlib>
#include <ctime>

#include <benchmark/benchmark.h>

#include "bench/TwoFilms.h"
#include "palette/Colour.h"
#include "render/MergeReview.h"
#include "render/OffsetSearch.h"

namespace quillmark {
namespace {

constexpr int Apart = -400;
constexpr int Over = 0;

MergeSettings SettingsAt(int yOffset) {
  return {.Palette = StartUpPalette, .YOffset = yOffset, .FrameHeight = 576};
}

/// The processor's time of this thread: what other programs take of the machine is left out.
double Milliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Merge and review take turns, a hundred subtitles each, so that both have the machine as it is at the time.
void ReviewBesideMerge(benchmark::State& state) {
  const TwoFilms streams(static_cast<int>(state.range(0)));
  const MergeSettings settings = SettingsAt(static_cast<int>(state.range(1)));
  double merging = 0;
  double reviewing = 0;
  for ([[maybe_unused]] auto _ : state) {
    MergedStreamEncoder encoder(streams.Primary, streams.Secondary, settings);
    MergeReviewer review(streams.Primary, streams.Secondary, settings);
    while (review.Looked() < review.Count()) {
      const std::size_t end = std::min(review.Count(), review.Looked() + 100);
      const double start = Milliseconds();
      for (std::size_t i = review.Looked(); i < end; ++i) {
        if (encoder.Encode(i) != MergeOutcome::Encoded) {
          std::abort();
        }
        benchmark::DoNotOptimize(encoder.Packet().data());
      }
      const double between = Milliseconds();
      while (review.Looked() < end) {
        review.Step();
      }
      merging += between - start;
      reviewing += Milliseconds() - between;
    }
    benchmark::DoNotOptimize(review.Pairs().data());
  }
  const auto subtitles = static_cast<double>(state.iterations() * state.range(0));
  state.counters["merge_us"] = 1000 * merging / subtitles;
  state.counters["review_us"] = 1000 * reviewing / subtitles;
  state.counters["ratio"] = reviewing / merging;
}
BENCHMARK(ReviewBesideMerge)
    ->ArgsProduct({{1000, 100000}, {Apart, Over}})
    ->ArgNames({"subtitles", "offset"})
    ->Unit(benchmark::kMillisecond);

/// Runs something step by step to its end.
template <typename Stepper>
void RunSteps(benchmark::State& state) {
  const TwoFilms streams(static_cast<int>(state.range(0)));
  double longest = 0;
  for ([[maybe_unused]] auto _ : state) {
    Stepper stepper(streams.Primary, streams.Secondary, SettingsAt(Over));
    double start = Milliseconds();
    while (stepper.Step()) {
      const double end = Milliseconds();
      longest = std::max(longest, end - start);
      start = end;
    }
  }
  state.counters["longest_step_ms"] = longest;
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ReviewInSteps(benchmark::State& state) {
  RunSteps<MergeReviewer>(state);
}
BENCHMARK(ReviewInSteps)->Arg(100000)->Unit(benchmark::kMillisecond);

void SearchOffsetInSteps(benchmark::State& state) {
  RunSteps<OffsetSearch>(state);
}
BENCHMARK(SearchOffsetInSteps)->Arg(100000)->Unit(benchmark::kMillisecond);

/// The choice of one offset out of all when everything is summed up.
void BestOffset(benchmark::State& state) {
  const TwoFilms streams(100);
  OffsetSearch search(streams.Primary, streams.Secondary, SettingsAt(Over));
  while (search.Step()) {
  }
  for ([[maybe_unused]] auto _ : state) {
    benchmark::DoNotOptimize(search.Best());
  }
}
BENCHMARK(BestOffset)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace quillmark

BENCHMARK_MAIN();
