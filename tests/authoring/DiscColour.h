#pragma once

#include <cstdint>
#include <ostream>

#include <QImage>
#include <QPoint>
#include <QRect>

#include "palette/Colour.h"
#include "sup/SpuControl.h"
#include "tests/authoring/AuthoringTool.h"

namespace quillmark::test {

inline QRect AreaOf(const SpuControl& control) {
  return {QPoint(control.X1, control.Y1), QPoint(control.X2, control.Y2)};
}

/// Alpha and the colour as a disc has it.
struct DiscColour {
  int Contrast = 0;
  YCrCb Colour = 0;  // 0 where the contrast is

  bool operator==(const DiscColour&) const = default;
};

inline void PrintTo(const DiscColour& colour, std::ostream* out) {
  *out << std::hex << colour.Contrast << " of " << colour.Colour;
}

/// What pixel `at` of the frame shows of a subtitle that the tool encoded.
inline DiscColour AuthoredAt(const AuthoredSubtitle& subtitle, const QPoint& at) {
  const SpuControl& control = subtitle.Description.Control;
  if (!AreaOf(control).contains(at)) {
    return {};
  }
  const auto code =
      static_cast<std::size_t>(subtitle.Codes.pixel(at - QPoint(control.X1, control.Y1)) - 1) & 3U;
  const int contrast = control.Contrast.at(code);
  const auto entry = static_cast<std::size_t>(control.Colour.at(code));
  return contrast == 0 ? DiscColour() : DiscColour{contrast, subtitle.Palette.at(entry)};
}

/// The same of a decoded picture.
inline DiscColour DecodedAt(const QImage& picture, const SpuControl& control, const QPoint& at) {
  if (!AreaOf(control).contains(at)) {
    return {};
  }
  const QRgb colour = picture.pixel(at - QPoint(control.X1, control.Y1));
  return qAlpha(colour) == 0
             ? DiscColour()
             : DiscColour{qAlpha(colour) / 17, RgbToYCrCb(MakeRgb(static_cast<unsigned>(qRed(colour)),
                                                                  static_cast<unsigned>(qGreen(colour)),
                                                                  static_cast<unsigned>(qBlue(colour))))};
}

/// On how many pixels of the frame the two show something else.
inline int CountDifferences(const AuthoredSubtitle& authored, const QImage& picture,
                            const SpuControl& control) {
  const QRect both = AreaOf(control) | AreaOf(authored.Description.Control);
  int differences = 0;
  for (int y = both.top(); y <= both.bottom(); ++y) {
    for (int x = both.left(); x <= both.right(); ++x) {
      const QPoint at(x, y);
      differences += AuthoredAt(authored, at) == DecodedAt(picture, control, at) ? 0 : 1;
    }
  }
  return differences;
}

}  // namespace quillmark::test
