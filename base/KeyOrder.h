#pragma once

#include <cstdint>
#include <vector>

namespace quillmark {

/// What a row of a list is sorted by.
struct SortedRow {
  std::int64_t Key = 0;
  std::uint32_t Row = 0;

  bool operator==(const SortedRow&) const = default;
};

/// Puts the rows in the ascending order of their keys, those of equal keys as they stand. The time is that of
/// a few passes, however they stand: a hundred thousand take a few milliseconds, and a list can be sorted
/// while a window waits for it.
void SortByKeys(std::vector<SortedRow>& rows);

}  // namespace quillmark
