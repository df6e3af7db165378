#include "render/Thumbnail.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <utility>

#include "imaging/Blend.h"
#include "render/Composition.h"
#include "render/FieldDecoder.h"

namespace quillmark {
namespace {

/// Cell values are bytes.
constexpr std::size_t CellValues = 256;

/// How often each cell value occurs, and how often it stands beside a clear cell.
struct CellCounts {
  std::array<std::uint32_t, CellValues> All = {};
  std::array<std::uint32_t, CellValues> AtEdge = {};
};
using CellColours = std::array<QRgb, CellValues>;

/// So many lines are enough to count in.
constexpr std::size_t CountedLines = 24;

void CountLine(std::span<const std::uint8_t> cells, CellCounts& counts) {
  std::uint8_t before = 0;
  for (const std::uint8_t cell : cells) {
    ++counts.All[cell];
    // One of the two is 0.
    counts.AtEdge[before | cell] += (before == 0) != (cell == 0) ? 1 : 0;
    before = cell;
  }
  ++counts.AtEdge[before];
}

/// All cells are 0: the first one is, and each of the others is as the one before it.
bool IsClear(std::span<const std::uint8_t> cells) {
  return cells.empty() ||
         (cells[0] == 0 && std::memcmp(cells.data(), cells.data() + 1, cells.size() - 1) == 0);
}

int Luminance(QRgb colour) {
  return (299 * qRed(colour) + 587 * qGreen(colour) + 114 * qBlue(colour)) / 1000;
}

/// By how much the cells differ from the ground, all together.
std::uint64_t ContrastOf(const CellCounts& counts, std::span<const Argb> colours, QRgb ground) {
  std::uint64_t contrast = 0;
  for (std::size_t value = 1; value < colours.size(); ++value) {
    const int difference = std::abs(Luminance(BlendOver(colours[value], ground)) - Luminance(ground));
    contrast += std::uint64_t{counts.All[value]} * static_cast<unsigned>(difference);
  }
  return contrast;
}

/// What is written has an outline mostly, which has to differ from it and not from the ground: the colour
/// that stands beside clear cells most often does not count where there is another one.
QRgb GroundFor(CellCounts counts, std::span<const Argb> colours) {
  counts.All[0] = counts.AtEdge[0] = 0;
  const auto outline =
      static_cast<std::size_t>(std::ranges::max_element(counts.AtEdge) - counts.AtEdge.begin());
  const std::uint32_t outlineCount = std::exchange(counts.All[outline], 0);
  if (std::ranges::all_of(counts.All, [](std::uint32_t count) { return count == 0; })) {
    counts.All[outline] = outlineCount;
  }
  return ContrastOf(counts, colours, LightGround) > ContrastOf(counts, colours, DarkGround) ? LightGround
                                                                                            : DarkGround;
}

QImage Fitted(const QImage& whole, const ThumbnailRoom& room) {
  const double factor = std::min({static_cast<double>(room.Pixels.width()) / whole.width(),
                                  static_cast<double>(room.Pixels.height()) / whole.height(), room.Scale});
  QImage fitted;
  if (factor >= 1) {
    fitted = whole.scaled(whole.size() * static_cast<int>(factor));
  } else {
    const QSize size(static_cast<int>(std::lround(whole.width() * factor)),
                     static_cast<int>(std::lround(whole.height() * factor)));
    fitted = whole.scaled(size.expandedTo({1, 1}), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  }
  // What was not scaled shares the memory that the next one is drawn in.
  fitted.detach();
  fitted.setDevicePixelRatio(room.Scale);
  return fitted;
}

}  // namespace

QImage ThumbnailPainter::Paint(std::span<const std::uint8_t> unit, const SpuControl& control,
                               const CodeColours& colours, const ThumbnailRoom& room) {
  // Areas may be many times as large as the frame; the lines below it are not decoded. Lines are decoded in
  // pairs.
  const int below = FrameHeight576 - control.Y1;
  const int lines = std::min(control.Height(), below + (below & 1));
  const int columns = std::min(control.Width(), FrameWidth - control.X1);
  if (columns < 1 || lines < 1) {
    return {};
  }
  CodeTable<std::uint8_t> table = {};
  std::array<Argb, 5> seen = {};
  for (std::size_t code = 0; code < table.size(); ++code) {
    seen[code + 1] = colours[code];
    table[code] = qAlpha(colours[code]) == 0 ? std::uint8_t{0} : static_cast<std::uint8_t>(code + 1);
  }
  cells_.assign(static_cast<std::size_t>(control.Width()) * static_cast<std::size_t>(lines), 0);
  DecodeFields<std::uint8_t>(unit, cells_, control.Width(), lines, control.TopFieldOffset,
                             control.BottomFieldOffset, table);
  return Draw({.Stride = control.Width(), .Columns = columns, .Lines = std::min(lines, below)}, seen, room);
}

QImage ThumbnailPainter::PaintMerged(const MergedInput& input, const ThumbnailRoom& room) {
  merged_.Compose(input);
  const FrameCells frame = merged_.Cells();
  const std::span<const Argb> colours = merged_.Colours();
  std::array<std::uint8_t, CellValues> visible = {};
  for (std::size_t value = 0; value < colours.size(); ++value) {
    visible[value] = qAlpha(colours[value]) == 0 ? std::uint8_t{0} : static_cast<std::uint8_t>(value);
  }
  cells_.assign(frame.Cells.size(), 0);
  constexpr auto Stride = static_cast<std::size_t>(MergedWidth);
  for (std::size_t line = 0; line < frame.RowInUse.size(); ++line) {
    if (frame.RowInUse[line] != 0) {
      std::ranges::transform(frame.Cells.subspan(line * Stride, Stride),
                             cells_.begin() + static_cast<std::ptrdiff_t>(line * Stride),
                             [&visible](std::uint8_t value) { return visible[value]; });
    }
  }
  return Draw({.Stride = MergedWidth, .Columns = MergedWidth, .Lines = frame.Height}, colours, room);
}

ThumbnailPainter::Columns ThumbnailPainter::FindVisible(const Part& part) {
  lines_.clear();
  columnInUse_.assign(static_cast<std::size_t>(part.Columns), 0);
  int empty = 0;
  for (int line = 0; line < part.Lines; ++line) {
    const auto cells = std::span(cells_).subspan(
        static_cast<std::size_t>(line) * static_cast<std::size_t>(part.Stride), columnInUse_.size());
    if (IsClear(cells)) {
      ++empty;
      continue;
    }
    for (int gap = lines_.empty() ? 0 : std::min(empty, MostEmptyLines); gap > 0; --gap) {
      lines_.push_back(line - gap);
    }
    empty = 0;
    lines_.push_back(line);
    for (std::size_t x = 0; x < cells.size(); ++x) {
      columnInUse_[x] |= cells[x];
    }
  }
  const auto isInUse = [](std::uint8_t column) { return column != 0; };
  const auto first = std::ranges::find_if(columnInUse_, isInUse);
  const auto last = std::find_if(columnInUse_.rbegin(), columnInUse_.rend(), isInUse).base();
  return {.First = static_cast<int>(first - columnInUse_.begin()),
          .Count = lines_.empty() ? 0 : static_cast<int>(last - first)};
}

QImage ThumbnailPainter::Draw(const Part& part, std::span<const Argb> colours, const ThumbnailRoom& room) {
  const Columns columns = FindVisible(part);
  if (columns.Count < 1 || room.Pixels.isEmpty()) {
    return {};
  }
  const auto width = static_cast<std::size_t>(columns.Count);
  const auto cellsOf = [&](int line) {
    const auto start = static_cast<std::size_t>(line) * static_cast<std::size_t>(part.Stride);
    return std::span(cells_).subspan(start + static_cast<std::size_t>(columns.First), width);
  };
  CellCounts counts;
  for (std::size_t i = 0; i < lines_.size(); i += 1 + lines_.size() / CountedLines) {
    CountLine(cellsOf(lines_[i]), counts);
  }
  const QRgb ground = GroundFor(counts, colours);
  CellColours drawn = {};
  drawn[0] = ground;
  for (std::size_t value = 1; value < colours.size(); ++value) {
    drawn[value] = BlendOver(colours[value], ground);
  }
  pixels_.resize(width * lines_.size());
  auto at = pixels_.begin();
  for (const int line : lines_) {
    at = std::ranges::transform(cellsOf(line), at, [&drawn](std::uint8_t cell) { return drawn[cell]; }).out;
  }
  return Fitted(
      QImage(reinterpret_cast<const uchar*>(pixels_.data()), columns.Count, static_cast<int>(lines_.size()),
             columns.Count * static_cast<qsizetype>(sizeof(QRgb)), QImage::Format_RGB32),
      room);
}

}  // namespace quillmark
