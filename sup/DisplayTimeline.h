#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "sup/ColourChanges.h"
#include "sup/ControlSequences.h"
#include "sup/SpuCommand.h"
#include "sup/SupStream.h"

namespace quillmark {

/// Colours and contrasts from a column on, up to the next change of the line or to the line's end.
struct ColourChange {
  std::uint16_t Column = 0;  ///< of the frame
  CodeNibbles Colours = {};
  CodeNibbles Contrasts = {};

  bool operator==(const ColourChange&) const = default;
};

/// Lines of the frame, both ends included, with the changes of their colours; left of the first change they
/// have the colours of the whole picture.
struct ChangedLines {
  std::uint16_t First = 0;
  std::uint16_t Last = 0;
  std::uint8_t Count = 0;  ///< changes, at least 1; their columns ascend
  std::array<ColourChange, MaxColourChanges> Changes = {};

  [[nodiscard]] std::span<const ColourChange> All() const { return std::span(Changes).first(Count); }
};
/// In the order of their lines; no two have a line in common.
using ColourChanges = std::vector<ChangedLines>;

enum class DisplayedAs : std::uint8_t {
  Nothing,
  Subtitle,  ///< where subtitles are switched on
  Forced,    ///< also where they are off
};

/// Both ends included, in pixels of the frame.
struct DisplayArea {
  AreaRange X;
  AreaRange Y;

  /// Below 1 where the area is reversed.
  [[nodiscard]] int Width() const { return X.Last - X.First + 1; }
  [[nodiscard]] int Height() const { return Y.Last - Y.First + 1; }

  bool operator==(const DisplayArea& other) const {
    return X.First == other.X.First && X.Last == other.X.Last && Y.First == other.Y.First &&
           Y.Last == other.Y.Last;
  }
};

/// Unit offsets.
struct FieldStarts {
  std::uint16_t Top = 0;
  std::uint16_t Bottom = 0;

  bool operator==(const FieldStarts&) const = default;
};

/// What a player shows from a moment on. Until a sequence sets them there is no area and there are no fields,
/// and all contrasts are 0.
struct DisplayState {
  std::int64_t Time = 0;  ///< 90 kHz ticks after the packet's time
  DisplayedAs Shown = DisplayedAs::Nothing;
  CodeNibbles Colours = {};
  CodeNibbles Contrasts = {};
  std::optional<DisplayArea> Area = {};
  std::optional<FieldStarts> Fields = {};
  std::optional<std::size_t> Changes = {};  ///< index into the timeline's Changes

  [[nodiscard]] bool IsShown() const { return Shown != DisplayedAs::Nothing; }
};

/// Damage that the reading of a unit met; what stands before it is carried out.
struct DisplayDamage {
  /// How the walk from sequence to sequence ended; PointsToItself: it is a change of colours within the
  /// picture that is cut off.
  ControlEnding Ending = ControlEnding::PointsToItself;
  std::int32_t Position = 0;  ///< in the unit
};
/// In words for the user.
[[nodiscard]] std::string DamageText(const DisplayDamage& damage);

/// A unit as a player carries it out.
struct DisplayTimeline {
  /// One for each moment at which anything was carried out, in order.
  std::vector<DisplayState> States;
  std::vector<ColourChanges> Changes;
  /// When the display stops for good, in ticks after the packet's time; nullopt where no stop follows the
  /// last start.
  std::optional<std::int64_t> End;
  std::vector<DisplayDamage> Damage;

  /// What holds `ticks` after the packet's time; null before the first state.
  [[nodiscard]] const DisplayState* At(std::int64_t ticks) const;
  /// None where the state has none.
  [[nodiscard]] std::span<const ChangedLines> ChangesOf(const DisplayState& state) const;
};

/// Reads the control sequences of a unit as a player does: from one to the next by their pointers, forwards,
/// each carried out at its delay, unsigned and of 1024 ticks a unit, after the packet's time, or right after
/// the one before it where that is later. A sequence sets what it names, the rest stays. `unit` is a whole
/// unit, from its size field on, or as much of it as there is; `controlOffset` is that of its first sequence.
/// A command that the unit cuts short is not carried out. Changes within the picture are taken up to the
/// first group that is damaged: cut short, without changes or with more than MaxColourChanges, with lines or
/// columns that do not ascend.
[[nodiscard]] DisplayTimeline ReadDisplay(std::span<const std::uint8_t> unit, std::uint16_t controlOffset);

/// Whether more than one picture is shown one after another: another area, other fields, colours or
/// contrasts, changes of colours within the picture, or a second start after a stop.
[[nodiscard]] bool IsAnimated(std::span<const std::uint8_t> unit, std::uint16_t controlOffset);

/// A subtitle's unit where the stream has it, which must outlive the span.
struct PlayedUnit {
  std::span<const std::uint8_t> Bytes;  ///< from its size field on, as far as the file has it
  std::uint16_t ControlOffset = 0;
  /// Ticks after its own time at which the next subtitle takes its place. nullopt for the last one, and where
  /// the next one has an earlier time.
  std::optional<std::int64_t> ReplacedAt;
};
/// Of subtitle `index`, from 0; without bytes where the stream does not hold it.
[[nodiscard]] PlayedUnit PlayedUnitOf(const SupStream& stream, std::size_t index);

}  // namespace quillmark
