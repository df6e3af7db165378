#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "sup/SubtitlePairs.h"
#include "sup/SupStream.h"

namespace quillmark {

/// What the subtitles of a pair differ in.
enum class SubtitleDifference : std::uint8_t {
  Missing,    ///< the second stream does not have it
  Added,      ///< the first stream does not have it
  Validity,   ///< one of them cannot be shown; nothing but their starts is compared then
  Start,      ///< moved in time
  Duration,   ///< the last delay
  Place,      ///< moved in the frame
  Size,       ///< of the picture
  Colours,    ///< the palette entries of the pixel codes
  Opacities,  ///< the contrasts of the pixel codes
  Forced,     ///< shown also while subtitles are switched off
  Pixels,     ///< pixel codes
  Bytes,      ///< none of these: the same subtitle, otherwise written
};
inline constexpr std::size_t SubtitleDifferences = 12;

/// "moved_in_time", "other_pixels", ...: for scripts, never changed.
[[nodiscard]] std::string_view DifferenceName(SubtitleDifference difference);
/// "moved in time", "other pixels", ...: for people.
[[nodiscard]] std::string DifferenceWords(SubtitleDifference difference);
/// The words with how many pixels are others: "12 other pixels".
[[nodiscard]] std::string DifferencePhrase(SubtitleDifference difference, std::int64_t otherPixels);

struct ComparedPair {
  SubtitlePair Pair;
  std::vector<SubtitleDifference> Differences;  ///< in the order above; none: the packets have the same bytes
  /// How many pixels have other codes. Pictures of one size are held against one another pixel by pixel,
  /// wherever they stand; others at their places in the frame, with code 0 around each.
  std::int64_t OtherPixels = 0;
};

/// How many pairs there are of each sort.
struct PairCounts {
  std::int64_t Same = 0;
  std::int64_t Different = 0;  ///< subtitles of both streams
  std::int64_t Missing = 0;
  std::int64_t Added = 0;
  std::array<std::int64_t, SubtitleDifferences> With{};  ///< pairs with each difference, in the order above

  void Add(const ComparedPair& pair);
  [[nodiscard]] bool AreAllSame() const { return Different + Missing + Added == 0; }
};

/// Reports every pair that PairSubtitles gives, in its order. What is reported is valid during the call.
/// Takes time in proportion to the streams' lengths and to the pictures that are coded differently.
void CompareStreams(const SupStream& first, const SupStream& second,
                    const std::function<void(const ComparedPair&)>& report);

/// Whether what follows the last packets, too short for another one, is the same.
[[nodiscard]] bool HaveSameTrailingBytes(const SupStream& first, const SupStream& second);

}  // namespace quillmark
