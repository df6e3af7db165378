#include "base/KeyOrder.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quillmark {
namespace {

constexpr std::size_t DigitBits = 8;
constexpr std::size_t DigitValues = std::size_t{1} << DigitBits;
constexpr std::size_t Digits = 64 / DigitBits;

/// Digits of the key from the lowest on, so that negative keys come before the others.
std::size_t DigitOf(std::int64_t key, std::size_t digit) {
  const std::uint64_t ordered = static_cast<std::uint64_t>(key) ^ std::uint64_t{1} << 63U;
  return static_cast<std::size_t>(ordered >> (digit * DigitBits)) % DigitValues;
}

}  // namespace

void SortByKeys(std::vector<SortedRow>& rows) {
  if (std::ranges::is_sorted(rows, {}, &SortedRow::Key)) {
    return;
  }
  std::array<std::array<std::size_t, DigitValues>, Digits> counts{};
  for (const SortedRow& row : rows) {
    for (std::size_t digit = 0; digit < Digits; ++digit) {
      ++counts[digit][DigitOf(row.Key, digit)];
    }
  }
  std::vector<SortedRow> sorted(rows.size());
  for (std::size_t digit = 0; digit < Digits; ++digit) {
    auto& places = counts[digit];
    if (places[DigitOf(rows.front().Key, digit)] == rows.size()) {
      continue;  // the same everywhere
    }
    std::size_t next = 0;
    for (std::size_t& place : places) {
      const std::size_t count = place;
      place = next;
      next += count;
    }
    for (const SortedRow& row : rows) {
      sorted[places[DigitOf(row.Key, digit)]++] = row;
    }
    rows.swap(sorted);
  }
}

}  // namespace quillmark
