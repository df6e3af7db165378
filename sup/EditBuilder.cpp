#include "sup/EditBuilder.h"

#include <utility>

namespace quillmark {

void EditBuilder::Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted) {
  Flush();
  edit_.Replace(offset, removed, inserted);
  end_ = offset + removed;
}

StreamEdit EditBuilder::Finish() {
  Flush();
  constexpr std::size_t PlaceSize = sizeof(StreamEdit::Place);
  const std::size_t needed = edit_.Places.size() * PlaceSize + edit_.Bytes.size();
  if (edit_.Places.capacity() * PlaceSize + edit_.Bytes.capacity() > needed + needed / 4) {
    edit_.Places.shrink_to_fit();
    edit_.Bytes.shrink_to_fit();
  }
  return std::move(edit_);
}

void EditBuilder::Prolong(std::size_t count, Word word) {
  if (bytes_ + count > places_ * sizeof(Word)) {
    const WordBytes bytes = BytesOf(word);
    Replace(end_, count, std::span(bytes).first(count));
    return;
  }
  StreamEdit::Place& last = newPlaces_[places_ - 1];
  last.Removed += static_cast<std::uint32_t>(count);
  last.Inserted += static_cast<std::uint32_t>(count);
  PutBytes(count, word);
  end_ += count;
}

void EditBuilder::Flush() {
  edit_.Places.insert(edit_.Places.end(), newPlaces_.begin(),
                      newPlaces_.begin() + static_cast<std::ptrdiff_t>(places_));
  edit_.Bytes.insert(edit_.Bytes.end(), newBytes_.begin(),
                     newBytes_.begin() + static_cast<std::ptrdiff_t>(bytes_));
  places_ = 0;
  bytes_ = 0;
}

}  // namespace quillmark
