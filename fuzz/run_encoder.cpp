// Whatever cells are encoded, the decoder gives them back.
//
// Input: two bytes of width (big-endian, 1 to 1024 of it used), then run lengths and cells in turn until the
// input ends; two lines are made of them.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "fuzz/Mutation.h"
#include "render/FieldDecoder.h"
#include "sup/RunEncoder.h"

namespace quillmark {
namespace {

/// Six colours with four codes.
constexpr std::uint8_t ColourCount = 6;

std::uint32_t CodeOf(std::uint32_t cell) {
  return cell & 3U;
}

std::vector<std::uint8_t> CellsOf(std::span<const std::uint8_t> runs, std::size_t count) {
  std::vector<std::uint8_t> cells;
  for (std::size_t i = 0; i + 1 < runs.size() && cells.size() < count; i += 2) {
    // Small numbers stand for themselves, large ones for runs that need several codes.
    const std::size_t run = runs[i] < 192 ? runs[i] : (runs[i] - std::size_t{180}) * 64;
    cells.insert(cells.end(), run, static_cast<std::uint8_t>(runs[i + 1] % ColourCount));
  }
  cells.resize(count, 0);
  return cells;
}

/// Both lines in one unit with an empty header, and the two bytes after them that the decoder expects.
template <typename Cell>
bool RoundTrips(std::span<const Cell> cells, std::size_t width) {
  FieldBuffer top;
  FieldBuffer bottom;
  EncodeLine(top, cells.first(width), CodeOf);
  EncodeLine(bottom, cells.subspan(width), CodeOf);
  std::vector<std::uint8_t> unit(4, 0);
  unit.insert(unit.end(), top.Bytes().begin(), top.Bytes().end());
  unit.insert(unit.end(), bottom.Bytes().begin(), bottom.Bytes().end());
  unit.insert(unit.end(), {0, 0});
  std::vector<std::uint8_t> decoded(cells.size(), 0xFF);
  DecodeFields<std::uint8_t>(unit, decoded, static_cast<int>(width), 2, 4,
                             4 + static_cast<std::int32_t>(top.Bytes().size()), {0, 1, 2, 3});
  return !top.Half() && !bottom.Half() &&
         std::ranges::equal(decoded, cells, {}, {}, [](Cell cell) { return CodeOf(cell); });
}

}  // namespace
}  // namespace quillmark

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quillmark;
  if (size < 2) {
    return 0;
  }
  const std::size_t width = (data[0] * std::size_t{256} + data[1]) % 1024 + 1;
  const std::vector<std::uint8_t> cells = CellsOf({data + 2, size - 2}, 2 * width);
  const std::vector<std::uint32_t> wide(cells.begin(), cells.end());
  if (!RoundTrips(std::span<const std::uint8_t>(cells), width) ||
      !RoundTrips(std::span<const std::uint32_t>(wide), width)) {
    std::abort();
  }
  return 0;
}

// Lines of a few codes in most cases: what is special about a line has mostly to do with the end of a run.
QUILLMARK_MUTATOR(64, [](quillmark::Bytes& input, quillmark::Dice& dice) {
  quillmark::MutateAny(input);
  if (dice.OneIn(2)) {
    quillmark::PutNumber(input, 0, dice.Below(dice.OneIn(8) ? 1024 : 96), 2);
  }
})
