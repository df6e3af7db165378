#include "tests/cli/Program.h"

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::Join;
using test::Second;
using test::Sound;
using testing::ElementsAre;
using testing::IsEmpty;

/// The bytes that differ, as offset and new value.
std::vector<std::pair<std::size_t, int>> Changes(const Bytes& before, const Bytes& after) {
  std::vector<std::pair<std::size_t, int>> changes;
  EXPECT_EQ(before.size(), after.size());
  for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
    if (before[i] != after[i]) {
      changes.emplace_back(i, after[i]);
    }
  }
  return changes;
}

class AssignCommand : public test::ProgramTest {
 protected:
  void SetUp() override { Write("a.sup", stream_); }

  // Colour arguments at 24 and 25 of each packet (0x32, 0x10), contrast arguments at 27 and 28 (0xFF, 0xF0).
  Bytes stream_ = Join({Sound(Second).Build(), Sound(5 * Second).Build(), Sound(9 * Second).Build()});
};

TEST_F(AssignCommand, ColoursOfAllSubtitles) {
  const auto run = Run({"assign", "a.sup", "--colours", "45a6", "-o", "b.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_THAT(run.Out, IsEmpty());
  EXPECT_THAT(Changes(stream_, Read("b.sup")),
              ElementsAre(std::pair(24, 0x6A), std::pair(25, 0x54), std::pair(72, 0x6A), std::pair(73, 0x54),
                          std::pair(120, 0x6A), std::pair(121, 0x54)));
}

TEST_F(AssignCommand, OpacitiesOfSomeSubtitles) {
  ASSERT_EQ(Run({"assign", "a.sup", "--opacities", "1234", "--only", "2-2", "-o", "b.sup"}).ExitCode, 0);
  EXPECT_THAT(Changes(stream_, Read("b.sup")), ElementsAre(std::pair(75, 0x43), std::pair(76, 0x21)));
}

TEST_F(AssignCommand, BothAtOnce) {
  ASSERT_EQ(Run({"assign", "a.sup", "--opacities", "1234", "--colours", "5678", "--only", "3", "-o", "b.sup"})
                .ExitCode,
            0);
  EXPECT_THAT(Changes(stream_, Read("b.sup")), ElementsAre(std::pair(120, 0x87), std::pair(121, 0x65),
                                                           std::pair(123, 0x43), std::pair(124, 0x21)));
}

TEST_F(AssignCommand, CodeWithADotKeepsWhatItHas) {
  ASSERT_EQ(Run({"assign", "a.sup", "--colours", ".4..", "--only", "1", "-o", "b.sup"}).ExitCode, 0);
  EXPECT_THAT(Changes(stream_, Read("b.sup")), ElementsAre(std::pair(25, 0x40)));
  ASSERT_EQ(Run({"assign", "a.sup", "--opacities", "8..1", "--only", "2", "-o", "b.sup"}).ExitCode, 0);
  EXPECT_THAT(Changes(stream_, Read("b.sup")), ElementsAre(std::pair(75, 0x1F), std::pair(76, 0xF8)));
  ASSERT_EQ(Run({"assign", "a.sup", "--colours", "....", "-o", "b.sup"}).ExitCode, 0);
  EXPECT_EQ(Read("b.sup"), stream_);
}

TEST_F(AssignCommand, SubtitleWithoutTheCommandIsLeftAndNamed) {
  const Bytes packets =
      Join({Sound(Second).Build(), Sound(5 * Second).WithoutColour().Build(),
            Sound(9 * Second).WithoutContrast().Build(),
            Sound(13 * Second).WithoutColour().WithoutContrast().Build(), Sound(17 * Second).Build()});
  Write("a.sup", packets);

  const auto colours = Run({"assign", "a.sup", "--colours", "7777", "-o", "b.sup"});
  EXPECT_EQ(colours.ExitCode, 1);
  EXPECT_EQ(colours.Err,
            "quillmark-cli: a.sup: subtitle 2 has no colour command; it is left as it is\n"
            "quillmark-cli: a.sup: subtitle 4 has no colour command; it is left as it is\n"
            "quillmark-cli: a.sup: 2 of 5 subtitles are left as they are\n");
  EXPECT_THAT(Changes(packets, Read("b.sup")),
              ElementsAre(std::pair(24, 0x77), std::pair(25, 0x77), std::pair(120, 0x77),
                          std::pair(121, 0x77), std::pair(216, 0x77), std::pair(217, 0x77)));

  const auto both =
      Run({"assign", "a.sup", "--colours", "7777", "--opacities", "7777", "--only", "2-4", "-o", "b.sup"});
  EXPECT_EQ(both.ExitCode, 1);
  EXPECT_EQ(
      both.Err,
      "quillmark-cli: a.sup: subtitle 2 has no colour command; it is left as it is\n"
      "quillmark-cli: a.sup: subtitle 3 has no contrast command; it is left as it is\n"
      "quillmark-cli: a.sup: subtitle 4 has neither a colour nor a contrast command; it is left as it is\n"
      "quillmark-cli: a.sup: 3 of 3 subtitles are left as they are\n");
  EXPECT_EQ(Read("b.sup"), packets);
}

TEST_F(AssignCommand, CommandThatIsNotWrittenMayBeMissing) {
  const Bytes packet = Sound(Second).WithoutColour().Build();
  Write("a.sup", packet);
  const auto run = Run({"assign", "a.sup", "--colours", "....", "--opacities", "1234", "-o", "b.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_THAT(run.Err, IsEmpty());
  EXPECT_THAT(Changes(packet, Read("b.sup")), ElementsAre(std::pair(27, 0x43), std::pair(28, 0x21)));
}

TEST_F(AssignCommand, OverTheFileItself) {
  ASSERT_EQ(Run({"assign", "a.sup", "--colours", "0123", "--only", "1", "-o", "a.sup"}).ExitCode, 0);
  EXPECT_EQ(Read("a.sup"), stream_);
  EXPECT_THAT(Names(), ElementsAre("a.sup"));
}

TEST_F(AssignCommand, ALongerOldFileLeavesNoTail) {
  Write("b.sup", Bytes(1000, 0x55));
  ASSERT_EQ(Run({"assign", "a.sup", "--colours", "0123", "-o", "b.sup"}).ExitCode, 0);
  EXPECT_EQ(Read("b.sup"), stream_);
}

TEST_F(AssignCommand, FolderThatDoesNotExist) {
  const auto run = Run({"assign", "a.sup", "--colours", "0123", "-o", "no/b.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, testing::StartsWith("quillmark-cli: no/b.sup: "));
}

TEST_F(AssignCommand, RangeThatTheStreamDoesNotHave) {
  EXPECT_EQ(Run({"assign", "a.sup", "--colours", "0123", "--only", "3-4", "-o", "b.sup"}).ExitCode, 2);
  EXPECT_FALSE(Exists("b.sup"));
}

}  // namespace
}  // namespace quillmark::cli
