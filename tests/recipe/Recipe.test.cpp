#include "recipe/Recipe.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>

#include "sup/StreamLoader.h"
#include "tests/support/AppliedEdit.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Index;
using test::Second;

TEST(ParseRecipe, TakesTextsNumbersAndFlags) {
  const auto recipe = ParseRecipe(R"({"version": 1, "steps": [
    {"tool": "retime", "shift": "40", "only": "3-7"},
    {"tool": "move", "y": -10, "clamp": true},
    {"tool": "ends", "fill": true, "no-overlap": false, "gap": 12.5},
    {"tool": "force", "state": "on"},
    {"tool": "salvage"}]})");
  ASSERT_TRUE(recipe) << recipe.Reason();
  EXPECT_EQ(recipe->Steps,
            (std::vector<StepText>{{.Tool = "retime", .Options = {{"shift", "40"}, {"only", "3-7"}}},
                                   {.Tool = "move", .Options = {{"y", "-10"}, {"clamp", "true"}}},
                                   {.Tool = "ends", .Options = {{"fill", "true"}, {"gap", "12.5"}}},
                                   {.Tool = "force", .Options = {{"state", "on"}}},
                                   {.Tool = "salvage", .Options = {}}}));
}

TEST(ParseRecipe, MayHaveNoSteps) {
  const auto recipe = ParseRecipe(R"({"version": 1, "steps": []})");
  ASSERT_TRUE(recipe);
  EXPECT_TRUE(recipe->Steps.empty());
}

TEST(ParseRecipe, ReadsWhatIsWritten) {
  const Recipe recipe{.Steps = {{.Tool = "retime", .Options = {{"shift", "-0.5"}, {"only", "1,3-"}}},
                                {.Tool = "move", .Options = {{"to-line", "500"}, {"clamp", "true"}}},
                                {.Tool = "join", .Options = {{"with", "a \"b\" \xC3\xA9.sup"}}}}};
  const auto again = ParseRecipe(RecipeText(recipe));
  ASSERT_TRUE(again) << again.Reason();
  EXPECT_EQ(*again, recipe);
}

TEST(RecipeText, HasALineForEachField) {
  const Recipe recipe{.Steps = {{.Tool = "move", .Options = {{"y", "-2"}, {"clamp", "true"}}},
                                {.Tool = "join", .Options = {{"with", "\xC3\xA9.sup"}}}}};
  EXPECT_EQ(RecipeText(recipe), R"({
  "version": 1,
  "steps": [
    {
      "tool": "move",
      "y": "-2",
      "clamp": true
    },
    {
      "tool": "join",
      "with": ")"
                                "\xC3\xA9"
                                R"(.sup"
    }
  ]
}
)");
}

struct WrongRecipe {
  const char* Name;
  const char* Json;
  const char* Reason;
};

void PrintTo(const WrongRecipe& wrong, std::ostream* out) {
  *out << wrong.Name;
}

class RefusedRecipe : public testing::TestWithParam<WrongRecipe> {};

TEST_P(RefusedRecipe, NamesWhatIsWrong) {
  EXPECT_EQ(ParseRecipe(GetParam().Json).Reason(), GetParam().Reason);
}

INSTANTIATE_TEST_SUITE_P(
    Recipes, RefusedRecipe,
    testing::Values(
        WrongRecipe{"Empty", "", "it is no JSON: byte 1 does not fit"},
        WrongRecipe{"Cut", R"({"version": 1)", "it is no JSON: byte 14 does not fit"},
        WrongRecipe{"NumberNoMachineHolds", R"({"version": 1e999, "steps": []})",
                    "it has a number that is too large"},
        WrongRecipe{"FieldToldTwice", R"({"version": 1, "steps": [], "steps": [{"tool": "sort"}]})",
                    "'steps' stands twice in one object"},
        WrongRecipe{"OptionToldTwice", R"({"version": 1, "steps": [{"tool": "move", "y": 1, "y": 2}]})",
                    "'y' stands twice in one object"},
        WrongRecipe{"NoObject", "[]", "it is no JSON object"},
        WrongRecipe{"NoVersion", R"({"steps": []})", "it has no 'version', which is 1"},
        WrongRecipe{"TextVersion", R"({"version": "1", "steps": []})", "it has no 'version', which is 1"},
        WrongRecipe{"OtherVersion", R"({"version": 2, "steps": []})",
                    "its version is 2; this program knows version 1 alone"},
        WrongRecipe{"NoSteps", R"({"version": 1})", "it has no list of 'steps'"},
        WrongRecipe{"StepsAreNoList", R"({"version": 1, "steps": {}})", "it has no list of 'steps'"},
        WrongRecipe{"UnknownTopField", R"({"version": 1, "steps": [], "name": "x"})", "unknown field 'name'"},
        WrongRecipe{"StepIsNoObject", R"({"version": 1, "steps": ["sort"]})",
                    "step 1: it is no object with the name of a 'tool'"},
        WrongRecipe{"ToolIsMissing", R"({"version": 1, "steps": [{"only": "1"}]})",
                    "step 1: it is no object with the name of a 'tool'"},
        WrongRecipe{"ToolIsNoText", R"({"version": 1, "steps": [{"tool": 1}]})",
                    "step 1: it is no object with the name of a 'tool'"},
        WrongRecipe{"UnknownTool", R"({"version": 1, "steps": [{"tool": "sort"}, {"tool": "sorty"}]})",
                    "step 2: there is no tool 'sorty'"},
        WrongRecipe{"UnknownField", R"({"version": 1, "steps": [{"tool": "sort", "shift": 1}]})",
                    "step 1 (sort): unknown field 'shift'"},
        WrongRecipe{"FlagIsNoBool", R"({"version": 1, "steps": [{"tool": "ends", "fill": "yes"}]})",
                    "step 1 (ends): 'fill' is neither true nor false"},
        WrongRecipe{"ValueIsABool", R"({"version": 1, "steps": [{"tool": "retime", "shift": true}]})",
                    "step 1 (retime): 'shift' is neither a text nor a number"},
        WrongRecipe{"ValueIsNull", R"({"version": 1, "steps": [{"tool": "retime", "shift": null}]})",
                    "step 1 (retime): 'shift' is neither a text nor a number"},
        WrongRecipe{"WrongValue", R"({"version": 1, "steps": [{"tool": "retime", "shift": "soon"}]})",
                    "step 1 (retime): shift: 'soon' is no number of milliseconds"},
        WrongRecipe{"NumberOutOfRange", R"({"version": 1, "steps": [{"tool": "retime", "shift": 1e300}]})",
                    "step 1 (retime): shift: '1e+300' is no number of milliseconds"},
        WrongRecipe{"NothingToDo", R"({"version": 1, "steps": [{"tool": "ends"}]})",
                    "step 1 (ends): ends needs fill, no-overlap or shortest"}),
    [](const auto& test) { return test.param.Name; });

/// {"f0":0,"f1":0,...}
std::string ObjectOfFields(int count) {
  std::string object = "{";
  for (int i = 0; i < count; ++i) {
    object += (i > 0 ? ",\"f" : "\"f") + std::to_string(i) + "\":0";
  }
  return object + "}";
}

// Each field takes the longer the more there are: a megabyte of them would take minutes.
TEST(ParseRecipe, ObjectHasAHundredFieldsAtMost) {
  EXPECT_EQ(ParseRecipe(ObjectOfFields(100)).Reason(), "unknown field 'f0'");
  EXPECT_EQ(ParseRecipe(ObjectOfFields(101)).Reason(), "an object of it has more than 100 fields");
}

TEST(ParseRecipe, FieldsOfDifferentObjectsShareTheirNames) {
  EXPECT_TRUE(ParseRecipe(R"({"version": 1, "steps": [{"tool": "sort"}, {"tool": "sort"}]})"));
}

struct WrongStep {
  StepText Step;
  const char* Reason;
};

TEST(ReadStep, RefusesOptionsThatDoNotGoTogether) {
  for (const WrongStep& wrong :
       {WrongStep{{"retime", {}}, "retime needs --shift, --scale, --from and --to, or --points"},
        {{"retime", {{"from", "24"}}}, "--from and --to belong together"},
        {{"retime", {{"from", "24"}, {"to", "25"}, {"scale", "1/2"}}},
         "--from and --to stand in place of --scale"},
        {{"retime", {{"shift", "1"}, {"points", "1=1,2=2"}}}, "--points stands alone"},
        {{"retime", {{"scale", "0/1"}}}, "--scale: '0/1' is no ratio such as 25/24"},
        {{"retime", {{"from", "50"}, {"to", "25"}}},
         "--from: '50' is none of the speeds 24000/1001 (23.976), 24, 25 and 30000/1001 (29.97)"},
        {{"move", {}}, "move needs --x, --y or --to-line"},
        {{"move", {{"y", "1"}, {"to-line", "2"}}}, "--to-line stands in place of --y"},
        {{"move", {{"x", "1"}, {"frame", "500"}}}, "--frame: '500' is neither 480 nor 576"},
        {{"move", {{"x", "10001"}}}, "--x: '10001' is no whole number from -10000 to 10000"},
        {{"move", {{"frame", "480"}, {"to-line", "480"}}},
         "--to-line: '480' is no whole number from 0 to 479"},
        {{"force", {}}, "force needs 'on' or 'off'"},
        {{"force", {{"state", "maybe"}}}, "state: 'maybe' is neither 'on' nor 'off'"},
        {{"ends", {{"shortest", "1"}, {"longest", "1000"}}}, "--longest belongs to --fill"},
        {{"ends", {{"shortest", "1"}, {"gap", "1"}}}, "--gap belongs to --fill and --no-overlap"},
        {{"ends", {{"shortest", "-1"}}}, "--shortest: '-1' is not from 0 to 364077 milliseconds"},
        {{"ends", {{"fill", "true"}, {"longest", "364078"}}},
         "--longest: '364078' is not from 0 to 364077 milliseconds"},
        {{"ends", {{"fill", "true"}, {"longest", "11"}}},
         "--longest: '11' is shorter than a delay can say, which counts units of 1000 ticks"},
        {{"cut", {}}, "cut needs --only"},
        {{"keep", {}}, "keep needs --only"},
        {{"cut", {{"only", "0"}}}, "--only: '0' is no range such as 3-7, 3 or 3-"},
        {{"sort", {{"only", "1"}, {"only", "2"}}}, "--only is given twice"},
        {{"sort", {{"gap", "1"}}}, "sort takes no '--gap'"},
        {{"join", {}}, "join needs --with"},
        {{"join", {{"with", ""}}}, "--with: '' names no file"},
        {{"fix", {{"profile", "other"}}}, "--profile: 'other' is neither spec nor player"},
        {{"join", {{"with", "a"}, {"gap", "1"}, {"at", "2"}}}, "--at stands in place of --gap"},
        {{"assign", {}}, "assign needs --colours, --opacities or both"},
        {{"nothing", {}}, "there is no tool 'nothing'"}}) {
    EXPECT_EQ(ReadStep(wrong.Step, "--").Reason(), wrong.Reason);
  }
}

TEST(FitsStream, RefusesSubtitlesThatAreNotThere) {
  const SupStream stream = Index(test::Join({test::Sound(1).Build(), test::Sound(2).Build()}));
  const auto reason = [&](const StepText& text) {
    const auto step = ReadStep(text);
    EXPECT_TRUE(step) << step.Reason();
    return step ? FitsStream(*step, stream).Reason() : "";
  };
  EXPECT_EQ(reason({"sort", {{"only", "1-2"}}}), "");
  EXPECT_EQ(reason({"sort", {{"only", "1-3"}}}), "there is no subtitle 3: it has 2");
  EXPECT_EQ(reason({"retime", {{"points", "1=0,5=1"}}}), "there is no subtitle 5: it has 2");
}

Bytes RunOn(const StepText& text, const Bytes& file) {
  const auto step = ReadStep(text);
  EXPECT_TRUE(step) << step.Reason();
  const SupStream stream = Index(file);
  const auto result = RunStep(*step, stream);
  EXPECT_TRUE(result) << result.Reason();
  return test::Applied(stream, result->Edit);
}

TEST(RunStep, EveryToolDoesWhatItsOptionsSay) {
  const Bytes file = test::Join({test::Sound(Second).Build(), test::Sound(2 * Second).Build()});
  using test::Changes;
  using testing::ElementsAre;
  using testing::Pair;
  EXPECT_THAT(Changes(file, RunOn({"retime", {{"shift", "40"}, {"only", "1"}}}, file)),
              ElementsAre(Pair(2, 0xA0), Pair(3, 0x6D)));
  // 90000 x 25 x 1001 / 24000 = 93843.75 -> 0x16E94; the delay 90 x 1.0427 = 93.8
  EXPECT_THAT(Changes(file, RunOn({"retime", {{"from", "25"}, {"to", "23.976"}, {"only", "1"}}}, file)),
              ElementsAre(Pair(2, 0x94), Pair(3, 0x6E), Pair(43, 94)));
  // x from 100-103 to 101-104
  EXPECT_THAT(Changes(file, RunOn({"move", {{"x", "1"}, {"only", "2"}}}, file)),
              ElementsAre(Pair(79, 0x50), Pair(80, 0x68)));
  // y from 400-401 to 402-403
  EXPECT_THAT(Changes(file, RunOn({"move", {{"y", "2"}, {"only", "1"}}}, file)),
              ElementsAre(Pair(34, 0x21), Pair(35, 0x93)));
  // y from 400-401 to 499-500
  EXPECT_THAT(Changes(file, RunOn({"move", {{"to-line", "500"}, {"only", "1"}}}, file)),
              ElementsAre(Pair(33, 0x1F), Pair(34, 0x31), Pair(35, 0xF4)));
  EXPECT_THAT(Changes(file, RunOn({"force", {{"state", "on"}}}, file)),
              ElementsAre(Pair(22, 0), Pair(70, 0)));
  EXPECT_THAT(Changes(file, RunOn({"ends", {{"shortest", "2000"}, {"only", "1"}}}, file)),
              ElementsAre(Pair(43, 180)));
  EXPECT_EQ(RunOn({"cut", {{"only", "1"}}}, file), test::Sound(2 * Second).Build());
  EXPECT_EQ(RunOn({"keep", {{"only", "1"}}}, file), test::Sound(Second).Build());
  EXPECT_EQ(RunOn({"sort", {}}, test::Join({test::Sound(9).Build(), test::Sound(4).Build()})),
            test::Join({test::Sound(4).Build(), test::Sound(9).Build()}));
  EXPECT_THAT(Changes(file, RunOn({"assign", {{"colours", "...9"}, {"only", "1"}}}, file)),
              ElementsAre(Pair(24, 0x92)));
  EXPECT_EQ(RunOn({"salvage", {}}, test::Join({test::Sound(9).Build(), {1, 2}})), test::Sound(9).Build());
}

/// Of a fix with these options, of which the stream has something to mend or not.
ToolResult Fixed(const StepText& text, const Bytes& file) {
  const auto step = ReadStep(text);
  EXPECT_TRUE(step) << step.Reason();
  auto result = RunStep(*step, Index(file));
  EXPECT_TRUE(result) << result.Reason();
  return std::move(*result);
}

// What overlaps is cut before what is outside the frame is moved.
TEST(RunStep, FixNamesWhatItMendedInTheOrderOfTheStream) {
  const ToolResult fixed = Fixed(
      {"fix", {}}, test::Join({test::Sound(0).Area(100, 103, 600, 601).Build(),
                               test::Sound(2 * Second).Delay(300).Build(), test::Sound(3 * Second).Build()}));
  EXPECT_EQ(fixed.Changed.Text(), "1-2");
  EXPECT_TRUE(fixed.Left.empty());
}

TEST(RunStep, FixNamesOnceWhatItMendedTwice) {
  const ToolResult fixed = Fixed(
      {"fix", {}},
      test::Join({test::Sound(0).Delay(300).Area(100, 103, 600, 601).Build(), test::Sound(Second).Build()}));
  EXPECT_EQ(fixed.Changed.Text(), "1");
}

TEST(RunStep, FixNamesWhatItDidNotMend) {
  const ToolResult fixed =
      Fixed({"fix", {}}, test::Join({test::Sound(0).Build(), test::Sound(2 * Second).WithoutArea().Build(),
                                     test::Sound(4 * Second).WithoutColour().WithoutArea().Build()}));
  EXPECT_EQ(fixed.Chosen, 3);
  EXPECT_EQ(fixed.Left, (std::vector<LeftSubtitle>{{.Number = 2, .Why = LeftReason::NotMended},
                                                   {.Number = 3, .Why = LeftReason::NotMended}}));
}

TEST(RunStep, FixNamesNoSubtitleOfBytesThatAreNone) {
  const Bytes packet = test::Sound(0).Build();
  const ToolResult fixed = Fixed({"fix", {}}, test::Join({packet, {1, 2}}));
  EXPECT_FALSE(fixed.Edit.IsEmpty());
  EXPECT_EQ(fixed.Changed.Text(), "");
  EXPECT_TRUE(fixed.Left.empty());
}

// The first line of the frame is one that players may not show.
TEST(RunStep, FixGoesByTheRulesOfItsProfile) {
  const Bytes file = test::Sound(0).Area(100, 103, 0, 1).Build();
  EXPECT_EQ(Fixed({"fix", {}}, file).Changed.Text(), "");
  EXPECT_EQ(Fixed({"fix", {{"profile", "spec"}}}, file).Changed.Text(), "");
  EXPECT_EQ(Fixed({"fix", {{"profile", "player"}}}, file).Changed.Text(), "1");
}

TEST(RunStep, FixGoesByTheLinesOfItsFrame) {
  const Bytes file = test::Sound(0).Area(100, 103, 480, 481).Build();
  EXPECT_EQ(Fixed({"fix", {}}, file).Changed.Text(), "");
  EXPECT_EQ(Fixed({"fix", {{"frame", "576"}}}, file).Changed.Text(), "");
  EXPECT_EQ(Fixed({"fix", {{"frame", "480"}}}, file).Changed.Text(), "1");
}

TEST(RunStep, MoveGoesAsFarAsItsFrameWhereItIsClamped) {
  const Bytes file = test::Sound(0).Build();
  // y from 400-401 to 478-479, and to 574-575
  const auto moved = [&](std::vector<std::pair<std::string, std::string>> options) {
    options.emplace_back("y", "500");
    return test::Changes(file, RunOn({"move", std::move(options)}, file));
  };
  using testing::ElementsAre;
  using testing::Pair;
  EXPECT_THAT(moved({{"clamp", "true"}, {"frame", "480"}}),
              ElementsAre(Pair(33, 0x1D), Pair(34, 0xE1), Pair(35, 0xDF)));
  EXPECT_THAT(moved({{"clamp", "true"}}), ElementsAre(Pair(33, 0x23), Pair(34, 0xE2), Pair(35, 0x3F)));
  EXPECT_THAT(moved({}), ElementsAre());
}

TEST(RunStep, EndsLeaveNoGapWhereNoneIsAsked) {
  // Shown for 300 x 1000 ticks from 0, the next one from 2 s: 180 x 1000 ticks.
  const Bytes file = test::Join({test::Sound(0).Delay(300).Build(), test::Sound(2 * Second).Build()});
  EXPECT_THAT(test::Changes(file, RunOn({"ends", {{"no-overlap", "true"}}}, file)),
              testing::ElementsAre(testing::Pair(42, 0), testing::Pair(43, 180)));
}

// The arguments of a unit without a colour command could not be changed.
TEST(RunStep, AssignLeavesWhatHasNoCommands) {
  const auto step = ReadStep({"assign", {{"colours", "1111"}}});
  ASSERT_TRUE(step);
  const auto result = RunStep(*step, Index(test::Sound().WithoutColour().Build()));
  ASSERT_TRUE(result) << result.Reason();
  EXPECT_TRUE(result->Edit.IsEmpty());
  EXPECT_EQ(result->Left.size(), 1U);
}

TEST(RunStep, TakingOutAllIsRefused) {
  const SupStream stream = Index(test::Join({test::Sound(1).Build(), test::Sound(2).Build()}));
  Bytes cutShort = test::Sound(1).Build();
  cutShort.resize(30);
  const SupStream damaged = Index(cutShort);
  ASSERT_EQ(damaged.Count, 1);
  for (const auto& [text, of] : {std::pair<StepText, const SupStream*>{{"cut", {{"only", "1-"}}}, &stream},
                                 {{"cut", {{"only", "1-2"}}}, &stream},
                                 {{"salvage", {}}, &damaged}}) {
    const auto step = ReadStep(text);
    ASSERT_TRUE(step) << step.Reason();
    EXPECT_EQ(RunStep(*step, *of).Reason(), "no subtitle would be left");
  }
}

TEST(RunStep, OfAnEmptyStreamNothingIsTakenOut) {
  const auto step = ReadStep({"cut", {{"only", "1-"}}});
  ASSERT_TRUE(step) << step.Reason();
  const auto result = RunStep(*step, Index({}));
  ASSERT_TRUE(result) << result.Reason();
  EXPECT_TRUE(result->Edit.IsEmpty());
}

TEST(RunSteps, EachStepFindsWhatTheOneBeforeItLeft) {
  const Bytes first = test::Sound(Second).Build();
  SupStream stream =
      Index(test::Join({first, test::Sound(2 * Second).Build(), test::Sound(5 * Second).Build()}));
  const auto steps = ReadSteps({.Steps = {{.Tool = "cut", .Options = {{"only", "2"}}},
                                          {.Tool = "force", .Options = {{"state", "on"}, {"only", "1-2"}}}}});
  ASSERT_TRUE(steps) << steps.Reason();
  const auto outcomes = RunSteps(*steps, stream);
  ASSERT_TRUE(outcomes) << outcomes.Reason();
  ASSERT_EQ(outcomes->size(), 2U);
  EXPECT_EQ(outcomes->at(0).What->Name, "cut");
  EXPECT_EQ(outcomes->at(0).Changed, 1);
  EXPECT_EQ(outcomes->at(0).Chosen, 1);
  EXPECT_EQ(outcomes->at(1).What->Name, "force");
  EXPECT_EQ(outcomes->at(1).Changed, 2);
  EXPECT_EQ(outcomes->at(1).Chosen, 2);
  ASSERT_EQ(stream.Count, 2);
  Bytes forced = first;
  forced[22] = 0x00;  // the start command
  EXPECT_TRUE(std::equal(forced.begin(), forced.end(), stream.RawBytes.begin()));
}

TEST(RunSteps, SubtitlesThatAreLeftAreTold) {
  SupStream stream = Index(test::Sound(Second).WithoutArea().Build());
  const auto steps = ReadSteps({.Steps = {{.Tool = "move", .Options = {{"x", "1"}}}}});
  ASSERT_TRUE(steps);
  const auto outcomes = RunSteps(*steps, stream);
  ASSERT_TRUE(outcomes);
  EXPECT_EQ(outcomes->front().Left, (std::vector<LeftSubtitle>{{.Number = 1, .Why = LeftReason::NoArea}}));
}

TEST(RunSteps, StepThatCannotBeRunIsNamed) {
  const auto reason = [](const StepText& second) {
    SupStream stream = Index(test::Join({test::Sound(1).Build(), test::Sound(2).Build()}));
    const auto steps = ReadSteps({.Steps = {{.Tool = "cut", .Options = {{"only", "1"}}}, second}});
    EXPECT_TRUE(steps);
    return RunSteps(*steps, stream).Reason();
  };
  EXPECT_EQ(reason({"sort", {{"only", "2"}}}), "step 2 (sort): there is no subtitle 2: it has 1");
  EXPECT_EQ(reason({"cut", {{"only", "1"}}}), "step 2 (cut): no subtitle would be left");
}

TEST(RunStep, JoinOfAFileThatCannotBeReadNamesIt) {
  const auto step = ReadStep({"join", {{"with", "no/such.sup"}}});
  ASSERT_TRUE(step);
  EXPECT_EQ(RunStep(*step, Index({})).Reason(), "no/such.sup: No such file or directory");
}

TEST(RunStep, JoinTakesTheStreamOfAFileOfAnyKind) {
  const Bytes joined =
      RunOn({"join", {{"with", QUILLMARK_TEST_DATA "/containers/both.mks"}, {"track", "de"}}},
            test::Sound(Second).Build());
  // Its second track has the units of film2.sup, byte for byte.
  const auto film = LoadPrimaryStream(QUILLMARK_TEST_DATA "/containers/film2.sup");
  ASSERT_TRUE(film);
  const SupStream whole = Index(joined);
  ASSERT_EQ(whole.Count, 21);
  for (std::size_t i = 0; i < 20; ++i) {
    std::vector<std::uint8_t> there;
    std::vector<std::uint8_t> here;
    CopyUnit(film->Stream, i, there);
    CopyUnit(whole, i + 1, here);
    EXPECT_EQ(here, there) << i;
  }
}

TEST(RunStep, JoinOfAFileOfSeveralTracksNeedsOneOfThem) {
  const std::string file = QUILLMARK_TEST_DATA "/containers/both.mks";
  for (const auto& [track, reason] : {std::pair("", "it has several tracks: 1 (en), 2 (de)"),
                                      std::pair("fr", "there is no track fr; it has 1 (en), 2 (de)")}) {
    const auto step = ReadStep({"join", {{"with", file}, {"track", track}}});
    ASSERT_TRUE(step);
    EXPECT_EQ(RunStep(*step, Index({})).Reason(), file + ": " + reason);
  }
}

TEST(RunStep, JoinOfAFileThatLosesItsSignatureIsRefused) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("damaged.sup");
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  const Bytes bytes = test::Join({test::Sound(Second).Build(), Bytes(48, 0xAA)});
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<qint64>(bytes.size()));
  file.close();
  const auto step = ReadStep({"join", {{"with", path.toStdString()}}});
  ASSERT_TRUE(step);
  EXPECT_EQ(RunStep(*step, Index({})).Reason(),
            path.toStdString() + ": no \"SP\" stands where a packet should start");
}

TEST(ReadStep, GapGoesWithEitherOfItsOptions) {
  EXPECT_TRUE(ReadStep({"ends", {{"fill", "true"}, {"gap", "1"}}}));
  EXPECT_TRUE(ReadStep({"ends", {{"no-overlap", "true"}, {"gap", "1"}}}));
}

TEST(ReadStep, NumbersAreTakenUpToTheirEnds) {
  for (const StepText& text : {StepText{"move", {{"x", "-10000"}, {"y", "10000"}}},
                               {"move", {{"to-line", "0"}}},
                               {"move", {{"to-line", "575"}}},
                               {"ends", {{"fill", "true"}, {"gap", "0"}}},
                               {"ends", {{"fill", "true"}, {"gap", "3600000000"}}},
                               {"ends", {{"shortest", "0"}}},
                               {"join", {{"with", "a"}, {"gap", "3600000000"}}}}) {
    EXPECT_EQ(ReadStep(text).Reason(), "") << text.Options.back().second;
  }
  EXPECT_EQ(ReadStep({"move", {{"y", "-10001"}}}).Reason(),
            "y: '-10001' is no whole number from -10000 to 10000");
  EXPECT_EQ(ReadStep({"move", {{"to-line", "576"}}}).Reason(),
            "to-line: '576' is no whole number from 0 to 575");
  EXPECT_EQ(ReadStep({"ends", {{"fill", "true"}, {"gap", "3600000000.01"}}}).Reason(),
            "gap: '3600000000.01' is not from 0 to 3600000000 milliseconds");
}

// A delay counts units of 1000 ticks, 11.1111 ms.
TEST(ReadStep, OneUnitOfADelayIsLongEnough) {
  const auto longest = [](const char* text) {
    return ReadStep({"ends", {{"fill", "true"}, {"longest", text}}}).Reason();
  };
  EXPECT_EQ(longest("11.1111"), "");
  EXPECT_EQ(longest("11.1"),
            "longest: '11.1' is shorter than a delay can say, which counts units of 1000 ticks");
}

TEST(ReadStep, FixKnowsTwoProfiles) {
  for (const char* profile : {"spec", "player"}) {
    EXPECT_TRUE(ReadStep({"fix", {{"profile", profile}}})) << profile;
  }
}

TEST(RecipeText, ToolThatThereIsNotHasNoFlags) {
  const Recipe recipe{.Steps = {{.Tool = "nothing", .Options = {{"fill", "true"}}}}};
  EXPECT_THAT(RecipeText(recipe), testing::HasSubstr("\"fill\": \"true\""));
}

TEST(Tool, OnTheCommandLineOnlyTheStateStandsAlone) {
  for (const Tool& tool : AllTools()) {
    for (const ToolOption& option : tool.Options) {
      EXPECT_EQ(option.IsPositional, option.Name == "state") << tool.Name << " " << option.Name;
    }
  }
}

TEST(TakesOut, CutKeepAndSalvageDo) {
  const auto takesOut = [](const StepText& text) { return TakesOut(*ReadStep(text)); };
  EXPECT_TRUE(takesOut({"cut", {{"only", "1"}}}));
  EXPECT_TRUE(takesOut({"keep", {{"only", "1"}}}));
  EXPECT_TRUE(takesOut({"salvage", {}}));
  EXPECT_FALSE(takesOut({"sort", {}}));
}

}  // namespace
}  // namespace quillmark
