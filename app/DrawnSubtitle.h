#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <QImage>

#include "render/MergedInputReader.h"

namespace quillmark {

class Document;

/// A subtitle as the window draws it when one goes there.
struct DrawnSubtitle {
  std::span<const std::uint8_t> Unit;
  SpuControl Control;
  CodeColours Colours{};
  std::optional<MergedInput> Merged;  ///< with a valid secondary subtitle over it, while the document merges
};

/// Reads subtitles out of a document; memory is reused from one to the next.
class DrawnSubtitleReader {
 public:
  /// Subtitle `index`, from 0, of the primary stream; nullopt where it cannot be shown. Its spans live until
  /// the next call.
  [[nodiscard]] std::optional<DrawnSubtitle> Read(const Document& document, std::size_t index);
  /// What a packet of the document's split merge shows; likewise.
  [[nodiscard]] std::optional<DrawnSubtitle> ReadUnit(const Document& document, const DisplayInterval& unit);

 private:
  std::optional<MergedInputReader> merged_;
  std::vector<std::uint8_t> unit_;
  std::vector<std::uint8_t> secondaryUnit_;
};

/// The subtitle's picture without what is behind it: its area or, where another one lies over it, the frame.
/// Null where it cannot be shown or its area is reversed.
[[nodiscard]] QImage PictureOf(const Document& document, std::size_t index);

}  // namespace quillmark
