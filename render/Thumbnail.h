#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include <QImage>
#include <QRgb>
#include <QSize>

#include "palette/Colour.h"
#include "render/MergedPicture.h"
#include "sup/SpuControl.h"

namespace quillmark {

/// The plain grounds that thumbnails stand on.
inline constexpr QRgb DarkGround = 0xFF202020;
inline constexpr QRgb LightGround = 0xFFECECEC;

/// What a thumbnail is drawn for.
struct ThumbnailRoom {
  QSize Pixels;      ///< of the screen, that it may cover
  double Scale = 1;  ///< screen pixels to a logical one: frame pixels are not drawn larger

  bool operator==(const ThumbnailRoom&) const = default;
};

/// Draws subtitles small, so that they can be told apart in a list: what of the picture is visible inside the
/// frame, without the empty lines and columns around it and with at most MostEmptyLines between its lines,
/// over the ground that differs more from what is written, its outline apart. What is shrunk is averaged by
/// area; what is not has whole pixels. Memory is reused from one to the next.
class ThumbnailPainter {
 public:
  static constexpr int MostEmptyLines = 4;

  /// Opaque, with the room's scale as its device pixel ratio; null where nothing is to be seen. `unit` and
  /// `control` as DecodeFields has them; a reversed area shows nothing.
  [[nodiscard]] QImage Paint(std::span<const std::uint8_t> unit, const SpuControl& control,
                             const CodeColours& colours, const ThumbnailRoom& room);
  /// The same of a subtitle with another one laid over it.
  [[nodiscard]] QImage PaintMerged(const MergedInput& input, const ThumbnailRoom& room);

 private:
  /// The part of cells_ that may be seen. Cell value 0 is nothing; the others stand for colours.
  struct Part {
    int Stride = 0;
    int Columns = 0;
    int Lines = 0;
  };
  struct Columns {
    int First = 0;
    int Count = 0;
  };

  [[nodiscard]] QImage Draw(const Part& part, std::span<const Argb> colours, const ThumbnailRoom& room);
  /// Fills lines_; the columns of them in which anything stands.
  [[nodiscard]] Columns FindVisible(const Part& part);

  std::vector<std::uint8_t> cells_;
  std::vector<int> lines_;  // those of cells_ that are drawn, one below the other
  std::vector<std::uint8_t> columnInUse_;
  std::vector<QRgb> pixels_;
  MergedPicture merged_;
};

}  // namespace quillmark
