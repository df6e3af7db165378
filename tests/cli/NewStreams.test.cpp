#include <algorithm>
#include <fstream>
#include <sstream>

#include <QImage>

#include "tests/cli/Program.h"

namespace quillmark::cli {
namespace {

using test::Bytes;
using test::Code1;
using test::Code2;
using test::Join;
using test::PacketBuilder;
using test::Second;
using test::Sound;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PaletteCommand : public test::ProgramTest {
 protected:
  /// Black, with a white entry 2.
  static std::string PalText() {
    std::string text;
    for (int entry = 0; entry < 16; ++entry) {
      text += entry == 2 ? "EB8080\r\n" : "108080\r\n";
    }
    return text;
  }
};

TEST_F(PaletteCommand, PalToPal) {
  WriteText("p.pal", PalText());
  ASSERT_EQ(Run({"palette", "p.pal", "-o", "q.pal"}).ExitCode, 0);
  EXPECT_EQ(ReadText("q.pal"), PalText());
}

TEST_F(PaletteCommand, OnlyAnUpperCaseNameGetsTheRgbForm) {
  WriteText("p.pal", PalText());
  ASSERT_EQ(Run({"palette", "p.pal", "-o", "q.RGB"}).ExitCode, 0);
  EXPECT_THAT(ReadText("q.RGB"), testing::StartsWith("        Color 0=0, 0, 0\r\n        Color 1=0, 0, 0\r\n"
                                                     "        Color 2=255, 255, 255\r\n"));
  ASSERT_EQ(Run({"palette", "p.pal", "-o", "q.rgb"}).ExitCode, 0);
  EXPECT_EQ(ReadText("q.rgb"), PalText());
}

TEST_F(PaletteCommand, IfoOfAnotherMake) {
  const std::string folder = QUILLMARK_TEST_DATA "/palette/";
  const Json given = Json::parse(std::ifstream(folder + "ifo.json"))["palette_given_rgb"];
  ASSERT_EQ(Run({"palette", folder + "VTS_01_0-ntsc.IFO", "-o", "q.RGB"}).ExitCode, 0);
  std::istringstream lines(ReadText("q.RGB"));
  for (std::size_t entry = 0; entry < 16; ++entry) {
    std::string line;
    ASSERT_TRUE(std::getline(lines, line));
    int red = -1;
    int green = -1;
    int blue = -1;
    char comma = 0;
    std::istringstream(line.substr(line.find('=') + 1)) >> red >> comma >> green >> comma >> blue;
    const int rgb = std::stoi(given[entry].get<std::string>(), nullptr, 16);
    // Twice rounded on the way: to YCrCb by the author's program, and back.
    EXPECT_NEAR(red, rgb >> 16, 2) << entry;
    EXPECT_NEAR(green, rgb >> 8 & 0xFF, 2) << entry;
    EXPECT_NEAR(blue, rgb & 0xFF, 2) << entry;
  }
}

struct PaletteCase {
  const char* Name;
  const char* File;
  const char* Content;
  const char* Reason;
};

void PrintTo(const PaletteCase& refused, std::ostream* out) {
  *out << refused.Name;
}

class RefusedPalette : public test::ProgramTest, public testing::WithParamInterface<PaletteCase> {};

TEST_P(RefusedPalette, IsAFailureWithItsReason) {
  if (GetParam().Content != nullptr) {
    WriteText(GetParam().File, GetParam().Content);
  }
  const auto run = Run({"palette", GetParam().File, "-o", "q.pal"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, std::string("quillmark-cli: ") + GetParam().File + ": " + GetParam().Reason + "\n");
  EXPECT_FALSE(Exists("q.pal"));
}

INSTANTIATE_TEST_SUITE_P(
    PaletteCommand, RefusedPalette,
    testing::Values(PaletteCase{"Missing", "p.pal", nullptr, "No such file or directory"},
                    PaletteCase{"Extension", "p.txt", "108080\r\n",
                                "not the name of a palette file: it must end in .ifo, .pal or .rgb"},
                    PaletteCase{"TooFewLines", "p.rgb", "108080\r\n",
                                "Illegal file: not exactly 16 lines with a colour"},
                    PaletteCase{"NoTitleSet", "p.ifo", "DVDVIDEO-VMG",
                                "Illegal file: no title set's IFO file with a palette"}),
    [](const auto& test) { return test.param.Name; });

class MergeCommand : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).Build()}));
    Write("b.sup", Sound(Second).Build());
  }
};

TEST_F(MergeCommand, WritesAStreamOfFullFrames) {
  const auto run = Run({"merge", "a.sup", "b.sup", "-o", "c.sup"});
  EXPECT_EQ(run.ExitCode, 0) << run.Err;
  EXPECT_THAT(run.Out, IsEmpty());
  EXPECT_THAT(run.Err, IsEmpty());
  const Json rows = Json::parse(Run({"list", "c.sup", "--json"}).Out);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[1]["start"], "00:00:05.00");
  EXPECT_EQ(rows[1]["end"], "00:00:06.00");
  EXPECT_EQ(rows[1]["x"], 0);
  EXPECT_EQ(rows[1]["y"], 2);
  EXPECT_EQ(rows[1]["width"], 720);
  EXPECT_EQ(rows[1]["height"], 573);
}

TEST_F(MergeCommand, FrameOf480Lines) {
  ASSERT_EQ(Run({"merge", "a.sup", "b.sup", "-o", "c.sup", "--frame", "480"}).ExitCode, 0);
  EXPECT_EQ(Json::parse(Run({"list", "c.sup", "--json"}).Out)[0]["height"], 477);
}

TEST_F(MergeCommand, OffsetIsTheSecondPicturesPlace) {
  const auto frame = [this](const char* offset) {
    EXPECT_EQ(Run({"merge", "a.sup", "b.sup", "-o", "c.sup", "--y-offset", offset}).ExitCode, 0);
    EXPECT_EQ(Run({"picture", "c.sup", "1", "-o", "c.png", "--frame", "576"}).ExitCode, 0);
    return QImage(QString::fromStdString(Path("c.png")));
  };
  const QImage above = frame("-300");
  ASSERT_EQ(above.size(), QSize(720, 576));
  for (const int y : {100, 400}) {
    EXPECT_EQ(above.pixel(100, y - 1), 0U);
    EXPECT_EQ(above.pixel(99, y), 0U);
    EXPECT_EQ(above.pixel(100, y), Code1);
    EXPECT_EQ(above.pixel(103, y + 1), Code2);
    EXPECT_EQ(above.pixel(104, y), 0U);
    EXPECT_EQ(above.pixel(100, y + 2), 0U);
  }
  // After the frame's last line nothing of it is left.
  const QImage below = frame("600");
  EXPECT_EQ(below.pixel(100, 400), Code1);
  EXPECT_EQ(below.pixel(100, 100), 0U);
}

TEST_F(MergeCommand, PaletteSaysWhichCodesLookAlike) {
  // Of codes with the same colour and opacity the first one stands for all: the lower line, of code 2,
  // becomes one of code 1.
  std::string lines;
  for (int entry = 0; entry < 16; ++entry) {
    lines += entry == 1 || entry == 2 ? "EB8080\r\n" : "108080\r\n";
  }
  WriteText("p.pal", lines);
  ASSERT_EQ(Run({"merge", "a.sup", "a.sup", "-o", "c.sup", "--palette", "p.pal"}).ExitCode, 0);
  const Bytes alike = Read("c.sup");
  ASSERT_EQ(Run({"merge", "a.sup", "a.sup", "-o", "c.sup"}).ExitCode, 0);
  const Bytes apart = Read("c.sup");
  // A run of 100 clear cells, then 4 of the line's code, then clear ones to the line's end.
  const Bytes lineOfCode1 = {0x01, 0x90, 0x11, 0x00, 0x00};
  const Bytes lineOfCode2 = {0x01, 0x90, 0x12, 0x00, 0x00};
  const auto count = [](const Bytes& bytes, const Bytes& part) {
    int found = 0;
    for (auto at = bytes.begin();
         (at = std::search(at, bytes.end(), part.begin(), part.end())) != bytes.end(); ++at) {
      ++found;
    }
    return found;
  };
  EXPECT_EQ(count(apart, lineOfCode1), 2);
  EXPECT_EQ(count(apart, lineOfCode2), 2);
  EXPECT_EQ(count(alike, lineOfCode1), 4);
  EXPECT_EQ(count(alike, lineOfCode2), 0);
}

TEST_F(MergeCommand, SubtitleThatNoneCanBeLaidOverIsLeftOut) {
  // The last subtitle starts before the others, so that the second stream ends before the second one starts.
  Write("a.sup", Join({Sound(Second).Build(), Sound(90 * Second).Build(), Sound(5 * Second).Build()}));
  Write("b.sup", Join({Sound(0).Build(), Sound(Second).Build()}));
  ASSERT_EQ(Run({"merge", "a.sup", "b.sup", "-o", "c.sup"}).ExitCode, 0);
  const Json rows = Json::parse(Run({"list", "c.sup", "--json"}).Out);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0]["start"], "00:00:01.00");
  EXPECT_EQ(rows[1]["start"], "00:00:05.00");
}

TEST_F(MergeCommand, PrimaryWithSeveralColoursIsRefused) {
  Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).Colour(4, 2, 1, 0).Build()}));
  WriteText("c.sup", "as it was");
  const auto run = Run({"merge", "a.sup", "b.sup", "-o", "c.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err,
            "quillmark-cli: a.sup: Error: Primary sup file uses multiple colors or multiple transparancies\n"
            "Loading secondary stream not possible.\n"
            "Remove the multiple colors and/or multiple transparancies in the primary sup file and retry\n");
  EXPECT_EQ(ReadText("c.sup"), "as it was");
}

TEST_F(MergeCommand, SecondaryWithSeveralOpacitiesIsWarnedOf) {
  Write("b.sup", Join({Sound(Second).Build(), Sound(5 * Second).Contrast(8, 8, 8, 0).Build()}));
  const auto run = Run({"merge", "a.sup", "b.sup", "-o", "c.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(
      run.Err,
      "quillmark-cli: b.sup: Warning: Secondary subtitles have multiple colors or multiple transparancies\n"
      "Overlaying may not work properly\n");
}

TEST_F(MergeCommand, SubtitleThatCannotBeMergedKeepsTheOldFile) {
  Write("a.sup", Join({Sound(Second).Build(), Sound(5 * Second).WithoutArea().Build()}));
  WriteText("c.sup", "as it was");
  const auto run = Run({"merge", "a.sup", "b.sup", "-o", "c.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, testing::StartsWith("quillmark-cli: a.sup: subtitle 2: "));
  EXPECT_EQ(ReadText("c.sup"), "as it was");
  EXPECT_THAT(Names(), ElementsAre("a.sup", "b.sup", "c.sup"));
}

TEST_F(MergeCommand, StreamsWithoutSubtitles) {
  Write("empty.sup", {});
  EXPECT_EQ(Run({"merge", "empty.sup", "b.sup", "-o", "c.sup"}).Err,
            "quillmark-cli: empty.sup: it holds no subtitle\n");
  EXPECT_EQ(Run({"merge", "a.sup", "empty.sup", "-o", "c.sup"}).Err,
            "quillmark-cli: empty.sup: it holds no subtitle\n");
  EXPECT_FALSE(Exists("c.sup"));
}

TEST_F(MergeCommand, SecondaryThatCannotBeConverted) {
  Write("b.sup", Sound().WithoutArea().Build());
  EXPECT_EQ(Run({"merge", "a.sup", "b.sup", "-o", "c.sup"}).Err,
            "quillmark-cli: b.sup: Error converting subtitle!\n");
}

TEST_F(MergeCommand, OverThePrimaryItself) {
  ASSERT_EQ(Run({"merge", "a.sup", "b.sup", "-o", "a.sup"}).ExitCode, 0);
  EXPECT_EQ(Json::parse(Run({"report", "a.sup", "--json"}).Out)["found"], 2);
}

class CheckCommand : public test::ProgramTest {};

TEST_F(CheckCommand, SoundStream) {
  Write("a.sup", Sound().Build());
  const auto run = Run({"check", "a.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out, "no problem found\n");
  EXPECT_EQ(Run({"check", "a.sup", "--json"}).Out, "[]\n");
}

TEST_F(CheckCommand, ProblemsInFileOrder) {
  Write("a.sup", Join({Sound().Area(0, 3, 0, 2).Build(), Bytes(20, 0), Sound(Second).Build()}));
  const auto run = Run({"check", "a.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Out,
            "offset 18: packet 1: the height 3 is odd, so the last line is not shown [odd_height]\n"
            "offset 48: no \"SP\" where a packet should start; the next packet was found at offset 68 "
            "[lost_signature]\n");
  EXPECT_THAT(run.Err, IsEmpty());
}

TEST_F(CheckCommand, JsonIsOneArray) {
  Write("a.sup", Join({Sound().Area(0, 3, 0, 2).Build(), Bytes(20, 0), Sound(Second).Build()}));
  const auto run = Run({"check", "a.sup", "--json"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(
      run.Out,
      "[\n"
      R"({"offset":18,"packet":1,"code":"odd_height","message":"the height 3 is odd, so the last line is not shown","severity":"untidy"},)"
      "\n"
      R"({"offset":48,"packet":null,"code":"lost_signature","message":"no \"SP\" where a packet should start; the next packet was found at offset 68","severity":"cannot_be_shown"})"
      "\n]\n");
}

TEST_F(CheckCommand, PlayersHaveRulesOfTheirOwn) {
  Write("a.sup", Join({Sound().Area(0, 3, 574, 575).Build(), Sound(Second).Build()}));

  EXPECT_EQ(Run({"check", "a.sup"}).ExitCode, 0);
  EXPECT_EQ(Run({"check", "a.sup", "--profile", "spec"}).ExitCode, 0);
  const auto run = Run({"check", "a.sup", "--profile", "player"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(
      run.Out,
      "offset 18: packet 1: it covers lines 574 to 575 of the frame; players show lines 2 to 574 "
      "[outside_safe_frame]\n"
      "offset 2: packet 1: players, who count a delay in 1024 ticks, show it 2160 ticks of 90 kHz into the "
      "next subtitle [short_gap]\n");
  EXPECT_EQ(Run({"check", "a.sup", "--profile", "film"}).ExitCode, 2);
}

TEST_F(CheckCommand, TheFrameCanHave480Lines) {
  Write("a.sup", Sound().Area(0, 3, 478, 481).Build());

  EXPECT_EQ(Run({"check", "a.sup"}).ExitCode, 0);
  EXPECT_THAT(Run({"check", "a.sup", "--frame", "480"}).Out,
              testing::HasSubstr("leaves the frame of 720x480"));
  EXPECT_EQ(Run({"check", "a.sup", "--frame", "500"}).ExitCode, 2);
}

/// Streams of another make are sound but for what their makers meant: no end, odd heights.
TEST_F(CheckCommand, StreamsOfAnotherMakeRaiseNoFalseAlarm) {
  for (const std::string name :
       {"spumux-pal", "dvdauthor-ntsc", "lavc-pal", "merge-primary", "merge-secondary"}) {
    const Json problems =
        Json::parse(Run({"check", QUILLMARK_TEST_DATA "/streams/" + name + ".sup", "--json"}).Out);
    for (const Json& problem : problems) {
      EXPECT_THAT(problem["code"].get<std::string>(), testing::AnyOf("no_end", "odd_height"))
          << name << problem;
    }
  }
}

TEST_F(CheckCommand, SamplesAreSound) {
  for (const std::string name : {"demo", "ntsc", "first", "second"}) {
    EXPECT_EQ(Run({"check", QUILLMARK_SAMPLES "/" + name + ".sup"}).Out, "no problem found\n");
  }
}

class SalvageCommand : public test::ProgramTest {};

TEST_F(SalvageCommand, WritesGoodPacketsAndListsTheRest) {
  Write("a.sup", Join({Sound(1).Build(), Bytes(20, 0), Sound(2).Build(), Sound(3).ControlOffset(0).Build()}));
  const auto run = Run({"salvage", "a.sup", "-o", "b.sup"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out,
            "kept 2 packets, 96 bytes\n"
            "left out 20 bytes at offset 48: no \"SP\" where a packet should start\n"
            "left out 48 bytes at offset 116: the control offset leads out of the unit\n");
  EXPECT_EQ(Read("b.sup"), Join({Sound(1).Build(), Sound(2).Build()}));
}

TEST_F(SalvageCommand, SoundStreamIsCopied) {
  ASSERT_EQ(Run({"salvage", QUILLMARK_SAMPLES "/demo.sup", "-o", "b.sup"}).ExitCode, 0);
  EXPECT_EQ(RunScript("cmp b.sup " QUILLMARK_SAMPLES "/demo.sup").ExitCode, 0);
}

TEST_F(SalvageCommand, NothingGoodWritesNothing) {
  Write("a.sup", Bytes(100, 'S'));
  WriteText("b.sup", "as it was");
  const auto run = Run({"salvage", "a.sup", "-o", "b.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Err, "quillmark-cli: a.sup: no good packet was found; nothing is written\n");
  EXPECT_EQ(ReadText("b.sup"), "as it was");
}

}  // namespace
}  // namespace quillmark::cli
