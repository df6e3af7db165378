#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
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
    result_.Edit.Places.reserve(expected);
    result_.Edit.Bytes.reserve(expected * BytesAPlace);
  }

  /// Calls `change(index, packet)` for each chosen subtitle, in the stream's order.
  template <typename Change>
  void ForEach(Change&& change) {
    only_.ForEachIndex(Count(), [&](std::size_t index) {
      Begin(index);
      change(index, PacketOf(stream_, index));
      End();
    });
  }

  /// Calls `change(index, unit)` for each chosen subtitle for which `walk` then has the plan, in the stream's
  /// order; the others are damaged, and left.
  template <typename Plan, typename Change>
  void ForEachPlanned(PlannedWalk<Plan>& walk, Change&& change) {
    const IndexView entries(stream_);
    const auto file = file_;
    const std::size_t last = Count() - 1;
    only_.ForEachIndex(Count(), [&](std::size_t index) {
#if defined(__GNUC__)
      // Not in a function of its own: GCC takes one that does nothing else for one without an effect.
      const IndexEntry later = entries[std::min(index + PacketsAhead, last)];
      const std::size_t control = later.FileOffset(later.ControlOffset);
      __builtin_prefetch(file.data() + std::min(control, file.size()));
      __builtin_prefetch(file.data() + std::min(control + UsualControl, file.size()));
#endif
      Begin(index);
      const IndexEntry unit = entries[index];
      if (!walk.Knows(file, unit)) {
        if (const PacketFault fault = walk.Learn(PacketOf(stream_, index)); fault != PacketFault::None) {
          LeaveDamaged(fault);
          return;
        }
      }
      change(index, unit);
      End();
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
    const Word word = WordOf(fresh);
    const Word differences = WordOf(old) ^ word;
    if (differences == 0) {
      return;
    }
    const auto first = static_cast<std::size_t>(std::countr_zero(differences)) / 8;
    const auto end = sizeof(Word) - static_cast<std::size_t>(std::countl_zero(differences)) / 8;
    AddPlace(offset + first, end - first, end - first);
    if (bytes_ + sizeof(Word) > newBytes_.size()) {
      FlushBytes();
    }
    // A whole word is put there, of which what comes next takes the rest.
    const auto put = BytesOf(word >> (8 * first));
    std::memcpy(newBytes_.data() + bytes_, put.data(), put.size());
    bytes_ += end - first;
  }
  void Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted) {
    AddPlace(offset, removed, inserted.size());
    FlushBytes();
    result_.Edit.Bytes.insert(result_.Edit.Bytes.end(), inserted.begin(), inserted.end());
  }

  [[nodiscard]] std::span<const std::uint8_t> File() const {
    return file_;
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
    FlushPlaces(0);
    FlushBytes();
    FlushChanged();
    FreeSurplus(result_.Edit);
    return std::move(result_);
  }

 private:
  using Word = std::uint64_t;
  static constexpr std::size_t BytesAPlace = 4;

  void Begin(std::size_t index) {
    index_ = index;
    changed_ = false;
  }
  void End() {
    if (!changed_) {
      return;
    }
    if (index_ != changedEnd_) {
      FlushChanged();
      changedFirst_ = index_;
    }
    changedEnd_ = index_ + 1;
  }

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

  /// A place of the edit; one that starts where the last one ended makes that one longer.
  void AddPlace(std::size_t offset, std::size_t removed, std::size_t inserted) {
    changed_ = true;
    if (end_ == offset) {
      StreamEdit::Place& last = newPlaces_[places_ - 1];
      last.Removed += static_cast<std::uint32_t>(removed);
      last.Inserted += static_cast<std::uint32_t>(inserted);
    } else {
      if (places_ == newPlaces_.size()) {
        FlushPlaces(1);
      }
      newPlaces_[places_++] = {.Offset = static_cast<std::uint32_t>(offset),
                               .Removed = static_cast<std::uint32_t>(removed),
                               .Inserted = static_cast<std::uint32_t>(inserted)};
    }
    end_ = offset + removed;
  }
  /// All but the last `kept`, which may still become longer.
  void FlushPlaces(std::size_t kept) {
    const auto begin = newPlaces_.begin();
    const auto end = begin + static_cast<std::ptrdiff_t>(places_ - std::min(kept, places_));
    result_.Edit.Places.insert(result_.Edit.Places.end(), begin, end);
    places_ =
        static_cast<std::size_t>(std::copy(end, begin + static_cast<std::ptrdiff_t>(places_), begin) - begin);
  }
  void FlushBytes() {
    result_.Edit.Bytes.insert(result_.Edit.Bytes.end(), newBytes_.begin(),
                              newBytes_.begin() + static_cast<std::ptrdiff_t>(bytes_));
    bytes_ = 0;
  }
  void FlushChanged() {
    if (changedFirst_ < changedEnd_) {
      result_.Changed.Add({.First = static_cast<std::int64_t>(changedFirst_) + 1,
                           .Last = static_cast<std::int64_t>(changedEnd_)});
    }
    changedFirst_ = changedEnd_;
  }

  /// The packets of a long film lie pages apart, so each costs a wait for the memory unless it is asked for
  /// this many packets ahead.
  static constexpr std::size_t PacketsAhead = 16;
  static constexpr std::size_t UsualControl = 36;  // bytes of all sequences, which may lie in two cache lines

  /// An edit is kept as long as it can be undone.
  static void FreeSurplus(StreamEdit& edit) {
    constexpr std::size_t PlaceSize = sizeof(StreamEdit::Place);
    if (edit.Places.capacity() * PlaceSize + edit.Bytes.capacity() >
        edit.Places.size() * (PlaceSize + BytesAPlace) + 3 * edit.Bytes.size()) {
      edit.Places.shrink_to_fit();
      edit.Bytes.shrink_to_fit();
    }
  }

  const SupStream& stream_;
  std::span<const std::uint8_t> file_;
  const SubtitleSet& only_;
  ToolResult result_;
  // What comes next in the edit, in memory that stays near until there is much of it.
  std::array<StreamEdit::Place, 512> newPlaces_ = {};
  std::array<std::uint8_t, 2048> newBytes_ = {};
  std::size_t places_ = 0;
  std::size_t bytes_ = 0;
  std::size_t end_ = static_cast<std::size_t>(-1);  // of the last place
  std::size_t index_ = 0;                           // of the subtitle at hand
  bool changed_ = false;
  // The last subtitles that were changed one after another, by their indices.
  std::size_t changedFirst_ = 0;
  std::size_t changedEnd_ = 0;
};

}  // namespace quillmark
