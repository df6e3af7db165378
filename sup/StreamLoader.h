#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <vector>

#include "base/Result.h"
#include "sup/SupStream.h"

namespace quillmark {

/// Largest file that is read, in bytes: 2 GiB less room for one packet, so that every offset of a file, and
/// those that a cut-off last packet names after its end, fit the index's signed 32-bit numbers.
inline constexpr std::uintmax_t MaxStreamLength = 0x7FFE0000;

/// A whole file, with room for the zero byte that follows it in RawBytes.
[[nodiscard]] Result<std::vector<std::uint8_t>> ReadStreamFile(const std::filesystem::path& path);

/// What the walk does after a first packet whose unit is invalid.
enum class InvalidFirst : std::uint8_t {
  EndsTheWalk,  ///< as the window has it
  IsPassed,     ///< it is indexed as any other
};

/// A file that was read, with as much of an index as it has.
struct LoadedStream {
  SupStream Stream;
  /// No "SP" stands where a packet should start: the file is no stream, and Stream has the packets before
  /// that place only. A stream that was open before is to stay; nothing of it was touched.
  bool LostSignature = false;
  /// There is a first unit, and it is invalid: the first subtitle cannot be shown.
  bool FirstIsInvalid = false;
};

/// Reads the SUP file `path` and indexes it; a Failure where it cannot be read or is too large.
///
/// The walk: a packet starts while at least 14 bytes are left; it is "SP", a 64-bit little-endian time in
/// 90 kHz ticks, the unit's big-endian 16-bit size and control offset, and size - 4 bytes. The next packet
/// follows size + 10 bytes on, but never inside the 14 header bytes. A packet longer than the file has zeros
/// in place of what is missing; a size of 0x8000 or more makes an empty, invalid unit, and the walk goes on
/// after it as far as the unsigned size says.
///
/// A subtitle without a delay ends where the next one starts; the last one keeps 0.
///
/// Kept oddity: a first packet that ends the walk is indexed all the same, and its PacketOffset is the file's
/// length. FirstUnit gives its unit.
[[nodiscard]] Result<LoadedStream> LoadPrimaryStream(const std::filesystem::path& path,
                                                     InvalidFirst invalidFirst = InvalidFirst::EndsTheWalk);

/// The same of bytes already in memory, which are taken over; a Failure where they are too many.
[[nodiscard]] Result<LoadedStream> IndexPrimaryStream(std::vector<std::uint8_t> file,
                                                      InvalidFirst invalidFirst = InvalidFirst::EndsTheWalk);

/// As LoadPrimaryStream, for what needs the index and the statistics alone: the bytes are not kept, and the
/// stream holds no subtitle.
[[nodiscard]] Result<LoadedStream> IndexStreamFile(const std::filesystem::path& path,
                                                   InvalidFirst invalidFirst = InvalidFirst::EndsTheWalk);

/// The index and the statistics of a file that is held elsewhere. The stream's own bytes and its path are
/// left empty, so it holds no subtitle until RawBytes is given the file and the zero byte after it. A Failure
/// where a packet lacks its signature.
[[nodiscard]] Result<SupStream> IndexStream(std::span<const std::uint8_t> file,
                                            InvalidFirst invalidFirst = InvalidFirst::EndsTheWalk);

/// Loads `path` as the stream that is laid over `primary`. As LoadPrimaryStream, but every subtitle ends
/// where the next one starts, whatever its delay, and the last one 10000 ticks after the later of the two
/// streams' last starts.
[[nodiscard]] Result<LoadedStream> LoadSecondaryStream(const std::filesystem::path& path,
                                                       const SupStream& primary);

/// The same of bytes already in memory, which are taken over; a Failure where they are too many.
[[nodiscard]] Result<LoadedStream> IndexSecondaryStream(std::vector<std::uint8_t> file,
                                                        const SupStream& primary);

}  // namespace quillmark
