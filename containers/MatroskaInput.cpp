#include "containers/MatroskaInput.h"

#include <algorithm>

namespace quillmark {
namespace {

/// How far apart the positions are of which the progress is told.
constexpr std::uint64_t ProgressStep = 1048576;

}  // namespace

std::size_t MatroskaInput::ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) {
  position_ = start;
  return read(bytes.data(), bytes.size());
}

std::uint32_t MatroskaInput::read(void* buffer, std::size_t size) {
  auto* const bytes = static_cast<std::uint8_t*>(buffer);
  std::size_t done = 0;
  while (done < size && position_ < length_) {
    Tell();
    if (position_ >= bufferStart_ && position_ - bufferStart_ < bufferLength_) {
      const auto from = static_cast<std::size_t>(position_ - bufferStart_);
      const std::size_t count = std::min(size - done, bufferLength_ - from);
      std::copy_n(buffer_.begin() + static_cast<std::ptrdiff_t>(from), count, bytes + done);
      done += count;
      position_ += count;
    } else if (size - done >= buffer_.size()) {
      const std::size_t count = ReadSource(position_, {bytes + done, size - done});
      done += count;
      position_ += count;
      if (count == 0) {
        break;
      }
    } else {
      bufferStart_ = position_;
      bufferLength_ = ReadSource(position_, buffer_);
      if (bufferLength_ == 0) {
        break;
      }
    }
  }
  return static_cast<std::uint32_t>(done);
}

void MatroskaInput::setFilePointer(std::int64_t offset, libebml::seek_mode mode) {
  std::int64_t base = 0;
  if (mode == libebml::seek_current) {
    base = static_cast<std::int64_t>(position_);
  } else if (mode == libebml::seek_end) {
    base = static_cast<std::int64_t>(length_);
  }
  const auto length = static_cast<std::int64_t>(length_);
  // Sizes of damaged elements lead anywhere.
  position_ =
      static_cast<std::uint64_t>(offset > length - base ? length : std::max<std::int64_t>(base + offset, 0));
}

void MatroskaInput::Tell() {
  if (progress_ && position_ >= told_ + ProgressStep) {
    told_ = position_;
    if (!progress_(position_, length_)) {
      throw ReadingEnded();
    }
  }
}

std::size_t MatroskaInput::ReadSource(std::uint64_t start, std::span<std::uint8_t> bytes) {
  const auto found = source_.ReadAt(start, bytes);
  if (!found) {
    throw SourceFailed(found.Reason());
  }
  return *found;
}

}  // namespace quillmark
