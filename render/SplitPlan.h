#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "sup/DisplayIntervals.h"
#include "sup/SpuControl.h"
#include "sup/SupStream.h"

namespace quillmark {

/// Which subtitles the units of a merge show that shows just what both streams show, and when. The ends are
/// those of the units themselves: a delay is that of the last control sequence, taken as unsigned, as players
/// take it. Both streams must outlive it. It depends on nothing that says how the pictures are laid over each
/// other.
class SplitPlan {
 public:
  SplitPlan(const SupStream& primary, const SupStream& secondary, std::int64_t joinTicks)
      : primary_(primary), secondary_(secondary), intervals_(joinTicks) {}

  /// A bounded piece of reading the ends of the subtitles and of making the plan; false once it is made.
  bool Step();

  /// How many units there are, in the order of their times; none before the plan is made.
  [[nodiscard]] std::size_t Count() const { return isMade_ ? intervals_.Made().size() : 0; }
  /// `index` is below Count(). First is the primary stream.
  [[nodiscard]] const DisplayInterval& Unit(std::size_t index) const { return intervals_.Made()[index]; }
  /// Of the first primary subtitle whose control data is complete: for units that show none.
  [[nodiscard]] const std::optional<SpuControl>& PrimaryControl() const { return primaryControl_; }

 private:
  /// Whether there was any left.
  bool ReadSome(const SupStream& stream, DisplayQueue& displays);

  const SupStream& primary_;
  const SupStream& secondary_;
  std::vector<std::uint8_t> unit_;
  std::optional<SpuControl> primaryControl_;
  DisplayIntervals intervals_;
  bool isMade_ = false;
};

/// What the first subtitle says whose control data is complete; it looks at all of them where there is none.
[[nodiscard]] std::optional<SpuControl> FirstCompleteControl(const SupStream& stream);

}  // namespace quillmark
