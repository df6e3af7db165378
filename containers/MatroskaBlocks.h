#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "containers/Container.h"
#include "containers/MatroskaInput.h"
#include "containers/MatroskaTracks.h"

namespace quillmark {

/// Where a block's data stand in the file, and the time of its cluster.
struct BlockPlace {
  std::uint64_t Start = 0;
  std::uint64_t End = 0;
  std::uint64_t ClusterTime = 0;
};

/// The blocks of the tracks of DVD subtitles become packets.
class MatroskaBlocks {
 public:
  /// The longest unit of time, in ns.
  static constexpr std::uint64_t MaxScale = 1'000'000'000'000;

  explicit MatroskaBlocks(std::vector<MatroskaTrack> tracks);

  /// Takes the block if it is of one of the tracks; of others a few bytes are read. The index of the track if
  /// its unit has no stop of its own.
  std::optional<std::size_t> Take(MatroskaInput& input, const BlockPlace& place);
  /// The file says how long that unit is shown, and it is not kept.
  void CountLostDuration(std::size_t track) { ++tracks_[track].LostDurations; }

  /// Moves tracks and notes to `container`; `scale` is the unit of all times in ns, 1 to MaxScale.
  void Finish(std::uint64_t scale, Container& container);

 private:
  /// What is wrong with a block.
  enum class Fault : std::uint8_t { Laced, TooLong, NotUnpacked, NoUnit, CutShort, HasTail };
  struct FaultCount {
    std::uint64_t Count = 0;
    std::uint64_t First = 0;  ///< byte of the file
  };
  struct StoredTime {
    std::size_t Packet = 0;  ///< its first byte
    std::int64_t Time = 0;   ///< in the file's unit
  };
  struct Gathered {
    MatroskaTrack Facts;
    std::vector<std::uint8_t> Packets = {};
    std::vector<StoredTime> Times = {};
    std::array<FaultCount, 6> Faults = {};
    std::uint64_t LostDurations = 0;
  };

  [[nodiscard]] std::optional<std::size_t> Find(std::uint64_t number) const;
  static void Count(Gathered& track, Fault fault, const BlockPlace& place);
  bool TakeUnit(Gathered& track, const BlockPlace& place, std::int64_t time);
  [[nodiscard]] static std::string FaultText(Fault fault, std::int64_t count, const std::string& first);
  static std::vector<std::string> NotesOf(const Gathered& track);

  std::vector<Gathered> tracks_;
  std::map<std::uint64_t, std::size_t> readable_;  // indices by the number that blocks have
  std::vector<std::uint8_t> payload_;              // of the block at hand; kept for its memory
};

/// floor(time x scale x 9 / 100000), or the nearest that there is.
[[nodiscard]] std::int64_t TicksOfMatroskaTime(std::int64_t time, std::uint64_t scale);

}  // namespace quillmark
