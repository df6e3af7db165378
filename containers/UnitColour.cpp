#include "containers/UnitColour.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <numeric>

namespace quillmark {
namespace {

/// Alpha, and red, green and blue times alpha, 0-255 each.
std::array<int, 4> Components(const UnitColour& colour) {
  const Argb argb = GetARGBColor(colour.Colour, colour.Contrast);
  const ArgbComponents split = SplitArgb(argb);
  const auto weighed = [&](std::int32_t component) { return (component * split.Alpha + 127) / 255; };
  return {split.Alpha, weighed(split.Red), weighed(split.Green), weighed(split.Blue)};
}

std::uint64_t SquaredDistance(const UnitColour& a, const UnitColour& b) {
  const auto left = Components(a);
  const auto right = Components(b);
  std::uint64_t sum = 0;
  for (std::size_t i = 0; i < left.size(); ++i) {
    const auto difference = static_cast<std::uint64_t>(std::abs(left[i] - right[i]));
    sum += difference * difference;
  }
  return sum;
}

/// Pairs are compared among so many colours at most, the most frequent ones.
constexpr std::size_t MaxCandidates = 64;

/// Indexes of the most frequent colours, the most frequent one first.
std::vector<std::size_t> MostFrequent(const std::vector<CountedColour>& colours) {
  std::vector<std::size_t> order(colours.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, std::greater(), [&](std::size_t i) { return colours[i].Count; });
  order.resize(std::min(order.size(), MaxCandidates));
  return order;
}

/// Leaves those of `chosen`, which are sorted by frequency, that stand for the others.
void DropNearest(const std::vector<CountedColour>& colours, std::vector<std::size_t>& chosen,
                 std::size_t most) {
  std::vector<std::uint64_t> counts;
  std::ranges::transform(chosen, std::back_inserter(counts), [&](std::size_t i) { return colours[i].Count; });
  while (chosen.size() > most) {
    std::size_t dropped = 1;
    std::size_t kept = 0;
    std::uint64_t least = ~std::uint64_t{0};
    for (std::size_t i = 1; i < chosen.size(); ++i) {
      for (std::size_t j = 0; j < i; ++j) {
        const std::uint64_t cost = std::min(counts[i], counts[j]) *
                                   SquaredDistance(colours[chosen[i]].Colour, colours[chosen[j]].Colour);
        if (cost < least) {
          least = cost;
          dropped = counts[i] <= counts[j] ? i : j;
          kept = dropped == i ? j : i;
        }
      }
    }
    counts[kept] += counts[dropped];
    chosen.erase(chosen.begin() + static_cast<std::ptrdiff_t>(dropped));
    counts.erase(counts.begin() + static_cast<std::ptrdiff_t>(dropped));
  }
}

}  // namespace

int ColourError(const UnitColour& a, const UnitColour& b) {
  const auto left = Components(a);
  const auto right = Components(b);
  int largest = 0;
  for (std::size_t i = 0; i < left.size(); ++i) {
    largest = std::max(largest, std::abs(left[i] - right[i]));
  }
  return largest;
}

std::vector<std::size_t> TakeTogether(const std::vector<CountedColour>& colours, std::size_t most) {
  std::vector<std::size_t> becomes(colours.size());
  std::iota(becomes.begin(), becomes.end(), std::size_t{0});
  if (colours.size() <= most) {
    return becomes;
  }
  std::vector<std::size_t> chosen = MostFrequent(colours);
  DropNearest(colours, chosen, most);
  for (std::size_t i = 0; i < colours.size(); ++i) {
    becomes[i] = *std::ranges::min_element(chosen, {}, [&](std::size_t candidate) {
      return SquaredDistance(colours[i].Colour, colours[candidate].Colour);
    });
  }
  return becomes;
}

}  // namespace quillmark
