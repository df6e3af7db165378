#include "render/AuthoringPicture.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <set>

#include <QList>
#include <QRgb>

#include "render/Composition.h"
#include "render/FieldDecoder.h"

namespace quillmark {
namespace {

/// What a cell holds that no run reached; the others hold their pixel codes.
constexpr std::uint8_t Unreached = 4;

/// Which of the five values cells hold.
using ValuesInUse = std::array<bool, 5>;

ValuesInUse FindValues(std::span<const std::uint8_t> cells) {
  std::array<std::uint8_t, 256> seen = {};  // as bytes can be written without a look at the others
  for (const std::uint8_t cell : cells) {
    seen[cell] = 1;
  }
  ValuesInUse values = {};
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = seen[i] != 0;
  }
  return values;
}

bool IsVisible(Argb colour) {
  return colour >> 24U != 0;
}

/// How many colours can be seen.
std::size_t CountVisible(const ValuesInUse& values, const CodeColours& colours) {
  std::set<Argb> visible;
  for (std::size_t code = 0; code < colours.size(); ++code) {
    if (values[code] && IsVisible(colours[code])) {
      visible.insert(colours[code]);
    }
  }
  return visible.size();
}

/// The first code that is transparent.
std::optional<std::uint8_t> TransparentCode(const CodeColours& colours) {
  const auto* const found = std::ranges::find_if_not(colours, IsVisible);
  return found == colours.end() ? std::nullopt
                                : std::optional(static_cast<std::uint8_t>(found - colours.begin()));
}

/// Cells, row-major.
struct CellPicture {
  std::span<const std::uint8_t> Cells;
  int Width = 0;
  int Height = 0;

  [[nodiscard]] std::span<const std::uint8_t> Line(int y) const {
    const auto width = static_cast<std::size_t>(Width);
    return Cells.subspan(static_cast<std::size_t>(y) * width, width);
  }
};

/// Lines are decoded whole, from the first one on; how many of them there are.
int DecodedLines(const CellPicture& picture) {
  int lines = picture.Height;
  while (lines > 0 && picture.Line(lines - 1).front() == Unreached) {
    --lines;
  }
  return lines;
}

/// One line or column more, on one of two sides.
enum class Padding : std::uint8_t { None, Before, After };

/// `start` and `size` are those of a picture in one direction, `frame` the frame's size.
Padding PaddingFor(int start, int size, int frame, bool always) {
  if (size % 2 == 0) {
    return Padding::None;
  }
  const bool noRoomAfter = start + size >= frame && start > 0;
  return noRoomAfter ? Padding::Before : always ? Padding::After : Padding::None;
}

/// Draws the cells with what is added around them: cells of `fill`, or of what stands next to them.
QImage DrawPadded(const CellPicture& picture, Padding columns, Padding lines,
                  std::optional<std::uint8_t> fill) {
  QImage image(picture.Width + (columns == Padding::None ? 0 : 1),
               picture.Height + (lines == Padding::None ? 0 : 1), QImage::Format_Indexed8);
  const int left = columns == Padding::Before ? 1 : 0;
  const int top = lines == Padding::Before ? 1 : 0;
  const auto width = static_cast<std::size_t>(picture.Width);
  for (int y = 0; y < image.height(); ++y) {
    std::uint8_t* const to = image.scanLine(y);
    const bool isAdded = y - top < 0 || y - top >= picture.Height;
    const auto from = picture.Line(std::clamp(y - top, 0, picture.Height - 1));
    std::memcpy(to + left, from.data(), width);
    if (columns != Padding::None) {
      const std::size_t at = left == 1 ? 0 : width;
      to[at] = fill.value_or(left == 1 ? from.front() : from.back());
    }
    if (isAdded && fill) {
      std::memset(to, *fill, static_cast<std::size_t>(image.width()));
    }
  }
  return image;
}

QList<QRgb> ColourTable(const CodeColours& colours, bool withUnreached) {
  QList<QRgb> table(colours.begin(), colours.end());
  if (withUnreached) {
    table.append(0U);
  }
  return table;
}

}  // namespace

AuthoringPicture AuthoringPictureMaker::Make(std::span<const std::uint8_t> unit, const SpuControl& control,
                                             const CodeColours& colours, int frameHeight) {
  const int width = control.Width();
  const int height = control.Height();
  AuthoringPicture picture{.Image = {}, .X = control.X1, .Y = control.Y1};
  if (width < 1 || height < 1) {
    return picture;
  }
  cells_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), Unreached);
  DecodeFields<std::uint8_t>(unit, cells_, width, height, control.TopFieldOffset, control.BottomFieldOffset,
                             {0, 1, 2, 3});
  const ValuesInUse values = FindValues(cells_);
  const auto transparent = TransparentCode(colours);
  if (values[Unreached] && transparent) {
    std::ranges::replace(cells_, Unreached, *transparent);
  }
  CellPicture decoded{.Cells = cells_, .Width = width, .Height = height};
  const bool isFull = CountVisible(values, colours) == colours.size();
  if (isFull) {
    decoded.Height = DecodedLines(decoded);  // the others would be of a fifth colour
  }
  const Padding columns = PaddingFor(picture.X, width, FrameWidth, isFull);
  const Padding lines = PaddingFor(picture.Y, decoded.Height, frameHeight, isFull);
  const std::uint8_t fill = transparent.value_or(Unreached);
  picture.Image = DrawPadded(decoded, columns, lines, isFull ? std::nullopt : std::optional(fill));
  picture.Image.setColorTable(ColourTable(colours, !transparent && !isFull));
  picture.X -= columns == Padding::Before ? 1 : 0;
  picture.Y -= lines == Padding::Before ? 1 : 0;
  if (isFull && (columns != Padding::None || lines != Padding::None)) {
    picture.Fits = AuthoringPicture::Fit::DoubledEdge;
  }
  return picture;
}

}  // namespace quillmark
