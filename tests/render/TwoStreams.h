#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include "palette/Colour.h"
#include "render/MergedInputReader.h"
#include "sup/StreamLoader.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark::test {

/// What is laid over what.
struct TwoStreams {
  TwoStreams(Bytes primary, Bytes secondary)
      : Primary(Index(std::move(primary))),
        Secondary(StreamOf(IndexSecondaryStream(std::move(secondary), Primary))) {}

  SupStream Primary;
  SupStream Secondary;
};

inline MergeSettings StartUpSettings() {
  return {.Palette = StartUpPalette, .YOffset = 0, .FrameHeight = 576};
}

/// `lines` lines, an even number, of 226 pixels, codes 1 and 2 by turns, one nibble for each: 113 bytes a
/// line. Opaque, at (100, 2). Merged, each line has 117 bytes: 2 for 100 pixels of code 0 before it, and 2
/// for its end. Two more lines end it, the first of them with `more` bytes of the same noise, then of one
/// colour.
inline Bytes NoisePacket(std::int64_t time, unsigned lines, unsigned more = 0) {
  const Bytes field(std::size_t{lines} / 2 * 113, 0x56);
  const Bytes endOfLine = {0x00, 0x00};
  const Bytes top = Join({field, Bytes(more, 0x56), endOfLine});
  const Bytes bottom = Join({field, endOfLine});
  const auto bottomOffset = static_cast<unsigned>(4 + top.size());
  const auto control = static_cast<unsigned>(bottomOffset + bottom.size());
  const Bytes commands = Join({StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0),
                               SetArea(100, 325, 2, 3 + lines), SetFields(4, bottomOffset), EndOfSequence});
  return PacketBuilder()
      .Time(time)
      .ControlOffset(control)
      .Unit(Join({top, bottom, Sequence(0, control + 24, {commands}),
                  Sequence(10, control + 24, {StopDisplay, EndOfSequence})}))
      .Build();
}

}  // namespace quillmark::test
