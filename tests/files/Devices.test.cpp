#include <QtGlobal>

#ifdef Q_OS_LINUX

#include <cerrno>
#include <gmock/gmock.h>
#include <string>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>

#include "files/FileWriter.h"
#include "files/ReplaceFile.h"
#include "files/SystemCalls.h"
#include "tests/support/FolderTest.h"
#include "tests/support/OwnDevice.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::BytesOf;
using test::Device;
using test::IsDevice;

constexpr WriteOptions BothTails[] = {{.Tail = OldTail::Kept}, {.Tail = OldTail::Dropped}};

class Devices : public test::FolderTest {
 protected:
  Devices() : calls_(System()) {}
  ~Devices() override { System() = calls_; }

  void SetUp() override {
    FolderTest::SetUp();
    full_ = test::OwnDevice(Folder().toStdString(), Device::Full);
    null_ = test::OwnDevice(Folder().toStdString(), Device::Null);
    if (full_.empty() || null_.empty()) {
      GTEST_SKIP() << test::NeedsDevices;
    }
  }

  [[nodiscard]] QString Full() const { return QString::fromStdString(full_); }
  [[nodiscard]] QString Null() const { return QString::fromStdString(null_); }
  void ExpectDevices() const {
    EXPECT_TRUE(IsDevice(full_));
    EXPECT_TRUE(IsDevice(null_));
  }

  /// From now on a write of 300 bytes takes 250 of them, and any other none.
  static void BreakWrites() {
    System().Write = [](int file, const void* bytes, std::size_t length) -> ssize_t {
      if (length != 300) {
        errno = EIO;
        return -1;
      }
      return ::write(file, bytes, 250);
    };
  }
  static void ForbidCutting() {
    System().Truncate = [](int, off_t) {
      ADD_FAILURE() << "a device was cut";
      return 0;
    };
  }

 private:
  SystemCalls calls_;
  std::string full_;
  std::string null_;
};

TEST_F(Devices, FullOneGivesTheReason) {
  for (const WriteOptions& tail : BothTails) {
    EXPECT_EQ(ReplaceFile(Full(), BytesOf("new"), tail).Reason(), "No space left on device");
    EXPECT_EQ(ReplaceFile(Full(), Bytes(1'000'000), tail).Reason(), "No space left on device");
  }
  EXPECT_EQ(AppendToFile(Full(), BytesOf("new")).Reason(), "No space left on device");
  ExpectDevices();
}

TEST_F(Devices, IsWrittenInPlace) {
  ASSERT_TRUE(QFile::link(Null(), Path("link")));
  for (const WriteOptions& tail : BothTails) {
    EXPECT_EQ(ReplaceFile(Path("link"), BytesOf("new"), tail).Reason(), "");
    EXPECT_EQ(ReplaceFile(Null(), BytesOf("new"), tail).Reason(), "");
  }
  EXPECT_EQ(AppendToFile(Null(), BytesOf("new")).Reason(), "");
  EXPECT_TRUE(QFileInfo(Path("link")).isSymbolicLink());
  ExpectDevices();
}

TEST_F(Devices, FailureHalfWayLeavesNothingThatCouldBeDamagedOrCut) {
  BreakWrites();
  ForbidCutting();
  for (const WriteOptions& tail : BothTails) {
    EXPECT_EQ(ReplaceFile(Null(), Bytes(300), tail).Reason(), "Input/output error");
  }
  EXPECT_EQ(AppendToFile(Null(), Bytes(300)).Reason(), "Input/output error");
  ExpectDevices();
}

TEST_F(Devices, NoRoomIsReservedOnOne) {
  System().Reserve = [](int, off_t) {
    ADD_FAILURE() << "room was reserved on a device";
    return ENOSPC;
  };
  EXPECT_EQ(ReplaceFile(Null(), BytesOf("new")).Reason(), "");
}

TEST_F(Devices, WriterWritesToItAsItIs) {
  auto writer = FileWriter::Replacing(Full());
  ASSERT_TRUE(writer);
  EXPECT_EQ(writer->Write(BytesOf("new")).Reason(), "No space left on device");
  auto null = FileWriter::Replacing(Null());
  ASSERT_TRUE(null);
  EXPECT_EQ(null->Write(BytesOf("new")).Reason(), "");
  EXPECT_EQ(null->Commit().Reason(), "");
  ExpectDevices();
}

TEST_F(Devices, OneThatCannotBeOpenedGivesTheReason) {
  System().Open = [](const char*, int, unsigned) {
    errno = EBUSY;
    return -1;
  };
  EXPECT_EQ(FileWriter::Replacing(Null()).Reason(), "Device or resource busy");
  ExpectDevices();
}

TEST_F(Devices, DeletingFirstDeletesNoDevice) {
  auto writer = FileWriter::DeletingFirst(Full());
  ASSERT_TRUE(writer);
  EXPECT_EQ(writer->Write(BytesOf("new")).Reason(), "No space left on device");
  auto null = FileWriter::DeletingFirst(Null());
  ASSERT_TRUE(null);
  EXPECT_EQ(null->Write(BytesOf("new")).Reason(), "");
  EXPECT_EQ(null->Commit().Reason(), "");
  ExpectDevices();
}

}  // namespace
}  // namespace quillmark

#endif
