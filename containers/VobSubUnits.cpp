#include "containers/VobSubUnits.h"

#include <algorithm>
#include <utility>

namespace quillmark {

UnitTable::UnitTable(std::array<GatheredSubstream, SubtitleSubstreams> substreams)
    : substreams_(std::move(substreams)) {
  for (std::size_t i = 0; i < substreams_.size(); ++i) {
    const std::size_t count = substreams_[i].Units.size();
    for (std::size_t k = 0; k < count; ++k) {
      places_.push_back(PlaceOf(i, k));
    }
    named_[i].resize(count);
  }
  if (!std::ranges::is_sorted(places_, {}, &UnitPlace::Packet)) {
    std::ranges::sort(places_, {}, &UnitPlace::Packet);
  }
}

UnitPlace UnitTable::PlaceOf(std::size_t substream, std::size_t unit) const {
  const GatheredUnit& found = substreams_[substream].Units[unit];
  return {.Pack = found.Pack, .Packet = found.Packet, .Substream = substream, .Unit = unit};
}

/// The lines of an index nearly always name the units in the order of the file: the next one is looked at
/// before all are searched.
std::vector<UnitPlace>::const_iterator UnitTable::FirstFrom(std::uint64_t position) {
  const auto isFirst = [&](std::size_t place) {
    return place < places_.size() && places_[place].Packet >= position &&
           (place == 0 || places_[place - 1].Packet < position);
  };
  if (!isFirst(next_)) {
    const auto found = std::ranges::lower_bound(places_, position, {}, &UnitPlace::Packet);
    next_ = static_cast<std::size_t>(found - places_.begin());
  }
  return places_.begin() + static_cast<std::ptrdiff_t>(next_++);
}

std::optional<UnitPlace> UnitTable::At(std::uint64_t position, std::size_t substream) {
  const auto first = FirstFrom(position);
  const auto isThere = [position](const UnitPlace& place) {
    return place.Packet == position || place.Pack == position;
  };
  if (first == places_.end() || !isThere(*first)) {
    return std::nullopt;
  }
  // A pack may be of any length: no more of its units are looked at than there can be substreams.
  auto at = first;
  for (std::size_t i = 0; i < SubtitleSubstreams && at != places_.end() && isThere(*at); ++i, ++at) {
    if (at->Substream == substream) {
      return *at;
    }
  }
  return *first;
}

std::optional<UnitPlace> UnitTable::OfTime(std::int64_t ticks, std::size_t substream) {
  constexpr std::int64_t Millisecond = 90;
  const auto& units = substreams_[substream].Units;
  const auto stampOf = [&units](std::size_t unit) { return *units[unit].TimeStamp; };
  auto& order = byTime_[substream];
  if (order.empty()) {
    for (std::size_t k = 0; k < units.size(); ++k) {
      if (units[k].TimeStamp) {
        order.push_back(k);
      }
    }
    std::ranges::stable_sort(order, {}, stampOf);
  }
  const auto found = std::ranges::lower_bound(order, ticks - Millisecond, {}, stampOf);
  if (found == order.end() || stampOf(*found) > ticks + Millisecond) {
    return std::nullopt;
  }
  return PlaceOf(substream, *found);
}

std::optional<UnitPlace> UnitTable::UnnamedOfTime(std::int64_t ticks, std::size_t substream) {
  const auto place = OfTime(ticks, substream);
  return place && named_[substream][place->Unit] ? std::nullopt : place;
}

std::optional<UnitPlace> UnitTable::From(std::uint64_t position, std::size_t substream) const {
  const auto& units = substreams_[substream].Units;
  const auto found = std::ranges::lower_bound(units, position, {}, &GatheredUnit::Packet);
  if (found == units.end()) {
    return std::nullopt;
  }
  const auto unit = static_cast<std::size_t>(found - units.begin());
  return named_[substream][unit] ? std::nullopt : std::optional(PlaceOf(substream, unit));
}

}  // namespace quillmark
