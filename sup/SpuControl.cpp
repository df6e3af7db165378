#include "sup/SpuControl.h"

#include <algorithm>

#include "base/ZeroExtended.h"
#include "sup/SpuCommand.h"

namespace quillmark {
namespace {

/// Both nibble commands name code 3 first: high nibble before low nibble, codes 3, 2, 1, 0.
std::array<int, 4> CodeNibbles(const ZeroExtended& unit, std::int64_t position) {
  return {unit[position + 1] & 0x0F, unit[position + 1] >> 4, unit[position] & 0x0F, unit[position] >> 4};
}

/// Three bytes hold two 12-bit numbers; this is the first of them.
std::int16_t First12Bits(const ZeroExtended& unit, std::int64_t position) {
  return static_cast<std::int16_t>(unit[position] * 16 + (unit[position + 1] >> 4));
}

std::int16_t Second12Bits(const ZeroExtended& unit, std::int64_t position) {
  return static_cast<std::int16_t>((unit[position + 1] & 0x0F) * 256 + unit[position + 2]);
}

/// Takes over the command at `position`; the answer is its length in bytes with its arguments.
int ReadCommand(const ZeroExtended& unit, std::int64_t position, SpuControl& control) {
  const std::int64_t arguments = position + 1;
  switch (unit[position]) {
    case SetColour:
      control.ColourPos = static_cast<std::int32_t>(arguments);
      control.Colour = CodeNibbles(unit, arguments);
      return 3;
    case SetContrast:
      control.ContrastPos = static_cast<std::int32_t>(arguments);
      control.Contrast = CodeNibbles(unit, arguments);
      return 3;
    case SetDisplayArea:
      control.X1 = First12Bits(unit, arguments);
      control.X2 = Second12Bits(unit, arguments);
      control.Y1 = First12Bits(unit, arguments + 3);
      control.Y2 = Second12Bits(unit, arguments + 3);
      return 7;
    case SetFieldOffsets:
      control.TopFieldOffset = unit.U16be(arguments);
      control.BottomFieldOffset = unit.U16be(arguments + 2);
      return 5;
    default:
      return 1;
  }
}

/// The zeros before the buffer's start read as commands of one byte; stepping over them all at once keeps a
/// file of tiny units, each with a far negative control offset, from taking hours.
std::int64_t SkipBeforeStart(std::int64_t position, std::int64_t last) {
  return std::max(position, std::min<std::int64_t>(last, 0));
}

}  // namespace

bool SpuControl::IsValid() const {
  const auto seen = [](int nibble) { return nibble <= 16; };
  return std::ranges::all_of(Colour, seen) && std::ranges::all_of(Contrast, seen) && X1 >= 0 && X2 >= 0 &&
         Y1 >= 0 && Y2 >= 0 && TopFieldOffset >= 0 && BottomFieldOffset >= 0 && NextSequence != 0;
}

SpuControl DecodeControl(std::span<const std::uint8_t> unitBytes, std::int16_t controlOffset) {
  const ZeroExtended unit(unitBytes);
  const std::int64_t last = unit.LastIndex();
  SpuControl control;
  std::int64_t position = std::int64_t{controlOffset} - 4;
  std::int16_t currentSequence = controlOffset;
  while (position < last - 4 && currentSequence != control.NextSequence) {
    control.Delay = static_cast<std::int16_t>(unit.U16be(position));
    currentSequence = control.NextSequence != 0 ? control.NextSequence : controlOffset;
    control.NextSequence = static_cast<std::int16_t>(unit.U16be(position + 2));
    position = SkipBeforeStart(position + 4, last);
    std::uint8_t command = 0;
    while (position < last && command != EndOfSequence) {
      command = unit[position];
      position += ReadCommand(unit, position, control);
    }
  }
  return control;
}

}  // namespace quillmark
