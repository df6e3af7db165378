#include "containers/VobSubLines.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Words.h"
#include "containers/ProgramTracks.h"
#include "containers/VobSubTimes.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

std::string Hex(std::uint64_t value) {
  std::string digits;
  do {
    digits.insert(digits.begin(), "0123456789ABCDEF"[value % 16]);
    value /= 16;
  } while (value > 0);
  return "0x" + digits;
}

/// Lines of the index that share a fault: the first of them is told.
class LineNotes {
 public:
  /// `fault` gives the words.
  template <typename Fault>
  void Add(const VobSubEntry& entry, const Fault& fault) {
    if (count_++ == 0) {
      first_ = Words::Tr("line %1", {std::to_string(entry.Line)}) + ": " + fault();
    }
  }
  void TellTo(std::vector<std::string>& notes) const {
    if (count_ > 0) {
      notes.push_back(count_ > 1 ? Words::Tr("%1; the same of %2 more", {first_, std::to_string(count_ - 1)})
                                 : first_);
    }
  }

 private:
  std::size_t count_ = 0;
  std::string first_;
};

/// By line, with the time stamp of the unit found for it.
std::vector<VobSubTime> TimesOf(const VobSubLanguage& language, const FoundUnits& found,
                                const UnitTable& table) {
  std::vector<VobSubTime> times;
  times.reserve(found.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    const VobSubEntry& entry = language.Entries[i];
    times.push_back({.Line = entry.Time,
                     .Delay = entry.Delay,
                     .TimeStamp = found[i] ? table.Unit(found[i]->Place).TimeStamp : std::nullopt});
  }
  return times;
}

void PreferTimes(const VobSubLanguage& language, UnitTable& table, FoundUnits& found) {
  const auto differ = DifferingTimes(TimesOf(language, found, table));
  const auto differing = std::ranges::count(differ, true);
  const auto exact = std::ranges::count_if(found, [](const auto& unit) { return unit.has_value(); });
  if (differing * 2 <= exact) {
    return;
  }
  FoundUnits ofTime(found.size());
  std::ptrdiff_t fitting = 0;
  for (std::size_t i = 0; i < found.size(); ++i) {
    const auto place =
        differ[i] ? table.OfTime(language.Entries[i].Time * TicksPerMs, language.Substream) : std::nullopt;
    if (place) {
      ofTime[i] = FoundUnit{.Place = *place, .By = FoundBy::TimeBeforePosition};
      ++fitting;
    }
  }
  if (fitting * 2 <= differing) {
    return;
  }
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (ofTime[i]) {
      found[i] = ofTime[i];
    }
  }
}

}  // namespace

FoundUnits FindExact(const VobSubLanguage& language, UnitTable& table) {
  FoundUnits found;
  found.reserve(language.Entries.size());
  for (const VobSubEntry& entry : language.Entries) {
    auto& unit = found.emplace_back();
    if (const auto place = table.At(entry.Position, language.Substream)) {
      unit = FoundUnit{.Place = *place};
      continue;
    }
    const auto decimal =
        entry.DecimalPosition ? table.At(*entry.DecimalPosition, language.Substream) : std::nullopt;
    if (decimal) {
      unit = FoundUnit{.Place = *decimal, .By = FoundBy::DecimalPosition};
    }
  }
  PreferTimes(language, table, found);
  for (const auto& unit : found) {
    if (unit) {
      table.Name(unit->Place);
    }
  }
  return found;
}

void FindNear(const VobSubLanguage& language, UnitTable& table, FoundUnits& found) {
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (found[i]) {
      continue;
    }
    const VobSubEntry& entry = language.Entries[i];
    if (const auto ofTime = table.UnnamedOfTime(entry.Time * TicksPerMs, language.Substream)) {
      found[i] = FoundUnit{.Place = *ofTime, .By = FoundBy::Time};
    } else if (const auto next = table.From(entry.Position, language.Substream)) {
      found[i] = FoundUnit{.Place = *next, .By = FoundBy::NextPosition};
    }
    if (found[i]) {
      table.Name(found[i]->Place);
    }
  }
}

std::vector<std::string> NotesOnLines(const VobSubLanguage& language, const FoundUnits& found,
                                      const UnitTable& table, std::uint64_t length) {
  LineNotes outside;
  LineNotes outsideOfTime;
  LineNotes missing;
  LineNotes decimal;
  LineNotes ofTime;
  LineNotes beforePosition;
  LineNotes next;
  LineNotes otherTime;
  LineNotes otherSubstream;
  const auto differ = DifferingTimes(TimesOf(language, found, table));
  for (std::size_t i = 0; i < found.size(); ++i) {
    const VobSubEntry& entry = language.Entries[i];
    const auto position = [&entry] { return Hex(entry.Position); };
    const auto isOutside = [&position, length] {
      return Words::Tr("position %1 is outside the .sub, which has %2 bytes",
                       {position(), std::to_string(length)});
    };
    if (!found[i]) {
      if (entry.Position >= length) {
        outside.Add(entry, isOutside);
      } else {
        missing.Add(entry, [&position] {
          return Words::Tr("no whole subtitle stands at position %1", {position()});
        });
      }
      continue;
    }
    switch (found[i]->By) {
      case FoundBy::Position:
        break;
      case FoundBy::DecimalPosition:
        decimal.Add(entry, [&position, &entry] {
          return Words::Tr("no subtitle starts at position %1, but at %2 in decimal",
                           {position(), std::to_string(entry.DecimalPosition.value_or(0))});
        });
        break;
      case FoundBy::Time:
        if (entry.Position >= length) {
          outsideOfTime.Add(entry, [&isOutside] {
            return Words::Tr("%1; the subtitle of its time was taken", {isOutside()});
          });
        } else {
          ofTime.Add(entry, [&position] {
            return Words::Tr("no subtitle starts at position %1; the one of its time was taken",
                             {position()});
          });
        }
        break;
      case FoundBy::TimeBeforePosition:
        beforePosition.Add(entry, [&position] {
          return Words::Tr("the subtitle at position %1 is of another time; the one of its time was taken",
                           {position()});
        });
        break;
      case FoundBy::NextPosition:
        next.Add(entry, [&position] {
          return Words::Tr("no subtitle starts at position %1; the next one was taken", {position()});
        });
        break;
    }
    const UnitPlace& place = found[i]->Place;
    if (differ[i] && (found[i]->By == FoundBy::Position || found[i]->By == FoundBy::DecimalPosition)) {
      otherTime.Add(entry, [&table, &place] {
        return Words::Tr(
            "the subtitle has the time stamp %1, which is not the line's; the line's time was taken",
            {FormatTimecode(table.Unit(place).TimeStamp.value_or(0))});
      });
    }
    if (place.Substream != language.Substream) {
      otherSubstream.Add(entry, [&place, &language] {
        return Words::Tr("the subtitle belongs to substream %1, not %2",
                         {SubstreamName(place.Substream), SubstreamName(language.Substream)});
      });
    }
  }
  std::vector<std::string> notes;
  for (const LineNotes* told : std::array{&outside, &outsideOfTime, &missing, &decimal, &ofTime,
                                          &beforePosition, &next, &otherTime, &otherSubstream}) {
    told->TellTo(notes);
  }
  return notes;
}

}  // namespace quillmark
