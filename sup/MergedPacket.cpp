#include "sup/MergedPacket.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "sup/DisplayQueue.h"
#include "sup/PacketWriter.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// A field that has grown past this many bytes takes no further line.
constexpr std::size_t FieldCut = 65216;
/// Where the top field's data starts in the unit.
constexpr std::size_t TopFieldStart = UnitHeaderSize;
/// Bytes of both control sequences with the one byte of padding after them.
constexpr std::size_t ControlLength = DisplaySequenceLength + StopSequenceLength + 1;
constexpr int NtscHeight = 480;

void AppendArea(PacketWriter& writer, int frameHeight) {
  WriteArea(writer, PackRange(0, MergedWidth - 1),
            PackRange(FirstMergedRow, frameHeight == NtscHeight ? 478 : 574));
}

void AppendControl(PacketWriter& writer, const MergedControl& control, std::size_t controlOffset,
                   std::size_t bottomFieldStart, int frameHeight) {
  const std::size_t stopSequence = controlOffset + DisplaySequenceLength;
  WriteSequenceHeader(writer, 0, stopSequence);
  writer.U8(StartDisplay);
  WriteCodes(writer, SetColour, control.ColourBytes);
  WriteCodes(writer, SetContrast, control.ContrastBytes);
  WriteFieldOffsets(writer, TopFieldStart, bottomFieldStart);
  AppendArea(writer, frameHeight);
  writer.U8(EndOfSequence);
  WriteSequenceHeader(writer, control.Delay, stopSequence);  // points to itself: the last one
  writer.U8(StopDisplay);
  writer.U8(EndOfSequence);
  writer.U8(0xFF);  // padding
}

/// The nibbles of a valid unit's control data.
CodeArguments ArgumentsOf(const std::array<int, 4>& nibbles) {
  CodeNibbles codes = {};
  std::ranges::transform(nibbles, codes.begin(),
                         [](int nibble) { return static_cast<std::uint8_t>(nibble); });
  return PackCodes(codes);
}

}  // namespace

std::uint16_t MergedDelay(const SpuControl& primary, std::int64_t start, std::int64_t end, bool isLast) {
  if (primary.Delay != 0) {
    return static_cast<std::uint16_t>(primary.Delay);
  }
  if (isLast) {
    return LastSubtitleDelay;
  }
  if (end <= start) {
    return 0;
  }
  // Unsigned, as the distance of two signed 64-bit times may need all 64 bits.
  const std::uint64_t ticks = static_cast<std::uint64_t>(end) - static_cast<std::uint64_t>(start);
  const std::uint64_t delay =
      ticks / TicksPerDelayUnit + (ticks % TicksPerDelayUnit >= TicksPerDelayUnit / 2 ? 1 : 0);
  return static_cast<std::uint16_t>(
      std::min<std::uint64_t>(delay, std::numeric_limits<std::uint16_t>::max()));
}

MergedControl MakeMergedControl(const SpuControl& primary, const SupStream& stream, std::size_t index) {
  const bool isLast = static_cast<std::int64_t>(index) == std::int64_t{stream.Count} - 1;
  const bool timed = index < stream.EndTime.size();
  return MakeMergedControl(primary, MergedDelay(primary, timed ? stream.StartTime[index] : 0,
                                                timed ? stream.EndTime[index] : 0, isLast));
}

MergedControl MakeMergedControl(const SpuControl& primary, std::uint16_t delay) {
  return {.Delay = delay,
          .ColourBytes = ArgumentsOf(primary.Colour),
          .ContrastBytes = ArgumentsOf(primary.Contrast)};
}

TimeField StoredTime(const SupStream& stream, std::size_t index) {
  TimeField time = {};
  if (!stream.Holds(index)) {
    return time;
  }
  const std::size_t start = static_cast<std::size_t>(stream.PacketOffset[index]) + TimeStart;
  for (std::size_t i = 0; i < time.size() && start + i < stream.RawBytes.size(); ++i) {
    time[i] = stream.RawBytes[start + i];
  }
  return time;
}

void MergedPacketEncoder::EncodeField(const FrameCells& frame, int firstRow, int lastRow,
                                      FieldBuffer& field) {
  field.Clear();
  const auto codeOf = [codes = frame.Codes](std::uint8_t cell) -> std::uint32_t { return codes[cell]; };
  int row = firstRow;
  for (; row <= lastRow && field.Position() <= FieldCut; row += 2) {
    const std::size_t start = field.Position();
    const auto y = static_cast<std::size_t>(row);
    if (frame.RowInUse[y] != 0) {
      EncodeLine(field, frame.Cells.subspan(y * MergedWidth, MergedWidth), codeOf);
    } else {
      EncodeBlankLine(field, codeOf(0));
    }
    facts_.LongestLine = std::max(facts_.LongestLine, field.Position() - start);
  }
  facts_.IsFieldCut = facts_.IsFieldCut || row <= lastRow;
}

std::optional<std::span<const std::uint8_t>> MergedPacketEncoder::Encode(const FrameCells& frame,
                                                                         const MergedControl& control,
                                                                         const TimeField& time) {
  facts_ = {};
  EncodeField(frame, FirstMergedRow, LastMergedRow(frame.Height), top_);
  EncodeField(frame, FirstMergedRow + 1, LastMergedRow(frame.Height) - 1, bottom_);
  const std::size_t dataLength = top_.Bytes().size() + bottom_.Bytes().size() + 2;
  const std::size_t controlOffset = TopFieldStart + dataLength;
  facts_.Size = controlOffset + ControlLength;
  if (facts_.Size > std::numeric_limits<std::uint16_t>::max()) {
    return std::nullopt;
  }
  packet_.clear();
  PacketWriter writer(packet_);
  WritePacketHeader(writer, time, facts_.Size, controlOffset);
  writer.Bytes(top_.Bytes());
  writer.Bytes(bottom_.Bytes());
  writer.U16be(0);
  AppendControl(writer, control, controlOffset, TopFieldStart + top_.Bytes().size(), frame.Height);
  return packet_;
}

}  // namespace quillmark
