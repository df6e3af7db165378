#include "sup/StreamSurvey.h"

#include <algorithm>

namespace quillmark {

StreamSurvey::StreamSurvey(std::span<const std::uint8_t> file, const CheckOptions& options)
    : file_(file), options_(options), checker_(file, options) {}

void StreamSurvey::Reserve(std::size_t packets) {
  marks_.reserve(packets);
  offsets_.reserve(packets);
}

bool StreamSurvey::Step() {
  const bool goesOn = checker_.Step([this](const StreamProblem& problem) { Note(problem); });
  if (checker_.Packets() > offsets_.size()) {
    marks_.resize(checker_.Packets());
    offsets_.push_back(static_cast<std::uint32_t>(checker_.LastPacket().Offset));
    NoteTraits(checker_.LastPacket());
  }
  isComplete_ = !goesOn;
  return goesOn;
}

void StreamSurvey::Note(const StreamProblem& problem) {
  if (!problem.Packet) {
    damage_.push_back({.Before = static_cast<std::uint32_t>(offsets_.size()),
                       .Offset = static_cast<std::uint32_t>(problem.Offset),
                       .Number = static_cast<std::uint32_t>(problem.Numbers[0]),
                       .Code = problem.Code});
    return;
  }
  const auto index = static_cast<std::size_t>(*problem.Packet - 1);
  marks_.resize(std::max(marks_.size(), index + 1));
  withProblems_ += marks_[index].HasProblems() ? 0U : 1U;
  marks_[index].Add(problem.Code);
}

void StreamSurvey::NoteTraits(const CheckedPacket& packet) {
  PacketMarks& marks = marks_.back();
  if (packet.IsForced) {
    marks.Add(PacketTrait::Forced);
  }
  if (packet.IsAnimated) {
    marks.Add(PacketTrait::Animated);
  }
  if (!packet.Control.IsValid()) {
    marks.Add(PacketTrait::Invalid);
    return;
  }
  const Codes codes = {.Colours = packet.Control.Colour, .Contrasts = packet.Control.Contrast};
  if (!firstCodes_) {
    firstCodes_ = codes;
  } else if (codes != *firstCodes_) {
    marks.Add(PacketTrait::OtherCodes);
  }
}

std::optional<CheckedPacket> StreamSurvey::PacketAt(std::size_t index, const ProblemReporter& report) const {
  if (index >= offsets_.size()) {
    return std::nullopt;
  }
  const auto packet = ReadPacket(file_, offsets_[index], static_cast<std::int64_t>(index) + 1);
  return packet ? std::optional(CheckPacket(*packet, options_, report)) : std::nullopt;
}

std::vector<StreamProblem> StreamSurvey::ProblemsOf(std::size_t index) const {
  std::vector<StreamProblem> problems;
  const auto collect = [&](const StreamProblem& problem) {
    // Of the times of two packets, each has problems of its own.
    if (problem.Packet == static_cast<std::int64_t>(index) + 1) {
      problems.push_back(problem);
    }
  };
  const auto ignore = [](const StreamProblem& /*problem*/) {};
  const auto packet = PacketAt(index, collect);
  if (!packet) {
    return problems;
  }
  if (const auto earlier = index > 0 ? PacketAt(index - 1, ignore) : std::nullopt) {
    CheckTimes(*earlier, *packet, options_, collect);
  }
  if (const auto later = PacketAt(index + 1, ignore)) {
    CheckTimes(*packet, *later, options_, collect);
  }
  return problems;
}

StreamDamage StreamSurvey::Damage(std::size_t i) const {
  const CompactDamage& damage = damage_[i];
  return {
      .Before = damage.Before,
      .Problem = {
          .Offset = damage.Offset, .Packet = std::nullopt, .Code = damage.Code, .Numbers = {damage.Number}}};
}

std::optional<StreamProblem> StreamSurvey::DamageBefore(std::size_t index) const {
  const auto found = std::ranges::lower_bound(damage_, index, {}, &CompactDamage::Before);
  return found != damage_.end() && found->Before == index
             ? std::optional(Damage(static_cast<std::size_t>(found - damage_.begin())).Problem)
             : std::nullopt;
}

std::optional<std::size_t> StreamSurvey::NextWithProblems(std::size_t index) const {
  for (; index < marks_.size(); ++index) {
    if (marks_[index].HasProblems()) {
      return index;
    }
  }
  return std::nullopt;
}

std::optional<std::size_t> StreamSurvey::PrevWithProblems(std::size_t index) const {
  for (index = std::min(index, marks_.size()); index-- > 0;) {
    if (marks_[index].HasProblems()) {
      return index;
    }
  }
  return std::nullopt;
}

}  // namespace quillmark
