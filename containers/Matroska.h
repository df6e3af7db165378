#pragma once

#include <filesystem>
#include <string_view>

#include "base/Progress.h"
#include "containers/ByteSource.h"
#include "containers/Container.h"

namespace quillmark {

/// Whether a file starts as one of Matroska does.
[[nodiscard]] bool StartsLikeMatroska(std::string_view head);

/// Reads the DVD subtitles (S_VOBSUB) of a Matroska file, of whatever length: what other tracks hold is
/// passed over. Each block is a unit, after its compression was undone. Times are floor(ns x 9 / 100000)
/// ticks.
///
/// Tracks of subtitles of other kinds, and encrypted ones, are named in the notes. Laced blocks and blocks
/// that do not hold a whole unit are left out and counted in the track's notes, with the byte at which the
/// first stands. A file that is cut short or damaged gives what is whole of it, with a note. What the file
/// says of how long a unit is shown is not kept: the unit's own stop counts, and a unit without one is left
/// without.
[[nodiscard]] ReadContainerResult ReadMatroska(const std::filesystem::path& path,
                                               const Progress& progress = {});
/// The same of bytes that are read from anywhere.
[[nodiscard]] ReadContainerResult ReadMatroskaFrom(ByteSource& source, const Progress& progress = {});

}  // namespace quillmark
