#include "imaging/cGraphics.h"

#include <algorithm>
#include <cstddef>

#include <QPainter>

#include "imaging/Blend.h"

namespace quillmark {
namespace {

constexpr std::uint32_t AlphaMask = 0xFF000000;

/// A rectangle in surface pixels, right and bottom exclusive; 64-bit, so that no translated coordinate
/// overflows.
struct PixelArea {
  std::int64_t Left = 0;
  std::int64_t Top = 0;
  std::int64_t Right = 0;
  std::int64_t Bottom = 0;

  [[nodiscard]] bool IsEmpty() const { return Left >= Right || Top >= Bottom; }
};

PixelArea ClippedTo(const QImage& surface, std::int64_t left, std::int64_t top, std::int64_t width,
                    std::int64_t height) {
  return {.Left = std::max<std::int64_t>(left, 0),
          .Top = std::max<std::int64_t>(top, 0),
          .Right = std::min<std::int64_t>(left + width, surface.width()),
          .Bottom = std::min<std::int64_t>(top + height, surface.height())};
}

bool CanDrawOn(const QImage& surface) {
  return !surface.isNull() &&
         (surface.format() == QImage::Format_RGB32 || surface.format() == QImage::Format_ARGB32);
}

/// The bits that are set in every pixel of the surface, whatever its memory holds.
std::uint32_t FixedBits(const QImage& surface) {
  return surface.format() == QImage::Format_RGB32 ? AlphaMask : 0;
}

/// Blends single pixels. Subtitles and their backgrounds are flat, so the last blend is mostly the next one.
class PixelBlender {
 public:
  std::uint32_t operator()(std::uint32_t source, std::uint32_t below) {
    if (source != source_ || below != below_) {
      source_ = source;
      below_ = below;
      result_ = BlendOver(source, below);
    }
    return result_;
  }

 private:
  std::uint32_t source_ = 0;
  std::uint32_t below_ = 0;
  std::uint32_t result_ = 0;
};

void DrawRow(const std::uint32_t* source, std::uint32_t* surface, std::size_t count, std::uint32_t fixedBits,
             PixelBlender& blend) {
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t alpha = source[i] >> 24;
    if (alpha == 255) {
      surface[i] = source[i];
    } else if (alpha != 0) {
      surface[i] = blend(source[i], surface[i] | fixedBits);
    }
  }
}

const std::uint32_t* PixelsAt(const QImage& image, std::int64_t x, std::int64_t y) {
  return reinterpret_cast<const std::uint32_t*>(image.constScanLine(static_cast<int>(y))) + x;
}

std::uint32_t* PixelsAt(QImage& image, std::int64_t x, std::int64_t y) {
  return reinterpret_cast<std::uint32_t*>(image.scanLine(static_cast<int>(y))) + x;
}

}  // namespace

void cGraphics::Clear(std::uint32_t argb) {
  if (!CanDrawOn(surface_)) {
    SetStatus(ImagingStatus::InvalidParameter);
    return;
  }
  surface_.fill(argb | FixedBits(surface_));
  SetStatus(ImagingStatus::Ok);
}

void cGraphics::FillRectangle(const QRect& area, std::uint32_t argb) {
  if (!CanDrawOn(surface_)) {
    SetStatus(ImagingStatus::InvalidParameter);
    return;
  }
  SetStatus(ImagingStatus::Ok);
  const PixelArea target =
      ClippedTo(surface_, area.left() + dx_, area.top() + dy_, area.width(), area.height());
  if (target.IsEmpty()) {
    return;
  }
  const std::uint32_t fixedBits = FixedBits(surface_);
  const auto count = static_cast<std::size_t>(target.Right - target.Left);
  PixelBlender blend;
  for (std::int64_t y = target.Top; y < target.Bottom; ++y) {
    std::uint32_t* const row = PixelsAt(surface_, target.Left, y);
    if (argb >> 24 == 255) {
      std::fill_n(row, count, argb);
    } else {
      std::transform(row, row + count, row,
                     [&](std::uint32_t below) { return blend(argb, below | fixedBits); });
    }
  }
}

void cGraphics::DrawImage(const cBitmap& image, int x, int y) {
  if (!CanDrawOn(surface_) || image.Image().isNull()) {
    SetStatus(ImagingStatus::InvalidParameter);
    return;
  }
  const QImage source = image.Image().convertToFormat(QImage::Format_ARGB32);
  SetStatus(source.isNull() ? ImagingStatus::OutOfMemory : ImagingStatus::Ok);
  const std::int64_t left = x + dx_;
  const std::int64_t top = y + dy_;
  const PixelArea target = ClippedTo(surface_, left, top, source.width(), source.height());
  if (target.IsEmpty()) {
    return;
  }
  const std::uint32_t fixedBits = FixedBits(surface_);
  const auto count = static_cast<std::size_t>(target.Right - target.Left);
  PixelBlender blend;
  for (std::int64_t row = target.Top; row < target.Bottom; ++row) {
    DrawRow(PixelsAt(source, target.Left - left, row - top), PixelsAt(surface_, target.Left, row), count,
            fixedBits, blend);
  }
}

void cGraphics::DrawImageRectRect(const cBitmap& image, const QRect& destination, const QRect& source) {
  if (!CanDrawOn(surface_) || image.Image().isNull()) {
    SetStatus(ImagingStatus::InvalidParameter);
    return;
  }
  SetStatus(ImagingStatus::Ok);
  // An empty source rectangle would mean "the rest of the image" to the painter.
  if (destination.isEmpty() || source.isEmpty()) {
    return;
  }
  QPainter painter(&surface_);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.translate(static_cast<double>(dx_), static_cast<double>(dy_));
  painter.drawImage(QRectF(destination), image.Image(), QRectF(source));
}

void cGraphics::SetStatus(ImagingStatus status) {
  lastStatus_ = static_cast<int>(status);
  if (status != ImagingStatus::Ok && instance_ != nullptr) {
    instance_->ReportError(lastStatus_, QStringLiteral("cFont"));
  }
}

}  // namespace quillmark
