#include "render/PictureFile.h"

#include <algorithm>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "tests/support/OwnDevice.h"

namespace quillmark {
namespace {

class WritePictureTest : public testing::Test {
 protected:
  WritePictureTest() {
    Picture.Create(2, 1);
    const auto pixels = Picture.LockPixels();
    pixels[0] = 0x80112233;
    pixels[1] = 0x00445566;
  }

  [[nodiscard]] QString Path(const QString& name) const { return folder_.filePath(name); }
  [[nodiscard]] std::string Write(const QString& path) {
    return WritePicture(path, Picture, Durability::Unsynced).Reason();
  }

  cBitmap Picture;

 private:
  QTemporaryDir folder_;
};

TEST_F(WritePictureTest, EveryBitIsKept) {
  EXPECT_EQ(Write(Path("a.png")), "");
  const QImage read(Path("a.png"), "PNG");
  ASSERT_EQ(read.size(), QSize(2, 1));
  EXPECT_EQ(read.pixel(0, 0), 0x80112233U);
  EXPECT_EQ(read.pixel(1, 0), 0x00445566U);
}

TEST_F(WritePictureTest, IsAPngWhateverTheName) {
  EXPECT_EQ(Write(Path("a.bmp")), "");
  EXPECT_FALSE(QImage(Path("a.bmp"), "PNG").isNull());
}

TEST_F(WritePictureTest, ReplacesAnExistingFileAndLeavesNoOther) {
  QFile old(Path("a.png"));
  ASSERT_TRUE(old.open(QIODevice::WriteOnly));
  old.write(QByteArray(100000, 'x'));
  old.close();
  EXPECT_EQ(Write(Path("a.png")), "");
  EXPECT_EQ(QImage(Path("a.png"), "PNG").size(), QSize(2, 1));
  EXPECT_EQ(QDir(Path("")).entryList(QDir::Files | QDir::Hidden), QStringList("a.png"));
}

TEST_F(WritePictureTest, MissingFolderGivesTheReason) {
  EXPECT_EQ(Write(Path("missing/a.png")), "No such file or directory");
}

TEST_F(WritePictureTest, FullDiskGivesTheReason) {
  const std::string full = test::OwnDevice(Path("").toStdString(), test::Device::Full);
  if (full.empty()) {
    GTEST_SKIP() << test::NeedsDevices;
  }
  EXPECT_EQ(Write(QString::fromStdString(full)), "No space left on device");
}

TEST_F(WritePictureTest, WhatCannotBeEncodedHasTheImagingReason) {
  cBitmap nothing;
  EXPECT_EQ(WritePicture(Path("a.png"), nothing, Durability::Synced).Reason(), "Invalid Parameter");
  EXPECT_FALSE(QFile::exists(Path("a.png")));
}

}  // namespace
}  // namespace quillmark
