#include "samples/SamplePacket.h"

#include <cmath>

#include "sup/PacketWriter.h"
#include "sup/RunEncoder.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

constexpr std::size_t HeaderLength = 4;  // unit size and control offset
constexpr std::size_t StartSequenceLength = 24;
constexpr std::size_t StopSequenceLength = 6;

std::uint64_t Ticks(double seconds) {
  return static_cast<std::uint64_t>(std::llround(seconds * static_cast<double>(TicksPerSecond)));
}

FieldBuffer EncodeField(const TextPicture& picture, int firstLine) {
  FieldBuffer field;
  for (int y = firstLine; y < picture.Height; y += 2) {
    EncodeLine(field, picture.Line(y), [](std::uint8_t code) -> std::uint32_t { return code; });
  }
  return field;
}

/// Code 3 first, high nibble before low nibble.
void AppendNibbles(PacketWriter& writer, const std::array<std::uint8_t, 4>& nibbles) {
  writer.U8(nibbles[3] * 16U + nibbles[2]);
  writer.U8(nibbles[1] * 16U + nibbles[0]);
}

/// First and last pixel of one direction, 12 bits each.
void AppendRange(PacketWriter& writer, int first, int length) {
  const auto from = static_cast<unsigned>(first);
  const auto to = static_cast<unsigned>(first + length - 1);
  writer.U8(from >> 4U);
  writer.U8((from & 0x0FU) << 4U | to >> 8U);
  writer.U8(to & 0xFFU);
}

}  // namespace

void AppendSamplePacket(const Caption& caption, const TextPicture& picture,
                        std::vector<std::uint8_t>& stream) {
  const FieldBuffer top = EncodeField(picture, 0);
  const FieldBuffer bottom = EncodeField(picture, 1);
  const std::size_t bottomStart = HeaderLength + top.Bytes().size();
  const std::size_t controlOffset = bottomStart + bottom.Bytes().size();
  const std::size_t stopSequence = controlOffset + StartSequenceLength;
  const std::size_t unpadded = stopSequence + StopSequenceLength;
  const std::size_t unitSize = unpadded + unpadded % 2;
  const std::uint64_t start = Ticks(caption.Start);

  PacketWriter writer(stream);
  writer.U8('S');
  writer.U8('P');
  for (unsigned shift = 0; shift < 64; shift += 8) {
    writer.U8(static_cast<std::uint8_t>(start >> shift));
  }
  writer.U16be(unitSize);
  writer.U16be(controlOffset);
  writer.Bytes(top.Bytes());
  writer.Bytes(bottom.Bytes());

  writer.U16be(0);  // at once
  writer.U16be(stopSequence);
  writer.U8(0x01);  // start display
  writer.U8(0x03);  // colours
  AppendNibbles(writer, caption.Look.Colours);
  writer.U8(0x04);  // contrasts
  AppendNibbles(writer, caption.Look.Contrasts);
  writer.U8(0x05);  // area
  AppendRange(writer, picture.X, picture.Width);
  AppendRange(writer, picture.Y, picture.Height);
  writer.U8(0x06);  // fields
  writer.U16be(HeaderLength);
  writer.U16be(bottomStart);
  writer.U8(0xFF);

  writer.U16be((Ticks(caption.End) - start) / TicksPerDelayUnit);
  writer.U16be(stopSequence);  // the last one points to itself
  writer.U8(0x02);             // stop display
  writer.U8(0xFF);
  if (unitSize > unpadded) {
    writer.U8(0xFF);
  }
}

}  // namespace quillmark
