#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "sup/DisplayIntervals.h"
#include "sup/SpuControl.h"
#include "sup/SupStream.h"

namespace quillmark {

/// Which subtitles the units of a merge show that shows just what both streams show, and when. The ends are
/// those of the units themselves: a delay is that of the last control sequence, taken as unsigned, as players
/// take it. Both streams must outlive it.
class SplitPlan {
 public:
  SplitPlan(const SupStream& primary, const SupStream& secondary, std::int64_t joinTicks)
      : primary_(primary), secondary_(secondary), joinTicks_(joinTicks) {}

  /// Reads the ends of some more subtitles and, with all of them, makes the plan; false once that is done.
  bool Step();

  /// In the order of their times; none before the plan is made. First is the primary stream.
  [[nodiscard]] std::span<const DisplayInterval> Units() const { return units_; }
  /// Of the first primary subtitle whose control data is complete: for units that show none.
  [[nodiscard]] const std::optional<SpuControl>& PrimaryControl() const { return primaryControl_; }

 private:
  /// Whether there was any left.
  bool ReadSome(const SupStream& stream, std::vector<OwnDisplay>& displays, bool isPrimary);

  const SupStream& primary_;
  const SupStream& secondary_;
  std::int64_t joinTicks_;
  std::vector<OwnDisplay> primaryDisplays_;
  std::vector<OwnDisplay> secondaryDisplays_;
  std::vector<std::uint8_t> unit_;
  std::optional<SpuControl> primaryControl_;
  std::vector<DisplayInterval> units_;
  bool isMade_ = false;
};

}  // namespace quillmark
