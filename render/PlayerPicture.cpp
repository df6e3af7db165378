#include "render/PlayerPicture.h"

#include <algorithm>
#include <array>

#include "render/FieldDecoder.h"

namespace quillmark {
namespace {

/// What cells hold that no run reaches; the others hold their pixel code.
constexpr std::uint8_t UnreachedCell = 4;
/// By what a cell holds.
using PixelColours = std::array<Argb, 5>;

PixelColours ColoursOf(const DvdPalette& palette, const CodeNibbles& colours, const CodeNibbles& contrasts) {
  PixelColours cells = {};
  for (std::size_t code = 0; code < colours.size(); ++code) {
    cells[code] = GetARGBColor(palette[colours[code]], contrasts[code]);
  }
  return cells;
}

/// Cells of a line that have the same colours, from where the stretch before ends.
struct Stretch {
  std::size_t End = 0;  ///< column after the last one, from the area's first
  PixelColours Colours = {};
};

/// The visible cells of an area, and what they are drawn to.
struct Canvas {
  std::span<const std::uint8_t> Codes;
  std::size_t Stride = 0;  ///< of the codes
  std::span<std::uint32_t> Pixels;
  std::size_t Columns = 0;  ///< of the pixels

  void DrawLine(int line, std::span<const Stretch> stretches) const {
    const auto row = static_cast<std::size_t>(line);
    const auto codes = Codes.subspan(row * Stride, Columns);
    const auto pixels = Pixels.subspan(row * Columns, Columns);
    std::size_t at = 0;
    for (const Stretch& stretch : stretches) {
      for (; at < stretch.End; ++at) {
        pixels[at] = stretch.Colours[codes[at]];
      }
    }
  }

  void DrawLines(int first, int end, std::span<const Stretch> stretches) const {
    for (int line = first; line < end; ++line) {
      DrawLine(line, stretches);
    }
  }
};

}  // namespace

void PlayerPicture::Decode(const Part& part) {
  if (decoded_ == part) {
    return;
  }
  codes_.assign(static_cast<std::size_t>(part.Width) * static_cast<std::size_t>(part.Lines), UnreachedCell);
  DecodeFields<std::uint8_t>(unit_, codes_, part.Width, part.Lines, part.Fields.Top, part.Fields.Bottom,
                             {0, 1, 2, 3});
  decoded_ = part;
}

void PlayerPicture::Draw(const DisplayState& state, std::span<const ChangedLines> changes,
                         const DvdPalette& palette, QSize within, cBitmap& picture) {
  picture = cBitmap();
  if (!state.IsShown() || !state.Area || !state.Fields) {
    return;
  }
  const DisplayArea& area = *state.Area;
  const int columns = std::min(area.Width(), within.width() - area.X.First);
  const int below = within.height() - area.Y.First;
  const int lines = std::min(area.Height(), below);
  if (columns < 1 || lines < 1) {
    return;
  }
  // Lines are decoded in pairs.
  Decode({.Width = area.Width(),
          .Lines = std::min(area.Height(), below + (below & 1)),
          .Fields = *state.Fields});
  picture.Create(columns, lines);
  const auto pixels = picture.LockPixels();
  if (pixels.empty()) {
    return;
  }
  const Canvas canvas{.Codes = codes_,
                      .Stride = static_cast<std::size_t>(area.Width()),
                      .Pixels = pixels,
                      .Columns = static_cast<std::size_t>(columns)};
  const PixelColours whole = ColoursOf(palette, state.Colours, state.Contrasts);
  const std::array<Stretch, 1> unchanged = {{{.End = canvas.Columns, .Colours = whole}}};
  std::vector<Stretch> stretches;
  int line = 0;
  for (const ChangedLines& group : changes) {
    const int first = std::clamp(group.First - area.Y.First, line, lines);
    const int end = std::clamp(group.Last + 1 - area.Y.First, line, lines);
    canvas.DrawLines(line, first, unchanged);
    stretches.clear();
    stretches.push_back({.End = 0, .Colours = whole});
    for (const ColourChange& change : group.All()) {
      stretches.back().End = static_cast<std::size_t>(std::clamp(change.Column - area.X.First, 0, columns));
      stretches.push_back(
          {.End = canvas.Columns, .Colours = ColoursOf(palette, change.Colours, change.Contrasts)});
    }
    canvas.DrawLines(first, end, stretches);
    line = end;
  }
  canvas.DrawLines(line, lines, unchanged);
}

std::optional<PlayedPixel> PlayerPicture::At(const DisplayState& state, std::span<const ChangedLines> changes,
                                             QPoint pixel) {
  if (!state.IsShown() || !state.Area || !state.Fields) {
    return std::nullopt;
  }
  const DisplayArea& area = *state.Area;
  const int column = pixel.x() - area.X.First;
  const int line = pixel.y() - area.Y.First;
  if (column < 0 || column >= area.Width() || line < 0 || line >= area.Height()) {
    return std::nullopt;
  }
  // What was decoded to be drawn has the frame's lines, this one among them.
  const Part part = {.Width = area.Width(), .Lines = area.Height(), .Fields = *state.Fields};
  const bool isDecoded =
      decoded_ && decoded_->Width == part.Width && decoded_->Fields == part.Fields && line < decoded_->Lines;
  if (!isDecoded) {
    Decode(part);
  }
  const std::size_t code = codes_[static_cast<std::size_t>(line) * static_cast<std::size_t>(part.Width) +
                                  static_cast<std::size_t>(column)];
  if (code == UnreachedCell) {
    return std::nullopt;
  }
  PlayedPixel found = {.Code = code, .Colour = state.Colours[code], .Contrast = state.Contrasts[code]};
  for (const ChangedLines& group : changes) {
    if (pixel.y() < group.First || pixel.y() > group.Last) {
      continue;
    }
    for (const ColourChange& change : group.All()) {
      if (change.Column <= pixel.x()) {
        found.Colour = change.Colours[code];
        found.Contrast = change.Contrasts[code];
      }
    }
  }
  return found;
}

}  // namespace quillmark
