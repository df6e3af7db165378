#include "render/Composition.h"

#include <cstring>
#include <utility>

#include "imaging/cGraphics.h"
#include "render/FieldDecoder.h"

namespace quillmark {
namespace {

constexpr int CheckerSquare = 16;
constexpr std::uint32_t CheckerDark = 0xFF3C3C3C;
constexpr std::uint32_t CheckerLight = 0xFF787878;
constexpr std::uint32_t OpaqueBlack = 0xFF000000;

QImage MakeChecker() {
  QImage checker = MakeFrame();
  cGraphics graphics(checker);
  for (int column = 0; column * CheckerSquare < FrameWidth; ++column) {
    for (int row = 0; row * CheckerSquare < FrameHeight576; ++row) {
      graphics.FillRectangle(QRect(column * CheckerSquare, row * CheckerSquare, CheckerSquare, CheckerSquare),
                             (column & 1) == (row & 1) ? CheckerDark : CheckerLight);
    }
  }
  return checker;
}

/// Both are frames, and the area lies in them.
void CopyArea(const QImage& from, QImage& to, const QRect& area) {
  const auto start = static_cast<std::size_t>(area.x()) * sizeof(QRgb);
  const auto length = static_cast<std::size_t>(area.width()) * sizeof(QRgb);
  for (int y = area.top(); y <= area.bottom(); ++y) {
    std::memcpy(to.scanLine(y) + start, from.constScanLine(y) + start, length);
  }
}

/// Every redraw starts from the same squares, so they are painted once and copied afterwards.
const QImage& Checker() {
  static const QImage checker = MakeChecker();
  return checker;
}

/// A background that is no file.
void DrawPlain(QImage& frame, const QRect& area, const Background& background) {
  if (background.Source == Background::Kind::Colour) {
    cGraphics(frame).FillRectangle(area, background.Colour | OpaqueBlack);
  } else {
    CopyArea(Checker(), frame, area);
  }
}

bool DrawPictureFile(QImage& frame, int frameHeight, const QString& file, const cGDIP* instance) {
  cBitmap picture(instance);
  picture.LoadFromFile(file, QSize(FrameWidth, frameHeight));
  if (picture.LastStatus() != 0) {
    return false;
  }
  cGraphics graphics(frame, instance);
  const QRect whole(0, 0, FrameWidth, frameHeight);
  graphics.FillRectangle(whole, OpaqueBlack);
  graphics.DrawImageRectRect(picture, whole, QRect(0, 0, picture.Width(), picture.Height()));
  return true;
}

}  // namespace

QImage MakeFrame() {
  QImage frame(FrameWidth, FrameHeight576, QImage::Format_RGB32);
  frame.fill(OpaqueBlack);
  return frame;
}

void DrawBackground(QImage& frame, int frameHeight, const Background& background, const cGDIP* instance) {
  if (background.Source == Background::Kind::PictureFile) {
    DrawPictureFile(frame, frameHeight, background.File, instance);
  } else {
    DrawPlain(frame, frame.rect(), background);
  }
}

FramePicture::FramePicture() : image_(MakeFrame()), notPlain_(image_.rect()) {}

void FramePicture::DrawBackground(int frameHeight, const Background& background, const cGDIP* instance) {
  if (background.Source == Background::Kind::PictureFile) {
    if (DrawPictureFile(image_, frameHeight, background.File, instance)) {
      changed_ = notPlain_ = image_.rect();
    }
    otherGround_ = image_;
  } else {
    if (background.Source != plain_.Source || background.Colour != plain_.Colour) {
      notPlain_ = image_.rect();
      plain_ = background;
    }
    DrawPlain(image_, notPlain_, background);
    changed_ |= notPlain_;
    notPlain_ = QRect();
    otherGround_ = QImage();
  }
  laid_.clear();
}

void FramePicture::Draw(const cBitmap& picture, int x, int y, const cGDIP* instance) {
  const QRect area = QRect(x, y, picture.Width(), picture.Height()) & image_.rect();
  cGraphics(image_, instance).DrawImage(picture, x, y);
  notPlain_ |= area;
  changed_ |= area;
  laid_.push_back({QPoint(x, y), picture.Image()});
}

QImage FramePicture::Ground() const {
  if (!otherGround_.isNull()) {
    return otherGround_;
  }
  if (plain_.Source == Background::Kind::Checker) {
    return Checker();
  }
  QImage ground = MakeFrame();
  DrawPlain(ground, ground.rect(), plain_);
  return ground;
}

void FramePicture::TakeBack() {
  const QImage ground = Ground();
  for (const LaidPicture& laid : laid_) {
    const QRect area = QRect(laid.Place, laid.Picture.size()) & image_.rect();
    CopyArea(ground, image_, area);
    changed_ |= area;
  }
  laid_.clear();
}

QRect FramePicture::TakeChanged() {
  return std::exchange(changed_, QRect());
}

void DecodePicture(std::span<const std::uint8_t> unit, const SpuControl& control, const CodeColours& colours,
                   cBitmap& bitmap) {
  if (control.Width() < 1 || control.Height() < 1) {
    return;
  }
  bitmap.CreateUnset(control.Width(), control.Height());
  const std::span<std::uint32_t> pixels = bitmap.LockPixels();
  const int lines = DecodeFields<std::uint32_t>(unit, pixels, bitmap.Width(), bitmap.Height(),
                                                control.TopFieldOffset, control.BottomFieldOffset, colours);
  const auto decoded = static_cast<std::size_t>(lines) * static_cast<std::size_t>(bitmap.Width());
  std::ranges::fill(pixels.subspan(decoded), 0U);
}

}  // namespace quillmark
