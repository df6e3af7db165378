#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "fuzz/StreamMutation.h"

/// How program streams are changed: by what stands behind each start code, with the lengths that it has.
namespace quillmark {

inline Bytes NewPackHeader(Dice& dice) {
  return {0,           0, 1, 0xBA, 0x44, 0,    static_cast<std::uint8_t>(dice.Byte() | 4U),
          dice.Byte(), 4, 1, 1,    0x89, 0xC3, 0xF8};
}

/// A packet of a substream, with its time in most cases, and a whole unit or bytes that may continue one.
inline Bytes NewPes(Dice& dice) {
  Bytes pes = {0, 0, 1, 0xBD, 0, 0, 0x81};
  if (dice.OneIn(4)) {
    Append(pes, Bytes{0, 0});
  } else {
    Append(pes, Bytes{0x80, 5, 0x21, dice.Byte(), static_cast<std::uint8_t>(dice.Byte() | 1U), dice.Byte(),
                      static_cast<std::uint8_t>(dice.Byte() | 1U)});
  }
  pes.push_back(static_cast<std::uint8_t>(0x20 + dice.Below(2)));
  Bytes unit = NewUnit(dice);
  if (dice.OneIn(3)) {
    unit.resize(dice.Below(unit.size()));
  }
  Append(pes, unit);
  PutNumber(pes, 4, pes.size() - 6, 2);
  return pes;
}

/// What has a length behind its start code.
inline bool HasLength(const Bytes& piece) {
  return piece.size() >= 6 && piece[2] == 1 && piece[3] >= 0xBB;
}

/// Where the first start code of a piece stands behind `from`; the size where there is none.
inline std::size_t NextStartCode(std::span<const std::uint8_t> stream, std::size_t from) {
  for (std::size_t at = from + 2; at + 1 < stream.size(); ++at) {
    // The 1 is the rarest of its bytes.
    if (stream[at] == 1 && stream[at - 1] == 0 && stream[at - 2] == 0 && stream[at + 1] >= 0xB9) {
      return at - 2;
    }
  }
  return stream.size();
}

/// From one start code to the next.
inline Pieces SplitPacks(std::span<const std::uint8_t> stream) {
  Pieces pieces;
  while (!stream.empty()) {
    const auto piece = stream.first(NextStartCode(stream, 1));
    pieces.emplace_back(piece.begin(), piece.end());
    stream = stream.subspan(piece.size());
  }
  return pieces;
}

inline void MutatePacks(Bytes& stream, Dice& dice) {
  Pieces pieces = SplitPacks(stream);
  const auto make = [&] {
    switch (dice.Below(5)) {
      case 0:
        return NewPackHeader(dice);
      case 1:
        return Bytes{0, 0, 1, 0xBE, 0, 2, 0xFF, 0xFF};
      case 2:
        return Bytes{0, 0, 1, 0xB9};
      default:
        return NewPes(dice);
    }
  };
  MutatePieces(pieces, dice, make, [&](Bytes& piece) {
    MutateAny(piece);
    if (HasLength(piece) && !dice.OneIn(8)) {
      PutNumber(piece, 4, piece.size() - 6, 2);
    }
  });
  stream = Joined(pieces);
}

}  // namespace quillmark
