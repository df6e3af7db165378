#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "containers/ForwardReader.h"

namespace quillmark {

/// The streams of a program stream's packets, by the last byte of their start code.
enum StreamId : std::uint8_t {
  ProgramEnd = 0xB9,
  PackHeader = 0xBA,
  SystemHeader = 0xBB,
  PrivateStream1 = 0xBD,
  PaddingStream = 0xBE,
  PrivateStream2 = 0xBF,
  FirstAudioStream = 0xC0,
  FirstVideoStream = 0xE0,
  LastVideoStream = 0xEF,
};

/// Bits of a time stamp or a clock reference.
inline constexpr unsigned TimeStampBits = 33;

/// One packet of a program stream.
struct ProgramPacket {
  std::uint8_t Stream = 0;
  std::uint64_t Position = 0;         ///< of its start code
  std::uint64_t Pack = 0;             ///< of the pack header before it; its own where none was found
  std::optional<std::int64_t> Clock;  ///< the pack's clock reference, 90 kHz ticks, 33 bits
  std::optional<std::int64_t> Time;   ///< its time stamp, the same
  bool IsEncrypted = false;           ///< its scrambling bits are set
  /// What its own header is followed by: of a private stream the substream's byte first. Of a cut packet,
  /// what there is. Lives until the next packet is asked for.
  std::span<const std::uint8_t> Payload;
};

/// Goes through the packets of an MPEG-2 program stream or an MPEG-1 system stream, whose packs may have any
/// length. Bytes that no packet
/// is made of (stuffing, a rest of FF or 00, garbage) are passed up to the next start code; a length that
/// leads past a pack header and to no start code is cut there.
class PacketWalk {
 public:
  explicit PacketWalk(ForwardReader& reader) : reader_(reader) {}

  /// False at the end. Headers of packs and of the system are no packets.
  [[nodiscard]] bool Next(ProgramPacket& packet);

  [[nodiscard]] bool FoundPack() const { return foundPack_; }

 private:
  [[nodiscard]] bool FindStartCode();
  void PassPackHeader();

  ForwardReader& reader_;
  std::size_t consumed_ = 0;  // of the packet that was handed out last
  std::optional<std::uint64_t> pack_;
  // Apart: an optional is copied as a whole, which waits until both of its parts, and every byte of the
  // packet before that was copied meanwhile, have been stored.
  std::int64_t clock_ = 0;
  bool hasClock_ = false;
  bool foundPack_ = false;
};

}  // namespace quillmark
