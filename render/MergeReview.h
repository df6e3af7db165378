#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "render/MergedStreamEncoder.h"
#include "sup/StreamProblem.h"
#include "sup/SubtitleSet.h"
#include "sup/SupStream.h"

namespace quillmark {

/// What there is to know of one packet of a merged stream. Indexes count from 0.
struct MergedPair {
  std::size_t Primary = 0;
  std::size_t Secondary = 0;
  /// Units of a split merge may show one alone. The index of the other is 0 then, and it has no damage.
  bool HasPrimary = true;
  bool HasSecondary = true;
  std::int64_t StartTicks = 0;  ///< of the packet
  /// Delay units that the packet is shown for; of pairs that have no unit 0.
  std::uint16_t Delay = 0;
  /// How long both are shown together, in ticks of 90 kHz; 0 or less where they are not: the secondary one is
  /// laid over it all the same.
  std::int64_t OverlapTicks = 0;
  /// An earlier packet shows the secondary subtitle too. Not told of a split merge, which shows it in several
  /// packets at its own time.
  bool IsUsedBefore = false;
  /// Never Skipped. Where it is not Encoded the merge ends; a review goes on.
  MergeOutcome Outcome = MergeOutcome::Encoded;
  /// Why either subtitle cannot be shown as it was meant: its control data is not complete, its area is
  /// reversed or the file ends within its unit.
  std::optional<StreamProblemCode> PrimaryDamage = {};
  std::optional<StreamProblemCode> SecondaryDamage = {};
  MergedCounts Counts = {};   ///< nothing where either control data is not complete
  MergedUnitFacts Unit = {};  ///< likewise

  [[nodiscard]] bool HasUnit() const {
    return Outcome == MergeOutcome::Encoded || Outcome == MergeOutcome::TooLarge;
  }
  /// Visible pixels of both pictures that the unit does not show.
  [[nodiscard]] std::int32_t ClippedPixels() const {
    return Counts.Primary.Total() + Counts.Secondary.Total();
  }

  /// The packet of a split merge as it is planned, up to where its delay says that it ends.
  [[nodiscard]] DisplayInterval Planned() const;
  /// OverlapTicks to the nearest millisecond, 0 where they are not shown together.
  [[nodiscard]] std::int64_t OverlapMs() const;

  bool operator==(const MergedPair&) const = default;
};

/// Goes through two streams packet by packet of their merged one, by merging them: everything is found by
/// what composes and encodes. Both streams must outlive it and stay as they are.
class MergeReviewer {
 public:
  /// `plan` is as MergedInputReader has it.
  MergeReviewer(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings,
                std::shared_ptr<SplitPlan> plan = nullptr);

  /// Looks at one more primary subtitle, or packet of a split merge; false once none was left. It takes as
  /// long as merging it. The first steps of a split merge prepare it.
  bool Step();
  /// Takes such a step; false once it is prepared, as pairs always are.
  bool Prepare() { return encoder_.Prepare(); }
  /// How many primary subtitles, or packets of a split merge, were looked at, and how many there are: 0 of a
  /// split merge that is not prepared.
  [[nodiscard]] std::size_t Looked() const { return next_; }
  [[nodiscard]] std::size_t Count() const { return encoder_.Count(); }

  /// Of the packets so far, in their order. A primary subtitle that there is none for has no packet.
  [[nodiscard]] const std::vector<MergedPair>& Pairs() const { return pairs_; }
  /// The numbers, from 1, of the secondary subtitles that no packet so far shows.
  [[nodiscard]] SubtitleSet LeftOut() const;
  [[nodiscard]] std::size_t SecondaryCount() const { return isShown_.size(); }

  /// Looks at primary subtitle `index`, or packet `index` of a split merge, alone, without what the earlier
  /// ones use; nullopt where no packet is written for it.
  [[nodiscard]] std::optional<MergedPair> LookAt(std::size_t index);

 private:
  const SupStream& primary_;
  const SupStream& secondary_;
  MergeMode mode_;
  MergedStreamEncoder encoder_;
  std::size_t next_ = 0;
  std::vector<MergedPair> pairs_;
  std::vector<bool> isShown_;  // per secondary subtitle
};

}  // namespace quillmark
