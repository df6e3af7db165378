#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <ebml/IOCallback.h>
#include <span>
#include <stdexcept>
#include <string>

#include "base/Progress.h"
#include "containers/ByteSource.h"

namespace quillmark {

/// The source cannot be read; the text is its reason.
struct SourceFailed : std::runtime_error {
  using std::runtime_error::runtime_error;
};
/// The progress ended the work.
struct ReadingEnded : std::runtime_error {
  ReadingEnded() : std::runtime_error("ended") {}
};

/// What the EBML library reads from: a source, through a buffer of a page, since most of what it reads are a
/// few bytes in front of much that is passed over. The library has no other way to tell of errors than
/// exceptions; ours pass through it and end at the reader.
class MatroskaInput : public libebml::IOCallback {
 public:
  MatroskaInput(ByteSource& source, const Progress& progress)
      : source_(source), progress_(progress), length_(source.Length()) {}

  [[nodiscard]] std::uint64_t Length() const { return length_; }

  /// As many bytes from `start` on as there are and fit; how many that were.
  std::size_t ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes);

  std::uint32_t read(void* buffer, std::size_t size) override;
  void setFilePointer(std::int64_t offset, libebml::seek_mode mode) override;
  std::uint64_t getFilePointer() override { return position_; }
  std::size_t write(const void* /*buffer*/, std::size_t /*size*/) override { return 0; }
  void close() override {}

 private:
  void Tell();
  std::size_t ReadSource(std::uint64_t start, std::span<std::uint8_t> bytes);

  ByteSource& source_;
  const Progress& progress_;
  std::uint64_t length_;
  std::uint64_t position_ = 0;
  std::uint64_t told_ = 0;  // the position that progress heard of last
  std::array<std::uint8_t, 4096> buffer_ = {};
  std::uint64_t bufferStart_ = 0;
  std::size_t bufferLength_ = 0;
};

}  // namespace quillmark
