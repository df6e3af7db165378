#include "app/JournalFolder.h"

#include <utility>

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "base/Words.h"
#include "files/ReplaceFile.h"

namespace quillmark {
namespace {

/// What all names of the journals for contents of this length, and of this hash, start with.
QString NameStart(std::uint64_t length) {
  return QString::number(length) + u'-';
}

QString NameStart(std::uint64_t length, std::uint64_t hash) {
  return NameStart(length) + QString::number(hash, 16).rightJustified(16, u'0') + u'-';
}

// The ending carries the number of the form that sup/EditJournal writes.
const QLatin1String Ending(".journal1");

/// What an opened journal says, if that is anything to keep: one without unsaved edits is removed, a damaged
/// one put aside.
std::optional<Journal> Inspect(AppendFile& file, const JournalBase& base, QStringList& putAside) {
  const auto bytes = file.ReadAll();
  if (!bytes) {
    return std::nullopt;  // the disk's fault, not the journal's
  }
  auto journal = ReadJournal(*bytes);
  const bool isAnothers = journal && journal->Length > 0 &&
                          (journal->Base.Length != base.Length || journal->Base.Hash != base.Hash);
  if (!journal || isAnothers) {
    const auto aside = file.PutAside(QStringLiteral(".damaged"));
    putAside += aside ? *aside : file.Path();
    return std::nullopt;
  }
  if (!journal->HasUnsavedEdits()) {
    (void)file.Remove();
    return std::nullopt;
  }
  return std::move(*journal);
}

}  // namespace

QString JournalFolder::UsualPath() {
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
  QString state = qEnvironmentVariable("XDG_STATE_HOME");
  if (!QDir::isAbsolutePath(state)) {
    state = QDir::home().filePath(QStringLiteral(".local/state"));
  }
  return QDir(state).filePath(QStringLiteral("quillmark"));
#else
  return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
#endif
}

Result<AppendFile> JournalFolder::Create(const JournalBase& base) const {
  // As the standard has it, a folder of the user's alone.
  if (const auto made = MakePrivateFolder(path_); !made) {
    return Failure{Words::Tr("The folder %1 cannot be made", {path_.toStdString()})};
  }
  const QString start = QDir(path_).filePath(NameStart(base.Length, base.Hash));
  for (int number = 1;; ++number) {
    auto file = AppendFile::Create(start + QString::number(number) + Ending);
    if (!file) {
      return file.Why();
    }
    if (*file) {
      return std::move(**file);
    }
  }
}

JournalFolder::Search JournalFolder::Find(std::uint64_t length,
                                          const std::function<std::uint64_t()>& hash) const {
  Search search;
  const QDir folder(path_);
  const QString pattern = NameStart(length) + u'*' + Ending;
  const QFileInfoList journals = folder.entryInfoList({pattern}, QDir::Files, QDir::Time);
  if (journals.isEmpty()) {
    return search;
  }
  const JournalBase base = {.Length = length, .Hash = hash(), .Path = {}};
  const QString start = NameStart(length, base.Hash);
  for (const QFileInfo& info : journals) {
    if (!info.fileName().startsWith(start)) {
      continue;
    }
    auto file = AppendFile::Open(info.filePath());
    if (!file || !*file) {
      continue;
    }
    if (auto journal = Inspect(**file, base, search.PutAside)) {
      search.Found = LeftJournal{.File = std::move(**file), .Content = *std::move(journal)};
      break;
    }
  }
  return search;
}

}  // namespace quillmark
