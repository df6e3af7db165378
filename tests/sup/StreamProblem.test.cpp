#include "sup/StreamProblem.h"

#include <gmock/gmock.h>
#include <set>
#include <string>
#include <vector>

#include "sup/PacketCheck.h"
#include "sup/PacketMarks.h"

namespace quillmark {
namespace {

using Code = StreamProblemCode;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<Code> AllCodes() {
  std::vector<Code> codes;
  for (int code = 0; code < StreamProblemCodes; ++code) {
    codes.push_back(static_cast<Code>(code));
  }
  return codes;
}

std::vector<Code> WithSeverity(ProblemSeverity severity) {
  std::vector<Code> codes;
  for (const Code code : AllCodes()) {
    if (SeverityOf(code) == severity) {
      codes.push_back(code);
    }
  }
  return codes;
}

TEST(SeverityOf, WhatIsShownAsItWasMeantIsUntidy) {
  EXPECT_THAT(
      WithSeverity(ProblemSeverity::Untidy),
      ElementsAre(Code::TrailingBytes, Code::OddHeight, Code::NoEnd, Code::OddFirstLine, Code::OtherEntries));
}

TEST(SeverityOf, WhatIsShownElsewhereOrAtAnotherTimeIsWrong) {
  EXPECT_THAT(
      WithSeverity(ProblemSeverity::ShownWrongly),
      ElementsAre(Code::ControlGap, Code::ManySequences, Code::UnknownCommand, Code::FieldOutside,
                  Code::AreaOutsideFrame, Code::NegativeDelay, Code::NegativeTime, Code::TimeBackwards,
                  Code::Overlap, Code::OddUnitSize, Code::MissingStop, Code::LateCommand, Code::EarlierDelay,
                  Code::OutsideSafeFrame, Code::TooLongForDelay, Code::ShortGap));
}

TEST(SeverityName, IsSnakeCase) {
  EXPECT_EQ(SeverityName(ProblemSeverity::Untidy), "untidy");
  EXPECT_EQ(SeverityName(ProblemSeverity::ShownWrongly), "shown_wrongly");
  EXPECT_EQ(SeverityName(ProblemSeverity::CannotBeShown), "cannot_be_shown");
}

TEST(ProblemPhrase, IsShortAndDistinct) {
  std::set<std::string> phrases;
  for (const Code code : AllCodes()) {
    EXPECT_TRUE(phrases.insert(ProblemPhrase(code)).second) << ProblemName(code);
    EXPECT_GE(ProblemPhrase(code).size(), 5U) << ProblemName(code);
    EXPECT_LE(ProblemPhrase(code).size(), 35U) << ProblemName(code);
  }
  EXPECT_EQ(ProblemPhrase(Code::NoEnd), "no end of its own");
}

TEST(ProblemLine, BeginsWithTheByteOffset) {
  EXPECT_EQ(ProblemLine({.Offset = 12, .Packet = 1, .Code = Code::ControlOffsetOutside, .Numbers = {40, 38}}),
            "Offset 12: the control offset 40 leads out of the unit of 38 bytes");
}

TEST(CodesWithWords, FindsPhrasesWhateverTheirCase) {
  EXPECT_EQ(CodesWithWords("END OF its"), PacketMarks::BitOf(Code::NoEnd));
}

TEST(CodesWithWords, FindsMessages) {
  EXPECT_EQ(CodesWithWords("top field's"), PacketMarks::BitOf(Code::FieldOutside));
}

TEST(CodesWithWords, FindsNamesWithUnderscoresAndSpaces) {
  EXPECT_EQ(CodesWithWords("no_end"), PacketMarks::BitOf(Code::NoEnd));
  EXPECT_EQ(CodesWithWords("time backwards"), PacketMarks::BitOf(Code::TimeBackwards));
}

TEST(CodesWithWords, FindsSeveralProblems) {
  EXPECT_EQ(CodesWithWords("display area"), PacketMarks::BitOf(Code::MissingArea) |
                                                PacketMarks::BitOf(Code::ReversedArea) |
                                                PacketMarks::BitOf(Code::AreaOutsideFrame));
}

TEST(CodesWithWords, OfNoProblemAreNone) {
  EXPECT_EQ(CodesWithWords("nonsense"), 0U);
}

TEST(PacketMarks, HoldsEachKindOfProblemOnce) {
  PacketMarks marks;
  marks.Add(Code::Overlap);
  marks.Add(Code::OddHeight);
  marks.Add(Code::Overlap);
  EXPECT_THAT(marks.Problems(), ElementsAre(Code::OddHeight, Code::Overlap));
  EXPECT_EQ(marks.ProblemCount(), 2);
}

TEST(PacketMarks, TraitsAreNoProblems) {
  PacketMarks marks;
  marks.Add(PacketTrait::Forced);
  marks.Add(PacketTrait::Invalid);
  marks.Add(PacketTrait::OtherCodes);
  EXPECT_FALSE(marks.HasProblems());
  EXPECT_THAT(marks.Problems(), IsEmpty());
  EXPECT_EQ(marks.Severity(), std::nullopt);
  EXPECT_TRUE(marks.Has(PacketTrait::Forced));
}

TEST(PacketMarks, SeverityIsThatOfTheWorstProblem) {
  PacketMarks marks;
  marks.Add(Code::NoEnd);
  EXPECT_EQ(marks.Severity(), ProblemSeverity::Untidy);
  marks.Add(Code::MissingArea);
  marks.Add(Code::Overlap);
  EXPECT_EQ(marks.Severity(), ProblemSeverity::CannotBeShown);
}

TEST(ProblemMessage, LostSignatureTellsWhetherThereIsAnotherPacket) {
  EXPECT_EQ(ProblemMessage(MakeProblem(0, 1, 0, Code::LostSignature, {1})),
            "no \"SP\" where a packet should start; the next packet was found at offset 1");
  EXPECT_EQ(ProblemMessage(MakeProblem(0, 1, 0, Code::LostSignature, {0})),
            "no \"SP\" where a packet should start; no further packet was found");
}

TEST(ProblemMessage, FieldOutsideTellsItsOffsetAndTheUnitsSize) {
  EXPECT_EQ(ProblemMessage(MakeProblem(0, 1, 14, Code::FieldOutside, {0, 60, 38})),
            "the top field's offset 60 leads out of the unit of 38 bytes");
  EXPECT_EQ(ProblemMessage(MakeProblem(0, 1, 14, Code::FieldOutside, {1, 61, 39})),
            "the bottom field's offset 61 leads out of the unit of 39 bytes");
}

}  // namespace
}  // namespace quillmark
