#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/Result.h"
#include "palette/Colour.h"

namespace quillmark {

/// Largest IFO file that is read, in bytes.
inline constexpr std::uintmax_t MaxIfoLength = 1048576;

enum class PaletteFormat { IfoFile, PalFile, RgbFile };

/// The format that a path's extension (from its last dot on, in any case) names; nullopt for any other.
[[nodiscard]] std::optional<PaletteFormat> PaletteFormatOf(std::string_view path);

/// The palette of the first program chain of a title set's IFO file; nullopt when the signature
/// "DVDVIDEO-VTS" is missing, the file is too long, or an offset in it leads outside.
[[nodiscard]] std::optional<PackedPalette> ReadIfoPalette(std::span<const std::uint8_t> file);
/// Text palettes: one entry a line, its first six characters being three hexadecimal pairs (Y, Cr, Cb in a
/// PAL file, red, green, blue in an RGB file); nullopt unless exactly 16 entries were found.
[[nodiscard]] std::optional<PackedPalette> ReadPalPalette(std::string_view text);
[[nodiscard]] std::optional<PackedPalette> ReadRgbPalette(std::string_view text);

/// Reads the palette file at `path` (UTF-8), whose extension names its format.
[[nodiscard]] Result<PackedPalette> LoadPaletteFile(std::string_view path);

/// The text of a PAL file: 16 lines of six hexadecimal digits (Y Cr Cb), CR LF.
[[nodiscard]] std::string PalText(const DvdPalette& palette);
/// The text of an RGB file: 16 lines "        Color N=R, G, B", CR LF, and an empty line.
/// Kept oddity: ReadRgbPalette does not read it back; each of its lines starts with blanks.
[[nodiscard]] std::string RgbText(const DvdPalette& palette);
/// The text for a file saved as `path`. Kept oddity: only a name that ends in "RGB", in upper case, gets the
/// RGB text.
[[nodiscard]] std::string PaletteTextFor(std::string_view path, const DvdPalette& palette);

[[nodiscard]] DvdPalette ToRgb(const PackedPalette& packed);

}  // namespace quillmark
