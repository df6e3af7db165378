#include "files/AppendFile.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include <QFile>

#include "files/SystemCalls.h"
#include "tests/support/FaultySystem.h"
#include "tests/support/FileSizeLimit.h"
#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

using test::BytesOf;
using test::Call;
using test::Fault;
using test::FaultySystem;
using test::FileSizeLimit;
using testing::ElementsAre;
using testing::IsEmpty;

class AppendFileTest : public test::FolderTest {
 protected:
  [[nodiscard]] AppendFile Created(const QString& name) const {
    auto file = AppendFile::Create(Path(name));
    EXPECT_TRUE(file.IsOk() && file->has_value()) << file.Reason();
    return std::move(**file);
  }

  [[nodiscard]] bool CanOpen(const QString& name) const {
    const auto file = AppendFile::Open(Path(name));
    EXPECT_TRUE(file.IsOk()) << file.Reason();
    return file->has_value();
  }
};

TEST_F(AppendFileTest, WhatIsAppendedStandsAfterWhatWas) {
  AppendFile file = Created("a");
  ASSERT_TRUE(file.Append(BytesOf("one ")));
  ASSERT_TRUE(file.Append(BytesOf("two")));
  EXPECT_EQ(Read("a"), "one two");
  const auto all = file.ReadAll();
  ASSERT_TRUE(all.IsOk());
  EXPECT_EQ(*all, BytesOf("one two"));
  // Reading leaves the end where it is.
  ASSERT_TRUE(file.Append(BytesOf(" three")));
  EXPECT_EQ(Read("a"), "one two three");
}

TEST_F(AppendFileTest, FileThatWasClosedGoesOn) {
  ASSERT_TRUE(Created("a").Append(BytesOf("one ")));
  auto file = AppendFile::Open(Path("a"));
  ASSERT_TRUE(file.IsOk() && file->has_value());
  ASSERT_TRUE((*file)->Append(BytesOf("two")));
  EXPECT_EQ(Read("a"), "one two");
}

TEST_F(AppendFileTest, NobodyElseCanOpenItWhileItHasAnOwner) {
  {
    const AppendFile file = Created("a");
    EXPECT_FALSE(CanOpen("a"));
  }
  EXPECT_TRUE(CanOpen("a"));
}

TEST_F(AppendFileTest, OwnershipMovesWithTheObject) {
  AppendFile first = Created("a");
  const AppendFile second = std::move(first);
  EXPECT_FALSE(CanOpen("a"));
}

TEST_F(AppendFileTest, ProgramThatWasKilledOwnsNothing) {
  const pid_t child = ::fork();
  if (child == 0) {
    auto file = AppendFile::Create(Path("a"));
    if (file && *file && (*file)->Append(BytesOf("kept"))) {
      ::raise(SIGKILL);
    }
    ::_exit(1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  auto file = AppendFile::Open(Path("a"));
  ASSERT_TRUE(file.IsOk() && file->has_value());
  const auto all = (*file)->ReadAll();
  ASSERT_TRUE(all.IsOk());
  EXPECT_EQ(*all, BytesOf("kept"));
}

TEST_F(AppendFileTest, TakenNameIsNotCreatedAgain) {
  ASSERT_TRUE(Created("a").Append(BytesOf("old")));
  const auto again = AppendFile::Create(Path("a"));
  ASSERT_TRUE(again.IsOk());
  EXPECT_FALSE(again->has_value());
  EXPECT_EQ(Read("a"), "old");
}

TEST_F(AppendFileTest, MissingFileIsNotOpened) {
  EXPECT_FALSE(CanOpen("a"));
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(AppendFileTest, MissingFolderGivesTheReason) {
  EXPECT_EQ(AppendFile::Create(Path("none/a")).Reason(), "No such file or directory");
}

TEST_F(AppendFileTest, OnlyTheUserCanReadIt) {
  const AppendFile file = Created("a");
  struct stat status {};
  ASSERT_EQ(::stat(QFile::encodeName(Path("a")).constData(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(AppendFileTest, CutFileGoesOnAtItsNewEnd) {
  AppendFile file = Created("a");
  ASSERT_TRUE(file.Append(BytesOf("one two")));
  ASSERT_TRUE(file.CutTo(4));
  ASSERT_TRUE(file.Append(BytesOf("three")));
  EXPECT_EQ(Read("a"), "one three");
}

TEST_F(AppendFileTest, RemovedFileIsGone) {
  AppendFile file = Created("a");
  ASSERT_TRUE(file.Remove());
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(AppendFileTest, FilePutAsideKeepsItsBytesUnderANewName) {
  for (const char* const text : {"first", "second", "third"}) {
    AppendFile file = Created("a");
    ASSERT_TRUE(file.Append(BytesOf(text)));
    ASSERT_TRUE(file.PutAside(".damaged").IsOk());
  }
  EXPECT_THAT(Names(), ElementsAre("a.damaged", "a.damaged2", "a.damaged3"));
  EXPECT_EQ(Read("a.damaged"), "first");
  EXPECT_EQ(Read("a.damaged2"), "second");
  EXPECT_EQ(Read("a.damaged3"), "third");
}

TEST_F(AppendFileTest, FullDiskTakesNoPartOfARecord) {
  AppendFile file = Created("a");
  ASSERT_TRUE(file.Append(BytesOf("one")));
  {
    const FileSizeLimit limit(5);
    EXPECT_EQ(file.Append(BytesOf("two")).Reason(), "File too large");
  }
  EXPECT_EQ(Read("a"), "one");
  ASSERT_TRUE(file.Append(BytesOf("two")));
  EXPECT_EQ(Read("a"), "onetwo");
}

TEST_F(AppendFileTest, NothingLongerThanTwoGibibytesIsReadOrWritten) {
  AppendFile file = Created("a");
  // Holes, which take no room on the disk.
  ASSERT_TRUE(file.CutTo(AppendFile::MaxLength));
  EXPECT_EQ(file.Append(BytesOf("x")).Reason(), "It would become larger than 2 GiB");
  ASSERT_TRUE(file.CutTo(AppendFile::MaxLength + 1));
  EXPECT_EQ(file.ReadAll().Reason(), "It is larger than 2 GiB");
}

TEST_F(AppendFileTest, OwnershipIsHandedOver) {
  AppendFile first = Created("a");
  AppendFile second = Created("b");
  EXPECT_EQ(second.Path(), Path("b"));
  second = std::move(first);
  EXPECT_EQ(second.Path(), Path("a"));
  EXPECT_FALSE(CanOpen("a"));
  ASSERT_TRUE(second.Append(BytesOf("one")));
  EXPECT_EQ(Read("a"), "one");
  EXPECT_EQ(Read("b"), "");
}

TEST_F(AppendFileTest, FileThatCannotBeRemovedIsEmpty) {
  AppendFile file = Created("a");
  ASSERT_TRUE(file.Append(BytesOf("one")));
  const FaultySystem system(Fault{.Kind = Call::Remove});
  EXPECT_TRUE(file.Remove());
  EXPECT_EQ(Read("a"), "");
}

TEST_F(AppendFileTest, FileThatCanNeitherBeRemovedNorEmptiedGivesTheReason) {
  AppendFile file = Created("a");
  ASSERT_TRUE(file.Append(BytesOf("one")));
  const SystemCalls calls = System();
  System().Remove = [](const char*) { return -1; };
  System().Truncate = [](int, std::int64_t) {
    errno = EIO;
    return -1;
  };
  const auto removed = file.Remove();
  System() = calls;
  EXPECT_EQ(removed.Reason(), "Input/output error");
  EXPECT_EQ(Read("a"), "one");
}

TEST_F(AppendFileTest, FileThatCannotBePutAsideGivesTheReason) {
  AppendFile file = Created("a");
  const FaultySystem system(Fault{.Kind = Call::Rename});
  EXPECT_EQ(file.PutAside(".damaged").Reason(), "Permission denied");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

/// What the system answers once a file is open, with a file that is open in another way than was asked for.
class AppendFileFaults : public AppendFileTest {
 protected:
  AppendFileFaults() : calls_(System()) {}
  ~AppendFileFaults() override { System() = calls_; }

  inline static int opened = -1;

 private:
  SystemCalls calls_;
};

TEST_F(AppendFileFaults, FileThatNobodyCanOwnGivesTheReason) {
  System().Open = [](const char* path, int flags, unsigned mode) {
    const int file = ::open(path, flags, mode);
    ::close(file);
    return ::open(path, O_PATH);
  };
  EXPECT_EQ(AppendFile::Create(Path("a")).Reason(), "Bad file descriptor");
}

TEST_F(AppendFileFaults, FileThatCannotBeReadGivesTheReason) {
  System().Open = [](const char* path, int flags, unsigned mode) {
    return ::open(path, (flags & ~O_RDWR) | O_WRONLY, mode);
  };
  AppendFile file = Created("a");
  ASSERT_TRUE(file.Append(BytesOf("one")));
  EXPECT_EQ(file.ReadAll().Reason(), "Bad file descriptor");
}

TEST_F(AppendFileFaults, FileWhoseLengthIsNotToldIsNeitherReadNorWritten) {
  System().Open = [](const char* path, int flags, unsigned mode) {
    opened = ::open(path, flags, mode);
    return opened;
  };
  AppendFile file = Created("a");
  ::close(opened);
  EXPECT_EQ(file.ReadAll().Reason(), "Bad file descriptor");
  EXPECT_EQ(file.Append(BytesOf("one")).Reason(), "Bad file descriptor");
  EXPECT_EQ(Read("a"), "");
}

}  // namespace
}  // namespace quillmark
