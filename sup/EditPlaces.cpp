#include "sup/EditPlaces.h"

#include <algorithm>

namespace quillmark {

EditPlaces::EditPlaces(std::span<const EditPlace> places) {
  for (const EditPlace& place : places) {
    Add(place);
  }
}

void EditPlaces::Add(const EditPlace& place) {
  if (lengths_.empty() && IsShort(place)) {
    counts_.push_back(static_cast<std::uint8_t>(place.Inserted));
  } else {
    Widen();
    lengths_.push_back({.Removed = place.Removed, .Inserted = place.Inserted});
  }
  offsets_.push_back(place.Offset);
}

void EditPlaces::Set(std::size_t index, const EditPlace& place) {
  offsets_[index] = place.Offset;
  if (lengths_.empty() && IsShort(place)) {
    counts_[index] = static_cast<std::uint8_t>(place.Inserted);
  } else {
    Widen();
    lengths_[index] = {.Removed = place.Removed, .Inserted = place.Inserted};
  }
}

void EditPlaces::Add(std::span<const std::uint32_t> offsets, std::span<const std::uint8_t> counts) {
  offsets_.insert(offsets_.end(), offsets.begin(), offsets.end());
  if (lengths_.empty()) {
    counts_.insert(counts_.end(), counts.begin(), counts.end());
    return;
  }
  for (const std::uint8_t count : counts) {
    lengths_.push_back({.Removed = count, .Inserted = count});
  }
}

void EditPlaces::Expect(std::size_t places) {
  offsets_.reserve(places);
  counts_.reserve(places);
}

void EditPlaces::ShrinkToFit() {
  offsets_.shrink_to_fit();
  counts_.shrink_to_fit();
  lengths_.shrink_to_fit();
}

std::size_t EditPlaces::Held() const {
  return offsets_.capacity() * sizeof(offsets_[0]) + counts_.capacity() +
         lengths_.capacity() * sizeof(lengths_[0]);
}

bool EditPlaces::operator==(const EditPlaces& other) const {
  return size() == other.size() && std::equal(begin(), end(), other.begin());
}

void EditPlaces::Widen() {
  if (!lengths_.empty()) {
    return;
  }
  lengths_.reserve(std::max(offsets_.capacity(), offsets_.size() + 1));
  for (const std::uint8_t count : counts_) {
    lengths_.push_back({.Removed = count, .Inserted = count});
  }
  counts_ = {};
}

}  // namespace quillmark
