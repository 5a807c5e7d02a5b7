// What an Icom would have replied, from the answers of a rigctld in front of one.
#include "host/CivReads.h"

#include <gtest/gtest.h>

namespace spectrino {
namespace {

TEST(CivReads, TellWhatTheRadioWouldReply) {
  const struct {
    const char *Civ, *Answer, *Reply;
  } cases[] = {
      {"1401", "0.501961", "14010128"},
      {"1403", "0.000000", "14030000"},
      {"1401", "1.5", ""},
      {"1401", "nan", "14010000"},
      {"1602", "12", "160201"},
      {"1602", "0", "160200"},
      {"1612", "5", "161202"},
      {"1612", "3", "161203"},
      {"1612", "4", ""},
      {"1622", "1", "162201"},
      {"11", "20", "1120"},
      {"11", "-1", ""},
      {"271400", "2", "27140001"},
      {"271400", "1", "27140000"},
      {"271900", "-10.500000", "271900105001"},
      {"271900", "5.5", "271900055000"},
      {"271900", "21", ""},
      {"271A00", "2", "271A0000"},
  };
  for (const auto& one : cases) {
    const CivRead* read = FindCivRead(one.Civ);
    ASSERT_NE(read, nullptr) << one.Civ;
    EXPECT_EQ(CivReply(*read, {std::string(read->Command), {one.Answer}, 0}), one.Reply) << one.Answer;
  }
  EXPECT_EQ(CivReply(*FindCivRead("1401"), {"get_level", {"0.5"}, -9}), "");
  EXPECT_EQ(FindCivRead("1900"), nullptr);
}

}  // namespace
}  // namespace spectrino
