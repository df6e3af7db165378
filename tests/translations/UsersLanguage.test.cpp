#include "translations/UsersLanguage.h"

#include <gtest/gtest.h>

#include "base/Words.h"

namespace quillmark {
namespace {

TEST(LanguageFor, ALanguageOfACountryCountsAsTheLanguage) {
  EXPECT_EQ(LanguageFor({"de-AT", "de"}), "de");
  EXPECT_EQ(LanguageFor({"de_CH"}), "de");
  EXPECT_EQ(LanguageFor({"DE"}), "de");
}

TEST(LanguageFor, TheFirstThatIsSpokenIsTaken) {
  EXPECT_EQ(LanguageFor({"tlh", "fr-FR", "de-DE", "en"}), "de");
}

TEST(LanguageFor, WhoReadsEnglishFirstGetsEnglish) {
  EXPECT_EQ(LanguageFor({"en-GB", "de-DE"}), "");
  EXPECT_EQ(LanguageFor({"C", "de"}), "");
}

TEST(LanguageFor, NoneThatIsSpokenIsEnglish) {
  EXPECT_EQ(LanguageFor({"tlh", ""}), "");
  EXPECT_EQ(LanguageFor({}), "");
}

TEST(Speak, TextsAreInTheLanguageFromThenOn) {
  Speak("de");
  EXPECT_EQ(Words::Tr("it is a folder"), "es ist ein Ordner");
  EXPECT_EQ(Words::Tr("%n other pixel", "%n other pixels", 1), "1 anderes Pixel");
  EXPECT_EQ(Words::Tr("%n other pixel", "%n other pixels", 2), "2 andere Pixel");
  EXPECT_EQ(Words::Tr("line %1 is no delay", {"7"}), "Zeile 7 ist keine Verzögerung");
  EXPECT_EQ(Words::Tr("a text of this test alone"), "a text of this test alone");
  Speak("");
  EXPECT_EQ(Words::Tr("it is a folder"), "it is a folder");
}

TEST(Speak, ALanguageThatIsNotThereIsEnglish) {
  Speak("de");
  Speak("tlh");
  EXPECT_EQ(Words::Tr("it is a folder"), "it is a folder");
}

}  // namespace
}  // namespace quillmark
