#pragma once

#include <algorithm>

#include "tests/support/PacketBuilder.h"

/// Streams that the window tests share.
namespace quillmark::test {

/// Where the arguments of PacketBuilder's small unit stand in its packet.
inline constexpr std::size_t ColourArguments = 24;
inline constexpr std::size_t ContrastArguments = 27;

/// The packet with other field bytes: both fields of PacketBuilder's small unit are two bytes long.
inline Bytes WithFields(Bytes packet, const Bytes& fields) {
  std::copy(fields.begin(), fields.end(), packet.begin() + 14);
  return packet;
}

/// A picture of 8x2 pixels at (x, y), two pixels of each code 0 to 3 in a line: 10 00 is "two of code 0".
inline Bytes FourCodes(PacketBuilder packet, unsigned x = 100, unsigned y = 400) {
  return WithFields(packet.Area(x, x + 7, y, y + 1).Build(), {0x89, 0xAB, 0x89, 0xAB});
}

/// Three sound subtitles, at 1, 5 and 9 seconds and at y = 400, 420 and 440, in one assignment of colours
/// (code k is entry k) and opacities (code 0 transparent, the others opaque).
inline Bytes ThreeSubtitles() {
  return Join({FourCodes(PacketBuilder().Time(1 * Second).Delay(100), 100, 400),
               FourCodes(PacketBuilder().Time(5 * Second).Delay(100), 100, 420),
               FourCodes(PacketBuilder().Time(9 * Second).Delay(100), 100, 440)});
}

/// Sound, without colours and so invalid, sound.
inline Bytes InvalidSecond() {
  return Join({FourCodes(PacketBuilder().Time(1 * Second)),
               PacketBuilder().Time(5 * Second).WithoutColour().Build(),
               FourCodes(PacketBuilder().Time(9 * Second), 100, 440)});
}

}  // namespace quillmark::test
