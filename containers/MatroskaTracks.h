#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "base/Result.h"

namespace libmatroska {
class KaxTracks;
}

namespace quillmark {

/// One way in which a track's data is packed.
struct ContentEncoding {
  bool IsOfBlocks = true;
  bool IsOfPrivateData = false;
  bool IsStripping = false;            ///< of the bytes that each starts with; else zlib
  std::vector<std::uint8_t> Stripped;  ///< these bytes
};

/// What the list of tracks says of a track of subtitles.
struct MatroskaTrack {
  std::uint64_t Number = 0;
  std::string CodecId;
  std::string Language;  ///< empty: unknown
  std::string Name;
  std::vector<std::uint8_t> PrivateData;   ///< as it is stored
  std::vector<ContentEncoding> Encodings;  ///< in the order in which they are undone
  std::string Hindrance;                   ///< why its blocks cannot be read: "is encrypted"; empty: they can

  [[nodiscard]] bool IsDvdSubtitles() const { return CodecId == "S_VOBSUB"; }
};

/// The tracks of subtitles, of whatever kind.
[[nodiscard]] std::vector<MatroskaTrack> SubtitleTracksOf(const libmatroska::KaxTracks& tracks);

enum class EncodedPart : std::uint8_t { Blocks, PrivateData };
/// Undoes the encodings of `part` in their order, in place. The reason where that cannot be, or gives more
/// than `mostBytes`.
[[nodiscard]] Result<void> UndoEncodings(const std::vector<ContentEncoding>& encodings, EncodedPart part,
                                         std::size_t mostBytes, std::vector<std::uint8_t>& bytes);

}  // namespace quillmark
