#include "app/Document.h"

#include <algorithm>
#include <utility>

#include "sup/ChooseSecondary.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// What the number is while the first merged subtitle is drawn, and the length of the primary stream that
/// leaves Next disabled after it. Kept oddity: it is the count of the swatches and one, left over from
/// disabling them.
constexpr int NumberAfterSwatches = 17;

}  // namespace

CodeChoice ChoiceOf(const SpuControl& control) {
  CodeChoice codes;
  for (std::size_t code = 0; code < 4; ++code) {
    codes.Colours[code] = static_cast<std::uint8_t>(control.Colour[code]);
    codes.Contrasts[code] = static_cast<std::uint8_t>(control.Contrast[code]);
  }
  return codes;
}

Document::Document(QObject* parent) : QObject(parent) {
  connect(&history_, &QUndoStack::indexChanged, this, &Document::CommandsChanged);
  connect(&history_, &QUndoStack::cleanChanged, this, &Document::CommandsChanged);
}

Document::~Document() {
  // The history tells of its steps as it lets them go; by then nobody may be left to show them.
  history_.blockSignals(true);
}

EnabledCommands Document::Enabled() const {
  if (busy_) {
    return {};
  }
  const bool editing = !merging_;
  const bool historyFits = editing && !lostIndex_;
  return {.Load = true,
          .Save = editing && everLoading_,
          .Editing = editing,
          .Change = editing && steps_.Change,
          .Prev = steps_.Prev,
          .Next = steps_.Next,
          .GoTo = steps_.GoTo,
          .Undo = historyFits && history_.canUndo(),
          .Redo = historyFits && history_.canRedo(),
          .Revert = editing && IsPreview(),
          .Reopen = primary_.Count == 0 && primary_.Holds(0),
          .Merging = merging_,
          .Report = primary_.Count > 0,
          .Tools = editing && !lostIndex_ && primary_.Count > 0,
          .List = primary_.Count > 0,
          .Help = true};
}

QString Document::NumberText() const {
  return failed_ ? QStringLiteral("?") : QString::number(number_);
}

void Document::SetNumber(std::int64_t number) {
  number_ = lastTried_ = number;
  failed_ = false;
  emit NumberChanged();
}

void Document::SetFailed() {
  failed_ = true;
  emit NumberChanged();
}

bool Document::Next() {
  const std::int64_t number = Number() + 1;
  if (!Show(number)) {
    return false;
  }
  SetNumber(number);
  steps_.Next = steps_.Next && number != primary_.Count;
  steps_.Prev = true;
  emit CommandsChanged();
  return true;
}

bool Document::Prev() {
  if (Number() <= 1) {
    return true;
  }
  const std::int64_t number = Number() - 1;
  if (!Show(number)) {
    return false;
  }
  SetNumber(number);
  steps_.Prev = steps_.Prev && number != 1;
  steps_.Next = true;
  emit CommandsChanged();
  return true;
}

bool Document::GoTo(std::int64_t number) {
  SetNumber(number - 1);
  const bool shown = Next();
  steps_.Next = number != primary_.Count;
  steps_.Prev = number != 1;
  emit CommandsChanged();
  return shown;
}

bool Document::Reset() {
  if (failed_) {
    SetNumber(1);
    return true;
  }
  return number_ == 0 || Show(number_);
}

bool Document::Show(std::int64_t number) {
  lastTried_ = number;
  const auto index = static_cast<std::size_t>(number - 1);
  const auto over = primary_.Holds(index) && merging_ && secondary_.Count >= 1
                        ? ChooseSecondary(primary_, index, secondary_)
                        : std::nullopt;
  return ShowPair(index, over, true);
}

bool Document::ShowPair(std::size_t index, std::optional<std::size_t> over, bool isNew) {
  if (!primary_.Holds(index)) {
    return false;
  }
  shownUnit_.reset();
  shownIndex_ = index;
  shownOver_ = over;
  if (!over) {
    return Convert(UnitOf(primary_, index, unit_), nullptr, isNew);
  }
  const SubtitleUnit secondary = UnitForMerging(secondary_, *over, secondaryUnit_);
  return Convert(UnitForMerging(primary_, index, unit_), &secondary, isNew);
}

bool Document::Convert(const SubtitleUnit& unit, const SubtitleUnit* over, bool isNew) {
  inert_ = true;
  const auto description = DescribeSubtitle(unit);
  if (!description) {
    return false;
  }
  TakeCodes(description->Control);
  ConvertedSubtitle converted{
      .Description = *description, .Unit = unit.Bytes, .Over = std::nullopt, .IsNew = isNew};
  if (over != nullptr) {
    converted.Over = {.Unit = over->Bytes, .Control = DecodeControl(over->Bytes, over->ControlOffset)};
    converted.Codes = WithMergedCodes(control_, SettingsOfMerge());
  }
  emit SubtitleShown(converted);
  return !converted.Over || converted.Over->Control.IsValid();
}

void Document::TakeCodes(const SpuControl& control) {
  control_ = control;
  choice_ = written_ = ChoiceOf(control_);
  colours_ = MakeCodeColours(palette_, control_);
  inert_ = false;
}

bool Document::ShowUnit(const DisplayInterval& unit, std::int64_t number) {
  const auto index = static_cast<std::size_t>(number - 1);
  if (!primary_.Holds(index)) {
    return false;
  }
  shownIndex_ = index;
  shownUnit_ = unit;
  const bool shown = ConvertUnit(unit, true);
  SetNumber(number);
  steps_.Next = number != primary_.Count;
  steps_.Prev = number != 1;
  emit CommandsChanged();
  return shown;
}

bool Document::ConvertUnit(const DisplayInterval& unit, bool isNew) {
  inert_ = true;
  MergedInputReader reader(primary_, secondary_, SettingsOfMerge());
  const MergeOutcome outcome = reader.ReadUnit(unit);
  if (!reader.IsDescribed()) {
    return false;
  }
  TakeCodes(reader.Description().Control);
  ConvertedSubtitle converted{.Description = reader.Description(),
                              .Unit = reader.PrimaryUnit(),
                              .Over = std::nullopt,
                              .IsOfSplit = true,
                              .Codes = reader.MergedCodes(),
                              .IsNew = isNew};
  if (reader.HasSecondary()) {
    converted.Over = {.Unit = reader.SecondaryUnit(), .Control = reader.SecondaryControl()};
  }
  emit SubtitleShown(converted);
  return outcome == MergeOutcome::Encoded;
}

void Document::Choose(const CodeChoice& choice) {
  choice_ = choice;
  if (!inert_) {
    Preview();
  }
  emit ChoiceChanged();
}

void Document::Preview() {
  const auto index = static_cast<std::size_t>(Number() - 1);
  if (!primary_.Holds(index)) {
    return;
  }
  for (std::size_t code = 0; code < 4; ++code) {
    colours_[code] = GetARGBColor(palette_[choice_.Colours[code]], choice_.Contrasts[code]);
  }
  emit PreviewShown(UnitOf(primary_, index, unit_).Bytes);
}

void Document::SetSupPath(const QString& path) {
  if (supPath_ != path) {
    supPath_ = path;
    emit SupPathChanged();
  }
}

void Document::BeginLoading() {
  if (loading_) {
    return;
  }
  loading_ = true;
  beforeLoading_ = {.EverLoading = everLoading_,
                    .PrimaryCount = primary_.Count,
                    .SecondaryCount = secondary_.Count,
                    .Merging = merging_,
                    .Codes = std::exchange(mergedCodes_, {}),
                    .Times = std::exchange(mergeTimes_, {}),
                    .Unit = std::exchange(shownUnit_, std::nullopt)};
  everLoading_ = true;
  primary_.Count = 0;
  secondary_.Count = 0;
  merging_ = false;
  emit CommandsChanged();
}

bool Document::ShowFirst(const SubtitleUnit& unit) {
  shownIndex_.reset();
  shownOver_.reset();
  return Convert(unit, nullptr, true);
}

void Document::TakePalette(const DvdPalette& palette) {
  palette_ = palette;
  emit PaletteChanged();
}

void Document::Open(SupStream stream, const std::string& language) {
  primary_ = std::move(stream);
  language_ = language;
  lostIndex_ = false;
  primary_.Path = supPath_.toStdString();
  if (primary_.PacketOffset.empty()) {
    SetNumber(0);
  }
  shownIndex_ = number_ == 1 ? std::optional<std::size_t>(0) : std::nullopt;
  history_.clear();
  steps_.Next = steps_.GoTo = number_ == 1 && primary_.Count >= 2;
  steps_.Prev = false;
  FinishLoading();
  emit Opened();
  emit StreamChanged(StreamChange::Stream);
  emit CommandsChanged();
}

void Document::FinishLoading() {
  loading_ = false;
  steps_.Change = !failed_ && number_ == 1;
}

void Document::EndLoading() {
  FinishLoading();
  emit StreamChanged(StreamChange::Stream);
  emit CommandsChanged();
}

void Document::AbandonLoading() {
  loading_ = false;
  everLoading_ = beforeLoading_.EverLoading;
  primary_.Count = beforeLoading_.PrimaryCount;
  secondary_.Count = beforeLoading_.SecondaryCount;
  merging_ = beforeLoading_.Merging;
  mergedCodes_ = beforeLoading_.Codes;
  mergeTimes_ = beforeLoading_.Times;
  shownUnit_ = beforeLoading_.Unit;
  emit CommandsChanged();
}

bool Document::Reopen() {
  primary_.Count = static_cast<std::int32_t>(primary_.PacketOffset.size());
  SetSupPath(QString::fromStdString(primary_.Path));
  emit StreamChanged(StreamChange::Stream);
  const bool shown = GoTo(std::clamp<std::int64_t>(Number(), 1, primary_.Count));
  AllowSteps();
  return shown;
}

void Document::AllowSteps() {
  const bool isCounted = failed_ || number_ != 0;
  steps_ = {.Prev = Number() > 1,
            .Next = isCounted && Number() < primary_.Count,
            .GoTo = primary_.Count >= 2,
            .Change = isCounted};
  emit CommandsChanged();
}

void Document::KeepStream() {
  if (!std::exchange(loading_, false) || !primary_.Holds(0)) {
    return;
  }
  primary_.Count = static_cast<std::int32_t>(primary_.PacketOffset.size());
  SetSupPath(QString::fromStdString(primary_.Path));
  steps_.Change = failed_ || number_ != 0;
  emit CommandsChanged();
}

void Document::LoseIndex() {
  loading_ = false;
  DropIndex(primary_);
  lostIndex_ = true;
  steps_ = {};
  emit CommandsChanged();
  emit StreamChanged(StreamChange::Stream);
}

void Document::SetFrameLines(int lines) {
  frameLines_ = lines;
  emit FrameLinesChanged();
}

bool Document::ReturnToFirst() {
  SetNumber(2);
  return Prev();
}

void Document::DropSecondary() {
  secondary_.Count = 0;
  emit MergeChanged();
}

void Document::BeginMerging(SupStream secondary) {
  secondary_ = std::move(secondary);
  mergedCodes_ = {};
  mergeTimes_ = {};
  merging_ = true;
  steps_.Change = false;
  emit CommandsChanged();
  emit MergeChanged();
}

void Document::SetYOffset(std::int16_t lines) {
  yOffset_ = lines;
  emit MergeChanged();
}

void Document::SetCodesOfMerge(const MergedCodes& codes) {
  mergedCodes_ = codes;
  emit MergeChanged();
}

void Document::SetTimesOfMerge(const MergeTimes& times) {
  mergeTimes_ = times;
  if (std::exchange(shownUnit_, std::nullopt)) {
    shownOver_ = ChooseSecondary(primary_, *shownIndex_, secondary_);
  }
  emit MergeChanged();
}

MergeSettings Document::SettingsOfMerge() const {
  return {.Palette = palette_,
          .YOffset = yOffset_,
          .FrameHeight = frameLines_,
          .SecondaryCodes = mergedCodes_.OfSecondary,
          .Colours = mergedCodes_.Colours,
          .Contrasts = mergedCodes_.Contrasts,
          .Mode = mergeTimes_.Mode,
          .JoinTicks = mergeTimes_.JoinMs * (TicksPerSecond / 1000)};
}

bool Document::LeaveMerging() {
  secondary_ = {};
  mergedCodes_ = {};
  mergeTimes_ = {};
  shownUnit_.reset();
  shownOver_.reset();
  merging_ = false;
  AllowSteps();
  emit MergeChanged();
  return Reset();
}

bool Document::ShowFirstMerged() {
  const bool shown = secondary_.Holds(0) && ShowPair(0, 0, true);
  if (shown) {
    SetNumber(NumberAfterSwatches);
    steps_.Next = steps_.Next && primary_.Count != NumberAfterSwatches;
    steps_.Prev = true;
    emit CommandsChanged();
  }
  return shown;
}

void Document::SetBusy(bool busy) {
  busy_ = busy;
  emit CommandsChanged();
}

void Document::ShowAgain() {
  if (shownUnit_) {
    (void)ConvertUnit(DisplayInterval(*shownUnit_), false);
  } else if (shownIndex_) {
    (void)ShowPair(*shownIndex_, shownOver_, false);
  }
}

}  // namespace quillmark
