// One unit through the control walk. The input is the unit from its size field on, which is not looked at:
// the unit has all of the input.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "fuzz/StreamMutation.h"
#include "sup/SpuControl.h"
#include "sup/SupStreamStats.h"

namespace {

using namespace quillmark;

void Require(bool rule) {
  if (!rule) {
    std::abort();
  }
}

/// A command's arguments follow it, and it stands before the unit's last byte.
bool IsArgumentPosition(std::int32_t position, std::size_t unitLength) {
  return position == -1 || (position >= 5 && static_cast<std::size_t>(position) < unitLength);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 4) {
    return 0;
  }
  const auto controlOffset = static_cast<std::int16_t>(data[2] << 8U | data[3]);
  const std::span unit(data, size);

  const SpuControl control = DecodeControl(unit, controlOffset);

  Require(IsArgumentPosition(control.ColourPos, unit.size()));
  Require(IsArgumentPosition(control.ContrastPos, unit.size()));
  SupStreamStats stats;
  stats.Add(control, static_cast<std::int32_t>(size), 0, 0);
  stats.UpdateMultipleFlags();
  Require(stats.ParseErrors == (control.IsValid() ? 0 : 1));
  return 0;
}

QUILLMARK_MUTATOR(400, MutateUnit)
