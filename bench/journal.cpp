// The journal of unsaved edits: what an edit of a whole stream takes more with it, and what it costs to load
// a stream that has none.

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include "app/JournalFolder.h"
#include "base/ContentHash.h"
#include "bench/Film.h"
#include "sup/StreamLoader.h"

namespace {

using namespace quillmark;
using Bytes = std::vector<std::uint8_t>;

constexpr int ManySubtitles = 100000;
constexpr int FilmSubtitles = 20000;  // some 56 MB

/// As Set for all makes it: the operands of a colour command and of the contrast command behind it, in one
/// place of each subtitle.
StreamEdit SetForAllEdit() {
  StreamEdit edit;
  constexpr std::size_t unit = 2800;
  const Bytes codes = {0xC0, 0x20, 0x04, 0xFF, 0xF0};
  for (std::size_t i = 0; i < ManySubtitles; ++i) {
    edit.Replace(i * unit + 2700, codes.size(), codes);
  }
  return edit;
}

/// Encoded and appended, as before the edit is shown; the record's memory is kept, as the window keeps it.
void JournalOfSetForAll(benchmark::State& state) {
  const QTemporaryDir folder(QStringLiteral("bench-journal-XXXXXX"));
  auto file = JournalFolder(folder.path()).Create({.Length = 1, .Hash = 2, .Path = "film.sup"});
  if (!file) {
    std::abort();
  }
  const StreamEdit edit = SetForAllEdit();
  Bytes record;
  for (auto _ : state) {
    record.clear();
    WriteJournalEdit("Set for all", edit, record);
    if (!file->Append(record) || !file->CutTo(0)) {
      state.SkipWithError("not written");
    }
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(record.size()));
}

void PlainWriteOfThoseBytes(benchmark::State& state) {
  const QTemporaryDir folder(QStringLiteral("bench-journal-XXXXXX"));
  Bytes record;
  WriteJournalEdit("Set for all", SetForAllEdit(), record);
  const int file = open(QFile::encodeName(folder.filePath(QStringLiteral("plain"))).constData(),
                        O_CREAT | O_RDWR | O_APPEND, 0600);
  for (auto _ : state) {
    if (write(file, record.data(), record.size()) != static_cast<ssize_t>(record.size()) ||
        ftruncate(file, 0) != 0) {
      state.SkipWithError("not written");
    }
  }
  close(file);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(record.size()));
}

/// What a load does for the journal where the folder holds `range` journals of other streams.
void LookForAJournal(benchmark::State& state) {
  const QTemporaryDir temporary(QStringLiteral("bench-journal-XXXXXX"));
  const JournalFolder folder(temporary.path());
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    if (!folder.Create({.Length = 1000 + static_cast<std::uint64_t>(i), .Hash = 2, .Path = {}})) {
      std::abort();
    }
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(folder.Find(50'000'000, [] { return std::uint64_t{3}; }));
  }
}

/// The same film, indexed.
void IndexTheFilm(benchmark::State& state) {
  const Bytes film = MakeFilm({.Subtitles = FilmSubtitles});
  for (auto _ : state) {
    benchmark::DoNotOptimize(IndexStream(film).IsOk());
  }
}

/// While the window is idle, or before the first edit at the latest.
void HashTheFilm(benchmark::State& state) {
  const Bytes film = MakeFilm({.Subtitles = FilmSubtitles});
  for (auto _ : state) {
    benchmark::DoNotOptimize(ContentHash(film));
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(film.size()));
}

BENCHMARK(PlainWriteOfThoseBytes)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(JournalOfSetForAll)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(IndexTheFilm)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(LookForAJournal)->Arg(0)->Arg(100)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(HashTheFilm)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
