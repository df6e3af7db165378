#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/Result.h"
#include "sup/EditPlaces.h"
#include "sup/SupStream.h"

namespace quillmark {

/// A change of a stream's bytes as a value: at each place some bytes become others. No byte that it does not
/// name is touched. Memory: the bytes that are put in, and 5 or 12 bytes a place.
struct StreamEdit {
  using Place = EditPlace;
  EditPlaces Places;                ///< ascending; none reaches into the next
  std::vector<std::uint8_t> Bytes;  ///< what is put in, place after place
  /// The index is made anew after the edit. Needed where times, sizes or commands change; edits that change
  /// the stream's length do so in any case. What colours and opacities are leaves the index as it is.
  bool Reindexes = false;

  [[nodiscard]] bool IsEmpty() const { return Places.empty(); }
  /// Names one more place, after all that were named before; one that starts where the last one ended makes
  /// that one longer. A number that no stream can have gives an edit that fits none.
  void Replace(std::size_t offset, std::size_t removed, std::span<const std::uint8_t> inserted);

  bool operator==(const StreamEdit&) const = default;
};

/// Changes `bytes` and leaves in `edit` its own inverse: applied once more, it gives the old bytes again. An
/// edit that does not fit (places out of order, past the end, or not matching its Bytes) changes nothing,
/// and neither does one that memory does not suffice for.
/// Places that take out as much as they put in are swapped where they stand. Otherwise the bytes between the
/// places move once each, within the buffer; besides that buffer's growth no more memory is used than the
/// edit and its inverse have.
Result<void> ApplyEdit(std::vector<std::uint8_t>& bytes, StreamEdit& edit);

/// The same for a loaded stream. An edit that keeps every place's length and does not ask for a new index
/// touches RawBytes alone. After any other one the stream has the index, statistics and length that its new
/// bytes have when they are loaded; where the new bytes have none, because a packet lacks its signature or
/// memory does not suffice, stream and edit are left as they were.
Result<void> ApplyEdit(SupStream& stream, StreamEdit& edit);

}  // namespace quillmark
