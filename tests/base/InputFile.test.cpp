#include "base/InputFile.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#ifndef _WIN32
#include <sys/resource.h>
#endif

#include <gtest/gtest.h>

#include "tests/support/OrdinaryUser.h"

namespace quillmark {
namespace {

class InputFile : public testing::Test {
 protected:
  InputFile() {
    std::string name = testing::TempDir() + "input-file-XXXXXX";
    folder_ = ::mkdtemp(name.data());
  }
  ~InputFile() override { std::filesystem::remove_all(folder_); }

  [[nodiscard]] std::filesystem::path Put(const char* name, const std::string& content) const {
    std::ofstream(folder_ / name, std::ios::binary) << content;
    return folder_ / name;
  }
  [[nodiscard]] static std::string ReasonOf(const std::filesystem::path& path) {
    std::ifstream file;
    return OpenInputFile(path, file).Reason();
  }

  std::filesystem::path folder_;
};

TEST_F(InputFile, HasItsLengthAndItsBytes) {
  std::ifstream file;
  const auto length = OpenInputFile(Put("a", "SP\r\n"), file);
  ASSERT_TRUE(length);
  EXPECT_EQ(*length, 4U);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "SP\r\n");
}

TEST_F(InputFile, MissingOneIsToldAsTheSystemDoes) {
  EXPECT_EQ(ReasonOf(folder_ / "b"), "No such file or directory");
}

TEST_F(InputFile, FolderIsRefused) {
  EXPECT_EQ(ReasonOf(folder_), "it is a folder");
}

TEST_F(InputFile, DeviceIsRefused) {
  EXPECT_EQ(ReasonOf("/dev/zero"), "it is a device or a pipe, not a file");
}

TEST_F(InputFile, UnreadableOneIsToldAsTheSystemDoes) {
  if (!test::PermissionsBind()) {
    GTEST_SKIP() << test::NeedsOrdinaryUser;
  }
  const auto path = Put("a", "");
  std::filesystem::permissions(path, std::filesystem::perms::none);
  EXPECT_EQ(ReasonOf(path), "Permission denied");
}

#ifndef _WIN32
TEST_F(InputFile, OneThatTheSystemDoesNotOpenIsToldAsTheSystemDoes) {
  const auto path = Put("a", "");
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
  rlimit none = before;
  none.rlim_cur = 0;
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
  const std::string reason = ReasonOf(path);
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
  EXPECT_EQ(reason, "Too many open files");
}
#endif

}  // namespace
}  // namespace quillmark
