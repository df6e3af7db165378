#include <gmock/gmock.h>

#include <QAction>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTest>

#include "app/SubtitleFrame.h"
#include "tests/app/PaletteFiles.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"
#include "tests/support/IfoBuilder.h"

namespace quillmark::test {
namespace {

const QColor RedOfChain(ShownRed[0], ShownRed[1], ShownRed[2]);

class ProgramChains : public WindowTest {
 protected:
  void SetUp() override {
    LoadStream(FourCodes(PacketBuilder()));
    Click("Option_720x576");
    // Of the second title entry 1 is red; the third one shows no picture.
    ifo_ = Write("vts_01_0.ifo",
                 TitleSetFile({{.Category = 0x81, .Palette = {{0x10, 0x80, 0x80}}},
                               {.Category = 0x82, .Palette = {{0x10, 0x80, 0x80}, {0x52, 0xF0, 0x5A}}},
                               {.Category = 0x83, .Programs = 0, .Cells = 0, .Palette = {}}}));
  }

  void Open(const DialogScript::Answer& answer) {
    Dialogs.ExpectOpen(ifo_);
    Dialogs.Expect(DialogKind::Other, answer);
    Window.findChild<QAction*>("Action_ProgramChains")->trigger();
    Dialogs.Verify();
  }

  static QTableView& List(const QDialog& dialog) {
    return *dialog.findChild<QTableView*>("List_ProgramChains");
  }
  static QString Text(const QDialog& dialog, int row, int column) {
    return List(dialog).model()->index(row, column).data().toString();
  }
  static QImage Picture(const QDialog& dialog, int row, int column) {
    const auto icon = List(dialog).model()->index(row, column).data(Qt::DecorationRole).value<QIcon>();
    return icon.pixmap(QSize(220, 36)).toImage();
  }
  static bool Holds(const QImage& picture, const QColor& colour) {
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) {
        if (picture.pixelColor(x, y).rgb() == colour.rgb()) {
          return true;
        }
      }
    }
    return false;
  }
  /// Goes to the second chain and takes its palette.
  static void TakeSecond(QDialog& dialog) {
    QTest::keyClick(&List(dialog), Qt::Key_Down);
    QTest::mouseClick(dialog.findChild<QWidget*>("Command_Use"), Qt::LeftButton);
  }

 private:
  QString ifo_;
};

TEST_F(ProgramChains, EveryChainHasARowWithItsPalette) {
  Open([](QDialog& dialog) {
    EXPECT_EQ(dialog.objectName(), "ProgramChainsDialog");
    EXPECT_EQ(List(dialog).model()->rowCount(), 3);
    EXPECT_EQ(Text(dialog, 0, 0), "1");
    EXPECT_EQ(Text(dialog, 2, 0), "3");
    EXPECT_EQ(Text(dialog, 0, 1), "title 1");
    EXPECT_EQ(Text(dialog, 1, 1), "title 2");
    EXPECT_EQ(Text(dialog, 2, 1), "title 3, no picture");
    EXPECT_FALSE(Holds(Picture(dialog, 0, 4), RedOfChain));
    EXPECT_TRUE(Holds(Picture(dialog, 1, 4), RedOfChain));
    for (int column = 0; column < 4; ++column) {
      EXPECT_TRUE(Picture(dialog, 1, column).isNull()) << column;
    }
    dialog.reject();
  });
}

TEST_F(ProgramChains, PaletteOfAChainIsSaidInItsColumnAlone) {
  Open([](QDialog& dialog) {
    for (const int role : {Qt::ToolTipRole, Qt::AccessibleTextRole}) {
      for (int column = 0; column < 6; ++column) {
        const QString said = List(dialog).model()->index(1, column).data(role).toString();
        EXPECT_EQ(!said.isEmpty(), column == 4) << column;
        EXPECT_EQ(said.contains("red"), column == 4) << column;
      }
    }
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->click();
    EXPECT_FALSE(dialog.isVisible());
  });
}

TEST_F(ProgramChains, SubtitleShownIsDrawnInEachPalette) {
  Open([](QDialog& dialog) {
    EXPECT_FALSE(Holds(Picture(dialog, 0, 5), RedOfChain));
    EXPECT_TRUE(Holds(Picture(dialog, 1, 5), RedOfChain));
    for (const int column : {0, 1, 2, 3}) {
      EXPECT_TRUE(Picture(dialog, 0, column).isNull()) << column;
    }
    const auto& frame = *static_cast<SubtitleFrame*>(dialog.findChild<QWidget*>("Picture_Chain"));
    EXPECT_FALSE(Holds(frame.Picture(), RedOfChain));
    QTest::keyClick(&List(dialog), Qt::Key_Down);
    EXPECT_TRUE(Holds(frame.Picture(), RedOfChain));
    dialog.reject();
  });
}

TEST_F(ProgramChains, WithoutASubtitleThereAreNoPictures) {
  Open([](QDialog& dialog) {
    EXPECT_FALSE(List(dialog).isColumnHidden(5));
    EXPECT_TRUE(dialog.findChild<QWidget*>("Picture_Chain")->isVisible());
    dialog.reject();
  });
  LoadStream({});
  Open([](QDialog& dialog) {
    EXPECT_TRUE(List(dialog).isColumnHidden(5));
    EXPECT_FALSE(dialog.findChild<QWidget*>("Picture_Chain")->isVisible());
    dialog.reject();
  });
}

TEST_F(ProgramChains, ChosenPaletteIsSetAndShown) {
  Open(TakeSecond);
  EXPECT_EQ(SwatchColour(1), RedOfChain);
  EXPECT_EQ(FrameColour(102, 400), RedOfChain);
}

TEST_F(ProgramChains, DoubleClickTakesThePaletteOfItsRow) {
  Open([](QDialog& dialog) {
    QTableView& list = List(dialog);
    const QPoint place = list.visualRect(list.model()->index(1, 1)).center();
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
  });
  EXPECT_EQ(SwatchColour(1), RedOfChain);
}

TEST_F(ProgramChains, ChoiceIsOneStepOfTheHistory) {
  const QColor before = SwatchColour(1);
  Open(TakeSecond);
  auto& undo = *Window.findChild<QAction*>("Action_Undo");
  EXPECT_THAT(undo.text().toStdString(), testing::HasSubstr("Palette of title 2"));
  undo.trigger();
  EXPECT_EQ(SwatchColour(1), before);
  EXPECT_FALSE(undo.isEnabled());
}

TEST_F(ProgramChains, CancelChangesNothing) {
  const QColor before = SwatchColour(1);
  Open([](QDialog& dialog) {
    QTest::keyClick(&List(dialog), Qt::Key_Down);
    dialog.reject();
  });
  EXPECT_EQ(SwatchColour(1), before);
  EXPECT_FALSE(Window.findChild<QAction*>("Action_Undo")->isEnabled());
}

TEST_F(ProgramChains, ChainOfThePresentPaletteIsTheOneChosen) {
  Open(TakeSecond);
  Open([](QDialog& dialog) {
    EXPECT_EQ(List(dialog).currentIndex().row(), 1);
    dialog.reject();
  });
}

TEST_F(ProgramChains, FileOfAnotherKindIsRefusedWithItsReason) {
  const QString path = Write("other.ifo", QByteArray("hello"));
  Dialogs.ExpectOpen(path);
  Dialogs.ExpectMessage("Cannot read " + path +
                        ": it is no IFO file: it starts with neither DVDVIDEO-VTS nor DVDVIDEO-VMG");
  Window.findChild<QAction*>("Action_ProgramChains")->trigger();
}

TEST_F(ProgramChains, DamageIsTold) {
  Bytes cut = TitleSetFile({{}, {}});
  cut.resize(2048 + 8 + 16 + 0xEC);
  Dialogs.ExpectOpen(Write("cut.ifo", cut));
  Dialogs.Expect(DialogKind::Other, [](QDialog& dialog) {
    EXPECT_EQ(List(dialog).model()->rowCount(), 1);
    const auto* const notes = dialog.findChild<QLabel*>("Label_Notes");
    ASSERT_NE(notes, nullptr);
    EXPECT_EQ(notes->text(), "1 program chain outside the file or its table left out");
    EXPECT_TRUE(notes->wordWrap());
    EXPECT_GT(notes->geometry().top(), List(dialog).geometry().bottom());
    dialog.reject();
  });
  Window.findChild<QAction*>("Action_ProgramChains")->trigger();
}

}  // namespace
}  // namespace quillmark::test
