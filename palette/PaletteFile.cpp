#include "palette/PaletteFile.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <utility>
#include <vector>

#include "base/AsciiCase.h"
#include "base/ByteReader.h"
#include "base/FilePath.h"
#include "base/InputFile.h"
#include "base/Words.h"

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
/// As much of a line as can hold entries: 16 of seven characters each, moved on by up to 15 earlier ones.
constexpr std::size_t KeptLineLength = 128;
/// Text palettes have a few hundred bytes and no limit of their own. They are read in blocks, so that a file
/// of any length takes little memory; past 2 GiB it would only be waited for.
constexpr std::uintmax_t MaxTextLength = 0x7FFFFFFF;
constexpr std::size_t BlockLength = 65536;

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

/// Reads a text palette that arrives in parts. Lines end at CR LF or CR; a lone LF is a character like any
/// other. Of a line only its start and whether it holds a LF are kept.
class TextPaletteReader {
 public:
  explicit TextPaletteReader(EntryReader read) : entries_(read) {}

  /// False when the rest need not be read: the text is no palette whatever follows.
  bool Take(std::string_view part) {
    while (!part.empty() && !entries_.HasTooMany()) {
      if (std::exchange(afterCr_, false) && part.starts_with('\n')) {
        part.remove_prefix(1);
        continue;
      }
      const std::size_t end = part.find('\r');
      const std::string_view piece = part.substr(0, end);
      AddToLine(piece);
      part.remove_prefix(piece.size());
      if (end != std::string_view::npos) {
        part.remove_prefix(1);
        afterCr_ = true;
        EndLine();
      }
    }
    return !entries_.HasTooMany();
  }

  /// The palette, after all of the text; nullopt unless it has exactly 16 entries.
  [[nodiscard]] std::optional<PackedPalette> Finish() {
    EndLine();
    return entries_.Palette();
  }

 private:
  void AddToLine(std::string_view piece) {
    line_.append(piece.substr(0, KeptLineLength - line_.size()));
    holdsLf_ = holdsLf_ || piece.find('\n') != std::string_view::npos;
  }

  /// A line too short for an entry is skipped, so that blank lines do no harm.
  void EndLine() {
    if (line_.size() >= WholeFileLength && holdsLf_) {
      AppendWholeFile();
    } else if (line_.size() >= EntryDigits) {
      entries_.Append(line_, 0);
    }
    line_.clear();
    holdsLf_ = false;
  }

  /// Takes the 16 entries of a file with LF line ends, which arrives as one line. The count, which grows with
  /// every entry, is what steps over the LF; kept oddity: entries of earlier lines therefore move all
  /// positions on by their number.
  void AppendWholeFile() {
    for (std::size_t entry = 0; entry < EntryCount; ++entry) {
      entries_.Append(line_, entries_.Count() + EntryDigits * entry);
    }
  }

  EntryList entries_;
  std::string line_;  // invariant: at most KeptLineLength characters
  bool holdsLf_ = false;
  bool afterCr_ = false;
};

std::optional<PackedPalette> ReadTextPalette(std::string_view text, EntryReader read) {
  TextPaletteReader reader(read);
  reader.Take(text);
  return reader.Finish();
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

constexpr const char* NoIfoPalette = Words::Mark("Illegal file: no title set's IFO file with a palette");
constexpr const char* NoTextPalette = Words::Mark("Illegal file: not exactly 16 lines with a colour");

Result<PackedPalette> LoadIfoFile(std::ifstream& file, std::uintmax_t length) {
  if (length > MaxIfoLength) {
    return Failure{Words::Tr("Illegal file: an IFO file has at most 1,048,576 bytes")};
  }
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(length));
  if (!file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(length))) {
    return Failure{Words::Tr("it cannot be read")};
  }
  const auto palette = ReadIfoPalette(bytes);
  if (!palette) {
    return Failure{Words::Tr(NoIfoPalette)};
  }
  return *palette;
}

Result<PackedPalette> LoadTextFile(std::ifstream& file, std::uintmax_t length, EntryReader read) {
  if (length > MaxTextLength) {
    return Failure{Words::Tr(NoTextPalette)};
  }
  TextPaletteReader reader(read);
  std::array<char, BlockLength> block{};
  do {
    file.read(block.data(), block.size());
  } while (reader.Take({block.data(), static_cast<std::size_t>(file.gcount())}) && file);
  if (file.bad()) {
    return Failure{Words::Tr("it cannot be read")};
  }
  const auto palette = reader.Finish();
  if (!palette) {
    return Failure{Words::Tr(NoTextPalette)};
  }
  return *palette;
}

}  // namespace

std::optional<PaletteFormat> PaletteFormatOf(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  const std::string extension = LowerAscii(dot == std::string_view::npos ? "" : path.substr(dot));
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

Result<PackedPalette> LoadPaletteFile(std::string_view path) {
  const auto format = PaletteFormatOf(path);
  if (!format) {
    return Failure{Words::Tr("not the name of a palette file: it must end in .ifo, .pal or .rgb")};
  }
  std::ifstream file;
  const auto length = OpenInputFile(PathFromUtf8(path), file);
  if (!length) {
    return length.Why();
  }
  switch (*format) {
    case PaletteFormat::IfoFile:
      return LoadIfoFile(file, *length);
    case PaletteFormat::PalFile:
      return LoadTextFile(file, *length, PackInOrder);
    case PaletteFormat::RgbFile:
      break;
  }
  return LoadTextFile(file, *length, RgbFileToYCrCb);
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
