#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "base/Result.h"
#include "sup/SupStream.h"

namespace quillmark {

/// Shows the first subtitle while the rest is still to be indexed; false when it cannot be converted.
using FirstSubtitle = std::function<bool(const SubtitleUnit&)>;

struct LoadResult {
  enum class Outcome {
    Loaded,       ///< indexed, bytes replaced
    NoSignature,  ///< no "SP" where a packet should start: statistics and arrays hold what came before it,
                  ///< the bytes of the previous file are kept, no report
    Unreadable,   ///< not opened, not read or too large: nothing but `Reason` came of it
  };
  Outcome Result = Outcome::Loaded;
  std::string Reason;  ///< for Unreadable, in words for the user
};

/// Largest file that is read, in bytes: 2 GiB less room for one packet, so that every offset of a file, and
/// those that a cut-off last packet names behind its end, fit the index's signed 32-bit numbers.
inline constexpr std::uintmax_t MaxStreamLength = 0x7FFE0000;

/// A whole file, with room for the zero byte that follows it in RawBytes, or the reason why it cannot be
/// read.
struct FileBytes {
  std::vector<std::uint8_t> Bytes;
  std::string Reason;  ///< in words for the user; empty when it was read
};
[[nodiscard]] FileBytes ReadStreamFile(const std::filesystem::path& path);

/// Reads the SUP file `path` and indexes it into `stream`.
///
/// The walk: a packet starts while at least 14 bytes are left; it is "SP", a 64-bit little-endian time in
/// 90 kHz ticks, the unit's big-endian 16-bit size and control offset, and size - 4 bytes. The next packet
/// follows size + 10 bytes on, but never inside the 14 header bytes. A packet longer than the file has zeros
/// in place of what is missing; a size of 0x8000 or more makes an empty, invalid unit, and the walk goes on
/// behind it as far as the unsigned size says.
///
/// A subtitle without a delay ends where the next one starts; the last one keeps 0.
///
/// When `first` says that the first subtitle cannot be converted, indexing stops behind that packet. Kept
/// oddity: it is indexed all the same, and its PacketOffset is the file's length.
[[nodiscard]] LoadResult LoadPrimaryStream(const std::filesystem::path& path, const FirstSubtitle& first,
                                           SupStream& stream);

/// As LoadPrimaryStream, for what needs the index and the statistics alone: the bytes are not kept, and the
/// stream holds no subtitle.
[[nodiscard]] LoadResult IndexStreamFile(const std::filesystem::path& path, const FirstSubtitle& first,
                                         SupStream& stream);

/// Indexes `path` as the stream that is laid over `primary`. As LoadPrimaryStream, but every subtitle ends
/// where the next one starts, whatever its delay, and the last one 10000 ticks behind the later of the two
/// streams' last starts. `first` is told whether the first unit is valid. Count is -1 when it failed.
[[nodiscard]] LoadResult LoadSecondaryStream(const std::filesystem::path& path, const SupStream& primary,
                                             const std::function<void(bool)>& first, SupStream& secondary);

/// The index and the statistics of a file that is held elsewhere, as LoadPrimaryStream makes them of it; a
/// first unit that is invalid ends the walk. The stream's own bytes and its path are left empty, so it holds
/// no subtitle until RawBytes is given the file and the zero byte after it.
[[nodiscard]] Result<SupStream> IndexStream(std::span<const std::uint8_t> file);

/// Indexes bytes already in memory, as LoadPrimaryStream does with a file's; `file` is taken over.
[[nodiscard]] LoadResult IndexPrimaryStream(std::vector<std::uint8_t> file, const FirstSubtitle& first,
                                            SupStream& stream);

}  // namespace quillmark
