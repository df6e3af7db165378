#include "tests/cli/Program.h"

namespace quillmark::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class Usage : public test::ProgramTest {};

TEST_F(Usage, VersionGoesToStandardOutput) {
  const auto run = Run({"--version"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out, "quillmark-cli " QUILLMARK_VERSION "\n");
  EXPECT_THAT(run.Err, IsEmpty());
}

TEST_F(Usage, ProgramSaysTheSameAsItsCommandLine) {
  Write("a.sup", test::Sound().Build());
  const auto version = RunScript("quillmark-cli --version");
  EXPECT_EQ(version.ExitCode, 0);
  EXPECT_EQ(version.Out, "quillmark-cli " QUILLMARK_VERSION "\n");
  const auto missing = RunScript("quillmark-cli report --json missing.sup");
  EXPECT_EQ(missing.ExitCode, 1);
  EXPECT_EQ(missing.Out, "{\"error\":\"missing.sup: No such file or directory\"}\n");
  EXPECT_EQ(missing.Err, "quillmark-cli: missing.sup: No such file or directory\n");
  EXPECT_EQ(RunScript("quillmark-cli").ExitCode, 2);
  EXPECT_EQ(RunScript("quillmark-cli picture a.sup 1 -o a.png --background checker").ExitCode, 0);
  EXPECT_TRUE(Exists("a.png"));
}

TEST_F(Usage, HelpNamesEveryCommand) {
  for (const char* word : {"--help", "-h", "help"}) {
    const auto run = Run({word});
    EXPECT_EQ(run.ExitCode, 0);
    EXPECT_THAT(run.Out, HasSubstr("\nUsage: quillmark-cli [OPTIONS] COMMAND\n"));
    for (const char* command : {"report", "list",    "picture", "export", "assign", "retime",  "move",
                                "force",  "ends",    "cut",     "keep",   "sort",   "join",    "fix",
                                "apply",  "palette", "merge",   "check",  "diff",   "salvage", "help"}) {
      EXPECT_THAT(run.Out, HasSubstr("\n  " + std::string(command) + "  ")) << word;
    }
    EXPECT_THAT(run.Err, IsEmpty());
  }
}

TEST_F(Usage, HelpOnACommandIsWhatItsOwnHelpOptionSays) {
  for (const char* command : {"report", "list",    "picture", "export", "assign", "retime",  "move",
                              "force",  "ends",    "cut",     "keep",   "sort",   "join",    "fix",
                              "apply",  "palette", "merge",   "check",  "diff",   "salvage", "help"}) {
    const auto run = Run({"help", command});
    EXPECT_EQ(run.ExitCode, 0);
    EXPECT_THAT(run.Out, HasSubstr("\nUsage: quillmark-cli " + std::string(command) + " [OPTIONS]"));
    EXPECT_EQ(run.Out, Run({command, "--help"}).Out);
    EXPECT_THAT(run.Err, IsEmpty());
  }
}

struct UsageCase {
  const char* Command;
  const char* Line;
};

TEST_F(Usage, UsageLineShowsWhatIsRequired) {
  for (const UsageCase& usage : {UsageCase{"report", "report [OPTIONS] FILE"},
                                 {"picture", "picture [OPTIONS] -o FILE.png FILE N"},
                                 {"export", "export [OPTIONS] FILE"},
                                 {"assign", "assign [OPTIONS] -o FILE.sup FILE"},
                                 {"retime", "retime [OPTIONS] -o FILE.sup FILE"},
                                 {"force", "force [OPTIONS] -o FILE.sup on|off FILE"},
                                 {"join", "join [OPTIONS] -o FILE.sup FILES..."},
                                 {"fix", "fix [OPTIONS] -o FILE.sup FILE"},
                                 {"diff", "diff [OPTIONS] A B"},
                                 {"apply", "apply [OPTIONS] --out-dir DIR RECIPE FILES..."},
                                 {"palette", "palette [OPTIONS] -o FILE.pal|FILE.RGB IN"},
                                 {"merge", "merge [OPTIONS] -o FILE.sup PRIMARY SECONDARY"},
                                 {"salvage", "salvage [OPTIONS] -o FILE.sup FILE"},
                                 {"help", "help [OPTIONS] [COMMAND]"}}) {
    EXPECT_THAT(Run({"help", usage.Command}).Out,
                HasSubstr("\nUsage: quillmark-cli " + std::string(usage.Line) + "\n"));
  }
}

TEST_F(Usage, OutHasThreeSpellingsInEveryCommand) {
  Write("a.sup", test::Sound().Build());
  for (const char* out : {"-o", "--out", "--output"}) {
    EXPECT_EQ(Run({"salvage", "a.sup", out, "b.sup"}).ExitCode, 0);
    EXPECT_EQ(Run({"export", "a.sup", out, "b"}).ExitCode, 0);
    EXPECT_THAT(Names(), testing::ElementsAre("a.sup", "b.sup", "b_SubPng", "b_spu.xml"));
    for (const char* name : {"b.sup", "b_SubPng", "b_spu.xml"}) {
      std::filesystem::remove_all(Path(name));
    }
  }
}

TEST_F(Usage, HelpOfACommandNamesItsOptions) {
  const auto run = Run({"merge", "--help"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_THAT(run.Out, AllOf(HasSubstr("--y-offset"), HasSubstr("--frame"), HasSubstr("--palette"),
                             HasSubstr("PRIMARY"), HasSubstr("SECONDARY")));
}

TEST_F(Usage, HelpOfACommandSaysWhatHoldsUnlessItIsAskedForOtherwise) {
  for (const char* command : {"check", "fix"}) {
    EXPECT_THAT(Run({command, "--help"}).Out,
                AllOf(HasSubstr("--profile spec|player=spec "), HasSubstr("--frame 480|576=576 ")));
  }
  EXPECT_THAT(Run({"merge", "--help"}).Out,
              AllOf(HasSubstr("--frame 480|576=576 "), HasSubstr("--mode pairs|split=pairs "),
                    HasSubstr("--join MS=0 ")));
}

struct WrongCase {
  const char* Name;
  std::vector<std::string> Arguments;
  std::string Message;
};

void PrintTo(const WrongCase& wrong, std::ostream* out) {
  *out << wrong.Name;
}

class WrongUsageTest : public test::ProgramTest, public testing::WithParamInterface<WrongCase> {};

TEST_P(WrongUsageTest, IsRefusedWithItsReason) {
  const auto run = Run(GetParam().Arguments);
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_THAT(run.Out, IsEmpty());
  EXPECT_THAT(run.Err, StartsWith("quillmark-cli: " + GetParam().Message + "\n"));
  EXPECT_THAT(Names(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Usage, WrongUsageTest,
    testing::Values(
        WrongCase{"NoCommand", {}, "a command is required"},
        WrongCase{"UnknownCommand", {"reprot", "x.sup"}, "unknown command 'reprot'; did you mean 'report'?"},
        WrongCase{"FileInsteadOfCommand", {"####"}, "unknown command '####'"},
        WrongCase{"UnknownOption",
                  {"report", "--jsno", "x.sup"},
                  "unknown option '--jsno'; did you mean '--json'?"},
        WrongCase{"UnknownOptionWithValue",
                  {"merge", "a", "b", "-o", "c", "--y-ofset=3"},
                  "unknown option '--y-ofset=3'; did you mean '--y-offset'?"},
        WrongCase{"UnknownOptionBeforeWhatIsMissing",
                  {"export", "--onyl"},
                  "unknown option '--onyl'; did you mean '--only'?"},
        WrongCase{"UnknownShortOption", {"salvage", "-q", "x.sup"}, "unknown option '-q'"},
        WrongCase{"UnknownOptionOfTheProgram",
                  {"--versoin"},
                  "unknown option '--versoin'; did you mean '--version'?"},
        WrongCase{"TooManyFiles", {"report", "x.sup", "y.sup"}, "unexpected argument 'y.sup'"},
        WrongCase{"NoFile", {"report"}, "FILE is required"},
        WrongCase{"NoOutput", {"salvage", "x.sup"}, "--out is required"},
        WrongCase{"NoNumber", {"picture", "x.sup", "-o", "x.png"}, "N is required"},
        WrongCase{"NumberZero",
                  {"picture", "x.sup", "0", "-o", "x.png"},
                  "N: Value 0 not in range 1 to 2147483647"},
        WrongCase{"NumberPast64Bits",
                  {"picture", "x.sup", "99999999999999999999", "-o", "x.png"},
                  "N: Value 99999999999999999999 not in range 1 to 2147483647"},
        WrongCase{
            "HexadecimalNumber", {"picture", "x.sup", "0x2", "-o", "x.png"}, "N: '0x2' is no decimal number"},
        WrongCase{"HexadecimalOffset",
                  {"merge", "x.sup", "y.sup", "-o", "z.sup", "--y-offset", "0x10"},
                  "--y-offset: '0x10' is no decimal number"},
        WrongCase{"HelpOnAnUnknownCommand",
                  {"help", "reprot"},
                  "unknown command 'reprot'; did you mean 'report'?\nTry 'quillmark-cli help'."},
        WrongCase{"EmptyFile", {"report", ""}, "FILE: '' names no file"},
        WrongCase{"EmptyOutput", {"salvage", "x.sup", "-o", ""}, "--out: '' names no file"},
        WrongCase{"EmptyPicture", {"picture", "x.sup", "1", "-o", ""}, "--out: '' names no file"},
        WrongCase{"EmptyBase", {"export", "x.sup", "-o", ""}, "--out: '' names no file"},
        WrongCase{"EmptyPalette", {"export", "x.sup", "--palette", ""}, "--palette: '' names no file"},
        WrongCase{"EmptyBackground",
                  {"picture", "x.sup", "1", "-o", "x.png", "--background", ""},
                  "--background: '' names no file"},
        WrongCase{"MissingState", {"force", "x.sup", "-o", "y.sup"}, "FILE is required"},
        WrongCase{"EmptyJoinedFile", {"join", "x.sup", "", "-o", "y.sup"}, "FILES: '' names no file"},
        WrongCase{"EmptyAppliedFile",
                  {"apply", "x.json", "x.sup", "", "--out-dir", "y"},
                  "FILES: '' names no file"},
        WrongCase{"EmptyRecipe", {"apply", "", "x.sup", "--out-dir", "y"}, "RECIPE: '' names no file"},
        WrongCase{
            "EmptyFolder", {"apply", "x.json", "x.sup", "--out-dir", ""}, "--out-dir: '' names no file"},
        WrongCase{"EmptyConvertedFile", {"convert", "x.sup", "", "-o", "y.idx"}, "FILES: '' names no file"},
        WrongCase{"EmptyPaletteFile", {"palette", "", "-o", "y.pal"}, "IN: '' names no file"},
        WrongCase{"EmptySecondFile", {"merge", "x.sup", "", "-o", "z.sup"}, "SECONDARY: '' names no file"},
        WrongCase{"EmptyOtherFile", {"diff", "x.sup", ""}, "B: '' names no file"},
        WrongCase{"PictureIsNoPng",
                  {"picture", "x.sup", "1", "-o", "x.jpg"},
                  "--out: 'x.jpg' does not end in .png"},
        WrongCase{"FrameOfAnotherSize",
                  {"picture", "x.sup", "1", "-o", "x.png", "--frame", "500"},
                  "--frame: '500' is neither 480 nor 576"},
        WrongCase{"ConvertedFrameOfAnotherSize",
                  {"convert", "x.sup", "-o", "y.idx", "--frame", "500"},
                  "--frame: '500' is neither 480 nor 576"},
        WrongCase{"TwoColours",
                  {"merge", "x.sup", "y.sup", "-o", "z.sup", "--colours", "12"},
                  "--colours: '12' is not four hexadecimal digits or dots"},
        WrongCase{"TwoOpacities",
                  {"merge", "x.sup", "y.sup", "-o", "z.sup", "--opacities", "12"},
                  "--opacities: '12' is not four hexadecimal digits or dots"},
        WrongCase{"RangeBackwards",
                  {"export", "x.sup", "--only", "5-3"},
                  "--only: '5-3' is no range such as 3-7, 3 or 3-"},
        WrongCase{"RangeFromZero",
                  {"export", "x.sup", "--only", "0-"},
                  "--only: '0-' is no range such as 3-7, 3 or 3-"},
        WrongCase{"ThreeDigits",
                  {"assign", "x.sup", "--colours", "012", "-o", "y.sup"},
                  "--colours: '012' is not four hexadecimal digits or dots"},
        WrongCase{"NoHexadecimalDigit",
                  {"assign", "x.sup", "--opacities", "00G0", "-o", "y.sup"},
                  "--opacities: '00G0' is not four hexadecimal digits or dots"},
        WrongCase{"NothingToAssign",
                  {"assign", "x.sup", "-o", "y.sup"},
                  "assign needs --colours, --opacities or both"},
        WrongCase{"PaletteAsPicture",
                  {"palette", "x.ifo", "-o", "y.png"},
                  "--out: 'y.png' does not end in .pal or .rgb"},
        WrongCase{"OffsetOutOfRange",
                  {"merge", "x.sup", "y.sup", "-o", "z.sup", "--y-offset", "-32769"},
                  "--y-offset: Value -32769 not in range -32768 to 32767"}),
    [](const auto& test) { return test.param.Name; });

TEST_F(Usage, DoubleDashEndsTheOptions) {
  Write("--json", test::Sound().Build());
  const auto run = Run({"report", "--", "--json"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_THAT(run.Out, StartsWith("Found Subtitles: 1\n"));
}

TEST_F(Usage, AFileMayBeNamedAsACommandIs) {
  Write("list", test::Sound().Build());
  EXPECT_EQ(Run({"check", "list"}).ExitCode, 0);
}

TEST_F(Usage, FailureNamesProgramFileAndReason) {
  const auto run = Run({"report", "missing.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Out, IsEmpty());
  EXPECT_EQ(run.Err, "quillmark-cli: missing.sup: No such file or directory\n");
}

TEST_F(Usage, FailureIsOneJsonDocumentWhereJsonWasAskedFor) {
  for (const char* command : {"report", "list", "check"}) {
    const auto run = Run({command, "--json", "missing.sup"});
    EXPECT_EQ(run.ExitCode, 1);
    EXPECT_EQ(run.Out, "{\"error\":\"missing.sup: No such file or directory\"}\n");
    EXPECT_EQ(run.Err, "quillmark-cli: missing.sup: No such file or directory\n");
  }
}

TEST_F(Usage, JsonFlagWithAValueAsksForJsonOfAFailureToo) {
  for (const char* flag : {"--json=1", "--json=true"}) {
    EXPECT_EQ(Run({"report", flag, "missing.sup"}).Out,
              "{\"error\":\"missing.sup: No such file or directory\"}\n");
  }
  EXPECT_EQ(Run({"report", "--json=false", "missing.sup"}).Out, "");
  const auto wrong = Run({"report", "--json=maybe", "missing.sup"});
  EXPECT_EQ(wrong.ExitCode, 2);
  EXPECT_TRUE(Json::parse(wrong.Out).contains("error"));
}

TEST_F(Usage, JsonBehindTheEndOfTheOptionsIsAFile) {
  EXPECT_EQ(Run({"report", "--", "--json"}).Out, "");
}

TEST_F(Usage, WrongUsageIsOneJsonDocumentToo) {
  const auto run = Run({"report", "--json"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_THAT(Json::parse(run.Out)["error"].get<std::string>(), StartsWith("FILE is required"));
}

TEST_F(Usage, FileNameThatIsNotUtf8SurvivesInJson) {
  const auto run = Run({"report", "--json", "\xFF\xFE.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(Json::parse(run.Out)["error"], "\xEF\xBF\xBD\xEF\xBF\xBD.sup: No such file or directory");
}

TEST_F(Usage, FileNameThatIsNotUtf8IsRead) {
  Write("\xFF.sup", test::Sound().Build());
  EXPECT_EQ(Run({"report", "\xFF.sup"}).ExitCode, 0);
}

TEST_F(Usage, FileNameThatIsNotUtf8IsNotWritten) {
  Write("a.sup", test::Sound().Build());
  const auto run = Run({"salvage", "a.sup", "-o", "\xFF.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, HasSubstr("the name is not in UTF-8"));
  EXPECT_THAT(Names(), testing::ElementsAre("a.sup"));
}

TEST_F(Usage, FolderIsNoStream) {
  EXPECT_EQ(Run({"report", "."}).Err, "quillmark-cli: .: it is a folder\n");
}

TEST_F(Usage, FullStandardOutputIsAFailure) {
  Write("a.sup", test::Sound().Build());
  const auto run = RunScript("quillmark-cli report a.sup >/dev/full");
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: standard output cannot be written\n");
  EXPECT_EQ(RunScript("quillmark-cli --version >/dev/full").ExitCode, 1);
  EXPECT_EQ(RunScript("quillmark-cli --help >/dev/full").ExitCode, 1);
  EXPECT_EQ(RunScript("quillmark-cli diff a.sup a.sup >/dev/full").ExitCode, 2) << "1 says that they differ";
}

}  // namespace
}  // namespace quillmark::cli
