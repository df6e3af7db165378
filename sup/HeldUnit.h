#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "sup/SpuControl.h"
#include "sup/SupStream.h"

namespace quillmark {

/// Subtitles whose bytes can be read.
[[nodiscard]] inline std::size_t SubtitleCount(const SupStream& stream) {
  return stream.RawBytes.empty() ? 0 : stream.PacketOffset.size();
}

/// A unit and what its control sequences say.
struct ReadUnit {
  std::span<const std::uint8_t> Bytes;  ///< whole, from its size field on; valid until the next one is read
  std::uint16_t ControlOffset = 0;
  SpuControl Control;

  /// What codes its picture: all that stands before the control sequences, as far as they say where they are.
  [[nodiscard]] std::span<const std::uint8_t> PictureBytes() const {
    const auto data = Bytes.subspan(std::min<std::size_t>(UnitHeaderSize, Bytes.size()));
    return ControlOffset < UnitHeaderSize
               ? data
               : data.first(std::min<std::size_t>(ControlOffset - UnitHeaderSize, data.size()));
  }
};

/// Reads the units of a stream one at a time, without copying those that the file has whole.
class UnitReader {
 public:
  explicit UnitReader(const SupStream& stream) : stream_(stream) {}

  /// Of subtitle `index`, which the stream holds.
  [[nodiscard]] ReadUnit Read(std::size_t index) {
    const auto start = std::int64_t{stream_.PacketOffset[index]} + UnitStart;
    const auto length = static_cast<std::int64_t>(UnitLength(stream_.SpuSize[index]));
    ReadUnit unit;
    if (start + length <= stream_.FileLength) {
      unit.Bytes = std::span(stream_.RawBytes)
                       .subspan(static_cast<std::size_t>(start), static_cast<std::size_t>(length));
    } else {
      CopyUnit(stream_, index, cut_);
      unit.Bytes = cut_;
    }
    unit.ControlOffset = std::bit_cast<std::uint16_t>(stream_.ControlOffset[index]);
    unit.Control = DecodeControl(unit.Bytes, stream_.ControlOffset[index]);
    return unit;
  }

 private:
  const SupStream& stream_;
  std::vector<std::uint8_t> cut_;
};

}  // namespace quillmark
