#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/Result.h"
#include "sup/SupStream.h"

namespace quillmark {

/// A change of a stream's bytes as a value: at each place some bytes become others. No byte that it does not
/// name is touched. Memory: the bytes that are put in, and 12 bytes a place.
struct StreamEdit {
  struct Place {
    std::uint32_t Offset = 0;    ///< from byte 0 of the stream that the edit is applied to
    std::uint32_t Removed = 0;   ///< how many bytes are taken out there
    std::uint32_t Inserted = 0;  ///< how many of `Bytes` take their place

    bool operator==(const Place&) const = default;
  };
  std::vector<Place> Places;        ///< ascending; none reaches into the next
  std::vector<std::uint8_t> Bytes;  ///< what is put in, place after place
  /// The index is made anew after the edit. Needed where times, sizes or commands change; edits that change
  /// the stream's length do so in any case. What colours and opacities are leaves the index as it is.
  bool Reindexes = false;

  [[nodiscard]] bool IsEmpty() const { return Places.empty(); }
  /// Names one more place, behind all that were named before.
  void Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted);

  bool operator==(const StreamEdit&) const = default;
};

/// Changes `bytes` and leaves in `edit` its own inverse: applied once more, it gives the old bytes again. An
/// edit that does not fit (places out of order, behind the end, or not matching its Bytes) changes nothing.
Result<void> ApplyEdit(std::vector<std::uint8_t>& bytes, StreamEdit& edit);

/// The same for a loaded stream, with its length and, where the edit asks for it, its index.
Result<void> ApplyEdit(SupStream& stream, StreamEdit& edit);

}  // namespace quillmark
