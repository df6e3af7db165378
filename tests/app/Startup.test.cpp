#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <QProcess>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

class Startup : public WindowTest {};

TEST_F(Startup, SupPathIsTestSupInTheProgramsFolder) {
  EXPECT_EQ(TextOf("Text1"), InProgramsFolder("test.sup"));
}

TEST_F(Startup, NoSubtitleIsShown) {
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
}

TEST_F(Startup, CommandsThatNeedAStreamAreDisabled) {
  for (const char* name : {"Command_Next", "Command_Prev", "Command_GoTo", "Command_Reload",
                           "Command_SetActual", "Command_SetAll", "Command_SaveSup", "Command_SavePalette"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
}

TEST_F(Startup, LoadSupIsEnabled) {
  EXPECT_TRUE(IsEnabled("Command_LoadSup"));
}

TEST_F(Startup, CheckerIsTheBackground) {
  EXPECT_TRUE(IsChecked("Option_Checker"));
  EXPECT_FALSE(IsChecked("Option_File"));
  EXPECT_FALSE(IsChecked("Check_SavePics"));
}

/// In white on a dark plate in the frame's middle, until there is a subtitle.
TEST_F(Startup, FrameTellsHowToBegin) {
  const auto lightPixels = [this] {
    const QImage frame = Frame();
    int count = 0;
    for (int x = 0; x < frame.width(); ++x) {
      for (int y = frame.height() / 2 - 10; y < frame.height() / 2 + 10; ++y) {
        count += qGray(frame.pixel(x, y)) > 200 ? 1 : 0;
      }
    }
    return count;
  };
  EXPECT_GT(lightPixels(), 200);
  LoadStream(ThreeSubtitles());
  EXPECT_EQ(lightPixels(), 0);
}

TEST_F(Startup, FrameHasTheChosenSize) {
  EXPECT_NE(IsChecked("Option_720x480"), IsChecked("Option_720x576"));
  EXPECT_EQ(Control<QWidget>("Picture1").size(), QSize(720, IsChecked("Option_720x480") ? 480 : 576));
}

TEST_F(Startup, SwatchesShowTheStartUpPalette) {
  static const QColor Palette[] = {
      {0, 0, 0},       {3, 253, 251},  {255, 255, 255}, {2, 252, 2},     {253, 255, 4},   {252, 94, 252},
      {148, 150, 240}, {251, 99, 251}, {252, 150, 150}, {150, 253, 150}, {148, 150, 251}, {251, 150, 253},
      {130, 130, 130}, {0, 0, 0},      {0, 0, 0},       {0, 0, 0},
  };
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(SwatchColour(i), Palette[i]) << i;
  }
}

TEST_F(Startup, CommandLineNamesTheStream) {
  const QString path = Write("movie.sup", ThreeSubtitles());
  Dialogs.ExpectReport();
  Window.OpenCommandLine(path);
  EXPECT_EQ(TextOf("Text1"), path);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(Startup, QuotesAroundAPathWithBlanksAreRemoved) {
  const QString path = Write("my first movie.sup", ThreeSubtitles());
  Dialogs.ExpectReport();
  Window.OpenCommandLine('"' + path + '"');
  EXPECT_EQ(TextOf("Text1"), path);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(Startup, QuotesInsideThePathAreRemovedToo) {
  const QString path = Write("my movie.sup", ThreeSubtitles());
  Dialogs.ExpectReport();
  Window.OpenCommandLine(Folder.path() + "/\"my movie\".sup");
  EXPECT_EQ(TextOf("Text1"), path);
}

TEST_F(Startup, MissingFileLoadsNothing) {
  Window.OpenCommandLine(Path("missing.sup"));
  EXPECT_EQ(TextOf("Text1"), InProgramsFolder("test.sup"));
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
  EXPECT_FALSE(IsEnabled("Command_Next"));
}

TEST_F(Startup, EmptyCommandLineLoadsNothing) {
  Window.OpenCommandLine({});
  EXPECT_EQ(TextOf("Text1"), InProgramsFolder("test.sup"));
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
}

TEST_F(Startup, CommandLineStreamEnablesNavigationAndAssignment) {
  Dialogs.ExpectReport();
  Window.OpenCommandLine(Write("movie.sup", ThreeSubtitles()));
  for (const char* name :
       {"Command_Next", "Command_GoTo", "Command_Reload", "Command_SetActual", "Command_SetAll"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
}

/// Tells that somebody opened a file.
class OpenedFile {
 public:
  explicit OpenedFile(const QString& path)
      : descriptor_(inotify_init1(IN_CLOEXEC)),
        watch_(inotify_add_watch(descriptor_, path.toLocal8Bit().constData(), IN_OPEN)) {}
  ~OpenedFile() { close(descriptor_); }
  OpenedFile(const OpenedFile&) = delete;
  OpenedFile& operator=(const OpenedFile&) = delete;

  [[nodiscard]] bool Await() const {
    constexpr int LongEnoughInMs = 60000;
    pollfd opened{.fd = descriptor_, .events = POLLIN, .revents = 0};
    return watch_ >= 0 && poll(&opened, 1, LongEnoughInMs) == 1;
  }

 private:
  int descriptor_;
  int watch_;
};

TEST_F(Startup, ProgramJoinsTheWordsOfAQuotedPathOfItsCommandLine) {
  const QString path = Write("my first movie.sup", ThreeSubtitles());
  const OpenedFile file(path);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
  QProcess program;
  program.setProcessEnvironment(environment);
  program.start(QUILLMARK_PROGRAM, ('"' + path + '"').split(' '));
  ASSERT_TRUE(program.waitForStarted());
  EXPECT_TRUE(file.Await());
  program.kill();
  program.waitForFinished();
}

TEST_F(Startup, WithoutADisplayOneLineSaysSoAndTheStatusIsTwo) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    environment.remove(name);
  }
  QProcess program;
  program.setProcessEnvironment(environment);
  program.start(QUILLMARK_PROGRAM, {});
  ASSERT_TRUE(program.waitForFinished());
  EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
  EXPECT_EQ(program.exitCode(), 2);
  const QByteArray said = program.readAllStandardError();
  EXPECT_EQ(said.count('\n'), 1) << said.toStdString();
  EXPECT_TRUE(said.contains("display")) << said.toStdString();
}

}  // namespace
}  // namespace quillmark::test
