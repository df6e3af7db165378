#include "bench/LavcEncoder.h"

#include <algorithm>

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace quillmark {

void LavcEncoder::FreeContext::operator()(AVCodecContext* context) const {
  avcodec_free_context(&context);
}

LavcEncoder::LavcEncoder() : unit_(std::size_t{1} << 20U) {
  const AVCodec* codec = avcodec_find_encoder(AV_CODEC_ID_DVD_SUBTITLE);
  if (codec == nullptr) {
    return;
  }
  context_.reset(avcodec_alloc_context3(codec));
  context_->width = 720;
  context_->height = 576;
  context_->time_base = {1, 90000};
  if (avcodec_open2(context_.get(), codec, nullptr) < 0) {
    context_.reset();
  }
}

LavcEncoder::~LavcEncoder() = default;

std::optional<std::span<const std::uint8_t>> LavcEncoder::Encode(
    std::span<const std::uint8_t> codes, int width, int height, const std::array<std::uint32_t, 4>& colours) {
  if (!context_) {
    return std::nullopt;
  }
  std::array<std::uint32_t, 256> palette = {};
  std::copy(colours.begin(), colours.end(), palette.begin());
  AVSubtitleRect rect = {};
  rect.w = width;
  rect.h = height;
  rect.nb_colors = 4;
  rect.type = SUBTITLE_BITMAP;
  rect.linesize[0] = width;
  // Encoders only read, though the structure is not const.
  rect.data[0] = const_cast<std::uint8_t*>(codes.data());
  rect.data[1] = reinterpret_cast<std::uint8_t*>(palette.data());
  AVSubtitleRect* rects = &rect;
  AVSubtitle subtitle = {};
  subtitle.num_rects = 1;
  subtitle.rects = &rects;
  subtitle.end_display_time = 2000;
  const int size =
      avcodec_encode_subtitle(context_.get(), unit_.data(), static_cast<int>(unit_.size()), &subtitle);
  if (size <= 0) {
    return std::nullopt;
  }
  return std::span(unit_).first(static_cast<std::size_t>(size));
}

}  // namespace quillmark
