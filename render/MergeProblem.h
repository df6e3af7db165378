#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "render/MergeReview.h"
#include "sup/StreamProblem.h"

namespace quillmark {

/// What may be wrong with a packet of a merged stream, the worst first.
enum class MergeProblemKind : std::uint8_t {
  PrimaryDamaged,
  SecondaryDamaged,
  UnitTooLarge,    ///< the unit does not fit its size field: the merge ends here
  FieldCut,        ///< a field of the unit ends before the picture does
  UnitUnreadable,  ///< the unit is longer than programs read
  PlayerUnitSize,  ///< the unit is longer than players take
  LongLine,        ///< a line of the unit has more bits than players take
  PrimaryCut,      ///< the primary's own fields end before its picture does
  SecondaryCut,
  NoOverlap,  ///< the two subtitles are not shown together
  UsedBefore,
  PrimaryClipped,
  SecondaryClipped,
  Covered,
  Recoloured,
};
inline constexpr std::size_t MergeProblemKinds = static_cast<std::size_t>(MergeProblemKind::Recoloured) + 1;

struct MergeProblem {
  MergeProblemKind Kind{};
  /// What MergeProblemMessage() tells besides: numbers from 1, pixels, bytes, each kind its own.
  std::array<std::int64_t, 3> Numbers = {};

  bool operator==(const MergeProblem&) const = default;
};

/// In the order of their kinds, each kind at most once.
[[nodiscard]] std::vector<MergeProblem> ProblemsOf(const MergedPair& pair);
/// Their kinds alone, as bits 1 << kind.
[[nodiscard]] std::uint32_t ProblemKindsOf(const MergedPair& pair);

/// "primary_damaged", ...: for scripts, never changed.
[[nodiscard]] std::string_view MergeProblemName(MergeProblemKind kind);
/// A few words for the kind: "nothing shown at the same time".
[[nodiscard]] std::string MergeProblemPhrase(MergeProblemKind kind);
[[nodiscard]] ProblemSeverity SeverityOf(MergeProblemKind kind);
/// As bits 1 << kind: those whose phrase or message has the words, in whatever case.
[[nodiscard]] std::uint32_t MergeProblemKindsWithWords(std::string_view words);
/// All that is to say: "12 pixels of the second picture cover the first one".
[[nodiscard]] std::string MergeProblemMessage(const MergeProblem& problem);

/// How many packets have what.
struct MergeReviewSummary {
  std::size_t Packets = 0;       ///< that the merge writes, were it to pass what it ends at
  std::size_t WithProblems = 0;  ///< of all pairs
  std::array<std::size_t, MergeProblemKinds> Of = {};  ///< pairs with a problem of each kind
  std::int64_t Covered = 0;                            ///< pixels of all pairs
  std::int64_t Clipped = 0;
  std::int64_t Recoloured = 0;

  void Add(const MergedPair& pair);
};

/// "12 packets; 3 with problems: 2 pictures that cover each other, ..."
[[nodiscard]] std::string SummaryText(const MergeReviewSummary& summary);

}  // namespace quillmark
