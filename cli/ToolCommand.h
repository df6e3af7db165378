#pragma once

#include <string>
#include <vector>

#include "cli/CommandResult.h"
#include "cli/Console.h"
#include "cli/Json.h"
#include "recipe/Step.h"

/// What the commands that run a tool have in common: they load, apply, tell and save alike.
namespace quillmark::cli {

struct ToolCommandOptions {
  StepText Step = {};
  std::string File = {};
  std::string Track = {};  ///< number or language, where the file has several
  std::string Out = {};
  bool DryRun = false;
  bool Json = false;
  bool IsQuiet = false;  ///< says nothing in words when all was done
};

/// A copy of the stream on which the tool was run. Subtitles that it has to leave are named; the others are
/// written all the same, and it is not done.
CommandResult RunTool(const ToolCommandOptions& options, const Console& console);

struct JoinCommandOptions {
  std::vector<std::string> Files = {};  ///< at least two
  std::string Track = {};               ///< of each file that has several: number or language
  std::string Gap = {};                 ///< empty where it is not given
  std::vector<std::string> At = {};     ///< a time for each file but the first, or none
  std::string Out = {};
  bool DryRun = false;
  bool Json = false;
};
/// The streams one behind another.
CommandResult Join(const JoinCommandOptions& options, const Console& console);

struct ApplyOptions {
  std::string Recipe = {};
  std::vector<std::string> Files = {};
  std::string Track = {};  ///< of each file that has several: number or language
  std::string OutFolder = {};
  bool Force = false;
  bool DryRun = false;
  bool Json = false;
};
/// A copy of each file, under its own name in the folder, on which the recipe's steps were run. Several files
/// are worked on at once; one that cannot be done stops no other.
CommandResult Apply(const ApplyOptions& options, const Console& console);

/// {"number": 3, "code": "no_start", "reason": "..."} for each.
[[nodiscard]] Json LeftObjects(const std::vector<LeftSubtitle>& left);

/// "2 of 5 subtitles are left as they are"; empty where none is left.
[[nodiscard]] std::string LeftSummary(const std::vector<LeftSubtitle>& left, std::int64_t chosen);

/// "12 subtitles moved", or "12 subtitles would be moved".
[[nodiscard]] std::string DoneText(const Tool& tool, std::int64_t count, bool isDryRun);
/// The same, and which they would be: "12 subtitles would be moved: 3-14".
[[nodiscard]] std::string ChangedText(const Tool& tool, const SubtitleSet& changed, std::int64_t count,
                                      bool isDryRun);

}  // namespace quillmark::cli
