#include "render/MergedStreamEncoder.h"

#include "base/Words.h"

namespace quillmark {

MergedStreamEncoder::Outcome MergedStreamEncoder::Encode(std::size_t index, MergedCounts* counts) {
  packet_ = {};
  if (const Outcome read = reader_.Read(index); read != Outcome::Encoded) {
    return read;
  }
  if (counts != nullptr) {
    *counts = picture_.ComposeAndCount(reader_.Input());
  } else {
    picture_.Compose(reader_.Input());
  }
  const auto packet = encoder_.Encode(picture_.Cells(), reader_.Control(), reader_.Time());
  if (!packet) {
    return Outcome::TooLarge;
  }
  packet_ = *packet;
  return Outcome::Encoded;
}

std::string ReasonOf(MergeOutcome outcome) {
  switch (outcome) {
    case MergeOutcome::InvalidPrimary:
      return Words::Tr("its control data is not complete");
    case MergeOutcome::InvalidSecondary:
      return Words::Tr("the control data of the second stream's subtitle is not complete");
    case MergeOutcome::TooLarge:
      return Words::Tr("the merged picture does not fit a unit of 65535 bytes");
    case MergeOutcome::Encoded:
    case MergeOutcome::Skipped:
      break;
  }
  return "";
}

}  // namespace quillmark
