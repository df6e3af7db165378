#include "base/Words.h"

#include <string>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

std::string asked;

/// Knows three texts, and tells what it was asked for.
std::optional<std::string> Spoken(const char* context, const char* text, const char* many, int count) {
  asked =
      std::string(context) + '|' + text + '|' + (many != nullptr ? many : "-") + '|' + std::to_string(count);
  const std::string_view english = text;
  if (english == "a file") {
    return "eine Datei";
  }
  if (english == "%1 of %2") {
    return "von %2 nur %1";
  }
  if (english == "%n file") {
    return count == 1 ? "%n Datei" : "%n Dateien";
  }
  return std::nullopt;
}

class WordsTest : public testing::Test {
 protected:
  ~WordsTest() override { InstallTranslator(nullptr); }
};

TEST_F(WordsTest, AreEnglishWithoutATranslator) {
  EXPECT_EQ(Words::Tr("a file"), "a file");
  EXPECT_EQ(Words::Tr("%1 of %2", {"3", "5"}), "3 of 5");
  EXPECT_EQ(Words::Tr("%n file", "%n files", 1), "1 file");
  EXPECT_EQ(Words::Tr("%n file", "%n files", 0), "0 files");
  EXPECT_EQ(Words::Tr("%n file", "%n files", 2), "2 files");
}

TEST_F(WordsTest, AreTheTranslatorsWhereItHasThem) {
  InstallTranslator(Spoken);
  EXPECT_EQ(Words::Tr("a file"), "eine Datei");
  EXPECT_EQ(asked, "Words|a file|-|-1");
  EXPECT_EQ(Words::Tr("%1 of %2", {"3", "5"}), "von 5 nur 3");
  EXPECT_EQ(Words::Tr("%n file", "%n files", 1), "1 Datei");
  EXPECT_EQ(asked, "Words|%n file|%n files|1");
  EXPECT_EQ(Words::Tr("%n file", "%n files", 2), "2 Dateien");
}

TEST_F(WordsTest, StayEnglishWhereTheTranslatorHasThemNot) {
  InstallTranslator(Spoken);
  EXPECT_EQ(Words::Tr("a folder"), "a folder");
  EXPECT_EQ(Words::Tr("%n folder", "%n folders", 2), "2 folders");
}

TEST_F(WordsTest, ACountBeyondWhatATranslatorTakesIsSaidAllTheSame) {
  InstallTranslator(Spoken);
  EXPECT_EQ(Words::Tr("%n file", "%n files", std::int64_t{5'000'000'000}), "5000000000 Dateien");
}

TEST_F(WordsTest, WhatAValueHasOfMarksStays) {
  EXPECT_EQ(Words::Tr("%1 of %2", {"100 %2", "%1%n"}), "100 %2 of %1%n");
  EXPECT_EQ(Words::Tr("%n file in %1", "%n files in %1", 2, {"%n %1"}), "2 files in %n %1");
}

TEST_F(WordsTest, AMarkWithoutAValueStays) {
  EXPECT_EQ(Words::Tr("100 % of %3 and %n, 5%", {"a"}), "100 % of %3 and %n, 5%");
}

// A colon comes after the digit nine.
TEST_F(WordsTest, NoMarkComesAfterTheNinth) {
  EXPECT_EQ(Words::Tr("%9 %:", {"1", "2", "3", "4", "5", "6", "7", "8", "nine", "ten"}), "nine %:");
}

}  // namespace
}  // namespace quillmark
