#include "cli/ToolCommand.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/Words.h"
#include "cli/Inputs.h"
#include "sup/IndexedPacket.h"

namespace quillmark::cli {
namespace {

/// What to tell of steps that were run on a stream, and where to.
struct Telling {
  const std::string& File;
  const std::string& Out;
  bool DryRun = false;
  bool Json = false;
  bool IsQuiet = false;
};

/// How many subtitles a step changed, of a stream that has none beyond `Changed`.
std::int64_t ChangedCount(const ToolResult& result) {
  return result.Changed.SizeWithin(std::numeric_limits<std::int64_t>::max());
}

Json ResultObject(const Tool& tool, const ToolResult& result, const Telling& telling) {
  return {{"file", telling.File},
          {"out", telling.DryRun ? Json() : Json(telling.Out)},
          {"tool", tool.Name},
          {"changed", ChangedCount(result)},
          {"subtitles", result.Changed.Text()},
          {"left", LeftObjects(result.Left)}};
}

/// Tells what the tool did, and writes the stream's bytes.
CommandResult Finish(const Tool& tool, const ToolResult& result, std::span<const std::uint8_t> bytes,
                     const Telling& telling, const Console& console) {
  for (const LeftSubtitle& left : result.Left) {
    console.Warn(telling.File, SubtitleText(left.Number) + " " + LeftText(left));
  }
  if (!telling.DryRun) {
    if (CommandResult written = WriteFile(telling.Out, bytes); !written.IsDone()) {
      return written;
    }
  }
  const std::string left = LeftSummary(result.Left, result.Chosen);
  CommandResult done = left.empty() ? CommandResult() : Failed(telling.File, left);
  if (telling.Json) {
    WriteJson(console.Out, ResultObject(tool, result, telling));
    console.Out << '\n';
    done.JsonWritten = true;
  } else if (telling.DryRun || !telling.IsQuiet) {
    console.Out << ChangedText(tool, result.Changed, ChangedCount(result), telling.DryRun) << '\n';
  }
  return done;
}

/// Does what the tool found to do to the bytes alone: nothing is read of the stream's index any more.
CommandResult ApplyToBytes(StreamEdit& edit, const std::string& file, SupStream& stream) {
  stream.RawBytes.pop_back();
  const Result<void> applied = ApplyEdit(stream.RawBytes, edit);
  return applied ? CommandResult() : Failed(file, applied.Reason());
}

}  // namespace

Json LeftObjects(const std::vector<LeftSubtitle>& left) {
  Json objects = Json::array();
  for (const LeftSubtitle& subtitle : left) {
    objects.push_back(
        {{"number", subtitle.Number}, {"code", LeftName(subtitle.Why)}, {"reason", LeftText(subtitle)}});
  }
  return objects;
}

std::string LeftSummary(const std::vector<LeftSubtitle>& left, std::int64_t chosen) {
  if (left.empty()) {
    return "";
  }
  const bool asTheyAre = std::ranges::none_of(left, [](const LeftSubtitle& subtitle) {
    return subtitle.Why == LeftReason::NotAsLong || subtitle.Why == LeftReason::NotMended;
  });
  const std::string count = std::to_string(left.size());
  const std::string all = std::to_string(chosen);
  return asTheyAre ? Words::Tr("%1 of %2 subtitles are left as they are", {count, all})
                   : Words::Tr("%1 of %2 subtitles are not as asked for", {count, all});
}

std::string DoneText(const Tool& tool, std::int64_t count, bool isDryRun) {
  const std::string done = Words::Tr(tool.Done);
  return isDryRun ? Words::Tr("%n subtitle would be %1", "%n subtitles would be %1", count, {done})
                  : Words::Tr("%n subtitle %1", "%n subtitles %1", count, {done});
}

std::string ChangedText(const Tool& tool, const SubtitleSet& changed, std::int64_t count, bool isDryRun) {
  return DoneText(tool, count, isDryRun) + (isDryRun && count > 0 ? ": " + changed.Text() : "");
}

CommandResult RunTool(const ToolCommandOptions& options, const Console& console) {
  const Result<Step> step = ReadStep(options.Step, "--");
  if (!step) {
    return WrongUsage("", step.Reason());
  }
  SupStream stream;
  if (CommandResult loaded = LoadStream({options.File, options.Track}, stream, console); !loaded.IsDone()) {
    return loaded;
  }
  if (const auto fits = FitsStream(*step, stream); !fits) {
    return WrongUsage(options.File, fits.Reason());
  }
  Result<ToolResult> result = RunStep(*step, stream);
  if (!result) {
    return Failed(options.File, result.Reason());
  }
  if (CommandResult applied = ApplyToBytes(result->Edit, options.File, stream); !applied.IsDone()) {
    return applied;
  }
  if (console.Interrupted()) {
    return Interrupted();
  }
  return Finish(*step->What, *result, stream.RawBytes,
                {.File = options.File,
                 .Out = options.Out,
                 .DryRun = options.DryRun,
                 .Json = options.Json,
                 .IsQuiet = options.IsQuiet},
                console);
}

CommandResult Join(const JoinCommandOptions& options, const Console& console) {
  const std::size_t added = options.Files.size() - 1;
  if (!options.At.empty() && options.At.size() != added) {
    return WrongUsage("", Words::Tr("--at needs a time for each file but the first: %1 in place of %2",
                                    {std::to_string(added), std::to_string(options.At.size())}));
  }
  std::vector<Step> steps;
  for (std::size_t i = 0; i < added; ++i) {
    StepText text{.Tool = "join", .Options = {{"with", options.Files[i + 1]}}};
    if (!options.Gap.empty()) {
      text.Options.emplace_back("gap", options.Gap);
    }
    if (!options.At.empty()) {
      text.Options.emplace_back("at", options.At[i]);
    }
    Result<Step> step = ReadStep(text, "--");
    if (!step) {
      return WrongUsage("", step.Reason());
    }
    steps.push_back(std::move(*step));
  }
  const std::string& file = options.Files.front();
  SupStream stream;
  if (CommandResult loaded = LoadStream({file, options.Track}, stream, console); !loaded.IsDone()) {
    return loaded;
  }
  ToolResult whole;
  for (std::size_t i = 0; i < added; ++i) {
    SupStream next;
    if (CommandResult loaded = LoadStream({options.Files[i + 1], options.Track}, next, console);
        !loaded.IsDone()) {
      return loaded;
    }
    Result<ToolResult> result = JoinStreams(stream, next, std::get<JoinFile>(steps[i].Options).Options);
    if (!result) {
      return Failed(options.Files[i + 1], result.Reason());
    }
    if (const auto applied = ApplyEdit(stream, result->Edit); !applied) {
      return Failed(options.Files[i + 1], applied.Reason());
    }
    if (console.Interrupted()) {
      return Interrupted();
    }
    whole.Chosen += result->Chosen;
    whole.Left.insert(whole.Left.end(), result->Left.begin(), result->Left.end());
    for (const SubtitleRange& range : result->Changed.Ranges()) {
      whole.Changed.Add(range);
    }
  }
  return Finish(*FindTool("join"), whole, FileOf(stream),
                {.File = file, .Out = options.Out, .DryRun = options.DryRun, .Json = options.Json}, console);
}

}  // namespace quillmark::cli
