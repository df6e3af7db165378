#pragma once

#include <cstddef>

#include <QString>

namespace quillmark {

/// What a pixel code (0 to 3) is for: "background", "pattern", "emphasis 1", "emphasis 2".
[[nodiscard]] QString CodeName(std::size_t code);

}  // namespace quillmark
