#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "palette/Colour.h"
#include "render/MergedPicture.h"
#include "render/SubtitleDescription.h"
#include "sup/CodeAssignment.h"
#include "sup/SpuControl.h"
#include "sup/SupStream.h"

namespace quillmark {

/// The offsets that there are, in lines.
inline constexpr int MinYOffset = -32768;
inline constexpr int MaxYOffset = 32767;

struct MergeSettings {
  DvdPalette Palette{};
  int YOffset = 0;  ///< lines added to every secondary picture's vertical position
  int FrameHeight = 576;
  /// Which code of the merged units each code of the secondary pictures becomes. The primary's codes stay.
  CodeMap SecondaryCodes = SameCodes;
  /// Palette entries and opacities of the merged units' codes; one that has none keeps the primary's.
  ChosenNibbles Colours = {};
  ChosenNibbles Contrasts = {};
};

/// The primary's control data with the palette entries and opacities that its merged unit gets.
[[nodiscard]] SpuControl WithMergedCodes(SpuControl primary, const MergeSettings& settings);

/// What came of a primary subtitle in the merged stream.
enum class MergeOutcome : std::uint8_t {
  Encoded,
  Skipped,           ///< there is no secondary subtitle for it
  InvalidPrimary,    ///< its control data cannot be shown
  InvalidSecondary,  ///< that of the subtitle to lay over it cannot
  TooLarge,          ///< the unit does not fit its 16-bit size field
};

/// Reads the two subtitles of each merged unit out of their streams, which must outlive it. Memory is reused
/// from one to the next.
class MergedInputReader {
 public:
  MergedInputReader(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings)
      : primary_(primary), secondary_(secondary), settings_(settings) {}

  /// Finds the secondary subtitle for primary subtitle `index` (from 0) and reads both. Encoded when both can
  /// be laid over each other; never TooLarge.
  [[nodiscard]] MergeOutcome Read(std::size_t index);

  /// The index of the secondary subtitle, unless the last one was Skipped.
  [[nodiscard]] std::size_t Secondary() const { return over_; }
  /// What either unit says, complete or not, unless the last one was Skipped.
  [[nodiscard]] const SpuControl& PrimaryControl() const { return primaryControl_; }
  [[nodiscard]] const SpuControl& SecondaryControl() const { return secondaryControl_; }
  /// Of the primary subtitle, if it was neither Skipped nor InvalidPrimary.
  [[nodiscard]] const SubtitleDescription& Description() const { return description_; }
  /// The primary's control data with the merged unit's palette entries and opacities, under the same
  /// condition.
  [[nodiscard]] const SpuControl& MergedCodes() const { return codes_; }
  /// What is to be composed, if the last Read answered Encoded; valid until the next one.
  [[nodiscard]] const MergedInput& Input() const { return input_; }

 private:
  const SupStream& primary_;
  const SupStream& secondary_;
  MergeSettings settings_;
  std::vector<std::uint8_t> primaryUnit_;
  std::vector<std::uint8_t> secondaryUnit_;
  std::size_t over_ = 0;
  SpuControl primaryControl_;
  SpuControl secondaryControl_;
  SubtitleDescription description_;
  SpuControl codes_;
  MergedInput input_;
};

}  // namespace quillmark
