// Editing a whole stream: assigning codes to every subtitle, and saving.

#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include "bench/Film.h"
#include "files/ReplaceFile.h"
#include "sup/CodeAssignment.h"
#include "sup/StreamLoader.h"

namespace {

using namespace quillmark;

constexpr int ManySubtitles = 100000;
constexpr std::size_t FiftyMegabytes = 50'000'000;

SupStream LoadFilm(int subtitles) {
  Result<LoadedStream> loaded = IndexPrimaryStream(MakeFilm({.Subtitles = subtitles}));
  if (!loaded || loaded->LostSignature) {
    std::abort();
  }
  return std::move(loaded->Stream);
}

StreamEdit EveryCode(const SupStream& stream) {
  return AssignCodes(stream, 0, static_cast<std::size_t>(stream.Count),
                     {.Colours = AllFour({0, 2, 0, 12}), .Contrasts = AllFour({0, 15, 15, 15})});
}

void SetForAll(benchmark::State& state) {
  SupStream stream = LoadFilm(ManySubtitles);
  for (auto _ : state) {
    StreamEdit edit = EveryCode(stream);
    if (!ApplyEdit(stream, edit)) {
      state.SkipWithError("not applied");
    }
    benchmark::DoNotOptimize(edit);
    benchmark::ClobberMemory();
  }
}

/// What undo and redo take.
void UndoSetForAll(benchmark::State& state) {
  SupStream stream = LoadFilm(ManySubtitles);
  StreamEdit edit = EveryCode(stream);
  for (auto _ : state) {
    if (!ApplyEdit(stream, edit)) {
      state.SkipWithError("not applied");
    }
    benchmark::ClobberMemory();
  }
}

/// The least that writing four bytes at every recorded offset takes.
void PlainPassOverOffsets(benchmark::State& state) {
  SupStream stream = LoadFilm(ManySubtitles);
  for (auto _ : state) {
    for (std::size_t i = 0; i < stream.ColourBytesOffset.size(); ++i) {
      std::uint8_t* const colour = stream.RawBytes.data() + stream.ColourBytesOffset[i];
      std::uint8_t* const contrast = stream.RawBytes.data() + stream.ContrastBytesOffset[i];
      colour[0] = 0xC0;
      colour[1] = 0x20;
      contrast[0] = 0xFF;
      contrast[1] = 0xF0;
    }
    benchmark::ClobberMemory();
  }
}

const std::vector<std::uint8_t>& FiftyMegabyteStream() {
  static const std::vector<std::uint8_t> bytes = [] {
    std::vector<std::uint8_t> film = MakeFilm({.Subtitles = 20000});
    film.resize(FiftyMegabytes);
    return film;
  }();
  return bytes;
}

void SaveSup(benchmark::State& state) {
  const QTemporaryDir folder(QStringLiteral("bench-save-XXXXXX"));
  for (auto _ : state) {
    if (!ReplaceFile(folder.filePath(QStringLiteral("film.sup")), FiftyMegabyteStream(),
                     {.Tail = OldTail::Kept})) {
      state.SkipWithError("not saved");
    }
  }
}

void PlainWriteAndSync(benchmark::State& state) {
  const QTemporaryDir folder(QStringLiteral("bench-save-XXXXXX"));
  const auto& bytes = FiftyMegabyteStream();
  for (auto _ : state) {
    QFile file(folder.filePath(QStringLiteral("film.sup")));
    const auto length = static_cast<qint64>(bytes.size());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        file.write(reinterpret_cast<const char*>(bytes.data()), length) != length ||
        fsync(file.handle()) != 0) {
      state.SkipWithError("not written");
    }
  }
}

BENCHMARK(PlainPassOverOffsets)->Unit(benchmark::kMillisecond);
BENCHMARK(SetForAll)->Unit(benchmark::kMillisecond);
BENCHMARK(UndoSetForAll)->Unit(benchmark::kMillisecond);
BENCHMARK(PlainWriteAndSync)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);
BENCHMARK(SaveSup)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(20);

}  // namespace

BENCHMARK_MAIN();
