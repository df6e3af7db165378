#include <cstdint>
#include <optional>
#include <string>

#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/MergeDryRun.h"
#include "cli/ProgressBar.h"
#include "files/FileWriter.h"
#include "recipe/OptionText.h"
#include "render/MergeJob.h"
#include "render/OffsetSearch.h"

namespace quillmark::cli {
namespace {

CommandResult CheckPrimary(const std::string& file, const SupStream& primary) {
  switch (ObstacleToSecondary(primary)) {
    case MergeObstacle::NoPrimary:
      return Failed(file, Words::Tr("it holds no subtitle"));
    case MergeObstacle::VariedPrimary:
      return Failed(
          file,
          Words::Tr(
              "Error: Primary sup file uses multiple colors or multiple transparancies\n"
              "Loading secondary stream not possible.\n"
              "Remove the multiple colors and/or multiple transparancies in the primary sup file and retry"));
    case MergeObstacle::NoSecondary:
    case MergeObstacle::None:
      break;
  }
  return {};
}

CommandResult LoadSecondary(const StreamSource& source, const SupStream& primary, SupStream& secondary,
                            const Console& console) {
  const std::string& file = source.File;
  Track track;
  if (CommandResult read = ReadStream(source, track, console); !read.IsDone()) {
    return read;
  }
  Result<LoadedStream> loaded = IndexSecondaryStream(std::move(track.Packets), primary);
  if (CommandResult result = ResultOf(loaded, file); !result.IsDone()) {
    return result;
  }
  if (loaded->FirstIsInvalid) {
    return Failed(file, Words::Tr("Error converting subtitle!"));
  }
  secondary = std::move(loaded->Stream);
  if (ObstacleToMerge(primary, secondary) != MergeObstacle::None) {
    return Failed(file, Words::Tr("it holds no subtitle"));
  }
  if (secondary.Stats.MultipleColours || secondary.Stats.MultipleOpacities) {
    console.Warn(file,
                 Words::Tr("Warning: Secondary subtitles have multiple colors or multiple transparancies\n"
                           "Overlaying may not work properly"));
  }
  return {};
}

ChosenNibbles NibblesOf(const std::string& text) {
  return ParseNibbles(text).value_or(ChosenNibbles());
}

MergeSettings SettingsOf(const MergeOptions& options) {
  MergeSettings settings{.YOffset = options.YOffset,
                         .FrameHeight = options.Frame,
                         .Colours = NibblesOf(options.Colours),
                         .Contrasts = NibblesOf(options.Opacities),
                         .Mode = options.Splits ? MergeMode::Split : MergeMode::Pairs,
                         .JoinTicks = options.JoinTicks};
  const ChosenNibbles codes = NibblesOf(options.SecondaryCodes);
  for (std::size_t code = 0; code < codes.size(); ++code) {
    settings.SecondaryCodes[code] = codes[code].value_or(settings.SecondaryCodes[code]);
  }
  return settings;
}

/// Sets the cheapest offset; says which one that is where nothing else does.
CommandResult FindOffset(const SupStream& primary, const SupStream& secondary, bool isSaid,
                         MergeSettings& settings, const Console& console) {
  OffsetSearch search(primary, secondary, settings);
  while (search.Prepare()) {
  }
  ProgressBar progress(console, static_cast<std::int64_t>(search.Count()));
  while (search.Step()) {
    progress.Show(static_cast<std::int64_t>(search.Looked()));
    if (console.Interrupted()) {
      return Interrupted();
    }
  }
  progress.Clear();
  settings.YOffset = search.Best();
  if (isSaid) {
    const OffsetCost cost = search.CostOf(settings.YOffset);
    console.Out << Words::Tr("y-offset %1: %2 pixels covered, %3 clipped",
                             {std::to_string(settings.YOffset), std::to_string(cost.Covered),
                              std::to_string(cost.Clipped)})
                << '\n';
  }
  return {};
}

CommandResult MergeResult(const MergeReport& merged, const MergeOptions& options) {
  switch (merged.How) {
    case MergeReport::Ending::Interrupted:
      return Interrupted();
    case MergeReport::Ending::SubtitleFailed:
      return Failed(merged.IsOfSecondary ? options.Secondary : options.Primary,
                    SubtitleText(merged.Number) + ": " + merged.Reason);
    case MergeReport::Ending::FileFailed:
      return Failed(options.Out, merged.Reason);
    case MergeReport::Ending::Complete:
      break;
  }
  return {};
}

MergeReport MergeWithProgress(const SupStream& primary, const SupStream& secondary,
                              const MergeSettings& settings, FileWriter& out, const Console& console) {
  std::optional<ProgressBar> progress;
  return MergeStreams(
      primary, secondary, settings, out,
      {.Next =
           [&](std::size_t index) {
             progress->Show(static_cast<std::int64_t>(index));
             return !console.Interrupted();
           },
       .Done = {},
       .Begin = [&](std::size_t count) { progress.emplace(console, static_cast<std::int64_t>(count)); }});
}

}  // namespace

CommandResult Merge(const MergeOptions& options, const Console& console) {
  if (options.JoinTicks > 0 && !options.Splits) {
    return WrongUsage("", Words::Tr("--join requires --mode split"));
  }
  SupStream primary;
  SupStream secondary;
  std::optional<DvdPalette> ofTrack;
  MergeSettings settings = SettingsOf(options);
  QString path;
  if (CommandResult loaded = LoadStream({options.Primary, options.Track}, primary, console, &ofTrack);
      !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult checked = CheckPrimary(options.Primary, primary); !checked.IsDone()) {
    return checked;
  }
  if (CommandResult loaded =
          LoadSecondary({options.Secondary, options.SecondTrack}, primary, secondary, console);
      !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult loaded = LoadPalette(options.Palette, ofTrack, settings.Palette); !loaded.IsDone()) {
    return loaded;
  }
  if (options.FindsOffset) {
    if (CommandResult found = FindOffset(primary, secondary, !options.DryRun, settings, console);
        !found.IsDone()) {
      return found;
    }
  }
  if (options.DryRun) {
    return ReviewMerge(primary, secondary, settings, options, console);
  }
  if (CommandResult named = ToText(options.Out, path); !named.IsDone()) {
    return named;
  }
  auto out = FileWriter::Replacing(path);
  if (!out) {
    return Failed(options.Out, out.Reason());
  }
  const MergeReport merged = MergeWithProgress(primary, secondary, settings, *out, console);
  if (CommandResult result = MergeResult(merged, options); !result.IsDone()) {
    return result;
  }
  if (const auto written = out->Commit(); !written) {
    return Failed(options.Out, written.Reason());
  }
  // The file is kept: all its other subtitles are good.
  return merged.TooLong.empty() ? CommandResult() : Failed(options.Out, TooLongText(merged.TooLong));
}

}  // namespace quillmark::cli
