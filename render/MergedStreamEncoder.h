#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "imaging/cBitmap.h"
#include "render/MergedInputReader.h"
#include "render/MergedPicture.h"
#include "sup/MergedPacket.h"
#include "sup/SupStream.h"

namespace quillmark {

/// Makes the merged stream's packets, one for each primary subtitle with the secondary one that overlaps it
/// most laid over it. Both streams must outlive it; memory is reused from one packet to the next, so a stream
/// of any length costs no more than its longest packet.
class MergedStreamEncoder {
 public:
  using Outcome = MergeOutcome;

  MergedStreamEncoder(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings)
      : primary_(primary), reader_(primary, secondary, settings) {}

  /// Composes and encodes primary subtitle `index` (from 0).
  [[nodiscard]] Outcome Encode(std::size_t index) { return Encode(index, nullptr); }
  /// The same, and counts what becomes of the pixels. `counts` are set if it was Encoded or TooLarge.
  [[nodiscard]] Outcome EncodeAndCount(std::size_t index, MergedCounts& counts) {
    return Encode(index, &counts);
  }

  /// What the last Encode made, if it was Encoded; valid until the next one.
  [[nodiscard]] std::span<const std::uint8_t> Packet() const { return packet_; }
  /// Of the unit, if it was Encoded or TooLarge.
  [[nodiscard]] const MergedUnitFacts& Facts() const { return encoder_.Facts(); }
  /// The index of the secondary subtitle, unless it was Skipped.
  [[nodiscard]] std::size_t Secondary() const { return reader_.Secondary(); }
  /// What either unit says, complete or not, unless it was Skipped.
  [[nodiscard]] const SpuControl& PrimaryControl() const { return reader_.PrimaryControl(); }
  [[nodiscard]] const SpuControl& SecondaryControl() const { return reader_.SecondaryControl(); }
  /// Of the primary subtitle, if it was neither Skipped nor InvalidPrimary.
  [[nodiscard]] const SubtitleDescription& Description() const { return reader_.Description(); }
  void CopyPictureTo(cBitmap& bitmap) const { picture_.CopyTo(bitmap); }

 private:
  [[nodiscard]] Outcome Encode(std::size_t index, MergedCounts* counts);

  const SupStream& primary_;
  MergedInputReader reader_;
  MergedPicture picture_;
  MergedPacketEncoder encoder_;
  std::span<const std::uint8_t> packet_;
};

/// Why a subtitle was not encoded, in words for the user; empty for Encoded and Skipped.
[[nodiscard]] const char* ReasonOf(MergeOutcome outcome);

}  // namespace quillmark
