#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <QString>

#include "render/SubtitleDescription.h"

namespace quillmark {

class Document;

/// What a list tells of a subtitle, read out of its unit.
struct SubtitleFacts {
  std::size_t Index = 0;                         ///< from 0
  std::int64_t StartTicks = 0;                   ///< 90 kHz ticks
  std::optional<SubtitleDescription> Described;  ///< none where the subtitle cannot be shown
  std::optional<std::size_t> Over;               ///< the secondary subtitle that is laid over it, from 0

  [[nodiscard]] QString NumberText() const;  ///< "12", or "12 + 7" with the secondary subtitle 7 over it
  // As the window's fields have them; empty where the subtitle cannot be shown.
  [[nodiscard]] QString StartText() const;
  [[nodiscard]] QString EndText() const;       ///< "???" where it has no end of its own
  [[nodiscard]] QString DurationText() const;  ///< the same
  [[nodiscard]] QString PlaceText() const;     ///< "100, 400"
  [[nodiscard]] QString SizeText() const;      ///< "8x2"
  [[nodiscard]] QString CodesText() const;     ///< "0123 0FFF": palette entries and opacities of codes 0 to 3
};

/// Of subtitle `index` of the primary stream, which the document holds.
[[nodiscard]] SubtitleFacts FactsOf(const Document& document, std::size_t index,
                                    std::vector<std::uint8_t>& buffer);

/// The secondary subtitle that lies over subtitle `index` while the document merges.
[[nodiscard]] std::optional<std::size_t> SecondaryOver(const Document& document, std::size_t index);

}  // namespace quillmark
