#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>

#include "sup/DisplayQueue.h"

namespace quillmark {

/// The longest gap that can be closed, in 90 kHz ticks: an hour.
inline constexpr std::int64_t MaxJoin = 324'000'000;

/// What is shown from Start until End, in 90 kHz ticks: indexes into two lists of displays, one or both.
struct DisplayInterval {
  std::int64_t Start = 0;
  std::int64_t End = 0;     ///< after Start
  std::uint16_t Delay = 0;  ///< of a unit that starts then and shows it: 1 to 32767, the longest that is read
  std::optional<std::size_t> First = {};
  std::optional<std::size_t> Second = {};

  [[nodiscard]] std::uint64_t Ticks() const {
    return static_cast<std::uint64_t>(End) - static_cast<std::uint64_t>(Start);
  }
  bool operator==(const DisplayInterval&) const = default;
};

/// Makes the fewest intervals, in the order of their times, that show what two streams show, each as
/// DisplayQueue says. Two intervals are the same where they show the same subtitles: what these look like is
/// not asked.
///
/// Gaps of less than `join` ticks, 0 to MaxJoin, are closed: what stands before them is shown longer. No
/// interval is shorter than a delay unit: what would be is given to the interval before it or, where nothing
/// is shown right before, to the one after it.
///
/// Starts are exact. Where an interval follows at once the delay is rounded up, as a gap would be seen and an
/// end after the next start is not; at other ends it is rounded to nearest, halves up. What is longer than a
/// unit's delay can say is several intervals.
class DisplayIntervals {
 public:
  explicit DisplayIntervals(std::int64_t join);

  /// The displays of either stream are added before the first Step().
  DisplayQueue First;
  DisplayQueue Second;

  /// A bounded piece of the work; false once everything is made.
  bool Step();
  [[nodiscard]] bool HasBegun() const { return hasBegun_; }
  /// Those that are made.
  [[nodiscard]] const std::deque<DisplayInterval>& Made() const { return made_; }

 private:
  void MakeNext();
  void Take(const DisplayInterval& interval);
  void Keep(const DisplayInterval& interval);
  void Finish();
  void Append(const DisplayInterval& interval, bool isFollowed);

  std::uint64_t join_;
  bool hasBegun_ = false;  // the first Step() was taken
  bool isTimed_ = false;   // time_ is set
  bool isFinished_ = false;
  std::int64_t time_ = 0;
  std::optional<DisplayInterval> open_;  // the gap after it is not known yet
  std::optional<DisplayInterval> kept_;  // what is too short may still be given to it
  std::deque<DisplayInterval> made_;
};

}  // namespace quillmark
