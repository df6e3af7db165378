#include "bench/Lavf.h"

extern "C" {
#include <libavformat/avformat.h>
}

namespace quillmark {

std::optional<LavfPackets> ReadWithLavf(const std::string& path) {
  AVFormatContext* context = nullptr;
  if (avformat_open_input(&context, path.c_str(), nullptr, nullptr) < 0) {
    return std::nullopt;
  }
  AVPacket* packet = av_packet_alloc();
  LavfPackets read;
  while (av_read_frame(context, packet) >= 0) {
    ++read.Count;
    read.Bytes += static_cast<std::size_t>(packet->size);
    av_packet_unref(packet);
  }
  av_packet_free(&packet);
  avformat_close_input(&context);
  return read;
}

}  // namespace quillmark
