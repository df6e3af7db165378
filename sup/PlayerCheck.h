#pragma once

#include "sup/PacketCheck.h"

namespace quillmark {

/// The longest unit and the longest control area that players take, in bytes.
inline constexpr std::size_t MaxPlayerUnit = 53220;
inline constexpr std::size_t MaxPlayerControl = 32000;
/// The longest coded line, in bits: as many as 180 bytes have.
inline constexpr std::int64_t MaxPlayerLineBits = 1440;
/// The first line of the frame that players show everywhere.
inline constexpr int FirstSafeLine = 2;
/// The last one of a frame of 480 or 576 lines.
[[nodiscard]] constexpr int LastSafeLine(int frameLines) {
  return frameLines == 480 ? 479 : 574;
}
/// Between the end of a subtitle and the start of the next one, in 90 kHz ticks: one millisecond.
inline constexpr std::int64_t MinPlayerGap = 90;

/// Looks at one packet for what players refuse or show wrongly, besides what CheckPacket finds for everybody.
/// `checked` is its answer for the packet. Where each rule comes from stands in docs/formats.md.
void CheckPacketForPlayers(const StreamPacket& packet, const CheckedPacket& checked,
                           const CheckOptions& options, const ProblemReporter& report);

/// The same of two packets that follow one another: their times on a player's clock, and their colours.
void CheckTimesForPlayers(const CheckedPacket& earlier, const CheckedPacket& later,
                          const ProblemReporter& report);

}  // namespace quillmark
