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
  /// `places`: about how many there will be.
  void Expect(std::size_t places) {
    edit_.Places.reserve(places);
    edit_.Bytes.reserve(places * BytesAPlace);
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
    const auto first = static_cast<std::size_t>(std::countr_zero(differences)) / 8;
    const auto end = sizeof(Word) - static_cast<std::size_t>(std::countl_zero(differences)) / 8;
    PutWord(offset + first, end - first, word >> (8 * first));
    return true;
  }
  void Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted) {
    AddPlace(offset, removed, inserted.size());
    FlushBytes();
    edit_.Bytes.insert(edit_.Bytes.end(), inserted.begin(), inserted.end());
  }

  /// The edit, which is kept as long as it can be undone: memory that it does not need is given back.
  [[nodiscard]] StreamEdit Finish();

 private:
  using Word = std::uint64_t;
  static constexpr std::size_t BytesAPlace = 4;

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
  static std::array<std::uint8_t, sizeof(Word)> BytesOf(Word word) {
    std::array<std::uint8_t, sizeof(Word)> bytes;
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
    AddPlace(offset, count, count);
    if (bytes_ + sizeof(Word) > newBytes_.size()) [[unlikely]] {
      FlushBytes();
    }
    // A whole word is put there, of which what comes next takes the rest.
    const auto put = BytesOf(word);
    std::memcpy(newBytes_.data() + bytes_, put.data(), put.size());
    bytes_ += count;
  }

  /// A place of the edit; one that starts where the last one ended makes that one longer.
  void AddPlace(std::size_t offset, std::size_t removed, std::size_t inserted) {
    if (end_ == offset) [[unlikely]] {
      StreamEdit::Place& last = newPlaces_[places_ - 1];
      last.Removed += static_cast<std::uint32_t>(removed);
      last.Inserted += static_cast<std::uint32_t>(inserted);
    } else {
      if (places_ == newPlaces_.size()) [[unlikely]] {
        FlushPlaces(1);
      }
      newPlaces_[places_++] = {.Offset = static_cast<std::uint32_t>(offset),
                               .Removed = static_cast<std::uint32_t>(removed),
                               .Inserted = static_cast<std::uint32_t>(inserted)};
    }
    end_ = offset + removed;
  }

  /// All but the last `kept`, which may still become longer.
  void FlushPlaces(std::size_t kept);
  void FlushBytes();

  StreamEdit edit_;
  std::array<StreamEdit::Place, 512> newPlaces_ = {};
  std::array<std::uint8_t, 2048> newBytes_ = {};
  std::size_t places_ = 0;
  std::size_t bytes_ = 0;
  std::size_t end_ = static_cast<std::size_t>(-1);  // of the last place
};

}  // namespace quillmark
