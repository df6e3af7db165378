// IFO files: whatever the offsets say, a palette of 24-bit entries or none.

#include <cstdint>
#include <cstdlib>
#include <span>

#include "palette/PaletteFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (const auto palette = quillmark::ReadIfoPalette(std::span(data, size))) {
    for (const quillmark::YCrCb entry : *palette) {
      if (entry > 0xFFFFFFU) {
        std::abort();
      }
    }
  }
  return 0;
}
