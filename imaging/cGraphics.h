#pragma once

#include <cstdint>

#include <QImage>
#include <QRect>

#include "imaging/cBitmap.h"
#include "imaging/cGDIP.h"

namespace quillmark {

/// A drawing surface on an image that its owner keeps: the display's frame (RGB32, opaque) or a bitmap
/// (ARGB32). The image must outlive the surface. Failures are reported under the class name "cFont"; kept.
class cGraphics {
 public:
  explicit cGraphics(QImage& surface, const cGDIP* instance = nullptr)
      : surface_(surface), instance_(instance) {}

  void Clear(std::uint32_t argb);
  void FillRectangle(const QRect& area, std::uint32_t argb);
  /// Draws the image unscaled with its top left pixel at (x, y), moved by the translation and clipped to the
  /// surface, blended source over destination in straight alpha, exact and rounded to nearest: an opaque
  /// source, or a source over full transparency, keeps its value to the bit; alpha 0 leaves what is below.
  void DrawImage(const cBitmap& image, int x, int y);
  /// Draws the source rectangle (in image pixels) stretched into the destination rectangle.
  void DrawImageRectRect(const cBitmap& image, const QRect& destination, const QRect& source);

  void ResetTransform() { dx_ = dy_ = 0; }
  void TranslateTransform(int dx, int dy) {
    dx_ += dx;
    dy_ += dy;
  }
  [[nodiscard]] int LastStatus() const { return lastStatus_; }

 private:
  void SetStatus(ImagingStatus status);

  QImage& surface_;
  const cGDIP* instance_;
  // Wide, so that no sum of translations and coordinates overflows.
  std::int64_t dx_ = 0;
  std::int64_t dy_ = 0;
  int lastStatus_ = 0;
};

}  // namespace quillmark
