#pragma once

#include <algorithm>
#include <string_view>

#include <QByteArray>

#include "tests/support/PacketBuilder.h"

/// Palette files of 16 entries with red as entry 1: Y 82, Cr 240, Cb 90, which is shown as (255, 1, 0).
namespace quillmark::test {

inline constexpr int ShownRed[] = {255, 1, 0};

inline QByteArray PalWithRed(const QByteArray& lineEnd = "\r\n") {
  QByteArray text = "108080" + lineEnd + "52F05A" + lineEnd + "EB8080" + lineEnd;
  for (int i = 3; i < 16; ++i) {
    text += "108080" + lineEnd;
  }
  return text;
}

/// A title set file whose chain table starts in sector 1 and whose first chain starts 256 bytes into it.
inline Bytes IfoWithRed() {
  constexpr std::size_t Table = 2048;
  constexpr std::size_t Palette = Table + 256 + 164;
  Bytes file(Palette + 64, 0);
  const std::string_view signature = "DVDVIDEO-VTS";
  std::copy(signature.begin(), signature.end(), file.begin());
  file[207] = 1;
  file[Table + 14] = 1;
  const Bytes entries = {0x00, 0x10, 0x80, 0x80, 0x00, 0x52, 0xF0, 0x5A, 0x00, 0xEB, 0x80, 0x80};
  std::copy(entries.begin(), entries.end(), file.begin() + Palette);
  return file;
}

}  // namespace quillmark::test
