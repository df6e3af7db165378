#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace quillmark {

/// When a subtitle is shown, as its packet says.
struct OwnDisplay {
  std::int64_t Start = 0;   ///< 90 kHz ticks
  std::uint16_t Delay = 0;  ///< delay units until it ends; 0: it has no end of its own
};

/// The delay of a last subtitle that has no end of its own.
inline constexpr std::uint16_t LastSubtitleDelay = 1000;

/// One stream's displays, put in order of time and gone through in it.
///
/// A stream shows one subtitle at a time: a start ends what was shown before, and of subtitles that start
/// together the last one in the list is shown. One without an end of its own is shown until the next start,
/// for an hour at most; the last one for LastSubtitleDelay. What would pass the 64 bits of times ends with
/// them.
class DisplayQueue {
 public:
  /// No display starts then.
  static constexpr std::int64_t Never = std::numeric_limits<std::int64_t>::max();

  /// One more of the list, whatever its time. Not after the first Sort().
  void Add(const OwnDisplay& display);
  void Reserve(std::size_t count) { displays_.reserve(count); }
  [[nodiscard]] std::size_t Size() const { return displays_.size(); }

  /// A bounded piece of putting them in order; false once they are, and at their first one.
  bool Sort();

  // Once they are in order:
  [[nodiscard]] bool IsDone() const { return !shown_; }
  /// Of the display that is shown now or next.
  [[nodiscard]] std::int64_t Start() const { return shown_ ? shown_->Start : Never; }
  /// Which one of the list is shown at `time`.
  [[nodiscard]] std::optional<std::size_t> ShownAt(std::int64_t time) const;
  /// When another one is shown, or none.
  [[nodiscard]] std::int64_t ChangeAfter(std::int64_t time) const;
  /// `time` is not after the next change.
  void MoveTo(std::int64_t time);

 private:
  struct ShownTime {
    std::int64_t Start = 0;
    std::int64_t End = 0;  ///< after Start
    std::size_t Index = 0;
  };

  [[nodiscard]] std::size_t IndexAt(std::size_t place) const {
    return order_.empty() ? place : order_[place];
  }
  [[nodiscard]] std::int64_t EndOf(std::size_t place) const;
  void MergeSome();
  void FindShown();

  std::vector<OwnDisplay> displays_;
  bool isSorted_ = true;
  // While they are put in order: runs of this length are, and are merged up to a place.
  std::size_t runLength_ = 1;
  std::size_t merged_ = 0;
  std::size_t left_ = 0;
  std::size_t right_ = 0;
  std::vector<std::uint32_t> order_;  // indexes; empty where it is that of the list
  std::vector<std::uint32_t> next_;

  bool isBegun_ = false;
  std::size_t place_ = 0;           // in the order, of what comes after shown_
  std::optional<ShownTime> shown_;  // none at the end
};

}  // namespace quillmark
