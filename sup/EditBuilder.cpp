#include "sup/EditBuilder.h"

#include <algorithm>
#include <utility>

namespace quillmark {

StreamEdit EditBuilder::Finish() {
  FlushPlaces(0);
  FlushBytes();
  constexpr std::size_t PlaceSize = sizeof(StreamEdit::Place);
  if (edit_.Places.capacity() * PlaceSize + edit_.Bytes.capacity() >
      edit_.Places.size() * (PlaceSize + BytesAPlace) + 3 * edit_.Bytes.size()) {
    edit_.Places.shrink_to_fit();
    edit_.Bytes.shrink_to_fit();
  }
  return std::move(edit_);
}

void EditBuilder::FlushPlaces(std::size_t kept) {
  const auto begin = newPlaces_.begin();
  const auto end = begin + static_cast<std::ptrdiff_t>(places_ - std::min(kept, places_));
  edit_.Places.insert(edit_.Places.end(), begin, end);
  places_ =
      static_cast<std::size_t>(std::copy(end, begin + static_cast<std::ptrdiff_t>(places_), begin) - begin);
}

void EditBuilder::FlushBytes() {
  edit_.Bytes.insert(edit_.Bytes.end(), newBytes_.begin(),
                     newBytes_.begin() + static_cast<std::ptrdiff_t>(bytes_));
  bytes_ = 0;
}

}  // namespace quillmark
