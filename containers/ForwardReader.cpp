#include "containers/ForwardReader.h"

namespace quillmark {

ForwardReader::ForwardReader(ByteSource& source, const Progress& progress)
    : source_(source),
      progress_(progress),
      piece_(static_cast<std::size_t>(std::min<std::uint64_t>(source.Length(), PieceSize + MaxPeek))) {}

void ForwardReader::Fill() {
  if (isAtEnd_) {
    return;
  }
  const std::uint64_t position = Position();
  if (progress_ && !progress_(position, source_.Length())) {
    isCancelled_ = true;
    Stop();
    return;
  }
  std::copy(piece_.begin() + static_cast<std::ptrdiff_t>(at_),
            piece_.begin() + static_cast<std::ptrdiff_t>(end_), piece_.begin());
  end_ -= at_;
  at_ = 0;
  pieceStart_ = position;
  const auto room = std::span(piece_).subspan(end_, std::min(PieceSize, piece_.size() - end_));
  const auto found = source_.ReadAt(pieceStart_ + end_, room);
  if (!found) {
    status_ = found.Why();
    Stop();
    return;
  }
  end_ += *found;
  isAtEnd_ = *found < room.size() || room.empty();
}

void ForwardReader::Stop() {
  isAtEnd_ = true;
  end_ = at_;
}

}  // namespace quillmark
