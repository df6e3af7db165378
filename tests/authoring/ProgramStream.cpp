#include "tests/authoring/ProgramStream.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "base/ByteReader.h"
#include "tests/support/Abandon.h"

namespace quillmark::test {
namespace {

constexpr std::uint32_t StartCodePrefix = 0x000001;
constexpr std::uint8_t ProgramEnd = 0xB9;
constexpr std::uint8_t PackHeader = 0xBA;
constexpr std::uint8_t PrivateStream1 = 0xBD;
constexpr std::uint8_t PaddingStream = 0xBE;
constexpr std::uint8_t FirstSubpictureStream = 0x20;

/// Puts units together from the payloads of a subpicture stream's packets.
class UnitAssembler {
 public:
  void SetPalette(std::vector<YCrCb> palette) { palette_ = std::move(palette); }

  /// `start` is the packet's presentation time, that of the unit that begins in it.
  void Add(std::span<const std::uint8_t> payload, std::optional<std::int64_t> start) {
    if (start) {
      start_ = *start;
    }
    pending_.insert(pending_.end(), payload.begin(), payload.end());
    TakeCompleteUnits();
  }

  [[nodiscard]] std::vector<AuthoredUnit> Finish() {
    if (!pending_.empty()) {
      test::Abandon("the last subpicture unit is cut off");
    }
    return std::move(units_);
  }

 private:
  void TakeCompleteUnits() {
    while (pending_.size() >= 2) {
      const std::size_t size = std::size_t{pending_[0]} << 8U | pending_[1];
      if (size < 4) {
        test::Abandon("a subpicture unit is smaller than its header");
      }
      if (size > pending_.size()) {
        return;
      }
      const auto end = pending_.begin() + static_cast<std::ptrdiff_t>(size);
      units_.push_back({.Start = start_, .Palette = palette_, .Bytes = {pending_.begin(), end}});
      pending_.erase(pending_.begin(), end);
    }
  }

  std::int64_t start_ = 0;
  std::vector<YCrCb> palette_;
  std::vector<std::uint8_t> pending_;
  std::vector<AuthoredUnit> units_;
};

void SkipPackHeader(ByteReader& stream) {
  const auto fields = stream.Take(10).value();  // clock reference, mux rate, stuffing length
  if ((fields[0] & 0xC0U) != 0x40U) {
    test::Abandon("not an MPEG-2 program stream");
  }
  static_cast<void>(stream.Take(fields[9] & 7U).value());
}

/// 33 bits: three, fifteen and fifteen, each group followed by a marker bit.
std::int64_t Timestamp(std::span<const std::uint8_t> field) {
  return static_cast<std::int64_t>(field[0] >> 1U & 7U) << 30U | static_cast<std::int64_t>(field[1]) << 22U |
         static_cast<std::int64_t>(field[2] >> 1U) << 15U | static_cast<std::int64_t>(field[3]) << 7U |
         static_cast<std::int64_t>(field[4] >> 1U);
}

void ReadPrivatePacket(std::span<const std::uint8_t> body, UnitAssembler& units) {
  ByteReader packet(body);
  static_cast<void>(packet.U8().value());  // scrambling, alignment, copyright
  const std::uint8_t flags = packet.U8().value();
  const auto header = packet.Take(packet.U8().value()).value();
  std::optional<std::int64_t> start;
  if ((flags & 0x80U) != 0) {
    start = Timestamp(ByteReader(header).Take(5).value());
  }
  if (packet.U8().value() == FirstSubpictureStream) {
    units.Add(packet.Take(packet.Remaining()).value(), start);
  }
}

/// spumux's note on the unit that follows: its signature, a version, what it is about, the substream, start
/// and end, and the palette as a tag, a count and that many entries of Y, Cr, Cb. Plain padding is left
/// alone.
void ReadPadding(std::span<const std::uint8_t> body, UnitAssembler& units) {
  constexpr std::string_view Signature = "dvdauthor-data";
  constexpr std::size_t BeforePalette = 2 + 1 + 1 + 4 + 4;
  constexpr std::uint8_t PaletteTag = 1;
  ByteReader note(body);
  const auto signature = note.Take(Signature.size());
  if (!signature || !std::equal(Signature.begin(), Signature.end(), signature->begin())) {
    return;
  }
  static_cast<void>(note.Take(BeforePalette).value());
  if (note.U8().value() != PaletteTag) {
    test::Abandon("a note without a palette");
  }
  std::vector<YCrCb> palette(note.U8().value());
  for (YCrCb& entry : palette) {
    const auto bytes = note.Take(3).value();
    entry = bytes[0] | std::uint32_t{bytes[1]} << 8U | std::uint32_t{bytes[2]} << 16U;
  }
  units.SetPalette(std::move(palette));
}

constexpr std::size_t MaxPayload = 2000;  // what a disc's sector has room for

/// `count` bits of a time from bit `low` on, with the marker bit after them.
std::uint64_t MarkedBits(std::int64_t time, unsigned low, unsigned count) {
  return (static_cast<std::uint64_t>(time) >> low & ((std::uint64_t{1} << count) - 1)) << 1U | 1U;
}

void AppendBytes(std::vector<std::uint8_t>& stream, std::uint64_t value, unsigned count) {
  while (count-- > 0) {
    stream.push_back(static_cast<std::uint8_t>(value >> (8 * count)));
  }
}

/// With `time` as the clock reference, whose extension of 9 bits is 0, and the mux rate of a disc.
void AppendPackHeader(std::vector<std::uint8_t>& stream, std::int64_t time) {
  constexpr std::uint64_t MuxRate = 25200;
  stream.insert(stream.end(), {0x00, 0x00, 0x01, PackHeader});
  AppendBytes(stream,
              std::uint64_t{1} << 46U | MarkedBits(time, 30, 3) << 42U | MarkedBits(time, 15, 15) << 26U |
                  MarkedBits(time, 0, 15) << 10U | 1U,
              6);
  AppendBytes(stream, MuxRate << 2U | 3U, 3);
  stream.push_back(0xF8);  // no stuffing
}

/// `start`: the presentation time of the unit that begins in it.
void AppendPrivatePacket(std::vector<std::uint8_t>& stream, std::span<const std::uint8_t> payload,
                         const std::optional<std::int64_t>& start) {
  constexpr unsigned TimestampSize = 5;
  const unsigned header = start ? TimestampSize : 0;
  stream.insert(stream.end(), {0x00, 0x00, 0x01, PrivateStream1});
  AppendBytes(stream, 3 + header + 1 + payload.size(), 2);
  AppendBytes(stream, start ? 0x8180 : 0x8100, 2);
  AppendBytes(stream, header, 1);
  if (start) {
    AppendBytes(stream,
                std::uint64_t{2} << 36U | MarkedBits(*start, 30, 3) << 32U |
                    MarkedBits(*start, 15, 15) << 16U | MarkedBits(*start, 0, 15),
                TimestampSize);
  }
  stream.push_back(FirstSubpictureStream);
  stream.insert(stream.end(), payload.begin(), payload.end());
}

}  // namespace

std::vector<AuthoredUnit> ReadProgramStream(std::span<const std::uint8_t> bytes) {
  UnitAssembler units;
  ByteReader stream(bytes);
  while (stream.Remaining() > 0) {
    if (stream.U24be().value() != StartCodePrefix) {
      test::Abandon("no start code where a packet should start");
    }
    const std::uint8_t id = stream.U8().value();
    if (id == PackHeader) {
      SkipPackHeader(stream);
    } else if (id != ProgramEnd) {
      const auto body = stream.Take(stream.U16be().value()).value();
      if (id == PrivateStream1) {
        ReadPrivatePacket(body, units);
      } else if (id == PaddingStream) {
        ReadPadding(body, units);
      }
    }
  }
  return units.Finish();
}

std::vector<std::uint8_t> MakeProgramStream(std::span<const AuthoredUnit> units) {
  std::vector<std::uint8_t> stream;
  for (const AuthoredUnit& unit : units) {
    std::span<const std::uint8_t> rest = unit.Bytes;
    while (!rest.empty()) {
      const bool isFirst = rest.size() == unit.Bytes.size();
      const auto part = rest.first(std::min(rest.size(), MaxPayload));
      AppendPackHeader(stream, unit.Start);
      AppendPrivatePacket(stream, part, isFirst ? std::optional(unit.Start) : std::nullopt);
      rest = rest.subspan(part.size());
    }
  }
  stream.insert(stream.end(), {0x00, 0x00, 0x01, ProgramEnd});
  return stream;
}

std::vector<std::uint8_t> MakeSup(std::span<const AuthoredUnit> units) {
  std::vector<std::uint8_t> sup;
  for (const AuthoredUnit& unit : units) {
    sup.insert(sup.end(), {'S', 'P'});
    for (unsigned byte = 0; byte < 8; ++byte) {
      sup.push_back(static_cast<std::uint8_t>(unit.Start >> (8U * byte) & 0xFF));
    }
    sup.insert(sup.end(), unit.Bytes.begin(), unit.Bytes.end());
  }
  return sup;
}

}  // namespace quillmark::test
