#include "sup/MergedPacket.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "sup/PacketWriter.h"
#include "sup/SpuCommand.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// A field that has grown past this many bytes takes no further line.
constexpr std::size_t FieldCut = 65216;
/// Where the top field's data starts in the unit: behind the size and the control offset.
constexpr std::size_t TopFieldStart = 4;
/// Bytes from the first control sequence to the second.
constexpr std::size_t FirstSequenceLength = 24;
/// Bytes of both control sequences with the padding behind them.
constexpr std::size_t ControlLength = 31;
/// Delay of a last subtitle that has none of its own.
constexpr std::uint16_t LastSubtitleDelay = 1000;
constexpr int NtscHeight = 480;

void EncodeField(const FrameCells& frame, int firstRow, int lastRow, FieldBuffer& field) {
  field.Clear();
  const auto codeOf = [codes = frame.Codes](std::uint8_t cell) -> std::uint32_t { return codes[cell]; };
  for (int row = firstRow; row <= lastRow && field.Position() <= FieldCut; row += 2) {
    const auto y = static_cast<std::size_t>(row);
    if (frame.RowInUse[y] != 0) {
      EncodeLine(field, frame.Cells.subspan(y * MergedWidth, MergedWidth), codeOf);
    } else {
      EncodeBlankLine(field, codeOf(0));
    }
  }
}

/// Area arguments: x 0 to 719 and y 2 to the frame's last row but one, two 12-bit numbers in three bytes.
void AppendArea(PacketWriter& writer, int frameHeight) {
  constexpr std::array<std::uint8_t, 3> FullWidth = {0x00, 0x02, 0xCF};
  constexpr std::array<std::uint8_t, 3> Rows2To478 = {0x00, 0x21, 0xDE};
  constexpr std::array<std::uint8_t, 3> Rows2To574 = {0x00, 0x22, 0x3E};
  writer.Bytes(FullWidth);
  writer.Bytes(frameHeight == NtscHeight ? Rows2To478 : Rows2To574);
}

void AppendControl(PacketWriter& writer, const MergedControl& control, std::size_t controlOffset,
                   std::size_t bottomFieldStart, int frameHeight) {
  const std::size_t stopSequence = controlOffset + FirstSequenceLength;
  writer.U16be(0);  // delay of the start sequence
  writer.U16be(stopSequence);
  writer.U8(StartDisplay);
  writer.U8(SetColour);
  writer.Bytes(control.ColourBytes);
  writer.U8(SetContrast);
  writer.Bytes(control.ContrastBytes);
  writer.U8(SetFieldOffsets);
  writer.U16be(TopFieldStart);
  writer.U16be(bottomFieldStart);
  writer.U8(SetDisplayArea);
  AppendArea(writer, frameHeight);
  writer.U8(EndOfSequence);
  writer.U16be(control.Delay);
  writer.U16be(stopSequence);  // points to itself: the last one
  writer.U8(StopDisplay);
  writer.U8(EndOfSequence);
  writer.U8(0xFF);  // padding
}

std::uint8_t NibblePair(int high, int low) {
  return static_cast<std::uint8_t>(high << 4 | (low & 0x0F));
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

MergedControl MakeMergedControl(const SpuControl& primary, const SupStream& stream, std::int64_t index) {
  const auto i = static_cast<std::size_t>(index);
  const bool isLast = index == static_cast<std::int64_t>(stream.Count) - 1;
  const bool timed = index >= 0 && i < stream.StartTime.size() && i < stream.EndTime.size();
  const auto& colour = primary.Colour;
  const auto& contrast = primary.Contrast;
  return {
      .Delay = MergedDelay(primary, timed ? stream.StartTime[i] : 0, timed ? stream.EndTime[i] : 0, isLast),
      .ColourBytes = {NibblePair(colour[3], colour[2]), NibblePair(colour[1], colour[0])},
      .ContrastBytes = {NibblePair(contrast[3], contrast[2]), NibblePair(contrast[1], contrast[0])}};
}

TimeField StoredTime(const SupStream& stream, std::int64_t index) {
  TimeField time = {};
  if (!stream.Holds(index)) {
    return time;
  }
  const std::size_t start =
      static_cast<std::size_t>(stream.PacketOffset[static_cast<std::size_t>(index)]) + 2;
  for (std::size_t i = 0; i < time.size() && start + i < stream.RawBytes.size(); ++i) {
    time[i] = stream.RawBytes[start + i];
  }
  return time;
}

std::optional<std::span<const std::uint8_t>> MergedPacketEncoder::Encode(const FrameCells& frame,
                                                                         const MergedControl& control,
                                                                         const TimeField& time) {
  EncodeField(frame, 2, frame.Height - 2, top_);
  EncodeField(frame, 3, frame.Height - 3, bottom_);
  const std::size_t dataLength = top_.Bytes().size() + bottom_.Bytes().size() + 2;
  const std::size_t controlOffset = TopFieldStart + dataLength;
  const std::size_t unitSize = controlOffset + ControlLength;
  if (unitSize > std::numeric_limits<std::uint16_t>::max()) {
    return std::nullopt;
  }
  packet_.clear();
  PacketWriter writer(packet_);
  writer.U8('S');
  writer.U8('P');
  writer.Bytes(time);
  writer.U16be(unitSize);
  writer.U16be(controlOffset);
  writer.Bytes(top_.Bytes());
  writer.Bytes(bottom_.Bytes());
  writer.U16be(0);
  AppendControl(writer, control, controlOffset, TopFieldStart + top_.Bytes().size(), frame.Height);
  return packet_;
}

}  // namespace quillmark
