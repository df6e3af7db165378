#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include <QCache>
#include <QImage>

#include "app/DrawnSubtitle.h"
#include "render/Thumbnail.h"

namespace quillmark {

class Document;

/// The small pictures of a document's subtitles, in the colours that its palette gives them, with the
/// secondary subtitle over them while the document merges; or those of whatever else a reader reads by
/// numbers. Each is decoded when it is first asked for and kept until MostBytes are used; then those not
/// asked for longest go.
class SubtitlePictures {
 public:
  static constexpr qsizetype MostBytes = qsizetype{32} << 20U;
  /// Nothing of what cannot be shown. Its spans live until the next call.
  using Reader = std::function<std::optional<DrawnSubtitle>(std::size_t)>;

  explicit SubtitlePictures(const Document& document);
  explicit SubtitlePictures(Reader reader);

  /// The size that pictures have from now on; those of another size are forgotten.
  void SetRoom(const ThumbnailRoom& room);
  /// What the document says of pictures has changed: none is true any more.
  void Forget() { kept_.clear(); }

  /// Null where the subtitle cannot be shown or has nothing to see.
  [[nodiscard]] QImage Of(std::size_t subtitle);
  [[nodiscard]] bool Holds(std::size_t subtitle) const { return kept_.contains(subtitle); }

  [[nodiscard]] qsizetype Count() const { return kept_.count(); }
  [[nodiscard]] qsizetype Bytes() const { return kept_.totalCost(); }

 private:
  [[nodiscard]] QImage Draw(std::size_t subtitle);

  Reader reader_;
  ThumbnailRoom room_;
  QCache<std::size_t, QImage> kept_;
  ThumbnailPainter painter_;
};

}  // namespace quillmark
