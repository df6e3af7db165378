#include "sup/SubtitleFilter.h"

#include <gmock/gmock.h>
#include <vector>

#include "sup/Timecode.h"

namespace quillmark {
namespace {

using Code = StreamProblemCode;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t Minute = 60 * TicksPerSecond;

struct ShownTimes {
  std::int64_t Start;
  std::int64_t End;
};

SupStream StreamOf(const std::vector<ShownTimes>& subtitles) {
  SupStream stream;
  stream.Count = static_cast<std::int32_t>(subtitles.size());
  for (const ShownTimes& subtitle : subtitles) {
    stream.PacketOffset.push_back(0);
    stream.StartTime.push_back(subtitle.Start);
    stream.EndTime.push_back(subtitle.End);
  }
  return stream;
}

SupStream StreamOf(std::size_t count) {
  return StreamOf(std::vector<ShownTimes>(count));
}

/// The numbers, from 1, of what the text finds in a stream.
std::vector<std::uint32_t> Numbers(const char* text, const SupStream& stream,
                                   const std::vector<PacketMarks>& marks = {}) {
  std::vector<std::uint32_t> found = {77};
  SubtitleFilter(text).Find(stream, marks, {}, found);
  for (std::uint32_t& index : found) {
    ++index;
  }
  return found;
}

std::vector<std::uint32_t> Found(const SubtitleFilter& filter, const std::vector<PacketMarks>& marks,
                                 const std::vector<bool>& selected = {}) {
  std::vector<std::uint32_t> found;
  filter.Find(StreamOf(5), marks, selected, found);
  return found;
}

template <typename... Marks>
PacketMarks With(Marks... added) {
  PacketMarks marks;
  (marks.Add(added), ...);
  return marks;
}

TEST(SubtitleFilter, NothingFindsAll) {
  EXPECT_THAT(Numbers("", StreamOf(3)), ElementsAre(1, 2, 3));
  EXPECT_THAT(Numbers("  ", StreamOf(3)), ElementsAre(1, 2, 3));
  EXPECT_TRUE(SubtitleFilter(" ").WantsAll());
  EXPECT_FALSE(SubtitleFilter("1").WantsAll());
  EXPECT_FALSE(SubtitleFilter("0:01").WantsAll());
  EXPECT_FALSE(SubtitleFilter("", FilterKind::Forced).WantsAll());
}

TEST(SubtitleFilter, Number) {
  EXPECT_THAT(Numbers("12", StreamOf(20)), ElementsAre(12));
  EXPECT_THAT(Numbers("21", StreamOf(20)), IsEmpty());
  EXPECT_THAT(Numbers("0", StreamOf(20)), IsEmpty());
  EXPECT_THAT(Numbers("99999999999999999999999", StreamOf(20)), IsEmpty());
}

TEST(SubtitleFilter, RangeHasBothEnds) {
  EXPECT_THAT(Numbers("3-5", StreamOf(20)), ElementsAre(3, 4, 5));
  EXPECT_THAT(Numbers(" 3 - 5 ", StreamOf(20)), ElementsAre(3, 4, 5));
  EXPECT_THAT(Numbers("0-2", StreamOf(20)), ElementsAre(1, 2));
  EXPECT_THAT(Numbers("5-3", StreamOf(20)), IsEmpty());
}

TEST(SubtitleFilter, RangeWithoutAnEndGoesToTheLast) {
  EXPECT_THAT(Numbers("18-", StreamOf(20)), ElementsAre(18, 19, 20));
}

TEST(SubtitleFilter, ListFindsEachSubtitleOnceAndInOrder) {
  EXPECT_THAT(Numbers("19-,7-9,3", StreamOf(20)), ElementsAre(3, 7, 8, 9, 19, 20));
  EXPECT_THAT(Numbers("4-8,5,3-6,9", StreamOf(20)), ElementsAre(3, 4, 5, 6, 7, 8, 9));
}

TEST(SubtitleFilter, ListThatIsStillTyped) {
  EXPECT_THAT(Numbers("3,", StreamOf(20)), ElementsAre(3));
  EXPECT_THAT(Numbers("3,,4", StreamOf(20)), ElementsAre(3, 4));
}

TEST(SubtitleFilter, TimeFindsWhatIsShownAtThatMoment) {
  const SupStream stream = StreamOf({{0, Minute},
                                     {Minute, Minute + 2 * TicksPerSecond},
                                     {Minute + TicksPerSecond, Minute + 4 * TicksPerSecond},
                                     {Minute + 3 * TicksPerSecond, Minute + 4 * TicksPerSecond}});
  EXPECT_THAT(Numbers("1:01", stream), ElementsAre(2, 3));
  EXPECT_THAT(Numbers("0:01:01", stream), ElementsAre(2, 3));
  EXPECT_THAT(Numbers("1:02", stream), ElementsAre(3));
  EXPECT_THAT(Numbers("1:04", stream), IsEmpty());
  EXPECT_THAT(Numbers("1:00:01", stream), IsEmpty());
}

TEST(SubtitleFilter, TimeIsTakenAsExactlyAsItWasTyped) {
  const std::int64_t start = 62 * TicksPerSecond + 45000 + 899;  // shown as 0:01:02.51
  const SupStream stream = StreamOf({{start, start + TicksPerSecond}});
  EXPECT_THAT(Numbers("1:", stream), ElementsAre(1));
  EXPECT_THAT(Numbers("1:02", stream), ElementsAre(1));
  EXPECT_THAT(Numbers("1:02.", stream), ElementsAre(1));
  EXPECT_THAT(Numbers("1:02.5", stream), ElementsAre(1));
  EXPECT_THAT(Numbers("1:02,5", stream), ElementsAre(1));
  EXPECT_THAT(Numbers("1:02.50", stream), ElementsAre(1));
  EXPECT_THAT(Numbers("1:02.500", stream), IsEmpty());
  EXPECT_THAT(Numbers("1:02.4", stream), IsEmpty());
  EXPECT_THAT(Numbers("1:01", stream), IsEmpty());
  EXPECT_THAT(Numbers("1:", StreamOf({{Minute, Minute + TicksPerSecond / 2}})), ElementsAre(1));
}

TEST(SubtitleFilter, SubtitleWithoutAnEndIsShownFromItsStartOn) {
  const SupStream stream = StreamOf({{Minute, 0}});
  EXPECT_THAT(Numbers("0:59", stream), IsEmpty());
  EXPECT_THAT(Numbers("5:00:00", stream), ElementsAre(1));
}

TEST(SubtitleFilter, WordsFindProblems) {
  const std::vector<PacketMarks> marks = {With(Code::NoEnd), With(Code::Overlap), With(PacketTrait::Forced),
                                          With(Code::NoEnd, Code::OddHeight)};
  EXPECT_THAT(Numbers("No End", StreamOf(4), marks), ElementsAre(1, 4));
  EXPECT_THAT(Numbers("forced", StreamOf(4), marks), IsEmpty());
}

TEST(SubtitleFilter, BlanksAroundWordsDoNotCount) {
  EXPECT_THAT(Numbers(" \tno end \t", StreamOf(1), {With(Code::NoEnd)}), ElementsAre(1));
}

TEST(SubtitleFilter, WhatIsNeitherNumberNorTimeIsWords) {
  const SupStream stream = StreamOf(20);
  for (const char* text : {"3x", "-3", ",", ":", ":02", "1:2:3:4", "1::2", "1:x", "1:02.x", "3-4-5", "1.5"}) {
    EXPECT_TRUE(SubtitleFilter(text).AsksForMarks()) << text;
    EXPECT_THAT(Numbers(text, stream, std::vector<PacketMarks>(20)), IsEmpty()) << text;
  }
}

TEST(SubtitleFilter, KindsAskForMarks) {
  const std::vector<PacketMarks> marks = {
      With(Code::NoEnd), With(Code::Overlap, PacketTrait::OtherCodes), With(PacketTrait::Forced),
      With(Code::MissingArea, PacketTrait::Invalid), With(PacketTrait::Animated)};
  const auto found = [&](FilterKind kind) { return Found(SubtitleFilter("", kind), marks); };
  EXPECT_THAT(found(FilterKind::All), ElementsAre(0, 1, 2, 3, 4));
  EXPECT_THAT(found(FilterKind::WithProblems), ElementsAre(0, 1, 3));
  EXPECT_THAT(found(FilterKind::Invalid), ElementsAre(3));
  EXPECT_THAT(found(FilterKind::Forced), ElementsAre(2));
  EXPECT_THAT(found(FilterKind::Animated), ElementsAre(4));
  EXPECT_THAT(found(FilterKind::WithoutEnd), ElementsAre(0));
  EXPECT_THAT(found(FilterKind::Overlapping), ElementsAre(1));
  EXPECT_THAT(found(FilterKind::OtherCodes), ElementsAre(1));
}

TEST(SubtitleFilter, SelectedAreThoseOfTheCaller) {
  EXPECT_THAT(Found(SubtitleFilter("", FilterKind::Selected), {}, {true, false, true}), ElementsAre(0, 2));
  EXPECT_THAT(Found(SubtitleFilter("2-", FilterKind::Selected), {}, {true, false, true}), ElementsAre(2));
}

TEST(SubtitleFilter, KindAndTextMustBothFit) {
  const std::vector<PacketMarks> marks = {With(Code::NoEnd, PacketTrait::Forced), With(Code::NoEnd),
                                          With(PacketTrait::Forced)};
  EXPECT_THAT(Found(SubtitleFilter("no end", FilterKind::Forced), marks), ElementsAre(0));
  EXPECT_THAT(Found(SubtitleFilter("2-3", FilterKind::Forced), marks), ElementsAre(2));
}

TEST(SubtitleFilter, WhatWasNotLookedAtYetHasNoMarks) {
  const std::vector<PacketMarks> marks = {With(Code::NoEnd)};
  EXPECT_THAT(Found(SubtitleFilter("", FilterKind::WithProblems), marks), ElementsAre(0));
  EXPECT_THAT(Found(SubtitleFilter("2-3"), marks), ElementsAre(1, 2));
}

TEST(SubtitleFilter, DamageHasNoNumberTimeOrSelection) {
  EXPECT_TRUE(SubtitleFilter("").WantsDamage(Code::LostSignature));
  EXPECT_TRUE(SubtitleFilter("", FilterKind::WithProblems).WantsDamage(Code::LostSignature));
  EXPECT_TRUE(SubtitleFilter("signature").WantsDamage(Code::LostSignature));
  EXPECT_FALSE(SubtitleFilter("signature").WantsDamage(Code::TrailingBytes));
  EXPECT_FALSE(SubtitleFilter("1-").WantsDamage(Code::LostSignature));
  EXPECT_FALSE(SubtitleFilter("0:00").WantsDamage(Code::LostSignature));
  EXPECT_FALSE(SubtitleFilter("", FilterKind::Selected).WantsDamage(Code::LostSignature));
  EXPECT_FALSE(SubtitleFilter("", FilterKind::Forced).WantsDamage(Code::LostSignature));
}

/// A tick is a 90,000th of a second, which the fifth digit divides no more.
TEST(SubtitleFilter, DigitsBehindATickDoNotCount) {
  const SubtitleFilter filter("0:01.00010009");
  ASSERT_TRUE(filter.AsksForTime());
  // 0.0001 s are 9 ticks.
  EXPECT_TRUE(filter.WantsTime(90009, 90010));
  EXPECT_FALSE(filter.WantsTime(90000, 90009));
  EXPECT_TRUE(filter.WantsTime(90017, 90018));
  EXPECT_FALSE(filter.WantsTime(90018, 90020));
}

TEST(SubtitleFilter, TimeWithALetterInItsFractionIsWords) {
  EXPECT_FALSE(SubtitleFilter("0:01.5x").AsksForTime());
  EXPECT_FALSE(SubtitleFilter("0:01.5-").AsksForTime());
}

}  // namespace
}  // namespace quillmark
