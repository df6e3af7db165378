#include "palette/PaletteFile.h"

#include <algorithm>
#include <fstream>
#include <system_error>

#include "base/ByteReader.h"
#include "base/FilePath.h"

namespace quillmark {
namespace {

constexpr std::string_view IfoSignature = "DVDVIDEO-VTS";
constexpr std::uint64_t ChainTableSectorAt = 205;  // the low three bytes of a 32-bit field
constexpr std::uint64_t SectorSize = 2048;
constexpr std::uint64_t FirstChainOffsetAt = 13;  // in the table; again the low three bytes
constexpr std::uint64_t PaletteAt = 164;          // in the program chain

constexpr std::size_t EntryCount = 16;
constexpr std::size_t EntryDigits = 6;
/// 16 entries of six digits, each with its LF.
constexpr std::size_t WholeFileLength = 112;
/// Text palettes have a few hundred bytes; a file past this limit is none, and is not read.
constexpr std::uintmax_t MaxTextLength = 1048576;

std::string Lowered(std::string_view text) {
  std::string lowered(text);
  std::ranges::transform(lowered, lowered.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return lowered;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') {
    return c - '0';
  }
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

/// The two characters at `position` as a number that ends at the first one that is no hexadecimal digit.
unsigned HexPair(std::string_view line, std::size_t position) {
  unsigned value = 0;
  for (std::size_t i = position; i < position + 2 && i < line.size(); ++i) {
    const int digit = HexDigit(line[i]);
    if (digit < 0) {
      break;
    }
    value = value * 16 + static_cast<unsigned>(digit);
  }
  return value;
}

/// Takes the next line off `text`. Lines end at CR LF or CR; a lone LF is a character like any other.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\r');
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(line.size());
  for (const char part : {'\r', '\n'}) {
    if (text.starts_with(part)) {
      text.remove_prefix(1);
    }
  }
  return line;
}

using EntryReader = YCrCb (*)(unsigned first, unsigned second, unsigned third);

YCrCb PackInOrder(unsigned first, unsigned second, unsigned third) {
  return third << 16U | second << 8U | first;
}

/// The entries found so far. More than 16 are counted, not kept: they only make the file no palette.
class EntryList {
 public:
  explicit EntryList(EntryReader read) : read_(read) {}

  [[nodiscard]] std::size_t Count() const { return count_; }
  /// Reading stops here: the file is no palette whatever follows.
  [[nodiscard]] bool HasTooMany() const { return count_ > EntryCount; }

  /// Takes the entry whose six digits stand at `position`.
  void Append(std::string_view line, std::size_t position) {
    const YCrCb entry =
        read_(HexPair(line, position), HexPair(line, position + 2), HexPair(line, position + 4));
    if (count_ < EntryCount) {
      entries_[count_] = entry;
    }
    ++count_;
  }

  [[nodiscard]] std::optional<PackedPalette> Palette() const {
    return count_ == EntryCount ? std::optional(entries_) : std::nullopt;
  }

 private:
  EntryReader read_;
  PackedPalette entries_{};
  std::size_t count_ = 0;
};

/// A file with LF line ends arrives as one line.
bool HoldsWholeFile(std::string_view line) {
  return line.size() >= WholeFileLength && line.find('\n') != std::string_view::npos;
}

/// Takes the 16 entries of a file with LF line ends. The count, which grows with every entry, is what steps
/// over the LF; kept oddity: entries of earlier lines therefore move all positions on by their number.
void AppendWholeFile(std::string_view line, EntryList& entries) {
  for (std::size_t entry = 0; entry < EntryCount; ++entry) {
    entries.Append(line, entries.Count() + EntryDigits * entry);
  }
}

/// A line too short for an entry is skipped, so that blank lines do no harm.
void AppendLine(std::string_view line, EntryList& entries) {
  if (HoldsWholeFile(line)) {
    AppendWholeFile(line, entries);
  } else if (line.size() >= EntryDigits) {
    entries.Append(line, 0);
  }
}

std::optional<PackedPalette> ReadTextPalette(std::string_view text, EntryReader read) {
  EntryList entries(read);
  while (!text.empty() && !entries.HasTooMany()) {
    AppendLine(TakeLine(text), entries);
  }
  return entries.Palette();
}

/// Moves to a position that the file itself gave; false when that is outside.
bool SeekTo(ByteReader& reader, std::uint64_t position) {
  return position <= MaxIfoLength && reader.Seek(static_cast<std::size_t>(position));
}

/// The three bytes at `position`, high byte first.
std::optional<std::uint64_t> Number24At(ByteReader& reader, std::uint64_t position) {
  return SeekTo(reader, position) ? reader.U24be() : std::nullopt;
}

/// Where the first program chain's palette stands. The two offsets on the way add up to at most 33 GiB.
std::optional<std::uint64_t> PalettePosition(ByteReader& reader) {
  const auto sector = Number24At(reader, ChainTableSectorAt);
  if (!sector) {
    return std::nullopt;
  }
  const std::uint64_t table = *sector * SectorSize;
  const auto chain = Number24At(reader, table + FirstChainOffsetAt);
  return chain ? std::optional(table + *chain + PaletteAt) : std::nullopt;
}

/// The file's bytes; nullopt when it cannot be read or has more than `limit`.
std::optional<std::string> ReadFile(const std::filesystem::path& path, std::uintmax_t limit) {
  std::error_code error;
  const std::uintmax_t length =
      std::filesystem::is_regular_file(path, error) ? std::filesystem::file_size(path, error) : limit + 1;
  if (error || length > limit) {
    return std::nullopt;
  }
  std::ifstream file(path, std::ios::binary);
  std::string bytes(static_cast<std::size_t>(length), '\0');
  if (!file.read(bytes.data(), static_cast<std::streamsize>(length))) {
    return std::nullopt;
  }
  return bytes;
}

}  // namespace

std::optional<PaletteFormat> PaletteFormatOf(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  const std::string extension = Lowered(dot == std::string_view::npos ? "" : path.substr(dot));
  if (extension == ".ifo") {
    return PaletteFormat::IfoFile;
  }
  if (extension == ".pal") {
    return PaletteFormat::PalFile;
  }
  if (extension == ".rgb") {
    return PaletteFormat::RgbFile;
  }
  return std::nullopt;
}

std::optional<PackedPalette> ReadIfoPalette(std::span<const std::uint8_t> file) {
  if (file.size() > MaxIfoLength) {
    return std::nullopt;
  }
  ByteReader reader(file);
  const auto signature = reader.Take(IfoSignature.size());
  if (!signature || !std::ranges::equal(*signature, IfoSignature)) {
    return std::nullopt;
  }
  const auto position = PalettePosition(reader);
  if (!position || !SeekTo(reader, *position)) {
    return std::nullopt;
  }
  PackedPalette palette{};
  for (YCrCb& entry : palette) {
    const auto bytes = reader.Take(4);  // 0, Y, Cr, Cb
    if (!bytes) {
      return std::nullopt;
    }
    entry = PackInOrder((*bytes)[1], (*bytes)[2], (*bytes)[3]);
  }
  return palette;
}

std::optional<PackedPalette> ReadPalPalette(std::string_view text) {
  return ReadTextPalette(text, PackInOrder);
}

std::optional<PackedPalette> ReadRgbPalette(std::string_view text) {
  return ReadTextPalette(text, RgbFileToYCrCb);
}

std::optional<PackedPalette> LoadPaletteFile(std::string_view path) {
  const auto format = PaletteFormatOf(path);
  if (!format) {
    return std::nullopt;
  }
  const auto bytes =
      ReadFile(PathFromUtf8(path), format == PaletteFormat::IfoFile ? MaxIfoLength : MaxTextLength);
  if (!bytes) {
    return std::nullopt;
  }
  switch (*format) {
    case PaletteFormat::IfoFile:
      return ReadIfoPalette(std::span(reinterpret_cast<const std::uint8_t*>(bytes->data()), bytes->size()));
    case PaletteFormat::PalFile:
      return ReadPalPalette(*bytes);
    case PaletteFormat::RgbFile:
      return ReadRgbPalette(*bytes);
  }
  return std::nullopt;
}

std::string PalText(const DvdPalette& palette) {
  std::string text;
  for (const Rgb colour : palette) {
    text += PackedToHexText(RgbToYCrCb(colour)) + "\r\n";
  }
  return text;
}

std::string RgbText(const DvdPalette& palette) {
  std::string text;
  for (std::size_t entry = 0; entry < palette.size(); ++entry) {
    text += "        Color " + std::to_string(entry) + "=" + RgbToDecimalText(palette[entry]) + "\r\n";
  }
  return text + "\r\n";
}

std::string PaletteTextFor(std::string_view path, const DvdPalette& palette) {
  return path.ends_with("RGB") ? RgbText(palette) : PalText(palette);
}

DvdPalette ToRgb(const PackedPalette& packed) {
  DvdPalette palette{};
  std::ranges::transform(packed, palette.begin(), YCrCbToRgb);
  return palette;
}

}  // namespace quillmark
