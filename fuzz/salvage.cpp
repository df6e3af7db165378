// Salvaging and checking a file of any bytes: nothing is lost or doubled, what was kept is a sound stream,
// and whatever the loader stumbles over is among the problems.

#include "sup/Salvage.h"

#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "fuzz/StreamMutation.h"
#include "sup/StreamCheck.h"
#include "sup/StreamLoader.h"
#include "sup/StreamSurvey.h"

namespace {

using namespace quillmark;

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

std::vector<std::uint8_t> Joined(const SalvagedStream& salvaged) {
  std::vector<std::uint8_t> joined;
  for (const auto span : salvaged.Kept) {
    joined.insert(joined.end(), span.begin(), span.end());
  }
  return joined;
}

void RequirePartition(std::span<const std::uint8_t> file, const SalvagedStream& salvaged) {
  auto kept = salvaged.Kept.begin();
  auto leftOut = salvaged.LeftOut.begin();
  std::size_t offset = 0;
  while (offset < file.size()) {
    if (kept != salvaged.Kept.end() && kept->data() == file.data() + offset) {
      offset += (kept++)->size();
    } else {
      Require(leftOut != salvaged.LeftOut.end() && leftOut->Offset == offset && leftOut->Length > 0);
      offset += (leftOut++)->Length;
    }
  }
  Require(offset == file.size() && kept == salvaged.Kept.end() && leftOut == salvaged.LeftOut.end());
}

void RequireSoundFraming(std::span<const std::uint8_t> stream) {
  CheckStream(stream, [](const StreamProblem& problem) {
    Require(problem.Packet.has_value() && problem.Code != StreamProblemCode::PastEnd &&
            problem.Code != StreamProblemCode::ControlUnfinished);
  });
}

/// What is read again of each packet is all that the check reported.
void RequireSurveyed(std::span<const std::uint8_t> file, const CheckOptions& options, std::size_t problems) {
  StreamSurvey survey(file, options);
  while (survey.Step()) {
  }
  std::size_t surveyed = survey.DamageCount();
  for (std::size_t i = 0; i < survey.Marks().size(); ++i) {
    const std::size_t found = survey.ProblemsOf(i).size();
    Require((found > 0) == survey.MarksOf(i).HasProblems());
    surveyed += found;
  }
  Require(surveyed == problems);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span file(data, size);
  const SalvagedStream salvaged = SalvageStream(file);
  RequirePartition(file, salvaged);

  const std::vector<std::uint8_t> joined = Joined(salvaged);
  const SalvagedStream again = SalvageStream(joined);
  Require(again.LeftOut.empty() && again.Packets == salvaged.Packets);
  RequireSoundFraming(joined);

  std::size_t problems = 0;
  CheckStream(file, [&](const StreamProblem&) { ++problems; });
  const CheckOptions players = {.Profile = CheckProfile::Player};
  std::size_t forPlayers = 0;
  CheckStream(
      file, [&](const StreamProblem&) { ++forPlayers; }, players);
  Require(forPlayers >= problems);
  // By one set of rules, so that there are more inputs.
  size % 2 == 0 ? RequireSurveyed(file, {}, problems) : RequireSurveyed(file, players, forPlayers);
  const auto loaded = IndexPrimaryStream({file.begin(), file.end()}, InvalidFirst::IsPassed);
  Require(loaded.IsOk());
  Require(problems > 0 || (!loaded->LostSignature && loaded->Stream.Stats.ParseErrors == 0));
  return 0;
}

QUILLMARK_MUTATOR(250, MutateStream)
