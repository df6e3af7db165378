#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include <QImage>
#include <QRect>

#include "palette/Colour.h"
#include "render/SubtitleDescription.h"
#include "sup/SupStream.h"

namespace quillmark {

/// A subtitle with its picture, to be held against another one or against itself before a change.
struct FramedSubtitle {
  std::int64_t Number = 0;  ///< from 1
  std::int64_t Start = 0;   ///< 90 kHz ticks
  std::int64_t End = 0;     ///< 90 kHz ticks; 0 when no end is known
  bool IsForced = false;
  std::optional<SubtitleDescription> Described;  ///< none where it cannot be shown
  QImage Picture;                                ///< of its area; null where there is nothing to show

  /// Where the picture stands in the frame; empty where it cannot be shown.
  [[nodiscard]] QRect Area() const;
};

/// Subtitle `index`, from 0, which the stream holds, drawn in the colours of the palette.
[[nodiscard]] FramedSubtitle LookAt(const SupStream& stream, std::size_t index, const DvdPalette& palette);

}  // namespace quillmark
