#include "containers/VobSubPacks.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "containers/Language.h"
#include "containers/PacketWalk.h"
#include "containers/UnitGatherer.h"
#include "sup/PacketWriter.h"

namespace quillmark {
namespace {

constexpr std::size_t PackHeaderSize = 14;
constexpr std::size_t PesHeaderSize = 9;  // start code, length, flags and the length of what follows them
constexpr std::size_t TimeStampSize = 5;
constexpr std::size_t PaddingHeaderSize = 6;

/// `count` bits of a time from bit `low` on, and the marker bit after them.
constexpr std::uint64_t Marked(std::uint64_t time, unsigned low, unsigned count) {
  return (time >> low & ((std::uint64_t{1} << count) - 1)) << 1U | 1U;
}

template <std::size_t Size>
void WriteNumber(PacketWriter& writer, std::uint64_t value) {
  std::array<std::uint8_t, Size> bytes = {};
  for (std::size_t i = 0; i < Size; ++i) {
    bytes[i] = static_cast<std::uint8_t>(value >> (8 * (Size - 1 - i)));
  }
  writer.Bytes(bytes);
}

void WriteStartCode(PacketWriter& writer, StreamId stream) {
  WriteNumber<4>(writer, 0x100U | stream);
}

void WritePackHeader(PacketWriter& writer, std::uint64_t time) {
  constexpr std::uint64_t MuxRate = 25200;  // of a disc, in 50 bytes a second
  WriteStartCode(writer, PackHeader);
  WriteNumber<6>(writer, std::uint64_t{1} << 46U | Marked(time, 30, 3) << 42U | Marked(time, 15, 15) << 26U |
                             Marked(time, 0, 15) << 10U | 1U);
  WriteNumber<3>(writer, MuxRate << 2U | 3U);
  writer.U8(0xF8);  // no stuffing
}

void WriteTimeStamp(PacketWriter& writer, std::uint64_t time) {
  WriteNumber<TimeStampSize>(writer, std::uint64_t{2} << 36U | Marked(time, 30, 3) << 32U |
                                         Marked(time, 15, 15) << 16U | Marked(time, 0, 15));
}

void Fill(std::vector<std::uint8_t>& packs, std::size_t count) {
  packs.insert(packs.end(), count, 0xFF);
}

std::string TwoDigits(std::int64_t number) {
  std::string digits = std::to_string(number);
  return digits.size() < 2 ? "0" + digits : digits;
}

std::string HexText(std::uint64_t number, std::size_t digits) {
  std::string text(digits, '0');
  for (std::size_t i = digits; i-- > 0; number /= 16) {
    text[i] = "0123456789abcdef"[number % 16];
  }
  return text;
}

std::string ColourText(Rgb colour) {
  return HexText(colour & 0xFFU, 2) + HexText(colour >> 8U & 0xFFU, 2) + HexText(colour >> 16U & 0xFFU, 2);
}

/// Players know "--" as no language.
std::string LanguageLetters(const std::string& language) {
  const std::string code = LanguageCode(language);
  return code.empty() ? "--" : code;
}

std::string OneLine(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return static_cast<unsigned char>(c) < 0x20; }, ' ');
  return text;
}

}  // namespace

void AppendVobSubPacks(std::vector<std::uint8_t>& packs, unsigned substream, std::int64_t ticks,
                       std::span<const std::uint8_t> unit) {
  PacketWriter writer(packs);
  const auto time = static_cast<std::uint64_t>(ticks);
  for (bool isFirst = true; !unit.empty(); isFirst = false) {
    const std::size_t timeStamp = isFirst ? TimeStampSize : 0;
    const std::size_t room = VobSubPackSize - PackHeaderSize - PesHeaderSize - timeStamp - 1;
    const auto part = unit.first(std::min(unit.size(), room));
    const std::size_t rest = room - part.size();
    const std::size_t stuffing = rest < PaddingHeaderSize ? rest : 0;
    WritePackHeader(writer, time);
    WriteStartCode(writer, PrivateStream1);
    writer.U16be(PesHeaderSize - 6 + timeStamp + stuffing + 1 + part.size());
    writer.U8(0x81);
    writer.U8(isFirst ? 0x80 : 0);
    writer.U8(static_cast<unsigned>(timeStamp + stuffing));
    if (isFirst) {
      WriteTimeStamp(writer, time);
    }
    Fill(packs, stuffing);
    writer.U8(FirstSubtitleSubstream + substream);
    writer.Bytes(part);
    if (rest >= PaddingHeaderSize) {
      WriteStartCode(writer, PaddingStream);
      writer.U16be(rest - PaddingHeaderSize);
      Fill(packs, rest - PaddingHeaderSize);
    }
    unit = unit.subspan(part.size());
  }
}

std::string VobSubSettings(const VobSubOptions& options) {
  std::string text = "# VobSub index file, v7 (do not modify this line!)\n";
  text += "size: " + std::to_string(options.FrameWidth) + "x" + std::to_string(options.FrameHeight) + "\n";
  text +=
      "org: 0, 0\n"
      "scale: 100%, 100%\n"
      "alpha: 100%\n"
      "smooth: OFF\n"
      "fadein/out: 50, 50\n"
      "align: OFF at LEFT TOP\n"
      "time offset: 0\n"
      "forced subs: OFF\n"
      "palette: ";
  for (std::size_t i = 0; i < options.Palette.size(); ++i) {
    text += (i == 0 ? "" : ", ") + ColourText(options.Palette[i]);
  }
  text +=
      "\n"
      "custom colors: OFF, tridx: 0000, colors: 000000, 000000, 000000, 000000\n"
      "langidx: 0\n";
  return text;
}

std::string VobSubLanguageText(const VobSubTrack& track, unsigned substream) {
  std::string text =
      "\nid: " + LanguageLetters(track.Language) + ", index: " + std::to_string(substream) + "\n";
  if (!track.Name.empty()) {
    text += "alt: " + OneLine(track.Name) + "\n";
  }
  return text;
}

std::string VobSubLine(std::int64_t ticks, std::uint64_t position) {
  constexpr std::size_t PositionDigits = 9;
  const std::int64_t ms = ticks / 90;
  const std::string thousandths = std::to_string(1000 + ms % 1000).substr(1);
  return "timestamp: " + TwoDigits(ms / 3600000) + ":" + TwoDigits(ms / 60000 % 60) + ":" +
         TwoDigits(ms / 1000 % 60) + ":" + thousandths + ", filepos: " + HexText(position, PositionDigits) +
         "\n";
}

}  // namespace quillmark
