#include "files/FileWriter.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include <QFile>

#include "files/SystemCalls.h"
#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

using test::BytesOf;
using testing::ElementsAre;

class FileWriterTest : public test::FolderTest {
 protected:
  FileWriterTest() : calls_(System()) {}
  ~FileWriterTest() override { System() = calls_; }

  static std::string Write(Result<FileWriter>& writer, const std::string& text) {
    return writer ? writer->Write(BytesOf(text)).Reason() : writer.Reason();
  }
  /// From now on every write fails as on a full disk.
  static void FillDisk() {
    System().Write = [](int, const void*, std::size_t) -> ssize_t {
      errno = ENOSPC;
      return -1;
    };
  }

 private:
  SystemCalls calls_;
};

TEST_F(FileWriterTest, PiecesBecomeTheFileWhenTheyAreCommitted) {
  auto writer = FileWriter::Replacing(Put("a", "an older and longer file"));
  EXPECT_EQ(Write(writer, "first "), "");
  EXPECT_EQ(Write(writer, "second"), "");
  EXPECT_EQ(Read("a"), "an older and longer file");
  EXPECT_EQ(writer->Commit().Reason(), "");
  EXPECT_EQ(Read("a"), "first second");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(FileWriterTest, WithoutACommitTheOldFileStays) {
  Put("a", "old");
  {
    auto writer = FileWriter::Replacing(Path("a"));
    EXPECT_EQ(Write(writer, "new"), "");
  }
  EXPECT_EQ(Read("a"), "old");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(FileWriterTest, FullDiskIsToldAtTheWriteAndLeavesTheOldFile) {
  Put("a", "old");
  {
    auto writer = FileWriter::Replacing(Path("a"));
    EXPECT_EQ(Write(writer, "ne"), "");
    FillDisk();
    EXPECT_EQ(Write(writer, "w"), "No space left on device");
  }
  EXPECT_EQ(Read("a"), "old");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(FileWriterTest, DiskThatLosesTheBytesAtTheEndLeavesTheOldFile) {
  Put("a", "old");
  {
    auto writer = FileWriter::Replacing(Path("a"));
    EXPECT_EQ(Write(writer, "new"), "");
    System().Sync = [](int) {
      errno = ENOSPC;
      return -1;
    };
    EXPECT_EQ(writer->Commit().Reason(), "No space left on device");
  }
  EXPECT_EQ(Read("a"), "old");
  EXPECT_THAT(Names(), ElementsAre("a"));
}

TEST_F(FileWriterTest, HardLinksStayOneFile) {
  const QString path = Put("a", "an older and longer file");
  ASSERT_EQ(::link(path.toLocal8Bit().constData(), Path("b").toLocal8Bit().constData()), 0);
  auto writer = FileWriter::Replacing(path);
  EXPECT_EQ(Write(writer, "new"), "");
  EXPECT_EQ(Read("b"), "an older and longer file");
  EXPECT_EQ(writer->Commit().Reason(), "");
  EXPECT_EQ(Read("b"), "new");
}

TEST_F(FileWriterTest, FileThatItsFolderHoldsOnToIsWrittenInPlace) {
  Put("a", "an older and longer file");
  auto writer = FileWriter::Replacing(Path("a"));
  EXPECT_EQ(Write(writer, "new"), "");
  System().Rename = [](const char*, const char*) {
    errno = EPERM;
    return -1;
  };
  EXPECT_EQ(writer->Commit().Reason(), "");
  EXPECT_EQ(Read("a"), "new");
}

TEST_F(FileWriterTest, WhatIsNoFileIsRefused) {
  ASSERT_EQ(::mkfifo(Path("pipe").toLocal8Bit().constData(), 0600), 0);
  ASSERT_TRUE(QFile::link("loop", Path("loop")));
  EXPECT_EQ(FileWriter::Replacing(Path("pipe")).Reason(), "It is a pipe, not a file");
  EXPECT_EQ(FileWriter::Replacing(Path("")).Reason(), "It is a folder");
  EXPECT_EQ(FileWriter::Replacing(Path("loop")).Reason(), "Too many levels of symbolic links");
  EXPECT_EQ(FileWriter::Replacing(Path("missing/a")).Reason(), "No such file or directory");
  EXPECT_EQ(FileWriter::Replacing("").Reason(), "The name is empty");
}

TEST_F(FileWriterTest, DeletingFirstWritesPieceByPiece) {
  Put("a", "an older and longer file");
  auto writer = FileWriter::DeletingFirst(Path("a"));
  EXPECT_EQ(Read("a"), "");
  EXPECT_EQ(Write(writer, "first "), "");
  EXPECT_EQ(Read("a"), "first ");
  FillDisk();
  EXPECT_EQ(Write(writer, "second"), "No space left on device");
  EXPECT_EQ(writer->Commit().Reason(), "");
  EXPECT_EQ(Read("a"), "first ");
}

TEST_F(FileWriterTest, DeletingFirstTellsInTheEndWhatTheDiskLost) {
  auto unsynced = FileWriter::DeletingFirst(Path("a"));
  EXPECT_EQ(Write(unsynced, "new"), "");
  System().Sync = [](int) {
    errno = EIO;
    return -1;
  };
  EXPECT_EQ(unsynced->Commit().Reason(), "Input/output error");
  System().Sync = [](int) { return 0; };
  auto unclosed = FileWriter::DeletingFirst(Path("b"));
  EXPECT_EQ(Write(unclosed, "new"), "");
  System().Close = [](int file) {
    ::close(file);
    errno = ENOSPC;
    return -1;
  };
  EXPECT_EQ(unclosed->Commit().Reason(), "No space left on device");
}

TEST_F(FileWriterTest, InterruptedCallsAreMadeAgain) {
  static int interruptions = 0;
  interruptions = 0;
  System().Open = [](const char* path, int flags, mode_t mode) {
    errno = EINTR;
    return ++interruptions % 2 == 1 ? -1 : ::open(path, flags, mode);
  };
  System().Write = [](int file, const void* bytes, std::size_t length) -> ssize_t {
    errno = EINTR;
    return ++interruptions % 2 == 1 ? -1 : ::write(file, bytes, length);
  };
  // This one is not: whatever it answers, the file is closed.
  System().Close = [](int file) {
    ::close(file);
    errno = EINTR;
    return -1;
  };
  auto writer = FileWriter::Replacing(Path("a"));
  EXPECT_EQ(Write(writer, "new"), "");
  EXPECT_EQ(writer->Commit().Reason(), "");
  EXPECT_EQ(interruptions, 4);
  EXPECT_EQ(Read("a"), "new");
}

TEST_F(FileWriterTest, DeletingFirstLeavesTheOtherNamesTheOldFile) {
  const QString path = Put("a", "old");
  ASSERT_EQ(::link(path.toLocal8Bit().constData(), Path("b").toLocal8Bit().constData()), 0);
  auto writer = FileWriter::DeletingFirst(path);
  EXPECT_EQ(Write(writer, "new"), "");
  EXPECT_EQ(Read("b"), "old");
}

TEST_F(FileWriterTest, DeletingFirstLeavesALinksTarget) {
  Put("target", "old");
  ASSERT_TRUE(QFile::link("target", Path("link")));
  auto writer = FileWriter::DeletingFirst(Path("link"));
  EXPECT_EQ(Write(writer, "new"), "");
  EXPECT_EQ(Read("target"), "old");
  EXPECT_EQ(Read("link"), "new");
}

TEST_F(FileWriterTest, FileInAFolderThatTakesNoOtherIsWrittenInPlace) {
  static std::string folder;
  folder = Path("").toStdString();
  Put("a", "an older and longer file");
  struct stat before {};
  struct stat after {};
  ASSERT_EQ(::stat(Path("a").toLocal8Bit().constData(), &before), 0);
  System().Open = [](const char* path, int flags, mode_t mode) {
    errno = EACCES;
    return (flags & O_EXCL) != 0 && std::string(path).starts_with(folder) ? -1 : ::open(path, flags, mode);
  };
  auto writer = FileWriter::Replacing(Path("a"));
  EXPECT_EQ(Write(writer, "new"), "");
  EXPECT_EQ(Read("a"), "an older and longer file");
  EXPECT_EQ(writer->Commit().Reason(), "");
  EXPECT_EQ(Read("a"), "new");
  ASSERT_EQ(::stat(Path("a").toLocal8Bit().constData(), &after), 0);
  EXPECT_EQ(after.st_ino, before.st_ino);
}

TEST_F(FileWriterTest, DeletingFirstRefusesWhatIsNoFile) {
  ASSERT_EQ(::mkfifo(Path("pipe").toLocal8Bit().constData(), 0600), 0);
  EXPECT_EQ(FileWriter::DeletingFirst(Path("pipe")).Reason(), "It is a pipe, not a file");
  EXPECT_EQ(FileWriter::DeletingFirst(Path("")).Reason(), "It is a folder");
  EXPECT_EQ(FileWriter::DeletingFirst(Path("missing/a")).Reason(), "No such file or directory");
}

/// A file of two names, which is therefore copied over where it stands.
class FileWriterInPlace : public FileWriterTest {
 protected:
  void SetUp() override {
    FileWriterTest::SetUp();
    const QByteArray path = Put("a", "an older and longer file").toLocal8Bit();
    ASSERT_EQ(::link(path.constData(), Path("b").toLocal8Bit().constData()), 0);
    writer_.emplace(FileWriter::Replacing(Path("a")));
    EXPECT_EQ(Write(*writer_, "new"), "");
  }
  [[nodiscard]] std::string Commit() { return (*writer_)->Commit().Reason(); }

 private:
  std::optional<Result<FileWriter>> writer_;
};

TEST_F(FileWriterInPlace, SecondFileThatCannotBeOpenedAgainLeavesTheOldOne) {
  System().Open = [](const char* path, int flags, unsigned mode) {
    errno = EMFILE;
    return flags == O_RDONLY ? -1 : ::open(path, flags, mode);
  };
  EXPECT_EQ(Commit(), "Too many open files");
  EXPECT_EQ(Read("a"), "an older and longer file");
}

TEST_F(FileWriterInPlace, SecondFileThatCannotBeReadLeavesTheOldOne) {
  // A folder can be opened, and not be read from.
  System().Open = [](const char* path, int flags, unsigned mode) {
    return flags == O_RDONLY ? ::open("/", flags) : ::open(path, flags, mode);
  };
  EXPECT_EQ(Commit(), "Is a directory");
  EXPECT_EQ(Read("a"), "an older and longer file");
}

TEST_F(FileWriterInPlace, FileThatCannotBeOpenedStays) {
  System().Open = [](const char* path, int flags, unsigned mode) {
    errno = EROFS;
    return flags == O_WRONLY ? -1 : ::open(path, flags, mode);
  };
  EXPECT_EQ(Commit(), "Read-only file system");
  EXPECT_EQ(Read("a"), "an older and longer file");
}

TEST_F(FileWriterInPlace, FailureAtTheFirstByteLeavesTheOldOne) {
  FillDisk();
  EXPECT_EQ(Commit(), "No space left on device");
  EXPECT_EQ(Read("a"), "an older and longer file");
}

TEST_F(FileWriterInPlace, EndThatCannotBeCutOffIsTold) {
  System().Truncate = [](int, std::int64_t) {
    errno = EIO;
    return -1;
  };
  EXPECT_EQ(Commit(), "Input/output error");
}

TEST_F(FileWriterTest, WriteThatTakesNothingIsAFullDisk) {
  auto writer = FileWriter::Replacing(Path("a"));
  System().Write = [](int, const void*, std::size_t) -> ssize_t { return 0; };
  EXPECT_EQ(Write(writer, "new"), "No space left on device");
}

TEST_F(FileWriterTest, WhatHasNoDiskBehindItNeedsNone) {
  static int error = 0;
  System().Sync = [](int) {
    errno = error;
    return -1;
  };
  for (const int reason : {EINVAL, EROFS, ENOTSUP}) {
    error = reason;
    auto writer = FileWriter::Replacing(Path("a"));
    EXPECT_EQ(Write(writer, "new"), "");
    EXPECT_EQ(writer->Commit().Reason(), "") << reason;
  }
}

/// Where the place for temporary files is none, they go where every system of this kind has one.
TEST_F(FileWriterTest, TemporaryFilesHaveAPlaceInAnyCase) {
  static std::string second;
  Put("a", "old");
  System().Open = [](const char* path, int flags, unsigned mode) {
    errno = EACCES;
    second = path;
    return second.starts_with("/tmp/quillmark-") ? ::open("/dev/null", O_RDONLY)
           : (flags & O_EXCL) != 0               ? -1
                                                 : ::open(path, flags, mode);
  };
  System().Remove = [](const char*) { return 0; };
  const char* const before = std::getenv("TMPDIR");
  const std::optional<std::string> kept =
      before == nullptr ? std::nullopt : std::optional<std::string>(before);
  ::setenv("TMPDIR", Path("nowhere").toLocal8Bit().constData(), 1);
  EXPECT_TRUE(FileWriter::Replacing(Path("a")));
  if (kept) {
    ::setenv("TMPDIR", kept->c_str(), 1);
  } else {
    ::unsetenv("TMPDIR");
  }
  EXPECT_TRUE(second.starts_with("/tmp/quillmark-")) << second;
}

}  // namespace
}  // namespace quillmark
