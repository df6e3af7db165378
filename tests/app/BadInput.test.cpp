#include <unistd.h>

#include <QDir>
#include <QFile>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"
#include "tests/support/OrdinaryUser.h"

namespace quillmark::test {
namespace {

/// What opening a stream tells: its report's first two lines, or why there is none.
const QString NoSignature = "Error: No SUP signature found";
const QString NotConverted = "Error converting subtitle!";
QString Report(int subtitles, int parseErrors) {
  return QString("Found Subtitles: %1\r\nParse errors: %2\r\n").arg(subtitles).arg(parseErrors);
}
/// Of a stream whose first subtitle is invalid: nothing after it is looked at.
const QStringList InvalidFirst = {NotConverted, Report(1, 1)};

/// What is told of two of PacketBuilder's small packets, of which the file has `length` bytes.
QStringList ToldOfTwoCutAt(std::size_t length) {
  constexpr std::size_t Header = 14;
  // The field command, the last one that a subtitle needs, is byte 36. After the end of its sequence, byte
  // 41, the next one's pointer, up to byte 45, must not read as 0.
  const auto valid = [](std::size_t held) { return (held > 36 && held <= 41) || held > 45; };
  if (length < Header) {
    return {Report(0, 0)};
  }
  if (length < PacketBuilder::Length + Header) {
    return valid(length) ? QStringList(Report(1, 0)) : InvalidFirst;
  }
  return {Report(2, valid(length - PacketBuilder::Length) ? 0 : 1)};
}

/// Whatever a file holds, the program says what is wrong with it, and then loads a good one.
class BadInput : public WindowTest {
 protected:
  void SetUp() override {
    good_ = Write("good.sup", ThreeSubtitles());
    Dialogs.AllowMessages();
  }
  /// Loads and walks a damaged stream by every command that a user could press; what the load told.
  QStringList Try(const Bytes& stream) { return TryPath(Write("bad.sup", stream)); }
  QStringList TryPath(const QString& path) {
    const QStringList told = Open(path);
    PressIfEnabled("Command_Next");
    PressIfEnabled("Command_Reload");
    PressIfEnabled("Command_Prev");
    PressIfEnabled("Command_SetActual");
    PressIfEnabled("Command_SetAll");
    PressIfEnabled("Command_Reload");
    return told;
  }
  /// What the load told.
  QStringList Open(const QString& path) {
    const qsizetype before = Dialogs.MessageTexts().size();
    Window.OpenCommandLine(path);
    QStringList told = Dialogs.MessageTexts().mid(before);
    for (QString& text : told) {
      if (text.startsWith("Found Subtitles: ")) {
        text.truncate(text.indexOf("Max subtitle width"));
      }
    }
    return told;
  }
  void PressIfEnabled(const QString& command) {
    if (IsEnabled(command)) {
      Control<QAbstractButton>(command).click();
    }
  }
  void ExpectGoodFileLoads() {
    Window.OpenCommandLine(good_);
    ASSERT_FALSE(Dialogs.Shown().empty());
    EXPECT_TRUE(Dialogs.Last().Text.startsWith("Found Subtitles: 3\r\nParse errors: 0\r\n"))
        << Dialogs.Last().Text.toStdString();
    EXPECT_EQ(TextOf("Text_SubNum"), "1");
    EXPECT_EQ(TextOf("Text_StartTime"), "00:00:01.00");
    EXPECT_EQ(FrameColour(102, 400), QColor(3, 253, 251));
  }

 private:
  QString good_;
};

TEST_F(BadInput, EmptyFileHoldsNoSubtitles) {
  Window.OpenCommandLine(Write("bad.sup", Bytes()));
  EXPECT_TRUE(Dialogs.Last().Text.startsWith("Found Subtitles: 0\r\n"));
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
  ExpectGoodFileLoads();
}

TEST_F(BadInput, FileBelowFourteenBytesHoldsNoSubtitles) {
  for (std::size_t length = 1; length < 14; ++length) {
    Window.OpenCommandLine(Write("bad.sup", Bytes(length, 'x')));
    EXPECT_TRUE(Dialogs.Last().Text.startsWith("Found Subtitles: 0\r\n")) << length;
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, StreamTruncatedAtEveryLength) {
  const Bytes whole = Join({FourCodes(PacketBuilder()), FourCodes(PacketBuilder().Time(Second))});
  for (std::size_t length = 0; length < whole.size(); ++length) {
    EXPECT_EQ(Try(Bytes(whole.begin(), whole.begin() + static_cast<long>(length))), ToldOfTwoCutAt(length))
        << length;
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, UnitSizesBelowTheHeader) {
  for (unsigned size = 0; size <= 13; ++size) {
    EXPECT_EQ(Try(Join({PacketBuilder().Size(size).Build(), PacketBuilder().Build()})), InvalidFirst) << size;
    EXPECT_EQ(Try(Join({PacketBuilder().Build(), PacketBuilder().Size(size).Build()})),
              QStringList(NoSignature))
        << size;
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, UnitSizesFrom0x8000) {
  for (const unsigned size : {0x8000U, 0x8001U, 0xC000U, 0xFFFFU}) {
    Bytes large = PacketBuilder().Size(size).Build();
    large.resize(size + 10);
    EXPECT_EQ(Try(large), InvalidFirst) << size;
    EXPECT_EQ(Try(Join({PacketBuilder().Build(), large, PacketBuilder().Build()})), QStringList(Report(3, 1)))
        << size;
    EXPECT_EQ(Try(PacketBuilder().Size(size).Build()), InvalidFirst) << size;
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, ControlOffsetsAnywhere) {
  // Read from the header or from before the unit on, what stands before the sequences is stepped over.
  for (const unsigned offset : {1U, 2U, 3U, 4U, 5U, 0x8000U, 0xFFFFU}) {
    const Bytes packet = PacketBuilder().ControlOffset(offset).Build();
    EXPECT_EQ(Try(Join({packet, PacketBuilder().Build()})), QStringList(Report(2, 0))) << offset;
    EXPECT_EQ(Try(Join({PacketBuilder().Build(), packet})), QStringList(Report(2, 0))) << offset;
  }
  for (const unsigned offset : {0U, 33U, 34U, 37U, 38U, 39U, 0x7FFFU}) {
    const Bytes packet = PacketBuilder().ControlOffset(offset).Build();
    EXPECT_EQ(Try(Join({packet, PacketBuilder().Build()})), InvalidFirst) << offset;
    EXPECT_EQ(Try(Join({PacketBuilder().Build(), packet})), QStringList(Report(2, 1))) << offset;
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, FieldOffsetsAnywhere) {
  // The field command is the last one of the first sequence, and its arguments stand after it.
  constexpr std::size_t FieldCommand = 14 + 22;
  for (const unsigned offset : {0U, 1U, 3U, 4U, 30U, 36U, 37U, 38U, 0x7FFFU, 0x8000U, 0xFFFFU}) {
    Bytes packet = PacketBuilder().Build();
    ASSERT_EQ(packet[FieldCommand], 0x06);
    packet[FieldCommand + 1] = packet[FieldCommand + 3] = static_cast<std::uint8_t>(offset >> 8U);
    packet[FieldCommand + 2] = packet[FieldCommand + 4] = static_cast<std::uint8_t>(offset & 0xFFU);
    EXPECT_EQ(Try(Join({packet, packet})), QStringList(Report(2, 0))) << offset;
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, AreasReversedOrHuge) {
  Click("Check_SavePics");
  const auto tryArea = [this](unsigned x1, unsigned x2, unsigned y1, unsigned y2) {
    return Try(PacketBuilder().Area(x1, x2, y1, y2).Build());
  };
  for (const QStringList& told :
       {tryArea(200, 100, 400, 401), tryArea(100, 103, 401, 400), tryArea(100, 99, 400, 399)}) {
    ASSERT_EQ(told.size(), 2);
    EXPECT_TRUE(told[0].endsWith(": the subtitle's area is reversed, so that it has no picture"))
        << told[0].toStdString();
    EXPECT_EQ(told[1], Report(1, 0));
  }
  Click("Check_SavePics");
  EXPECT_EQ(tryArea(0, 4095, 0, 4095), QStringList(Report(1, 0)));
  EXPECT_EQ(tryArea(4095, 4095, 4095, 4095), QStringList(Report(1, 0)));
  ExpectGoodFileLoads();
}

TEST_F(BadInput, TimesBelowZeroAndBeyondReason) {
  for (const std::int64_t time : {std::int64_t{-1}, std::int64_t{-90000}, INT64_MIN, INT64_MAX}) {
    EXPECT_EQ(Try(Join({PacketBuilder().Time(time).Delay(100).Build(),
                        PacketBuilder().Time(time).Delay(0xFFFF).Build()})),
              QStringList(Report(2, 0)))
        << time;
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, EveryBitFlippedOnce) {
  const Bytes whole = FourCodes(PacketBuilder().Delay(50));
  for (std::size_t byte = 0; byte < whole.size(); ++byte) {
    for (unsigned bit = 0; bit < 8; ++bit) {
      Bytes flipped = whole;
      flipped[byte] = static_cast<std::uint8_t>(flipped[byte] ^ 1U << bit);
      const QStringList told = Open(Write("bad.sup", flipped));
      ASSERT_FALSE(told.isEmpty());
      // Only the signature's own bits let it be missed; all others leave a subtitle, perhaps an invalid one.
      EXPECT_EQ(told.size() == 1 && told[0] == NoSignature, byte < 2) << byte << ' ' << bit;
      EXPECT_TRUE(byte < 2 || told == QStringList(Report(1, 0)) || told == InvalidFirst)
          << byte << ' ' << bit << told.join('|').toStdString();
    }
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, FolderInsteadOfAFile) {
  EXPECT_EQ(TryPath(Folder.path()), QStringList());
  ExpectGoodFileLoads();
}

TEST_F(BadInput, FolderNamedLikeAStream) {
  ASSERT_TRUE(QDir().mkdir(Path("folder.sup")));
  EXPECT_EQ(TryPath(Path("folder.sup")), QStringList());
  ExpectGoodFileLoads();
}

TEST_F(BadInput, FileThatMayNotBeReadIsToldWithItsName) {
  if (!test::PermissionsBind()) {
    GTEST_SKIP() << test::NeedsOrdinaryUser;
  }
  const QString path = Write("secret.sup", ThreeSubtitles());
  ASSERT_TRUE(QFile::setPermissions(path, {}));
  Window.OpenCommandLine(path);
  EXPECT_TRUE(Dialogs.Last().Text.contains("secret.sup"));
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
  ExpectGoodFileLoads();
}

TEST_F(BadInput, FileBeyondTwoGibibytesIsRefused) {
  QFile large(Path("large.sup"));
  ASSERT_TRUE(large.open(QIODevice::WriteOnly));
  if (!large.resize((std::int64_t{1} << 31U) + 1)) {
    GTEST_SKIP() << "no room for a sparse file of 2 GiB";
  }
  large.close();
  Window.OpenCommandLine(Path("large.sup"));
  ASSERT_EQ(Dialogs.MessageTexts().size(), 1);
  EXPECT_EQ(Dialogs.Last().Text,
            "Cannot read " + Path("large.sup") + ": it is too large: a stream may have 2147352576 bytes");
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
  ExpectGoodFileLoads();
}

TEST_F(BadInput, StepAfterACancelledLoadDoesNoHarm) {
  Load(Write("movie.sup", ThreeSubtitles()));
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  for (int i = 0; i < 5; ++i) {
    PressIfEnabled("Command_Next");
    PressIfEnabled("Command_Reload");
    PressIfEnabled("Command_SetActual");
    PressIfEnabled("Command_Prev");
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, StepAfterASignatureErrorDoesNoHarm) {
  Load(Write("movie.sup", ThreeSubtitles()));
  // A longer packet than all of the bytes that are kept from before.
  EXPECT_EQ(Try(Join({PacketBuilder().Unit(Join({PacketBuilder().UnitBytes(), Bytes(500, 0)})).Build(),
                      Bytes(20, 'x')})),
            QStringList(NoSignature));
  EXPECT_EQ(Try(Bytes(20, 'x')), QStringList(NoSignature));
  ExpectGoodFileLoads();
}

}  // namespace
}  // namespace quillmark::test
