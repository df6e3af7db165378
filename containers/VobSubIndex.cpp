#include "containers/VobSubIndex.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <utility>

#include "base/AsciiCase.h"
#include "base/Digit.h"
#include "base/Words.h"

namespace quillmark {
namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

// An index has as many lines as the film has subtitles, of a few bytes between signs. Looking for one of
// several signs with the functions of std::string_view costs a call for each byte.

bool IsBlank(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && IsBlank(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

/// Bytes before the first end of a line.
std::size_t LineLength(std::string_view text) {
  const auto end = std::ranges::find_if(text, [](char c) { return c == '\r' || c == '\n'; });
  return static_cast<std::size_t>(end - text.begin());
}

/// What stands before `separator`, and what after it; all of it before where there is none.
std::pair<std::string_view, std::string_view> Split(std::string_view text, char separator) {
  const std::size_t at = text.find(separator);
  return at == std::string_view::npos ? std::pair(Trimmed(text), std::string_view())
                                      : std::pair(Trimmed(text.substr(0, at)), Trimmed(text.substr(at + 1)));
}

/// A number that the whole text is, without a sign.
template <typename Number>
std::optional<Number> Whole(std::string_view text, int base) {
  Number number = 0;
  const char* end = text.data() + text.size();
  if (text.empty() || text.front() == '-') {
    return std::nullopt;
  }
  const auto read = std::from_chars(text.data(), end, number, base);
  return read.ec == std::errc() && read.ptr == end ? std::optional(number) : std::nullopt;
}

/// "[-]hh:mm:ss:mmm" in milliseconds, with a point or another sign before these as well.
std::optional<std::int64_t> ReadTime(std::string_view text) {
  const bool isNegative = text.starts_with('-');
  if (isNegative || text.starts_with('+')) {
    text = Trimmed(text.substr(1));
  }
  std::array<std::int64_t, 4> parts = {};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const auto end = static_cast<std::size_t>(std::ranges::find_if_not(text, IsDigit) - text.begin());
    constexpr std::size_t MaxDigits = 6;
    const auto number = end <= MaxDigits ? Whole<std::int64_t>(text.substr(0, end), 10) : std::nullopt;
    const bool isLast = i + 1 == parts.size();
    if (!number || (isLast ? end != text.size() : end == text.size() || (i < 2 && text[end] != ':'))) {
      return std::nullopt;
    }
    parts[i] = *number;
    text.remove_prefix(isLast ? end : end + 1);
  }
  const std::int64_t time = ((parts[0] * 60 + parts[1]) * 60 + parts[2]) * 1000 + parts[3];
  return isNegative ? -time : time;
}

/// What a line says of one subtitle.
struct EntryLine {
  std::int64_t Time = 0;
  std::uint64_t Position = 0;
  std::optional<std::uint64_t> DecimalPosition = {};
};

/// Two or three digits; -1 where others stand among them.
template <std::size_t Count>
std::int64_t DigitsAt(std::string_view text, std::size_t at) {
  std::int64_t number = 0;
  bool areDigits = true;
  for (std::size_t i = at; i < at + Count; ++i) {
    areDigits = areDigits && IsDigit(text[i]);
    number = 10 * number + (text[i] - '0');
  }
  return areDigits ? number : -1;
}

/// A line as nearly all programs write it, "timestamp: 00:00:01:000, filepos: 00000a800". A long index has
/// thousands, and to read them so takes a fraction of looking for their parts. nullopt: it may be one that is
/// written otherwise.
std::optional<EntryLine> ReadUsualEntry(std::string_view line) {
  constexpr std::string_view Key = "timestamp: ";
  constexpr std::string_view PositionKey = ", filepos: ";
  constexpr std::size_t PositionKeyAt = Key.size() + std::string_view("00:00:00:000").size();
  constexpr std::size_t PositionAt = PositionKeyAt + PositionKey.size();
  constexpr std::size_t MaxDigits = 15;  // as many do not exceed 64 bits
  if (line.size() <= PositionAt || line.size() > PositionAt + MaxDigits || !line.starts_with(Key) ||
      line.substr(PositionKeyAt, PositionKey.size()) != PositionKey || line[Key.size() + 2] != ':' ||
      line[Key.size() + 5] != ':' || line[Key.size() + 8] != ':') {
    return std::nullopt;
  }
  const std::int64_t hours = DigitsAt<2>(line, Key.size());
  const std::int64_t minutes = DigitsAt<2>(line, Key.size() + 3);
  const std::int64_t seconds = DigitsAt<2>(line, Key.size() + 6);
  const std::int64_t milliseconds = DigitsAt<3>(line, Key.size() + 9);
  if (hours < 0 || minutes < 0 || seconds < 0 || milliseconds < 0) {
    return std::nullopt;
  }
  EntryLine entry{.Time = ((hours * 60 + minutes) * 60 + seconds) * 1000 + milliseconds};
  std::uint64_t decimal = 0;
  bool isDecimal = true;
  for (const char c : line.substr(PositionAt)) {
    const bool isLetter = (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    if (!isLetter && !IsDigit(c)) {
      return std::nullopt;
    }
    // The low bits of a letter count from 1.
    const auto digit = (static_cast<unsigned char>(c) & 0x0FU) + (isLetter ? 9U : 0U);
    entry.Position = entry.Position << 4U | digit;
    decimal = 10 * decimal + digit;
    isDecimal = isDecimal && !isLetter;
  }
  if (isDecimal) {
    entry.DecimalPosition = decimal;
  }
  return entry;
}

/// "rrggbb"
std::optional<Rgb> ReadColour(std::string_view text) {
  const auto number = Whole<std::uint32_t>(text, 16);
  return number ? std::optional(MakeRgb(*number >> 16U & 0xFFU, *number >> 8U & 0xFFU, *number & 0xFFU))
                : std::nullopt;
}

/// Colours between commas or blanks; how many of them the text starts with.
template <std::size_t Count>
std::size_t ReadColours(std::string_view text, std::array<Rgb, Count>& colours) {
  for (std::size_t i = 0; i < Count; ++i) {
    text.remove_prefix(std::min(text.find_first_not_of(", \t"), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(", \t"));
    const auto colour = ReadColour(word);
    if (!colour) {
      return i;
    }
    colours[i] = *colour;
    text.remove_prefix(word.size());
  }
  return Count;
}

class IndexReader {
 public:
  void Line(std::string_view line) {
    ++line_;
    line = Trimmed(line);
    if (line.empty() || line.front() == '#') {
      return;
    }
    if (const auto entry = ReadUsualEntry(line)) {
      Add(*entry);
      return;
    }
    const auto [key, value] = Split(line, ':');
    for (const auto& [name, read] : Keys) {
      if (IsSameWord(key, name)) {
        (this->*read)(value);
        return;
      }
    }
  }

  [[nodiscard]] VobSubIndex Take() {
    if (passed_ > 0) {
      index_.Notes.push_back(Words::Tr("%n line is no time and position (the first is line %1)",
                                       "%n lines are no time and position (the first is line %1)",
                                       static_cast<std::int64_t>(passed_), {std::to_string(firstPassed_)}));
    }
    return std::move(index_);
  }

 private:
  using Read = void (IndexReader::*)(std::string_view);

  void Note(std::string note) {
    constexpr std::size_t MaxNotes = 64;
    if (index_.Notes.size() < MaxNotes) {
      index_.Notes.push_back(std::move(note));
    } else if (index_.Notes.size() == MaxNotes) {
      index_.Notes.emplace_back(Words::Tr("there is more in the index that cannot be read"));
    }
  }
  [[nodiscard]] std::string ThisLine() const { return std::to_string(line_); }

  void Size(std::string_view value) {
    const auto [width, height] = Split(value, 'x');
    const auto readWidth = Whole<int>(width, 10);
    const auto readHeight = Whole<int>(height, 10);
    if (readWidth && readHeight) {
      index_.Width = *readWidth;
      index_.Height = *readHeight;
    }
  }

  void TimeOffset(std::string_view value) {
    const bool isNegative = value.starts_with('-');
    const auto plain = Whole<std::int32_t>(isNegative ? value.substr(1) : value, 10);
    if (plain) {
      index_.TimeOffset = isNegative ? -std::int64_t{*plain} : *plain;
    } else {
      index_.TimeOffset = ReadTime(value).value_or(0);
    }
  }

  void ForcedSubs(std::string_view value) { index_.ShowsForcedAlone = IsSameWord(value, "on"); }

  void Palette(std::string_view value) {
    DvdPalette palette = {};
    const std::size_t count = ReadColours(value, palette);
    if (count == 0) {
      Note(Words::Tr("line %1 has no palette that can be read", {ThisLine()}));
      return;
    }
    if (count < palette.size()) {
      Note(Words::Tr("line %1: the palette has %2 of 16 colours; the others are black",
                     {ThisLine(), std::to_string(count)}));
    }
    index_.Palette = palette;
  }

  /// "ON, tridx: 1000, colors: 000000, ffffff, 000000, 000000"
  void Custom(std::string_view value) {
    CustomColours custom{.IsOn = IsSameWord(Split(value, ',').first, "on")};
    const std::string lower = LowerAscii(value);
    constexpr std::string_view TransparentKey = "tridx:";
    constexpr std::string_view ColourKey = "colors:";
    if (const std::size_t at = lower.find(TransparentKey); at != std::string::npos) {
      const std::string_view digits = Trimmed(value.substr(at + TransparentKey.size()));
      for (std::size_t i = 0; i < std::min(digits.size(), custom.IsTransparent.size()); ++i) {
        custom.IsTransparent[i] = digits[i] == '1';
      }
    }
    if (const std::size_t at = lower.find(ColourKey); at != std::string::npos) {
      ReadColours(value.substr(at + ColourKey.size()), custom.Colours);
    }
    index_.Custom = custom;
  }

  void Preselected(std::string_view value) { index_.Preselected = Whole<std::size_t>(value, 10).value_or(0); }

  /// "en, index: 0"
  void Language(std::string_view value) {
    if (index_.Languages.size() == MaxLanguages) {
      if (!std::exchange(isFull_, true)) {
        Note(Words::Tr("line %1: more than %2 languages are not read",
                       {ThisLine(), std::to_string(MaxLanguages)}));
      }
      return;
    }
    const auto [letters, rest] = Split(value, ',');
    VobSubLanguage language;
    if (!IsSameWord(letters, "und") && letters != "--") {
      language.Language = letters;
    }
    const auto [key, number] = Split(rest, ':');
    const auto substream = Whole<unsigned>(number, 10);
    if (IsSameWord(key, "index") && substream && *substream < 32) {
      language.Substream = *substream;
    }
    index_.Languages.push_back(std::move(language));
    delay_ = 0;
  }

  void Name(std::string_view value) {
    if (!index_.Languages.empty() && !isFull_) {
      index_.Languages.back().Name = value;
    }
  }

  void Delay(std::string_view value) {
    constexpr std::int64_t MaxDelay = std::int64_t{1} << 40U;
    if (const auto delay = ReadTime(value)) {
      delay_ = std::clamp(delay_ + *delay, -MaxDelay, MaxDelay);
    } else {
      Note(Words::Tr("line %1 is no delay", {ThisLine()}));
    }
  }

  /// "00:00:01:000, filepos: 00000a800"
  void Entry(std::string_view value) {
    const auto [time, rest] = Split(value, ',');
    const auto [key, digits] = Split(rest, ':');
    const auto readTime = ReadTime(time);
    const auto position = Whole<std::uint64_t>(digits, 16);
    if (readTime && position && IsSameWord(key, "filepos")) {
      Add({.Time = *readTime, .Position = *position, .DecimalPosition = Whole<std::uint64_t>(digits, 10)});
    } else if (!isFull_ && passed_++ == 0) {
      firstPassed_ = line_;
    }
  }

  void Add(const EntryLine& entry) {
    if (isFull_) {
      return;
    }
    if (index_.Languages.empty()) {
      index_.Languages.emplace_back();
    }
    index_.Languages.back().Entries.push_back({.Time = entry.Time,
                                               .Delay = delay_,
                                               .Position = entry.Position,
                                               .DecimalPosition = entry.DecimalPosition,
                                               .Line = line_});
  }

  static constexpr std::array<std::pair<std::string_view, Read>, 10> Keys = {{
      {"timestamp", &IndexReader::Entry},
      {"delay", &IndexReader::Delay},
      {"id", &IndexReader::Language},
      {"alt", &IndexReader::Name},
      {"size", &IndexReader::Size},
      {"palette", &IndexReader::Palette},
      {"custom colors", &IndexReader::Custom},
      {"time offset", &IndexReader::TimeOffset},
      {"forced subs", &IndexReader::ForcedSubs},
      {"langidx", &IndexReader::Preselected},
  }};

  static constexpr std::size_t MaxLanguages = 256;  // a .sub has 32 substreams

  VobSubIndex index_;
  bool isFull_ = false;  // lines are those of a language too many
  std::int64_t delay_ = 0;
  std::size_t line_ = 0;
  std::size_t passed_ = 0;
  std::size_t firstPassed_ = 0;
};

std::string_view WithoutMark(std::string_view text) {
  return text.starts_with(ByteOrderMark) ? text.substr(ByteOrderMark.size()) : text;
}

}  // namespace

bool IsVobSubIndex(std::string_view text) {
  constexpr std::string_view First = "# vobsub index file";
  const std::string_view start = WithoutMark(text).substr(0, First.size());
  return IsSameWord(start, First);
}

VobSubIndex ParseVobSubIndex(std::string_view text) {
  text = WithoutMark(text);
  IndexReader reader;
  while (!text.empty()) {
    const std::size_t end = LineLength(text);
    reader.Line(text.substr(0, end));
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(text.size(), 1));
  }
  return reader.Take();
}

}  // namespace quillmark
