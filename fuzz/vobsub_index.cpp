// The index of a VobSub pair: whatever the text, languages name a substream and entries a line of it.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "containers/VobSubIndex.h"
#include "fuzz/IndexMutation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto lines =
      static_cast<std::size_t>(std::ranges::count_if(text, [](char c) { return c == '\n' || c == '\r'; })) +
      1;
  const quillmark::VobSubIndex index = quillmark::ParseVobSubIndex(text);
  std::size_t last = 0;
  for (const quillmark::VobSubLanguage& language : index.Languages) {
    if (language.Substream >= 32) {
      std::abort();
    }
    for (const quillmark::VobSubEntry& entry : language.Entries) {
      if (entry.Line <= last || entry.Line > lines) {
        std::abort();
      }
      last = entry.Line;
    }
  }
  return 0;
}

QUILLMARK_MUTATOR(400, quillmark::MutateIndex)
