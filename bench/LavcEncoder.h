#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

struct AVCodecContext;

namespace quillmark {

/// libavcodec's DVD subtitle encoder.
class LavcEncoder {
 public:
  LavcEncoder();
  ~LavcEncoder();
  LavcEncoder(const LavcEncoder&) = delete;
  LavcEncoder& operator=(const LavcEncoder&) = delete;

  /// One unit, its size field first, of width x height pixel codes with their ARGB colours; nullopt when
  /// libavcodec lacks the encoder or refuses the picture. Lives until the next call.
  [[nodiscard]] std::optional<std::span<const std::uint8_t>> Encode(
      std::span<const std::uint8_t> codes, int width, int height,
      const std::array<std::uint32_t, 4>& colours);

 private:
  struct FreeContext {
    void operator()(AVCodecContext* context) const;
  };

  std::unique_ptr<AVCodecContext, FreeContext> context_;
  std::vector<std::uint8_t> unit_;
};

}  // namespace quillmark
