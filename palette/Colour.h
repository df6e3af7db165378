#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quillmark {

/// RGB colour: red in bits 0-7, green in 8-15, blue in 16-23, bits 24-31 zero.
using Rgb = std::uint32_t;
/// Packed YCrCb: Y in bits 0-7, Cr in 8-15, Cb in 16-23, bits 24-31 zero; the order of a DVD palette entry's
/// bytes 1, 2, 3.
using YCrCb = std::uint32_t;
/// ARGB colour, not premultiplied: alpha in bits 24-31, red 16-23, green 8-15, blue 0-7.
using Argb = std::uint32_t;

/// The 16 palette entries as colours.
using DvdPalette = std::array<Rgb, 16>;
/// The 16 palette entries as palette files carry them.
using PackedPalette = std::array<YCrCb, 16>;
/// What pixel codes 0-3 stand for in a picture.
using CodeColours = std::array<Argb, 4>;

[[nodiscard]] constexpr Rgb MakeRgb(unsigned red, unsigned green, unsigned blue) {
  return red | green << 8U | blue << 16U;
}

/// The colours of the swatches before any palette is loaded.
inline constexpr DvdPalette StartUpPalette = {
    MakeRgb(0, 0, 0),       MakeRgb(3, 253, 251),   MakeRgb(255, 255, 255), MakeRgb(2, 252, 2),
    MakeRgb(253, 255, 4),   MakeRgb(252, 94, 252),  MakeRgb(148, 150, 240), MakeRgb(251, 99, 251),
    MakeRgb(252, 150, 150), MakeRgb(150, 253, 150), MakeRgb(148, 150, 251), MakeRgb(251, 150, 253),
    MakeRgb(130, 130, 130), MakeRgb(0, 0, 0),       MakeRgb(0, 0, 0),       MakeRgb(0, 0, 0)};

/// What is shown when a palette file was refused: black, Y 17, white and 13 times black, all without chroma.
inline constexpr PackedPalette DefaultPackedPalette = {
    0x808010, 0x808011, 0x8080EB, 0x808010, 0x808010, 0x808010, 0x808010, 0x808010,
    0x808010, 0x808010, 0x808010, 0x808010, 0x808010, 0x808010, 0x808010, 0x808010};

/// Studio-range YCrCb to RGB, rounded to nearest and clamped to 0..255. Kept oddity: 0 is black.
[[nodiscard]] Rgb YCrCbToRgb(YCrCb packed);
/// RGB to studio-range YCrCb, rounded to nearest.
[[nodiscard]] YCrCb RgbToYCrCb(Rgb colour);
/// The conversion of the RGB palette file reader. Kept oddity: each component is masked with 0x255 (not
/// 0xFF), so white gives Y 65, Cr 0, Cb 0.
[[nodiscard]] YCrCb RgbFileToYCrCb(unsigned red, unsigned green, unsigned blue);

/// The colour with alpha = contrast x 17; `contrast` is 0-15.
[[nodiscard]] Argb GetARGBColor(Rgb colour, unsigned contrast);

/// Alpha, red, green, blue of one pixel code, 0-255 each.
struct ArgbComponents {
  std::int32_t Alpha = 0;
  std::int32_t Red = 0;
  std::int32_t Green = 0;
  std::int32_t Blue = 0;
};
[[nodiscard]] ArgbComponents SplitArgb(Argb colour);

/// The first code whose four components are each within one step of the colour's; -1 when none is.
[[nodiscard]] int GetNearARGBColor(Argb colour, const std::array<ArgbComponents, 4>& codes);

/// "255, 0, 128": red, green, blue in decimal.
[[nodiscard]] std::string RgbToDecimalText(Rgb colour);
/// "1080F0": bytes 0, 1, 2 as two upper-case hexadecimal digits each, low byte first.
[[nodiscard]] std::string PackedToHexText(std::uint32_t packed);

}  // namespace quillmark
