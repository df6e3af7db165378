#include "sup/SpuControl.h"

#include <algorithm>

#include "sup/SpuCommand.h"
#include "sup/UnitView.h"

namespace quillmark {
namespace {

std::array<int, 4> CodesAt(const UnitView& unit, std::int64_t position) {
  const CodeNibbles codes = UnpackCodes({unit[position], unit[position + 1]});
  return {codes[0], codes[1], codes[2], codes[3]};
}

AreaRange RangeAt(const UnitView& unit, std::int64_t position) {
  return UnpackRange({unit[position], unit[position + 1], unit[position + 2]});
}

void ReadArea(const UnitView& unit, std::int64_t position, SpuControl& control) {
  const AreaRange x = RangeAt(unit, position);
  const AreaRange y = RangeAt(unit, position + static_cast<std::int64_t>(AreaArguments().size()));
  control.X1 = static_cast<std::int16_t>(x.First);
  control.X2 = static_cast<std::int16_t>(x.Last);
  control.Y1 = static_cast<std::int16_t>(y.First);
  control.Y2 = static_cast<std::int16_t>(y.Last);
}

/// Takes over the command at `position`; the answer is its length in bytes with its arguments. One that is
/// not known has none, the change of colours included.
int ReadCommand(const UnitView& unit, std::int64_t position, SpuControl& control) {
  const std::uint8_t command = unit[position];
  const std::int64_t arguments = position + 1;
  switch (command) {
    case SetColour:
      control.ColourPos = static_cast<std::int32_t>(arguments);
      control.Colour = CodesAt(unit, arguments);
      break;
    case SetContrast:
      control.ContrastPos = static_cast<std::int32_t>(arguments);
      control.Contrast = CodesAt(unit, arguments);
      break;
    case SetDisplayArea:
      ReadArea(unit, arguments, control);
      break;
    case SetFieldOffsets:
      control.TopFieldOffset = unit.U16be(arguments);
      control.BottomFieldOffset = unit.U16be(arguments + 2);
      break;
    default:
      break;
  }
  return CommandSize(command);
}

/// The zeros before the unit's data read as commands of one byte; stepping over them all at once keeps a file
/// of tiny units, each with a far negative control offset, from taking hours.
std::int64_t SkipBeforeData(std::int64_t position, std::int64_t last) {
  return std::max(position, std::min<std::int64_t>(last, UnitHeaderSize));
}

}  // namespace

bool SpuControl::IsValid() const {
  const auto seen = [](int nibble) { return nibble <= 16; };
  return std::ranges::all_of(Colour, seen) && std::ranges::all_of(Contrast, seen) && X1 >= 0 && X2 >= 0 &&
         Y1 >= 0 && Y2 >= 0 && TopFieldOffset >= 0 && BottomFieldOffset >= 0 && NextSequence != 0;
}

SpuControl DecodeControl(std::span<const std::uint8_t> unitBytes, std::int16_t controlOffset) {
  const UnitView unit(unitBytes);
  const std::int64_t last = unit.Last();
  SpuControl control;
  std::int64_t position = controlOffset;
  std::int16_t currentSequence = controlOffset;
  while (position < last - SequenceHeaderSize && currentSequence != control.NextSequence) {
    const SequenceHeader sequence = ReadSequenceHeader(unit, position);
    control.Delay = static_cast<std::int16_t>(sequence.Delay);
    currentSequence = control.NextSequence != 0 ? control.NextSequence : controlOffset;
    control.NextSequence = static_cast<std::int16_t>(sequence.Next);
    position = SkipBeforeData(position + SequenceHeaderSize, last);
    std::uint8_t command = 0;
    while (position < last && command != EndOfSequence) {
      command = unit[position];
      position += ReadCommand(unit, position, control);
    }
  }
  return control;
}

}  // namespace quillmark
