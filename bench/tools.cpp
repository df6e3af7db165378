// The tools on 100,000 subtitles: making the edit and applying it to the bytes, beside a plain pass that
// writes the same bytes at their offsets, known beforehand. Taking back costs what applying does. The new
// index is measured by itself; it is made once an edit is shown.

#include <cstdlib>
#include <utility>

#include <benchmark/benchmark.h>

#include "bench/Film.h"
#include "sup/DisplayEnds.h"
#include "sup/ForceDisplay.h"
#include "sup/MoveArea.h"
#include "sup/Retime.h"
#include "sup/StreamLoader.h"

namespace {

using namespace quillmark;

constexpr int ManySubtitles = 100000;

using Bytes = std::vector<std::uint8_t>;

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

const SupStream& LongFilm() {
  static const SupStream film = [] {
    Result<LoadedStream> loaded = IndexPrimaryStream(MakeFilm({.Subtitles = ManySubtitles}));
    Require(loaded && !loaded->LostSignature);
    return std::move(loaded->Stream);
  }();
  return film;
}

using Tool = ToolResult (*)(const SupStream&);

ToolResult RetimeAll(const SupStream& stream) {
  return std::move(*Retime(stream, SubtitleSet::All(), {.Shift = 3600}));
}
ToolResult ScaleAll(const SupStream& stream) {
  return std::move(*Retime(stream, SubtitleSet::All(), {.Scale = {1001, 960}}));
}
ToolResult MoveAll(const SupStream& stream) {
  return MoveArea(stream, SubtitleSet::All(), {.X = 1, .Y = -2});
}
ToolResult ForceAll(const SupStream& stream) {
  return ForceDisplay(stream, SubtitleSet::All(), DisplayStart::Forced);
}
ToolResult EndAll(const SupStream& stream) {
  return SetDisplayEnds(stream, SubtitleSet::All(), {.Shortest = 5 * TicksPerSecond});
}

/// At most three times the bytes that are put in, and 16 a place.
void RequireSmall(const StreamEdit& edit) {
  const std::size_t held = edit.Bytes.capacity() + edit.Places.Held();
  Require(edit.Places.size() > ManySubtitles / 2 && held <= 3 * edit.Bytes.size() + 16 * edit.Places.size());
}

void MakeAndApply(benchmark::State& state, Tool tool) {
  SupStream film = LongFilm();
  RequireSmall(tool(film).Edit);
  for (auto _ : state) {
    ToolResult result = tool(film);
    Require(ApplyEdit(film.RawBytes, result.Edit).IsOk());
    benchmark::ClobberMemory();
    state.PauseTiming();
    Require(ApplyEdit(film.RawBytes, result.Edit).IsOk());
    state.ResumeTiming();
  }
}

void Undo(benchmark::State& state, Tool tool) {
  Bytes bytes = LongFilm().RawBytes;
  StreamEdit edit = tool(LongFilm()).Edit;
  for (auto _ : state) {
    Require(ApplyEdit(bytes, edit).IsOk());
    benchmark::ClobberMemory();
  }
}

/// What a program would have to do at least that knew each offset and each byte.
void PlainPass(benchmark::State& state, Tool tool) {
  Bytes bytes = LongFilm().RawBytes;
  const StreamEdit edit = tool(LongFilm()).Edit;
  for (auto _ : state) {
    const std::uint8_t* fresh = edit.Bytes.data();
    for (const StreamEdit::Place& place : edit.Places) {
      std::uint8_t* const here = bytes.data() + place.Offset;
      for (std::uint32_t i = 0; i < place.Inserted; ++i) {
        here[i] = *fresh++;
      }
    }
    benchmark::ClobberMemory();
  }
}

/// The edit as the window makes it, with the new index.
void WithTheNewIndex(benchmark::State& state, Tool tool) {
  SupStream film = LongFilm();
  StreamEdit edit = tool(film).Edit;
  for (auto _ : state) {
    Require(ApplyEdit(film, edit).IsOk());
  }
}

#define QUILLMARK_BENCH_TOOL(tool)                                            \
  BENCHMARK_CAPTURE(PlainPass, tool, tool)->Unit(benchmark::kMillisecond);    \
  BENCHMARK_CAPTURE(MakeAndApply, tool, tool)->Unit(benchmark::kMillisecond); \
  BENCHMARK_CAPTURE(Undo, tool, tool)->Unit(benchmark::kMillisecond);         \
  BENCHMARK_CAPTURE(WithTheNewIndex, tool, tool)->Unit(benchmark::kMillisecond)

QUILLMARK_BENCH_TOOL(RetimeAll);
QUILLMARK_BENCH_TOOL(ScaleAll);
QUILLMARK_BENCH_TOOL(MoveAll);
QUILLMARK_BENCH_TOOL(ForceAll);
QUILLMARK_BENCH_TOOL(EndAll);

}  // namespace

BENCHMARK_MAIN();
