#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "base/Progress.h"
#include "containers/ByteSource.h"
#include "containers/Container.h"
#include "containers/VobSubIndex.h"

namespace quillmark {

/// Whether a file starts as the index of a VobSub pair does.
[[nodiscard]] bool StartsLikeVobSub(std::string_view head);

/// Reads a VobSub pair, of which `path` names either file; the other one stands beside it. An .idx without
/// its .sub is a Failure; a .sub without its .idx is read by itself, and a note says so.
[[nodiscard]] ReadContainerResult ReadVobSub(const std::filesystem::path& path,
                                             const Progress& progress = {});

/// Reads the units that an index names, a track for each of its languages that has any, sorted by time.
///
/// The time is the index's, to the millisecond; where the unit's own time stamp is within one millisecond of
/// it, perhaps after a shift that is the same for the whole language, it is the time stamp's, to the tick. A
/// time before 0 in the index gives way to the time stamp.
///
/// A unit is looked for at the position of its line, then at the position in decimal, then by its time, then
/// from the position on; a line for which none is found is told in a note, and the others are read.
[[nodiscard]] ReadContainerResult ReadVobSubPair(const VobSubIndex& index, ByteSource& packs,
                                                 const Progress& progress = {});

}  // namespace quillmark
