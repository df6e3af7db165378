#include "tests/cli/Program.h"

namespace quillmark::cli {
namespace {

using test::Join;
using test::Second;
using test::Sound;
using testing::HasSubstr;
using testing::IsEmpty;

class DiffCommand : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).Build()}));
    Write("b.sup", Join({Sound(Second).Colour(3, 2, 1, 9).Build(), Sound(5 * Second + 3600).Build()}));
  }
};

TEST_F(DiffCommand, TheSameStreamIsDone) {
  const auto run = Run({"diff", "a.sup", "a.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out, "2 the same, 0 different, 0 missing, 0 added\n");
  EXPECT_THAT(run.Err, IsEmpty());
}

TEST_F(DiffCommand, DifferencesAreTheExitCode1) {
  const auto run = Run({"diff", "a.sup", "b.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Out,
            "1 | 1: other colours\n"
            "2 | 2: moved in time, from 00:00:05.00 to 00:00:05.04\n"
            "0 the same, 2 different, 0 missing, 0 added\n");
  EXPECT_THAT(run.Err, IsEmpty());
}

TEST_F(DiffCommand, AllDifferencesOfAPairStandInItsLine) {
  Write("c.sup", Join({Sound(Second).Build(), Sound(5 * Second + 3600).Colour(3, 2, 1, 9).Build()}));
  EXPECT_EQ(Run({"diff", "a.sup", "c.sup"}).Out,
            "2 | 2: moved in time, from 00:00:05.00 to 00:00:05.04; other colours\n"
            "1 the same, 1 different, 0 missing, 0 added\n");
}

TEST_F(DiffCommand, SubtitlesOfOneStreamHaveNoOtherNumber) {
  Write("one.sup", Sound(Second).Build());
  EXPECT_EQ(Run({"diff", "a.sup", "one.sup"}).Out,
            "2 | -: missing\n1 the same, 0 different, 1 missing, 0 added\n");
  EXPECT_EQ(Run({"diff", "one.sup", "a.sup"}).Out,
            "- | 2: added\n1 the same, 0 different, 0 missing, 1 added\n");
}

TEST_F(DiffCommand, LastSubtitlesOwnBytesAreNotBehindIt) {
  Write("c.sup", Join({Sound(Second).Build(), Sound(5 * Second).Delay(20).Build()}));
  EXPECT_THAT(Run({"diff", "a.sup", "c.sup"}).Out,
              testing::Not(testing::HasSubstr("after the last subtitle")));
}

TEST_F(DiffCommand, BytesAfterTheLastSubtitleCount) {
  Write("more.sup", Join({Sound(Second).Build(), Sound(5 * Second).Build(), {1, 2, 3}}));
  const auto run = Run({"diff", "a.sup", "more.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Out, HasSubstr("other bytes after the last subtitle\n"));
}

TEST_F(DiffCommand, JsonHasEveryPair) {
  Write("c.sup", Join({Sound(Second).Build(), Sound(5 * Second).Colour(3, 2, 1, 9).Build(), {7}}));
  const auto run = Run({"diff", "a.sup", "c.sup", "--json"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(Json::parse(run.Out), Json::parse(R"([
    {"first": 1, "second": 1, "first_start_ticks": 90000, "second_start_ticks": 90000, "differences": [],
     "other_pixels": 0},
    {"first": 2, "second": 2, "first_start_ticks": 450000, "second_start_ticks": 450000,
     "differences": ["other_colours"], "other_pixels": 0},
    {"first": null, "second": null, "first_start_ticks": null, "second_start_ticks": null,
     "differences": ["other_trailing_bytes"], "other_pixels": 0}])"));
}

TEST_F(DiffCommand, DifferencesAsJsonAreTheExitCode1Too) {
  EXPECT_EQ(Run({"diff", "a.sup", "b.sup", "--json"}).ExitCode, 1);
  EXPECT_EQ(Run({"diff", "a.sup", "a.sup", "--json"}).ExitCode, 0);
}

TEST_F(DiffCommand, AFileThatCannotBeReadIsNoDifference) {
  WriteText("text.sup", "this is a text and no stream");
  for (const char* file : {"missing.sup", "text.sup"}) {
    EXPECT_EQ(Run({"diff", "a.sup", file}).ExitCode, 2);
    EXPECT_EQ(Run({"diff", file, "a.sup"}).ExitCode, 2);
    EXPECT_THAT(Run({"diff", "a.sup", file}).Err, HasSubstr(file));
  }
  const auto run = Run({"diff", "a.sup", "missing.sup", "--json"});
  EXPECT_TRUE(Json::parse(run.Out).contains("error"));
}

TEST_F(DiffCommand, ItTakesTwoFiles) {
  EXPECT_EQ(Run({"diff", "a.sup"}).ExitCode, 2);
  EXPECT_EQ(Run({"diff", "a.sup", "b.sup", "a.sup"}).ExitCode, 2);
}

}  // namespace
}  // namespace quillmark::cli
