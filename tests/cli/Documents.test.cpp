#include <fstream>
#include <regex>
#include <sstream>
#include <utility>

#include "render/MergeProblem.h"
#include "render/StreamDiff.h"
#include "sup/Mend.h"
#include "sup/StreamCheck.h"
#include "sup/ToolResult.h"
#include "tests/cli/Program.h"

namespace quillmark::cli {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAreArray;

std::string ReadSource(const std::string& name) {
  std::ifstream file(std::string(QUILLMARK_SOURCE "/") + name);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The fenced shell examples of the section with this heading, one string each.
std::vector<std::string> Examples(const std::string& document, const std::string& heading) {
  std::vector<std::string> examples;
  bool inSection = false;
  bool inExample = false;
  std::istringstream lines(document);
  for (std::string line; std::getline(lines, line);) {
    if (line == "```sh" && inSection) {
      inExample = true;
      examples.emplace_back();
    } else if (line == "```") {
      inExample = false;
    } else if (inExample) {
      examples.back() += line + "\n";
    } else if (line.starts_with("#")) {
      inSection = line == heading;
    }
  }
  return examples;
}

class DocumentTest : public test::ProgramTest {
 protected:
  /// Runs the examples one after another in one shell, as a reader of a fresh build would, and looks for what
  /// they write. The folder stands for the clone's: it has the samples and the built program, at their
  /// places.
  void RunAll(const std::vector<std::string>& examples) {
    std::filesystem::create_directories("build/release");
    std::filesystem::create_symlink(QUILLMARK_SAMPLES, "samples");
    std::filesystem::create_symlink(std::filesystem::path(test::TestedProgram()).parent_path(),
                                    "build/release/bin");
    std::string all;
    for (const std::string& example : examples) {
      all += example;
    }
    const auto run = RunScriptAsItStands(all);
    EXPECT_EQ(run.ExitCode, 0) << all << run.Err;
    const std::regex output("-o ([^ \n]+[.]sup)");
    for (std::sregex_iterator match(all.begin(), all.end(), output), end; match != end; ++match) {
      EXPECT_TRUE(Exists((*match)[1])) << (*match)[1];
    }
    EXPECT_TRUE(Exists("demo_SubPng"));
    EXPECT_TRUE(Exists("demo_spu.xml"));
  }
};

TEST_F(DocumentTest, ExamplesOfTheManualWork) {
  const std::string manual = ReadSource("docs/cli.md");
  auto examples = Examples(manual, "# quillmark-cli");
  ASSERT_EQ(examples.size(), 1U);  // where the program is found
  const auto five = Examples(manual, "## Five examples");
  EXPECT_EQ(five.size(), 5U);
  examples.insert(examples.end(), five.begin(), five.end());
  RunAll(examples);
}

TEST_F(DocumentTest, ExamplesOfTheReadmeWork) {
  const auto examples = Examples(ReadSource("README.md"), "## Command line");
  EXPECT_EQ(examples.size(), 7U);
  RunAll(examples);
}

/// The names (words between backticks) in the first columns of the tables of the section with this heading,
/// in their order, one list for each table.
std::vector<std::vector<std::string>> TableNames(const std::string& document, const std::string& heading) {
  std::vector<std::vector<std::string>> tables;
  bool inSection = false;
  bool inTable = false;
  const std::regex name("`([^`]*)`");
  std::istringstream lines(document);
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("#")) {
      inSection = line == heading;
    }
    if (!inSection || !line.starts_with("|")) {
      inTable = false;
      continue;
    }
    if (!std::exchange(inTable, true)) {
      tables.emplace_back();
    }
    const std::string column = line.substr(1, line.find('|', 1) - 1);
    for (std::sregex_iterator match(column.begin(), column.end(), name), end; match != end; ++match) {
      tables.back().push_back((*match)[1]);
    }
  }
  return tables;
}

std::vector<std::string> NamesOf(const Json& object) {
  std::vector<std::string> names;
  for (const auto& [name, value] : object.items()) {
    names.push_back(name);
  }
  return names;
}

class JsonTables : public test::ProgramTest {
 protected:
  /// The document that `command` --json writes of a stream whose first subtitle cannot be shown.
  Json Written(const char* command) {
    Write("a.sup", test::Sound().WithoutArea().Build());
    return Json::parse(Run({command, "a.sup", "--json"}).Out);
  }

  std::string manual_ = ReadSource("docs/cli.md");
};

TEST_F(JsonTables, TracksAreTold) {
  EXPECT_THAT(TableNames(manual_, "### tracks --json"), ElementsAre(NamesOf(Written("tracks")[0])));
}

TEST_F(JsonTables, OfTheReport) {
  EXPECT_THAT(TableNames(manual_, "### report --json"), ElementsAre(NamesOf(Written("report"))));
}

TEST_F(JsonTables, OfThePalettes) {
  const auto run = Run({"palettes", QUILLMARK_TEST_DATA "/palette/VTS_01_0-ntsc.IFO", "--json"});
  const Json chain = Json::parse(run.Out)[0];
  EXPECT_THAT(TableNames(manual_, "### palettes --json"),
              ElementsAre(NamesOf(chain), NamesOf(chain["substreams"][0])));
}

TEST_F(JsonTables, OfTheList) {
  EXPECT_THAT(TableNames(manual_, "### list --json"), ElementsAre(NamesOf(Written("list")[0])));
}

TEST_F(JsonTables, OfTheCheckAndItsCodes) {
  auto tables = TableNames(manual_, "### check --json");
  ASSERT_EQ(tables.size(), 3U);  // the last one is of codes for players
  EXPECT_EQ(tables[0], NamesOf(Written("check")[0]));
  tables[1].insert(tables[1].end(), tables[2].begin(), tables[2].end());
  std::vector<std::string> codes;
  for (int code = 0; code < StreamProblemCodes; ++code) {
    codes.emplace_back(ProblemName(static_cast<StreamProblemCode>(code)));
  }
  EXPECT_THAT(tables[1], UnorderedElementsAreArray(codes));
}

TEST_F(JsonTables, OfTheDiffAndItsWords) {
  auto tables = TableNames(manual_, "### diff --json");
  ASSERT_EQ(tables.size(), 2U);
  Write("a.sup", test::Sound().Build());
  EXPECT_EQ(tables[0], NamesOf(Json::parse(Run({"diff", "a.sup", "a.sup", "--json"}).Out)[0]));
  std::vector<std::string> words;
  for (int word = 0; word <= static_cast<int>(SubtitleDifference::Bytes); ++word) {
    words.emplace_back(DifferenceName(static_cast<SubtitleDifference>(word)));
  }
  words.emplace_back("other_trailing_bytes");
  EXPECT_THAT(tables[1], UnorderedElementsAreArray(words));
}

TEST_F(JsonTables, OfTheFixAndItsMends) {
  Write("a.sup", test::Sound().Build());
  EXPECT_EQ(TableNames(manual_, "### fix --json")[0],
            NamesOf(Json::parse(Run({"fix", "a.sup", "-o", "b.sup", "--json"}).Out)));
  std::vector<std::string> mends;
  for (int kind = 0; kind <= static_cast<int>(MendKind::MovedArea); ++kind) {
    mends.emplace_back(MendName(static_cast<MendKind>(kind)));
  }
  EXPECT_THAT(TableNames(manual_, "## Fixing"), ElementsAre(UnorderedElementsAreArray(mends)));
}

TEST_F(JsonTables, CodesHaveTheirSeverity) {
  for (int i = 0; i < StreamProblemCodes; ++i) {
    const auto code = static_cast<StreamProblemCode>(i);
    std::string severity(SeverityName(SeverityOf(code)));
    std::ranges::replace(severity, '_', ' ');
    const std::regex row("\n\\|[^|]*`" + std::string(ProblemName(code)) + "`[^|]*\\| " + severity + " \\|");
    EXPECT_TRUE(std::regex_search(manual_, row)) << ProblemName(code);
  }
}

TEST_F(JsonTables, OfTheToolsAndTheirCodes) {
  Write("a.sup", test::Sound().Build());
  auto tables = TableNames(manual_, "### Tools --json");
  ASSERT_EQ(tables.size(), 2U);
  EXPECT_EQ(tables[0], NamesOf(Json::parse(Run({"sort", "a.sup", "--dry-run", "--json"}).Out)));
  std::vector<std::string> codes;
  for (int code = 0; code <= static_cast<int>(LeftReason::DataAfterControl); ++code) {
    codes.emplace_back(LeftName(static_cast<LeftReason>(code)));
  }
  EXPECT_THAT(tables[1], UnorderedElementsAreArray(codes));
}

TEST_F(JsonTables, OfApply) {
  Write("a.sup", test::Sound().Build());
  WriteText("r.json", R"({"version": 1, "steps": []})");
  const Json array = Json::parse(Run({"apply", "r.json", "a.sup", "--out-dir", "out", "--json"}).Out);
  EXPECT_THAT(TableNames(manual_, "### apply --json"), ElementsAre(NamesOf(array[0])));
}

/// The long options that a text names.
std::vector<std::string> LongOptions(const std::string& text) {
  std::vector<std::string> options;
  const std::regex option("--[a-z][a-z-]*");
  for (std::sregex_iterator match(text.begin(), text.end(), option), end; match != end; ++match) {
    options.push_back(match->str());
  }
  std::ranges::sort(options);
  options.erase(std::unique(options.begin(), options.end()), options.end());
  return options;
}

TEST_F(JsonTables, OfTheMergesDryRun) {
  Write("a.sup", test::Sound().WithoutArea().Build());
  Write("b.sup", test::Sound().Build());
  const Json review = Json::parse(Run({"merge", "a.sup", "b.sup", "--dry-run", "--json"}).Out);
  const auto tables = TableNames(manual_, "### merge --dry-run --json");
  ASSERT_EQ(tables.size(), 3U);
  EXPECT_THAT(NamesOf(review), UnorderedElementsAreArray(tables[0]));
  ASSERT_EQ(review["pairs"].size(), 1U);
  EXPECT_THAT(NamesOf(review["pairs"][0]), UnorderedElementsAreArray(tables[1]));
  std::vector<std::string> codes;
  for (std::size_t kind = 0; kind < MergeProblemKinds; ++kind) {
    codes.emplace_back(MergeProblemName(static_cast<MergeProblemKind>(kind)));
  }
  EXPECT_EQ(tables[2], codes);
}

class CommandDocuments : public test::ProgramTest, public testing::WithParamInterface<const char*> {
 protected:
  /// What the program itself says that the command takes.
  std::vector<std::string> Options() {
    const std::string help = Run({GetParam(), "--help"}).Out;
    std::vector<std::string> options;
    std::istringstream lines(help.substr(help.find("\nOptions:")));
    const std::regex option("^  (?:-[a-z],)?(--[a-z-]+)");
    for (std::string line; std::getline(lines, line);) {
      if (std::smatch match; std::regex_search(line, match, option)) {
        options.push_back(match[1]);
      }
    }
    std::ranges::sort(options);
    return options;
  }
};

TEST_P(CommandDocuments, CompletionOffersItsOptions) {
  // What the shell's own completion functions do does not matter here.
  const auto run =
      RunScript(std::string("_init_completion() { cur=-; prev=x; words=(quillmark-cli ") + GetParam() +
                " -); cword=2; }\n_filedir() { :; }\n"
                ". " QUILLMARK_SOURCE
                "/completions/quillmark-cli\n_quillmark_cli\n"
                "printf '%s\\n' \"${COMPREPLY[@]}\"");
  EXPECT_EQ(run.ExitCode, 0) << run.Err;
  EXPECT_EQ(LongOptions(run.Out), Options());
}

TEST_P(CommandDocuments, ManualPageNamesItsOptions) {
  const std::string page = ReadSource("docs/man/quillmark-cli.1");
  EXPECT_NE(page.find(std::string(".It Cm ") + GetParam() + "\n"), std::string::npos);
  for (const std::string& option : Options()) {
    EXPECT_NE(page.find("Fl -" + option.substr(2)), std::string::npos) << option;
  }
}

TEST_P(CommandDocuments, ManualHasARowForIt) {
  EXPECT_THAT(ReadSource("docs/cli.md"), testing::HasSubstr("\n| `" + std::string(GetParam()) + " "));
}

INSTANTIATE_TEST_SUITE_P(Commands, CommandDocuments,
                         testing::Values("report", "list", "picture", "export", "assign", "retime", "move",
                                         "force", "ends", "cut", "keep", "sort", "join", "fix", "apply",
                                         "palette", "palettes", "merge", "check", "diff", "salvage", "help"),
                         [](const auto& test) { return test.param; });

class ManualPages : public test::ProgramTest {};

TEST_F(ManualPages, AreWithoutErrors) {
  if (RunScript("command -v groff").ExitCode != 0) {
    GTEST_SKIP() << "groff is not installed";
  }
  for (const char* page : {"quillmark.1", "quillmark-cli.1"}) {
    const auto run = RunScript(std::string("groff -mdoc -Tascii -ww " QUILLMARK_SOURCE "/docs/man/") + page);
    EXPECT_EQ(run.ExitCode, 0);
    EXPECT_THAT(run.Err, IsEmpty());
  }
}

}  // namespace
}  // namespace quillmark::cli
