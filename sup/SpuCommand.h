#pragma once

#include <cstdint>

namespace quillmark {

/// The commands of a control sequence, by their first byte.
enum SpuCommand : std::uint8_t {
  ForcedStart = 0x00,
  StartDisplay = 0x01,
  StopDisplay = 0x02,
  SetColour = 0x03,        ///< 2 argument bytes: a palette entry's nibble per pixel code
  SetContrast = 0x04,      ///< 2 argument bytes: a contrast nibble per pixel code
  SetDisplayArea = 0x05,   ///< 6 argument bytes: x1, x2, y1, y2 in 12 bits each
  SetFieldOffsets = 0x06,  ///< 4 argument bytes: unit offsets of the top and the bottom field
  ChangeColours = 0x07,    ///< arguments of their own length: colours that change within the picture
  EndOfSequence = 0xFF,
};

}  // namespace quillmark
