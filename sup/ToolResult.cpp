#include "sup/ToolResult.h"

#include "base/Words.h"

namespace quillmark {

std::string_view LeftName(LeftReason reason) {
  switch (reason) {
    case LeftReason::Damaged:
      return "damaged";
    case LeftReason::NoColour:
      return "no_colour";
    case LeftReason::NoContrast:
      return "no_contrast";
    case LeftReason::NoColourNoContrast:
      return "no_colour_no_contrast";
    case LeftReason::NoStart:
      return "no_start";
    case LeftReason::NoArea:
      return "no_area";
    case LeftReason::LeavesFrame:
      return "leaves_frame";
    case LeftReason::BadColourChange:
      return "bad_colour_change";
    case LeftReason::NoNext:
      return "no_next";
    case LeftReason::NoRoom:
      return "no_room";
    case LeftReason::NotAsLong:
      return "not_as_long";
    case LeftReason::EndElsewhere:
      return "end_elsewhere";
    case LeftReason::UnitFull:
      return "unit_full";
    case LeftReason::NotMended:
      return "not_mended";
    case LeftReason::DataAfterControl:
      break;
  }
  return "data_after_control";
}

std::string LeftText(const LeftSubtitle& left) {
  switch (left.Why) {
    case LeftReason::Damaged:
      return Words::Tr("is damaged (%1); it is left as it is", {FaultText(left.Fault)});
    case LeftReason::NoColour:
      return Words::Tr("has no colour command; it is left as it is");
    case LeftReason::NoContrast:
      return Words::Tr("has no contrast command; it is left as it is");
    case LeftReason::NoColourNoContrast:
      return Words::Tr("has neither a colour nor a contrast command; it is left as it is");
    case LeftReason::NoStart:
      return Words::Tr("has no start command; it is left as it is");
    case LeftReason::NoArea:
      return Words::Tr("has no display area; it is left as it is");
    case LeftReason::LeavesFrame:
      return Words::Tr("would leave the frame; it is left as it is");
    case LeftReason::BadColourChange:
      return Words::Tr("has a damaged change of colours within the picture; it is left as it is");
    case LeftReason::NoNext:
      return Words::Tr("is the last one, so that no next start says when it ends; it is left as it is");
    case LeftReason::NoRoom:
      return Words::Tr("cannot end before the next one starts; it is left as it is");
    case LeftReason::NotAsLong:
      return Words::Tr("is shown as long as the next one's start allows, which is shorter than asked for");
    case LeftReason::EndElsewhere:
      return Words::Tr("has an end that is not read from its stop command; it is left as it is");
    case LeftReason::UnitFull:
      return Words::Tr("has no room for a stop command within %1 bytes; it is left as it is",
                       {std::to_string(MaxReadUnit)});
    case LeftReason::NotMended:
      return Words::Tr("has a problem that cannot be mended");
    case LeftReason::DataAfterControl:
      break;
  }
  return Words::Tr("has picture data behind its control sequences; it is left as it is");
}

}  // namespace quillmark
