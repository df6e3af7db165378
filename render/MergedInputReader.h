#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "palette/Colour.h"
#include "render/MergedPicture.h"
#include "render/SplitPlan.h"
#include "render/SubtitleDescription.h"
#include "sup/CodeAssignment.h"
#include "sup/MergedPacket.h"
#include "sup/SpuControl.h"
#include "sup/SupStream.h"

namespace quillmark {

/// The offsets that there are, in lines.
inline constexpr int MinYOffset = -32768;
inline constexpr int MaxYOffset = 32767;

/// Which packets a merged stream has.
enum class MergeMode : std::uint8_t {
  Pairs,  ///< one for each primary subtitle, with the secondary one that overlaps it most laid over it
  Split,  ///< the fewest that show just what both streams show, and when: the first alone, both, the second
};

struct MergeSettings {
  DvdPalette Palette{};
  int YOffset = 0;  ///< lines added to every secondary picture's vertical position
  int FrameHeight = 576;
  /// Which code of the merged units each code of the secondary pictures becomes. The primary's codes stay.
  CodeMap SecondaryCodes = SameCodes;
  /// Palette entries and opacities of the merged units' codes; one that has none keeps the primary's.
  ChosenNibbles Colours = {};
  ChosenNibbles Contrasts = {};
  MergeMode Mode = MergeMode::Pairs;
  std::int64_t JoinTicks = 0;  ///< split: gaps of less, in 90 kHz ticks, are closed; 0 to MaxJoin

  bool operator==(const MergeSettings&) const = default;
};

/// The primary's control data with the palette entries and opacities that its merged unit gets.
[[nodiscard]] SpuControl WithMergedCodes(SpuControl primary, const MergeSettings& settings);

/// A whole unit, from its size field on, and what it says.
struct UnitWithControl {
  std::span<const std::uint8_t> Bytes;
  const SpuControl& Control;
};

/// The two as the settings lay them over each other, in the palette entries and opacities of `codes`.
[[nodiscard]] MergedInput MakeMergedInput(const UnitWithControl& primary, const UnitWithControl& secondary,
                                          const SpuControl& codes, const MergeSettings& settings);

/// What came of a packet of the merged stream.
enum class MergeOutcome : std::uint8_t {
  Encoded,
  Skipped,           ///< there is none: no secondary subtitle is there for the primary one
  InvalidPrimary,    ///< its control data cannot be shown
  InvalidSecondary,  ///< that of the subtitle to lay over it cannot
  TooLarge,          ///< the unit does not fit its 16-bit size field
};

/// Reads the subtitles of each merged unit out of their streams, which must outlive it: two, or in a split
/// merge one or two. Memory is reused from one to the next.
class MergedInputReader {
 public:
  /// `plan`: of the same streams and settings, made as far as it is, to be shared with others.
  MergedInputReader(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings,
                    std::shared_ptr<SplitPlan> plan = nullptr);

  /// Takes a step of what a split merge has to know before anything is read; false once nothing is left to be
  /// known. Read takes the steps that are left.
  bool Prepare() { return plan_ && plan_->Step(); }
  /// How many packets there are to be read: in pairs one for each primary subtitle, of which some may be
  /// Skipped. 0 for a split merge that is not prepared.
  [[nodiscard]] std::size_t Count() const;

  /// Finds the subtitles of packet `index` (from 0), in pairs that of the primary subtitle of this index, and
  /// reads them. Encoded when they can be composed; never TooLarge.
  [[nodiscard]] MergeOutcome Read(std::size_t index);
  /// Reads the subtitles of this packet of a split merge, and needs no plan for it.
  [[nodiscard]] MergeOutcome ReadUnit(const DisplayInterval& unit);

  // Unless the last one was Skipped:
  /// Of pairs both; the index of one that is not there is 0.
  [[nodiscard]] bool HasPrimary() const { return shown_.First.has_value(); }
  [[nodiscard]] bool HasSecondary() const { return shown_.Second.has_value(); }
  [[nodiscard]] std::size_t Primary() const { return shown_.First.value_or(0); }
  [[nodiscard]] std::size_t Secondary() const { return shown_.Second.value_or(0); }
  /// Either subtitle's unit, whole, from its size field on; nothing of one that is not there.
  [[nodiscard]] std::span<const std::uint8_t> PrimaryUnit() const { return primaryBytes_; }
  [[nodiscard]] std::span<const std::uint8_t> SecondaryUnit() const { return secondaryBytes_; }
  /// Of a split merge: the packet as it is planned.
  [[nodiscard]] const DisplayInterval& Planned() const { return shown_; }
  /// The packet's time, in 90 kHz ticks.
  [[nodiscard]] std::int64_t StartTicks() const;
  /// How long both are shown together, in 90 kHz ticks; 0 or less where they are not.
  [[nodiscard]] std::int64_t OverlapTicks() const;
  /// What either unit says, complete or not; nothing of one that is not there.
  [[nodiscard]] const SpuControl& PrimaryControl() const { return primaryControl_; }
  [[nodiscard]] const SpuControl& SecondaryControl() const { return secondaryControl_; }

  /// Not where it was Skipped, InvalidPrimary, or InvalidSecondary of a unit without a primary subtitle.
  [[nodiscard]] bool IsDescribed() const { return isDescribed_; }
  // Where it is described:
  /// Of the primary subtitle, or of the secondary one that is alone. In a split merge the times are the
  /// unit's.
  [[nodiscard]] const SubtitleDescription& Description() const { return description_; }
  /// The merged unit's palette entries and opacities in control data that is the primary's for the rest.
  [[nodiscard]] const SpuControl& MergedCodes() const { return codes_; }
  /// What the merged unit says, and its packet's time.
  [[nodiscard]] MergedControl Control() const;
  [[nodiscard]] TimeField Time() const;

  /// What is to be composed, if the last Read answered Encoded; valid until the next one.
  [[nodiscard]] const MergedInput& Input() const { return input_; }

 private:
  [[nodiscard]] bool Find(std::size_t index);
  [[nodiscard]] MergeOutcome ReadFound();
  void Describe(const SubtitleDescription& subtitle);

  const SupStream& primary_;
  const SupStream& secondary_;
  MergeSettings settings_;
  std::vector<std::uint8_t> primaryUnit_;
  std::vector<std::uint8_t> secondaryUnit_;
  std::span<const std::uint8_t> primaryBytes_;
  std::span<const std::uint8_t> secondaryBytes_;
  std::shared_ptr<SplitPlan> plan_;         // of a split merge alone
  DisplayInterval shown_;                   // its times are those of a split merge alone
  std::optional<SpuControl> aloneControl_;  // has the codes of packets without a primary subtitle
  SpuControl primaryControl_;
  SpuControl secondaryControl_;
  bool isDescribed_ = false;
  SubtitleDescription description_;
  SpuControl codes_;
  MergedInput input_;
};

}  // namespace quillmark
