#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace quillmark {

/// What libavformat reads of a file.
struct LavfPackets {
  std::size_t Count = 0;
  std::size_t Bytes = 0;
};

/// Opens the file and reads the packets of all its streams; nullopt where it cannot.
[[nodiscard]] std::optional<LavfPackets> ReadWithLavf(const std::string& path);

}  // namespace quillmark
