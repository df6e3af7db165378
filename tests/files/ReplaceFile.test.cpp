#include "files/ReplaceFile.h"

#include <cerrno>
#include <cstdio>
#include <gmock/gmock.h>
#include <set>
#include <string>
#include <vector>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <csignal>
#include <fcntl.h>
#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

#include "files/SystemCalls.h"
#include "tests/support/FolderTest.h"
#include "tests/support/OrdinaryUser.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::BytesOf;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr WriteOptions Keep{.Tail = OldTail::Kept};
constexpr WriteOptions Drop{.Tail = OldTail::Dropped};

std::string ReasonText(const Result<void>& result) {
  return result ? "done" : result.Reason();
}

class ReplaceFileTest : public test::FolderTest {};

TEST_F(ReplaceFileTest, NewFileHoldsExactlyTheBytes) {
  Bytes bytes(3'000'000);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
  }
  ASSERT_EQ(ReasonText(ReplaceFile(Path("new.sup"), bytes, Keep)), "done");
  EXPECT_TRUE(Read("new.sup") == std::string(bytes.begin(), bytes.end()));
  EXPECT_THAT(Names(), ElementsAre("new.sup"));
}

TEST_F(ReplaceFileTest, LineEndsAndNulsAreBytesLikeAnyOther) {
  const std::string content("SP\0\r\n\n\r\x1A\xFF", 9);
  ASSERT_EQ(ReasonText(ReplaceFile(Path("a"), BytesOf(content), Drop)), "done");
  EXPECT_EQ(Read("a"), content);
}

TEST_F(ReplaceFileTest, NameMayHoldAnyLetters) {
  const QString name = QString::fromUtf8("\xD0\xBA\xD0\xB8\xD0\xBD\xD0\xBE \xC3\xBC.sup");
  ASSERT_EQ(ReasonText(ReplaceFile(Path(name), BytesOf("new"), Keep)), "done");
  EXPECT_EQ(Read(name), "new");
}

TEST_F(ReplaceFileTest, ShorterFileIsReplacedWhole) {
  for (const WriteOptions& tail : {Keep, Drop}) {
    const QString path = Put("a", "old");
    ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("longer"), tail)), "done");
    EXPECT_EQ(Read("a"), "longer");
  }
}

TEST_F(ReplaceFileTest, TailOfALongerFileIsKept) {
  const QString path = Put("a", "0123456789");
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), Keep)), "done");
  EXPECT_EQ(Read("a"), "new3456789");
}

TEST_F(ReplaceFileTest, LongTailIsKeptToItsLastByte) {
  const std::string old = std::string(2'500'000, 'x') + "end";
  const QString path = Put("a", old);
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), Keep)), "done");
  EXPECT_TRUE(Read("a") == "new" + old.substr(3));
}

TEST_F(ReplaceFileTest, TailOfALongerFileIsDropped) {
  const QString path = Put("a", "0123456789");
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), Drop)), "done");
  EXPECT_EQ(Read("a"), "new");
}

TEST_F(ReplaceFileTest, NoBytesAreAnEmptyFileOrTheOldTail) {
  Put("kept", "old");
  Put("dropped", "old");
  ASSERT_EQ(ReasonText(ReplaceFile(Path("new"), {}, Keep)), "done");
  ASSERT_EQ(ReasonText(ReplaceFile(Path("kept"), {}, Keep)), "done");
  ASSERT_EQ(ReasonText(ReplaceFile(Path("dropped"), {}, Drop)), "done");
  EXPECT_EQ(Read("new"), "");
  EXPECT_EQ(Read("kept"), "old");
  EXPECT_EQ(Read("dropped"), "");
}

TEST_F(ReplaceFileTest, MissingFolderGivesAReason) {
  const auto reason = ReplaceFile(Path("missing/a"), BytesOf("new"), Keep);
  EXPECT_THAT(ReasonText(reason), HasSubstr("No such file or directory"));
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ReplaceFileTest, FolderAsTargetGivesAReason) {
  ASSERT_TRUE(QDir().mkdir(Path("folder")));
  EXPECT_EQ(ReasonText(ReplaceFile(Path("folder"), BytesOf("new"), Keep)), "It is a folder");
  EXPECT_THAT(Names(), ElementsAre("folder"));
}

TEST_F(ReplaceFileTest, NoPathGivesAReason) {
  EXPECT_NE(ReasonText(ReplaceFile(QString(), BytesOf("new"), Keep)), "done");
}

#ifdef Q_OS_UNIX

mode_t ModeOf(const QString& path) {
  struct stat status {};
  return ::stat(path.toLocal8Bit().constData(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

void SetMode(const QString& path, mode_t mode) {
  ASSERT_EQ(::chmod(path.toLocal8Bit().constData(), mode), 0);
}

constexpr unsigned Nobody = 65534;

/// In a child process: permission bits bind from here on, also when the tests are run by root, who then
/// belongs to the `groups` as well.
void BecomeOrdinaryUser(const std::vector<gid_t>& groups = {}) {
  if (::geteuid() == 0 &&
      (::setgroups(groups.size(), groups.data()) != 0 || ::setresgid(Nobody, Nobody, Nobody) != 0 ||
       ::setresuid(Nobody, Nobody, Nobody) != 0)) {
    ::_exit(2);
  }
}

/// In a child process: no file can grow past `length` until it leaves, as on a full disk.
void LimitFileLength(rlim_t length) {
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit limit{};
  if (::getrlimit(RLIMIT_FSIZE, &limit) != 0) {
    ::_exit(2);
  }
  limit.rlim_cur = length;
  if (::setrlimit(RLIMIT_FSIZE, &limit) != 0) {
    ::_exit(2);
  }
}

/// Ends a child process, whose output, which may go through a file, the test then compares.
[[noreturn]] void LeaveWith(const Result<void>& reason) {
  rlimit limit{};
  ::getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_FSIZE, &limit);
  std::fputs(ReasonText(reason).c_str(), stderr);
  ::_exit(0);
}

const auto Left = testing::ExitedWithCode(0);

/// What needs a process of its own: a user whom permissions bind, a limit on the length of files.
class ReplaceFileDeathTest : public ReplaceFileTest {
 protected:
  void SetUp() override {
    ReplaceFileTest::SetUp();
    SetMode(Folder(), 0777);
  }
  // The folder's owner, if it is not root, must be able to remove it.
  void TearDown() override { SetMode(Folder(), 0777); }

  /// A file that everybody may change, in a folder that takes no second one.
  QString WriteInClosedFolder(const QString& name, const std::string& content) const {
    const QString path = Put(name, content);
    SetMode(path, 0666);
    SetMode(Folder(), 0555);
    return path;
  }
};

TEST_F(ReplaceFileTest, PermissionsAreKept) {
  for (const mode_t mode : {0600U, 0640U, 0666U, 0755U}) {
    const QString path = Put("a", "old");
    SetMode(path, mode);
    ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), Keep)), "done");
    EXPECT_EQ(ModeOf(path), mode) << std::oct << mode;
    EXPECT_EQ(Read("a"), "new");
  }
}

TEST_F(ReplaceFileTest, NewFileHasTheUsersUsualPermissions) {
  const mode_t previous = ::umask(027);
  const auto reason = ReplaceFile(Path("new"), BytesOf("new"), Keep);
  ::umask(previous);
  ASSERT_EQ(ReasonText(reason), "done");
  EXPECT_EQ(ModeOf(Path("new")), 0640U);
}

TEST_F(ReplaceFileTest, OldFileIsReplacedNotOverwritten) {
  const QString path = Put("a", "old");
  QFile reader(path);
  ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), Keep)), "done");
  EXPECT_EQ(reader.readAll().toStdString(), "old");
}

TEST_F(ReplaceFileTest, SymbolicLinkStaysOne) {
  ASSERT_TRUE(QDir().mkdir(Path("elsewhere")));
  Put("elsewhere/real", "0123456789");
  ASSERT_TRUE(QFile::link("elsewhere/real", Path("link")));
  ASSERT_TRUE(QFile::link("link", Path("link to link")));
  ASSERT_EQ(ReasonText(ReplaceFile(Path("link to link"), BytesOf("new"), Keep)), "done");
  EXPECT_TRUE(QFileInfo(Path("link to link")).isSymbolicLink());
  EXPECT_TRUE(QFileInfo(Path("link")).isSymbolicLink());
  EXPECT_FALSE(QFileInfo(Path("elsewhere/real")).isSymbolicLink());
  EXPECT_EQ(Read("elsewhere/real"), "new3456789");
  EXPECT_THAT(Names(), ElementsAre("elsewhere", "link", "link to link"));
}

TEST_F(ReplaceFileTest, LinkToNothingGetsItsTarget) {
  ASSERT_TRUE(QFile::link("real", Path("link")));
  ASSERT_EQ(ReasonText(ReplaceFile(Path("link"), BytesOf("new"), Keep)), "done");
  EXPECT_TRUE(QFileInfo(Path("link")).isSymbolicLink());
  EXPECT_EQ(Read("real"), "new");
}

TEST_F(ReplaceFileTest, AsManyLinksAreFollowedAsTheSystemDoes) {
  Put("0", "old");
  for (int link = 1; link <= 41; ++link) {
    ASSERT_TRUE(QFile::link(QString::number(link - 1), Path(std::to_string(link).c_str())));
  }
  EXPECT_THAT(ReasonText(ReplaceFile(Path("41"), BytesOf("new"), Keep)), HasSubstr("symbolic links"));
  EXPECT_EQ(Read("0"), "old");
  ASSERT_EQ(ReasonText(ReplaceFile(Path("40"), BytesOf("new"), Keep)), "done");
  EXPECT_EQ(Read("0"), "new");
}

TEST_F(ReplaceFileTest, LinkToItselfGivesAReason) {
  ASSERT_TRUE(QFile::link("loop", Path("loop")));
  EXPECT_THAT(ReasonText(ReplaceFile(Path("loop"), BytesOf("new"), Keep)), HasSubstr("symbolic links"));
  EXPECT_TRUE(QFileInfo(Path("loop")).isSymbolicLink());
}

TEST_F(ReplaceFileTest, PipeIsRefusedWithoutWaitingForIt) {
  ASSERT_EQ(::mkfifo(Path("pipe").toLocal8Bit().constData(), 0600), 0);
  const auto reason = ReplaceFile(Path("pipe"), Bytes(1'000'000), Keep);
  EXPECT_EQ(ReasonText(reason), "It is a pipe, not a file");
}

TEST_F(ReplaceFileDeathTest, ReadOnlyFileIsRefusedThoughItsFolderIsWritable) {
  const QString path = Put("a", "old");
  SetMode(path, 0444);
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("new"), Keep))), Left,
              "not writable");
  EXPECT_EQ(Read("a"), "old");
  EXPECT_EQ(ModeOf(path), 0444U);
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileDeathTest, NewFileInAReadOnlyFolderIsRefused) {
  SetMode(Folder(), 0555);
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(Path("a"), BytesOf("new"), Keep))), Left,
              "Permission denied");
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ReplaceFileDeathTest, ReadOnlyFileInAReadOnlyFolderIsRefused) {
  const QString path = WriteInClosedFolder("a", "old");
  SetMode(path, 0444);
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("new"), Drop))), Left,
              "not writable");
  EXPECT_EQ(Read("a"), "old");
}

TEST_F(ReplaceFileDeathTest, WritableFileInAReadOnlyFolderIsWrittenInPlace) {
  const QString path = WriteInClosedFolder("a", "0123456789");
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("new"), Keep))), Left, "done");
  EXPECT_EQ(Read("a"), "new3456789");
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("newer"), Drop))), Left, "done");
  EXPECT_EQ(Read("a"), "newer");
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("the newest"), Drop))), Left,
              "done");
  EXPECT_EQ(Read("a"), "the newest");
}

TEST_F(ReplaceFileDeathTest, FileThatAStickyFolderHoldsOnToIsWrittenInPlace) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << test::NeedsRoot;
  }
  const QString path = Put("a", "0123456789");
  SetMode(path, 0666);
  SetMode(Folder(), 01777);
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("new"), Keep))), Left, "done");
  EXPECT_EQ(Read("a"), "new3456789");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileDeathTest, FullDiskLeavesTheOldFileAndNothingElse) {
  const QString path = Put("a", "old");
  const Bytes bytes(300'000, 'n');
  EXPECT_EXIT((LimitFileLength(100'000), LeaveWith(ReplaceFile(path, bytes, Keep))), Left, "File too large");
  EXPECT_EQ(Read("a"), "old");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileDeathTest, FullDiskAtTheLastByteLeavesTheOldFile) {
  const QString path = Put("a", "old");
  // Few enough to stay in the buffer until the end.
  const Bytes bytes(101, 'n');
  EXPECT_EXIT((LimitFileLength(100), LeaveWith(ReplaceFile(path, bytes, Drop))), Left, "File too large");
  EXPECT_EQ(Read("a"), "old");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileDeathTest, FullDiskWhileTheTailIsCopiedLeavesTheOldFile) {
  const std::string old(300'000, 'o');
  const QString path = Put("a", old);
  EXPECT_EXIT((LimitFileLength(100'000), LeaveWith(ReplaceFile(path, BytesOf("new"), Keep))), Left,
              "File too large");
  EXPECT_TRUE(Read("a") == old);
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileDeathTest, FullDiskLeavesNoNewFile) {
  const Bytes bytes(300'000, 'n');
  EXPECT_EXIT((LimitFileLength(100'000), LeaveWith(ReplaceFile(Path("a"), bytes, Keep))), Left,
              "File too large");
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ReplaceFileDeathTest, FullDiskInPlaceIsFoundOutBeforeTheFirstByte) {
  const QString path = WriteInClosedFolder("a", std::string(200, 'o'));
  const Bytes bytes(300, 'n');
  EXPECT_EXIT((LimitFileLength(250), BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, bytes, Drop))), Left,
              "^File too large$");
  EXPECT_EQ(Read("a"), std::string(200, 'o'));
}

/// Exchanges the system's calls for as long as it lives.
class ReplaceFileFaults : public ReplaceFileTest {
 protected:
  ReplaceFileFaults() : calls_(System()) {}
  ~ReplaceFileFaults() override { System() = calls_; }

  QString WriteWithSecondName(const QString& name, const std::string& content) const {
    const QString path = Put(name, content);
    EXPECT_EQ(::link(path.toLocal8Bit().constData(), Path("second name").toLocal8Bit().constData()), 0);
    return path;
  }

 private:
  SystemCalls calls_;
};

/// Takes 250 bytes of the first write, and then nothing.
ssize_t WriteThatBreaks(int file, const void* bytes, std::size_t length) {
  if (length != 300) {
    errno = EIO;
    return -1;
  }
  return ::write(file, bytes, 250);
}

TEST_F(ReplaceFileFaults, FailureHalfWayInPlaceIsSaid) {
  const QString path = WriteWithSecondName("a", std::string(200, 'o'));
  System().Write = WriteThatBreaks;
  EXPECT_EQ(ReasonText(ReplaceFile(path, Bytes(300, 'n'), Drop)),
            "Input/output error. The file could only be written in place and is now damaged: it holds the "
            "first 250 of 300 new bytes, and after them what was there before.");
  EXPECT_EQ(Read("a"), std::string(250, 'n'));
}

int FailingSync(int /*file*/) {
  errno = EIO;
  return -1;
}

ssize_t FailingWrite(int /*file*/, const void* /*bytes*/, std::size_t /*length*/) {
  errno = EIO;
  return -1;
}

TEST_F(ReplaceFileFaults, FailureAtTheFirstByteInPlaceIsNoDamage) {
  const QString path = WriteWithSecondName("a", "old");
  System().Write = FailingWrite;
  EXPECT_EQ(ReasonText(ReplaceFile(path, BytesOf("newer"), Drop)), "Input/output error");
  EXPECT_EQ(Read("a"), "old");
}

TEST_F(ReplaceFileFaults, DiskThatLosesWhatWasWrittenInPlaceIsSaid) {
  const QString path = WriteWithSecondName("a", "old");
  System().Sync = FailingSync;
  EXPECT_THAT(ReasonText(ReplaceFile(path, BytesOf("newer"), Drop)),
              HasSubstr("Input/output error. The file could only be written in place and is now damaged"));
}

TEST_F(ReplaceFileFaults, SecondFileOfAPrivateOneIsPrivateFromItsStart) {
  static mode_t made = 0;
  made = 0;
  const QString path = Put("a", "old");
  System().Open = [](const char* name, int flags, mode_t mode) {
    if ((flags & O_EXCL) != 0) {
      made = mode;
    }
    return ::open(name, flags, mode);
  };
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"))), "done");
  EXPECT_EQ(made, 0600U);
  ASSERT_EQ(ReasonText(ReplaceFile(Path("b"), BytesOf("new"))), "done");
  EXPECT_EQ(made, 0666U);
}

TEST_F(ReplaceFileFaults, FolderWhereEveryNameIsTakenGivesAReason) {
  System().Open = [](const char* /*path*/, int /*flags*/, mode_t /*mode*/) {
    errno = EEXIST;
    return -1;
  };
  EXPECT_EQ(ReasonText(ReplaceFile(Path("a"), BytesOf("new"))), "File exists");
}

TEST_F(ReplaceFileFaults, PartOfAnAppendedLineIsCutOffAgain) {
  const QString path = Put("a", "old");
  System().Write = WriteThatBreaks;
  EXPECT_EQ(ReasonText(AppendToFile(path, Bytes(300, 'n'))), "Input/output error");
  EXPECT_EQ(Read("a"), "old");
}

TEST_F(ReplaceFileFaults, AppendThatFailsWhenTheFileIsClosedIsTold) {
  System().Close = [](int file) {
    ::close(file);
    errno = ENOSPC;
    return -1;
  };
  EXPECT_EQ(ReasonText(AppendToFile(Path("a"), BytesOf("new"))), "No space left on device");
}

TEST_F(ReplaceFileTest, FolderIsMadeOnceAndAFileInItsPlaceIsTheReason) {
  EXPECT_EQ(ReasonText(MakeFolder(Path("folder"))), "done");
  EXPECT_EQ(ReasonText(MakeFolder(Path("folder"))), "done");
  EXPECT_EQ(ReasonText(MakeFolder(Put("a", "old"))), "File exists");
}

TEST_F(ReplaceFileFaults, FileInPlaceThatCannotBeOpenedStays) {
  const QString path = WriteWithSecondName("a", "old");
  System().Open = [](const char*, int, mode_t) {
    errno = EROFS;
    return -1;
  };
  EXPECT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"))), "Read-only file system");
  EXPECT_EQ(Read("a"), "old");
}

TEST_F(ReplaceFileFaults, OldTailThatCannotBeOpenedLeavesTheOldFile) {
  const QString path = Put("a", "0123456789");
  System().Open = [](const char* name, int flags, mode_t mode) {
    errno = EMFILE;
    return flags == O_RDONLY ? -1 : ::open(name, flags, mode);
  };
  EXPECT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), Keep)), "Too many open files");
  EXPECT_EQ(Read("a"), "0123456789");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileFaults, OldTailThatCannotBeReadLeavesTheOldFile) {
  const QString path = Put("a", "0123456789");
  // A folder can be opened, and not be read from.
  System().Open = [](const char* name, int flags, mode_t mode) {
    return flags == O_RDONLY ? ::open("/", flags) : ::open(name, flags, mode);
  };
  EXPECT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), Keep)), "Is a directory");
  EXPECT_EQ(Read("a"), "0123456789");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileTest, PrivateFolderIsTheUsersAlone) {
  EXPECT_EQ(ReasonText(MakePrivateFolder(Path("data/program/journals"))), "done");
  EXPECT_EQ(ModeOf(Path("data/program/journals")), 0700U);
  EXPECT_NE(ModeOf(Path("data")), 0700U);
  EXPECT_EQ(ReasonText(MakePrivateFolder(Path("data/program/journals"))), "done");
}

TEST_F(ReplaceFileTest, PrivateFolderBelowAFileGivesTheReason) {
  Put("a", "old");
  EXPECT_EQ(ReasonText(MakePrivateFolder(Path("a/journals"))), "File exists");
}

TEST_F(ReplaceFileTest, WhatIsNotThereNeedsNoRemoving) {
  EXPECT_EQ(ReasonText(RemoveFile(Put("a", "old"))), "done");
  EXPECT_THAT(Names(), ElementsAre());
  EXPECT_EQ(ReasonText(RemoveFile(Path("a"))), "done");
  Put("b", "old");
  EXPECT_EQ(ReasonText(RemoveFile(Path("b/c"))), "Not a directory");
}

TEST_F(ReplaceFileFaults, DiskThatTakesTheBytesAndLosesThemLeavesTheOldFile) {
  const QString path = Put("a", "old");
  System().Sync = [](int) {
    errno = EIO;
    return -1;
  };
  EXPECT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"))), "Input/output error");
  EXPECT_EQ(Read("a"), "old");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileFaults, WhatNeedsNoDiskDoesNotWaitForIt) {
  System().Sync = [](int) {
    errno = EIO;
    return -1;
  };
  EXPECT_EQ(ReasonText(ReplaceFile(Path("a"), BytesOf("new"), {.Wait = Durability::Unsynced})), "done");
  EXPECT_EQ(Read("a"), "new");
}

TEST_F(ReplaceFileFaults, FailureToldOnlyWhenTheFileIsClosedLeavesTheOldOne) {
  const QString path = Put("a", "old");
  System().Close = [](int file) {
    ::close(file);
    errno = ENOSPC;
    return -1;
  };
  EXPECT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"))), "No space left on device");
  EXPECT_EQ(Read("a"), "old");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileFaults, SecondFileThatCannotTakeThePlaceOfANewOneIsRemoved) {
  System().Rename = [](const char*, const char*) {
    errno = EACCES;
    return -1;
  };
  EXPECT_EQ(ReasonText(ReplaceFile(Path("a"), BytesOf("new"))), "Permission denied");
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ReplaceFileFaults, NameThatIsTakenIsNotUsed) {
  static int opened = 0;
  opened = 0;
  System().Open = [](const char* path, int flags, mode_t mode) {
    if (++opened <= 3) {
      errno = EEXIST;
      return -1;
    }
    return ::open(path, flags, mode);
  };
  EXPECT_EQ(ReasonText(ReplaceFile(Path("a"), BytesOf("new"))), "done");
  EXPECT_EQ(opened, 4);
}

TEST_F(ReplaceFileFaults, EachSecondFileHasAnotherName) {
  static std::set<std::string> names;
  names.clear();
  System().Rename = [](const char* from, const char* to) {
    names.insert(from);
    return ::rename(from, to);
  };
  for (int i = 0; i < 20; ++i) {
    ASSERT_EQ(ReasonText(ReplaceFile(Path("a"), BytesOf("new"), {.Wait = Durability::Unsynced})), "done");
  }
  EXPECT_EQ(names.size(), 20U);
}

TEST_F(ReplaceFileTest, NameOf255BytesIsWritten) {
  const QString name(255, u'n');
  ASSERT_EQ(ReasonText(ReplaceFile(Path(name), BytesOf("old"))), "done");
  ASSERT_EQ(ReasonText(ReplaceFile(Path(name), BytesOf("new"))), "done");
  EXPECT_EQ(Read(name), "new");
}

TEST_F(ReplaceFileTest, LongerNameGivesTheReason) {
  EXPECT_EQ(ReasonText(ReplaceFile(Path(QString(256, u'n')), BytesOf("new"))), "File name too long");
}

TEST_F(ReplaceFileTest, HardLinksStayOneFile) {
  const QString path = Put("a", "0123456789");
  ASSERT_EQ(::link(path.toLocal8Bit().constData(), Path("b").toLocal8Bit().constData()), 0);
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), Keep)), "done");
  EXPECT_EQ(Read("b"), "new3456789");
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("the newest of all"), Drop)), "done");
  EXPECT_EQ(Read("b"), "the newest of all");
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("short"), Drop)), "done");
  EXPECT_EQ(Read("b"), "short");
}

TEST_F(ReplaceFileTest, OwnerAndGroupAreKept) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << test::NeedsRoot;
  }
  const QString path = Put("a", "old");
  ASSERT_EQ(::chown(path.toLocal8Bit().constData(), 1234, 2345), 0);
  SetMode(path, 04755);
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"))), "done");
  struct stat status {};
  ASSERT_EQ(::stat(path.toLocal8Bit().constData(), &status), 0);
  EXPECT_EQ(status.st_uid, 1234U);
  EXPECT_EQ(status.st_gid, 2345U);
  EXPECT_EQ(status.st_mode & 07777U, 04755U);
}

TEST_F(ReplaceFileDeathTest, GroupIsKeptByWhoMayNotKeepTheOwner) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << test::NeedsRoot;
  }
  const QString path = Put("a", "old");
  ASSERT_EQ(::chown(path.toLocal8Bit().constData(), 1234, 2345), 0);
  SetMode(path, 02664);
  EXPECT_EXIT((BecomeOrdinaryUser({2345}), LeaveWith(ReplaceFile(path, BytesOf("new")))), Left, "done");
  EXPECT_EQ(Read("a"), "new");
  struct stat status {};
  ASSERT_EQ(::stat(path.toLocal8Bit().constData(), &status), 0);
  EXPECT_EQ(status.st_uid, Nobody);
  EXPECT_EQ(status.st_gid, 2345U);
  EXPECT_EQ(status.st_mode & 07777U, 0664U);
}

TEST_F(ReplaceFileDeathTest, FileOfAnotherUserIsReplacedByOnesOwn) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << test::NeedsRoot;
  }
  const QString path = Put("a", "old");
  SetMode(path, 04777);
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("new")))), Left, "done");
  EXPECT_EQ(Read("a"), "new");
  // It would act in the name of another user than the one who let it.
  EXPECT_EQ(ModeOf(path), 0777U);
}

TEST_F(ReplaceFileDeathTest, FailureAtTheFirstByteInPlaceDamagesNothing) {
  const QString path = WriteInClosedFolder("a", "old");
  EXPECT_EXIT(
      (LimitFileLength(0), BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("newer"), Drop))), Left,
      "^File too large$");
  EXPECT_EQ(Read("a"), "old");
}

#endif

}  // namespace
}  // namespace quillmark
