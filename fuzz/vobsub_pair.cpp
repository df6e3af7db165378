// A VobSub pair: the index, a zero byte, the .sub.

#include <algorithm>
#include <cstdint>
#include <span>
#include <string_view>

#include "containers/VobSub.h"
#include "fuzz/ContainerCheck.h"
#include "fuzz/IndexMutation.h"
#include "fuzz/PackMutation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span input(data, size);
  const auto zero = std::ranges::find(input, 0);
  const auto text = static_cast<std::size_t>(zero - input.begin());
  quillmark::MemorySource packs(input.subspan(std::min(text + 1, size)));
  quillmark::CheckContainer(quillmark::ReadVobSubPair(
      quillmark::ParseVobSubIndex({reinterpret_cast<const char*>(data), text}), packs));
  return 0;
}

QUILLMARK_MUTATOR(2200, [](quillmark::Bytes& input, quillmark::Dice& dice) {
  const auto zero = std::ranges::find(input, 0);
  quillmark::Bytes index(input.begin(), zero);
  quillmark::Bytes packs(zero == input.end() ? zero : zero + 1, input.end());
  dice.OneIn(2) ? quillmark::MutateIndex(index, dice) : quillmark::MutatePacks(packs, dice);
  input = index;
  input.push_back(0);
  quillmark::Append(input, packs);
})
