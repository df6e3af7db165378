#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "sup/RunEncoder.h"
#include "sup/SpuCommand.h"
#include "sup/SupFormat.h"

namespace quillmark {

/// A picture that is to be a unit.
struct UnitPicture {
  std::span<const std::uint8_t> Codes;  ///< pixel codes 0-3, Width x Height, row-major
  int Width = 0;                        ///< at least 1, and so is Height
  int Height = 0;
  int X = 0;  ///< of its corner in the frame; up to 4095 with its size
  int Y = 0;
  CodeNibbles Colour = {};             ///< palette entries
  CodeNibbles Contrast = {};           ///< 0-15
  std::optional<std::uint16_t> Delay;  ///< until the display stops; none: it does not
  bool IsForced = false;
};

/// Writes units of pictures; its memory is reused.
class PictureUnitEncoder {
 public:
  /// One whole packet: "SP", the time, and a unit of an even size with all commands in its first control
  /// sequence. Lines 0, 2, ... are the top field. nullopt for a unit of more than MaxReadUnit bytes. The
  /// bytes are valid until the next call.
  [[nodiscard]] std::optional<std::span<const std::uint8_t>> Encode(const UnitPicture& picture,
                                                                    const TimeField& time);

  /// Where, in the packet that was encoded last, the arguments of its colour and contrast commands stand.
  [[nodiscard]] std::size_t ColourAt() const { return colourAt_; }
  [[nodiscard]] std::size_t ContrastAt() const { return colourAt_ + CommandSize(SetColour); }

 private:
  FieldBuffer top_;
  FieldBuffer bottom_;
  std::vector<std::uint8_t> packet_;
  std::size_t colourAt_ = 0;
};

}  // namespace quillmark
