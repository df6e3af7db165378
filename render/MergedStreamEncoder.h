#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "imaging/cBitmap.h"
#include "palette/Colour.h"
#include "render/MergedPicture.h"
#include "render/SubtitleDescription.h"
#include "sup/MergedPacket.h"
#include "sup/SupStream.h"

namespace quillmark {

struct MergeSettings {
  DvdPalette Palette{};
  int YOffset = 0;  ///< lines added to every secondary picture's vertical position
  int FrameHeight = 576;
};

/// Makes the merged stream's packets, one for each primary subtitle with the secondary one that overlaps it
/// most laid over it. Both streams must outlive it; memory is reused from one packet to the next, so a stream
/// of any length costs no more than its longest packet.
class MergedStreamEncoder {
 public:
  enum class Outcome {
    Encoded,
    Skipped,           ///< there is no secondary subtitle for it
    InvalidPrimary,    ///< its control data cannot be shown
    InvalidSecondary,  ///< that of the subtitle to lay over it cannot
    TooLarge,          ///< the unit does not fit its 16-bit size field
  };

  MergedStreamEncoder(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings)
      : primary_(primary), secondary_(secondary), settings_(settings) {}

  /// Composes and encodes primary subtitle `index` (from 0).
  [[nodiscard]] Outcome Encode(std::size_t index);

  /// What the last Encode made, if it was Encoded; valid until the next one.
  [[nodiscard]] std::span<const std::uint8_t> Packet() const { return packet_; }
  /// Of the primary subtitle, if it was neither Skipped nor InvalidPrimary.
  [[nodiscard]] const SubtitleDescription& Description() const { return description_; }
  void CopyPictureTo(cBitmap& bitmap) const { picture_.CopyTo(bitmap); }

 private:
  const SupStream& primary_;
  const SupStream& secondary_;
  MergeSettings settings_;
  std::vector<std::uint8_t> primaryUnit_;
  std::vector<std::uint8_t> secondaryUnit_;
  SubtitleDescription description_;
  MergedPicture picture_;
  MergedPacketEncoder encoder_;
  std::span<const std::uint8_t> packet_;
};

/// Why a subtitle was not encoded, in words for the user; empty for Encoded and Skipped.
[[nodiscard]] const char* ReasonOf(MergedStreamEncoder::Outcome outcome);

}  // namespace quillmark
