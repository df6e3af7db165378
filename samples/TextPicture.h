#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <QSize>

#include "samples/Captions.h"

namespace quillmark {

/// A picture of pixel codes: 0 background, 1 the letters' body, 2 their outline, 3 the steps between the two.
struct TextPicture {
  int X = 0;  ///< of the top left pixel, inside the frame
  int Y = 0;  ///< even, as Height is, so that every line is one of a field's
  int Width = 0;
  int Height = 0;
  std::vector<std::uint8_t> Codes;  ///< Width x Height, row-major

  [[nodiscard]] std::span<const std::uint8_t> Line(int y) const {
    const auto width = static_cast<std::size_t>(Width);
    return std::span(Codes).subspan(static_cast<std::size_t>(y) * width, width);
  }
};

/// Draws the caption for a frame of that size; nullopt when DejaVu Sans is not installed.
[[nodiscard]] std::optional<TextPicture> DrawCaption(const Caption& caption, const QSize& frame);

}  // namespace quillmark
