#include "tests/cli/Program.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <sys/wait.h>
#include <system_error>

#include "cli/CommandLine.h"

namespace quillmark::test {
namespace {

std::string Quoted(const std::string& word) {
  std::string quoted(1, '\'');
  for (const char c : word) {
    if (c == '\'') {
      quoted.append("'\\'");
    }
    quoted.push_back(c);
  }
  quoted.push_back('\'');
  return quoted;
}

/// Names the program that is tested in place of the one of the same build.
constexpr const char* OtherProgram = "QUILLMARK_TESTED_CLI";

std::string ReadAll(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

ProgramTest::ProgramTest() {
  std::string pattern = testing::TempDir() + "quillmark-cli-XXXXXX";
  folder_ = mkdtemp(pattern.data());
  previousFolder_ = std::filesystem::current_path();
  std::filesystem::current_path(folder_);
}

ProgramTest::~ProgramTest() {
  std::error_code ignored;
  std::filesystem::current_path(previousFolder_, ignored);
  std::filesystem::remove_all(folder_, ignored);
}

std::string TestedProgram() {
  const char* other = std::getenv(OtherProgram);
  return other != nullptr ? other : QUILLMARK_CLI;
}

ProgramRun ProgramTest::Run(const std::vector<std::string>& arguments) {
  if (std::getenv(OtherProgram) != nullptr) {
    std::string command = Quoted(TestedProgram());
    for (const std::string& argument : arguments) {
      command += " " + Quoted(argument);
    }
    return RunCommand(command);
  }
  std::ostringstream out;
  std::ostringstream err;
  const cli::Console console{.Out = out, .Err = err};
  const int code = cli::RunCommandLine(arguments, console);
  return {.ExitCode = code, .Out = out.str(), .Err = err.str()};
}

ProgramRun ProgramTest::RunScript(const std::string& script) {
  const std::filesystem::path binaries = std::filesystem::path(TestedProgram()).parent_path();
  return RunScriptAsItStands("export PATH=" + Quoted(binaries.string()) + ":$PATH\n" + script);
}

ProgramRun ProgramTest::RunScriptAsItStands(const std::string& script) {
  std::ofstream(Path(".script")) << "set -e\n"
                                 << "cd " << Quoted(Path(".")) << '\n'
                                 << "unset DISPLAY WAYLAND_DISPLAY\n"
                                 << "export QT_QPA_PLATFORM=none\n"
                                 << script << '\n';
  return RunCommand("bash " + Quoted(Path(".script")));
}

ProgramRun ProgramTest::RunCommand(const std::string& command) {
  const int status = std::system(
      (command + " >" + Quoted(Path(".out")) + " 2>" + Quoted(Path(".err")) + " </dev/null").c_str());
  return {.ExitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1,
          .Out = ReadAll(Path(".out")),
          .Err = ReadAll(Path(".err"))};
}

std::string ProgramTest::Path(const std::string& name) const {
  return (folder_ / name).string();
}

void ProgramTest::Write(const std::string& name, const Bytes& bytes) const {
  WriteText(name, std::string(bytes.begin(), bytes.end()));
}

void ProgramTest::WriteText(const std::string& name, const std::string& text) const {
  std::ofstream(Path(name), std::ios::binary) << text;
}

bool ProgramTest::Exists(const std::string& name) const {
  return std::filesystem::exists(Path(name));
}

Bytes ProgramTest::Read(const std::string& name) const {
  const std::string text = ReadAll(Path(name));
  return {text.begin(), text.end()};
}

std::string ProgramTest::ReadText(const std::string& name) const {
  return ReadAll(Path(name));
}

std::vector<std::string> ProgramTest::Names() const {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(Path("."))) {
    const std::string name = entry.path().filename().string();
    if (name != ".script" && name != ".out" && name != ".err") {
      names.push_back(name);
    }
  }
  std::ranges::sort(names);
  return names;
}

}  // namespace quillmark::test
