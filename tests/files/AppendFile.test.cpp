#include "files/AppendFile.h"

#include <csignal>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

#include <QFile>

#include "tests/support/FileSizeLimit.h"
#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

using test::BytesOf;
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

}  // namespace
}  // namespace quillmark
