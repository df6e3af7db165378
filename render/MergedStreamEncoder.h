#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>

#include "imaging/cBitmap.h"
#include "render/MergedInputReader.h"
#include "render/MergedPicture.h"
#include "sup/MergedPacket.h"
#include "sup/SupStream.h"

namespace quillmark {

/// Makes the merged stream's packets. Both streams must outlive it; memory is reused from one packet to the
/// next, so a stream of any length costs no more than its longest packet, and a split merge its plan.
class MergedStreamEncoder {
 public:
  using Outcome = MergeOutcome;

  /// `plan` is as MergedInputReader has it.
  MergedStreamEncoder(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings,
                      std::shared_ptr<SplitPlan> plan = nullptr)
      : reader_(primary, secondary, settings, std::move(plan)) {}

  // As MergedInputReader has them.
  bool Prepare() { return reader_.Prepare(); }
  [[nodiscard]] std::size_t Count() const { return reader_.Count(); }

  /// Composes and encodes packet `index` (from 0), in pairs that of the primary subtitle of this index.
  [[nodiscard]] Outcome Encode(std::size_t index) { return Encode(index, nullptr); }
  /// The same, and counts what becomes of the pixels. `counts` are set if it was Encoded or TooLarge.
  [[nodiscard]] Outcome EncodeAndCount(std::size_t index, MergedCounts& counts) {
    return Encode(index, &counts);
  }

  /// What the last Encode made, if it was Encoded; valid until the next one.
  [[nodiscard]] std::span<const std::uint8_t> Packet() const { return packet_; }
  /// Of the unit, if it was Encoded or TooLarge.
  [[nodiscard]] const MergedUnitFacts& Facts() const { return encoder_.Facts(); }
  /// What it read.
  [[nodiscard]] const MergedInputReader& Reader() const { return reader_; }
  /// Of the primary subtitle, if it was neither Skipped nor InvalidPrimary; else as MergedInputReader has it.
  [[nodiscard]] const SubtitleDescription& Description() const { return reader_.Description(); }
  void CopyPictureTo(cBitmap& bitmap) const { picture_.CopyTo(bitmap); }

 private:
  [[nodiscard]] Outcome Encode(std::size_t index, MergedCounts* counts);

  MergedInputReader reader_;
  MergedPicture picture_;
  MergedPacketEncoder encoder_;
  std::span<const std::uint8_t> packet_;
};

/// Why a subtitle was not encoded, in words for the user; empty for Encoded and Skipped.
[[nodiscard]] std::string ReasonOf(MergeOutcome outcome);

}  // namespace quillmark
