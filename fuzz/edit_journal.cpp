// Journals: reading one ends in a value or a refusal, and what was read reads the same when written again. As
// the hashes keep damage away from what a record says, the input is also taken as the payloads of sound
// records.

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "base/ByteReader.h"
#include "base/ContentHash.h"
#include "fuzz/Mutation.h"
#include "sup/EditJournal.h"

namespace {

using namespace quillmark;

using JournalBytes = std::vector<std::uint8_t>;

void Number(std::uint64_t number, JournalBytes& out) {
  for (unsigned shift = 0; shift < 64; shift += 8) {
    out.push_back(static_cast<std::uint8_t>(number >> shift));
  }
}

void Record(std::uint8_t kind, std::span<const std::uint8_t> payload, JournalBytes& out) {
  const std::size_t start = out.size();
  for (const char letter : {'Q', 'J', '1'}) {
    out.push_back(static_cast<std::uint8_t>(letter));
  }
  out.push_back(kind);
  Number(payload.size(), out);
  Number(ContentHash(payload), out);
  Number(ContentHash(std::span(out).subspan(start)), out);
  out.insert(out.end(), payload.begin(), payload.end());
}

/// A journal of the records that the input names: kind, payload length, payload.
JournalBytes JournalOf(std::span<const std::uint8_t> input) {
  constexpr std::array<std::uint8_t, 16> base{};
  JournalBytes journal;
  Record('B', base, journal);
  ByteReader reader(input);
  for (;;) {
    const auto kind = reader.U8();
    const auto length = reader.U8();
    if (!kind || !length) {
      return journal;
    }
    Record(*kind, *reader.Take(std::min<std::size_t>(*length, reader.Remaining())), journal);
  }
}

/// The records that say what was read.
JournalBytes Written(const Journal& journal) {
  JournalBytes bytes;
  WriteJournalBase(journal.Base, bytes);
  for (const JournalChange& change : journal.Changes) {
    if (const auto* edit = std::get_if<StreamEdit>(&change.What)) {
      WriteJournalEdit(change.Name, *edit, bytes);
    } else {
      WriteJournalPalette(change.Name, std::get<DvdPalette>(change.What), bytes);
    }
  }
  for (std::size_t undone = journal.Done; undone < journal.Changes.size(); ++undone) {
    WriteJournalUndo(bytes);
  }
  return bytes;
}

void Check(std::span<const std::uint8_t> bytes) {
  const auto journal = ReadJournal(bytes);
  if (!journal || journal->Length == 0) {
    return;
  }
  if (journal->Length > bytes.size() || journal->Done > journal->Changes.size()) {
    std::abort();
  }
  const auto again = ReadJournal(Written(*journal));
  if (!again || again->Base != journal->Base || again->Changes != journal->Changes ||
      again->Done != journal->Done) {
    std::abort();
  }
  // No edit, however it was named, reaches outside the bytes that it is applied to.
  JournalBytes content(64, 0x5A);
  for (const JournalChange& change : journal->Changes) {
    if (const auto* edit = std::get_if<StreamEdit>(&change.What)) {
      StreamEdit copy = *edit;
      const JournalBytes before = content;
      if (ApplyEdit(content, copy) && (!ApplyEdit(content, copy) || content != before)) {
        std::abort();
      }
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Check({data, size});
  Check(JournalOf({data, size}));
  return 0;
}

namespace {

/// By records as JournalOf takes them: kind, payload length, payload.
Pieces SplitRecords(std::span<const std::uint8_t> input) {
  Pieces records;
  while (!input.empty()) {
    const std::size_t named = input.size() < 2 ? 1 : std::size_t{2} + input[1];
    const auto record = input.first(std::min(named, input.size()));
    records.emplace_back(record.begin(), record.end());
    input = input.subspan(record.size());
  }
  return records;
}

/// A record of an edit of one place, of colours, or of a step back or forth.
Bytes NewRecord(Dice& dice) {
  JournalBytes journal;
  constexpr std::size_t Head = 28;
  switch (dice.Below(4)) {
    case 0:
      WriteJournalUndo(journal);
      break;
    case 1:
      WriteJournalRedo(journal);
      break;
    case 2:
      WriteJournalPalette("p", DvdPalette{}, journal);
      break;
    default: {
      const auto below = [&](std::size_t count) { return static_cast<std::uint32_t>(dice.Below(count)); };
      const std::uint32_t inserted = below(4);
      WriteJournalEdit("e",
                       {.Places = {{.Offset = below(64), .Removed = below(4), .Inserted = inserted}},
                        .Bytes = JournalBytes(inserted, dice.Byte())},
                       journal);
    }
  }
  Bytes record = {journal[3], static_cast<std::uint8_t>(journal.size() - Head)};
  Append(record, std::span(journal).subspan(Head));
  return record;
}

}  // namespace

QUILLMARK_MUTATOR(400, [](Bytes& input, Dice& dice) {
  Pieces records = SplitRecords(input);
  MutatePieces(
      records, dice, [&] { return NewRecord(dice); },
      [&](Bytes& record) {
        MutateAny(record);
        if (record.size() >= 2 && record.size() < 256 && !dice.OneIn(8)) {
          PutNumber(record, 1, record.size() - 2, 1);
        }
      });
  input = Joined(records);
})
