#pragma once

#ifdef QUILLMARK_HAS_LIBAVCODEC

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace quillmark::test {

/// A unit as libavcodec's DVD subtitle decoder reads it.
struct CodePicture {
  int X = 0;
  int Y = 0;
  int Width = 0;
  int Height = 0;
  std::vector<std::uint8_t> Codes;
  std::uint32_t EndMs = 0;  ///< after the start; 0xFFFFFFFF without an end
  bool IsForced = false;
};

class LibavcodecDecoder {
 public:
  LibavcodecDecoder() {
    const AVCodec* const codec = avcodec_find_decoder(AV_CODEC_ID_DVD_SUBTITLE);
    context_.reset(avcodec_alloc_context3(codec));
    opened_ = codec != nullptr && avcodec_open2(context_.get(), codec, nullptr) == 0;
  }

  [[nodiscard]] bool IsOpen() const { return opened_; }

  /// `unit` from its size field on. All its contrasts are made opaque before: the decoder cuts off what is
  /// transparent around a picture, which would hide the area.
  [[nodiscard]] std::optional<CodePicture> Decode(std::span<const std::uint8_t> unit,
                                                  std::size_t contrastAt) {
    std::vector<std::uint8_t> bytes(unit.begin(), unit.end());
    bytes.at(contrastAt) = 0xFF;
    bytes.at(contrastAt + 1) = 0xFF;
    const std::size_t size = bytes.size();
    bytes.resize(size + AV_INPUT_BUFFER_PADDING_SIZE, 0);
    packet_->data = bytes.data();
    packet_->size = static_cast<int>(size);
    AVSubtitle subtitle = {};
    int decoded = 0;
    std::optional<CodePicture> picture;
    if (avcodec_decode_subtitle2(context_.get(), &subtitle, &decoded, packet_.get()) >= 0 && decoded != 0 &&
        subtitle.num_rects == 1) {
      const AVSubtitleRect& rect = *subtitle.rects[0];
      picture = {.X = rect.x,
                 .Y = rect.y,
                 .Width = rect.w,
                 .Height = rect.h,
                 .Codes = {},
                 .EndMs = subtitle.end_display_time,
                 .IsForced = (rect.flags & AV_SUBTITLE_FLAG_FORCED) != 0};
      for (int y = 0; y < rect.h; ++y) {
        const std::uint8_t* const line = rect.data[0] + std::ptrdiff_t{y} * rect.linesize[0];
        picture->Codes.insert(picture->Codes.end(), line, line + rect.w);
      }
    }
    avsubtitle_free(&subtitle);
    return picture;
  }

 private:
  struct Free {
    void operator()(AVCodecContext* context) const { avcodec_free_context(&context); }
    void operator()(AVPacket* packet) const { av_packet_free(&packet); }
  };
  std::unique_ptr<AVCodecContext, Free> context_;
  std::unique_ptr<AVPacket, Free> packet_{av_packet_alloc()};
  bool opened_ = false;
};

}  // namespace quillmark::test

#endif
