#include "render/PictureBatch.h"

#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QMessageLogContext>
#include <gtest/gtest.h>

#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

void LeaveWithRemark(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {
  std::_Exit(EXIT_FAILURE);
}

/// Ends the program, with a failure where Qt says that this is not the thread in which it was first used.
[[noreturn]] void WritePicturesAndLeave(const std::filesystem::path& folder) {
  std::filesystem::create_directories(folder);
  QImage image(16, 16, QImage::Format_ARGB32);
  image.fill(Qt::white);
  PictureBatch batch;
  for (int i = 0; i < 8; ++i) {
    batch.Add(QString::fromStdString((folder / (std::to_string(i) + ".png")).string()), cBitmap(image));
  }
  batch.Flush();
  std::filesystem::remove_all(folder);
  if (batch.Failures().Count > 0) {
    std::_Exit(EXIT_FAILURE);
  }
  qInstallMessageHandler(LeaveWithRemark);
  int count = 0;
  const QCoreApplication application(count, nullptr);
  std::_Exit(EXIT_SUCCESS);
}

/// As many times as it takes for a helper to be the first one; each in a copy of the program that has not
/// used Qt yet.
[[noreturn]] void WriteInFreshPrograms(const std::filesystem::path& folder) {
  for (int i = 0; i < 20; ++i) {
    const pid_t copy = ::fork();
    if (copy == 0) {
      WritePicturesAndLeave(folder);
    }
    int status = 0;
    if (::waitpid(copy, &status, 0) != copy || status != 0) {
      std::_Exit(EXIT_FAILURE);
    }
  }
  std::_Exit(EXIT_SUCCESS);
}

// Else plugins that a helper has loaded outlive its data, which Qt reads when it takes them away at the end.
TEST(PictureBatchDeathTest, QtBelongsToTheThreadThatWritesNotToItsHelpers) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(WriteInFreshPrograms(std::filesystem::path(testing::TempDir()) / "picture-batch"),
              testing::ExitedWithCode(EXIT_SUCCESS), "");
}

class PictureBatches : public test::FolderTest {};

TEST_F(PictureBatches, WhatIsWrittenIsNotWrittenOnceMore) {
  PictureBatch batch;
  QImage image(1, 1, QImage::Format_ARGB32);
  image.fill(Qt::white);
  batch.Add(Path("none/a.png"), cBitmap(image));
  batch.Add(Path("b.png"), cBitmap(image));
  batch.Flush();
  EXPECT_EQ(batch.Failures().Count, 1);
  ASSERT_TRUE(QFile::remove(Path("b.png")));
  batch.Flush();
  EXPECT_EQ(batch.Failures().Count, 1);
  EXPECT_FALSE(QFile::exists(Path("b.png")));
}

}  // namespace
}  // namespace quillmark
