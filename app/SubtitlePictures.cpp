#include "app/SubtitlePictures.h"

#include <memory>
#include <utility>

namespace quillmark {
namespace {

/// What a kept picture takes besides its pixels, about.
constexpr qsizetype BytesBesides = 256;

}  // namespace

SubtitlePictures::SubtitlePictures(const Document& document)
    : SubtitlePictures([&document, reader = std::make_shared<DrawnSubtitleReader>()](std::size_t subtitle) {
        return reader->Read(document, subtitle);
      }) {}

SubtitlePictures::SubtitlePictures(Reader reader) : reader_(std::move(reader)), kept_(MostBytes) {}

void SubtitlePictures::SetRoom(const ThumbnailRoom& room) {
  if (room != room_) {
    room_ = room;
    kept_.clear();
  }
}

QImage SubtitlePictures::Of(std::size_t subtitle) {
  if (const QImage* kept = kept_.object(subtitle)) {
    return *kept;
  }
  QImage picture = Draw(subtitle);
  kept_.insert(subtitle, std::make_unique<QImage>(picture).release(), picture.sizeInBytes() + BytesBesides);
  return picture;
}

QImage SubtitlePictures::Draw(std::size_t subtitle) {
  const auto drawn = reader_(subtitle);
  if (!drawn) {
    return {};
  }
  return drawn->Merged ? painter_.PaintMerged(*drawn->Merged, room_)
                       : painter_.Paint(drawn->Unit, drawn->Control, drawn->Colours, room_);
}

}  // namespace quillmark
