#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "containers/UnitGatherer.h"

namespace quillmark {

/// A unit of a .sub, among all of them.
struct UnitPlace {
  std::uint64_t Pack = 0;
  std::uint64_t Packet = 0;
  std::size_t Substream = 0;  ///< from 0
  std::size_t Unit = 0;       ///< in its substream
};

/// The units of a .sub, to be looked up by what an index says of them.
class UnitTable {
 public:
  explicit UnitTable(std::array<GatheredSubstream, SubtitleSubstreams> substreams);

  [[nodiscard]] bool HasUnits() const { return !places_.empty(); }
  [[nodiscard]] const GatheredSubstream& Substream(std::size_t substream) const {
    return substreams_[substream];
  }
  [[nodiscard]] const GatheredUnit& Unit(const UnitPlace& place) const {
    return substreams_[place.Substream].Units[place.Unit];
  }

  /// The unit whose pack or first packet stands there; of several in a pack that of the substream, if any.
  [[nodiscard]] std::optional<UnitPlace> At(std::uint64_t position, std::size_t substream);
  /// The first unit of the substream whose time stamp is within a millisecond of the time, in ticks.
  [[nodiscard]] std::optional<UnitPlace> OfTime(std::int64_t ticks, std::size_t substream);
  /// The same; unless a line has named it.
  [[nodiscard]] std::optional<UnitPlace> UnnamedOfTime(std::int64_t ticks, std::size_t substream);
  /// The first unit of the substream from there on; unless a line has named it.
  [[nodiscard]] std::optional<UnitPlace> From(std::uint64_t position, std::size_t substream) const;

  /// Makes a packet of a SUP file of it.
  void SetTime(const UnitPlace& place, std::int64_t ticks) {
    substreams_[place.Substream].SetTime(Unit(place), ticks);
  }
  /// The bytes of a substream whose units are needed no more.
  [[nodiscard]] std::vector<std::uint8_t> TakeBytes(std::size_t substream) {
    return std::move(substreams_[substream].Bytes);
  }

  /// A line of the index names it.
  void Name(const UnitPlace& place) { named_[place.Substream][place.Unit] = true; }

 private:
  [[nodiscard]] UnitPlace PlaceOf(std::size_t substream, std::size_t unit) const;
  /// The first place whose packet stands there or after it.
  [[nodiscard]] std::vector<UnitPlace>::const_iterator FirstFrom(std::uint64_t position);

  std::array<GatheredSubstream, SubtitleSubstreams> substreams_;
  std::vector<UnitPlace> places_;  // in the order of the file
  std::size_t next_ = 0;           // after the place that was looked up last; may be past the end
  std::array<std::vector<bool>, SubtitleSubstreams> named_;
  std::array<std::vector<std::size_t>, SubtitleSubstreams>
      byTime_;  // units with a time stamp; made when asked for
};

}  // namespace quillmark
