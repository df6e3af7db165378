#include <unistd.h>

#include <QDir>
#include <QFile>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"
#include "tests/support/OrdinaryUser.h"

namespace quillmark::test {
namespace {

/// Whatever a file holds, the program tells something or nothing, and then loads a good one.
class BadInput : public WindowTest {
 protected:
  void SetUp() override {
    good_ = Write("good.sup", ThreeSubtitles());
    Dialogs.AllowMessages();
  }
  /// Loads and walks a damaged stream by every command that a user could press.
  void Try(const Bytes& stream) { TryPath(Write("bad.sup", stream)); }
  void TryPath(const QString& path) {
    Window.OpenCommandLine(path);
    PressIfEnabled("Command_Next");
    PressIfEnabled("Command_Reload");
    PressIfEnabled("Command_Prev");
    PressIfEnabled("Command_SetActual");
    PressIfEnabled("Command_SetAll");
    PressIfEnabled("Command_Reload");
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
    Try(Bytes(whole.begin(), whole.begin() + static_cast<long>(length)));
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, UnitSizesBelowTheHeader) {
  for (unsigned size = 0; size <= 13; ++size) {
    Try(Join({PacketBuilder().Size(size).Build(), PacketBuilder().Build()}));
    Try(Join({PacketBuilder().Build(), PacketBuilder().Size(size).Build()}));
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, UnitSizesFrom0x8000) {
  for (const unsigned size : {0x8000U, 0x8001U, 0xC000U, 0xFFFFU}) {
    Bytes large = PacketBuilder().Size(size).Build();
    large.resize(size + 10);
    Try(large);
    Try(Join({PacketBuilder().Build(), large, PacketBuilder().Build()}));
    Try(PacketBuilder().Size(size).Build());
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, ControlOffsetsAnywhere) {
  for (const unsigned offset : {0U, 1U, 2U, 3U, 4U, 5U, 33U, 34U, 37U, 38U, 39U, 0x7FFFU, 0x8000U, 0xFFFFU}) {
    Try(Join({PacketBuilder().ControlOffset(offset).Build(), PacketBuilder().Build()}));
    Try(Join({PacketBuilder().Build(), PacketBuilder().ControlOffset(offset).Build()}));
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, FieldOffsetsAnywhere) {
  // The field command is the last one of the first sequence, and its arguments stand behind it.
  constexpr std::size_t FieldCommand = 14 + 22;
  for (const unsigned offset : {0U, 1U, 3U, 4U, 30U, 36U, 37U, 38U, 0x7FFFU, 0x8000U, 0xFFFFU}) {
    Bytes packet = PacketBuilder().Build();
    ASSERT_EQ(packet[FieldCommand], 0x06);
    packet[FieldCommand + 1] = packet[FieldCommand + 3] = static_cast<std::uint8_t>(offset >> 8U);
    packet[FieldCommand + 2] = packet[FieldCommand + 4] = static_cast<std::uint8_t>(offset & 0xFFU);
    Try(Join({packet, packet}));
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, AreasReversedOrHuge) {
  Click("Check_SavePics");
  Try(PacketBuilder().Area(200, 100, 400, 401).Build());
  Try(PacketBuilder().Area(100, 103, 401, 400).Build());
  Try(PacketBuilder().Area(100, 99, 400, 399).Build());
  Click("Check_SavePics");
  Try(PacketBuilder().Area(0, 4095, 0, 4095).Build());
  Try(PacketBuilder().Area(4095, 4095, 4095, 4095).Build());
  ExpectGoodFileLoads();
}

TEST_F(BadInput, TimesBelowZeroAndBeyondReason) {
  for (const std::int64_t time : {std::int64_t{-1}, std::int64_t{-90000}, INT64_MIN, INT64_MAX}) {
    Try(Join(
        {PacketBuilder().Time(time).Delay(100).Build(), PacketBuilder().Time(time).Delay(0xFFFF).Build()}));
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, EveryBitFlippedOnce) {
  const Bytes whole = FourCodes(PacketBuilder().Delay(50));
  for (std::size_t byte = 0; byte < whole.size(); ++byte) {
    for (unsigned bit = 0; bit < 8; ++bit) {
      Bytes flipped = whole;
      flipped[byte] = static_cast<std::uint8_t>(flipped[byte] ^ 1U << bit);
      Window.OpenCommandLine(Write("bad.sup", flipped));
    }
  }
  ExpectGoodFileLoads();
}

TEST_F(BadInput, FolderInsteadOfAFile) {
  TryPath(Folder.path());
  ExpectGoodFileLoads();
}

TEST_F(BadInput, FolderNamedLikeAStream) {
  ASSERT_TRUE(QDir().mkdir(Path("folder.sup")));
  TryPath(Path("folder.sup"));
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
  EXPECT_FALSE(Dialogs.Last().Text.startsWith("Found Subtitles"));
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
  Try(Join(
      {PacketBuilder().Unit(Join({PacketBuilder().UnitBytes(), Bytes(500, 0)})).Build(), Bytes(20, 'x')}));
  Try(Bytes(20, 'x'));
  ExpectGoodFileLoads();
}

}  // namespace
}  // namespace quillmark::test
