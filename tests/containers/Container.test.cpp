#include "containers/Container.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

#include "base/FilePath.h"
#include "containers/Language.h"
#include "containers/PacketAppender.h"
#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

using testing::HasSubstr;

Container ThreeTracks() {
  Container container;
  container.Tracks.resize(3);
  container.Tracks[0].Language = "en";
  container.Tracks[1].Language = "de";
  return container;
}

TEST(AppendPacket, LeavesOutAUnitThatIsShorterThanItsHeader) {
  std::vector<std::uint8_t> packets = {0x77};
  AppendPacket(packets, 0, std::vector<std::uint8_t>{0x00, 0x04, 0x00});
  EXPECT_EQ(packets, std::vector<std::uint8_t>{0x77});
}

TEST(FindTrack, NumberCountsFromOne) {
  const auto found = FindTrack(ThreeTracks(), "2");
  ASSERT_TRUE(found);
  EXPECT_EQ(*found, 1U);
}

TEST(FindTrack, LanguageInAnyCase) {
  const auto found = FindTrack(ThreeTracks(), "DE");
  ASSERT_TRUE(found);
  EXPECT_EQ(*found, 1U);
}

TEST(FindTrack, TheOnlyTrackNeedsNoName) {
  Container container;
  container.Tracks.resize(1);
  const auto found = FindTrack(container, "");
  ASSERT_TRUE(found);
  EXPECT_EQ(*found, 0U);
}

TEST(FindTrack, OneOfSeveralMustBeNamed) {
  EXPECT_EQ(FindTrack(ThreeTracks(), "").Reason(), "it has several tracks: 1 (en), 2 (de), 3");
}

TEST(FindTrack, MissingOneIsToldWithThoseThatThereAre) {
  EXPECT_EQ(FindTrack(ThreeTracks(), "fr").Reason(), "there is no track fr; it has 1 (en), 2 (de), 3");
}

TEST(FindTrack, LanguageOfThreeLettersIsThatOfTwo) {
  const auto found = FindTrack(ThreeTracks(), "ger");
  ASSERT_TRUE(found);
  EXPECT_EQ(*found, 1U);
}

TEST(LanguageCode, MayHaveTheFirstAndTheLastLetter) {
  EXPECT_EQ(LanguageCode("zh"), "zh");
  EXPECT_EQ(LanguageCode("ara"), "ar");
}

TEST(FindTrack, LanguageOfSeveralTracksNamesNone) {
  Container container = ThreeTracks();
  container.Tracks[2].Language = "deu";
  EXPECT_EQ(FindTrack(container, "de").Reason(), "several tracks are in de: 1 (en), 2 (de), 3 (deu)");
}

TEST(FindTrack, SingleTrackOfUnknownLanguageIsTheOneInAny) {
  Container container;
  container.Tracks.resize(1);
  EXPECT_TRUE(FindTrack(container, "de"));
  EXPECT_FALSE(FindTrack(container, "2"));
}

TEST(FindTrack, AnUnknownLanguageIsNotTheEmptyName) {
  EXPECT_FALSE(FindTrack(ThreeTracks(), "4"));
}

class ContainerFiles : public test::FolderTest {
 protected:
  std::filesystem::path File(const QString& name, const std::string& content) const {
    return PathFromUtf8(Put(name, content).toStdString());
  }
};

TEST_F(ContainerFiles, SupSignatureIsStrongerThanTheName) {
  const auto path = File("a.mkv", std::string("SP\1\0\0\0\0\0\0\0", 10));
  EXPECT_EQ(FormatOf(path).Id, "sup");
}

TEST_F(ContainerFiles, FileOfNoKnownKindIsTakenForSup) {
  const auto path = File("a.txt", "hello");
  EXPECT_EQ(FormatOf(path).Id, "sup");
  EXPECT_EQ(ReadContainer(path).Reason(), "No SUP signature found");
}

TEST_F(ContainerFiles, SupIsOneTrackByteForByte) {
  const std::string packet("SP\1\0\0\0\0\0\0\0\0\5\0\4\xFF", 15);
  const auto read = ReadContainer(File("a.sup", packet));
  ASSERT_TRUE(read && *read);
  ASSERT_EQ((*read)->Tracks.size(), 1U);
  const auto& bytes = (*read)->Tracks[0].Packets;
  EXPECT_EQ(std::string(bytes.begin(), bytes.end()), packet);
}

TEST_F(ContainerFiles, MissingFileHasAReason) {
  EXPECT_FALSE(ReadContainer(PathFromUtf8(Path("missing.sup").toStdString())).Reason().empty());
}

TEST(FindTrack, SingleTrackOfAnotherLanguageIsNotTheOne) {
  Container container;
  container.Tracks.resize(1);
  container.Tracks[0].Language = "en";
  EXPECT_EQ(FindTrack(container, "de").Reason(), "there is no track de; it has 1 (en)");
}

TEST(LanguageCode, IsThatOfTwoLettersWhereThereIsOne) {
  EXPECT_EQ(LanguageCode("de"), "de");
  EXPECT_EQ(LanguageCode("deu"), "de");
  EXPECT_EQ(LanguageCode("GER"), "de");
  EXPECT_EQ(LanguageCode("pt-BR"), "pt");
  EXPECT_EQ(LanguageCode("xx"), "xx");
  EXPECT_EQ(LanguageCode("qqq"), "qqq");
}

TEST(LanguageCode, OfWhatIsNoLanguageIsEmpty) {
  for (const char* none : {"", "d", "germ", "und", "d1", "1d", "d{", "{d", "d`", "-de"}) {
    EXPECT_EQ(LanguageCode(none), "") << none;
  }
}

}  // namespace
}  // namespace quillmark
