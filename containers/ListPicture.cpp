#include "containers/ListPicture.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <unordered_map>

#include <QImage>
#include <QString>

#include "base/FilePath.h"
#include "base/Words.h"
#include "containers/ByteSource.h"
#include "imaging/cBitmap.h"

namespace quillmark {
namespace {

constexpr std::size_t MaxColours = 4;
constexpr std::uint32_t MaxWidth = 720;
constexpr std::uint32_t MaxHeight = 576;
/// Signature, and the length, type and first two fields of the first chunk.
constexpr std::size_t PngHeadSize = 24;
constexpr std::array<std::uint8_t, 8> PngSignature = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

UnitColour ToUnitColour(QRgb pixel) {
  return {.Colour = MakeRgb(static_cast<unsigned>(qRed(pixel)), static_cast<unsigned>(qGreen(pixel)),
                            static_cast<unsigned>(qBlue(pixel))),
          .Contrast = static_cast<std::uint8_t>(static_cast<unsigned>(qAlpha(pixel)) >> 4U)};
}

/// A picture's pixels as indexes of its colours.
struct IndexedPicture {
  int Width = 0;
  int Height = 0;
  std::vector<std::uint32_t> Cells;
  std::vector<UnitColour> Colours;
  /// Which of them have any alpha, also too little for a contrast: these are not cut off.
  std::vector<bool> HasAlpha;
  bool HasTable = false;  ///< the colours are the file's own table

  void AddColour(QRgb pixel) {
    Colours.push_back(ToUnitColour(pixel));
    HasAlpha.push_back(qAlpha(pixel) != 0);
  }
};

Result<void> CheckHead(const std::filesystem::path& path) {
  const auto source = OpenFileSource(path);
  if (!source) {
    return source.Why();
  }
  std::array<std::uint8_t, PngHeadSize> head = {};
  const auto found = (*source)->ReadAt(0, head);
  if (!found) {
    return found.Why();
  }
  if (*found < head.size() || !std::equal(PngSignature.begin(), PngSignature.end(), head.begin())) {
    return Failure{Words::Tr("it is no PNG file")};
  }
  const auto number = [&](std::size_t at) {
    return std::uint32_t{head[at]} << 24U | std::uint32_t{head[at + 1]} << 16U |
           std::uint32_t{head[at + 2]} << 8U | std::uint32_t{head[at + 3]};
  };
  const std::uint32_t width = number(16);
  const std::uint32_t height = number(20);
  if (width > MaxWidth || height > MaxHeight) {
    return Failure{
        Words::Tr("it has %1x%2 pixels, more than 720x576", {std::to_string(width), std::to_string(height)})};
  }
  return {};
}

/// The colours' table, or the pixels' colours, as they are or with alpha for one of them.
template <typename Colours>
void MakeTransparent(Colours& colours, const std::optional<Rgb>& transparent) {
  const bool hasAlpha = std::ranges::any_of(colours, [](QRgb colour) { return qAlpha(colour) != 255; });
  if (!transparent || hasAlpha) {
    return;
  }
  for (QRgb& colour : colours) {
    if (ToUnitColour(colour).Colour == *transparent) {
      colour &= RGB_MASK;
    }
  }
}

IndexedPicture ReadIndexes(const QImage& image, const std::optional<Rgb>& transparent) {
  IndexedPicture picture{.Width = image.width(),
                         .Height = image.height(),
                         .Cells = {},
                         .Colours = {},
                         .HasAlpha = {},
                         .HasTable = true};
  QList<QRgb> table = image.colorTable();
  MakeTransparent(table, transparent);
  table.resize(std::max<qsizetype>(table.size(), 256));  // whatever the cells hold
  std::ranges::for_each(table, [&](QRgb colour) { picture.AddColour(colour); });
  for (int y = 0; y < image.height(); ++y) {
    const std::uint8_t* const line = image.constScanLine(y);
    picture.Cells.insert(picture.Cells.end(), line, line + image.width());
  }
  return picture;
}

IndexedPicture ReadPixels(const QImage& image, const std::optional<Rgb>& transparent) {
  IndexedPicture picture{
      .Width = image.width(), .Height = image.height(), .Cells = {}, .Colours = {}, .HasAlpha = {}};
  std::vector<QRgb> pixels;
  for (int y = 0; y < image.height(); ++y) {
    const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    pixels.insert(pixels.end(), line, line + image.width());
  }
  MakeTransparent(pixels, transparent);
  std::unordered_map<QRgb, std::uint32_t> indexes;
  QRgb last = 0;
  std::uint32_t lastIndex = 0;
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    if (i == 0 || pixels[i] != last) {
      last = pixels[i];
      const auto [known, isNew] =
          indexes.try_emplace(last, static_cast<std::uint32_t>(picture.Colours.size()));
      if (isNew) {
        picture.AddColour(last);
      }
      lastIndex = known->second;
    }
    picture.Cells.push_back(lastIndex);
  }
  return picture;
}

Result<IndexedPicture> LoadPicture(const std::filesystem::path& path, const std::optional<Rgb>& transparent) {
  if (const auto checked = CheckHead(path); !checked) {
    return checked.Why();
  }
  cBitmap bitmap;
  bitmap.LoadFromFile(QString::fromStdString(Utf8FromPath(path)));
  if (bitmap.LastStatus() != 0 || bitmap.Width() < 1) {
    return Failure{
        Words::Tr("it cannot be decoded: %1", {cGDIP::StatusText(bitmap.LastStatus()).toStdString()})};
  }
  const QImage& image = bitmap.Image();
  return image.format() == QImage::Format_Indexed8
             ? ReadIndexes(image, transparent)
             : ReadPixels(image.convertToFormat(QImage::Format_ARGB32), transparent);
}

/// Part of a picture, which ends before Right and Bottom.
struct Part {
  int Left = 0;
  int Top = 0;
  int Right = 0;
  int Bottom = 0;
};

/// What is not transparent; left and top are even, and right and bottom, which may therefore lie one past the
/// end.
Part VisiblePart(const IndexedPicture& picture) {
  Part part{.Left = picture.Width, .Top = picture.Height, .Right = 0, .Bottom = 0};
  std::size_t cell = 0;
  for (int y = 0; y < picture.Height; ++y) {
    for (int x = 0; x < picture.Width; ++x, ++cell) {
      if (picture.HasAlpha[picture.Cells[cell]]) {
        part.Left = std::min(part.Left, x);
        part.Right = std::max(part.Right, x + 1);
        part.Top = std::min(part.Top, y);
        part.Bottom = y + 1;
      }
    }
  }
  if (part.Right == 0) {
    part = {.Left = 0, .Top = 0, .Right = picture.Width, .Bottom = picture.Height};
  }
  part.Left -= part.Left % 2;
  part.Top -= part.Top % 2;
  part.Right += part.Right % 2;
  part.Bottom += part.Bottom % 2;
  return part;
}

/// How many cells of the part hold each colour; those past the picture's ends hold none.
std::vector<std::uint64_t> CountCells(const IndexedPicture& picture, const Part& part) {
  std::vector<std::uint64_t> counts(picture.Colours.size());
  for (int y = part.Top; y < std::min(part.Bottom, picture.Height); ++y) {
    const auto line = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.Width);
    for (int x = part.Left; x < std::min(part.Right, picture.Width); ++x) {
      ++counts[picture.Cells[line + static_cast<std::size_t>(x)]];
    }
  }
  return counts;
}

/// The colours that are in use and differ in their looks, in the order of the table, and which of them each
/// colour is.
struct ColoursInUse {
  std::vector<CountedColour> Colours;
  std::vector<std::size_t> IndexOf;  ///< by the picture's index, where that is in use

  [[nodiscard]] std::size_t CountVisible() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(Colours, [](const auto& counted) { return counted.Colour.IsVisible(); }));
  }
};

std::uint32_t KeyOf(const UnitColour& colour) {
  return colour.IsVisible() ? colour.Colour | std::uint32_t{colour.Contrast} << 24U : 0;
}

ColoursInUse FindColours(const IndexedPicture& picture, const std::vector<std::uint64_t>& counts) {
  ColoursInUse inUse{.Colours = {}, .IndexOf = std::vector<std::size_t>(counts.size())};
  std::unordered_map<std::uint32_t, std::size_t> indexes;
  for (std::size_t i = 0; i < counts.size(); ++i) {
    if (counts[i] == 0) {
      continue;
    }
    const auto [known, isNew] = indexes.try_emplace(KeyOf(picture.Colours[i]), inUse.Colours.size());
    if (isNew) {
      inUse.Colours.push_back({.Colour = picture.Colours[i], .Count = 0});
    }
    inUse.Colours[known->second].Count += counts[i];
    inUse.IndexOf[i] = known->second;
  }
  return inUse;
}

/// The first pixel code that is transparent in a table.
std::optional<std::uint8_t> TransparentCode(const IndexedPicture& picture) {
  for (std::uint8_t code = 0; code < MaxColours; ++code) {
    if (!picture.Colours[code].IsVisible()) {
      return code;
    }
  }
  return std::nullopt;
}

/// Whether the first four entries of a table are all that is in use.
bool UsesCodesAlone(const std::vector<std::uint64_t>& counts) {
  return std::all_of(counts.begin() + MaxColours, counts.end(),
                     [](std::uint64_t count) { return count == 0; });
}

/// The cells of the part, each as what `indexOf` has for it; what lies past the ends is `outside`.
template <typename IndexOf>
void CopyCells(const IndexedPicture& picture, const Part& part, std::uint8_t outside, const IndexOf& indexOf,
               ListPicture& to) {
  to.Left = part.Left;
  to.Top = part.Top;
  to.Width = part.Right - part.Left;
  to.Height = part.Bottom - part.Top;
  to.Cells.assign(static_cast<std::size_t>(to.Width) * static_cast<std::size_t>(to.Height), outside);
  const int columns = std::min(part.Right, picture.Width) - part.Left;
  for (int y = part.Top; y < std::min(part.Bottom, picture.Height); ++y) {
    const auto from = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.Width) +
                      static_cast<std::size_t>(part.Left);
    const auto line = static_cast<std::size_t>(y - part.Top) * static_cast<std::size_t>(to.Width);
    for (std::size_t x = 0; x < static_cast<std::size_t>(columns); ++x) {
      to.Cells[line + x] = static_cast<std::uint8_t>(indexOf(picture.Cells[from + x]));
    }
  }
}

/// The colours of a picture that has too many, and which of them each one becomes.
struct FewColours {
  std::vector<UnitColour> Colours;
  std::vector<std::size_t> Becomes;
  std::optional<int> Error;
};

FewColours TakeFew(const std::vector<CountedColour>& colours) {
  const std::vector<std::size_t> becomes = TakeTogether(colours, MaxColours);
  FewColours few{.Colours = {}, .Becomes = std::vector<std::size_t>(colours.size()), .Error = {}};
  std::unordered_map<std::size_t, std::size_t> places;
  for (std::size_t i = 0; i < colours.size(); ++i) {
    const auto [place, isNew] = places.try_emplace(becomes[i], few.Colours.size());
    if (isNew) {
      few.Colours.push_back(colours[becomes[i]].Colour);
    }
    few.Becomes[i] = place->second;
    if (colours.size() > MaxColours) {
      few.Error = std::max(few.Error.value_or(0), ColourError(colours[i].Colour, colours[becomes[i]].Colour));
    }
  }
  return few;
}

}  // namespace

Result<ListPicture> ReadListPicture(const std::filesystem::path& path, const std::optional<Rgb>& transparent,
                                    bool reduce) {
  const auto loaded = LoadPicture(path, transparent);
  if (!loaded) {
    return loaded.Why();
  }
  const IndexedPicture& picture = *loaded;
  Part part = VisiblePart(picture);
  const std::vector<std::uint64_t> counts = CountCells(picture, part);
  ColoursInUse inUse = FindColours(picture, counts);
  if (inUse.Colours.size() > MaxColours && !reduce) {
    return Failure{Words::Tr("it has %1 colours, of which a subtitle has at most four",
                             {std::to_string(inUse.Colours.size())})};
  }
  const std::size_t visible = inUse.CountVisible();
  if (visible >= MaxColours && visible == inUse.Colours.size()) {
    part.Right = std::min(part.Right, picture.Width);
    part.Bottom = std::min(part.Bottom, picture.Height);
  }
  const bool isGrown = part.Right > picture.Width || part.Bottom > picture.Height;
  ListPicture few;
  if (const auto outside = picture.HasTable ? TransparentCode(picture) : std::nullopt;
      picture.HasTable && UsesCodesAlone(counts) && (outside || !isGrown)) {
    few.HasCodes = true;
    few.Colours.assign(picture.Colours.begin(), picture.Colours.begin() + MaxColours);
    CopyCells(
        picture, part, outside.value_or(0), [](std::uint32_t index) { return index; }, few);
    return few;
  }
  std::size_t outside = 0;
  if (isGrown) {
    const auto known = std::ranges::find_if_not(
        inUse.Colours, [](const auto& counted) { return counted.Colour.IsVisible(); });
    outside = static_cast<std::size_t>(known - inUse.Colours.begin());
    if (known == inUse.Colours.end()) {
      inUse.Colours.push_back({.Colour = {}, .Count = 1});
    }
  }
  FewColours colours = TakeFew(inUse.Colours);
  few.Colours = std::move(colours.Colours);
  few.Error = colours.Error;
  const auto indexOf = [&](std::uint32_t index) { return colours.Becomes[inUse.IndexOf[index]]; };
  CopyCells(picture, part, isGrown ? static_cast<std::uint8_t>(colours.Becomes[outside]) : std::uint8_t{0},
            indexOf, few);
  return few;
}

}  // namespace quillmark
