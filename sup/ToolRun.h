#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

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
    expected_ = static_cast<std::size_t>(result_.Chosen) * placesEach;
    result_.Edit.Places.reserve(expected_);
  }

  /// Calls `change(index, packet)` for each chosen subtitle, in the stream's order.
  template <typename Change>
  void ForEach(Change&& change) {
    only_.ForEachIndex(Count(), [&](std::size_t index) {
      Prefetch(index + PacketsAhead);
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
  void LeaveDamaged(PacketFault fault) { Leave(LeftReason::Damaged, fault); }

  /// Bytes of the packet at hand become `fresh`; those that are so already are not named. Positions ascend.
  void Write(std::size_t offset, std::span<const std::uint8_t> fresh) {
    Write(offset, file_.subspan(offset, fresh.size()), fresh);
  }
  /// The same where the old bytes are known without a look at the file.
  void Write(std::size_t offset, std::span<const std::uint8_t> old, std::span<const std::uint8_t> fresh) {
    std::size_t first = 0;
    std::size_t end = fresh.size();
    while (first < end && old[first] == fresh[first]) {
      ++first;
    }
    while (end > first && old[end - 1] == fresh[end - 1]) {
      --end;
    }
    if (first < end) {
      Replace(offset + first, end - first, fresh.subspan(first, end - first));
    }
  }
  void Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted) {
    if (result_.Edit.Bytes.empty()) {
      result_.Edit.Bytes.reserve(expected_ * inserted.size());
    }
    result_.Edit.Replace(offset, removed, inserted);
    changed_ = true;
  }

  [[nodiscard]] const SupStream& Stream() const { return stream_; }
  [[nodiscard]] std::size_t Count() const {
    return stream_.RawBytes.empty() ? 0 : stream_.PacketOffset.size();
  }
  [[nodiscard]] std::int64_t Number() const { return static_cast<std::int64_t>(index_) + 1; }

  [[nodiscard]] ToolResult Finish(bool reindexes) {
    result_.Edit.Reindexes = reindexes;
    FreeSurplus(result_.Edit.Places);
    FreeSurplus(result_.Edit.Bytes);
    return std::move(result_);
  }

 private:
  /// The packets of a long film lie pages apart, so each costs a wait for the memory unless it is asked for
  /// this many packets ahead.
  static constexpr std::size_t PacketsAhead = 16;

  void Prefetch([[maybe_unused]] std::size_t index) const {
#if defined(__GNUC__)
    if (index < stream_.PacketOffset.size()) {
      const auto control = static_cast<std::size_t>(stream_.PacketOffset[index]) + UnitStart +
                           std::bit_cast<std::uint16_t>(stream_.ControlOffset[index]);
      __builtin_prefetch(stream_.RawBytes.data() + std::min(control, stream_.RawBytes.size()));
    }
#endif
  }

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
  std::size_t expected_ = 0;  // places
  std::size_t index_ = 0;     // of the subtitle at hand
  bool changed_ = false;
};

}  // namespace quillmark
