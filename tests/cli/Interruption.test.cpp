#include "cli/Interruption.h"

#include <csignal>
#include <optional>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

#include "cli/CommandLine.h"
#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "cli/ToolCommand.h"
#include "tests/cli/Program.h"
#include "tests/support/IfoBuilder.h"

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::Join;
using test::Second;
using test::Sound;
using testing::ElementsAre;
using testing::IsEmpty;

/// Not ignored to begin with, as it is by what a shell starts in the background.
class UsualInterruption {
 public:
  UsualInterruption() : previous_(std::signal(SIGINT, SIG_DFL)) {}
  ~UsualInterruption() { std::signal(SIGINT, previous_); }
  UsualInterruption(const UsualInterruption&) = delete;
  UsualInterruption& operator=(const UsualInterruption&) = delete;

 private:
  void (*previous_)(int);
};

class InterruptionGuardTest : public testing::Test {
 private:
  UsualInterruption usual_;
};

TEST_F(InterruptionGuardTest, RemembersTheFirstSignal) {
  const InterruptionGuard guard;
  EXPECT_FALSE(InterruptionGuard::Interrupted());
  std::raise(SIGINT);
  EXPECT_TRUE(InterruptionGuard::Interrupted());
}

TEST_F(InterruptionGuardTest, SecondSignalEndsTheProgram) {
  EXPECT_EXIT(
      {
        const InterruptionGuard guard;
        std::raise(SIGINT);
        std::raise(SIGINT);
      },
      testing::KilledBySignal(SIGINT), "");
}

TEST_F(InterruptionGuardTest, IgnoredSignalStaysIgnored) {
  const auto previous = std::signal(SIGINT, SIG_IGN);
  {
    const InterruptionGuard guard;
    std::raise(SIGINT);
    EXPECT_FALSE(InterruptionGuard::Interrupted());
  }
  EXPECT_EQ(std::signal(SIGINT, previous), SIG_IGN);
}

/// A command's standard output, which looks what an interruption would do while something is written to it.
class WatchingBuffer : public std::stringbuf {
 public:
  void Look() {
    const auto handler = std::signal(SIGINT, SIG_DFL);
    std::signal(SIGINT, handler);
    isWaited_ = isWaited_.value_or(false) || handler != SIG_DFL;
  }

  /// Whether one would be waited for; nothing where nobody looked.
  [[nodiscard]] std::optional<bool> IsWaited() const { return isWaited_; }

 protected:
  std::streamsize xsputn(const char* text, std::streamsize length) override {
    Look();
    return std::stringbuf::xsputn(text, length);
  }

 private:
  std::optional<bool> isWaited_;
};

class InterruptionOfACommandLine : public test::ProgramTest {
 protected:
  InterruptionOfACommandLine() {
    Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).Build()}));
    WriteText("a.json", R"({"version": 1, "steps": [{"tool": "retime", "shift": 1}]})");
    Write("a.ifo", test::TitleSetFile({{}}));
  }

  /// Whether one is waited for while the command is at work.
  static std::optional<bool> IsWaitedFor(const std::vector<std::string>& arguments) {
    WatchingBuffer buffer;
    std::ostream out(&buffer);
    std::ostringstream err;
    const Console console{.Out = out, .Err = err, .Interrupted = [&buffer] {
                            buffer.Look();
                            return false;
                          }};
    EXPECT_EQ(RunCommandLine(arguments, console), 0) << arguments[0] << ": " << err.str();
    return buffer.IsWaited();
  }

 private:
  UsualInterruption usual_;
};

TEST_F(InterruptionOfACommandLine, IsWaitedForWhereFilesAreWritten) {
  const std::vector<std::vector<std::string>> commandLines = {
      {"picture", "a.sup", "1", "-o", "a.png"},
      {"export", "a.sup"},
      {"retime", "a.sup", "--shift", "1", "-o", "b.sup"},
      {"join", "a.sup", "a.sup", "-o", "b.sup"},
      {"fix", "a.sup", "-o", "b.sup"},
      {"apply", "a.json", "a.sup", "--out-dir", "out"},
      {"palette", "a.ifo", "-o", "b.pal"},
      {"convert", "a.sup", "-o", "b.idx"},
      {"merge", "a.sup", "a.sup", "-o", "b.sup"},
      {"salvage", "a.sup", "-o", "b.sup"}};
  for (const auto& commandLine : commandLines) {
    EXPECT_EQ(IsWaitedFor(commandLine), true) << commandLine[0];
  }
}

TEST_F(InterruptionOfACommandLine, EndsTheProgramWhereFilesAreOnlyRead) {
  const std::vector<std::vector<std::string>> commandLines = {
      {"report", "a.sup"}, {"list", "a.sup"},     {"check", "a.sup"}, {"diff", "a.sup", "a.sup"},
      {"tracks", "a.sup"}, {"palettes", "a.ifo"}, {"help", "merge"}};
  for (const auto& commandLine : commandLines) {
    EXPECT_EQ(IsWaitedFor(commandLine), false) << commandLine[0];
  }
}

/// Commands called in this process, with an interruption after some steps.
class InterruptedCommand : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).Build(), Sound(9 * Second).Build()}));
  }

  /// Interrupted when asked for the `steps` + 1st time.
  Console After(int steps) {
    return {.Out = out_, .Err = err_, .ErrIsTerminal = false, .Interrupted = [this, steps] {
              return asked_++ >= steps;
            }};
  }

  std::ostringstream out_;
  std::ostringstream err_;
  int asked_ = 0;
};

TEST_F(InterruptedCommand, ExportLeavesWholePicturesAndTheOldList) {
  WriteText("a_spu.xml", "an older list");
  // Asked once before it makes the folder, then before each subtitle.
  const CommandResult result = Export({.File = Path("a.sup")}, After(3));
  EXPECT_EQ(result.Code, ExitCode::Interrupted);
  EXPECT_TRUE(Exists("a_SubPng/00+00+01+00.png"));
  EXPECT_TRUE(Exists("a_SubPng/00+00+05+00.png"));
  EXPECT_FALSE(Exists("a_SubPng/00+00+09+00.png"));
  EXPECT_EQ(ReadText("a_spu.xml"), "an older list");
}

TEST_F(InterruptedCommand, ExportBeforeItsFirstStepLeavesNothing) {
  EXPECT_EQ(Export({.File = Path("a.sup")}, After(0)).Code, ExitCode::Interrupted);
  EXPECT_THAT(Names(), ElementsAre("a.sup"));
}

TEST_F(InterruptedCommand, MergeLeavesTheOldFile) {
  WriteText("c.sup", "as it was");
  const MergeOptions options{.Primary = Path("a.sup"), .Secondary = Path("a.sup"), .Out = Path("c.sup")};
  EXPECT_EQ(Merge(options, After(2)).Code, ExitCode::Interrupted);
  EXPECT_EQ(ReadText("c.sup"), "as it was");
  EXPECT_THAT(Names(), ElementsAre("a.sup", "c.sup"));
}

TEST_F(InterruptedCommand, OtherCommandsLeaveNothing) {
  EXPECT_EQ(Salvage({.File = Path("a.sup"), .Out = Path("b.sup")}, After(0)).Code, ExitCode::Interrupted);
  const StepText assign{.Tool = "assign", .Options = {{"colours", "...."}}};
  EXPECT_EQ(RunTool({.Step = assign, .File = Path("a.sup"), .Out = Path("b.sup")}, After(0)).Code,
            ExitCode::Interrupted);
  EXPECT_EQ(Join({.Files = {Path("a.sup"), Path("a.sup")}, .Out = Path("b.sup")}, After(0)).Code,
            ExitCode::Interrupted);
  EXPECT_EQ(Picture({.File = Path("a.sup"), .Out = Path("b.png")}, After(0)).Code, ExitCode::Interrupted);
  EXPECT_THAT(Names(), ElementsAre("a.sup"));
  EXPECT_THAT(out_.str(), IsEmpty());
}

/// The program as a child that tells everything to a pipe that nobody empties.
class InterruptedProgram : public test::ProgramTest {
 protected:
  void Start(const std::vector<std::string>& arguments) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    std::vector<std::string> words = {test::TestedProgram()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words) {
      argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    child_ = fork();
    if (child_ == 0) {
      dup2(ends[1], STDOUT_FILENO);
      dup2(ends[1], STDERR_FILENO);
      close(ends[0]);
      close(ends[1]);
      // As where a shell did not start it in the background.
      std::signal(SIGINT, SIG_DFL);
      execv(argv[0], argv.data());
      _exit(127);
    }
    close(ends[1]);
    output_ = ends[0];
  }

  /// Waits until the program has said something.
  void AwaitFirstWord() {
    char first = 0;
    ASSERT_EQ(read(output_, &first, 1), 1);
  }

  int AwaitEnd() {
    char bytes[4096];
    while (read(output_, bytes, sizeof bytes) > 0) {
    }
    close(output_);
    int status = 0;
    waitpid(child_, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
  }

  pid_t child_ = -1;
  int output_ = -1;
};

TEST_F(InterruptedProgram, ExportEndsInOrder) {
  // Telling of its 20,000 bad subtitles takes more than any pipe holds, so that the program is still at them
  // when it is interrupted; it never comes to the last, good one.
  Bytes stream = Sound(Second).Build();
  const Bytes bad = Sound(5 * Second).WithoutArea().Build();
  for (int i = 0; i < 20000; ++i) {
    stream.insert(stream.end(), bad.begin(), bad.end());
  }
  const Bytes last = Sound(9 * Second).Build();
  stream.insert(stream.end(), last.begin(), last.end());
  Write("a.sup", stream);
  WriteText("b_spu.xml", "an older list");

  Start({"export", Path("a.sup"), "--out", Path("b")});
  AwaitFirstWord();
  ASSERT_EQ(kill(child_, SIGINT), 0);
  EXPECT_EQ(AwaitEnd(), 130);

  EXPECT_TRUE(Exists("b_SubPng/00+00+01+00.png"));
  EXPECT_FALSE(Exists("b_SubPng/00+00+09+00.png"));
  EXPECT_EQ(ReadText("b_spu.xml"), "an older list");
  EXPECT_THAT(Names(), ElementsAre("a.sup", "b_SubPng", "b_spu.xml"));
}

/// There is nothing that they would have to end first.
TEST_F(InterruptedProgram, ReadingCommandsEndAtOnce) {
  Bytes stream = Sound(Second).Build();
  Bytes other = stream;
  const Bytes bad = Sound(5 * Second).WithoutArea().Build();
  const Bytes sound = Sound(5 * Second).Build();
  for (int i = 0; i < 20000; ++i) {
    stream.insert(stream.end(), bad.begin(), bad.end());
    other.insert(other.end(), sound.begin(), sound.end());
  }
  Write("a.sup", stream);
  Write("b.sup", other);
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"list", Path("a.sup")},
                                                    {"check", Path("a.sup")},
                                                    {"diff", Path("a.sup"), Path("b.sup")}}) {
    Start(arguments);
    AwaitFirstWord();
    ASSERT_EQ(kill(child_, SIGINT), 0);
    EXPECT_EQ(AwaitEnd(), -SIGINT) << arguments[0];
  }
}

/// Commands called in this process as at a terminal.
class CommandAtATerminal : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).Build(), Sound(9 * Second).Build(),
                         Sound(13 * Second).Build()}));
  }

  /// What the bars say that one after the other stood there.
  std::vector<int> Percents() {
    std::vector<int> percents;
    const std::string told = err_.str();
    for (std::size_t end = told.find('%'); end != std::string::npos; end = told.find('%', end + 1)) {
      percents.push_back(std::stoi(told.substr(end - 3, 3)));
    }
    EXPECT_TRUE(told.ends_with("\r\033[K")) << "the last one is taken away";
    err_.str("");
    return percents;
  }

  std::ostringstream out_;
  std::ostringstream err_;
  Console console_{.Out = out_, .Err = err_, .ErrIsTerminal = true};
};

TEST_F(CommandAtATerminal, ShowsHowFarItIs) {
  ASSERT_TRUE(Export({.File = Path("a.sup")}, console_).IsDone());
  EXPECT_THAT(Percents(), ElementsAre(0, 25, 50, 75));
  const MergeOptions merge{.Primary = Path("a.sup"), .Secondary = Path("a.sup"), .Out = Path("c.sup")};
  ASSERT_TRUE(Merge(merge, console_).IsDone());
  EXPECT_THAT(Percents(), ElementsAre(0, 25, 50, 75));
  // A pair as small as this is one piece.
  ASSERT_TRUE(Convert({.Files = {Path("a.sup")}, .Out = Path("c.idx")}, console_).IsDone());
  EXPECT_THAT(Percents(), ElementsAre(100));
  ASSERT_TRUE(Convert({.Files = {Path("a.sup")}, .Out = Path("c.xml")}, console_).IsDone());
  EXPECT_THAT(Percents(), ElementsAre(0, 25, 50, 75, 100));
}

TEST_F(CommandAtATerminal, SaysNothingBehindABar) {
  Write("b.sup", Join({Sound(Second).Build(), Sound(5 * Second).WithoutArea().Build(),
                       Sound(std::int64_t{1} << 32).Build()}));
  EXPECT_FALSE(Export({.File = Path("b.sup")}, console_).IsDone());
  EXPECT_THAT(err_.str(), testing::HasSubstr("\r\033[Kquillmark-cli: " + Path("b.sup") + ": subtitle 2 "));
  err_.str("");
  EXPECT_FALSE(Convert({.Files = {Path("b.sup")}, .Out = Path("c.xml")}, console_).IsDone());
  EXPECT_THAT(err_.str(), testing::HasSubstr("\r\033[Kquillmark-cli: " + Path("b.sup") + ": subtitle "));
}

TEST(ProgressBarTest, SaysNothingWhereThereIsNoTerminal) {
  std::ostringstream out;
  std::ostringstream err;
  const Console console{.Out = out, .Err = err};
  ProgressBar(console, 10).Show(5);
  EXPECT_THAT(err.str(), IsEmpty());
}

TEST(ProgressBarTest, GoesAwayOnce) {
  std::ostringstream out;
  std::ostringstream err;
  const Console console{.Out = out, .Err = err, .ErrIsTerminal = true};
  {
    ProgressBar progress(console, 1000);
    progress.Show(0);
    progress.Clear();
  }
  EXPECT_EQ(err.str(), "\r\033[K[                                        ]   0%\r\033[K");
}

TEST(ProgressBarTest, DrawsEachPercentOnceAndGoesAway) {
  std::ostringstream out;
  std::ostringstream err;
  const Console console{.Out = out, .Err = err, .ErrIsTerminal = true};
  {
    ProgressBar progress(console, 1000);
    progress.Show(0);
    progress.Show(9);
    progress.Show(500);
  }
  EXPECT_EQ(err.str(),
            "\r\033[K[                                        ]   0%"
            "\r\033[K[####################                    ]  50%"
            "\r\033[K");
  EXPECT_THAT(out.str(), IsEmpty());
}

}  // namespace
}  // namespace quillmark::cli
