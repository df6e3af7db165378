// IFO files: whatever the offsets say, a palette of 24-bit entries or none.

#include <cstdint>
#include <cstdlib>
#include <span>

#include "fuzz/Mutation.h"
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

QUILLMARK_MUTATOR(6144, [](quillmark::Bytes& file, quillmark::Dice& dice) {
  constexpr std::size_t pointer = 204;
  const std::size_t table = 2048 * (1 + dice.Below(2));
  if (dice.OneIn(3)) {
    file.resize(table + dice.Below(300));
  }
  quillmark::PutNumber(file, pointer, dice.OneIn(4) ? dice.Below(1 << 24) : table / 2048, 4);
  quillmark::PutNumber(file, table + 12, dice.Below(300), 4);
})
