#include "tests/cli/Program.h"

// `merge --mode split`.

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::Join;
using test::Second;
using test::Sound;
using testing::HasSubstr;
using testing::IsEmpty;

class MergeSplitCommand : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup", Sound(Second).Build());
    Write("b.sup", Join({Sound(Second + 40000).Area(200, 203, 402, 403).Build(),
                         Sound(Second + 135000).Area(200, 203, 402, 403).Build()}));
  }

  /// Start and end of each packet of split.sup.
  std::vector<std::pair<std::int64_t, std::int64_t>> Times() {
    std::vector<std::pair<std::int64_t, std::int64_t>> times;
    for (const Json& row : Json::parse(Run({"list", "split.sup", "--json"}).Out)) {
      times.emplace_back(row["start_ticks"], row["end_ticks"]);
    }
    return times;
  }
};

TEST_F(MergeSplitCommand, WritesWhatIsShownAtATime) {
  const auto run = Run({"merge", "a.sup", "b.sup", "--mode", "split", "-o", "split.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_THAT(run.Out + run.Err, IsEmpty());
  EXPECT_THAT(Times(), testing::ElementsAre(std::pair(90000, 130000), std::pair(130000, 180000),
                                            std::pair(180000, 220000), std::pair(225000, 315000)));
}

TEST_F(MergeSplitCommand, JoinClosesShorterGaps) {
  // Nothing is shown for 5000 ticks, 55.56 ms.
  Run({"merge", "a.sup", "b.sup", "--mode", "split", "--join", "55.5", "-o", "split.sup"});
  EXPECT_EQ(Times()[2].second, 220000);
  Run({"merge", "a.sup", "b.sup", "--mode", "split", "--join", "55.6", "-o", "split.sup"});
  EXPECT_EQ(Times()[2].second, 225000);
  EXPECT_EQ(Run({"merge", "a.sup", "b.sup", "--mode", "split", "--join", "0", "-o", "split.sup"}).ExitCode,
            0);
  EXPECT_EQ(Times()[2].second, 220000);
}

TEST_F(MergeSplitCommand, PairsAreTheDefault) {
  Run({"merge", "a.sup", "b.sup", "-o", "c.sup"});
  Run({"merge", "a.sup", "b.sup", "--mode", "pairs", "-o", "d.sup"});
  EXPECT_EQ(Read("c.sup"), Read("d.sup"));
}

TEST_F(MergeSplitCommand, DryRunTellsWhichIsAlone) {
  const auto run =
      Run({"merge", "a.sup", "b.sup", "--mode", "split", "--join", "0.5", "--dry-run", "--json"});
  EXPECT_EQ(run.ExitCode, 0);
  const Json review = Json::parse(run.Out);
  EXPECT_EQ(review["mode"], "split");
  EXPECT_EQ(review["join_ms"], 0.5);
  EXPECT_EQ(review["left_out"], Json::parse("[]"));
  const Json& pairs = review["pairs"];
  ASSERT_EQ(pairs.size(), 4U);
  EXPECT_EQ(pairs[0]["primary"], 1);
  EXPECT_EQ(pairs[0]["secondary"], nullptr);
  EXPECT_EQ(pairs[0]["overlap_ms"], 0);
  EXPECT_EQ(pairs[0]["overlap_ticks"], 0);
  EXPECT_EQ(pairs[1]["primary"], 1);
  EXPECT_EQ(pairs[1]["secondary"], 1);
  EXPECT_EQ(pairs[1]["overlap_ticks"], 50000);
  EXPECT_EQ(pairs[1]["start_ticks"], 130000);
  EXPECT_EQ(pairs[1]["end_ticks"], 180000);
  EXPECT_EQ(pairs[3]["primary"], nullptr);
  EXPECT_EQ(pairs[3]["secondary"], 2);
  for (const Json& pair : pairs) {
    EXPECT_EQ(pair["problems"], Json::parse("[]"));
  }
}

TEST_F(MergeSplitCommand, DryRunInWords) {
  EXPECT_THAT(Run({"merge", "a.sup", "b.sup", "--mode", "split", "--dry-run"}).Out,
              HasSubstr("left out of b.sup: none\n"
                        "1 + -: alone, 1189 bytes\n"
                        "1 + 1: 556 ms together, 1195 bytes\n"
                        "- + 1: alone, 1189 bytes\n"
                        "- + 2: alone, 1189 bytes\n"));
}

TEST_F(MergeSplitCommand, AutomaticOffsetIsFoundForIt) {
  EXPECT_EQ(Run({"merge", "a.sup", "b.sup", "--mode", "split", "--y-offset", "auto", "-o", "split.sup"}).Out,
            "y-offset -400: 0 pixels covered, 0 clipped\n");
}

TEST_F(MergeSplitCommand, DamagedSubtitleIsNamedWithItsFile) {
  Write("b.sup", Join({Sound(Second).Build(), Sound(5 * Second).WithoutArea().Build()}));
  const std::string message =
      "quillmark-cli: b.sup: subtitle 2: the control data of the second stream's subtitle is not complete\n";
  const auto run = Run({"merge", "a.sup", "b.sup", "--mode", "split", "-o", "split.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, message);
  EXPECT_FALSE(Exists("split.sup"));
  EXPECT_EQ(Run({"merge", "a.sup", "b.sup", "--mode", "split", "--dry-run"}).Err, message);
}

TEST_F(MergeSplitCommand, WrongModesAndGapsAreRefused) {
  const auto errorOf = [this](const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"merge", "a.sup", "b.sup", "-o", "split.sup"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const auto run = Run(arguments);
    EXPECT_EQ(run.ExitCode, 2);
    return run.Err;
  };
  EXPECT_THAT(errorOf({"--mode", "Split"}), HasSubstr("--mode: 'Split' is neither pairs nor split\n"));
  EXPECT_THAT(errorOf({"--mode", "split", "--join", "-1"}),
              HasSubstr("'-1' is no number of milliseconds from 0"));
  EXPECT_THAT(errorOf({"--mode", "split", "--join", "3600000.1"}),
              HasSubstr("is no number of milliseconds from 0"));
  EXPECT_THAT(errorOf({"--join", "5"}), HasSubstr("--join requires --mode split\n"));
  EXPECT_FALSE(Exists("split.sup"));
  EXPECT_EQ(
      Run({"merge", "a.sup", "b.sup", "-o", "split.sup", "--mode", "split", "--join", "3600000"}).ExitCode,
      0);
}

}  // namespace
}  // namespace quillmark::cli
