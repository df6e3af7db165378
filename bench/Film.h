#pragma once

#include <cstdint>
#include <vector>

namespace quillmark {

/// A stream such as a film's: every picture holds two lines of outlined text. On average a unit has 2.8 KB, a
/// picture 22,500 cells, a run 5 cells.
struct FilmOptions {
  int Subtitles = 1500;
  std::uint32_t Seed = 1;  ///< equal options and seeds give equal bytes, on every platform
  /// Pictures drawn; longer films show them again, with times of their own.
  int DistinctPictures = 1500;
  std::int64_t FirstStart = 90000;  ///< 90 kHz ticks
};

/// The bytes of a whole SUP file.
[[nodiscard]] std::vector<std::uint8_t> MakeFilm(const FilmOptions& options);

}  // namespace quillmark
