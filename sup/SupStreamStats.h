#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "sup/SpuControl.h"

namespace quillmark {

/// What is gathered over all units of a stream while it loads; the start values are those of an empty stream.
struct SupStreamStats {
  std::int32_t MaxSpuSize = -1;  ///< bytes, over all packets
  std::int32_t MaxWidth = -1;    ///< pixels, over valid units, as are all that follow
  std::int32_t MaxHeight = -1;
  std::int32_t MinX = 10000;
  std::int32_t MinY = 10000;
  std::int32_t MaxDurationMs = -1;         ///< over units with a delay
  std::optional<std::int64_t> FirstStart;  ///< 90 kHz ticks, of all packets, valid or not
  std::int64_t LastStart = 0;
  bool HasUntimed = false;         ///< a valid unit's last delay was 0
  bool MultipleColours = false;    ///< some pixel code uses more than one palette entry
  bool MultipleOpacities = false;  ///< some pixel code uses more than one contrast
  std::int32_t ParseErrors = 0;    ///< invalid units

  /// Row: palette entry or contrast 0-15. Columns 0-3: colour of pixel code 0-3; columns 4-7: contrast of
  /// pixel code 0-3. UsedCell where some valid unit uses it, UnusedCell elsewhere.
  static constexpr std::uint8_t UnusedCell = 100;
  static constexpr std::uint8_t UsedCell = 1;
  std::array<std::array<std::uint8_t, 8>, 16> Usage;

  SupStreamStats();

  /// The texts of the first and the last packet's time; empty without a packet.
  [[nodiscard]] std::string FirstTimecode() const;
  [[nodiscard]] std::string LastTimecode() const;

  /// Folds one packet in: its size field and time always, the rest when its unit is valid, else one
  /// parse error. `index` is the zero-based packet number, `startTicks` its time in 90 kHz ticks.
  void Add(const SpuControl& control, std::int32_t spuSize, std::int64_t startTicks, std::size_t index);

  /// Sets MultipleColours and MultipleOpacities from the usage table.
  void UpdateMultipleFlags();
};

}  // namespace quillmark
