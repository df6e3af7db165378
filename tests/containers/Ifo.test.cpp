#include "containers/Ifo.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

#include "base/FilePath.h"
#include "containers/ByteSource.h"
#include "tests/support/IfoBuilder.h"
#include "tests/support/UnreadableFile.h"

namespace quillmark {
namespace {

using test::AppendTable;
using test::Bytes;
using test::ChainSpec;
using test::IfoChain;
using test::IfoHead;
using test::IfoMenus;
using test::IfoTable;
using test::PutNumber;
using test::TitleSetFile;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Texts(const IfoInfo& info) {
  std::vector<std::string> texts;
  for (const ProgramChain& chain : info.Chains) {
    texts.push_back(ChainText(chain));
  }
  return texts;
}

TEST(ReadIfo, TitleChainHasItsPaletteAndCounts) {
  const auto info = ReadIfo(TitleSetFile(
      {{.Category = 0x83, .Programs = 7, .Cells = 12, .Palette = {{0x10, 0x80, 0x81}, {0xEB, 0x7F, 0x80}}}}));
  ASSERT_TRUE(info) << info.Reason();
  EXPECT_EQ(info->Kind, IfoKind::TitleSet);
  ASSERT_EQ(info->Chains.size(), 1U);
  const ProgramChain& chain = info->Chains[0];
  EXPECT_EQ(chain.Place, ChainPlace::Title);
  EXPECT_TRUE(chain.IsEntry);
  EXPECT_EQ(chain.TitleOrMenu, 3);
  EXPECT_EQ(chain.Programs, 7);
  EXPECT_EQ(chain.Cells, 12);
  EXPECT_EQ(chain.Packed[0], 0x818010U);
  EXPECT_EQ(chain.Packed[1], 0x807FEBU);
  EXPECT_EQ(chain.Packed[15], 0U);
  EXPECT_THAT(info->Notes, IsEmpty());
}

TEST(ReadIfo, PaletteIsGivenAsRgbToo) {
  const auto info = ReadIfo(TitleSetFile({{.Palette = {{0x10, 0x80, 0x80}, {0xEB, 0x80, 0x80}}}}));
  ASSERT_TRUE(info);
  EXPECT_EQ(info->Chains[0].Palette[0], MakeRgb(0, 0, 0));
  EXPECT_EQ(info->Chains[0].Palette[1], MakeRgb(255, 255, 255));
}

TEST(ReadIfo, ChainThatIsNoEntryGoesOnWithItsTitle) {
  const auto info = ReadIfo(TitleSetFile({{.Category = 0x81}, {.Category = 0x01}, {.Category = 0x82}}));
  ASSERT_TRUE(info);
  EXPECT_THAT(Texts(*info), ElementsAre("title 1", "title 1, goes on", "title 2"));
}

TEST(ReadIfo, TitlesHaveNumbersOfSevenBitsAndMenusTypesOfFour) {
  const auto info =
      ReadIfo(TitleSetFile({{.Category = 0xE3}}, {{.Language = "en", .Chains = {{.Category = 0xF3}}}}));
  ASSERT_TRUE(info);
  EXPECT_THAT(Texts(*info), ElementsAre("title 99", "root menu (en)"));
}

TEST(ReadIfo, MenusOfEachLanguageFollowTheTitles) {
  const auto info =
      ReadIfo(TitleSetFile({{}}, {{.Language = "en", .Chains = {{.Category = 0x83}, {.Category = 0x84}}},
                                  {.Language = "de", .Chains = {{.Category = 0x00}}}}));
  ASSERT_TRUE(info);
  EXPECT_THAT(Texts(*info), ElementsAre("title 1", "root menu (en)", "subpicture menu (en)", "menu (de)"));
}

TEST(ReadIfo, MenuTypesAreNamed) {
  const auto info = ReadIfo(TitleSetFile(
      {{}}, {{.Language = "  ",
              .Chains = {{.Category = 0x82}, {.Category = 0x85}, {.Category = 0x86}, {.Category = 0x87}}}}));
  ASSERT_TRUE(info);
  EXPECT_THAT(Texts(*info), ElementsAre("title 1", "title menu", "audio menu", "angle menu", "chapter menu"));
}

TEST(ReadIfo, ChainWithoutCellsIsADummy) {
  const auto info = ReadIfo(TitleSetFile({{.Programs = 0, .Cells = 0}, {.Cells = 1}}));
  ASSERT_TRUE(info);
  EXPECT_TRUE(info->Chains[0].IsDummy());
  EXPECT_FALSE(info->Chains[1].IsDummy());
}

TEST(ReadIfo, VideoManagerHasFirstPlayAndMenus) {
  Bytes file = IfoHead("DVDVIDEO-VMG");
  AppendTable(file, 0xC8, IfoMenus({{.Language = "fr", .Chains = {{.Category = 0x82}}}}));
  PutNumber(file, 0x84, 0x400, 4);
  const Bytes chain = IfoChain({.Cells = 0, .Palette = {{0x22, 0x80, 0x80}}});
  std::ranges::copy(chain, file.begin() + 0x400);
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info) << info.Reason();
  EXPECT_EQ(info->Kind, IfoKind::VideoManager);
  EXPECT_THAT(Texts(*info), ElementsAre("first play", "title menu (fr)"));
  EXPECT_EQ(info->Chains[0].Packed[0], 0x808022U);
}

TEST(ReadIfo, VideoManagerHasNoTitleChains) {
  Bytes file = IfoHead("DVDVIDEO-VMG");
  AppendTable(file, 0xC8, IfoMenus({{.Language = "fr", .Chains = {{}}}}));
  AppendTable(file, 0xCC, IfoTable({{}}));
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_EQ(info->Chains.size(), 1U);
}

TEST(ReadIfo, ChainOfSeveralPointersStandsOnce) {
  Bytes file = TitleSetFile({{.Category = 0x81}, {.Category = 0x82}, {.Category = 0x83}});
  PutNumber(file, 2048 + 8 + 2 * 8 + 4, 8 + 3 * 8, 4);  // the third leads to the first one's chain
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_THAT(Texts(*info), ElementsAre("title 1", "title 2"));
  EXPECT_THAT(info->Notes, IsEmpty());
}

TEST(ReadIfo, TableOfTwoLanguagesStandsOnce) {
  Bytes file = TitleSetFile(
      {{}}, {{.Language = "en", .Chains = {{.Category = 0x83}}}, {.Language = "de", .Chains = {}}});
  PutNumber(file, 2 * 2048 + 8 + 8 + 4, 8 + 2 * 8, 4);
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_THAT(Texts(*info), ElementsAre("title 1", "root menu (en)"));
}

TEST(ReadIfo, VideoAttributesAreThoseOfTitlesAndMenus) {
  Bytes file = TitleSetFile({{}});
  file[0x200] = 0x5C;  // 01 01 11 00: MPEG-2, PAL, 16:9
  file[0x100] = 0x40;  // NTSC, 4:3
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_EQ(info->TitleVideo.Standard, VideoStandard::Pal);
  EXPECT_TRUE(info->TitleVideo.IsWide);
  EXPECT_EQ(info->MenuVideo.Standard, VideoStandard::Ntsc);
  EXPECT_FALSE(info->MenuVideo.IsWide);
  file[0x100] = 0x5C;
  EXPECT_EQ(ReadIfo(file)->MenuVideo.Standard, VideoStandard::Pal);
}

TEST(ReadIfo, UnassignedStandardIsUnknown) {
  Bytes file = TitleSetFile({{}});
  file[0x200] = 0x60;
  EXPECT_EQ(ReadIfo(file)->TitleVideo.Standard, VideoStandard::Unknown);
}

/// Two streams: English for all, German with director's comments.
Bytes FileWithTwoLanguages(const ChainSpec& chain) {
  Bytes file = TitleSetFile({chain});
  const Bytes streams = {0, 2, 1, 0, 'e', 'n', 0, 1, 1, 0, 'd', 'e', 0, 13};
  std::ranges::copy(streams, file.begin() + 0x254);
  return file;
}

TEST(ReadIfo, SubpictureStreamsHaveLanguageAndExtension) {
  const auto info = ReadIfo(FileWithTwoLanguages({}));
  ASSERT_TRUE(info);
  ASSERT_EQ(info->TitleSubpictures.size(), 2U);
  EXPECT_EQ(info->TitleSubpictures[0].Language, "en");
  EXPECT_EQ(info->TitleSubpictures[1].Language, "de");
  EXPECT_EQ(info->TitleSubpictures[1].Extension, 13);
}

TEST(ReadIfo, LanguageCountsOnlyWhereTheTypeSaysSo) {
  Bytes file = FileWithTwoLanguages({});
  file[0x256] = 0;
  EXPECT_EQ(ReadIfo(file)->TitleSubpictures[0].Language, "");
}

TEST(ReadIfo, LanguageMayHaveTheFirstAndTheLastLetter) {
  Bytes file = FileWithTwoLanguages({});
  file[0x256 + 2] = 'z';
  file[0x256 + 3] = 'a';
  EXPECT_EQ(ReadIfo(file)->TitleSubpictures[0].Language, "za");
}

TEST(ReadIfo, LanguageThatIsNotLettersIsNone) {
  Bytes file = FileWithTwoLanguages({});
  file[0x258] = 0xFF;
  EXPECT_EQ(ReadIfo(file)->TitleSubpictures[0].Language, "");
}

TEST(ReadIfo, MoreStreamsThanADiscCanHaveAreNotRead) {
  Bytes file = TitleSetFile({{}});
  PutNumber(file, 0x254, 0xFFFF, 2);
  PutNumber(file, 0x154, 0xFFFF, 2);
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_EQ(info->TitleSubpictures.size(), 32U);
  EXPECT_EQ(info->MenuSubpictures.size(), 1U);
}

TEST(ReadIfo, SubpictureControlGivesASubstreamForEachForm) {
  const auto info = ReadIfo(TitleSetFile({{.Subpictures = {{0x80, 1, 2, 3}, {0x04, 0, 0, 0}}}}));
  ASSERT_TRUE(info);
  const auto& streams = info->Chains[0].Subpictures;
  EXPECT_TRUE(streams[0].IsPresent);
  EXPECT_EQ(streams[0].Normal, 0);
  EXPECT_EQ(streams[0].Wide, 1);
  EXPECT_EQ(streams[0].Letterbox, 2);
  EXPECT_EQ(streams[0].PanScan, 3);
  EXPECT_FALSE(streams[1].IsPresent);
  EXPECT_EQ(streams[1].Normal, 4);
}

TEST(ReadIfo, ChainAtTheLastByteOfItsTableIsRead) {
  Bytes file = TitleSetFile({{}});
  file.resize(2048 + 16 + 0xEC);
  EXPECT_TRUE(ReadIfo(file));
}

TEST(ReadIfo, ChainPastTheEndOfItsTableIsLeftOut) {
  Bytes file = TitleSetFile({{.Category = 0x81}, {.Category = 0x82}});
  PutNumber(file, 2048 + 4, 24 + 2 * 0xEC - 2, 4);  // one byte short
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_THAT(Texts(*info), ElementsAre("title 1"));
  EXPECT_THAT(info->Notes, ElementsAre("1 program chain outside the file or its table left out"));
}

TEST(ReadIfo, ChainPastTheEndOfTheFileIsLeftOut) {
  Bytes file = TitleSetFile({{}, {}});
  PutNumber(file, 2048 + 4, 0xFFFFFFFF, 4);
  PutNumber(file, 2048 + 8 + 8 + 4, 0xFFFFFF00, 4);
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_EQ(info->Chains.size(), 1U);
}

TEST(ReadIfo, FileWithoutAnyChainSaysWhatIsWrong) {
  EXPECT_EQ(ReadIfo(IfoHead("DVDVIDEO-VTS")).Reason(), "it has no program chains");
  Bytes file = IfoHead("DVDVIDEO-VTS");
  PutNumber(file, 0xCC, 0xFFFFFFFF, 4);
  EXPECT_EQ(ReadIfo(file).Reason(), "its table of title chains stands outside the file");
  Bytes manager = IfoHead("DVDVIDEO-VMG");
  PutNumber(manager, 0xC8, 7, 4);
  EXPECT_EQ(ReadIfo(manager).Reason(), "its table of menu languages stands outside the file");
}

TEST(ReadIfo, MenuTableOutsideTheFileIsNoted) {
  Bytes file = TitleSetFile({{}}, {{.Language = "en", .Chains = {{}}}});
  PutNumber(file, 2 * 2048 + 8 + 4, 0xFFFFFFFF, 4);
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_THAT(info->Notes, ElementsAre("1 table of menu chains outside the file left out"));
}

TEST(ReadIfo, MenuTablesOfLanguagesOutsideTheFileAreCounted) {
  Bytes file = TitleSetFile({{}}, {{.Language = "en", .Chains = {{}}}});
  PutNumber(file, 2 * 2048, 3, 2);
  file.resize(2 * 2048 + 8 + 8);  // the first of three, but not its table
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_THAT(info->Notes, ElementsAre("3 tables of menu chains outside the file left out"));
}

TEST(ReadIfo, MenuChainsOutsideTheFileAreCounted) {
  Bytes file = TitleSetFile({{}}, {{.Language = "en", .Chains = {{}}}});
  PutNumber(file, 2 * 2048 + 16, 3, 2);
  file.resize(2 * 2048 + 16 + 8 + 8);  // the first of three, but not its chain
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_THAT(info->Notes, ElementsAre("3 program chains outside the file or its table left out"));
}

TEST(ReadIfo, OtherFilesAreNamedAsSuch) {
  EXPECT_EQ(ReadIfo({}).Reason(), "it is no IFO file: it starts with neither DVDVIDEO-VTS nor DVDVIDEO-VMG");
  EXPECT_FALSE(ReadIfo(IfoHead("DVDVIDEO-VTX")));
}

TEST(ReadIfo, FileCutInItsFirstSectorIsNamedAsSuch) {
  Bytes file = TitleSetFile({{}});
  file.resize(2047);
  EXPECT_EQ(ReadIfo(file).Reason(), "it is cut short: of its first 2,048 bytes there are 2047");
  file.resize(12);
  EXPECT_EQ(ReadIfo(file).Reason(), "it is cut short: of its first 2,048 bytes there are 12");
}

TEST(ReadIfo, LongestFileIsReadAndALongerOneNot) {
  Bytes file = TitleSetFile({{}});
  file.resize(1048576);
  EXPECT_TRUE(ReadIfo(file));
  file.push_back(0);
  EXPECT_EQ(ReadIfo(file).Reason(), "it is too long: an IFO file has at most 1,048,576 bytes");
}

TEST(ReadIfo, TruncationAtEveryLengthGivesFewerChainsOrAReason) {
  const Bytes file = TitleSetFile({{}, {}}, {{.Language = "en", .Chains = {{}}}});
  std::size_t chains = 0;
  for (std::size_t length = 0; length <= file.size(); ++length) {
    const auto info = ReadIfo(std::span(file).first(length));
    EXPECT_TRUE(info || !info.Reason().empty());
    const std::size_t count = info ? info->Chains.size() : 0;
    EXPECT_GE(count, chains) << length;
    chains = count;
  }
  EXPECT_EQ(chains, 3U);
}

/// 65535 languages whose tables of 65535 entries each start 8 bytes apart.
TEST(ReadIfo, TablesThatOverlapEndSoon) {
  Bytes file = IfoHead("DVDVIDEO-VMG");
  file.resize(1048576, 0xFF);
  PutNumber(file, 0xC8, 1, 4);
  for (std::uint32_t i = 0; i < 65535; ++i) {
    PutNumber(file, 2048 + 8 + 8 * i + 4, 8 * i, 4);
  }
  const auto info = ReadIfo(file);
  EXPECT_TRUE(info || !info.Reason().empty());
}

TEST(ReadIfo, ChainsThatOverlapEndSoon) {
  Bytes file = IfoHead("DVDVIDEO-VTS");
  PutNumber(file, 0xCC, 1, 4);
  PutNumber(file, 2048, 2000, 2);
  PutNumber(file, 2048 + 4, 0xFFFFFFFF, 4);
  file.resize(20480);
  for (std::uint32_t i = 0; i < 2000; ++i) {
    PutNumber(file, 2048 + 8 + 8 * i + 4, i, 4);
  }
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_EQ(info->Chains.size(), 20480U / 0xEC);
  EXPECT_THAT(info->Notes, ElementsAre("its tables overlap; what follows the first of them is left out"));
}

/// Two tables of menus, the second one 8 bytes into the first: each has 2,000 entries, and the file has room
/// for 2,560.
TEST(ReadIfo, EntriesOfTablesThatOverlapEndSoon) {
  Bytes file = IfoHead("DVDVIDEO-VMG");
  PutNumber(file, 0xC8, 1, 4);
  file.resize(20480);
  PutNumber(file, 2048, 2, 2);
  for (std::uint32_t i = 0; i < 2; ++i) {
    PutNumber(file, 2048 + 8 + 8 * i + 4, 24 + 8 * i, 4);
    PutNumber(file, 2048 + 24 + 8 * i, 2000, 2);
    PutNumber(file, 2048 + 24 + 8 * i + 4, 0xFFFFFFFF, 4);
  }
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info) << info.Reason();
  EXPECT_THAT(info->Notes,
              testing::Contains("its tables overlap; what follows the first of them is left out"));
}

TEST(ReadIfo, FirstPlayChainOutsideTheFileIsTold) {
  Bytes file = IfoHead("DVDVIDEO-VMG");
  AppendTable(file, 0xC8, IfoMenus({{.Language = "fr", .Chains = {{}}}}));
  PutNumber(file, 0x84, 0xFFFFFF00, 4);
  const auto info = ReadIfo(file);
  ASSERT_TRUE(info);
  EXPECT_THAT(Texts(*info), ElementsAre("menu (fr)"));
  EXPECT_THAT(info->Notes, ElementsAre("1 program chain outside the file or its table left out"));
}

TEST(ReadIfo, LanguageOfOtherSignsThanLettersIsUnknown) {
  for (const char sign : {'@', '{', '\0'}) {
    Bytes file = FileWithTwoLanguages({});
    file[0x258] = static_cast<std::uint8_t>(sign);
    EXPECT_EQ(ReadIfo(file)->TitleSubpictures[0].Language, "");
  }
}

TEST(FactsOfSubstreams, ExtensionsAreNamed) {
  const auto nameOf = [](std::uint8_t extension) {
    Bytes file = FileWithTwoLanguages({.Subpictures = {{0x83, 0, 0, 0}, {0x80, 0, 0, 0}}});
    file[0x254 + 13] = extension;
    return FactsOfSubstreams(*ReadIfo(file))->Names[0];
  };
  EXPECT_EQ(nameOf(1), "");
  EXPECT_EQ(nameOf(2), "large letters");
  EXPECT_EQ(nameOf(3), "for children");
  EXPECT_EQ(nameOf(5), "captions");
  EXPECT_EQ(nameOf(6), "captions, large letters");
  EXPECT_EQ(nameOf(7), "captions for children");
  EXPECT_EQ(nameOf(9), "forced");
  EXPECT_EQ(nameOf(14), "director's comments, large letters");
  EXPECT_EQ(nameOf(15), "director's comments for children");
}

TEST(FactsOfSubstreams, SubstreamHasTheLanguageOfItsStream) {
  const auto facts =
      FactsOfSubstreams(*ReadIfo(FileWithTwoLanguages({.Subpictures = {{0x83, 0, 0, 0}, {0x80, 0, 0, 0}}})));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->Languages[3], "en");
  EXPECT_EQ(facts->Names[3], "");
  EXPECT_EQ(facts->Languages[0], "de");
  EXPECT_EQ(facts->Names[0], "director's comments");
  EXPECT_EQ(facts->Languages[1], "");
}

TEST(FactsOfSubstreams, SubstreamOfTwoStreamsHasTheLanguageOfTheFirst) {
  const auto facts =
      FactsOfSubstreams(*ReadIfo(FileWithTwoLanguages({.Subpictures = {{0x80, 0, 0, 0}, {0x80, 0, 0, 0}}})));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->Languages[0], "en");
}

TEST(FactsOfSubstreams, StreamThatIsNotPresentNamesNoSubstream) {
  const auto facts = FactsOfSubstreams(*ReadIfo(FileWithTwoLanguages({.Subpictures = {{0x03, 0, 0, 0}}})));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->Languages[3], "");
}

TEST(FactsOfSubstreams, StreamOfAChainThatTheTitlesDoNotHaveSaysNothing) {
  const auto facts = FactsOfSubstreams(
      *ReadIfo(FileWithTwoLanguages({.Subpictures = {{0x80, 0, 0, 0}, {0x81, 0, 0, 0}, {0x82, 0, 0, 0}}})));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->Languages[1], "de");
  EXPECT_EQ(facts->Languages[2], "");
  EXPECT_EQ(facts->Names[2], "");
}

TEST(FactsOfSubstreams, FormsOfWideVideoAreSubstreamsOfTheirOwn) {
  Bytes file = FileWithTwoLanguages({.Subpictures = {{0x80, 1, 2, 0}, {0x80, 3, 0, 0}}});
  file[0x200] = 0x4C;
  const auto facts = FactsOfSubstreams(*ReadIfo(file));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->Languages[1], "en");
  EXPECT_EQ(facts->Names[1], "");
  EXPECT_EQ(facts->Languages[2], "en");
  EXPECT_EQ(facts->Names[2], "letterbox");
  EXPECT_EQ(facts->Languages[3], "de");
}

TEST(FactsOfSubstreams, PaletteIsThatOfTheFirstTitleWithPictureAndColours) {
  const auto facts = FactsOfSubstreams(*ReadIfo(TitleSetFile(
      {{.Cells = 0, .Palette = {{0x10, 0x80, 0x80}}}, {.Palette = {}}, {.Palette = {{0xEB, 0x80, 0x80}}}})));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->Palette[0], MakeRgb(255, 255, 255));
}

TEST(FactsOfSubstreams, FileWithoutTitlesHasNone) {
  Bytes file = IfoHead("DVDVIDEO-VMG");
  AppendTable(file, 0xC8, IfoMenus({{.Language = "fr", .Chains = {{}}}}));
  EXPECT_FALSE(FactsOfSubstreams(*ReadIfo(file)));
}

class IfoFiles : public test::FolderTest {};

TEST_F(IfoFiles, FileOfTheDiscIsReadWhole) {
  const auto info = ReadIfoFile(PathFromUtf8(QUILLMARK_TEST_DATA "/palette/VTS_01_0-ntsc.IFO"));
  ASSERT_TRUE(info) << info.Reason();
  EXPECT_THAT(Texts(*info), ElementsAre("title 1", "title 2"));
  // What ifo.json says of the first chain's entries 0, 4 and 15, and the file's bytes of the second one's.
  EXPECT_EQ(info->Chains[0].Packed[0], 0x80801EU);
  EXPECT_EQ(info->Chains[0].Packed[4], 0xA23492U);
  EXPECT_EQ(info->Chains[0].Packed[15], 0x808010U);
  EXPECT_EQ(info->Chains[1].Packed[3], 0xD26A43U);
  EXPECT_EQ(info->TitleVideo.Standard, VideoStandard::Ntsc);
  const auto facts = FactsOfSubstreams(*info);
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->Languages[0], "en");
  EXPECT_EQ(facts->Languages[1], "de");
}

TEST_F(IfoFiles, FileOfTheVideoManagerIsReadToo) {
  const auto info = ReadIfoFile(PathFromUtf8(QUILLMARK_TEST_DATA "/palette/VIDEO_TS-ntsc.IFO"));
  ASSERT_TRUE(info) << info.Reason();
  EXPECT_EQ(info->Kind, IfoKind::VideoManager);
}

TEST_F(IfoFiles, FileThatIsTooLongHasAReason) {
  Bytes file = TitleSetFile({{}});
  file.resize(1048577);
  EXPECT_EQ(ReadIfoFile(PathFromUtf8(Put("a.ifo", {file.begin(), file.end()}).toStdString())).Reason(),
            "it is too long: an IFO file has at most 1,048,576 bytes");
}

TEST_F(IfoFiles, MissingFileHasAReason) {
  EXPECT_EQ(ReadIfoFile(PathFromUtf8(Path("missing.ifo").toStdString())).Reason(),
            "No such file or directory");
}

TEST_F(IfoFiles, FileThatCannotBeReadHasAReason) {
  const auto path = PathFromUtf8(Path("a.ifo").toStdString());
  if (!test::LinkUnreadableFile(path)) {
    GTEST_SKIP() << test::NeedsUnreadableFile;
  }
  EXPECT_EQ(ReadIfoFile(path).Reason(), "it cannot be read");
}

}  // namespace
}  // namespace quillmark
