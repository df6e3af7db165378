#include "sup/ControlSurvey.h"

#include <cstddef>
#include <optional>

#include "base/ByteReader.h"
#include "sup/SpuCommand.h"

namespace quillmark {
namespace {

using Ending = ControlSurvey::Ending;

std::int32_t PositionOf(const ByteReader& reader) {
  return static_cast<std::int32_t>(reader.Position());
}

/// The arguments of the change of colours start with their own length, which counts its two bytes.
bool SkipSizedArguments(ByteReader& reader) {
  const auto length = reader.U16be();
  return length && *length >= 2 && reader.Take(*length - 2U);
}

bool SkipArguments(ByteReader& reader, std::uint8_t command) {
  return command == ChangeColours ? SkipSizedArguments(reader)
                                  : reader.Take(static_cast<std::size_t>(ArgumentSize(command))).has_value();
}

void Note(std::uint8_t command, std::int32_t position, ControlSurvey& survey) {
  survey.IsForced = survey.IsForced || command == ForcedStart;
  if (command > SetFieldOffsets && command != EndOfSequence && survey.UnknownCommands++ == 0) {
    survey.FirstUnknown = position;
  }
}

/// Goes through one sequence's commands up to and with its end mark; how the survey ends when there is none.
std::optional<Ending> SkipCommands(ByteReader& reader, std::int32_t& commandsLeft, ControlSurvey& survey) {
  while (commandsLeft-- > 0) {
    const std::int32_t position = PositionOf(reader);
    const auto command = reader.U8();
    if (!command) {
      return Ending::NoEndMark;
    }
    Note(*command, position, survey);
    if (*command == EndOfSequence) {
      return std::nullopt;
    }
    if (!SkipArguments(reader, *command)) {
      return Ending::NoEndMark;
    }
  }
  return Ending::TooLong;
}

/// Moves to the sequence that `next` points to, after the one at `sequence`; how the survey ends otherwise.
std::optional<Ending> FollowPointer(ByteReader& reader, std::int32_t sequence, std::uint16_t next,
                                    ControlSurvey& survey) {
  const std::int32_t after = PositionOf(reader);
  if (next == sequence) {
    return Ending::PointsToItself;
  }
  if (next == 0) {
    return Ending::PointsNowhere;
  }
  if (next < after) {
    return Ending::PointsBackwards;
  }
  if (!reader.Seek(next)) {
    return Ending::PointsOutside;
  }
  if (next > after && survey.FirstGap == 0) {
    survey.FirstGap = next;
  }
  return std::nullopt;
}

}  // namespace

ControlSurvey SurveyControl(std::span<const std::uint8_t> unit, std::uint16_t controlOffset) {
  ControlSurvey survey;
  ByteReader reader(unit);
  std::int32_t commandsLeft = MaxSurveyedCommands;
  std::optional<Ending> end;
  if (!reader.Seek(controlOffset)) {
    end = Ending::PointsOutside;
  }
  while (!end) {
    survey.EndPosition = PositionOf(reader);
    const auto header = ReadSequenceHeader(reader);
    if (!header) {
      end = Ending::PointsOutside;
      break;
    }
    ++survey.Sequences;
    end = SkipCommands(reader, commandsLeft, survey);
    if (!end) {
      end = FollowPointer(reader, survey.EndPosition, header->Next, survey);
    }
  }
  survey.End = *end;
  return survey;
}

}  // namespace quillmark
