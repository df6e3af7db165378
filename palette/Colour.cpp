#include "palette/Colour.h"

#include <algorithm>
#include <cstdlib>

#include "base/FloorDivision.h"

namespace quillmark {
namespace {

std::int64_t Component(std::uint32_t value, unsigned index) {
  return value >> (8 * index) & 0xFFU;
}

/// Coefficients are in thousandths; the added constant already holds the half that rounds to nearest.
std::uint32_t Thousandths(std::int64_t sum) {
  return static_cast<std::uint32_t>(FloorDivide(sum, 1000));
}

unsigned ClampedThousandths(std::int64_t sum) {
  return static_cast<unsigned>(std::clamp<std::int64_t>(FloorDivide(sum, 1000), 0, 255));
}

struct Studio {
  std::uint32_t Y;
  std::uint32_t Cr;
  std::uint32_t Cb;
};

Studio ToStudio(std::int64_t red, std::int64_t green, std::int64_t blue) {
  return {.Y = Thousandths(257 * red + 504 * green + 98 * blue + 16500),
          .Cr = Thousandths(439 * red - 368 * green - 71 * blue + 128500),
          .Cb = Thousandths(-148 * red - 291 * green + 439 * blue + 128500)};
}

YCrCb Pack(const Studio& studio) {
  return studio.Cb << 16U | studio.Cr << 8U | studio.Y;
}

}  // namespace

Rgb YCrCbToRgb(YCrCb packed) {
  if ((packed & 0xFFFFFFU) == 0) {
    return 0;  // the formulas would give a saturated green
  }
  const std::int64_t y = Component(packed, 0);
  const std::int64_t cr = Component(packed, 1);
  const std::int64_t cb = Component(packed, 2);
  return MakeRgb(ClampedThousandths(1164 * y + 1596 * cr - 222412),
                 ClampedThousandths(1164 * y - 813 * cr - 391 * cb + 135988),
                 ClampedThousandths(1164 * y + 2018 * cb - 276428));
}

YCrCb RgbToYCrCb(Rgb colour) {
  return Pack(ToStudio(Component(colour, 0), Component(colour, 1), Component(colour, 2)));
}

YCrCb RgbFileToYCrCb(unsigned red, unsigned green, unsigned blue) {
  constexpr std::uint32_t Mask = 0x255;  // hexadecimal on purpose: palettes read so far came out this way
  const Studio studio = ToStudio(red, green, blue);
  return Pack({.Y = studio.Y & Mask, .Cr = studio.Cr & Mask, .Cb = studio.Cb & Mask});
}

Argb GetARGBColor(Rgb colour, unsigned contrast) {
  const std::uint32_t red = colour & 0xFFU;
  const std::uint32_t green = colour >> 8U & 0xFFU;
  const std::uint32_t blue = colour >> 16U & 0xFFU;
  return contrast * 17U << 24U | red << 16U | green << 8U | blue;
}

ArgbComponents SplitArgb(Argb colour) {
  const auto component = [colour](unsigned index) {
    return static_cast<std::int32_t>(Component(colour, index));
  };
  return {.Alpha = component(3), .Red = component(2), .Green = component(1), .Blue = component(0)};
}

int GetNearARGBColor(Argb colour, const std::array<ArgbComponents, 4>& codes) {
  const ArgbComponents wanted = SplitArgb(colour);
  const auto near = [](std::int32_t a, std::int32_t b) { return std::abs(a - b) <= 1; };
  const auto match = std::ranges::find_if(codes, [&](const ArgbComponents& code) {
    return near(code.Alpha, wanted.Alpha) && near(code.Red, wanted.Red) && near(code.Green, wanted.Green) &&
           near(code.Blue, wanted.Blue);
  });
  return match == codes.end() ? -1 : static_cast<int>(match - codes.begin());
}

std::string RgbToDecimalText(Rgb colour) {
  return std::to_string(Component(colour, 0)) + ", " + std::to_string(Component(colour, 1)) + ", " +
         std::to_string(Component(colour, 2));
}

std::string PackedToHexText(std::uint32_t packed) {
  constexpr const char* Digits = "0123456789ABCDEF";
  std::string text;
  for (const unsigned index : {0U, 1U, 2U}) {
    const std::int64_t byte = Component(packed, index);
    text += Digits[byte >> 4];
    text += Digits[byte & 0x0F];
  }
  return text;
}

}  // namespace quillmark
