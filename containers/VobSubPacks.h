#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "containers/VobSubWriter.h"

namespace quillmark {

/// Bytes of a pack of a .sub.
inline constexpr std::size_t VobSubPackSize = 2048;

/// Appends the packs of one unit: each starts with a pack header whose clock is the unit's time, the first
/// packet has the time stamp, and the last pack is filled up, by stuffing bytes in the packet's header where
/// fewer than 6 are missing, else by a padding packet. Bit for bit as mkvextract writes them.
/// `substream` counts from 0; `ticks` fit 33 bits; the unit has at least one byte.
void AppendVobSubPacks(std::vector<std::uint8_t>& packs, unsigned substream, std::int64_t ticks,
                       std::span<const std::uint8_t> unit);

/// The settings that an index starts with.
[[nodiscard]] std::string VobSubSettings(const VobSubOptions& options);
/// What opens a language; `substream` counts from 0.
[[nodiscard]] std::string VobSubLanguageText(const VobSubTrack& track, unsigned substream);
/// "timestamp: 00:00:01:000, filepos: 00000a800" and the line's end. Milliseconds are cut off.
[[nodiscard]] std::string VobSubLine(std::int64_t ticks, std::uint64_t position);

}  // namespace quillmark
