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
  /// How long both are shown together, in ticks of 90 kHz; 0 or less where they are not: the secondary one is
  /// laid over it all the same.
  std::int64_t OverlapTicks = 0;
  bool IsUsedBefore = false;  ///< an earlier packet shows the secondary subtitle too
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

  bool operator==(const MergedPair&) const = default;
};

/// Goes through two streams packet by packet of their merged one, by merging them: everything is found by
/// what composes and encodes. Both streams must outlive it and stay as they are.
class MergeReviewer {
 public:
  MergeReviewer(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings);

  /// Looks at one more primary subtitle; false once none was left. It takes as long as merging it.
  bool Step();
  /// How many primary subtitles were looked at, and how many there are.
  [[nodiscard]] std::size_t Looked() const { return next_; }
  [[nodiscard]] std::size_t Count() const { return count_; }

  /// Of the packets so far, in their order. A primary subtitle that there is none for has no packet.
  [[nodiscard]] const std::vector<MergedPair>& Pairs() const { return pairs_; }
  /// The numbers, from 1, of the secondary subtitles that no packet so far shows.
  [[nodiscard]] SubtitleSet LeftOut() const;
  [[nodiscard]] std::size_t SecondaryCount() const { return isShown_.size(); }

  /// Looks at primary subtitle `index` alone, without what the earlier ones use; nullopt where no packet is
  /// written for it.
  [[nodiscard]] std::optional<MergedPair> LookAt(std::size_t index);

 private:
  const SupStream& primary_;
  const SupStream& secondary_;
  MergedStreamEncoder encoder_;
  std::size_t count_;
  std::size_t next_ = 0;
  std::vector<MergedPair> pairs_;
  std::vector<bool> isShown_;  // per secondary subtitle
};

}  // namespace quillmark
