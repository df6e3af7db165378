#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "base/Result.h"

namespace quillmark {

/// Bytes that are read from any place of them: a file's, of whatever length, or those in memory.
class ByteSource {
 public:
  ByteSource() = default;
  ByteSource(const ByteSource&) = delete;
  ByteSource& operator=(const ByteSource&) = delete;
  virtual ~ByteSource() = default;

  [[nodiscard]] virtual std::uint64_t Length() const = 0;  ///< bytes
  /// Reads what stands from `start` on, as much as there is and fits; how many bytes that were.
  [[nodiscard]] virtual Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) = 0;
};

class MemorySource : public ByteSource {
 public:
  /// The bytes must outlive it.
  explicit MemorySource(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  [[nodiscard]] std::uint64_t Length() const override { return bytes_.size(); }
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) override {
    const auto from = static_cast<std::size_t>(std::min<std::uint64_t>(start, bytes_.size()));
    const auto found = bytes_.subspan(from, std::min(bytes.size(), bytes_.size() - from));
    std::ranges::copy(found, bytes.begin());
    return found.size();
  }

 private:
  std::span<const std::uint8_t> bytes_;
};

/// The file at `path`; the reason is the system's, without the path. What is no file is refused.
[[nodiscard]] Result<std::unique_ptr<ByteSource>> OpenFileSource(const std::filesystem::path& path);

}  // namespace quillmark
