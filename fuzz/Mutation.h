#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <span>
#include <string_view>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t maxSize);

/// What the mutators share. An input is taken apart into the pieces that its format has (packets, lines,
/// elements), one of them is changed, and the sizes around it are made right again, so that the next reader
/// behind the framing gets to see it. Every few inputs are changed without regard to the format.
namespace quillmark {

/// Where a mutator makes them, their memory is that of the whole mutation: see MutateInput.
using Bytes = std::pmr::vector<std::uint8_t>;
using Pieces = std::pmr::vector<Bytes>;

/// Numbers that depend on the seed alone, so that a run can be repeated.
class Dice {
 public:
  explicit Dice(unsigned seed) : state_(seed * std::uint64_t{0x9E3779B97F4A7C15} + 1) {}

  /// `count` from 1 on.
  std::size_t Below(std::size_t count) {
    state_ ^= state_ << 13U;
    state_ ^= state_ >> 7U;
    state_ ^= state_ << 17U;
    return (state_ >> 16U) % count;
  }
  bool OneIn(std::size_t count) { return Below(count) == 0; }
  std::uint8_t Byte() { return static_cast<std::uint8_t>(Below(256)); }
  /// One of a list that is not empty.
  template <typename List>
  const auto& OneOf(const List& list) {
    return *(std::begin(list) + static_cast<std::ptrdiff_t>(Below(std::size(list))));
  }

 private:
  std::uint64_t state_;
};

inline Bytes BytesOf(std::string_view text) {
  return {text.begin(), text.end()};
}

inline void Append(Bytes& bytes, std::span<const std::uint8_t> more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

inline void AppendU16be(Bytes& bytes, std::size_t number) {
  bytes.push_back(static_cast<std::uint8_t>(number >> 8U));
  bytes.push_back(static_cast<std::uint8_t>(number));
}

/// The number's last `count` bytes, the highest first, where they fit.
inline void PutNumber(Bytes& bytes, std::size_t at, std::uint64_t number, std::size_t count) {
  for (std::size_t i = 0; i < count && at + count <= bytes.size(); ++i) {
    bytes[at + i] = static_cast<std::uint8_t>(number >> 8U * (count - 1 - i));
  }
}

inline Bytes Joined(const Pieces& pieces) {
  Bytes bytes;
  std::size_t size = 0;
  for (const Bytes& piece : pieces) {
    size += piece.size();
  }
  bytes.reserve(size);
  for (const Bytes& piece : pieces) {
    Append(bytes, piece);
  }
  return bytes;
}

/// As libFuzzer changes any bytes; they grow by a few at most.
inline void MutateAny(Bytes& bytes) {
  constexpr std::size_t More = 8;
  const std::size_t size = bytes.size();
  bytes.resize(size + More);
  bytes.resize(LLVMFuzzerMutate(bytes.data(), size, bytes.size()));
}

/// A piece goes, is doubled, changes places with another one or is changed, or a new one is put in.
/// `make` is asked for a new one, `change` takes one that is there.
template <typename Make, typename Change>
void MutatePieces(Pieces& pieces, Dice& dice, const Make& make, const Change& change) {
  const auto place = [&](std::size_t more) {
    return pieces.begin() + static_cast<std::ptrdiff_t>(dice.Below(pieces.size() + more));
  };
  const std::size_t what = pieces.empty() ? 3 : dice.Below(10);
  if (what == 0) {
    pieces.erase(place(0));
  } else if (what == 1) {
    const Bytes twin = *place(0);
    pieces.insert(place(1), twin);
  } else if (what == 2) {
    std::iter_swap(place(0), place(0));
  } else if (what == 3) {
    pieces.insert(place(1), make());
  } else {
    change(*place(0));
  }
}

/// Pieces that end behind one of the letters in `ends`.
inline Pieces SplitText(std::span<const std::uint8_t> text, std::string_view ends) {
  Pieces pieces;
  for (std::string_view rest(reinterpret_cast<const char*>(text.data()), text.size()); !rest.empty();) {
    const std::string_view piece = rest.substr(0, std::min(rest.find_first_of(ends), rest.size() - 1) + 1);
    pieces.push_back(BytesOf(piece));
    rest.remove_prefix(piece.size());
  }
  return pieces;
}

/// Text of `words` that stand between the letters in `ends`.
template <typename Words>
void MutateText(Bytes& text, Dice& dice, std::string_view ends, const Words& words) {
  Pieces pieces = SplitText(text, ends);
  const auto make = [&] { return BytesOf(dice.OneOf(words)); };
  MutatePieces(pieces, dice, make,
               [&](Bytes& piece) { dice.OneIn(3) ? void(piece = make()) : MutateAny(piece); });
  text = Joined(pieces);
}

/// Memory for all that one mutation makes, given back in one go: the sanitizer's allocator would take longer
/// than the code under test does.
class MutationMemory {
 public:
  MutationMemory() : before_(std::pmr::set_default_resource(&memory_)) {}
  ~MutationMemory() { std::pmr::set_default_resource(before_); }
  MutationMemory(const MutationMemory&) = delete;
  MutationMemory& operator=(const MutationMemory&) = delete;
  MutationMemory(MutationMemory&&) = delete;
  MutationMemory& operator=(MutationMemory&&) = delete;

 private:
  static constexpr std::size_t Room = std::size_t{1} << 18U;

  inline static std::array<std::byte, Room> room_;
  std::pmr::monotonic_buffer_resource memory_{room_.data(), room_.size()};
  std::pmr::memory_resource* before_;
};

/// What a target's LLVMFuzzerCustomMutator answers: `mutate` changes the bytes as their format has them.
/// Inputs grow to `longest` bytes at most, so that they stay quick to run.
template <typename Mutate>
std::size_t MutateInput(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed,
                        std::size_t longest, const Mutate& mutate) {
  const std::size_t room = std::min(maxSize, std::max(longest, size));
  Dice dice(seed);
  if (!dice.OneIn(5)) {
    const MutationMemory memory;
    Bytes bytes(data, data + size);
    for (std::size_t left = 1 + dice.Below(3); left > 0; --left) {
      mutate(bytes, dice);
    }
    if (!bytes.empty() && bytes.size() <= room) {
      std::ranges::copy(bytes, data);
      return bytes.size();
    }
  }
  return LLVMFuzzerMutate(data, size, room);
}

}  // namespace quillmark

/// The mutator of a target: `longest` bytes at most, changed by a function of Bytes& and Dice&, or a lambda.
#define QUILLMARK_MUTATOR(longest, ...)                                                                     \
  extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize, \
                                                 unsigned seed) {                                           \
    return quillmark::MutateInput(data, size, maxSize, seed, longest, __VA_ARGS__);                         \
  }
