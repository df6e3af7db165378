#pragma once

#include <QString>

#include "palette/Colour.h"

namespace quillmark {

/// A colour in words for those who do not see it: "black", "dark grey", "yellow", "light blue".
[[nodiscard]] QString ColourName(Rgb colour);

}  // namespace quillmark
