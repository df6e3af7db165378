#include "containers/VobSub.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/AsciiCase.h"
#include "base/FilePath.h"
#include "base/Words.h"
#include "containers/FileInAnyCase.h"
#include "containers/PacketAppender.h"
#include "containers/PacketWalk.h"
#include "containers/ProgramTracks.h"
#include "containers/UnitGatherer.h"
#include "containers/VobSubLines.h"
#include "containers/VobSubTimes.h"
#include "containers/VobSubUnits.h"
#include "sup/StreamLoader.h"

namespace quillmark {
namespace {

/// One subtitle of a track.
struct TimedUnit {
  std::int64_t Ticks = 0;
  UnitPlace Place;
};

std::vector<TimedUnit> TimedUnits(const VobSubLanguage& language, const FoundUnits& found,
                                  const UnitTable& table) {
  std::vector<VobSubTime> times;
  std::vector<TimedUnit> units;
  times.reserve(found.size());
  units.reserve(found.size());
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (found[i]) {
      const VobSubEntry& entry = language.Entries[i];
      times.push_back(
          {.Line = entry.Time, .Delay = entry.Delay, .TimeStamp = table.Unit(found[i]->Place).TimeStamp});
      units.push_back({.Place = found[i]->Place});
    }
  }
  const auto ticks = TicksOf(times);
  for (std::size_t i = 0; i < units.size(); ++i) {
    units[i].Ticks = ticks[i];
  }
  return units;
}

void Append(std::vector<std::string>& notes, std::vector<std::string> more) {
  notes.insert(notes.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

/// Sorts by time and leaves out what another line names for the same time; `notes` gets what is to be told.
void PutInOrder(std::vector<TimedUnit>& units, std::vector<std::string>& notes) {
  if (!std::ranges::is_sorted(units, {}, &TimedUnit::Ticks)) {
    std::ranges::stable_sort(units, {}, &TimedUnit::Ticks);
    notes.emplace_back(Words::Tr("the lines are not in the order of time; they were sorted"));
  }
  const auto same = [](const TimedUnit& a, const TimedUnit& b) {
    return a.Ticks == b.Ticks && a.Place.Packet == b.Place.Packet;
  };
  units.erase(std::unique(units.begin(), units.end(), same), units.end());
  const auto early = std::ranges::count_if(units, [](const TimedUnit& unit) { return unit.Ticks < 0; });
  if (early > 0) {
    notes.push_back(Words::Tr("%n subtitle starts before 0", "%n subtitles start before 0", early));
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

std::uint64_t PacketsSize(const std::vector<TimedUnit>& units, const UnitTable& table) {
  std::uint64_t size = 0;
  for (const TimedUnit& unit : units) {
    size += UnitStart + table.Unit(unit.Place).Size;
  }
  return size;
}

/// `isLast`: no other language needs the units.
std::vector<std::uint8_t> PacketsOf(const std::vector<TimedUnit>& units, UnitTable& table, bool isLast) {
  if (isLast && AreWholeSubstream(units, table)) {
    // They are packets already but for their times, and need not be copied.
    for (const TimedUnit& unit : units) {
      table.SetTime(unit.Place, unit.Ticks);
    }
    return table.TakeBytes(units.front().Place.Substream);
  }
  std::vector<std::uint8_t> packets;
  packets.reserve(static_cast<std::size_t>(PacketsSize(units, table)));
  for (const TimedUnit& unit : units) {
    AppendPacket(packets, unit.Ticks, table.Substream(unit.Place.Substream).BytesOf(table.Unit(unit.Place)));
  }
  return packets;
}

/// A track that has no packets yet, and its subtitles.
struct NamedTrack {
  Track Named;
  std::vector<TimedUnit> Units;
};

NamedTrack NamedTrackOf(const VobSubLanguage& language, const FoundUnits& found, const UnitTable& table,
                        std::uint64_t length) {
  NamedTrack named = {.Named = {}, .Units = TimedUnits(language, found, table)};
  Track& track = named.Named;
  track.Id = SubstreamName(language.Substream);
  track.Language = language.Language;
  track.Name = language.Name;
  const std::size_t substream =
      named.Units.empty() ? language.Substream : named.Units.front().Place.Substream;
  track.Notes = table.Substream(substream).Notes();
  Append(track.Notes, NotesOnLines(language, found, table, length));
  PutInOrder(named.Units, track.Notes);
  return named;
}

/// Some lines may name the same unit, and languages the same substream; but an index could name the longest
/// unit in every line.
Result<void> CheckSize(const std::vector<NamedTrack>& tracks, const UnitTable& table, std::uint64_t length) {
  constexpr std::uint64_t MostOfAll = 4;
  constexpr std::uint64_t Allowance = std::uint64_t{16} << 20U;
  std::uint64_t size = 0;
  for (const NamedTrack& track : tracks) {
    size += PacketsSize(track.Units, table);
  }
  if (size > MostOfAll * length + Allowance) {
    return Failure{Words::Tr(
        "the index names the same subtitles over and over: %1 bytes of them out of a .sub of %2 bytes",
        {std::to_string(size), std::to_string(length)})};
  }
  return size > MaxStreamLength ? Result<void>(Failure{Words::Tr(TooMuchReason)}) : Result<void>();
}

/// All positions at which a line may have a unit start, in ascending order. They ascend in nearly every
/// index, and so do what their digits are as decimal numbers.
std::vector<std::uint64_t> PositionsIn(const VobSubIndex& index) {
  std::vector<std::uint64_t> positions;
  std::vector<std::uint64_t> decimal;
  for (const VobSubLanguage& language : index.Languages) {
    for (const VobSubEntry& entry : language.Entries) {
      positions.push_back(entry.Position);
      if (entry.DecimalPosition) {
        decimal.push_back(*entry.DecimalPosition);
      }
    }
  }
  for (auto* unsorted : {&positions, &decimal}) {
    if (!std::ranges::is_sorted(*unsorted)) {
      std::ranges::sort(*unsorted);
    }
  }
  const auto middle = positions.insert(positions.end(), decimal.begin(), decimal.end());
  std::inplace_merge(positions.begin(), middle, positions.end());
  return positions;
}

std::vector<std::string> NotesOn(const VobSubIndex& index) {
  std::vector<std::string> notes = index.Notes;
  if (index.Custom.IsOn) {
    notes.emplace_back(Words::Tr("the index has custom colours on; the subtitles keep their own"));
  }
  if (index.ShowsForcedAlone) {
    notes.emplace_back(Words::Tr("the index shows forced subtitles alone; all are read"));
  }
  if (index.TimeOffset != 0) {
    notes.push_back(Words::Tr("the index has a time offset of %1 ms, which is not applied",
                              {std::to_string(index.TimeOffset)}));
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
    return Failure{Words::Tr("it is too long for an index")};
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

/// The file of the same name with the other ending, best in the case of this one's; nullopt where there is
/// none.
std::optional<std::filesystem::path> Beside(std::filesystem::path path, const char* lower,
                                            const char* upper) {
  path.replace_extension(IsUpperCase(Utf8FromPath(path.extension())) ? upper : lower);
  return FileInAnyCase(path);
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
  bool isEncrypted = false;
  for (ProgramPacket packet; walk.Next(packet);) {
    isEncrypted = isEncrypted || packet.IsEncrypted;
    gatherer.Add(packet, 0);
    if (IsTooMuch(gatherer)) {
      return Failure{Words::Tr(TooMuchReason)};
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
    return Failure{Words::Tr("the .sub is none of a VobSub pair: %1", {Words::Tr(NoPackReason)})};
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
    for (const auto& unit : found[i]) {
      if (unit) {
        lastUser[unit->Place.Substream] = i;
      }
    }
  }
  std::vector<NamedTrack> tracks;
  for (std::size_t i = 0; i < index.Languages.size(); ++i) {
    tracks.push_back(NamedTrackOf(index.Languages[i], found[i], table, packs.Length()));
  }
  if (const auto checked = CheckSize(tracks, table, packs.Length()); !checked) {
    return checked.Why();
  }
  for (std::size_t i = 0; i < tracks.size(); ++i) {
    Track& track = tracks[i].Named;
    const auto& units = tracks[i].Units;
    if (units.empty()) {
      for (const std::string& note : track.Notes) {
        container.Notes.push_back((track.Language.empty() ? track.Id : track.Language) + ": " + note);
      }
      continue;
    }
    track.Packets = PacketsOf(units, table, lastUser[units.front().Place.Substream] == i);
    track.Palette = index.Palette;
    track.Frame = index.Frame();
    container.Tracks.push_back(std::move(track));
  }
  if (container.Tracks.empty() && isEncrypted) {
    container.Notes.insert(container.Notes.begin(), Words::Tr(EncryptedNote));
  }
  return std::optional(std::move(container));
}

ReadContainerResult ReadVobSub(const std::filesystem::path& path, const Progress& progress) {
  const bool isPacks = HasEnding(path, ".sub");
  const auto indexPath = isPacks ? Beside(path, ".idx", ".IDX") : std::optional(path);
  const auto packsPath = isPacks ? std::optional(path) : Beside(path, ".sub", ".SUB");
  if (!indexPath) {
    return ReadAlone(
        path, progress,
        Words::Tr("there is no .idx beside it: times are those of the .sub, languages are unknown"));
  }
  const auto text = ReadText(*indexPath);
  if (!text) {
    return isPacks ? Failure{Words::Tr("its .idx cannot be read: %1", {text.Reason()})} : text.Why();
  }
  const VobSubIndex index = ParseVobSubIndex(*text);
  if (!HasEntries(index) && !IsVobSubIndex(*text)) {
    return Failure{isPacks ? Words::Tr("the .idx beside it is no VobSub index")
                           : Words::Tr("it is no VobSub index")};
  }
  if (!packsPath) {
    return Failure{
        Words::Tr("there is no %1 beside it",
                  {Utf8FromPath(std::filesystem::path(path).replace_extension(".sub").filename())})};
  }
  if (!HasEntries(index)) {
    auto read =
        ReadAlone(*packsPath, progress, Words::Tr("the .idx names no subtitle: the .sub is read by itself"));
    return read || isPacks ? std::move(read) : Failure{Words::Tr("its .sub: %1", {read.Reason()})};
  }
  auto packs = OpenFileSource(*packsPath);
  if (!packs) {
    return isPacks ? packs.Why() : Failure{Words::Tr("its .sub cannot be read: %1", {packs.Reason()})};
  }
  return ReadVobSubPair(index, **packs, progress);
}

}  // namespace quillmark
