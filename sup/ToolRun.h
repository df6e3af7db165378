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
#include "sup/EditBuilder.h"
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
    edit_.Expect(static_cast<std::size_t>(result_.Chosen) * placesEach);
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
    const IndexView units(stream_);
    only_.ForEachRange(Count(), [&](std::size_t first, std::size_t rangeEnd) {
      while (first < rangeEnd) {
        // So many that what was read of them is still near when they are changed.
        const std::size_t end = std::min(first + UnitsAtOnce, rangeEnd);
        std::size_t unknown = walk.FirstUnknown(file_, units, first, end, rangeEnd);
        if (unknown == first) {
          Begin(first);
          if (const PacketFault fault = walk.Learn(PacketOf(stream_, first)); fault != PacketFault::None) {
            LeaveDamaged(fault);
            ++first;
            continue;
          }
          ++unknown;
        }
        for (; first < unknown; ++first) {
          Begin(first);
          change(first, units[first]);
          End();
        }
      }
    });
  }

  /// Leaves the subtitle at hand.
  void Leave(LeftReason why, PacketFault fault = PacketFault::None) {
    result_.Left.push_back({.Number = Number(), .Why = why, .Fault = fault});
  }
  void LeaveDamaged(PacketFault fault) { Leave(LeftReason::Damaged, fault); }

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
    changed_ |= edit_.WriteDifferences(offset, old, fresh);
  }
  /// A number of two bytes, named whole where it becomes another: places of one length are written sooner
  /// than places that lack the bytes which happen to stay.
  void WriteNumber(std::size_t offset, std::uint16_t fresh) {
    if (NumberAt(file_, offset) != fresh) {
      changed_ = true;
      edit_.Write(offset, NumberBytes(fresh));
    }
  }
  void Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted) {
    changed_ = true;
    edit_.Replace(offset, removed, inserted);
  }

  [[nodiscard]] std::span<const std::uint8_t> File() const { return file_; }
  [[nodiscard]] std::size_t Count() const {
    return stream_.RawBytes.empty() ? 0 : stream_.PacketOffset.size();
  }
  [[nodiscard]] std::int64_t Number() const { return static_cast<std::int64_t>(index_) + 1; }

  [[nodiscard]] ToolResult Finish(bool reindexes) {
    FlushChanged();
    result_.Edit = edit_.Finish();
    result_.Edit.Reindexes = reindexes;
    return std::move(result_);
  }

 private:
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

  void FlushChanged() {
    if (changedFirst_ < changedEnd_) {
      result_.Changed.Add({.First = static_cast<std::int64_t>(changedFirst_) + 1,
                           .Last = static_cast<std::int64_t>(changedEnd_)});
    }
    changedFirst_ = changedEnd_;
  }

  static constexpr std::size_t UnitsAtOnce = 32;

  const SupStream& stream_;
  std::span<const std::uint8_t> file_;
  const SubtitleSet& only_;
  ToolResult result_;
  EditBuilder edit_;
  std::size_t index_ = 0;  // of the subtitle at hand
  bool changed_ = false;
  // The last subtitles that were changed one after another, by their indices.
  std::size_t changedFirst_ = 0;
  std::size_t changedEnd_ = 0;
};

}  // namespace quillmark
