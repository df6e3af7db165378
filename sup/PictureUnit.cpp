#include "sup/PictureUnit.h"

#include "sup/PacketWriter.h"

namespace quillmark {
namespace {

void EncodeField(const UnitPicture& picture, int firstLine, FieldBuffer& field) {
  field.Clear();
  const auto width = static_cast<std::size_t>(picture.Width);
  for (int line = firstLine; line < picture.Height; line += 2) {
    EncodeLine(field, picture.Codes.subspan(static_cast<std::size_t>(line) * width, width),
               [](std::uint8_t code) -> std::uint32_t { return code; });
  }
}

AreaArguments Range(int first, int size) {
  return PackRange(static_cast<unsigned>(first), static_cast<unsigned>(first + size - 1));
}

}  // namespace

std::optional<std::span<const std::uint8_t>> PictureUnitEncoder::Encode(const UnitPicture& picture,
                                                                        const TimeField& time) {
  EncodeField(picture, 0, top_);
  EncodeField(picture, 1, bottom_);
  const std::size_t bottomStart = UnitHeaderSize + top_.Bytes().size();
  const std::size_t control = bottomStart + bottom_.Bytes().size();
  const std::size_t length =
      control + DisplaySequenceLength + (picture.Delay ? StopSequenceLength : std::size_t{0});
  const std::size_t size = length + length % 2;
  if (size > MaxReadUnit) {
    return std::nullopt;
  }
  const std::size_t last = control + (picture.Delay ? DisplaySequenceLength : std::size_t{0});
  packet_.clear();
  PacketWriter writer(packet_);
  WritePacketHeader(writer, time, size, control);
  writer.Bytes(top_.Bytes());
  writer.Bytes(bottom_.Bytes());
  WriteSequenceHeader(writer, 0, last);
  writer.U8(picture.IsForced ? ForcedStart : StartDisplay);
  colourAt_ = packet_.size() + 1;
  WriteCodes(writer, SetColour, PackCodes(picture.Colour));
  WriteCodes(writer, SetContrast, PackCodes(picture.Contrast));
  WriteArea(writer, Range(picture.X, picture.Width), Range(picture.Y, picture.Height));
  WriteFieldOffsets(writer, UnitHeaderSize, bottomStart);
  writer.U8(EndOfSequence);
  if (picture.Delay) {
    WriteSequenceHeader(writer, *picture.Delay, last);
    writer.U8(StopDisplay);
    writer.U8(EndOfSequence);
  }
  if (size != length) {
    writer.U8(EndOfSequence);
  }
  return packet_;
}

}  // namespace quillmark
