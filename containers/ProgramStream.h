#pragma once

#include <filesystem>
#include <string_view>

#include "base/Progress.h"
#include "containers/Container.h"

namespace quillmark {

/// Whether a file starts with a pack header.
[[nodiscard]] bool StartsLikeProgramStream(std::string_view head);

/// Reads the subtitle streams of a .vob, .mpg or .m2p, as ReadProgramTracks does. The first part of a title
/// (VTS_01_1.VOB) is read with the parts that follow it in its folder (VTS_01_2.VOB and so on), and a note
/// says so.
[[nodiscard]] ReadContainerResult ReadProgramStream(const std::filesystem::path& path,
                                                    const Progress& progress = {});

}  // namespace quillmark
