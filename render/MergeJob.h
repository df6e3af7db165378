#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "files/FileWriter.h"
#include "render/MergedStreamEncoder.h"
#include "sup/SupFormat.h"
#include "sup/SupStream.h"

namespace quillmark {

/// What stands in the way of a merge.
enum class MergeObstacle {
  None,
  NoPrimary,      ///< no stream, or one without a subtitle
  VariedPrimary,  ///< its subtitles differ in colours or opacities
  NoSecondary,
};
/// Before a second stream is loaded. Never NoSecondary.
[[nodiscard]] MergeObstacle ObstacleToSecondary(const SupStream& primary);
/// Before the merged stream is made. Never VariedPrimary: the second stream would not have been loaded.
[[nodiscard]] MergeObstacle ObstacleToMerge(const SupStream& primary, const SupStream& secondary);

/// What the caller does as the merge goes on. All may be empty.
struct MergeSteps {
  /// Before each primary subtitle, or packet of a split merge, by its index; false ends the merge.
  std::function<bool(std::size_t index)> Next;
  /// After each one that was not skipped, before its packet is written.
  std::function<void(std::size_t index, MergedStreamEncoder::Outcome outcome,
                     const MergedStreamEncoder& encoder)>
      Done;
  /// Before all of them, how many there are.
  std::function<void(std::size_t count)> Begin = {};
};

/// How a merge ended. The packets of all subtitles before the end were handed to the file.
struct MergeReport {
  enum class Ending {
    Complete,
    Interrupted,     ///< by MergeSteps::Next
    SubtitleFailed,  ///< one cannot be merged
    FileFailed,      ///< its packet cannot be written
  };
  Ending How = Ending::Complete;
  std::int64_t Number = 0;     ///< of the subtitle that failed, from 1
  bool IsOfSecondary = false;  ///< it is one of the second stream, that a split merge shows alone
  std::string Reason;          ///< why, in words for the user
  /// Numbers of subtitles whose units are longer than MaxReadUnit; of a split merge those of its packets.
  std::vector<std::int64_t> TooLong;
};

/// Lays `secondary` over `primary` as the settings say and writes the packets, in order, to `out`, which is
/// left to the caller to commit.
[[nodiscard]] MergeReport MergeStreams(const SupStream& primary, const SupStream& secondary,
                                       const MergeSettings& settings, FileWriter& out,
                                       const MergeSteps& steps);

/// "subtitles 3, 7 are longer than ...", naming the first ones where there are many; empty without any.
[[nodiscard]] std::string TooLongText(const std::vector<std::int64_t>& numbers);

}  // namespace quillmark
