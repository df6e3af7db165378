#include "containers/VobSub.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "base/AsciiCase.h"
#include "base/FilePath.h"
#include "containers/PacketAppender.h"
#include "containers/PacketWalk.h"
#include "containers/ProgramTracks.h"
#include "containers/UnitGatherer.h"
#include "containers/VobSubTimes.h"
#include "containers/VobSubUnits.h"
#include "sup/StreamLoader.h"

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
  void Add(const VobSubEntry& entry, std::string fault) {
    if (count_++ == 0) {
      first_ = "line " + std::to_string(entry.Line) + ": " + std::move(fault);
    }
  }
  void TellTo(std::vector<std::string>& notes) const {
    if (count_ > 0) {
      notes.push_back(first_ +
                      (count_ > 1 ? "; the same of " + std::to_string(count_ - 1) + " more" : std::string()));
    }
  }

 private:
  std::size_t count_ = 0;
  std::string first_;
};

/// By entry of one language; nullopt where there is none.
using FoundUnits = std::vector<std::optional<UnitPlace>>;

/// Units that stand exactly where their lines say.
FoundUnits FindExact(const VobSubLanguage& language, UnitTable& table) {
  FoundUnits found;
  found.reserve(language.Entries.size());
  for (const VobSubEntry& entry : language.Entries) {
    auto place = table.At(entry.Position, language.Substream);
    if (!place && entry.DecimalPosition) {
      place = table.At(*entry.DecimalPosition, language.Substream);
    }
    if (place) {
      table.Name(*place);
    }
    found.push_back(place);
  }
  return found;
}

/// Units for the other lines.
void FindNear(const VobSubLanguage& language, UnitTable& table, FoundUnits& found) {
  constexpr std::int64_t TicksPerMs = 90;
  for (std::size_t i = 0; i < found.size(); ++i) {
    const VobSubEntry& entry = language.Entries[i];
    if (!found[i]) {
      found[i] = table.AtTime(entry.Time * TicksPerMs, language.Substream);
    }
    if (!found[i]) {
      found[i] = table.From(entry.Position, language.Substream);
    }
    if (found[i]) {
      table.Name(*found[i]);
    }
  }
}

/// One subtitle of a track.
struct TimedUnit {
  std::int64_t Ticks = 0;
  UnitPlace Place;
};

std::vector<TimedUnit> TimedUnits(const VobSubLanguage& language, const FoundUnits& found,
                                  const UnitTable& table) {
  std::vector<VobSubTime> times;
  std::vector<TimedUnit> units;
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (found[i]) {
      const VobSubEntry& entry = language.Entries[i];
      times.push_back(
          {.Line = entry.Time, .Delay = entry.Delay, .TimeStamp = table.Unit(*found[i]).TimeStamp});
      units.push_back({.Place = *found[i]});
    }
  }
  const auto ticks = TicksOf(times);
  for (std::size_t i = 0; i < units.size(); ++i) {
    units[i].Ticks = ticks[i];
  }
  return units;
}

/// Lines for which there is no unit, and units of another substream than the language's.
std::vector<std::string> NotesOn(const VobSubLanguage& language, const FoundUnits& found,
                                 std::uint64_t length) {
  LineNotes outside;
  LineNotes missing;
  LineNotes other;
  for (std::size_t i = 0; i < found.size(); ++i) {
    const VobSubEntry& entry = language.Entries[i];
    if (!found[i] && entry.Position >= length) {
      outside.Add(entry, "position " + Hex(entry.Position) + " is outside the .sub, which has " +
                             std::to_string(length) + " bytes");
    } else if (!found[i]) {
      missing.Add(entry, "no whole subtitle stands at position " + Hex(entry.Position));
    } else if (found[i]->Substream != language.Substream) {
      other.Add(entry, "the subtitle belongs to substream " + SubstreamName(found[i]->Substream) + ", not " +
                           SubstreamName(language.Substream));
    }
  }
  std::vector<std::string> notes;
  outside.TellTo(notes);
  missing.TellTo(notes);
  other.TellTo(notes);
  return notes;
}

void Append(std::vector<std::string>& notes, std::vector<std::string> more) {
  notes.insert(notes.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

/// Sorts by time and leaves out what another line names for the same time; `notes` gets what is to be told.
void PutInOrder(std::vector<TimedUnit>& units, std::vector<std::string>& notes) {
  if (!std::ranges::is_sorted(units, {}, &TimedUnit::Ticks)) {
    std::ranges::stable_sort(units, {}, &TimedUnit::Ticks);
    notes.emplace_back("the lines are not in the order of time; they were sorted");
  }
  const auto same = [](const TimedUnit& a, const TimedUnit& b) {
    return a.Ticks == b.Ticks && a.Place.Packet == b.Place.Packet;
  };
  units.erase(std::unique(units.begin(), units.end(), same), units.end());
  const auto early = std::ranges::count_if(units, [](const TimedUnit& unit) { return unit.Ticks < 0; });
  if (early > 0) {
    notes.push_back(std::to_string(early) + (early == 1 ? " subtitle starts" : " subtitles start") +
                    " before 0");
  }
}

/// Whether they are all units of their substream, as they follow each other in the .sub.
bool AreWholeSubstream(const std::vector<TimedUnit>& units, const UnitTable& table) {
  if (units.empty() || units.size() != table.Substream(units.front().Place.Substream).Units.size()) {
    return false;
  }
  for (std::size_t i = 0; i < units.size(); ++i) {
    if (units[i].Place.Unit != i || units[i].Place.Substream != units.front().Place.Substream) {
      return false;
    }
  }
  return true;
}

Result<std::vector<std::uint8_t>> PacketsOf(const std::vector<TimedUnit>& units, const UnitTable& table) {
  std::uint64_t length = 0;
  for (const TimedUnit& unit : units) {
    length += UnitStart + table.Unit(unit.Place).Size;
  }
  if (length > MaxStreamLength) {
    return Failure{TooMuchReason};
  }
  std::vector<std::uint8_t> packets;
  packets.reserve(static_cast<std::size_t>(length));
  for (const TimedUnit& unit : units) {
    AppendPacket(packets, unit.Ticks, table.Substream(unit.Place.Substream).BytesOf(table.Unit(unit.Place)));
  }
  return packets;
}

/// `isLast`: no other language needs the units.
Result<Track> TrackOf(const VobSubLanguage& language, const FoundUnits& found, UnitTable& table,
                      std::uint64_t length, bool isLast) {
  auto units = TimedUnits(language, found, table);
  Track track;
  track.Id = SubstreamName(language.Substream);
  track.Language = language.Language;
  track.Name = language.Name;
  Append(track.Notes, NotesOn(language, found, length));
  PutInOrder(units, track.Notes);
  const std::size_t substream = units.empty() ? language.Substream : units.front().Place.Substream;
  Append(track.Notes, table.Substream(substream).Notes());
  if (isLast && AreWholeSubstream(units, table)) {
    // They are packets already but for their times, and need not be copied.
    for (const TimedUnit& unit : units) {
      table.SetTime(unit.Place, unit.Ticks);
    }
    track.Packets = table.TakeBytes(substream);
    return track;
  }
  auto packets = PacketsOf(units, table);
  if (!packets) {
    return packets.Why();
  }
  track.Packets = std::move(*packets);
  return track;
}

/// All positions at which a line may have a unit start, in ascending order.
std::vector<std::uint64_t> PositionsIn(const VobSubIndex& index) {
  std::vector<std::uint64_t> positions;
  for (const VobSubLanguage& language : index.Languages) {
    for (const VobSubEntry& entry : language.Entries) {
      positions.push_back(entry.Position);
      if (entry.DecimalPosition) {
        positions.push_back(*entry.DecimalPosition);
      }
    }
  }
  std::ranges::sort(positions);
  return positions;
}

std::vector<std::string> NotesOn(const VobSubIndex& index) {
  std::vector<std::string> notes = index.Notes;
  if (index.Custom.IsOn) {
    notes.emplace_back("the index has custom colours on; the subtitles keep their own");
  }
  if (index.TimeOffset != 0) {
    notes.push_back("the index has a time offset of " + std::to_string(index.TimeOffset) +
                    " ms, which is not applied");
  }
  return notes;
}

constexpr std::uint64_t MaxIndexLength = std::uint64_t{64} << 20U;

Result<std::string> ReadText(const std::filesystem::path& path) {
  auto source = OpenFileSource(path);
  if (!source) {
    return source.Why();
  }
  if ((*source)->Length() > MaxIndexLength) {
    return Failure{"it is too long for an index"};
  }
  std::string text(static_cast<std::size_t>((*source)->Length()), '\0');
  const auto read = (*source)->ReadAt(0, {reinterpret_cast<std::uint8_t*>(text.data()), text.size()});
  if (!read) {
    return read.Why();
  }
  text.resize(*read);
  return text;
}

bool IsUpperCase(const std::string& ending) {
  return std::ranges::any_of(ending, [](char c) { return c >= 'A' && c <= 'Z'; });
}

bool HasEnding(const std::filesystem::path& path, std::string_view lower) {
  return IsSameWord(Utf8FromPath(path.extension()), lower);
}

/// The file of the same name with the other ending, in the case of this one's or the other; nullopt where
/// there is none.
std::optional<std::filesystem::path> Beside(std::filesystem::path path, const char* lower,
                                            const char* upper) {
  const bool isUpper = IsUpperCase(Utf8FromPath(path.extension()));
  for (const char* ending : {isUpper ? upper : lower, isUpper ? lower : upper}) {
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path.replace_extension(ending), ignored)) {
      return path;
    }
  }
  return std::nullopt;
}

ReadContainerResult ReadAlone(const std::filesystem::path& packs, const Progress& progress,
                              std::string note) {
  auto source = OpenFileSource(packs);
  if (!source) {
    return source.Why();
  }
  auto read = ReadProgramTracks(**source, progress);
  if (read && *read) {
    (*read)->Notes.insert((*read)->Notes.begin(), std::move(note));
  }
  return read;
}

bool HasEntries(const VobSubIndex& index) {
  return std::ranges::any_of(index.Languages, [](const auto& language) { return !language.Entries.empty(); });
}

}  // namespace

bool StartsLikeVobSub(std::string_view head) {
  return IsVobSubIndex(head);
}

ReadContainerResult ReadVobSubPair(const VobSubIndex& index, ByteSource& packs, const Progress& progress) {
  ForwardReader reader(packs, progress);
  PacketWalk walk(reader);
  UnitGatherer gatherer(PositionsIn(index), packs.Length());
  for (ProgramPacket packet; walk.Next(packet);) {
    gatherer.Add(packet, 0);
    if (IsTooMuch(gatherer)) {
      return Failure{TooMuchReason};
    }
  }
  if (reader.IsCancelled()) {
    return std::optional<Container>();
  }
  if (!reader.Status()) {
    return reader.Status().Why();
  }
  UnitTable table(gatherer.Finish());
  if (!walk.FoundPack() && !table.HasUnits()) {
    return Failure{std::string("the .sub is none of a VobSub pair: ") + NoPackReason};
  }
  std::vector<FoundUnits> found;
  for (const VobSubLanguage& language : index.Languages) {
    found.push_back(FindExact(language, table));
  }
  Container container;
  container.Notes = NotesOn(index);
  std::array<std::size_t, SubtitleSubstreams> lastUser = {};
  for (std::size_t i = 0; i < index.Languages.size(); ++i) {
    FindNear(index.Languages[i], table, found[i]);
    for (const auto& place : found[i]) {
      if (place) {
        lastUser[place->Substream] = i;
      }
    }
  }
  for (std::size_t i = 0; i < index.Languages.size(); ++i) {
    const VobSubLanguage& language = index.Languages[i];
    const auto first = std::ranges::find_if(found[i], [](const auto& place) { return place.has_value(); });
    const bool isLast = first != found[i].end() && lastUser[(*first)->Substream] == i;
    auto track = TrackOf(language, found[i], table, packs.Length(), isLast);
    if (!track) {
      return track.Why();
    }
    if (track->Packets.empty()) {
      for (const std::string& note : track->Notes) {
        container.Notes.push_back((language.Language.empty() ? track->Id : language.Language) + ": " + note);
      }
      continue;
    }
    track->Palette = index.Palette;
    track->Frame = index.Frame();
    container.Tracks.push_back(std::move(*track));
  }
  return std::optional(std::move(container));
}

ReadContainerResult ReadVobSub(const std::filesystem::path& path, const Progress& progress) {
  const bool isPacks = HasEnding(path, ".sub");
  const auto indexPath = isPacks ? Beside(path, ".idx", ".IDX") : std::optional(path);
  const auto packsPath = isPacks ? std::optional(path) : Beside(path, ".sub", ".SUB");
  if (!indexPath) {
    return ReadAlone(path, progress,
                     "there is no .idx beside it: times are those of the .sub, languages are unknown");
  }
  const auto text = ReadText(*indexPath);
  if (!text) {
    return isPacks ? Failure{"its .idx cannot be read: " + text.Reason()} : text.Why();
  }
  const VobSubIndex index = ParseVobSubIndex(*text);
  if (!HasEntries(index) && !IsVobSubIndex(*text)) {
    return Failure{isPacks ? "the .idx beside it is no VobSub index" : "it is no VobSub index"};
  }
  if (!packsPath) {
    return Failure{"there is no " +
                   Utf8FromPath(std::filesystem::path(path).replace_extension(".sub").filename()) +
                   " beside it"};
  }
  if (!HasEntries(index)) {
    return ReadAlone(*packsPath, progress, "the .idx names no subtitle: the .sub is read by itself");
  }
  auto packs = OpenFileSource(*packsPath);
  if (!packs) {
    return isPacks ? packs.Why() : Failure{"its .sub cannot be read: " + packs.Reason()};
  }
  return ReadVobSubPair(index, **packs, progress);
}

}  // namespace quillmark
