#include "sup/StreamLoader.h"

#include <algorithm>
#include <bit>
#include <fstream>
#include <new>
#include <optional>
#include <utility>

#include "base/FilePath.h"
#include "base/InputFile.h"
#include "base/Words.h"
#include "sup/SupFormat.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

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

/// File offset of a command's arguments. Kept oddity: where the unit does not have the command, that of the
/// last byte of its header.
std::int32_t ArgumentsOffset(std::int32_t packet, std::int32_t position) {
  return packet + UnitStart + (position >= 0 ? position : UnitHeaderSize - 1);
}

void AppendPacket(SupStream& stream, std::int32_t offset, const PacketHeader& header,
                  const SpuControl& control) {
  stream.PacketOffset.push_back(offset);
  stream.StartTime.push_back(header.Time);
  stream.EndTime.push_back(control.Delay != 0 ? EndOfDisplay(header.Time, control.Delay) : 0);
  stream.SpuSize.push_back(std::bit_cast<std::int16_t>(header.UnitSize));
  stream.ControlOffset.push_back(std::bit_cast<std::int16_t>(header.ControlOffset));
  stream.ColourBytesOffset.push_back(ArgumentsOffset(offset, control.ColourPos));
  stream.ContrastBytesOffset.push_back(ArgumentsOffset(offset, control.ContrastPos));
}

/// Room for what a film's file of this length has, in bytes; the index of a shorter stream does not grow
/// packet by packet.
void MakeRoomForPackets(SupStream& stream, std::int64_t length) {
  constexpr std::int64_t UsualPacket = 2048;
  constexpr std::int64_t Few = 8;
  const auto count = static_cast<std::size_t>(length / UsualPacket + Few);
  stream.PacketOffset.reserve(count);
  stream.StartTime.reserve(count);
  stream.EndTime.reserve(count);
  stream.SpuSize.reserve(count);
  stream.ControlOffset.reserve(count);
  stream.ColourBytesOffset.reserve(count);
  stream.ContrastBytesOffset.reserve(count);
}

/// The whole unit, of which the file has `held`. That is not copied; only a unit that the file cuts short is,
/// into `padded`, with zeros after it.
std::span<const std::uint8_t> WholeUnit(std::span<const std::uint8_t> held, std::int16_t size,
                                        std::vector<std::uint8_t>& padded) {
  const auto length = static_cast<std::size_t>(UnitLength(size));
  if (length <= held.size()) {
    return held.first(length);
  }
  padded.assign(held.begin(), held.end());
  padded.resize(length, 0);
  return padded;
}

/// Indexes a file into an empty stream, up to a packet that lacks its signature.
template <typename Source>
void WalkPackets(Source& file, InvalidFirst invalidFirst, LoadedStream& loaded) {
  SupStream& stream = loaded.Stream;
  const std::int64_t length = file.Length();
  MakeRoomForPackets(stream, length);
  std::vector<std::uint8_t> padded;
  std::int64_t offset = 0;
  std::size_t index = 0;
  for (; offset <= length - PacketHeaderSize; ++index) {
    const auto header = ReadPacketHeader(file.At(offset, PacketHeaderSize));
    if (!header) {
      loaded.LostSignature = true;
      break;
    }
    const auto size = std::bit_cast<std::int16_t>(header->UnitSize);
    const auto held = file.At(offset + UnitStart, static_cast<std::size_t>(UnitLength(size)));
    const auto unit = WholeUnit(held, size, padded);
    const SpuControl control = DecodeControl(unit, std::bit_cast<std::int16_t>(header->ControlOffset));
    stream.Stats.Add(control, size, header->Time, index);
    if (index == 0) {
      loaded.FirstIsInvalid = !control.IsValid();
      if (loaded.FirstIsInvalid && invalidFirst == InvalidFirst::EndsTheWalk) {
        offset = length;
      }
    }
    AppendPacket(stream, static_cast<std::int32_t>(offset), *header, control);
    offset += std::max<std::int64_t>(header->UnitSize + UnitStart, PacketHeaderSize);
  }
  stream.FileLength = static_cast<std::int32_t>(length);
  stream.Count = static_cast<std::int32_t>(index);
  stream.EndsAtInvalidFirst = invalidFirst == InvalidFirst::EndsTheWalk;
  stream.Stats.UpdateMultipleFlags();
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

/// Runs `index`, which gives a Result. A file of nothing but tiny packets can have an index several times its
/// size.
template <typename Index>
auto WithinMemory(const Index& index) -> decltype(index()) {
  try {
    return index();
  } catch (const std::bad_alloc&) {
    return Failure{Words::Tr("there is not enough memory for its index")};
  }
}

/// The bytes become the stream's, with the one zero byte after them that belongs to no file.
LoadedStream IndexOwned(std::vector<std::uint8_t> bytes, InvalidFirst invalidFirst) {
  LoadedStream loaded;
  MemorySource source(bytes);
  WalkPackets(source, invalidFirst, loaded);
  bytes.push_back(0);
  loaded.Stream.RawBytes = std::move(bytes);
  return loaded;
}

Failure TooLarge() {
  return {Words::Tr("it is too large: a stream may have %1 bytes", {std::to_string(MaxStreamLength)})};
}

/// Opens the file and finds its length.
Result<std::uintmax_t> OpenStreamFile(const std::filesystem::path& path, std::ifstream& file) {
  Result<std::uintmax_t> length = OpenInputFile(path, file);
  if (length && *length > MaxStreamLength) {
    return TooLarge();
  }
  return length;
}

}  // namespace

Result<std::vector<std::uint8_t>> ReadStreamFile(const std::filesystem::path& path) {
  std::ifstream file;
  const Result<std::uintmax_t> length = OpenStreamFile(path, file);
  if (!length) {
    return length.Why();
  }
  try {
    // With room for the zero byte after them.
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(*length) + 1);
    file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(*length));
    if (file.bad()) {
      return Failure{Words::Tr("it cannot be read")};
    }
    // A file that shrank since its size was asked for is as long as what was read.
    bytes.resize(static_cast<std::size_t>(file.gcount()));
    return bytes;
  } catch (const std::bad_alloc&) {
    return Failure{Words::Tr("there is not enough memory for it")};
  }
}

Result<LoadedStream> IndexStreamFile(const std::filesystem::path& path, InvalidFirst invalidFirst) {
  std::ifstream opened;
  const Result<std::uintmax_t> length = OpenStreamFile(path, opened);
  if (!length) {
    return length.Why();
  }
  return WithinMemory([&]() -> Result<LoadedStream> {
    LoadedStream loaded;
    BufferedSource file(opened, static_cast<std::int64_t>(*length));
    WalkPackets(file, invalidFirst, loaded);
    if (opened.bad()) {
      return Failure{Words::Tr("it cannot be read")};
    }
    RepairEndTimes(loaded.Stream);
    return loaded;
  });
}

Result<SupStream> IndexStream(std::span<const std::uint8_t> file, InvalidFirst invalidFirst) {
  return WithinMemory([&]() -> Result<SupStream> {
    LoadedStream loaded;
    MemorySource source(file);
    WalkPackets(source, invalidFirst, loaded);
    if (loaded.LostSignature) {
      return Failure{Words::Tr("no \"SP\" stands where a packet should start")};
    }
    RepairEndTimes(loaded.Stream);
    return std::move(loaded.Stream);
  });
}

Result<LoadedStream> IndexPrimaryStream(std::vector<std::uint8_t> file, InvalidFirst invalidFirst) {
  if (file.size() > MaxStreamLength) {
    return TooLarge();
  }
  return WithinMemory([&]() -> Result<LoadedStream> {
    LoadedStream loaded = IndexOwned(std::move(file), invalidFirst);
    RepairEndTimes(loaded.Stream);
    return loaded;
  });
}

Result<LoadedStream> LoadPrimaryStream(const std::filesystem::path& path, InvalidFirst invalidFirst) {
  Result<std::vector<std::uint8_t>> file = ReadStreamFile(path);
  if (!file) {
    return file.Why();
  }
  Result<LoadedStream> loaded = IndexPrimaryStream(std::move(*file), invalidFirst);
  if (loaded) {
    loaded->Stream.Path = Utf8FromPath(path);
  }
  return loaded;
}

Result<LoadedStream> LoadSecondaryStream(const std::filesystem::path& path, const SupStream& primary) {
  Result<std::vector<std::uint8_t>> file = ReadStreamFile(path);
  if (!file) {
    return file.Why();
  }
  Result<LoadedStream> loaded = IndexSecondaryStream(std::move(*file), primary);
  if (loaded) {
    loaded->Stream.Path = Utf8FromPath(path);
  }
  return loaded;
}

Result<LoadedStream> IndexSecondaryStream(std::vector<std::uint8_t> file, const SupStream& primary) {
  if (file.size() > MaxStreamLength) {
    return TooLarge();
  }
  return WithinMemory([&]() -> Result<LoadedStream> {
    LoadedStream loaded = IndexOwned(std::move(file), InvalidFirst::EndsTheWalk);
    ChainEndTimes(primary, loaded.Stream);
    return loaded;
  });
}

}  // namespace quillmark
