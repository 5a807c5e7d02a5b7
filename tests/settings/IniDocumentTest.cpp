// Files as people and programs write them: what is read, and what a rewrite leaves alone.
#include "settings/IniDocument.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace std::string_literals;

namespace spectrino {
namespace {

IniDocument Parsed(std::string_view text) {
  std::string why;
  auto document = IniDocument::Parse(text, why);
  EXPECT_TRUE(document) << why;
  return document.value_or(IniDocument());
}

TEST(IniDocument, ARewriteChangesTheKeyAndNothingElse) {
  const struct {
    std::string Before, Section, Key, Value, After;
  } files[] = {{"", "Setup", "Ref", "-66", "[Setup]\nRef=-66\n"},
               {"; mine\n[Setup]\n# why\nRef=-60 \nnonsense\n\n[PAN]\nMD=3\n", "setup", "REF", "-66",
                "; mine\n[Setup]\n# why\nRef=-66\nnonsense\n\n[PAN]\nMD=3\n"},
               {"[Setup]\nRef=-60\n\n; the macros\n[Macros]\nmac0=x\n", "Setup", "Divisor", "1",
                "[Setup]\nRef=-60\n\n; the macros\nDivisor=1\n[Macros]\nmac0=x\n"},
               {"[A]\nk=1", "A", "l", "2", "[A]\nk=1\nl=2\n"},
               {"[A]\nk=1\n", "B", "k", "2", "[A]\nk=1\n\n[B]\nk=2\n"},
               {"\xEF\xBB\xBF[A]\r\nk=1\r\n", "a", "L", "2", "\xEF\xBB\xBF[A]\r\nk=1\r\nL=2\r\n"},
               {"[A]\nk=1\n[B]\nk=5\n[A]\nk=2\n", "A", "k", "3", "[A]\nk=1\n[B]\nk=5\n[A]\nk=3\n"},
               {"[Macros]\n", "Macros", "mac0", "KY;FA00014000000;", "[Macros]\nmac0=KY;FA00014000000;\n"},
               {"", "M", "k", " a=b \\ c\r\nd\t;#[x] ", "[M]\nk= a=b \\\\ c\\r\\nd\t;#[x] \n"},
               {"stray=1\n[A]\n", "", "stray", "2", "stray=2\n[A]\n"},
               {"[A]\nk=1\n", "A", "k", "", "[A]\nk=\n"}};
  for (const auto& file : files) {
    IniDocument document = Parsed(file.Before);
    EXPECT_EQ(document.Text(), file.Before) << "reading alone changed the text";
    document.Set(file.Section, file.Key, file.Value);
    EXPECT_EQ(document.Text(), file.After);
    EXPECT_EQ(document.Find(file.Section, file.Key), file.Value);
    EXPECT_EQ(Parsed(document.Text()).Find(file.Section, file.Key), file.Value);
  }
}

TEST(IniDocument, ReadsWhatScriptsWrite) {
  const IniDocument document = Parsed(
      "\xEF\xBB\xBF [ PAN ] \r\n MD =3\r\nAppPath=C:\\Program Files\\x\r\nnum\xC3\xA9ro=7\r\n;FA=1\r\nFA=\\");
  EXPECT_EQ(document.Find("pan", "md"), "3");
  EXPECT_EQ(document.Find("PAN", "AppPath"), "C:\\Program Files\\x");
  EXPECT_EQ(document.Find("PAN", "num\xC3\xA9ro"), "7");
  EXPECT_EQ(document.Find("PAN", "FA"), "\\");
  EXPECT_EQ(document.Find("PAN", ";FA"), std::nullopt);
  EXPECT_EQ(document.Find("Setup", "MD"), std::nullopt);
}

TEST(IniDocument, WhatAreNoSettingsIsRefusedWithTheReason) {
  const std::pair<std::string, const char*> files[] = {
      {"[A]\nk=\0\n"s, "binary"},
      {"[A]\nk=\xE9\n", "UTF-8"},          // Latin-1
      {"[A]\nk=\xC0\xAF\n", "UTF-8"},      // overlong
      {"[A]\nk=\xED\xA0\x80\n", "UTF-8"},  // surrogate
      {"[A]\nk=\xF4\x90\x80\x80", "UTF-8"},
      {"[A]\nk=\xE2\x82", "UTF-8"},  // cut off
      {std::string(IniDocument::kMostBytes + 1, 'k'), "larger"}};
  for (const auto& [text, reason] : files) {
    std::string why;
    EXPECT_FALSE(IniDocument::Parse(text, why));
    EXPECT_THAT(why, ::testing::HasSubstr(reason));
    // As one value it must not be able to make the file unreadable.
    IniDocument document;
    document.Set("A", "k", IniDocument::StorableText(text.substr(0, 64)));
    EXPECT_TRUE(IniDocument::Parse(document.Text(), why)) << why;
  }
}

}  // namespace
}  // namespace spectrino
