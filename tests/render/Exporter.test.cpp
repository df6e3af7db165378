#include "render/Exporter.h"

#include <algorithm>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Second;

class ExporterTest : public testing::Test {
 protected:
  [[nodiscard]] ExportPaths Paths() const { return ExportPathsForBase(folder_.filePath("movie")); }
  [[nodiscard]] QString PicturePath(int second) const {
    return Paths().Folder + QStringLiteral("/00+00+0") + QString::number(second) + QStringLiteral("+00.png");
  }
  [[nodiscard]] QByteArray Line(int second) const {
    return "    <spu start=\"00:00:0" + QByteArray::number(second) + ".00\" image=\"" +
           PicturePath(second).toUtf8() + "\" xoffset=\"7\" yoffset=\"9\" />\r\n";
  }
  [[nodiscard]] QByteArray List() const {
    QFile file(Paths().List);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
  }

  /// A picture of 3 x 2 pixels of this colour at (7, 9).
  static void Add(Exporter& exporter, int second, Argb colour = 0xFF112233) {
    SubtitleDescription description;
    description.StartTicks = second * Second;
    description.Control.X1 = 7;
    description.Control.Y1 = 9;
    cBitmap picture;
    picture.Create(3, 2);
    std::ranges::fill(picture.LockPixels(), colour);
    exporter.Add(description, std::move(picture));
  }
  /// A folder where the picture should go.
  void Block(int second) const { ASSERT_TRUE(QDir().mkpath(PicturePath(second))); }

  QTemporaryDir folder_;
};

TEST_F(ExporterTest, AppendedLinesAreThereAtOnceAndPicturesInTheEnd) {
  Exporter exporter(Paths(), Exporter::List::Appended);
  Add(exporter, 1);
  EXPECT_EQ(List(), Line(1));
  Add(exporter, 2);
  exporter.Flush();
  EXPECT_EQ(List(), Line(1) + Line(2));
  EXPECT_EQ(QImage(PicturePath(1)).size(), QSize(3, 2));
  EXPECT_EQ(QImage(PicturePath(2)).size(), QSize(3, 2));
  EXPECT_EQ(exporter.Pictures(), 2);
  EXPECT_EQ(exporter.PictureFailures().Text(), QString());
}

TEST_F(ExporterTest, PictureOfOneColumnIsWritten) {
  Exporter exporter(Paths(), Exporter::List::Appended);
  SubtitleDescription description;
  description.StartTicks = Second;
  cBitmap picture;
  picture.Create(1, 2);
  exporter.Add(description, std::move(picture));
  exporter.Flush();
  EXPECT_EQ(QImage(PicturePath(1)).size(), QSize(1, 2));
  EXPECT_EQ(exporter.PictureFailures().Text(), QString());
}

TEST_F(ExporterTest, ReplacedListIsWrittenWhenAskedFor) {
  Exporter exporter(Paths(), Exporter::List::Replaced);
  Add(exporter, 1);
  exporter.Flush();
  EXPECT_EQ(List(), QByteArray("none"));
  EXPECT_EQ(exporter.WriteList().Reason(), "");
  EXPECT_EQ(List(), Line(1));
}

TEST_F(ExporterTest, OfPicturesWithOneNameTheLastStays) {
  Exporter exporter(Paths(), Exporter::List::Appended);
  Add(exporter, 1, 0xFF000001);
  Add(exporter, 1, 0xFF000002);
  exporter.Flush();
  EXPECT_EQ(QImage(PicturePath(1)).pixel(0, 0), 0xFF000002U);
}

TEST_F(ExporterTest, PictureThatCannotBeWrittenStopsNoOther) {
  Block(2);
  Block(4);
  Exporter exporter(Paths(), Exporter::List::Appended);
  for (int second = 1; second <= 5; ++second) {
    Add(exporter, second);
  }
  exporter.Flush();
  EXPECT_FALSE(QImage(PicturePath(1)).isNull());
  EXPECT_FALSE(QImage(PicturePath(3)).isNull());
  EXPECT_FALSE(QImage(PicturePath(5)).isNull());
  EXPECT_EQ(exporter.PictureFailures().Count, 2);
  EXPECT_EQ(exporter.PictureFailures().FirstPath, PicturePath(2));
  EXPECT_EQ(exporter.PictureFailures().FirstReason, "It is a folder");
  EXPECT_EQ(exporter.PictureFailures().Text(),
            PicturePath(2) + ": It is a folder\r\n2 pictures could not be written; this is the first one");
}

TEST_F(ExporterTest, NoMoreThan64PicturesAreHeld) {
  Exporter exporter(Paths(), Exporter::List::Replaced);
  for (int minute = 0; minute < 63; ++minute) {
    Add(exporter, 60 * minute);
  }
  EXPECT_FALSE(QFile::exists(PicturePath(0)));
  Add(exporter, 60 * 63);
  EXPECT_FALSE(QImage(PicturePath(0)).isNull());
}

TEST_F(ExporterTest, OneFailureIsToldByItself) {
  Block(1);
  Exporter exporter(Paths(), Exporter::List::Appended);
  Add(exporter, 1);
  exporter.Flush();
  EXPECT_EQ(exporter.PictureFailures().Text(), PicturePath(1) + ": It is a folder");
}

TEST_F(ExporterTest, ListThatTakesNoLineStopsNoPicture) {
  ASSERT_TRUE(QDir().mkpath(Paths().List));
  Exporter exporter(Paths(), Exporter::List::Appended);
  Add(exporter, 1);
  Add(exporter, 2);
  exporter.Flush();
  EXPECT_EQ(exporter.ListFailures().Count, 2);
  EXPECT_EQ(exporter.ListFailures().FirstReason, "It is a folder");
  EXPECT_FALSE(QImage(PicturePath(2)).isNull());
}

TEST_F(ExporterTest, SubtitleWithoutAPictureHasALineAndAFailure) {
  Exporter exporter(Paths(), Exporter::List::Appended);
  SubtitleDescription description;
  description.StartTicks = Second;
  description.Control.X1 = 7;
  description.Control.Y1 = 9;
  exporter.Add(description, cBitmap());
  exporter.Flush();
  EXPECT_EQ(List(), Line(1));
  EXPECT_EQ(exporter.PictureFailures().Text(),
            PicturePath(1) + ": the subtitle's area is reversed, so that it has no picture");
}

TEST_F(ExporterTest, PathsMayHoldWhatLooksLikeAPlaceholder) {
  const ExportPaths paths = ExportPathsForBase(folder_.filePath("Movie%2C The %1"));
  Exporter exporter(paths, Exporter::List::Appended);
  Add(exporter, 1);
  exporter.Flush();
  EXPECT_EQ(exporter.PictureFailures().Text(), QString());
  EXPECT_FALSE(QImage(paths.Folder + "/00+00+01+00.png").isNull());
}

TEST(HasPixels, ReversedAreaHasNone) {
  SpuControl control;
  control.X1 = 5;
  control.X2 = 5;
  control.Y1 = 8;
  control.Y2 = 8;
  EXPECT_TRUE(HasPixels(control));
  control.X2 = 4;
  EXPECT_FALSE(HasPixels(control));
  control.X2 = 5;
  control.Y2 = 7;
  EXPECT_FALSE(HasPixels(control));
}

}  // namespace
}  // namespace quillmark
