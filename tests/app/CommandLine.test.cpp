#include "app/CommandLine.h"

#include <QProcess>

#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

class CommandLineTest : public testing::Test {
 protected:
  [[nodiscard]] QString Path(const QString& name) const { return Folder.filePath(name); }
  QString Touch(const QString& name) const {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    return file.fileName();
  }

  QTemporaryDir Folder;
};

TEST_F(CommandLineTest, NothingAsksForNothing) {
  EXPECT_EQ(ReadCommandLine({}).File, "");
  EXPECT_EQ(ReadCommandLine({}).Complaint, "");
}

TEST_F(CommandLineTest, BlanksAndQuotesAreOfThePath) {
  const QString path = Touch("my first -x.sup");
  EXPECT_EQ(ReadCommandLine({path}).File, path);
  EXPECT_EQ(ReadCommandLine({'"' + path + '"'}).File, path);
  EXPECT_EQ(ReadCommandLine({Path("my"), "first", "-x.sup"}).File, path);
}

TEST_F(CommandLineTest, MissingFileIsNamed) {
  EXPECT_EQ(ReadCommandLine({"/none/my", "%1.sup"}).Complaint, "there is no file /none/my %1.sup");
  EXPECT_EQ(ReadCommandLine({"/none/my.sup"}).File, "");
}

TEST_F(CommandLineTest, FolderIsNamed) {
  EXPECT_EQ(ReadCommandLine({Folder.path()}).Complaint, Folder.path() + " is a folder, not a SUP file");
}

TEST_F(CommandLineTest, TwoFilesAreTooMany) {
  const QString one = Touch("one.sup");
  const QString two = Touch("two.sup");
  EXPECT_EQ(ReadCommandLine({one, two}).Complaint, "only one file can be opened, not " + one + " and " + two);
}

TEST_F(CommandLineTest, UnknownOptionIsNamed) {
  EXPECT_EQ(ReadCommandLine({"--colour", Touch("one.sup")}).Complaint,
            "unknown option --colour; see quillmark --help");
}

/// The program itself, off screen, ended as soon as it has said something.
class Program : public CommandLineTest {
 protected:
  Program() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    environment.insert("XDG_CONFIG_HOME", Folder.path());
    environment.insert("XDG_STATE_HOME", Folder.path());
    process.setProcessEnvironment(environment);
  }
  QByteArray FirstError(const QStringList& arguments) {
    process.start(QUILLMARK_PROGRAM, arguments);
    process.setReadChannel(QProcess::StandardError);
    while (!process.canReadLine() && process.waitForReadyRead(60000)) {
    }
    const QByteArray line = process.readLine();
    process.kill();
    process.waitForFinished();
    return line;
  }

  QProcess process;
};

TEST_F(Program, SaysWhatItCannotOpen) {
  EXPECT_EQ(FirstError({"/none/my.sup"}), "quillmark: there is no file /none/my.sup\n");
}

TEST_F(Program, HelpAndVersionAnswerAndExit) {
  for (const char* option : {"-h", "--help"}) {
    process.start(QUILLMARK_PROGRAM, {option});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_TRUE(process.readAllStandardOutput().startsWith("Usage: quillmark [FILE]\n")) << option;
  }
  process.start(QUILLMARK_PROGRAM, {"-platform", "offscreen", "--version"});
  ASSERT_TRUE(process.waitForFinished());
  EXPECT_EQ(process.exitCode(), 0);
  EXPECT_TRUE(process.readAllStandardOutput().startsWith("quillmark "));
}

}  // namespace
}  // namespace quillmark::test
