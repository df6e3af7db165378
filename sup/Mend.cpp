#include "sup/Mend.h"

#include "base/Words.h"

namespace quillmark {

std::string_view MendName(MendKind kind) {
  switch (kind) {
    case MendKind::DroppedBytes:
      return "dropped_bytes";
    case MendKind::CorrectedSize:
      return "corrected_size";
    case MendKind::AddedEndMark:
      return "added_end_mark";
    case MendKind::ClosedSequences:
      return "closed_sequences";
    case MendKind::MadeEven:
      return "made_even";
    case MendKind::PutInOrder:
      return "put_in_order";
    case MendKind::AddedEnd:
      return "added_end";
    case MendKind::CutEnd:
      return "cut_end";
    case MendKind::MovedArea:
      break;
  }
  return "moved_area";
}

std::string MendText(const Mend& mend) {
  const std::string first = std::to_string(mend.Numbers[0]);
  const std::string second = std::to_string(mend.Numbers[1]);
  switch (mend.Kind) {
    case MendKind::DroppedBytes:
      return Words::Tr("%1 bytes at offset %2 are no packet and were left out", {second, first});
    case MendKind::CorrectedSize:
      return Words::Tr("the unit's size is %1, not %2", {second, first});
    case MendKind::AddedEndMark:
      return Words::Tr("a control sequence got its end mark 0xFF");
    case MendKind::ClosedSequences:
      return Words::Tr("the last control sequence points to itself now, not to %1", {first});
    case MendKind::MadeEven:
      return Words::Tr("the unit of %1 bytes got one more", {first});
    case MendKind::PutInOrder:
      return Words::Tr("it was put in the order of starts; it was packet %1", {first});
    case MendKind::AddedEnd:
      return Words::Tr("it got an end, a delay of %1", {second});
    case MendKind::CutEnd:
      return Words::Tr("its end came after the next start; its delay is %1, not %2", {second, first});
    case MendKind::MovedArea:
      break;
  }
  return Words::Tr("its display area was moved into the frame, %1 pixels to the right and %2 lines down",
                   {first, second});
}

}  // namespace quillmark
