#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "sup/ControlPlan.h"
#include "sup/IndexedPacket.h"
#include "sup/ToolResult.h"

namespace quillmark {

/// What all tools do alike: they go through the chosen subtitles of a stream, note which bytes of each one's
/// packet become which, and leave damaged ones as they are.
class ToolRun {
 public:
  /// `placesEach`: places that most subtitles' changes have.
  ToolRun(const SupStream& stream, const SubtitleSet& only, std::size_t placesEach = 1)
      : stream_(stream), file_(FileOf(stream)), only_(only) {
    result_.Chosen = only.SizeWithin(static_cast<std::int64_t>(Count()));
    const std::size_t expected = static_cast<std::size_t>(result_.Chosen) * placesEach;
    result_.Edit.Places.resize(expected);
    result_.Edit.Bytes.resize(expected * BytesAPlace + sizeof(Word));
  }

  /// Calls `change(index, packet)` for each chosen subtitle, in the stream's order.
  template <typename Change>
  void ForEach(Change&& change) {
    only_.ForEachIndex(Count(), [&](std::size_t index) {
#if defined(__GNUC__)
      // Not in a function of its own: GCC takes one that does nothing else for one without an effect.
      const std::size_t later = std::min(index + PacketsAhead, Count() - 1);
      const std::size_t control = static_cast<std::size_t>(stream_.PacketOffset[later]) + UnitStart +
                                  std::bit_cast<std::uint16_t>(stream_.ControlOffset[later]);
      __builtin_prefetch(stream_.RawBytes.data() + std::min(control, file_.size()));
      __builtin_prefetch(stream_.RawBytes.data() + std::min(control + UsualControl, file_.size()));
#endif
      index_ = index;
      changed_ = false;
      change(index, PacketOf(stream_, index));
      if (changed_) {
        result_.Changed.Append(Number());
      }
    });
  }

  /// Leaves the subtitle at hand.
  void Leave(LeftReason why, PacketFault fault = PacketFault::None) {
    result_.Left.push_back({.Number = Number(), .Why = why, .Fault = fault});
  }
  void LeaveDamaged(PacketFault fault) {
    Leave(LeftReason::Damaged, fault);
  }

  /// Bytes of the packet at hand become `fresh`; those that are so already are not named. Positions ascend.
  template <std::size_t Size>
  void Write(std::size_t offset, const std::array<std::uint8_t, Size>& fresh) {
    std::array<std::uint8_t, Size> old;
    std::copy_n(file_.data() + offset, Size, old.begin());
    Write(offset, old, fresh);
  }
  /// The same where the old bytes are known without a look at the file.
  template <std::size_t Size>
  void Write(std::size_t offset, const std::array<std::uint8_t, Size>& old,
             const std::array<std::uint8_t, Size>& fresh) {
    static_assert(Size <= sizeof(Word));
    const Word word = WordOf(fresh);
    const Word differences = WordOf(old) ^ word;
    if (differences == 0) {
      return;
    }
    const auto first = static_cast<std::size_t>(std::countr_zero(differences)) / 8;
    const auto end = sizeof(Word) - static_cast<std::size_t>(std::countl_zero(differences)) / 8;
    AddPlace(offset + first, end - first, end - first);
    // A whole word is put there, of which what comes next takes the rest.
    const std::size_t at = MakeRoom(end - first);
    for (std::size_t i = 0; i < sizeof(Word); ++i) {
      result_.Edit.Bytes.data()[at + i] = static_cast<std::uint8_t>(word >> (8 * first) >> (8 * i));
    }
  }
  void Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted) {
    AddPlace(offset, removed, inserted.size());
    const std::size_t at = MakeRoom(inserted.size());
    std::ranges::copy(inserted, result_.Edit.Bytes.begin() + static_cast<std::ptrdiff_t>(at));
  }

  [[nodiscard]] const SupStream& Stream() const {
    return stream_;
  }
  [[nodiscard]] std::size_t Count() const {
    return stream_.RawBytes.empty() ? 0 : stream_.PacketOffset.size();
  }
  [[nodiscard]] std::int64_t Number() const {
    return static_cast<std::int64_t>(index_) + 1;
  }

  [[nodiscard]] ToolResult Finish(bool reindexes) {
    result_.Edit.Reindexes = reindexes;
    result_.Edit.Places.resize(places_);
    result_.Edit.Bytes.resize(bytes_);
    FreeSurplus(result_.Edit.Places);
    FreeSurplus(result_.Edit.Bytes);
    return std::move(result_);
  }

 private:
  using Word = std::uint64_t;
  static constexpr std::size_t BytesAPlace = 3;

  /// The first byte in the lowest bits.
  template <std::size_t Size>
  static Word WordOf(const std::array<std::uint8_t, Size>& bytes) {
    Word word = 0;
    for (std::size_t i = 0; i < Size; ++i) {
      word |= Word{bytes[i]} << (8 * i);
    }
    return word;
  }

  /// A place of the edit; one that starts where the last one ended makes that one longer.
  void AddPlace(std::size_t offset, std::size_t removed, std::size_t inserted) {
    changed_ = true;
    if (end_ == offset) {
      StreamEdit::Place& last = result_.Edit.Places[places_ - 1];
      last.Removed += static_cast<std::uint32_t>(removed);
      last.Inserted += static_cast<std::uint32_t>(inserted);
    } else {
      if (places_ == result_.Edit.Places.size()) {
        result_.Edit.Places.resize(places_ + places_ / 2 + 1);
      }
      result_.Edit.Places[places_++] = {.Offset = static_cast<std::uint32_t>(offset),
                                        .Removed = static_cast<std::uint32_t>(removed),
                                        .Inserted = static_cast<std::uint32_t>(inserted)};
    }
    end_ = offset + removed;
  }
  /// Where the edit's next bytes come; there is room for a word behind them.
  std::size_t MakeRoom(std::size_t count) {
    const std::size_t at = bytes_;
    bytes_ += count;
    if (bytes_ + sizeof(Word) > result_.Edit.Bytes.size()) {
      result_.Edit.Bytes.resize(bytes_ + bytes_ / 2 + sizeof(Word));
    }
    return at;
  }

  /// The packets of a long film lie pages apart, so each costs a wait for the memory unless it is asked for
  /// this many packets ahead.
  static constexpr std::size_t PacketsAhead = 16;
  static constexpr std::size_t UsualControl = 36;  // bytes of all sequences, which may lie in two cache lines

  /// An edit is kept as long as it can be undone.
  template <typename Vector>
  static void FreeSurplus(Vector& vector) {
    if (vector.capacity() - vector.size() > vector.size() / 8) {
      vector.shrink_to_fit();
    }
  }

  const SupStream& stream_;
  std::span<const std::uint8_t> file_;
  const SubtitleSet& only_;
  ToolResult result_;
  // So much of the edit's arrays is in use; they are longer while it is made.
  std::size_t places_ = 0;
  std::size_t bytes_ = 0;
  std::size_t end_ = static_cast<std::size_t>(-1);  // of the last place
  std::size_t index_ = 0;                           // of the subtitle at hand
  bool changed_ = false;
};

}  // namespace quillmark
