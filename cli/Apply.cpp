#include <algorithm>
#include <condition_variable>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>
#include <utility>

#include "base/FilePath.h"
#include "base/Words.h"
#include "cli/Inputs.h"
#include "cli/ToolCommand.h"
#include "files/ReplaceFile.h"
#include "recipe/Recipe.h"
#include "sup/IndexedPacket.h"
#include "sup/MendPackets.h"

namespace quillmark::cli {
namespace {

/// What was done to one file.
struct FileReport {
  std::string Out;
  std::vector<std::string> Notes = {};  ///< of reading it
  std::vector<StepOutcome> Steps;
  std::string Error;  ///< empty when it was done
};

/// Lets so much be worked on at once that it fits into memory: a file that is too large by itself is worked
/// on alone.
class MemoryBudget {
 public:
  void Take(std::uintmax_t bytes) {
    std::unique_lock lock(mutex_);
    freed_.wait(lock, [&] { return used_ == 0 || bytes <= Limit - std::min(used_, Limit); });
    used_ += bytes;
  }
  void Give(std::uintmax_t bytes) {
    {
      const std::scoped_lock lock(mutex_);
      used_ -= bytes;
    }
    freed_.notify_all();
  }

 private:
  static constexpr std::uintmax_t Limit = std::uintmax_t{1} << 30U;
  std::mutex mutex_;
  std::condition_variable freed_;
  std::uintmax_t used_ = 0;
};

std::uintmax_t SizeOf(const std::string& file) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(PathFromUtf8(file), error);
  return error ? 0 : std::min<std::uintmax_t>(size, MaxStreamLength);
}

/// The stream that the first step starts from. One that is no stream any more has a recipe that starts with
/// salvage, and its good packets are the stream, or with fix, and its mended packets are.
Result<SupStream> Load(const std::string& file, std::vector<std::uint8_t> bytes,
                       const std::vector<Step>& steps) {
  Result<LoadedStream> loaded = IndexPrimaryStream(std::move(bytes), InvalidFirst::IsPassed);
  if (!loaded) {
    return loaded.Why();
  }
  if (!loaded->LostSignature) {
    return std::move(loaded->Stream);
  }
  std::vector<std::uint8_t> good;
  if (!steps.empty() && std::holds_alternative<FixStep>(steps.front().Options)) {
    const auto damaged = FileOf(loaded->Stream);
    good.assign(damaged.begin(), damaged.end());
    StreamEdit edit = MendPackets(damaged).Edit;
    if (const Result<void> applied = ApplyEdit(good, edit); !applied) {
      return applied.Why();
    }
  } else if (!steps.empty() && std::holds_alternative<SalvageStep>(steps.front().Options)) {
    const SalvagedStream salvaged = SalvageStream(FileOf(loaded->Stream));
    for (const auto span : salvaged.Kept) {
      good.insert(good.end(), span.begin(), span.end());
    }
  } else {
    return Failure{ResultOf(loaded, file).Reason};
  }
  Result<LoadedStream> indexed = IndexPrimaryStream(std::move(good), InvalidFirst::IsPassed);
  return indexed ? Result<SupStream>(std::move(indexed->Stream)) : Result<SupStream>(indexed.Why());
}

/// What is written is a SUP file in any case.
std::string OutPath(const std::string& folder, const std::string& file) {
  const auto path = PathFromUtf8(file);
  auto name = path.filename();
  if (!IsSupFile(path)) {
    name.replace_extension(".sup");
  }
  return Utf8FromPath(PathFromUtf8(folder) / name);
}

/// The bytes of the file's stream; what there is to know of reading it comes to the report.
Result<std::vector<std::uint8_t>> Read(const std::string& file, const std::string& track,
                                       FileReport& report) {
  ReadContainerResult read = ReadStreams(PathFromUtf8(file));
  if (!read) {
    return read.Why();
  }
  Container& container = **read;
  const auto found = FindTrack(container, track);
  if (!found) {
    return found.Why();
  }
  Track& chosen = container.Tracks[*found];
  report.Notes = std::move(container.Notes);
  report.Notes.insert(report.Notes.end(), chosen.Notes.begin(), chosen.Notes.end());
  return std::move(chosen.Packets);
}

/// Does one file; never throws.
FileReport RunFile(const ApplyOptions& options, const std::vector<Step>& steps, const std::string& file) {
  FileReport report{.Out = OutPath(options.OutFolder, file), .Steps = {}, .Error = {}};
  try {
    std::error_code error;
    if (!options.Force && std::filesystem::exists(PathFromUtf8(report.Out), error)) {
      report.Error = Words::Tr("%1 exists; --force writes over it", {report.Out});
      return report;
    }
    Result<std::vector<std::uint8_t>> bytes = Read(file, options.Track, report);
    if (!bytes) {
      report.Error = bytes.Reason();
      return report;
    }
    Result<SupStream> stream = Load(file, std::move(*bytes), steps);
    if (!stream) {
      report.Error = stream.Reason();
      return report;
    }
    Result<std::vector<StepOutcome>> outcomes = RunSteps(steps, *stream);
    if (!outcomes) {
      report.Error = Words::Tr("%1; nothing is written", {outcomes.Reason()});
      return report;
    }
    report.Steps = std::move(*outcomes);
    if (!options.DryRun) {
      report.Error = WriteFile(report.Out, FileOf(*stream)).Text();
    }
  } catch (const std::bad_alloc&) {
    report.Error = Words::Tr("there is not enough memory");
  }
  return report;
}

/// Runs the files on all cores and hands over their reports, in the files' order.
template <typename Tell>
void RunFiles(const ApplyOptions& options, const std::vector<Step>& steps, const Console& console,
              const Tell& tell) {
  std::mutex mutex;
  std::condition_variable finished;
  std::map<std::size_t, FileReport> reports;
  std::size_t next = 0;
  MemoryBudget budget;
  const auto work = [&] {
    while (true) {
      std::size_t index = 0;
      {
        const std::scoped_lock lock(mutex);
        if (next == options.Files.size()) {
          return;
        }
        index = next++;
      }
      FileReport report{.Out = {}, .Steps = {}, .Error = Words::Tr("interrupted")};
      if (!console.Interrupted()) {
        const std::uintmax_t bytes = SizeOf(options.Files[index]);
        budget.Take(bytes);
        report = RunFile(options, steps, options.Files[index]);
        budget.Give(bytes);
      }
      {
        const std::scoped_lock lock(mutex);
        reports.emplace(index, std::move(report));
      }
      finished.notify_one();
    }
  };
  const std::size_t workers =
      std::min<std::size_t>(std::max(std::thread::hardware_concurrency(), 1U), options.Files.size());
  std::vector<std::jthread> threads;
  for (std::size_t i = 0; i < workers; ++i) {
    threads.emplace_back(work);
  }
  for (std::size_t index = 0; index < options.Files.size(); ++index) {
    std::unique_lock lock(mutex);
    finished.wait(lock, [&] { return reports.contains(index); });
    const FileReport report = std::move(reports.extract(index).mapped());
    lock.unlock();
    tell(options.Files[index], report);
  }
}

bool HasLeft(const FileReport& report) {
  return std::ranges::any_of(report.Steps, [](const StepOutcome& step) { return !step.Left.empty(); });
}

Json ReportObject(const std::string& file, const FileReport& report, bool isDryRun) {
  Json steps = Json::array();
  for (const StepOutcome& step : report.Steps) {
    steps.push_back({{"tool", step.What->Name}, {"changed", step.Changed}, {"left", LeftObjects(step.Left)}});
  }
  const bool isWritten = report.Error.empty() && !isDryRun;
  return {{"file", file},
          {"out", isWritten ? Json(report.Out) : Json()},
          {"notes", report.Notes},
          {"steps", std::move(steps)},
          {"error", report.Error.empty() ? Json() : Json(report.Error)}};
}

/// "a.sup: 12 subtitles moved, 3 subtitles taken out; written to out/a.sup".
std::string ReportLine(const std::string& file, const FileReport& report, bool isDryRun) {
  std::string steps;
  for (const StepOutcome& step : report.Steps) {
    steps += (steps.empty() ? "" : ", ") + DoneText(*step.What, step.Changed, isDryRun);
  }
  const std::string told = file + ": " + (steps.empty() ? Words::Tr("no steps") : steps);
  return isDryRun ? told : told + "; " + Words::Tr("written to %1", {report.Out});
}

void WarnOfLeft(const std::string& file, const FileReport& report, const Console& console) {
  for (std::size_t i = 0; i < report.Steps.size(); ++i) {
    for (const LeftSubtitle& left : report.Steps[i].Left) {
      console.Warn(file, StepName(i, report.Steps[i].What->Name) + ": " + SubtitleText(left.Number) + " " +
                             LeftText(left));
    }
  }
}

/// Two files that would be written under one name.
CommandResult CheckNames(const ApplyOptions& options) {
  std::map<std::string, std::string> files;
  for (const std::string& file : options.Files) {
    const auto [same, isNew] = files.emplace(OutPath(options.OutFolder, file), file);
    if (!isNew) {
      return WrongUsage(
          "", Words::Tr("%1 and %2 would both be written to %3", {same->second, file, same->first}));
    }
  }
  return {};
}

CommandResult ReadRecipe(const std::string& file, std::vector<Step>& steps) {
  const Result<std::vector<std::uint8_t>> bytes = ReadStreamFile(PathFromUtf8(file));
  if (!bytes) {
    return Failed(file, bytes.Reason());
  }
  const Result<Recipe> recipe = ParseRecipe({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
  if (!recipe) {
    return Failed(file, recipe.Reason());
  }
  steps = std::move(*ReadSteps(*recipe));
  return {};
}

}  // namespace

CommandResult Apply(const ApplyOptions& options, const Console& console) {
  std::vector<Step> steps;
  if (CommandResult read = ReadRecipe(options.Recipe, steps); !read.IsDone()) {
    return read;
  }
  if (CommandResult named = CheckNames(options); !named.IsDone()) {
    return named;
  }
  QString folder;
  if (CommandResult named = ToText(options.OutFolder, folder); !named.IsDone()) {
    return named;
  }
  if (!options.DryRun) {
    if (const auto made = MakeFolder(folder); !made) {
      return Failed(options.OutFolder, Words::Tr("the folder cannot be created: %1", {made.Reason()}));
    }
  }
  std::size_t failed = 0;
  std::size_t left = 0;
  std::optional<JsonArrayWriter> array;
  if (options.Json) {
    array.emplace(console.Out);
  }
  RunFiles(options, steps, console, [&](const std::string& file, const FileReport& report) {
    for (const std::string& note : report.Notes) {
      console.Warn(file, note);
    }
    WarnOfLeft(file, report, console);
    left += report.Error.empty() && HasLeft(report) ? 1 : 0;
    if (!report.Error.empty()) {
      ++failed;
      console.Warn(file, report.Error);
    }
    if (array) {
      array->Add(ReportObject(file, report, options.DryRun));
    } else if (report.Error.empty()) {
      console.Out << ReportLine(file, report, options.DryRun) << '\n';
    }
  });
  if (console.Interrupted()) {
    return {.Code = ExitCode::Interrupted, .Reason = Words::Tr("interrupted"), .JsonWritten = options.Json};
  }
  if (failed == 0 && left == 0) {
    return {};
  }
  const std::string all = std::to_string(options.Files.size());
  CommandResult result =
      Failed("", failed > 0 ? Words::Tr("%1 of %2 files could not be done", {std::to_string(failed), all})
                            : Words::Tr("%1 of %2 files have subtitles that are left as they are",
                                        {std::to_string(left), all}));
  result.JsonWritten = options.Json;
  return result;
}

}  // namespace quillmark::cli
