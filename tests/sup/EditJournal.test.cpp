#include "sup/EditJournal.h"

#include <gtest/gtest.h>

#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;

// Records as they stand in a file; their hashes were worked out apart from this program.

const JournalBase Base = {.Length = 6, .Hash = 0x0123456789ABCDEF, .Path = "a.sup"};
const Bytes BaseRecord = {'Q',  'J',  '1',  'B',                           //
                          0x15, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // payload length
                          0x85, 0xF3, 0x41, 0x33, 0xD7, 0xD0, 0x37, 0x9B,  // its hash
                          0xA5, 0x88, 0x94, 0x02, 0x20, 0xA2, 0x99, 0xDD,  // the hash of all before
                          0x06, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // length of the content
                          0xEF, 0xCD, 0xAB, 0x89, 0x67, 0x45, 0x23, 0x01,  // its hash
                          'a',  '.',  's',  'u',  'p'};

/// Bytes 1 and 2 become 11 22.
const StreamEdit SetCodes = {
    .Places = {{.Offset = 1, .Removed = 2, .Inserted = 2}}, .Bytes = {0x11, 0x22}, .Reindexes = false};
const Bytes SetCodesRecord = {'Q',  'J',  '1',  'E',                           //
                              0x11, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // payload length
                              0x9F, 0xE2, 0x09, 0x09, 0x9C, 0xC4, 0xA2, 0xC3,  // its hash
                              0xF9, 0x90, 0x98, 0x82, 0xDC, 0x29, 0x43, 0xE7,  // the hash of all before
                              0x03, 0x00, 'S',  'e',  't',                     // name
                              0x02,                    // the index stays, places are short
                              0x01, 0x00, 0x00, 0x00,  // one place
                              0x01, 0x00, 0x00, 0x00,  // at byte 1
                              0x02,                    // 2 bytes for 2
                              0x11, 0x22};
/// The same edit with a place in the long form, which older programs wrote.
const Bytes SetCodesLongRecord = {'Q',  'J',  '1',  'E',                           //
                                  0x18, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // payload length
                                  0xDA, 0x93, 0x2D, 0x85, 0x08, 0x44, 0x94, 0x3C,  // its hash
                                  0xC5, 0x6C, 0xDB, 0xA9, 0x8D, 0x7D, 0x50, 0x06,  // the hash of all before
                                  0x03, 0x00, 'S',  'e',  't',                     // name
                                  0x00,                                            // the index stays
                                  0x01, 0x00, 0x00, 0x00,                          // one place
                                  0x01, 0x00, 0x00, 0x00,                          // at byte 1
                                  0x02, 0x00, 0x00, 0x00,                          // 2 bytes out
                                  0x02, 0x00, 0x00, 0x00,                          // 2 bytes in
                                  0x11, 0x22};

/// Byte 0 goes, three bytes come in before byte 4.
const StreamEdit MoveBytes = {
    .Places = {{.Offset = 0, .Removed = 1, .Inserted = 0}, {.Offset = 4, .Removed = 0, .Inserted = 3}},
    .Bytes = {0xA1, 0xA2, 0xA3},
    .Reindexes = true};
const Bytes MoveBytesRecord = {'Q',  'J',  '1',  'E',                           //
                               0x22, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // payload length
                               0x5F, 0x25, 0x63, 0x68, 0xC4, 0x64, 0x0A, 0xE4,  // its hash
                               0x75, 0xF6, 0x80, 0x5B, 0x31, 0xD1, 0x27, 0xFF,  // the hash of all before
                               0x00, 0x00,                                      // no name
                               0x01,                                            // the index is made anew
                               0x02, 0x00, 0x00, 0x00,                          // two places
                               0x00, 0x00, 0x00, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  //
                               0x04, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x03, 0x00, 0x00, 0x00,  //
                               0xA1, 0xA2, 0xA3};

/// Entry i is red i, green 20 + i, blue 40 + i, in hexadecimal.
const DvdPalette Palette = {0x402000, 0x412101, 0x422202, 0x432303, 0x442404, 0x452505, 0x462606, 0x472707,
                            0x482808, 0x492909, 0x4A2A0A, 0x4B2B0B, 0x4C2C0C, 0x4D2D0D, 0x4E2E0E, 0x4F2F0F};
const Bytes PaletteRecord = {'Q',  'J',  '1',  'P',                           //
                             0x35, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // payload length
                             0xCC, 0x9B, 0x3B, 0x5C, 0xF9, 0xCF, 0xDF, 0x54,  // its hash
                             0x69, 0x30, 0x34, 0x22, 0x69, 0x7B, 0x8F, 0x63,  // the hash of all before
                             0x03, 0x00, 'P',  'a',  'l',                     // name; then red, green, blue
                             0x00, 0x20, 0x40, 0x01, 0x21, 0x41, 0x02, 0x22, 0x42, 0x03, 0x23, 0x43,  //
                             0x04, 0x24, 0x44, 0x05, 0x25, 0x45, 0x06, 0x26, 0x46, 0x07, 0x27, 0x47,  //
                             0x08, 0x28, 0x48, 0x09, 0x29, 0x49, 0x0A, 0x2A, 0x4A, 0x0B, 0x2B, 0x4B,  //
                             0x0C, 0x2C, 0x4C, 0x0D, 0x2D, 0x4D, 0x0E, 0x2E, 0x4E, 0x0F, 0x2F, 0x4F};

const Bytes UndoRecord = {'Q',  'J',  '1',  'U',                           //
                          0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // payload length
                          0xB0, 0x17, 0x19, 0xCB, 0x98, 0x1A, 0xD2, 0x32,  // its hash
                          0x6E, 0x6F, 0x1B, 0x73, 0x55, 0xEA, 0x6D, 0xD4};
const Bytes RedoRecord = {'Q',  'J',  '1',  'R',                           //
                          0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // payload length
                          0xB0, 0x17, 0x19, 0xCB, 0x98, 0x1A, 0xD2, 0x32,  // its hash
                          0xA7, 0x46, 0x9C, 0x68, 0x00, 0x46, 0xC0, 0x27};

const JournalChange SetCodesChange = {.Name = "Set", .What = SetCodes};
const JournalChange MoveBytesChange = {.Name = "", .What = MoveBytes};
const JournalChange PaletteChange = {.Name = "Pal", .What = Palette};

using JournalChanges = std::vector<JournalChange>;

void ExpectDamaged(const Bytes& bytes) {
  EXPECT_FALSE(ReadJournal(bytes).IsOk());
}

/// 2,500 places, every 4 bytes one: so many bytes out, and a 7 in.
Bytes RecordOfThousands(std::size_t removed) {
  StreamEdit edit;
  for (std::size_t i = 0; i < 2500; ++i) {
    edit.Replace(i * 4, removed, Bytes{7});
  }
  Bytes record;
  WriteJournalEdit("x", edit, record);
  return record;
}

/// `4 * i`, below 65,536, as a record has it.
Bytes OffsetOf(unsigned i) {
  return {static_cast<std::uint8_t>(4 * i), static_cast<std::uint8_t>(4 * i >> 8U), 0, 0};
}

TEST(WriteJournalEdit, OfThousandsOfShortPlacesHasTheirOffsetsAndThenTheirLengths) {
  const Bytes record = RecordOfThousands(1);
  // A head of 28 bytes, a name of one, a flag and the number of places; 5 bytes for each and its one byte.
  ASSERT_EQ(record.size(), 28U + 3 + 1 + 4 + 2500 * 5 + 2500);
  EXPECT_EQ(record[31], 2);
  for (unsigned i = 0; i < 2500; ++i) {
    const auto at = record.begin() + 36 + 4 * i;
    ASSERT_EQ(Bytes(at, at + 4), OffsetOf(i));
  }
  EXPECT_EQ(Bytes(record.begin() + 36 + 2500 * 4, record.begin() + 36 + 2500 * 5), Bytes(2500, 1));
}

TEST(WriteJournalEdit, OfThousandsOfOtherPlacesHasEachOneInItsRecord) {
  const Bytes record = RecordOfThousands(2);
  // As above, with 12 bytes for each place.
  ASSERT_EQ(record.size(), 28U + 3 + 1 + 4 + 2500 * 12 + 2500);
  EXPECT_EQ(record[31], 0);
  for (unsigned i = 0; i < 2500; ++i) {
    const auto at = record.begin() + 36 + 12 * i;
    ASSERT_EQ(Bytes(at, at + 12), Join({OffsetOf(i), {2, 0, 0, 0, 1, 0, 0, 0}}));
  }
}

TEST(WriteJournal, BaseRecord) {
  Bytes bytes;
  WriteJournalBase(Base, bytes);
  EXPECT_EQ(bytes, BaseRecord);
}

TEST(WriteJournal, EditRecords) {
  Bytes bytes;
  WriteJournalEdit("Set", SetCodes, bytes);
  WriteJournalEdit("", MoveBytes, bytes);
  EXPECT_EQ(bytes, Join({SetCodesRecord, MoveBytesRecord}));
}

TEST(WriteJournal, PaletteRecordHasALongNameWhole) {
  Bytes bytes;
  WriteJournalPalette(std::string(100, 'n'), Palette, bytes);
  EXPECT_EQ(bytes.size(), PaletteRecord.size() + 97);
}

TEST(WriteJournal, PaletteRecord) {
  Bytes bytes;
  WriteJournalPalette("Pal", Palette, bytes);
  EXPECT_EQ(bytes, PaletteRecord);
}

TEST(WriteJournal, Steps) {
  Bytes bytes;
  WriteJournalUndo(bytes);
  WriteJournalRedo(bytes);
  EXPECT_EQ(bytes, Join({UndoRecord, RedoRecord}));
}

TEST(WriteJournal, LongestNameIsKeptAndALongerOneIsCut) {
  for (const std::size_t length : {65535U, 65536U}) {
    Bytes bytes = BaseRecord;
    WriteJournalEdit(std::string(length, 'n'), SetCodes, bytes);
    const auto journal = ReadJournal(bytes);
    ASSERT_TRUE(journal.IsOk()) << length;
    EXPECT_EQ(journal->Changes.at(0).Name, std::string(65535, 'n'));
    EXPECT_EQ(journal->Changes.at(0).What, SetCodesChange.What);
  }
}

TEST(WriteJournal, LongestNameOfAPaletteIsKeptAndALongerOneIsCut) {
  for (const std::size_t length : {65535U, 65536U}) {
    Bytes bytes = BaseRecord;
    WriteJournalPalette(std::string(length, 'n'), Palette, bytes);
    const auto journal = ReadJournal(bytes);
    ASSERT_TRUE(journal.IsOk()) << length;
    EXPECT_EQ(journal->Changes.at(0).Name, std::string(65535, 'n'));
  }
}

TEST(ReadJournal, ChangesStandInTheirOrder) {
  const auto journal = ReadJournal(Join({BaseRecord, SetCodesRecord, PaletteRecord, MoveBytesRecord}));
  ASSERT_TRUE(journal.IsOk());
  EXPECT_EQ(journal->Base, Base);
  EXPECT_EQ(journal->Changes, (JournalChanges{SetCodesChange, PaletteChange, MoveBytesChange}));
  EXPECT_EQ(journal->Done, 3U);
  EXPECT_EQ(journal->Length, 49U + 45U + 81U + 62U);
  EXPECT_TRUE(journal->HasUnsavedEdits());
}

TEST(ReadJournal, ShortPlacesOfAnEditThatReindexes) {
  // Its length, the two hashes, no name, both flags, one place at byte 9 of 3 bytes for 3.
  const Bytes record = {'Q',  'J',  '1',  'E',  0x0F, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                        0x00, 0x4E, 0x46, 0xF7, 0xD8, 0x97, 0x67, 0xC9, 0x8E, 0x74, 0x61,
                        0xD7, 0xE3, 0x89, 0x9B, 0xA1, 0x27, 0x00, 0x00, 0x03, 0x01, 0x00,
                        0x00, 0x00, 0x09, 0x00, 0x00, 0x00, 0x03, 'a',  'b',  'c'};
  const auto journal = ReadJournal(Join({BaseRecord, record}));
  ASSERT_TRUE(journal.IsOk());
  const StreamEdit expected = {
      .Places = {{.Offset = 9, .Removed = 3, .Inserted = 3}}, .Bytes = {'a', 'b', 'c'}, .Reindexes = true};
  EXPECT_EQ(journal->Changes, (JournalChanges{{.Name = "", .What = expected}}));
}

TEST(ReadJournal, PlacesInTheLongFormOfOlderPrograms) {
  const auto journal = ReadJournal(Join({BaseRecord, SetCodesLongRecord}));
  ASSERT_TRUE(journal.IsOk());
  EXPECT_EQ(journal->Changes, JournalChanges{SetCodesChange});
}

TEST(ReadJournal, UndoneChangeIsKeptButNotInForce) {
  const auto journal = ReadJournal(Join({BaseRecord, SetCodesRecord, PaletteRecord, UndoRecord}));
  ASSERT_TRUE(journal.IsOk());
  EXPECT_EQ(journal->Changes, (JournalChanges{SetCodesChange, PaletteChange}));
  EXPECT_EQ(journal->Done, 1U);
}

TEST(ReadJournal, RedonePutsTheChangeInForceAgain) {
  const auto journal =
      ReadJournal(Join({BaseRecord, SetCodesRecord, PaletteRecord, UndoRecord, UndoRecord, RedoRecord}));
  ASSERT_TRUE(journal.IsOk());
  EXPECT_EQ(journal->Done, 1U);
}

TEST(ReadJournal, ChangeBehindAnUndoneOneReplacesIt) {
  const auto journal =
      ReadJournal(Join({BaseRecord, SetCodesRecord, PaletteRecord, UndoRecord, MoveBytesRecord}));
  ASSERT_TRUE(journal.IsOk());
  EXPECT_EQ(journal->Changes, (JournalChanges{SetCodesChange, MoveBytesChange}));
  EXPECT_EQ(journal->Done, 2U);
}

TEST(ReadJournal, AllUndoneLeavesNothingUnsaved) {
  const auto journal = ReadJournal(Join({BaseRecord, SetCodesRecord, UndoRecord}));
  ASSERT_TRUE(journal.IsOk());
  EXPECT_FALSE(journal->HasUnsavedEdits());
}

TEST(ReadJournal, UndoWithoutAChangeMakesNoSense) {
  ExpectDamaged(Join({BaseRecord, UndoRecord}));
  ExpectDamaged(Join({BaseRecord, SetCodesRecord, UndoRecord, UndoRecord}));
}

TEST(ReadJournal, RedoWithoutAnUndoneChangeMakesNoSense) {
  ExpectDamaged(Join({BaseRecord, RedoRecord}));
  ExpectDamaged(Join({BaseRecord, SetCodesRecord, RedoRecord}));
  ExpectDamaged(Join({BaseRecord, SetCodesRecord, UndoRecord, PaletteRecord, RedoRecord}));
}

TEST(ReadJournal, BaseStandsFirstAndNowhereElse) {
  ExpectDamaged(SetCodesRecord);
  ExpectDamaged(UndoRecord);
  ExpectDamaged(Join({BaseRecord, BaseRecord}));
}

// Whatever the moment at which a write broke off: the whole records before it count, and nothing is damaged.
TEST(ReadJournal, CutAtEveryLengthGivesTheWholeRecords) {
  const std::vector<Bytes> records = {BaseRecord, SetCodesRecord, PaletteRecord, MoveBytesRecord, UndoRecord};
  const std::vector<std::size_t> doneAfter = {0, 1, 2, 3, 2};
  Bytes all;
  for (const Bytes& record : records) {
    all.insert(all.end(), record.begin(), record.end());
  }
  for (std::size_t length = 0; length <= all.size(); ++length) {
    const auto journal = ReadJournal(std::span(all).first(length));
    ASSERT_TRUE(journal.IsOk()) << length;
    std::size_t whole = 0;
    std::size_t end = 0;
    while (whole < records.size() && end + records[whole].size() <= length) {
      end += records[whole++].size();
    }
    ASSERT_EQ(journal->Length, end) << length;
    ASSERT_EQ(journal->Done, whole == 0 ? 0 : doneAfter[whole - 1]) << length;
    ASSERT_EQ(journal->Base, whole == 0 ? JournalBase() : Base) << length;
  }
}

TEST(ReadJournal, EveryFlippedBitIsDamage) {
  const Bytes all =
      Join({BaseRecord, SetCodesRecord, PaletteRecord, MoveBytesRecord, UndoRecord, RedoRecord});
  for (std::size_t bit = 0; bit < 8 * all.size(); ++bit) {
    Bytes flipped = all;
    flipped[bit / 8] = static_cast<std::uint8_t>(flipped[bit / 8] ^ 1U << bit % 8);
    ASSERT_FALSE(ReadJournal(flipped).IsOk()) << "bit " << bit % 8 << " of byte " << bit / 8;
  }
}

TEST(ReadJournal, ReasonSaysWhereTheDamageStands) {
  Bytes all = Join({BaseRecord, SetCodesRecord});
  all.back() = 0x23;
  EXPECT_EQ(ReadJournal(all).Reason(), "it is damaged at byte 49");
}

// With hashes that are right: what only a faulty program could have written.
namespace malformed {

const Bytes UnknownKind = {'Q',  'J',  '1',  'X',                           //
                           0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,  // payload length
                           0xB0, 0x17, 0x19, 0xCB, 0x98, 0x1A, 0xD2, 0x32,  // its hash
                           0x1E, 0x40, 0x05, 0x69, 0xCD, 0x7A, 0xE0, 0x01};
// An edit of 2^32 - 1 places in 7 bytes.
const Bytes TooManyPlaces = {0x51, 0x4A, 0x31, 0x45, 0x07, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                             0x68, 0x20, 0x51, 0x94, 0x50, 0x46, 0x29, 0xFE, 0x4E, 0x1C, 0x7D, 0x37,
                             0x2B, 0xD0, 0x41, 0x97, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0xFF};
// The same, of short places.
const Bytes TooManyShortPlaces = {0x51, 0x4A, 0x31, 0x45, 0x07, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                                  0xD7, 0xE3, 0x6A, 0xD2, 0xA9, 0x30, 0x9A, 0x1F, 0xBF, 0x7C, 0x44, 0xC5,
                                  0x26, 0xB4, 0x19, 0xF9, 0x00, 0x00, 0x02, 0xFF, 0xFF, 0xFF, 0xFF};
// A name of 9 bytes in a record of 7.
const Bytes NameBehindTheEnd = {0x51, 0x4A, 0x31, 0x45, 0x07, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                                0x18, 0x7A, 0xA8, 0x57, 0x82, 0xA0, 0x07, 0x8F, 0x34, 0xE7, 0x76, 0x95,
                                0xBD, 0xAF, 0x6F, 0xE0, 0x09, 0x00, 0x53, 0x65, 0x74, 0x00, 0x00};
const Bytes UnknownFlag = {0x51, 0x4A, 0x31, 0x45, 0x07, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                           0xCF, 0xF9, 0x51, 0xA2, 0xC4, 0x6A, 0xEF, 0x81, 0x4D, 0x7F, 0xA5, 0xBF,
                           0xAA, 0xDE, 0xFF, 0x0A, 0x00, 0x00, 0x04, 0x00, 0x00, 0x00, 0x00};
const Bytes PaletteOfFifteen = {0x51, 0x4A, 0x31, 0x50, 0x2F, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xE8,
                                0x88, 0x04, 0x54, 0x61, 0xBB, 0xBE, 0xDE, 0x6E, 0xFA, 0x10, 0xB9, 0x3C, 0xB8,
                                0x9A, 0x35, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                                0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                                0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                                0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
const Bytes ShortBase = {0x51, 0x4A, 0x31, 0x42, 0x0F, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                         0x00, 0x30, 0xAF, 0x06, 0xDD, 0x9A, 0x2A, 0xD7, 0x0B, 0x7B, 0x36,
                         0x5F, 0xB4, 0xDE, 0x98, 0xD6, 0x03, 0x00, 0x00, 0x00, 0x00, 0x00,
                         0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
const Bytes UndoWithPayload = {0x51, 0x4A, 0x31, 0x55, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00,
                               0x00, 0x00, 0x96, 0xEC, 0xF7, 0x68, 0xE4, 0x92, 0xE3, 0xDB,
                               0x35, 0x40, 0xA3, 0x0E, 0xC5, 0xCC, 0x58, 0x7D, 0x00};
// Payloads that end inside the length of a name, behind the name, and behind the flags.
const Bytes EditOfOneByte = {0x51, 0x4A, 0x31, 0x45, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00,
                             0x00, 0x00, 0x96, 0xEC, 0xF7, 0x68, 0xE4, 0x92, 0xE3, 0xDB,
                             0xAA, 0x72, 0x1F, 0x0B, 0x59, 0x92, 0x60, 0xE7, 0x00};
const Bytes EditWithoutFlags = {0x51, 0x4A, 0x31, 0x45, 0x02, 0x00, 0x00, 0x00, 0x00, 0x00,
                                0x00, 0x00, 0x6A, 0x34, 0xE6, 0xC1, 0x09, 0x7A, 0xE0, 0xD7,
                                0x43, 0x57, 0x94, 0x3D, 0x7F, 0x92, 0xA7, 0xF9, 0x00, 0x00};
const Bytes EditWithoutCount = {0x51, 0x4A, 0x31, 0x45, 0x04, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                                0x00, 0x3D, 0x72, 0xEA, 0xC3, 0x23, 0xF0, 0xE4, 0x0B, 0xB2, 0xAD,
                                0xBB, 0x66, 0x76, 0xD0, 0x5E, 0x99, 0x00, 0x00, 0x00, 0x01};
const Bytes PaletteOfOneByte = {0x51, 0x4A, 0x31, 0x50, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00,
                                0x00, 0x00, 0x96, 0xEC, 0xF7, 0x68, 0xE4, 0x92, 0xE3, 0xDB,
                                0x27, 0x69, 0xE1, 0x88, 0x20, 0x22, 0x46, 0xC0, 0x00};
const Bytes BaseOfSevenBytes = {0x51, 0x4A, 0x31, 0x42, 0x07, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
                                0x3A, 0x2D, 0xC5, 0x11, 0xC0, 0x11, 0xD0, 0x4E, 0xC3, 0x98, 0xE5, 0x93,
                                0x87, 0x34, 0x13, 0xB4, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
const Bytes RedoWithPayload = {0x51, 0x4A, 0x31, 0x52, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00,
                               0x00, 0x00, 0x96, 0xEC, 0xF7, 0x68, 0xE4, 0x92, 0xE3, 0xDB,
                               0x51, 0x22, 0x4B, 0xBA, 0xFA, 0x08, 0x8D, 0xC9, 0x00};

}  // namespace malformed

TEST(ReadJournal, RecordsThatMakeNoSenseAreRefused) {
  ExpectDamaged(Join({BaseRecord, malformed::UnknownKind}));
  ExpectDamaged(Join({BaseRecord, malformed::TooManyPlaces}));
  ExpectDamaged(Join({BaseRecord, malformed::TooManyShortPlaces}));
  ExpectDamaged(Join({BaseRecord, malformed::NameBehindTheEnd}));
  ExpectDamaged(Join({BaseRecord, malformed::UnknownFlag}));
  ExpectDamaged(Join({BaseRecord, malformed::PaletteOfFifteen}));
  ExpectDamaged(malformed::ShortBase);
  ExpectDamaged(Join({BaseRecord, SetCodesRecord, malformed::UndoWithPayload}));
  ExpectDamaged(Join({BaseRecord, SetCodesRecord, UndoRecord, malformed::RedoWithPayload}));
  ExpectDamaged(Join({BaseRecord, malformed::EditOfOneByte}));
  ExpectDamaged(Join({BaseRecord, malformed::EditWithoutFlags}));
  ExpectDamaged(Join({BaseRecord, malformed::EditWithoutCount}));
  ExpectDamaged(Join({BaseRecord, malformed::PaletteOfOneByte}));
  ExpectDamaged(malformed::BaseOfSevenBytes);
}

}  // namespace
}  // namespace quillmark
