#include "samples/SamplePacket.h"

#include <cmath>

#include "sup/PacketWriter.h"
#include "sup/RunEncoder.h"
#include "sup/SpuCommand.h"
#include "sup/SupFormat.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

std::int64_t Ticks(double seconds) {
  return std::llround(seconds * static_cast<double>(TicksPerSecond));
}

FieldBuffer EncodeField(const TextPicture& picture, int firstLine) {
  FieldBuffer field;
  for (int y = firstLine; y < picture.Height; y += 2) {
    EncodeLine(field, picture.Line(y), [](std::uint8_t code) -> std::uint32_t { return code; });
  }
  return field;
}

AreaArguments Range(int first, int length) {
  return PackRange(static_cast<unsigned>(first), static_cast<unsigned>(first + length - 1));
}

}  // namespace

void AppendSamplePacket(const Caption& caption, const TextPicture& picture,
                        std::vector<std::uint8_t>& stream) {
  const FieldBuffer top = EncodeField(picture, 0);
  const FieldBuffer bottom = EncodeField(picture, 1);
  const std::size_t bottomStart = UnitHeaderSize + top.Bytes().size();
  const std::size_t controlOffset = bottomStart + bottom.Bytes().size();
  const std::size_t stopSequence = controlOffset + DisplaySequenceLength;
  const std::size_t unpadded = stopSequence + StopSequenceLength;
  const std::size_t unitSize = unpadded + unpadded % 2;
  const std::int64_t start = Ticks(caption.Start);

  PacketWriter writer(stream);
  WritePacketHeader(writer, PackTime(start), unitSize, controlOffset);
  writer.Bytes(top.Bytes());
  writer.Bytes(bottom.Bytes());

  WriteSequenceHeader(writer, 0, stopSequence);
  writer.U8(StartDisplay);
  WriteCodes(writer, SetColour, PackCodes(caption.Look.Colours));
  WriteCodes(writer, SetContrast, PackCodes(caption.Look.Contrasts));
  WriteArea(writer, Range(picture.X, picture.Width), Range(picture.Y, picture.Height));
  WriteFieldOffsets(writer, UnitHeaderSize, bottomStart);
  writer.U8(EndOfSequence);

  // The last sequence points to itself.
  WriteSequenceHeader(writer, static_cast<std::size_t>((Ticks(caption.End) - start) / TicksPerDelayUnit),
                      stopSequence);
  writer.U8(StopDisplay);
  writer.U8(EndOfSequence);
  if (unitSize > unpadded) {
    writer.U8(0xFF);
  }
}

}  // namespace quillmark
