#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillmark {

/// What can be put right in a stream without coding a picture again.
enum class MendKind : std::uint8_t {
  DroppedBytes,     ///< bytes that are no packet, or one of which nothing is known
  CorrectedSize,    ///< the size of a unit that ends where the next packet starts
  AddedEndMark,     ///< to a control sequence
  ClosedSequences,  ///< the last control sequence points to itself
  MadeEven,         ///< a unit of an odd size got a byte more
  PutInOrder,       ///< a packet that stands elsewhere, by its start
  AddedEnd,
  CutEnd,     ///< an end after the next start
  MovedArea,  ///< into the frame
};

/// "dropped_bytes", ...: for scripts, never changed.
[[nodiscard]] std::string_view MendName(MendKind kind);

struct Mend {
  MendKind Kind{};
  std::int64_t Packet = 0;  ///< from 1, in the mended stream; 0 where there is none
  /// What MendText() tells besides: sizes, offsets, ticks, each kind its own.
  std::array<std::int64_t, 2> Numbers = {};

  bool operator==(const Mend&) const = default;
};

/// "its end mark 0xFF was added to a control sequence", ...
[[nodiscard]] std::string MendText(const Mend& mend);

}  // namespace quillmark
