#include "sup/ControlSurvey.h"

namespace quillmark {
namespace {

class Surveyor {
 public:
  explicit Surveyor(ControlSurvey& survey) : survey_(survey) {}

  void Begin(const ControlSequence& sequence) {
    ++survey_.Sequences;
    if (sequence.Gap > 0 && survey_.FirstGap == 0) {
      survey_.FirstGap = sequence.Position;
    }
  }

  void Take(const ControlCommand& command) {
    survey_.IsForced = survey_.IsForced || command.Code == ForcedStart;
    if (command.Code > SetFieldOffsets && survey_.UnknownCommands++ == 0) {
      survey_.FirstUnknown = command.Position;
    }
  }

 private:
  ControlSurvey& survey_;
};

}  // namespace

ControlSurvey SurveyControl(std::span<const std::uint8_t> unit, std::uint16_t controlOffset) {
  ControlSurvey survey;
  Surveyor surveyor(survey);
  const ControlWalk walk = WalkControl(unit, controlOffset, surveyor);
  survey.End = walk.End;
  survey.EndPosition = walk.EndPosition;
  return survey;
}

}  // namespace quillmark
