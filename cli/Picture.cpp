#include <algorithm>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "imaging/cGraphics.h"
#include "render/Composition.h"
#include "render/PictureFile.h"
#include "render/SubtitleDescription.h"

namespace quillmark::cli {
namespace {

constexpr const char* NoBackground = "none";
constexpr const char* CheckerBackground = "checker";

/// The frame without the subtitle; its status tells whether a background file was drawn.
CommandResult MakeBackground(const std::string& name, int height, QImage& frame) {
  if (name == NoBackground) {
    frame = QImage(FrameWidth, height, QImage::Format_ARGB32);
    frame.fill(0U);
    return {};
  }
  Background background;
  if (name != CheckerBackground) {
    background.Source = Background::Kind::PictureFile;
    if (CommandResult named = ToText(name, background.File); !named.IsDone()) {
      return named;
    }
  }
  CommandResult result;
  const cGDIP instance(
      [&](const QString&, int, const QString& text) { result = Failed(name, text.toStdString()); });
  frame = MakeFrame();
  DrawBackground(frame, height, background, &instance);
  return result;
}

/// The frame's upper `height` lines as a bitmap.
void CopyFrame(const QImage& frame, int height, cBitmap& bitmap) {
  bitmap.Create(FrameWidth, height);
  const auto pixels = bitmap.LockPixels();
  std::copy_n(reinterpret_cast<const std::uint32_t*>(frame.constBits()), pixels.size(), pixels.begin());
}

CommandResult LayOverBackground(const PictureOptions& options, const SpuControl& control, cBitmap& picture) {
  const int height = options.Frame.value_or(FrameHeight576);
  QImage frame;
  if (CommandResult made = MakeBackground(options.Background, height, frame); !made.IsDone()) {
    return made;
  }
  if (picture.Width() > 0) {
    cGraphics(frame).DrawImage(picture, control.X1, control.Y1);
  }
  CopyFrame(frame, height, picture);
  return {};
}

CommandResult Save(const std::string& file, cBitmap& picture) {
  QString path;
  if (CommandResult named = ToText(file, path); !named.IsDone()) {
    return named;
  }
  const auto saved = WritePicture(path, picture, Durability::Synced);
  return saved ? CommandResult() : Failed(file, saved.Reason());
}

}  // namespace

CommandResult Picture(const PictureOptions& options, const Console& console) {
  SupStream stream;
  std::optional<DvdPalette> ofTrack;
  DvdPalette palette;
  if (CommandResult loaded = LoadStream({options.File, options.Track}, stream, console, &ofTrack);
      !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult range = CheckOnly(SubtitleSet::Of(options.Number), options.File, stream);
      !range.IsDone()) {
    return range;
  }
  if (CommandResult loaded = LoadPalette(options.Palette, ofTrack, palette); !loaded.IsDone()) {
    return loaded;
  }
  SubtitleReader reader(stream);
  const auto description = reader.Read(static_cast<std::size_t>(options.Number - 1));
  if (!description) {
    return Failed(options.File, SubtitleText(options.Number) + " cannot be converted");
  }
  cBitmap picture;
  DecodePicture(reader.Unit(), description->Control, MakeCodeColours(palette, description->Control), picture);
  if (options.Frame || options.Background != NoBackground) {
    if (CommandResult drawn = LayOverBackground(options, description->Control, picture); !drawn.IsDone()) {
      return drawn;
    }
  } else if (picture.Width() == 0) {
    return Failed(options.File, SubtitleText(options.Number) + " has an area without pixels");
  }
  return console.Interrupted() ? Interrupted() : Save(options.Out, picture);
}

}  // namespace quillmark::cli
