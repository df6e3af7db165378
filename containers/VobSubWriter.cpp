#include "containers/VobSubWriter.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <system_error>
#include <utility>

#include <QString>

#include "base/AsciiCase.h"
#include "base/FilePath.h"
#include "base/Words.h"
#include "containers/PacketWalk.h"
#include "containers/VobSubPacks.h"
#include "files/FileWriter.h"
#include "files/KeptFile.h"
#include "files/ReplaceFile.h"
#include "sup/SupFormat.h"

namespace quillmark {
namespace {

/// One subtitle of the pair.
struct Subtitle {
  std::int64_t Ticks = 0;
  unsigned Track = 0;
  std::size_t Start = 0;  // of its unit, in the track's packets
  std::size_t Size = 0;
};

/// "subtitle 3", and of which stream where there are several.
std::string NameOf(std::size_t number, unsigned track, std::size_t tracks) {
  const std::string subtitle = std::to_string(number);
  return tracks > 1 ? Words::Tr("stream %1, subtitle %2", {std::to_string(track + 1), subtitle})
                    : Words::Tr("subtitle %1", {subtitle});
}

Result<void> AddSubtitles(std::span<const std::uint8_t> packets, unsigned track, std::size_t tracks,
                          std::vector<Subtitle>& subtitles) {
  constexpr std::int64_t EndOfTime = std::int64_t{1} << TimeStampBits;
  std::size_t number = 0;
  for (std::size_t at = 0; packets.size() - at >= PacketHeaderSize;) {
    const auto header = ReadPacketHeader(packets.subspan(at));
    ++number;
    if (!header) {
      return Failure{Words::Tr("no signature stands at %1", {NameOf(number, track, tracks)})};
    }
    if (header->Time < 0 || header->Time >= EndOfTime) {
      const std::string name = NameOf(number, track, tracks);
      return Failure{header->Time < 0 ? Words::Tr("%1 starts before 0, which no .sub can say", {name})
                                      : Words::Tr("%1 starts after 26:30:43, which no .sub can say", {name})};
    }
    if (header->UnitSize < UnitHeaderSize) {
      return Failure{Words::Tr("%1 has no unit: its size field is %2",
                               {NameOf(number, track, tracks), std::to_string(header->UnitSize)})};
    }
    subtitles.push_back(
        {.Ticks = header->Time, .Track = track, .Start = at + UnitStart, .Size = header->UnitSize});
    at = std::min(at + UnitStart + header->UnitSize, packets.size());
  }
  return {};
}

/// All subtitles in the order of the .sub.
Result<std::vector<Subtitle>> SubtitlesOf(const std::vector<VobSubTrack>& tracks) {
  if (tracks.empty() || tracks.size() > MaxVobSubTracks) {
    return Failure{Words::Tr("a VobSub pair has 1 to %1 languages", {std::to_string(MaxVobSubTracks)})};
  }
  std::vector<Subtitle> subtitles;
  for (unsigned i = 0; i < tracks.size(); ++i) {
    if (auto added = AddSubtitles(tracks[i].Packets, i, tracks.size(), subtitles); !added) {
      return added.Why();
    }
  }
  std::ranges::stable_sort(subtitles, {}, &Subtitle::Ticks);
  return subtitles;
}

/// The unit; one that the packets cut short is completed in `whole`.
std::span<const std::uint8_t> UnitOf(const Subtitle& subtitle, std::span<const std::uint8_t> packets,
                                     std::vector<std::uint8_t>& whole) {
  const auto there = packets.subspan(subtitle.Start);
  if (there.size() >= subtitle.Size) {
    return there.first(subtitle.Size);
  }
  whole.assign(there.begin(), there.end());
  whole.resize(subtitle.Size);
  return whole;
}

/// A file that is there when it is committed. Until that is settled what stood there before is kept, for
/// where its companion cannot be written.
class PairFile {
 public:
  static Result<PairFile> Open(const std::filesystem::path& path) {
    std::error_code ignored;
    PairFile file(path, std::filesystem::exists(path, ignored));
    auto writer = FileWriter::Replacing(QString::fromStdString(Utf8FromPath(path)));
    if (!writer) {
      return Named(path, writer.Why());
    }
    file.writer_.emplace(std::move(*writer));
    return file;
  }

  Result<void> Write(std::span<const std::uint8_t> bytes) { return Told(writer_->Write(bytes)); }
  Result<void> Commit() {
    old_ = KeptFile::Of(path_);
    auto committed = Told(writer_->Commit());
    if (!committed) {
      Settle();
    }
    return committed;
  }
  /// What was committed stays.
  void Settle() {
    if (old_) {
      old_->Forget();
      old_.reset();
    }
  }
  /// What stood there before is there again; else the reason names the file.
  Result<void> Revoke() {
    Result<void> revoked;
    if (old_) {
      revoked = old_->PutBack();
      old_.reset();
    } else if (!wasThere_) {
      revoked = RemoveFile(QString::fromStdString(Utf8FromPath(path_)));
    }
    return Told(revoked);
  }

 private:
  PairFile(std::filesystem::path path, bool wasThere) : path_(std::move(path)), wasThere_(wasThere) {}

  static Failure Named(const std::filesystem::path& path, const Failure& why) {
    return {Utf8FromPath(path.filename()) + ": " + why.Reason};
  }
  [[nodiscard]] Result<void> Told(const Result<void>& done) const {
    return done ? done : Result<void>(Named(path_, done.Why()));
  }

  std::filesystem::path path_;
  bool wasThere_ = false;
  std::optional<FileWriter> writer_;
  std::optional<KeptFile> old_;
};

/// The index, language by language, while the packs are written.
class IndexText {
 public:
  IndexText(const std::vector<VobSubTrack>& tracks, const VobSubOptions& options)
      : settings_(VobSubSettings(options)) {
    for (unsigned i = 0; i < tracks.size(); ++i) {
      languages_.push_back(VobSubLanguageText(tracks[i], i));
    }
  }

  void Add(const Subtitle& subtitle, std::uint64_t position) {
    languages_[subtitle.Track] += VobSubLine(subtitle.Ticks, position);
  }
  [[nodiscard]] std::string Take() {
    for (const std::string& language : languages_) {
      settings_ += language;
    }
    return std::move(settings_);
  }

 private:
  std::string settings_;
  std::vector<std::string> languages_;
};

Result<Completion> WritePacks(const std::vector<Subtitle>& subtitles, const std::vector<VobSubTrack>& tracks,
                              const Progress& progress, PairFile& file, IndexText& index) {
  constexpr std::size_t PieceSize = std::size_t{1} << 20U;
  std::uint64_t total = 0;
  for (const Subtitle& subtitle : subtitles) {
    total += subtitle.Size;
  }
  std::vector<std::uint8_t> piece;
  piece.reserve(PieceSize + (std::size_t{128} << 10U));
  std::vector<std::uint8_t> whole;
  std::uint64_t written = 0;
  std::uint64_t done = 0;
  for (std::size_t i = 0; i < subtitles.size(); ++i) {
    const Subtitle& subtitle = subtitles[i];
    index.Add(subtitle, written + piece.size());
    AppendVobSubPacks(piece, subtitle.Track, subtitle.Ticks,
                      UnitOf(subtitle, tracks[subtitle.Track].Packets, whole));
    done += subtitle.Size;
    if (piece.size() < PieceSize && i + 1 < subtitles.size()) {
      continue;
    }
    if (auto wrote = file.Write(piece); !wrote) {
      return wrote.Why();
    }
    written += piece.size();
    piece.clear();
    if (progress && !progress(done, total)) {
      return Completion::Cancelled;
    }
  }
  return Completion::Done;
}

}  // namespace

VobSubPaths VobSubPathsOf(const std::filesystem::path& path) {
  VobSubPaths paths{.Index = path, .Packs = path};
  const std::string ending = Utf8FromPath(path.extension());
  if (ending == ".IDX" || ending == ".SUB") {
    paths.Index.replace_extension(".IDX");
    paths.Packs.replace_extension(".SUB");
  } else if (IsSameWord(ending, ".idx") || IsSameWord(ending, ".sub")) {
    paths.Index.replace_extension(".idx");
    paths.Packs.replace_extension(".sub");
  } else {
    paths.Index += ".idx";
    paths.Packs += ".sub";
  }
  return paths;
}

std::vector<std::string> ChangesInVobSub(const VobSubTrack& track) {
  std::vector<std::string> changes;
  std::size_t number = 0;
  std::size_t at = 0;
  std::int64_t last = std::numeric_limits<std::int64_t>::min();
  bool isSorted = true;
  while (track.Packets.size() - at >= PacketHeaderSize) {
    const auto header = ReadPacketHeader(track.Packets.subspan(at));
    if (!header) {
      return changes;
    }
    ++number;
    isSorted = isSorted && header->Time >= last;
    last = header->Time;
    const std::size_t length = UnitStart + std::max<std::size_t>(header->UnitSize, UnitHeaderSize);
    const std::size_t left = track.Packets.size() - at;
    if (left < length) {
      changes.push_back(Words::Tr("subtitle %1 is cut short; %2 bytes were filled with zeros",
                                  {std::to_string(number), std::to_string(length - left)}));
    }
    at += std::min(left, length);
  }
  if (!isSorted) {
    changes.emplace_back(Words::Tr("the subtitles are not in the order of time; they were sorted"));
  }
  if (at < track.Packets.size()) {
    changes.push_back(Words::Tr("%1 bytes after the last subtitle were left out",
                                {std::to_string(track.Packets.size() - at)}));
  }
  return changes;
}

Result<Completion> WriteVobSub(const std::filesystem::path& path, const std::vector<VobSubTrack>& tracks,
                               const VobSubOptions& options, const Progress& progress) {
  const auto subtitles = SubtitlesOf(tracks);
  if (!subtitles) {
    return subtitles.Why();
  }
  const VobSubPaths paths = VobSubPathsOf(path);
  if (options.Existing == Overwriting::Refused) {
    const auto free = RefuseExisting({QString::fromStdString(Utf8FromPath(paths.Index)),
                                      QString::fromStdString(Utf8FromPath(paths.Packs))});
    if (!free) {
      return free.Why();
    }
  }
  auto packs = PairFile::Open(paths.Packs);
  if (!packs) {
    return packs.Why();
  }
  auto index = PairFile::Open(paths.Index);
  if (!index) {
    return index.Why();
  }
  IndexText text(tracks, options);
  auto written = WritePacks(*subtitles, tracks, progress, *packs, text);
  if (!written || *written == Completion::Cancelled) {
    return written;
  }
  const std::string lines = text.Take();
  if (auto wrote = index->Write({reinterpret_cast<const std::uint8_t*>(lines.data()), lines.size()});
      !wrote) {
    return wrote.Why();
  }
  if (auto committed = packs->Commit(); !committed) {
    return committed.Why();
  }
  // The index comes last: what stands there names packs that are there.
  if (auto committed = index->Commit(); !committed) {
    const auto revoked = packs->Revoke();
    return revoked ? committed.Why() : Failure{committed.Reason() + "; " + revoked.Reason()};
  }
  packs->Settle();
  index->Settle();
  return Completion::Done;
}

}  // namespace quillmark
