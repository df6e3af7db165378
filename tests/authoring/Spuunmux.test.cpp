// What the tools make of units that a DVD authoring tool encoded, read by that tool's own reader. It counts
// delays in units of 1024 ticks.

#include <filesystem>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "sup/DisplayEnds.h"
#include "sup/ForceDisplay.h"
#include "sup/MoveArea.h"
#include "sup/Retime.h"
#include "tests/authoring/AuthoringTool.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::UnmuxedSubtitle;

using EditTool = ToolResult (*)(const SupStream&);

ToolResult HalfASecondLater(const SupStream& stream) {
  return *Retime(stream, SubtitleSet::All(), {.Shift = 45000});
}
ToolResult TwiceAsSlow(const SupStream& stream) {
  return *Retime(stream, SubtitleSet::All(), {.Scale = {2, 1}});
}
ToolResult RightAndUp(const SupStream& stream) {
  return MoveArea(stream, SubtitleSet::All(), {.X = 3, .Y = -30});
}
ToolResult AllForced(const SupStream& stream) {
  return ForceDisplay(stream, SubtitleSet::All(), DisplayStart::Forced);
}
/// The delay of a stop that is there, and a stop where there is none.
ToolResult TwoSecondsEach(const SupStream& stream) {
  return SetDisplayEnds(stream, SubtitleSet::All(), {.Fill = true, .Longest = 180000, .Shortest = 180000});
}

SupStream Edited(SupStream stream, EditTool tool) {
  ToolResult result = tool(stream);
  EXPECT_TRUE(ApplyEdit(stream, result.Edit));
  return stream;
}

/// What spuunmux says of a subtitle, all but the picture.
struct Listing {
  const char* Start;
  const char* End;
  const char* Place;
  bool IsForced = false;
};

void ExpectListed(const UnmuxedSubtitle& subtitle, const Listing& expected) {
  EXPECT_EQ(subtitle.Start.toStdString(), expected.Start);
  EXPECT_EQ(subtitle.End.toStdString(), expected.End);
  EXPECT_EQ(subtitle.Place.toStdString(), expected.Place);
  EXPECT_EQ(subtitle.IsForced, expected.IsForced);
}

struct EditCase {
  const char* Name;
  EditTool Tool;
  Listing Timed;    ///< 1 s, 80 delay units
  Listing Untimed;  ///< 3 s, without a stop
};

void PrintTo(const EditCase& edit, std::ostream* out) {
  *out << edit.Name;
}

// 80 x 1024 ticks are 0.910 s, 160 are 1.820 s, 180 are 2.048 s.
constexpr EditCase EditCases[] = {
    {"Retime", HalfASecondLater, {"00:00:01.50", "00:00:02.41", "100, 400"}, {"00:00:03.50", "", "100, 400"}},
    {"Scale", TwiceAsSlow, {"00:00:02.00", "00:00:03.82", "100, 400"}, {"00:00:06.00", "", "100, 400"}},
    {"Move", RightAndUp, {"00:00:01.00", "00:00:01.91", "103, 370"}, {"00:00:03.00", "", "103, 370"}},
    {"Force",
     AllForced,
     {"00:00:01.00", "00:00:01.91", "100, 400", true},
     {"00:00:03.00", "", "100, 400", true}},
    {"Ends",
     TwoSecondsEach,
     {"00:00:01.00", "00:00:03.05", "100, 400"},
     {"00:00:03.00", "00:00:05.05", "100, 400"}},
};

class Spuunmux : public testing::Test {
 protected:
  void SetUp() override {
    spumux_ = test::FindSpumux();
    spuunmux_ = test::FindSpuunmux();
    if (spumux_.isEmpty() || spuunmux_.isEmpty()) {
      GTEST_SKIP() << "spumux and spuunmux (Debian package dvdauthor) are not installed";
    }
    ASSERT_TRUE(folder_.isValid());
  }

  /// What spumux makes of the stream's pictures.
  SupStream Encoded(const SupStream& stream) {
    const ExportPaths paths = ExportPathsFor(folder_.filePath(QStringLiteral("film.sup")));
    static_cast<void>(test::ExportAll(stream, StartUpPalette, paths));
    const test::AuthoringRun run = test::Author(spumux_, paths, QStringLiteral("PAL"));
    EXPECT_EQ(run.ExitCode, 0) << run.Log.toStdString();
    return test::Index(test::MakeSup(run.Units));
  }

  std::vector<UnmuxedSubtitle> Unmuxed(const SupStream& stream) {
    return test::Unmux(spuunmux_, stream, folder_.path());
  }

 private:
  QString spumux_;
  QString spuunmux_;
  QTemporaryDir folder_;
};

class SpuunmuxTool : public Spuunmux, public testing::WithParamInterface<EditCase> {};

TEST_P(SpuunmuxTool, ReadsEditedUnits) {
  const SupStream before = Encoded(test::Index(test::Join(
      {test::PacketBuilder().Time(90000).Delay(82).Build(), test::PacketBuilder().Time(270000).Build()})));
  const std::vector<UnmuxedSubtitle> old = Unmuxed(before);
  ASSERT_EQ(old.size(), 2U);
  ExpectListed(old[0], {"00:00:01.00", "00:00:01.91", "100, 400"});
  ExpectListed(old[1], {"00:00:03.00", "", "100, 400"});

  const std::vector<UnmuxedSubtitle> fresh = Unmuxed(Edited(before, GetParam().Tool));
  ASSERT_EQ(fresh.size(), 2U);
  ExpectListed(fresh[0], GetParam().Timed);
  ExpectListed(fresh[1], GetParam().Untimed);
  for (std::size_t i = 0; i < old.size(); ++i) {
    EXPECT_EQ(fresh[i].Picture.size(), QSize(4, 2));
    EXPECT_TRUE(fresh[i].Picture == old[i].Picture);
  }
}

INSTANTIATE_TEST_SUITE_P(Tools, SpuunmuxTool, testing::ValuesIn(EditCases),
                         [](const auto& edit) { return std::string(edit.param.Name); });

TEST_F(Spuunmux, ReadsThePicturesOfAFilmThatWentThroughAllTools) {
  const std::filesystem::path file = QUILLMARK_SAMPLES "/demo.sup";
  const SupStream before = Encoded(test::StreamOf(LoadPrimaryStream(file)));
  SupStream after = before;
  for (const EditCase& edit : EditCases) {
    after = Edited(std::move(after), edit.Tool);
  }
  const std::vector<UnmuxedSubtitle> old = Unmuxed(before);
  const std::vector<UnmuxedSubtitle> fresh = Unmuxed(after);
  ASSERT_GT(old.size(), 0U);
  ASSERT_EQ(fresh.size(), old.size());
  for (std::size_t i = 0; i < old.size(); ++i) {
    EXPECT_TRUE(fresh[i].IsForced) << i;
    EXPECT_FALSE(old[i].Picture.isNull()) << i;
    EXPECT_TRUE(fresh[i].Picture == old[i].Picture) << i;
  }
}

}  // namespace
}  // namespace quillmark
