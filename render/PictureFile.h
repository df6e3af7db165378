#pragma once

#include <QString>

#include "base/Result.h"
#include "files/ReplaceFile.h"
#include "imaging/cBitmap.h"

namespace quillmark {

/// Writes the picture as a PNG file, 32 bits a pixel with alpha. What cannot be encoded has the imaging
/// status's text as its reason, what cannot be written the system's.
Result<void> WritePicture(const QString& path, cBitmap& picture, Durability durability);

}  // namespace quillmark
