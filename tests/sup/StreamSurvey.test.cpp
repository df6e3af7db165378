#include "sup/StreamSurvey.h"

#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "sup/StreamLoader.h"
#include "tests/support/PacketBuilder.h"
#include "tests/support/PrintProblem.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::EndOfSequence;
using test::ForcedStart;
using test::Join;
using test::PacketBuilder;
using test::Second;
using test::Sequence;
using test::SetArea;
using test::SetColour;
using test::SetContrast;
using test::SetFields;
using test::Sound;
using test::StartDisplay;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::Optional;

using Code = StreamProblemCode;

StreamSurvey Survey(const Bytes& file) {
  StreamSurvey survey(file);
  while (survey.Step()) {
  }
  return survey;
}

std::vector<Code> CodesOf(const std::vector<StreamProblem>& problems) {
  std::vector<Code> codes;
  for (const StreamProblem& problem : problems) {
    codes.push_back(problem.Code);
  }
  return codes;
}

TEST(StreamSurvey, ListsProblemsByPacket) {
  const Bytes file = Join(
      {Sound(0).Area(0, 9, 0, 2).Build(), Sound(Second).Build(), PacketBuilder().Time(2 * Second).Build()});
  const StreamSurvey survey = Survey(file);
  ASSERT_EQ(survey.Marks().size(), 3U);
  EXPECT_THAT(survey.MarksOf(0).Problems(), ElementsAre(Code::OddHeight));
  EXPECT_THAT(survey.MarksOf(1).Problems(), IsEmpty());
  EXPECT_THAT(survey.MarksOf(2).Problems(), ElementsAre(Code::NoEnd));
  EXPECT_EQ(survey.PacketsWithProblems(), 2U);
}

TEST(StreamSurvey, TellsWhatThereIsToSayOfAPacket) {
  const Bytes file = Join({Sound(0).Build(), Sound(Second).Area(0, 9, 0, 2).Build()});
  const auto problems = Survey(file).ProblemsOf(1);
  ASSERT_EQ(problems.size(), 1U);
  EXPECT_EQ(problems[0].Offset, 66);
  EXPECT_EQ(ProblemMessage(problems[0]), "the height 3 is odd, so the last line is not shown");
}

TEST(StreamSurvey, TimesAreTheProblemsOfOnePacketEach) {
  // The first is shown until 1.0 s; the second starts before that, and the third before the second.
  const Bytes file = Join({Sound(0).Build(), Sound(Second / 2).Build(), Sound(Second / 4).Build()});
  const StreamSurvey survey = Survey(file);
  EXPECT_THAT(CodesOf(survey.ProblemsOf(0)), ElementsAre(Code::Overlap));
  EXPECT_THAT(CodesOf(survey.ProblemsOf(1)), IsEmpty());
  EXPECT_THAT(CodesOf(survey.ProblemsOf(2)), ElementsAre(Code::TimeBackwards));
}

TEST(StreamSurvey, OverlapIsKnownWhenTheNextPacketWasLookedAt) {
  const Bytes file = Join({Sound(0).Build(), Sound(Second / 2).Build()});
  StreamSurvey survey(file);
  ASSERT_TRUE(survey.Step());
  EXPECT_FALSE(survey.MarksOf(0).HasProblems());
  ASSERT_TRUE(survey.Step());
  EXPECT_TRUE(survey.MarksOf(0).Has(Code::Overlap));
  EXPECT_FALSE(survey.IsComplete());
  EXPECT_FALSE(survey.Step());
  EXPECT_TRUE(survey.IsComplete());
}

TEST(StreamSurvey, OfAPacketThatWasNotLookedAtNothingIsKnown) {
  const Bytes file = PacketBuilder().Build();
  const StreamSurvey survey(file);
  EXPECT_EQ(survey.MarksOf(0), PacketMarks());
  EXPECT_THAT(survey.ProblemsOf(0), IsEmpty());
}

TEST(StreamSurvey, DamageStandsBeforeThePacketThatFollowsIt) {
  const Bytes file = Join({Sound(0).Build(), Bytes(20, 0xAB), Sound(Second).Build(), Bytes(5, 0)});
  const StreamSurvey survey = Survey(file);
  const StreamProblem lost = {
      .Offset = 48, .Packet = std::nullopt, .Code = Code::LostSignature, .Numbers = {68}};
  const StreamProblem trailing = {
      .Offset = 116, .Packet = std::nullopt, .Code = Code::TrailingBytes, .Numbers = {5}};
  ASSERT_EQ(survey.DamageCount(), 2U);
  EXPECT_EQ(survey.Damage(0), (StreamDamage{.Before = 1, .Problem = lost}));
  EXPECT_EQ(survey.Damage(1), (StreamDamage{.Before = 2, .Problem = trailing}));
  EXPECT_EQ(survey.DamageBefore(0), std::nullopt);
  EXPECT_THAT(survey.DamageBefore(1), Optional(lost));
  EXPECT_THAT(survey.DamageBefore(2), Optional(trailing));
  EXPECT_EQ(survey.PacketsWithProblems(), 0U);
}

TEST(StreamSurvey, GoesFromProblemToProblem) {
  const auto bad = [](std::int64_t start) { return Sound(start).Area(0, 9, 0, 2).Build(); };
  const Bytes file = Join({Sound(0).Build(), bad(Second), Sound(2 * Second).Build(), bad(3 * Second)});
  const StreamSurvey survey = Survey(file);
  EXPECT_EQ(survey.NextWithProblems(0), 1U);
  EXPECT_EQ(survey.NextWithProblems(1), 1U);
  EXPECT_EQ(survey.NextWithProblems(2), 3U);
  EXPECT_EQ(survey.NextWithProblems(4), std::nullopt);
  EXPECT_EQ(survey.PrevWithProblems(9), 3U);
  EXPECT_EQ(survey.PrevWithProblems(3), 1U);
  EXPECT_EQ(survey.PrevWithProblems(1), std::nullopt);
}

TEST(StreamSurvey, GoesBackToTheFirstSubtitle) {
  const Bytes file = Join({Sound(0).Area(0, 9, 0, 2).Build(), Sound(Second).Build()});
  EXPECT_EQ(Survey(file).PrevWithProblems(2), 0U);
}

TEST(StreamSurvey, AForcedStartIsATrait) {
  const Bytes commands = Join({ForcedStart, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0),
                               SetArea(100, 103, 400, 401), SetFields(4, 6), EndOfSequence});
  const Bytes forced =
      PacketBuilder().Unit(Join({{0x11, 0x00, 0x12, 0x00}, Sequence(0, 8, {commands})})).Build();
  const Bytes file = Join({forced, Sound(Second).Build()});
  const StreamSurvey survey = Survey(file);
  EXPECT_TRUE(survey.MarksOf(0).Has(PacketTrait::Forced));
  EXPECT_FALSE(survey.MarksOf(1).Has(PacketTrait::Forced));
}

TEST(StreamSurvey, MoreThanOnePictureIsATrait) {
  const Bytes commands = Join({StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0),
                               SetArea(100, 103, 400, 401), SetFields(4, 6), EndOfSequence});
  const Bytes faded = PacketBuilder()
                          .Unit(Join({{0x11, 0x00, 0x12, 0x00},
                                      Sequence(0, 32, {commands}),
                                      Sequence(5, 32, {SetContrast(7, 7, 7, 0), EndOfSequence})}))
                          .Build();
  const Bytes file = Join({Sound().Build(), faded});
  const StreamSurvey survey = Survey(file);
  EXPECT_FALSE(survey.MarksOf(0).Has(PacketTrait::Animated));
  EXPECT_TRUE(survey.MarksOf(1).Has(PacketTrait::Animated));
}

TEST(StreamSurvey, CodesAreHeldAgainstTheFirstValidSubtitle) {
  const Bytes file = Join({Sound(0).WithoutArea().Colour(9, 9, 9, 9).Build(), Sound(Second).Build(),
                           Sound(2 * Second).Build(), Sound(3 * Second).Colour(3, 2, 1, 7).Build(),
                           Sound(4 * Second).Contrast(15, 15, 14, 0).Build()});
  const StreamSurvey survey = Survey(file);
  std::vector<bool> differs;
  for (const PacketMarks marks : survey.Marks()) {
    differs.push_back(marks.Has(PacketTrait::OtherCodes));
  }
  EXPECT_THAT(differs, ElementsAre(false, false, false, true, true));
}

/// Streams with bytes changed, taken out and put in at random, of packets that the format's fields make up.
class DamagedStreams {
 public:
  Bytes Next(Bytes sound, unsigned damages) {
    for (; damages > 0 && !sound.empty(); --damages) {
      const auto at = sound.begin() + static_cast<std::ptrdiff_t>(Random(sound.size()));
      const auto count = static_cast<std::ptrdiff_t>(
          std::min<std::size_t>(Random(30), static_cast<std::size_t>(sound.end() - at)));
      switch (Random(4)) {
        case 0:
          sound.erase(at, at + count);
          break;
        case 1:
          sound.insert(at, static_cast<std::size_t>(count), 'S');
          break;
        default:
          *at = static_cast<std::uint8_t>(Random(256));
          break;
      }
    }
    return sound;
  }

  Bytes Packets() {
    Bytes all;
    for (std::size_t i = Random(8); i-- > 0;) {
      PacketBuilder packet = PacketBuilder().Time(static_cast<std::int64_t>(Random(900'000)));
      packet.Delay(static_cast<unsigned>(Random(0x8002)));
      packet.Area(static_cast<unsigned>(Random(800)), 719, 0, static_cast<unsigned>(Random(600)));
      all = Join({all, packet.Build(), Bytes(Random(5) == 0 ? Random(40) : 0, 0)});
    }
    return all;
  }

 private:
  std::size_t Random(std::size_t end) {
    return std::uniform_int_distribution<std::size_t>(0, end - 1)(engine_);
  }

  std::mt19937 engine_{1};
};

/// The survey has exactly what CheckStream reports; every subtitle that the loader finds invalid is marked
/// so, and has a problem that says it cannot be shown.
void ExpectAllOf(const Bytes& file) {
  std::map<std::size_t, std::vector<StreamProblem>> ofPackets;
  std::vector<StreamProblem> between;
  CheckStream(file, [&](const StreamProblem& problem) {
    (problem.Packet ? ofPackets[static_cast<std::size_t>(*problem.Packet - 1)] : between).push_back(problem);
  });

  const StreamSurvey survey = Survey(file);
  for (std::size_t i = 0; i < survey.Marks().size(); ++i) {
    ASSERT_THAT(survey.ProblemsOf(i), ElementsAreArray(ofPackets[i]));
    PacketMarks marks;
    for (const StreamProblem& problem : ofPackets[i]) {
      marks.Add(problem.Code);
    }
    ASSERT_EQ(survey.MarksOf(i).Problems(), marks.Problems());
    if (survey.MarksOf(i).Has(PacketTrait::Invalid)) {
      ASSERT_EQ(marks.Severity(), ProblemSeverity::CannotBeShown);
    }
  }
  ASSERT_EQ(survey.DamageCount(), between.size());
  for (std::size_t i = 0; i < between.size(); ++i) {
    ASSERT_EQ(survey.Damage(i).Problem, between[i]);
  }

  const auto loaded = IndexPrimaryStream(file, InvalidFirst::IsPassed);
  ASSERT_TRUE(loaded);
  std::vector<std::uint8_t> unit;
  for (std::size_t i = 0; i < loaded->Stream.PacketOffset.size(); ++i) {
    const SubtitleUnit subtitle = UnitOf(loaded->Stream, i, unit);
    ASSERT_EQ(survey.MarksOf(i).Has(PacketTrait::Invalid),
              !DecodeControl(subtitle.Bytes, subtitle.ControlOffset).IsValid());
  }
}

TEST(StreamSurvey, HasWhatTheCheckReportsOfDamagedStreams) {
  DamagedStreams streams;
  for (unsigned round = 0; round < 3000 && !testing::Test::HasFailure(); ++round) {
    SCOPED_TRACE(round);
    ExpectAllOf(streams.Next(streams.Packets(), round % 4));
  }
}

TEST(StreamSurvey, HasWhatTheCheckReportsOfDamagedStreamsOfAnotherMake) {
  DamagedStreams streams;
  for (const std::string name :
       {"spumux-pal", "dvdauthor-ntsc", "lavc-pal", "merge-primary", "merge-secondary"}) {
    SCOPED_TRACE(name);
    std::ifstream file(QUILLMARK_TEST_DATA "/streams/" + name + ".sup", std::ios::binary);
    const Bytes sound{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    ASSERT_FALSE(sound.empty());
    for (unsigned damages = 0; damages < 50 && !testing::Test::HasFailure(); damages += 10) {
      ExpectAllOf(streams.Next(sound, damages));
    }
  }
}

TEST(StreamSurvey, RoomForItsPacketsChangesNothing) {
  const Bytes file = Join({Sound().Build(), Bytes(20, 0xAA), Sound(2 * Second).Build()});
  StreamSurvey survey(file);
  survey.Reserve(2);
  while (survey.Step()) {
  }
  EXPECT_EQ(survey.Marks().size(), 2U);
  EXPECT_EQ(survey.DamageCount(), 1U);
}

TEST(StreamSurvey, DamageStandsBeforeOnePacketAlone) {
  const StreamSurvey survey = Survey(Join({Sound().Build(), Bytes(20, 0xAA), Sound(2 * Second).Build()}));
  EXPECT_EQ(survey.DamageBefore(0), std::nullopt);
  EXPECT_TRUE(survey.DamageBefore(1).has_value());
  EXPECT_EQ(survey.DamageBefore(2), std::nullopt);
}

TEST(ReadPacket, BehindTheFileThereIsNone) {
  const Bytes file = Sound().Build();
  EXPECT_TRUE(ReadPacket(file, 0, 1).has_value());
  EXPECT_FALSE(ReadPacket(file, file.size(), 1).has_value());
  EXPECT_FALSE(ReadPacket(file, file.size() + 1, 1).has_value());
}

}  // namespace
}  // namespace quillmark
