#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace quillmark {

/// What a nibble of a colour or contrast command that the unit does not have reads as.
inline constexpr int NibbleNotSet = 100;

/// The control data of one subpicture unit, as its control sequences left it.
/// Arrays are indexed by pixel code: 0 background, 1 pattern, 2 and 3 emphasis.
struct SpuControl {
  /// Delay field of the last sequence read; one unit counts as 1000 ticks of 90 kHz.
  std::int16_t Delay = 0;
  /// Unit positions of the first argument byte of the colour command (3) and of the contrast command (4); -1
  /// when the unit has none.
  std::int32_t ColourPos = -1;
  std::int32_t ContrastPos = -1;
  /// Palette entry (0-15) and contrast (0-15) per pixel code.
  std::array<int, 4> Colour = {NibbleNotSet, NibbleNotSet, NibbleNotSet, NibbleNotSet};
  std::array<int, 4> Contrast = {NibbleNotSet, NibbleNotSet, NibbleNotSet, NibbleNotSet};
  /// Display area in frame pixels, both ends included; -1 when the unit has no area command (5).
  std::int16_t X1 = -1;
  std::int16_t X2 = -1;
  std::int16_t Y1 = -1;
  std::int16_t Y2 = -1;
  /// Unit offsets of the two fields' run-length data; -1 when the unit has no field command (6).
  std::int32_t TopFieldOffset = -1;
  std::int32_t BottomFieldOffset = -1;
  /// The next-sequence pointer read last.
  std::int16_t NextSequence = 0;

  /// X2 - X1 + 1 and Y2 - Y1 + 1; below 1 when the area is reversed.
  [[nodiscard]] int Width() const { return X2 - X1 + 1; }
  [[nodiscard]] int Height() const { return Y2 - Y1 + 1; }

  /// All four display commands were seen and the last sequence points somewhere.
  [[nodiscard]] bool IsValid() const;

  bool operator==(const SpuControl&) const = default;
};

/// Walks the control sequences of one unit.
/// `unit` is the whole unit, from its size field on; its header and what stands outside it read as 0, and a
/// header alone is an empty unit. `controlOffset` is the unit offset of the first sequence, as the signed
/// 16-bit header field holds it. Kept oddities: sequences are read one after another from where the previous
/// one's 0xFF stood, never by seeking to the pointer, which only tells the last sequence (it points to
/// itself); a command starts nowhere in the unit's last byte; an unknown command is stepped over as one byte,
/// so its arguments are read as commands. Damaged input gives whatever was read until the walk left the unit;
/// ask IsValid().
[[nodiscard]] SpuControl DecodeControl(std::span<const std::uint8_t> unit, std::int16_t controlOffset);

}  // namespace quillmark
