// Numbers and frequencies as text.
#include <gtest/gtest.h>

#include <cmath>

#include "state/FrequencyText.h"
#include "state/Val.h"

namespace spectrino {
namespace {

TEST(Val, ReadsTheLeadingNumber) {
  const std::pair<const char*, double> texts[] = {
      {"", 0},           {"   ", 0}, {"abc", 0},     {"12abc", 12},
      {" \t-3.5", -3.5}, {"+7", 7},  {".25x", 0.25}, {"5.", 5},
      {"1,5", 1},        {"1e5", 1}, {"--4", 0},     {"- 4", 0},
      {"0x1F", 0},       {"inf", 0}, {".", 0},       {"00014074000", 14074000},
      {"-0.5.6", -0.5}};
  for (const auto& [text, value] : texts) EXPECT_DOUBLE_EQ(Val(text), value) << text;
}

TEST(Val, HugeTextStaysFinite) {
  EXPECT_TRUE(std::isfinite(Val(std::string(5000, '9'))));
  EXPECT_EQ(RoundToInt16(Val(std::string(5000, '9'))), 32767);
  EXPECT_EQ(RoundToInt32(-1e300), INT32_MIN);
}

TEST(Rounding, HalvesGoToEven) {
  EXPECT_EQ(RoundToInt16(2.5), 2);
  EXPECT_EQ(RoundToInt16(3.5), 4);
  EXPECT_EQ(RoundToInt32(-0.5), 0);
  EXPECT_EQ(RoundToInt32(std::nan("")), 0);
}

TEST(FrequencyTexts, ReadsWhatIsTyped) {
  const std::pair<const char*, double> rows[] = {{"14.074", 14.074},
                                                 {" 14,0745 ", 14.0745},
                                                 {"14.074.250", 14.07425},
                                                 {"14.074.25", 14.07425},
                                                 {"14074", 14.074},
                                                 {"3573.5", 3.5735},
                                                 {"144174000", 144.174},
                                                 {"1296.1", 1296.1},
                                                 {"7", 7},
                                                 {"999", 999},
                                                 {".136", 0.136},
                                                 {"", 0},
                                                 {".", 0},
                                                 {"14.07.4", 0},
                                                 {"1.2.3.4", 0},
                                                 {"14 074", 0},
                                                 {"-7", 0},
                                                 {"1e9", 0},
                                                 {"99999999999999", 0}};
  for (const auto& [typed, mhz] : rows) EXPECT_NEAR(TypedMHz(typed), mhz, 1e-9) << typed;
}

TEST(FrequencyTexts, GroupsByMHzKHzHz) {
  EXPECT_EQ(FrequencyText(14.074), "14.074.000");
  EXPECT_EQ(FrequencyText(0.1365), "0.136.500");
  EXPECT_EQ(FrequencyText(1296.1), "1296.100.000");
  EXPECT_EQ(FrequencyText(0.000009), "---------");
  EXPECT_EQ(FrequencyText(std::nan("")), "---------");
}

TEST(FrequencyTexts, GridLabelsNameTheirLine) {
  EXPECT_EQ(GridFrequencyText(14.074, true), "14.074.0");
  EXPECT_EQ(GridFrequencyText(14.074, false), "074.0");
  EXPECT_EQ(GridFrequencyText(14.0739999999, true), "14.074.0");
  EXPECT_EQ(GridFrequencyText(14.07396, true), "14.073.9") << "cut, not rounded";
  EXPECT_EQ(GridFrequencyText(0.000001, false), "-----");
  EXPECT_EQ(GridFrequencyText(144.1740004, false), "174.0");
  EXPECT_EQ(GridFrequencyText(14.07405, 50, true), "14.074.050");
  EXPECT_EQ(GridFrequencyText(14.0742, 200, false), "074.2");
  EXPECT_EQ(GridOffsetText(12500, 2500), "+12.5K");
  EXPECT_EQ(GridOffsetText(-20000, 5000), "-20K");
  EXPECT_EQ(GridOffsetText(-500, 500), "-.5K");
  EXPECT_EQ(GridOffsetText(1250, 1250), "+1.25K");
  EXPECT_EQ(GridOffsetText(-62.5, 62.5), "-.063K") << "a half, away from zero";
  EXPECT_EQ(GridOffsetText(0, 500), "0");
}

}  // namespace
}  // namespace spectrino
