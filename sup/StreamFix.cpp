#include "sup/StreamFix.h"

#include <algorithm>
#include <array>
#include <bit>
#include <optional>
#include <utility>

#include "sup/ChoosePackets.h"
#include "sup/ComposedEdit.h"
#include "sup/DisplayEnds.h"
#include "sup/IndexedPacket.h"
#include "sup/MendPackets.h"
#include "sup/MoveArea.h"
#include "sup/PlayerCheck.h"
#include "sup/StreamLoader.h"
#include "sup/StreamSurvey.h"

namespace quillmark {
namespace {

using Code = StreamProblemCode;

constexpr std::int32_t LastColumn = 719;

/// How far an area must be moved to lie between two lines, both included; nullopt where it does not fit.
std::optional<std::int32_t> StepInto(std::int32_t first, std::int32_t last, std::int32_t lowest,
                                     std::int32_t highest) {
  const std::int32_t step = last > highest ? highest - last : std::max(lowest - first, 0);
  return first + step >= lowest && last + step <= highest ? std::optional(step) : std::nullopt;
}

/// The nearest move, by an even number of lines where that fits too: the fields then stay on their lines of
/// an interlaced screen.
std::optional<std::int32_t> LinesInto(const SpuControl& control, std::int32_t lowest, std::int32_t highest) {
  const auto step = StepInto(control.Y1, control.Y2, lowest, highest);
  if (!step || *step % 2 == 0) {
    return step;
  }
  for (const std::int32_t even : {*step - 1, *step + 1}) {
    if (control.Y1 + even >= lowest && control.Y2 + even <= highest) {
      return even;
    }
  }
  return step;
}

/// A delay that can be written where it stands: that of a last sequence with a stop command, which
/// DecodeControl is sure to read.
class StopDelay {
 public:
  void Begin(const ControlSequence& sequence) {
    last_ = sequence;
    stops_ = false;
    isRead_ = isRead_ && sequence.Gap == 0;
  }
  void Take(const ControlCommand& command) {
    stops_ = stops_ || command.Code == StopDisplay;
    isRead_ = isRead_ && command.Code != ChangeColours;
  }

  /// Its place in the unit.
  [[nodiscard]] std::optional<std::size_t> Position() const {
    return stops_ && isRead_ ? std::optional(static_cast<std::size_t>(last_.Position)) : std::nullopt;
  }

 private:
  ControlSequence last_;
  bool stops_ = false;
  bool isRead_ = true;
};

/// How far the next start is away; nullopt for the last subtitle and for one that the next one precedes.
std::optional<std::uint64_t> TicksToNext(const SupStream& stream, std::size_t index) {
  if (index + 1 >= stream.StartTime.size() || stream.StartTime[index + 1] < stream.StartTime[index]) {
    return std::nullopt;
  }
  return static_cast<std::uint64_t>(stream.StartTime[index + 1]) -
         static_cast<std::uint64_t>(stream.StartTime[index]);
}

/// The stream as it becomes, and all that was done to it.
class Fixer {
 public:
  explicit Fixer(const CheckOptions& options) : options_(options) {}

  Result<void> Run(std::span<const std::uint8_t> file) {
    Result<void> done = Load(file);
    // Ends that were added may be too late for players, and areas that were moved may not be where they
    // should; each round leaves less to do.
    for (int round = 0; done && round < MaxRounds; ++round) {
      const std::size_t before = fix_.Mends.size();
      done = RunOnce();
      if (fix_.Mends.size() == before) {
        break;
      }
    }
    return done;
  }

  StreamFix Finish() {
    fix_.Edit.Reindexes = true;
    CheckStream(
        FileOf(stream_), [this](const StreamProblem& problem) { fix_.Left.push_back(problem); }, options_);
    return std::move(fix_);
  }

 private:
  static constexpr int MaxRounds = 4;

  Result<void> Load(std::span<const std::uint8_t> file) {
    PacketMends mends = MendPackets(file);
    fix_.Edit = mends.Edit;
    fix_.Mends = std::move(mends.Mends);
    std::vector<std::uint8_t> bytes(file.begin(), file.end());
    if (Result<void> applied = ApplyEdit(bytes, mends.Edit); !applied) {
      return applied;
    }
    Result<LoadedStream> loaded = IndexPrimaryStream(std::move(bytes), InvalidFirst::IsPassed);
    if (!loaded) {
      return loaded.Why();
    }
    stream_ = std::move(loaded->Stream);
    return {};
  }

  Result<void> RunOnce() {
    Result<void> done = Sort();
    const StreamSurvey survey = Survey();
    for (const auto step :
         {&Fixer::CutEnds, &Fixer::CutPlayerEnds, &Fixer::MoveAreas, &Fixer::AddEnds, &Fixer::AddStops}) {
      done = done ? (this->*step)(survey) : done;
    }
    return done;
  }

  /// What is known of each packet as it stands now. The ends that are added at last, and nothing before,
  /// change where packets stand, but not which one is which.
  [[nodiscard]] StreamSurvey Survey() const {
    StreamSurvey survey(FileOf(stream_), options_);
    while (survey.Step()) {
    }
    return survey;
  }

  [[nodiscard]] SubtitleSet With(const StreamSurvey& survey, std::initializer_list<Code> codes) const {
    SubtitleSet set;
    const std::size_t count = std::min(stream_.PacketOffset.size(), survey.Marks().size());
    for (std::size_t i = 0; i < count; ++i) {
      if (std::ranges::any_of(codes, [&](Code code) { return survey.MarksOf(i).Has(code); })) {
        set.Append(static_cast<std::int64_t>(i) + 1);
      }
    }
    return set;
  }

  [[nodiscard]] SpuControl ControlOf(std::size_t index) const {
    std::vector<std::uint8_t> unit;
    CopyUnit(stream_, index, unit);
    return DecodeControl(unit, stream_.ControlOffset[index]);
  }

  void Note(MendKind kind, std::size_t index, std::int64_t first, std::int64_t second = 0) {
    fix_.Mends.push_back(
        {.Kind = kind, .Packet = static_cast<std::int64_t>(index) + 1, .Numbers = {first, second}});
  }

  Result<void> Apply(StreamEdit edit) {
    if (edit.IsEmpty()) {
      return {};
    }
    fix_.Edit = ComposedEdit(fix_.Edit, edit);
    return ApplyEdit(stream_, edit);
  }

  Result<void> Sort() {
    const SubtitleSet all = SubtitleSet::All();
    ToolResult sorted = SortPackets(stream_, all);
    if (sorted.Edit.IsEmpty()) {
      return {};
    }
    const std::vector<std::size_t> places = PlacesInOrder();
    for (Mend& mend : fix_.Mends) {
      if (mend.Packet > 0) {
        mend.Packet = static_cast<std::int64_t>(places[static_cast<std::size_t>(mend.Packet - 1)]) + 1;
      }
    }
    std::vector<std::pair<std::size_t, std::size_t>> moved;  // from where to where
    sorted.Changed.ForEachIndex(places.size(),
                                [&](std::size_t index) { moved.emplace_back(places[index], index); });
    std::ranges::sort(moved);
    for (const auto& [to, from] : moved) {
      Note(MendKind::PutInOrder, to, static_cast<std::int64_t>(from) + 1);
    }
    return Apply(std::move(sorted.Edit));
  }

  /// Where SortPackets puts each packet.
  [[nodiscard]] std::vector<std::size_t> PlacesInOrder() const {
    std::vector<std::size_t> good;
    std::vector<std::size_t> places(stream_.PacketOffset.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
      places[i] = i;
      if (FaultOf(PacketOf(stream_, i)) == PacketFault::None) {
        good.push_back(i);
      }
    }
    std::vector<std::size_t> ordered = good;
    std::ranges::stable_sort(ordered, {}, [&](std::size_t index) { return stream_.StartTime[index]; });
    for (std::size_t i = 0; i < good.size(); ++i) {
      places[ordered[i]] = good[i];
    }
    return places;
  }

  /// Applies what SetDisplayEnds found to do, and notes it.
  Result<void> SetEnds(ToolResult result, MendKind kind) {
    std::vector<std::pair<std::size_t, std::int16_t>> before;
    result.Changed.ForEachIndex(stream_.PacketOffset.size(), [&](std::size_t index) {
      before.emplace_back(index, ControlOf(index).Delay);
    });
    Result<void> applied = Apply(std::move(result.Edit));
    for (const auto& [index, delay] : before) {
      Note(kind, index, std::bit_cast<std::uint16_t>(delay),
           std::bit_cast<std::uint16_t>(ControlOf(index).Delay));
    }
    return applied;
  }

  /// Most streams have none, and are not walked for it.
  Result<void> SetEndsOf(const SubtitleSet& only, const EndOptions& options, MendKind kind) {
    return only.IsEmpty() ? Result<void>() : SetEnds(SetDisplayEnds(stream_, only, options), kind);
  }

  Result<void> CutEnds(const StreamSurvey& survey) {
    return SetEndsOf(With(survey, {Code::Overlap}), {.NoOverlap = true}, MendKind::CutEnd);
  }

  Result<void> AddEnds(const StreamSurvey& survey) {
    return SetEndsOf(With(survey, {Code::NoEnd}), {.Fill = true}, MendKind::AddedEnd);
  }

  /// Where the last sequence has a delay, and no command stops the display then.
  Result<void> AddStops(const StreamSurvey& survey) {
    ToolResult all;
    With(survey, {Code::MissingStop}).ForEachIndex(stream_.PacketOffset.size(), [&](std::size_t index) {
      const std::int64_t shown = ControlOf(index).Delay * TicksPerDelayUnit;
      if (shown > 0) {
        Append(SetDisplayEnds(stream_, SubtitleSet::Of(static_cast<std::int64_t>(index) + 1),
                              {.Fill = true, .Longest = shown}),
               all);
      }
    });
    return SetEnds(std::move(all), MendKind::AddedEnd);
  }

  /// `one` is of a subtitle after those of `all`.
  static void Append(const ToolResult& one, ToolResult& all) {
    std::size_t bytes = 0;
    for (const StreamEdit::Place& place : one.Edit.Places) {
      all.Edit.Replace(place.Offset, place.Removed, std::span(one.Edit.Bytes).subspan(bytes, place.Inserted));
      bytes += place.Inserted;
    }
    all.Edit.Reindexes = true;
    for (const SubtitleRange& range : one.Changed.Ranges()) {
      all.Changed.Append(range.First);
    }
  }

  Result<void> CutPlayerEnds(const StreamSurvey& survey) {
    StreamEdit edit;
    edit.Reindexes = true;
    With(survey, {Code::ShortGap}).ForEachIndex(stream_.PacketOffset.size(), [&](std::size_t index) {
      const auto toNext = TicksToNext(stream_, index);
      const IndexedPacket packet = PacketOf(stream_, index);
      StopDelay delay;
      ControlWalk walk;
      const bool isSound = WalkPacket(packet, delay, walk) == PacketFault::None;
      if (!toNext || !isSound || !delay.Position() || *toNext < MinPlayerGap + TicksPerPlayerDelayUnit) {
        return;
      }
      const auto units = static_cast<std::uint16_t>((*toNext - MinPlayerGap) / TicksPerPlayerDelayUnit);
      const std::size_t at = packet.FileOffset(*delay.Position());
      const std::array<std::uint8_t, 2> fresh = {static_cast<std::uint8_t>(units >> 8U),
                                                 static_cast<std::uint8_t>(units)};
      Note(MendKind::CutEnd, index, stream_.RawBytes[at] << 8U | stream_.RawBytes[at + 1], units);
      edit.Replace(at, fresh.size(), fresh);
    });
    return Apply(std::move(edit));
  }

  Result<void> MoveAreas(const StreamSurvey& survey) {
    ToolResult all;
    With(survey, {Code::AreaOutsideFrame, Code::OutsideSafeFrame})
        .ForEachIndex(stream_.PacketOffset.size(), [&](std::size_t index) {
          const SpuControl control = ControlOf(index);
          const MoveOptions step = StepIntoFrame(control);
          const ToolResult moved =
              MoveArea(stream_, SubtitleSet::Of(static_cast<std::int64_t>(index) + 1), step);
          if (!moved.Edit.IsEmpty() && Moves(index, control, moved.Edit, step)) {
            Note(MendKind::MovedArea, index, step.X, step.Y);
            Append(moved, all);
          }
        });
    return Apply(std::move(all.Edit));
  }

  /// Whether the edit, of this packet alone, takes its area where it is to go. In damaged units another
  /// command may name the area that counts.
  [[nodiscard]] bool Moves(std::size_t index, const SpuControl& control, const StreamEdit& edit,
                           const MoveOptions& step) const {
    StreamEdit inUnit{.Places = {}, .Bytes = edit.Bytes, .Reindexes = false};
    for (EditPlace place : edit.Places) {
      place.Offset -= static_cast<std::uint32_t>(stream_.PacketOffset[index]) + UnitStart;
      inUnit.Places.Add(place);
    }
    std::vector<std::uint8_t> unit;
    CopyUnit(stream_, index, unit);
    const bool isApplied = ApplyEdit(unit, inUnit).IsOk();
    const SpuControl moved = DecodeControl(unit, stream_.ControlOffset[index]);
    return isApplied && moved.X1 == control.X1 + step.X && moved.X2 == control.X2 + step.X &&
           moved.Y1 == control.Y1 + step.Y && moved.Y2 == control.Y2 + step.Y;
  }

  /// No step where the area does not fit.
  [[nodiscard]] MoveOptions StepIntoFrame(const SpuControl& control) const {
    MoveOptions step{.FrameLines = options_.FrameLines};
    const auto columns = StepInto(control.X1, control.X2, 0, LastColumn);
    auto lines = options_.Profile == CheckProfile::Player
                     ? LinesInto(control, FirstSafeLine, LastSafeLine(options_.FrameLines))
                     : std::nullopt;
    if (!lines) {
      lines = LinesInto(control, 0, options_.FrameLines - 1);
    }
    step.X = columns && lines ? *columns : 0;
    step.Y = columns && lines ? *lines : 0;
    return step;
  }

  CheckOptions options_;
  SupStream stream_;
  StreamFix fix_;
};

}  // namespace

Result<StreamFix> FixStream(std::span<const std::uint8_t> file, const CheckOptions& options) {
  Fixer fixer(options);
  const Result<void> done = fixer.Run(file);
  return done ? Result<StreamFix>(fixer.Finish()) : done.Why();
}

}  // namespace quillmark
