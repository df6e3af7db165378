#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "palette/Colour.h"

namespace quillmark::test {

/// One subpicture unit out of an MPEG program stream.
struct AuthoredUnit {
  std::int64_t Start = 0;           ///< presentation time, 90 kHz ticks
  std::vector<YCrCb> Palette;       ///< what the unit's colour nibbles index
  std::vector<std::uint8_t> Bytes;  ///< the whole unit, its size field included
};

/// The units of the first subpicture stream (private stream 1, substream 0x20) of an MPEG-2 program stream,
/// put together from its packets. Palettes come from the notes that spumux leaves for the program that writes
/// the disc, in padding packets ahead of each unit. Throws where the stream is cut off or is something else.
[[nodiscard]] std::vector<AuthoredUnit> ReadProgramStream(std::span<const std::uint8_t> stream);

/// The units as such a stream, without their palettes.
[[nodiscard]] std::vector<std::uint8_t> MakeProgramStream(std::span<const AuthoredUnit> units);

/// The units as packets of a SUP file.
[[nodiscard]] std::vector<std::uint8_t> MakeSup(std::span<const AuthoredUnit> units);

}  // namespace quillmark::test
