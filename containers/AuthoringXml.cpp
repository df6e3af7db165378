#include "containers/AuthoringXml.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include <QByteArray>
#include <QColor>
#include <QString>
#include <QXmlStreamReader>

#include "base/Decimal.h"
#include "base/Digit.h"
#include "base/Words.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// Players' clocks start again here.
constexpr std::int64_t EndOfTime = std::int64_t{1} << 33U;
/// What is left between two subtitles, in ticks.
constexpr std::int64_t Gap = 90;
/// Areas have 12 bits for either end.
constexpr std::int64_t MaxOffset = 4095;
/// In bytes, of a tag: many times more than the path of a picture. The parser compares each attribute of a
/// tag with all others.
constexpr std::size_t MaxTag = 65536;

/// Where the first element starts; npos without one.
std::size_t FindFirstElement(std::string_view text) {
  std::size_t at = 0;
  while ((at = text.find('<', at)) != std::string_view::npos) {
    const std::string_view rest = text.substr(at);
    if (rest.starts_with("<!--")) {
      at = text.find("-->", at);
    } else if (!rest.starts_with("<?") && !rest.starts_with("<!")) {
      return at;
    } else {
      ++at;
    }
    if (at == std::string_view::npos) {
      break;
    }
  }
  return std::string_view::npos;
}

/// What stands between tags and may hold any of their characters.
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> FreeParts = {
    {{"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}}};

/// Behind the tag, or the free part, that starts at `at`, or the end of a text that is cut in it; npos for a
/// tag of more than MaxTag bytes.
std::size_t EndOfTag(std::string_view text, std::size_t at) {
  for (const auto& [start, end] : FreeParts) {
    if (text.substr(at).starts_with(start)) {
      const std::size_t found = text.find(end, at + start.size());
      return found == std::string_view::npos ? text.size() : found + end.size();
    }
  }
  char quote = 0;
  for (const std::size_t last = std::min(text.size(), at + MaxTag); at < last; ++at) {
    const char c = text[at];
    if (quote != 0) {
      quote = c == quote ? '\0' : quote;
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '>' || c == '[') {  // a document type has declarations of its own
      return at + 1;
    }
  }
  return at == text.size() ? at : std::string_view::npos;
}

/// Where the first tag starts that is longer than any of a list; npos without one.
std::size_t FindLongTag(std::string_view text) {
  for (std::size_t at = 0; (at = text.find('<', at)) != std::string_view::npos;) {
    const std::size_t end = EndOfTag(text, at);
    if (end == std::string_view::npos) {
      return at;
    }
    at = end;
  }
  return std::string_view::npos;
}

bool StartsElement(std::string_view text, std::string_view name) {
  return text.size() > name.size() + 1 && text.substr(1).starts_with(name) &&
         std::isalnum(static_cast<unsigned char>(text[name.size() + 1])) == 0;
}

bool IsOneOf(QStringView text, std::initializer_list<const char*> words) {
  return std::ranges::any_of(
      words, [&](const char* word) { return text.compare(QLatin1String(word), Qt::CaseInsensitive) == 0; });
}

/// Reads the elements of one list.
class ListReader {
 public:
  /// `lines`: how many stand before what `xml` is given.
  ListReader(QXmlStreamReader& xml, std::int64_t lines) : xml_(xml), linesBefore_(lines) {}

  Result<std::vector<AuthoringSpu>> Read() {
    while (!xml_.atEnd() && reason_.empty()) {
      const auto token = xml_.readNext();
      if (token == QXmlStreamReader::StartElement) {
        Begin();
      } else if (token == QXmlStreamReader::EndElement) {
        End();
      }
    }
    if (reason_.empty() && xml_.hasError()) {
      Fail(xml_.errorString().toStdString());
    }
    return reason_.empty() ? Result<std::vector<AuthoringSpu>>(std::move(spus_)) : Failure{reason_};
  }

 private:
  void Fail(const std::string& reason) {
    if (reason_.empty()) {
      reason_ = Words::Tr("line %1", {std::to_string(Line())}) + ": " + reason;
    }
  }
  [[nodiscard]] std::int64_t Line() const { return xml_.lineNumber() + linesBefore_; }

  void Begin() {
    const QStringView name = xml_.name();
    if (name == QLatin1String("subpictures")) {
      CheckAttributes({"format"});
    } else if (name == QLatin1String("stream")) {
      CheckAttributes({});
      if (++streams_ > 1) {
        Fail(Words::Tr("a second stream, of which a list has one"));
      }
    } else if (name == QLatin1String("spu")) {
      BeginSpu();
    } else if (inSpu_ && (name == QLatin1String("button") || name == QLatin1String("action"))) {
      spus_.back().HasButtons = true;
    } else if (name == QLatin1String("textsub")) {
      Fail(Words::Tr("its subtitles are text, not pictures"));
    } else if (name == QLatin1String("dvdauthor")) {
      Fail(Words::Tr("it describes a disc; its subtitles stand in another list"));
    } else {
      Fail(Words::Tr("unknown element \"%1\"", {name.toString().toStdString()}));
    }
  }

  void End() {
    if (xml_.name() == QLatin1String("spu")) {
      inSpu_ = false;
    }
  }

  void CheckAttributes(std::initializer_list<const char*> names) {
    for (const QXmlStreamAttribute& attribute : xml_.attributes()) {
      const bool isKnown = std::ranges::any_of(
          names, [&](const char* name) { return attribute.name() == QLatin1String(name); });
      if (!isKnown) {
        Fail(Words::Tr("unknown attribute \"%1\"", {attribute.name().toString().toStdString()}));
      }
    }
  }

  void BeginSpu() {
    CheckAttributes({"start", "end", "image", "highlight", "select", "xoffset", "yoffset", "transparent",
                     "force", "autooutline", "outlinewidth", "autoorder"});
    if (inSpu_) {
      Fail(Words::Tr("an spu in another"));
    }
    inSpu_ = true;
    AuthoringSpu spu;
    spu.Line = Line();
    spu.Start = Time("start");
    spu.End = Time("end");
    spu.Image = Value("image").toString().toStdString();
    spu.X = Offset("xoffset");
    spu.Y = Offset("yoffset");
    spu.IsForced = Flag("force");
    spu.Transparent = Colour("transparent");
    spu.HasButtons = xml_.attributes().hasAttribute(QLatin1String("highlight")) ||
                     xml_.attributes().hasAttribute(QLatin1String("select"));
    spus_.push_back(std::move(spu));
  }

  [[nodiscard]] QStringView Value(const char* name) const {
    // The attributes live as long as the reader stands here.
    return xml_.attributes().value(QLatin1String(name));
  }
  /// `text` has the attribute and its value in place of %1 and %2.
  void FailValue(const char* text, const char* name, QStringView value) {
    Fail(Words::Tr(text, {name, value.toString().toStdString()}));
  }

  std::int64_t Time(const char* name) {
    const QStringView value = Value(name);
    const auto ticks = ParseAuthoringTime(value.toString().toStdString());
    if (!ticks) {
      FailValue(Words::Mark("%1 \"%2\" is no time of up to 26 hours"), name, value);
    }
    return ticks.value_or(0);
  }

  int Offset(const char* name) {
    const QStringView value = Value(name);
    const auto offset = value.isNull() ? 0 : ParseDecimal(value.trimmed().toString().toStdString());
    if (!offset || *offset < 0 || *offset > MaxOffset) {
      FailValue(Words::Mark("%1 \"%2\" is no number from 0 to 4095"), name, value);
      return 0;
    }
    return static_cast<int>(*offset);
  }

  bool Flag(const char* name) {
    const QStringView value = Value(name);
    const bool isSet = IsOneOf(value, {"yes", "on", "1"});
    if (!value.isNull() && !isSet && !IsOneOf(value, {"no", "off", "0"})) {
      FailValue(Words::Mark("%1 \"%2\" is no yes or no"), name, value);
    }
    return isSet;
  }

  /// Six hexadecimal digits with or without #, or a colour's name.
  std::optional<Rgb> Colour(const char* name) {
    const QStringView value = Value(name);
    if (value.isNull()) {
      return std::nullopt;
    }
    const QString text = value.trimmed().toString();
    QColor colour(text);
    if (!colour.isValid()) {
      colour = QColor(QLatin1Char('#') + text);
    }
    if (!colour.isValid()) {
      FailValue(Words::Mark("%1 \"%2\" is no colour"), name, value);
      return std::nullopt;
    }
    return MakeRgb(static_cast<unsigned>(colour.red()), static_cast<unsigned>(colour.green()),
                   static_cast<unsigned>(colour.blue()));
  }

  QXmlStreamReader& xml_;
  std::int64_t linesBefore_;
  std::vector<AuthoringSpu> spus_;
  std::string reason_;
  int streams_ = 0;
  bool inSpu_ = false;
};

}  // namespace

std::optional<std::int64_t> ParseAuthoringTime(std::string_view text) {
  constexpr std::int64_t MaxSeconds = EndOfTime / TicksPerSecond;
  std::int64_t before = 0;  // what the colons have carried over
  std::int64_t number = 0;
  std::int64_t fraction = 0;
  std::int64_t unit = 0;  // of the next digit after the point, in ticks; 0 before the point
  bool inFraction = false;
  for (const char c : text) {
    if (IsDigit(c)) {
      if (inFraction) {
        fraction += (c - '0') * unit;
        unit = unit == 9 ? 0 : unit / 10;
      } else {
        number = number * 10 + (c - '0');
      }
    } else if (c == ':' && !inFraction) {
      before = (before + number) * 60;
      number = 0;
    } else if (c == '.' || c == ',' || c == ':') {
      if (inFraction) {
        return std::nullopt;
      }
      inFraction = true;
      unit = TicksPerSecond / 10;
    }
    if (before + number > MaxSeconds) {
      return std::nullopt;
    }
  }
  return (before + number) * TicksPerSecond + fraction;
}

bool StartsLikeAuthoringList(std::string_view head) {
  const std::size_t first = FindFirstElement(head);
  return first != std::string_view::npos &&
         (StartsElement(head.substr(first), "subpictures") || StartsElement(head.substr(first), "spu"));
}

Result<std::vector<AuthoringSpu>> ParseAuthoringXml(std::string_view text) {
  if (const std::size_t tag = FindLongTag(text); tag != std::string_view::npos) {
    const auto line = std::ranges::count(text.substr(0, tag), '\n') + 1;
    return Failure{Words::Tr("line %1", {std::to_string(line)}) + ": " +
                   Words::Tr("an element has more than %1 bytes", {std::to_string(MaxTag)})};
  }
  // Lines alone are no document: XML has one root.
  const std::size_t first = FindFirstElement(text);
  const bool isLines = first != std::string_view::npos && StartsElement(text.substr(first), "spu");
  const std::string_view read = isLines ? text.substr(first) : text;
  QXmlStreamReader xml;
  if (isLines) {
    xml.addData(QByteArray("<stream>"));
  }
  xml.addData(QByteArray(read.data(), static_cast<qsizetype>(read.size())));
  if (isLines) {
    xml.addData(QByteArray("</stream>"));
  }
  const auto linesBefore = std::ranges::count(text.substr(0, text.size() - read.size()), '\n');
  return ListReader(xml, linesBefore).Read();
}

std::vector<AuthoringTime> ResolveTimes(const std::vector<AuthoringSpu>& spus,
                                        std::vector<std::string>& notes) {
  std::vector<AuthoringTime> times;
  const auto drop = [&](std::size_t spu, const char* why) {
    notes.push_back(Words::Tr("line %1 is left out: %2", {std::to_string(spus[spu].Line), Words::Tr(why)}));
  };
  for (std::size_t i = 0; i < spus.size(); ++i) {
    const AuthoringSpu& spu = spus[i];
    if (spu.End != 0 && spu.End <= spu.Start) {
      drop(i, Words::Mark("it ends before it starts"));
      continue;
    }
    if (!times.empty()) {
      AuthoringTime& last = times.back();
      last.End = std::min(last.End.value_or(spu.Start - Gap), spu.Start - Gap);
      if (*last.End <= last.Start) {
        drop(last.Spu, Words::Mark("the next one starts before it, or with it"));
        times.pop_back();
      }
    }
    times.push_back(
        {.Spu = i, .Start = spu.Start, .End = spu.End != 0 ? std::optional(spu.End) : std::nullopt});
  }
  return times;
}

}  // namespace quillmark
