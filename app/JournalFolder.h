#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include <QString>
#include <QStringList>

#include "base/Result.h"
#include "files/AppendFile.h"
#include "sup/EditJournal.h"

namespace quillmark {

/// A journal that was left behind by a window that is gone, with the file, which belongs to whoever holds
/// this.
struct LeftJournal {
  AppendFile File;
  Journal Content;
};

/// The folder with the journals of unsaved edits: one file for each window that edits a stream. A file's name
/// holds the length and the hash of the content that its edits start from, so that looking for the journals
/// of a stream opens no others.
class JournalFolder {
 public:
  /// `quillmark` below $XDG_STATE_HOME, or else below ~/.local/state; elsewhere than on Linux, where the
  /// system keeps such files.
  [[nodiscard]] static QString UsualPath();

  explicit JournalFolder(QString path = UsualPath()) : path_(std::move(path)) {}

  [[nodiscard]] const QString& Path() const { return path_; }

  /// A new, empty journal for that content; the folder is made where it is missing.
  [[nodiscard]] Result<AppendFile> Create(const JournalBase& base) const;

  struct Search {
    std::optional<LeftJournal> Found;  ///< the newest one with unsaved edits
    QStringList PutAside;              ///< the new paths of damaged ones
  };
  /// Looks for the journals of a content of `length` bytes; `hash` is asked for that content's only where
  /// there are journals of that length. Journals of other windows are left alone, and those without unsaved
  /// edits removed.
  [[nodiscard]] Search Find(std::uint64_t length, const std::function<std::uint64_t()>& hash) const;

 private:
  QString path_;
};

}  // namespace quillmark
