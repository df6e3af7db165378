#include "render/PictureFile.h"

#include <QByteArray>

namespace quillmark {

Result<void> WritePicture(const QString& path, cBitmap& picture, Durability durability) {
  static const int png = cBitmap::EncoderIndex(QStringLiteral("*.png"));
  const QByteArray bytes = picture.Encode(png);
  if (picture.LastStatus() != 0) {
    return Failure{cGDIP::StatusText(picture.LastStatus()).toStdString()};
  }
  return ReplaceFile(
      path,
      {reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size())},
      {.Wait = durability});
}

}  // namespace quillmark
