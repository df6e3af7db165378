#include "sup/StreamLoader.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <new>
#include <optional>
#include <system_error>
#include <utility>

#include "base/ByteReader.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

struct PacketHeader {
  std::int64_t Time = 0;
  std::int16_t Size = 0;
  std::int16_t ControlOffset = 0;
};

/// The header of the packet that starts at `offset`, of which at least 14 bytes are left; nullopt when no
/// "SP" stands there.
std::optional<PacketHeader> ReadPacketHeader(std::span<const std::uint8_t> file, std::size_t offset) {
  ByteReader reader(file.subspan(offset));
  const auto signature = reader.U16be();
  const auto time = reader.I64le();
  const auto size = reader.U16be();
  const auto controlOffset = reader.U16be();
  if (signature != 0x5350 || !time || !size || !controlOffset) {  // 'S' 'P'
    return std::nullopt;
  }
  return PacketHeader{.Time = *time,
                      .Size = static_cast<std::int16_t>(*size),
                      .ControlOffset = static_cast<std::int16_t>(*controlOffset)};
}

void ClearIndex(SupStream& stream) {
  stream.PacketOffset.clear();
  stream.StartTime.clear();
  stream.EndTime.clear();
  stream.SpuSize.clear();
  stream.ControlOffset.clear();
  stream.ColourBytesOffset.clear();
  stream.ContrastBytesOffset.clear();
  stream.LatestEnd.clear();
}

void AppendPacket(SupStream& stream, std::int32_t offset, const PacketHeader& header,
                  const SpuControl& control) {
  stream.PacketOffset.push_back(offset);
  stream.StartTime.push_back(header.Time);
  stream.EndTime.push_back(control.Delay != 0 ? EndOfDisplay(header.Time, control.Delay) : 0);
  stream.SpuSize.push_back(header.Size);
  stream.ControlOffset.push_back(header.ControlOffset);
  stream.ColourBytesOffset.push_back(control.ColourPos + offset + PacketHeaderSize);
  stream.ContrastBytesOffset.push_back(control.ContrastPos + offset + PacketHeaderSize);
}

/// The unit from its byte 4 on. What the file has of it is not copied; only a unit that the file cuts short
/// is, into `padded`, with zeros behind it.
std::span<const std::uint8_t> UnitAt(std::span<const std::uint8_t> file, std::size_t offset,
                                     std::int16_t size, std::vector<std::uint8_t>& padded) {
  const auto length = static_cast<std::size_t>(UnitBufferSize(size));
  const auto rest = file.subspan(std::min(offset + PacketHeaderSize, file.size()));
  if (length <= rest.size()) {
    return rest.first(length);
  }
  padded.assign(rest.begin(), rest.end());
  padded.resize(length, 0);
  return padded;
}

/// Indexes `file` into a cleared stream; false when a packet lacks its signature.
bool WalkPackets(std::span<const std::uint8_t> file, const FirstSubtitle& first, SupStream& stream) {
  const auto length = static_cast<std::int64_t>(file.size());
  std::vector<std::uint8_t> padded;
  std::int64_t offset = 0;
  std::int32_t index = 0;
  for (; offset <= length - PacketHeaderSize; ++index) {
    const auto start = static_cast<std::size_t>(offset);
    const auto header = ReadPacketHeader(file, start);
    if (!header) {
      return false;
    }
    const auto unit = UnitAt(file, start, header->Size, padded);
    const SpuControl control = DecodeControl(unit, header->ControlOffset);
    stream.Stats.Add(control, header->Size, header->Time, index);
    if (index == 0 &&
        !first({.Bytes = unit, .ControlOffset = header->ControlOffset, .StartTime = header->Time})) {
      offset = length;
    }
    AppendPacket(stream, static_cast<std::int32_t>(offset), *header, control);
    offset += std::max<std::int64_t>(static_cast<std::uint16_t>(header->Size) + UnitStart, PacketHeaderSize);
  }
  return true;
}

void RepairEndTimes(SupStream& stream) {
  for (std::size_t i = 0; i + 1 < stream.EndTime.size(); ++i) {
    if (stream.EndTime[i] == 0) {
      stream.EndTime[i] = stream.StartTime[i + 1];
    }
  }
}

void ChainEndTimes(const SupStream& primary, SupStream& secondary) {
  if (secondary.StartTime.empty()) {
    return;
  }
  for (std::size_t i = 0; i + 1 < secondary.EndTime.size(); ++i) {
    secondary.EndTime[i] = secondary.StartTime[i + 1];
  }
  const std::int64_t lastStart = secondary.StartTime.back();
  const std::int64_t later =
      primary.StartTime.empty() ? lastStart : std::max(primary.StartTime.back(), lastStart);
  // 10000 ticks are ten delay units; this way no stored time can overflow the addition.
  secondary.EndTime.back() = EndOfDisplay(later, 10);
  secondary.LatestEnd.reserve(secondary.EndTime.size());
  std::int64_t latest = secondary.EndTime.front();
  for (const std::int64_t end : secondary.EndTime) {
    latest = std::max(latest, end);
    secondary.LatestEnd.push_back(latest);
  }
}

LoadResult Unreadable(std::string reason) {
  return {.Result = LoadResult::Outcome::Unreadable, .Reason = std::move(reason)};
}

/// `bytes` end in the one zero byte that belongs to no file, here and below.
void TakeOver(std::vector<std::uint8_t> bytes, SupStream& stream) {
  stream.FileLength = static_cast<std::int32_t>(bytes.size()) - 1;
  stream.RawBytes = std::move(bytes);
  stream.Count = static_cast<std::int32_t>(stream.PacketOffset.size());
  stream.IndexMatchesBytes = true;
  stream.Stats.UpdateMultipleFlags();
}

std::span<const std::uint8_t> FilePart(const std::vector<std::uint8_t>& bytes) {
  return std::span(bytes).first(bytes.size() - 1);
}

LoadResult IndexInto(std::vector<std::uint8_t> bytes, const FirstSubtitle& first, SupStream& stream) {
  stream.Stats = SupStreamStats();
  ClearIndex(stream);
  stream.IndexMatchesBytes = false;
  if (!WalkPackets(FilePart(bytes), first, stream)) {
    return {.Result = LoadResult::Outcome::NoSignature, .Reason = {}};
  }
  TakeOver(std::move(bytes), stream);
  return {};
}

}  // namespace

FileBytes ReadStreamFile(const std::filesystem::path& path) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    return {.Bytes = {}, .Reason = "it is a folder"};
  }
  const std::uintmax_t length = std::filesystem::file_size(path, error);
  if (error) {
    return {.Bytes = {}, .Reason = error.message()};
  }
  if (length > MaxStreamLength) {
    return {.Bytes = {}, .Reason = "it is too large: a stream may have 2 GiB"};
  }
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    return {.Bytes = {},
            .Reason = errno != 0 ? std::generic_category().message(errno) : "it cannot be opened"};
  }
  try {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(length) + 1);
    bytes.pop_back();
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(length));
    if (file.bad()) {
      return {.Bytes = {}, .Reason = "it cannot be read"};
    }
    // A file that shrank since its size was asked for is as long as what was read.
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return {.Bytes = std::move(bytes), .Reason = {}};
  } catch (const std::bad_alloc&) {
    return {.Bytes = {}, .Reason = "there is not enough memory for it"};
  }
}

LoadResult IndexPrimaryStream(std::vector<std::uint8_t> file, const FirstSubtitle& first, SupStream& stream) {
  file.push_back(0);
  LoadResult result = IndexInto(std::move(file), first, stream);
  if (result.Result == LoadResult::Outcome::Loaded) {
    RepairEndTimes(stream);
  }
  return result;
}

LoadResult LoadPrimaryStream(const std::filesystem::path& path, const FirstSubtitle& first,
                             SupStream& stream) {
  FileBytes file = ReadStreamFile(path);
  if (!file.Reason.empty()) {
    return Unreadable(std::move(file.Reason));
  }
  return IndexPrimaryStream(std::move(file.Bytes), first, stream);
}

LoadResult LoadSecondaryStream(const std::filesystem::path& path, const SupStream& primary,
                               const std::function<void(bool)>& first, SupStream& secondary) {
  secondary.Count = -1;
  FileBytes file = ReadStreamFile(path);
  if (!file.Reason.empty()) {
    return Unreadable(std::move(file.Reason));
  }
  file.Bytes.push_back(0);
  const FirstSubtitle tellValidity = [&](const SubtitleUnit& unit) {
    const bool valid = DecodeControl(unit.Bytes, unit.ControlOffset).IsValid();
    first(valid);
    return valid;
  };
  LoadResult result = IndexInto(std::move(file.Bytes), tellValidity, secondary);
  if (result.Result == LoadResult::Outcome::Loaded) {
    ChainEndTimes(primary, secondary);
  }
  return result;
}

}  // namespace quillmark
