#include "app/SubtitleSentence.h"

#include <QString>
#include <gtest/gtest.h>

#include "sup/Timecode.h"

namespace quillmark {
namespace {

using Code = StreamProblemCode;

template <typename... Marks>
PacketMarks With(Marks... added) {
  PacketMarks marks;
  (marks.Add(added), ...);
  return marks;
}

constexpr std::int64_t StartOf12 = 62 * TicksPerSecond + 30600;  // 1 minute and 2.34 seconds

SpokenSubtitle Subtitle12(PacketMarks marks = {}) {
  return {.Number = 12,
          .StartTicks = StartOf12,
          .DurationTicks = 225'000,
          .OverNumber = std::nullopt,
          .Marks = marks};
}

TEST(SubtitleSentence, SaysWhatThereIsToSay) {
  EXPECT_EQ(SubtitleSentence(Subtitle12(With(PacketTrait::Forced, Code::NoEnd))),
            "Subtitle 12, 0:01:02.34, 2.5 seconds, forced, one problem: no end of its own");
}

TEST(SubtitleSentence, SaysThatItIsAnimated) {
  EXPECT_EQ(SubtitleSentence(Subtitle12(With(PacketTrait::Animated))),
            "Subtitle 12, 0:01:02.34, 2.5 seconds, animated");
}

TEST(SubtitleSentence, OfASoundSubtitleIsShort) {
  EXPECT_EQ(SubtitleSentence(Subtitle12()), "Subtitle 12, 0:01:02.34, 2.5 seconds");
}

TEST(SubtitleSentence, NamesEveryProblem) {
  EXPECT_EQ(SubtitleSentence(Subtitle12(With(Code::Overlap, Code::OddHeight))),
            "Subtitle 12, 0:01:02.34, 2.5 seconds, two problems: odd height, overlaps the next one");
}

TEST(SubtitleSentence, AnInvalidSubtitleIsShownForNoTime) {
  EXPECT_EQ(SubtitleSentence(Subtitle12(With(PacketTrait::Invalid, Code::MissingArea))),
            "Subtitle 12, 0:01:02.34, cannot be shown, one problem: no display area");
}

TEST(SubtitleSentence, WithoutAnEndHasNoDuration) {
  SpokenSubtitle subtitle = Subtitle12();
  subtitle.DurationTicks = std::nullopt;
  EXPECT_EQ(SubtitleSentence(subtitle), "Subtitle 12, 0:01:02.34");
  subtitle.DurationTicks = 0;
  EXPECT_EQ(SubtitleSentence(subtitle), "Subtitle 12, 0:01:02.34, 0 seconds");
  subtitle.DurationTicks = -1000;
  EXPECT_EQ(SubtitleSentence(subtitle), "Subtitle 12, 0:01:02.34");
}

TEST(SubtitleSentence, NamesTheSubtitleOverIt) {
  SpokenSubtitle subtitle = Subtitle12();
  subtitle.OverNumber = 7;
  EXPECT_EQ(SubtitleSentence(subtitle),
            "Subtitle 12, 0:01:02.34, 2.5 seconds, under subtitle 7 of the second stream");
}

TEST(DamageSentence, SaysWhereTheDamageIs) {
  EXPECT_EQ(DamageSentence(12, 20, Code::LostSignature),
            "Between subtitles 12 and 13, one problem: lost signature");
  EXPECT_EQ(DamageSentence(0, 20, Code::LostSignature), "Before subtitle 1, one problem: lost signature");
  EXPECT_EQ(DamageSentence(20, 20, Code::TrailingBytes), "After subtitle 20, one problem: trailing bytes");
  EXPECT_EQ(DamageSentence(0, 0, Code::LostSignature), "Without a subtitle, one problem: lost signature");
}

TEST(DurationInWords, HasAsManyPartsAsItNeeds) {
  EXPECT_EQ(DurationInWords(0), "0 seconds");
  EXPECT_EQ(DurationInWords(450), "0.01 seconds");
  EXPECT_EQ(DurationInWords(449), "0 seconds");
  EXPECT_EQ(DurationInWords(TicksPerSecond), "1 second");
  EXPECT_EQ(DurationInWords(210'600), "2.34 seconds");
  EXPECT_EQ(DurationInWords(60 * TicksPerSecond), "1 minute");
  EXPECT_EQ(DurationInWords(StartOf12), "1 minute 2.34 seconds");
  EXPECT_EQ(DurationInWords(121 * TicksPerSecond), "2 minutes 1 second");
  EXPECT_EQ(DurationInWords(7201 * TicksPerSecond), "2 hours 1 second");
  EXPECT_EQ(DurationInWords(3660 * TicksPerSecond), "1 hour 1 minute");
  EXPECT_EQ(DurationInWords(60 * TicksPerSecond + 900), "1 minute 0.01 seconds");
}

TEST(DurationInWords, OfTheLongestTimeDoesNotOverflow) {
  EXPECT_TRUE(DurationInWords(INT64_MAX).startsWith("28467197644 hours 36 minutes"))
      << DurationInWords(INT64_MAX).toStdString();
}

TEST(TimeInWords, HasHoursWithoutALeadingZero) {
  EXPECT_EQ(TimeInWords(0), "0:00:00.00");
  EXPECT_EQ(TimeInWords(StartOf12), "0:01:02.34");
  EXPECT_EQ(TimeInWords(36'000 * TicksPerSecond), "10:00:00.00");
  EXPECT_EQ(TimeInWords(-1), "-1:59:59.00");
}

TEST(ProblemCountInWords, CountsInWordsUpToNine) {
  EXPECT_EQ(ProblemCountInWords(0), "no problems");
  EXPECT_EQ(ProblemCountInWords(1), "one problem");
  EXPECT_EQ(ProblemCountInWords(2), "two problems");
  EXPECT_EQ(ProblemCountInWords(9), "nine problems");
  EXPECT_EQ(ProblemCountInWords(10), "10 problems");
}

}  // namespace
}  // namespace quillmark
