#include <functional>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTest>

#include "app/ImportJob.h"
#include "app/TrackDialog.h"
#include "tests/app/Placing.h"
#include "tests/app/ShapedTexts.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"
#include "tests/support/IfoBuilder.h"

namespace quillmark::test {
namespace {

class DialogLayout : public ShapedTexts, public WindowTest {
 protected:
  void SetUp() override { LoadStream(ThreeSubtitles()); }
  /// Looks at the dialog that this brings up, and cancels it.
  void In(const QString& action, const std::function<void(QDialog&)>& look) {
    Dialogs.Expect(DialogKind::Other, [look](QDialog& dialog) {
      look(dialog);
      dialog.reject();
    });
    Window.findChild<QAction*>("Action_" + action)->trigger();
    QCoreApplication::processEvents();
    Dialogs.Verify();
  }
};

TEST_F(DialogLayout, ControlsOfEveryToolStandApart) {
  for (const char* tool :
       {"Retime", "Move", "Force", "Ends", "Cut", "Keep", "Sort", "Join", "Fix", "Salvage"}) {
    const testing::ScopedTrace trace(__FILE__, __LINE__, tool);
    In(tool, [tool](QDialog& dialog) {
      EXPECT_EQ(dialog.windowTitle(), tool);
      EXPECT_EQ(dialog.objectName(), "ToolDialog");
      ExpectApart(dialog);
      ExpectDownwards(dialog, {"Label_Now_0", "Label_Outcome", "Command_Run"});
      ExpectAcross(dialog, {"Label_Now_0", "Label_Then_0", "Picture_Trial"});
    });
  }
}

TEST_F(DialogLayout, FieldsOfEachWayStandInTheirOrder) {
  const auto way = [](const QDialog& dialog, int row) {
    dialog.findChild<QComboBox*>("Combo_Way")->setCurrentIndex(row);
    QCoreApplication::processEvents();
    ExpectApart(dialog);
  };
  In("Retime", [&](QDialog& dialog) {
    way(dialog, 0);
    ExpectDownwards(dialog, {"Combo_Way", "Field_shift", "Option_All", "Label_Now_0"});
    ExpectAcross(dialog, {"Option_All", "Option_Selected", "Option_These", "Text_Only"});
    way(dialog, 1);
    ExpectDownwards(dialog, {"Combo_Way", "Field_from", "Field_to", "Field_shift", "Option_All"});
    way(dialog, 2);
    ExpectDownwards(dialog, {"Combo_Way", "Field_scale", "Field_shift", "Option_All"});
    way(dialog, 3);
    ExpectDownwards(dialog, {"Combo_Way", "Field_points", "Option_All"});
  });
  In("Move", [&](QDialog& dialog) {
    way(dialog, 0);
    ExpectDownwards(dialog, {"Combo_Way", "Field_x", "Field_y", "Field_frame", "Field_clamp", "Option_All"});
    way(dialog, 1);
    ExpectDownwards(dialog, {"Combo_Way", "Field_x", "Field_to-line", "Field_frame", "Field_clamp"});
  });
  In("Join", [&](QDialog& dialog) {
    way(dialog, 0);
    ExpectDownwards(dialog, {"Combo_Way", "Field_with", "Field_gap", "Label_Now_0"});
    ExpectAcross(dialog, {"Field_with", "Command_Browse"});
    way(dialog, 1);
    ExpectDownwards(dialog, {"Combo_Way", "Field_with", "Field_at", "Label_Now_0"});
  });
}

/// What it says of itself goes on in the next line where it is long, as in another language.
TEST_F(DialogLayout, LongSentenceMakesNoToolWider) {
  In("Retime", [](QDialog& dialog) {
    for (QLabel* label : dialog.findChildren<QLabel*>()) {
      if (label->text().startsWith("Moves or stretches")) {
        label->setText(label->text().repeated(9));
      }
    }
    QCoreApplication::processEvents();
    EXPECT_LT(dialog.layout()->minimumSize().width(), 1000);
  });
}

/// Where the row has more room than they need.
TEST_F(DialogLayout, FieldsOfAToolAreAsWideAsTheyNeed) {
  In("Move", [](QDialog& dialog) {
    const auto& frame = *dialog.findChild<QComboBox*>("Field_frame");
    EXPECT_EQ(frame.width(), frame.sizeHint().width());
  });
  In("Join", [](QDialog& dialog) {
    const QRect field = PlaceIn(dialog, "Field_with");
    const QRect browse = PlaceIn(dialog, "Command_Browse");
    EXPECT_GT(field.width(), browse.width()) << "the path has what the button leaves";
    EXPECT_EQ(browse.width(), dialog.findChild<QWidget*>("Command_Browse")->sizeHint().width());
    EXPECT_LT(browse.left() - field.right(), 20);
  });
}

TEST_F(DialogLayout, WhatHasToBeLeftStandsInLinesBelowTheOutcome) {
  In("Move", [](QDialog& dialog) {
    dialog.findChild<QLineEdit*>("Field_y")->setText("140");
    QCoreApplication::processEvents();
    ExpectApart(dialog);
    ExpectDownwards(dialog, {"Label_Now_0", "Label_Outcome", "Text_Left", "Command_Run"});
    const auto& left = *dialog.findChild<QWidget*>("Text_Left");
    EXPECT_GE(left.height(), 3 * left.fontMetrics().lineSpacing());
  });
}

TEST_F(DialogLayout, ControlsOfExportStandInTheirOrder) {
  In("Export", [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Export");
    EXPECT_EQ(dialog.objectName(), "ExportDialog");
    ExpectApart(dialog);
    ExpectDownwards(
        dialog, {"Combo_What", "Option_All", "Text_Path", "Combo_Language", "Label_Files", "Command_Export"});
    ExpectAcross(dialog, {"Option_All", "Option_Selected"});
    ExpectAcross(dialog, {"Text_Path", "Command_Browse"});
    const auto& path = *dialog.findChild<QLineEdit*>("Text_Path");
    EXPECT_GE(path.width(), path.fontMetrics().horizontalAdvance(QString(40, 'n'))) << "for long names";
  });
}

/// All of it is in sight where there is not much of it, and pictures are not cut.
void ExpectWhole(const QTableView& list, int heightOfPictures) {
  EXPECT_EQ(list.horizontalScrollBar()->maximum(), 0);
  EXPECT_EQ(list.verticalScrollBar()->maximum(), 0);
  EXPECT_GE(list.rowHeight(0), heightOfPictures);
  EXPECT_EQ(list.iconSize().height(), heightOfPictures);
  for (int column = 0; column + 1 < list.model()->columnCount(); ++column) {
    EXPECT_TRUE(list.isColumnHidden(column) ||
                list.columnWidth(column) >=
                    const_cast<QTableView&>(list).sizeHintForIndex(list.model()->index(0, column)).width())
        << column;
  }
}

/// There is room for three lines; one stands in the first of them.
TEST_F(DialogLayout, WhatIsExportedStandsRightBelowTheFields) {
  In("Export", [](QDialog& dialog) {
    auto& files = *dialog.findChild<QLabel*>("Label_Files");
    const int line = files.fontMetrics().lineSpacing();
    ASSERT_GE(files.height(), 3 * line);
    const QImage shown = files.grab().toImage();
    const auto isInked = [&shown](int top, int end) {
      for (int y = top; y < end; ++y) {
        for (int x = 0; x < shown.width(); ++x) {
          if (shown.pixel(x, y) != shown.pixel(shown.width() - 1, shown.height() - 1)) {
            return true;
          }
        }
      }
      return false;
    };
    EXPECT_TRUE(isInked(0, line));
    EXPECT_FALSE(isInked(line, shown.height()));
  });
}

TEST_F(DialogLayout, ControlsOfPalettesOfATitleStandInTheirOrder) {
  std::vector<ChainSpec> chains;
  for (std::uint8_t category = 0x81; category <= 0x87; ++category) {
    chains.push_back({.Category = category, .Palette = {{0x10, 0x80, 0x80}}});
  }
  Dialogs.ExpectOpen(Write("vts_01_0.ifo", TitleSetFile(chains)));
  In("ProgramChains", [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Palettes of a title");
    ExpectApart(dialog);
    ExpectDownwards(dialog, {"List_ProgramChains", "Picture_Chain", "Command_Use"});
    const auto& list = *dialog.findChild<QTableView*>("List_ProgramChains");
    ExpectWhole(list, 36);
    EXPECT_EQ(dialog.focusWidget(), &list);
  });
}

TEST_F(DialogLayout, ControlsOfAComparisonStandInTheirOrder) {
  Dialogs.ExpectOpen(Write("other.sup", ThreeSubtitles()));
  Window.findChild<QAction*>("Action_Compare")->trigger();
  QCoreApplication::processEvents();
  const auto& compare = Control<QWidget>("CompareWindow");
  ExpectApart(compare);
  ExpectDownwards(compare, {"Label_Differences", "Check_OnlyDifferences", "List_Differences",
                            "Label_TitleHere", "Frame_Here", "Label_FactsHere"});
  ExpectDownwards(compare, {"List_Differences", "Label_TitleThere", "Frame_There", "Label_FactsThere"});
  ExpectAcross(compare, {"Check_OnlyDifferences", "Command_CloseCompare"});
  ExpectAcross(compare, {"Frame_Here", "Frame_There"});
  const auto& list = Control<QTableView>("List_Differences");
  EXPECT_GE(list.columnWidth(2), list.fontMetrics().horizontalAdvance("00:00:00.00"));
  Control<QWidget>("CompareWindow").resize(compare.minimumSizeHint());
  QCoreApplication::processEvents();
  EXPECT_GE(list.viewport()->height(), 4 * list.verticalHeader()->defaultSectionSize());
  Control<QWidget>("CompareWindow").activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Control<QWidget>("CompareWindow")));
  Control<QWidget>("List_Differences").setFocus();
  for (const char* next : {"Check_OnlyDifferences", "Command_CloseCompare"}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), next);
  }
}

TEST_F(DialogLayout, ControlsOfAnImportStandInTheirOrder) {
  ImportedFile file;
  const auto add = [&file](std::string id) {
    file.Tracks.push_back({.What = {.Id = std::move(id),
                                    .Language = "de",
                                    .Name = "The film's own songs",
                                    .Palette = {},
                                    .Packets = {},
                                    .Notes = {"damaged"}},
                           .Loaded = *IndexPrimaryStream(ThreeSubtitles())});
  };
  for (const char* id : {"0x20", "0x21", "0x22", "0x23", "0x24", "0x25", "0x26", "0x27"}) {
    add(id);
  }
  const DvdPalette present{};
  TrackDialog dialog("movie.vob", file, present, nullptr);
  Dialogs.Expect(DialogKind::Other, [](QDialog& shown) {
    EXPECT_EQ(shown.windowTitle(), "Import subtitles");
    EXPECT_EQ(shown.objectName(), "TrackDialog");
    ExpectApart(shown);
    ExpectDownwards(shown, {"List_Tracks", "Text_Notes", "Combo_Second", "Command_Open"});
    const auto& list = *shown.findChild<QTableView*>("List_Tracks");
    ExpectWhole(list, 40);
    EXPECT_GE(list.columnWidth(2), list.fontMetrics().horizontalAdvance("The film's own songs") + 12)
        << "with room before the next column";
    EXPECT_EQ(shown.focusWidget(), &list);
    shown.reject();
  });
  dialog.exec();
}

}  // namespace
}  // namespace quillmark::test
