#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "containers/FrameSize.h"
#include "palette/Colour.h"

namespace quillmark {

/// A line of the index that names a subtitle.
struct VobSubEntry {
  std::int64_t Time = 0;       ///< milliseconds, as the line has it; the delay is not in it
  std::int64_t Delay = 0;      ///< milliseconds to add: all delay lines since its language began
  std::uint64_t Position = 0;  ///< of its first pack, in bytes of the .sub
  std::optional<std::uint64_t> DecimalPosition;  ///< the same digits as a decimal number, where they are one
  std::size_t Line = 0;                          ///< in the index, from 1
};

/// What follows an `id` line.
struct VobSubLanguage {
  std::string Language;    ///< as the line has it; empty where it is unknown
  std::string Name;        ///< of its `alt` line
  unsigned Substream = 0;  ///< 0-31
  std::vector<VobSubEntry> Entries;
};

/// Colours that stand in for those of the units where they are on.
struct CustomColours {
  bool IsOn = false;
  std::array<bool, 4> IsTransparent = {};  ///< by pixel code
  std::array<Rgb, 4> Colours = {};
};

/// The text of an .idx file.
struct VobSubIndex {
  int Width = 0;  ///< of the frame; 0 where it is not said
  int Height = 0;
  std::int64_t TimeOffset = 0;  ///< milliseconds; no reader applies it
  bool ShowsForcedAlone = false;
  std::optional<DvdPalette> Palette;
  CustomColours Custom;
  std::size_t Preselected = 0;  ///< the `langidx` line
  std::vector<VobSubLanguage> Languages;

  [[nodiscard]] std::optional<FrameSize> Frame() const {
    return Width > 0 && Height > 0 ? std::optional(FrameSize{.Width = Width, .Height = Height})
                                   : std::nullopt;
  }
  std::vector<std::string> Notes;  ///< lines that could not be read and matter, in words for the user
};

/// Whether the text starts as an index does, with or without a byte order mark.
[[nodiscard]] bool IsVobSubIndex(std::string_view text);

/// Reads the text of an index of whatever version and line endings (LF, CR LF, CR). Keys count in any case,
/// unknown lines and those in a form that is not theirs are passed; entries before the first `id` line belong
/// to a language that is unknown.
[[nodiscard]] VobSubIndex ParseVobSubIndex(std::string_view text);

}  // namespace quillmark
