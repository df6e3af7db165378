#include "files/Target.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "files/FileWriter.h"
#include "files/ReplaceFile.h"
#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

using test::BytesOf;
using testing::ElementsAre;

class TargetTest : public test::FolderTest {};

TEST_F(TargetTest, NothingIsANewFileInItsFolder) {
  const auto target = InspectTarget(Path("new"));
  ASSERT_TRUE(target);
  EXPECT_EQ(target->What, Target::Kind::New);
  EXPECT_EQ(target->Folder, Folder().toStdString());
  EXPECT_EQ(InspectTarget("new")->Folder, ".");
}

/// A name that ends in a slash is a folder's; without one there is nothing that a file could be made of.
TEST_F(TargetTest, SlashAtTheEndNamesNoNewFile) {
  EXPECT_EQ(InspectTarget(Path("new/")).Reason(), "No such file or directory");
  EXPECT_EQ(AppendToFile(Path("new/"), BytesOf("new")).Reason(), "No such file or directory");
  EXPECT_EQ(ReplaceFile(Path("new/"), BytesOf("new")).Reason(), "No such file or directory");
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(TargetTest, SlashAtTheEndOfAFilesNameIsRefused) {
  Put("a", "old");
  EXPECT_EQ(InspectTarget(Path("a/")).Reason(), "Not a directory");
  EXPECT_EQ(Read("a"), "old");
}

TEST_F(TargetTest, SocketIsRefusedAndStays) {
  const QByteArray path = Path("socket").toLocal8Bit();
  ASSERT_EQ(::mknod(path.constData(), S_IFSOCK | 0600U, 0), 0);
  EXPECT_EQ(ReplaceFile(Path("socket"), BytesOf("new")).Reason(), "It is a socket, not a file");
  EXPECT_EQ(AppendToFile(Path("socket"), BytesOf("new")).Reason(), "It is a socket, not a file");
  EXPECT_EQ(FileWriter::Replacing(Path("socket")).Reason(), "It is a socket, not a file");
  EXPECT_EQ(FileWriter::DeletingFirst(Path("socket")).Reason(), "It is a socket, not a file");
  struct stat status {};
  ASSERT_EQ(::lstat(path.constData(), &status), 0);
  EXPECT_TRUE(S_ISSOCK(status.st_mode));
}

}  // namespace
}  // namespace quillmark
