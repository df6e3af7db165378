#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "sup/RunEncoder.h"
#include "sup/SpuCommand.h"
#include "sup/SpuControl.h"
#include "sup/SupFormat.h"
#include "sup/SupStream.h"

namespace quillmark {

/// Width in pixels of every merged unit's picture.
inline constexpr int MergedWidth = 720;
/// The rows of the frame that a merged unit's picture has, in a frame of `frameHeight` rows.
inline constexpr int FirstMergedRow = 2;
[[nodiscard]] constexpr int LastMergedRow(int frameHeight) {
  return frameHeight - 2;
}

/// What a merged unit takes over from the primary unit's control sequences.
struct MergedControl {
  std::uint16_t Delay = 0;         ///< until the display stops, in units of 1000 ticks
  CodeArguments ColourBytes = {};  ///< the arguments of the colour command
  CodeArguments ContrastBytes = {};

  bool operator==(const MergedControl&) const = default;
};

/// The delay of the primary's last control sequence if that is not 0; else LastSubtitleDelay for the last
/// one; else the subtitle's duration from `start` to `end` (90 kHz ticks), rounded to nearest, within
/// 0-65535.
[[nodiscard]] std::uint16_t MergedDelay(const SpuControl& primary, std::int64_t start, std::int64_t end,
                                        bool isLast);

/// `primary` is the valid control data of subtitle `index` of `stream`.
[[nodiscard]] MergedControl MakeMergedControl(const SpuControl& primary, const SupStream& stream,
                                              std::size_t index);

/// The same of a unit that is shown for another time than a primary subtitle.
[[nodiscard]] MergedControl MakeMergedControl(const SpuControl& primary, std::uint16_t delay);

/// The time bytes of subtitle `index` as its packet has them; 0 in place of what the stream does not hold.
[[nodiscard]] TimeField StoredTime(const SupStream& stream, std::size_t index);

/// A composed frame as the encoder reads it: small numbers that stand for colours.
struct FrameCells {
  int Height = 0;                          ///< rows; 480 and 576 are the frames that exist
  std::span<const std::uint8_t> Cells;     ///< MergedWidth x Height, row-major
  std::span<const std::uint8_t> Codes;     ///< pixel code per cell value; every cell value has one
  std::span<const std::uint8_t> RowInUse;  ///< per row: 0 when all its cells are 0 and need no look
};

/// What there is to know of a merged unit besides its bytes.
struct MergedUnitFacts {
  std::size_t Size = 0;         ///< bytes that its size field has to hold
  std::size_t LongestLine = 0;  ///< bytes of the longest line of its fields
  bool IsFieldCut = false;      ///< a field ended before its last row

  bool operator==(const MergedUnitFacts&) const = default;
};

/// Writes merged units; reuses its buffers from one to the next.
class MergedPacketEncoder {
 public:
  /// One whole packet: "SP", the time, and a unit that shows the frame's rows 2 to height - 2 in full width
  /// with a fresh pair of control sequences. Rows 2, 4, ... are the top field, rows 3, 5, ... to height - 3
  /// the bottom field; a field ends early after the row that takes it past 65216 bytes. nullopt when the
  /// unit's size does not fit its 16-bit field. The bytes are valid until the next call.
  [[nodiscard]] std::optional<std::span<const std::uint8_t>> Encode(const FrameCells& frame,
                                                                    const MergedControl& control,
                                                                    const TimeField& time);

  /// Of the unit that the last Encode made, or would have made if it fitted.
  [[nodiscard]] const MergedUnitFacts& Facts() const { return facts_; }

 private:
  void EncodeField(const FrameCells& frame, int firstRow, int lastRow, FieldBuffer& field);

  MergedUnitFacts facts_;
  FieldBuffer top_;
  FieldBuffer bottom_;
  std::vector<std::uint8_t> packet_;
};

}  // namespace quillmark
