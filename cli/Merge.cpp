#include <cstdint>
#include <span>

#include <QSaveFile>

#include "base/FilePath.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/ProgressBar.h"
#include "render/MergedStreamEncoder.h"

namespace quillmark::cli {
namespace {

CommandResult CheckPrimary(const std::string& file, const SupStream& primary) {
  if (primary.Count < 1) {
    return Failed(file, "it holds no subtitle");
  }
  if (primary.Stats.MultipleColours || primary.Stats.MultipleOpacities) {
    return Failed(
        file,
        "Error: Primary sup file uses multiple colors or multiple transparancies\n"
        "Loading secondary stream not possible.\n"
        "Remove the multiple colors and/or multiple transparancies in the primary sup file and retry");
  }
  return {};
}

CommandResult LoadSecondary(const std::string& file, const SupStream& primary, SupStream& secondary,
                            const Console& console) {
  bool firstValid = true;
  const LoadResult loaded = LoadSecondaryStream(
      PathFromUtf8(file), primary, [&](bool valid) { firstValid = valid; }, secondary);
  if (CommandResult result = ResultOf(loaded, file); !result.IsDone()) {
    return result;
  }
  if (!firstValid) {
    return Failed(file, "Error converting subtitle!");
  }
  if (secondary.Count < 1) {
    return Failed(file, "it holds no subtitle");
  }
  if (secondary.Stats.MultipleColours || secondary.Stats.MultipleOpacities) {
    console.Warn(file,
                 "Warning: Secondary subtitles have multiple colors or multiple transparancies\n"
                 "Overlaying may not work properly");
  }
  return {};
}

CommandResult WritePackets(const MergeOptions& options, std::int64_t count, MergedStreamEncoder& encoder,
                           QSaveFile& out, const Console& console) {
  ProgressBar progress(console, count);
  for (std::int64_t index = 0; index < count; ++index) {
    if (console.Interrupted()) {
      return Interrupted();
    }
    progress.Show(index);
    const auto outcome = encoder.Encode(index);
    if (outcome == MergedStreamEncoder::Outcome::Skipped) {
      continue;
    }
    if (outcome != MergedStreamEncoder::Outcome::Encoded) {
      return Failed(options.Primary, SubtitleText(index + 1) + ": " + ReasonOf(outcome));
    }
    const auto packet = encoder.Packet();
    const auto length = static_cast<qint64>(packet.size());
    if (out.write(reinterpret_cast<const char*>(packet.data()), length) != length) {
      return Failed(options.Out, out.errorString().toStdString());
    }
  }
  return {};
}

}  // namespace

CommandResult Merge(const MergeOptions& options, const Console& console) {
  SupStream primary;
  SupStream secondary;
  MergeSettings settings{.YOffset = options.YOffset, .FrameHeight = options.Frame};
  QString path;
  if (CommandResult loaded = LoadStream(options.Primary, primary); !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult checked = CheckPrimary(options.Primary, primary); !checked.IsDone()) {
    return checked;
  }
  if (CommandResult loaded = LoadSecondary(options.Secondary, primary, secondary, console);
      !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult loaded = LoadPalette(options.Palette, settings.Palette); !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult named = ToText(options.Out, path); !named.IsDone()) {
    return named;
  }
  // The second file goes away by itself unless it is told to take the target's place.
  QSaveFile out(path);
  if (!out.open(QIODevice::WriteOnly)) {
    return Failed(options.Out, out.errorString().toStdString());
  }
  MergedStreamEncoder encoder(primary, secondary, settings);
  if (CommandResult written = WritePackets(options, primary.Count, encoder, out, console);
      !written.IsDone()) {
    return written;
  }
  return out.commit() ? CommandResult() : Failed(options.Out, out.errorString().toStdString());
}

}  // namespace quillmark::cli
