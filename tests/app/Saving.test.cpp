#include <QDir>
#include <QFileInfo>
#include <QLineEdit>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"
#include "tests/support/FileSizeLimit.h"

namespace quillmark::test {
namespace {

class Saving : public WindowTest {
 protected:
  void SaveTo(const QString& path) {
    Dialogs.ExpectSave(path);
    Click("Command_SaveSup");
    Dialogs.Verify();
  }
  /// A failure is told in words of the program's own, with the file's name.
  void FailToSaveTo(const QString& path) {
    Dialogs.ExpectSave(path);
    Dialogs.ExpectMessageWith({QFileInfo(path).fileName()});
    Click("Command_SaveSup");
    Dialogs.Verify();
    EXPECT_EQ(Dialogs.Last().Title, "Quillmark");
  }
  /// Enables Save SUP while no stream is loaded.
  void CancelLoading() {
    Dialogs.ExpectCancelled(DialogKind::OpenFile);
    Click("Command_LoadSup");
  }
};

TEST_F(Saving, UneditedStreamIsIdentical) {
  LoadStream(Join({ThreeSubtitles(), Bytes(5, 0xEE)}));
  EXPECT_EQ(SavedBytes(), Join({ThreeSubtitles(), Bytes(5, 0xEE)}));
}

TEST_F(Saving, DialogProposesANewNameBesideTheStream) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SaveSup");
  EXPECT_EQ(Dialogs.Last().Folder, Folder.path());
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "movie_new.sup");
  EXPECT_EQ(Dialogs.Last().Filters, QStringList("SUP Files (*.SUP)"));
  EXPECT_FALSE(QFileInfo::exists(Path("movie_new.sup")));
}

TEST_F(Saving, ProposedNameIsCutAtTheLastPoint) {
  Load(Write("movie.2.part.sup", ThreeSubtitles()));
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SaveSup");
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "movie.2.part_new.sup");
}

TEST_F(Saving, NameWithoutAPointKeepsItAllInTheProposal) {
  LoadStream(ThreeSubtitles());
  QDir().mkdir(Path("films.new"));
  Control<QLineEdit>("Text1").setText(Path("films.new/movie"));
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SaveSup");
  EXPECT_EQ(Dialogs.Last().Folder, Path("films.new"));
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "movie_new.sup");
}

TEST_F(Saving, NameWithoutAPointIsWrittenAsItIs) {
  LoadStream(ThreeSubtitles());
  SaveTo(Path("movie"));
  EXPECT_EQ(Read(Path("movie")), ThreeSubtitles());
}

TEST_F(Saving, ProposalForAPathOfFourCharactersHasItsName) {
  LoadStream(ThreeSubtitles());
  Control<QLineEdit>("Text1").setText("abcd");
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SaveSup");
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "abcd_new.sup");
}

TEST_F(Saving, ProposalForAPathBelowFourCharactersIsTestNewInTheProgramsFolder) {
  LoadStream(ThreeSubtitles());
  Control<QLineEdit>("Text1").setText("abc");
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SaveSup");
  EXPECT_EQ(Dialogs.Last().Folder, QFileInfo(InProgramsFolder("test.sup")).path());
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "test_new.sup");
}

TEST_F(Saving, ExistingFileIsReplacedWithoutAsking) {
  LoadStream(ThreeSubtitles());
  SaveTo(Write("old.sup", QByteArray("old")));
  EXPECT_EQ(Read(Path("old.sup")), ThreeSubtitles());
}

TEST_F(Saving, TailOfALongerFileStays) {
  LoadStream(ThreeSubtitles());
  SaveTo(Write("old.sup", Bytes(200, 0x77)));
  EXPECT_EQ(Read(Path("old.sup")), Join({ThreeSubtitles(), Bytes(200 - 3 * PacketBuilder::Length, 0x77)}));
}

TEST_F(Saving, LoadedFileItselfCanBeSavedOver) {
  const QString path = LoadStream(ThreeSubtitles());
  Choose("ImageCombo2", "7");
  Click("Command_SetActual");
  SaveTo(path);
  Bytes expected = ThreeSubtitles();
  expected[ColourArguments + 1] = 0x70;
  EXPECT_EQ(Read(path), expected);
}

TEST_F(Saving, PathAndNumberStayAfterSaving) {
  const QString path = LoadStream(ThreeSubtitles());
  Click("Command_Next");
  SaveTo(Path("other.sup"));
  EXPECT_EQ(TextOf("Text1"), path);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
}

TEST_F(Saving, SymbolicLinkStaysALink) {
  LoadStream(ThreeSubtitles());
  const QString target = Write("target.sup", QByteArray());
  ASSERT_TRUE(QFile::link(target, Path("link.sup")));
  SaveTo(Path("link.sup"));
  EXPECT_TRUE(QFileInfo(Path("link.sup")).isSymLink());
  EXPECT_EQ(Read(target), ThreeSubtitles());
}

TEST_F(Saving, PermissionsStay) {
  LoadStream(ThreeSubtitles());
  const QString path = Write("old.sup", QByteArray("old"));
  const auto ownerOnly = QFile::ReadOwner | QFile::WriteOwner;
  ASSERT_TRUE(QFile::setPermissions(path, ownerOnly));
  const auto before = QFileInfo(path).permissions();
  SaveTo(path);
  EXPECT_EQ(QFileInfo(path).permissions(), before);
}

TEST_F(Saving, MissingFolderIsTold) {
  LoadStream(ThreeSubtitles());
  FailToSaveTo(Path("missing/new.sup"));
  EXPECT_FALSE(QFileInfo::exists(Path("missing")));
}

TEST_F(Saving, StreamIsUnchangedAfterAFailure) {
  LoadStream(ThreeSubtitles());
  FailToSaveTo(Path("missing/new.sup"));
  EXPECT_EQ(SavedBytes(), ThreeSubtitles());
}

TEST_F(Saving, DiskFullHalfWayLeavesTheTargetAsItWas) {
  Bytes stream;
  for (int i = 0; i < 2000; ++i) {
    const Bytes packet = PacketBuilder().Time(i * Second).Build();
    stream.insert(stream.end(), packet.begin(), packet.end());
  }
  LoadStream(stream);
  const QString path = Write("old.sup", QByteArray("old"));
  const QStringList before = QDir(Folder.path()).entryList(QDir::AllEntries | QDir::Hidden);
  {
    const FileSizeLimit limit(65536);
    FailToSaveTo(path);
  }
  EXPECT_EQ(ReadText(path), "old");
  EXPECT_EQ(QDir(Folder.path()).entryList(QDir::AllEntries | QDir::Hidden), before);
  EXPECT_EQ(SavedBytes(), stream);
}

TEST_F(Saving, ProposalWithoutAStreamIsTestNewInTheProgramsFolder) {
  CancelLoading();
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SaveSup");
  EXPECT_EQ(Dialogs.Last().Folder, QFileInfo(InProgramsFolder("test.sup")).path());
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "test_new.sup");
}

TEST_F(Saving, NothingIsWrittenWithoutAStream) {
  CancelLoading();
  SaveTo(Path("new.sup"));
  EXPECT_FALSE(QFileInfo::exists(Path("new.sup")));
}

TEST_F(Saving, ExistingFileIsNotTouchedWithoutAStream) {
  CancelLoading();
  SaveTo(Write("old.sup", QByteArray("old")));
  EXPECT_EQ(ReadText(Path("old.sup")), "old");
}

}  // namespace
}  // namespace quillmark::test
