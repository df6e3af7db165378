#include "sup/EditJournal.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/ByteReader.h"
#include "base/ContentHash.h"

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
constexpr std::uint8_t ReindexesFlag = 1;

/// Writes big-endian numbers into bytes that have room for them.
class Pen {
 public:
  explicit Pen(std::span<std::uint8_t> bytes) : at_(bytes.data()) {}

  void U8(std::uint8_t value) { *at_++ = value; }
  void U16(std::uint16_t value) {
    U8(static_cast<std::uint8_t>(value >> 8U));
    U8(static_cast<std::uint8_t>(value));
  }
  void U32(std::uint32_t value) {
    U16(static_cast<std::uint16_t>(value >> 16U));
    U16(static_cast<std::uint16_t>(value));
  }
  void U64(std::uint64_t value) {
    U32(static_cast<std::uint32_t>(value >> 32U));
    U32(static_cast<std::uint32_t>(value));
  }
  template <typename Container>
  void Copy(const Container& bytes) {
    at_ = std::copy(bytes.begin(), bytes.end(), at_);
  }

 private:
  std::uint8_t* at_;
};

/// Appends a record whose payload of `length` bytes `fill` writes.
template <typename Fill>
void WriteRecord(Kind kind, std::size_t length, Bytes& out, const Fill& fill) {
  const std::size_t start = out.size();
  out.resize(start + HeadSize + length);
  const auto head = std::span(out).subspan(start, HeadSize);
  const auto payload = std::span(out).subspan(start + HeadSize);
  fill(Pen(payload));
  Pen pen(head);
  pen.Copy(Form);
  pen.U8(static_cast<std::uint8_t>(kind));
  pen.U64(length);
  pen.U64(ContentHash(payload));
  pen.U64(ContentHash(head.first(CheckedHeadSize)));
}

std::string_view Cut(std::string_view name) {
  return name.substr(0, MaxNameLength);
}

void WriteName(Pen& pen, std::string_view name) {
  pen.U16(static_cast<std::uint16_t>(name.size()));
  pen.Copy(name);
}

std::optional<std::uint64_t> U64be(ByteReader& reader) {
  const auto high = reader.U32be();
  const auto low = reader.U32be();
  return high && low ? std::optional(std::uint64_t{*high} << 32U | *low) : std::nullopt;
}

std::string TextOf(BytesView bytes) {
  return {bytes.begin(), bytes.end()};
}

std::optional<std::string> ReadName(ByteReader& reader) {
  const auto length = reader.U16be();
  const auto name = length ? reader.Take(*length) : std::nullopt;
  return name ? std::optional(TextOf(*name)) : std::nullopt;
}

std::optional<JournalBase> ReadBase(BytesView payload) {
  ByteReader reader(payload);
  const auto length = U64be(reader);
  const auto hash = U64be(reader);
  const auto path = reader.Take(reader.Remaining());
  if (!length || !hash || !path) {
    return std::nullopt;
  }
  return JournalBase{.Length = *length, .Hash = *hash, .Path = TextOf(*path)};
}

std::optional<JournalChange> ReadEdit(BytesView payload) {
  ByteReader reader(payload);
  auto name = ReadName(reader);
  const auto flags = reader.U8();
  const auto count = reader.U32be();
  if (!name || !flags || *flags > ReindexesFlag || !count || *count > reader.Remaining() / PlaceSize) {
    return std::nullopt;
  }
  StreamEdit edit;
  edit.Reindexes = *flags == ReindexesFlag;
  edit.Places.reserve(*count);
  for (std::uint32_t i = 0; i < *count; ++i) {
    const auto offset = reader.U32be();
    const auto removed = reader.U32be();
    const auto inserted = reader.U32be();
    if (!offset || !removed || !inserted) {
      return std::nullopt;
    }
    edit.Places.push_back({.Offset = *offset, .Removed = *removed, .Inserted = *inserted});
  }
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
  const auto damaged = [start] { return Failure{"it is damaged at byte " + std::to_string(start)}; };
  const auto head = reader.Take(HeadSize);
  if (!head) {
    return Next();
  }
  ByteReader fields(head->subspan(TagSize));
  const auto length = U64be(fields);
  const auto payloadHash = U64be(fields);
  const auto headHash = U64be(fields);
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

/// What a record behind the first says; false where that makes no sense.
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
  WriteRecord(Kind::Base, 16 + base.Path.size(), out, [&](Pen pen) {
    pen.U64(base.Length);
    pen.U64(base.Hash);
    pen.Copy(base.Path);
  });
}

void WriteJournalEdit(std::string_view name, const StreamEdit& edit, Bytes& out) {
  name = Cut(name);
  const std::size_t length = 2 + name.size() + 1 + 4 + PlaceSize * edit.Places.size() + edit.Bytes.size();
  WriteRecord(Kind::Edit, length, out, [&](Pen pen) {
    WriteName(pen, name);
    pen.U8(edit.Reindexes ? ReindexesFlag : 0);
    pen.U32(static_cast<std::uint32_t>(edit.Places.size()));
    for (const StreamEdit::Place& place : edit.Places) {
      pen.U32(place.Offset);
      pen.U32(place.Removed);
      pen.U32(place.Inserted);
    }
    pen.Copy(edit.Bytes);
  });
}

void WriteJournalPalette(std::string_view name, const DvdPalette& colours, Bytes& out) {
  name = Cut(name);
  WriteRecord(Kind::Palette, 2 + name.size() + 3 * colours.size(), out, [&](Pen pen) {
    WriteName(pen, name);
    for (const Rgb colour : colours) {
      pen.U8(static_cast<std::uint8_t>(colour));
      pen.U8(static_cast<std::uint8_t>(colour >> 8U));
      pen.U8(static_cast<std::uint8_t>(colour >> 16U));
    }
  });
}

void WriteJournalUndo(Bytes& out) {
  WriteRecord(Kind::Undo, 0, out, [](Pen) {});
}

void WriteJournalRedo(Bytes& out) {
  WriteRecord(Kind::Redo, 0, out, [](Pen) {});
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
      return Failure{"the record at byte " + std::to_string(start) + " makes no sense"};
    }
    journal.Length = reader.Position();
  }
}

}  // namespace quillmark
