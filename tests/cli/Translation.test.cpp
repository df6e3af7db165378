#include <algorithm>
#include <cstdlib>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "base/Words.h"
#include "tests/cli/Program.h"

namespace quillmark::cli {
namespace {

std::optional<std::string> BetweenBraces(const char* /*context*/, const char* text, const char* many,
                                         int count) {
  return "{" + std::string(count < 0 || count == 1 ? text : many) + "}";
}

/// Whether the text has a word that is not between braces, where no option, command, value or file stands.
std::string UntranslatedWord(const std::string& output) {
  std::string plain;
  int depth = 0;
  for (const char letter : output) {
    depth += letter == '{' ? 1 : 0;
    plain += depth == 0 ? letter : '.';
    depth -= letter == '}' ? 1 : 0;
  }
  std::istringstream lines(plain);
  for (std::string line; std::getline(lines, line);) {
    // In help the first column names commands and options.
    std::istringstream words(line.starts_with("  ") ? line.substr(std::min<std::size_t>(line.size(), 30))
                                                    : line);
    for (std::string word; words >> word;) {
      const bool isName = word.find_first_of("-_.|=[]<>:/#0123456789") != std::string::npos;
      if (!isName && word.find_first_of("abcdefghijklmnopqrstuvwxyz") != std::string::npos) {
        return word + " in: " + line;
      }
    }
  }
  return {};
}

class SpokenCommands : public test::ProgramTest {
 protected:
  void SetUp() override {
    if (std::getenv("QUILLMARK_TESTED_CLI") != nullptr) {
      GTEST_SKIP() << "a program of its own has a translator of its own";
    }
  }
  SpokenCommands() {
    Write("a.sup", test::Join({test::PacketBuilder().Build(), test::PacketBuilder().Time(1).Build()}));
  }
  ~SpokenCommands() override { InstallTranslator(nullptr); }

  void ExpectTranslated(const std::vector<std::string>& arguments) {
    InstallTranslator(BetweenBraces);
    const test::ProgramRun run = Run(arguments);
    EXPECT_EQ(UntranslatedWord(run.Out), "") << arguments.front();
    EXPECT_EQ(UntranslatedWord(run.Err), "") << arguments.front();
  }
};

TEST_F(SpokenCommands, HelpIsTranslatedWhole) {
  ExpectTranslated({"--help"});
  for (const char* command :
       {"report", "list",   "check", "diff",    "tracks",  "palettes", "picture", "export",
        "assign", "retime", "move",  "force",   "ends",    "cut",      "keep",    "sort",
        "join",   "fix",    "apply", "palette", "salvage", "merge",    "convert", "help"}) {
    ExpectTranslated({command, "--help"});
  }
}

TEST_F(SpokenCommands, OutputAndMessagesAreTranslatedWhole) {
  Write("b.sup", test::PacketBuilder().Time(5).WithoutColour().Build());
  Write("broken.sup", test::Join({test::PacketBuilder().Build(), test::Bytes(40)}));
  ExpectTranslated({"report", "a.sup"});
  ExpectTranslated({"list", "b.sup"});
  ExpectTranslated({"check", "broken.sup", "--profile", "player"});
  ExpectTranslated({"diff", "a.sup", "b.sup"});
  ExpectTranslated({"tracks", "a.sup"});
  ExpectTranslated({"fix", "broken.sup", "--dry-run"});
  ExpectTranslated({"salvage", "broken.sup", "-o", "s.sup"});
  ExpectTranslated({"merge", "a.sup", "a.sup", "--dry-run"});
  ExpectTranslated({"retime", "a.sup", "--shift", "40", "--dry-run"});
  ExpectTranslated({"move", "a.sup", "-o", "m.sup"});
  ExpectTranslated({"report"});
  ExpectTranslated({"picture", "a.sup", "9", "-o", "p.png"});
  ExpectTranslated({"list", "a.sup", "--frame"});
}

TEST_F(SpokenCommands, ProgramSpeaksTheUsersLanguage) {
  EXPECT_THAT(RunScript("LANGUAGE=de quillmark-cli report a.sup").Out,
              testing::StartsWith("Gefundene Untertitel: "));
  EXPECT_THAT(RunScript("LANGUAGE=en quillmark-cli report a.sup").Out,
              testing::StartsWith("Found Subtitles: "));
}

/// What scripts read is the same everywhere.
TEST_F(SpokenCommands, JsonIsEnglish) {
  const std::vector<std::vector<std::string>> commands = {{"check", "a.sup", "--json", "--profile", "player"},
                                                          {"move", "a.sup", "--json", "-o", "m.sup"}};
  for (const std::vector<std::string>& arguments : commands) {
    InstallTranslator(nullptr);
    const test::ProgramRun english = Run(arguments);
    InstallTranslator(BetweenBraces);
    const test::ProgramRun spoken = Run(arguments);
    EXPECT_EQ(spoken.Out, english.Out);
    EXPECT_EQ(spoken.Err, english.Err);
  }
}

}  // namespace
}  // namespace quillmark::cli
