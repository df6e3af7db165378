#include "app/ColourName.h"

#include <algorithm>
#include <iterator>

#include "app/Ui.h"

namespace quillmark {
namespace {

constexpr int LeastChroma = 24;  ///< below it a colour is a grey

QString GreyName(int lightness) {
  if (lightness < 32) {
    return Ui::Tr("black");
  }
  if (lightness < 96) {
    return Ui::Tr("dark grey");
  }
  if (lightness < 160) {
    return Ui::Tr("grey");
  }
  return lightness < 232 ? Ui::Tr("light grey") : Ui::Tr("white");
}

/// Degrees on the colour circle: red 0, green 120, blue 240.
int Hue(int red, int green, int blue, int most, int chroma) {
  if (most == red) {
    return (60 * (green - blue) / chroma + 360) % 360;
  }
  return most == green ? 120 + 60 * (blue - red) / chroma : 240 + 60 * (red - green) / chroma;
}

/// A hue up to `End` degrees, with what it is called at three lightnesses.
struct HueRange {
  int End;
  const char* Name;
  const char* Dark;
  const char* Light;
};

constexpr HueRange Hues[] = {{15, Ui::Mark("red"), Ui::Mark("dark red"), Ui::Mark("light red")},
                             {45, Ui::Mark("orange"), Ui::Mark("brown"), Ui::Mark("light orange")},
                             {70, Ui::Mark("yellow"), Ui::Mark("dark yellow"), Ui::Mark("light yellow")},
                             {165, Ui::Mark("green"), Ui::Mark("dark green"), Ui::Mark("light green")},
                             {195, Ui::Mark("cyan"), Ui::Mark("dark cyan"), Ui::Mark("light cyan")},
                             {260, Ui::Mark("blue"), Ui::Mark("dark blue"), Ui::Mark("light blue")},
                             {285, Ui::Mark("purple"), Ui::Mark("dark purple"), Ui::Mark("light purple")},
                             {340, Ui::Mark("magenta"), Ui::Mark("dark magenta"), Ui::Mark("light magenta")}};

const HueRange& HueOf(int degrees) {
  const auto* range = std::find_if(std::begin(Hues), std::end(Hues),
                                   [degrees](const HueRange& hue) { return degrees < hue.End; });
  return range == std::end(Hues) ? Hues[0] : *range;
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
  const HueRange& hue = HueOf(Hue(red, green, blue, most, most - least));
  return Ui::Tr(most < 144 ? hue.Dark : least >= 128 ? hue.Light : hue.Name);
}

}  // namespace quillmark
