// One unit as a player carries it out, and what is shown of it. The input is the unit from its size field on,
// which is not looked at: the unit has all of the input. Whatever it is, states are in order, and each pixel
// has the colour that the state and its changes within the picture name for it.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "fuzz/StreamMutation.h"
#include "render/FieldDecoder.h"
#include "render/PlayerPicture.h"

namespace {

using namespace quillmark;

/// What every pixel is compared in; a state's full frame would take too long.
constexpr QSize Corner(48, 24);
/// Pictures of one input that are compared.
constexpr std::size_t MostPictures = 4;
/// Of larger areas the fields take too long to decode twice.
constexpr int LargestArea = 1 << 12;

void Require(bool rule) {
  if (!rule) {
    std::abort();
  }
}

constexpr DvdPalette palette = [] {
  DvdPalette entries = {};
  for (unsigned i = 0; i < entries.size(); ++i) {
    entries[i] = MakeRgb(i, 2 * i, 3 * i);
  }
  return entries;
}();

/// Codes and contrasts of one place of the frame, looked for from the start.
Argb ColourAt(const DisplayState& state, std::span<const ChangedLines> changes, int x, int y,
              std::uint8_t code) {
  CodeNibbles colours = state.Colours;
  CodeNibbles contrasts = state.Contrasts;
  for (const ChangedLines& lines : changes) {
    for (const ColourChange& change : lines.All()) {
      if (lines.First <= y && y <= lines.Last && change.Column <= x) {
        colours = change.Colours;
        contrasts = change.Contrasts;
      }
    }
  }
  return GetARGBColor(palette[colours[code]], contrasts[code]);
}

void RequireOrder(const DisplayTimeline& timeline) {
  for (std::size_t i = 0; i < timeline.States.size(); ++i) {
    const DisplayState& state = timeline.States[i];
    Require(i == 0 ? state.Time >= 0 : timeline.States[i - 1].Time < state.Time);
    Require(timeline.At(state.Time) == &state);
    Require(!state.Changes || *state.Changes < timeline.Changes.size());
  }
  for (const ColourChanges& changes : timeline.Changes) {
    for (std::size_t i = 0; i < changes.size(); ++i) {
      Require(changes[i].First <= changes[i].Last && changes[i].Count >= 1);
      Require(i == 0 || changes[i - 1].Last < changes[i].First);
    }
  }
}

void RequirePicture(std::span<const std::uint8_t> unit, const DisplayTimeline& timeline,
                    const DisplayState& state, PlayerPicture& player) {
  const auto changes = timeline.ChangesOf(state);
  cBitmap picture;
  player.Draw(state, changes, palette, Corner, picture);
  if (!state.IsShown() || !state.Area || !state.Fields) {
    Require(picture.Width() == 0);
    return;
  }
  const DisplayArea& area = *state.Area;
  const int width = std::max(std::min(area.Width(), Corner.width() - area.X.First), 0);
  const int height = std::max(std::min(area.Height(), Corner.height() - area.Y.First), 0);
  if (width == 0 || height == 0) {
    Require(picture.Width() == 0);
    return;
  }
  Require(picture.Width() == width && picture.Height() == height);
  if (area.Width() * area.Height() > LargestArea) {
    return;
  }
  constexpr std::uint8_t notReached = 9;
  const auto stride = static_cast<std::size_t>(area.Width());
  std::vector<std::uint8_t> codes(stride * static_cast<std::size_t>(area.Height()), notReached);
  DecodeFields<std::uint8_t>(unit, codes, area.Width(), area.Height(), state.Fields->Top,
                             state.Fields->Bottom, {0, 1, 2, 3});
  const auto pixels = picture.LockPixels();
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const std::uint8_t code = codes[static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x)];
      const Argb pixel =
          pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
      const QPoint place(area.X.First + x, area.Y.First + y);
      const Argb expected = code == notReached ? 0U : ColourAt(state, changes, place.x(), place.y(), code);
      Require(pixel == expected);
      const auto asked = player.At(state, changes, place);
      Require(asked ? asked->Code == code && GetARGBColor(palette[asked->Colour], asked->Contrast) == expected
                    : code == notReached);
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 4 || size > 0xFFFF) {
    return 0;
  }
  const std::span unit(data, size);
  const auto controlOffset = static_cast<std::uint16_t>(data[2] << 8U | data[3]);
  const DisplayTimeline timeline = ReadDisplay(unit, controlOffset);
  RequireOrder(timeline);
  Require(!IsAnimated(unit, controlOffset) ||
          std::ranges::any_of(timeline.States, [](const DisplayState& state) { return state.IsShown(); }));
  for (const DisplayDamage& damage : timeline.Damage) {
    Require(!DamageText(damage).empty());
  }
  PlayerPicture player(unit);
  for (std::size_t i = 0; i < std::min(timeline.States.size(), MostPictures); ++i) {
    RequirePicture(unit, timeline, timeline.States[i], player);
  }
  return 0;
}

QUILLMARK_MUTATOR(300, MutateUnit)
