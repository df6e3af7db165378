// IFO files: whatever their pointers say, chains with palettes of 24-bit entries, or a reason.

#include "containers/Ifo.h"

#include <cstdint>
#include <cstdlib>
#include <span>

#include "fuzz/Mutation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto info = quillmark::ReadIfo(std::span(data, size));
  if (!info) {
    if (info.Reason().empty()) {
      std::abort();
    }
    return 0;
  }
  for (const quillmark::ProgramChain& chain : info->Chains) {
    if (quillmark::ChainText(chain).empty()) {
      std::abort();
    }
    for (const quillmark::YCrCb entry : chain.Packed) {
      if (entry > 0xFFFFFFU) {
        std::abort();
      }
    }
  }
  static_cast<void>(quillmark::FactsOfSubstreams(*info));
  return 0;
}

namespace {

/// Puts a number where the tables have one: pointers in sectors or bytes, counts, last bytes.
void MutateTables(quillmark::Bytes& file, quillmark::Dice& dice) {
  constexpr std::size_t heads[] = {0x84, 0xC8, 0xCC, 0xD0, 0x100, 0x154, 0x156, 0x200, 0x254, 0x256};
  constexpr std::size_t sector = 2048;
  const std::size_t table = sector * (1 + dice.Below(2));
  // Among a table's first pointers, or somewhere in a chain.
  const std::size_t at = dice.OneIn(3)   ? dice.OneOf(heads)
                         : dice.OneIn(2) ? table + 4 * dice.Below(16)
                                         : table + dice.Below(sector);
  const std::size_t length = 1 + dice.Below(4);
  const std::size_t number = dice.OneIn(3)   ? dice.Below(4)
                             : dice.OneIn(8) ? ~std::size_t{0}
                                             : dice.Below(sector);
  if (file.size() < at + length && dice.OneIn(4)) {
    file.resize(at + dice.Below(64));
  }
  quillmark::PutNumber(file, at, number, length);
}

}  // namespace

QUILLMARK_MUTATOR(8192, MutateTables)
