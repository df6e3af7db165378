#include "files/FileOwner.h"

#include <gmock/gmock.h>

#include <QFile>

#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

class FileOwnerTest : public test::FolderTest {
 protected:
  static bool Open(QFile& file) { return file.open(QIODevice::ReadWrite); }
};

TEST_F(FileOwnerTest, OneHasItUntilItCloses) {
  QFile first(Put("a", "old"));
  QFile second(Path("a"));
  ASSERT_TRUE(Open(first) && Open(second));
  {
    const auto owner = FileOwner::Of(first.handle(), first.fileName());
    ASSERT_TRUE(owner && *owner);
    const auto other = FileOwner::Of(second.handle(), second.fileName());
    EXPECT_TRUE(other && !*other) << other.Reason();
    first.close();
  }
  const auto next = FileOwner::Of(second.handle(), second.fileName());
  EXPECT_TRUE(next && *next) << next.Reason();
}

TEST_F(FileOwnerTest, NoFileHasNoneAndAReason) {
  EXPECT_EQ(FileOwner::Of(-1, Path("a")).Reason(), "Bad file descriptor");
}

/// The one before had it until after this one opened it, and removed it.
TEST_F(FileOwnerTest, FileThatIsGoneHasNone) {
  QFile file(Put("a", "old"));
  ASSERT_TRUE(Open(file));
  ASSERT_TRUE(QFile::remove(Path("a")));
  const auto owner = FileOwner::Of(file.handle(), file.fileName());
  EXPECT_TRUE(owner && !*owner) << owner.Reason();
}

}  // namespace
}  // namespace quillmark
