#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "base/Result.h"
#include "sup/CodeAssignment.h"
#include "sup/DisplayEnds.h"
#include "sup/ForceDisplay.h"
#include "sup/JoinStreams.h"
#include "sup/MoveArea.h"
#include "sup/PacketCheck.h"
#include "sup/Retime.h"
#include "sup/SupStream.h"
#include "sup/ToolResult.h"

/// The tools that change a stream, with their options as texts: what the command line, a recipe and the
/// window have in common.
namespace quillmark {

/// An option of a tool.
struct ToolOption {
  std::string_view Name;      ///< of the long option, without dashes, and of a recipe's field
  std::string_view Value;     ///< what help has in place of the value, "MS"; empty for a flag
  const char* Help = "";      ///< in English, of the catalogue
  bool IsPositional = false;  ///< on the command line: it stands there without its name

  [[nodiscard]] bool IsFlag() const { return Value.empty(); }
};

struct Tool {
  std::string_view Name;
  const char* Help = "";  ///< in English, of the catalogue, as Done is
  const char* Done = "";  ///< what happened to the subtitles that it changed, "moved"
  std::span<const ToolOption> Options;
};

/// In the order of help.
[[nodiscard]] std::span<const Tool> AllTools();
/// nullptr where there is none of that name.
[[nodiscard]] const Tool* FindTool(std::string_view name);

/// A tool and its options as they are written: pairs of name and value; a flag that is given has "true".
struct StepText {
  std::string Tool;
  std::vector<std::pair<std::string, std::string>> Options;

  bool operator==(const StepText&) const = default;
};

struct CutStep {};
struct KeepStep {};
struct SortStep {};
struct SalvageStep {};
struct FixStep {
  CheckOptions Rules;
};
struct JoinFile {
  std::string Path;   ///< of the file whose stream is added, UTF-8; of any kind that streams are read from
  std::string Track;  ///< number or language; empty: the only one
  JoinOptions Options;
};

/// A step that was understood.
struct Step {
  const Tool* What = nullptr;
  SubtitleSet Only = SubtitleSet::All();
  std::variant<RetimeOptions, MoveOptions, DisplayStart, EndOptions, CutStep, KeepStep, SortStep, JoinFile,
               CodeAssignment, FixStep, SalvageStep>
      Options;
};

/// A Failure says what is wrong, with `dashes` before the names of options: "--shift: 'abc' is ...".
[[nodiscard]] Result<Step> ReadStep(const StepText& text, std::string_view dashes = "");

/// Whether what the step changes are subtitles that it takes out of the stream.
[[nodiscard]] bool TakesOut(const Step& step);

/// Whether the step can be meant for that stream: a Failure where it names subtitles that it does not have,
/// or times that no line leads through.
Result<void> FitsStream(const Step& step, const SupStream& stream);

/// What the step does to the stream, which is not changed. JoinFile reads its file. A Failure where nothing
/// may be changed, and where no subtitle would be left.
[[nodiscard]] Result<ToolResult> RunStep(const Step& step, const SupStream& stream);

}  // namespace quillmark
