#include <algorithm>
#include <atomic>
#include <span>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <QDir>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/ProgressBar.h"
#include "render/Composition.h"
#include "render/SubtitleExport.h"

namespace quillmark::cli {
namespace {

/// Writes the pictures of one stream, several at once, and gathers their list.
class PictureWriter {
 public:
  PictureWriter(const DvdPalette& palette, ExportPaths paths)
      : palette_(palette), paths_(std::move(paths)), png_(cBitmap::EncoderIndex(QStringLiteral("*.png"))) {}

  CommandResult MakeFolder() const {
    EnsurePictureFolder(paths_.Folder);
    return QDir(paths_.Folder).exists() ? CommandResult()
                                        : Failed(paths_.Folder.toStdString(), "the folder cannot be created");
  }

  /// Takes the next subtitle; its picture is written with those of others. An area without pixels has a line
  /// and no picture, as when it is shown.
  CommandResult Add(std::span<const std::uint8_t> unit, const SubtitleDescription& description) {
    const SubtitleExport names = DescribeExport(description, paths_);
    list_ += names.ListLine.toStdString();
    cBitmap picture;
    DecodePicture(unit, description.Control, MakeCodeColours(palette_, description.Control), picture);
    if (picture.LastStatus() != 0) {
      return FailedPicture(names.PicturePath, picture);
    }
    if (picture.Width() > 0) {
      Hold(names.PicturePath, std::move(picture));
    }
    return held_.size() < MostHeld && heldPixels_ < MostHeldPixels ? CommandResult() : WriteHeld();
  }

  /// Writes the pictures that were taken last. Nearly all of an export's time goes into packing them, which
  /// is why the processor's cores share them.
  CommandResult WriteHeld() {
    std::atomic<std::size_t> next = 0;
    const auto write = [&] {
      for (std::size_t i = next++; i < held_.size(); i = next++) {
        held_[i].Picture.SaveToFile(held_[i].Path, png_);
      }
    };
    {
      std::vector<std::jthread> helpers;
      try {
        while (helpers.size() + 1 <
               std::min<std::size_t>(std::thread::hardware_concurrency(), held_.size())) {
          helpers.emplace_back(write);
        }
      } catch (const std::system_error&) {
        // No more threads to be had; this one does what they would have done.
      }
      write();
    }
    return TakeResult();
  }

  CommandResult WriteList(const Console& console) const {
    const std::string path = paths_.List.toStdString();
    CommandResult written =
        WriteFile(path, std::span(reinterpret_cast<const std::uint8_t*>(list_.data()), list_.size()));
    if (written.IsDone()) {
      console.Out << "wrote " << pictures_ << " pictures to " << paths_.Folder.toStdString()
                  << ", their list to " << path << '\n';
    }
    return written;
  }

 private:
  struct HeldPicture {
    QString Path;
    cBitmap Picture;
  };

  /// Enough to keep every core busy, few enough that an interruption is not waited for.
  static constexpr std::size_t MostHeld = 64;
  static constexpr std::int64_t MostHeldPixels = std::int64_t{16} * FrameWidth * FrameHeight576;

  static CommandResult FailedPicture(const QString& path, const cBitmap& picture) {
    return Failed(path.toStdString(), cGDIP::StatusText(picture.LastStatus()).toStdString());
  }

  /// Of pictures with one name the last one is the one to stay.
  void Hold(const QString& path, cBitmap picture) {
    ++pictures_;
    heldPixels_ += std::int64_t{picture.Width()} * picture.Height();
    const auto same = std::ranges::find(held_, path, &HeldPicture::Path);
    if (same != held_.end()) {
      same->Picture = std::move(picture);
    } else {
      held_.push_back({.Path = path, .Picture = std::move(picture)});
    }
  }

  CommandResult TakeResult() {
    const auto failed =
        std::ranges::find_if(held_, [](const HeldPicture& held) { return held.Picture.LastStatus() != 0; });
    CommandResult result =
        failed != held_.end() ? FailedPicture(failed->Path, failed->Picture) : CommandResult();
    held_.clear();
    heldPixels_ = 0;
    return result;
  }

  const DvdPalette& palette_;
  ExportPaths paths_;
  int png_;
  std::string list_;
  std::vector<HeldPicture> held_;
  std::int64_t heldPixels_ = 0;
  std::int64_t pictures_ = 0;
};

CommandResult FindPaths(const ExportOptions& options, ExportPaths& paths) {
  QString name;
  CommandResult named = ToText(options.Base.empty() ? options.File : options.Base, name);
  paths = options.Base.empty() ? ExportPathsFor(name) : ExportPathsForBase(name);
  return named;
}

CommandResult WritePictures(const ExportOptions& options, const SupStream& stream, PictureWriter& writer,
                            const Console& console) {
  const std::int64_t last = options.Only.Last.value_or(stream.Count);
  const std::int64_t count = last - options.Only.First + 1;
  std::int64_t unconverted = 0;
  SubtitleReader reader(stream);
  ProgressBar progress(console, count);
  for (std::int64_t number = options.Only.First; number <= last; ++number) {
    if (console.Interrupted()) {
      const CommandResult written = writer.WriteHeld();
      return written.IsDone() ? Interrupted() : written;
    }
    progress.Show(number - options.Only.First);
    const auto description = reader.Read(number - 1);
    if (!description) {
      progress.Clear();
      console.Warn(options.File, SubtitleText(number) + " cannot be converted");
      ++unconverted;
    } else if (CommandResult added = writer.Add(reader.Unit(), *description); !added.IsDone()) {
      return added;
    }
  }
  if (CommandResult written = writer.WriteHeld(); !written.IsDone()) {
    return written;
  }
  progress.Clear();
  if (CommandResult written = writer.WriteList(console); !written.IsDone()) {
    return written;
  }
  return unconverted == 0
             ? CommandResult()
             : Failed(options.File, std::to_string(unconverted) + " of " + std::to_string(count) +
                                        " subtitles cannot be converted");
}

}  // namespace

CommandResult Export(const ExportOptions& options, const Console& console) {
  SupStream stream;
  DvdPalette palette;
  ExportPaths paths;
  if (CommandResult loaded = LoadStream(options.File, stream); !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult range = CheckRange(options.Only, options.File, stream); !range.IsDone()) {
    return range;
  }
  if (CommandResult loaded = LoadPalette(options.Palette, palette); !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult named = FindPaths(options, paths); !named.IsDone()) {
    return named;
  }
  PictureWriter writer(palette, paths);
  if (console.Interrupted()) {
    return Interrupted();
  }
  if (CommandResult made = writer.MakeFolder(); !made.IsDone()) {
    return made;
  }
  return WritePictures(options, stream, writer, console);
}

}  // namespace quillmark::cli
