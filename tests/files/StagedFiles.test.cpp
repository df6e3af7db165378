#include "files/StagedFiles.h"

#include <gmock/gmock.h>
#include <optional>

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

#include "files/SystemCalls.h"
#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class StagedFilesTest : public test::FolderTest {
 protected:
  void SetUp() override {
    FolderTest::SetUp();
    auto staged = StagedFiles::In(Folder());
    ASSERT_TRUE(staged) << staged.Reason();
    Staged.emplace(std::move(*staged));
  }

  void Stage(const QString& name, const char* content) {
    QFile file(Staged->PathOf(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
  }

  std::optional<StagedFiles> Staged;
};

TEST_F(StagedFilesTest, FilesAndFoldersTakeTheirPlaces) {
  ASSERT_TRUE(Staged->AddFolder("pictures"));
  Stage("pictures/1.png", "one");
  Stage("list.xml", "list");
  ASSERT_TRUE(Staged->TakePlaces(Overwriting::Refused));
  Staged.reset();
  EXPECT_THAT(Names(), ElementsAre("list.xml", "pictures"));
  EXPECT_EQ(Read("pictures/1.png"), "one");
  EXPECT_EQ(Read("list.xml"), "list");
}

TEST_F(StagedFilesTest, WithoutThatNothingStays) {
  ASSERT_TRUE(Staged->AddFolder("pictures"));
  Stage("pictures/1.png", "one");
  Staged.reset();
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(StagedFilesTest, ARefusedFileTakesTheNewOnesBack) {
  Put("b.xml", "old");
  Stage("a.xml", "new");
  Stage("b.xml", "new");
  Stage("c.xml", "new");
  const auto placed = Staged->TakePlaces(Overwriting::Refused);
  EXPECT_THAT(placed.Reason(), HasSubstr("b.xml: it is there already"));
  Staged.reset();
  EXPECT_THAT(Names(), ElementsAre("b.xml"));
  EXPECT_EQ(Read("b.xml"), "old");
}

TEST_F(StagedFilesTest, AllowedItReplacesFilesAndLeavesOthersInTheirFolder) {
  Put("list.xml", "old");
  ASSERT_TRUE(QDir(Folder()).mkdir("pictures"));
  Put("pictures/1.png", "old");
  Put("pictures/mine.txt", "mine");
  ASSERT_TRUE(Staged->AddFolder("pictures"));
  Stage("pictures/1.png", "one");
  Stage("pictures/2.png", "two");
  Stage("list.xml", "list");
  ASSERT_TRUE(Staged->TakePlaces(Overwriting::Allowed));
  EXPECT_EQ(Read("list.xml"), "list");
  EXPECT_EQ(Read("pictures/1.png"), "one");
  EXPECT_EQ(Read("pictures/2.png"), "two");
  EXPECT_EQ(Read("pictures/mine.txt"), "mine");
}

TEST_F(StagedFilesTest, AFileIsNotReplacedByAFolder) {
  Put("pictures", "a file");
  ASSERT_TRUE(Staged->AddFolder("pictures"));
  EXPECT_THAT(Staged->TakePlaces(Overwriting::Allowed).Reason(), HasSubstr("pictures: it is no folder"));
  EXPECT_EQ(Read("pictures"), "a file");
}

TEST_F(StagedFilesTest, AReplacedLinkStaysOne) {
  Put("real.xml", "old");
  ASSERT_TRUE(QFile::link(Path("real.xml"), Path("list.xml")));
  Stage("list.xml", "new");
  ASSERT_TRUE(Staged->TakePlaces(Overwriting::Allowed));
  EXPECT_EQ(Read("real.xml"), "new");
}

TEST_F(StagedFilesTest, ALinkThatLeadsNowhereIsThereAlready) {
  ASSERT_TRUE(QFile::link(Path("nowhere"), Path("list.xml")));
  EXPECT_THAT(RefuseExisting({Path("list.xml"), Path("other")}).Reason(), HasSubstr("list.xml"));
  EXPECT_EQ(ExistingPaths({Path("list.xml"), Path("other")}).size(), 1U);
}

TEST_F(StagedFilesTest, PathsAndNamesBelongTogether) {
  EXPECT_EQ(Staged->NameOf(Staged->PathOf("pictures/1.png")), "pictures/1.png");
}

TEST_F(StagedFilesTest, AMoveThatFailsHasItsReason) {
  Stage("list.xml", "list");
  const SystemCalls before = System();
  System().Rename = [](const char*, const char*) {
    errno = ENOSPC;
    return -1;
  };
  const auto placed = Staged->TakePlaces(Overwriting::Refused);
  System() = before;
  EXPECT_THAT(placed.Reason(), HasSubstr("list.xml: No space left on device"));
}

TEST_F(StagedFilesTest, AStagedFileThatCannotBeReadIsNamed) {
  Put("list.xml", "old");
  ASSERT_TRUE(QFile::link(Path("nowhere"), Staged->PathOf("list.xml")));
  const auto placed = Staged->TakePlaces(Overwriting::Allowed);
  EXPECT_EQ(placed.Reason(), Staged->PathOf("list.xml").toStdString() + ": it cannot be read");
  EXPECT_EQ(Read("list.xml"), "old");
}

TEST_F(StagedFilesTest, AStageThatIsGoneIsNamed) {
  const QString stage = Staged->PathOf("");
  ASSERT_TRUE(QDir(stage).removeRecursively());
  EXPECT_THAT(Staged->TakePlaces(Overwriting::Refused).Reason(), HasSubstr(": No such file or directory"));
}

TEST_F(StagedFilesTest, AllThatIsThereIsNamed) {
  Put("a", "");
  Put("b", "");
  const std::string folder = Folder().toStdString();
  EXPECT_EQ(RefuseExisting({Path("a"), Path("other"), Path("b")}).Reason(),
            "already there: " + folder + "/a, " + folder + "/b");
}

TEST(StagedFilesFolder, NoNameIsTheCurrentFolder) {
  const auto staged = StagedFiles::In("");
  ASSERT_TRUE(staged) << staged.Reason();
  EXPECT_TRUE(staged->PathOf("a").startsWith("./."));
  EXPECT_TRUE(QFileInfo(staged->PathOf("")).isDir());
}

TEST(StagedFilesFolder, AMissingFolderIsNamed) {
  EXPECT_THAT(StagedFiles::In("/nowhere/at/all").Reason(), HasSubstr("/nowhere/at/all: No such file"));
}

}  // namespace
}  // namespace quillmark
