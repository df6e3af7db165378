// Two bytes each, high byte first: width, height, top and bottom field offset; then a whole unit.
// Whatever they are, pictures of wide and of narrow cells hold the same codes, and both are what decoding
// line by line gives.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "base/ByteReader.h"
#include "fuzz/Mutation.h"
#include "render/FieldDecoder.h"

namespace {

using namespace quillmark;

constexpr std::uint8_t untouched = 9;
/// Cells there are at most, so that pictures are small enough to be many; larger areas find too few.
constexpr std::int64_t MaxCells = 1 << 12;

struct Picture {
  int Width = 0;
  int Height = 0;
  std::int32_t TopOffset = 0;
  std::int32_t BottomOffset = 0;
};

void DecodeLineByLine(std::span<const std::uint8_t> unit, std::span<std::uint8_t> cells,
                      const Picture& picture) {
  std::int32_t top = picture.TopOffset - 1;
  std::int32_t bottom = picture.BottomOffset - 1;
  for (int line = 0; line <= picture.Height - 2; line += 2) {
    DecodeLine<std::uint8_t>(unit, cells, top, line, picture.Width, {0, 1, 2, 3});
    DecodeLine<std::uint8_t>(unit, cells, bottom, line + 1, picture.Width, {0, 1, 2, 3});
    if (top > picture.BottomOffset - 1 || bottom >= std::max(static_cast<std::int32_t>(unit.size()), 4)) {
      return;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteReader reader({data, size});
  const auto width = reader.U16be();
  const auto height = reader.U16be();
  const auto topOffset = reader.U16be();
  const auto bottomOffset = reader.U16be();
  const auto unit = reader.Take(std::min<std::size_t>(reader.Remaining(), 32767));
  if (!width || !height || !topOffset || !bottomOffset || !unit) {
    return 0;
  }
  const Picture picture{.Width = static_cast<std::int16_t>(*width),
                        .Height = static_cast<std::int16_t>(*height),
                        .TopOffset = *topOffset,
                        .BottomOffset = *bottomOffset};
  const std::int64_t area = std::int64_t{std::max(picture.Width, 0)} * std::max(picture.Height, 0);
  const auto cells = static_cast<std::size_t>(std::min(area, MaxCells));

  std::vector<std::uint8_t> codes(cells, untouched);
  DecodeFields<std::uint8_t>(*unit, codes, picture.Width, picture.Height, picture.TopOffset,
                             picture.BottomOffset, {0, 1, 2, 3});
  std::vector<std::uint32_t> wide(cells, untouched);
  DecodeFields<std::uint32_t>(*unit, wide, picture.Width, picture.Height, picture.TopOffset,
                              picture.BottomOffset, {0, 1, 2, 3});
  std::vector<std::uint8_t> lines(cells, untouched);
  if (area <= MaxCells) {
    DecodeLineByLine(*unit, lines, picture);
  }
  if (!std::ranges::equal(codes, wide) || codes != lines) {
    std::abort();
  }
  return 0;
}

QUILLMARK_MUTATOR(300, [](Bytes& input, Dice& dice) {
  constexpr std::size_t Head = 8;
  input.resize(std::max(input.size(), Head + 4));
  const std::size_t number = dice.Below(10);
  if (number >= 4) {  // runs
    Bytes unit(input.begin() + Head, input.end());
    MutateAny(unit);
    input.resize(Head);
    Append(input, unit);
  } else if (number == 3) {  // a rest of a line
    input[Head + dice.Below(input.size() - Head)] = 0;
  } else {
    constexpr std::size_t most[] = {80, 24, 300};
    PutNumber(input, 2 * number + (number == 2 ? 2 * dice.Below(2) : 0), dice.Below(most[number]), 2);
  }
})
