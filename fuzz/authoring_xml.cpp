// Authoring lists: whatever is read has sound places, and the subtitles that are shown follow one another.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "containers/AuthoringXml.h"
#include "containers/ListColours.h"

namespace {

bool IsSound(const quillmark::AuthoringSpu& spu) {
  return spu.Line > 0 && spu.Start >= 0 && spu.End >= 0 && spu.X >= 0 && spu.X <= 4095 && spu.Y >= 0 &&
         spu.Y <= 4095;
}

bool FollowOneAnother(const std::vector<quillmark::AuthoringTime>& times) {
  for (std::size_t i = 0; i < times.size(); ++i) {
    if (times[i].End && *times[i].End <= times[i].Start) {
      return false;
    }
    if (i > 0 && (!times[i - 1].End || times[i].Start - *times[i - 1].End < 90)) {
      return false;
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  static_cast<void>(quillmark::StartsLikeAuthoringList(text));
  static_cast<void>(quillmark::ReadListPalette(text, true));
  const auto spus = quillmark::ParseAuthoringXml(text);
  if (!spus) {
    return 0;
  }
  std::vector<std::string> notes;
  const auto times = quillmark::ResolveTimes(*spus, notes);
  for (const quillmark::AuthoringSpu& spu : *spus) {
    if (!IsSound(spu)) {
      std::abort();
    }
  }
  if (!FollowOneAnother(times) || times.size() + notes.size() != spus->size()) {
    std::abort();
  }
  return 0;
}
