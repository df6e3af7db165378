#include "render/MergeProblem.h"

#include <bit>

#include "base/AsciiCase.h"
#include "sup/PlayerCheck.h"
#include "sup/SupFormat.h"

namespace quillmark {
namespace {

using Kind = MergeProblemKind;

constexpr std::int64_t MaxPlayerLineBytes = MaxPlayerLineBits / 8;

/// What is fixed about a kind.
struct KindWords {
  std::string_view Name;
  std::string_view Phrase;
  ProblemSeverity Severity = ProblemSeverity::Untidy;
};

constexpr KindWords WordsOf(Kind kind) {
  using enum ProblemSeverity;
  switch (kind) {
    case Kind::PrimaryDamaged:
      return {"primary_damaged", "first subtitle damaged", CannotBeShown};
    case Kind::SecondaryDamaged:
      return {"secondary_damaged", "second subtitle damaged", CannotBeShown};
    case Kind::UnitTooLarge:
      return {"unit_too_large", "unit too large to be written", CannotBeShown};
    case Kind::FieldCut:
      return {"field_cut", "field cut short", ShownWrongly};
    case Kind::UnitUnreadable:
      return {"unit_unreadable", "unit too long to be read", CannotBeShown};
    case Kind::PlayerUnitSize:
      return {"player_unit_size", "unit too large for players", CannotBeShown};
    case Kind::LongLine:
      return {"long_line", "line of too many bits", CannotBeShown};
    case Kind::PrimaryCut:
      return {"primary_cut", "first picture cut short", ShownWrongly};
    case Kind::SecondaryCut:
      return {"secondary_cut", "second picture cut short", ShownWrongly};
    case Kind::NoOverlap:
      return {"no_overlap", "not shown together", ShownWrongly};
    case Kind::UsedBefore:
      return {"used_before", "second subtitle shown before", Untidy};
    case Kind::PrimaryClipped:
      return {"primary_clipped", "first picture clipped", ShownWrongly};
    case Kind::SecondaryClipped:
      return {"secondary_clipped", "second picture clipped", ShownWrongly};
    case Kind::Covered:
      return {"covered", "pictures over each other", ShownWrongly};
    case Kind::Recoloured:
      return {"recoloured", "other colours", ShownWrongly};
  }
  return {};
}

std::string Numbered(std::int64_t number, std::string_view one, std::string_view more) {
  return std::to_string(number) + " " + std::string(number == 1 ? one : more);
}

std::string Pixels(std::int64_t number) {
  return Numbered(number, "pixel", "pixels");
}

/// `find(kind, numbers...)` for each problem that the pair has.
template <typename Find>
void FindProblems(const MergedPair& pair, const Find& find) {
  const auto secondary = static_cast<std::int64_t>(pair.Secondary) + 1;
  const auto size = static_cast<std::int64_t>(pair.Unit.Size);
  const MergedCounts& counts = pair.Counts;
  if (pair.PrimaryDamage) {
    find(Kind::PrimaryDamaged, static_cast<std::int64_t>(pair.Primary) + 1,
         static_cast<std::int64_t>(*pair.PrimaryDamage));
  }
  if (pair.SecondaryDamage) {
    find(Kind::SecondaryDamaged, secondary, static_cast<std::int64_t>(*pair.SecondaryDamage));
  }
  if (pair.Outcome == MergeOutcome::TooLarge) {
    find(Kind::UnitTooLarge, size);
  }
  if (pair.Unit.IsFieldCut) {
    find(Kind::FieldCut);
  }
  if (pair.Outcome == MergeOutcome::Encoded && pair.Unit.Size > MaxReadUnit) {
    find(Kind::UnitUnreadable, size);
  }
  if (pair.Outcome == MergeOutcome::Encoded && pair.Unit.Size > MaxPlayerUnit) {
    find(Kind::PlayerUnitSize, size);
  }
  if (static_cast<std::int64_t>(pair.Unit.LongestLine) > MaxPlayerLineBytes) {
    find(Kind::LongLine, static_cast<std::int64_t>(pair.Unit.LongestLine));
  }
  if (counts.PrimaryIsCut) {
    find(Kind::PrimaryCut);
  }
  if (counts.SecondaryIsCut) {
    find(Kind::SecondaryCut);
  }
  if (pair.HasPrimary && pair.HasSecondary && pair.OverlapTicks <= 0) {
    find(Kind::NoOverlap, secondary);
  }
  if (pair.IsUsedBefore) {
    find(Kind::UsedBefore, secondary);
  }
  const auto findClipped = [&](Kind kind, const ClippedPixels& clipped) {
    if (clipped.Total() > 0) {
      find(kind, clipped.OutsideFrame, clipped.InEdgeRows, clipped.Rows);
    }
  };
  findClipped(Kind::PrimaryClipped, counts.Primary);
  findClipped(Kind::SecondaryClipped, counts.Secondary);
  if (counts.Covered > 0) {
    find(Kind::Covered, counts.Covered);
  }
  if (counts.Recoloured > 0) {
    find(Kind::Recoloured, counts.Recoloured, counts.FurthestOff, counts.FurthestCode);
  }
}

std::string DamageMessage(std::string_view stream, const MergeProblem& problem) {
  return "subtitle " + std::to_string(problem.Numbers[0]) + " of the " + std::string(stream) +
         " stream is damaged: " +
         std::string(ProblemPhrase(static_cast<StreamProblemCode>(problem.Numbers[1])));
}

std::string ClippedMessage(std::string_view picture, const MergeProblem& problem) {
  const auto [outside, inEdgeRows, rows] = problem.Numbers;
  std::string text = outside > 0 ? Pixels(outside) + " outside the frame" : "";
  if (inEdgeRows > 0) {
    text += (text.empty() ? "" : " and ") + Pixels(inEdgeRows) + " in " +
            (outside > 0 ? "its" : "the frame's") + " rows 0, 1 or last, which merged units do not have";
  }
  return "the " + std::string(picture) + " picture loses " + text + ", in " + Numbered(rows, "row", "rows") +
         " of it";
}

}  // namespace

std::vector<MergeProblem> ProblemsOf(const MergedPair& pair) {
  std::vector<MergeProblem> problems;
  FindProblems(pair, [&problems](Kind kind, auto... numbers) {
    problems.push_back({.Kind = kind, .Numbers = {static_cast<std::int64_t>(numbers)...}});
  });
  return problems;
}

std::uint32_t ProblemKindsOf(const MergedPair& pair) {
  std::uint32_t kinds = 0;
  FindProblems(pair, [&kinds](Kind kind, auto... /*numbers*/) {
    kinds |= std::uint32_t{1} << static_cast<unsigned>(kind);
  });
  return kinds;
}

std::string_view MergeProblemName(MergeProblemKind kind) {
  return WordsOf(kind).Name;
}

std::string_view MergeProblemPhrase(MergeProblemKind kind) {
  return WordsOf(kind).Phrase;
}

ProblemSeverity SeverityOf(MergeProblemKind kind) {
  return WordsOf(kind).Severity;
}

std::string MergeProblemMessage(const MergeProblem& problem) {
  const auto& numbers = problem.Numbers;
  switch (problem.Kind) {
    case Kind::PrimaryDamaged:
      return DamageMessage("first", problem);
    case Kind::SecondaryDamaged:
      return DamageMessage("second", problem);
    case Kind::UnitTooLarge:
      return "the unit would have " + std::to_string(numbers[0]) + " bytes; its size field holds 65535";
    case Kind::FieldCut:
      return "a field of the unit ends before the picture does";
    case Kind::UnitUnreadable:
      return "the unit has " + std::to_string(numbers[0]) + " bytes; programs, this one included, read " +
             std::to_string(MaxReadUnit);
    case Kind::PlayerUnitSize:
      return "the unit has " + std::to_string(numbers[0]) + " bytes; players take " +
             std::to_string(MaxPlayerUnit) + ", and spumux writes no more";
    case Kind::LongLine:
      return "a line of the unit has " + std::to_string(numbers[0]) + " bytes; players take " +
             std::to_string(MaxPlayerLineBytes) + ", and spumux writes no more";
    case Kind::PrimaryCut:
      return "the fields of the first picture end before its last line";
    case Kind::SecondaryCut:
      return "the fields of the second picture end before its last line";
    case Kind::NoOverlap:
      return numbers[0] == 1
                 ? "no subtitle of the second stream is shown at its time: the first one is taken"
                 : "the second stream's subtitle " + std::to_string(numbers[0]) + " is not shown at its time";
    case Kind::UsedBefore:
      return "an earlier packet shows subtitle " + std::to_string(numbers[0]) + " of the second stream, too";
    case Kind::PrimaryClipped:
      return ClippedMessage("first", problem);
    case Kind::SecondaryClipped:
      return ClippedMessage("second", problem);
    case Kind::Covered:
      return Pixels(numbers[0]) + " of the second picture " + (numbers[0] == 1 ? "covers" : "cover") +
             " the first one";
    case Kind::Recoloured:
      return Pixels(numbers[0]) + (numbers[0] == 1 ? " gets" : " get") + " another colour, at the most by " +
             std::to_string(numbers[1]) + " of 255, that of code " + std::to_string(numbers[2]);
  }
  return "";
}

std::uint32_t MergeProblemKindsWithWords(std::string_view words) {
  const std::string wanted = LowerAscii(words);
  std::uint32_t kinds = 0;
  for (std::size_t i = 0; i < MergeProblemKinds; ++i) {
    const auto kind = static_cast<Kind>(i);
    for (const std::string& text :
         {std::string(MergeProblemName(kind)), std::string(MergeProblemPhrase(kind)),
          MergeProblemMessage({.Kind = kind, .Numbers = {1, 1, 1}}),
          MergeProblemMessage({.Kind = kind, .Numbers = {2, 2, 2}})}) {
      if (LowerAscii(text).find(wanted) != std::string::npos) {
        kinds |= std::uint32_t{1} << i;
      }
    }
  }
  return kinds;
}

void MergeReviewSummary::Add(const MergedPair& pair) {
  Packets += pair.Outcome == MergeOutcome::Encoded ? 1U : 0U;
  std::uint32_t kinds = ProblemKindsOf(pair);
  WithProblems += kinds != 0 ? 1U : 0U;
  for (; kinds != 0; kinds &= kinds - 1) {
    ++Of[static_cast<std::size_t>(std::countr_zero(kinds))];
  }
  Covered += pair.Counts.Covered;
  Clipped += pair.ClippedPixels();
  Recoloured += pair.Counts.Recoloured;
}

std::string SummaryText(const MergeReviewSummary& summary) {
  std::string text = Numbered(static_cast<std::int64_t>(summary.Packets), "packet", "packets") + ", " +
                     (summary.WithProblems == 0 ? "none" : std::to_string(summary.WithProblems)) +
                     " with problems";
  std::string_view separator = ": ";
  for (std::size_t kind = 0; kind < MergeProblemKinds; ++kind) {
    if (summary.Of[kind] > 0) {
      text += std::string(separator) + std::to_string(summary.Of[kind]) + " " +
              std::string(MergeProblemPhrase(static_cast<Kind>(kind)));
      separator = ", ";
    }
  }
  return text;
}

}  // namespace quillmark
