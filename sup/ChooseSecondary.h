#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "sup/SupStream.h"

namespace quillmark {

/// The index (from 0) of the secondary subtitle that is laid over primary subtitle `index`: of the first one
/// that ends after the primary's start and its two neighbours, the one that overlaps the primary's display
/// longest. Searched through LatestEnd, so the cost grows with the logarithm of the stream's length.
/// Kept oddities: of equal overlaps the next subtitle wins over the previous one, and that over the one in
/// the middle; a neighbour that does not exist overlaps by 0, which is more than a negative overlap; when
/// nothing overlaps, the answer is 0, the first secondary subtitle.
/// nullopt when there is nothing to lay over it: an empty secondary stream, a primary subtitle that the
/// stream does not have, or times out of order by which the subtitle before the first one would win. A winner
/// after the last one is the last one.
[[nodiscard]] std::optional<std::size_t> ChooseSecondary(const SupStream& primary, std::size_t index,
                                                         const SupStream& secondary);

/// How many ticks of 90 kHz primary subtitle `index` and secondary subtitle `over` are shown together: 0
/// where they only touch, negative where they are apart. 0 for one that its stream does not have.
[[nodiscard]] std::int64_t TicksTogether(const SupStream& primary, std::size_t index,
                                         const SupStream& secondary, std::size_t over);

}  // namespace quillmark
