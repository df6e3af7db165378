#include "app/SubtitlePictures.h"

#include "app/Document.h"
#include "app/PicturesAhead.h"
#include "tests/app/ListTest.h"
#include "tests/support/LoadedStream.h"

namespace quillmark::test {
namespace {

/// A picture of 200x80 pixels of code 1, kept in 200x80 of the screen.
Bytes LargeSubtitle() {
  Bytes fields;
  for (int line = 0; line < 80; ++line) {
    fields.insert(fields.end(), {0x00, 0x01});
  }
  return PacketBuilder()
      .ControlOffset(164)
      .Unit(Join({fields, Sequence(0, 164,
                                   {StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0),
                                    SetArea(100, 299, 400, 479), SetFields(4, 84), EndOfSequence})}))
      .Build();
}

class SubtitlePicturesTest : public testing::Test {
 protected:
  void Open(const Bytes& bytes) {
    SupStream stream = Index(bytes);
    Opened.BeginLoading();
    Opened.SetNumber(1);
    Opened.Open(std::move(stream));
  }

  Document Opened;
  SubtitlePictures Pictures{Opened};
};

TEST_F(SubtitlePicturesTest, AreInTheColoursOfThePalette) {
  Open(ThreeSubtitles());
  Pictures.SetRoom({.Pixels = {100, 22}, .Scale = 1});
  EXPECT_EQ(Pictures.Of(1).pixel(0, 0), qRgb(3, 253, 251));
  DvdPalette palette = Opened.Palette();
  palette[1] = MakeRgb(10, 20, 30);
  ASSERT_TRUE(Opened.SetPalette(palette, "Palette"));
  Pictures.Forget();
  EXPECT_EQ(Pictures.Of(1).pixel(0, 0), qRgb(10, 20, 30));
}

TEST_F(SubtitlePicturesTest, AreDrawnOnce) {
  Open(ThreeSubtitles());
  Pictures.SetRoom({.Pixels = {100, 22}, .Scale = 1});
  const QImage first = Pictures.Of(1);
  EXPECT_EQ(Pictures.Of(1).constBits(), first.constBits());
  EXPECT_TRUE(Pictures.Holds(1));
  EXPECT_FALSE(Pictures.Holds(0));
  Pictures.SetRoom({.Pixels = {100, 22}, .Scale = 2});
  EXPECT_FALSE(Pictures.Holds(1));
}

TEST_F(SubtitlePicturesTest, InvalidSubtitleHasNone) {
  Open(InvalidSecond());
  Pictures.SetRoom({.Pixels = {100, 22}, .Scale = 1});
  EXPECT_TRUE(Pictures.Of(1).isNull());
  EXPECT_TRUE(Pictures.Of(7).isNull());
}

TEST_F(SubtitlePicturesTest, MemoryForThemIsBounded) {
  // 64,000 bytes a picture: 524 fill the 32 MiB.
  Bytes stream;
  const Bytes packet = LargeSubtitle();
  for (int i = 0; i < 600; ++i) {
    stream.insert(stream.end(), packet.begin(), packet.end());
  }
  Open(stream);
  Pictures.SetRoom({.Pixels = {200, 80}, .Scale = 1});
  for (std::size_t i = 0; i < 600; ++i) {
    ASSERT_EQ(Pictures.Of(i).size(), QSize(200, 80));
    ASSERT_LE(Pictures.Bytes(), 32 * 1024 * 1024);
  }
  EXPECT_GT(Pictures.Count(), 500);
  EXPECT_LT(Pictures.Count(), 525);
  EXPECT_TRUE(Pictures.Holds(599));
  EXPECT_FALSE(Pictures.Holds(0));
}

TEST_F(ListTest, PicturesAreDecodedWhenSeenAndAScreenfulAhead) {
  LoadStream(ManySubtitles(400));
  const auto& pictures = Window.findChild<SubtitleList*>()->Pictures();
  const auto settle = [this] {
    const auto* ahead = Window.findChild<PicturesAhead*>();
    while (!ahead->IsDone()) {
      QCoreApplication::processEvents();
    }
  };
  List().viewport()->repaint();
  settle();
  const int page = List().viewport()->height() / 24 + 1;
  EXPECT_GE(pictures.Count(), page);
  EXPECT_LE(pictures.Count(), 2 * page + 1);
  EXPECT_TRUE(pictures.Holds(static_cast<std::size_t>(page) + 2));
  EXPECT_FALSE(pictures.Holds(300));
  GoTo("300");
  List().viewport()->repaint();
  settle();
  EXPECT_TRUE(pictures.Holds(299));
  EXPECT_LE(pictures.Count(), 4 * page + 2);
}

TEST_F(ListTest, HiddenListDecodesNothing) {
  Action("List").trigger();
  LoadStream(ThreeSubtitles());
  QCoreApplication::processEvents();
  EXPECT_EQ(Window.findChild<SubtitleList*>()->Pictures().Count(), 0);
}

}  // namespace
}  // namespace quillmark::test
