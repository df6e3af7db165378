#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace quillmark::test {

using Bytes = std::vector<std::uint8_t>;

inline Bytes BytesOf(const std::string& text) {
  return {text.begin(), text.end()};
}

/// Tests of files, in a folder of each test's own.
class FolderTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(folder_.isValid()); }

  [[nodiscard]] QString Folder() const { return folder_.path(); }
  [[nodiscard]] QString Path(const QString& name) const { return folder_.filePath(name); }

  /// Writes the file; its path.
  QString Put(const QString& name, const std::string& content) const {
    QFile file(Path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(QByteArray::fromStdString(content)), static_cast<qint64>(content.size()));
    return file.fileName();
  }

  [[nodiscard]] std::string Read(const QString& name) const {
    QFile file(Path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : "(cannot be read)";
  }

  /// Everything in the folder, so that a file left behind shows.
  [[nodiscard]] std::vector<std::string> Names() const {
    std::vector<std::string> names;
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QString& name : QDir(Folder()).entryList(all, QDir::Name)) {
      names.push_back(name.toStdString());
    }
    return names;
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace quillmark::test
