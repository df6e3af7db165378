#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "sup/PacketMarks.h"
#include "sup/SupStream.h"

namespace quillmark {

enum class FilterKind : std::uint8_t {
  All,
  WithProblems,
  Invalid,
  Forced,
  Animated,
  WithoutEnd,   ///< no end of its own
  Overlapping,  ///< still shown when the next one starts
  OtherCodes,   ///< other colours or opacities than the first valid subtitle
  Selected,
};

/// Which subtitles of a stream are wanted: those of a kind that fit a text as well. The text is read once:
///   nothing                        all
///   a number, a range, a list      12    100-200    20-    3,7-9,20-
///   a time                         1:02    1:02.5    0:01:02
///   anything else                  words of a problem, in whatever case: CodesWithWords()
/// A time finds what is shown at that moment, taken as exactly as it was typed: 1:02 is a whole second,
/// 1:02.5 a tenth. Spaces around numbers do not count. What is still being typed ("3,", "1:") is read as far
/// as it goes.
class SubtitleFilter {
 public:
  explicit SubtitleFilter(std::string_view text = {}, FilterKind kind = FilterKind::All);

  [[nodiscard]] bool WantsAll() const;
  /// Whether marks are asked for, so that more subtitles may fit when more of them were looked at.
  [[nodiscard]] bool AsksForMarks() const { return kindMarks_ != 0 || wordMarks_.has_value(); }
  /// Whether the text is a time, and what is shown from `start` until `end`, in 90 kHz ticks, fits it.
  [[nodiscard]] bool AsksForTime() const { return time_.has_value(); }
  [[nodiscard]] bool WantsTime(std::int64_t start, std::int64_t end) const {
    return !time_ || (start < time_->End && end > time_->First);
  }
  /// Whether damage between packets, which has no number, time or selection, is wanted too.
  [[nodiscard]] bool WantsDamage(StreamProblemCode code) const;

  /// Fills `found` with the indexes, from 0, of the wanted ones of the stream's `Count` subtitles, ascending;
  /// its memory is reused. `marks` and `selected` are by index; subtitles past their ends have no marks and
  /// are not selected. One pass, with a few comparisons a subtitle.
  void Find(const SupStream& stream, std::span<const PacketMarks> marks, const std::vector<bool>& selected,
            std::vector<std::uint32_t>& found) const;

 private:
  /// Indexes, or times, from First to before End.
  struct Range {
    std::int64_t First = 0;
    std::int64_t End = 0;
  };

  [[nodiscard]] bool ReadNumbers(std::string_view text);
  [[nodiscard]] bool ReadTime(std::string_view text);
  [[nodiscard]] bool FitsMarks(PacketMarks marks) const;

  FilterKind kind_;
  std::uint64_t kindMarks_ = 0;              // one of them is asked for, if there are any
  std::optional<std::uint64_t> wordMarks_;   // the same of the words
  std::optional<Range> time_;                // 90 kHz ticks
  std::optional<std::vector<Range>> lines_;  // indexes; ascending, and none touches the next
};

}  // namespace quillmark
