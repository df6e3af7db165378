#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "base/Progress.h"
#include "base/Result.h"
#include "containers/ByteSource.h"

namespace quillmark {

/// Goes through a source front to back in large reads, however long it is, and holds one piece of it at a
/// time.
class ForwardReader {
 public:
  /// Bytes that are read at once.
  static constexpr std::size_t PieceSize = std::size_t{128} << 10U;
  /// What can be looked at together: the longest packet of a program stream and the start code after it.
  static constexpr std::size_t MaxPeek = 6 + 0xFFFF + 4;

  /// Tells `progress` of each piece. All three must outlive it.
  ForwardReader(ByteSource& source, const Progress& progress);

  /// Of the next byte, from the source's start.
  [[nodiscard]] std::uint64_t Position() const { return pieceStart_ + at_; }

  /// The next bytes: `count` of them and maybe more, or all that are left. They live until the next call.
  /// None once the source failed or the progress ended it.
  [[nodiscard]] std::span<const std::uint8_t> Peek(std::size_t count) {
    if (end_ - at_ < count) {
      Fill();
    }
    return std::span<const std::uint8_t>(piece_).subspan(at_, end_ - at_);
  }
  /// Of bytes that were looked at.
  void Skip(std::size_t count) { at_ += std::min(count, end_ - at_); }

  [[nodiscard]] bool IsCancelled() const { return isCancelled_; }
  /// Why the source could be read no further; sound while it could.
  [[nodiscard]] const Result<void>& Status() const { return status_; }

 private:
  void Fill();
  void Stop();

  ByteSource& source_;
  const Progress& progress_;
  std::vector<std::uint8_t> piece_;
  std::uint64_t pieceStart_ = 0;
  std::size_t at_ = 0;  // invariant: at_ <= end_ <= piece_.size()
  std::size_t end_ = 0;
  bool isAtEnd_ = false;
  bool isCancelled_ = false;
  Result<void> status_;
};

}  // namespace quillmark
