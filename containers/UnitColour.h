#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "palette/Colour.h"

namespace quillmark {

/// A colour as units have it: that of a palette entry, and a contrast of 0-15. With contrast 0 nothing is
/// seen of the entry, which is kept all the same.
struct UnitColour {
  Rgb Colour = 0;
  std::uint8_t Contrast = 0;

  [[nodiscard]] bool IsVisible() const { return Contrast != 0; }
  /// Whether pixels of the two look the same.
  [[nodiscard]] bool LooksLike(const UnitColour& other) const {
    return Contrast == other.Contrast && (Colour == other.Colour || !IsVisible());
  }
  bool operator==(const UnitColour&) const = default;
};

/// How far two colours are apart, 0-255: the largest difference of their alphas, or of what they add to the
/// picture's red, green or blue.
[[nodiscard]] int ColourError(const UnitColour& a, const UnitColour& b);

struct CountedColour {
  UnitColour Colour;
  std::uint64_t Count = 0;  ///< of its pixels
};

/// Chooses `most` (1 or more) of the colours, each standing for itself and for those nearest to it, so that
/// what changes is little and on few pixels. The index of the colour that each one becomes; where there are
/// no more than `most`, its own.
[[nodiscard]] std::vector<std::size_t> TakeTogether(const std::vector<CountedColour>& colours,
                                                    std::size_t most);

}  // namespace quillmark
