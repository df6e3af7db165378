#include "containers/Matroska.h"

#include <algorithm>
#include <array>
#include <ebml/EbmlStream.h>
#include <limits>
#include <matroska/KaxBlock.h>
#include <matroska/KaxCluster.h>
#include <matroska/KaxInfo.h>
#include <matroska/KaxSegment.h>
#include <matroska/KaxSemantic.h>
#include <matroska/KaxTracks.h>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/Words.h"
#include "containers/MatroskaBlocks.h"
#include "containers/MatroskaInput.h"
#include "containers/MatroskaTracks.h"

namespace quillmark {
namespace {

using libebml::EbmlElement;
using libebml::EbmlId;

constexpr std::string_view HeadBytes = "\x1A\x45\xDF\xA3";
constexpr std::array<std::uint8_t, 4> ClusterId = {0x1F, 0x43, 0xB6, 0x75};
/// What is read whole: real lists of tracks have a few KiB, with fonts' worth of private data some 100 more.
constexpr std::uint64_t MostHeaderBytes = 16777216;
constexpr std::uint64_t DefaultScale = 1000000;
constexpr std::uint64_t UnknownDuration = std::numeric_limits<std::uint64_t>::max();
/// An ID has at most four bytes, so that one of the first byte's upper four bits is set; a size has eight.
constexpr std::uint8_t LeastFirstByte = 0x10;
constexpr std::uint64_t MostElementHead = 12;
constexpr unsigned DeepestLevel = 8;
/// Short, since another cluster is often near, and damage may be found many times.
constexpr std::size_t SearchBlock = 1024;

/// An element as it stands in the file.
struct FoundElement {
  std::unique_ptr<EbmlElement> Element;
  std::uint64_t DataStart = 0;
  std::optional<std::uint64_t> End;  ///< nullopt: its size is unknown

  template <typename Type>
  [[nodiscard]] bool Is() const {
    return EbmlId(*Element) == EBML_ID(Type);
  }
};

/// Whether `element` is a child of `master`, or of one of its children.
bool Holds(const libebml::EbmlMaster& master, const EbmlElement* element) {
  return std::ranges::any_of(master.GetElementList(), [element](const EbmlElement* child) {
    const auto* const inner = dynamic_cast<const libebml::EbmlMaster*>(child);
    return child == element || (inner != nullptr && Holds(*inner, element));
  });
}

/// Goes through the file element by element. Segment, clusters and block groups are entered, whose sizes may
/// be unknown; all others are read or passed over.
class MatroskaWalk {
 public:
  MatroskaWalk(ByteSource& source, const Progress& progress)
      : input_(source, progress), stream_(input_), end_(input_.Length()) {}

  Result<Container> Read() {
    Walk();
    if (!failure_.empty()) {
      return Failure{failure_};
    }
    std::vector<std::string> damage = DamageNotes();
    if (!tracks_) {
      std::string reason = Words::Tr("it has no list of tracks");
      for (const std::string& note : damage) {
        reason += "; " + note;
      }
      return Failure{reason};
    }
    Container container;
    container.Notes = std::move(damage);
    tracks_->Finish(scale_, container);
    return container;
  }

 private:
  void Walk() {
    std::uint64_t position = 0;
    while (position < end_ && failure_.empty()) {
      if (clusterEnd_ && position >= *clusterEnd_) {
        clusterEnd_.reset();
      }
      const FoundElement found = Find(position);
      // Segments and clusters, which may lack an end, come between the two kinds of damage.
      if (!found.Element) {  // NOLINT(bugprone-branch-clone)
        position = PassDamage(position);
      } else if (found.Is<libmatroska::KaxSegment>()) {
        if (std::exchange(segmentMet_, true)) {
          break;  // another film
        }
        EnterSegment(found);
        position = found.DataStart;
      } else if (found.Is<libmatroska::KaxCluster>()) {
        position = EnterCluster(position, found);
      } else if (found.Is<libmatroska::KaxBlockGroup>()) {
        EndGroup();
        position = found.DataStart;
      } else if (!found.End || (clusterEnd_ && *found.End > *clusterEnd_)) {
        position = PassDamage(position);
      } else if (*found.End > input_.Length()) {
        cutAt_ = position;
        break;
      } else {
        Take(found);
        position = tracks_ && passedCluster_ ? ReturnToClusters() : *found.End;
      }
    }
    EndGroup();
  }

  /// The element that starts at `position`; none where nothing does. The library would search on byte by
  /// byte; what it then finds in pictures and sound are accidents.
  FoundElement Find(std::uint64_t position) {
    FoundElement found;
    std::uint8_t first = 0;
    if (input_.ReadAt(position, {&first, 1}) == 0 || first < LeastFirstByte) {
      return found;
    }
    input_.setFilePointer(static_cast<std::int64_t>(position), libebml::seek_beginning);
    // What belongs to a level above the given one is accepted whatever its size, so the innermost level is
    // given: an element that the file's end cuts is to be seen as one.
    int upperLevel = 0;
    found.Element.reset(stream_.FindNextElement(EBML_CLASS_CONTEXT(libmatroska::KaxBlockAdditions),
                                                upperLevel, input_.Length() - position, true, DeepestLevel));
    if (found.Element && found.Element->GetElementPosition() != position) {
      found.Element.reset();
    }
    if (found.Element) {
      found.DataStart = input_.getFilePointer();
      if (found.Element->IsFiniteSize()) {
        found.End = found.DataStart + found.Element->GetSize();
      }
    }
    return found;
  }

  void EnterSegment(const FoundElement& segment) {
    const std::uint64_t end = SegmentEnd(segment);
    if (end > input_.Length()) {
      cutAt_ = input_.Length();
    }
    end_ = std::min(end_, end);
  }

  /// The library takes the size of every segment for unknown, so it is read once more.
  std::uint64_t SegmentEnd(const FoundElement& segment) {
    std::array<std::uint8_t, 8> bytes = {};
    const auto size = std::span(bytes).first(static_cast<std::size_t>(segment.Element->GetSizeLength()));
    auto length = static_cast<std::uint32_t>(input_.ReadAt(segment.DataStart - size.size(), size));
    std::uint64_t unknown = 0;
    const std::uint64_t value = libebml::ReadCodedSizeValue(size.data(), length, unknown);
    return value == unknown ? end_ : segment.DataStart + value;
  }

  /// Where to go on: behind the cluster as long as it is not known whose blocks are looked for.
  std::uint64_t EnterCluster(std::uint64_t position, const FoundElement& cluster) {
    EndGroup();
    clusterTime_ = 0;
    if (!tracks_) {
      passedCluster_ = passedCluster_.value_or(position);
      return cluster.End.value_or(cluster.DataStart);
    }
    clusterEnd_ = cluster.End;
    return cluster.DataStart;
  }

  /// The list of tracks may stand behind clusters.
  std::uint64_t ReturnToClusters() {
    damages_ = 0;
    firstDamage_ = 0;
    return *std::exchange(passedCluster_, std::nullopt);
  }

  void Take(const FoundElement& found) {
    if (found.Is<libmatroska::KaxSimpleBlock>()) {
      EndGroup();
      TakeBlock(found);
    } else if (found.Is<libmatroska::KaxBlock>()) {
      unendedTrack_ = TakeBlock(found);
    } else if (found.Is<libmatroska::KaxBlockDuration>()) {
      hasDuration_ = NumberOf(found) != UnknownDuration;
    } else if (found.Is<libmatroska::KaxClusterTimecode>()) {
      clusterTime_ = NumberOf(found);
    } else if (found.Is<libmatroska::KaxInfo>()) {
      TakeInfo(found);
    } else if (found.Is<libmatroska::KaxTracks>() && !tracks_) {
      TakeTracks(found);
    }
  }

  std::optional<std::size_t> TakeBlock(const FoundElement& found) {
    if (!tracks_) {
      return std::nullopt;
    }
    return tracks_->Take(input_, {.Start = found.DataStart, .End = *found.End, .ClusterTime = clusterTime_});
  }

  /// A group's block and the duration that belongs to it stand in any order.
  void EndGroup() {
    const auto track = std::exchange(unendedTrack_, std::nullopt);
    if (std::exchange(hasDuration_, false) && track) {
      tracks_->CountLostDuration(*track);
    }
  }

  /// An element of that ID may be of another type all the same, so it is asked for its type before it is
  /// used.
  std::uint64_t NumberOf(const FoundElement& found) {
    auto* const number = dynamic_cast<libebml::EbmlUInteger*>(found.Element.get());
    if (number != nullptr) {
      number->ReadData(input_);
    }
    return number != nullptr ? number->GetValue() : 0;
  }

  /// Reads the children; nullptr where the element is not of the type after all, or too long.
  template <typename Type>
  Type* ReadMaster(const FoundElement& found) {
    auto* const master = dynamic_cast<Type*>(found.Element.get());
    if (master == nullptr || *found.End - found.DataStart > MostHeaderBytes) {
      return nullptr;
    }
    int upperLevel = 0;  // in and out: anything else here, and nothing is read
    EbmlElement* next = nullptr;
    master->Read(stream_, EBML_CONTEXT(master), upperLevel, next, true);
    // What was found above its level is the caller's, unless it was taken in as a child all the same.
    if (!Holds(*master, next)) {
      delete next;
    }
    return master;
  }

  void TakeInfo(const FoundElement& found) {
    const auto* const info = ReadMaster<libmatroska::KaxInfo>(found);
    if (info == nullptr) {
      return;
    }
    for (const EbmlElement* const child : info->GetElementList()) {
      if (const auto* const scale = dynamic_cast<const libmatroska::KaxTimecodeScale*>(child)) {
        scale_ = scale->GetValue();
      }
    }
    if (scale_ == 0 || scale_ > MatroskaBlocks::MaxScale) {
      failure_ = Words::Tr("its unit of time, %1 ns, is none that a film has", {std::to_string(scale_)});
    }
  }

  void TakeTracks(const FoundElement& found) {
    const auto* const tracks = ReadMaster<libmatroska::KaxTracks>(found);
    if (tracks == nullptr) {
      failure_ = Words::Tr("its list of tracks at byte %1 is too long", {std::to_string(found.DataStart)});
      return;
    }
    tracks_.emplace(SubtitleTracksOf(*tracks));
  }

  /// Where to go on behind damage at `position`: at the end of the cluster where that is known, else at the
  /// next one.
  std::uint64_t PassDamage(std::uint64_t position) {
    EndGroup();
    const std::uint64_t next = clusterEnd_ && *clusterEnd_ <= end_ ? *clusterEnd_ : NextCluster(position + 1);
    if (next == end_ && end_ == input_.Length() && end_ - position < MostElementHead) {
      cutAt_ = position;
    } else if (damages_++ == 0) {
      firstDamage_ = position;
    }
    return next;
  }

  /// The next place from `position` on where a cluster may start; the end where there is none.
  std::uint64_t NextCluster(std::uint64_t position) {
    std::array<std::uint8_t, SearchBlock> block = {};
    while (position < end_) {
      const auto bytes = std::span(block).first(input_.ReadAt(position, block));
      const auto found = std::search(bytes.begin(), bytes.end(), ClusterId.begin(), ClusterId.end());
      if (found != bytes.end()) {
        return std::min(end_, position + static_cast<std::uint64_t>(found - bytes.begin()));
      }
      if (bytes.size() < block.size()) {
        break;
      }
      position += bytes.size() - (ClusterId.size() - 1);
    }
    return end_;
  }

  [[nodiscard]] std::vector<std::string> DamageNotes() const {
    std::vector<std::string> notes;
    if (damages_ > 0) {
      const std::string first = std::to_string(firstDamage_);
      notes.push_back(damages_ == 1
                          ? Words::Tr("it is damaged at byte %1; what stands there is left out", {first})
                          : Words::Tr("it is damaged at byte %1 and %2 more; what stands there is left out",
                                      {first, std::to_string(damages_ - 1)}));
    }
    if (cutAt_) {
      notes.push_back(Words::Tr("it is cut short at byte %1", {std::to_string(*cutAt_)}));
    }
    return notes;
  }

  MatroskaInput input_;
  libebml::EbmlStream stream_;
  std::uint64_t end_;  // of what is read
  std::string failure_;
  std::optional<MatroskaBlocks> tracks_;
  std::uint64_t scale_ = DefaultScale;
  bool segmentMet_ = false;
  std::optional<std::uint64_t> passedCluster_;  // the first one, while the tracks are not known
  std::optional<std::uint64_t> clusterEnd_;     // of the cluster at hand, where it is known
  std::uint64_t clusterTime_ = 0;
  std::optional<std::size_t> unendedTrack_;  // that the group at hand has a unit of, one without a stop
  bool hasDuration_ = false;                 // the group at hand
  std::uint64_t damages_ = 0;
  std::uint64_t firstDamage_ = 0;
  std::optional<std::uint64_t> cutAt_;
};

}  // namespace

bool StartsLikeMatroska(std::string_view head) {
  return head.starts_with(HeadBytes);
}

ReadContainerResult ReadMatroskaFrom(ByteSource& source, const Progress& progress) {
  try {
    std::array<std::uint8_t, HeadBytes.size()> head = {};
    const auto found = source.ReadAt(0, head);
    if (!found) {
      return found.Why();
    }
    if (!StartsLikeMatroska({reinterpret_cast<const char*>(head.data()), *found})) {
      return Failure{Words::Tr("it is no Matroska file: it does not start with an EBML header")};
    }
    auto read = MatroskaWalk(source, progress).Read();
    if (!read) {
      return read.Why();
    }
    return std::optional(std::move(*read));
  } catch (const ReadingEnded&) {
    return std::optional<Container>();
  } catch (const SourceFailed& failed) {
    return Failure{failed.what()};
  } catch (const std::bad_alloc&) {
    return Failure{Words::Tr("there is not enough memory")};
  } catch (const std::exception&) {
    return Failure{Words::Tr("its header is damaged")};
  }
}

ReadContainerResult ReadMatroska(const std::filesystem::path& path, const Progress& progress) {
  const auto source = OpenFileSource(path);
  if (!source) {
    return source.Why();
  }
  return ReadMatroskaFrom(**source, progress);
}

}  // namespace quillmark
