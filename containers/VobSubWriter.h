#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Progress.h"
#include "base/Result.h"
#include "files/StagedFiles.h"
#include "palette/Colour.h"

namespace quillmark {

/// One language of a VobSub pair.
struct VobSubTrack {
  /// A SUP file's packets, which stay until the pair is written. A last one that is cut short has zeros in
  /// place of what is missing.
  std::span<const std::uint8_t> Packets;
  std::string Language;  ///< letters or a tag; two letters are written where there are any for it
  std::string Name;      ///< in UTF-8; empty: none
};

/// What is said of a pair as a whole.
struct VobSubOptions {
  DvdPalette Palette = StartUpPalette;
  int FrameWidth = 720;
  int FrameHeight = 576;
  Overwriting Existing = Overwriting::Refused;
};

/// The two files of a pair.
struct VobSubPaths {
  std::filesystem::path Index;  ///< .idx
  std::filesystem::path Packs;  ///< .sub
};
/// Those of the pair that `path` names either file of; without either ending, both are added to it.
[[nodiscard]] VobSubPaths VobSubPathsOf(const std::filesystem::path& path);

/// At most so many languages fit a pair.
inline constexpr std::size_t MaxVobSubTracks = 32;

/// What a pair cannot hold of the tracks as they are, in words for the user: the order of packets, bytes that
/// are no packet, a last packet that is cut short.
[[nodiscard]] std::vector<std::string> ChangesInVobSub(const VobSubTrack& track);

/// Writes the pair that `path` names: both files, or neither. Files of these names are refused or replaced;
/// they stay as they were where the work fails or is cancelled, but for a .sub whose index cannot take its
/// place after it. `progress` counts bytes of units.
///
/// Units are written byte for byte, all languages in the order of time; time stamps have the ticks, lines of
/// the index the milliseconds, cut off. The reason of a failure names the subtitle, by its number in its
/// stream, that no pair can hold: one that starts before 0 or after 26 hours (33 bits), or whose size field
/// is below 4.
[[nodiscard]] Result<Completion> WriteVobSub(const std::filesystem::path& path,
                                             const std::vector<VobSubTrack>& tracks,
                                             const VobSubOptions& options = {},
                                             const Progress& progress = {});

}  // namespace quillmark
