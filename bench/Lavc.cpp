#include "bench/Lavc.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

namespace quillmark {

const std::size_t LavcDecoder::Padding = AV_INPUT_BUFFER_PADDING_SIZE;

void LavcDecoder::FreeContext::operator()(AVCodecContext* context) const {
  avcodec_free_context(&context);
}

void LavcDecoder::FreePacket::operator()(AVPacket* packet) const {
  av_packet_free(&packet);
}

LavcDecoder::LavcDecoder() : packet_(av_packet_alloc()), subtitle_(std::make_unique<AVSubtitle>()) {
  const AVCodec* codec = avcodec_find_decoder(AV_CODEC_ID_DVD_SUBTITLE);
  if (codec == nullptr) {
    return;
  }
  context_.reset(avcodec_alloc_context3(codec));
  if (avcodec_open2(context_.get(), codec, nullptr) < 0) {
    context_.reset();
  }
}

LavcDecoder::~LavcDecoder() {
  avsubtitle_free(subtitle_.get());
}

bool LavcDecoder::Decode(std::span<std::uint8_t> unit, LavcPicture& picture) {
  if (!context_ || !packet_) {
    return false;
  }
  avsubtitle_free(subtitle_.get());
  packet_->data = unit.data();
  packet_->size = static_cast<int>(unit.size());
  int decoded = 0;
  if (avcodec_decode_subtitle2(context_.get(), subtitle_.get(), &decoded, packet_.get()) < 0 ||
      decoded == 0 || subtitle_->num_rects != 1) {
    return false;
  }
  const AVSubtitleRect& area = *subtitle_->rects[0];
  // Rows are as wide as the picture.
  const auto size = static_cast<std::size_t>(area.w) * static_cast<std::size_t>(area.h);
  picture = {.Codes = {area.data[0], size}, .X = area.x, .Y = area.y, .Width = area.w, .Height = area.h};
  return true;
}

}  // namespace quillmark
