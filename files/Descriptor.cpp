#include "files/Descriptor.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include "files/SystemCalls.h"

namespace quillmark {

Failure SystemFailure(int error) {
  return {std::generic_category().message(error)};
}

Result<Descriptor> Descriptor::Open(const std::string& path, int flags, unsigned mode) {
  int number = -1;
  do {
    number = System().Open(path.c_str(), flags, mode);
  } while (number < 0 && errno == EINTR);
  if (number < 0) {
    const int error = errno;
    Failure failure = SystemFailure(error);
    errno = error;  // for callers that tell one reason from another
    return failure;
  }
  return Descriptor(number);
}

Descriptor::Descriptor(Descriptor&& other) noexcept
    : number_(std::exchange(other.number_, -1)), written_(other.written_) {}

Descriptor& Descriptor::operator=(Descriptor&& other) noexcept {
  std::swap(number_, other.number_);
  std::swap(written_, other.written_);
  return *this;
}

Descriptor::~Descriptor() {
  static_cast<void>(Close());
}

Result<std::size_t> Descriptor::ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) const {
  const std::ptrdiff_t length = quillmark::ReadAt(number_, bytes.data(), bytes.size(), start);
  if (length < 0) {
    return SystemFailure(errno);
  }
  return static_cast<std::size_t>(length);
}

Result<void> Descriptor::Write(std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const std::ptrdiff_t taken = System().Write(number_, bytes.data(), bytes.size());
    if (taken < 0 && errno == EINTR) {
      continue;
    }
    if (taken <= 0) {
      return SystemFailure(taken < 0 ? errno : ENOSPC);
    }
    written_ += static_cast<std::uint64_t>(taken);
    bytes = bytes.subspan(static_cast<std::size_t>(taken));
  }
  return {};
}

Result<void> Descriptor::Sync() {
  // EINVAL, EROFS and ENOTSUP: there is nothing behind this file that could be flushed, a device for example.
  if (System().Sync(number_) != 0 && errno != EINVAL && errno != EROFS && errno != ENOTSUP) {
    return SystemFailure(errno);
  }
  return {};
}

Result<void> Descriptor::Close() {
  if (number_ < 0) {
    return {};
  }
  // Whatever it answers, the number is no longer ours; it is closed after EINTR too.
  const int answer = System().Close(std::exchange(number_, -1));
  if (answer != 0 && errno != EINTR) {
    return SystemFailure(errno);
  }
  return {};
}

}  // namespace quillmark
