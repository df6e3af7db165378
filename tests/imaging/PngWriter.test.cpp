#include "imaging/PngWriter.h"

#include <cstdint>
#include <random>
#include <vector>

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quillmark {
namespace {

QByteArray Hex(const char* digits) {
  return QByteArray::fromHex(digits);
}

/// The checksum of the format, bit by bit.
std::uint32_t Checksum(const QByteArray& bytes) {
  std::uint32_t sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<std::uint8_t>(byte);
    for (int bit = 0; bit < 8; ++bit) {
      sum = (sum & 1U) != 0 ? sum >> 1U ^ 0xEDB88320U : sum >> 1U;
    }
  }
  return ~sum;
}

std::uint32_t NumberAt(const QByteArray& bytes, qsizetype at) {
  std::uint32_t number = 0;
  for (const char byte : bytes.mid(at, 4)) {
    number = number << 8U | static_cast<std::uint8_t>(byte);
  }
  return number;
}

struct Chunk {
  QByteArray Name;
  QByteArray Data;
};

/// The chunks after the signature; a failure where a checksum is wrong.
std::vector<Chunk> ChunksOf(const QByteArray& png) {
  EXPECT_EQ(png.first(8), QByteArray("\x89PNG\r\n\x1a\n"));
  std::vector<Chunk> chunks;
  for (qsizetype at = 8; at + 12 <= png.size();) {
    const auto length = static_cast<qsizetype>(NumberAt(png, at));
    chunks.push_back({.Name = png.mid(at + 4, 4), .Data = png.mid(at + 8, length)});
    EXPECT_EQ(NumberAt(png, at + 8 + length), Checksum(png.mid(at + 4, 4 + length)));
    at += 12 + length;
  }
  return chunks;
}

QByteArray RowsIn(const Chunk& chunk) {
  return qUncompress(QByteArray(4, '\0') + chunk.Data);
}

QImage Colours(int width, int height, const std::vector<std::uint32_t>& pixels) {
  QImage image(width, height, QImage::Format_ARGB32);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const int at = static_cast<int>(i);
    image.setPixel(at % width, at / width, pixels[i]);
  }
  return image;
}

QImage Indexes(int width, int height, const std::vector<std::uint8_t>& pixels, const QList<QRgb>& table) {
  QImage image(width, height, QImage::Format_Indexed8);
  image.setColorTable(table);
  for (std::size_t i = 0; i < pixels.size(); ++i) {
    const int at = static_cast<int>(i);
    image.scanLine(at / width)[at % width] = pixels[i];
  }
  return image;
}

/// Runs of four colours, two of them translucent, and a few pixels of any colour.
QImage Picture(int width, int height) {
  std::mt19937 random(7);
  QImage image(width, height, QImage::Format_ARGB32);
  std::uint32_t colour = 0;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      if (random() % 6 == 0) {
        colour = std::vector<std::uint32_t>{0x00101010, 0xFFEBEBEB, 0x88000000,
                                            static_cast<std::uint32_t>(random())}[random() % 4];
      }
      reinterpret_cast<std::uint32_t*>(image.scanLine(y))[x] = colour;
    }
  }
  return image;
}

TEST(EncodePng, ColoursHave32BitsAndAreToldByTheirDifferences) {
  const auto chunks =
      ChunksOf(EncodePng(Colours(3, 2, {0x80112233, 0x80112233, 0x00445566, 0xFF000000, 0, 0x01FFFEFD})));
  ASSERT_EQ(chunks.size(), 3U);
  EXPECT_EQ(chunks[0].Name, "IHDR");
  EXPECT_EQ(chunks[0].Data, Hex("00000003 00000002 08 06 00 00 00"));
  EXPECT_EQ(chunks[1].Name, "IDAT");
  EXPECT_EQ(RowsIn(chunks[1]), Hex("01 11223380 00000000 33333380"
                                   "01 000000FF 00000001 FFFEFD01"));
  EXPECT_EQ(chunks[2].Name, "IEND");
  EXPECT_EQ(chunks[2].Data, "");
}

TEST(EncodePng, AnEmptyRowIsZerosWithItsFilter) {
  const auto chunks = ChunksOf(EncodePng(Colours(2, 3, {0, 0, 0, 0, 0, 1})));
  EXPECT_EQ(RowsIn(chunks[1]), Hex("00 00000000 00000000"
                                   "00 00000000 00000000"
                                   "01 00000000 00000100"));
}

TEST(EncodePng, UpToFourColoursHaveTwoBitsTheFirstPixelInTheHighest) {
  const auto chunks = ChunksOf(EncodePng(
      Indexes(5, 2, {0, 1, 2, 3, 1, 3, 3, 0, 0, 2}, {0x00102030, 0x80405060, 0xFF708090, 0xFFA0B0C0})));
  ASSERT_EQ(chunks.size(), 5U);
  EXPECT_EQ(chunks[0].Data, Hex("00000005 00000002 02 03 00 00 00"));
  EXPECT_EQ(chunks[1].Name, "PLTE");
  EXPECT_EQ(chunks[1].Data, Hex("102030 405060 708090 A0B0C0"));
  EXPECT_EQ(chunks[2].Name, "tRNS");
  EXPECT_EQ(chunks[2].Data, Hex("00 80"));
  EXPECT_EQ(RowsIn(chunks[3]), Hex("00 1B40 00 F080"));
}

TEST(EncodePng, FiveColoursHaveFourBits) {
  const auto chunks = ChunksOf(EncodePng(Indexes(3, 1, {4, 0, 3}, QList<QRgb>(5, 0xFF000000))));
  ASSERT_EQ(chunks.size(), 4U);  // no tRNS where all is opaque
  EXPECT_EQ(chunks[0].Data, Hex("00000003 00000001 04 03 00 00 00"));
  EXPECT_EQ(RowsIn(chunks[2]), Hex("00 4030"));
}

TEST(EncodePng, SixteenColoursHaveFourBits) {
  const auto chunks = ChunksOf(EncodePng(Indexes(2, 1, {15, 1}, QList<QRgb>(16, 0xFF000000))));
  EXPECT_EQ(chunks[0].Data, Hex("00000002 00000001 04 03 00 00 00"));
  EXPECT_EQ(RowsIn(chunks[2]), Hex("00 F1"));
}

TEST(EncodePng, IndexThatNoColourHasLeavesThePixelsBesideItAlone) {
  const auto chunks = ChunksOf(EncodePng(Indexes(3, 1, {0, 7, 2}, QList<QRgb>(4, 0xFF000000))));
  EXPECT_EQ(RowsIn(chunks[2]), Hex("00 38"));
}

TEST(EncodePng, SeventeenColoursHaveEightBits) {
  const auto chunks = ChunksOf(EncodePng(Indexes(2, 1, {16, 1}, QList<QRgb>(17, 0xFF000000))));
  EXPECT_EQ(chunks[0].Data, Hex("00000002 00000001 08 03 00 00 00"));
  EXPECT_EQ(RowsIn(chunks[2]), Hex("00 1001"));
}

TEST(EncodePng, QtReadsEveryBit) {
  for (const QSize size : {QSize(1, 1), QSize(33, 7), QSize(600, 80)}) {  // packed at both levels
    const QImage picture = Picture(size.width(), size.height());
    const QImage read = QImage::fromData(EncodePng(picture), "PNG");
    EXPECT_EQ(read.format(), QImage::Format_ARGB32);
    EXPECT_TRUE(read == picture) << size.width();
  }
}

TEST(EncodePng, QtReadsIndexesWithTheirColours) {
  const QList<QRgb> table = {0x00102030, 0x80405060, 0xFF708090, 0xFFA0B0C0, 0};
  const QImage picture = Indexes(3, 2, {4, 3, 2, 1, 0, 4}, table);
  const QImage read = QImage::fromData(EncodePng(picture), "PNG");
  EXPECT_EQ(read.colorTable(), table);
  EXPECT_EQ(read.convertToFormat(QImage::Format_ARGB32), picture.convertToFormat(QImage::Format_ARGB32));
}

TEST(EncodePng, TableOfAllColoursThatAByteCanNameIsWhole) {
  QList<QRgb> table;
  for (int i = 0; i < 256; ++i) {
    table.push_back(qRgba(i, 255 - i, 7, 255 - i));
  }
  const auto chunks = ChunksOf(EncodePng(Indexes(1, 1, {255}, table)));
  ASSERT_EQ(chunks.size(), 5U);
  EXPECT_EQ(chunks[1].Name, "PLTE");
  ASSERT_EQ(chunks[1].Data.size(), 768);
  EXPECT_EQ(chunks[1].Data.first(6), Hex("00FF07 01FE07"));
  EXPECT_EQ(chunks[1].Data.last(6), Hex("FE0107 FF0007"));
  EXPECT_EQ(chunks[2].Name, "tRNS");
  ASSERT_EQ(chunks[2].Data.size(), 256);
  EXPECT_EQ(chunks[2].Data.first(2), Hex("FF FE"));
  EXPECT_EQ(chunks[2].Data.last(2), Hex("01 00"));
}

TEST(IsForEncodePng, NeitherIsOneOfMoreThanAGibibyte) {
  // Nothing is written to its pixels, so that it takes no memory.
  const QImage image(16385, 16384, QImage::Format_ARGB32);
  if (image.isNull()) {
    GTEST_SKIP() << "needs room for a large picture";
  }
  EXPECT_FALSE(IsForEncodePng(image));
}

TEST(IsForEncodePng, OtherFormatsAreNot) {
  EXPECT_TRUE(IsForEncodePng(QImage(1, 1, QImage::Format_ARGB32)));
  EXPECT_FALSE(IsForEncodePng(QImage(1, 1, QImage::Format_RGB32)));
  EXPECT_FALSE(IsForEncodePng(QImage(1, 1, QImage::Format_ARGB32_Premultiplied)));
  EXPECT_FALSE(IsForEncodePng(QImage()));
  QImage indexes(1, 1, QImage::Format_Indexed8);
  EXPECT_FALSE(IsForEncodePng(indexes));
  indexes.setColorTable({0xFF000000});
  EXPECT_TRUE(IsForEncodePng(indexes));
}

/// Files for other programs.
class PngReferees : public testing::Test {
 protected:
  [[nodiscard]] QString Put(const QString& name, const QImage& picture) const {
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(EncodePng(picture));
    return file.fileName();
  }

  /// What the program writes, nothing at all where it is missing or fails.
  static QByteArray Run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0
               ? process.readAllStandardOutput()
               : QByteArray();
  }
  static bool Has(const QString& program) { return !QStandardPaths::findExecutable(program).isEmpty(); }

 private:
  QTemporaryDir folder_;
};

TEST_F(PngReferees, PngcheckFindsNothing) {
  if (!Has("pngcheck")) {
    GTEST_SKIP() << "needs pngcheck";
  }
  const QString colours = Put("colours.png", Picture(100, 20));
  const QString indexes = Put("indexes.png", Indexes(2, 1, {0, 3}, {0, 0xFF000001, 0xFF000002, 0xFF000003}));
  EXPECT_TRUE(
      Run("pngcheck", {colours, indexes}).contains("No errors were detected in 2 of the 2 files tested."));
}

TEST_F(PngReferees, FfmpegReadsEveryBit) {
  if (!Has("ffmpeg")) {
    GTEST_SKIP() << "needs ffmpeg";
  }
  const QImage picture = Picture(100, 20);
  const QByteArray read = Run("ffmpeg", {"-v", "error", "-i", Put("colours.png", picture), "-f", "rawvideo",
                                         "-pix_fmt", "rgba", "-"});
  const QImage expected = picture.convertToFormat(QImage::Format_RGBA8888);
  EXPECT_TRUE(read ==
              QByteArray(reinterpret_cast<const char*>(expected.constBits()), expected.sizeInBytes()));
}

}  // namespace
}  // namespace quillmark
