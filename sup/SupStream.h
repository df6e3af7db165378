#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "sup/SupFormat.h"
#include "sup/SupStreamStats.h"

namespace quillmark {

/// One loaded SUP file. Subtitle k (from 1) stands at index k - 1 of the seven arrays.
struct SupStream {
  std::string Path;             ///< UTF-8
  std::int32_t FileLength = 0;  ///< bytes, of the file that RawBytes holds
  /// The whole file and one more byte, which stays 0; empty while nothing was loaded.
  std::vector<std::uint8_t> RawBytes;
  std::int32_t Count = 0;  ///< packets indexed; -1 in a secondary stream whose indexing failed

  std::vector<std::int32_t> PacketOffset;         ///< file offset of "SP"
  std::vector<std::int64_t> StartTime;            ///< 90 kHz ticks
  std::vector<std::int64_t> EndTime;              ///< 90 kHz ticks; 0 = no end known
  std::vector<std::int16_t> SpuSize;              ///< size field; 0x8000 and more is negative
  std::vector<std::int16_t> ControlOffset;        ///< control offset field, counted from the unit's start
  std::vector<std::int32_t> ColourBytesOffset;    ///< file offset of the colour command's two argument bytes
  std::vector<std::int32_t> ContrastBytesOffset;  ///< the same of the contrast command; PacketOffset + 13
                                                  ///< where the unit lacks the command

  /// Largest EndTime of subtitles 0 .. i, for searching a stream by time. Secondary streams only.
  std::vector<std::int64_t> LatestEnd;

  SupStreamStats Stats;

  /// The rule by which the walk dealt with a first unit that is invalid, for making the index anew.
  bool EndsAtInvalidFirst = true;

  /// Whether subtitle `index` (from 0) can be read from RawBytes.
  [[nodiscard]] bool Holds(std::size_t index) const {
    return !RawBytes.empty() && index < PacketOffset.size();
  }
};

/// Takes the index and the statistics away and leaves the bytes, which can still be saved: for a stream that
/// is no longer the one that is shown.
void DropIndex(SupStream& stream);

/// Copies the unit of subtitle `index`, from its size field on, out of the stream's raw bytes into `unit`,
/// whose memory is reused. Bytes that the file does not have are 0; a subtitle that the stream does not hold
/// gives an empty unit.
void CopyUnit(const SupStream& stream, std::size_t index, std::vector<std::uint8_t>& unit);

/// What a conversion is told of one subtitle.
struct SubtitleUnit {
  std::span<const std::uint8_t> Bytes;  ///< the whole unit, from its size field on
  std::int16_t ControlOffset = 0;       ///< unit offset of the first control sequence
  std::int64_t StartTime = 0;           ///< 90 kHz ticks
};

/// Subtitle `index` with its unit copied into `buffer` as CopyUnit does; an empty, invalid one when the
/// stream does not hold it.
[[nodiscard]] SubtitleUnit UnitOf(const SupStream& stream, std::size_t index,
                                  std::vector<std::uint8_t>& buffer);

/// The same for laying one subtitle over another. Kept oddity: the unit's last byte is 0, whatever the file
/// has there.
[[nodiscard]] SubtitleUnit UnitForMerging(const SupStream& stream, std::size_t index,
                                          std::vector<std::uint8_t>& buffer);

/// The file's first subtitle as the loader saw it, also where it ended the walk and the stream's index leads
/// past the end of the file.
[[nodiscard]] SubtitleUnit FirstUnit(const SupStream& stream, std::vector<std::uint8_t>& buffer);

}  // namespace quillmark
