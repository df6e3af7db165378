#include "tests/cli/Program.h"
#include "tests/support/IfoBuilder.h"

namespace quillmark::cli {
namespace {

using testing::HasSubstr;

class PalettesCommand : public test::ProgramTest {
 protected:
  /// Two titles, the second of them without a picture, and an English root menu. Entry 0 of the chains is
  /// white, black with luma 0, and grey.
  void WriteDisc(const std::string& name) const {
    Write(name, test::TitleSetFile(
                    {{.Category = 0x81, .Programs = 7, .Cells = 12, .Subpictures = {{0x82, 3, 4, 5}}},
                     {.Category = 0x82, .Programs = 0, .Cells = 0, .Palette = {}}},
                    {{.Language = "en", .Chains = {{.Category = 0x83, .Palette = {{0x7E, 0x80, 0x80}}}}}}));
  }
};

constexpr const char* FifteenBlacks =
    " 000000 000000 000000 000000 000000 000000 000000 000000 000000 000000 000000 000000 000000 000000 "
    "000000\n";

TEST_F(PalettesCommand, ListsEveryProgramChain) {
  WriteDisc("a.ifo");
  const auto run = Run({"palettes", "a.ifo"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_EQ(run.Out, std::string("1  title 1  7 programs, 12 cells  FFFFFF") + FifteenBlacks +
                         "2  title 2  0 programs, no picture  000000" + FifteenBlacks +
                         "3  root menu (en)  1 program, 1 cell  808080" + FifteenBlacks);
  EXPECT_EQ(run.Err, "");
}

TEST_F(PalettesCommand, JsonHasEveryChainAsAnObject) {
  WriteDisc("a.ifo");
  const Json chains = Json::parse(Run({"palettes", "a.ifo", "--json"}).Out);
  ASSERT_EQ(chains.size(), 3U);
  EXPECT_EQ(chains[0]["number"], 1);
  EXPECT_EQ(chains[0]["what"], "title 1");
  EXPECT_EQ(chains[0]["place"], "title");
  EXPECT_EQ(chains[0]["title"], 1);
  EXPECT_EQ(chains[0]["language"], nullptr);
  EXPECT_EQ(chains[0]["programs"], 7);
  EXPECT_EQ(chains[0]["cells"], 12);
  EXPECT_EQ(chains[0]["rgb"].size(), 16U);
  EXPECT_EQ(chains[0]["rgb"][0], "FFFFFF");
  EXPECT_EQ(chains[0]["ycrcb"][0], "EB8080");
  EXPECT_EQ(chains[0]["substreams"].dump(),
            R"([{"stream":0,"normal":2,"wide":3,"letterbox":4,"pan_scan":5}])");
  EXPECT_EQ(chains[2]["place"], "menu");
  EXPECT_EQ(chains[2]["title"], nullptr);
  EXPECT_EQ(chains[2]["language"], "en");
}

TEST_F(PalettesCommand, SubstreamsOfEveryStreamThatTheChainHas) {
  Write("a.ifo", test::TitleSetFile({{.Subpictures = {{0x80, 0, 0, 0}, {0, 0, 0, 0}, {0x86, 7, 8, 9}}}}));
  EXPECT_EQ(Json::parse(Run({"palettes", "a.ifo", "--json"}).Out)[0]["substreams"].dump(),
            R"([{"stream":0,"normal":0,"wide":0,"letterbox":0,"pan_scan":0},)"
            R"({"stream":2,"normal":6,"wide":7,"letterbox":8,"pan_scan":9}])");
}

TEST_F(PalettesCommand, EndingAloneIsANameOfAPalette) {
  WriteDisc("a.ifo");
  EXPECT_EQ(Run({"palette", "a.ifo", "-o", ".pal"}).ExitCode, 0);
  EXPECT_TRUE(Exists(".pal"));
}

TEST_F(PalettesCommand, DamageIsToldAndTheRestListed) {
  test::Bytes file = test::TitleSetFile({{}, {.Category = 0x82}});
  file.resize(2048 + 8 + 16 + 0xEC);
  Write("a.ifo", file);
  const auto run = Run({"palettes", "a.ifo"});
  EXPECT_EQ(run.ExitCode, 0);
  EXPECT_THAT(run.Out, HasSubstr("1  title 1"));
  EXPECT_EQ(run.Err, "quillmark-cli: a.ifo: 1 program chain outside the file or its table left out\n");
}

TEST_F(PalettesCommand, OtherFilesAreRefusedByName) {
  WriteText("a.ifo", "DVDVIDEO");
  const auto run = Run({"palettes", "a.ifo", "--json"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, HasSubstr("a.ifo: it is no IFO file"));
  EXPECT_TRUE(Json::parse(run.Out).contains("error"));
}

TEST_F(PalettesCommand, ChainOfThePaletteIsTheOneOfThatNumber) {
  WriteDisc("a.ifo");
  ASSERT_EQ(Run({"palette", "a.ifo", "--chain", "3", "-o", "q.RGB"}).ExitCode, 0);
  EXPECT_THAT(ReadText("q.RGB"), testing::StartsWith("        Color 0=128, 128, 128\r\n"));
}

TEST_F(PalettesCommand, WithoutAChainItIsTheFirstTitles) {
  WriteDisc("a.ifo");
  ASSERT_EQ(Run({"palette", "a.ifo", "-o", "q.RGB"}).ExitCode, 0);
  EXPECT_THAT(ReadText("q.RGB"), testing::StartsWith("        Color 0=255, 255, 255\r\n"));
}

TEST_F(PalettesCommand, ChainThatIsNotThereIsWrongUsage) {
  WriteDisc("a.ifo");
  const auto run = Run({"palette", "a.ifo", "--chain", "4", "-o", "q.pal"});
  EXPECT_EQ(run.ExitCode, 2);
  EXPECT_EQ(run.Err, "quillmark-cli: a.ifo: there is no program chain 4: it has 3\n");
  EXPECT_FALSE(Exists("q.pal"));
  EXPECT_EQ(Run({"palette", "a.ifo", "--chain", "0", "-o", "q.pal"}).ExitCode, 2);
}

TEST_F(PalettesCommand, PaletteFileOfAnotherKindHasNoChains) {
  WriteText("a.pal", "108080\r\n");
  const auto run = Run({"palette", "a.pal", "--chain", "1", "-o", "q.pal"});
  EXPECT_EQ(run.ExitCode, 1);
  EXPECT_THAT(run.Err, HasSubstr("a.pal: it is no IFO file"));
}

}  // namespace
}  // namespace quillmark::cli
