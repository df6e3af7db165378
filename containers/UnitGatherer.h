#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "containers/PacketWalk.h"

namespace quillmark {

/// The substreams of private stream 1 that carry DVD subtitles: 0x20 to 0x3F.
inline constexpr std::uint8_t FirstSubtitleSubstream = 0x20;
inline constexpr std::size_t SubtitleSubstreams = 32;

/// A unit that was put together from packets.
struct GatheredUnit {
  std::uint64_t Pack = 0;                 ///< as of its first packet
  std::uint64_t Packet = 0;               ///< where that starts
  std::optional<std::int64_t> TimeStamp;  ///< 90 kHz ticks, 33 bits
  std::int64_t Time = 0;                  ///< what whoever added its first packet said
  std::size_t Start = 0;                  ///< in Substream::Bytes
  std::size_t Size = 0;                   ///< as its size field says
};

/// How many there were, and where the first one stands in the file.
struct Tally {
  std::uint64_t Count = 0;
  std::uint64_t First = 0;

  void Add(std::uint64_t position) {
    if (Count++ == 0) {
      First = position;
    }
  }
};

/// The units of one substream, in the order of the file.
struct GatheredSubstream {
  std::vector<std::uint8_t> Bytes;  ///< the units, each behind room for what a packet of a SUP file adds
  std::vector<GatheredUnit> Units;
  Tally Cut;        ///< units left out, since packets of them are missing
  Tally Resized;    ///< units whose size field was not that of their bytes, and was mended
  Tally Untimed;    ///< units that start behind the end of another in its packet
  Tally Encrypted;  ///< packets left out, since their scrambling bits are set

  [[nodiscard]] std::span<const std::uint8_t> BytesOf(const GatheredUnit& unit) const {
    return std::span(Bytes).subspan(unit.Start, unit.Size);
  }
  /// Makes a packet of a SUP file of it. When that is done for all units, Bytes is such a file's.
  void SetTime(const GatheredUnit& unit, std::int64_t ticks);
  /// What was mended or left out, in words for the user.
  [[nodiscard]] std::vector<std::string> Notes() const;
};

/// Puts units together from the packets of private stream 1.
///
/// A unit starts in a packet with a time stamp and is complete when it has as many bytes as its size field
/// says. A time stamp other than its own before that is that of the next unit, which starts behind the bytes
/// that the first one lacks, if they make it whole, as ffmpeg lays them, or else at once. What was gathered
/// then is a unit whose size field is wrong if all its control sequences are there, and is left out as cut
/// short if not. A size field that ends before the control sequences is wrong as well: such a unit goes on to
/// the next time stamp. What a packet holds behind the end of a unit is padding, or, where it proves to be
/// whole, a unit that has no time stamp; ffmpeg writes such.
class UnitGatherer {
 public:
  UnitGatherer() = default;
  /// `starts`: positions of packs, or packets, in ascending order. A unit can start there without a time
  /// stamp; a time stamp elsewhere starts none where a unit is incomplete. `length`: of all packs, nearly all
  /// of which carry subtitles.
  UnitGatherer(std::vector<std::uint64_t> starts, std::uint64_t length)
      : expected_(static_cast<std::size_t>(std::min(length, MaxExpected))),
        starts_(std::move(starts)),
        hasStarts_(true) {}

  /// Takes the packet into the unit that it belongs to; passed where it carries no subtitle. `time` is that
  /// of a unit that starts in it, or about that where it has no time stamp.
  void Add(const ProgramPacket& packet, std::int64_t time);
  /// Ends units that are incomplete, and gives all of them.
  [[nodiscard]] std::array<GatheredSubstream, SubtitleSubstreams> Finish();

  /// Bytes of all units.
  [[nodiscard]] std::size_t Size() const { return size_; }

 private:
  static constexpr std::uint64_t MaxExpected = std::uint64_t{16} << 20U;

  struct Pending {
    GatheredUnit Unit;
    bool IsOpen = false;
    bool SizeIsWrong = false;
    bool IsUncertain = false;  // it may be no more than padding
  };

  [[nodiscard]] bool IsStart(const ProgramPacket& packet) const;
  void Begin(std::size_t index, const ProgramPacket& packet, std::int64_t time);
  /// Takes as much of the payload as the open unit lacks, and ends it there, if that makes it whole; how many
  /// bytes that were.
  std::size_t EndIn(std::size_t index, std::span<const std::uint8_t> payload);
  /// Takes the payload into the open unit up to its end; how many bytes that were.
  std::size_t Append(std::size_t index, std::span<const std::uint8_t> payload);
  void End(std::size_t index);
  void Drop(std::size_t index);

  std::size_t expected_ = 0;
  std::vector<std::uint64_t> starts_;
  bool hasStarts_ = false;
  std::size_t size_ = 0;
  std::array<Pending, SubtitleSubstreams> pending_;
  std::array<GatheredSubstream, SubtitleSubstreams> substreams_;
};

/// The number of the subtitle substream that the packet belongs to, from 0; nullopt where it belongs to none.
[[nodiscard]] inline std::optional<std::size_t> SubtitleSubstreamOf(const ProgramPacket& packet) {
  if (packet.Stream != PrivateStream1 || packet.Payload.empty() ||
      packet.Payload[0] < FirstSubtitleSubstream ||
      packet.Payload[0] >= FirstSubtitleSubstream + SubtitleSubstreams) {
    return std::nullopt;
  }
  return packet.Payload[0] - FirstSubtitleSubstream;
}

}  // namespace quillmark
