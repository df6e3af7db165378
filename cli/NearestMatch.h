#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillmark::cli {

/// Insertions, deletions, replacements and swaps of neighbours that make one word of the other.
[[nodiscard]] std::size_t EditDistance(std::string_view a, std::string_view b);

/// The candidate with the smallest edit distance to `word`, the first one of several; empty when no candidate
/// has anything in common with it.
[[nodiscard]] std::string NearestMatch(std::string_view word, const std::vector<std::string>& candidates);

}  // namespace quillmark::cli
