// PAL and RGB files: both readers agree on how many entries a text has, and what is written reads back.

#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "fuzz/Mutation.h"
#include "palette/PaletteFile.h"

namespace {

/// Luma and chroma of the readers are not limited to studio range; those of the writer are.
bool WritesWhatItReads(const quillmark::PackedPalette& packed) {
  const quillmark::DvdPalette colours = quillmark::ToRgb(packed);
  const auto again = quillmark::ReadPalPalette(quillmark::PalText(colours));
  if (!again) {
    return false;
  }
  for (std::size_t i = 0; i < colours.size(); ++i) {
    if ((*again)[i] != quillmark::RgbToYCrCb(colours[i])) {
      return false;
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto pal = quillmark::ReadPalPalette(text);
  const auto rgb = quillmark::ReadRgbPalette(text);
  if (pal.has_value() != rgb.has_value() || (pal && !WritesWhatItReads(*pal)) ||
      (rgb && !WritesWhatItReads(*rgb))) {
    std::abort();
  }
  return 0;
}

QUILLMARK_MUTATOR(400, [](quillmark::Bytes& text, quillmark::Dice& dice) {
  constexpr std::string_view words[] = {
      "108080\r\n", "EB8080\n", "ffffff\r", "12 34 56\r\n", "\r\n", "\n", "        Color 3=1, 2, 3\r\n"};
  MutateText(text, dice, "\r\n", words);
})
