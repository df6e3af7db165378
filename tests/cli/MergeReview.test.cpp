#include "tests/cli/Program.h"
#include "tests/render/TwoStreams.h"

// What `merge` tells of its packets before it writes them, and the options that shape them.

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::Join;
using test::Second;
using test::Sound;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

class MergeReviewCommand : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).Build()}));
    // The first one covers columns 102 and 103 of row 401 when it is not moved; nothing shows the second one.
    Write("b.sup", Join({Sound(Second).Area(102, 105, 401, 402).Build(), Sound(3 * Second).Build(),
                         Sound(4 * Second).Area(0, 3, 1, 2).Build()}));
  }

  Json Review(const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"merge", "a.sup", "b.sup", "--dry-run", "--json"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const auto run = Run(arguments);
    EXPECT_THAT(run.Out, StartsWith("{"));
    return Json::parse(run.Out, nullptr, false);
  }
};

TEST_F(MergeReviewCommand, JsonHasEveryPacketAndWhatIsLeftOut) {
  const Json review = Review({"--y-offset", "0"});
  EXPECT_EQ(review["file"], "a.sup");
  EXPECT_EQ(review["second_file"], "b.sup");
  EXPECT_EQ(review["out"], nullptr);
  EXPECT_EQ(review["y_offset"], 0);
  EXPECT_EQ(review["frame"], 576);
  EXPECT_EQ(review["secondary_codes"], Json::parse("[0,1,2,3]"));
  EXPECT_EQ(review["colours"], Json::parse("[null,null,null,null]"));
  EXPECT_EQ(review["error"], nullptr);
  EXPECT_EQ(review["left_out"], Json::parse("[2]"));
  ASSERT_EQ(review["pairs"].size(), 2U);
  const Json& first = review["pairs"][0];
  EXPECT_EQ(first["primary"], 1);
  EXPECT_EQ(first["secondary"], 1);
  EXPECT_EQ(first["overlap_ms"], 1000);
  EXPECT_EQ(first["overlap_ticks"], 90000);
  EXPECT_EQ(first["covered_pixels"], 2);
  EXPECT_EQ(first["clipped_pixels"], 0);
  EXPECT_EQ(first["recoloured_pixels"], 0);
  EXPECT_EQ(first["recoloured_by"], nullptr);
  EXPECT_EQ(first["problems"], Json::parse(R"([{"code": "covered",
                                                "message": "2 pixels of the second picture cover the first one",
                                                "severity": "shown_wrongly"}])"));
  const Json& second = review["pairs"][1];
  EXPECT_EQ(second["primary"], 2);
  EXPECT_EQ(second["secondary"], 3);
  EXPECT_EQ(second["clipped_pixels"], 4);
  EXPECT_EQ(second["primary_clipped_pixels"], 0);
  EXPECT_EQ(second["secondary_clipped_pixels"], 4);
  EXPECT_EQ(second["secondary_clipped_rows"], 1);
  EXPECT_EQ(second["problems"][0]["code"], "secondary_clipped");
  EXPECT_THAT(Names(), ElementsAre("a.sup", "b.sup"));
}

TEST_F(MergeReviewCommand, UnitsHaveTheSizesThatAreWritten) {
  ASSERT_EQ(Run({"merge", "a.sup", "b.sup", "-o", "c.sup"}).ExitCode, 0);
  const Json rows = Json::parse(Run({"list", "c.sup", "--json"}).Out);
  const Json review = Review({});
  ASSERT_EQ(rows.size(), 2U);
  ASSERT_EQ(review["pairs"].size(), 2U);
  EXPECT_EQ(review["pairs"][0]["unit_bytes"], rows[0]["size"]);
  EXPECT_EQ(review["pairs"][1]["unit_bytes"], rows[1]["size"]);
}

TEST_F(MergeReviewCommand, SubtitlesNeverShownTogetherOverlapByNothing) {
  Write("b.sup", Join({Sound(2 * Second).Build()}));
  const Json review = Review({});
  EXPECT_EQ(review["pairs"][0]["overlap_ticks"], 0) << review["pairs"][0].dump();
  EXPECT_EQ(review["pairs"][0]["overlap_ms"], 0);
}

TEST_F(MergeReviewCommand, OutputBesideADryRunIsNotWritten) {
  EXPECT_EQ(Run({"merge", "a.sup", "b.sup", "--dry-run", "-o", "c.sup"}).ExitCode, 0);
  EXPECT_FALSE(Exists("c.sup"));
}

TEST_F(MergeReviewCommand, TextHasItsSummaryFirst) {
  const auto run = Run({"merge", "a.sup", "b.sup", "--dry-run", "--y-offset", "0"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_THAT(run.Err, IsEmpty());
  EXPECT_EQ(
      run.Out,
      "y-offset 0, frame 720x576\n"
      "2 packets, 2 with problems: 1 second picture clipped, 1 pictures over each other\n"
      "pixels: 2 covered, 4 clipped, 0 recoloured\n"
      "left out of b.sup: 2\n"
      "1 + 1: 1000 ms together, 1193 bytes; 2 pixels of the second picture cover the first one [covered]\n"
      "2 + 3: 111 ms together, 1190 bytes; the second picture loses 4 pixels in the frame's rows 0, 1 or "
      "last, which merged units do not have, in 1 row of it [secondary_clipped]\n");
}

TEST_F(MergeReviewCommand, UnitsThatProgramsCannotReadAreNamed) {
  Write("noise.sup", test::NoisePacket(Second, 280));
  Write("clear.sup", Sound(Second - 10000).Contrast(0, 0, 0, 0).Build());
  const auto pairs = Run({"merge", "noise.sup", "clear.sup", "--dry-run"});
  EXPECT_EQ(pairs.ExitCode, 1);
  EXPECT_EQ(pairs.Err,
            "quillmark-cli: noise.sup: subtitle 1 is longer than 32767 bytes; programs, this one included, "
            "cannot read it\n");
  // The second stream's is shown before, with and after the first one's.
  const auto split = Run({"merge", "noise.sup", "clear.sup", "--dry-run", "--mode", "split"});
  EXPECT_EQ(split.ExitCode, 1);
  EXPECT_EQ(split.Err,
            "quillmark-cli: noise.sup: of the new stream, subtitle 2 is longer than 32767 bytes; programs, "
            "this one included, cannot read it\n");
}

TEST_F(MergeReviewCommand, DamageIsToldAndEndsItAsItEndsTheMerge) {
  Write("a.sup",
        Join({Sound(Second).Build(), Sound(3 * Second).WithoutArea().Build(), Sound(5 * Second).Build()}));
  const auto run = Run({"merge", "a.sup", "b.sup", "--dry-run", "--json"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: a.sup: subtitle 2: its control data is not complete\n");
  const Json review = Json::parse(run.Out);
  EXPECT_EQ(review["error"], "a.sup: subtitle 2: its control data is not complete");
  ASSERT_EQ(review["pairs"].size(), 3U);
  EXPECT_EQ(review["pairs"][1]["unit_bytes"], nullptr);
  EXPECT_EQ(review["pairs"][1]["problems"][0]["code"], "primary_damaged");
  EXPECT_EQ(review["pairs"][1]["problems"][0]["message"],
            "subtitle 2 of the first stream is damaged: no display area");
  EXPECT_NE(review["pairs"][2]["unit_bytes"], nullptr);
}

TEST_F(MergeReviewCommand, FileThatCannotBeReadIsTheDocument) {
  const auto run = Run({"merge", "a.sup", "missing.sup", "--dry-run", "--json"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Out, "{\"error\":\"missing.sup: No such file or directory\"}\n");
}

TEST_F(MergeReviewCommand, AutomaticOffsetIsTheNearestOfTheCheapest) {
  // At -400 the picture would stand in rows 1 and 2, of which a unit has the latter alone.
  Write("b.sup", Sound(Second).Area(102, 105, 401, 402).Build());
  Write("a.sup", Sound(Second).Build());
  EXPECT_EQ(Review({"--y-offset", "auto"})["y_offset"], -399);
  const auto run = Run({"merge", "a.sup", "b.sup", "--y-offset", "auto", "-o", "auto.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out, "y-offset -399: 0 pixels covered, 0 clipped\n");
  EXPECT_EQ(Run({"merge", "a.sup", "b.sup", "--y-offset", "-399", "-o", "given.sup"}).Out, "");
  EXPECT_EQ(Read("auto.sup"), Read("given.sup"));
}

TEST_F(MergeReviewCommand, AutomaticOffsetCountsAllSubtitles) {
  // At -400 the first one is free, and of the second a unit would have one row alone.
  Write("b.sup", Join({Sound(Second).Area(300, 303, 500, 501).Build(),
                       Sound(5 * Second).Area(102, 105, 401, 402).Build()}));
  EXPECT_EQ(Review({"--y-offset", "auto"})["y_offset"], -399);
}

TEST_F(MergeReviewCommand, SecondaryCodesColoursAndOpacities) {
  ASSERT_EQ(Run({"merge", "a.sup", "b.sup", "-o", "c.sup", "--y-offset", "-300", "--secondary-codes", ".312",
                 "--colours", "...9", "--opacities", "...c"})
                .ExitCode,
            0);
  const Json rows = Json::parse(Run({"list", "c.sup", "--json"}).Out);
  EXPECT_EQ(rows[0]["colours"], Json::parse("[0,1,2,9]"));
  EXPECT_EQ(rows[0]["opacities"], Json::parse("[0,15,15,12]"));
  // A run of 102 clear cells, then 4 of code 3, then clear ones to the line's end.
  const Bytes line = {0x01, 0x98, 0x13, 0x00, 0x00};
  const Bytes written = Read("c.sup");
  EXPECT_NE(std::search(written.begin(), written.end(), line.begin(), line.end()), written.end());
  const Json review = Review({"--secondary-codes", ".312", "--opacities", "...c"});
  EXPECT_EQ(review["secondary_codes"], Json::parse("[0,3,1,2]"));
  EXPECT_EQ(review["opacities"], Json::parse("[null,null,null,12]"));
}

TEST_F(MergeReviewCommand, CodesThatStayAreTheDefault) {
  ASSERT_EQ(Run({"merge", "a.sup", "b.sup", "-o", "c.sup"}).ExitCode, 0);
  ASSERT_EQ(Run({"merge", "a.sup", "b.sup", "-o", "d.sup", "--secondary-codes", "0123", "--colours", "0123",
                 "--opacities", "0FFF"})
                .ExitCode,
            0);
  EXPECT_EQ(Read("c.sup"), Read("d.sup"));
}

struct MergeWrongCase {
  std::vector<std::string> Options;
  std::string Message;
};

TEST_F(MergeReviewCommand, WrongOptionsAreRefused) {
  for (const MergeWrongCase& wrong :
       {MergeWrongCase{{"--y-offset", "Auto"}, "--y-offset: 'Auto' is no decimal number"},
        {{"--secondary-codes", "0124"}, "--secondary-codes: '0124' is not four digits 0 to 3 or dots"},
        {{"--secondary-codes", "012"}, "--secondary-codes: '012' is not four digits 0 to 3 or dots"},
        {{"--colours", "012G"}, "--colours: '012G' is not four hexadecimal digits or dots"},
        {{"--json"}, "--json requires --dry-run"}}) {
    std::vector<std::string> arguments = {"merge", "a.sup", "b.sup", "-o", "c.sup"};
    arguments.insert(arguments.end(), wrong.Options.begin(), wrong.Options.end());
    const auto run = Run(arguments);
    EXPECT_EQ(run.ExitCode, 2);
    EXPECT_THAT(run.Err, StartsWith("quillmark-cli: " + wrong.Message + "\n"));
  }
  EXPECT_FALSE(Exists("c.sup"));
}

}  // namespace
}  // namespace quillmark::cli
