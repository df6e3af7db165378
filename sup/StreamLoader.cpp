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

/// A file in memory.
class MemorySource {
 public:
  explicit MemorySource(std::span<const std::uint8_t> file) : file_(file) {}

  [[nodiscard]] std::int64_t Length() const { return static_cast<std::int64_t>(file_.size()); }
  /// `count` bytes from `offset` on, or what the file has of them.
  [[nodiscard]] std::span<const std::uint8_t> At(std::int64_t offset, std::size_t count) const {
    const auto rest = file_.subspan(static_cast<std::size_t>(std::min(offset, Length())));
    return rest.first(std::min(count, rest.size()));
  }

 private:
  std::span<const std::uint8_t> file_;
};

/// A file of which no more is held than what the walk looks at. Offsets never go back, and what At() gave is
/// valid until the next call.
class BufferedSource {
 public:
  BufferedSource(std::ifstream& file, std::int64_t length) : file_(file), length_(length) {}

  [[nodiscard]] std::int64_t Length() const { return length_; }
  [[nodiscard]] std::span<const std::uint8_t> At(std::int64_t offset, std::size_t count) {
    if (offset + static_cast<std::int64_t>(count) > start_ + static_cast<std::int64_t>(held_)) {
      Refill(offset);
    }
    const auto held = std::span(std::as_const(buffer_)).first(held_);
    const auto rest = held.subspan(std::min(static_cast<std::size_t>(offset - start_), held_));
    return rest.first(std::min(count, rest.size()));
  }

 private:
  /// Has room for the largest packet many times over, and stays in the processor's cache.
  static constexpr std::size_t BufferSize = 262144;

  /// Moves the buffer on to `offset`, with what it holds from there on.
  void Refill(std::int64_t offset) {
    const std::size_t passed = std::min(static_cast<std::size_t>(offset - start_), held_);
    std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(passed),
              buffer_.begin() + static_cast<std::ptrdiff_t>(held_), buffer_.begin());
    held_ -= passed;
    if (held_ == 0) {
      file_.seekg(offset);
    }
    start_ = offset;
    file_.read(reinterpret_cast<char*>(buffer_.data() + held_),
               static_cast<std::streamsize>(buffer_.size() - held_));
    held_ += static_cast<std::size_t>(file_.gcount());
    if (file_.eof()) {
      file_.clear();
    }
  }

  std::ifstream& file_;
  std::int64_t length_;
  std::vector<std::uint8_t> buffer_ = std::vector<std::uint8_t>(BufferSize);
  std::int64_t start_ = 0;  // file offset of the buffer's first byte
  std::size_t held_ = 0;    // invariant: held_ <= buffer_.size()
};

/// The header at the start of `packet`; nullopt when no "SP" stands there.
std::optional<PacketHeader> ReadPacketHeader(std::span<const std::uint8_t> packet) {
  ByteReader reader(packet);
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

/// The unit from its byte 4 on, of which the file has `held`. That is not copied; only a unit that the file
/// cuts short is, into `padded`, with zeros behind it.
std::span<const std::uint8_t> WholeUnit(std::span<const std::uint8_t> held, std::int16_t size,
                                        std::vector<std::uint8_t>& padded) {
  const auto length = static_cast<std::size_t>(UnitBufferSize(size));
  if (length <= held.size()) {
    return held.first(length);
  }
  padded.assign(held.begin(), held.end());
  padded.resize(length, 0);
  return padded;
}

/// Indexes a file into a cleared stream; false when a packet lacks its signature.
template <typename Source>
bool WalkPackets(Source& file, const FirstSubtitle& first, SupStream& stream) {
  const std::int64_t length = file.Length();
  std::vector<std::uint8_t> padded;
  std::int64_t offset = 0;
  std::int32_t index = 0;
  for (; offset <= length - PacketHeaderSize; ++index) {
    const auto header = ReadPacketHeader(file.At(offset, PacketHeaderSize));
    if (!header) {
      return false;
    }
    const auto held =
        file.At(offset + PacketHeaderSize, static_cast<std::size_t>(UnitBufferSize(header->Size)));
    const auto unit = WholeUnit(held, header->Size, padded);
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

void StartIndexing(SupStream& stream) {
  stream.Stats = SupStreamStats();
  ClearIndex(stream);
  stream.IndexMatchesBytes = false;
}

/// Runs `load`. A file of nothing but tiny packets can have an index several times its size; where that does
/// not fit, the stream is left without one.
template <typename Load>
LoadResult WithinMemory(SupStream& stream, const Load& load) {
  try {
    return load();
  } catch (const std::bad_alloc&) {
    ClearIndex(stream);
    stream.IndexMatchesBytes = false;
    return Unreadable("there is not enough memory for its index");
  }
}

LoadResult IndexInto(std::vector<std::uint8_t> bytes, const FirstSubtitle& first, SupStream& stream) {
  StartIndexing(stream);
  MemorySource file(FilePart(bytes));
  if (!WalkPackets(file, first, stream)) {
    return {.Result = LoadResult::Outcome::NoSignature, .Reason = {}};
  }
  TakeOver(std::move(bytes), stream);
  return {};
}

/// Opens the file and finds its length; why that cannot be done, in words for the user, or nothing.
std::string OpenStreamFile(const std::filesystem::path& path, std::ifstream& file, std::uintmax_t& length) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) {
    return "it is a folder";
  }
  length = std::filesystem::file_size(path, error);
  if (error) {
    return error.message();
  }
  if (length > MaxStreamLength) {
    return "it is too large: a stream may have 2 GiB";
  }
  errno = 0;
  file.open(path, std::ios::binary);
  if (!file) {
    return errno != 0 ? std::generic_category().message(errno) : "it cannot be opened";
  }
  return "";
}

}  // namespace

FileBytes ReadStreamFile(const std::filesystem::path& path) {
  std::ifstream file;
  std::uintmax_t length = 0;
  std::string reason = OpenStreamFile(path, file, length);
  if (!reason.empty()) {
    return {.Bytes = {}, .Reason = std::move(reason)};
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

LoadResult IndexStreamFile(const std::filesystem::path& path, const FirstSubtitle& first, SupStream& stream) {
  std::ifstream opened;
  std::uintmax_t length = 0;
  std::string reason = OpenStreamFile(path, opened, length);
  if (!reason.empty()) {
    return Unreadable(std::move(reason));
  }
  return WithinMemory(stream, [&]() -> LoadResult {
    StartIndexing(stream);
    stream.RawBytes.clear();
    BufferedSource file(opened, static_cast<std::int64_t>(length));
    const bool walked = WalkPackets(file, first, stream);
    if (opened.bad()) {
      return Unreadable("it cannot be read");
    }
    if (!walked) {
      return {.Result = LoadResult::Outcome::NoSignature, .Reason = {}};
    }
    stream.FileLength = static_cast<std::int32_t>(length);
    stream.Count = static_cast<std::int32_t>(stream.PacketOffset.size());
    stream.Stats.UpdateMultipleFlags();
    RepairEndTimes(stream);
    return {};
  });
}

Result<SupStream> IndexStream(std::span<const std::uint8_t> file) {
  try {
    SupStream stream;
    MemorySource source(file);
    const FirstSubtitle isValid = [](const SubtitleUnit& unit) {
      return DecodeControl(unit.Bytes, unit.ControlOffset).IsValid();
    };
    if (!WalkPackets(source, isValid, stream)) {
      return Failure{"no \"SP\" stands where a packet should start"};
    }
    stream.FileLength = static_cast<std::int32_t>(file.size());
    stream.Count = static_cast<std::int32_t>(stream.PacketOffset.size());
    stream.Stats.UpdateMultipleFlags();
    RepairEndTimes(stream);
    return stream;
  } catch (const std::bad_alloc&) {
    return Failure{"there is not enough memory for its index"};
  }
}

LoadResult IndexPrimaryStream(std::vector<std::uint8_t> file, const FirstSubtitle& first, SupStream& stream) {
  return WithinMemory(stream, [&] {
    file.push_back(0);
    LoadResult result = IndexInto(std::move(file), first, stream);
    if (result.Result == LoadResult::Outcome::Loaded) {
      RepairEndTimes(stream);
    }
    return result;
  });
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
  return WithinMemory(secondary, [&] {
    LoadResult result = IndexInto(std::move(file.Bytes), tellValidity, secondary);
    if (result.Result == LoadResult::Outcome::Loaded) {
      ChainEndTimes(primary, secondary);
    }
    return result;
  });
}

}  // namespace quillmark
