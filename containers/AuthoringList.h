#pragma once

#include <filesystem>

#include "base/Progress.h"
#include "containers/AuthoringXml.h"
#include "containers/Container.h"

namespace quillmark {

struct AuthoringListOptions {
  /// Takes colours together where a picture has more than four, or the list more than 16; a note tells the
  /// largest error. Without it such pictures are refused.
  bool Reduce = false;
};

/// Reads a list of pictures and encodes them: one track, whose units show what the authoring tool's would, at
/// the same times and places. Delays are counted in 1024 ticks, as that tool and players do, and are at least
/// 1. Paths of pictures are relative to the list's folder, else to the current one; pictures that are in
/// neither are looked for in a folder of the same name beside the list.
///
/// Indexed pictures of four colours keep their indexes as pixel codes. A palette file beside the list
/// (film.pal, film.rgb; for film_spu.xml the same ones, too) gives the order of the colours.
///
/// A Failure names the line and the picture; notes tell what is left out, by the authoring tool's own rules.
[[nodiscard]] ReadContainerResult ReadAuthoringList(const std::filesystem::path& path,
                                                    const Progress& progress = {});
[[nodiscard]] ReadContainerResult ReadAuthoringList(const std::filesystem::path& path,
                                                    const AuthoringListOptions& options,
                                                    const Progress& progress);

}  // namespace quillmark
