#include "recipe/Step.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "base/FilePath.h"
#include "base/Words.h"
#include "containers/Container.h"
#include "sup/ChoosePackets.h"
#include "sup/IndexedPacket.h"
#include "sup/StreamFix.h"
#include "sup/StreamLoader.h"

namespace quillmark {
namespace {

/// The stream of the only track of the file, or of the one that is named.
Result<LoadedStream> LoadTrack(const std::string& path, const std::string& track) {
  ReadContainerResult read = ReadStreams(PathFromUtf8(path));
  if (!read) {
    return read.Why();
  }
  Container& container = **read;
  const Result<std::size_t> found = FindTrack(container, track);
  if (!found) {
    return found.Why();
  }
  return IndexPrimaryStream(std::move(container.Tracks[*found].Packets), InvalidFirst::IsPassed);
}

Result<ToolResult> Join(const SupStream& stream, const JoinFile& join) {
  const Result<LoadedStream> added = LoadTrack(join.Path, join.Track);
  if (!added) {
    return Failure{join.Path + ": " + added.Reason()};
  }
  if (added->LostSignature) {
    return Failure{join.Path + ": " + Words::Tr("no \"SP\" stands where a packet should start")};
  }
  return JoinStreams(stream, added->Stream, join.Options);
}

/// Each number once, without the 0 of what is no packet.
std::vector<std::int64_t> Ascending(std::vector<std::int64_t> numbers) {
  std::erase(numbers, 0);
  std::ranges::sort(numbers);
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  return numbers;
}

Result<ToolResult> Fix(const SupStream& stream, const CheckOptions& rules) {
  Result<StreamFix> fix = FixStream(FileOf(stream), rules);
  if (!fix) {
    return fix.Why();
  }
  std::vector<std::int64_t> mended;
  for (const Mend& mend : fix->Mends) {
    mended.push_back(mend.Packet);
  }
  std::vector<std::int64_t> left;
  for (const StreamProblem& problem : fix->Left) {
    left.push_back(problem.Packet.value_or(0));
  }
  ToolResult result{.Edit = std::move(fix->Edit), .Chosen = stream.Count, .Changed = {}, .Left = {}};
  for (const std::int64_t number : Ascending(std::move(mended))) {
    result.Changed.Append(number);
  }
  for (const std::int64_t number : Ascending(std::move(left))) {
    result.Left.push_back({.Number = number, .Why = LeftReason::NotMended});
  }
  return result;
}

/// Runs what the step's options are those of.
struct Runner {
  const SupStream& Stream;
  const SubtitleSet& Only;

  Result<ToolResult> operator()(const RetimeOptions& options) const { return Retime(Stream, Only, options); }
  Result<ToolResult> operator()(const MoveOptions& options) const { return MoveArea(Stream, Only, options); }
  Result<ToolResult> operator()(DisplayStart start) const { return ForceDisplay(Stream, Only, start); }
  Result<ToolResult> operator()(const EndOptions& options) const {
    return SetDisplayEnds(Stream, Only, options);
  }
  Result<ToolResult> operator()(const CutStep& /*options*/) const { return CutPackets(Stream, Only); }
  Result<ToolResult> operator()(const KeepStep& /*options*/) const { return KeepPackets(Stream, Only); }
  Result<ToolResult> operator()(const SortStep& /*options*/) const { return SortPackets(Stream, Only); }
  Result<ToolResult> operator()(const JoinFile& join) const { return Join(Stream, join); }
  Result<ToolResult> operator()(const CodeAssignment& codes) const {
    return AssignChosen(Stream, Only, codes);
  }
  Result<ToolResult> operator()(const FixStep& fix) const { return Fix(Stream, fix.Rules); }
  Result<ToolResult> operator()(const SalvageStep& /*options*/) const { return DropDamage(Stream); }
};

}  // namespace

const Tool* FindTool(std::string_view name) {
  const auto tools = AllTools();
  const auto tool = std::ranges::find(tools, name, &Tool::Name);
  return tool == tools.end() ? nullptr : &*tool;
}

bool TakesOut(const Step& step) {
  return std::holds_alternative<CutStep>(step.Options) || std::holds_alternative<KeepStep>(step.Options) ||
         std::holds_alternative<SalvageStep>(step.Options);
}

Result<void> FitsStream(const Step& step, const SupStream& stream) {
  if (const auto outside = step.Only.Outside(stream.Count)) {
    return Failure{Words::Tr("there is no subtitle %1: it has %2",
                             {std::to_string(*outside), std::to_string(stream.Count)})};
  }
  const auto* const retime = std::get_if<RetimeOptions>(&step.Options);
  return retime != nullptr ? HasTimeLine(stream, *retime) : Result<void>();
}

Result<ToolResult> RunStep(const Step& step, const SupStream& stream) {
  Result<ToolResult> result = std::visit(Runner{.Stream = stream, .Only = step.Only}, step.Options);
  // A file without subtitles is nothing that anyone asks for, and a window could not show it.
  if (result && TakesOut(step) && stream.Count > 0 &&
      result->Changed.SizeWithin(stream.Count) == stream.Count) {
    return Failure{Words::Tr("no subtitle would be left")};
  }
  return result;
}

}  // namespace quillmark
