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

TEST_F(Usage, HelpNamesEveryCommand) {
  const auto run = Run({"--help"});
  EXPECT_EQ(run.ExitCode, 0);
  for (const char* command :
       {"report", "list", "picture", "export", "assign", "palette", "merge", "check", "salvage"}) {
    EXPECT_THAT(run.Out, HasSubstr(command));
  }
  EXPECT_THAT(run.Err, IsEmpty());
}

TEST_F(Usage, HelpOfACommandNamesItsOptions) {
  const auto run = Run({"merge", "--help"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_THAT(run.Out, AllOf(HasSubstr("--y-offset"), HasSubstr("--frame"), HasSubstr("--palette"),
                             HasSubstr("PRIMARY"), HasSubstr("SECONDARY")));
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
        WrongCase{"NoOutput", {"salvage", "x.sup"}, "--output is required"},
        WrongCase{"NoNumber", {"picture", "x.sup", "-o", "x.png"}, "N is required"},
        WrongCase{"NumberZero",
                  {"picture", "x.sup", "0", "-o", "x.png"},
                  "N: Value 0 not in range 1 to 2147483647"},
        WrongCase{"PictureIsNoPng",
                  {"picture", "x.sup", "1", "-o", "x.jpg"},
                  "--output: 'x.jpg' does not end in .png"},
        WrongCase{"FrameOfAnotherSize",
                  {"picture", "x.sup", "1", "-o", "x.png", "--frame", "500"},
                  "--frame: '500' is neither 480 nor 576"},
        WrongCase{"RangeBackwards",
                  {"export", "x.sup", "--only", "5-3"},
                  "--only: '5-3' is no range such as 3-7, 3 or 3-"},
        WrongCase{"RangeFromZero",
                  {"export", "x.sup", "--only", "0-"},
                  "--only: '0-' is no range such as 3-7, 3 or 3-"},
        WrongCase{"ThreeDigits",
                  {"assign", "x.sup", "--colours", "012", "-o", "y.sup"},
                  "--colours: '012' is not four hexadecimal digits"},
        WrongCase{"NoHexadecimalDigit",
                  {"assign", "x.sup", "--opacities", "00G0", "-o", "y.sup"},
                  "--opacities: '00G0' is not four hexadecimal digits"},
        WrongCase{"NothingToAssign",
                  {"assign", "x.sup", "-o", "y.sup"},
                  "assign needs --colours, --opacities or both"},
        WrongCase{"PaletteAsPicture",
                  {"palette", "x.ifo", "-o", "y.png"},
                  "--output: 'y.png' does not end in .pal or .rgb"},
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
}

}  // namespace
}  // namespace quillmark::cli
