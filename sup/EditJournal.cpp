#include "sup/EditJournal.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <optional>
#include <type_traits>
#include <utility>

#include "base/ByteReader.h"
#include "base/ContentHash.h"
#include "base/Words.h"

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;
using BytesView = std::span<const std::uint8_t>;

/// The fourth byte of a record's tag. The three before it say what the file is, and in which form.
enum class Kind : std::uint8_t { Base = 'B', Edit = 'E', Palette = 'P', Undo = 'U', Redo = 'R' };

constexpr std::array<std::uint8_t, 3> Form = {'Q', 'J', '1'};
constexpr std::size_t TagSize = 4;
constexpr std::size_t HeadSize = 28;         // tag, payload length, payload hash, hash of these three
constexpr std::size_t CheckedHeadSize = 20;  // these three
constexpr std::size_t MaxNameLength = 0xFFFF;
constexpr std::size_t PlaceSize = 12;
constexpr std::size_t ShortPlaceSize = 5;
static_assert(sizeof(EditPlace) == PlaceSize && std::is_trivially_copyable_v<EditPlace>);
constexpr std::uint8_t ReindexesFlag = 1;
constexpr std::uint8_t ShortPlacesFlag = 2;

/// A number in little-endian order, in which most machines hold it and places are copied as they are.
template <typename Integer>
std::array<std::uint8_t, sizeof(Integer)> LittleEndian(Integer number) {
  std::array<std::uint8_t, sizeof(Integer)> bytes{};
  for (std::uint8_t& byte : bytes) {
    byte = static_cast<std::uint8_t>(number);
    number = static_cast<Integer>(std::uint64_t{number} >> 8U);
  }
  return bytes;
}

/// Appends one record. Its payload is hashed while it is copied, so that memory is read once.
class RecordWriter {
 public:
  RecordWriter(Kind kind, std::size_t payloadLength, Bytes& out)
      : kind_(kind), out_(out), start_(out.size()), hashed_(start_ + HeadSize) {
    out_.reserve(hashed_ + payloadLength);
    out_.resize(hashed_);
  }
  RecordWriter(const RecordWriter&) = delete;
  RecordWriter& operator=(const RecordWriter&) = delete;
  ~RecordWriter() {
    hasher_.Add(std::span(out_).subspan(hashed_));
    const std::span head = std::span(out_).subspan(start_, HeadSize);
    auto at = std::copy(Form.begin(), Form.end(), head.begin());
    *at++ = static_cast<std::uint8_t>(kind_);
    for (const std::uint64_t number : {std::uint64_t{out_.size() - start_ - HeadSize}, hasher_.Hash()}) {
      at = std::ranges::copy(LittleEndian(number), at).out;
    }
    std::ranges::copy(LittleEndian(ContentHash(head.first(CheckedHeadSize))), at);
  }

  void Add(BytesView bytes) {
    while (!bytes.empty()) {
      const BytesView part = bytes.first(std::min(bytes.size(), CopiedAtATime));
      out_.insert(out_.end(), part.begin(), part.end());
      bytes = bytes.subspan(part.size());
      const std::size_t whole = (out_.size() - hashed_) / ContentHasher::BlockSize * ContentHasher::BlockSize;
      hasher_.Add(std::span(out_).subspan(hashed_, whole));
      hashed_ += whole;
    }
  }
  template <typename Integer>
  void Number(Integer number) {
    Add(LittleEndian(number));
  }
  void Text(std::string_view text) { Add({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}); }
  void Name(std::string_view name) {
    Number(static_cast<std::uint16_t>(name.size()));
    Text(name);
  }
  /// Short places as they stand in memory, others place by place.
  void Places(const EditPlaces& places) {
    if (places.AreShort()) {
      AddAsStored(places.Offsets());
      Add(places.Counts());
      return;
    }
    std::array<EditPlace, PlacesAtATime> part;
    for (std::size_t start = 0; start < places.size(); start += part.size()) {
      const std::size_t count = std::min(part.size(), places.size() - start);
      for (std::size_t i = 0; i < count; ++i) {
        part[i] = places[start + i];
      }
      AddAsStored(std::span(std::as_const(part)).first(count));
    }
  }

 private:
  static constexpr std::size_t CopiedAtATime = 16384;
  static constexpr std::size_t PlacesAtATime = 1024;

  /// Offsets, or whole places.
  template <typename Stored>
  void AddAsStored(std::span<const Stored> numbers) {
    const auto bytes = std::as_bytes(numbers);
    const BytesView stored(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    if constexpr (std::endian::native == std::endian::little) {
      Add(stored);
    } else {
      for (std::size_t at = 0; at < stored.size(); at += sizeof(std::uint32_t)) {
        std::uint32_t number = 0;
        std::memcpy(&number, &stored[at], sizeof number);
        Number(number);
      }
    }
  }

  Kind kind_;
  Bytes& out_;
  std::size_t start_;
  std::size_t hashed_;  // where what is not hashed yet starts
  ContentHasher hasher_;
};

std::string_view Cut(std::string_view name) {
  return name.substr(0, MaxNameLength);
}

template <typename Integer>
std::optional<Integer> Number(ByteReader& reader) {
  const auto bytes = reader.Take(sizeof(Integer));
  if (!bytes) {
    return std::nullopt;
  }
  std::uint64_t number = 0;
  for (std::size_t i = sizeof(Integer); i-- > 0;) {
    number = number << 8U | (*bytes)[i];
  }
  return static_cast<Integer>(number);
}

std::string TextOf(BytesView bytes) {
  return {bytes.begin(), bytes.end()};
}

std::optional<std::string> ReadName(ByteReader& reader) {
  const auto length = Number<std::uint16_t>(reader);
  const auto name = length ? reader.Take(*length) : std::nullopt;
  return name ? std::optional(TextOf(*name)) : std::nullopt;
}

std::optional<JournalBase> ReadBase(BytesView payload) {
  ByteReader reader(payload);
  const auto length = Number<std::uint64_t>(reader);
  const auto hash = Number<std::uint64_t>(reader);
  const auto path = reader.Take(reader.Remaining());
  if (!length || !hash) {
    return std::nullopt;
  }
  return JournalBase{.Length = *length, .Hash = *hash, .Path = TextOf(*path)};
}

std::optional<EditPlaces> ReadShortPlaces(ByteReader& reader, std::uint32_t count) {
  const auto bytes = reader.Take(ShortPlaceSize * count);
  if (!bytes) {
    return std::nullopt;
  }
  ByteReader numbers(*bytes);
  std::vector<std::uint32_t> offsets(count);
  for (std::uint32_t& offset : offsets) {
    offset = *Number<std::uint32_t>(numbers);
  }
  EditPlaces places;
  places.Add(offsets, *numbers.Take(count));
  return places;
}

std::optional<EditPlaces> ReadPlaces(ByteReader& reader, std::uint32_t count) {
  const auto bytes = reader.Take(PlaceSize * count);
  if (!bytes) {
    return std::nullopt;
  }
  EditPlaces places;
  ByteReader numbers(*bytes);
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto offset = *Number<std::uint32_t>(numbers);
    const auto removed = *Number<std::uint32_t>(numbers);
    places.Add({.Offset = offset, .Removed = removed, .Inserted = *Number<std::uint32_t>(numbers)});
  }
  return places;
}

std::optional<JournalChange> ReadEdit(BytesView payload) {
  ByteReader reader(payload);
  auto name = ReadName(reader);
  const auto flags = reader.U8();
  const auto count = Number<std::uint32_t>(reader);
  if (!name || !flags || *flags > (ReindexesFlag | ShortPlacesFlag) || !count) {
    return std::nullopt;
  }
  auto places =
      (*flags & ShortPlacesFlag) != 0 ? ReadShortPlaces(reader, *count) : ReadPlaces(reader, *count);
  if (!places) {
    return std::nullopt;
  }
  StreamEdit edit;
  edit.Reindexes = (*flags & ReindexesFlag) != 0;
  edit.Places = std::move(*places);
  const auto bytes = reader.Take(reader.Remaining());
  edit.Bytes.assign(bytes->begin(), bytes->end());
  return JournalChange{.Name = std::move(*name), .What = std::move(edit)};
}

std::optional<JournalChange> ReadPalette(BytesView payload) {
  ByteReader reader(payload);
  auto name = ReadName(reader);
  DvdPalette colours{};
  if (!name || reader.Remaining() != 3 * colours.size()) {
    return std::nullopt;
  }
  for (Rgb& colour : colours) {
    const auto entry = reader.Take(3);
    colour = MakeRgb((*entry)[0], (*entry)[1], (*entry)[2]);
  }
  return JournalChange{.Name = std::move(*name), .What = colours};
}

/// One whole record.
struct Record {
  Kind What{};
  BytesView Payload;
};

/// The next record; none where the file ends before it or inside it; Failure where it is damaged.
Result<std::optional<Record>> ReadRecord(ByteReader& reader) {
  using Next = std::optional<Record>;
  const std::size_t start = reader.Position();
  const auto damaged = [start] {
    return Failure{Words::Tr("it is damaged at byte %1", {std::to_string(start)})};
  };
  const auto head = reader.Take(HeadSize);
  if (!head) {
    return Next();
  }
  ByteReader fields(head->subspan(TagSize));
  const auto length = Number<std::uint64_t>(fields);
  const auto payloadHash = Number<std::uint64_t>(fields);
  const auto headHash = Number<std::uint64_t>(fields);
  if (!std::ranges::equal(head->first(Form.size()), Form) ||
      headHash != ContentHash(head->first(CheckedHeadSize))) {
    return damaged();
  }
  const auto payload = reader.Take(*length);
  if (!payload) {
    return Next();
  }
  if (payloadHash != ContentHash(*payload)) {
    return damaged();
  }
  return Next({.What = static_cast<Kind>((*head)[Form.size()]), .Payload = *payload});
}

/// A change drops those that were undone before it.
bool AddChange(Journal& journal, std::optional<JournalChange> change) {
  if (!change) {
    return false;
  }
  journal.Changes.resize(journal.Done);
  journal.Changes.push_back(std::move(*change));
  ++journal.Done;
  return true;
}

/// Undo and redo; a step before the first change wraps to more than there are.
bool MoveTo(Journal& journal, std::size_t done) {
  const bool isThere = done <= journal.Changes.size();
  journal.Done = isThere ? done : journal.Done;
  return isThere;
}

/// What a record after the first says; false where that makes no sense.
bool AddRecord(Journal& journal, const Record& record) {
  switch (record.What) {
    case Kind::Edit:
      return AddChange(journal, ReadEdit(record.Payload));
    case Kind::Palette:
      return AddChange(journal, ReadPalette(record.Payload));
    case Kind::Undo:
      return record.Payload.empty() && MoveTo(journal, journal.Done - 1);
    case Kind::Redo:
      return record.Payload.empty() && MoveTo(journal, journal.Done + 1);
    case Kind::Base:
      break;
  }
  return false;
}

bool SetBase(Journal& journal, const Record& record) {
  auto base = record.What == Kind::Base ? ReadBase(record.Payload) : std::nullopt;
  if (base) {
    journal.Base = std::move(*base);
  }
  return base.has_value();
}

}  // namespace

void WriteJournalBase(const JournalBase& base, Bytes& out) {
  RecordWriter record(Kind::Base, 16 + base.Path.size(), out);
  record.Number(base.Length);
  record.Number(base.Hash);
  record.Text(base.Path);
}

void WriteJournalEdit(std::string_view name, const StreamEdit& edit, Bytes& out) {
  name = Cut(name);
  const bool areShort = edit.Places.AreShort();
  const std::size_t placeSize = areShort ? ShortPlaceSize : PlaceSize;
  RecordWriter record(Kind::Edit,
                      2 + name.size() + 1 + 4 + placeSize * edit.Places.size() + edit.Bytes.size(), out);
  record.Name(name);
  record.Number(
      static_cast<std::uint8_t>((edit.Reindexes ? ReindexesFlag : 0U) | (areShort ? ShortPlacesFlag : 0U)));
  record.Number(static_cast<std::uint32_t>(edit.Places.size()));
  record.Places(edit.Places);
  record.Add(edit.Bytes);
}

void WriteJournalPalette(std::string_view name, const DvdPalette& colours, Bytes& out) {
  name = Cut(name);
  RecordWriter record(Kind::Palette, 2 + name.size() + 3 * colours.size(), out);
  record.Name(name);
  for (const Rgb colour : colours) {
    record.Add(BytesView(LittleEndian(colour)).first(3));
  }
}

void WriteJournalUndo(Bytes& out) {
  const RecordWriter record(Kind::Undo, 0, out);
}

void WriteJournalRedo(Bytes& out) {
  const RecordWriter record(Kind::Redo, 0, out);
}

Result<Journal> ReadJournal(BytesView bytes) {
  ByteReader reader(bytes);
  Journal journal;
  for (;;) {
    const std::size_t start = reader.Position();
    const auto next = ReadRecord(reader);
    if (!next) {
      return next.Why();
    }
    const std::optional<Record>& record = *next;
    if (!record) {
      return journal;
    }
    const bool makesSense = start == 0 ? SetBase(journal, *record) : AddRecord(journal, *record);
    if (!makesSense) {
      return Failure{Words::Tr("the record at byte %1 makes no sense", {std::to_string(start)})};
    }
    journal.Length = reader.Position();
  }
}

}  // namespace quillmark
