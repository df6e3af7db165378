#include "files/ReplaceFile.h"

#include <cstdio>
#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#ifdef Q_OS_UNIX
#include <csignal>
#include <grp.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace quillmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

using Bytes = std::vector<std::uint8_t>;

Bytes BytesOf(const std::string& text) {
  return {text.begin(), text.end()};
}

std::string ReasonText(const std::optional<QString>& reason) {
  return reason ? reason->toStdString() : "done";
}

class ReplaceFileTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(folder_.isValid()); }

  [[nodiscard]] QString Path(const QString& name) const { return folder_.filePath(name); }

  QString Write(const QString& name, const std::string& content) const {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(content.data(), static_cast<qint64>(content.size())),
              static_cast<qint64>(content.size()));
    return file.fileName();
  }

  [[nodiscard]] std::string Read(const QString& name) const {
    QFile file(Path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(cannot be read)";
  }

  /// Everything in the folder, so that a file left behind shows.
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QString& name : QDir(folder_.path()).entryList(all, QDir::Name)) {
      names.push_back(name.toStdString());
    }
    return names;
  }

  QTemporaryDir folder_;
};

TEST_F(ReplaceFileTest, NewFileHoldsExactlyTheBytes) {
  Bytes bytes(3'000'000);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
  }
  ASSERT_EQ(ReasonText(ReplaceFile(Path("new.sup"), bytes, OldTail::Kept)), "done");
  EXPECT_TRUE(Read("new.sup") == std::string(bytes.begin(), bytes.end()));
  EXPECT_THAT(Names(), ElementsAre("new.sup"));
}

TEST_F(ReplaceFileTest, LineEndsAndNulsAreBytesLikeAnyOther) {
  const std::string content("SP\0\r\n\n\r\x1A\xFF", 9);
  ASSERT_EQ(ReasonText(ReplaceFile(Path("a"), BytesOf(content), OldTail::Dropped)), "done");
  EXPECT_EQ(Read("a"), content);
}

TEST_F(ReplaceFileTest, NameMayHoldAnyLetters) {
  const QString name = QString::fromUtf8("\xD0\xBA\xD0\xB8\xD0\xBD\xD0\xBE \xC3\xBC.sup");
  ASSERT_EQ(ReasonText(ReplaceFile(Path(name), BytesOf("new"), OldTail::Kept)), "done");
  EXPECT_EQ(Read(name), "new");
}

TEST_F(ReplaceFileTest, ShorterFileIsReplacedWhole) {
  for (const OldTail tail : {OldTail::Kept, OldTail::Dropped}) {
    const QString path = Write("a", "old");
    ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("longer"), tail)), "done");
    EXPECT_EQ(Read("a"), "longer");
  }
}

TEST_F(ReplaceFileTest, TailOfALongerFileIsKept) {
  const QString path = Write("a", "0123456789");
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), OldTail::Kept)), "done");
  EXPECT_EQ(Read("a"), "new3456789");
}

TEST_F(ReplaceFileTest, LongTailIsKeptToItsLastByte) {
  const std::string old = std::string(2'500'000, 'x') + "end";
  const QString path = Write("a", old);
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), OldTail::Kept)), "done");
  EXPECT_TRUE(Read("a") == "new" + old.substr(3));
}

TEST_F(ReplaceFileTest, TailOfALongerFileIsDropped) {
  const QString path = Write("a", "0123456789");
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), OldTail::Dropped)), "done");
  EXPECT_EQ(Read("a"), "new");
}

TEST_F(ReplaceFileTest, NoBytesAreAnEmptyFileOrTheOldTail) {
  Write("kept", "old");
  Write("dropped", "old");
  ASSERT_EQ(ReasonText(ReplaceFile(Path("new"), {}, OldTail::Kept)), "done");
  ASSERT_EQ(ReasonText(ReplaceFile(Path("kept"), {}, OldTail::Kept)), "done");
  ASSERT_EQ(ReasonText(ReplaceFile(Path("dropped"), {}, OldTail::Dropped)), "done");
  EXPECT_EQ(Read("new"), "");
  EXPECT_EQ(Read("kept"), "old");
  EXPECT_EQ(Read("dropped"), "");
}

TEST_F(ReplaceFileTest, MissingFolderGivesAReason) {
  const auto reason = ReplaceFile(Path("missing/a"), BytesOf("new"), OldTail::Kept);
  EXPECT_THAT(ReasonText(reason), HasSubstr("No such file or directory"));
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ReplaceFileTest, FolderAsTargetGivesAReason) {
  ASSERT_TRUE(QDir().mkdir(Path("folder")));
  EXPECT_EQ(ReasonText(ReplaceFile(Path("folder"), BytesOf("new"), OldTail::Kept)), "It is a folder");
  EXPECT_THAT(Names(), ElementsAre("folder"));
}

TEST_F(ReplaceFileTest, NoPathGivesAReason) {
  EXPECT_NE(ReasonText(ReplaceFile(QString(), BytesOf("new"), OldTail::Kept)), "done");
}

#ifdef Q_OS_UNIX

mode_t ModeOf(const QString& path) {
  struct stat status {};
  return ::stat(path.toLocal8Bit().constData(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

void SetMode(const QString& path, mode_t mode) {
  ASSERT_EQ(::chmod(path.toLocal8Bit().constData(), mode), 0);
}

/// In a child process: permission bits bind from here on, also when the tests are run by root.
void BecomeOrdinaryUser() {
  constexpr unsigned Nobody = 65534;
  if (::geteuid() == 0 && (::setgroups(0, nullptr) != 0 || ::setresgid(Nobody, Nobody, Nobody) != 0 ||
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
[[noreturn]] void LeaveWith(const std::optional<QString>& reason) {
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
    SetMode(folder_.path(), 0777);
  }
  // The folder's owner, if it is not root, must be able to remove it.
  void TearDown() override { SetMode(folder_.path(), 0777); }

  /// A file that everybody may change, in a folder that takes no second one.
  QString WriteInClosedFolder(const QString& name, const std::string& content) const {
    const QString path = Write(name, content);
    SetMode(path, 0666);
    SetMode(folder_.path(), 0555);
    return path;
  }
};

TEST_F(ReplaceFileTest, PermissionsAreKept) {
  for (const mode_t mode : {0600U, 0640U, 0666U, 0755U}) {
    const QString path = Write("a", "old");
    SetMode(path, mode);
    ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), OldTail::Kept)), "done");
    EXPECT_EQ(ModeOf(path), mode) << std::oct << mode;
    EXPECT_EQ(Read("a"), "new");
  }
}

TEST_F(ReplaceFileTest, NewFileHasTheUsersUsualPermissions) {
  const mode_t previous = ::umask(027);
  const auto reason = ReplaceFile(Path("new"), BytesOf("new"), OldTail::Kept);
  ::umask(previous);
  ASSERT_EQ(ReasonText(reason), "done");
  EXPECT_EQ(ModeOf(Path("new")), 0640U);
}

TEST_F(ReplaceFileTest, OldFileIsReplacedNotOverwritten) {
  const QString path = Write("a", "old");
  QFile reader(path);
  ASSERT_TRUE(reader.open(QIODevice::ReadOnly));
  ASSERT_EQ(ReasonText(ReplaceFile(path, BytesOf("new"), OldTail::Kept)), "done");
  EXPECT_EQ(reader.readAll().toStdString(), "old");
}

TEST_F(ReplaceFileTest, SymbolicLinkStaysOne) {
  ASSERT_TRUE(QDir().mkdir(Path("elsewhere")));
  Write("elsewhere/real", "0123456789");
  ASSERT_TRUE(QFile::link("elsewhere/real", Path("link")));
  ASSERT_TRUE(QFile::link("link", Path("link to link")));
  ASSERT_EQ(ReasonText(ReplaceFile(Path("link to link"), BytesOf("new"), OldTail::Kept)), "done");
  EXPECT_TRUE(QFileInfo(Path("link to link")).isSymbolicLink());
  EXPECT_TRUE(QFileInfo(Path("link")).isSymbolicLink());
  EXPECT_FALSE(QFileInfo(Path("elsewhere/real")).isSymbolicLink());
  EXPECT_EQ(Read("elsewhere/real"), "new3456789");
  EXPECT_THAT(Names(), ElementsAre("elsewhere", "link", "link to link"));
}

TEST_F(ReplaceFileTest, LinkToNothingGetsItsTarget) {
  ASSERT_TRUE(QFile::link("real", Path("link")));
  ASSERT_EQ(ReasonText(ReplaceFile(Path("link"), BytesOf("new"), OldTail::Kept)), "done");
  EXPECT_TRUE(QFileInfo(Path("link")).isSymbolicLink());
  EXPECT_EQ(Read("real"), "new");
}

TEST_F(ReplaceFileTest, LinkToItselfGivesAReason) {
  ASSERT_TRUE(QFile::link("loop", Path("loop")));
  EXPECT_THAT(ReasonText(ReplaceFile(Path("loop"), BytesOf("new"), OldTail::Kept)),
              HasSubstr("symbolic links"));
  EXPECT_TRUE(QFileInfo(Path("loop")).isSymbolicLink());
}

TEST_F(ReplaceFileTest, PipeIsRefusedWithoutWaitingForIt) {
  ASSERT_EQ(::mkfifo(Path("pipe").toLocal8Bit().constData(), 0600), 0);
  const auto reason = ReplaceFile(Path("pipe"), Bytes(1'000'000), OldTail::Kept);
  EXPECT_EQ(ReasonText(reason), "It is a pipe, not a file");
}

TEST_F(ReplaceFileDeathTest, ReadOnlyFileIsRefusedThoughItsFolderIsWritable) {
  const QString path = Write("a", "old");
  SetMode(path, 0444);
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("new"), OldTail::Kept))), Left,
              "not writable");
  EXPECT_EQ(Read("a"), "old");
  EXPECT_EQ(ModeOf(path), 0444U);
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileDeathTest, NewFileInAReadOnlyFolderIsRefused) {
  SetMode(folder_.path(), 0555);
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(Path("a"), BytesOf("new"), OldTail::Kept))), Left,
              "Permission denied");
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ReplaceFileDeathTest, ReadOnlyFileInAReadOnlyFolderIsRefused) {
  const QString path = WriteInClosedFolder("a", "old");
  SetMode(path, 0444);
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("new"), OldTail::Dropped))), Left,
              "not writable");
  EXPECT_EQ(Read("a"), "old");
}

TEST_F(ReplaceFileDeathTest, WritableFileInAReadOnlyFolderIsWrittenInPlace) {
  const QString path = WriteInClosedFolder("a", "0123456789");
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("new"), OldTail::Kept))), Left,
              "done");
  EXPECT_EQ(Read("a"), "new3456789");
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("newer"), OldTail::Dropped))), Left,
              "done");
  EXPECT_EQ(Read("a"), "newer");
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("the newest"), OldTail::Dropped))),
              Left, "done");
  EXPECT_EQ(Read("a"), "the newest");
}

TEST_F(ReplaceFileDeathTest, FileThatAStickyFolderHoldsOnToIsWrittenInPlace) {
  if (::geteuid() != 0) {
    GTEST_SKIP() << "needs a file and a folder of another user, which only root can make";
  }
  const QString path = Write("a", "0123456789");
  SetMode(path, 0666);
  SetMode(folder_.path(), 01777);
  EXPECT_EXIT((BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, BytesOf("new"), OldTail::Kept))), Left,
              "done");
  EXPECT_EQ(Read("a"), "new3456789");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileDeathTest, FullDiskLeavesTheOldFileAndNothingElse) {
  const QString path = Write("a", "old");
  const Bytes bytes(300'000, 'n');
  EXPECT_EXIT((LimitFileLength(100'000), LeaveWith(ReplaceFile(path, bytes, OldTail::Kept))), Left,
              "File too large");
  EXPECT_EQ(Read("a"), "old");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileDeathTest, FullDiskAtTheLastByteLeavesTheOldFile) {
  const QString path = Write("a", "old");
  // Few enough to stay in the buffer until the end.
  const Bytes bytes(101, 'n');
  EXPECT_EXIT((LimitFileLength(100), LeaveWith(ReplaceFile(path, bytes, OldTail::Dropped))), Left,
              "File too large");
  EXPECT_EQ(Read("a"), "old");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileDeathTest, FullDiskWhileTheTailIsCopiedLeavesTheOldFile) {
  const std::string old(300'000, 'o');
  const QString path = Write("a", old);
  EXPECT_EXIT((LimitFileLength(100'000), LeaveWith(ReplaceFile(path, BytesOf("new"), OldTail::Kept))), Left,
              "File too large");
  EXPECT_TRUE(Read("a") == old);
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(ReplaceFileDeathTest, FullDiskLeavesNoNewFile) {
  const Bytes bytes(300'000, 'n');
  EXPECT_EXIT((LimitFileLength(100'000), LeaveWith(ReplaceFile(Path("a"), bytes, OldTail::Kept))), Left,
              "File too large");
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ReplaceFileDeathTest, FailureHalfWayInPlaceIsSaid) {
  const QString path = WriteInClosedFolder("a", std::string(200, 'o'));
  const Bytes bytes(300, 'n');
  EXPECT_EXIT(
      (LimitFileLength(250), BecomeOrdinaryUser(), LeaveWith(ReplaceFile(path, bytes, OldTail::Dropped))),
      Left, "File too large.*damaged.*first 250 of 300");
  EXPECT_EQ(Read("a"), std::string(250, 'n'));
}

TEST_F(ReplaceFileDeathTest, FailureAtTheFirstByteInPlaceDamagesNothing) {
  const QString path = WriteInClosedFolder("a", "old");
  EXPECT_EXIT((LimitFileLength(0), BecomeOrdinaryUser(),
               LeaveWith(ReplaceFile(path, BytesOf("newer"), OldTail::Dropped))),
              Left, "^File too large$");
  EXPECT_EQ(Read("a"), "old");
}

#endif

#ifdef Q_OS_LINUX

TEST_F(ReplaceFileTest, FullDeviceGivesTheReason) {
  ASSERT_TRUE(QFileInfo::exists("/dev/full"));
  for (const OldTail tail : {OldTail::Kept, OldTail::Dropped}) {
    EXPECT_EQ(ReasonText(ReplaceFile("/dev/full", BytesOf("new"), tail)), "No space left on device");
    EXPECT_EQ(ReasonText(ReplaceFile("/dev/full", Bytes(1'000'000), tail)), "No space left on device");
  }
}

TEST_F(ReplaceFileTest, DeviceIsWrittenInPlace) {
  ASSERT_TRUE(QFile::link("/dev/null", Path("link")));
  for (const OldTail tail : {OldTail::Kept, OldTail::Dropped}) {
    EXPECT_EQ(ReasonText(ReplaceFile(Path("link"), BytesOf("new"), tail)), "done");
  }
  EXPECT_TRUE(QFileInfo(Path("link")).isSymbolicLink());
}

#endif

}  // namespace
}  // namespace quillmark
