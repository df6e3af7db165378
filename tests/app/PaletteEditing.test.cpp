#include <QComboBox>
#include <QCoreApplication>
#include <QIcon>
#include <QLabel>

#include "app/Document.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

class PaletteEditing : public WindowTest {
 protected:
  void SetUp() override {
    LoadStream(FourCodes(PacketBuilder()));
    Click("Option_720x576");
    Click("Command_Reload");
  }
  void Edit(int entry, const QColor& colour) {
    Dialogs.ExpectColour(colour);
    Click(Element("Label1", entry));
    Dialogs.Verify();
  }
  [[nodiscard]] QImage ListPicture(const QString& list, int row) const {
    return Control<QComboBox>(list).itemIcon(row).pixmap(16, 16).toImage();
  }
};

TEST_F(PaletteEditing, DialogStartsAtTheSwatchesColour) {
  Dialogs.ExpectCancelled(DialogKind::Colour);
  Click("Label1_6");
  EXPECT_EQ(Dialogs.Last().Colour, QColor(148, 150, 240));
  EXPECT_EQ(Dialogs.Last().Title, "Quillmark");
  EXPECT_TRUE(Dialogs.Last().IsModal);
  EXPECT_EQ(Dialogs.Last().Owner, &Window);
}

TEST_F(PaletteEditing, SwatchHasAnEdgeAllAround) {
  auto& swatch = Control<QWidget>("Label1_6");
  const auto widthOfEdge = [&swatch](const QColor& edge) {
    const QImage image = swatch.grab().toImage();
    int width = 0;
    for (QRect ring = image.rect(); ring.width() > 4; ring.adjust(1, 1, -1, -1), ++width) {
      for (int along = 0; along < ring.width(); ++along) {
        for (const QPoint& place : {ring.topLeft() + QPoint(along, 0), ring.bottomLeft() + QPoint(along, 0),
                                    ring.topLeft() + QPoint(0, along), ring.topRight() + QPoint(0, along)}) {
          if (image.pixelColor(place) != edge) {
            return width;
          }
        }
      }
    }
    return width;
  };
  Window.activateWindow();
  QCoreApplication::processEvents();
  Control<QWidget>("Command_LoadSup").setFocus();
  EXPECT_EQ(widthOfEdge(swatch.palette().color(QPalette::WindowText)), 1);
  swatch.setFocus();
  EXPECT_EQ(widthOfEdge(swatch.palette().color(QPalette::Highlight)), 2);
}

TEST_F(PaletteEditing, SwatchesThatCannotBePickedArePaler) {
  const auto& swatch = Control<QWidget>("Label1_6");
  EXPECT_EQ(swatch.cursor().shape(), Qt::PointingHandCursor);
  const auto centre = [this] { return SwatchColour(6); };
  const QColor usual = centre();
  EXPECT_EQ(usual, QColor(148, 150, 240));
  Window.Content().SetBusy(true);
  const QColor ground = Window.palette().color(QPalette::Window);
  // 45 parts in 100 of it over the window.
  EXPECT_NEAR(centre().red(), 0.45 * usual.red() + 0.55 * ground.red(), 3);
  EXPECT_NEAR(centre().green(), 0.45 * usual.green() + 0.55 * ground.green(), 3);
  Window.Content().SetBusy(false);
  EXPECT_EQ(centre(), usual);
}

TEST_F(PaletteEditing, ChosenColourTakesTheEntry) {
  Edit(1, QColor(10, 20, 30));
  EXPECT_EQ(SwatchColour(1), QColor(10, 20, 30));
  EXPECT_EQ(SwatchColour(0), QColor(0, 0, 0));
  EXPECT_EQ(SwatchColour(2), QColor(255, 255, 255));
}

TEST_F(PaletteEditing, SubtitleIsShownInTheNewColour) {
  Edit(1, QColor(10, 20, 30));
  EXPECT_EQ(FrameColour(102, 400), QColor(10, 20, 30));
}

TEST_F(PaletteEditing, RedrawTakesTheStreamsAssignmentAgain) {
  Choose("ImageCombo2", "7");
  Edit(1, QColor(10, 20, 30));
  EXPECT_EQ(Chosen("ImageCombo2"), "1");
}

TEST_F(PaletteEditing, EveryListShowsTheNewColour) {
  Edit(9, QColor(10, 20, 30));
  for (const char* list : {"ImageCombo1", "ImageCombo2", "ImageCombo3", "ImageCombo4"}) {
    EXPECT_EQ(ListPicture(list, 9).pixelColor(7, 7), QColor(10, 20, 30)) << list;
  }
}

TEST_F(PaletteEditing, ListPictureIsAFieldInABlackFrame) {
  const QImage picture = ListPicture("ImageCombo1", 2);
  EXPECT_EQ(picture.pixelColor(1, 1), QColor(0, 0, 0));
  EXPECT_EQ(picture.pixelColor(14, 1), QColor(0, 0, 0));
  EXPECT_EQ(picture.pixelColor(1, 14), QColor(0, 0, 0));
  EXPECT_EQ(picture.pixelColor(14, 14), QColor(0, 0, 0));
  EXPECT_EQ(picture.pixelColor(2, 2), QColor(255, 255, 255));
  EXPECT_EQ(picture.pixelColor(13, 2), QColor(255, 255, 255));
  EXPECT_EQ(picture.pixelColor(2, 13), QColor(255, 255, 255));
  EXPECT_EQ(picture.pixelColor(13, 13), QColor(255, 255, 255));
  EXPECT_EQ(picture.pixelColor(14, 7), QColor(0, 0, 0));
}

TEST_F(PaletteEditing, SwatchPicturesAreFieldsInABlackFrame) {
  Edit(9, QColor(10, 20, 30));
  static const QColor Fields[] = {
      {0, 0, 0},       {3, 253, 251},  {255, 255, 255}, {2, 252, 2},  {253, 255, 4},   {252, 94, 252},
      {148, 150, 240}, {251, 99, 251}, {252, 150, 150}, {10, 20, 30}, {148, 150, 251}, {251, 150, 253},
      {130, 130, 130}, {0, 0, 0},      {0, 0, 0},       {0, 0, 0},
  };
  for (int i = 0; i < 16; ++i) {
    const QImage picture = Control<QLabel>(Element("Picture2", i)).pixmap().toImage();
    ASSERT_EQ(picture.size(), QSize(16, 16)) << i;
    for (int y = 1; y <= 14; ++y) {
      for (int x = 1; x <= 14; ++x) {
        const bool inside = x > 1 && x < 14 && y > 1 && y < 14;
        ASSERT_EQ(picture.pixelColor(x, y), inside ? Fields[i] : QColor(0, 0, 0))
            << i << ": " << x << ',' << y;
      }
    }
  }
}

TEST_F(PaletteEditing, KeysAndTextsStayAfterManyEdits) {
  for (int i = 0; i < 5; ++i) {
    Edit(i, QColor(10 * i + 5, 20, 30));
  }
  const auto& list = Control<QComboBox>("ImageCombo3");
  ASSERT_EQ(list.count(), 16);
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(list.itemText(i), QString::number(i, 16).toUpper());
    EXPECT_EQ(list.itemData(i).toString(), "test" + QString::number(i));
  }
}

TEST_F(PaletteEditing, BlackComesBackAsTwo) {
  Edit(1, QColor(0, 0, 0));
  EXPECT_EQ(SwatchColour(1), QColor(2, 0, 0));
}

TEST_F(PaletteEditing, RedOneAloneComesBackAsTwo) {
  Edit(1, QColor(1, 0, 0));
  EXPECT_EQ(SwatchColour(1), QColor(2, 0, 0));
}

TEST_F(PaletteEditing, OtherDarkColoursAreTaken) {
  Edit(1, QColor(2, 0, 0));
  EXPECT_EQ(SwatchColour(1), QColor(2, 0, 0));
  Edit(2, QColor(0, 1, 0));
  EXPECT_EQ(SwatchColour(2), QColor(0, 1, 0));
}

TEST_F(PaletteEditing, CancelChangesNothing) {
  Choose("ImageCombo2", "7");
  const QImage before = Frame();
  Dialogs.ExpectCancelled(DialogKind::Colour);
  Click("Label1_1");
  EXPECT_EQ(SwatchColour(1), QColor(3, 253, 251));
  EXPECT_EQ(Chosen("ImageCombo2"), "7");
  EXPECT_EQ(Frame(), before);
}

TEST_F(PaletteEditing, CancelOnABlackSwatchKeepsItBlack) {
  Dialogs.ExpectCancelled(DialogKind::Colour);
  Click("Label1_0");
  EXPECT_EQ(SwatchColour(0), QColor(0, 0, 0));
}

TEST_F(PaletteEditing, SameColourRedrawsNothing) {
  Choose("ImageCombo2", "7");
  Edit(1, QColor(3, 253, 251));
  EXPECT_EQ(Chosen("ImageCombo2"), "7");
  EXPECT_EQ(FrameColour(102, 400), QColor(251, 99, 251));
}

TEST_F(PaletteEditing, StreamIsNotTouched) {
  Edit(1, QColor(10, 20, 30));
  EXPECT_EQ(SavedBytes(), FourCodes(PacketBuilder()));
}

TEST_F(PaletteEditing, LaterSubtitlesTakeTheEditedEntry) {
  LoadStream(ThreeSubtitles());
  Edit(1, QColor(10, 20, 30));
  Click("Command_Next");
  EXPECT_EQ(FrameColour(102, 420), QColor(10, 20, 30));
}

}  // namespace
}  // namespace quillmark::test
