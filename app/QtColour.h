#pragma once

#include <QColor>

#include "palette/Colour.h"

namespace quillmark {

[[nodiscard]] inline QColor ToQColor(Rgb colour) {
  return {static_cast<int>(colour & 0xFFU), static_cast<int>(colour >> 8U & 0xFFU),
          static_cast<int>(colour >> 16U & 0xFFU)};
}

[[nodiscard]] inline Rgb FromQColor(const QColor& colour) {
  return MakeRgb(static_cast<unsigned>(colour.red()), static_cast<unsigned>(colour.green()),
                 static_cast<unsigned>(colour.blue()));
}

}  // namespace quillmark
