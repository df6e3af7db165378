#include "cli/NearestMatch.h"

#include <algorithm>

namespace quillmark::cli {

std::size_t EditDistance(std::string_view a, std::string_view b) {
  // Rows of the table of distances between the beginnings of both words; three are enough for swaps.
  std::vector<std::size_t> beforeLast(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) {
    row[j] = j;
  }
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::swap(beforeLast, last);
    std::swap(last, row);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        row[j] = std::min(row[j], beforeLast[j - 2] + 1);
      }
    }
  }
  return row[b.size()];
}

std::string NearestMatch(std::string_view word, const std::vector<std::string>& candidates) {
  std::string nearest;
  std::size_t smallest = 0;
  for (const std::string& candidate : candidates) {
    const std::size_t distance = EditDistance(word, candidate);
    const bool nothingInCommon = distance >= std::max(word.size(), candidate.size());
    if (!nothingInCommon && (nearest.empty() || distance < smallest)) {
      nearest = candidate;
      smallest = distance;
    }
  }
  return nearest;
}

}  // namespace quillmark::cli
