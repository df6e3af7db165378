#include "containers/PacketWalk.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace quillmark {
namespace {

constexpr std::size_t StartCodeSize = 4;
constexpr std::size_t PacketHead = 6;  // start code and length

bool IsStartCode(std::span<const std::uint8_t> bytes) {
  return bytes.size() >= StartCodeSize && bytes[0] == 0 && bytes[1] == 0 && bytes[2] == 1 &&
         bytes[3] >= ProgramEnd;
}

/// Where the next start code stands, or one that the end may have cut could begin.
std::size_t StartCodeIn(std::span<const std::uint8_t> bytes) {
  std::size_t at = 2;
  while (at < bytes.size()) {
    const auto* one = static_cast<const std::uint8_t*>(std::memchr(bytes.data() + at, 1, bytes.size() - at));
    if (one == nullptr) {
      break;
    }
    at = static_cast<std::size_t>(one - bytes.data());
    if (at + 1 == bytes.size() || IsStartCode(bytes.subspan(at - 2))) {
      return at - 2;
    }
    ++at;
  }
  return bytes.size() - std::min<std::size_t>(bytes.size(), StartCodeSize - 1);
}

/// 33 bits in three groups, each with a marker bit after it, the first after four or two other bits.
std::int64_t TimeStampAt(std::span<const std::uint8_t> field) {
  return std::int64_t{field[0] >> 1U & 7U} << 30U | std::int64_t{field[1]} << 22U |
         std::int64_t{field[2] >> 1U} << 15U | std::int64_t{field[3]} << 7U | std::int64_t{field[4] >> 1U};
}

/// The clock of an MPEG-2 pack header: its groups stand as 3, 15, 15 bits behind the bits 01.
std::int64_t ClockAt(std::span<const std::uint8_t> field) {
  return std::int64_t{field[0] >> 3U & 7U} << 30U | std::int64_t{field[0] & 3U} << 28U |
         std::int64_t{field[1]} << 20U | std::int64_t{field[2] >> 3U} << 15U |
         std::int64_t{field[2] & 3U} << 13U | std::int64_t{field[3]} << 5U | std::int64_t{field[4] >> 3U};
}

/// Streams whose packets start their data right after the length.
bool HasNoHeader(std::uint8_t stream) {
  return stream == PaddingStream || stream == PrivateStream2 || stream == 0xBC || stream >= 0xF0;
}

/// The header of an MPEG-1 packet: stuffing, the size of a decoder's buffer, the time stamps, of which the
/// first two may be missing. Where it is none, there is no payload.
void ReadMpeg1Header(std::span<const std::uint8_t> data, ProgramPacket& packet) {
  constexpr std::size_t MaxStuffing = 16;
  constexpr std::size_t BufferSize = 2;
  constexpr std::size_t TimeStampSize = 5;
  constexpr std::uint8_t NoTimeStamp = 0x0F;
  packet.Payload = {};
  std::size_t at = 0;
  while (at < std::min(data.size(), MaxStuffing) && data[at] == 0xFF) {
    ++at;
  }
  if (at < data.size() && (data[at] & 0xC0U) == 0x40U) {
    at += BufferSize;
  }
  if (at >= data.size()) {
    return;
  }
  if (data[at] == NoTimeStamp) {
    packet.Payload = data.subspan(at + 1);
    return;
  }
  const bool hasOne = (data[at] & 0xF0U) == 0x20U;
  const bool hasDecodingTime = (data[at] & 0xF0U) == 0x30U;
  const std::size_t size = hasDecodingTime ? 2 * TimeStampSize : TimeStampSize;
  if ((hasOne || hasDecodingTime) && data.size() - at >= size) {
    packet.Time = TimeStampAt(data.subspan(at));
    packet.Payload = data.subspan(at + size);
  }
}

void ReadHeader(std::span<const std::uint8_t> data, ProgramPacket& packet) {
  packet.Payload = data;
  if (HasNoHeader(packet.Stream)) {
    return;
  }
  if (data.empty() || (data[0] & 0xC0U) != 0x80U) {
    ReadMpeg1Header(data, packet);
    return;
  }
  if (data.size() < 3) {
    packet.Payload = {};
    return;
  }
  packet.IsEncrypted = (data[0] & 0x30U) != 0;
  const std::size_t header = data[2];
  if ((data[1] & 0x80U) != 0 && header >= 5 && data.size() >= 8) {
    packet.Time = TimeStampAt(data.subspan(3));
  }
  packet.Payload = data.subspan(std::min(3 + header, data.size()));
}

/// Whether a packet ends where `after` starts: before a start code, the file's end, or a pack's rest.
bool EndsBefore(std::span<const std::uint8_t> after) {
  return after.size() < StartCodeSize || IsStartCode(after) || after[0] == 0xFF || after[0] == 0;
}

/// Bytes of the packet at the start of `bytes`, which says that it has `said`: fewer where the file ends in
/// it, and where it runs over the next pack header to where no packet can end.
std::size_t PacketSize(std::span<const std::uint8_t> bytes, std::size_t said) {
  if (said <= bytes.size() && EndsBefore(bytes.subspan(said))) {
    return said;
  }
  const auto packet = bytes.first(std::min(said, bytes.size()));
  for (std::size_t at = PacketHead; at < packet.size();) {
    at += StartCodeIn(packet.subspan(at));
    if (IsStartCode(packet.subspan(at)) && packet[at + 3] == PackHeader) {
      return at;
    }
    ++at;
  }
  return packet.size();
}

}  // namespace

bool PacketWalk::FindStartCode() {
  while (true) {
    const auto bytes = reader_.Peek(StartCodeSize);
    if (bytes.size() < StartCodeSize) {
      return false;
    }
    if (IsStartCode(bytes)) {
      return true;
    }
    pack_.reset();
    reader_.Skip(std::max<std::size_t>(StartCodeIn(bytes), 1));
  }
}

void PacketWalk::PassPackHeader() {
  constexpr std::size_t Mpeg2Size = 14;
  constexpr std::size_t Mpeg1Size = 12;
  const std::uint64_t position = reader_.Position();
  const auto bytes = reader_.Peek(Mpeg2Size + 7);
  std::size_t size = StartCodeSize;
  hasClock_ = true;
  if (bytes.size() >= Mpeg2Size && (bytes[4] & 0xC0U) == 0x40U) {
    clock_ = ClockAt(bytes.subspan(4));
    size = Mpeg2Size + (bytes[13] & 7U);
  } else if (bytes.size() >= Mpeg1Size && (bytes[4] & 0xF0U) == 0x20U) {
    clock_ = TimeStampAt(bytes.subspan(4));
    size = Mpeg1Size;
  } else {
    hasClock_ = false;
  }
  reader_.Skip(size);
  pack_ = position;
  foundPack_ = true;
}

bool PacketWalk::Next(ProgramPacket& packet) {
  reader_.Skip(consumed_);
  consumed_ = 0;
  while (FindStartCode()) {
    const auto head = reader_.Peek(PacketHead);
    const std::uint8_t stream = head[3];
    if (stream == PackHeader) {
      PassPackHeader();
      continue;
    }
    if (stream == ProgramEnd || head.size() < PacketHead) {
      reader_.Skip(StartCodeSize);
      continue;
    }
    const std::size_t said = PacketHead + (std::size_t{head[4]} << 8U | head[5]);
    const std::uint64_t position = reader_.Position();
    const auto bytes = reader_.Peek(said + StartCodeSize);
    const std::size_t size = PacketSize(bytes, said);
    if (stream == SystemHeader) {
      reader_.Skip(size);
      continue;
    }
    packet.Stream = stream;
    packet.Position = position;
    packet.Pack = pack_.value_or(position);
    packet.Clock = hasClock_ ? std::optional(clock_) : std::nullopt;
    packet.Time.reset();
    packet.IsEncrypted = false;
    ReadHeader(bytes.first(size).subspan(PacketHead), packet);
    consumed_ = size;
    return true;
  }
  return false;
}

}  // namespace quillmark
