#include "tests/cli/Program.h"

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::Join;
using test::Second;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class ToolCommands : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup", Join({test::Sound(Second).Build(), test::Sound(5 * Second).Build(),
                         test::Sound(9 * Second).Build()}));
  }

  static Bytes WithoutStart(std::int64_t time) {
    Bytes packet = test::Sound(time).Build();
    packet[22] = 0x02;  // a stop in its place
    return packet;
  }
};

TEST_F(ToolCommands, SayHowMuchTheyDid) {
  const auto run = Run({"retime", "a.sup", "--shift", "40", "--only", "1,3", "-o", "b.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out, "2 subtitles retimed\n");
  EXPECT_THAT(run.Err, IsEmpty());
  EXPECT_EQ(Read("b.sup"), Join({test::Sound(Second + 3600).Build(), test::Sound(5 * Second).Build(),
                                 test::Sound(9 * Second + 3600).Build()}));
}

TEST_F(ToolCommands, NegativeValuesAreValues) {
  EXPECT_EQ(Run({"retime", "a.sup", "--shift", "-1000", "-o", "b.sup"}).ExitCode, 0);
  EXPECT_EQ(Run({"move", "a.sup", "--x", "-1", "--y=-2", "-o", "b.sup"}).ExitCode, 0);
}

TEST_F(ToolCommands, DryRunSaysWhatWouldChangeAndWritesNothing) {
  const auto run = Run({"force", "on", "a.sup", "--only", "2-", "--dry-run"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out, "2 subtitles would be changed: 2-3\n");
  EXPECT_EQ(Run({"force", "on", "a.sup", "--only", "3", "--dry-run"}).Out,
            "1 subtitle would be changed: 3\n");
  EXPECT_EQ(Run({"force", "off", "a.sup", "--dry-run"}).Out, "0 subtitles would be changed\n");
  EXPECT_EQ(Run({"force", "on", "a.sup", "-o", "b.sup", "--dry-run"}).ExitCode, 0);
  EXPECT_THAT(Names(), ElementsAre("a.sup"));
}

TEST_F(ToolCommands, WithoutDryRunAnOutputIsRequired) {
  const auto run = Run({"force", "on", "a.sup"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_THAT(run.Err, StartsWith("quillmark-cli: --out is required\n"));
}

TEST_F(ToolCommands, WhatIsLeftIsNamedAndTheRestIsWritten) {
  const Bytes damaged = test::Sound(5 * Second).ControlOffset(0).Build();
  Write("a.sup", Join({WithoutStart(Second), damaged, test::Sound(9 * Second).Build()}));
  const auto run = Run({"force", "on", "a.sup", "-o", "b.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Out, "1 subtitle changed\n");
  EXPECT_EQ(
      run.Err,
      "quillmark-cli: a.sup: subtitle 1 has no start command; it is left as it is\n"
      "quillmark-cli: a.sup: subtitle 2 is damaged (the control offset leads out of the unit); it is left "
      "as it is\n"
      "quillmark-cli: a.sup: 2 of 3 subtitles are left as they are\n");
  Bytes forced = test::Sound(9 * Second).Build();
  forced[22] = 0x00;
  EXPECT_EQ(Read("b.sup"), Join({WithoutStart(Second), damaged, forced}));
}

TEST_F(ToolCommands, JsonTellsWhatChangedAndWhatIsLeft) {
  Write("a.sup",
        Join({WithoutStart(Second), test::Sound(5 * Second).Build(), test::Sound(9 * Second).Build()}));
  const auto run = Run({"force", "on", "a.sup", "-o", "b.sup", "--json"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(
      run.Out,
      R"({"file":"a.sup","out":"b.sup","tool":"force","changed":2,"subtitles":"2-3","left":[{"number":1,)"
      R"("code":"no_start","reason":"has no start command; it is left as it is"}]})"
      "\n");
  EXPECT_EQ(Json::parse(Run({"sort", "a.sup", "--dry-run", "--json"}).Out),
            Json::parse(R"({"file": "a.sup", "out": null, "tool": "sort", "changed": 0, "subtitles": "",
                            "left": []})"));
}

TEST_F(ToolCommands, SubtitleThatIsNotAsLongAsAskedForIsNamed) {
  const auto run = Run({"ends", "a.sup", "--shortest", "5000", "--no-overlap", "--only", "1", "-o", "b.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Out, "1 subtitle given another end\n");
  EXPECT_THAT(run.Err, HasSubstr("1 of 1 subtitles are not as asked for\n"));
  EXPECT_THAT(Run({"list", "b.sup"}).Out, StartsWith("1  00:00:01.00 - 00:00:05.00  "));
}

TEST_F(ToolCommands, ImpossibleStartWritesNothingAndNamesTheFirst) {
  const auto run = Run({"retime", "a.sup", "--shift", "-1000.01", "-o", "b.sup", "--json"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Out, "{\"error\":\"a.sup: subtitle 1 would start before 0; nothing is written\"}\n");
  EXPECT_THAT(Names(), ElementsAre("a.sup"));
}

TEST_F(ToolCommands, CutKeepAndSortPackets) {
  EXPECT_EQ(Run({"cut", "a.sup", "--only", "1,3", "-o", "b.sup"}).Out, "2 subtitles taken out\n");
  EXPECT_EQ(Read("b.sup"), test::Sound(5 * Second).Build());
  EXPECT_EQ(Run({"keep", "a.sup", "--only", "1,3", "-o", "b.sup"}).Out, "1 subtitle taken out\n");
  EXPECT_EQ(Read("b.sup"), Join({test::Sound(Second).Build(), test::Sound(9 * Second).Build()}));
  Write("c.sup", Join({test::Sound(9).Build(), test::Sound(4).Build()}));
  EXPECT_EQ(Run({"sort", "c.sup", "-o", "b.sup"}).Out, "1 subtitle moved\n");
  EXPECT_EQ(Read("b.sup"), Join({test::Sound(4).Build(), test::Sound(9).Build()}));
}

TEST_F(ToolCommands, CutOfAllWritesNothing) {
  for (const std::vector<std::string>& command :
       {std::vector<std::string>{"cut", "a.sup", "--only", "1-", "-o", "b.sup"},
        {"cut", "a.sup", "--only", "1-3", "-o", "a.sup"}}) {
    const auto run = Run(command);
    EXPECT_EQ(run.ExitCode, 1);
    EXPECT_EQ(run.Err, "quillmark-cli: a.sup: no subtitle would be left\n");
  }
  EXPECT_THAT(Names(), ElementsAre("a.sup"));
  EXPECT_EQ(Run({"report", "a.sup"}).Out.substr(0, 18), "Found Subtitles: 3");
}

TEST_F(ToolCommands, RunOverTheFileItself) {
  EXPECT_EQ(Run({"cut", "a.sup", "--only", "2-", "-o", "a.sup"}).ExitCode, 0);
  EXPECT_EQ(Read("a.sup"), test::Sound(Second).Build());
}

class JoinCommand : public ToolCommands {};

TEST_F(JoinCommand, PutsStreamsOneBehindAnother) {
  Write("b.sup", test::Sound(7).Build());
  const auto run = Run({"join", "b.sup", "b.sup", "b.sup", "-o", "c.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out, "2 subtitles added\n");
  EXPECT_EQ(Read("c.sup"),
            Join({test::Sound(7).Build(), test::Sound(90007).Build(), test::Sound(180007).Build()}));
  ASSERT_EQ(Run({"join", "b.sup", "b.sup", "-o", "c.sup", "--gap", "1000"}).ExitCode, 0);
  EXPECT_EQ(Read("c.sup"), Join({test::Sound(7).Build(), test::Sound(180007).Build()}));
}

TEST_F(JoinCommand, TakesATimeForEachStreamButTheFirst) {
  Write("b.sup", test::Sound(7).Build());
  for (const std::vector<std::string>& at :
       {std::vector<std::string>{"--at", "0:10", "1:00"}, std::vector<std::string>{"--at", "0:10,1:00"},
        std::vector<std::string>{"--at", "0:10", "--at", "1:00"}}) {
    std::vector<std::string> arguments = {"join", "b.sup", "b.sup", "b.sup", "-o", "c.sup"};
    arguments.insert(arguments.end(), at.begin(), at.end());
    ASSERT_EQ(Run(arguments).ExitCode, 0);
    EXPECT_EQ(Read("c.sup"), Join({test::Sound(7).Build(), test::Sound(10 * Second).Build(),
                                   test::Sound(60 * Second).Build()}));
  }
  ASSERT_EQ(Run({"join", "b.sup", "b.sup", "-o", "c.sup", "--at", "0:10"}).ExitCode, 0);
  EXPECT_EQ(Read("c.sup"), Join({test::Sound(7).Build(), test::Sound(10 * Second).Build()}));
  const auto run = Run({"join", "b.sup", "b.sup", "-o", "d.sup", "--at", "0:10,1:00"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_THAT(run.Err,
              StartsWith("quillmark-cli: --at needs a time for each file but the first: 1 in place of 2"));
  EXPECT_FALSE(Exists("d.sup"));
}

TEST_F(JoinCommand, CountsWhatIsLeftOfAllThatIsAdded) {
  Write("b.sup", test::Sound(7).Build());
  Write("damaged.sup", Join({test::Sound(7).Build(), test::Sound(Second).ControlOffset(0).Build()}));
  const auto run = Run({"join", "b.sup", "b.sup", "damaged.sup", "-o", "c.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, HasSubstr("b.sup: 1 of 3 subtitles are left as they are\n"));
}

TEST_F(JoinCommand, NeedsTwoStreams) {
  EXPECT_EQ(Run({"join", "a.sup", "-o", "b.sup"}).ExitCode, 2);
}

TEST_F(JoinCommand, NamesTheStreamThatCannotBeRead) {
  const auto run = Run({"join", "a.sup", "no.sup", "-o", "b.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: no.sup: No such file or directory\n");
  EXPECT_THAT(Names(), ElementsAre("a.sup"));
}

TEST_F(JoinCommand, NamesTheStreamThatCannotFollow) {
  Bytes cut = Join({test::Sound(7).Build(), test::Sound(Second).Build()});
  cut.pop_back();
  Write("cut.sup", cut);
  Write("too.sup", cut);
  const auto run = Run({"join", "cut.sup", "too.sup", "-o", "c.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err,
              HasSubstr("quillmark-cli: too.sup: both streams end with bytes that are no whole packet"));
  EXPECT_FALSE(Exists("c.sup"));
}

struct WrongTool {
  std::vector<std::string> Arguments;
  const char* Message;
};

TEST_F(ToolCommands, WrongUsageSaysWhy) {
  for (const WrongTool& wrong :
       {WrongTool{{"retime", "a.sup", "-o", "b.sup"},
                  "retime needs --shift, --scale, --from and --to, or --points"},
        {{"retime", "a.sup", "-o", "b.sup", "--shift", "x"}, "--shift: 'x' is no number of milliseconds"},
        {{"retime", "a.sup", "-o", "b.sup", "--points", "1=0:01,4=0:02"},
         "a.sup: there is no subtitle 4: it has 3"},
        {{"retime", "a.sup", "-o", "b.sup", "--points", "1=0:02,2=0:01"},
         "a.sup: subtitle 2 starts after subtitle 1, and has to do so afterwards"},
        {{"sort", "a.sup", "-o", "b.sup", "--only", "2-4"}, "a.sup: there is no subtitle 4: it has 3"},
        {{"force", "maybe", "a.sup", "-o", "b.sup"}, "state: 'maybe' is neither 'on' nor 'off'"},
        {{"cut", "a.sup", "-o", "b.sup"}, "cut needs --only"}}) {
    const auto run = Run(wrong.Arguments);
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_EQ(run.Err.substr(0, run.Err.find('\n')), std::string("quillmark-cli: ") + wrong.Message);
    EXPECT_FALSE(Exists("b.sup"));
  }
}

}  // namespace
}  // namespace quillmark::cli
