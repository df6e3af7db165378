#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <QImage>
#include <QRect>
#include <QString>

#include "imaging/cBitmap.h"
#include "imaging/cGDIP.h"
#include "palette/Colour.h"
#include "sup/SpuControl.h"

namespace quillmark {

/// The frame that a player shows subtitles in, in pixels.
inline constexpr int FrameWidth = 720;
inline constexpr int FrameHeight480 = 480;
inline constexpr int FrameHeight576 = 576;

/// What the subtitle is laid over.
struct Background {
  enum class Kind { Checker, PictureFile, Colour };
  Kind Source = Kind::Checker;
  QString File;                       ///< for PictureFile; read anew each time it is drawn
  std::uint32_t Colour = 0xFF000000;  ///< for Colour: opaque ARGB
};

/// A frame to draw on: always 720x576 opaque pixels, of which a 480 line display shows the upper part, so
/// that changing the frame size alone loses nothing of what was drawn.
[[nodiscard]] QImage MakeFrame();

/// Draws the background. The checker and a colour cover all 576 lines whatever `frameHeight` is; a picture
/// file is stretched to 720 x frameHeight. A file that cannot be read is reported to `instance` and leaves
/// the frame as it was.
void DrawBackground(QImage& frame, int frameHeight, const Background& background, const cGDIP* instance);

/// A picture that was laid over the background, and where.
struct LaidPicture {
  QPoint Place;  ///< of its top left pixel
  QImage Picture;
};

/// The display's frame, drawn on again and again. It keeps track of what changed, so that a step from one
/// subtitle to the next costs as much as the two pictures cover, not as the frame does.
class FramePicture {
 public:
  FramePicture();

  [[nodiscard]] const QImage& Image() const { return image_; }

  /// As the function of that name.
  void DrawBackground(int frameHeight, const Background& background, const cGDIP* instance);
  /// Lays the picture over what is there, its top left pixel at (x, y); what falls outside is cut off.
  void Draw(const cBitmap& picture, int x, int y, const cGDIP* instance);
  /// Takes back all that was drawn over the background.
  void TakeBack();
  /// The part drawn on since the last call.
  [[nodiscard]] QRect TakeChanged();

  // What the frame is made of, for whoever shows it otherwise than one over the other.

  /// The frame as the background alone left it; what a file that could not be read left.
  [[nodiscard]] QImage Ground() const;
  /// What was drawn since, in that order.
  [[nodiscard]] const std::vector<LaidPicture>& Laid() const { return laid_; }

 private:
  QImage image_;
  Background plain_;  ///< a background that is known at each place without looking
  QRect notPlain_;    ///< outside it the frame is known to be that background
  QRect changed_;
  QImage otherGround_;  ///< the ground where it is none of these; otherwise null
  std::vector<LaidPicture> laid_;
};

/// Decodes the picture of a unit into `bitmap`, which has no image yet: Width() x Height() pixels of the
/// control data's area, codes drawn as `colours` say, pixels that no run reached transparent black. `unit` is
/// a whole unit, from its size field on. A reversed area leaves it without one.
void DecodePicture(std::span<const std::uint8_t> unit, const SpuControl& control, const CodeColours& colours,
                   cBitmap& bitmap);

}  // namespace quillmark
