// What holds for every tool on every stream, sound and damaged ones.

#include <gmock/gmock.h>
#include <random>

#include "recipe/Step.h"
#include "tests/support/AppliedEdit.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::PacketBuilder;

class Random {
 public:
  explicit Random(std::uint32_t seed) : engine_(seed) {}

  /// Both ends included.
  int Between(int low, int high) {
    return low + static_cast<int>(engine_() % static_cast<std::uint32_t>(high - low + 1));
  }
  bool OneIn(int count) { return Between(1, count) == 1; }

 private:
  std::mt19937 engine_;
};

/// One control sequence without a stop, or two or three; some with a gap, a colour change, no even size.
Bytes RandomUnit(Random& random) {
  const auto x = static_cast<unsigned>(random.Between(0, 700));
  const auto y = static_cast<unsigned>(random.Between(0, 560));
  Bytes first =
      test::Join({random.OneIn(4) ? Bytes() : Bytes{static_cast<std::uint8_t>(random.Between(0, 1))},
                  test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 0),
                  test::SetArea(x, x + 19, y, y + 15), test::SetFields(4, 6)});
  if (random.OneIn(5)) {
    first = test::Join({first, Bytes{0x07, 0x00, 0x10, 0x00, 0x64, 0x10, 0x6D, 0x00, 0xC8, 0x12, 0x34, 0xFF,
                                     0xFF, 0x0F, 0xFF, 0xFF, 0xFF}});
  }
  first.push_back(0xFF);
  const auto second = static_cast<unsigned>(8 + 4 + first.size());
  const auto delay = static_cast<unsigned>(random.OneIn(4) ? 0 : random.Between(1, 600));
  Bytes unit = {0x11, 0x00, 0x12, 0x00};
  if (random.OneIn(4)) {
    unit = test::Join({unit, test::Sequence(0, 8, {first})});
  } else {
    const unsigned gap = random.OneIn(8) ? 2 : 0;
    unit = test::Join({unit, test::Sequence(0, second + gap, {first}), Bytes(gap, 0),
                       test::Sequence(delay, second + gap, {test::StopDisplay, test::EndOfSequence})});
  }
  return random.OneIn(3) ? test::Join({unit, {0xFF}}) : unit;
}

/// A stream that loads: a packet's size is true, whatever else of it is not.
Bytes RandomFile(Random& random) {
  Bytes file;
  std::int64_t time = random.Between(0, 100000);
  for (int packets = random.Between(0, 12); packets > 0; --packets) {
    Bytes packet = PacketBuilder().Time(time).Unit(RandomUnit(random)).Build();
    if (random.OneIn(4)) {
      for (int flips = random.Between(1, 6); flips > 0; --flips) {
        packet[static_cast<std::size_t>(random.Between(12, static_cast<int>(packet.size()) - 1))] =
            static_cast<std::uint8_t>(random.Between(0, 255));
      }
    }
    file = test::Join({file, packet});
    time += random.Between(-20000, 500000);
  }
  if (random.OneIn(4) && file.size() > 20) {
    file.resize(file.size() - static_cast<std::size_t>(random.Between(1, 20)));
  } else if (random.OneIn(4)) {
    file.resize(file.size() + static_cast<std::size_t>(random.Between(1, 13)), 0x53);
  }
  return file;
}

std::string Number(int value) {
  return std::to_string(value);
}

StepText RandomStep(Random& random, std::int64_t count) {
  StepText step;
  switch (random.Between(0, 9)) {
    case 0:
      step = {"retime",
              {{"shift", Number(random.Between(-500, 2000)) + "." + Number(random.Between(0, 99))}}};
      break;
    case 1:
      step = {"retime", {{"scale", Number(random.Between(1, 2000)) + "/" + Number(random.Between(1, 2000))}}};
      break;
    case 2:
      step = {"move", {{"x", Number(random.Between(-300, 300))}, {"y", Number(random.Between(-300, 300))}}};
      break;
    case 3:
      step = {"move", {{"to-line", Number(random.Between(0, 575))}, {"clamp", "true"}}};
      break;
    case 4:
      step = {"force", {{"state", random.OneIn(2) ? "on" : "off"}}};
      break;
    case 5:
      step = {"ends", {{"fill", "true"}, {"no-overlap", "true"}, {"gap", Number(random.Between(0, 100))}}};
      break;
    case 6:
      step = {"ends", {{"shortest", Number(random.Between(0, 5000))}, {"no-overlap", "true"}}};
      break;
    case 7:
      step = {"sort", {}};
      break;
    case 8:
      step = {"assign", {{"colours", "12.4"}, {"opacities", "F..0"}}};
      break;
    default:
      step = {random.OneIn(2) ? "cut" : "keep", {}};
      break;
  }
  if (step.Tool == "cut" || step.Tool == "keep" || random.OneIn(3)) {
    const int first = random.Between(1, static_cast<int>(std::max<std::int64_t>(count, 1)));
    step.Options.emplace_back("only", Number(first) + (random.OneIn(2) ? "-" : ""));
  }
  return step;
}

/// The place of each byte of the file that a place of the edit names.
std::vector<bool> NamedBytes(const StreamEdit& edit, std::size_t length) {
  std::vector<bool> named(length, false);
  for (const StreamEdit::Place& place : edit.Places) {
    std::fill_n(named.begin() + place.Offset, place.Removed, true);
  }
  return named;
}

class EveryTool : public testing::TestWithParam<std::uint32_t> {};

TEST_P(EveryTool, NamesBytesOfChangedSubtitlesAloneAndCanBeTakenBack) {
  Random random(GetParam());
  int changed = 0;
  for (int round = 0; round < 400; ++round) {
    const Bytes file = RandomFile(random);
    auto loaded = IndexPrimaryStream(file, InvalidFirst::IsPassed);
    ASSERT_TRUE(loaded && !loaded->LostSignature);
    const SupStream& stream = loaded->Stream;
    const StepText text = RandomStep(random, stream.Count);
    SCOPED_TRACE(text.Tool + " in round " + std::to_string(round));
    const auto step = ReadStep(text);
    ASSERT_TRUE(step) << step.Reason();
    if (!FitsStream(*step, stream)) {
      continue;
    }
    const auto result = RunStep(*step, stream);
    if (!result && text.Tool == "cut") {
      ASSERT_EQ(result.Reason(), "no subtitle would be left");
      ASSERT_EQ(step->Only.SizeWithin(stream.Count), stream.Count);
      continue;
    }
    if (!result) {
      ASSERT_EQ(text.Tool, "retime");
      continue;
    }
    const Bytes after = test::Applied(stream, result->Edit);  // and taken back
    changed += result->Changed.IsEmpty() ? 0 : 1;

    // A subtitle that was left, or not asked for, has no byte that the edit names.
    const std::vector<bool> named = NamedBytes(result->Edit, file.size());
    for (std::size_t index = 0; index < stream.PacketOffset.size(); ++index) {
      const auto from = static_cast<std::size_t>(stream.PacketOffset[index]);
      const std::size_t to = index + 1 < stream.PacketOffset.size()
                                 ? static_cast<std::size_t>(stream.PacketOffset[index + 1])
                                 : file.size();
      const bool touched = std::find(named.begin() + static_cast<std::ptrdiff_t>(from),
                                     named.begin() + static_cast<std::ptrdiff_t>(to),
                                     true) != named.begin() + static_cast<std::ptrdiff_t>(to);
      ASSERT_FALSE(touched && !result->Changed.Contains(static_cast<std::int64_t>(index) + 1)) << index + 1;
    }
    for (const LeftSubtitle& left : result->Left) {
      ASSERT_TRUE(step->Only.Contains(left.Number) || text.Tool == "keep");
      ASSERT_TRUE(left.Why == LeftReason::NotAsLong || !result->Changed.Contains(left.Number));
    }

    // The edited bytes load, and asking for the same again of a stream that has it changes nothing.
    auto edited = IndexPrimaryStream(after, InvalidFirst::IsPassed);
    ASSERT_TRUE(edited && !edited->LostSignature);
    if (text.Tool == "sort" || text.Tool == "force" || text.Tool == "assign" || text.Tool == "ends") {
      const auto again = RunStep(*step, edited->Stream);
      ASSERT_TRUE(again);
      ASSERT_TRUE(again->Edit.IsEmpty());
    }
  }
  EXPECT_GT(changed, 150);
}

/// A layout of control sequences that was learnt from one unit serves for those that follow; a subtitle that
/// is looked at alone has nothing before it.
TEST_P(EveryTool, DoesToAllWhatItDoesToEachAlone) {
  Random random(GetParam());
  int compared = 0;
  for (int round = 0; round < 300; ++round) {
    auto loaded = IndexPrimaryStream(RandomFile(random), InvalidFirst::IsPassed);
    ASSERT_TRUE(loaded && !loaded->LostSignature);
    const SupStream& stream = loaded->Stream;
    StepText text = RandomStep(random, stream.Count);
    if (text.Tool != "retime" && text.Tool != "move" && text.Tool != "force" && text.Tool != "ends") {
      continue;
    }
    std::erase_if(text.Options, [](const auto& option) { return option.first == "only"; });
    SCOPED_TRACE(text.Tool + " in round " + std::to_string(round));
    auto step = ReadStep(text);
    ASSERT_TRUE(step) << step.Reason();
    const auto all = RunStep(*step, stream);
    if (!all) {
      continue;
    }
    ToolResult each;
    for (std::int64_t number = 1; number <= stream.Count; ++number) {
      step->Only = SubtitleSet::Of(number);
      const auto one = RunStep(*step, stream);
      ASSERT_TRUE(one) << one.Reason();
      for (const StreamEdit::Place& place : one->Edit.Places) {
        each.Edit.Places.Add(place);
      }
      each.Edit.Bytes.insert(each.Edit.Bytes.end(), one->Edit.Bytes.begin(), one->Edit.Bytes.end());
      each.Left.insert(each.Left.end(), one->Left.begin(), one->Left.end());
      if (one->Changed.Contains(number)) {
        each.Changed.Append(number);
      }
    }
    ASSERT_EQ(all->Edit.Places, each.Edit.Places);
    ASSERT_EQ(all->Edit.Bytes, each.Edit.Bytes);
    ASSERT_EQ(all->Left, each.Left);
    ASSERT_EQ(all->Changed, each.Changed);
    compared += stream.Count > 1 ? 1 : 0;
  }
  EXPECT_GT(compared, 100);
}

INSTANTIATE_TEST_SUITE_P(Seeds, EveryTool, testing::Values(1U, 2U, 3U, 4U));

}  // namespace
}  // namespace quillmark
