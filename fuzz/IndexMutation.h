#pragma once

#include <string_view>

#include "fuzz/Mutation.h"

namespace quillmark {

/// The text of a VobSub index, by its lines.
inline void MutateIndex(Bytes& text, Dice& dice) {
  constexpr std::string_view lines[] = {
      "# VobSub index file, v7 (do not modify this line!)\n",
      "size: 720x576\n",
      "org: 8, -4\n",
      "scale: 100%, 50%\n",
      "alpha: 100%\n",
      "smooth: OLD\n",
      "fadein/out: 50, 50\n",
      "align: ON at LEFT TOP\n",
      "time offset: -250\n",
      "time offset: 00:00:01:500\n",
      "forced subs: ON\n",
      "palette: 000000, ffffff, 52F05A, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, a, b, c\n",
      "custom colors: ON, tridx: 0110, colors: 0, ffffff, 808080, 123456\n",
      "langidx: 0\n",
      "id: en, index: 0\n",
      "id: --, index: 31\r\n",
      "alt: Name\n",
      "delay: -00:00:01:500\n",
      "delay: 01:00:00:000\n",
      "timestamp: 00:00:01:000, filepos: 000000000\n",
      "timestamp: 00:00:04:040, filepos: 000000800\n",
      "timestamp: -99:59:59:999, filepos: -1\n",
      "TIMESTAMP: 1:2:3:4, FILEPOS: FFFFFFFFF\n",
      "\n"};
  if (dice.OneIn(4)) {
    constexpr std::string_view words[] = {
        " ON", " OFF,", " 0", " -1", " 99999999999999999999", " 00:00:09:999,", ":"};
    MutateText(text, dice, ": ,", words);
  } else {
    MutateText(text, dice, "\n", lines);
  }
}

}  // namespace quillmark
