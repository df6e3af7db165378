#pragma once

#include <cstddef>
#include <string>

#include "base/Progress.h"
#include "base/Words.h"
#include "containers/ByteSource.h"
#include "containers/Container.h"
#include "containers/UnitGatherer.h"

namespace quillmark {

/// All subtitle streams of an MPEG program stream of whatever length, named "0x20" to "0x3F" and sorted by
/// that. Times count from the video's first picture, where there is one, and go on where the clock is set
/// anew. A Failure where no pack header is in it.
[[nodiscard]] ReadContainerResult ReadProgramTracks(ByteSource& source, const Progress& progress = {});

/// More than this program reads of one file is gathered.
[[nodiscard]] bool IsTooMuch(const UnitGatherer& gatherer);
inline constexpr const char* TooMuchReason = Words::Mark("its subtitles take more than 2 GiB");

/// Of a file in which no pack header was found.
inline constexpr const char* NoPackReason = Words::Mark("no pack header of a program stream is in it");

/// Of a file that has encrypted packets and gives no subtitle.
inline constexpr const char* EncryptedNote = Words::Mark("the file is encrypted");

/// "0x20", by the number from 0.
[[nodiscard]] std::string SubstreamName(std::size_t substream);

}  // namespace quillmark
