#include "render/StreamDiff.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <span>

#include "base/Words.h"
#include "render/FieldDecoder.h"
#include "sup/ControlSurvey.h"
#include "sup/HeldUnit.h"

namespace quillmark {
namespace {

/// A decoded picture at its place in the frame.
struct Picture {
  int X = 0;
  int Y = 0;
  int Width = 0;
  int Height = 0;  ///< lines that can have any other code than 0
  std::vector<std::uint8_t> Codes;

  /// Row `y` of the frame, which the picture may not have.
  [[nodiscard]] std::span<const std::uint8_t> FrameRow(int y) const {
    if (y < Y || y >= Y + Height) {
      return {};
    }
    const auto width = static_cast<std::size_t>(Width);
    return std::span(Codes).subspan(static_cast<std::size_t>(y - Y) * width, width);
  }
};

void Decode(const ReadUnit& unit, Picture& picture) {
  const SpuControl& control = unit.Control;
  // Each pair of lines takes a byte of each field, so a short unit has no more lines than this, however large
  // its area is.
  const auto reachable = static_cast<int>(2 * unit.Bytes.size() + 2);
  picture.X = control.X1;
  picture.Y = control.Y1;
  picture.Width = std::max(control.Width(), 0);
  picture.Height = std::clamp(control.Height(), 0, reachable);
  picture.Codes.assign(static_cast<std::size_t>(picture.Width) * static_cast<std::size_t>(picture.Height), 0);
  DecodeFields<std::uint8_t>(unit.Bytes, picture.Codes, picture.Width, picture.Height, control.TopFieldOffset,
                             control.BottomFieldOffset, {0, 1, 2, 3});
}

std::int64_t CountOther(std::span<const std::uint8_t> first, std::span<const std::uint8_t> second) {
  std::int64_t count = 0;
  for (std::size_t i = 0; i < first.size(); ++i) {
    count += first[i] != second[i] ? 1 : 0;
  }
  return count;
}

std::int64_t CountNotBackground(std::span<const std::uint8_t> codes) {
  return std::ssize(codes) - std::ranges::count(codes, 0);
}

/// Of two rows that start at columns `x` of the frame; either may be empty, and then they share no column.
std::int64_t CountOtherInRow(std::span<const std::uint8_t> first, int firstX,
                             std::span<const std::uint8_t> second, int secondX) {
  const int begin = std::max(firstX, secondX);
  const int end =
      std::min(firstX + static_cast<int>(first.size()), secondX + static_cast<int>(second.size()));
  if (begin >= end) {
    return CountNotBackground(first) + CountNotBackground(second);
  }
  const auto length = static_cast<std::size_t>(end - begin);
  const auto outside = [&](std::span<const std::uint8_t> row, int x) {
    const auto before = static_cast<std::size_t>(begin - x);
    return CountNotBackground(row.first(before)) + CountNotBackground(row.subspan(before + length));
  };
  return outside(first, firstX) + outside(second, secondX) +
         CountOther(first.subspan(static_cast<std::size_t>(begin - firstX), length),
                    second.subspan(static_cast<std::size_t>(begin - secondX), length));
}

std::int64_t CountOtherPixels(const Picture& first, const Picture& second) {
  std::int64_t count = 0;
  const int begin = std::min(first.Y, second.Y);
  const int end = std::max(first.Y + first.Height, second.Y + second.Height);
  for (int y = begin; y < end; ++y) {
    count += CountOtherInRow(first.FrameRow(y), first.X, second.FrameRow(y), second.X);
  }
  return count;
}

/// Whether it is shown even where subtitles are switched off.
bool IsForced(const ReadUnit& unit) {
  const ControlSurvey survey = SurveyControl(unit.Bytes, unit.ControlOffset);
  return survey.End == ControlSurvey::Ending::PointsToItself && survey.IsForced;
}

class Comparison {
 public:
  Comparison(const SupStream& first, const SupStream& second)
      : first_(first), second_(second), firstReader_(first), secondReader_(second) {}

  const ComparedPair& Compare(const SubtitlePair& pair) {
    result_.Pair = pair;
    result_.Differences.clear();
    result_.OtherPixels = 0;
    if (!pair.Second) {
      Add(SubtitleDifference::Missing);
    } else if (!pair.First) {
      Add(SubtitleDifference::Added);
    } else {
      CompareBoth(*pair.First, *pair.Second);
    }
    return result_;
  }

 private:
  void Add(SubtitleDifference difference) { result_.Differences.push_back(difference); }
  void AddIf(bool differs, SubtitleDifference difference) {
    if (differs) {
      Add(difference);
    }
  }

  void CompareBoth(std::size_t index, std::size_t other) {
    const ReadUnit first = firstReader_.Read(index);
    const ReadUnit second = secondReader_.Read(other);
    const bool sameBytes = std::ranges::equal(first.Bytes, second.Bytes);
    const bool sameStart = first_.StartTime[index] == second_.StartTime[other];
    if (sameBytes && sameStart) {
      return;
    }
    AddIf(first.Control.IsValid() != second.Control.IsValid(), SubtitleDifference::Validity);
    AddIf(!sameStart, SubtitleDifference::Start);
    if (!sameBytes && first.Control.IsValid() && second.Control.IsValid()) {
      CompareUnits(first, second);
    }
    AddIf(result_.Differences.empty(), SubtitleDifference::Bytes);
  }

  void CompareUnits(const ReadUnit& first, const ReadUnit& second) {
    const SpuControl& one = first.Control;
    const SpuControl& other = second.Control;
    const bool sameSize = one.Width() == other.Width() && one.Height() == other.Height();
    AddIf(one.Delay != other.Delay, SubtitleDifference::Duration);
    AddIf(one.X1 != other.X1 || one.Y1 != other.Y1, SubtitleDifference::Place);
    AddIf(!sameSize, SubtitleDifference::Size);
    AddIf(one.Colour != other.Colour, SubtitleDifference::Colours);
    AddIf(one.Contrast != other.Contrast, SubtitleDifference::Opacities);
    AddIf(IsForced(first) != IsForced(second), SubtitleDifference::Forced);
    const bool isCodedAlike = sameSize && one.TopFieldOffset == other.TopFieldOffset &&
                              one.BottomFieldOffset == other.BottomFieldOffset &&
                              std::ranges::equal(first.PictureBytes(), second.PictureBytes());
    if (!isCodedAlike) {
      ComparePictures(first, second, sameSize);
    }
  }

  void ComparePictures(const ReadUnit& first, const ReadUnit& second, bool sameSize) {
    Decode(first, firstPicture_);
    Decode(second, secondPicture_);
    if (sameSize) {
      secondPicture_.X = firstPicture_.X;
      secondPicture_.Y = firstPicture_.Y;
    }
    result_.OtherPixels = CountOtherPixels(firstPicture_, secondPicture_);
    AddIf(result_.OtherPixels > 0, SubtitleDifference::Pixels);
  }

  const SupStream& first_;
  const SupStream& second_;
  UnitReader firstReader_;
  UnitReader secondReader_;
  Picture firstPicture_;
  Picture secondPicture_;
  ComparedPair result_;
};

std::span<const std::uint8_t> TrailingBytes(const SupStream& stream) {
  if (stream.RawBytes.empty()) {
    return {};
  }
  const auto file = std::span(stream.RawBytes).first(static_cast<std::size_t>(stream.FileLength));
  if (stream.PacketOffset.empty()) {
    return file;
  }
  const std::size_t end =
      static_cast<std::size_t>(stream.PacketOffset.back()) + UnitStart +
      std::max<std::size_t>(std::bit_cast<std::uint16_t>(stream.SpuSize.back()), UnitHeaderSize);
  return file.subspan(std::min(end, file.size()));
}

}  // namespace

std::string_view DifferenceName(SubtitleDifference difference) {
  switch (difference) {
    case SubtitleDifference::Missing:
      return "missing";
    case SubtitleDifference::Added:
      return "added";
    case SubtitleDifference::Validity:
      return "other_validity";
    case SubtitleDifference::Start:
      return "moved_in_time";
    case SubtitleDifference::Duration:
      return "other_duration";
    case SubtitleDifference::Place:
      return "moved_in_place";
    case SubtitleDifference::Size:
      return "other_size";
    case SubtitleDifference::Colours:
      return "other_colours";
    case SubtitleDifference::Opacities:
      return "other_opacities";
    case SubtitleDifference::Forced:
      return "other_forced_flag";
    case SubtitleDifference::Pixels:
      return "other_pixels";
    case SubtitleDifference::Bytes:
      break;
  }
  return "other_bytes";
}

std::string DifferenceWords(SubtitleDifference difference) {
  switch (difference) {
    case SubtitleDifference::Missing:
      return Words::Tr("missing");
    case SubtitleDifference::Added:
      return Words::Tr("added");
    case SubtitleDifference::Validity:
      return Words::Tr("only one of the two can be shown");
    case SubtitleDifference::Start:
      return Words::Tr("moved in time");
    case SubtitleDifference::Duration:
      return Words::Tr("other duration");
    case SubtitleDifference::Place:
      return Words::Tr("moved in place");
    case SubtitleDifference::Size:
      return Words::Tr("other size");
    case SubtitleDifference::Colours:
      return Words::Tr("other colours");
    case SubtitleDifference::Opacities:
      return Words::Tr("other opacities");
    case SubtitleDifference::Forced:
      return Words::Tr("other forced flag");
    case SubtitleDifference::Pixels:
      return Words::Tr("other pixels");
    case SubtitleDifference::Bytes:
      break;
  }
  return Words::Tr("the same, otherwise written");
}

std::string DifferencePhrase(SubtitleDifference difference, std::int64_t otherPixels) {
  if (difference == SubtitleDifference::Pixels) {
    return Words::Tr("%n other pixel", "%n other pixels", otherPixels);
  }
  return DifferenceWords(difference);
}

void PairCounts::Add(const ComparedPair& pair) {
  ++(!pair.Pair.Second ? Missing : !pair.Pair.First ? Added : pair.Differences.empty() ? Same : Different);
  for (const SubtitleDifference difference : pair.Differences) {
    ++With[static_cast<std::size_t>(difference)];
  }
}

void CompareStreams(const SupStream& first, const SupStream& second,
                    const std::function<void(const ComparedPair&)>& report) {
  Comparison comparison(first, second);
  for (const SubtitlePair& pair : PairSubtitles(first, second)) {
    report(comparison.Compare(pair));
  }
}

bool HaveSameTrailingBytes(const SupStream& first, const SupStream& second) {
  return std::ranges::equal(TrailingBytes(first), TrailingBytes(second));
}

}  // namespace quillmark
