#include "containers/MatroskaTracks.h"

#include <algorithm>
#include <ebml/EbmlMaster.h>
#include <functional>
#include <matroska/KaxContentEncoding.h>
#include <matroska/KaxSemantic.h>
#include <matroska/KaxTracks.h>
#include <optional>
#include <utility>
#include <zlib.h>

#include "base/Words.h"

namespace quillmark {
namespace {

using libebml::EbmlElement;
using libebml::EbmlMaster;

constexpr std::uint64_t SubtitleType = 0x11;
/// Each is undone for each block.
constexpr std::size_t MostEncodings = 8;

/// The first child of the type. An element of its ID that is damaged may be of another type, so that the ID
/// alone does not do.
template <typename Type>
const Type* Child(const EbmlMaster& parent) {
  for (const EbmlElement* const element : parent.GetElementList()) {
    if (const auto* const child = dynamic_cast<const Type*>(element)) {
      return child;
    }
  }
  return nullptr;
}

template <typename Type>
std::uint64_t NumberOf(const EbmlMaster& parent, std::uint64_t otherwise) {
  const auto* const child = Child<Type>(parent);
  return child != nullptr ? child->GetValue() : otherwise;
}

/// A text may be filled up with zeros.
template <typename Type>
std::optional<std::string> TextOf(const EbmlMaster& parent) {
  const auto* const child = Child<Type>(parent);
  if (child == nullptr) {
    return std::nullopt;
  }
  const std::string text = child->GetValue();
  return text.substr(0, text.find('\0'));
}

template <typename Type>
std::vector<std::uint8_t> BytesOf(const EbmlMaster& parent) {
  const auto* const child = Child<Type>(parent);
  if (child == nullptr || child->GetBuffer() == nullptr) {
    return {};
  }
  return {child->GetBuffer(), child->GetBuffer() + child->GetSize()};
}

/// The tag of the newer kind wins; where there is none, the older one means English where it is left out.
std::string LanguageOf(const EbmlMaster& entry) {
  const auto tag = TextOf<libmatroska::KaxLanguageIETF>(entry);
  std::string language =
      tag && !tag->empty() ? *tag : TextOf<libmatroska::KaxTrackLanguage>(entry).value_or("eng");
  return language == "und" ? "" : language;
}

struct OrderedEncoding {
  std::uint64_t Order = 0;
  ContentEncoding Encoding;
};

/// Empty where the encoding is one that is undone here.
std::string ReadCompression(const EbmlMaster& parent, ContentEncoding& encoding) {
  const auto* const compression = Child<libmatroska::KaxContentCompression>(parent);
  // Programs leave the element empty, or out, for what is its default.
  switch (compression != nullptr ? NumberOf<libmatroska::KaxContentCompAlgo>(*compression, 0) : 0) {
    case 0:
      return "";
    case 1:
      return Words::Tr("is compressed with bzlib, which is not read");
    case 2:
      return Words::Tr("is compressed with lzo1x, which is not read");
    case 3:
      encoding.IsStripping = true;
      encoding.Stripped = BytesOf<libmatroska::KaxContentCompSettings>(*compression);
      return "";
    default:
      return Words::Tr("is compressed in a way that is not known");
  }
}

void ReadEncodings(const EbmlMaster& entry, MatroskaTrack& track) {
  constexpr std::uint64_t BlocksScope = 1;
  constexpr std::uint64_t PrivateScope = 2;
  const auto* const encodings = Child<libmatroska::KaxContentEncodings>(entry);
  if (encodings == nullptr) {
    return;
  }
  std::vector<OrderedEncoding> ordered;
  for (const EbmlElement* const element : encodings->GetElementList()) {
    const auto* const encoding = dynamic_cast<const libmatroska::KaxContentEncoding*>(element);
    if (encoding == nullptr) {
      continue;
    }
    const std::uint64_t scope = NumberOf<libmatroska::KaxContentEncodingScope>(*encoding, BlocksScope);
    OrderedEncoding& read = ordered.emplace_back();
    read.Order = NumberOf<libmatroska::KaxContentEncodingOrder>(*encoding, 0);
    read.Encoding.IsOfBlocks = (scope & BlocksScope) != 0;
    read.Encoding.IsOfPrivateData = (scope & PrivateScope) != 0;
    if (NumberOf<libmatroska::KaxContentEncodingType>(*encoding, 0) != 0) {
      track.Hindrance = Words::Tr("is encrypted");
    } else if (std::string hindrance = ReadCompression(*encoding, read.Encoding);
               !hindrance.empty() && track.Hindrance.empty()) {
      track.Hindrance = std::move(hindrance);
    }
  }
  if (ordered.size() > MostEncodings) {
    track.Hindrance = Words::Tr("is packed more often than any program does");
    return;
  }
  std::ranges::stable_sort(ordered, std::greater(), &OrderedEncoding::Order);
  for (OrderedEncoding& encoding : ordered) {
    track.Encodings.push_back(std::move(encoding.Encoding));
  }
}

/// The end of a stream that inflateEnd() must hear of.
struct Inflation {
  z_stream Stream = {};
  bool IsOpen = inflateInit(&Stream) == Z_OK;

  Inflation() = default;
  Inflation(const Inflation&) = delete;
  Inflation& operator=(const Inflation&) = delete;
  ~Inflation() {
    if (IsOpen) {
      inflateEnd(&Stream);
    }
  }
};

Result<void> Inflate(std::size_t mostBytes, std::vector<std::uint8_t>& bytes) {
  Inflation inflation;
  if (!inflation.IsOpen) {
    return Failure{Words::Tr("zlib cannot be started")};
  }
  z_stream& stream = inflation.Stream;
  stream.next_in = bytes.data();
  stream.avail_in = static_cast<uInt>(bytes.size());
  std::vector<std::uint8_t> plain;
  int state = Z_OK;
  while (state == Z_OK) {
    const std::size_t done = plain.size();
    if (done > mostBytes) {
      return Failure{Words::Tr("more bytes come out than a unit has")};
    }
    plain.resize(done + std::min(std::max<std::size_t>(4096, done + 2 * bytes.size()), mostBytes + 1 - done));
    stream.next_out = plain.data() + done;
    stream.avail_out = static_cast<uInt>(plain.size() - done);
    state = inflate(&stream, Z_NO_FLUSH);
    plain.resize(plain.size() - stream.avail_out);
  }
  if (state != Z_STREAM_END || plain.size() > mostBytes) {
    return Failure{Words::Tr("they are no zlib data, or too many")};
  }
  bytes = std::move(plain);
  return {};
}

}  // namespace

std::vector<MatroskaTrack> SubtitleTracksOf(const libmatroska::KaxTracks& tracks) {
  std::vector<MatroskaTrack> found;
  for (const EbmlElement* const element : tracks.GetElementList()) {
    const auto* const entry = dynamic_cast<const libmatroska::KaxTrackEntry*>(element);
    if (entry == nullptr) {
      continue;
    }
    MatroskaTrack track;
    track.Number = NumberOf<libmatroska::KaxTrackNumber>(*entry, 0);
    track.CodecId = TextOf<libmatroska::KaxCodecID>(*entry).value_or("");
    if (NumberOf<libmatroska::KaxTrackType>(*entry, 0) != SubtitleType && !track.IsDvdSubtitles()) {
      continue;
    }
    track.Language = LanguageOf(*entry);
    if (const auto* const name = Child<libmatroska::KaxTrackName>(*entry)) {
      track.Name = name->GetValueUTF8();
    }
    track.PrivateData = BytesOf<libmatroska::KaxCodecPrivate>(*entry);
    ReadEncodings(*entry, track);
    found.push_back(std::move(track));
  }
  return found;
}

Result<void> UndoEncodings(const std::vector<ContentEncoding>& encodings, EncodedPart part,
                           std::size_t mostBytes, std::vector<std::uint8_t>& bytes) {
  for (const ContentEncoding& encoding : encodings) {
    if (!(part == EncodedPart::Blocks ? encoding.IsOfBlocks : encoding.IsOfPrivateData)) {
      continue;
    }
    if (encoding.IsStripping) {
      if (bytes.size() + encoding.Stripped.size() > mostBytes) {
        return Failure{Words::Tr("they are too many")};
      }
      bytes.insert(bytes.begin(), encoding.Stripped.begin(), encoding.Stripped.end());
    } else if (auto inflated = Inflate(mostBytes, bytes); !inflated) {
      return inflated;
    }
  }
  return {};
}

}  // namespace quillmark
