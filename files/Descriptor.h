#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "base/Result.h"

namespace quillmark {

/// Why a system call failed, as the system words it.
[[nodiscard]] Failure SystemFailure(int error);

/// An open file, closed when it goes. Nothing is buffered, so that a full disk is told of
/// by the write that fills it.
class Descriptor {
 public:
  /// `flags` and `mode` as open() has them; errno is its own after a failure.
  [[nodiscard]] static Result<Descriptor> Open(const std::string& path, int flags, unsigned mode = 0);

  Descriptor(Descriptor&& other) noexcept;
  Descriptor& operator=(Descriptor&& other) noexcept;
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor();

  [[nodiscard]] int Number() const { return number_; }
  /// Bytes written so far, those of a write that failed half-way included.
  [[nodiscard]] std::uint64_t Written() const { return written_; }

  /// Reads what stands from `start` on, as much as there is and fits; how many bytes that were.
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) const;
  /// Writes all of them; a full disk takes part of the bytes first and says why only when asked again.
  Result<void> Write(std::span<const std::uint8_t> bytes);
  /// Waits until the disk has it; done where there is nothing behind the file that could be waited for.
  Result<void> Sync();
  /// Some file systems say only now that the disk is full.
  Result<void> Close();

 private:
  explicit Descriptor(int number) : number_(number) {}

  int number_ = -1;
  std::uint64_t written_ = 0;
};

}  // namespace quillmark
