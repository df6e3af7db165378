#include "app/ShownPixels.h"

#include <algorithm>
#include <array>
#include <utility>

#include "app/CodeName.h"
#include "app/PlayedSubtitle.h"
#include "app/Ui.h"
#include "render/Composition.h"
#include "render/FieldDecoder.h"

namespace quillmark {
namespace {

QString HexDigit(int nibble) {
  return QString::number(nibble, 16).toUpper();
}

}  // namespace

void ShownPixels::Show(std::span<const std::uint8_t> unit, const SpuControl& control,
                       const CodeChoice& choice) {
  played_.reset();
  choice_ = choice;
  Set(0, unit, control, 0);
}

void ShownPixels::ShowOver(std::span<const std::uint8_t> unit, const SpuControl& control, int moved,
                           const CodeMap& codes) {
  Set(1, unit, control, moved);
  layers_[1].ShownAs = codes;
}

void ShownPixels::ShowPlayed(std::shared_ptr<PlayedSubtitle> played, const DisplayState* state) {
  count_ = 0;
  played_ = std::move(played);
  state_ = state;
}

void ShownPixels::Set(std::size_t layer, std::span<const std::uint8_t> unit, const SpuControl& control,
                      int moved) {
  Layer& set = layers_[layer];
  set.Unit.assign(unit.begin(), unit.end());
  set.Control = control;
  const bool isThere = control.X1 >= 0 && control.Width() >= 1 && control.Height() >= 1;
  set.Area = isThere ? QRect(control.X1, control.Y1 + moved, control.Width(), control.Height()) : QRect();
  set.IsDecoded = false;
  count_ = layer + 1;
}

std::optional<PixelFacts> ShownPixels::At(Layer& layer, QPoint pixel) const {
  if (!layer.Area.contains(pixel)) {
    return std::nullopt;
  }
  const auto width = static_cast<std::size_t>(layer.Area.width());
  if (!layer.IsDecoded) {
    std::array<std::uint8_t, 4> cells{};
    std::ranges::transform(layer.ShownAs, cells.begin(),
                           [](std::uint8_t code) { return static_cast<std::uint8_t>(code + 1); });
    // No further than the frame goes, and in whole pairs, as the fields have them.
    const int inFrame = FrameHeight576 - layer.Area.top();
    const int lines = std::clamp(inFrame + (inFrame & 1), 0, layer.Area.height());
    layer.Codes.assign(width * static_cast<std::size_t>(lines), 0);
    DecodeFields<std::uint8_t>(layer.Unit, layer.Codes, layer.Area.width(), lines,
                               layer.Control.TopFieldOffset, layer.Control.BottomFieldOffset, cells);
    layer.IsDecoded = true;
  }
  const QPoint inArea = pixel - layer.Area.topLeft();
  const std::size_t at = static_cast<std::size_t>(inArea.y()) * width + static_cast<std::size_t>(inArea.x());
  const std::uint8_t cell = at < layer.Codes.size() ? layer.Codes[at] : 0;
  if (cell == 0) {
    return PixelFacts{};
  }
  const std::size_t code = cell - 1U;
  return PixelFacts{
      .IsSecond = false, .Code = code, .Colour = choice_.Colours[code], .Contrast = choice_.Contrasts[code]};
}

/// What a player shows of the pixel just now.
std::optional<PixelFacts> ShownPixels::PlayedAt(QPoint pixel) const {
  if (!PlayedArea().contains(pixel)) {
    return std::nullopt;
  }
  const auto played = played_->PixelAt(*state_, pixel);
  return played ? PixelFacts{.IsSecond = false,
                             .Code = played->Code,
                             .Colour = played->Colour,
                             .Contrast = played->Contrast}
                : PixelFacts();
}

QRect ShownPixels::PlayedArea() const {
  if (!played_ || state_ == nullptr || !state_->Area) {
    return {};
  }
  const DisplayArea& area = *state_->Area;
  const bool isThere = area.Width() >= 1 && area.Height() >= 1;
  return isThere ? QRect(area.X.First, area.Y.First, area.Width(), area.Height()) : QRect();
}

std::optional<PixelFacts> ShownPixels::At(QPoint pixel) {
  if (played_) {
    return PlayedAt(pixel);
  }
  std::optional<PixelFacts> found = count_ > 0 ? At(layers_[0], pixel) : std::nullopt;
  if (count_ > 1) {
    auto over = At(layers_[1], pixel);
    if (over && (!found || over->Contrast > 0)) {
      over->IsSecond = true;
      found = over;
    }
  }
  return found;
}

QString ShownPixels::TextAt(QPoint pixel) {
  QString text = QStringLiteral("%1, %2").arg(pixel.x()).arg(pixel.y());
  const auto facts = At(pixel);
  if (!facts) {
    return text;
  }
  text +=
      facts->IsSecond ? QStringLiteral(": ") + Ui::Tr("2nd") + QStringLiteral(", ") : QStringLiteral(": ");
  if (!facts->Code) {
    return text + Ui::Tr("not coded");
  }
  return text +
         Ui::Tr("code %1 (%2), entry %3, opacity %4", {QString::number(*facts->Code), CodeName(*facts->Code),
                                                       HexDigit(facts->Colour), HexDigit(facts->Contrast)});
}

std::vector<QRect> ShownPixels::Areas() const {
  std::vector<QRect> areas;
  if (const QRect area = PlayedArea(); !area.isEmpty()) {
    areas.push_back(area);
  }
  for (std::size_t layer = 0; layer < count_; ++layer) {
    if (!layers_[layer].Area.isEmpty()) {
      areas.push_back(layers_[layer].Area);
    }
  }
  return areas;
}

}  // namespace quillmark
