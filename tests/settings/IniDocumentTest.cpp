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

struct Rewrite {
  std::string before, section, key, value, after;
};
class RewriteTest : public ::testing::TestWithParam<Rewrite> {};

TEST_P(RewriteTest, ChangesTheKeyAndNothingElse) {
  const Rewrite& given = GetParam();
  IniDocument document = Parsed(given.before);
  EXPECT_EQ(document.Text(), given.before) << "reading alone changed the text";
  document.Set(given.section, given.key, given.value);
  EXPECT_EQ(document.Text(), given.after);
  EXPECT_EQ(document.Find(given.section, given.key), given.value);
  EXPECT_EQ(Parsed(document.Text()).Find(given.section, given.key), given.value);
}

INSTANTIATE_TEST_SUITE_P(
    Files, RewriteTest,
    ::testing::Values(
        Rewrite{"", "Setup", "Ref", "-66", "[Setup]\nRef=-66\n"},
        Rewrite{"; mine\n[Setup]\n# why\nRef=-60 \nnonsense\n\n[PAN]\nMD=3\n", "setup", "REF", "-66",
                "; mine\n[Setup]\n# why\nRef=-66\nnonsense\n\n[PAN]\nMD=3\n"},
        Rewrite{"[Setup]\nRef=-60\n\n; the macros\n[Macros]\nmac0=x\n", "Setup", "Divisor", "1",
                "[Setup]\nRef=-60\n\n; the macros\nDivisor=1\n[Macros]\nmac0=x\n"},
        Rewrite{"[A]\nk=1", "A", "l", "2", "[A]\nk=1\nl=2\n"},
        Rewrite{"[A]\nk=1\n", "B", "k", "2", "[A]\nk=1\n\n[B]\nk=2\n"},
        Rewrite{"\xEF\xBB\xBF[A]\r\nk=1\r\n", "a", "L", "2", "\xEF\xBB\xBF[A]\r\nk=1\r\nL=2\r\n"},
        Rewrite{"[A]\nk=1\n[B]\nk=5\n[A]\nk=2\n", "A", "k", "3", "[A]\nk=1\n[B]\nk=5\n[A]\nk=3\n"},
        Rewrite{"[Macros]\n", "Macros", "mac0", "KY;FA00014000000;", "[Macros]\nmac0=KY;FA00014000000;\n"},
        Rewrite{"", "M", "k", " a=b \\ c\r\nd\t;#[x] ", "[M]\nk= a=b \\\\ c\\r\\nd\t;#[x] \n"},
        Rewrite{"stray=1\n[A]\n", "", "stray", "2", "stray=2\n[A]\n"},
        Rewrite{"[A]\nk=1\n", "A", "k", "", "[A]\nk=\n"}));

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

struct NoSettings {
  std::string text, why;
};
class NoSettingsTest : public ::testing::TestWithParam<NoSettings> {};

TEST_P(NoSettingsTest, IsRefusedWithTheReason) {
  std::string why;
  EXPECT_FALSE(IniDocument::Parse(GetParam().text, why));
  EXPECT_THAT(why, ::testing::HasSubstr(GetParam().why));
  // As one value it must not be able to make the file unreadable.
  IniDocument document;
  document.Set("A", "k", IniDocument::StorableText(GetParam().text.substr(0, 64)));
  EXPECT_TRUE(IniDocument::Parse(document.Text(), why)) << why;
}

INSTANTIATE_TEST_SUITE_P(
    Files, NoSettingsTest,
    ::testing::Values(NoSettings{"[A]\nk=\0\n"s, "binary"}, NoSettings{"[A]\nk=\xE9\n", "UTF-8"},  // Latin-1
                      NoSettings{"[A]\nk=\xC0\xAF\n", "UTF-8"},                                    // overlong
                      NoSettings{"[A]\nk=\xED\xA0\x80\n", "UTF-8"},  // surrogate
                      NoSettings{"[A]\nk=\xF4\x90\x80\x80", "UTF-8"},
                      NoSettings{"[A]\nk=\xE2\x82", "UTF-8"},  // cut off
                      NoSettings{std::string(IniDocument::kMostBytes + 1, 'k'), "larger"}));

}  // namespace
}  // namespace spectrino
