#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Result.h"
#include "palette/Colour.h"
#include "sup/StreamEdit.h"

namespace quillmark {

/// A journal of the edits of one stream since it was loaded or saved: records, one after another, of which
/// the first names the content that the edits start from. Whoever writes one appends whole records, so that
/// it may end inside the last record, and nowhere else.

/// The content that a journal's edits start from.
struct JournalBase {
  std::uint64_t Length = 0;  ///< bytes
  std::uint64_t Hash = 0;    ///< ContentHash of them
  std::string Path;          ///< UTF-8; where it was loaded from, for people

  bool operator==(const JournalBase&) const = default;
};

/// One edit: a change of the stream's bytes, or the colours that the palette has afterwards.
struct JournalChange {
  std::string Name;  ///< UTF-8, as Undo names it
  std::variant<StreamEdit, DvdPalette> What;

  bool operator==(const JournalChange&) const = default;
};

/// Each appends one record to `out`. An edit is written as it is before it is applied; of a name, what is
/// longer than 65,535 bytes is left out.
void WriteJournalBase(const JournalBase& base, std::vector<std::uint8_t>& out);
void WriteJournalEdit(std::string_view name, const StreamEdit& edit, std::vector<std::uint8_t>& out);
void WriteJournalPalette(std::string_view name, const DvdPalette& colours, std::vector<std::uint8_t>& out);
void WriteJournalUndo(std::vector<std::uint8_t>& out);
void WriteJournalRedo(std::vector<std::uint8_t>& out);

/// What a journal says.
struct Journal {
  JournalBase Base;
  std::vector<JournalChange> Changes;  ///< in the order to apply them in
  std::size_t Done = 0;                ///< how many of them are in force; those after them were undone
  /// Bytes up to the end of the last whole record; 0 where not even the first one is whole, and there is
  /// nothing else here then.
  std::size_t Length = 0;

  [[nodiscard]] bool HasUnsavedEdits() const { return Done > 0; }
};

/// Reads the bytes of a journal file. A record that the end cuts off was being written when the program
/// ended, and counts as not there. Any other damage, and records that make no sense, fail: nothing of such a
/// journal is to be trusted. Whether an edit fits the stream is for ApplyEdit to say.
[[nodiscard]] Result<Journal> ReadJournal(std::span<const std::uint8_t> bytes);

}  // namespace quillmark
