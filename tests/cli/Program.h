#pragma once

#include <cstdint>
#include <filesystem>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include "cli/Console.h"
#include "cli/Json.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark::test {

/// How a program ended and what it said.
struct ProgramRun {
  int ExitCode = -1;
  std::string Out;
  std::string Err;
};

/// The path of quillmark-cli: the one of this build, or what QUILLMARK_TESTED_CLI says. Then the command
/// lines are run by that program as well, so that the tests of one build can test another one.
[[nodiscard]] std::string TestedProgram();

/// A test that runs quillmark-cli in a folder of its own, which is also this process's while it lasts.
class ProgramTest : public testing::Test {
 protected:
  ProgramTest();
  ~ProgramTest() override;

  /// Runs the command line, in this process unless another program is tested.
  ProgramRun Run(const std::vector<std::string>& arguments);
  /// Runs a shell script in a child without a display, with the program on its path, and waits for its end.
  ProgramRun RunScript(const std::string& script);
  /// The same, with the path as it was.
  ProgramRun RunScriptAsItStands(const std::string& script);

  [[nodiscard]] std::string Path(const std::string& name) const;
  void Write(const std::string& name, const Bytes& bytes) const;
  void WriteText(const std::string& name, const std::string& text) const;
  [[nodiscard]] bool Exists(const std::string& name) const;
  [[nodiscard]] Bytes Read(const std::string& name) const;
  [[nodiscard]] std::string ReadText(const std::string& name) const;
  /// Names of everything in the folder, sorted, but for what the runs themselves need.
  [[nodiscard]] std::vector<std::string> Names() const;

 private:
  ProgramRun RunCommand(const std::string& command);

  /// Not Qt's: file names that are not UTF-8 must be removed too.
  std::filesystem::path folder_;
  std::filesystem::path previousFolder_;
};

/// The start-up palette's entries 1 and 2, opaque: what its codes 1 and 2 look like, as QRgb.
inline constexpr std::uint32_t Code1 = 0xFF03FDFB;
inline constexpr std::uint32_t Code2 = 0xFFFFFFFF;

}  // namespace quillmark::test
