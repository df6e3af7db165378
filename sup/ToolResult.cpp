#include "sup/ToolResult.h"

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
      return "data_after_control";
  }
  return "";
}

std::string LeftText(const LeftSubtitle& left) {
  const auto asItIs = [](std::string_view what) { return std::string(what) + "; it is left as it is"; };
  switch (left.Why) {
    case LeftReason::Damaged:
      return asItIs("is damaged (" + std::string(FaultText(left.Fault)) + ")");
    case LeftReason::NoColour:
      return asItIs("has no colour command");
    case LeftReason::NoContrast:
      return asItIs("has no contrast command");
    case LeftReason::NoColourNoContrast:
      return asItIs("has neither a colour nor a contrast command");
    case LeftReason::NoStart:
      return asItIs("has no start command");
    case LeftReason::NoArea:
      return asItIs("has no display area");
    case LeftReason::LeavesFrame:
      return asItIs("would leave the frame");
    case LeftReason::BadColourChange:
      return asItIs("has a damaged change of colours within the picture");
    case LeftReason::NoNext:
      return asItIs("is the last one, so that no next start says when it ends");
    case LeftReason::NoRoom:
      return asItIs("cannot end before the next one starts");
    case LeftReason::NotAsLong:
      return "is shown as long as the next one's start allows, which is shorter than asked for";
    case LeftReason::EndElsewhere:
      return asItIs("has an end that is not read from its stop command");
    case LeftReason::UnitFull:
      return asItIs("has no room for a stop command within " + std::to_string(MaxReadUnit) + " bytes");
    case LeftReason::NotMended:
      return "has a problem that cannot be mended";
    case LeftReason::DataAfterControl:
      return asItIs("has picture data behind its control sequences");
  }
  return "";
}

}  // namespace quillmark
