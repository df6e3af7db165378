#include <QImage>

#include "tests/cli/Program.h"

namespace quillmark::cli {
namespace {

using test::Join;
using test::Second;
using test::Sound;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Two streams, and a VobSub pair of both whose languages are en and de.
class ContainerCommands : public test::ProgramTest {
 protected:
  void SetUp() override {
    Write("a.sup", first_);
    Write("b.sup", second_);
    ASSERT_EQ(Run({"convert", "a.sup", "b.sup", "--language", "en,de", "-o", "both.idx"}).ExitCode, 0);
  }

  // Times that no millisecond has.
  const test::Bytes first_ = Join({Sound(Second + 1).Build(), Sound(5 * Second + 17).Build()});
  const test::Bytes second_ = Join({Sound(2 * Second + 89).Colour(3, 2, 1, 9).Build()});
};

TEST_F(ContainerCommands, PairGivesUnitsAndTicksBack) {
  const auto run = Run({"convert", "both.idx", "--track", "1", "-o", "back.sup"});
  EXPECT_EQ(run.Out, "wrote 2 subtitles to back.sup\n");
  EXPECT_THAT(run.Err, IsEmpty());
  EXPECT_EQ(Read("back.sup"), first_);
}

TEST_F(ContainerCommands, TrackIsNamedByItsLanguageToo) {
  EXPECT_EQ(Run({"convert", "both.idx", "--track", "DE", "-o", "back.sup"}).ExitCode, 0);
  EXPECT_EQ(Read("back.sup"), second_);
}

TEST_F(ContainerCommands, EitherFileOfThePairWillDo) {
  EXPECT_EQ(Run({"report", "both.sub", "--track", "de"}).ExitCode, 0);
}

TEST_F(ContainerCommands, OneOfSeveralTracksMustBeNamed) {
  const auto run = Run({"list", "both.idx"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_THAT(run.Err, HasSubstr("both.idx: it has several tracks: 1 (en), 2 (de); --track names one"));
}

TEST_F(ContainerCommands, MissingTrackIsTold) {
  const auto run = Run({"list", "both.idx", "--track", "fr"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, HasSubstr("both.idx: there is no track fr; it has 1 (en), 2 (de)"));
}

TEST_F(ContainerCommands, EveryCommandThatReadsAStreamTakesATrack) {
  const std::vector<std::vector<std::string>> commands = {
      {"report", "both.idx", "--track", "de"},
      {"list", "both.idx", "--track", "de"},
      {"check", "both.idx", "--track", "de"},
      {"picture", "both.idx", "1", "--track", "de", "-o", "p.png"},
      {"export", "both.idx", "--track", "de", "-o", "pictures"},
      {"assign", "both.idx", "--track", "de", "--colours", "0123", "-o", "1.sup"},
      {"retime", "both.idx", "--track", "de", "--shift", "40", "-o", "2.sup"},
      {"move", "both.idx", "--track", "de", "--x", "2", "--clamp", "-o", "3.sup"},
      {"force", "on", "both.idx", "--track", "de", "-o", "4.sup"},
      {"ends", "both.idx", "--track", "de", "--fill", "-o", "5.sup"},
      {"keep", "both.idx", "--track", "en", "--only", "1", "-o", "6.sup"},
      {"sort", "both.idx", "--track", "de", "-o", "7.sup"},
      {"join", "both.idx", "both.idx", "--track", "de", "-o", "8.sup"},
      {"fix", "both.idx", "--track", "de", "-o", "9.sup"},
      {"salvage", "both.idx", "--track", "de", "-o", "10.sup"},
      {"merge", "both.idx", "both.idx", "--track", "en", "--second-track", "de", "-o", "11.sup"},
      {"diff", "both.idx", "b.sup", "--track", "de"},
  };
  for (const auto& command : commands) {
    const auto run = Run(command);
    EXPECT_EQ(run.ExitCode, 0) << command.front() << run.Err;
  }
}

TEST_F(ContainerCommands, DiffNamesATrackOfEachFile) {
  EXPECT_EQ(Run({"diff", "both.idx", "both.idx", "--track", "en", "--second-track", "en"}).ExitCode, 0);
  EXPECT_EQ(Run({"diff", "both.idx", "both.idx", "--track", "en", "--second-track", "de"}).ExitCode, 1);
}

TEST_F(ContainerCommands, RecipeRunsOnATrackAndWritesSup) {
  WriteText("r.json", R"({"version": 1, "steps": []})");
  EXPECT_EQ(Run({"apply", "r.json", "both.idx", "--track", "en", "--out-dir", "out"}).ExitCode, 0);
  EXPECT_EQ(Read("out/both.sup"), first_);
}

TEST_F(ContainerCommands, NotesOnAFileStandInTheReportOfARecipe) {
  std::string index = ReadText("both.idx");
  index.insert(index.find("id: en"),
               "custom colors: ON, tridx: 0000, colors: 000000, 111111, 222222, 333333\n");
  WriteText("both.idx", index);
  WriteText("r.json", R"({"version": 1, "steps": []})");
  const Json reports =
      Json::parse(Run({"apply", "r.json", "both.idx", "--track", "en", "--out-dir", "out", "--json"}).Out);
  EXPECT_EQ(reports[0]["notes"],
            Json::array({"the index has custom colours on; the subtitles keep their own"}));
}

TEST_F(ContainerCommands, TracksAreListed) {
  const auto run = Run({"tracks", "both.idx"});
  EXPECT_EQ(run.Out,
            "1  en  2 subtitles  00:00:01.00 - 00:00:05.00  with a palette\n"
            "2  de  1 subtitle  00:00:02.00 - 00:00:02.00  with a palette\n");
}

TEST_F(ContainerCommands, TracksAreListedWithTheirNames) {
  std::string index = ReadText("both.idx");
  index.insert(index.find("id: de"), "alt: Director\n");
  WriteText("both.idx", index);
  EXPECT_EQ(Run({"tracks", "both.idx"}).Out,
            "1  en  2 subtitles  00:00:01.00 - 00:00:05.00  with a palette  Director\n"
            "2  de  1 subtitle  00:00:02.00 - 00:00:02.00  with a palette\n");
  EXPECT_EQ(Json::parse(Run({"tracks", "both.idx", "--json"}).Out)[0]["name"], "Director");
}

TEST_F(ContainerCommands, SupFileIsOneTrack) {
  EXPECT_EQ(Run({"tracks", "b.sup"}).Out,
            "1  --  1 subtitle  00:00:02.00 - 00:00:02.00  without a palette\n");
}

TEST_F(ContainerCommands, TracksJsonHasTicksAndColours) {
  const Json tracks = Json::parse(Run({"tracks", "both.idx", "--json"}).Out);
  ASSERT_EQ(tracks.size(), 2U);
  EXPECT_EQ(tracks[0]["language"], "en");
  EXPECT_EQ(tracks[0]["subtitles"], 2);
  EXPECT_EQ(tracks[0]["first_ticks"], 90001);
  EXPECT_EQ(tracks[0]["last_ticks"], 450017);
  EXPECT_EQ(tracks[0]["palette"][1], "03FDFB");
  EXPECT_EQ(tracks[0]["id"], "0x20");
  EXPECT_EQ(tracks[1]["id"], "0x21");
  EXPECT_EQ(tracks[0]["notes"], Json::array());
}

/// A position behind the packs, of the track alone and among others.
TEST_F(ContainerCommands, WhatATrackLacksIsTold) {
  ASSERT_EQ(Run({"convert", "a.sup", "-o", "one.idx"}).ExitCode, 0);
  for (const char* name : {"one.idx", "both.idx"}) {
    WriteText(name, ReadText(name) + "timestamp: 00:01:00:000, filepos: 000fffffff\n");
  }
  EXPECT_THAT(Run({"list", "one.idx"}).Err, HasSubstr("one.idx: line "));
  EXPECT_THAT(Run({"tracks", "both.idx"}).Out, HasSubstr("position 0xFFFFFFF is outside the .sub"));
  EXPECT_EQ(Json::parse(Run({"tracks", "both.idx", "--json"}).Out)[1]["notes"].size(), 1U);
  constexpr const char* Outside = "position 0xFFFFFFF is outside the .sub";
  EXPECT_THAT(Run({"convert", "one.idx", "-o", "again.idx"}).Err, HasSubstr(Outside));
  WriteText("r.json", R"({"version": 1, "steps": []})");
  const Json reports = Json::parse(Run({"apply", "r.json", "one.idx", "--out-dir", "out", "--json"}).Out);
  ASSERT_EQ(reports[0]["notes"].size(), 1U);
  EXPECT_THAT(reports[0]["notes"][0].get<std::string>(), HasSubstr(Outside));
}

TEST_F(ContainerCommands, PaletteOfTheFileIsTheOneOfThePicture) {
  // White for every entry.
  std::string white;
  for (int i = 0; i < 16; ++i) {
    white += "EB8080\r\n";
  }
  WriteText("white.pal", white);
  ASSERT_EQ(Run({"convert", "a.sup", "--palette", "white.pal", "-o", "white.idx"}).ExitCode, 0);
  EXPECT_THAT(ReadText("white.idx"), HasSubstr("palette: ffffff, ffffff, "));
  ASSERT_EQ(Run({"convert", "white.idx", "-o", "again.idx"}).ExitCode, 0);
  EXPECT_THAT(ReadText("again.idx"), HasSubstr("palette: ffffff, ffffff, "));
  ASSERT_EQ(Run({"picture", "white.idx", "1", "-o", "pair.png"}).ExitCode, 0);
  ASSERT_EQ(Run({"picture", "a.sup", "1", "-o", "other.png"}).ExitCode, 0);
  ASSERT_EQ(Run({"picture", "a.sup", "1", "--palette", "white.pal", "-o", "white.png"}).ExitCode, 0);
  EXPECT_EQ(Read("pair.png"), Read("white.png"));
  EXPECT_NE(Read("pair.png"), Read("other.png"));
}

TEST_F(ContainerCommands, SupTakesOneTrackAlone) {
  const auto run = Run({"convert", "both.idx", "-o", "c.sup"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_THAT(run.Err, HasSubstr("c.sup: it takes one track, and there are 2; --track names one of a file"));
  EXPECT_FALSE(Exists("c.sup"));
}

TEST_F(ContainerCommands, LettersThatAreNoLanguageAreWrongUsage) {
  const auto run = Run({"convert", "a.sup", "--language", "english", "-o", "c.idx"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_THAT(run.Err, HasSubstr("'english' is no language such as de, ger or pt-BR"));
}

TEST_F(ContainerCommands, LanguageOfThreeLettersIsTheSameAsOfTwo) {
  ASSERT_EQ(Run({"convert", "a.sup", "--language", "ger", "-o", "c.idx"}).ExitCode, 0);
  EXPECT_THAT(ReadText("c.idx"), HasSubstr("id: de, index: 0\n"));
  EXPECT_EQ(Run({"list", "both.idx", "--track", "deu"}).ExitCode, 0);
  ASSERT_EQ(Run({"convert", "a.sup", "--language", "ger", "-o", "c.xml"}).ExitCode, 0);
  EXPECT_THAT(ReadText("c_dvdauthor.xml"), HasSubstr("lang=\"de\""));
}

TEST_F(ContainerCommands, FrameOfThePairIsKept) {
  ASSERT_EQ(Run({"convert", "a.sup", "--frame", "480", "-o", "ntsc.idx"}).ExitCode, 0);
  ASSERT_EQ(Run({"convert", "ntsc.idx", "-o", "again.idx"}).ExitCode, 0);
  EXPECT_THAT(ReadText("again.idx"), HasSubstr("size: 720x480\n"));
  ASSERT_EQ(Run({"convert", "ntsc.idx", "-o", "again.xml"}).ExitCode, 0);
  EXPECT_THAT(ReadText("again.xml"), HasSubstr("format=\"NTSC\""));
}

TEST_F(ContainerCommands, SupHoldsNoPaletteAndNamesNoLanguage) {
  EXPECT_THAT(Run({"convert", "a.sup", "--language", "de", "-o", "c.sup"}).Err,
              HasSubstr("c.sup: a SUP file names no language"));
  EXPECT_THAT(Run({"convert", "a.sup", "--palette", "p.pal", "-o", "c.sup"}).Err,
              HasSubstr("c.sup: a SUP file holds no palette"));
}

TEST_F(ContainerCommands, WhatAPairCannotHoldIsTold) {
  test::Bytes unsorted = Join({Sound(5 * Second).Build(), Sound(Second).Build(), {1, 2, 3}});
  Write("c.sup", unsorted);
  EXPECT_EQ(Run({"convert", "c.sup", "-o", "c.idx"}).Err,
            "quillmark-cli: c.sup: the subtitles are not in the order of time; they were sorted\n"
            "quillmark-cli: c.sup: 3 bytes after the last subtitle were left out\n");
  unsorted.resize(unsorted.size() - 5);
  Write("c.sup", unsorted);
  EXPECT_THAT(Run({"convert", "c.sup", "-o", "c.idx"}).Err,
              HasSubstr("c.sup: subtitle 2 is cut short; 2 bytes were filled with zeros"));
}

TEST_F(ContainerCommands, StreamWithoutSubtitlesIsNotConverted) {
  Write("c.sup", {'S', 'P', 0, 0});
  EXPECT_THAT(Run({"convert", "c.sup", "-o", "c.idx"}).Err, HasSubstr("c.sup: it holds no subtitle"));
  EXPECT_FALSE(Exists("c.idx"));
}

TEST_F(ContainerCommands, TracksOfNoStreamAreAFailure) {
  WriteText("c.txt", "nothing of ours, and long enough for a packet");
  const auto run = Run({"tracks", "c.txt"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, HasSubstr("c.txt: No SUP signature found"));
  const auto json = Run({"tracks", "c.txt", "--json"});
  EXPECT_EQ(json.ExitCode, 1);
  EXPECT_TRUE(Json::accept(json.Out)) << json.Out;
}

TEST_F(ContainerCommands, FileOfAnotherKindIsNamedAsWhatItStartsLike) {
  Write("c.mkv", Read("both.sub"));
  EXPECT_THAT(Run({"tracks", "c.mkv"}).Err, HasSubstr("; it starts as Program streams do"));
}

TEST_F(ContainerCommands, NameThatIsNotUtf8IsNotWritten) {
  const auto run = Run({"convert", "a.sup", "-o", "\xFF.idx"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, HasSubstr("the name is not in UTF-8"));
}

TEST_F(ContainerCommands, EndingAloneIsNoName) {
  EXPECT_EQ(Run({"convert", "a.sup", "-o", ".idx"}).ExitCode, 2);
}

TEST_F(ContainerCommands, MoreLanguagesThanTracksAreWrongUsage) {
  const auto run = Run({"convert", "a.sup", "--language", "en,de", "-o", "c.idx"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_THAT(run.Err, HasSubstr("there are 2 languages for 1 track"));
}

TEST_F(ContainerCommands, OnlyChosenSubtitlesAreWritten) {
  ASSERT_EQ(Run({"convert", "a.sup", "--only", "2", "-o", "c.sup"}).ExitCode, 0);
  EXPECT_EQ(Read("c.sup"), Sound(5 * Second + 17).Build());
}

TEST_F(ContainerCommands, EndingSaysWhatIsWritten) {
  const auto run = Run({"convert", "a.sup", "-o", "c.txt"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_THAT(run.Err, HasSubstr("'c.txt' is no name that ends in .sup, .idx or .xml"));
}

TEST_F(ContainerCommands, ProjectHasItsListPicturesPaletteAndDisc) {
  ASSERT_EQ(Run({"convert", "a.sup", "-o", "disc.xml"}).ExitCode, 0);
  EXPECT_THAT(ReadText("disc.xml"), HasSubstr("<subpictures format=\"PAL\">"));
  EXPECT_TRUE(Exists("disc_pictures/00001.png"));
  EXPECT_TRUE(Exists("disc_pictures/00002.png"));
  EXPECT_TRUE(Exists("disc.pal"));
  EXPECT_TRUE(Exists("disc_dvdauthor.xml"));
}

TEST_F(ContainerCommands, ColoursOfAListAreTakenTogetherWhereThatIsAskedFor) {
  QImage picture(5, 2, QImage::Format_ARGB32);
  for (int x = 0; x < 5; ++x) {
    picture.setPixel(x, 0, qRgb(50 * x, 0, 0));
    picture.setPixel(x, 1, qRgb(50 * x, 0, 0));
  }
  ASSERT_TRUE(picture.save(QString::fromStdString(Path("five.png"))));
  WriteText("five.xml", "<spu start=\"1\" end=\"2\" image=\"five.png\"/>\n");
  const auto kept = Run({"convert", "five.xml", "-o", "five.sup"});
  EXPECT_EQ(kept.ExitCode, 1);
  EXPECT_THAT(kept.Err, HasSubstr("five.png: it has 5 colours, of which a subtitle has at most four"));
  EXPECT_FALSE(Exists("five.sup"));
  const auto reduced = Run({"convert", "five.xml", "--reduce", "-o", "five.sup"});
  EXPECT_EQ(reduced.ExitCode, 0) << reduced.Err;
  EXPECT_EQ(reduced.Out, "wrote 1 subtitle to five.sup\n");
}

TEST_F(ContainerCommands, SubtitlesThatAProjectCannotHoldAreNamedAndFail) {
  Write("late.sup", Join({Sound(Second).Build(), Sound(std::int64_t{1} << 32).Build()}));
  const auto run = Run({"convert", "late.sup", "-o", "late.xml"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_EQ(run.Out, "wrote 1 subtitle to late.xml\n");
  EXPECT_THAT(run.Err, HasSubstr("late.sup: subtitle 2 starts outside of the 13 hours"));
  EXPECT_THAT(run.Err, HasSubstr("late.sup: 1 of 2 subtitles are left out"));
}

TEST_F(ContainerCommands, FurtherPartsOfATitleAreTold) {
  Write("VTS_01_1.VOB", Read("both.sub"));
  Write("VTS_01_2.VOB", Read("both.sub"));
  const auto run = Run({"tracks", "VTS_01_1.VOB"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_THAT(run.Err,
              HasSubstr("VTS_01_1.VOB: VTS_01_2.VOB was read as well, the next part of the title\n"));
}

TEST_F(ContainerCommands, DamagedFileIsNamedAndNothingIsWritten) {
  WriteText("broken.mkv", "no Matroska at all");
  const auto run = Run({"convert", "broken.mkv", "-o", "c.sup"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, HasSubstr("broken.mkv: "));
  EXPECT_FALSE(Exists("c.sup"));
}

}  // namespace
}  // namespace quillmark::cli
