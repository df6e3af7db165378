#include "imaging/PngWriter.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <libdeflate.h>
#include <memory>
#include <new>
#include <numeric>
#include <span>

namespace quillmark {
namespace {

constexpr qsizetype MaxBytes = qsizetype{1} << 30U;

/// The levels of libdeflate at which pictures of this kind become about as small as others' PNG files; the
/// higher one takes nearly twice as long for a seventh of the size, which is worth it where there is much to
/// save (docs/benchmarks.md).
constexpr int SmallLevel = 4;
constexpr int LargeLevel = 6;
constexpr std::size_t MaxSmall = std::size_t{104} << 10U;

enum class ColourType : std::uint8_t { Palette = 3, Rgba = 6 };
/// What a row's bytes are told as: themselves, or their differences from the pixel on the left.
enum class Filter : std::uint8_t { None = 0, Sub = 1 };

/// Memory that nothing is written to before its user does; null where there is not enough.
using Buffer = std::unique_ptr<std::uint8_t[]>;
Buffer Allocate(std::size_t size) {
  return Buffer(new (std::nothrow) std::uint8_t[size]);
}

/// Of one level, as there is no other use for it.
class Compressor {
 public:
  explicit Compressor(int level) : compressor_(libdeflate_alloc_compressor(level)) {}

  /// nullptr where there is not enough memory.
  [[nodiscard]] libdeflate_compressor* Get() const { return compressor_.get(); }

 private:
  struct Free {
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
  };
  std::unique_ptr<libdeflate_compressor, Free> compressor_;
};

/// Making one takes about as long as packing a small picture.
libdeflate_compressor* CompressorFor(std::size_t size) {
  thread_local const Compressor small(SmallLevel);
  thread_local const Compressor large(LargeLevel);
  return (size <= MaxSmall ? small : large).Get();
}

/// An image's size in the terms of the format.
struct Layout {
  ColourType Colours = ColourType::Rgba;
  unsigned Bits = 8;         ///< of a sample: of an index, or of one part of a colour
  std::size_t RowBytes = 0;  ///< without the filter before them

  [[nodiscard]] std::size_t Size(int height) const {
    return (RowBytes + 1) * static_cast<std::size_t>(height);
  }
};

Layout LayoutOf(const QImage& image) {
  const auto width = static_cast<std::size_t>(image.width());
  if (image.format() == QImage::Format_ARGB32) {
    return {.Colours = ColourType::Rgba, .Bits = 8, .RowBytes = 4 * width};
  }
  const qsizetype colours = image.colorCount();
  const unsigned bits = colours <= 4 ? 2 : colours <= 16 ? 4 : 8;
  return {.Colours = ColourType::Palette, .Bits = bits, .RowBytes = (width * bits + 7) / 8};
}

/// The bytes red, green, blue and alpha, in this order in memory.
std::uint32_t Rgba(std::uint32_t argb) {
  constexpr bool IsLittle = std::endian::native == std::endian::little;
  constexpr unsigned RedAt = IsLittle ? 0 : 24;
  constexpr unsigned GreenAt = IsLittle ? 8 : 16;
  constexpr unsigned BlueAt = IsLittle ? 16 : 8;
  constexpr unsigned AlphaAt = IsLittle ? 24 : 0;
  return (argb >> 16U & 0xFFU) << RedAt | (argb >> 8U & 0xFFU) << GreenAt | (argb & 0xFFU) << BlueAt |
         argb >> 24U << AlphaAt;
}

/// Filtered by Sub: runs become zeros, whatever their colour. In an empty row the filter is a zero as well,
/// so that empty rows are one long run. All loops are made for the compiler's vectors. `pixels` has room for
/// the row and one pixel before it, which is 0.
void PutColours(const std::uint32_t* row, std::span<std::uint32_t> pixels, std::uint8_t* to) {
  std::transform(row, row + pixels.size() - 1, pixels.begin() + 1, Rgba);
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(pixels.data());
  const std::size_t size = pixels.size_bytes() - sizeof(std::uint32_t);
  const bool isEmpty = std::accumulate(pixels.begin(), pixels.end(), 0U, std::bit_or<>()) == 0;
  *to++ = static_cast<std::uint8_t>(isEmpty ? Filter::None : Filter::Sub);
  for (std::size_t i = 0; i < size; ++i) {
    to[i] = static_cast<std::uint8_t>(bytes[i + sizeof(std::uint32_t)] - bytes[i]);
  }
}

/// Indexes of `bits` bits, the first one in the highest bits of a byte.
void PutIndexes(std::span<const std::uint8_t> row, unsigned bits, std::uint8_t* to) {
  *to++ = static_cast<std::uint8_t>(Filter::None);
  if (bits == 8) {
    std::ranges::copy(row, to);
    return;
  }
  const std::size_t each = 8 / bits;
  const unsigned mask = (1U << bits) - 1U;
  for (std::size_t x = 0; x < row.size(); x += each) {
    unsigned byte = 0;
    for (std::size_t i = 0; i < each; ++i) {
      byte = byte << bits | (x + i < row.size() ? row[x + i] & mask : 0U);
    }
    *to++ = static_cast<std::uint8_t>(byte);
  }
}

/// All rows, each with its filter before it; false where there is not enough memory.
bool PutRows(const QImage& image, const Layout& layout, std::uint8_t* to) {
  const auto width = static_cast<std::size_t>(image.width());
  const std::size_t step = layout.RowBytes + 1;
  if (layout.Colours == ColourType::Palette) {
    for (int y = 0; y < image.height(); ++y, to += step) {
      PutIndexes({image.constScanLine(y), width}, layout.Bits, to);
    }
    return true;
  }
  const std::unique_ptr<std::uint32_t[]> pixels(new (std::nothrow) std::uint32_t[width + 1]);
  if (pixels == nullptr) {
    return false;
  }
  pixels[0] = 0;
  for (int y = 0; y < image.height(); ++y, to += step) {
    PutColours(reinterpret_cast<const std::uint32_t*>(image.constScanLine(y)), {pixels.get(), width + 1}, to);
  }
  return true;
}

void AppendNumber(QByteArray& png, std::uint32_t value) {
  for (const unsigned shift : {24U, 16U, 8U, 0U}) {
    png.append(static_cast<char>(value >> shift & 0xFFU));
  }
}

void AppendChunk(QByteArray& png, const char* name, std::span<const std::uint8_t> data) {
  AppendNumber(png, static_cast<std::uint32_t>(data.size()));
  const qsizetype start = png.size();
  png.append(name, 4);
  png.append(reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size()));
  AppendNumber(png,
               libdeflate_crc32(0, png.constData() + start, static_cast<std::size_t>(png.size() - start)));
}

void AppendHeader(QByteArray& png, const QImage& image, const Layout& layout) {
  QByteArray header;
  AppendNumber(header, static_cast<std::uint32_t>(image.width()));
  AppendNumber(header, static_cast<std::uint32_t>(image.height()));
  header.append(static_cast<char>(layout.Bits));
  header.append(static_cast<char>(layout.Colours));
  header.append(3, '\0');  // the one compression, the one set of filters, not interlaced
  AppendChunk(
      png, "IHDR",
      {reinterpret_cast<const std::uint8_t*>(header.constData()), static_cast<std::size_t>(header.size())});
}

/// The colours, and how opaque those are that come before the last one that is not wholly.
void AppendPalette(QByteArray& png, const QImage& image) {
  std::array<std::uint8_t, std::size_t{3} * 256> colours;
  std::array<std::uint8_t, 256> alpha;
  std::size_t count = 0;
  std::size_t translucent = 0;
  for (const QRgb colour : image.colorTable().first(std::min<qsizetype>(image.colorCount(), 256))) {
    colours[3 * count] = static_cast<std::uint8_t>(qRed(colour));
    colours[3 * count + 1] = static_cast<std::uint8_t>(qGreen(colour));
    colours[3 * count + 2] = static_cast<std::uint8_t>(qBlue(colour));
    alpha[count++] = static_cast<std::uint8_t>(qAlpha(colour));
    translucent = qAlpha(colour) < 255 ? count : translucent;
  }
  AppendChunk(png, "PLTE", std::span(colours).first(3 * count));
  if (translucent > 0) {
    AppendChunk(png, "tRNS", std::span(alpha).first(translucent));
  }
}

}  // namespace

bool IsForEncodePng(const QImage& image) {
  const bool isTaken = image.format() == QImage::Format_ARGB32 ||
                       (image.format() == QImage::Format_Indexed8 && image.colorCount() > 0);
  return isTaken && image.sizeInBytes() <= MaxBytes;
}

QByteArray EncodePng(const QImage& image) {
  const Layout layout = LayoutOf(image);
  const std::size_t size = layout.Size(image.height());
  libdeflate_compressor* const compressor = CompressorFor(size);
  if (compressor == nullptr) {
    return {};
  }
  const std::size_t bound = libdeflate_zlib_compress_bound(compressor, size);
  const Buffer rows = Allocate(size);
  const Buffer packed = Allocate(bound);
  if (rows == nullptr || packed == nullptr || !PutRows(image, layout, rows.get())) {
    return {};
  }
  const std::size_t length = libdeflate_zlib_compress(compressor, rows.get(), size, packed.get(), bound);
  constexpr qsizetype MostAround = 1200;  // with the largest palette, too
  QByteArray png;
  png.reserve(static_cast<qsizetype>(length) + MostAround);
  png.append("\x89PNG\r\n\x1a\n", 8);
  AppendHeader(png, image, layout);
  if (layout.Colours == ColourType::Palette) {
    AppendPalette(png, image);
  }
  AppendChunk(png, "IDAT", {packed.get(), length});
  AppendChunk(png, "IEND", {});
  return png;
}

}  // namespace quillmark
