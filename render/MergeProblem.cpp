#include "render/MergeProblem.h"

#include <bit>

#include "base/AsciiCase.h"
#include "base/Words.h"
#include "sup/PlayerCheck.h"
#include "sup/SupFormat.h"

namespace quillmark {
namespace {

using Kind = MergeProblemKind;

constexpr std::int64_t MaxPlayerLineBytes = MaxPlayerLineBits / 8;

/// What is fixed about a kind.
struct KindWords {
  std::string_view Name;
  const char* Phrase = "";
  ProblemSeverity Severity = ProblemSeverity::Untidy;
};

constexpr KindWords WordsOf(Kind kind) {
  using enum ProblemSeverity;
  switch (kind) {
    case Kind::PrimaryDamaged:
      return {"primary_damaged", Words::Mark("first subtitle damaged"), CannotBeShown};
    case Kind::SecondaryDamaged:
      return {"secondary_damaged", Words::Mark("second subtitle damaged"), CannotBeShown};
    case Kind::UnitTooLarge:
      return {"unit_too_large", Words::Mark("unit too large to be written"), CannotBeShown};
    case Kind::FieldCut:
      return {"field_cut", Words::Mark("field cut short"), ShownWrongly};
    case Kind::UnitUnreadable:
      return {"unit_unreadable", Words::Mark("unit too long to be read"), CannotBeShown};
    case Kind::PlayerUnitSize:
      return {"player_unit_size", Words::Mark("unit too large for players"), CannotBeShown};
    case Kind::LongLine:
      return {"long_line", Words::Mark("line of too many bits"), CannotBeShown};
    case Kind::PrimaryCut:
      return {"primary_cut", Words::Mark("first picture cut short"), ShownWrongly};
    case Kind::SecondaryCut:
      return {"secondary_cut", Words::Mark("second picture cut short"), ShownWrongly};
    case Kind::NoOverlap:
      return {"no_overlap", Words::Mark("not shown together"), ShownWrongly};
    case Kind::UsedBefore:
      return {"used_before", Words::Mark("second subtitle shown before"), Untidy};
    case Kind::PrimaryClipped:
      return {"primary_clipped", Words::Mark("first picture clipped"), ShownWrongly};
    case Kind::SecondaryClipped:
      return {"secondary_clipped", Words::Mark("second picture clipped"), ShownWrongly};
    case Kind::Covered:
      return {"covered", Words::Mark("pictures over each other"), ShownWrongly};
    case Kind::Recoloured:
      break;
  }
  return {"recoloured", Words::Mark("other colours"), ShownWrongly};
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

/// `text` names the subtitle and its damage.
std::string DamageMessage(const char* text, const MergeProblem& problem) {
  return Words::Tr(text, {std::to_string(problem.Numbers[0]),
                          ProblemPhrase(static_cast<StreamProblemCode>(problem.Numbers[1]))});
}

/// Where the pixels that a picture loses are.
std::string LostPixels(const MergeProblem& problem) {
  const auto [outside, inEdgeRows, rows] = problem.Numbers;
  std::string outsideText = Words::Tr("%n pixel outside the frame", "%n pixels outside the frame", outside);
  if (inEdgeRows <= 0) {
    return outsideText;
  }
  if (outside <= 0) {
    return Words::Tr("%n pixel in the frame's rows 0, 1 or last, which merged units do not have",
                     "%n pixels in the frame's rows 0, 1 or last, which merged units do not have",
                     inEdgeRows);
  }
  return Words::Tr("%1 and %n pixel in its rows 0, 1 or last, which merged units do not have",
                   "%1 and %n pixels in its rows 0, 1 or last, which merged units do not have", inEdgeRows,
                   {outsideText});
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

std::string MergeProblemPhrase(MergeProblemKind kind) {
  return Words::Tr(WordsOf(kind).Phrase);
}

ProblemSeverity SeverityOf(MergeProblemKind kind) {
  return WordsOf(kind).Severity;
}

std::string MergeProblemMessage(const MergeProblem& problem) {
  const auto& numbers = problem.Numbers;
  switch (problem.Kind) {
    case Kind::PrimaryDamaged:
      return DamageMessage(Words::Mark("subtitle %1 of the first stream is damaged: %2"), problem);
    case Kind::SecondaryDamaged:
      return DamageMessage(Words::Mark("subtitle %1 of the second stream is damaged: %2"), problem);
    case Kind::UnitTooLarge:
      return Words::Tr("the unit would have %1 bytes; its size field holds 65535",
                       {std::to_string(numbers[0])});
    case Kind::FieldCut:
      return Words::Tr("a field of the unit ends before the picture does");
    case Kind::UnitUnreadable:
      return Words::Tr("the unit has %1 bytes; programs, this one included, read %2",
                       {std::to_string(numbers[0]), std::to_string(MaxReadUnit)});
    case Kind::PlayerUnitSize:
      return Words::Tr("the unit has %1 bytes; players take %2, and spumux writes no more",
                       {std::to_string(numbers[0]), std::to_string(MaxPlayerUnit)});
    case Kind::LongLine:
      return Words::Tr("a line of the unit has %1 bytes; players take %2, and spumux writes no more",
                       {std::to_string(numbers[0]), std::to_string(MaxPlayerLineBytes)});
    case Kind::PrimaryCut:
      return Words::Tr("the fields of the first picture end before its last line");
    case Kind::SecondaryCut:
      return Words::Tr("the fields of the second picture end before its last line");
    case Kind::NoOverlap:
      return numbers[0] == 1
                 ? Words::Tr("no subtitle of the second stream is shown at its time: the first one is taken")
                 : Words::Tr("the second stream's subtitle %1 is not shown at its time",
                             {std::to_string(numbers[0])});
    case Kind::UsedBefore:
      return Words::Tr("an earlier packet shows subtitle %1 of the second stream, too",
                       {std::to_string(numbers[0])});
    case Kind::PrimaryClipped:
      return Words::Tr("the first picture loses %1, in %n row of it",
                       "the first picture loses %1, in %n rows of it", numbers[2], {LostPixels(problem)});
    case Kind::SecondaryClipped:
      return Words::Tr("the second picture loses %1, in %n row of it",
                       "the second picture loses %1, in %n rows of it", numbers[2], {LostPixels(problem)});
    case Kind::Covered:
      return Words::Tr("%n pixel of the second picture covers the first one",
                       "%n pixels of the second picture cover the first one", numbers[0]);
    case Kind::Recoloured:
      break;
  }
  return Words::Tr("%n pixel gets another colour, at the most by %1 of 255, that of code %2",
                   "%n pixels get another colour, at the most by %1 of 255, that of code %2", numbers[0],
                   {std::to_string(numbers[1]), std::to_string(numbers[2])});
}

std::uint32_t MergeProblemKindsWithWords(std::string_view words) {
  const std::string wanted = LowerAscii(words);
  std::uint32_t kinds = 0;
  for (std::size_t i = 0; i < MergeProblemKinds; ++i) {
    const auto kind = static_cast<Kind>(i);
    for (const std::string& text : {std::string(MergeProblemName(kind)), MergeProblemPhrase(kind),
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
  // What stands before the first colon is shown alone where there is little room.
  const auto packets = static_cast<std::int64_t>(summary.Packets);
  std::string text =
      summary.WithProblems == 0
          ? Words::Tr("%n packet, none with problems", "%n packets, none with problems", packets)
          : Words::Tr("%n packet, %1 with problems", "%n packets, %1 with problems", packets,
                      {std::to_string(summary.WithProblems)});
  std::string_view separator = ": ";
  for (std::size_t kind = 0; kind < MergeProblemKinds; ++kind) {
    if (summary.Of[kind] > 0) {
      text += std::string(separator) + std::to_string(summary.Of[kind]) + " " +
              MergeProblemPhrase(static_cast<Kind>(kind));
      separator = ", ";
    }
  }
  return text;
}

}  // namespace quillmark
