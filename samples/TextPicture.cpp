#include "samples/TextPicture.h"

#include <QFont>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>
#include <QRect>
#include <QStringList>

namespace quillmark {
namespace {

constexpr int FontPixels = 28;
constexpr double OutlineWidth = 4.5;
constexpr int BoxMargin = 8;     // pixels around the letters
constexpr int FrameMargin = 36;  // pixels that a television may cut off
constexpr std::uint8_t Half = 128;
constexpr std::uint8_t Most = 180;
constexpr std::uint8_t Some = 76;

QFont CaptionFont(bool italic) {
  QFont font("DejaVu Sans");
  font.setPixelSize(FontPixels);
  font.setBold(true);
  font.setItalic(italic);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

/// The letters' shapes, lines below each other around x = 0, or starting there.
QPainterPath Letters(const Caption& caption, const QFont& font) {
  const QFontMetricsF metrics(font);
  QPainterPath path;
  double baseline = 0;
  for (const QString& line : caption.Text.split('\n')) {
    const double left = caption.Place == Placement::Left ? 0 : -metrics.horizontalAdvance(line) / 2;
    path.addText(left, baseline, font, line);
    baseline += metrics.lineSpacing();
  }
  return path;
}

QPainterPath Outline(const QPainterPath& letters) {
  QPainterPathStroker stroker;
  stroker.setWidth(OutlineWidth);
  stroker.setJoinStyle(Qt::RoundJoin);
  return stroker.createStroke(letters);
}

/// How much of each pixel of `area` the path covers, 0-255.
QImage Coverage(const QPainterPath& path, const QRect& area) {
  QImage image(area.size(), QImage::Format_Grayscale8);
  image.fill(0);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(-area.topLeft());
  painter.fillPath(path, Qt::white);
  return image;
}

std::uint8_t CodeOf(std::uint8_t body, std::uint8_t outline) {
  if (body >= Most) {
    return 1;
  }
  if (body >= Some) {
    return 3;
  }
  return outline >= Half ? 2 : 0;
}

/// The pixels that the shape touches with a margin, grown to an even size: authoring tools make odd pictures
/// even with a transparent border, which is a fifth colour in a box that uses all four codes.
QRect PictureArea(const QPainterPath& shape) {
  QRect area = shape.boundingRect().toAlignedRect().adjusted(-BoxMargin, -BoxMargin, BoxMargin, BoxMargin);
  area.setSize({area.width() + area.width() % 2, area.height() + area.height() % 2});
  return area;
}

}  // namespace

std::optional<TextPicture> DrawCaption(const Caption& caption, const QSize& frame) {
  const QFont font = CaptionFont(caption.Italic);
  if (QFontInfo(font).family() != "DejaVu Sans") {
    return std::nullopt;
  }
  const QPainterPath letters = Letters(caption, font);
  const QPainterPath outline = Outline(letters);
  const QRect area = PictureArea(outline);
  const QImage body = Coverage(letters, area);
  const QImage edge = Coverage(outline, area);

  TextPicture picture;
  picture.Width = area.width();
  picture.Height = area.height();
  picture.X = caption.Place == Placement::Left ? 2 * FrameMargin : (frame.width() - area.width()) / 2;
  picture.Y = caption.Place == Placement::Top ? FrameMargin : frame.height() - FrameMargin - area.height();
  for (int y = 0; y < picture.Height; ++y) {
    const std::uint8_t* const bodyLine = body.constScanLine(y);
    const std::uint8_t* const edgeLine = edge.constScanLine(y);
    for (int x = 0; x < picture.Width; ++x) {
      picture.Codes.push_back(CodeOf(bodyLine[x], edgeLine[x]));
    }
  }
  return picture;
}

}  // namespace quillmark
