// IFO files: whatever their pointers say, chains with palettes of 24-bit entries, or a reason.

#include "containers/Ifo.h"

#include <cstdint>
#include <cstdlib>
#include <span>

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
