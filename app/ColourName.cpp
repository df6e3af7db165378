#include "app/ColourName.h"

#include <algorithm>
#include <iterator>

namespace quillmark {
namespace {

constexpr int LeastChroma = 24;  ///< below it a colour is a grey

QString GreyName(int lightness) {
  if (lightness < 32) {
    return QStringLiteral("black");
  }
  if (lightness < 96) {
    return QStringLiteral("dark grey");
  }
  if (lightness < 160) {
    return QStringLiteral("grey");
  }
  return lightness < 232 ? QStringLiteral("light grey") : QStringLiteral("white");
}

/// Degrees on the colour circle: red 0, green 120, blue 240.
int Hue(int red, int green, int blue, int most, int chroma) {
  if (most == red) {
    return (60 * (green - blue) / chroma + 360) % 360;
  }
  return most == green ? 120 + 60 * (blue - red) / chroma : 240 + 60 * (red - green) / chroma;
}

QString HueName(int hue) {
  struct Range {
    int End;
    const char* Name;
  };
  static constexpr Range Ranges[] = {{15, "red"},   {45, "orange"}, {70, "yellow"},  {165, "green"},
                                     {195, "cyan"}, {260, "blue"},  {285, "purple"}, {340, "magenta"}};
  const auto* range =
      std::find_if(std::begin(Ranges), std::end(Ranges), [hue](const Range& r) { return hue < r.End; });
  return QString::fromLatin1(range == std::end(Ranges) ? Ranges[0].Name : range->Name);
}

}  // namespace

QString ColourName(Rgb colour) {
  const auto red = static_cast<int>(colour & 0xFFU);
  const auto green = static_cast<int>(colour >> 8U & 0xFFU);
  const auto blue = static_cast<int>(colour >> 16U & 0xFFU);
  const auto [least, most] = std::minmax({red, green, blue});
  const int lightness = (least + most) / 2;
  if (most - least < LeastChroma) {
    return GreyName(lightness);
  }
  const QString name = HueName(Hue(red, green, blue, most, most - least));
  if (most < 144) {
    return name == QLatin1String("orange") ? QStringLiteral("brown") : QStringLiteral("dark ") + name;
  }
  return least >= 128 ? QStringLiteral("light ") + name : name;
}

}  // namespace quillmark
