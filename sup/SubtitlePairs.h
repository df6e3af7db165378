#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "sup/SupStream.h"

namespace quillmark {

/// Two subtitles, of two streams, that stand for one another; one without a partner is in its stream alone.
/// By index, from 0.
struct SubtitlePair {
  std::optional<std::size_t> First;
  std::optional<std::size_t> Second;

  bool operator==(const SubtitlePair&) const = default;
};

/// Pairs the subtitles of two streams without changing their orders, as a text diff pairs lines: first those
/// with the same start and the same picture; of the others, between two pairs, those with the same start;
/// then those with the same picture; at last those that are shown together for at least half of the shorter
/// one's time. What is left has no partner. A picture is the same where its size and the bytes that code it
/// are.
/// The pairs come in the order of both streams, and what is missing in the second stream before what is
/// added in it. Takes time in proportion to the streams' lengths.
[[nodiscard]] std::vector<SubtitlePair> PairSubtitles(const SupStream& first, const SupStream& second);

}  // namespace quillmark
