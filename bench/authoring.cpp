// A film of 1,500 subtitles written as pictures with their list, as an authoring project, and read back from
// it. Items are subtitles.

#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

#include <QTemporaryDir>
#include <benchmark/benchmark.h>

#include "base/FilePath.h"
#include "bench/Film.h"
#include "containers/AuthoringList.h"
#include "files/ReplaceFile.h"
#include "render/AuthoringProject.h"
#include "render/Composition.h"
#include "render/Exporter.h"
#include "sup/StreamLoader.h"

namespace quillmark {
namespace {

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

const SupStream& Film() {
  static const SupStream film = [] {
    auto loaded = IndexPrimaryStream(MakeFilm({}));
    if (!loaded || loaded->LostSignature) {
      Fail("the film is not a stream");
    }
    return std::move(loaded->Stream);
  }();
  return film;
}

void Pictures(benchmark::State& state) {
  const SupStream& film = Film();
  for ([[maybe_unused]] auto _ : state) {
    const QTemporaryDir folder;
    const ExportPaths paths = ExportPathsForBase(folder.filePath("film"));
    if (!MakeFolder(paths.Folder)) {
      Fail("no folder");
    }
    Exporter exporter(paths, Exporter::List::Replaced);
    std::vector<std::uint8_t> buffer;
    for (std::size_t i = 0; i < film.PacketOffset.size(); ++i) {
      const SubtitleUnit unit = UnitOf(film, i, buffer);
      const auto description = DescribeSubtitle(unit);
      cBitmap picture;
      DecodePicture(unit.Bytes, description->Control, MakeCodeColours(StartUpPalette, description->Control),
                    picture);
      exporter.Add(*description, std::move(picture));
    }
    exporter.Flush();
    if (!exporter.WriteList() || exporter.PictureFailures().Count > 0) {
      Fail("not written");
    }
  }
  state.SetItemsProcessed(state.iterations() * film.Count);
}
BENCHMARK(Pictures)->Unit(benchmark::kMillisecond)->UseRealTime();

void Project(benchmark::State& state) {
  const SupStream& film = Film();
  for ([[maybe_unused]] auto _ : state) {
    const QTemporaryDir folder;
    if (!WriteAuthoringProject(film, folder.filePath("film.xml"))) {
      Fail("not written");
    }
  }
  state.SetItemsProcessed(state.iterations() * film.Count);
}
BENCHMARK(Project)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReadProject(benchmark::State& state) {
  const QTemporaryDir folder;
  const QString list = folder.filePath("film.xml");
  if (!WriteAuthoringProject(Film(), list)) {
    Fail("not written");
  }
  for ([[maybe_unused]] auto _ : state) {
    const auto read = ReadAuthoringList(PathFromUtf8(list.toStdString()));
    if (!read || !*read || (*read)->Tracks.size() != 1) {
      Fail("not read");
    }
  }
  state.SetItemsProcessed(state.iterations() * Film().Count);
}
BENCHMARK(ReadProject)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace quillmark

BENCHMARK_MAIN();
