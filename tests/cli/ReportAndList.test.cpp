#include <algorithm>
#include <fstream>

#include "tests/cli/Program.h"

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::Join;
using test::Second;
using test::Sound;
using testing::HasSubstr;
using testing::IsEmpty;

class ReportCommand : public test::ProgramTest {};
class ListCommand : public test::ProgramTest {};

TEST_F(ReportCommand, IsTheWindowsReportLineForLine) {
  Write("a.sup", Join({Sound(Second).Build(), Sound(61 * Second).Delay(0).Colour(3, 2, 10, 0).Build(),
                       Sound(3661 * Second).WithoutColour().Build()}));
  const auto run = Run({"report", "a.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out,
            "Found Subtitles: 3\n"
            "Parse errors: 1\n"
            "Max subtitle width: 4 (100 to 103)\n"
            "Max subtitle height: 2 (400 to 401)\n"
            "Max size (kb): 0\n"
            "First timecode: 00:00:01.00\n"
            "Last timecode: 01:01:01.00\n"
            "Max duration (seconds): 1.01\n"
            "Subtitles without duration : Yes\n"
            "Color 1 uses palette color: 0  and opacity: 0\n"
            "Color 2 uses palette color: 1, A  and opacity: F\n"
            "Color 3 uses palette color: 2  and opacity: F\n"
            "Color 4 uses palette color: 3  and opacity: F\n");
  EXPECT_THAT(run.Err, IsEmpty());
}

TEST_F(ReportCommand, JsonHasEveryStatistic) {
  Write("a.sup", Join({Sound(Second).Build(), Sound(61 * Second).Delay(0).Colour(3, 2, 10, 0).Build(),
                       Sound(3661 * Second).WithoutColour().Build()}));
  const auto run = Run({"report", "a.sup", "--json"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(
      run.Out,
      R"({"found":3,"parse_errors":1,"max_width":4,"min_x":100,"max_height":2,"min_y":400,"max_spu_size":38,)"
      R"("first_timecode":"00:00:01.00","last_timecode":"01:01:01.00","max_duration_ms":1005,"untimed":true,)"
      R"("colours":[[0],[1,10],[2],[3]],"opacities":[[0],[15],[15],[15]],"multiple_colours":true,)"
      R"("multiple_opacities":false})"
      "\n");
}

TEST_F(ReportCommand, EmptyFileHasAReport) {
  Write("a.sup", {});
  const auto run = Run({"report", "a.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_THAT(run.Out, testing::StartsWith("Found Subtitles: 0\n"));
}

TEST_F(ReportCommand, LostSignatureIsAFailure) {
  Write("a.sup", Join({Sound().Build(), Bytes(14, 0)}));
  const auto run = Run({"report", "a.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Out, IsEmpty());
  EXPECT_THAT(run.Err, HasSubstr("a.sup: No SUP signature found"));
}

TEST_F(ReportCommand, EndsAtAFirstSubtitleThatCannotBeShown) {
  Write("a.sup", Join({Sound().WithoutArea().Build(), Sound(Second).Build()}));
  const auto run = Run({"report", "a.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Out, testing::StartsWith("Found Subtitles: 1\nParse errors: 1\n"));
  EXPECT_EQ(run.Err, "quillmark-cli: a.sup: Error converting subtitle!\n");

  const auto asJson = Run({"report", "a.sup", "--json"});
  EXPECT_EQ(asJson.ExitCode, 1);
  const Json document = Json::parse(asJson.Out);
  EXPECT_EQ(document["found"], 1);
  EXPECT_EQ(document["error"], "a.sup: Error converting subtitle!");
}

TEST_F(ListCommand, OneRowASubtitle) {
  Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).WithoutArea().Build(),
                       Sound(9 * Second).Delay(0).Colour(3, 12, 1, 0).Build()}));
  const auto run = Run({"list", "a.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out,
            "1  00:00:01.00 - 00:00:02.00  1.01 s  4x2 at (100,400)  colours 0123  opacities 0FFF\n"
            "2  00:00:05.00 - 00:00:06.00  cannot be shown, packet at 48\n"
            "3  00:00:09.00 - ?  ? s  4x2 at (100,400)  colours 01C3  opacities 0FFF\n");
}

TEST_F(ListCommand, JsonHasEveryField) {
  Write("a.sup", Sound(Second).Build());
  EXPECT_EQ(
      Run({"list", "a.sup", "--json"}).Out,
      "[\n"
      R"({"number":1,"valid":true,"offset":0,"size":38,"control_offset":8,"start_ticks":90000,)"
      R"("end_ticks":180000,"start":"00:00:01.00","end":"00:00:02.00","duration":"1.01","player_duration":"1.02","x":100,"y":400,)"
      R"("width":4,"height":2,"colours":[0,1,2,3],"opacities":[0,15,15,15]})"
      "\n]\n");
}

TEST_F(ListCommand, JsonIsNullWhereASubtitleHasNothing) {
  Write("a.sup", Join({Sound(Second).WithoutArea().Build(), Sound(5 * Second).Delay(0).Build()}));
  const Json rows = Json::parse(Run({"list", "a.sup", "--json"}).Out);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0]["valid"], false);
  EXPECT_EQ(rows[0]["end"], "00:00:02.00");
  for (const char* field :
       {"duration", "player_duration", "x", "y", "width", "height", "colours", "opacities"}) {
    EXPECT_TRUE(rows[0].at(field).is_null()) << field;
  }
  for (const char* field : {"end", "end_ticks", "duration", "player_duration"}) {
    EXPECT_TRUE(rows[1].at(field).is_null()) << field;
  }
  EXPECT_EQ(rows[1]["x"], 100);
}

TEST_F(ListCommand, EmptyStreamIsAnEmptyArray) {
  Write("a.sup", {});
  EXPECT_EQ(Run({"list", "a.sup"}).Out, "");
  EXPECT_EQ(Run({"list", "a.sup", "--json"}).Out, "[]\n");
}

TEST_F(ListCommand, SizeOf8000HexOrMoreIsTheFieldsValue) {
  Bytes file = Sound().Size(0x8000).Build();
  file.resize(0x8000 + 10);
  Write("a.sup", file);
  EXPECT_EQ(Json::parse(Run({"list", "a.sup", "--json"}).Out)[0]["size"], 0x8000);
}

/// What an independent decoder read from streams of another make.
class ListOfAnotherMake : public test::ProgramTest, public testing::WithParamInterface<const char*> {};

TEST_P(ListOfAnotherMake, AgreesWithAnIndependentDecoder) {
  const std::string base = std::string(QUILLMARK_TEST_DATA "/streams/") + GetParam();
  const Json facts = Json::parse(std::ifstream(base + ".json"))["subtitles"];
  const Json rows = Json::parse(Run({"list", base + ".sup", "--json"}).Out);
  ASSERT_EQ(rows.size(), facts.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const Json& row = rows[i];
    const Json& fact = facts[i];
    const Json& area = fact["area_x1_x2_y1_y2"];
    EXPECT_EQ(row["number"], fact["number"]);
    EXPECT_EQ(row["valid"], true);
    EXPECT_EQ(row["offset"], fact["packet_offset"]);
    EXPECT_EQ(row["size"], fact["spu_size"]);
    EXPECT_EQ(row["control_offset"], fact["control_offset"]);
    EXPECT_EQ(row["start_ticks"], fact["time_ticks"]);
    EXPECT_EQ(row["x"], area[0]);
    EXPECT_EQ(row["y"], area[2]);
    EXPECT_EQ(row["width"], area[1].get<int>() - area[0].get<int>() + 1);
    EXPECT_EQ(row["height"], area[3].get<int>() - area[2].get<int>() + 1);
    EXPECT_EQ(row["colours"], fact["colour_of_code_0_to_3"]);
    EXPECT_EQ(row["opacities"], fact["contrast_of_code_0_to_3"]);
  }
}

INSTANTIATE_TEST_SUITE_P(ListCommand, ListOfAnotherMake,
                         testing::Values("spumux-pal", "dvdauthor-ntsc", "lavc-pal", "merge-primary"),
                         [](const auto& test) {
                           std::string name = test.param;
                           std::ranges::replace(name, '-', '_');
                           return name;
                         });

}  // namespace
}  // namespace quillmark::cli
