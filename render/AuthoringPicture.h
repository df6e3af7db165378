#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <QImage>

#include "palette/Colour.h"
#include "sup/SpuControl.h"

namespace quillmark {

/// A subtitle's picture as authoring tools take it: at most four colours, everything transparent being one,
/// and an even width and height, or room in the frame for the transparent column and line that make them so.
struct AuthoringPicture {
  enum class Fit : std::uint8_t {
    AsItIs,       ///< what is visible is that of the unit
    DoubledEdge,  ///< with four visible colours and an odd size: its last line or column stands twice
  };

  /// Of indexes: entry 0-3 of its colour table is what that pixel code stands for; entry 4, where there is
  /// one, is transparent. Null where the unit's area is reversed.
  QImage Image;
  int X = 0;  ///< of its corner in the frame
  int Y = 0;
  Fit Fits = Fit::AsItIs;
};

/// Makes such pictures; its memory is reused.
class AuthoringPictureMaker {
 public:
  /// `unit` is a whole unit, from its size field on, `control` its valid control data. With three visible
  /// colours at most an odd size stays, since tools add a transparent column or line on the right or below;
  /// where that would leave the frame of `frameHeight` lines, it is added here, on the other side.
  [[nodiscard]] AuthoringPicture Make(std::span<const std::uint8_t> unit, const SpuControl& control,
                                      const CodeColours& colours, int frameHeight);

 private:
  std::vector<std::uint8_t> cells_;
};

}  // namespace quillmark
