#pragma once

#include <cstdint>
#include <span>
#include <utility>

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QString>

#include "imaging/cGDIP.h"

namespace quillmark {

/// One image: 32-bit ARGB, not premultiplied, unless a file was loaded into it or it took over another.
class cBitmap {
 public:
  /// Failures are reported to `instance`, which may be null and must outlive the bitmap.
  explicit cBitmap(const cGDIP* instance = nullptr) : instance_(instance) {}
  /// Takes over an image of any format.
  explicit cBitmap(QImage image, const cGDIP* instance = nullptr)
      : instance_(instance), image_(std::move(image)) {}

  /// A transparent black image of width x height pixels, replacing the current one.
  void Create(int width, int height);
  /// The same for a caller who sets every pixel: they are not transparent black, nor anything else.
  void CreateUnset(int width, int height);
  /// Reads an image file (PNG, BMP, GIF, JPEG at least), replacing the current image; after a failure there
  /// is none. One that is very large is read in the size of `shown`, where its format can do so and there is
  /// such a size; what would take more than 1 GiB is "Out Of Memory".
  void LoadFromFile(const QString& path, QSize shown = {});

  /// 0 without an image.
  [[nodiscard]] int Width() const { return image_.width(); }
  [[nodiscard]] int Height() const { return image_.height(); }
  [[nodiscard]] const QImage& Image() const { return image_; }
  [[nodiscard]] int LastStatus() const { return lastStatus_; }

  /// Locks the whole image for writing: width x height ARGB cells, row-major, no gap between rows, holding
  /// the image's pixels. They stay valid, and what is written to them is the image, until the bitmap is
  /// changed. Empty without an image.
  [[nodiscard]] std::span<std::uint32_t> LockPixels();

  /// Index of the encoder for a file-name pattern such as "*.png", in any case; -1 when there is none.
  [[nodiscard]] static int EncoderIndex(const QString& pattern);
  /// The image as the bytes of a file, made by the encoder of that index; empty after a failure.
  [[nodiscard]] QByteArray Encode(int encoderIndex);

 private:
  void SetStatus(ImagingStatus status);

  const cGDIP* instance_;
  QImage image_;
  int lastStatus_ = 0;
};

}  // namespace quillmark
