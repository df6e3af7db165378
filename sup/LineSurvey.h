#pragma once

#include <cstdint>
#include <optional>

#include "sup/SpuControl.h"
#include "sup/UnitView.h"

namespace quillmark {

/// A picture line that is coded as players do not take it.
struct OddLine {
  int Line = 0;           ///< from 0, of the picture
  std::int64_t Bits = 0;  ///< of its codes
};

/// The coded lines of a picture.
struct LineSurvey {
  std::optional<OddLine> FirstLong;     ///< the first one, by fields, of more bits than asked for
  std::optional<OddLine> FirstOverrun;  ///< the first one, by fields, with a run that passes the line's end
};

/// Goes through the lines of both fields, the top one first, as far as the unit's data has them: up to
/// `dataEnd`, the position of its control sequences. `control` has the area and the fields' places.
[[nodiscard]] LineSurvey SurveyLines(const UnitView& unit, const SpuControl& control, std::int64_t dataEnd,
                                     std::int64_t maxBits);

}  // namespace quillmark
