#include "app/PathText.h"

#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

TEST(FolderOf, IsWhatStandsBeforeTheLastSlash) {
  EXPECT_EQ(FolderOf("/films/one/movie.sup"), "/films/one");
  EXPECT_EQ(FolderOf("/movie.sup"), "/");
  EXPECT_EQ(FolderOf("f/movie.sup"), "f");
  EXPECT_EQ(FolderOf("movie.sup"), "");
}

TEST(ReplaceExtension, IsOfTheNameAlone) {
  EXPECT_EQ(ReplaceExtension("/films/movie.de.sup", ".png"), "/films/movie.de.png");
  EXPECT_EQ(ReplaceExtension("/films.old/movie", ".png"), "/films.old/movie.png");
  EXPECT_EQ(ReplaceExtension("movie", ".png"), "movie.png");
}

TEST(CutInTheMiddle, LeavesAThirdBeforeTheCut) {
  EXPECT_EQ(CutInTheMiddle("abcdefghi", 9), "abcdefghi");
  EXPECT_EQ(CutInTheMiddle("abcdefghij", 9), QString("abc") + QChar(0x2026) + "efghij");
}

TEST(SupPathOrDefault, PathThatIsTooShortForAnEndingIsNone) {
  EXPECT_EQ(SupPathOrDefault("abc"), InProgramsFolder("test.sup"));
  EXPECT_EQ(SupPathOrDefault("abcd"), "abcd");
}

TEST(ProposedIfoName, IsTheStreamsInSmallLetters) {
  EXPECT_EQ(ProposedIfoName("Movie.SUP"), "movie.ifo");
  EXPECT_EQ(ProposedIfoName("/Nowhere/Movie.SUP"), "/Nowhere/movie.ifo");
  EXPECT_EQ(ProposedIfoName("abc"), ".ifo");
}

}  // namespace
}  // namespace quillmark::test
