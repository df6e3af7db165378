#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "imaging/cGraphics.h"
#include "render/Composition.h"
#include "render/PictureFile.h"
#include "render/PlayerPicture.h"
#include "render/SubtitleDescription.h"

namespace quillmark::cli {
namespace {

constexpr const char* NoBackground = "none";
constexpr const char* CheckerBackground = "checker";

/// "#rrggbb" as opaque ARGB.
std::optional<std::uint32_t> ColourOf(std::string_view name) {
  constexpr std::size_t Digits = 6;
  if (name.size() != 1 + Digits || name.front() != '#') {
    return std::nullopt;
  }
  std::uint32_t colour = 0;
  const char* end = name.data() + name.size();
  const auto read = std::from_chars(name.data() + 1, end, colour, 16);
  return read.ptr == end ? std::optional(0xFF000000 | colour) : std::nullopt;
}

/// The frame without the subtitle; its status tells whether a background file was drawn.
CommandResult MakeBackground(const std::string& name, int height, QImage& frame) {
  if (name == NoBackground) {
    frame = QImage(FrameWidth, height, QImage::Format_ARGB32);
    frame.fill(0U);
    return {};
  }
  Background background;
  if (const auto colour = ColourOf(name)) {
    background.Source = Background::Kind::Colour;
    background.Colour = *colour;
  } else if (name != CheckerBackground) {
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

/// A picture, and where it stands in the frame.
struct PlacedPicture {
  cBitmap Picture;
  int X = 0;
  int Y = 0;
};

[[nodiscard]] bool ShowsFrame(const PictureOptions& options) {
  return options.Frame || options.Background != NoBackground;
}

CommandResult LayOverBackground(const PictureOptions& options, PlacedPicture& placed) {
  const int height = options.Frame.value_or(FrameHeight576);
  QImage frame;
  if (CommandResult made = MakeBackground(options.Background, height, frame); !made.IsDone()) {
    return made;
  }
  if (placed.Picture.Width() > 0) {
    cGraphics(frame).DrawImage(placed.Picture, placed.X, placed.Y);
  }
  CopyFrame(frame, height, placed.Picture);
  return {};
}

/// The subtitle as the window shows it.
CommandResult DrawStill(const PictureOptions& options, const SupStream& stream, const DvdPalette& palette,
                        PlacedPicture& placed) {
  SubtitleReader reader(stream);
  const auto description = reader.Read(static_cast<std::size_t>(options.Number - 1));
  if (!description) {
    return Failed(options.File,
                  Words::Tr("subtitle %1 cannot be converted", {std::to_string(options.Number)}));
  }
  const SpuControl& control = description->Control;
  DecodePicture(reader.Unit(), control, MakeCodeColours(palette, control), placed.Picture);
  placed.X = control.X1;
  placed.Y = control.Y1;
  return {};
}

/// The area that holds at the moment, or else the first one of the unit: what is clear there has a size too.
std::optional<DisplayArea> AreaAt(const DisplayTimeline& timeline, const DisplayState* state) {
  if (state != nullptr && state->Area) {
    return state->Area;
  }
  const auto first =
      std::ranges::find_if(timeline.States, [](const DisplayState& later) { return later.Area.has_value(); });
  return first == timeline.States.end() ? std::nullopt : first->Area;
}

/// The subtitle as a player shows it at the moment that is asked for.
CommandResult DrawPlayed(const PictureOptions& options, const SupStream& stream, const DvdPalette& palette,
                         const Console& console, PlacedPicture& placed) {
  const PlayedUnit unit = PlayedUnitOf(stream, static_cast<std::size_t>(options.Number - 1));
  const DisplayTimeline timeline = ReadDisplay(unit.Bytes, unit.ControlOffset);
  if (timeline.States.empty()) {
    return Failed(options.File,
                  Words::Tr("subtitle %1 cannot be played: %2",
                            {std::to_string(options.Number), DamageText(timeline.Damage.front())}));
  }
  for (const DisplayDamage& damage : timeline.Damage) {
    console.Warn(options.File, SubtitleText(options.Number) + ": " + DamageText(damage));
  }
  const DisplayState* const state = timeline.At(options.At);
  const auto area = AreaAt(timeline, state);
  if (!area) {
    return {};
  }
  placed.X = area->X.First;
  placed.Y = area->Y.First;
  if (state != nullptr && (!unit.ReplacedAt || options.At < *unit.ReplacedAt)) {
    // Alone, the picture has all of its area, as the still one has.
    const QSize whole(area->X.Last + 1, area->Y.Last + 1);
    const QSize within =
        ShowsFrame(options) ? QSize(FrameWidth, options.Frame.value_or(FrameHeight576)) : whole;
    PlayerPicture(unit.Bytes).Draw(*state, timeline.ChangesOf(*state), palette, within, placed.Picture);
  }
  if (placed.Picture.Width() == 0 && !ShowsFrame(options) && area->Width() > 0 && area->Height() > 0) {
    placed.Picture.Create(area->Width(), area->Height());
  }
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
  PlacedPicture placed;
  if (CommandResult drawn = options.Player ? DrawPlayed(options, stream, palette, console, placed)
                                           : DrawStill(options, stream, palette, placed);
      !drawn.IsDone()) {
    return drawn;
  }
  if (ShowsFrame(options)) {
    if (CommandResult drawn = LayOverBackground(options, placed); !drawn.IsDone()) {
      return drawn;
    }
  } else if (placed.Picture.Width() == 0) {
    return Failed(options.File,
                  Words::Tr("subtitle %1 has an area without pixels", {std::to_string(options.Number)}));
  }
  return console.Interrupted() ? Interrupted() : Save(options.Out, placed.Picture);
}

}  // namespace quillmark::cli
