#include <QAccessible>
#include <QCoreApplication>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QStatusTipEvent>

#include "tests/app/MergeTest.h"

namespace quillmark::test {
namespace {

class StatusLine : public MergeTest {
 protected:
  [[nodiscard]] QString Told() const { return Window.statusBar()->currentMessage(); }
  [[nodiscard]] QString Place() const { return Control<QLabel>("Status_Place").text(); }
  [[nodiscard]] bool IsPreviewMarked() const { return Control<QLabel>("Status_Preview").isVisible(); }
  [[nodiscard]] QColor Ground(const QString& button) const {
    return Control<QPushButton>(button).palette().color(QPalette::Active, QPalette::Button);
  }
};

Bytes Subtitles(int count) {
  const Bytes one = FourCodes(PacketBuilder());
  Bytes stream;
  for (int i = 0; i < count; ++i) {
    stream.insert(stream.end(), one.begin(), one.end());
  }
  return stream;
}

TEST_F(StatusLine, PlaceIsTheNumberOfTheCount) {
  EXPECT_EQ(Place(), "");
  LoadStream(Subtitles(1500));
  EXPECT_EQ(Place(), "1 of 1,500");
  GoTo("57");
  EXPECT_EQ(Place(), "57 of 1,500");
  GoTo("1499");
  EXPECT_EQ(Place(), "1,499 of 1,500");
  Click("Command_Next");
  EXPECT_EQ(Place(), "1,500 of 1,500");
}

TEST_F(StatusLine, PlaceAfterAFailureIsUnknown) {
  LoadStream(InvalidSecond());
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_Next");
  EXPECT_EQ(Place(), "? of 3");
}

TEST_F(StatusLine, SavedStreamIsTold) {
  LoadStream(ThreeSubtitles());  // 48 bytes each
  Dialogs.ExpectSave(Path("new %1 &.sup"));
  Click("Command_SaveSup");
  EXPECT_EQ(Told(), "Saved new %1 &.sup, 3 subtitles, 144 bytes");
}

TEST_F(StatusLine, OneSubtitleIsNoPlural) {
  LoadStream(Subtitles(1));
  SavedBytes();
  EXPECT_EQ(Told(), "Saved saved.sup, 1 subtitle, 48 bytes");
}

TEST_F(StatusLine, SizesAreInThousands) {
  LoadStream(Subtitles(1500));
  SavedBytes();
  EXPECT_EQ(Told(), "Saved saved.sup, 1,500 subtitles, 72.0 kB");
}

TEST_F(StatusLine, WhatStaysBehindASavedStreamIsTold) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectSave(Write("old.sup", Bytes(200, 0x77)));
  Click("Command_SaveSup");
  EXPECT_EQ(Told(), "Saved old.sup, 3 subtitles, 144 bytes; 56 bytes of the longer old file still follow");
}

TEST_F(StatusLine, SavedMergedStreamIsTold) {
  LoadStream(PrimaryStream({{0, 100}, {200, 100}}));
  Merge(SecondaryStream({0, 200}));
  const std::size_t size = MergedBytes().size();
  EXPECT_EQ(Told(), QString("Saved merged.sup, 2 subtitles, %1 kB").arg(double(size) / 1000, 0, 'f', 1));
}

TEST_F(StatusLine, FailedSaveIsNotToldAsSaved) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectSave(Path("missing/new.sup"));
  Dialogs.AllowMessages();
  Click("Command_SaveSup");
  EXPECT_FALSE(Told().startsWith("Saved")) << Told().toStdString();
}

TEST_F(StatusLine, ChoiceThatIsNotSetIsMarked) {
  LoadStream(ThreeSubtitles());
  EXPECT_FALSE(IsPreviewMarked());
  const QColor ordinary = Ground("Command_SetActual");
  Choose("ImageCombo2", "4");
  EXPECT_TRUE(IsPreviewMarked());
  EXPECT_EQ(Ground("Command_SetActual"), Window.palette().color(QPalette::Active, QPalette::Highlight));
  EXPECT_EQ(Ground("Command_SetAll"), Window.palette().color(QPalette::Active, QPalette::Highlight));
  Click("Command_SetActual");
  EXPECT_FALSE(IsPreviewMarked());
  EXPECT_EQ(Ground("Command_SetActual"), ordinary);
}

TEST_F(StatusLine, PixelPreviewProblemsAndPlaceStandInThisOrder) {
  LoadStream(ThreeSubtitles());
  Choose("ImageCombo2", "4");
  QCoreApplication::processEvents();
  int before = -1;
  for (const char* name : {"Text_Pixel", "Status_Preview", "Status_Problems", "Status_Place"}) {
    const int left = Control<QWidget>(name).mapTo(&Window, QPoint()).x();
    EXPECT_GT(left, before) << name;
    before = left;
  }
}

TEST_F(StatusLine, ChoiceOfWhatIsWrittenIsNoPreview) {
  LoadStream(ThreeSubtitles());
  Choose("Combo1_1", "7");
  EXPECT_TRUE(IsPreviewMarked());
  Choose("Combo1_1", "F");
  EXPECT_FALSE(IsPreviewMarked());
}

TEST_F(StatusLine, PreviewEndsWithTheSubtitle) {
  LoadStream(ThreeSubtitles());
  Choose("ImageCombo2", "4");
  Click("Command_Next");
  EXPECT_FALSE(IsPreviewMarked());
  Choose("ImageCombo2", "4");
  Click("Command_Reload");
  EXPECT_FALSE(IsPreviewMarked());
}

TEST_F(StatusLine, PaletteEditSaysWhatKeepsIt) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectColour(Qt::red);
  Click("Label1_1");
  EXPECT_EQ(Told(), "A SUP file holds no palette: Save Palette keeps this one");
}

TEST_F(StatusLine, WhatWasToldComesBackAfterAMenu) {
  LoadStream(ThreeSubtitles());
  SavedBytes();
  QStatusTipEvent of(QStringLiteral("what an entry does"));
  QCoreApplication::sendEvent(&Window, &of);
  EXPECT_EQ(Told(), "what an entry does");
  QStatusTipEvent none{QString()};
  QCoreApplication::sendEvent(&Window, &none);
  EXPECT_EQ(Told(), "Saved saved.sup, 3 subtitles, 144 bytes");
}

TEST_F(StatusLine, AssistiveToolsFindWhatIsToldAsItsName) {
  LoadStream(ThreeSubtitles());
  SavedBytes();
  EXPECT_EQ(QAccessible::queryAccessibleInterface(Window.statusBar())->text(QAccessible::Name),
            "Saved saved.sup, 3 subtitles, 144 bytes");
  EXPECT_EQ(QAccessible::queryAccessibleInterface(&Control<QLabel>("Status_Place"))->text(QAccessible::Name),
            "1 of 3");
}

}  // namespace
}  // namespace quillmark::test
