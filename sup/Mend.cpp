#include "sup/Mend.h"

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
      return "moved_area";
  }
  return "";
}

std::string MendText(const Mend& mend) {
  const std::string first = std::to_string(mend.Numbers[0]);
  const std::string second = std::to_string(mend.Numbers[1]);
  switch (mend.Kind) {
    case MendKind::DroppedBytes:
      return second + " bytes at offset " + first + " are no packet and were left out";
    case MendKind::CorrectedSize:
      return "the unit's size is " + second + ", not " + first;
    case MendKind::AddedEndMark:
      return "a control sequence got its end mark 0xFF";
    case MendKind::ClosedSequences:
      return "the last control sequence points to itself now, not to " + first;
    case MendKind::MadeEven:
      return "the unit of " + first + " bytes got one more";
    case MendKind::PutInOrder:
      return "it was put in the order of starts; it was packet " + first;
    case MendKind::AddedEnd:
      return "it got an end, a delay of " + second;
    case MendKind::CutEnd:
      return "its end came after the next start; its delay is " + second + ", not " + first;
    case MendKind::MovedArea:
      return "its display area was moved into the frame, " + first + " pixels to the right and " + second +
             " lines down";
  }
  return "";
}

}  // namespace quillmark
