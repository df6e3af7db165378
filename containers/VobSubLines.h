#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "containers/VobSubIndex.h"
#include "containers/VobSubUnits.h"

namespace quillmark {

/// How the unit of a line was found.
enum class FoundBy : std::uint8_t {
  Position,
  DecimalPosition,
  Time,                ///< none starts at the position
  TimeBeforePosition,  ///< the one at the position is of another time
  NextPosition,
};

struct FoundUnit {
  UnitPlace Place;
  FoundBy By = FoundBy::Position;
};

/// By line of one language; nullopt where there is none.
using FoundUnits = std::vector<std::optional<FoundUnit>>;

/// Units that stand exactly where their lines say. Where most of them are of other times, and units of the
/// lines' times stand elsewhere, the positions are wrong, and these are taken.
[[nodiscard]] FoundUnits FindExact(const VobSubLanguage& language, UnitTable& table);

/// Units for the other lines: those of their times, then those that follow the position. Done when all
/// languages have theirs that stand where lines say.
void FindNear(const VobSubLanguage& language, UnitTable& table, FoundUnits& found);

/// What is to be told of lines in words for the user: those for which there is no unit, or none where they
/// say, or one of another time or substream. `length`: bytes of the .sub.
[[nodiscard]] std::vector<std::string> NotesOnLines(const VobSubLanguage& language, const FoundUnits& found,
                                                    const UnitTable& table, std::uint64_t length);

}  // namespace quillmark
