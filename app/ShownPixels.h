#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <QPoint>
#include <QRect>
#include <QString>

#include "app/Document.h"
#include "sup/SpuControl.h"

namespace quillmark {

class PlayedSubtitle;
struct DisplayState;

/// What a pixel of a subtitle is.
struct PixelFacts {
  bool IsSecond = false;            ///< of the second stream's subtitle
  std::optional<std::size_t> Code;  ///< none where no run reached the pixel
  int Colour = 0;                   ///< palette entry
  int Contrast = 0;                 ///< 0 invisible, 15 opaque

  bool operator==(const PixelFacts&) const = default;
};

/// The subtitles that stand on the display, as they were drawn, to be asked about their pixels. They are
/// decoded when something is asked, not when they are shown.
class ShownPixels {
 public:
  /// The subtitle is the only one now; `unit` is whole.
  void Show(std::span<const std::uint8_t> unit, const SpuControl& control, const CodeChoice& choice);
  /// Another stream's over it and `moved` lines lower; each of its codes is shown as the one in `codes`.
  void ShowOver(std::span<const std::uint8_t> unit, const SpuControl& control, int moved,
                const CodeMap& codes = SameCodes);
  /// In their place one as a player shows it from now on; null: nothing of it.
  void ShowPlayed(std::shared_ptr<PlayedSubtitle> played, const DisplayState* state);

  /// The uppermost subtitle that has the frame pixel; of two the one that is seen there. None outside of
  /// their areas.
  [[nodiscard]] std::optional<PixelFacts> At(QPoint pixel);
  /// In words, with the place: "102, 400: code 1 (pattern), entry 1, opacity F".
  [[nodiscard]] QString TextAt(QPoint pixel);
  /// Areas that are not empty, in frame pixels.
  [[nodiscard]] std::vector<QRect> Areas() const;

 private:
  struct Layer {
    std::vector<std::uint8_t> Unit;
    SpuControl Control;
    QRect Area;
    CodeMap ShownAs = SameCodes;
    bool IsDecoded = false;
    std::vector<std::uint8_t> Codes;  ///< of the area, row by row: code + 1, or 0 where no run reached
  };

  void Set(std::size_t layer, std::span<const std::uint8_t> unit, const SpuControl& control, int moved);
  [[nodiscard]] std::optional<PixelFacts> At(Layer& layer, QPoint pixel) const;
  [[nodiscard]] std::optional<PixelFacts> PlayedAt(QPoint pixel) const;
  [[nodiscard]] QRect PlayedArea() const;

  std::vector<Layer> layers_ = std::vector<Layer>(2);  // the memory of both is kept
  std::size_t count_ = 0;
  CodeChoice choice_;
  std::shared_ptr<PlayedSubtitle> played_;  // in place of the layers
  const DisplayState* state_ = nullptr;     // of played_
};

}  // namespace quillmark
