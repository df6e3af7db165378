#include "tests/cli/Program.h"

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::Join;
using test::PacketBuilder;
using test::Second;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class ApplyCommand : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup", Join({test::Sound(Second).Build(), test::Sound(5 * Second).Build()}));
    Write("b.sup", test::Sound(2 * Second).Build());
    WriteText("r.json", R"({"version": 1, "steps": [{"tool": "retime", "shift": 40},
                                                     {"tool": "sort"}]})");
  }
};

TEST_F(ApplyCommand, WritesEachFileUnderItsNameIntoTheFolder) {
  const auto run = Run({"apply", "r.json", "a.sup", "b.sup", "--out-dir", "out"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out,
            "a.sup: 2 subtitles retimed, 0 subtitles moved; written to out/a.sup\n"
            "b.sup: 1 subtitle retimed, 0 subtitles moved; written to out/b.sup\n");
  EXPECT_THAT(run.Err, IsEmpty());
  EXPECT_EQ(Read("out/a.sup"),
            Join({test::Sound(Second + 3600).Build(), test::Sound(5 * Second + 3600).Build()}));
  EXPECT_EQ(Read("out/b.sup"), test::Sound(2 * Second + 3600).Build());
}

TEST_F(ApplyCommand, JsonHasAnObjectForEachFileInOrder) {
  WriteText("bad.sup", "no stream at all");
  const auto run = Run({"apply", "r.json", "b.sup", "bad.sup", "a.sup", "--out-dir", "out", "--json"});
  EXPECT_EQ(run.ExitCode, 1);
  const Json array = Json::parse(run.Out);
  ASSERT_EQ(array.size(), 3U);
  EXPECT_EQ(array[0], Json::parse(R"({"file": "b.sup", "out": "out/b.sup", "notes": [], "steps": [
      {"tool": "retime", "changed": 1, "left": []}, {"tool": "sort", "changed": 0, "left": []}], "error": null})"));
  EXPECT_EQ(array[1]["file"], "bad.sup");
  EXPECT_EQ(array[1]["out"], Json());
  EXPECT_THAT(array[1]["error"].get<std::string>(), StartsWith("No SUP signature found"));
  EXPECT_EQ(array[2]["file"], "a.sup");
}

TEST_F(ApplyCommand, FileThatCannotBeDoneStopsNoOther) {
  WriteText("bad.sup", "no stream at all");
  WriteText("r.json", R"({"version": 1, "steps": [{"tool": "force", "state": "on", "only": "2"}]})");
  const auto run = Run({"apply", "r.json", "bad.sup", "b.sup", "no.sup", "a.sup", "--out-dir", "out"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Out, "a.sup: 1 subtitle changed; written to out/a.sup\n");
  EXPECT_THAT(
      run.Err,
      AllOf(HasSubstr("bad.sup: No SUP signature found"),
            HasSubstr("b.sup: step 1 (force): there is no subtitle 2: it has 1; nothing is written\n"),
            HasSubstr("no.sup: No such file or directory\n"),
            HasSubstr("quillmark-cli: 3 of 4 files could not be done\n")));
  EXPECT_TRUE(Exists("out/a.sup"));
  EXPECT_FALSE(Exists("out/b.sup"));
  EXPECT_EQ(Run({"apply", "r.json", "a.sup", "no.sup", "--out-dir", "out2"}).Err,
            "quillmark-cli: no.sup: No such file or directory\n"
            "quillmark-cli: 1 of 2 files could not be done\n");
}

TEST_F(ApplyCommand, FailedStepWritesNothingOfItsFile) {
  WriteText("r.json", R"({"version": 1, "steps": [{"tool": "sort"}, {"tool": "retime", "shift": -3000}]})");
  const auto run = Run({"apply", "r.json", "b.sup", "--out-dir", "out"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(
      run.Err,
      StartsWith(
          "quillmark-cli: b.sup: step 2 (retime): subtitle 1 would start before 0; nothing is written"));
  EXPECT_FALSE(Exists("out/b.sup"));
}

TEST_F(ApplyCommand, WhatIsLeftIsNamedWithItsStep) {
  Write("b.sup",
        Join({test::Sound(Second).Build(), PacketBuilder().Time(2 * Second).ControlOffset(0).Build()}));
  const auto run = Run({"apply", "r.json", "b.sup", "--out-dir", "out"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err,
              AllOf(HasSubstr("b.sup: step 1 (retime): subtitle 2 is damaged"),
                    HasSubstr("quillmark-cli: 1 of 1 files have subtitles that are left as they are\n")));
  EXPECT_TRUE(Exists("out/b.sup"));
}

TEST_F(ApplyCommand, WhatALaterStepLeavesIsNamedToo) {
  Write("b.sup",
        Join({test::Sound(Second).Build(), PacketBuilder().Time(2 * Second).ControlOffset(0).Build()}));
  WriteText("r.json", R"({"version": 1, "steps": [{"tool": "sort"}, {"tool": "retime", "shift": 40}]})");
  EXPECT_THAT(Run({"apply", "r.json", "b.sup", "--out-dir", "out"}).Err,
              HasSubstr("b.sup: step 2 (retime): subtitle 2 is damaged"));
}

TEST_F(ApplyCommand, ExistingFileIsWrittenOverByForceAlone) {
  ASSERT_EQ(Run({"apply", "r.json", "b.sup", "--out-dir", "."}).ExitCode, 1);
  EXPECT_EQ(Read("b.sup"), test::Sound(2 * Second).Build());
  EXPECT_THAT(Run({"apply", "r.json", "b.sup", "--out-dir", "."}).Err,
              HasSubstr("b.sup exists; --force writes over it"));
  ASSERT_EQ(Run({"apply", "r.json", "b.sup", "--out-dir", ".", "--force"}).ExitCode, 0);
  EXPECT_EQ(Read("b.sup"), test::Sound(2 * Second + 3600).Build());
}

TEST_F(ApplyCommand, DryRunWritesNothing) {
  const auto run = Run({"apply", "r.json", "b.sup", "--out-dir", "out", "--dry-run"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out, "b.sup: 1 subtitle would be retimed, 0 subtitles would be moved\n");
  EXPECT_THAT(Names(), ElementsAre("a.sup", "b.sup", "r.json"));
}

TEST_F(ApplyCommand, TwoFilesOfOneNameAreRefused) {
  std::filesystem::create_directory(Path("x"));
  Write("x/a.sup", test::Sound(1).Build());
  const auto run = Run({"apply", "r.json", "a.sup", "x/a.sup", "--out-dir", "out"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_EQ(run.Err, "quillmark-cli: a.sup and x/a.sup would both be written to out/a.sup\n");
  EXPECT_FALSE(Exists("out"));
}

TEST_F(ApplyCommand, WrongRecipeIsToldWithItsName) {
  WriteText("r.json", R"({"version": 1, "steps": [{"tool": "sort", "order": "up"}]})");
  const auto run = Run({"apply", "r.json", "a.sup", "--out-dir", "out", "--json"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Out, "{\"error\":\"r.json: step 1 (sort): unknown field 'order'\"}\n");
  EXPECT_FALSE(Exists("out"));
}

TEST_F(ApplyCommand, SalvageAsTheFirstStepTakesWhatIsNoStreamAnyMore) {
  Write("lost.sup", Join({test::Sound(Second).Build(), Bytes(20, 0x55), test::Sound(5 * Second).Build()}));
  WriteText("r.json", R"({"version": 1, "steps": [{"tool": "salvage"}, {"tool": "retime", "shift": 40}]})");
  EXPECT_EQ(Run({"apply", "r.json", "lost.sup", "--out-dir", "out"}).ExitCode, 0);
  EXPECT_EQ(Read("out/lost.sup"),
            Join({test::Sound(Second + 3600).Build(), test::Sound(5 * Second + 3600).Build()}));
}

TEST_F(ApplyCommand, ManyFilesAreAllDone) {
  std::vector<std::string> arguments = {"apply", "r.json", "--out-dir", "out"};
  for (int i = 0; i < 40; ++i) {
    const std::string name = std::to_string(i) + ".sup";
    Write(name, test::Sound(i).Build());
    arguments.push_back(name);
  }
  EXPECT_EQ(Run(arguments).ExitCode, 0);
  for (int i = 0; i < 40; ++i) {
    EXPECT_EQ(Read("out/" + std::to_string(i) + ".sup"), test::Sound(i + 3600).Build());
  }
}

}  // namespace
}  // namespace quillmark::cli
