#include "imaging/cBitmap.h"

#include <cstddef>

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImageIOHandler>
#include <QImageReader>
#include <QImageWriter>
#include <QList>

#include "imaging/PngWriter.h"

namespace quillmark {
namespace {

/// On the image writer's scale of 0 to 100, for what EncodePng does not take; this is zlib's level 5, the
/// fastest one whose files stay near the size of the default's (docs/benchmarks.md).
constexpr int PngCompression = 51;

/// Index i is the format of encoder i.
const QList<QByteArray>& Encoders() {
  static const QList<QByteArray> encoders = QImageWriter::supportedImageFormats();
  return encoders;
}

/// From "*.png", in lower case, to the encoder's index.
QHash<QString, int> BuildEncoderTable() {
  QHash<QString, int> table;
  for (qsizetype i = 0; i < Encoders().size(); ++i) {
    table.insert("*." + QString::fromLatin1(Encoders()[i]).toLower(), static_cast<int>(i));
  }
  return table;
}

ImagingStatus WhyUnreadable(const QFileInfo& file) {
  // A folder that may not be entered hides whether the file is there.
  const QFileInfo folder(file.path());
  const bool hidden = folder.isDir() && !folder.isExecutable();
  return file.exists() || hidden ? ImagingStatus::AccessDenied : ImagingStatus::FileNotFound;
}

/// Of a decoded picture, in MiB: what is read as it is, and what is read at all.
constexpr int MaxWhole = 128;
constexpr int MaxDecoded = 1024;

/// In MiB; 0 where the format does not say it beforehand.
qint64 DecodedSize(QSize size, QImage::Format format) {
  constexpr qint64 BitsPerMiB = qint64{8} << 20;
  const int bits = format == QImage::Format_Invalid ? 32 : QImage::toPixelFormat(format).bitsPerPixel();
  return size.isValid() ? qint64{size.width()} * size.height() * bits / BitsPerMiB : 0;
}

ImagingStatus Load(const QString& path, QSize shown, QImage& image) {
  // Only regular files: opening a pipe would wait for its other end.
  const QFileInfo info(path);
  QFile file(path);
  if (!info.isFile() || !file.open(QIODevice::ReadOnly)) {
    return WhyUnreadable(info);
  }
  // On an open device nothing but the content decides the format; by name the reader would also try other
  // suffixes.
  QImageReader reader(&file);
  reader.setDecideFormatFromContent(true);
  QImageReader::setAllocationLimit(MaxDecoded);
  const QImage::Format format = reader.imageFormat();
  QSize size = reader.size();
  if (DecodedSize(size, format) > MaxWhole && shown.isValid() &&
      reader.supportsOption(QImageIOHandler::ScaledSize)) {
    reader.setScaledSize(shown);
    size = shown;
  }
  if (DecodedSize(size, format) > MaxDecoded) {
    return ImagingStatus::OutOfMemory;
  }
  return reader.read(&image) ? ImagingStatus::Ok : ImagingStatus::UnknownImageFormat;
}

ImagingStatus EncodeAs(const QByteArray& format, const QImage& image, QByteArray& encoded) {
  if (format == "png" && IsForEncodePng(image)) {
    encoded = EncodePng(image);
    return encoded.isEmpty() ? ImagingStatus::OutOfMemory : ImagingStatus::Ok;
  }
  QBuffer buffer(&encoded);
  QImageWriter writer(&buffer, format);
  if (format == "png") {
    writer.setCompression(PngCompression);
  }
  return writer.write(image) ? ImagingStatus::Ok : ImagingStatus::GenericError;
}

}  // namespace

void cBitmap::Create(int width, int height) {
  CreateUnset(width, height);
  image_.fill(0U);
}

void cBitmap::CreateUnset(int width, int height) {
  image_ = QImage();
  if (width <= 0 || height <= 0) {
    SetStatus(ImagingStatus::InvalidParameter);
    return;
  }
  image_ = QImage(width, height, QImage::Format_ARGB32);
  SetStatus(image_.isNull() ? ImagingStatus::OutOfMemory : ImagingStatus::Ok);
}

void cBitmap::LoadFromFile(const QString& path, QSize shown) {
  QImage loaded;
  const ImagingStatus status = Load(path, shown, loaded);
  image_ = status == ImagingStatus::Ok ? loaded : QImage();
  SetStatus(status);
}

std::span<std::uint32_t> cBitmap::LockPixels() {
  if (image_.isNull()) {
    SetStatus(ImagingStatus::InvalidParameter);
    return {};
  }
  if (image_.format() != QImage::Format_ARGB32) {
    image_.convertTo(QImage::Format_ARGB32);
  }
  // One call of bits(): it is what parts the image from copies that share its pixels.
  auto* const pixels = reinterpret_cast<std::uint32_t*>(image_.bits());
  SetStatus(pixels == nullptr ? ImagingStatus::OutOfMemory : ImagingStatus::Ok);
  const std::size_t size =
      static_cast<std::size_t>(image_.width()) * static_cast<std::size_t>(image_.height());
  return {pixels, pixels == nullptr ? 0 : size};
}

int cBitmap::EncoderIndex(const QString& pattern) {
  static const QHash<QString, int> table = BuildEncoderTable();
  return table.value(pattern.toLower(), -1);
}

QByteArray cBitmap::Encode(int encoderIndex) {
  QByteArray encoded;
  if (image_.isNull() || encoderIndex < 0 || encoderIndex >= Encoders().size()) {
    SetStatus(ImagingStatus::InvalidParameter);
    return encoded;
  }
  SetStatus(EncodeAs(Encoders()[encoderIndex], image_, encoded));
  if (lastStatus_ != 0) {
    encoded.clear();
  }
  return encoded;
}

void cBitmap::SetStatus(ImagingStatus status) {
  lastStatus_ = static_cast<int>(status);
  if (status != ImagingStatus::Ok && instance_ != nullptr) {
    instance_->ReportError(lastStatus_, QStringLiteral("cBitmap"));
  }
}

}  // namespace quillmark
