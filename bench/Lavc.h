#pragma once

#include <cstdint>
#include <memory>
#include <span>

struct AVCodecContext;
struct AVPacket;
struct AVSubtitle;

namespace quillmark {

/// What libavcodec makes of one unit: a byte per pixel, of the picture without its transparent border.
struct LavcPicture {
  std::span<const std::uint8_t> Codes;  ///< row-major; lives until the next Decode
  int X = 0;                            ///< frame pixels
  int Y = 0;
  int Width = 0;
  int Height = 0;
};

/// libavcodec's DVD subtitle decoder.
class LavcDecoder {
 public:
  LavcDecoder();
  ~LavcDecoder();
  LavcDecoder(const LavcDecoder&) = delete;
  LavcDecoder& operator=(const LavcDecoder&) = delete;

  /// Zero bytes that must stand after every unit.
  static const std::size_t Padding;

  /// False when libavcodec is missing the decoder or finds no picture. `unit` is whole, its size field first.
  [[nodiscard]] bool Decode(std::span<std::uint8_t> unit, LavcPicture& picture);

 private:
  struct FreeContext {
    void operator()(AVCodecContext* context) const;
  };
  struct FreePacket {
    void operator()(AVPacket* packet) const;
  };

  std::unique_ptr<AVCodecContext, FreeContext> context_;
  std::unique_ptr<AVPacket, FreePacket> packet_;
  std::unique_ptr<AVSubtitle> subtitle_;
};

}  // namespace quillmark
