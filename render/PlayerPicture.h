#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <QPoint>
#include <QSize>

#include "imaging/cBitmap.h"
#include "palette/Colour.h"
#include "sup/DisplayTimeline.h"

namespace quillmark {

/// What a player shows of a pixel.
struct PlayedPixel {
  std::size_t Code = 0;
  std::uint8_t Colour = 0;    ///< palette entry
  std::uint8_t Contrast = 0;  ///< 0 invisible, 15 opaque

  bool operator==(const PlayedPixel&) const = default;
};

/// Draws what a player shows of one unit. Fields are decoded once for all states that follow one another with
/// the same area and fields; what changes between them is looked up for each stretch of a line.
class PlayerPicture {
 public:
  /// `unit` is a whole unit, from its size field on, or as much of it as there is; it must outlive this.
  explicit PlayerPicture(std::span<const std::uint8_t> unit) : unit_(unit) {}

  /// Draws `state` into `picture`: the pixels of its area, as far as they lie in a frame of the size
  /// `within`, in straight alpha; those that no run reaches are transparent black. `changes` are those of the
  /// state. Without an image where nothing is shown, no area or no fields are set, or no pixel is left. The
  /// picture's place is the area's first column and line.
  void Draw(const DisplayState& state, std::span<const ChangedLines> changes, const DvdPalette& palette,
            QSize within, cBitmap& picture);
  /// What the pixel of the frame, from its corner on, is in `state`. Nothing outside of the area, where no
  /// run reaches it, or where Draw has no image.
  [[nodiscard]] std::optional<PlayedPixel> At(const DisplayState& state,
                                              std::span<const ChangedLines> changes, QPoint pixel);

 private:
  struct Part {
    int Width = 0;  ///< of the area
    int Lines = 0;  ///< of it, decoded
    FieldStarts Fields;

    bool operator==(const Part&) const = default;
  };

  void Decode(const Part& part);

  std::span<const std::uint8_t> unit_;
  std::optional<Part> decoded_;
  std::vector<std::uint8_t> codes_;  // of decoded_, row-major
};

}  // namespace quillmark
