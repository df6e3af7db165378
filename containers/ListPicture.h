#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

#include "base/Result.h"
#include "containers/UnitColour.h"

namespace quillmark {

/// A picture of an authoring list as far as it is visible, in at most four colours.
struct ListPicture {
  int Left = 0;  ///< columns that were cut off
  int Top = 0;   ///< lines that were cut off
  int Width = 0;
  int Height = 0;
  std::vector<std::uint8_t> Cells;  ///< indexes of Colours, row-major
  std::vector<UnitColour> Colours;  ///< that differ in their looks, unless HasCodes
  /// The picture's own table is that of the pixel codes: four colours, in use or not.
  bool HasCodes = false;
  /// Where colours were taken together, the largest ColourError of a pixel.
  std::optional<int> Error;
};

/// Reads a PNG file of at most 720x576 pixels. Alpha has 4 bits, the upper ones; `transparent` is a colour
/// that is transparent where the picture has no alpha.
///
/// What is invisible at the borders is cut off, left and above by an even number of columns and lines. The
/// size is made even with a transparent column or line, unless four colours are visible. A picture without
/// anything visible stays whole.
///
/// With `reduce`, more than four colours are taken together; without, they are a Failure, as is everything
/// that is no such picture. The reason does not name the file.
[[nodiscard]] Result<ListPicture> ReadListPicture(const std::filesystem::path& path,
                                                  const std::optional<Rgb>& transparent, bool reduce);

}  // namespace quillmark
