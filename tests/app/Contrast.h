#pragma once

#include <algorithm>
#include <cmath>

#include <QColor>

namespace quillmark::test {

/// Relative luminance, of linear light.
inline double Luminance(const QColor& colour) {
  const auto linear = [](double c) { return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4); };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// From 1 for equal colours to 21 for black on white.
inline double Contrast(const QColor& one, const QColor& other) {
  const auto [least, most] = std::minmax({Luminance(one), Luminance(other)});
  return (most + 0.05) / (least + 0.05);
}

}  // namespace quillmark::test
