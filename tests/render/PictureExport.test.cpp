#include "render/PictureExport.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quillmark {
namespace {

// 1 minute 5.48 seconds and 1 minute 8.5 seconds.
constexpr std::int64_t Start = 65 * 90000 + 48 * 900;
constexpr std::int64_t End = 68 * 90000 + 50 * 900;
constexpr std::int64_t Hour = std::int64_t{3600} * 90000;

QByteArray Content(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void Put(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_EQ(file.write(bytes), bytes.size());
}

TEST(AuthoringTimeText, IsRoundedToTheNearestTenThousandthOfASecond) {
  // Nine ticks each.
  EXPECT_EQ(AuthoringTimeText(4), "00:00:00.0000");
  EXPECT_EQ(AuthoringTimeText(5), "00:00:00.0001");
  EXPECT_EQ(AuthoringTimeText(3599 * 90000 + 89996), "01:00:00.0000");
}

TEST(ExportPathsFor, TheLastFourCharactersAreDropped) {
  const ExportPaths paths = ExportPathsFor("/films/first.sup");
  EXPECT_EQ(paths.Folder, "/films/first_SubPng");
  EXPECT_EQ(paths.List, "/films/first_spu.xml");
}

TEST(ExportPathsFor, AnExtensionOfAnotherLengthStillLosesFour) {
  EXPECT_EQ(ExportPathsFor("/films/first.subs").Folder, "/films/first._SubPng");
  EXPECT_EQ(ExportPathsFor("/films/a.b").Folder, "/films_SubPng");
}

TEST(ExportPathsFor, AShorterPathLosesWhatItHas) {
  EXPECT_EQ(ExportPathsFor("sup").Folder, "_SubPng");
  EXPECT_EQ(ExportPathsFor("").List, "_spu.xml");
}

TEST(ExportPathsForBase, NamesAreAppended) {
  const ExportPaths paths = ExportPathsForBase("out/film");
  EXPECT_EQ(paths.Folder, "out/film_SubPng");
  EXPECT_EQ(paths.List, "out/film_spu.xml");
}

TEST(PictureName, TimePartsAreJoinedByPlus) {
  EXPECT_EQ(PictureName(Start), "00+01+05+48.png");
}

TEST(PictureName, HoursAbove99TakeThreeDigits) {
  EXPECT_EQ(PictureName(123 * Hour + Start), "123+01+05+48.png");
}

TEST(PictureName, StartsInTheSameHundredthShareAName) {
  EXPECT_EQ(PictureName(Start - 450), "00+01+05+48.png");
  EXPECT_EQ(PictureName(Start + 449), "00+01+05+48.png");
  EXPECT_EQ(PictureName(Start + 450), "00+01+05+49.png");
}

TEST(PictureName, TheCarryOfTheHundredthsIsDropped) {
  EXPECT_EQ(PictureName(65 * 90000 + 89999), "00+01+05+00.png");
}

TEST(PicturePath, FolderAndNameAreJoinedByThePlatformsSeparator) {
  EXPECT_EQ(PicturePath("film_SubPng", "00+00+00+00.png"),
            QString("film_SubPng") + QDir::separator() + "00+00+00+00.png");
}

TEST(SpuLine, HoldsTimesPicturePathAndPlace) {
  EXPECT_EQ(SpuLine(Start, End, "/films/first_SubPng/00+01+05+48.png", 72, 460).toStdString(),
            "    <spu start=\"00:01:05.48\" end=\"00:01:08.50\" "
            "image=\"/films/first_SubPng/00+01+05+48.png\" xoffset=\"72\" yoffset=\"460\" />\r\n");
}

TEST(SpuLine, WithoutAnEndThereIsNoEndAttribute) {
  EXPECT_EQ(SpuLine(Start, std::nullopt, "a.png", 0, 2).toStdString(),
            "    <spu start=\"00:01:05.48\" image=\"a.png\" xoffset=\"0\" yoffset=\"2\" />\r\n");
}

TEST(SpuLine, HoursAbove99TakeThreeDigits) {
  EXPECT_EQ(SpuLine(100 * Hour, 1000 * Hour, "a.png", 0, 0).toStdString(),
            "    <spu start=\"100:00:00.00\" end=\"1000:00:00.00\" image=\"a.png\" xoffset=\"0\" "
            "yoffset=\"0\" />\r\n");
}

TEST(SpuLine, CharactersThatMeanSomethingInAnAttributeBecomeEntities) {
  EXPECT_EQ(SpuLine(0, std::nullopt, "Q&A \"<1>\"\r\n\t'.png", 0, 0).toStdString(),
            "    <spu start=\"00:00:00.00\" image=\"Q&amp;A &quot;&lt;1&gt;&quot;&#13;&#10;&#9;'.png\" "
            "xoffset=\"0\" yoffset=\"0\" />\r\n");
}

TEST(AppendSpuLine, CreatesTheListWithNothingButTheLine) {
  const QTemporaryDir folder;
  const QString list = folder.filePath("film_spu.xml");
  EXPECT_EQ(AppendSpuLine(list, "    <spu />\r\n").Reason(), "");
  EXPECT_EQ(Content(list), QByteArray("    <spu />\r\n"));
}

TEST(AppendSpuLine, KeepsTheLinesThatAreThere) {
  const QTemporaryDir folder;
  const QString list = folder.filePath("film_spu.xml");
  Put(list, "old\r\n");
  EXPECT_EQ(AppendSpuLine(list, "new\r\n").Reason(), "");
  EXPECT_EQ(AppendSpuLine(list, "new\r\n").Reason(), "");
  EXPECT_EQ(Content(list), QByteArray("old\r\nnew\r\nnew\r\n"));
}

TEST(AppendSpuLine, WritesUtf8) {
  const QTemporaryDir folder;
  const QString list = folder.filePath("film_spu.xml");
  EXPECT_EQ(AppendSpuLine(list, QString::fromUtf8("\xC3\xA9\xF0\x9F\x8E\xAC")).Reason(), "");
  EXPECT_EQ(Content(list), QByteArray("\xC3\xA9\xF0\x9F\x8E\xAC"));
}

TEST(AppendSpuLine, AListThatCannotBeOpenedIsAFailure) {
  const QTemporaryDir folder;
  EXPECT_EQ(AppendSpuLine(folder.filePath("missing/film_spu.xml"), "line\r\n").Reason(),
            "No such file or directory");
  EXPECT_EQ(AppendSpuLine(folder.path(), "line\r\n").Reason(), "It is a folder");
}

}  // namespace
}  // namespace quillmark
