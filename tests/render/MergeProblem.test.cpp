#include "render/MergeProblem.h"

#include <gmock/gmock.h>
#include <set>

#include "render/MergedStreamEncoder.h"

namespace quillmark {
namespace {

using testing::ElementsAre;
using Kind = MergeProblemKind;

MergedPair SoundPair() {
  MergedPair pair;
  pair.Primary = 2;
  pair.Secondary = 6;
  pair.OverlapTicks = 90;
  pair.Unit = {.Size = 1000, .LongestLine = 20, .IsFieldCut = false};
  return pair;
}

/// What is said of a pair with one problem.
std::string MessageOf(const MergedPair& pair) {
  const auto problems = ProblemsOf(pair);
  EXPECT_EQ(problems.size(), 1U);
  return problems.empty() ? "" : MergeProblemMessage(problems.front());
}

TEST(MergeProblem, EveryKindHasANameAndAPhraseOfItsOwn) {
  std::set<std::string_view> names;
  std::set<std::string> phrases;
  for (std::size_t kind = 0; kind < MergeProblemKinds; ++kind) {
    names.insert(MergeProblemName(static_cast<Kind>(kind)));
    phrases.insert(MergeProblemPhrase(static_cast<Kind>(kind)));
  }
  EXPECT_EQ(names.size(), MergeProblemKinds);
  EXPECT_EQ(phrases.size(), MergeProblemKinds);
  EXPECT_FALSE(names.contains(""));
  EXPECT_FALSE(phrases.contains(""));
}

TEST(MergeProblem, SoundPairHasNone) {
  EXPECT_TRUE(ProblemsOf(SoundPair()).empty());
  EXPECT_EQ(ProblemKindsOf(SoundPair()), 0U);
}

TEST(MergeProblem, DamageHasItsReason) {
  MergedPair pair = SoundPair();
  pair.Outcome = MergeOutcome::InvalidPrimary;
  pair.Unit = {};
  pair.PrimaryDamage = StreamProblemCode::MissingArea;
  EXPECT_EQ(MessageOf(pair), "subtitle 3 of the first stream is damaged: no display area");
  pair.PrimaryDamage.reset();
  pair.SecondaryDamage = StreamProblemCode::UnitTooLarge;
  EXPECT_EQ(MessageOf(pair), "subtitle 7 of the second stream is damaged: unit too large");
}

TEST(MergeProblem, LongUnitsAreToldByWhomTheyAreNotRead) {
  MergedPair pair = SoundPair();
  pair.Unit.Size = 32767;
  EXPECT_TRUE(ProblemsOf(pair).empty());
  pair.Unit.Size = 32768;
  EXPECT_EQ(MessageOf(pair), "the unit has 32768 bytes; programs, this one included, read 32767");
  pair.Unit.Size = 53220;
  EXPECT_EQ(ProblemsOf(pair).size(), 1U);
  pair.Unit.Size = 53221;
  const auto problems = ProblemsOf(pair);
  ASSERT_EQ(problems.size(), 2U);
  EXPECT_EQ(MergeProblemMessage(problems[1]),
            "the unit has 53221 bytes; players take 53220, and spumux writes no more");
  pair.Outcome = MergeOutcome::TooLarge;
  pair.Unit.Size = 70000;
  EXPECT_EQ(MessageOf(pair), "the unit would have 70000 bytes; its size field holds 65535");
}

TEST(MergeProblem, LongLinesBeginAfter180Bytes) {
  MergedPair pair = SoundPair();
  pair.Unit.LongestLine = 180;
  EXPECT_TRUE(ProblemsOf(pair).empty());
  pair.Unit.LongestLine = 181;
  EXPECT_EQ(MessageOf(pair), "a line of the unit has 181 bytes; players take 180, and spumux writes no more");
}

TEST(MergeProblem, NothingAtTheSameTime) {
  MergedPair pair = SoundPair();
  pair.OverlapTicks = 0;
  EXPECT_EQ(MessageOf(pair), "the second stream's subtitle 7 is not shown at its time");
  pair.Secondary = 0;
  EXPECT_EQ(MessageOf(pair), "no subtitle of the second stream is shown at its time: the first one is taken");
}

TEST(MergeProblem, ClippedPixelsByWhereTheyLie) {
  MergedPair pair = SoundPair();
  pair.Counts.Secondary = {.Rows = 1, .OutsideFrame = 1, .InEdgeRows = 0};
  EXPECT_EQ(MessageOf(pair), "the second picture loses 1 pixel outside the frame, in 1 row of it");
  pair.Counts.Secondary = {.Rows = 3, .OutsideFrame = 8, .InEdgeRows = 4};
  EXPECT_EQ(
      MessageOf(pair),
      "the second picture loses 8 pixels outside the frame and 4 pixels in its rows 0, 1 or last, which "
      "merged units do not have, in 3 rows of it");
  pair.Counts.Secondary.OutsideFrame = 1;
  EXPECT_THAT(MessageOf(pair),
              testing::HasSubstr("loses 1 pixel outside the frame and 4 pixels in its rows"));
  pair.Counts.Secondary = {};
  pair.Counts.Primary = {.Rows = 1, .OutsideFrame = 0, .InEdgeRows = 4};
  EXPECT_EQ(MessageOf(pair),
            "the first picture loses 4 pixels in the frame's rows 0, 1 or last, which merged units do not "
            "have, in 1 row of it");
}

TEST(MergeProblem, SubtitleThatIsUsedAgainHasItsNumber) {
  MergedPair pair = SoundPair();
  pair.IsUsedBefore = true;
  EXPECT_EQ(MessageOf(pair), "an earlier packet shows subtitle 7 of the second stream, too");
}

TEST(MergeProblem, CoveredAndRecolouredPixels) {
  MergedPair pair = SoundPair();
  pair.Counts.Covered = 24;
  EXPECT_EQ(MessageOf(pair), "24 pixels of the second picture cover the first one");
  pair.Counts.Covered = 0;
  pair.Counts.Recoloured = 12;
  pair.Counts.FurthestOff = 40;
  pair.Counts.FurthestCode = 2;
  EXPECT_EQ(MessageOf(pair), "12 pixels get another colour, at the most by 40 of 255, that of code 2");
}

TEST(MergeProblem, OnePixelIsEnough) {
  MergedPair pair = SoundPair();
  pair.Counts.Covered = 1;
  EXPECT_EQ(MessageOf(pair), "1 pixel of the second picture covers the first one");
  pair.Counts.Covered = 0;
  pair.Counts.Recoloured = 1;
  pair.Counts.FurthestOff = 40;
  EXPECT_EQ(MessageOf(pair), "1 pixel gets another colour, at the most by 40 of 255, that of code 0");
}

TEST(MergeProblem, KindsAreThoseOfTheProblems) {
  MergedPair pair = SoundPair();
  pair.IsUsedBefore = true;
  pair.Counts.Covered = 1;
  pair.Counts.PrimaryIsCut = true;
  std::vector<Kind> kinds;
  std::uint32_t bits = 0;
  for (const MergeProblem& problem : ProblemsOf(pair)) {
    kinds.push_back(problem.Kind);
    bits |= std::uint32_t{1} << static_cast<unsigned>(problem.Kind);
  }
  EXPECT_THAT(kinds, ElementsAre(Kind::PrimaryCut, Kind::UsedBefore, Kind::Covered));
  EXPECT_EQ(ProblemKindsOf(pair), bits);
}

TEST(MergeReviewSummary, CountsPacketsByWhatTheyHave) {
  MergeReviewSummary summary;
  summary.Add(SoundPair());
  EXPECT_EQ(SummaryText(summary), "1 packet, none with problems");
  MergedPair pair = SoundPair();
  pair.Counts.Covered = 3;
  pair.Counts.Secondary.OutsideFrame = 5;
  summary.Add(pair);
  pair = SoundPair();
  pair.Outcome = MergeOutcome::InvalidSecondary;
  pair.SecondaryDamage = StreamProblemCode::MissingArea;
  summary.Add(pair);
  EXPECT_EQ(summary.Covered, 3);
  EXPECT_EQ(summary.Clipped, 5);
  EXPECT_EQ(
      SummaryText(summary),
      "2 packets, 2 with problems: 1 second subtitle damaged, 1 second picture clipped, 1 pictures over "
      "each other");
}

TEST(MergeReviewSummary, CountsTheFirstKindAndTheLastOne) {
  MergeReviewSummary summary;
  MergedPair pair = SoundPair();
  pair.Outcome = MergeOutcome::InvalidPrimary;
  pair.PrimaryDamage = StreamProblemCode::MissingArea;
  pair.Counts.Recoloured = 7;
  pair.Counts.Primary.InEdgeRows = 2;
  summary.Add(pair);
  EXPECT_EQ(summary.Recoloured, 7);
  EXPECT_EQ(summary.Clipped, 2);
  EXPECT_EQ(SummaryText(summary),
            "0 packets, 1 with problems: 1 first subtitle damaged, 1 first picture clipped, 1 other colours");
}

TEST(MergeProblem, FieldsThatEndTooEarlyAreTold) {
  MergedPair pair = SoundPair();
  pair.Unit.IsFieldCut = true;
  EXPECT_EQ(MessageOf(pair), "a field of the unit ends before the picture does");
  pair.Unit.IsFieldCut = false;
  pair.Counts.PrimaryIsCut = true;
  EXPECT_EQ(MessageOf(pair), "the fields of the first picture end before its last line");
  pair.Counts.PrimaryIsCut = false;
  pair.Counts.SecondaryIsCut = true;
  EXPECT_EQ(MessageOf(pair), "the fields of the second picture end before its last line");
}

std::uint32_t MaskOf(std::initializer_list<Kind> kinds) {
  std::uint32_t mask = 0;
  for (const Kind kind : kinds) {
    mask |= 1U << static_cast<unsigned>(kind);
  }
  return mask;
}

TEST(MergeProblemKindsWithWords, AreThoseWhoseNamePhraseOrMessageHasThem) {
  EXPECT_EQ(MergeProblemKindsWithWords("recoloured"), MaskOf({Kind::Recoloured}));  // a name
  EXPECT_EQ(MergeProblemKindsWithWords("Pictures Over each other"), MaskOf({Kind::Covered}));
  EXPECT_EQ(MergeProblemKindsWithWords("covers the first one"), MaskOf({Kind::Covered}));
  EXPECT_EQ(MergeProblemKindsWithWords("cover the first one"), MaskOf({Kind::Covered}));
  EXPECT_EQ(MergeProblemKindsWithWords("end before its last line"),
            MaskOf({Kind::PrimaryCut, Kind::SecondaryCut}));
  EXPECT_EQ(MergeProblemKindsWithWords("nothing of the kind"), 0U);
}

TEST(ReasonOf, SaysWhyThereIsNoPacket) {
  EXPECT_EQ(ReasonOf(MergeOutcome::InvalidPrimary), "its control data is not complete");
  EXPECT_EQ(ReasonOf(MergeOutcome::InvalidSecondary),
            "the control data of the second stream's subtitle is not complete");
  EXPECT_EQ(ReasonOf(MergeOutcome::TooLarge), "the merged picture does not fit a unit of 65535 bytes");
  EXPECT_EQ(ReasonOf(MergeOutcome::Encoded), "");
  EXPECT_EQ(ReasonOf(MergeOutcome::Skipped), "");
}

}  // namespace
}  // namespace quillmark
