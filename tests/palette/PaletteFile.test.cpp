#include "palette/PaletteFile.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <string>
#include <vector>

#include "base/FilePath.h"
#include "tests/support/UnreadableFile.h"

#ifdef __unix__
#include <sys/stat.h>
#endif

namespace quillmark {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::Optional;
using testing::StartsWith;

using Bytes = std::vector<std::uint8_t>;

// --- IFO -------------------------------------------------------------------------------------------------

constexpr std::size_t TablePosition = 2048;                   // sector 1
constexpr std::size_t ChainPosition = TablePosition + 16;     // its offset in the table is 16
constexpr std::size_t PalettePosition = ChainPosition + 164;  // where every program chain has it
constexpr std::size_t ShortestLength = PalettePosition + 64;  // 16 entries of four bytes

void Put(Bytes& file, std::size_t position, const Bytes& bytes) {
  std::ranges::copy(bytes, file.begin() + static_cast<std::ptrdiff_t>(position));
}

/// A title set file of nothing but what leads to its palette. Entry i is Y 16 + i, Cr 32 + i, Cb 64 + i.
Bytes SmallIfo() {
  Bytes file(ShortestLength, 0);
  Put(file, 0, {'D', 'V', 'D', 'V', 'I', 'D', 'E', 'O', '-', 'V', 'T', 'S'});
  Put(file, 204, {0, 0, 0, 1});
  Put(file, TablePosition + 12, {0, 0, 0, 16});
  for (unsigned i = 0; i < 16; ++i) {
    Put(file, PalettePosition + std::size_t{4} * i,
        {0, static_cast<std::uint8_t>(16 + i), static_cast<std::uint8_t>(32 + i),
         static_cast<std::uint8_t>(64 + i)});
  }
  return file;
}

constexpr PackedPalette SmallIfoPalette = {0x402010, 0x412111, 0x422212, 0x432313, 0x442414, 0x452515,
                                           0x462616, 0x472717, 0x482818, 0x492919, 0x4A2A1A, 0x4B2B1B,
                                           0x4C2C1C, 0x4D2D1D, 0x4E2E1E, 0x4F2F1F};

TEST(ReadIfoPalette, FollowsTheOffsetsToTheFirstProgramChain) {
  EXPECT_THAT(ReadIfoPalette(SmallIfo()), Optional(SmallIfoPalette));
}

TEST(ReadIfoPalette, ByteZeroOfAnEntryIsIgnored) {
  Bytes file = SmallIfo();
  file[PalettePosition] = 0xAB;
  file[PalettePosition + 60] = 0xCD;
  EXPECT_THAT(ReadIfoPalette(file), Optional(SmallIfoPalette));
}

TEST(ReadIfoPalette, HighByteOfBothOffsetsIsIgnored) {
  Bytes file = SmallIfo();
  file[204] = 0xFF;
  file[TablePosition + 12] = 0xFF;
  EXPECT_THAT(ReadIfoPalette(file), Optional(SmallIfoPalette));
}

TEST(ReadIfoPalette, AllThreeBytesOfTheChainOffsetCount) {
  Bytes file = SmallIfo();
  Put(file, TablePosition + 13, {0x01, 0x02, 0x03});  // 66,051
  file.resize(TablePosition + 66051 + 164 + 64, 0x11);
  EXPECT_THAT(ReadIfoPalette(file), Optional(Each(0x111111U)));
}

TEST(ReadIfoPalette, TwoBytesOfTheSectorCount) {
  Bytes file = SmallIfo();
  Put(file, 205, {0x00, 0x01, 0x02});  // sector 258
  file.resize(258 * 2048 + 16, 0);
  file.resize(258 * 2048 + 164 + 64, 0x22);  // program chain offset 0
  EXPECT_THAT(ReadIfoPalette(file), Optional(Each(0x222222U)));
}

TEST(ReadIfoPalette, EveryShorterFileIsRefused) {
  const Bytes file = SmallIfo();
  for (std::size_t length = 0; length < file.size(); ++length) {
    // A copy of that very length, so that a sanitizer sees a read past its end.
    const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
    EXPECT_EQ(ReadIfoPalette(cut), std::nullopt) << length;
  }
}

TEST(ReadIfoPalette, EverySingleByteOfTheSignatureCounts) {
  for (std::size_t i = 0; i < 12; ++i) {
    Bytes file = SmallIfo();
    file[i] ^= 0x20;
    EXPECT_EQ(ReadIfoPalette(file), std::nullopt) << i;
  }
}

TEST(ReadIfoPalette, LargestOffsetsAreRefused) {
  Bytes file = SmallIfo();
  Put(file, 204, {0xFF, 0xFF, 0xFF, 0xFF});
  EXPECT_EQ(ReadIfoPalette(file), std::nullopt);

  file = SmallIfo();
  Put(file, TablePosition + 12, {0xFF, 0xFF, 0xFF, 0xFF});
  EXPECT_EQ(ReadIfoPalette(file), std::nullopt);
}

TEST(ReadIfoPalette, SectorPastThirtyTwoBitsDoesNotWrapAround) {
  // 0x200001 sectors are 2^32 + 2048 bytes; in 32 bits that would be the sound table.
  Bytes file = SmallIfo();
  Put(file, 204, {0x00, 0x20, 0x00, 0x01});
  EXPECT_EQ(ReadIfoPalette(file), std::nullopt);
}

TEST(ReadIfoPalette, LimitIsTheLastLengthThatIsRead) {
  Bytes file = SmallIfo();
  file.resize(1048576);
  EXPECT_THAT(ReadIfoPalette(file), Optional(SmallIfoPalette));
  file.resize(1048577);
  EXPECT_EQ(ReadIfoPalette(file), std::nullopt);
}

// --- Text palettes ---------------------------------------------------------------------------------------

constexpr PackedPalette CountingPalette = {0x201000, 0x211101, 0x221202, 0x231303, 0x241404, 0x251505,
                                           0x261606, 0x271707, 0x281808, 0x291909, 0x2A1A0A, 0x2B1B0B,
                                           0x2C1C0C, 0x2D1D0D, 0x2E1E0E, 0x2F1F0F};

constexpr const char* CountingLines[] = {"001020", "011121", "021222", "031323", "041424", "051525",
                                         "061626", "071727", "081828", "091929", "0A1A2A", "0B1B2B",
                                         "0C1C2C", "0D1D2D", "0E1E2E", "0F1F2F"};

std::string Lines(const std::string& lineEnd, std::size_t count = 16) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += CountingLines[i % 16] + lineEnd;
  }
  return text;
}

std::string Repeated(std::size_t count, const std::string& part) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += part;
  }
  return text;
}

TEST(ReadPalPalette, CrLfEndsALine) {
  EXPECT_THAT(ReadPalPalette(Lines("\r\n")), Optional(CountingPalette));
}

TEST(ReadPalPalette, CrAloneEndsALine) {
  EXPECT_THAT(ReadPalPalette(Lines("\r")), Optional(CountingPalette));
}

TEST(ReadPalPalette, LastLineNeedsNoEnd) {
  EXPECT_THAT(ReadPalPalette(Lines("\r\n", 15) + "0F1F2F"), Optional(CountingPalette));
}

TEST(ReadPalPalette, LfFileArrivesAsOneLineOf112Characters) {
  ASSERT_EQ(Lines("\n").size(), 112U);
  EXPECT_THAT(ReadPalPalette(Lines("\n")), Optional(CountingPalette));
}

TEST(ReadPalPalette, LfFileWithoutItsLastLfIsTooShort) {
  EXPECT_EQ(ReadPalPalette(Lines("\n", 15) + "0F1F2F"), std::nullopt);
}

TEST(ReadPalPalette, OnlyTheFirst16LinesOfALfFileAreRead) {
  EXPECT_THAT(ReadPalPalette(Lines("\n") + "FFFFFF\nFFFFFF\n"), Optional(CountingPalette));
}

TEST(ReadPalPalette, LoneLfDoesNotEndALineOfACrFile) {
  // The LF only makes the line longer; what follows it is no entry of its own.
  EXPECT_THAT(ReadPalPalette(Lines("\r", 15) + "0F1F2F\nFFFFFF\r"), Optional(CountingPalette));
}

TEST(ReadPalPalette, LfAfterABlankLineBelongsToItsCr) {
  EXPECT_THAT(ReadPalPalette("\r\n\r\n" + Lines("\r\n")), Optional(CountingPalette));
}

TEST(ReadPalPalette, LfCrFileKeepsTheLfInItsLines) {
  EXPECT_THAT(ReadPalPalette(Lines("\n\r")), Optional(CountingPalette));
}

TEST(ReadPalPalette, LongLineWithoutLfIsOneEntry) {
  const std::string line = "0F1F2F" + std::string(106, 'A');
  ASSERT_EQ(line.size(), 112U);
  EXPECT_THAT(ReadPalPalette(Lines("\r", 15) + line), Optional(CountingPalette));
}

TEST(ReadPalPalette, LongLineBehindOneWithLfIsOneEntry) {
  const std::string line = "0F1F2F" + std::string(106, 'F');
  EXPECT_THAT(ReadPalPalette("\n\r" + Lines("\r", 15) + line), Optional(CountingPalette));
}

TEST(ReadPalPalette, LineOf111CharactersWithLfIsOneEntry) {
  const std::string line = "0F1F2F\n" + std::string(104, 'A');
  ASSERT_EQ(line.size(), 111U);
  EXPECT_THAT(ReadPalPalette(Lines("\r", 15) + line), Optional(CountingPalette));
}

TEST(ReadPalPalette, WholeFileLineAfterAnEntryGivesSeventeen) {
  EXPECT_EQ(ReadPalPalette("FFFFFF\r" + Lines("\n")), std::nullopt);
}

TEST(ReadPalPalette, WholeFileLineAfterSkippedLinesIsRead) {
  EXPECT_THAT(ReadPalPalette("\rhead\r" + Lines("\n")), Optional(CountingPalette));
}

TEST(ReadPalPalette, EntriesOfAWholeFileLineLieSevenApartWhateverStandsBetween) {
  std::string text = Repeated(16, "102030x");
  text[6] = '\n';
  EXPECT_THAT(ReadPalPalette(text), Optional(Each(0x302010U)));
}

TEST(ReadPalPalette, FifteenAndSeventeenLinesAreRefused) {
  EXPECT_EQ(ReadPalPalette(Lines("\r\n", 15)), std::nullopt);
  EXPECT_EQ(ReadPalPalette(Lines("\r\n", 17)), std::nullopt);
  EXPECT_EQ(ReadPalPalette(Lines("\r\n", 100)), std::nullopt);
}

TEST(ReadPalPalette, EmptyTextIsRefused) {
  EXPECT_EQ(ReadPalPalette(""), std::nullopt);
  EXPECT_EQ(ReadPalPalette("\r\n"), std::nullopt);
}

TEST(ReadPalPalette, LinesOfFiveCharactersAreSkipped) {
  EXPECT_THAT(
      ReadPalPalette("12345\r\n" + Lines("\r\n", 8) + "\r\nFFFFF\r" + Lines("\r\n").substr(64) + "\r\n"),
      Optional(CountingPalette));
}

TEST(ReadPalPalette, LineOfSixCharactersIsAnEntryWhateverItSays) {
  EXPECT_EQ(ReadPalPalette("header\r\n" + Lines("\r\n")), std::nullopt);
  EXPECT_EQ((*ReadPalPalette("header\r\n" + Lines("\r\n", 15)))[0], 0x0EAD00U);  // "he" 0, "ad" AD, "er" E
}

TEST(ReadPalPalette, EntriesAtTheLineStartOnly) {
  EXPECT_THAT(ReadPalPalette(Repeated(16, "102030 ; comment\r\n")), Optional(Each(0x302010U)));
}

struct PairCase {
  const char* Line;
  YCrCb Entry;
};

class HexPairs : public testing::TestWithParam<PairCase> {};

TEST_P(HexPairs, StopAtTheFirstCharacterThatIsNoDigit) {
  EXPECT_THAT(ReadPalPalette(Repeated(16, GetParam().Line)), Optional(Each(GetParam().Entry)));
}

INSTANTIATE_TEST_SUITE_P(ReadPalPalette, HexPairs,
                         testing::Values(PairCase{"EB8080\r\n", 0x8080EB}, PairCase{"eb8080\r\n", 0x8080EB},
                                         PairCase{"aBcDeF\r\n", 0xEFCDAB}, PairCase{"1G2x3 \r\n", 0x030201},
                                         PairCase{"G1x2 3\r\n", 0x000000}, PairCase{"      \r\n", 0x000000},
                                         PairCase{"0x10FF\r\n", 0xFF1000}, PairCase{"@1`2/3\r\n", 0x000000},
                                         PairCase{"g1:2;3\r\n", 0x000000}, PairCase{"-1+2&H\r\n", 0x000000},
                                         PairCase{"\xC3\xA4\xFF\x80\xC1\xE1\r\n", 0x000000}));

TEST(ReadPalPalette, NulIsACharacter) {
  std::string line(
      "00\0"
      "0F0\r",
      7);
  EXPECT_THAT(ReadPalPalette(Repeated(16, line)), Optional(Each(0xF00000U)));
}

TEST(ReadRgbPalette, ConvertsThroughTheMask) {
  const std::string text = Repeated(8, "FFFFFF\r\n") + Repeated(8, "000000\r\n");
  EXPECT_THAT(ReadRgbPalette(text),
              Optional(ElementsAre(65, 65, 65, 65, 65, 65, 65, 65, 16, 16, 16, 16, 16, 16, 16, 16)));
}

TEST(ReadRgbPalette, RedComesFirst) {
  EXPECT_THAT(ReadRgbPalette(Repeated(16, "FF0000\n")), Optional(Each(0x505050U)));
}

TEST(ReadRgbPalette, WhatRgbTextWritesReadsBackAsBlacks) {
  EXPECT_THAT(ReadRgbPalette(RgbText(StartUpPalette)), Optional(Each(16U)));
}

TEST(ReadTextPalettes, EveryCutOfALfFileIsRefused) {
  const std::string text = Lines("\n");
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_EQ(ReadPalPalette(std::string(text, 0, length)), std::nullopt) << length;
    EXPECT_EQ(ReadRgbPalette(std::string(text, 0, length)), std::nullopt) << length;
  }
}

// --- Written text ----------------------------------------------------------------------------------------

constexpr DvdPalette Colours = {MakeRgb(255, 255, 255), MakeRgb(255, 0, 0), MakeRgb(0, 0, 255)};

TEST(PalText, SixteenLinesOfSixDigits) {
  EXPECT_EQ(PalText(Colours), "EB8080\r\n52F05A\r\n296EF0\r\n" + Repeated(13, "108080\r\n"));
}

TEST(PalText, ReadsBackAsThePackedColours) {
  EXPECT_THAT(
      ReadPalPalette(PalText(Colours)),
      Optional(ElementsAre(0x8080EB, 0x5AF052, 0xF06E29, 0x808010, 0x808010, 0x808010, 0x808010, 0x808010,
                           0x808010, 0x808010, 0x808010, 0x808010, 0x808010, 0x808010, 0x808010, 0x808010)));
}

TEST(RgbText, SixteenIndentedLinesAndAnEmptyOne) {
  EXPECT_EQ(RgbText(Colours),
            "        Color 0=255, 255, 255\r\n"
            "        Color 1=255, 0, 0\r\n"
            "        Color 2=0, 0, 255\r\n"
            "        Color 3=0, 0, 0\r\n"
            "        Color 4=0, 0, 0\r\n"
            "        Color 5=0, 0, 0\r\n"
            "        Color 6=0, 0, 0\r\n"
            "        Color 7=0, 0, 0\r\n"
            "        Color 8=0, 0, 0\r\n"
            "        Color 9=0, 0, 0\r\n"
            "        Color 10=0, 0, 0\r\n"
            "        Color 11=0, 0, 0\r\n"
            "        Color 12=0, 0, 0\r\n"
            "        Color 13=0, 0, 0\r\n"
            "        Color 14=0, 0, 0\r\n"
            "        Color 15=0, 0, 0\r\n"
            "\r\n");
}

TEST(PaletteTextFor, OnlyUpperCaseRgbGetsTheRgbText) {
  for (const char* path : {"movie.RGB", "movieRGB", "RGB"}) {
    EXPECT_THAT(PaletteTextFor(path, Colours), StartsWith("        Color 0=255, 255, 255\r\n")) << path;
  }
  for (const char* path : {"movie.rgb", "movie.Rgb", "movie.pal", "movie.RGB ", "GB", ""}) {
    EXPECT_THAT(PaletteTextFor(path, Colours), StartsWith("EB8080\r\n52F05A\r\n")) << path;
  }
}

TEST(ToRgb, ConvertsEveryEntry) {
  DvdPalette expected{};
  expected[1] = MakeRgb(1, 1, 1);
  expected[2] = MakeRgb(255, 255, 255);
  EXPECT_EQ(ToRgb(DefaultPackedPalette), expected);
}

// --- Files -----------------------------------------------------------------------------------------------

struct ExtensionCase {
  const char* Path;
  std::optional<PaletteFormat> Format;
};

class Extensions : public testing::TestWithParam<ExtensionCase> {};

TEST_P(Extensions, RunFromTheLastDotInAnyCase) {
  EXPECT_EQ(PaletteFormatOf(GetParam().Path), GetParam().Format);
}

INSTANTIATE_TEST_SUITE_P(PaletteFormatOf, Extensions,
                         testing::Values(ExtensionCase{"a.ifo", PaletteFormat::IfoFile},
                                         ExtensionCase{"A.IFO", PaletteFormat::IfoFile},
                                         ExtensionCase{"a.b.Pal", PaletteFormat::PalFile},
                                         ExtensionCase{"/x.ifo/a.rGb", PaletteFormat::RgbFile},
                                         ExtensionCase{".pal", PaletteFormat::PalFile},
                                         ExtensionCase{"a.ifo.bak", std::nullopt},
                                         ExtensionCase{"a.ifo ", std::nullopt},
                                         ExtensionCase{"a.pal/b", std::nullopt},
                                         ExtensionCase{"pal", std::nullopt},
                                         ExtensionCase{"a.", std::nullopt}, ExtensionCase{"", std::nullopt}));

/// The palette alone, without the reason where there is none.
std::optional<PackedPalette> Loaded(const std::string& path) {
  const auto loaded = LoadPaletteFile(path);
  return loaded ? std::optional(*loaded) : std::nullopt;
}

/// A folder of its own for each test, removed with all that it holds.
class LoadPaletteFileTest : public testing::Test {
 protected:
  LoadPaletteFileTest() {
    std::string pattern = testing::TempDir() + "quillmark-palette-XXXXXX";
    folder_ = mkdtemp(pattern.data());
  }
  ~LoadPaletteFileTest() override {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  [[nodiscard]] std::string Path(const std::string& name) const {
    return Utf8FromPath(folder_ / PathFromUtf8(name));
  }

  template <typename Content>
  [[nodiscard]] std::string Write(const std::string& name, const Content& bytes) const {
    std::ofstream file(folder_ / PathFromUtf8(name), std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return Path(name);
  }

 private:
  std::filesystem::path folder_;
};

TEST_F(LoadPaletteFileTest, ExtensionChoosesTheReader) {
  EXPECT_THAT(Loaded(Write("a.IFO", SmallIfo())), Optional(SmallIfoPalette));
  EXPECT_THAT(Loaded(Write("a.Pal", Lines("\r\n"))), Optional(CountingPalette));
  EXPECT_THAT(Loaded(Write("a.rgb", Repeated(16, "FFFFFF\r\n"))), Optional(Each(65U)));
}

TEST_F(LoadPaletteFileTest, AnyOtherExtensionIsRefused) {
  EXPECT_EQ(Loaded(Write("palette", Lines("\r\n"))), std::nullopt);
  EXPECT_EQ(Loaded(Write("palette.txt", Lines("\r\n"))), std::nullopt);
}

TEST_F(LoadPaletteFileTest, ContentOfAnotherFormatIsRefused) {
  EXPECT_EQ(Loaded(Write("a.pal", SmallIfo())), std::nullopt);
  EXPECT_EQ(Loaded(Write("a.ifo", Lines("\r\n"))), std::nullopt);
}

TEST_F(LoadPaletteFileTest, FileThatCannotBeReadIsToldSo) {
  for (const char* name : {"a.ifo", "a.pal", "a.rgb"}) {
    if (!test::LinkUnreadableFile(Path(name))) {
      GTEST_SKIP() << test::NeedsUnreadableFile;
    }
    EXPECT_EQ(LoadPaletteFile(Path(name)).Reason(), "it cannot be read") << name;
  }
}

TEST_F(LoadPaletteFileTest, NameMayHoldAnyLetters) {
  EXPECT_THAT(Loaded(Write("палитра ä.pal", Lines("\n"))), Optional(CountingPalette));
}

TEST_F(LoadPaletteFileTest, IfoLimit) {
  Bytes file = SmallIfo();
  file.resize(1048576);
  EXPECT_THAT(Loaded(Write("limit.ifo", file)), Optional(SmallIfoPalette));
  file.push_back(0);
  EXPECT_EQ(Loaded(Write("over.ifo", file)), std::nullopt);
}

TEST_F(LoadPaletteFileTest, TextPaletteMayBeLongerThanAnIfoFile) {
  // Read in blocks: the entries stand after the first of them, and a block ends between CR and LF.
  const std::string blanks = Repeated(1048577 / 2, "\r\n");
  EXPECT_THAT(Loaded(Write("crlf.pal", blanks + "\r" + Lines("\r\n"))), Optional(CountingPalette));
  EXPECT_THAT(Loaded(Write("cr.pal", "\r" + blanks + Lines("\r"))), Optional(CountingPalette));
  EXPECT_THAT(Loaded(Write("white.rgb", blanks + Repeated(16, "FFFFFF\r\n"))), Optional(Each(65U)));
  EXPECT_THAT(Loaded(Write("lf.pal", Lines("\n") + std::string(1048576, '\n'))), Optional(CountingPalette));
}

TEST_F(LoadPaletteFileTest, EntriesAfterALongLineCount) {
  const std::string longLine = "FFFFFF" + std::string(2000000, ' ') + "\r";
  EXPECT_EQ(Loaded(Write("a.pal", longLine + Lines("\r"))), std::nullopt);
  EXPECT_THAT(Loaded(Write("b.pal", Lines("\r", 15) + "0F1F2F" + std::string(2000000, ' '))),
              Optional(CountingPalette));
}

TEST_F(LoadPaletteFileTest, LfFarBehindTheEntriesMakesALineAWholeFile) {
  const std::string text = Repeated(16, "102030x") + std::string(200000, ' ');
  EXPECT_THAT(Loaded(Write("lf.pal", text + "\n")), Optional(Each(0x302010U)));
  EXPECT_EQ(Loaded(Write("none.pal", text)), std::nullopt);
}

TEST_F(LoadPaletteFileTest, HugeFilesAreRefusedUnread) {
  for (const char* name : {"huge.ifo", "huge.pal", "huge.rgb"}) {
    const std::string path = Write(name, Lines("\r"));
    std::filesystem::resize_file(PathFromUtf8(path), std::uintmax_t{1} << 40U);  // sparse
    EXPECT_EQ(Loaded(path), std::nullopt) << name;
  }
}

TEST_F(LoadPaletteFileTest, EmptyMissingAndFolderAreRefused) {
  for (const std::string extension : {".ifo", ".pal", ".rgb"}) {
    EXPECT_EQ(Loaded(Write("empty" + extension, std::string())), std::nullopt);
    EXPECT_EQ(Loaded(Path("missing" + extension)), std::nullopt);
    std::filesystem::create_directory(PathFromUtf8(Path("folder" + extension)));
    EXPECT_EQ(Loaded(Path("folder" + extension)), std::nullopt);
    EXPECT_EQ(Loaded(Path("no folder/a" + extension)), std::nullopt);
  }
  EXPECT_EQ(Loaded(""), std::nullopt);
}

#ifdef __unix__
TEST_F(LoadPaletteFileTest, PipeIsRefusedWithoutWaitingForIt) {
  for (const char* name : {"pipe.ifo", "pipe.pal"}) {
    ASSERT_EQ(mkfifo(Path(name).c_str(), 0600), 0);
    EXPECT_EQ(Loaded(Path(name)), std::nullopt);
  }
}

TEST_F(LoadPaletteFileTest, LinkToAnEndlessDeviceIsRefused) {
  std::filesystem::create_symlink("/dev/zero", PathFromUtf8(Path("zero.pal")));
  EXPECT_EQ(Loaded(Path("zero.pal")), std::nullopt);
}

TEST_F(LoadPaletteFileTest, LinkToAFileIsFollowed) {
  std::filesystem::create_symlink(PathFromUtf8(Write("real.txt", Lines("\r"))),
                                  PathFromUtf8(Path("link.pal")));
  EXPECT_THAT(Loaded(Path("link.pal")), Optional(CountingPalette));
}
#endif

TEST_F(LoadPaletteFileTest, ReasonsAreToldApart) {
  const auto reason = [](const std::string& path) { return LoadPaletteFile(path).Reason(); };
  EXPECT_EQ(reason(Write("a.txt", Lines("\r"))),
            "not the name of a palette file: it must end in .ifo, .pal or .rgb");
  EXPECT_EQ(reason(Path("missing.pal")), "No such file or directory");
  std::filesystem::create_directory(PathFromUtf8(Path("folder.ifo")));
  EXPECT_EQ(reason(Path("folder.ifo")), "it is a folder");
  EXPECT_EQ(reason(Write("a.pal", Lines("\r", 15))), "Illegal file: not exactly 16 lines with a colour");
  EXPECT_EQ(reason(Write("a.ifo", Lines("\r"))), "Illegal file: no title set's IFO file with a palette");
  EXPECT_EQ(reason(Write("long.ifo", Bytes(1048577, 0))),
            "Illegal file: an IFO file has at most 1,048,576 bytes");
  std::filesystem::create_symlink("/dev/zero", PathFromUtf8(Path("zero.pal")));
  EXPECT_EQ(reason(Path("zero.pal")), "it is a device or a pipe, not a file");
}

// --- A disc's files --------------------------------------------------------------------------------------

const std::string DiscFolder = QUILLMARK_TEST_DATA "/palette/";

/// From ifo.json, whose entries are 0, Y, Cr, Cb.
constexpr PackedPalette DiscPalette = {0x80801E, 0x8080DA, 0x80807E, 0x2E96B8, 0xA23492, 0x634287,
                                       0x64C76C, 0xC06D5D, 0xA9B475, 0x45B398, 0x6D9453, 0x7C9BC6,
                                       0x6F6A2E, 0x979D2C, 0x8080EB, 0x808010};

/// From ifo.json: the colours that the disc's author asked for.
constexpr DvdPalette DiscColours = {
    MakeRgb(0x10, 0x10, 0x10), MakeRgb(0xEB, 0xEB, 0xEB), MakeRgb(0x80, 0x80, 0x80),
    MakeRgb(0xE6, 0xD2, 0x1E), MakeRgb(0x1E, 0xC8, 0xDC), MakeRgb(0x28, 0xC8, 0x50),
    MakeRgb(0xDC, 0x3C, 0x32), MakeRgb(0x3C, 0x50, 0xDC), MakeRgb(0xC8, 0x3C, 0xC8),
    MakeRgb(0xF0, 0x8C, 0x28), MakeRgb(0x6E, 0x46, 0x28), MakeRgb(0xFF, 0xC0, 0xCB),
    MakeRgb(0x00, 0x3C, 0x00), MakeRgb(0x50, 0x00, 0x50), MakeRgb(0xFF, 0xFF, 0xFF),
    MakeRgb(0x00, 0x00, 0x00)};

Bytes ReadDiscFile(const char* name) {
  std::ifstream file(DiscFolder + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

int Apart(Rgb a, Rgb b, unsigned shift) {
  return std::abs(static_cast<int>(a >> shift & 0xFFU) - static_cast<int>(b >> shift & 0xFFU));
}

TEST(DiscPalettes, TitleSetFileGivesItsFirstChainsPalette) {
  EXPECT_THAT(Loaded(DiscFolder + "VTS_01_0-ntsc.IFO"), Optional(DiscPalette));
}

TEST(DiscPalettes, ShownColoursAreThoseTheAuthorAskedFor) {
  const DvdPalette shown = ToRgb(DiscPalette);
  for (std::size_t i = 0; i < shown.size(); ++i) {
    for (const unsigned shift : {0U, 8U, 16U}) {
      // What the rounding to YCrCb, which is coarser than RGB, can cost.
      EXPECT_LE(Apart(shown[i], DiscColours[i], shift), 2) << "entry " << i << " shift " << shift;
    }
  }
}

TEST(DiscPalettes, TheDiscsOwnFileIsRefused) {
  ASSERT_EQ(ReadDiscFile("VIDEO_TS-ntsc.IFO").size(), 6144U);
  EXPECT_EQ(Loaded(DiscFolder + "VIDEO_TS-ntsc.IFO"), std::nullopt);
}

TEST(DiscPalettes, TitleSetFileCutAnywhereIsRefusedOrReadsTheSame) {
  const Bytes file = ReadDiscFile("VTS_01_0-ntsc.IFO");
  ASSERT_EQ(file.size(), 12288U);
  constexpr std::size_t PaletteEnd = 4284 + 64;
  for (std::size_t length = 0; length <= file.size(); ++length) {
    const Bytes cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
    const auto palette = ReadIfoPalette(cut);
    ASSERT_EQ(palette, length < PaletteEnd ? std::nullopt : std::optional(DiscPalette)) << length;
  }
}

}  // namespace
}  // namespace quillmark
