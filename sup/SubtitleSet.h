#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

/// Subtitles First to Last, counted from 1, both included.
struct SubtitleRange {
  std::int64_t First = 1;
  std::optional<std::int64_t> Last = {};  ///< none: to the end of the stream

  bool operator==(const SubtitleRange&) const = default;
};

/// Subtitles by their numbers, whatever stream they are of.
class SubtitleSet {
 public:
  /// Of none.
  SubtitleSet() = default;
  [[nodiscard]] static SubtitleSet All();
  [[nodiscard]] static SubtitleSet Of(std::int64_t number);
  /// Ranges with commas between them, in any order: "A-B", "A" for one subtitle, "A-" for all from A on;
  /// nullopt for anything else, 0 and B below A included.
  [[nodiscard]] static std::optional<SubtitleSet> Parse(std::string_view text);

  void Add(const SubtitleRange& range);
  /// One that is greater than all that are there.
  void Append(std::int64_t number) {
    if (!ranges_.empty() && ranges_.back().Last == number - 1) {
      ranges_.back().Last = number;
    } else {
      ranges_.push_back({.First = number, .Last = number});
    }
  }

  [[nodiscard]] bool IsEmpty() const { return ranges_.empty(); }
  [[nodiscard]] bool Contains(std::int64_t number) const;
  /// Ascending; none touches the next.
  [[nodiscard]] const std::vector<SubtitleRange>& Ranges() const { return ranges_; }
  /// How many of them a stream of `count` subtitles has.
  [[nodiscard]] std::int64_t SizeWithin(std::int64_t count) const;
  /// One of them that a stream of `count` subtitles does not have; none where it has all that are named. A
  /// stream without any has all of "1-".
  [[nodiscard]] std::optional<std::int64_t> Outside(std::int64_t count) const;
  /// All that are not among them.
  [[nodiscard]] SubtitleSet Others() const;
  /// In the form that Parse takes.
  [[nodiscard]] std::string Text() const;

  /// Calls `function` with the index, from 0, of each one that a stream of `count` subtitles has.
  template <typename Function>
  void ForEachIndex(std::size_t count, Function&& function) const {
    ForEachRange(count, [&](std::size_t first, std::size_t end) {
      for (std::size_t index = first; index < end; ++index) {
        function(index);
      }
    });
  }
  /// The same with the first index and the one after the last of those that follow one another.
  template <typename Function>
  void ForEachRange(std::size_t count, Function&& function) const {
    for (const SubtitleRange& range : ranges_) {
      const auto first = static_cast<std::size_t>(range.First - 1);
      if (const std::size_t end = EndWithin(range, count); first < end) {
        function(first, end);
      }
    }
  }

  bool operator==(const SubtitleSet&) const = default;

 private:
  static std::size_t EndWithin(const SubtitleRange& range, std::size_t count) {
    return range.Last ? std::min(static_cast<std::size_t>(*range.Last), count) : count;
  }

  std::vector<SubtitleRange> ranges_;
};

}  // namespace quillmark
