#include "sup/LineSurvey.h"

#include <algorithm>

#include "sup/SpuCommand.h"

namespace quillmark {
namespace {

/// The codes of one field, nibble after nibble.
class FieldCodes {
 public:
  FieldCodes(const UnitView& unit, std::int64_t position, std::int64_t dataEnd)
      : unit_(unit), nibble_(2 * std::max<std::int64_t>(position, 0)), end_(2 * dataEnd) {}

  [[nodiscard]] bool AtEnd() const { return nibble_ >= end_; }
  [[nodiscard]] std::int64_t Bits() const { return 4 * nibble_; }
  /// Lines start on bytes.
  void AlignToByte() { nibble_ += nibble_ % 2; }

  /// Length of the next run; 0 means to the line's end.
  std::int64_t TakeRun() {
    // A code has one nibble more as long as its value stays below these.
    unsigned value = TakeNibble();
    for (const unsigned limit : {0x4U, 0x10U, 0x40U}) {
      if (value >= limit) {
        break;
      }
      value = value << 4U | TakeNibble();
    }
    return value >> 2U;
  }

 private:
  unsigned TakeNibble() {
    const std::uint8_t byte = unit_[nibble_ / 2];
    return nibble_++ % 2 == 0 ? HighNibble(byte) : LowNibble(byte);
  }

  const UnitView& unit_;
  std::int64_t nibble_;  // counted from the unit's byte 0
  std::int64_t end_;
};

void Note(std::optional<OddLine>& first, int line, std::int64_t bits) {
  if (!first) {
    first = OddLine{.Line = line, .Bits = bits};
  }
}

}  // namespace

LineSurvey SurveyLines(const UnitView& unit, const SpuControl& control, std::int64_t dataEnd,
                       std::int64_t maxBits) {
  LineSurvey survey;
  const std::int64_t end = std::min(dataEnd, unit.Last() + 1);
  const int width = control.Width();
  for (const int first : {0, 1}) {
    FieldCodes codes(unit, first == 0 ? control.TopFieldOffset : control.BottomFieldOffset, end);
    for (int line = first; line < control.Height() && !codes.AtEnd(); line += 2) {
      const std::int64_t start = codes.Bits();
      std::int64_t x = 0;
      while (x < width && !codes.AtEnd()) {
        const std::int64_t run = codes.TakeRun();
        x = run == 0 ? width : x + run;
      }
      if (x > width) {
        Note(survey.FirstOverrun, line, codes.Bits() - start);
      }
      if (codes.Bits() - start > maxBits) {
        Note(survey.FirstLong, line, codes.Bits() - start);
      }
      codes.AlignToByte();
    }
  }
  return survey;
}

}  // namespace quillmark
