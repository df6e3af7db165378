#include "app/JournalFolder.h"

#include <sys/stat.h>
#include <vector>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quillmark::test {
namespace {

constexpr JournalBase Base(std::uint64_t length = 40, std::uint64_t hash = 0xAB) {
  return {.Length = length, .Hash = hash, .Path = {}};
}

class Folder : public testing::Test {
 protected:
  /// A journal with one edit, as a window that is gone leaves it.
  void Leave(const JournalBase& base, const std::string& name = "edit") {
    auto file = Journals.Create(base);
    ASSERT_TRUE(file.IsOk()) << file.Reason();
    std::vector<std::uint8_t> bytes;
    WriteJournalBase(base, bytes);
    WriteJournalPalette(name, StartUpPalette, bytes);
    ASSERT_TRUE(file->Append(bytes));
  }

  [[nodiscard]] JournalFolder::Search Find(std::uint64_t length = 40, std::uint64_t hash = 0xAB) {
    return Journals.Find(length, [this, hash] {
      ++HashesAsked;
      return hash;
    });
  }

  [[nodiscard]] QStringList Names() const { return QDir(Journals.Path()).entryList(QDir::Files, QDir::Name); }
  [[nodiscard]] QString Path(const QString& name) const { return QDir(Journals.Path()).filePath(name); }

  /// Exchanges one byte of a file.
  void Flip(const QString& name, qint64 at) const {
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(at));
    char byte = 0;
    ASSERT_TRUE(file.getChar(&byte) && file.seek(at) && file.putChar(static_cast<char>(byte ^ 1)));
  }

  QTemporaryDir Temporary;
  JournalFolder Journals{Temporary.filePath("state/quillmark")};
  int HashesAsked = 0;
};

TEST_F(Folder, NameHoldsLengthAndHash) {
  Leave(Base(1234, 0xABCDEF));
  Leave(Base(1234, 0xABCDEF));
  EXPECT_EQ(Names(), QStringList({"1234-0000000000abcdef-1.journal1", "1234-0000000000abcdef-2.journal1"}));
}

TEST_F(Folder, IsMadeForTheUserAlone) {
  Leave(Base());
  struct stat status {};
  ASSERT_EQ(::stat(QFile::encodeName(Journals.Path()).constData(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(Folder, LeftJournalIsFoundByItsContent) {
  Leave(Base());
  const auto search = Find();
  ASSERT_TRUE(search.Found.has_value());
  EXPECT_EQ(search.Found->Content.Changes.size(), 1U);
  EXPECT_EQ(search.Found->Content.Base, Base());
}

TEST_F(Folder, OtherContentsHaveNoJournal) {
  Leave(Base());
  EXPECT_FALSE(Find(40, 0xAC).Found.has_value());
  EXPECT_FALSE(Find(41, 0xAB).Found.has_value());
  EXPECT_FALSE(Find(4, 0xAB).Found.has_value());
  EXPECT_EQ(Names().size(), 1);
}

// Hashing a long stream would make every load slower.
TEST_F(Folder, HashIsAskedForOnlyWhereAJournalHasTheLength) {
  EXPECT_FALSE(Find().Found.has_value());
  Leave(Base(41));
  Leave(Base(4));
  EXPECT_FALSE(Find().Found.has_value());
  EXPECT_EQ(HashesAsked, 0);
  EXPECT_TRUE(Find(41).Found.has_value());
  EXPECT_EQ(HashesAsked, 1);
}

TEST_F(Folder, JournalOfAWindowThatLivesIsLeftAlone) {
  const auto file = Journals.Create(Base());
  ASSERT_TRUE(file.IsOk());
  EXPECT_FALSE(Find().Found.has_value());
  EXPECT_EQ(Names().size(), 1);
}

TEST_F(Folder, FoundJournalBelongsToWhoFoundIt) {
  Leave(Base());
  const auto first = Find();
  ASSERT_TRUE(first.Found.has_value());
  EXPECT_FALSE(Find().Found.has_value());
}

TEST_F(Folder, NewestJournalIsFoundFirst) {
  Leave(Base(), "older");
  Leave(Base(), "newer");
  for (const auto& [name, second] : {std::pair(Names()[0], 10), std::pair(Names()[1], 20)}) {
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) &&
                file.setFileTime(QDateTime::fromSecsSinceEpoch(second), QFile::FileModificationTime));
  }
  const auto first = Find();
  ASSERT_TRUE(first.Found.has_value());
  EXPECT_EQ(first.Found->Content.Changes[0].Name, "newer");
  const auto second = Find();
  ASSERT_TRUE(second.Found.has_value());
  EXPECT_EQ(second.Found->Content.Changes[0].Name, "older");
}

TEST_F(Folder, JournalWithoutUnsavedEditsIsRemoved) {
  {
    auto file = Journals.Create(Base());
    ASSERT_TRUE(file.IsOk());
    std::vector<std::uint8_t> bytes;
    WriteJournalBase(Base(), bytes);
    WriteJournalPalette("edit", StartUpPalette, bytes);
    WriteJournalUndo(bytes);
    ASSERT_TRUE(file->Append(bytes));
  }
  const auto search = Find();
  EXPECT_FALSE(search.Found.has_value());
  EXPECT_TRUE(search.PutAside.isEmpty());
  EXPECT_TRUE(Names().isEmpty());
}

TEST_F(Folder, JournalThatWasNeverWrittenToIsRemoved) {
  ASSERT_TRUE(Journals.Create(Base()).IsOk());
  EXPECT_FALSE(Find().Found.has_value());
  EXPECT_TRUE(Names().isEmpty());
}

TEST_F(Folder, DamagedJournalIsPutAsideAndTheNextOneFound) {
  Leave(Base());
  Flip(Names()[0], 40);
  const auto search = Find();
  EXPECT_FALSE(search.Found.has_value());
  const QString aside = "40-00000000000000ab-1.journal1.damaged";
  EXPECT_EQ(search.PutAside, QStringList(Path(aside)));
  EXPECT_EQ(Names(), QStringList(aside));
  Leave(Base());
  EXPECT_TRUE(Find().Found.has_value());
}

TEST_F(Folder, JournalThatBelongsToAnotherContentThanItsNameSaysIsPutAside) {
  Leave(Base(40, 0xAC));
  ASSERT_TRUE(QFile::rename(Path(Names()[0]), Path("40-00000000000000ab-1.journal1")));
  const auto search = Find();
  EXPECT_FALSE(search.Found.has_value());
  EXPECT_EQ(search.PutAside.size(), 1);
}

TEST_F(Folder, FolderThatCannotBeMadeGivesTheReason) {
  ASSERT_TRUE(QFile(Temporary.filePath("file")).open(QIODevice::WriteOnly));
  const QString path = Temporary.filePath("file/quillmark");
  const JournalFolder folder(path);
  EXPECT_EQ(folder.Create(Base()).Reason(), "The folder " + path.toStdString() + " cannot be made");
  EXPECT_FALSE(folder.Find(40, [] { return std::uint64_t{0xAB}; }).Found.has_value());
}

/// Sets an environment variable while it lives.
class Environment {
 public:
  Environment(const char* name, const QByteArray& value) : name_(name), before_(qgetenv(name)) {
    qputenv(name, value);
  }
  Environment(const Environment&) = delete;
  Environment& operator=(const Environment&) = delete;
  ~Environment() { qputenv(name_, before_); }

 private:
  const char* name_;
  QByteArray before_;
};

TEST(UsualFolder, StandsBelowTheStateFolder) {
  const Environment state("XDG_STATE_HOME", "/tmp/somewhere");
  EXPECT_EQ(JournalFolder::UsualPath(), "/tmp/somewhere/quillmark");
}

TEST(UsualFolder, StandsBelowTheHomeFolderWhereNoStateFolderIsNamed) {
  const Environment home("HOME", "/home/somebody");
  for (const char* const none : {"", "relative/path"}) {
    const Environment state("XDG_STATE_HOME", none);
    EXPECT_EQ(JournalFolder::UsualPath(), "/home/somebody/.local/state/quillmark") << none;
  }
}

}  // namespace
}  // namespace quillmark::test
