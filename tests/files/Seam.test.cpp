// Whatever is written goes through this folder's system calls, so that a test can have any of them fail.

#include <array>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

namespace fs = std::filesystem;

/// What writes on its own. QBuffer, which writes to memory, has a mode of its own name.
constexpr std::array Writers = {"QSaveFile",
                                "QTemporaryFile",
                                "ofstream",
                                "std::fstream",
                                "fopen",
                                "::open(",
                                "::write(",
                                "::rename(",
                                "::link(",
                                "::unlink(",
                                "::mkdir(",
                                "mkpath(",
                                "QDir().mkdir",
                                "create_director",
                                "create_hard_link",
                                "create_symlink",
                                "fs::remove",
                                "filesystem::remove",
                                "fs::rename",
                                "filesystem::rename",
                                "fs::copy",
                                "copy_file",
                                "QFile::remove",
                                "QFile::rename",
                                "QFile::copy",
                                "setPermissions(",
                                "resize_file",
                                "::ftruncate(",
                                "removeRecursively",
                                "QIODevice::WriteOnly",
                                "QIODevice::Append",
                                "QIODevice::ReadWrite",
                                "QFile::WriteOnly",
                                "QFile::ReadWrite",
                                "QFile::Append"};

TEST(Seam, NothingIsWrittenAroundIt) {
  const fs::path root = fs::path(QUILLMARK_TEST_DATA).parent_path().parent_path();
  int sources = 0;
  for (const char* folder :
       {"base", "palette", "sup", "recipe", "imaging", "files", "containers", "render", "app", "cli"}) {
    for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
      const std::string name = entry.path().filename().string();
      const std::string ending = entry.path().extension().string();
      if ((ending != ".cpp" && ending != ".h") || name.starts_with("SystemCalls")) {
        continue;
      }
      ++sources;
      std::ifstream file(entry.path());
      for (std::string line; std::getline(file, line);) {
        for (const char* writer : Writers) {
          EXPECT_EQ(line.find(writer), std::string::npos) << entry.path() << ": " << line;
        }
      }
    }
  }
  EXPECT_GT(sources, 100);
}

}  // namespace
}  // namespace quillmark
