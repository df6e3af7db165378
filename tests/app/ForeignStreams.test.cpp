#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

/// Streams that other programs encoded, against what an independent decoder says of each subtitle.
class ForeignStreams : public WindowTest {
 protected:
  void ExpectShown(const QJsonObject& subtitle) const {
    const QJsonArray area = subtitle["area_x1_x2_y1_y2"].toArray();
    EXPECT_EQ(TextOf("Text_XPos"), QString::number(area[0].toInt()));
    EXPECT_EQ(TextOf("Text_YPos"), QString::number(area[2].toInt()));
    EXPECT_EQ(TextOf("Text_Width"), QString::number(subtitle["width"].toInt()));
    EXPECT_EQ(TextOf("Text_Height"), QString::number(subtitle["height"].toInt()));
    for (int code = 0; code < 4; ++code) {
      const auto nibble = [&](const char* key) {
        return QString::number(subtitle[key].toArray()[code].toInt(), 16).toUpper();
      };
      EXPECT_EQ(Chosen("ImageCombo" + QString::number(code + 1)), nibble("colour_of_code_0_to_3"));
      EXPECT_EQ(Chosen(Element("Combo1", code)), nibble("contrast_of_code_0_to_3"));
    }
  }
  void LoadAndStep(const QString& name) {
    const QString base = QStringLiteral(QUILLMARK_TEST_DATA "/streams/") + name;
    const QJsonArray subtitles =
        QJsonDocument::fromJson(ReadText(base + ".json")).object()["subtitles"].toArray();
    ASSERT_GT(subtitles.size(), 1);
    Load(base + ".sup");
    EXPECT_TRUE(Dialogs.Last().Text.startsWith("Found Subtitles: " + QString::number(subtitles.size()) +
                                               "\r\nParse errors: 0\r\n"));
    ExpectShown(subtitles.first().toObject());
    for (qsizetype i = 1; i < subtitles.size(); ++i) {
      Click("Command_Next");
      EXPECT_EQ(TextOf("Text_SubNum"), QString::number(i + 1));
      ExpectShown(subtitles[i].toObject());
    }
    EXPECT_FALSE(IsEnabled("Command_Next"));
  }
};

TEST_F(ForeignStreams, SpumuxLoadsAndSteps) {
  LoadAndStep("spumux-pal");
}

TEST_F(ForeignStreams, DvdauthorLoadsAndSteps) {
  LoadAndStep("dvdauthor-ntsc");
}

TEST_F(ForeignStreams, LavcLoadsAndSteps) {
  LoadAndStep("lavc-pal");
}

}  // namespace
}  // namespace quillmark::test
