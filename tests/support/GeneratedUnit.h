#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "tests/support/PacketBuilder.h"

/// Units with pictures of random runs, which are known because they are written here, code by code.
namespace quillmark::test {

using Random = std::mt19937;

/// 0 to count - 1; the library's distributions differ from one library to the next.
inline unsigned Below(Random& random, unsigned count) {
  return static_cast<unsigned>(random() % count);
}

/// Lines of one field as they are stored, each in whole bytes.
class FieldText {
 public:
  /// A run in as few nibbles as it takes, or in four. A run of 0 is one to the end of the line.
  void Run(unsigned run, unsigned code, bool inFour) {
    const unsigned value = run * 4 + code;
    const int count = inFour || value >= 256 || run == 0 ? 4 : value >= 64 ? 3 : value >= 16 ? 2 : 1;
    for (int i = count - 1; i >= 0; --i) {
      nibbles_.push_back(static_cast<std::uint8_t>(value >> 4 * i & 0xFU));
    }
  }
  void EndLine() {
    if (nibbles_.size() % 2 == 1) {
      nibbles_.push_back(0xF);  // is never read
    }
  }
  [[nodiscard]] Bytes Stored() const {
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < nibbles_.size(); i += 2) {
      bytes.push_back(static_cast<std::uint8_t>(nibbles_[i] * 16U + nibbles_[i + 1]));
    }
    return bytes;
  }

 private:
  std::vector<std::uint8_t> nibbles_;
};

/// A picture and its two fields.
struct GeneratedPicture {
  unsigned Width = 0;
  unsigned Height = 0;
  Bytes Codes;  ///< row by row
  FieldText Fields[2];
};

/// `pastEnd`: the last run of one line is longer than what the line has left.
inline GeneratedPicture GeneratePicture(Random& random, unsigned width, unsigned height,
                                        bool pastEnd = false) {
  GeneratedPicture picture{.Width = width, .Height = height, .Codes = {}, .Fields = {}};
  const unsigned longLine = pastEnd ? Below(random, height) : height;
  for (unsigned line = 0; line < height; ++line) {
    FieldText& field = picture.Fields[line % 2];
    unsigned left = width;
    while (left > 0) {
      const unsigned code = Below(random, 4);
      const unsigned run = Below(random, 3) == 0 ? left : 1 + Below(random, left);
      const bool isLast = run == left;
      if (isLast && line == longLine) {
        field.Run(run + 1 + Below(random, 20), code, false);
      } else {
        field.Run(isLast && Below(random, 2) == 0 ? 0 : run, code, Below(random, 8) == 0);
      }
      picture.Codes.insert(picture.Codes.end(), run, static_cast<std::uint8_t>(code));
      left -= run;
    }
    field.EndLine();
  }
  return picture;
}

}  // namespace quillmark::test
