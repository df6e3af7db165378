#include <span>
#include <string>
#include <utility>

#include <QDir>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/ProgressBar.h"
#include "render/Composition.h"
#include "render/SubtitleExport.h"

namespace quillmark {
namespace {

/// Writes the pictures of one stream and gathers their list.
class PictureWriter {
 public:
  PictureWriter(const DvdPalette& palette, ExportPaths paths)
      : palette_(palette), paths_(std::move(paths)), png_(cBitmap::EncoderIndex(QStringLiteral("*.png"))) {}

  CommandResult MakeFolder() const {
    EnsurePictureFolder(paths_.Folder);
    return QDir(paths_.Folder).exists() ? CommandResult()
                                        : Failed(paths_.Folder.toStdString(), "the folder cannot be created");
  }

  /// An area without pixels has a line and no picture, as when it is shown.
  CommandResult Add(std::span<const std::uint8_t> unit, const SubtitleDescription& description) {
    const SubtitleExport names = DescribeExport(description, paths_);
    list_ += names.ListLine.toStdString();
    cBitmap picture;
    DecodePicture(unit, description.Control, MakeCodeColours(palette_, description.Control), picture);
    if (picture.Width() > 0) {
      picture.SaveToFile(names.PicturePath, png_);
      ++pictures_;
    }
    return picture.LastStatus() == 0 ? CommandResult()
                                     : Failed(names.PicturePath.toStdString(),
                                              cGDIP::StatusText(picture.LastStatus()).toStdString());
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
  const DvdPalette& palette_;
  ExportPaths paths_;
  int png_;
  std::string list_;
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
      return Interrupted();
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

}  // namespace quillmark
