#include "imaging/cBitmap.h"

#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <vector>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "tests/imaging/ErrorLog.h"
#include "tests/support/OrdinaryUser.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace quillmark {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

// 2 x 1 pixels, 32-bit RGBA: (0x11, 0x22, 0x33, alpha 0x80), (0x44, 0x55, 0x66, alpha 0).
constexpr std::array<std::uint8_t, 77> Png = {
    0x89, 'P',  'N',  'G',  0x0D, 0x0A, 0x1A, 0x0A,  // signature
    0,    0,    0,    13,   'I',  'H',  'D',  'R',  0,    0,    0,    2,    0,    0,    0,
    1,    8,    6,    0,    0,    0,                                                           //
    0xF4, 0x22, 0x7F, 0x8A,                                                                    // checksum
    0,    0,    0,    20,   'I',  'D',  'A',  'T',  0x78, 0x01, 0x01, 0x09, 0x00, 0xF6, 0xFF,  // stored block
    0,    0x11, 0x22, 0x33, 0x80, 0x44, 0x55, 0x66, 0x00,                                      // the row
    0x08, 0x0C, 0x01, 0xE6, 0xCF, 0x18, 0x0B, 0x62,                                            // checksums
    0,    0,    0,    0,    'I',  'E',  'N',  'D',  0xAE, 0x42, 0x60, 0x82};

// 1 x 2 pixels, 24 bits, bottom row first: below RGB(0x11, 0x22, 0x33), above RGB(0x44, 0x55, 0x66).
constexpr std::array<std::uint8_t, 62> Bmp = {
    'B',  'M',  62,   0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0,         // file header
    40,   0,    0,    0, 1, 0, 0, 0, 2, 0, 0,  0, 1, 0, 24, 0,  // size, width, height, planes, bits
    0,    0,    0,    0, 8, 0, 0, 0, 0, 0, 0,  0, 0, 0, 0,  0,  //
    0,    0,    0,    0, 0, 0, 0, 0,                            //
    0x33, 0x22, 0x11, 0,                                        //
    0x66, 0x55, 0x44, 0};

// One pixel RGB(0x11, 0x22, 0x33): a colour table of two and the codes clear, 0, end in one block.
constexpr std::array<std::uint8_t, 35> Gif = {'G',  'I',  'F',  '8',  '7', 'a', 1, 0, 1, 0, 0xF0, 0, 0,  //
                                              0x11, 0x22, 0x33, 0,    0,   0,                            //
                                              ',',  0,    0,    0,    0,   1,   0, 1, 0, 0,              //
                                              2,    2,    0x44, 0x01, 0,   ';'};

// 2 x 1 pixels, one grey component, every coefficient 0: RGB(128, 128, 128).
constexpr std::array<std::uint8_t, 159> Jpeg = {
    0xff, 0xd8, 0xff, 0xe0, 0x00, 0x10, 0x4a, 0x46, 0x49, 0x46, 0x00, 0x01, 0x01, 0x00, 0x00, 0x01,
    0x00, 0x01, 0x00, 0x00, 0xff, 0xdb, 0x00, 0x43, 0x00, 0x03, 0x02, 0x02, 0x03, 0x02, 0x02, 0x03,
    0x03, 0x03, 0x03, 0x04, 0x03, 0x03, 0x04, 0x05, 0x08, 0x05, 0x05, 0x04, 0x04, 0x05, 0x0a, 0x07,
    0x07, 0x06, 0x08, 0x0c, 0x0a, 0x0c, 0x0c, 0x0b, 0x0a, 0x0b, 0x0b, 0x0d, 0x0e, 0x12, 0x10, 0x0d,
    0x0e, 0x11, 0x0e, 0x0b, 0x0b, 0x10, 0x16, 0x10, 0x11, 0x13, 0x14, 0x15, 0x15, 0x15, 0x0c, 0x0f,
    0x17, 0x18, 0x16, 0x14, 0x18, 0x12, 0x14, 0x15, 0x14, 0xff, 0xc0, 0x00, 0x0b, 0x08, 0x00, 0x01,
    0x00, 0x02, 0x01, 0x01, 0x11, 0x00, 0xff, 0xc4, 0x00, 0x14, 0x00, 0x01, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xff, 0xc4, 0x00, 0x14,
    0x10, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00,
    0x00, 0x00, 0xff, 0xda, 0x00, 0x08, 0x01, 0x01, 0x00, 0x00, 0x3f, 0x00, 0x3f, 0xff, 0xd9};

template <std::size_t Size>
QByteArray Bytes(const std::array<std::uint8_t, Size>& bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(Size)};
}

void Put(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_EQ(file.write(bytes), bytes.size());
}

std::vector<std::uint32_t> PixelsOf(cBitmap& bitmap) {
  const auto pixels = bitmap.LockPixels();
  return {pixels.begin(), pixels.end()};
}

void Fill(cBitmap& bitmap, int width, int height, const std::vector<std::uint32_t>& pixels) {
  bitmap.Create(width, height);
  std::copy(pixels.begin(), pixels.end(), bitmap.LockPixels().begin());
}

int PngEncoder() {
  return cBitmap::EncoderIndex("*.png");
}

/// A bitmap that reports to a log, and a folder for its files.
class BitmapFile : public testing::Test {
 protected:
  [[nodiscard]] QString Path(const QString& name) const { return folder_.filePath(name); }

  void Load(const QByteArray& bytes) {
    Put(Path("picture"), bytes);
    Bitmap.LoadFromFile(Path("picture"));
  }

  void ExpectError(int status, const char* text) const {
    EXPECT_EQ(Bitmap.LastStatus(), status);
    EXPECT_THAT(Log.Errors, ElementsAre(ReportedError{"cBitmap", status, text}));
  }

  ErrorLog Log;
  cBitmap Bitmap{&Log.Instance};

 private:
  QTemporaryDir folder_;
};

using Create = BitmapFile;
using LockPixels = BitmapFile;
using LoadFromFile = BitmapFile;
using Encode = BitmapFile;

TEST_F(Create, UnsetPixelsAreTheCallersToSet) {
  Bitmap.CreateUnset(3, 2);
  EXPECT_EQ(Bitmap.LastStatus(), 0);
  const auto pixels = Bitmap.LockPixels();
  ASSERT_EQ(pixels.size(), 6U);
  std::ranges::fill(pixels, 0x80112233U);
  EXPECT_THAT(PixelsOf(Bitmap), Each(0x80112233U));
}

TEST_F(Create, IsTransparentBlackInStraightAlpha) {
  Bitmap.Create(3, 2);
  EXPECT_EQ(Bitmap.Width(), 3);
  EXPECT_EQ(Bitmap.Height(), 2);
  EXPECT_EQ(Bitmap.Image().format(), QImage::Format_ARGB32);
  EXPECT_THAT(PixelsOf(Bitmap), testing::AllOf(testing::SizeIs(6), Each(0U)));
  EXPECT_EQ(Bitmap.LastStatus(), 0);
}

TEST_F(Create, ReplacesTheImage) {
  Fill(Bitmap, 1, 1, {0xFFFFFFFF});
  Bitmap.Create(1, 1);
  EXPECT_THAT(PixelsOf(Bitmap), ElementsAre(0U));
}

TEST_F(Create, SizeBelowOneIsAnInvalidParameter) {
  Bitmap.Create(1, 1);
  Bitmap.Create(0, 5);
  ExpectError(2, "Invalid Parameter");
  Log.Errors.clear();
  Bitmap.Create(5, 0);
  ExpectError(2, "Invalid Parameter");
  Log.Errors.clear();
  Bitmap.Create(5, -1);
  ExpectError(2, "Invalid Parameter");
  EXPECT_EQ(Bitmap.Width(), 0);
  EXPECT_EQ(Bitmap.Height(), 0);
}

TEST_F(Create, SizeBeyondMemoryIsReported) {
  Bitmap.Create(2147483647, 2147483647);
  ExpectError(3, "Out Of Memory");
  EXPECT_EQ(Bitmap.Width(), 0);
}

TEST_F(LockPixels, AreTheImage) {
  Bitmap.Create(2, 2);
  const auto pixels = Bitmap.LockPixels();
  pixels[1] = 0x80112233;
  pixels[2] = 0x00445566;
  EXPECT_EQ(reinterpret_cast<const std::uint32_t*>(Bitmap.Image().constBits()), pixels.data());
  EXPECT_EQ(Bitmap.Image().pixel(1, 0), 0x80112233U);
  EXPECT_EQ(Bitmap.Image().pixel(0, 1), 0x00445566U);
}

TEST_F(LockPixels, StayWhereTheyAre) {
  Bitmap.Create(2, 2);
  EXPECT_EQ(Bitmap.LockPixels().data(), Bitmap.LockPixels().data());
}

TEST_F(LockPixels, ACopyOfTheImageKeepsItsPixels) {
  Fill(Bitmap, 1, 1, {0xFF112233});
  const QImage copy = Bitmap.Image();
  Bitmap.LockPixels()[0] = 0;
  EXPECT_EQ(copy.pixel(0, 0), 0xFF112233U);
}

TEST_F(LockPixels, ALoadedImageIsMadeArgb) {
  Load(Bytes(Gif));
  EXPECT_THAT(PixelsOf(Bitmap), ElementsAre(0xFF112233));
  EXPECT_EQ(Bitmap.Image().format(), QImage::Format_ARGB32);
}

TEST_F(LockPixels, WithoutAnImageThereAreNone) {
  EXPECT_THAT(Bitmap.LockPixels(), IsEmpty());
  ExpectError(2, "Invalid Parameter");
}

TEST_F(LoadFromFile, PngKeepsTheColourOfTransparentPixels) {
  Load(Bytes(Png));
  EXPECT_EQ(Bitmap.Width(), 2);
  EXPECT_EQ(Bitmap.Height(), 1);
  EXPECT_EQ(Bitmap.LastStatus(), 0);
  EXPECT_THAT(PixelsOf(Bitmap), ElementsAre(0x80112233, 0x00445566));
}

TEST_F(LoadFromFile, Bmp) {
  Load(Bytes(Bmp));
  EXPECT_THAT(PixelsOf(Bitmap), ElementsAre(0xFF445566, 0xFF112233));
}

TEST_F(LoadFromFile, Gif) {
  Load(Bytes(Gif));
  EXPECT_THAT(PixelsOf(Bitmap), ElementsAre(0xFF112233));
}

TEST_F(LoadFromFile, Jpeg) {
  Load(Bytes(Jpeg));
  EXPECT_THAT(PixelsOf(Bitmap), ElementsAre(0xFF808080, 0xFF808080));
}

TEST_F(LoadFromFile, TheContentDecidesTheFormatWhateverTheName) {
  Put(Path("picture.jpg"), Bytes(Png));
  Bitmap.LoadFromFile(Path("picture.jpg"));
  EXPECT_EQ(Bitmap.Width(), 2);
  Put(Path("picture.png"), Bytes(Gif));
  Bitmap.LoadFromFile(Path("picture.png"));
  EXPECT_EQ(Bitmap.Width(), 1);
}

TEST_F(LoadFromFile, ReplacesTheImage) {
  Bitmap.Create(9, 9);
  Load(Bytes(Png));
  EXPECT_EQ(Bitmap.Width(), 2);
  EXPECT_EQ(Bitmap.Height(), 1);
}

TEST_F(LoadFromFile, MissingFileLeavesNoImage) {
  Bitmap.Create(1, 1);
  Bitmap.LoadFromFile(Path("missing.png"));
  ExpectError(10, "File Not Found");
  EXPECT_TRUE(Bitmap.Image().isNull());
}

TEST_F(LoadFromFile, NoOtherSuffixIsTried) {
  Put(Path("picture.png"), Bytes(Png));
  Bitmap.LoadFromFile(Path("picture"));
  ExpectError(10, "File Not Found");
}

TEST_F(LoadFromFile, EmptyPathIsAMissingFile) {
  Bitmap.LoadFromFile("");
  ExpectError(10, "File Not Found");
}

TEST_F(LoadFromFile, AFolderIsDenied) {
  Bitmap.LoadFromFile(Path(""));
  ExpectError(12, "Access Denied");
}

TEST_F(LoadFromFile, UnknownContentLeavesNoImage) {
  Bitmap.Create(1, 1);
  Load("this is no picture");
  ExpectError(13, "Unknown Image Format");
  EXPECT_EQ(Bitmap.Width(), 0);
  EXPECT_EQ(Bitmap.Height(), 0);
  EXPECT_TRUE(Bitmap.Image().isNull());
}

TEST_F(LoadFromFile, EmptyFileIsOfUnknownFormat) {
  Load("");
  ExpectError(13, "Unknown Image Format");
}

TEST_F(LoadFromFile, CorruptFileIsOfUnknownFormat) {
  QByteArray corrupt = Bytes(Png);
  corrupt[49] = 0x07;  // the first bytes of the stored block
  corrupt[50] = 0x07;
  corrupt[51] = 0x07;
  Load(corrupt);
  ExpectError(13, "Unknown Image Format");
  EXPECT_TRUE(Bitmap.Image().isNull());
}

TEST_F(LoadFromFile, TruncatedFilesReportAndLeaveNoImage) {
  for (qsizetype size = 0; size < 56; ++size) {  // the row ends at byte 57
    Log.Errors.clear();
    Load(Bytes(Png).first(size));
    EXPECT_TRUE(Bitmap.Image().isNull()) << size;
    ExpectError(13, "Unknown Image Format");
  }
}

TEST_F(LoadFromFile, ASuccessClearsTheLastFailure) {
  Bitmap.LoadFromFile(Path("missing.png"));
  Load(Bytes(Png));
  EXPECT_EQ(Bitmap.LastStatus(), 0);
}

TEST_F(LoadFromFile, WithoutAnInstanceTheStatusIsKeptAlone) {
  cBitmap silent;
  silent.LoadFromFile(Path("missing.png"));
  EXPECT_EQ(silent.LastStatus(), 10);
}

TEST(EncoderIndex, IgnoresCase) {
  EXPECT_GE(PngEncoder(), 0);
  EXPECT_EQ(cBitmap::EncoderIndex("*.PNG"), PngEncoder());
}

TEST(EncoderIndex, EachFormatHasItsOwn) {
  EXPECT_GE(cBitmap::EncoderIndex("*.bmp"), 0);
  EXPECT_NE(cBitmap::EncoderIndex("*.bmp"), PngEncoder());
}

TEST(EncoderIndex, UnknownPatternIsMinusOne) {
  EXPECT_EQ(cBitmap::EncoderIndex("*.sup"), -1);
  EXPECT_EQ(cBitmap::EncoderIndex("png"), -1);
  EXPECT_EQ(cBitmap::EncoderIndex(""), -1);
}

TEST_F(Encode, PngHas32BitsAPixelAndEveryBitOfThem) {
  const std::vector<std::uint32_t> pixels = {0xFF010203, 0x88EB8001, 0x00FFFE01,
                                             0x00000000, 0x01FFFFFF, 0x11000100};
  Fill(Bitmap, 3, 2, pixels);
  const QByteArray png = Bitmap.Encode(PngEncoder());
  EXPECT_EQ(Bitmap.LastStatus(), 0);
  const QByteArray header("\x89PNG\r\n\x1a\n\0\0\0\x0dIHDR\0\0\0\x03\0\0\0\x02\x08\x06\0\0\0", 29);
  EXPECT_EQ(png.first(29), header);

  Load(png);
  EXPECT_EQ(PixelsOf(Bitmap), pixels);
}

TEST_F(Encode, OpaquePicturesKeepTheirAlphaChannel) {
  Fill(Bitmap, 1, 1, {0xFF010203});
  EXPECT_EQ(Bitmap.Encode(PngEncoder()).at(25), 6);  // colour type RGBA
}

TEST_F(Encode, TheEncoderDecidesTheFormat) {
  Bitmap.Create(1, 1);
  EXPECT_EQ(Bitmap.Encode(cBitmap::EncoderIndex("*.bmp")).first(2), QByteArray("BM"));
}

/// JPEG has 16 bits for a size, of which its library leaves a few unused.
TEST_F(Encode, PictureTooWideForTheFormatIsAGenericError) {
  Bitmap.Create(65536, 1);
  EXPECT_EQ(Bitmap.Encode(cBitmap::EncoderIndex("*.jpg")), QByteArray());
  ExpectError(1, "Generic Error");
}

TEST_F(Encode, EncoderMinusOneIsAnInvalidParameter) {
  Bitmap.Create(1, 1);
  EXPECT_EQ(Bitmap.Encode(-1), QByteArray());
  ExpectError(2, "Invalid Parameter");
}

TEST_F(Encode, EncoderBeyondTheTableIsAnInvalidParameter) {
  Bitmap.Create(1, 1);
  EXPECT_EQ(Bitmap.Encode(2147483647), QByteArray());
  ExpectError(2, "Invalid Parameter");
}

TEST_F(Encode, WithoutAnImageThereIsNothing) {
  EXPECT_EQ(Bitmap.Encode(PngEncoder()), QByteArray());
  ExpectError(2, "Invalid Parameter");
}

TEST_F(Encode, ASuccessClearsTheLastFailure) {
  Bitmap.Create(1, 1);
  EXPECT_EQ(Bitmap.Encode(-1), QByteArray());
  EXPECT_NE(Bitmap.Encode(PngEncoder()), QByteArray());
  EXPECT_EQ(Bitmap.LastStatus(), 0);
}

/// The one grey picture, said to be larger; what its data does not say is the same grey.
QByteArray LargeJpeg(quint16 width, quint16 height) {
  constexpr qsizetype Height = 94;
  QByteArray jpeg = Bytes(Jpeg);
  jpeg[Height] = static_cast<char>(height >> 8U);
  jpeg[Height + 1] = static_cast<char>(height & 0xFFU);
  jpeg[Height + 2] = static_cast<char>(width >> 8U);
  jpeg[Height + 3] = static_cast<char>(width & 0xFFU);
  return jpeg;
}

TEST_F(LoadFromFile, AVeryLargePictureIsReadInTheSizeThatItIsShownIn) {
  Put(Path("picture"), LargeJpeg(16000, 12000));  // 183 MiB of grey pixels
  Bitmap.LoadFromFile(Path("picture"), QSize(720, 576));
  EXPECT_EQ(Bitmap.LastStatus(), 0);
  EXPECT_EQ(Bitmap.Width(), 720);
  EXPECT_EQ(Bitmap.Height(), 576);
  EXPECT_EQ(Bitmap.Image().pixel(719, 575), 0xFF808080U);
}

TEST_F(LoadFromFile, ALargePictureIsReadWhole) {
  Put(Path("picture"), LargeJpeg(8000, 6000));
  Bitmap.LoadFromFile(Path("picture"), QSize(720, 576));
  EXPECT_EQ(Bitmap.Width(), 8000);
  EXPECT_EQ(Bitmap.Height(), 6000);
}

TEST_F(LoadFromFile, AVeryLargePictureOfAFormatThatCannotBeScaledIsReadWhole) {
  QByteArray bmp = Bytes(Bmp);
  // 12000 x 12000 pixels of 8 bits, 137 MiB, run-length coded: the first pixel of the lowest row, and
  // the end of the picture.
  const QByteArray header(
      "\x28\0\0\0\xE0\x2E\0\0\xE0\x2E\0\0\1\0\x08\0\1\0\0\0\2\0\0\0"
      "\0\0\0\0\0\0\0\0\1\0\0\0\1\0\0\0",
      40);
  bmp = bmp.first(10) + QByteArray("\x3A\0\0\0", 4) + header + QByteArray("\x33\x22\x11\0", 4) +
        QByteArray("\1\0\0\1", 4);
  Put(Path("picture"), bmp);
  Bitmap.LoadFromFile(Path("picture"), QSize(720, 576));
  EXPECT_EQ(Bitmap.LastStatus(), 0);
  EXPECT_EQ(Bitmap.Width(), 12000);
  EXPECT_EQ(Bitmap.Image().pixel(0, 11999), 0xFF112233U);
}

TEST_F(LoadFromFile, APictureThatNoMemoryHoldsIsOutOfMemoryNotUnknown) {
  Put(Path("picture"), LargeJpeg(65000, 65000));
  Bitmap.LoadFromFile(Path("picture"));
  ExpectError(3, "Out Of Memory");
}

#ifdef Q_OS_UNIX

TEST_F(LoadFromFile, APipeIsDeniedWithoutWaiting) {
  ASSERT_EQ(mkfifo(QFile::encodeName(Path("pipe")).constData(), 0600), 0);
  Bitmap.LoadFromFile(Path("pipe"));
  ExpectError(12, "Access Denied");
}

TEST_F(LoadFromFile, AFileWithoutReadPermissionIsDenied) {
  if (!test::PermissionsBind()) {
    GTEST_SKIP() << test::NeedsOrdinaryUser;
  }
  Put(Path("a.png"), Bytes(Png));
  QFile::setPermissions(Path("a.png"), QFile::WriteOwner);
  Bitmap.LoadFromFile(Path("a.png"));
  ExpectError(12, "Access Denied");
}

TEST_F(LoadFromFile, AFolderThatMayNotBeEnteredIsDenied) {
  if (!test::PermissionsBind()) {
    GTEST_SKIP() << test::NeedsOrdinaryUser;
  }
  QDir(Path("")).mkdir("closed");
  Put(Path("closed/a.png"), Bytes(Png));
  QFile::setPermissions(Path("closed"), QFile::ReadOwner);
  Bitmap.LoadFromFile(Path("closed/a.png"));
  QFile::setPermissions(Path("closed"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  ExpectError(12, "Access Denied");
}

#endif

}  // namespace
}  // namespace quillmark
