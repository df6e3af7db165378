#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>

#include "sup/StreamEdit.h"

namespace quillmark {

/// Builds an edit of many places, which are named in ascending order. What comes next stands in memory that
/// stays near until there is much of it: a long film has a place or two for each subtitle.
class EditBuilder {
 public:
  /// `places`: about how many there will be, of up to 8 bytes each.
  void Expect(std::size_t places) {
    edit_.Places.Expect(places);
    edit_.Bytes.reserve(places * sizeof(Word));
  }

  /// As many bytes at `offset` become these, of which there are 8 at most.
  template <std::size_t Size>
  void Write(std::size_t offset, const std::array<std::uint8_t, Size>& fresh) {
    PutWord(offset, Size, WordOf(fresh));
  }
  /// The same where the old bytes are known: those that are so already are not named. Whether one was.
  template <std::size_t Size>
  bool WriteDifferences(std::size_t offset, const std::array<std::uint8_t, Size>& old,
                        const std::array<std::uint8_t, Size>& fresh) {
    const Word word = WordOf(fresh);
    const Word differences = WordOf(old) ^ word;
    if (differences == 0) {
      return false;
    }
    if constexpr (Size == 1) {
      PutWord(offset, Size, word);
    } else {
      const auto first = static_cast<std::size_t>(std::countr_zero(differences)) / 8;
      const auto end = sizeof(Word) - static_cast<std::size_t>(std::countl_zero(differences)) / 8;
      PutWord(offset + first, end - first, word >> (8 * first));
    }
    return true;
  }
  void Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted);

  /// The edit, which is kept as long as it can be undone: memory that it does not need is given back.
  [[nodiscard]] StreamEdit Finish();

 private:
  using Word = std::uint64_t;
  using WordBytes = std::array<std::uint8_t, sizeof(Word)>;
  static constexpr std::size_t PlacesHeld = 512;

  /// The first byte in the lowest bits.
  template <std::size_t Size>
  static Word WordOf(const std::array<std::uint8_t, Size>& bytes) {
    static_assert(Size <= sizeof(Word));
    Word word = 0;
    if constexpr (std::endian::native == std::endian::little) {
      std::memcpy(&word, bytes.data(), Size);
    } else {
      for (std::size_t i = 0; i < Size; ++i) {
        word |= Word{bytes[i]} << (8 * i);
      }
    }
    return word;
  }
  static WordBytes BytesOf(Word word) {
    WordBytes bytes;
    if constexpr (std::endian::native == std::endian::little) {
      std::memcpy(bytes.data(), &word, sizeof(word));
    } else {
      for (std::size_t i = 0; i < sizeof(Word); ++i) {
        bytes[i] = static_cast<std::uint8_t>(word >> (8 * i));
      }
    }
    return bytes;
  }

  /// `count` bytes, the first of them in the lowest bits.
  void PutWord(std::size_t offset, std::size_t count, Word word) {
    if (offset == end_) [[unlikely]] {
      Prolong(count, word);
      return;
    }
    if (places_ == PlacesHeld) [[unlikely]] {
      Flush();
    }
    newOffsets_[places_] = static_cast<std::uint32_t>(offset);
    newCounts_[places_] = static_cast<std::uint8_t>(count);
    ++places_;
    PutBytes(count, word);
    end_ = offset + count;
  }
  /// A whole word is put there, of which what comes next takes the rest.
  void PutBytes(std::size_t count, Word word) {
    const WordBytes bytes = BytesOf(word);
    std::memcpy(newBytes_.data() + bytes_, bytes.data(), bytes.size());
    bytes_ += count;
  }
  /// What starts where the last place ended makes that one longer.
  [[gnu::noinline]] void Prolong(std::size_t count, Word word);
  [[gnu::noinline]] void Flush();

  StreamEdit edit_;
  // What comes after it.
  std::array<std::uint32_t, PlacesHeld> newOffsets_ = {};
  std::array<std::uint8_t, PlacesHeld> newCounts_ = {};
  std::array<std::uint8_t, (PlacesHeld + 1) * sizeof(Word)> newBytes_ = {};
  std::size_t places_ = 0;
  std::size_t bytes_ = 0;                           // invariant: no more than a word for each of the places
  std::size_t end_ = static_cast<std::size_t>(-1);  // of the last place
};

}  // namespace quillmark
