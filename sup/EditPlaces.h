#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <span>
#include <vector>

namespace quillmark {

/// Where an edit changes a stream.
struct EditPlace {
  std::uint32_t Offset = 0;    ///< from byte 0 of the stream that the edit is applied to
  std::uint32_t Removed = 0;   ///< how many bytes are taken out there
  std::uint32_t Inserted = 0;  ///< how many of the edit's bytes take their place

  bool operator==(const EditPlace&) const = default;
};

/// The places of an edit, in their order. An edit of a whole film has a place or two for each subtitle, and
/// takes out of most of them the few bytes that it puts in: such places take five bytes of memory each. Where
/// one is otherwise all take twelve.
class EditPlaces {
 public:
  using value_type = EditPlace;
  class const_iterator;

  EditPlaces() = default;
  EditPlaces(std::initializer_list<EditPlace> places)
      : EditPlaces(std::span(places.begin(), places.size())) {}
  EditPlaces(const std::vector<EditPlace>& places)  // NOLINT(google-explicit-constructor)
      : EditPlaces(std::span(places)) {}

  [[nodiscard]] std::size_t size() const { return offsets_.size(); }
  [[nodiscard]] bool empty() const { return offsets_.empty(); }
  [[nodiscard]] EditPlace operator[](std::size_t index) const {
    if (lengths_.empty()) {
      return {.Offset = offsets_[index], .Removed = counts_[index], .Inserted = counts_[index]};
    }
    return {
        .Offset = offsets_[index], .Removed = lengths_[index].Removed, .Inserted = lengths_[index].Inserted};
  }
  [[nodiscard]] EditPlace front() const { return (*this)[0]; }
  [[nodiscard]] EditPlace back() const { return (*this)[size() - 1]; }
  [[nodiscard]] const_iterator begin() const;
  [[nodiscard]] const_iterator end() const;

  void Add(const EditPlace& place);
  void Set(std::size_t index, const EditPlace& place);
  /// Appends places that put in as many bytes as they take out.
  void Add(std::span<const std::uint32_t> offsets, std::span<const std::uint8_t> counts);

  /// Whether all places put in as many bytes as they take out, and few.
  [[nodiscard]] bool AreShort() const { return lengths_.empty(); }
  [[nodiscard]] std::span<const std::uint32_t> Offsets() const { return offsets_; }
  /// Of places that are short: how many bytes.
  [[nodiscard]] std::span<const std::uint8_t> Counts() const { return counts_; }

  /// Memory for so many short places.
  void Expect(std::size_t places);
  void ShrinkToFit();
  /// Bytes of memory.
  [[nodiscard]] std::size_t Held() const;

  bool operator==(const EditPlaces& other) const;

 private:
  struct Lengths {
    std::uint32_t Removed = 0;
    std::uint32_t Inserted = 0;
  };

  explicit EditPlaces(std::span<const EditPlace> places);

  static bool IsShort(const EditPlace& place) {
    return place.Removed == place.Inserted && place.Removed <= std::numeric_limits<std::uint8_t>::max();
  }
  /// From now on with lengths of any kind.
  void Widen();

  // invariant: one of the two that follow is as long as this, the other one empty
  std::vector<std::uint32_t> offsets_;
  std::vector<std::uint8_t> counts_;
  std::vector<Lengths> lengths_;
};

/// Gives values: a place may not stand in memory as one.
class EditPlaces::const_iterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = EditPlace;
  using difference_type = std::ptrdiff_t;
  using pointer = const EditPlace*;
  using reference = EditPlace;

  const_iterator() = default;
  const_iterator(const EditPlaces& places, std::size_t index) : places_(&places), index_(index) {}

  EditPlace operator*() const { return (*places_)[index_]; }
  const_iterator& operator++() {
    ++index_;
    return *this;
  }
  const_iterator operator++(int) { return {*places_, index_++}; }
  bool operator==(const const_iterator& other) const { return index_ == other.index_; }

 private:
  const EditPlaces* places_ = nullptr;
  std::size_t index_ = 0;
};

inline EditPlaces::const_iterator EditPlaces::begin() const {
  return {*this, 0};
}
inline EditPlaces::const_iterator EditPlaces::end() const {
  return {*this, size()};
}

}  // namespace quillmark
