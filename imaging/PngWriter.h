#pragma once

#include <QByteArray>
#include <QImage>

namespace quillmark {

/// Whether EncodePng takes the image: Format_ARGB32, or Format_Indexed8 with a colour table, of up to 1 GiB.
[[nodiscard]] bool IsForEncodePng(const QImage& image);

/// The image as the bytes of a PNG file: ARGB32 with 32 bits a pixel, indexes with 2, 4 or 8 bits, as few as
/// the colour table leaves. Colour and alpha are kept to the bit, also where nothing is visible; nothing is
/// said of resolution, colour space or text. Empty where there is not enough memory. The image is one that
/// IsForEncodePng. Several threads may call it at a time.
[[nodiscard]] QByteArray EncodePng(const QImage& image);

}  // namespace quillmark
