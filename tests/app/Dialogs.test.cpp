#include "app/Dialogs.h"

#include <algorithm>

#include <QColorDialog>
#include <QDir>
#include <QFileInfo>
#include <QMainWindow>
#include <QPushButton>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

/// The four operations on an owner of their own, without the program's window.
class DialogOperations : public testing::Test {
 protected:
  DialogOperations() {
    Owner.setWindowTitle("Caption");
    Owner.show();
  }
  [[nodiscard]] QString Path(const QString& name) const { return Folder.filePath(name); }
  [[nodiscard]] QString Touch(const QString& name) const {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    return file.fileName();
  }

  QTemporaryDir Folder;
  QMainWindow Owner;
  DialogScript Dialogs;
};

TEST_F(DialogOperations, OpenGivesTheChosenPath) {
  const QString path = Touch("a.sup");
  Dialogs.ExpectOpen(path);
  EXPECT_EQ(OpenFileName(&Owner, Path("b.sup"), "SUP Files (*.SUP)", "*.SUP"), path);
}

TEST_F(DialogOperations, OpenIsModalAndTitledWithTheOwnersCaption) {
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  (void)OpenFileName(&Owner, Path("b.sup"), "SUP Files (*.SUP)", "*.SUP");
  EXPECT_EQ(Dialogs.Last().Title, "Caption");
  EXPECT_TRUE(Dialogs.Last().IsModal);
  EXPECT_EQ(Dialogs.Last().Owner, &Owner);
}

TEST_F(DialogOperations, OpenStartsInTheFolderOfTheInitialName) {
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  (void)OpenFileName(&Owner, Path("b.sup"), "SUP Files (*.SUP)", "*.SUP");
  EXPECT_EQ(Dialogs.Last().Folder, Folder.path());
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "b.sup");
}

TEST_F(DialogOperations, OpenOffersOneFilterAndExistingFilesOnly) {
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  (void)OpenFileName(&Owner, Path("b.sup"), "SUP Files (*.SUP)", "*.SUP");
  EXPECT_EQ(Dialogs.Last().Filters, QStringList("SUP Files (*.SUP)"));
  EXPECT_EQ(Dialogs.Last().FileMode, QFileDialog::ExistingFile);
}

TEST_F(DialogOperations, OpenRefusesAMissingFile) {
  const DialogScript::Answer type = DialogScript::ConfirmFile(Path("missing.sup"));
  Dialogs.Expect(DialogKind::OpenFile, [&type](QDialog& dialog) {
    type(dialog);
    EXPECT_TRUE(dialog.isVisible());
    dialog.reject();
  });
  Dialogs.ExpectMessageWith({"missing.sup"});
  EXPECT_EQ(OpenFileName(&Owner, Path("b.sup"), "SUP Files (*.SUP)", "*.SUP"), QString());
}

TEST_F(DialogOperations, OpenCancelledGivesTheEmptyText) {
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  EXPECT_EQ(OpenFileName(&Owner, Touch("b.sup"), "SUP Files (*.SUP)", "*.SUP"), QString());
}

TEST_F(DialogOperations, OpenWithoutAnInitialNameWorks) {
  const QString path = Touch("a.sup");
  Dialogs.ExpectOpen(path);
  EXPECT_EQ(OpenFileName(&Owner, {}, "SUP Files (*.SUP)", "*.SUP"), path);
}

TEST_F(DialogOperations, OpenResultTooShortFallsBackToTheInitialName) {
  EXPECT_EQ(OpenResult("ab", "initial.sup"), "initial.sup");
  EXPECT_EQ(OpenResult(" ab ", "initial.sup"), "initial.sup");
  EXPECT_EQ(OpenResult("abc", "initial.sup"), "abc");
  EXPECT_EQ(OpenResult(" abc ", "initial.sup"), "abc");
}

TEST_F(DialogOperations, SaveResultTooShortCountsAsCancelled) {
  EXPECT_EQ(SaveResult("ab"), QString());
  EXPECT_EQ(SaveResult("abc"), "abc");
  EXPECT_EQ(SaveResult(" abc "), "abc");
}

TEST_F(DialogOperations, ResultsEndAtTheFirstNul) {
  const QString name = QStringLiteral("abc") + QChar::Null + QStringLiteral("def");
  EXPECT_EQ(OpenResult(name, "initial.sup"), "abc");
  EXPECT_EQ(SaveResult(name), "abc");
}

TEST_F(DialogOperations, InitialNameBeyond256CharactersCountsAsCancelled) {
  const QString name = Path(QString(250, 'a') + ".sup");
  EXPECT_EQ(OpenFileName(&Owner, name, "SUP Files (*.SUP)", "*.SUP"), QString());
  EXPECT_EQ(SaveFileName(&Owner, Folder.path() + '/', name, "SUP Files (*.SUP)", "*.SUP"), QString());
}

TEST_F(DialogOperations, ChosenPathBeyond256CharactersCountsAsCancelled) {
  const QString folder = QString(150, 'a');
  ASSERT_TRUE(QDir(Folder.path()).mkdir(folder));
  const QString name = folder + '/' + QString(150, 'b');
  Dialogs.ExpectSave(Path(name));
  EXPECT_EQ(SaveFileName(&Owner, Folder.path() + '/', Path("b.sup"), "SUP Files (*.SUP)", "*.SUP"),
            QString());
  Dialogs.ExpectOpen(Touch(name));
  EXPECT_EQ(OpenFileName(&Owner, Path("b.sup"), "SUP Files (*.SUP)", "*.SUP"), QString());
}

TEST_F(DialogOperations, SaveGivesTheChosenPath) {
  Dialogs.ExpectSave(Path("new.sup"));
  EXPECT_EQ(SaveFileName(&Owner, Folder.path() + '/', Path("b.sup"), "SUP Files (*.SUP)", "*.SUP"),
            Path("new.sup"));
}

TEST_F(DialogOperations, SaveDoesNotAskBeforeReplacing) {
  const QString path = Touch("old.sup");
  Dialogs.ExpectSave(path);
  EXPECT_EQ(SaveFileName(&Owner, Folder.path() + '/', Path("b.sup"), "SUP Files (*.SUP)", "*.SUP"), path);
  EXPECT_FALSE(Dialogs.Last().AsksBeforeReplacing);
}

TEST_F(DialogOperations, SaveStartsWithFolderAndName) {
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  EXPECT_EQ(SaveFileName(&Owner, Folder.path() + '/', Path("b.sup"), "SUP Files (*.SUP)", "*.SUP"),
            QString());
  EXPECT_EQ(Dialogs.Last().Title, "Caption");
  EXPECT_TRUE(Dialogs.Last().IsModal);
  EXPECT_EQ(Dialogs.Last().Folder, Folder.path());
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "b.sup");
  EXPECT_EQ(Dialogs.Last().Filters, QStringList("SUP Files (*.SUP)"));
}

TEST_F(DialogOperations, SaveAddsNoExtension) {
  Dialogs.ExpectSave(Path("plain"));
  EXPECT_EQ(SaveFileName(&Owner, Folder.path() + '/', Path("b.sup"), "SUP Files (*.SUP)", "*.SUP"),
            Path("plain"));
}

TEST_F(DialogOperations, ColourCancelledGivesTheInitialOne) {
  Dialogs.ExpectCancelled(DialogKind::Colour);
  EXPECT_EQ(ChooseColour(&Owner, 0x030201U), 0x030201U);
  EXPECT_EQ(Dialogs.Last().Colour, QColor(1, 2, 3));
  EXPECT_EQ(Dialogs.Last().Title, "Caption");
}

TEST_F(DialogOperations, ColourCancelledKeepsEvenBlack) {
  Dialogs.ExpectCancelled(DialogKind::Colour);
  EXPECT_EQ(ChooseColour(&Owner, 0U), 0U);
}

TEST_F(DialogOperations, ColourHasRedInItsLowByte) {
  Dialogs.ExpectColour(QColor(1, 2, 3));
  EXPECT_EQ(ChooseColour(&Owner, 0U), 0x030201U);
}

TEST_F(DialogOperations, ColourBelowTwoIsTwo) {
  Dialogs.ExpectColour(QColor(0, 0, 0));
  EXPECT_EQ(ChooseColour(&Owner, 0xFFFFFFU), 2U);
  Dialogs.ExpectColour(QColor(1, 0, 0));
  EXPECT_EQ(ChooseColour(&Owner, 0xFFFFFFU), 2U);
  Dialogs.ExpectColour(QColor(2, 0, 0));
  EXPECT_EQ(ChooseColour(&Owner, 0xFFFFFFU), 2U);
  Dialogs.ExpectColour(QColor(3, 0, 0));
  EXPECT_EQ(ChooseColour(&Owner, 0xFFFFFFU), 3U);
}

TEST_F(DialogOperations, FileExistsTellsFilesFromNothing) {
  EXPECT_TRUE(FileExists(Touch("a.bmp")));
  EXPECT_FALSE(FileExists(Path("b.bmp")));
  EXPECT_FALSE(FileExists({}));
}

/// The only test that defines custom colours, so that it sees the first dialog of the program with them.
TEST_F(DialogOperations, CustomColoursStartBlackAndAreOfferedAgain) {
  const auto addCurrent = [](const QColor& colour) {
    return [colour](QDialog& dialog) {
      qobject_cast<QColorDialog*>(&dialog)->setCurrentColor(colour);
      for (auto* button : dialog.findChildren<QPushButton*>()) {
        if (button->text().remove('&').contains("Add to Custom")) {
          button->click();
        }
      }
      dialog.accept();
    };
  };
  Dialogs.Expect(DialogKind::Colour, addCurrent(QColor(10, 20, 30)));
  (void)ChooseColour(&Owner, 0xFFFFFFU);
  for (const QColor& custom : Dialogs.Last().CustomColours) {
    EXPECT_EQ(custom.rgb(), QColor(0, 0, 0).rgb());
  }
  QMainWindow other;
  other.show();
  Dialogs.ExpectCancelled(DialogKind::Colour);
  (void)ChooseColour(&other, 0xFFFFFFU);
  const auto& offered = Dialogs.Last().CustomColours;
  EXPECT_EQ(std::count_if(offered.begin(), offered.end(),
                          [](const QColor& colour) { return colour.rgb() == QColor(10, 20, 30).rgb(); }),
            1);
}

}  // namespace
}  // namespace quillmark::test
