#include "app/FramedSubtitle.h"

#include <vector>

#include "render/Composition.h"
#include "sup/ForceDisplay.h"

namespace quillmark {

QRect FramedSubtitle::Area() const {
  if (!Described) {
    return {};
  }
  const SpuControl& control = Described->Control;
  return {control.X1, control.Y1, control.Width(), control.Height()};
}

FramedSubtitle LookAt(const SupStream& stream, std::size_t index, const DvdPalette& palette) {
  std::vector<std::uint8_t> buffer;
  const SubtitleUnit unit = UnitOf(stream, index, buffer);
  FramedSubtitle subtitle{.Number = static_cast<std::int64_t>(index) + 1,
                          .Start = stream.StartTime[index],
                          .End = stream.EndTime[index],
                          .IsForced = IsForced(stream, index),
                          .Described = DescribeSubtitle(unit),
                          .Picture = {}};
  if (subtitle.Described) {
    cBitmap picture;
    const SpuControl& control = subtitle.Described->Control;
    DecodePicture(unit.Bytes, control, MakeCodeColours(palette, control), picture);
    subtitle.Picture = picture.Image();
  }
  return subtitle;
}

}  // namespace quillmark
