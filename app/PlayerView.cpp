#include "app/PlayerView.h"

#include <algorithm>
#include <utility>

#include "app/DisplayFrame.h"
#include "app/Document.h"
#include "app/FrameInspector.h"
#include "app/PlayedSubtitle.h"
#include "app/PlayerBar.h"
#include "sup/SpuCommand.h"

namespace quillmark {
namespace {

/// Puts the codes of a choice where setting it for the subtitle would write them.
void WriteChoice(const CodeChoice& choice, const SpuControl& control, std::vector<std::uint8_t>& unit) {
  const auto write = [&unit](std::int32_t position, const CodeNibbles& codes) {
    const CodeArguments bytes = PackCodes(codes);
    if (position >= 0 && static_cast<std::size_t>(position) + bytes.size() <= unit.size()) {
      std::ranges::copy(bytes, unit.begin() + position);
    }
  };
  write(control.ColourPos, choice.Colours);
  write(control.ContrastPos, choice.Contrasts);
}

}  // namespace

PlayerView::PlayerView(Document& document, DisplayFrame& frame, FrameInspector& inspector, PlayerBar& bar,
                       QObject* parent)
    : QObject(parent), document_(document), frame_(frame), inspector_(inspector), bar_(bar) {
  connect(&bar_, &PlayerBar::TimeChanged, this, &PlayerView::Draw);
  connect(&document_, &Document::NumberChanged, this, &PlayerView::FollowDocument);
  connect(&document_, &Document::CommandsChanged, this, &PlayerView::FollowDocument);
  connect(&document_, &Document::StreamChanged, this,
          [this](StreamChange what) { FollowStream(what == StreamChange::Stream); });
  FollowDocument();
}

PlayerView::~PlayerView() = default;

bool PlayerView::Show(std::span<const std::uint8_t> unit) {
  if (!bar_.IsOn() || document_.IsMerging()) {
    played_.reset();
    return false;
  }
  const std::int64_t number = document_.LastTried();
  // Of a stream that is being loaded there is this subtitle alone.
  const PlayedUnit played = document_.IsLoading() || number < 1
                                ? PlayedUnit()
                                : PlayedUnitOf(document_.Primary(), static_cast<std::size_t>(number - 1));
  const auto bytes = played.Bytes.empty() ? unit : played.Bytes;
  Take({bytes.begin(), bytes.end()}, played.ReplacedAt);
  return true;
}

void PlayerView::FollowDocument() {
  bar_.SetMerging(document_.IsMerging());
  bar_.SetAvailable(document_.HasSubtitle() && document_.Enabled().Editing && !document_.IsLoading());
  if (document_.IsMerging()) {
    bar_.SetOn(false);
  }
}

void PlayerView::FollowStream(bool isAnother) {
  number_ = isAnother ? 0 : number_;
  if (!played_ || !bar_.IsOn() || !document_.HasSubtitle() || document_.LastTried() < 1) {
    return;
  }
  const PlayedUnit played =
      PlayedUnitOf(document_.Primary(), static_cast<std::size_t>(document_.LastTried() - 1));
  if (!played.Bytes.empty()) {
    Take({played.Bytes.begin(), played.Bytes.end()}, played.ReplacedAt);
  }
}

void PlayerView::Take(std::vector<std::uint8_t> unit, std::optional<std::int64_t> replacedAt) {
  if (document_.IsPreview()) {
    WriteChoice(document_.Choice(), document_.Control(), unit);
  }
  played_ = std::make_shared<PlayedSubtitle>(std::move(unit), replacedAt);
  drawn_.reset();
  // Shown again it stays at its time.
  const std::int64_t number = document_.IsLoading() ? 0 : document_.LastTried();
  if (number == number_ && number != 0) {
    bar_.SetLength(played_->LengthMs());
  } else {
    number_ = number;
    bar_.Begin(played_->LengthMs());
    if (!played_->Damage().empty()) {
      emit Damaged(QString::fromStdString(DamageText(played_->Damage().front())));
    }
  }
  Draw();
}

void PlayerView::Draw() {
  if (!played_ || !bar_.IsOn()) {
    return;
  }
  const DisplayState* const state = played_->ShownAt(bar_.Time());
  if (drawn_ == state) {
    return;
  }
  drawn_ = state;
  FramePicture& frame = frame_.Picture();
  frame.TakeBack();
  if (state != nullptr) {
    cBitmap picture;
    played_->Draw(*state, document_.Palette(), QSize(FrameWidth, FrameHeight576), picture);
    if (picture.Width() > 0) {
      const DisplayArea& place = *state->Area;
      frame.Draw(picture, place.X.First, place.Y.First, nullptr);
    }
  }
  inspector_.ShowPlayed(played_, state);
  frame_.Refresh();
}

}  // namespace quillmark
