#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillmark::cli {

/// Subtitles First to Last, counted from 1, both included.
struct SubtitleRange {
  std::int64_t First = 1;
  std::optional<std::int64_t> Last;  ///< none: to the end of the stream

  bool operator==(const SubtitleRange&) const = default;
};

/// "A-B", "A" for one subtitle, "A-" for all from A on; nullopt for anything else, 0 and B below A included.
[[nodiscard]] std::optional<SubtitleRange> ParseSubtitleRange(std::string_view text);

/// Whether a stream of `count` subtitles has all of them; one without any has all of "1-".
[[nodiscard]] bool IsWithin(const SubtitleRange& range, std::int64_t count);

}  // namespace quillmark::cli
