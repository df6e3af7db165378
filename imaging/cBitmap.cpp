#include "imaging/cBitmap.h"

#include <cstddef>
#include <filesystem>
#include <system_error>

#include <QBuffer>
#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImageReader>
#include <QImageWriter>
#include <QList>

namespace quillmark {
namespace {

/// On the image writer's scale of 0 to 100; this is zlib's level 5. Subtitle pictures are flat: one level
/// less saves little time for files a sixth larger than the default's, and from two levels more on the time
/// grows without the files shrinking to speak of (docs/benchmarks.md).
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

ImagingStatus WhyUndecodable(QImageReader::ImageReaderError error) {
  switch (error) {
    case QImageReader::FileNotFoundError:
      return ImagingStatus::FileNotFound;
    case QImageReader::UnsupportedFormatError:
    case QImageReader::InvalidDataError:
      return ImagingStatus::UnknownImageFormat;
    default:
      return ImagingStatus::GenericError;
  }
}

ImagingStatus Load(const QString& path, QImage& image) {
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
  return reader.read(&image) ? ImagingStatus::Ok : WhyUndecodable(reader.error());
}

ImagingStatus Encode(const QImage& image, const QByteArray& format, QByteArray& encoded) {
  QBuffer buffer(&encoded);
  QImageWriter writer(&buffer, format);
  if (format == "png") {
    writer.setCompression(PngCompression);
  }
  return writer.write(image) ? ImagingStatus::Ok : ImagingStatus::GenericError;
}

/// Writes the whole file, or leaves none. The disk is not waited for: a picture can be exported again, and
/// the wait would cost more than the encoding.
ImagingStatus WriteNew(QFile& file, const QByteArray& bytes) {
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
    const bool hasFolder = QFileInfo(QFileInfo(file).path()).isDir();
    return hasFolder ? ImagingStatus::AccessDenied : ImagingStatus::FileNotFound;
  }
  const bool complete = file.write(bytes) == bytes.size();
  file.close();
  if (!complete) {
    file.remove();
    return ImagingStatus::FileSystemError;
  }
  return ImagingStatus::Ok;
}

/// Writes a second file beside `path`, which then takes its place, so that whatever happens there is a whole
/// picture or none. Where a symbolic link stands there, the file that it names is replaced.
ImagingStatus Write(const QString& path, const QByteArray& bytes) {
  const QFileInfo existing(path);
  if (existing.exists() && (!existing.isFile() || !existing.isWritable())) {
    return ImagingStatus::AccessDenied;
  }
  const QString target = existing.exists() ? existing.canonicalFilePath() : path;
  QFile beside(QStringLiteral("%1.%2").arg(target).arg(QCoreApplication::applicationPid()));
  const ImagingStatus status = WriteNew(beside, bytes);
  if (status != ImagingStatus::Ok) {
    return status;
  }
  if (existing.exists()) {
    beside.setPermissions(existing.permissions());
  }
  std::error_code failure;
  std::filesystem::rename(beside.filesystemFileName(), QFileInfo(target).filesystemFilePath(), failure);
  if (failure) {
    beside.remove();
    return ImagingStatus::FileSystemError;
  }
  return ImagingStatus::Ok;
}

}  // namespace

void cBitmap::Create(int width, int height) {
  image_ = QImage();
  if (width <= 0 || height <= 0) {
    SetStatus(ImagingStatus::InvalidParameter);
    return;
  }
  image_ = QImage(width, height, QImage::Format_ARGB32);
  image_.fill(0U);
  SetStatus(image_.isNull() ? ImagingStatus::OutOfMemory : ImagingStatus::Ok);
}

void cBitmap::LoadFromFile(const QString& path) {
  QImage loaded;
  const ImagingStatus status = Load(path, loaded);
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

void cBitmap::SaveToFile(const QString& path, int encoderIndex) {
  if (image_.isNull() || encoderIndex < 0 || encoderIndex >= Encoders().size()) {
    SetStatus(ImagingStatus::InvalidParameter);
    return;
  }
  QByteArray encoded;
  const ImagingStatus status = Encode(image_, Encoders()[encoderIndex], encoded);
  SetStatus(status == ImagingStatus::Ok ? Write(path, encoded) : status);
}

void cBitmap::SetStatus(ImagingStatus status) {
  lastStatus_ = static_cast<int>(status);
  if (status != ImagingStatus::Ok && instance_ != nullptr) {
    instance_->ReportError(lastStatus_, QStringLiteral("cBitmap"));
  }
}

}  // namespace quillmark
