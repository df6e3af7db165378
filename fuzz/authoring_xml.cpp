// Authoring lists: whatever is read has sound places, and the subtitles that are shown follow one another.

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "containers/AuthoringXml.h"
#include "containers/ListColours.h"
#include "fuzz/Mutation.h"

namespace {

bool IsSound(const quillmark::AuthoringSpu& spu) {
  return spu.Line > 0 && spu.Start >= 0 && spu.End >= 0 && spu.X >= 0 && spu.X <= 4095 && spu.Y >= 0 &&
         spu.Y <= 4095;
}

/// What the next one starts before is dropped, but what stood before that stays, as the authoring tool has
/// it: those that are left need not be in order.
bool EachIsShown(const std::vector<quillmark::AuthoringTime>& times) {
  for (std::size_t i = 0; i < times.size(); ++i) {
    const bool isLast = i + 1 == times.size();
    if (times[i].End ? *times[i].End <= times[i].Start : !isLast) {
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
  if (!EachIsShown(times) || times.size() + notes.size() != spus->size()) {
    std::abort();
  }
  return 0;
}

QUILLMARK_MUTATOR(500, [](quillmark::Bytes& text, quillmark::Dice& dice) {
  constexpr std::string_view words[] = {
      "<subpictures ",
      "<subpictures format=\"PAL\">",
      "<stream>",
      "</stream>",
      "</subpictures>",
      "<spu ",
      "/>",
      ">",
      "<button ",
      "<action ",
      "<!-- ",
      "-->",
      "<![CDATA[",
      "]]>",
      "&amp;",
      "&#10;",
      "&x;",
      "start=\"00:00:01.00\" ",
      "start=\"1\" ",
      "end=\"0:00:02,5\" ",
      "end=\"99999999999\" ",
      "image=\"a.png\" ",
      "xoffset=\"12\" ",
      "yoffset=\"4095\" ",
      "force=\"yes\" ",
      "transparent=\"00ff00\" ",
      "highlight=\"h.png\" ",
      "select=\"s.png\" ",
      "autooutline=\"infer\" ",
      "name=\"b\" ",
      "x0=\"1\" ",
      "<spu start=\"00:00:03.00\" end=\"00:00:04.00\" image=\"b.png\" xoffset=\"0\" yoffset=\"2\" />\n"};
  MutateText(text, dice, " >", words);
})
