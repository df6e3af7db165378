#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

#include "containers/ByteSource.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark::test {

/// Bytes of which those from `readable` on cannot be read.
class FailingSource : public ByteSource {
 public:
  explicit FailingSource(Bytes bytes, std::uint64_t readable = 0)
      : bytes_(std::move(bytes)), source_(bytes_), readable_(readable) {}

  [[nodiscard]] std::uint64_t Length() const override { return bytes_.size(); }
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) override {
    const std::uint64_t end = std::min(start + bytes.size(), Length());
    return end > readable_ ? Result<std::size_t>(Failure{"the disk is damaged"})
                           : source_.ReadAt(start, bytes);
  }

 private:
  Bytes bytes_;
  MemorySource source_;
  std::uint64_t readable_;
};

}  // namespace quillmark::test
