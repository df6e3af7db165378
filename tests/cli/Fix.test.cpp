#include "tests/cli/Program.h"

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::Join;
using test::Second;
using test::Sound;
using testing::HasSubstr;
using testing::IsEmpty;

class FixCommand : public test::ProgramTest {};

TEST_F(FixCommand, TellsWhatWasMendedAndWritesIt) {
  Write("a.sup",
        Join({Sound(5 * Second).Build(), Sound(Second).Area(718, 721, 400, 401).Build(), {1, 2, 3}}));

  const auto run = Run({"fix", "a.sup", "-o", "b.sup"});

  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out,
            "mended: 3 bytes at offset 96 are no packet and were left out\n"
            "mended: packet 1: it was put in the order of starts; it was packet 2\n"
            "mended: packet 1: its display area was moved into the frame, -2 pixels to the right and 0 lines "
            "down\n");
  EXPECT_THAT(run.Err, IsEmpty());
  EXPECT_EQ(Read("b.sup"), Join({Sound(Second).Area(716, 719, 400, 401).Build(), Sound(5 * Second).Build()}));
}

TEST_F(FixCommand, WhatIsLeftIsNamedAndTheExitCode1) {
  Write("a.sup", Sound().Delay(0).Build());

  const auto run = Run({"fix", "a.sup", "-o", "b.sup"});

  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Out, "left: offset 18: packet 1: the subtitle has no end of its own [no_end]\n");
  EXPECT_THAT(run.Err, HasSubstr("a.sup: 1 problem is left"));
  EXPECT_EQ(Read("b.sup"), Read("a.sup"));
}

TEST_F(FixCommand, ASoundStreamIsCopied) {
  Write("a.sup", Sound().Build());

  const auto run = Run({"fix", "a.sup", "-o", "b.sup"});

  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out, "nothing to mend\n");
  EXPECT_EQ(Read("b.sup"), Read("a.sup"));
}

TEST_F(FixCommand, DryRunWritesNothing) {
  Write("a.sup", Join({Sound().Build(), {1, 2, 3}}));

  const auto run = Run({"fix", "a.sup", "--dry-run"});

  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_THAT(run.Out, HasSubstr("mended: 3 bytes at offset 48"));
  EXPECT_EQ(Names(), std::vector<std::string>{"a.sup"});
}

TEST_F(FixCommand, PlayersHaveRulesOfTheirOwn) {
  Write("a.sup", Join({Sound().Build(), Sound(Second).Build()}));

  EXPECT_EQ(Run({"fix", "a.sup", "-o", "b.sup"}).Out, "nothing to mend\n");
  EXPECT_EQ(Run({"fix", "a.sup", "-o", "b.sup", "--profile", "player"}).ExitCode, 0);
  EXPECT_EQ(Read("b.sup"), Join({Sound().Delay(87).Build(), Sound(Second).Build()}));
  EXPECT_EQ(Run({"check", "b.sup", "--profile", "player"}).Out, "no problem found\n");
}

TEST_F(FixCommand, JsonNumbersMendsFromTheFirstSubtitle) {
  Write("a.sup", Join({Sound().Delay(0).Build(), Sound(Second).Build()}));
  const Json mended = Json::parse(Run({"fix", "a.sup", "-o", "b.sup", "--json"}).Out)["mended"];
  ASSERT_EQ(mended.size(), 1U);
  EXPECT_EQ(mended[0]["packet"], 1);
}

TEST_F(FixCommand, JsonIsOneObject) {
  Write("a.sup", Join({Sound().Delay(0).Build(), {1, 2, 3}}));

  const auto run = Run({"fix", "a.sup", "-o", "b.sup", "--json"});

  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(Json::parse(run.Out), Json::parse(R"({
    "file": "a.sup", "out": "b.sup", "tool": "fix",
    "mended": [{"packet": null, "kind": "dropped_bytes",
                "message": "3 bytes at offset 48 are no packet and were left out"}],
    "left": [{"offset": 18, "packet": 1, "code": "no_end", "message": "the subtitle has no end of its own",
              "severity": "untidy"}]})"));
  EXPECT_TRUE(run.Out.ends_with("}\n"));
}

TEST_F(FixCommand, WhatHasNoPacketIsRefused) {
  WriteText("a.sup", "this is a text and no stream");

  const auto run = Run({"fix", "a.sup", "-o", "b.sup"});

  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, HasSubstr("a.sup: no packet was found; nothing is written"));
  EXPECT_FALSE(Exists("b.sup"));
}

TEST_F(FixCommand, IsAStepOfRecipes) {
  Write("a.sup", Join({Bytes(20, 'x'), Sound(Second).Area(718, 721, 400, 401).Build()}));
  WriteText("fix.json", R"({"version": 1, "steps": [{"tool": "fix", "profile": "player", "frame": 576}]})");

  EXPECT_EQ(Run({"apply", "fix.json", "a.sup", "--out-dir", "new"}).ExitCode, 0);
  EXPECT_EQ(Read("new/a.sup"), Sound(Second).Area(716, 719, 400, 401).Build());
  WriteText("wrong.json", R"({"version": 1, "steps": [{"tool": "fix", "profile": "film"}]})");
  EXPECT_THAT(Run({"apply", "wrong.json", "a.sup", "--out-dir", "new"}).Err,
              HasSubstr("profile: 'film' is neither spec nor player"));
}

TEST_F(FixCommand, ARecipeNamesWhatItCannotMend) {
  Write("a.sup", Sound().Delay(0).Build());
  WriteText("fix.json", R"({"version": 1, "steps": [{"tool": "fix"}]})");

  const auto run = Run({"apply", "fix.json", "a.sup", "--out-dir", "new", "--json"});

  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(Json::parse(run.Out)[0]["steps"][0]["left"][0]["code"], "not_mended");
}

}  // namespace
}  // namespace quillmark::cli
