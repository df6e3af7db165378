#include "bench/TwoFilms.h"

#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

#include "bench/Film.h"
#include "sup/StreamLoader.h"

namespace quillmark {
namespace {

SupStream Loaded(Result<LoadedStream> loaded) {
  if (!loaded || loaded->LostSignature) {
    std::abort();
  }
  return std::move(loaded->Stream);
}

std::vector<std::uint8_t> FilmOfFewPictures(int subtitles, std::uint32_t seed, std::int64_t firstStart) {
  return MakeFilm({.Subtitles = subtitles, .Seed = seed, .DistinctPictures = 200, .FirstStart = firstStart});
}

}  // namespace

TwoFilms::TwoFilms(int subtitles)
    : Primary(Loaded(IndexPrimaryStream(FilmOfFewPictures(subtitles, 1, 90000)))),
      Secondary(Loaded(IndexSecondaryStream(FilmOfFewPictures(subtitles, 2, 150000), Primary))) {}

}  // namespace quillmark
