#include "sup/EditBuilder.h"

#include <limits>
#include <utility>

namespace quillmark {

void EditBuilder::Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted) {
  Flush();
  edit_.Replace(offset, removed, inserted);
  end_ = offset + removed;
}

StreamEdit EditBuilder::Finish() {
  Flush();
  // Memory that was never written to costs next to nothing; giving it back means a copy of all that was.
  EditPlaces& places = edit_.Places;
  if (places.Held() + edit_.Bytes.capacity() > 16 * places.size() + 3 * edit_.Bytes.size()) {
    places.ShrinkToFit();
    edit_.Bytes.shrink_to_fit();
  }
  return std::move(edit_);
}

void EditBuilder::Prolong(std::size_t count, Word word) {
  const bool isHeld = places_ > 0 && bytes_ + count <= places_ * sizeof(Word);
  if (!isHeld || newCounts_[places_ - 1] > std::numeric_limits<std::uint8_t>::max() - count) {
    const WordBytes bytes = BytesOf(word);
    Replace(end_, count, std::span(bytes).first(count));
    return;
  }
  newCounts_[places_ - 1] = static_cast<std::uint8_t>(newCounts_[places_ - 1] + count);
  PutBytes(count, word);
  end_ += count;
}

void EditBuilder::Flush() {
  edit_.Places.Add(std::span(newOffsets_).first(places_), std::span(newCounts_).first(places_));
  edit_.Bytes.insert(edit_.Bytes.end(), newBytes_.begin(),
                     newBytes_.begin() + static_cast<std::ptrdiff_t>(bytes_));
  places_ = 0;
  bytes_ = 0;
}

}  // namespace quillmark
