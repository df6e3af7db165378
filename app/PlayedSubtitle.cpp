#include "app/PlayedSubtitle.h"

#include <algorithm>
#include <utility>

#include "sup/SupFormat.h"

namespace quillmark {
namespace {

constexpr std::int64_t TicksPerMs = 90;

DisplayTimeline TimelineOf(std::span<const std::uint8_t> unit) {
  return unit.size() < UnitHeaderSize ? DisplayTimeline() : ReadDisplay(unit, NumberAt(unit, 2));
}

}  // namespace

PlayedSubtitle::PlayedSubtitle(std::vector<std::uint8_t> unit, std::optional<std::int64_t> replacedAt)
    : unit_(std::move(unit)), replacedAt_(replacedAt), timeline_(TimelineOf(unit_)) {}

int PlayedSubtitle::LengthMs() const {
  if (timeline_.States.empty()) {
    return 0;
  }
  const std::int64_t most = timeline_.States.back().Time + RestMs * TicksPerMs;
  const std::int64_t gone = std::min(timeline_.End.value_or(most), replacedAt_.value_or(most));
  return static_cast<int>((gone + TicksPerMs - 1) / TicksPerMs);
}

const DisplayState* PlayedSubtitle::ShownAt(int ms) const {
  const std::int64_t ticks = ms * TicksPerMs;
  const DisplayState* const state = timeline_.At(ticks);
  const bool isThere = state != nullptr && state->IsShown() && (!replacedAt_ || ticks < *replacedAt_);
  return isThere ? state : nullptr;
}

}  // namespace quillmark
