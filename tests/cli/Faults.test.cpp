#include <map>
#include <set>

#include "tests/cli/Program.h"
#include "tests/support/FaultySystem.h"

// Every command that writes, with each of its system calls failing in turn: afterwards every file is as it
// was or complete, nothing else stands beside it, and the message names a file.

namespace quillmark::cli {
namespace {

namespace fs = std::filesystem;
using test::Call;
using test::Fault;
using test::FaultySystem;
using test::Join;
using test::ProgramRun;
using test::Second;
using test::Sound;

struct Command {
  const char* Name;
  std::vector<std::string> Arguments;
  std::vector<std::string> Written;  ///< of it, that is there before in a second run
};

void PrintTo(const Command& command, std::ostream* out) {
  *out << command.Name;
}

/// What a folder holds: a text for each file, nothing for a folder.
using Content = std::map<std::string, std::optional<std::string>>;

class FaultsOfCommand : public test::ProgramTest, public testing::WithParamInterface<Command> {
 protected:
  void SetUp() override {
    if (std::getenv("QUILLMARK_TESTED_CLI") != nullptr) {
      GTEST_SKIP() << "a program of its own has system calls of its own";
    }
    Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).Build()}));
    Write("b.sup", Sound(2 * Second).Build());
    std::string palette;
    for (int entry = 0; entry < 16; ++entry) {
      palette += "108080\r\n";
    }
    WriteText("p.pal", palette);
    WriteText("r.json", R"({"version": 1, "steps": [{"tool": "retime", "shift": 40}]})");
    inputs_ = Held();
  }

  [[nodiscard]] Content Held() const {
    Content content;
    for (const auto& entry : fs::recursive_directory_iterator(".")) {
      const std::string name = entry.path().generic_string();
      content[name] = entry.is_directory() ? std::nullopt : std::optional(ReadText(name));
    }
    return content;
  }

  void Restore(const Content& content) {
    std::vector<fs::path> gone;
    for (const auto& entry : fs::directory_iterator(".")) {
      if (!content.contains(entry.path().generic_string())) {
        gone.push_back(entry.path());
      }
    }
    for (const fs::path& path : gone) {
      fs::remove_all(path);
    }
    for (const auto& [name, text] : content) {
      if (!text) {
        fs::create_directory(name);
      } else {
        WriteText(name, *text);
      }
    }
  }

  /// Runs the command on these files without a fault and then with each.
  void RunAll(const Content& before) {
    Restore(before);
    std::vector<Fault> faults;
    {
      const FaultySystem system;
      const ProgramRun run = Run(GetParam().Arguments);
      ASSERT_EQ(run.ExitCode, 0) << run.Err;
      faults = system.Faults();
    }
    const Content complete = Held();
    ASSERT_NE(complete, before);
    for (const auto& [name, text] : complete) {
      ASSERT_FALSE(name.ends_with(".old") || name.ends_with(".tmp")) << name << " is left behind";
    }
    ASSERT_FALSE(faults.empty());
    for (const Fault& fault : faults) {
      Restore(before);
      const FaultySystem system(fault);
      const ProgramRun run = Run(GetParam().Arguments);
      const std::string where = std::string(test::CallNames[static_cast<std::size_t>(fault.Kind)]) + " " +
                                std::to_string(fault.Number) + " after " + std::to_string(fault.Taken) +
                                " bytes: " + run.Err;
      ASSERT_TRUE(system.HasFailed()) << where;
      RequireWhole(before, complete, fault, where);
      if (run.ExitCode != 0) {
        ASSERT_TRUE(NamesOne(run.Err, before, complete)) << where;
      } else if (fault.Kind != Call::Remove) {
        ASSERT_EQ(Held(), complete) << where;
      }
    }
  }

 private:
  void RequireWhole(const Content& before, const Content& complete, const Fault& fault,
                    const std::string& where) const {
    const Content now = Held();
    for (const auto& [name, text] : now) {
      const auto old = before.find(name);
      const auto whole = complete.find(name);
      const bool isOld = old != before.end() && old->second == text;
      const bool isWhole = whole != complete.end() && whole->second == text;
      // What cannot be removed stays.
      ASSERT_TRUE(isOld || isWhole || fault.Kind == Call::Remove) << name << " after " << where;
    }
    for (const auto& [name, text] : before) {
      ASSERT_TRUE(now.contains(name) || !complete.contains(name)) << name << " is gone after " << where;
    }
  }

  /// A file or folder that the command writes.
  static bool NamesOne(const std::string& message, const Content& before, const Content& complete) {
    for (const auto& [name, text] : complete) {
      const auto old = before.find(name);
      const bool isWritten = old == before.end() || old->second != text;
      if (isWritten && message.find(fs::path(name).filename().string()) != std::string::npos) {
        return true;
      }
    }
    return false;
  }

 protected:
  Content inputs_;
};

TEST_P(FaultsOfCommand, LeaveNewFilesWholeOrNone) {
  RunAll(inputs_);
}

TEST_P(FaultsOfCommand, LeaveOldFilesAsTheyWereOrWhole) {
  if (GetParam().Written.empty()) {
    return;  // written as the others do
  }
  Content before = inputs_;
  for (const std::string& name : GetParam().Written) {
    before["./" + name] = "as it was";
  }
  RunAll(before);
}

INSTANTIATE_TEST_SUITE_P(
    Cli, FaultsOfCommand,
    testing::Values(Command{"picture", {"picture", "a.sup", "1", "-o", "o.png"}, {"o.png"}},
                    Command{"export", {"export", "a.sup", "-o", "o"}, {"o_spu.xml"}},
                    Command{"assign", {"assign", "a.sup", "--colours", ".4..", "-o", "o.sup"}, {"o.sup"}},
                    Command{"retime", {"retime", "a.sup", "--shift", "40", "-o", "o.sup"}, {}},
                    Command{"move", {"move", "a.sup", "--y", "2", "-o", "o.sup"}, {}},
                    Command{"force", {"force", "on", "a.sup", "-o", "o.sup"}, {}},
                    Command{"ends", {"ends", "a.sup", "--shortest", "4000", "-o", "o.sup"}, {}},
                    Command{"cut", {"cut", "a.sup", "--only", "1", "-o", "o.sup"}, {}},
                    Command{"keep", {"keep", "a.sup", "--only", "1", "-o", "o.sup"}, {}},
                    Command{"sort", {"sort", "a.sup", "-o", "o.sup"}, {}},
                    Command{"join", {"join", "a.sup", "b.sup", "-o", "o.sup"}, {}},
                    Command{"fix", {"fix", "a.sup", "-o", "o.sup"}, {}},
                    Command{"salvage", {"salvage", "a.sup", "-o", "o.sup"}, {"o.sup"}},
                    Command{"apply", {"apply", "r.json", "a.sup", "b.sup", "--out-dir", "out"}, {}},
                    Command{"palette", {"palette", "p.pal", "-o", "o.pal"}, {"o.pal"}},
                    Command{"merge", {"merge", "a.sup", "b.sup", "-o", "o.sup"}, {"o.sup"}},
                    Command{"convert_sup", {"convert", "a.sup", "-o", "o.sup"}, {"o.sup"}},
                    Command{"convert_idx", {"convert", "a.sup", "-o", "o.idx"}, {"o.idx", "o.sub"}},
                    Command{"convert_xml", {"convert", "a.sup", "-o", "o.xml"}, {}}),
    [](const auto& info) { return std::string(info.param.Name); });

}  // namespace
}  // namespace quillmark::cli
